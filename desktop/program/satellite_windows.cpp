#include "desktop/program/satellite_windows.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"
#include "desktop/orbit/form_adv_sel.h"
#include "desktop/orbit/form_satellites.h"
#include "orbit/satellite_manager.h"

namespace glintara::desktop {

namespace {

void BringToFront(QWidget& form) {
    form.show();
    form.raise();
    form.activateWindow();
}

}  // namespace

SatelliteWindows::SatelliteWindows(Application& app, MainScope& window, QSettings& places,
                                   std::function<bool(int key, bool shift)> keyPressed)
    : app_(app), window_(window), places_(places), keyPressed_(std::move(keyPressed)) {
    app.Satellites.Visible.SetHandler([this] { FollowSatellites(); });
    app.AdvSel.Visible.SetHandler([this] { FollowAdvSel(); });
    // Pressed again, the button brings the window to the front.
    app.Satellites.CAdvSelection.SetClickHandler([this] {
        app_.AdvSel.Visible = true;
        BringToFront(*advSel_);
    });
}

SatelliteWindows::~SatelliteWindows() {
    app_.Satellites.Visible.SetHandler({});
    app_.AdvSel.Visible.SetHandler({});
}

void SatelliteWindows::ShowSatellites() {
    app_.Satellites.Visible = true;
    BringToFront(*satellites_);
}

void SatelliteWindows::Unload(std::string_view name) {
    if (name == "FormSatellites") satellite_manager::AutoClose(app_);
    if (name == "FormAdvSel") app_.AdvSel.Visible = false;
}

void SatelliteWindows::FollowSatellites() {
    if (!app_.Satellites.Visible) {
        if (satellites_ && satellites_->isVisible()) satellites_->close();
        return;
    }
    if (!satellites_) {
        satellites_ = std::make_unique<FormSatellites>(app_, &window_);
        satellites_->resize(satellites_->size().boundedTo(RoomOnScreen(window_)));
        RememberPlace(*satellites_, places_, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, window_, window_.Picture(), Qt::LeftEdge);
        });
        HandKeysOn(*satellites_, keyPressed_);
    }
    BringToFront(*satellites_);
}

void SatelliteWindows::FollowAdvSel() {
    if (!app_.AdvSel.Visible) {
        if (advSel_ && advSel_->isVisible()) advSel_->close();
        return;
    }
    if (!advSel_) {
        advSel_ = std::make_unique<FormAdvSel>(app_, &window_);
        // At the other edge than the list, which shows what it selects.
        RememberPlace(*advSel_, places_, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, window_, window_.Picture(), Qt::RightEdge);
        });
        HandKeysOn(*advSel_, keyPressed_);
    }
    BringToFront(*advSel_);
}

}  // namespace glintara::desktop
