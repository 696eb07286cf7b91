#pragma once

// The window of the real-time step: how often a new picture is made while the clock runs.

#include "state/application.h"

namespace glintara::real_time_step {

/// Opens the window. A step beyond the slider's ends is moved to the end; one with a fraction is kept.
void Open(Application& app);

/// Hangs the procedures on the controls of the window: a move of the slider counts at once.
void Connect(Application& app);

}  // namespace glintara::real_time_step
