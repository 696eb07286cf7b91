#pragma once

// The marks of live flares on the Earth.

#include "engine/astro/constants.h"
#include "flare/live_flares.h"
#include "scene/name_board.h"
#include "scene/view_geometry.h"

namespace glintara {

/// Colours of labels: light of the Sun and of the Moon.
inline constexpr Color kSunFlareColor = 0x00FF00;
inline constexpr Color kMoonFlareColor = 0x80FFFF;

/// Colour of the circle round a centre.
inline constexpr Color kFlareCircleColor = 0x208040;

/// Angular radius of that circle at the Earth's centre, radians: 50 km on the ground.
inline constexpr double kFlareCircleAngle = 0.45 * kDegToRad;

/// Draws the marks of `satellite`: with `CPlotOrbit` a circle round each centre that is `kLabelledDistance` or more
/// away; a point at a nearer one, and a wish on `names` that its label begin there. On the globe only where the centre
/// is on the side that is seen.
void DrawFlareMarks(const SceneContext& scene, const SatRecord& satellite, const LiveFlares& flares, NameBoard& names);

}  // namespace glintara
