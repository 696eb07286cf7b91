#include "desktop/program/track_windows.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"

namespace glintara::desktop {

TrackWindows::TrackWindows(Application& app, MainScope& window, QSettings& places, CityHooks hooks,
                           std::function<bool(int key, bool shift)> keyPressed)
    : app_(app), window_(window), places_(places), hooks_(std::move(hooks)), keyPressed_(std::move(keyPressed)) {
    app.Cities.Visible.SetHandler([this] { FollowCities(); });
    app.Progress.Visible.SetHandler([this] { FollowProgress(); });
}

TrackWindows::~TrackWindows() {
    app_.Cities.Visible.SetHandler({});
    app_.Progress.Visible.SetHandler({});
}

void TrackWindows::ShowCities() {
    app_.Cities.Visible = true;
    cities_->raise();
    cities_->activateWindow();
}

void TrackWindows::RaiseProgress() {
    if (progress_ && progress_->isVisible()) progress_->raise();
}

void TrackWindows::Unload(std::string_view name) {
    if (name == "FormCities") app_.Cities.Visible = false;
    if (name == "FormProgress") app_.Progress.Visible = false;
}

void TrackWindows::FollowCities() {
    if (!app_.Cities.Visible) {
        if (cities_ && cities_->isVisible()) cities_->close();
        return;
    }
    if (!cities_) {
        cities_ = std::make_unique<FormCities>(app_, hooks_, &window_);
        RememberPlace(*cities_, places_);
        HandKeysOn(*cities_, keyPressed_);
        OpenBeside(*cities_, {&window_.Picture()}, places_);
    }
    cities_->show();
    cities_->raise();
    cities_->activateWindow();
}

void TrackWindows::FollowProgress() {
    if (!app_.Progress.Visible) {
        if (progress_) progress_->hide();
        return;
    }
    if (!progress_) progress_ = std::make_unique<FormProgress>(app_, &window_);
    progress_->show();
    progress_->raise();
}

}  // namespace glintara::desktop
