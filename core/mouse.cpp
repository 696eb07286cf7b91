#include "core/mouse.h"

#include <algorithm>
#include <cmath>

#include "scene/view_geometry.h"

namespace glintara {

namespace {

/// Turning a drag across the whole picture means 4 times this over the zoom, radians.
constexpr double kSensitivity = 50;
constexpr double kTurnPerPicture = 4;
/// With a floating site the view follows the mouse more slowly.
constexpr double kFloatingSlowness = 8;
constexpr double kZoomPerUnit = 1.0 / 25 / 100;
/// A downward drag zooms at a quarter of the speed.
constexpr double kDownwardSlowness = 4;
constexpr double kPanPerUnit = 1.0 / 50;
constexpr double kWheelUnits = 120;
constexpr double kWheelFactor = 1.1;
/// A button released within this after the last move is released in motion, seconds.
constexpr double kInMotion = 0.05;
/// A tick of `TimerHRot`, seconds.
constexpr double kTurningTick = 0.02;

}  // namespace

void MouseSteering::Begin(const MousePlace& place, const MouseHold& hold) {
    start_ = place;
    held_ = hold;
    snapshot_ = app_.Data.View;
    last_ = snapshot_;
    lastMove_ = Clock::now();
    stepLat_ = stepLon_ = 0;
    app_.Run.DragActive = true;
}

void MouseSteering::Moved(const MousePlace& place, const MouseHold& hold) {
    if (!hold.left && !hold.right) {
        app_.Run.DragActive = false;
        return;
    }
    loop_.GlobeRotation().StopIdle();
    if (!app_.Run.DragActive || !(hold == held_)) {
        Begin(place, hold);
        return;
    }
    ViewState& view = app_.Data.View;
    double sensitivity = kSensitivity / snapshot_.ZoomFactor;
    if (app_.Main.MnuFloatingSite.Checked) {
        sensitivity /= kFloatingSlowness;
    }
    if (hold.left && hold.right) {
        Zoom(place);
    } else if (hold.shift || app_.Main.CPlaniSphere.Value) {
        Shift(place);
    } else if (hold.left) {
        Turn(place, sensitivity);
    } else {
        view.ViewRoll = snapshot_.ViewRoll - (place.x - start_.x) / place.width * kTurnPerPicture * sensitivity;
    }
    HoldView(view);
    RefreshViewCache(view);
    const Clock::time_point now = Clock::now();
    stepLat_ = view.ViewLat - last_.ViewLat;
    stepLon_ = view.ViewLon - last_.ViewLon;
    stepSeconds_ = std::chrono::duration<double>(now - lastMove_).count();
    lastMove_ = now;
    last_ = view;
    UpdateGraphicsLevel2(app_.Main);
}

void MouseSteering::Turn(const MousePlace& place, double sensitivity) {
    ViewState& view = app_.Data.View;
    view.ViewLon = snapshot_.ViewLon - (place.x - start_.x) / place.width * kTurnPerPicture * sensitivity;
    view.ViewLat = snapshot_.ViewLat + (place.y - start_.y) / place.height * kTurnPerPicture * sensitivity;
}

void MouseSteering::Zoom(const MousePlace& place) {
    double dy = place.y - start_.y;
    if (dy > 0) {
        dy /= kDownwardSlowness;
    }
    app_.Data.View.ZoomFactor = std::max(kLeastZoom, snapshot_.ZoomFactor * (1 - dy * kZoomPerUnit));
}

void MouseSteering::Shift(const MousePlace& place) {
    ViewState& view = app_.Data.View;
    view.PanX = snapshot_.PanX + (place.x - start_.x) / snapshot_.ZoomFactor * kPanPerUnit;
    view.PanY = snapshot_.PanY - (place.y - start_.y) / snapshot_.ZoomFactor * kPanPerUnit;
}

void MouseSteering::Released() {
    if (!app_.Run.DragActive) {
        return;
    }
    app_.Run.DragActive = false;
    const double rest = std::chrono::duration<double>(Clock::now() - lastMove_).count();
    const bool turned = held_.left && !held_.right && !held_.shift && !app_.Main.CPlaniSphere.Value;
    if (turned && rest < kInMotion && stepSeconds_ > 0) {
        const double ticks = kTurningTick / std::max(stepSeconds_, kTurningTick / 4);
        loop_.GlobeRotation().DragReleased(stepLat_ * ticks, stepLon_ * ticks, 0);
    }
}

void MouseSteering::Wheel(double units) {
    loop_.GlobeRotation().StopIdle();
    ViewState& view = app_.Data.View;
    view.ZoomFactor *= std::pow(kWheelFactor, units / kWheelUnits);
    HoldView(view);
    UpdateGraphicsLevel2(app_.Main);
}

}  // namespace glintara
