#pragma once

// The windows of cities and of the progress of a scan, which the controls open and close.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>

#include "desktop/core/form_progress.h"
#include "desktop/flare/form_cities.h"
#include "desktop/main/main_scope.h"
#include "state/application.h"

namespace glintara::desktop {

/// Makes each window when it is first wanted. What is handed in must outlive it.
class TrackWindows {
  public:
    /// `keyPressed` gets the keys that no control of the window of cities takes.
    TrackWindows(Application& app, MainScope& window, QSettings& places, CityHooks hooks,
                 std::function<bool(int key, bool shift)> keyPressed);
    TrackWindows(const TrackWindows&) = delete;
    TrackWindows& operator=(const TrackWindows&) = delete;
    ~TrackWindows();

    /// Opens the window "Cities", or brings it to the front.
    void ShowCities();

    /// Brings the window "Progress" to the front, if it is open.
    void RaiseProgress();

    /// Closes the window of that name, if it is one of these.
    void Unload(std::string_view name);

  private:
    void FollowCities();
    void FollowProgress();

    Application& app_;
    MainScope& window_;
    QSettings& places_;
    CityHooks hooks_;
    std::function<bool(int, bool)> keyPressed_;
    std::unique_ptr<FormCities> cities_;
    std::unique_ptr<FormProgress> progress_;
};

}  // namespace glintara::desktop
