#include "desktop/program/observation_windows.h"

#include <utility>

#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"
#include "orbit/observations.h"
#include "orbit/output.h"

namespace glintara::desktop {

namespace {

void BringToFront(QWidget& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

ObservationWindows::ObservationWindows(Application& app, MainScope& window, QSettings& places,
                                       const ComputerClock& clock, std::function<bool(int key, bool shift)> keyPressed)
    : app_(app), window_(window), places_(places), keyPressed_(std::move(keyPressed)) {
    observations::Connect(app);
    output::Connect(app);
    app.Output.ReadClock = [&clock] { return clock.ReadUtc(); };
    app.Output.BringToFront = [this] { BringToFront(*output_); };
    app.Observations.Visible.SetHandler([this] { FollowObservations(); });
    app.Output.Visible.SetHandler([this] { FollowOutput(); });
}

ObservationWindows::~ObservationWindows() {
    app_.Observations.Visible.SetHandler({});
    app_.Output.Visible.SetHandler({});
    app_.Output.BringToFront = {};
}

void ObservationWindows::ShowObservations() {
    app_.Observations.Visible = true;
    BringToFront(*observations_);
}

void ObservationWindows::RefreshInfo() {
    if (app_.Observations.Visible) observations::RefreshInfo(app_);
}

void ObservationWindows::Unload(std::string_view name) {
    if (name == "FormIOD") app_.Observations.Visible = false;
    if (name == "FormOutput") app_.Output.Visible = false;
}

void ObservationWindows::FollowObservations() {
    if (!app_.Observations.Visible) {
        if (observations_ && observations_->isVisible()) observations_->close();
        return;
    }
    if (!observations_) {
        observations_ = std::make_unique<FormObservations>(app_, places_, &window_);
        RememberPlace(*observations_, places_);
        HandKeysOn(*observations_, keyPressed_);
        OpenBeside(*observations_, {&window_.Picture()}, places_);
    }
    BringToFront(*observations_);
}

void ObservationWindows::FollowOutput() {
    if (!app_.Output.Visible) {
        if (output_ && output_->isVisible()) output_->close();
        return;
    }
    if (!output_) {
        output_ = std::make_unique<FormOutput>(app_, &window_);
        RememberPlace(*output_, places_);
        HandKeysOn(*output_, keyPressed_);
        OpenBeside(*output_, {&window_.Picture(), observations_.get()}, places_);
    }
    BringToFront(*output_);
}

}  // namespace glintara::desktop
