#include "core/mouse.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/camera_moves.h"
#include "core/opening.h"
#include "core/panels.h"
#include "engine/astro/trigonometry.h"
#include "scene/mouse_place.h"
#include "scene/mouse_text.h"
#include "scene/object_finder.h"
#include "scene/orientation.h"
#include "scene/sky_pointer.h"
#include "scene/sundial.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

/// A drag across the whole picture turns by 4 times this over the zoom, radians.
constexpr double kSensitivity = 50;
constexpr double kTurnPerPicture = 4;
/// With a floating site the globe follows the mouse more slowly.
constexpr double kFloatingSlowness = 8;
constexpr double kZoomPerUnit = 1.0 / 25 / 100;
/// A downward drag zooms at a quarter of the speed.
constexpr double kDownwardSlowness = 4;
constexpr double kPanPerUnit = 1.0 / 50;
/// The sky alone belongs to a point one unit above the centre, as soon as the picture is shifted at all.
constexpr double kSkyCentre = 1;
constexpr double kWheelUnits = 120;
constexpr double kWheelFactor = 1.1;

/// A drag over the whole height changes the uncertainty of the time by 4 times this part of it.
constexpr double kTimePart = 0.4;

constexpr int kRestMs = 2000;
constexpr int kHideInfoMs = 1000;
constexpr int kFineSkyMs = 1000;

/// A button released within this after the last move is released in motion, seconds.
constexpr double kInMotion = 0.05;
/// A tick of `TimerHRot`, seconds.
constexpr double kTurningTick = 0.02;

double SecondsBetween(MouseSteering::Clock::time_point from, MouseSteering::Clock::time_point to) {
    return std::chrono::duration<double>(to - from).count();
}

/// Whether the sky keeps its size on the picture at any zoom. On the flat map it has the size of the Earth.
bool IsSkyFitted(const MainControls& main) { return main.CMaximizeSky.Value && !main.CPlaniSphere.Value; }

}  // namespace

void MouseSteering::Moved(const MousePlace& place, const MouseHold& hold) {
    NoteMouse(place);
    if (!hold.left && !hold.right && !hold.middle) {
        EndDrag();
        ShowMenusByEdge(app_, place.y / std::max(place.height, 1.0));
        return;
    }
    CutOpeningShort(app_.Run);
    loop_.GlobeRotation().StopIdle();
    if (!app_.Run.DragActive || !(hold == held_)) {
        Begin(place, hold);
        return;
    }
    Drag(place);
}

void MouseSteering::NoteMouse(const MousePlace& place) {
    RunState& run = app_.Run;
    const bool moved = seen_ && (place.x != run.LastMouseX || place.y != run.LastMouseY);
    seen_ = true;
    run.LastMouseX = place.x;
    run.LastMouseY = place.y;
    run.LastPictureWidth = place.width;
    run.LastPictureHeight = place.height;
    ShowMouseText(app_);
    // A window that opens under a resting mouse is told of a move too.
    if (!moved) return;
    if (app_.Main.FSkyMouse.Visible) {
        RefreshSkyPointer(app_);
        app_.Windows.UpdateGraphicsLevel2();
    }
    loop_.GlobeRotation().StopIdle();
    app_.Main.Timer_ObjectFinder.Restart(kRestMs);
    LetInfoBoxGo();
}

void MouseSteering::LetInfoBoxGo() {
    if (!app_.Main.Timer_InfoHider.Enabled) app_.Main.Timer_InfoHider.Restart(kHideInfoMs);
}

void MouseSteering::Left() {
    app_.Main.Timer_ObjectFinder.Stop();
    LetInfoBoxGo();
}

void MouseSteering::Begin(const MousePlace& place, const MouseHold& hold) {
    start_ = place;
    held_ = hold;
    snapshot_ = CaptureCamera(app_.Data.View);
    startField_ = app_.Run.SkyPointer.FieldOfView;
    startTime_ = app_.Run.SkyPointer.TimeUncertainty;
    dragged_ = false;
    leftStart_ = false;
    lastMove_ = now_();
    earlier_ = later_ = {lastMove_, snapshot_.ViewLon};
    app_.Run.DragActive = true;
    app_.Main.TimerSkyFine.Stop();
}

