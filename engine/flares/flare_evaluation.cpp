#include "engine/flares/flare_evaluation.h"

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/sun_moon.h"
#include "engine/glintcore.h"

namespace glintara {

// The C interface is what other languages see of the enumerations.
static_assert(static_cast<int>(FlareGeometry::Transit) == GLINTCORE_TRANSIT);
static_assert(static_cast<int>(FlareGeometry::AlongTrack) == GLINTCORE_ALONG_TRACK);
static_assert(static_cast<int>(FlareGeometry::Inertial) == GLINTCORE_INERTIAL);
static_assert(static_cast<int>(FlareGeometry::VerticalSun) == GLINTCORE_VERTICAL_SUN);
static_assert(static_cast<int>(LightSource::Sun) == GLINTCORE_SUN);
static_assert(static_cast<int>(LightSource::Moon) == GLINTCORE_MOON);

Lights LightsAt(double jd, LightSource source, double greenwichAngle, double siteRadius) {
    Lights lights;
    const Equatorial sun = SunPosition(jd);
    lights.sun = LLRToSameXYZ(sun.dec, EastLongitudeOf(sun.ra, greenwichAngle), kSunDistance / siteRadius);
    if (source == LightSource::Moon) {
        const MoonPlace moon = MoonPosition(jd);
        lights.moon = LLRToSameXYZ(moon.dec, EastLongitudeOf(moon.ra, greenwichAngle), moon.distance / siteRadius);
    }
    return lights;
}

MirrorSetting MakeMirrorSetting(FlareGeometry geometry, double angle, double tilt) {
    return {geometry, MirrorComponents(geometry == FlareGeometry::Inertial, angle, tilt)};
}

BodyFrame FrameOf(FlareGeometry geometry, const Vector3& r, const Vector3& v, const Vector3& sun,
                  double greenwichAngle) {
    switch (geometry) {
        case FlareGeometry::Inertial:
            return InertialFrame(greenwichAngle);
        case FlareGeometry::VerticalSun:
            return VerticalFrame(r, sun - r);
        case FlareGeometry::AlongTrack:
        case FlareGeometry::Transit:
            break;
    }
    return VerticalFrame(r, v);
}

std::optional<FlareCentre> EvaluateFlare(const MirrorSetting& mirror, LightSource source, const Lights& lights,
                                         const Vector3& r, const Vector3& v, double greenwichAngle) {
    const Vector3& light = SourceOf(lights, source);
    if (mirror.geometry == FlareGeometry::Transit) return TransitPoint(r, light);
    if (InShadow(r, Normalized(light))) return std::nullopt;
    return MirrorFlare(r, light,
                       OnFrame(mirror.components, FrameOf(mirror.geometry, r, v, lights.sun, greenwichAngle)));
}

}  // namespace glintara
