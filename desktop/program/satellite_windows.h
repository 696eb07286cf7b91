#pragma once

// The windows of the satellite list.

#include "desktop/program/tool_window.h"
#include "state/application.h"

namespace glintara::desktop {

class SatelliteWindows {
  public:
    SatelliteWindows(Application& app, const ToolGround& ground);

    /// Opens the window "Satellites", or brings it to the front.
    void ShowSatellites() { satellites_.Show(); }

    /// Closes the window of that name, if it is one of these.
    void Unload(std::string_view name);

  private:
    Application& app_;
    ToolWindow satellites_;
    ToolWindow advSel_;
};

}  // namespace glintara::desktop