void MouseSteering::EndDrag() {
    if (!app_.Run.DragActive) return;
    app_.Run.DragActive = false;
    if (dragged_) app_.Main.TimerSkyFine.Restart(kFineSkyMs);
}

MouseSteering::Action MouseSteering::ActionOf(const MouseHold& hold) const {
    if (hold.shift) return Action::Shift;
    if (hold.left && hold.right) return Action::Zoom;
    const bool sundial = ShowsSundial(app_.Run);  // it is shifted like a map, and the globe behind it rests
    if (hold.right) return sundial ? Action::None : Action::Roll;
    if (!hold.left) return hold.middle ? Action::Shift : Action::None;
    if (hold.control) return Action::PointerField;
    if (hold.alt) return Action::PointerTime;
    return app_.Main.CPlaniSphere.Value || sundial ? Action::Shift : Action::Turn;
}

void MouseSteering::Drag(const MousePlace& place) {
    ViewState& view = app_.Data.View;
    const double dx = Truncate(place.x - start_.x);
    const double dy = Truncate(place.y - start_.y);
    leftStart_ = leftStart_ || dx != 0 || dy != 0;
    const Action action = ActionOf(held_);
    if (action == Action::PointerField || action == Action::PointerTime) {
        SetPointer(action, dy / std::max(place.height, 1.0));
        return;
    }
    double turn = kTurnPerPicture * kSensitivity / view.ZoomFactor;
    if (app_.Main.MnuFloatingSite.Checked && !app_.Main.CPlaniSphere.Value) turn /= kFloatingSlowness;
    switch (action) {
        case Action::None:
        case Action::PointerField:
        case Action::PointerTime:
            return;
        case Action::Turn:
            view.ViewLon = snapshot_.ViewLon - dx / std::max(place.width, 1.0) * turn;
            view.ViewLat = snapshot_.ViewLat + dy / std::max(place.height, 1.0) * turn;
            break;
        case Action::Roll:
            view.ViewRoll = snapshot_.ViewRoll - dx / std::max(place.width, 1.0) * turn;
            break;
        case Action::Zoom:
            ZoomTo(snapshot_.ZoomFactor * (1 - (dy > 0 ? dy / kDownwardSlowness : dy) * kZoomPerUnit), snapshot_);
            break;
        case Action::Shift:
            Shift(dx, dy);
            break;
    }
    dragged_ = true;
    CameraMoved(app_);
    MarkMotion();
}

void MouseSteering::SetPointer(Action action, double part) {
    if (action == Action::PointerField)
        SetPointerField(app_, startField_ - part * kTurnPerPicture * kSensitivity / app_.Data.View.ZoomFactor);
    else
        SetPointerTime(app_, startTime_ - part * kTurnPerPicture * kTimePart * startTime_);
    app_.Windows.UpdateGraphicsLevel2();
}

void MouseSteering::Shift(double dx, double dy) {
    const MainControls& main = app_.Main;
    ViewState& view = app_.Data.View;
    const bool centred = snapshot_.PanX == 0 && snapshot_.PanY == 0;
    const bool still = dx == 0 && dy == 0;
    // The first shift moves the sky's centre up by one: the other way round, the sky stays where it was.
    const bool keepsSky = main.CPlaniSphere.Value || (!held_.shift && !main.CStarsOnGlobe.Value);
    const bool skyAlone = main.CSkyOnly.Value && keepsSky && centred && !still && !ShowsSundial(app_.Run);
    view.PanX = snapshot_.PanX + dx / view.ZoomFactor * kPanPerUnit;
    view.PanY = snapshot_.PanY - (skyAlone ? kSkyCentre : 0) - dy / view.ZoomFactor * kPanPerUnit;
}

void MouseSteering::ZoomTo(double zoom, const CameraView& from) {
    const MainControls& main = app_.Main;
    ViewState& view = app_.Data.View;
    view.ZoomFactor = std::clamp(zoom, kLeastZoom, kMostZoom);
    const bool shifted = from.PanX != 0 || from.PanY != 0;
    if (main.CSkyOnly.Value && IsSkyFitted(main) && shifted && !ShowsSundial(app_.Run)) {
        // A maximized sky shrinks in the scene as the zoom grows; what it has at the centre of the picture stays there.
        const double shrunk = from.ZoomFactor / view.ZoomFactor;
        view.PanX = from.PanX * shrunk;
        view.PanY = (from.PanY + kSkyCentre) * shrunk - kSkyCentre;
    }
    CameraZoomed(app_);
}

