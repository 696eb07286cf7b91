// Sun and Moon, as Spacetrack Report No. 3, section 10 has them: each body moves on a fixed ellipse, and its pull is
// developed to the second order of the distance ratio. The letters a, x, z, s are those of the report's initialization
// of the deep-space routine.

#include "engine/sgp4/sgp4_deep_space.h"

namespace glintara::sgp4 {

namespace {

// Julian date of 31 December 1899, 12:00: origin of the lunar and solar elements.
constexpr double kEphemerisOrigin = 2415020;

// Nearer than this to the equatorial plane, radians (3 degrees), the secular motion of the node is left out.
constexpr double kNearlyEquatorial = 5.2359877e-2;

// Orbit of a perturbing body.
struct Body {
    double meanMotion;  // radians per minute
    double eccentricity;
    double strength;  // mean motion times share of mass, radians per minute
};

constexpr Body kSun = {.meanMotion = 1.19459e-5, .eccentricity = 0.01675, .strength = 2.9864797e-6};
constexpr Body kMoon = {.meanMotion = 1.5835218e-4, .eccentricity = 0.05490, .strength = 4.7968065e-7};

// Plane and perigee of a body, by sine and cosine: argument of perigee and inclination on the Earth's equator, and node
// counted from the node of the satellite.
struct BodyOrientation {
    SinCos argPerigee;
    SinCos inclination;
    SinCos relativeNode;
};

// Orientation of both bodies at an epoch.
struct BodyPlaces {
    BodyOrientation sun;
    BodyOrientation moon;
    double sunMeanAnomaly;
    double moonMeanAnomaly;
};

BodyPlaces PlacesAt(double daysSince1900, const SinCos& satelliteNode) {
    constexpr SinCos kObliquity = {.sine = 0.39785416, .cosine = 0.91744867};
    constexpr SinCos kSunArgPerigee = {.sine = -0.98088458, .cosine = 0.1945905};
    constexpr double kSineProduct = 0.03568096;    // sine of obliquity times sine of the inclination on the ecliptic
    constexpr double kCosineProduct = 0.91375164;  // product of their cosines
    constexpr double kMoonInclinationSine = 0.089683511;

    // Node of the Moon on the ecliptic, and from it inclination and node on the equator.
    const double eclipticNode = WithoutWholeTurns(4.5236020 - 9.2422029e-4 * daysSince1900);
    const SinCos onEcliptic = SinCosOf(eclipticNode);
    const double cosInclination = kCosineProduct - kSineProduct * onEcliptic.cosine;
    const double sinInclination = std::sqrt(1 - cosInclination * cosInclination);
    const double sinNode = kMoonInclinationSine * onEcliptic.sine / sinInclination;
    const double cosNode = std::sqrt(1 - sinNode * sinNode);

    // Longitude of the perigee, carried from the ecliptic to the equator.
    const double perigeeLongitude = 5.8351514 + 0.0019443680 * daysSince1900;
    const double arc = std::atan2(kObliquity.sine * onEcliptic.sine / sinInclination,
                                  cosNode * onEcliptic.cosine + kObliquity.cosine * sinNode * onEcliptic.sine);

    BodyPlaces places{};
    places.sun = {.argPerigee = kSunArgPerigee, .inclination = kObliquity, .relativeNode = satelliteNode};
    places.moon = {.argPerigee = SinCosOf(perigeeLongitude + arc - eclipticNode),
                   .inclination = {.sine = sinInclination, .cosine = cosInclination},
                   .relativeNode = SumOf(satelliteNode, {.sine = -sinNode, .cosine = cosNode})};
    places.moonMeanAnomaly = WithoutWholeTurns(4.7199672 + 0.22997150 * daysSince1900 - perigeeLongitude);
    places.sunMeanAnomaly = WithoutWholeTurns(6.2565837 + 0.017201977 * daysSince1900);
    return places;
}

// The satellite's orbit, as the development of the disturbing function needs it.
struct OrbitGeometry {
    SinCos inclination;
    SinCos argPerigee;
    double eccentricity;
    double meanMotion;
};

// Coefficients of one body's disturbing function.
struct DisturbingFunction {
    double s1, s2, s3, s4, s5, s6, s7;
    double z1, z2, z3, z11, z12, z13, z21, z22, z23, z31, z32, z33;
};

DisturbingFunction Develop(const BodyOrientation& body, double strength, const OrbitGeometry& orbit) {
    const auto& [sinPerigee, cosPerigee] = body.argPerigee;
    const auto& [sinTilt, cosTilt] = body.inclination;
    const auto& [sinNode, cosNode] = body.relativeNode;
    const auto& [sinI, cosI] = orbit.inclination;
    const auto& [sinW, cosW] = orbit.argPerigee;

    // Direction cosines of the body's perigee and of the point 90 degrees ahead, on the axes of the satellite's orbit.
    const double a1 = cosPerigee * cosNode + sinPerigee * cosTilt * sinNode;
    const double a3 = -sinPerigee * cosNode + cosPerigee * cosTilt * sinNode;
    const double a7 = -cosPerigee * sinNode + sinPerigee * cosTilt * cosNode;
    const double a8 = sinPerigee * sinTilt;
    const double a9 = sinPerigee * sinNode + cosPerigee * cosTilt * cosNode;
    const double a10 = cosPerigee * sinTilt;
    const double a2 = cosI * a7 + sinI * a8;
    const double a4 = cosI * a9 + sinI * a10;
    const double a5 = -sinI * a7 + cosI * a8;
    const double a6 = -sinI * a9 + cosI * a10;

    const double x1 = a1 * cosW + a2 * sinW;
    const double x2 = a3 * cosW + a4 * sinW;
    const double x3 = -a1 * sinW + a2 * cosW;
    const double x4 = -a3 * sinW + a4 * cosW;
    const double x5 = a5 * sinW;
    const double x6 = a6 * sinW;
    const double x7 = a5 * cosW;
    const double x8 = a6 * cosW;

    const double e = orbit.eccentricity;
    const double e2 = e * e;
    const double beta2 = 1 - e2;
    const double beta = std::sqrt(beta2);

    DisturbingFunction f{};
    f.z31 = 12 * x1 * x1 - 3 * x3 * x3;
    f.z32 = 24 * x1 * x2 - 6 * x3 * x4;
    f.z33 = 12 * x2 * x2 - 3 * x4 * x4;
    f.z1 = 2 * (3 * (a1 * a1 + a2 * a2) + f.z31 * e2) + beta2 * f.z31;
    f.z2 = 2 * (6 * (a1 * a3 + a2 * a4) + f.z32 * e2) + beta2 * f.z32;
    f.z3 = 2 * (3 * (a3 * a3 + a4 * a4) + f.z33 * e2) + beta2 * f.z33;
    f.z11 = -6 * a1 * a5 + e2 * (-24 * x1 * x7 - 6 * x3 * x5);
    f.z12 = -6 * (a1 * a6 + a3 * a5) + e2 * (-24 * (x2 * x7 + x1 * x8) - 6 * (x3 * x6 + x4 * x5));
    f.z13 = -6 * a3 * a6 + e2 * (-24 * x2 * x8 - 6 * x4 * x6);
    f.z21 = 6 * a2 * a5 + e2 * (24 * x1 * x5 - 6 * x3 * x7);
    f.z22 = 6 * (a4 * a5 + a2 * a6) + e2 * (24 * (x2 * x5 + x1 * x6) - 6 * (x4 * x7 + x3 * x8));
    f.z23 = 6 * a4 * a6 + e2 * (24 * x2 * x6 - 6 * x4 * x8);
    f.s3 = strength / orbit.meanMotion;
    f.s2 = -0.5 * f.s3 / beta;
    f.s4 = f.s3 * beta;
    f.s1 = -15 * e * f.s4;
    f.s5 = x1 * x3 + x2 * x4;
    f.s6 = x2 * x3 + x1 * x4;
    f.s7 = x2 * x4 - x1 * x3;
    return f;
}

ThirdBodyTerms PeriodicTermsOf(const DisturbingFunction& f, const Body& body, double bodyMeanAnomaly,
                               double eccentricity) {
    ThirdBodyTerms terms{};
    terms.bodyMeanAnomaly = bodyMeanAnomaly;
    terms.eccentricity2 = 2 * f.s1 * f.s6;
    terms.eccentricity3 = 2 * f.s1 * f.s7;
    terms.inclination2 = 2 * f.s2 * f.z12;
    terms.inclination3 = 2 * f.s2 * (f.z13 - f.z11);
    terms.meanAnomaly2 = -2 * f.s3 * f.z2;
    terms.meanAnomaly3 = -2 * f.s3 * (f.z3 - f.z1);
    terms.meanAnomaly4 = -2 * f.s3 * (-21 - 9 * eccentricity * eccentricity) * body.eccentricity;
    terms.perigee2 = 2 * f.s4 * f.z32;
    terms.perigee3 = 2 * f.s4 * (f.z33 - f.z31);
    terms.perigee4 = -18 * f.s4 * body.eccentricity;
    terms.node2 = -2 * f.s2 * f.z22;
    terms.node3 = -2 * f.s2 * (f.z23 - f.z21);
    return terms;
}

// Adds the secular rates by one body.
void AddRates(const DisturbingFunction& f, const Body& body, const Sgp4Record& record, ThirdBodyRates& rates) {
    const double n = body.meanMotion;
    const auto& [sinI, cosI] = SinCos{record.inclinationTerms.sine, record.inclinationTerms.cosine};
    const double e2 = record.eccentricity * record.eccentricity;

    rates.eccentricity += f.s1 * n * f.s5;
    rates.inclination += f.s2 * n * (f.z11 + f.z13);
    rates.meanAnomaly += -n * f.s3 * (f.z1 + f.z3 - 14 - 6 * e2);
    rates.argPerigee += f.s4 * n * (f.z31 + f.z33 - 6);

    const bool nearlyEquatorial =
        record.inclination < kNearlyEquatorial || record.inclination > kPi - kNearlyEquatorial;
    if (nearlyEquatorial || sinI == 0) return;
    const double nodeRate = -n * f.s2 * (f.z21 + f.z23) / sinI;
    rates.argPerigee -= cosI * nodeRate;
    rates.node += nodeRate;
}

// Adds the periodic changes by one body, whose equation of centre is taken to the first order.
void AddPerturbation(const ThirdBodyTerms& terms, const Body& body, double minutes, ThirdBodyPerturbation& sum) {
    const SinCos mean = SinCosOf(terms.bodyMeanAnomaly + body.meanMotion * minutes);
    const SinCos anomaly = Turned(mean, 2 * body.eccentricity * mean.sine);
    const double f2 = 0.5 * anomaly.sine * anomaly.sine - 0.25;
    const double f3 = -0.5 * anomaly.sine * anomaly.cosine;

    sum.eccentricity += terms.eccentricity2 * f2 + terms.eccentricity3 * f3;
    sum.inclination += terms.inclination2 * f2 + terms.inclination3 * f3;
    sum.meanAnomaly += terms.meanAnomaly2 * f2 + terms.meanAnomaly3 * f3 + terms.meanAnomaly4 * anomaly.sine;
    sum.perigee += terms.perigee2 * f2 + terms.perigee3 * f3 + terms.perigee4 * anomaly.sine;
    sum.node += terms.node2 * f2 + terms.node3 * f3;
}

}  // namespace

void PrepareDeepSpace(Sgp4Record& record) {
    // One double for the Julian date, although it rounds the epoch by up to 20 microseconds: the published table has
    // that rounding in it, and the most eccentric orbits show it at the millimetre.
    const double daysSince1900 = (record.epochDay + record.epochFraction) - kEphemerisOrigin;
    const BodyPlaces places = PlacesAt(daysSince1900, SinCosOf(record.node));
    const OrbitGeometry orbit = {.inclination = {record.inclinationTerms.sine, record.inclinationTerms.cosine},
                                 .argPerigee = SinCosOf(record.argPerigee),
                                 .eccentricity = record.eccentricity,
                                 .meanMotion = record.meanMotion};

    const DisturbingFunction bySun = Develop(places.sun, kSun.strength, orbit);
    const DisturbingFunction byMoon = Develop(places.moon, kMoon.strength, orbit);
    record.sun = PeriodicTermsOf(bySun, kSun, places.sunMeanAnomaly, record.eccentricity);
    record.moon = PeriodicTermsOf(byMoon, kMoon, places.moonMeanAnomaly, record.eccentricity);
    AddRates(bySun, kSun, record, record.thirdBodyRates);
    AddRates(byMoon, kMoon, record, record.thirdBodyRates);

    PrepareResonance(record);
}

ThirdBodyPerturbation ThirdBodyPerturbationAt(const Sgp4Record& record, double minutes) {
    ThirdBodyPerturbation sum{};
    AddPerturbation(record.sun, kSun, minutes, sum);
    AddPerturbation(record.moon, kMoon, minutes, sum);
    return sum;
}

}  // namespace glintara::sgp4
