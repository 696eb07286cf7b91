#include "engine/flares/flare_evaluation.h"

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/sun_moon.h"

namespace glintara {

std::optional<FlareGeometry> FlareGeometryOf(int code) {
    switch (code) {
        case -1:
        case 0:
        case 1:
        case 4:
            return static_cast<FlareGeometry>(code);
        default:
            return std::nullopt;
    }
}

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

Vector3 NormalOf(const MirrorSetting& mirror, const Vector3& r, const Vector3& v, const Vector3& sun,
                 double greenwichAngle) {
    switch (mirror.geometry) {
        case FlareGeometry::Inertial:
            return OnFrame(mirror.components, InertialFrame(greenwichAngle));
        case FlareGeometry::VerticalSun:
            return OnFrame(mirror.components, VerticalFrame(r, sun - r));
        case FlareGeometry::AlongTrack:
        case FlareGeometry::Transit:
            break;
    }
    return OnFrame(mirror.components, VerticalFrame(r, v));
}

std::optional<FlareCentre> EvaluateFlare(const MirrorSetting& mirror, LightSource source, const Lights& lights,
                                         const Vector3& r, const Vector3& v, double greenwichAngle) {
    const Vector3& light = SourceOf(lights, source);
    if (mirror.geometry == FlareGeometry::Transit) return TransitPoint(r, light);
    if (InShadow(r, Normalized(light))) return std::nullopt;
    return MirrorFlare(r, light, NormalOf(mirror, r, v, lights.sun, greenwichAngle));
}

}  // namespace glintara