void MouseSteering::MarkMotion() {
    lastMove_ = now_();
    if (SecondsBetween(later_.time, lastMove_) < kTurningTick) return;
    earlier_ = later_;
    later_ = {lastMove_, app_.Data.View.ViewLon};
}

double MouseSteering::LonPerTick() const {
    const double seconds = std::max(SecondsBetween(earlier_.time, lastMove_), kTurningTick);
    return (app_.Data.View.ViewLon - earlier_.lon) / seconds * kTurningTick;
}

void MouseSteering::Released() {
    const bool turned = app_.Run.DragActive && dragged_ && ActionOf(held_) == Action::Turn;
    const bool clicked = WasStarClick();
    EndDrag();
    if (clicked) SelectStar(app_);
    if (turned && SecondsBetween(lastMove_, now_()) <= kInMotion) loop_.GlobeRotation().DragReleased(LonPerTick());
}

bool MouseSteering::WasStarClick() const {
    return app_.Run.DragActive && !leftStart_ && held_ == MouseHold{.left = true, .control = true};
}

void MouseSteering::DoubleClicked(const MouseHold& hold) {
    loop_.GlobeRotation().StopIdle();
    if (hold.alt) {
        ToggleSkyMouse(app_);
        return;
    }
    if (hold.control) {
        DefinePointUnderMouse(app_);
        return;
    }
    if (SelectSatellite(app_)) return;
    if (app_.Run.FullScreen)
        SetFullScreen(app_, false);
    else if (app_.Run.PanelsHidden)
        MenuShow(app_);
    else
        MenuHide(app_);
}

void MouseSteering::Abandoned() { EndDrag(); }

void MouseSteering::Wheel(const MousePlace& place, double units) {
    Pinched(place, std::pow(kWheelFactor, units / kWheelUnits));
}

void MouseSteering::Pinched(const MousePlace& place, double factor) {
    CutOpeningShort(app_.Run);  // it would write over the zoom
    loop_.GlobeRotation().StopIdle();
    if (!std::isfinite(factor) || !(factor > 0)) return;
    NoteMouse(place);
    ViewState& view = app_.Data.View;
    const std::optional<ScenePoint> mouse = MouseOnPicture(app_);
    const double before = view.ZoomFactor;
    const double zoom = std::clamp(before * factor, kLeastZoom, kMostZoom);
    if (mouse && !app_.Main.CLockSatellite.Value) HoldUnderMouse(*mouse, before / zoom);
    view.ZoomFactor = zoom;
    CameraZoomed(app_);
    if (!app_.Run.DragActive) return;
    // A drag that is under way goes on from here.
    start_ = place;
    snapshot_ = CaptureCamera(view);
    startField_ = app_.Run.SkyPointer.FieldOfView;
    startTime_ = app_.Run.SkyPointer.TimeUncertainty;
}

/// Shifts the picture so that what is at `mouse` stays there when scene units become `shrunk` as many.
void MouseSteering::HoldUnderMouse(const ScenePoint& mouse, double shrunk) {
    const MainControls& main = app_.Main;
    ViewState& view = app_.Data.View;
    const ScenePoint way{mouse.x * (shrunk - 1), mouse.y * (shrunk - 1)};
    const bool sky = main.CSkyOnly.Value || (IsSkyFitted(main) && main.CDrawSky.Value && !EarthAt(app_, mouse));
    if (!sky || ShowsSundial(app_.Run)) {
        view.PanX += way.x;
        view.PanY += way.y;
        return;
    }
    const ScenePoint centre = SkyCentre(app_);
    const ScenePoint moved = IsSkyFitted(main) ? ScenePoint{centre.x * shrunk, centre.y * shrunk}
                                               : ScenePoint{centre.x + way.x, centre.y + way.y};
    if (moved.x == centre.x && moved.y == centre.y) return;
    view.PanX = moved.x;
    view.PanY = moved.y - (main.CStarsOnGlobe.Value ? 0 : kSkyCentre);
}

}  // namespace glintara
