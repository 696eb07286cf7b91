#include "engine/astro/sun_moon.h"

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

/// Takes whole turns off until `degrees` lies in 0 to 360; a whole number of turns above 0 gives 360.
double WithinCircle(double degrees) {
    if (degrees > 360) {
        const double rest = std::fmod(degrees, 360);
        return rest == 0 ? 360 : rest;
    }
    if (degrees < 0) {
        const double rest = std::fmod(degrees, 360);
        return rest < 0 ? rest + 360 : 0;
    }
    return degrees;
}

constexpr double Radians(double degrees) { return degrees / 180 * kPi; }

/// Equatorial radius by which the Moon's distance is told in metres.
constexpr double kMoonDistanceUnit = 6378137;

/// Arguments of the Moon's perturbations, radians.
struct MoonArguments {
    double moonAnomaly = 0;
    double sunAnomaly = 0;
    double elongation = 0;
    double latitudeArgument = 0;
};

/// Perturbation in longitude, degrees.
double LongitudeTerms(const MoonArguments& a) {
    const double mm = a.moonAnomaly;
    const double ms = a.sunAnomaly;
    const double d = a.elongation;
    const double f = a.latitudeArgument;
    double sum = -1.274 * std::sin(mm - 2 * d);  // evection
    sum += 0.658 * std::sin(2 * d);              // variation
    sum -= 0.186 * std::sin(ms);                 // yearly equation
    sum -= 0.059 * std::sin(2 * mm - 2 * d);
    sum -= 0.057 * std::sin(mm - 2 * d + ms);
    sum += 0.053 * std::sin(mm + 2 * d);
    sum += 0.046 * std::sin(2 * d - ms);
    sum += 0.041 * std::sin(mm - ms);
    sum -= 0.035 * std::sin(d);  // parallactic equation
    sum -= 0.031 * std::sin(mm + ms);
    sum -= 0.015 * std::sin(2 * f - 2 * d);
    sum += 0.011 * std::sin(mm - 4 * d);  // so in the source; fuller theories have it with the opposite sign
    return sum;
}

/// Perturbation in latitude, degrees.
double LatitudeTerms(const MoonArguments& a) {
    const double mm = a.moonAnomaly;
    const double d = a.elongation;
    const double f = a.latitudeArgument;
    return -0.173 * std::sin(f - 2 * d) - 0.055 * std::sin(mm - f - 2 * d) - 0.046 * std::sin(mm + f - 2 * d) +
           0.033 * std::sin(f + 2 * d) + 0.017 * std::sin(2 * mm + f);
}

}  // namespace

Equatorial SunPosition(double jd) {
    const double n = jd - kJ2000;
    const double g = Radians(WithinCircle(357.529 + 0.98560028 * n));
    const double q = 280.459 + 0.98564736 * n;
    const double l = Radians(WithinCircle(q + 1.915 * std::sin(g) + 0.02 * std::sin(2 * g)));
    const double e = Radians(WithinCircle(23.439 - 3.6e-7 * n));
    Equatorial sun;
    sun.dec = ArcSin(std::sin(e) * std::sin(l));
    sun.ra = Atan2Full(std::cos(e) * std::sin(l), std::cos(l));
    if (sun.ra < 0) sun.ra += kTwoPi;
    return sun;
}

MoonPlace MoonPosition(double jd) {
    const double d = (jd - kJ2000) + 1.5;
    const double node = WrapTwoPi((125.1228 - 0.0529538083 * d) * kDegToRad);
    const double inclination = 5.1454 * kDegToRad;
    const double perigee = WrapTwoPi((318.0634 + 0.1643573223 * d) * kDegToRad);
    const double a = 60.2666;
    const double e = 0.0549;
    const double anomaly = WrapTwoPi((115.3654 + 13.0649929509 * d) * kDegToRad);
    const double sunPerigee = WrapTwoPi((282.9404 + 4.70935e-05 * d) * kDegToRad);
    const double sunAnomaly = WrapTwoPi((356.047 + 0.9856002585 * d) * kDegToRad);

    const double eccentric = anomaly + e * std::sin(anomaly) * (1 + e * std::cos(anomaly));
    const double xv = a * (std::cos(eccentric) - e);
    const double yv = a * std::sqrt(1 - e * e) * std::sin(eccentric);
    double r = std::sqrt(yv * yv + xv * xv);
    const double u = Atan2Positive(yv, xv) + perigee;
    const double xh = r * (std::cos(node) * std::cos(u) - std::sin(node) * std::sin(u) * std::cos(inclination));
    const double yh = r * (std::sin(node) * std::cos(u) + std::cos(node) * std::sin(u) * std::cos(inclination));
    const double zh = r * std::sin(u) * std::sin(inclination);
    double lon = Atan2Positive(yh, xh);
    double lat = Atan2Positive(zh, std::sqrt(xh * xh + yh * yh));

    const double sunLongitude = sunAnomaly + sunPerigee;
    const double moonLongitude = anomaly + perigee + node;
    const double elongation = moonLongitude - sunLongitude;
    const MoonArguments arguments{anomaly, sunAnomaly, elongation, moonLongitude - node};
    r = r - 0.58 * std::cos(anomaly - 2 * elongation) - 0.46 * std::cos(2 * elongation);
    lon += LongitudeTerms(arguments) * kDegToRad;
    lat += LatitudeTerms(arguments) * kDegToRad;

    const double xg = r * std::cos(lon) * std::cos(lat);
    const double yg = r * std::sin(lon) * std::cos(lat);
    const double zg = r * std::sin(lat);
    const double obliquity = (23.4393 - 3.563e-07 * d) * kDegToRad;
    const double ye = yg * std::cos(obliquity) - zg * std::sin(obliquity);
    const double ze = yg * std::sin(obliquity) + zg * std::cos(obliquity);
    MoonPlace moon;
    moon.ra = Atan2Positive(ye, xg);
    moon.dec = std::atan(ze / std::sqrt(ye * ye + xg * xg));
    moon.distance = r * kMoonDistanceUnit;
    return moon;
}

}  // namespace glintara
