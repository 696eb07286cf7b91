#include "engine/astro/geodesy.h"

#include <algorithm>
#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

constexpr double kFlattening = 1 / kWgs84InverseFlattening;

/// Stands in for the radius of a point at the origin, so that it can be divided by.
constexpr double kLeastRadius = 1e-16;

}  // namespace

Vector3 LLRToSameXYZ(double lat, double lon, double radius) {
    return {std::cos(lat) * std::cos(lon) * radius, std::cos(lat) * std::sin(lon) * radius, std::sin(lat) * radius};
}

LatLonRadius XYZToLatLon(const Vector3& point) {
    LatLonRadius place;
    place.radius = Length(point);
    if (place.radius == 0) place.radius = kLeastRadius;
    place.lat = ArcSin(point.z / place.radius);
    place.lon = ArcSin((point.y / place.radius) / std::cos(place.lat));
    if (point.x < 0) place.lon = kPi - place.lon;
    return place;
}

Geocentric GeodeticToGeocentric(const Geodetic& place) {
    const double f = kFlattening;
    const double e2 = 2 * f - f * f;
    const double sine = std::sin(place.lat);
    const double w = std::sqrt(1 - sine * sine * e2);
    const double across = (kWgs84Radius / w + place.height) * std::cos(place.lat);
    const Vector3 point{across * std::cos(place.lon), across * std::sin(place.lon),
                        ((1 - e2) * kWgs84Radius / w + place.height) * sine};
    const double radius = Length(point);
    return {radius > 0 ? ArcSin(point.z / radius) : 0, radius};
}

Geodetic EcefToGeodetic(const Vector3& metres) {
    const double f = kFlattening;
    const double a = kWgs84Radius;
    const double b = (1 - f) * a;
    const double e2 = (2 - f) * f;
    const double ep2 = e2 / ((1 - f) * (1 - f));
    const double z = metres.z;
    const double r2 = metres.x * metres.x + metres.y * metres.y;
    const double r = std::sqrt(r2);
    const double lon = Atan2Full(metres.y, metres.x);

    const double bigE2 = a * a - b * b;
    const double bigF = 54 * b * b * z * z;
    const double g = r2 + (1 - e2) * z * z - e2 * bigE2;
    const double c = e2 * e2 * bigF * r2 / (g * g * g);
    const double s = std::cbrt(1 + c + std::sqrt(c * c + 2 * c));
    const double k = s + 1 / s + 1;
    const double p = bigF / (3 * k * k * g * g);
    const double q = std::sqrt(1 + 2 * e2 * e2 * p);
    const double under = a * a / 2 * (1 + 1 / q) - p * (1 - e2) * z * z / (q * (1 + q)) - p * r2 / 2;
    const double r0 = -p * e2 * r / (1 + q) + std::sqrt(std::max(0.0, under));
    const double along = r - e2 * r0;
    const double u = std::sqrt(along * along + z * z);
    const double v = std::sqrt(along * along + (1 - e2) * z * z);
    const double z0 = b * b * z / (a * v);
    const double lat = std::atan((z + ep2 * z0) / r);
    const double height = u * (1 - b * b / (a * v));
    // At the Earth's centre, and where the powers overflow, the closed form has no value; from afar the Earth is a
    // point.
    if (!std::isfinite(lat) || !std::isfinite(height)) return {std::atan2(z, r), lon, std::hypot(r, z) - a};
    return {lat, lon, height};
}

double FoldLongitude(double lon) {
    const double wrapped = WrapTwoPi(lon);
    return wrapped > kPi ? wrapped - kTwoPi : wrapped;
}

}  // namespace glintara
