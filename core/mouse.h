#pragma once

// Steering the view by the mouse. Each move computes the view from where the drag began, so no error adds up.

#include <chrono>
#include <functional>
#include <utility>

#include "core/run_loop.h"
#include "scene/view_geometry.h"
#include "state/application.h"

namespace glintara {

/// Buttons and keys held during a move.
struct MouseHold {
    bool left = false;
    bool right = false;
    bool middle = false;
    bool shift = false;
    bool control = false;
    bool alt =
        false;  ///< Alt, AltGr or the key of the window system: desktops keep a drag with one of them for themselves

    friend bool operator==(const MouseHold&, const MouseHold&) = default;
};

/// A mouse position over the picture, and the picture's size, twips.
struct MousePlace {
    double x = 0;
    double y = 0;
    double width = 1;
    double height = 1;
};

class MouseSteering {
  public:
    using Clock = std::chrono::steady_clock;

    /// `now` tells the time of each move; a test has one of its own.
    MouseSteering(Application& app, RunLoop& loop, std::function<Clock::time_point()> now = Clock::now)
        : app_(app), loop_(loop), now_(std::move(now)) {}

    /// The mouse has moved to `place`, or a button has been pressed there. The first move with a button held begins a
    /// drag, which the later ones follow: left turns the globe, right rolls it, both zoom, any button with Shift
    /// shifts the picture, and so do the middle button and left on the flat map. Left with Control changes the sky pointer's field of view,
    /// with Alt its uncertainty of the time. Other buttons or keys on the way begin a new drag there. A move without a
    /// button ends the drag. Each move tells in `LStatus` what lies under the mouse.
    void Moved(const MousePlace& place, const MouseHold& hold);

    /// A button has been released: the drag ends. When the globe was still being turned, it turns on and comes to rest.
    /// A click of the left button with Control, without a move, chooses the star nearest to it.
    void Released();

    /// The window has lost the keyboard: a drag ends, without more.
    void Abandoned();

    /// The mouse has left the picture, or the picture another size: nothing is sought where the mouse was, and the
    /// finder's box goes as it does after a move.
    void Left();

    /// A double click makes the satellite under the mouse the working one. Where there is none it leaves full screen;
    /// otherwise hides the panels, or shows them again. With Alt it shows the sky pointer, or hides it; with Control it
    /// defines an observation at the place of the sky under the mouse.
    void DoubleClicked(const MouseHold& hold);

    /// The wheel: zooms by a tenth for each step of 120 units, away from the user to come nearer. What lies under the
    /// mouse stays there; with `CLockSatellite` what lies in the middle of the Earth, so that the satellite does not leave
    /// the picture.
    void Wheel(const MousePlace& place, double units);

    /// Two fingers on a touchpad: zooms by `factor` in the same way. A factor that is none does nothing.
    void Pinched(const MousePlace& place, double factor);

  private:
    /// What a drag does.
    enum class Action { None, Turn, Roll, Zoom, Shift, PointerField, PointerTime };

    struct Mark {
        Clock::time_point time;
        double lon = 0;
    };

    void NoteMouse(const MousePlace& place);
    void LetInfoBoxGo();
    void Begin(const MousePlace& place, const MouseHold& hold);
    void EndDrag();
    Action ActionOf(const MouseHold& hold) const;
    void Drag(const MousePlace& place);
    void SetPointer(Action action, double part);
    bool WasStarClick() const;
    void Shift(double dx, double dy);
    void ZoomTo(double zoom, const CameraView& from);
    void HoldUnderMouse(const ScenePoint& mouse, double shrunk);
    void MarkMotion();
    double LonPerTick() const;

    Application& app_;
    RunLoop& loop_;
    std::function<Clock::time_point()> now_;
    bool seen_ = false;  // the mouse has been over the picture
    bool dragged_ = false;
    bool leftStart_ = false;  // since the drag began
    MousePlace start_;
    MouseHold held_;
    CameraView snapshot_;
    double startField_ = 0;  // the sky pointer when the drag began
    double startTime_ = 0;
    // The longitude a tick of `TimerHRot` ago or more, and since, from which the speed at the end of a drag follows.
    Mark earlier_;
    Mark later_;
    Clock::time_point lastMove_;
};

}  // namespace glintara
