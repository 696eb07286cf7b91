#pragma once

// The window of the surface editor.

#include "desktop/program/tool_window.h"
#include "state/application.h"

namespace glintara::desktop {

class EditorWindow {
  public:
    EditorWindow(Application& app, const ToolGround& ground);

    /// Opens the editor on the working satellite, or brings it to the front. Nothing happens without satellites.
    void Show();

    /// Closes the window, if that is its name.
    void Unload(std::string_view name);

  private:
    Application& app_;
    ToolWindow window_;
};

}  // namespace glintara::desktop
