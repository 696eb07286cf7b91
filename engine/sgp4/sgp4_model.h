#pragma once

// Constants and small helpers that the chapters of the propagator share. Of no interest outside of it.

#include <cmath>
#include <cstdint>
#include <numbers>

#include "engine/sgp4/sgp4.h"

namespace glintara::sgp4 {

// The elements are fitted, and the published verification table computed, with the full-precision circle constant; the
// 15-digit literal of the program's own geometry does not belong here.
inline constexpr double kPi = std::numbers::pi;
inline constexpr double kTwoPi = 2 * std::numbers::pi;

// WGS 72, as element sets are made with (AIAA 2006-6753, appendix B).
inline constexpr double kMu = 398600.8;             // km^3/s^2
inline constexpr double kEarthRadius = 6378.135;    // km
inline constexpr double kXke = 0.0743669161331734;  // root of mu, Earth radii^1.5 per minute: 60/sqrt(radius^3/mu)
inline constexpr double kJ2 = 0.001082616;
inline constexpr double kJ3 = -0.00000253881;
inline constexpr double kJ4 = -0.00000165597;
inline constexpr double kJ3OverJ2 = kJ3 / kJ2;
inline constexpr double kHalfJ2 = 0.5 * kJ2;

inline constexpr double kXkeSquaredError = kXke * kXke * kEarthRadius * kEarthRadius * kEarthRadius / (3600 * kMu) - 1;
static_assert(kXkeSquaredError < 1e-15 && kXkeSquaredError > -1e-15);

// Smallest divisor 1 + cos i of the long-period term: keeps it finite at an inclination of 180 degrees.
inline constexpr double kSmallestOnePlusCosine = 1.5e-12;

struct SinCos {
    double sine;
    double cosine;
};

// Both functions of one argument side by side, which the compiler joins into one evaluation.
inline SinCos SinCosOf(double angle) { return {std::sin(angle), std::cos(angle)}; }

inline SinCos SumOf(const SinCos& a, const SinCos& b) {
    return {a.sine * b.cosine + a.cosine * b.sine, a.cosine * b.cosine - a.sine * b.sine};
}

// Below this angle the power series in `SmallSinCos` are exact to the last bits of a double.
inline constexpr double kSmallAngle = 0.125;

inline SinCos SmallSinCos(double x) {
    const double s = x * x;
    return {x * (1 - s / 6 * (1 - s * (1.0 / 20) * (1 - s * (1.0 / 42) * (1 - s * (1.0 / 72))))),
            1 - s * 0.5 * (1 - s * (1.0 / 12) * (1 - s * (1.0 / 30) * (1 - s * (1.0 / 56) * (1 - s * (1.0 / 90)))))};
}

// Sine and cosine of (the angle of `base`) + `angle`. Most corrections of the theory are small: the series then
// saves a full evaluation.
inline SinCos Turned(const SinCos& base, double angle) {
    return SumOf(base, std::abs(angle) < kSmallAngle ? SmallSinCos(angle) : SinCosOf(angle));
}

// What is left of `angle` after whole turns are taken out, with the sign of `angle`, as std::fmod has it but faster.
inline double WithoutWholeTurns(double angle) {
    // 2 pi in two parts: the first has so few bits that its product with a turn count below 2^25 is exact.
    constexpr double kTwoPiHigh = 6.2831852436065673828125;
    constexpr double kTwoPiLow = kTwoPi - kTwoPiHigh;
    constexpr double kLargestAngle = 2e8;
    if (!(std::abs(angle) < kLargestAngle)) return std::fmod(angle, kTwoPi);
    const auto turns = static_cast<double>(static_cast<std::int32_t>(angle * (1 / kTwoPi)));
    return (angle - turns * kTwoPiHigh) - turns * kTwoPiLow;
}

inline InclinationTerms MakeInclinationTerms(const SinCos& inclination) {
    const double cosine = inclination.cosine;
    const double cosSquared = cosine * cosine;
    const double onePlusCosine = std::abs(1 + cosine) > kSmallestOnePlusCosine ? 1 + cosine : kSmallestOnePlusCosine;
    return {.sine = inclination.sine,
            .cosine = cosine,
            .threeCosSquaredMinusOne = 3 * cosSquared - 1,
            .oneMinusCosSquared = 1 - cosSquared,
            .sevenCosSquaredMinusOne = 7 * cosSquared - 1,
            .longPeriodLongitude = -0.25 * kJ3OverJ2 * inclination.sine * (3 + 5 * cosine) / onePlusCosine,
            .longPeriodAxis = -0.5 * kJ3OverJ2 * inclination.sine};
}

}  // namespace glintara::sgp4
