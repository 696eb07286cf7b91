#include "engine/astro/horizon.h"

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

ObserverSite MakeObserverSite(const Geodetic& place) {
    const Geocentric geocentric = GeodeticToGeocentric(place);
    return {place.lat, place.lon, place.height, geocentric.lat, geocentric.radius};
}

Vector3 ObserverOnUnitSphere(const ObserverSite& site) { return LLRToSameXYZ(site.SiteGeoLat, site.SiteLon, 1.0); }

HorizonAxes HorizonAxesAt(const ObserverSite& site) {
    HorizonAxes axes;
    axes.up = LLRToSameXYZ(site.SiteLat, site.SiteLon, 1.0);
    const double twice = 2 * std::sin(site.SiteLat);
    axes.north = Normalized({-twice * axes.up.x, -twice * axes.up.y, 2 - twice * axes.up.z});
    axes.east = CrossProduct(axes.north, axes.up);
    return axes;
}

LatLonRadius SatXYZToSkyLatLon(const ObserverSite& site, const Vector3& point) {
    return XYZToLatLon(point - ObserverOnUnitSphere(site));
}

Vector3 HorizonToWorld(const ObserverSite& site, const HorizonAngles& direction) {
    const HorizonAxes axes = HorizonAxesAt(site);
    const double a = std::cos(direction.altitude) * std::cos(direction.azimuth);
    const double b = std::sin(direction.altitude);
    const double c = std::cos(direction.altitude) * std::sin(direction.azimuth);
    return Normalized(a * axes.north + b * axes.up + c * axes.east);
}

HorizonAngles WorldToHorizon(const ObserverSite& site, const Vector3& point) {
    const Vector3 direction = Normalized(point - ObserverOnUnitSphere(site));
    const HorizonAxes axes = HorizonAxesAt(site);
    HorizonAngles angles;
    angles.altitude = ArcSin(Dot(axes.up, direction));
    angles.azimuth = Atan2Full(Dot(axes.east, direction), Dot(axes.north, direction));
    if (angles.azimuth < 0) angles.azimuth += kTwoPi;
    return angles;
}

Equatorial TopocentricShift(const Equatorial& geocentric, double distance, double siteRadius, double siteLat,
                            double siteAngle) {
    // x towards the pole, z towards the equinox.
    const Vector3 site{siteRadius * std::sin(siteLat), siteRadius * std::sin(siteAngle) * std::cos(siteLat),
                       siteRadius * std::cos(siteAngle) * std::cos(siteLat)};
    const Vector3 body{distance * std::sin(geocentric.dec),
                       distance * std::sin(geocentric.ra) * std::cos(geocentric.dec),
                       distance * std::cos(geocentric.ra) * std::cos(geocentric.dec)};
    const Vector3 d = body - site;
    const double range = Length(d);
    Equatorial apparent;
    apparent.dec = ArcSin(d.x / range);
    apparent.ra = ArcSin((d.y / range) / std::cos(apparent.dec));
    if (d.z < 0) apparent.ra = kPi - apparent.ra;
    if (apparent.ra < 0) apparent.ra += kTwoPi;
    return apparent;
}

}  // namespace glintara
