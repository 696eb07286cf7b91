// The resonances with the Earth's tesseral harmonics (Spacetrack Report No. 3, section 10; the fits in the eccentricity
// are those of R. S. Hujsak, "A Restricted Four Body Solution for Resonating Satellites with an Oblate Earth", AIAA
// 79-136). The longitude is integrated numerically; everything else of the propagator stays analytic.

#include "engine/sgp4/sgp4_deep_space.h"

namespace glintara::sgp4 {

namespace {

// Rotation of the Earth, radians per minute.
constexpr double kEarthRotation = 4.37526908801129966e-3;

// Step of the integration, minutes.
constexpr double kStep = 720;
constexpr double kHalfStepSquared = kStep * kStep / 2;

// The node that is kept for the way back is renewed when the integrator is this far from it, minutes. Which node that
// is decides on the work of a return only: the numbers at a node are the same by every way to it.
constexpr double kAnchorSpacing = 64 * kStep;

// Mean motions, radians per minute, between which a resonance acts, and the least eccentricity for that of half a day.
constexpr double kDayLeast = 0.0034906585;
constexpr double kDayMost = 0.0052359877;
constexpr double kHalfDayLeast = 8.26e-3;
constexpr double kHalfDayMost = 9.24e-3;
constexpr double kHalfDayLeastEccentricity = 0.5;

double Square(double x) { return x * x; }

// `amplitude` times exp(-i phase): the factor of exp(i angle) in amplitude sin(angle - phase), taken as an imaginary
// part.
Phasor Lagging(double amplitude, double phase) { return {amplitude * std::cos(phase), -amplitude * std::sin(phase)}; }

Phasor operator+(const Phasor& a, const Phasor& b) { return {a.re + b.re, a.im + b.im}; }
Phasor operator*(const Phasor& a, const Phasor& b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
Phasor Conjugate(const Phasor& a) { return {a.re, -a.im}; }
Phasor UnitPhasor(double angle) {
    const SinCos sc = SinCosOf(angle);
    return {sc.cosine, sc.sine};
}

// Greenwich sidereal angle at the epoch, 0 to 2 pi: the IAU 1982 polynomial, with UT1 taken as UTC. Not
// `SiderealFromJD`: the resonance needs the true angle at all dates, before 2000 too.
double GreenwichAngleAtEpoch(const Sgp4Record& record) {
    constexpr double kJ2000 = 2451545.0;
    constexpr double kDaysPerCentury = 36525;
    constexpr double kSecondsPerTurn = 86400;
    const double t = ((record.epochDay - kJ2000) + record.epochFraction) / kDaysPerCentury;
    const double seconds = 67310.54841 + ((876600.0 * 3600 + 8640184.812866) + (0.093104 - 6.2e-6 * t) * t) * t;
    const double angle = WithoutWholeTurns(seconds / kSecondsPerTurn * kTwoPi);
    return angle < 0 ? angle + kTwoPi : angle;
}

Sgp4Resonance ChooseResonance(const Sgp4Record& record) {
    const double n = record.meanMotion;
    if (n > kDayLeast && n < kDayMost) return Sgp4Resonance::Day;
    if (n >= kHalfDayLeast && n <= kHalfDayMost && record.eccentricity >= kHalfDayLeastEccentricity)
        return Sgp4Resonance::HalfDay;
    return Sgp4Resonance::None;
}

DayTerms MakeDayTerms(const Sgp4Record& record) {
    constexpr double kQ22 = 1.7891679e-6;
    constexpr double kQ31 = 2.1460748e-6;
    constexpr double kQ33 = 2.2123015e-7;
    constexpr double kPhase22 = 2.8843198;
    constexpr double kPhase31 = 0.13130908;
    constexpr double kPhase33 = 0.37448087;

    const double e2 = Square(record.eccentricity);
    const double sinI = record.inclinationTerms.sine;
    const double cosI = record.inclinationTerms.cosine;
    const double g200 = 1 + e2 * (-2.5 + 0.8125 * e2);
    const double g310 = 1 + 2 * e2;
    const double g300 = 1 + e2 * (-6 + 6.60937 * e2);
    const double f220 = 0.75 * Square(1 + cosI);
    const double f311 = 0.9375 * sinI * sinI * (1 + 3 * cosI) - 0.75 * (1 + cosI);
    const double f330 = 1.875 * Square(1 + cosI) * (1 + cosI);

    const double perA = std::pow(record.meanMotion / kXke, 2.0 / 3);
    const double scale = 3 * Square(record.meanMotion * perA);
    return {.once = Lagging(scale * f311 * g310 * kQ31 * perA, kPhase31),
            .twice = Lagging(2 * scale * f220 * g200 * kQ22, 2 * kPhase22),
            .thrice = Lagging(3 * scale * f330 * g300 * kQ33 * perA, 3 * kPhase33)};
}

// A cubic in the eccentricity.
struct Cubic {
    double c0, c1, c2, c3;
    double operator()(double e) const { return c0 + c1 * e + c2 * (e * e) + c3 * (e * e * e); }
};

// Eccentricity functions of the half-day terms, by their subscripts.
struct EccentricityFunctions {
    double g201, g211, g310, g322, g410, g422, g520, g521, g532, g533;
};

EccentricityFunctions MakeEccentricityFunctions(double e) {
    EccentricityFunctions g{};
    g.g201 = -0.306 - (e - 0.64) * 0.440;
    if (e <= 0.65) {
        g.g211 = Cubic{3.616, -13.2470, 16.2900, 0}(e);
        g.g310 = Cubic{-19.302, 117.3900, -228.4190, 156.5910}(e);
        g.g322 = Cubic{-18.9068, 109.7927, -214.6334, 146.5816}(e);
        g.g410 = Cubic{-41.122, 242.6940, -471.0940, 313.9530}(e);
        g.g422 = Cubic{-146.407, 841.8800, -1629.014, 1083.4350}(e);
        g.g520 = Cubic{-532.114, 3017.977, -5740.032, 3708.2760}(e);
    } else {
        g.g211 = Cubic{-72.099, 331.819, -508.738, 266.724}(e);
        g.g310 = Cubic{-346.844, 1582.851, -2415.925, 1246.113}(e);
        g.g322 = Cubic{-342.585, 1554.908, -2366.899, 1215.972}(e);
        g.g410 = Cubic{-1052.797, 4758.686, -7193.992, 3651.957}(e);
        g.g422 = Cubic{-3581.690, 16178.110, -24462.770, 12422.520}(e);
        g.g520 =
            e > 0.715 ? Cubic{-5149.66, 29936.92, -54087.36, 31324.56}(e) : Cubic{1464.74, -4664.75, 3763.64, 0}(e);
    }
    if (e < 0.7) {
        g.g533 = Cubic{-919.22770, 4988.6100, -9064.7700, 5542.21}(e);
        g.g521 = Cubic{-822.71072, 4568.6173, -8491.4146, 5337.524}(e);
        g.g532 = Cubic{-853.66600, 4690.2500, -8624.7700, 5341.4}(e);
    } else {
        g.g533 = Cubic{-37995.780, 161616.52, -229838.20, 109377.94}(e);
        g.g521 = Cubic{-51752.104, 218913.95, -309468.16, 146349.42}(e);
        g.g532 = Cubic{-40023.880, 170470.89, -242699.48, 115605.82}(e);
    }
    return g;
}

// Inclination functions of the half-day terms, by their subscripts.
struct InclinationFunctions {
    double f220, f221, f321, f322, f441, f442, f522, f523, f542, f543;
};

InclinationFunctions MakeInclinationFunctions(double s, double c) {
    const double s2 = s * s;
    const double c2 = c * c;
    InclinationFunctions f{};
    f.f220 = 0.75 * (1 + 2 * c + c2);
    f.f221 = 1.5 * s2;
    f.f321 = 1.875 * s * (1 - 2 * c - 3 * c2);
    f.f322 = -1.875 * s * (1 + 2 * c - 3 * c2);
    f.f441 = 35 * s2 * f.f220;
    f.f442 = 39.3750 * s2 * s2;
    f.f522 = 9.84375 * s * (s2 * (1 - 2 * c - 5 * c2) + 0.33333333 * (-2 + 4 * c + 6 * c2));
    f.f523 = s * (4.92187512 * s2 * (-2 - 4 * c + 10 * c2) + 6.56250012 * (1 + 2 * c - 3 * c2));
    f.f542 = 29.53125 * s * (2 - 8 * c + c2 * (-12 + 8 * c + 10 * c2));
    f.f543 = 29.53125 * s * (-2 - 8 * c + c2 * (12 + 8 * c - 10 * c2));
    return f;
}

HalfDayTerms MakeHalfDayTerms(const Sgp4Record& record) {
    constexpr double kRoot22 = 1.7891679e-6;
    constexpr double kRoot32 = 3.7393792e-7;
    constexpr double kRoot44 = 7.3636953e-9;
    constexpr double kRoot52 = 1.1428639e-7;
    constexpr double kRoot54 = 2.1765803e-9;
    constexpr double kPhase22 = 5.7686396;
    constexpr double kPhase32 = 0.95240898;
    constexpr double kPhase44 = 1.8014998;
    constexpr double kPhase52 = 1.0508330;
    constexpr double kPhase54 = 4.4108898;

    const EccentricityFunctions g = MakeEccentricityFunctions(record.eccentricity);
    const InclinationFunctions f =
        MakeInclinationFunctions(record.inclinationTerms.sine, record.inclinationTerms.cosine);
    const double perA = std::pow(record.meanMotion / kXke, 2.0 / 3);
    const double scale = 3 * Square(record.meanMotion * perA);
    const double scale22 = scale * kRoot22;
    const double scale32 = scale * perA * kRoot32;
    const double scale44 = 2 * scale * perA * perA * kRoot44;
    const double scale52 = scale * perA * perA * perA * kRoot52;
    const double scale54 = 2 * scale * perA * perA * perA * kRoot54;

    HalfDayTerms terms{};
    terms.onceTwoPerigee = Lagging(scale22 * f.f220 * g.g201, kPhase22);
    terms.once = Lagging(scale22 * f.f221 * g.g211, kPhase22);
    terms.oncePlusPerigee = Lagging(scale32 * f.f321 * g.g310, kPhase32) + Lagging(scale52 * f.f522 * g.g520, kPhase52);
    terms.onceMinusPerigee =
        Lagging(scale32 * f.f322 * g.g322, kPhase32) + Lagging(scale52 * f.f523 * g.g532, kPhase52);
    terms.twiceTwoPerigee = Lagging(scale44 * f.f441 * g.g410, kPhase44);
    terms.twice = Lagging(scale44 * f.f442 * g.g422, kPhase44);
    terms.twicePlusPerigee = Lagging(scale54 * f.f542 * g.g521, kPhase54);
    terms.twiceMinusPerigee = Lagging(scale54 * f.f543 * g.g533, kPhase54);
    return terms;
}

// Accelerations in the resonant longitude: as the terms give them, and their derivative by the longitude.
struct Acceleration {
    double value;
    double byLongitude;
};

Acceleration HalfDayAcceleration(const Sgp4Record& record) {
    const HalfDayTerms& terms = record.resonanceTerms.halfDay;
    const Phasor perigee = UnitPhasor(record.argPerigee + record.argPerigeeRate * record.integrator.time);
    const Phasor twoPerigee = perigee * perigee;
    const Phasor back = Conjugate(perigee);
    const Phasor longitude = UnitPhasor(record.integrator.longitude);

    const Phasor once = (terms.onceTwoPerigee * twoPerigee + terms.once + terms.oncePlusPerigee * perigee +
                         terms.onceMinusPerigee * back) *
                        longitude;
    const Phasor twice = (terms.twiceTwoPerigee * twoPerigee + terms.twice + terms.twicePlusPerigee * perigee +
                          terms.twiceMinusPerigee * back) *
                         (longitude * longitude);
    return {once.im + twice.im, once.re + 2 * twice.re};
}

Acceleration DayAcceleration(const Sgp4Record& record) {
    const DayTerms& terms = record.resonanceTerms.day;
    const Phasor longitude = UnitPhasor(record.integrator.longitude);
    const Phasor twoLongitudes = longitude * longitude;
    const Phasor once = terms.once * longitude;
    const Phasor twice = terms.twice * twoLongitudes;
    const Phasor thrice = terms.thrice * (twoLongitudes * longitude);
    return {once.im + twice.im + thrice.im, once.re + 2 * twice.re + 3 * thrice.re};
}

void PutOnNode(Sgp4Record& record, double time, double longitude, double meanMotion) {
    ResonanceIntegrator& node = record.integrator;
    node.time = time;
    node.longitude = longitude;
    node.meanMotion = meanMotion;
    const Acceleration acceleration =
        record.resonance == Sgp4Resonance::HalfDay ? HalfDayAcceleration(record) : DayAcceleration(record);
    node.longitudeRate = meanMotion + record.resonanceTerms.longitudeRate;
    node.meanMotionRate = acceleration.value;
    node.meanMotionRate2 = acceleration.byLongitude * node.longitudeRate;
}

void PutOnEpoch(Sgp4Record& record) { PutOnNode(record, 0, record.resonanceTerms.longitudeAtEpoch, record.meanMotion); }

// Goes back, from a node that lies beyond `minutes` or on the other side of the epoch, to one that does not.
void Return(Sgp4Record& record, double minutes) {
    const ResonanceIntegrator& node = record.integrator;
    if (node.anchorTime * minutes > 0 && std::abs(node.anchorTime) <= std::abs(minutes))
        PutOnNode(record, node.anchorTime, node.anchorLongitude, node.anchorMeanMotion);
    else
        PutOnEpoch(record);
}

void StepForward(Sgp4Record& record, double step) {
    ResonanceIntegrator& node = record.integrator;
    if (std::abs(node.time - node.anchorTime) >= kAnchorSpacing) {
        node.anchorTime = node.time;
        node.anchorLongitude = node.longitude;
        node.anchorMeanMotion = node.meanMotion;
    }
    const double longitude = node.longitude + node.longitudeRate * step + node.meanMotionRate * kHalfStepSquared;
    const double meanMotion = node.meanMotion + node.meanMotionRate * step + node.meanMotionRate2 * kHalfStepSquared;
    PutOnNode(record, node.time + step, longitude, meanMotion);
}

// Puts the integrator on the node before `minutes`, as seen from the epoch.
void MoveIntegrator(Sgp4Record& record, double minutes) {
    const ResonanceIntegrator& node = record.integrator;
    if (node.time * minutes < 0 || std::abs(minutes) < std::abs(node.time)) Return(record, minutes);
    const double step = minutes > 0 ? kStep : -kStep;
    while (std::abs(minutes - node.time) >= kStep) StepForward(record, step);
}

}  // namespace

void PrepareResonance(Sgp4Record& record) {
    record.resonance = ChooseResonance(record);
    ResonanceTerms& terms = record.resonanceTerms;
    terms.greenwichAngle = GreenwichAngleAtEpoch(record);
    if (record.resonance == Sgp4Resonance::None) return;

    const ThirdBodyRates& rates = record.thirdBodyRates;
    if (record.resonance == Sgp4Resonance::HalfDay) {
        terms.halfDay = MakeHalfDayTerms(record);
        terms.longitudeAtEpoch = WithoutWholeTurns(record.meanAnomaly + 2 * record.node - 2 * terms.greenwichAngle);
        terms.longitudeRate = record.meanAnomalyRate + rates.meanAnomaly +
                              2 * (record.nodeRate + rates.node - kEarthRotation) - record.meanMotion;
    } else {
        terms.day = MakeDayTerms(record);
        terms.longitudeAtEpoch =
            WithoutWholeTurns(record.meanAnomaly + record.node + record.argPerigee - terms.greenwichAngle);
        terms.longitudeRate = record.meanAnomalyRate + record.argPerigeeRate + record.nodeRate - kEarthRotation +
                              rates.meanAnomaly + rates.argPerigee + rates.node - record.meanMotion;
    }
    PutOnEpoch(record);
}

ResonantMotion ResonantMotionAt(Sgp4Record& record, double minutes) {
    const ResonanceIntegrator& node = record.integrator;
    if (!(std::abs(minutes) <= kIntegratorSpan)) {
        const double end = std::copysign(kIntegratorSpan, minutes);
        MoveIntegrator(record, end);
        return {node.longitude + node.longitudeRate * (minutes - end), node.meanMotion};
    }
    MoveIntegrator(record, minutes);
    const double past = minutes - node.time;
    return {node.longitude + node.longitudeRate * past + node.meanMotionRate * (past * past * 0.5),
            node.meanMotion + node.meanMotionRate * past + node.meanMotionRate2 * (past * past * 0.5)};
}

double GreenwichAngleAt(const Sgp4Record& record, double minutes) {
    return record.resonanceTerms.greenwichAngle + kEarthRotation * minutes;
}

}  // namespace glintara::sgp4
