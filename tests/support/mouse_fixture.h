#pragma once

// The mouse over a picture of a program that runs on a clock moved by hand.

#include <chrono>

#include "core/mouse.h"
#include "core/program_fixture.h"
#include "scene/orientation.h"

namespace glintara::testing {

inline constexpr MouseHold kNone{};
inline constexpr MouseHold kLeft{.left = true};
inline constexpr MouseHold kRight{.right = true};
inline constexpr MouseHold kMiddle{.middle = true};
inline constexpr MouseHold kBoth{.left = true, .right = true};
inline constexpr MouseHold kShiftLeft{.left = true, .shift = true};

/// A picture of 12000 x 8000 twips at zoom 100: dragging across the whole of it turns by 2 radians.
struct MouseTest : ProgramTest {
    MouseTest() {
        app.Main.CRealTime.Value = false;
        RunAtOnce();
        app.Run.AutoTurn = 1;  // the opening is over
        view.ViewLat = 0.2;
        view.ViewLon = 1;
        view.ViewRoll = 0.1;
        view.ZoomFactor = 100;
        view.PanX = 0.3;
        view.PanY = -0.2;
    }

    void MoveTo(double x, double y, const MouseHold& hold = kNone) { mouse.Moved({x, y, 12000, 8000}, hold); }

    /// A drag from the middle of the picture, not released.
    void Drag(const MouseHold& hold, double dx, double dy) {
        MoveTo(6000, 4000);
        MoveTo(6000, 4000, hold);
        MoveTo(6000 + dx, 4000 + dy, hold);
    }

    /// The wheel, over the middle of the picture unless told otherwise.
    void Wheel(double units, double x = 6000, double y = 4000) { mouse.Wheel({x, y, 12000, 8000}, units); }

    /// Drags to the left for 100 ms, by 0.02 radians each 10 ms, and leaves the button down.
    void Swing() {
        MoveTo(6000, 4000);
        MoveTo(6000, 4000, kLeft);
        for (int i = 1; i <= 10; ++i) {
            clock.Advance(10);
            MoveTo(6000 - 120 * i, 4000, kLeft);
        }
    }

    CameraView Camera() const { return CaptureCamera(app.Data.View); }
    bool Turns() const { return app.Main.TimerHRot.Enabled; }

    ViewState& view = app.Data.View;
    MainControls& main = app.Main;
    MouseSteering mouse{app, program.Loop,
                        [this] { return MouseSteering::Clock::time_point(std::chrono::milliseconds(clock.NowMs())); }};
};

}  // namespace glintara::testing
