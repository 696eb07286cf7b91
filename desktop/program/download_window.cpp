#include "desktop/program/download_window.h"

#include "desktop/orbit/form_download_tle.h"
#include "engine/astro/calendar.h"

namespace glintara::desktop {

DownloadWindow::DownloadWindow(Application& app, const ToolGround& ground, const ComputerClock& clock)
    : downloads_(app, {.fetcher = fetcher_, .now = [&clock] { return DateToJD(clock.ReadUtc()); }}),
      window_(
          ground, app.Download.Visible,
          {.name = "FormDownloadTLE",
           .make = [this, &app,
                    &window = ground.window] { return std::make_unique<FormDownloadTLE>(app, downloads_, &window); },
           .fitsScreen = true,
           .opens = [this] { downloads_.Form_Load(); },
           .closes = [this] { downloads_.Form_Unload(); }}) {
    downloads_.Connect();
}

}  // namespace glintara::desktop
