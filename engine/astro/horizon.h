#pragma once

// The observer and the observer's horizon.
//
// World frame: Earth-fixed axes, unit of length `SiteRadius`, so that the observer stands at distance 1. The observer
// is placed at the geocentric latitude on that sphere; the zenith is the geodetic one. That mixture is deliberate: it
// puts the observer where the ground is and the horizon where it is seen.

#include "engine/astro/geodesy.h"
#include "engine/astro/vector.h"

namespace glintara {

/// Distance from the Earth's centre assumed before a place is set, metres.
inline constexpr double kDefaultSiteRadius = 6378135;

/// The observer's place.
struct ObserverSite {
    double SiteLat = 0;                      ///< geodetic latitude, radians
    double SiteLon = 0;                      ///< longitude, radians, positive east
    double SiteAlt = 150;                    ///< height above the ellipsoid, metres
    double SiteGeoLat = 0;                   ///< geocentric latitude, radians; derived
    double SiteRadius = kDefaultSiteRadius;  ///< distance from the Earth's centre, metres; derived
};

/// The observer's block for a geodetic place, derived fields included.
ObserverSite MakeObserverSite(const Geodetic& place);

/// The observer in the world frame: the unit vector at (`SiteGeoLat`, `SiteLon`).
Vector3 ObserverOnUnitSphere(const ObserverSite& site);

/// Azimuth from north through east, 0 to 2 pi, and altitude above the horizon, radians.
struct HorizonAngles {
    double azimuth = 0;
    double altitude = 0;
};

/// North, east and (geodetic) up at the observer as unit vectors in world axes.
struct HorizonAxes {
    Vector3 north;
    Vector3 east;
    Vector3 up;
};

HorizonAxes HorizonAxesAt(const ObserverSite& site);

/// Direction and range, in `SiteRadius`, of world point `point` as seen from the observer, on the world axes.
LatLonRadius SatXYZToSkyLatLon(const ObserverSite& site, const Vector3& point);

/// Unit vector, in world axes, of a direction given by horizon angles.
Vector3 HorizonToWorld(const ObserverSite& site, const HorizonAngles& direction);

/// Azimuth and altitude of world point `point` (unit `SiteRadius`) as seen from the observer.
HorizonAngles WorldToHorizon(const ObserverSite& site, const Vector3& point);

/// Declination and right ascension of a body, radians.
struct Equatorial {
    double dec = 0;
    double ra = 0;
};

/// The place of a body corrected for the observer's parallax. `distance` and `siteRadius` are in the same unit;
/// `siteAngle` is the local sidereal angle. `ra` of the result is 0 to 2 pi.
Equatorial TopocentricShift(const Equatorial& geocentric, double distance, double siteRadius, double siteLat,
                            double siteAngle);

}  // namespace glintara
