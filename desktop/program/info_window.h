#pragma once

// The window of the working satellite's position, which its control opens and closes.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>

#include "desktop/main/main_scope.h"
#include "desktop/orbit/form_sat_position.h"
#include "state/application.h"

namespace glintara::desktop {

/// Makes the window when it is first wanted. What is handed in must outlive it.
class InfoWindow {
  public:
    /// `keyPressed` gets the keys that no control of the window takes.
    InfoWindow(Application& app, MainScope& window, QSettings& places,
               std::function<bool(int key, bool shift)> keyPressed);
    InfoWindow(const InfoWindow&) = delete;
    InfoWindow& operator=(const InfoWindow&) = delete;
    ~InfoWindow();

    /// Opens the window, or brings it to the front.
    void Show();

    /// A picture has been made, or another satellite works: the numbers are written anew while the window is open.
    void Refresh();

    /// Closes the window, if that is its name.
    void Unload(std::string_view name);

  private:
    void Follow();

    Application& app_;
    MainScope& window_;
    QSettings& places_;
    std::function<bool(int, bool)> keyPressed_;
    std::unique_ptr<FormSatPosition> form_;
};

}  // namespace glintara::desktop
