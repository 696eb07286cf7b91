#pragma once

// How the engine paints on a surface.

#include "engine/glintcore.h"
#include "scene/surface/draw_surface.h"

namespace glintara {

GlintDrawTarget EngineTarget(DrawSurface& surface);

}  // namespace glintara
