#pragma once

// The window that downloads element sets.

#include "core/computer_clock.h"
#include "desktop/orbit/network_fetcher.h"
#include "desktop/program/tool_window.h"
#include "orbit/download.h"
#include "state/application.h"

namespace glintara::desktop {

class DownloadWindow {
  public:
    /// `clock` must outlive it, too.
    DownloadWindow(Application& app, const ToolGround& ground, const ComputerClock& clock);

    /// Opens the window, or brings it to the front.
    void Show() { window_.Show(); }

    /// Closes the window, if that is its name.
    void Unload(std::string_view name) { window_.Unload(name); }

    /// What runs behind the window.
    Downloads& Work() { return downloads_; }

  private:
    NetworkFetcher fetcher_;
    Downloads downloads_;
    ToolWindow window_;
};

}  // namespace glintara::desktop
