#include "flare/attitude.h"

#include "orbit/astro/constants.h"
#include "orbit/astro/geodesy.h"
#include "orbit/astro/sidereal.h"
#include "orbit/astro/sun_moon.h"
#include "orbit/propagation.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

/// The line from `r` to the target of `satellite`; nothing when there is no target to propagate.
std::optional<Vector3> LineToTarget(const Application& app, const SatRecord& satellite, const Vector3& r, double jd) {
    const CommonData& data = app.Data;
    const int index = SearchSatID(data, satellite.Surface.TargetSatID);
    if (!app.Main.CSGP4.Value || index < 1 || index > data.SatCount) {
        return std::nullopt;
    }
    EngineBlock block = data.Satellite(index).EngineBlock;
    const WorldMotion target = PropagateSatellite(data, EarthRotation::Displayed, block, jd);
    return OnAxesOfInstant(data, target, jd).position - r;
}

std::optional<BodyFrame> FrameTowards(const Vector3& r, const Vector3& reference) {
    const BodyFrame frame = VerticalFrame(r, reference);
    if (!IsFinite(frame.BodyUp) || !IsFinite(frame.BodyAhead)) {
        return std::nullopt;
    }
    return frame;
}

}  // namespace

Vector3 SunPlace(const CommonData& data, double jd) {
    const Equatorial sun = SunPosition(jd);
    return LLRToSameXYZ(sun.dec, EastLongitudeOf(sun.ra, SiderealFromJD(jd)), kSunDistance / data.Site.SiteRadius);
}

std::optional<BodyFrame> BuildBodyFrame(const Application& app, const SatRecord& satellite, const Vector3& r,
                                        const Vector3& v, double jd) {
    switch (static_cast<OrientationType>(satellite.Surface.OrientationType)) {
        case OrientationType::AlongTrack:
            return FrameTowards(r, v);
        case OrientationType::Inertial:
        case OrientationType::Rotating:
            return InertialFrame(SiderealFromJD(jd));
        case OrientationType::AlongTarget: {
            const std::optional<Vector3> line = LineToTarget(app, satellite, r, jd);
            return line ? FrameTowards(r, *line) : std::nullopt;
        }
        case OrientationType::VerticalSun:
            return FrameTowards(r, SunPlace(app.Data, jd) - r);
    }
    return std::nullopt;
}

int GeometryCodeOf(int orientationType, bool transit) {
    if (transit) {
        return GLINTCORE_TRANSIT;
    }
    const bool followedAsInertial = orientationType == static_cast<int>(OrientationType::Rotating) ||
                                    orientationType == static_cast<int>(OrientationType::AlongTarget);
    return followedAsInertial ? GLINTCORE_INERTIAL : orientationType;
}

}  // namespace glintara
