#pragma once

// Light from its source over a mirror to the ground. Pure geometry: the Earth is a sphere of radius 1, light goes
// straight and at once.

#include <optional>

#include "engine/astro/vector.h"

namespace glintara {

/// A ray at a mirror.
struct Reflection {
    Vector3 ray;       ///< unit direction behind the mirror; zero when the mirror is not hit
    bool hit = false;  ///< the ray strikes the side that the normal faces
};

/// Unit direction `d` reflected at a plane with unit normal `n`. A ray along the plane counts as a hit and runs on
/// unbent; one that arrives from behind gives none.
Reflection ReflectVector(const Vector3& d, const Vector3& n);

/// Where the ray from `r` (outside the unit sphere) in unit direction `d` first meets the sphere; nothing when it
/// misses or the sphere lies behind. A tangent ray meets it.
std::optional<Vector3> IntersectEarth(const Vector3& r, const Vector3& d);

/// Whether a satellite at `r` is in the Earth's shadow for a source in unit direction `u`: inside the cylinder of
/// radius 1 behind the Earth. Its surface counts as lit.
bool InShadow(const Vector3& r, const Vector3& u);

/// Where a flare falls.
struct FlareCentre {
    Vector3 centre;        ///< on the unit sphere
    double incidence = 0;  ///< scalar product of incident ray and mirror normal; 1 without a mirror
};

/// The flare of a mirror with unit normal `normal` on a satellite at `r`, lit by a source at `source`; nothing when the
/// mirror faces away, the reflected ray misses the Earth, or a number is not finite. The shadow is not asked here.
std::optional<FlareCentre> MirrorFlare(const Vector3& r, const Vector3& source, const Vector3& normal);

/// The place from which a satellite at `r` is seen in line with a source at `source`: where the ray past it meets the
/// Earth.
std::optional<FlareCentre> TransitPoint(const Vector3& r, const Vector3& source);

}  // namespace glintara
