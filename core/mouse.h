#pragma once

// Steering the view by the mouse. Each move computes the view from where the drag began, so no error adds up.

#include <chrono>

#include "core/run_loop.h"
#include "core/state/application.h"

namespace glintara {

/// Buttons and keys held during a move.
struct MouseHold {
    bool left = false;
    bool right = false;
    bool shift = false;

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
    MouseSteering(Application& app, RunLoop& loop) : app_(app), loop_(loop) {}

    /// The mouse has moved to `place`. A move with a button held turns, rolls, zooms or shifts the view.
    void Moved(const MousePlace& place, const MouseHold& hold);

    /// A button has been released: when the globe was still being turned, it turns on and comes to rest.
    void Released();

    /// The wheel: zooms by a tenth for each step of 120 units, away from the user to come nearer.
    void Wheel(double units);

  private:
    using Clock = std::chrono::steady_clock;

    void Begin(const MousePlace& place, const MouseHold& hold);
    void Turn(const MousePlace& place, double sensitivity);
    void Zoom(const MousePlace& place);
    void Shift(const MousePlace& place);

    Application& app_;
    RunLoop& loop_;
    MousePlace start_;
    MouseHold held_;
    ViewState snapshot_;
    ViewState last_;
    Clock::time_point lastMove_;
    double stepLat_ = 0;  // change in the last move
    double stepLon_ = 0;
    double stepSeconds_ = 0;
};

}  // namespace glintara
