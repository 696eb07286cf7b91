// From the prepared record to position and velocity: secular changes, drag, long-period and short-period terms, in the
// order of Spacetrack Report No. 3, sections 6 and 10.

#include "engine/sgp4/sgp4.h"

#include <algorithm>

#include "engine/sgp4/sgp4_deep_space.h"
#include "engine/sgp4/sgp4_model.h"

namespace glintara {

namespace {

using namespace sgp4;

// A mean eccentricity down to here is rounding of a circular orbit, not an error; it is then raised to the second.
constexpr double kLowestEccentricity = -0.001;
constexpr double kLeastEccentricity = 1e-6;

// From this inclination on, radians, node and perigee take their periodic changes one by one; below, where the node is
// ill defined, by way of the pole's direction (Lyddane).
constexpr double kLyddaneInclination = 0.2;

// A Newton step below this leaves an error of the eccentric anomaly below 1e-13.
constexpr double kKeplerStep = 1e-8;
constexpr double kKeplerLargestStep = 0.95;
constexpr int kKeplerRounds = 10;

// Kilometres, or kilometres per second: a state beyond is of no use to anyone, and squares of it could overflow.
constexpr double kFarthest = 1e12;

// Elements at one instant, with what was found wrong with them.
struct Elements {
    double semiMajorAxis;  // Earth radii
    double meanMotion;     // radians per minute
    double eccentricity;
    double inclination;  // radians; kept up in deep space only
    double node;
    double argPerigee;
    double meanAnomaly;
    Sgp4Error error;
};

void NoteError(Elements& elements, Sgp4Error error) {
    if (elements.error == Sgp4Error::None) elements.error = error;
}

// The eccentricity that takes the place of one too great for the theory: the orbit then has a semi-latus rectum of one
// Earth radius, and the short-period terms, which grow with its inverse square, stay small.
double GreatestEccentricity(double semiMajorAxis) { return semiMajorAxis > 1 ? std::sqrt(1 - 1 / semiMajorAxis) : 0; }

// How drag changes the root of the axis (a factor), the eccentricity (taken off) and the mean longitude (times mean
// motion, added).
struct DragChange {
    double axisFactor;
    double eccentricity;
    double longitude;
};

// Near-earth drag beyond the leading terms; perigee and mean anomaly of `elements` move with it.
void AddDragSeries(const Sgp4Record& record, double t, Elements& elements, DragChange& change) {
    const DragSeries& series = record.drag;
    const SinCos before = SinCosOf(elements.meanAnomaly);
    const double base = 1 + series.eta * before.cosine;
    const double shift =
        series.argPerigeeRate * t + series.meanAnomalyFactor * (base * base * base - series.cubeAtEpoch);
    elements.meanAnomaly += shift;
    elements.argPerigee -= shift;

    const double sineMeanAnomaly = Turned(before, shift).sine;
    const double t2 = t * t;
    const double t3 = t2 * t;
    const double t4 = t3 * t;
    change.axisFactor -= series.axis2 * t2 + series.axis3 * t3 + series.axis4 * t4;
    change.eccentricity += series.eccentricity * (sineMeanAnomaly - series.sineMeanAnomalyEpoch);
    change.longitude += series.longitude3 * t3 + t4 * (series.longitude4 + t * series.longitude5);
}

// Mean motion and axis become those of a resonant orbit at `t`, and the mean anomaly follows from the integrated
// longitude.
void ApplyResonance(Sgp4Record& record, double t, Elements& elements) {
    const ResonantMotion motion = ResonantMotionAt(record, t);
    const double greenwich = GreenwichAngleAt(record, t);
    elements.meanAnomaly = record.resonance == Sgp4Resonance::HalfDay
                               ? motion.longitude - 2 * elements.node + 2 * greenwich
                               : motion.longitude - elements.node - elements.argPerigee + greenwich;
    if (!(motion.meanMotion > 0)) {
        NoteError(elements, Sgp4Error::MeanMotion);
        return;
    }
    elements.meanMotion = motion.meanMotion;
    const double root = std::cbrt(record.meanMotion / motion.meanMotion);
    elements.semiMajorAxis *= root * root;
}

void AddThirdBodyRates(const Sgp4Record& record, double t, Elements& elements) {
    const ThirdBodyRates& rates = record.thirdBodyRates;
    elements.eccentricity += rates.eccentricity * t;
    elements.inclination += rates.inclination * t;
    elements.argPerigee += rates.argPerigee * t;
    elements.node += rates.node * t;
    elements.meanAnomaly += rates.meanAnomaly * t;
}

// Elements `t` minutes after the epoch with all secular changes, drag and resonance included.
Elements SecularElements(Sgp4Record& record, double t) {
    const double t2 = t * t;
    Elements elements = {.semiMajorAxis = record.semiMajorAxis,
                         .meanMotion = record.meanMotion,
                         .eccentricity = record.eccentricity,
                         .inclination = record.inclination,
                         .node = record.node + record.nodeRate * t + record.nodeDrag * t2,
                         .argPerigee = record.argPerigee + record.argPerigeeRate * t,
                         .meanAnomaly = record.meanAnomaly + record.meanAnomalyRate * t,
                         .error = Sgp4Error::None};
    DragChange change = {.axisFactor = 1 - record.axisDrag * t,
                         .eccentricity = record.eccentricityDrag * t,
                         .longitude = record.longitudeDrag * t2};
    if (record.model == Sgp4Model::NearEarth) {
        AddDragSeries(record, t, elements, change);
    } else if (record.model == Sgp4Model::DeepSpace) {
        AddThirdBodyRates(record, t, elements);
        if (record.resonance != Sgp4Resonance::None) ApplyResonance(record, t, elements);
    }

    elements.semiMajorAxis *= change.axisFactor * change.axisFactor;
    elements.meanMotion = kXke / (elements.semiMajorAxis * std::sqrt(elements.semiMajorAxis));
    elements.meanAnomaly += record.meanMotion * change.longitude;
    const double eccentricity = elements.eccentricity - change.eccentricity;
    if (eccentricity >= 1 || eccentricity < kLowestEccentricity) NoteError(elements, Sgp4Error::MeanElements);
    elements.eccentricity =
        eccentricity >= 1 ? GreatestEccentricity(elements.semiMajorAxis) : std::max(eccentricity, kLeastEccentricity);
    return elements;
}

// Node and perigee near the equatorial plane, where they are ill defined one by one: the changes are applied to the
// components of the orbit's pole.
void ApplyNearEquator(const ThirdBodyPerturbation& change, const SinCos& inclination, Elements& elements) {
    const double nodeBefore = WithoutWholeTurns(elements.node);
    const SinCos node = SinCosOf(nodeBefore);
    const double alongSine =
        inclination.sine * node.sine + change.node * node.cosine + change.inclination * inclination.cosine * node.sine;
    const double alongCosine = inclination.sine * node.cosine - change.node * node.sine +
                               change.inclination * inclination.cosine * node.cosine;
    double nodeAfter = std::atan2(alongSine, alongCosine);
    if (std::abs(nodeBefore - nodeAfter) > kPi) nodeAfter += nodeAfter < nodeBefore ? kTwoPi : -kTwoPi;

    elements.argPerigee += change.perigee - change.inclination * nodeBefore * inclination.sine +
                           inclination.cosine * (nodeBefore - nodeAfter);
    elements.node = nodeAfter;
}

// Adds the periodic terms of Sun and Moon to `elements`; returns sine and cosine of the inclination then.
SinCos AddThirdBodyPerturbation(const Sgp4Record& record, double t, Elements& elements) {
    const ThirdBodyPerturbation change = ThirdBodyPerturbationAt(record, t);
    elements.inclination += change.inclination;
    elements.eccentricity += change.eccentricity;
    SinCos inclination = Turned({record.inclinationTerms.sine, record.inclinationTerms.cosine},
                                elements.inclination - record.inclination);

    if (elements.inclination >= kLyddaneInclination) {
        const double node = change.node / inclination.sine;
        elements.argPerigee += change.perigee - inclination.cosine * node;
        elements.node += node;
    } else {
        ApplyNearEquator(change, inclination, elements);
    }
    elements.meanAnomaly += change.meanAnomaly;

    if (elements.inclination < 0) {
        elements.inclination = -elements.inclination;
        inclination.sine = -inclination.sine;
        elements.node += kPi;
        elements.argPerigee -= kPi;
    }
    if (elements.eccentricity < 0 || elements.eccentricity > 1) NoteError(elements, Sgp4Error::PerturbedElements);
    elements.eccentricity = std::max(elements.eccentricity, 0.0);
    if (elements.eccentricity >= 1) elements.eccentricity = GreatestEccentricity(elements.semiMajorAxis);
    return inclination;
}

// The eccentricity vector after the long-period terms, on axes of node and north, and the longitude from the node that
// goes with it.
struct LongPeriodElements {
    double axN;
    double ayN;
    double eSquared;
    double longitude;
};

LongPeriodElements AddLongPeriod(const InclinationTerms& terms, Elements& elements) {
    const SinCos perigee = SinCosOf(WithoutWholeTurns(elements.argPerigee));
    const double perP = 1 / (elements.semiMajorAxis * (1 - elements.eccentricity * elements.eccentricity));
    LongPeriodElements result{};
    result.axN = elements.eccentricity * perigee.cosine;
    result.ayN = elements.eccentricity * perigee.sine + perP * terms.longPeriodAxis;
    result.longitude =
        WithoutWholeTurns(elements.meanAnomaly + elements.argPerigee + perP * terms.longPeriodLongitude * result.axN);
    result.eSquared = result.axN * result.axN + result.ayN * result.ayN;
    if (result.eSquared >= 1) {
        NoteError(elements, Sgp4Error::SemiLatusRectum);
        const double greatest = GreatestEccentricity(elements.semiMajorAxis);
        const double shrink = greatest / std::sqrt(result.eSquared);
        result.axN *= shrink;
        result.ayN *= shrink;
        result.eSquared = greatest * greatest;
    }
    return result;
}

// Kepler's equation for E + argument of perigee, by Newton's method; its sine and cosine.
SinCos SolveKeplerFromNode(const LongPeriodElements& orbit) {
    double angle = orbit.longitude;
    SinCos sc = SinCosOf(angle);
    for (int round = 0; round < kKeplerRounds; ++round) {
        const double slope = 1 - sc.cosine * orbit.axN - sc.sine * orbit.ayN;
        const double miss = orbit.longitude - orbit.ayN * sc.cosine + orbit.axN * sc.sine - angle;
        const double step = std::clamp(miss / slope, -kKeplerLargestStep, kKeplerLargestStep);
        angle += step;
        sc = std::abs(step) < kSmallAngle ? SumOf(sc, SmallSinCos(step)) : SinCosOf(angle);
        if (!(std::abs(step) >= kKeplerStep)) break;
    }
    return sc;
}

// Place on the osculating orbit: distance, its rate, speed across it, and the argument of latitude.
struct PlaneState {
    double radius;
    double radiusRate;
    double acrossRate;
    SinCos latitudeArgument;
};

PlaneState PlaceInPlane(const LongPeriodElements& orbit, double semiMajorAxis) {
    const SinCos eccentric = SolveKeplerFromNode(orbit);
    const double eCosE = orbit.axN * eccentric.cosine + orbit.ayN * eccentric.sine;
    const double eSinE = orbit.axN * eccentric.sine - orbit.ayN * eccentric.cosine;
    const double beta = std::sqrt(1 - orbit.eSquared);
    const double perOneMinusECosE = 1 / (1 - eCosE);
    const double radius = semiMajorAxis * (1 - eCosE);
    const double rootAxis = std::sqrt(semiMajorAxis);
    const double share = eSinE / (1 + beta);
    return {.radius = radius,
            .radiusRate = rootAxis * eSinE / radius,
            .acrossRate = rootAxis * beta / radius,
            .latitudeArgument = {.sine = perOneMinusECosE * (eccentric.sine - orbit.ayN - orbit.axN * share),
                                 .cosine = perOneMinusECosE * (eccentric.cosine - orbit.axN + orbit.ayN * share)}};
}

// Adds the short-period terms and turns the place in the plane to the equatorial frame.
Sgp4State AddShortPeriod(const Elements& elements, const LongPeriodElements& orbit, const InclinationTerms& terms) {
    const PlaneState plane = PlaceInPlane(orbit, elements.semiMajorAxis);
    const double sin2u = 2 * plane.latitudeArgument.sine * plane.latitudeArgument.cosine;
    const double cos2u = 1 - 2 * plane.latitudeArgument.sine * plane.latitudeArgument.sine;
    const double perP = 1 / (elements.semiMajorAxis * (1 - orbit.eSquared));
    const double byJ2 = kHalfJ2 * perP;
    const double byJ2P = byJ2 * perP;
    const double beta = std::sqrt(1 - orbit.eSquared);

    const double radius = plane.radius * (1 - 1.5 * byJ2P * beta * terms.threeCosSquaredMinusOne) +
                          0.5 * byJ2 * terms.oneMinusCosSquared * cos2u;
    const SinCos u = Turned(plane.latitudeArgument, -0.25 * byJ2P * terms.sevenCosSquaredMinusOne * sin2u);
    const SinCos node = Turned(SinCosOf(WithoutWholeTurns(elements.node)), 1.5 * byJ2P * terms.cosine * sin2u);
    const SinCos inclination = Turned({terms.sine, terms.cosine}, 1.5 * byJ2P * terms.cosine * terms.sine * cos2u);
    const double rateScale = elements.meanMotion * byJ2 / kXke;
    const double radiusRate = plane.radiusRate - rateScale * terms.oneMinusCosSquared * sin2u;
    const double acrossRate =
        plane.acrossRate + rateScale * (terms.oneMinusCosSquared * cos2u + 1.5 * terms.threeCosSquaredMinusOne);

    // Direction of the highest point of the orbit's plane.
    const Vector3 summit{-node.sine * inclination.cosine, node.cosine * inclination.cosine, inclination.sine};
    const Vector3 ascending{node.cosine, node.sine, 0};
    const Vector3 outward = u.sine * summit + u.cosine * ascending;
    const Vector3 ahead = u.cosine * summit - u.sine * ascending;

    constexpr double kKilometresPerSecond = kEarthRadius * kXke / 60;
    return {.position = (radius * kEarthRadius) * outward,
            .velocity = kKilometresPerSecond * (radiusRate * outward + acrossRate * ahead),
            .error = radius < 1 ? Sgp4Error::Decayed : Sgp4Error::None};
}

bool IsUsable(const Vector3& v) {
    return std::abs(v.x) < kFarthest && std::abs(v.y) < kFarthest && std::abs(v.z) < kFarthest;
}

}  // namespace

Sgp4State Sgp4AtMinutes(Sgp4Record& record, double minutes) {
    Elements elements = SecularElements(record, minutes);
    InclinationTerms deepTerms;
    const InclinationTerms* terms = &record.inclinationTerms;
    if (record.model == Sgp4Model::DeepSpace) {
        deepTerms = MakeInclinationTerms(AddThirdBodyPerturbation(record, minutes, elements));
        terms = &deepTerms;
    }
    const LongPeriodElements orbit = AddLongPeriod(*terms, elements);
    Sgp4State state = AddShortPeriod(elements, orbit, *terms);
    if (elements.error != Sgp4Error::None) state.error = elements.error;
    if (IsUsable(state.position) && IsUsable(state.velocity)) return state;
    return {.position = {},
            .velocity = {},
            .error = state.error == Sgp4Error::None ? Sgp4Error::MeanElements : state.error};
}

}  // namespace glintara
