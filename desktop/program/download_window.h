#pragma once

// The window that downloads element sets, which its control opens and closes.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>

#include "core/computer_clock.h"
#include "desktop/main/main_scope.h"
#include "desktop/orbit/form_download_tle.h"
#include "desktop/orbit/network_fetcher.h"
#include "orbit/download.h"
#include "state/application.h"

namespace glintara::desktop {

/// Makes the window when it is first wanted. What is handed in must outlive it.
class DownloadWindow {
  public:
    /// `keyPressed` gets the keys that no control of the window takes.
    DownloadWindow(Application& app, MainScope& window, QSettings& places, const ComputerClock& clock,
                   std::function<bool(int key, bool shift)> keyPressed);
    DownloadWindow(const DownloadWindow&) = delete;
    DownloadWindow& operator=(const DownloadWindow&) = delete;
    ~DownloadWindow();

    /// Opens the window, or brings it to the front.
    void Show();

    /// Closes the window, if that is its name.
    void Unload(std::string_view name);

    /// What runs behind the window.
    Downloads& Work() { return downloads_; }

  private:
    void Follow();

    Application& app_;
    MainScope& window_;
    QSettings& places_;
    std::function<bool(int, bool)> keyPressed_;
    NetworkFetcher fetcher_;
    Downloads downloads_;
    std::unique_ptr<FormDownloadTLE> form_;
};

}  // namespace glintara::desktop
