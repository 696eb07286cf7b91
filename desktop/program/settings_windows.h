#pragma once

// The windows of the settings and of the date.

#include <vector>

#include "core/simulated_time.h"
#include "desktop/program/tool_window.h"
#include "state/application.h"

namespace glintara::desktop {

class SettingsWindows {
  public:
    /// `time` must outlive it, too.
    SettingsWindows(Application& app, const SimulatedTime& time, const ToolGround& ground);

    /// Each opens its window, or brings it to the front.
    void ShowLocalSettings();
    void ShowRealTime();
    void ShowColors();
    void ShowTwilight();
    void ShowDate();

    /// Closes the window of that name, if it is one of these.
    void Unload(std::string_view name);

  private:
    Application& app_;
    const SimulatedTime& time_;
    ToolWindow local_;
    ToolWindow realTime_;
    ToolWindow colors_;
    ToolWindow twilight_;
    ToolWindow date_;
};

}  // namespace glintara::desktop
