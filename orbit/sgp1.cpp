#include "orbit/sgp1.h"

#include <cmath>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/kepler.h"
#include "engine/astro/sidereal.h"
#include "orbit/element_sets.h"

namespace glintara {

namespace {

/// Half of J2, and three times that as the rate of the node takes it.
constexpr double kHalfJ2 = 0.000541308;
constexpr double kNodeFactor = 0.0016239240000000001;

constexpr double kTwoThirds = 2.0 / 3;

/// Semi-major axis at the epoch without the part of it that the flattening of the Earth puts into the mean motion.
double UnperturbedAxis(const KeplerElements& source) {
    const double period = kSecondsPerDay / source.MeanMotion;
    const double a1 = std::pow(period * std::sqrt(kSGP1Mu) / 2 / kPi, kTwoThirds) / kSGP1Radius;
    const double c = std::cos(source.Inclination);
    const double roundness = 1 - source.Eccentricity * source.Eccentricity;
    const double delta = 3.0 / 2 * kHalfJ2 / (a1 * a1) * (3 * c * c - 1) / std::pow(roundness, 3.0 / 2);
    return a1 * (1 - delta / 3 - delta * delta - delta * delta * delta * 134 / 81);
}

/// A vector of the orbit's plane, from its ascending node towards the motion, on the world axes. The angles come with
/// quarter turns added and taken off, as the program's other rotations have them.
Vector3 OnWorldAxes(const CommonData& data, const KeplerElements& elements, const Vector3& inPlane) {
    const double greenwich = SiderealFromDate(data.SimFields());
    const double node = elements.RaanAngle - greenwich;
    const double c = std::cos(elements.Inclination);
    const double s = std::sin(elements.Inclination);
    const Vector3 tilted{c * inPlane.x + s * inPlane.z, inPlane.y, c * inPlane.z - s * inPlane.x};
    return TurnedAboutPole(tilted, node - kPi / 2);
}

}  // namespace

KeplerElements KeplerElementsOf(const SatRecord& satellite) {
    return {.Inclination = satellite.Inclination,
            .RaanAngle = satellite.RaanAngle,
            .Eccentricity = satellite.Eccentricity,
            .ArgPerigee = satellite.ArgPerigee,
            .MeanAnomaly = satellite.MeanAnomaly,
            .MeanMotion = satellite.MeanMotion,
            .MeanMotionDot = satellite.MeanMotionDot,
            .MeanMotionDDot = satellite.MeanMotionDDot,
            .MeanRadiusA = satellite.MeanRadiusA};
}

double SatelliteTimeSinceEpoch(const CommonData& data, const SatRecord& satellite) {
    return DateToJD(data.SimFields()) - EpochToJD(satellite);
}

void SGP1(const KeplerElements& source, KeplerElements& working, double& t) {
    const KeplerElements from = source;
    working = from;
    t = t * 2 * kPi;
    const double n = from.MeanMotion;
    const double c = std::cos(from.Inclination);
    const double a0 = UnperturbedAxis(from);
    const double p0 = a0 * (1 - from.Eccentricity * from.Eccentricity);
    const double q0 = a0 * (1 - from.Eccentricity);
    const double nodeRate = -kNodeFactor / (p0 * p0) * n * c;
    const double perigeeRate = (5 * c * c - 1) * (3.0 / 2 * kHalfJ2) / p0 * n;
    const double motion = n + 2 * from.MeanMotionDot * t + 3 * from.MeanMotionDDot * t * t;
    const double a = a0 * std::pow(n / motion, kTwoThirds);
    working.ArgPerigee = from.ArgPerigee + perigeeRate * t;
    working.Eccentricity = a > q0 ? 1 - q0 / a : kSGP1LeastEccentricity;
    working.RaanAngle = from.RaanAngle + nodeRate * t;
    working.MeanRadiusA = a;
}

void SGP1(const SatRecord& source, SatRecord& working, double& t) {
    KeplerElements elements;
    SGP1(KeplerElementsOf(source), elements, t);
    working = source;
    working.ArgPerigee = elements.ArgPerigee;
    working.Eccentricity = elements.Eccentricity;
    working.RaanAngle = elements.RaanAngle;
    working.MeanRadiusA = elements.MeanRadiusA;
}

double MeanAnomalyAfter(const KeplerElements& elements, double days) {
    const double turns = elements.MeanMotion * days;
    return 2 * (turns - std::floor(turns)) * kPi + elements.MeanAnomaly;
}

Vector3 KeplerToWorld(const CommonData& data, const KeplerElements& elements, double trueAnomaly) {
    const double u = (elements.ArgPerigee + (kPi + trueAnomaly)) - kPi / 2;
    const double r = OrbitRadiusAt(elements.MeanRadiusA, elements.Eccentricity, trueAnomaly);
    return OnWorldAxes(data, elements, {r * std::cos(u), r * std::sin(u), 0});
}

Vector3 KeplerDirectionToWorld(const CommonData& data, const KeplerElements& elements, double trueAnomaly) {
    const double u = elements.ArgPerigee + (kPi + trueAnomaly);
    return OnWorldAxes(data, elements, {std::cos(u), std::sin(u), 0});
}

}  // namespace glintara
