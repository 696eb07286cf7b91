#pragma once

// How a satellite of the list stands in space: the body frame of its attitude type.

#include <optional>

#include "engine/astro/vector.h"
#include "engine/geometry/body_frame.h"
#include "state/application.h"

namespace glintara {

/// Position of the Sun at `jd`, Earth-fixed, in `SiteRadius`.
Vector3 SunPlace(const CommonData& data, double jd);

/// The frame of a satellite at `r` with velocity `v`, Earth-fixed at `jd`, for the attitude type of `satellite`. Under
/// `AlongTarget` the target is propagated to the same instant. Nothing when there is no frame: an attitude type that is
/// none, a target that is not in the list or is the satellite itself, the simple propagator with a target, a reference
/// along the vertical.
std::optional<BodyFrame> BuildBodyFrame(const Application& app, const SatRecord& satellite, const Vector3& r,
                                        const Vector3& v, double jd);

/// The geometry code under which tracks and search carry a satellite of this attitude type. Rotating bodies and those
/// along a target are followed as if fixed in space; only the live plot knows them fully.
int GeometryCodeOf(int orientationType, bool transit);

}  // namespace glintara
