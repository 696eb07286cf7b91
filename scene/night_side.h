#pragma once

// The light of the Sun on the picture of the Earth: the night side, darkened so that land and sea below stay readable,
// and the glow of the air along the limb of the globe.
//
// Night begins at the terminator, the great circle 90 degrees from the point that the Sun stands over, and grows with
// the Sun's depth below the horizon until it is full at `kTwilight`. The refraction of the air is left out.

#include <cstdint>
#include <vector>

#include "engine/astro/constants.h"
#include "scene/view_geometry.h"

namespace glintara {

/// Depth of the Sun below the horizon at which the night is as dark as it gets, radians.
inline constexpr double kTwilight = 3 * kDegToRad;

/// Width of the glow outside of the limb, pixels of a screen at scale 1, and as part of the globe's radius the most
/// that it takes of a globe far away.
inline constexpr double kGlowWidth = 5;
inline constexpr double kMostGlow = 0.05;

/// How far the night reaches beyond the limb, pixels of the display, but no farther than the glow: it takes the
/// antialiased edge of the disc along.
inline constexpr double kNightRim = 1;

/// The Sun's heights between which the glow of a place on the limb goes from the least to the most, radians, and the
/// part of it that stays through the night.
inline constexpr double kGlowDusk = -12 * kDegToRad;
inline constexpr double kGlowDay = 4 * kDegToRad;
inline constexpr double kGlowAtNight = 0.2;

inline constexpr Color kLimbColor = 0xB08050;

/// Coverages of one row of pixels. Whoever makes pictures keeps it, so that drawing takes no memory.
using CoverageRow = std::vector<std::uint8_t>;

/// How much of the night there is where the Sun stands at this sine of its height: 0 by day, 1 beyond `kTwilight`.
double NightShare(double sineOfHeight);

/// Brightness of the glow at a place of the limb, over that by day, where the Sun stands at this sine of its height.
double GlowShare(double sineOfHeight);

/// Darkens the night side of the globe or of the flat map: `ShadowColor` is laid on by the mask mode, as far as the
/// night has come at each pixel. Nothing without a Sun. The mode is Copy afterwards.
void DrawNightSide(const SceneContext& scene, CoverageRow& row);

/// The glow along the limb of the globe, `kLimbColor` fading outwards and, with `CSunLight`, with the height of the
/// Sun. It begins a pixel inside of the limb, under the edge of the disc, which is to be drawn after it.
void DrawGlow(const SceneContext& scene, CoverageRow& row);

}  // namespace glintara
