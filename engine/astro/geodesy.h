#pragma once

// Polar and rectangular places, and the WGS 84 ellipsoid. Axes are Earth-fixed: x towards longitude 0, z towards the
// north pole. Longitudes are positive east. Radians; metres where told.

#include "engine/astro/vector.h"

namespace glintara {

/// A direction or place by angles, radians, with its distance in the unit of the vector that it came from.
struct LatLonRadius {
    double lat = 0;
    double lon = 0;
    double radius = 0;
};

/// A place on or above the ellipsoid: geodetic latitude and longitude in radians, height in metres.
struct Geodetic {
    double lat = 0;
    double lon = 0;
    double height = 0;
};

/// A place on the ellipsoid as seen from the Earth's centre: geocentric latitude in radians, distance in metres.
struct Geocentric {
    double lat = 0;
    double radius = 0;
};

/// Rectangular position of (lat, lon) at `radius`, in the unit of `radius`.
Vector3 LLRToSameXYZ(double lat, double lon, double radius);

/// Polar position of a point. The longitude runs from -pi/2 to 3 pi/2 and is not wrapped. A point at the origin gets a
/// radius of 1e-16 and angles 0; on the polar axis the longitude is 0.
LatLonRadius XYZToLatLon(const Vector3& point);

/// Geocentric latitude and distance from the centre of a geodetic place (WGS 84).
Geocentric GeodeticToGeocentric(const Geodetic& place);

/// Geodetic latitude, longitude (-pi/2 to 3 pi/2, not wrapped) and height of an Earth-fixed point in metres, WGS 84.
/// Closed form of Heikkinen (Zeitschrift fuer Vermessungswesen 107, 1982), which holds from 43 km off the Earth's
/// centre outwards. The centre itself gives latitude 0; every finite point gives finite values.
Geodetic EcefToGeodetic(const Vector3& metres);

/// `lon` folded into -pi to pi, for display.
double FoldLongitude(double lon);

}  // namespace glintara
