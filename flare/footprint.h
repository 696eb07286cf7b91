#pragma once

// The spot of light that a surface throws on the ground, by its outline: the image of the source's limb.

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "engine/astro/constants.h"
#include "engine/astro/vector.h"
#include "flare/live_flares.h"

namespace glintara {

/// Radii of the discs of Sun and Moon, metres.
inline constexpr double kSunDiscRadius = 695500000.0;
inline constexpr double kMoonDiscRadius = 1737400.0;

/// Step from one point of the outline to the next, as seen from the middle of the source, radians.
inline constexpr double kRingStep = kPi / 20;

/// The outline, closed: its last point is the first again. A point whose light misses the Earth is none.
using FootprintRing = std::array<std::optional<Vector3>, 41>;

/// The outline of the light that a source at `source`, a disc of `radius`, throws by way of a mirror with unit normal
/// `normal` on a satellite at `r`; the disc is widened by `scatter`, and with 1 the outline is the true one. Lengths in
/// `SiteRadius`, points on the unit sphere.
FootprintRing FootprintOf(const Vector3& r, const Vector3& source, double radius, double scatter,
                          const Vector3& normal);

/// Whether the outlines of a satellite's light are known: those of surfaces that keep to the vertical and to the
/// direction of flight or the Sun.
bool HasFootprints(const SatRecord& satellite);

}  // namespace glintara
