#pragma once

// The windows of the settings and of the date, which the controls open and close.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "core/simulated_time.h"
#include "desktop/core/settings_form.h"
#include "desktop/main/main_scope.h"
#include "state/application.h"

namespace glintara::desktop {

/// Makes each window when it is first wanted. What is handed in must outlive it.
class SettingsWindows {
  public:
    /// `keyPressed` gets the keys that no control of the windows takes.
    SettingsWindows(Application& app, const SimulatedTime& time, MainScope& window, QSettings& places,
                    std::function<bool(int key, bool shift)> keyPressed);
    SettingsWindows(const SettingsWindows&) = delete;
    SettingsWindows& operator=(const SettingsWindows&) = delete;
    ~SettingsWindows();

    /// Each opens its window, or brings it to the front.
    void ShowLocalSettings();
    void ShowRealTime();
    void ShowColors();
    void ShowTwilight();
    void ShowDate();

    /// Closes the window of that name, if it is one of these.
    void Unload(std::string_view name);

  private:
    struct Entry {
        std::string_view name;
        Observed<bool>& visible;
        std::function<std::unique_ptr<SettingsForm>()> make;
        std::unique_ptr<SettingsForm> form;
    };

    void Follow(Entry& entry);
    void BringToFront(std::string_view name);

    Application& app_;
    const SimulatedTime& time_;
    MainScope& window_;
    QSettings& places_;
    std::function<bool(int, bool)> keyPressed_;
    std::vector<Entry> entries_;
};

}  // namespace glintara::desktop
