#include "orbit/sun_and_moon.h"

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

Vector3 WorldPlace(const Equatorial& direction, double distance, double greenwichAngle) {
    return LLRToSameXYZ(direction.dec, EastLongitudeOf(direction.ra, greenwichAngle), distance);
}

Vector3 SunPlace(const CommonData& data, double jd) {
    return WorldPlace(SunPosition(jd), kSunDistance / data.Site.SiteRadius, SiderealFromJD(jd));
}

Vector3 MoonPlaceInWorld(const CommonData& data, double jd) {
    const MoonPlace moon = MoonPosition(jd);
    return WorldPlace({moon.dec, moon.ra}, moon.distance / data.Site.SiteRadius, SiderealFromJD(jd));
}

Vector3 PointBelowSun(const CommonData& data) {
    return WorldPlace({data.SunDec, data.SunRA}, 1, SiderealFromDate(data.SimFields()));
}

Vector3 PointBelowMoon(const CommonData& data) {
    return WorldPlace({data.MoonDec, data.MoonRA}, 1, SiderealFromDate(data.SimFields()));
}

double SunElevation(const CommonData& data) { return ArcSin(Dot(HorizonAxesAt(data.Site).up, data.SunDir)); }

Vector3 MoonSeenByObserver(const CommonData& data) {
    return WorldPlace({data.MoonTopoDec, data.MoonTopoRA}, 1, SiderealFromDate(data.SimFields()));
}

}  // namespace glintara
