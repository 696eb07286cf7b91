#include "core/turning.h"

#include <algorithm>
#include <cmath>

#include "core/camera_moves.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

constexpr int kTickMs = 20;
constexpr int kMostAutoTurn = 10;

/// `AutoTurn` while nothing but the opening has set the globe turning.
constexpr int kIdleTurn = 1;

/// The globe takes this part of the last change of the angle in each tick.
constexpr double kTurnPart = 0.25;

/// Ticks from the end of a drag until the globe rests: 1.5 seconds.
constexpr int kTicksToRest = 75;

}  // namespace

void GlobeTurning::Start(Turning how) {
    how_ = how;
    ticks_ = 0;
    dragNoted_ = false;
    app_.Run.AutoTurn = std::min(app_.Run.AutoTurn + 1, kMostAutoTurn);
    app_.Main.TimerHRot.Restart(kTickMs);
}

void GlobeTurning::Stop() { app_.Main.TimerHRot.Stop(); }

bool GlobeTurning::StopIdle() {
    if (app_.Run.AutoTurn != kIdleTurn || !app_.Main.TimerHRot.Enabled) return false;
    Stop();
    return true;
}

void GlobeTurning::Toggle() {
    if (app_.Main.TimerHRot.Enabled) {
        Stop();
    } else {
        if (app_.Run.RotIncLon == 0) app_.Run.RotIncLon = kStartRotation;
        Start(Turning::Lasting);
    }
}

void GlobeTurning::DragReleased(double lonPerTick) {
    // A turning that lasts takes the motion on by itself, with its next tick.
    if (lonPerTick == 0 || (app_.Main.TimerHRot.Enabled && how_ == Turning::Lasting)) return;
    decaying_ = lonPerTick;
    Start(Turning::Decaying);
}

void GlobeTurning::Tick() {
    if (app_.Run.DragActive && how_ == Turning::Decaying) {
        Stop();  // the hand on the globe ends it
        return;
    }
    if (app_.Run.DragActive) {
        NoteDrag();
        return;
    }
    if (dragNoted_) {
        TakeDragMotion();
        return;
    }
    double change = app_.Run.RotIncLon;
    if (how_ == Turning::Decaying) {
        if (++ticks_ >= kTicksToRest) {
            Stop();
            return;
        }
        const double left = 1 - static_cast<double>(ticks_) / kTicksToRest;
        change = decaying_ * left * left;
    }
    ViewState& view = app_.Data.View;
    view.ViewLon = WrapTwoPi(view.ViewLon + kTurnPart * change);
    CameraMoved(app_);
}

void GlobeTurning::NoteDrag() {
    const ViewState& view = app_.Data.View;
    if (!dragNoted_) dragStartLon_ = view.ViewLon;
    dragNoted_ = true;
    notedLat_ = view.ViewLat;
    notedLon_ = view.ViewLon;
    notedRoll_ = view.ViewRoll;
}

void GlobeTurning::TakeDragMotion() {
    dragNoted_ = false;
    const ViewState& view = app_.Data.View;
    if (view.ViewLon == dragStartLon_) return;  // a click, a zoom: the globe itself was left alone
    RunState& run = app_.Run;
    run.RotIncLat = view.ViewLat - notedLat_;
    run.RotIncLon = view.ViewLon - notedLon_;
    run.RotIncRoll = view.ViewRoll - notedRoll_;
}

}  // namespace glintara
