#pragma once

// One instant of one mirror: is there a flare, and where does it fall?

#include <optional>

#include "engine/astro/vector.h"
#include "engine/geometry/attitude_types.h"
#include "engine/geometry/body_frame.h"
#include "engine/geometry/reflection.h"

namespace glintara {

/// Where Sun and Moon stand at one instant: geocentric, on the axes and in the unit of the satellite's position.
struct Lights {
    Vector3 sun;
    Vector3 moon;  ///< zero unless the Moon is the source
};

/// Places of Sun and, for `source` Moon, of the Moon at `jd`, on axes turned by `greenwichAngle` from the inertial ones
/// (0: the inertial axes), in units of `siteRadius` metres.
Lights LightsAt(double jd, LightSource source, double greenwichAngle, double siteRadius);

constexpr const Vector3& SourceOf(const Lights& lights, LightSource source) {
    return source == LightSource::Moon ? lights.moon : lights.sun;
}

/// A mirror, ready to be asked at many instants.
struct MirrorSetting {
    FlareGeometry geometry = FlareGeometry::AlongTrack;
    BodyComponents components;
};

/// The setting of a mirror at `angle`, `tilt`, radians.
MirrorSetting MakeMirrorSetting(FlareGeometry geometry, double angle, double tilt);

/// The frame that carries the mirrors of a geometry, on a satellite at `r` with velocity direction `v`, on axes turned
/// by `greenwichAngle`. Not for transits.
BodyFrame FrameOf(FlareGeometry geometry, const Vector3& r, const Vector3& v, const Vector3& sun,
                  double greenwichAngle);

/// The flare of a mirror at one instant, shadow included; nothing when there is none.
std::optional<FlareCentre> EvaluateFlare(const MirrorSetting& mirror, LightSource source, const Lights& lights,
                                         const Vector3& r, const Vector3& v, double greenwichAngle);

}  // namespace glintara
