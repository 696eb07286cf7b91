#pragma once

// The one application state, with the services that its procedures call.

#include "core/state/common_data.h"
#include "core/state/events.h"
#include "core/state/find_flare_controls.h"
#include "core/state/main_controls.h"
#include "core/state/message_boxes.h"
#include "core/state/mirror_controls.h"
#include "core/state/run_state.h"
#include "core/state/window_signals.h"

namespace glintara {

/// Everything that a procedure of the program may read or write. There is one in the program; it travels by reference.
/// The services must outlive it.
struct Application {
    Application(MessageBoxes& boxes, Events& events, WindowSignals& windows)
        : Boxes(boxes), EventQueue(events), Windows(windows) {}
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    CommonData Data;
    MainControls Main;
    FindFlareControls FindFlare;
    MirrorControls Mirror;
    RunState Run;

    MessageBoxes& Boxes;
    Events& EventQueue;
    WindowSignals& Windows;
};

}  // namespace glintara
