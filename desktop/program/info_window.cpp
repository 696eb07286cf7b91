#include "desktop/program/info_window.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"
#include "orbit/satellite_info.h"

namespace glintara::desktop {

InfoWindow::InfoWindow(Application& app, MainScope& window, QSettings& places,
                       std::function<bool(int key, bool shift)> keyPressed)
    : app_(app), window_(window), places_(places), keyPressed_(std::move(keyPressed)) {
    satellite_info::Connect(app);
    app.SatPosition.Visible.SetHandler([this] { Follow(); });
}

InfoWindow::~InfoWindow() { app_.SatPosition.Visible.SetHandler({}); }

void InfoWindow::Show() {
    app_.SatPosition.Visible = true;
    Follow();
}

void InfoWindow::Refresh() {
    if (app_.SatPosition.Visible) satellite_info::RefreshInfo(app_);
}

void InfoWindow::Unload(std::string_view name) {
    if (name == "FormSatPosition") app_.SatPosition.Visible = false;
}

void InfoWindow::Follow() {
    if (!app_.SatPosition.Visible) {
        if (form_ && form_->isVisible()) form_->close();
        return;
    }
    satellite_info::RefreshInfo(app_);
    if (!form_) {
        form_ = std::make_unique<FormSatPosition>(app_, &window_);
        RememberPlace(*form_, places_, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, window_, window_.Picture(), Qt::RightEdge);
        });
        HandKeysOn(*form_, keyPressed_);
    }
    form_->show();
    form_->raise();
    form_->activateWindow();
}

}  // namespace glintara::desktop
