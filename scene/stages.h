#pragma once

// The stages of a frame as the program draws them.

#include "scene/globe.h"
#include "scene/satellites.h"

namespace glintara {

/// All stages that there are. `satellites` is the memory of the satellite loop and must live as long as the stages.
FrameStages StagesOfProgram(SatelliteWorkspace& satellites);

}  // namespace glintara
