#include "flare/attitude.h"

#include <algorithm>
#include <cstdint>

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/geometry/attitude_types.h"
#include "flare/surface_models.h"
#include "orbit/satellite_motion.h"
#include "orbit/satellite_table.h"
#include "orbit/sun_and_moon.h"

namespace glintara {

namespace {

/// A line to a target that is shorter than this, in `SiteRadius` (some six metres), leads from a satellite to itself:
/// what is left of it is rounding, and so would be the direction.
constexpr double kShortestLine = 1e-6;
/// Sine of the angle to the vertical below which a reference has no horizontal part but rounding.
constexpr double kLeastSine = 1e-12;

/// The line from `r` to the target of `satellite`; nothing when there is no target to propagate, or when it is the
/// satellite itself.
std::optional<Vector3> LineToTarget(const Application& app, const SatRecord& satellite, const Vector3& r, double jd) {
    const CommonData& data = app.Data;
    const int index = SearchSatID(data, satellite.Surface.TargetSatID);
    if (OrbitModelOf(app.Main) != OrbitModel::SGP4 || index < 1 || index > data.SatCount) return std::nullopt;
    EngineBlock block = data.Satellite(index).EngineBlock;
    const WorldMotion target = PropagateSatellite(data, EarthRotation::Displayed, block, jd);
    const Vector3 line = OnAxesOfInstant(data, target, jd).position - r;
    return Length(line) > kShortestLine ? std::optional(line) : std::nullopt;
}

std::optional<BodyFrame> FrameTowards(const Vector3& r, const Vector3& reference) {
    const double across = Length(CrossProduct(r, reference));
    if (!(across > kLeastSine * Length(r) * Length(reference))) return std::nullopt;
    return VerticalFrame(r, reference);
}

}  // namespace

std::optional<BodyFrame> BuildBodyFrame(const Application& app, const SatRecord& satellite, const Vector3& r,
                                        const Vector3& v, double jd) {
    const std::optional<OrientationType> type = OrientationTypeOf(satellite.Surface.OrientationType);
    if (!type) return std::nullopt;
    switch (*type) {
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

EngineSurfaces SurfacesTakingPart(const SatRecord& satellite, bool transit) {
    EngineSurfaces surfaces;
    if (satellite.IsDisabled()) return surfaces;
    if (transit) {
        surfaces.Add({0, 0, 0, GLINTCORE_TRANSIT, 0});
        return surfaces;
    }
    const SurfaceModel& model = satellite.Surface;
    const std::optional<OrientationType> type = OrientationTypeOf(model.OrientationType);
    if (!type || !HasFlareModel(satellite)) return surfaces;
    for (int i = 1; i <= std::min(model.MirrorCount, kMirrorCapacity); ++i) {
        const MirrorRecord& mirror = model.Mirror(i);
        surfaces.Add(
            {mirror.Angle * kDegToRad, mirror.Tilt * kDegToRad, 0, static_cast<std::int32_t>(GeometryOf(*type)), 0});
    }
    return surfaces;
}

}  // namespace glintara
