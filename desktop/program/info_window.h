#pragma once

// The window of the working satellite's position.

#include "desktop/program/tool_window.h"
#include "state/application.h"

namespace glintara::desktop {

class InfoWindow : public ToolWindow {
  public:
    InfoWindow(Application& app, const ToolGround& ground);

    /// A picture has been made, or another satellite works: the numbers are written anew while the window is open.
    void Refresh();

  private:
    Application& app_;
};

}  // namespace glintara::desktop
