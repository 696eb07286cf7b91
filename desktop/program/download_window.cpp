#include "desktop/program/download_window.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"
#include "engine/astro/calendar.h"

namespace glintara::desktop {

DownloadWindow::DownloadWindow(Application& app, MainScope& window, QSettings& places, const ComputerClock& clock,
                               std::function<bool(int key, bool shift)> keyPressed)
    : app_(app),
      window_(window),
      places_(places),
      keyPressed_(std::move(keyPressed)),
      downloads_(app, {.fetcher = fetcher_, .now = [&clock] { return DateToJD(clock.ReadUtc()); }}) {
    downloads_.Connect();
    app.Download.Visible.SetHandler([this] { Follow(); });
}

DownloadWindow::~DownloadWindow() { app_.Download.Visible.SetHandler({}); }

void DownloadWindow::Show() {
    if (app_.Download.Visible) Follow();
    app_.Download.Visible = true;
}

void DownloadWindow::Unload(std::string_view name) {
    if (name == "FormDownloadTLE") app_.Download.Visible = false;
}

void DownloadWindow::Follow() {
    if (!app_.Download.Visible) {
        downloads_.Form_Unload();
        if (form_ && form_->isVisible()) form_->close();
        return;
    }
    if (!form_) {
        form_ = std::make_unique<FormDownloadTLE>(app_, downloads_, &window_);
        form_->resize(form_->size().boundedTo(RoomOnScreen(window_)));
        RememberPlace(*form_, places_, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, window_, window_.Picture(), Qt::RightEdge);
        });
        HandKeysOn(*form_, keyPressed_);
    }
    if (!form_->isVisible()) downloads_.Form_Load();
    form_->show();
    form_->raise();
    form_->activateWindow();
}

}  // namespace glintara::desktop
