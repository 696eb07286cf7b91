#pragma once

// The windows of the satellite list, which their controls open and close.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>

#include "desktop/main/main_scope.h"
#include "state/application.h"

namespace glintara::desktop {

class FormAdvSel;
class FormSatellites;

/// Makes each window when it is first wanted. What is handed in must outlive it.
class SatelliteWindows {
  public:
    /// `keyPressed` gets the keys that no control of the windows takes.
    SatelliteWindows(Application& app, MainScope& window, QSettings& places,
                     std::function<bool(int key, bool shift)> keyPressed);
    SatelliteWindows(const SatelliteWindows&) = delete;
    SatelliteWindows& operator=(const SatelliteWindows&) = delete;
    ~SatelliteWindows();

    /// Opens the window "Satellites", or brings it to the front.
    void ShowSatellites();

    /// Closes the window of that name, if it is one of these.
    void Unload(std::string_view name);

  private:
    void FollowSatellites();
    void FollowAdvSel();

    Application& app_;
    MainScope& window_;
    QSettings& places_;
    std::function<bool(int, bool)> keyPressed_;
    std::unique_ptr<FormSatellites> satellites_;
    std::unique_ptr<FormAdvSel> advSel_;
};

}  // namespace glintara::desktop
