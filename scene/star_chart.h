#pragma once

// The unrolling of the sky as the boxes have it.

#include "engine/astro/sky_chart.h"
#include "scene/view_geometry.h"

namespace glintara {

/// How the star sphere of a picture is drawn. On the flat map the sky stands over the Earth, neither mirrored nor
/// unrolled.
SkyProjection SkyProjectionOf(const SceneContext& scene);

/// What becomes of every place on the star sphere before it is drawn.
void FlattenSky(const SceneContext& scene, Vector3& view);

/// The way back: x is the depth on the star sphere.
void DeFlattenSky(const SceneContext& scene, Vector3& view);

}  // namespace glintara
