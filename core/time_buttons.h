#pragma once

// The buttons that move the displayed instant.

#include "core/simulated_time.h"
#include "state/application.h"

namespace glintara {

/// Hangs each time button on its offset. A press changes the offset, works the instant out and asks for a picture; one
/// that would leave 32 bits changes nothing. `CTOrbInc` and `CTOrbDec` need a working satellite that revolves.
void ConnectTimeButtons(Application& app, SimulatedTime& time);

}  // namespace glintara
