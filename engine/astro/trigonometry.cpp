#include "engine/astro/trigonometry.h"

#include <cmath>
#include <limits>

#include "engine/astro/constants.h"

namespace glintara {

namespace {

/// The right angle that `ArcSin` gives at the ends of its range.
constexpr double kRightAngle = 1.5707963267949;
constexpr double kArcSinGuard = 1e-14;

/// 1, -1, or `x` itself where it has no sign to give (zero, NaN).
double SignOf(double x) {
    if (x > 0) return 1;
    return x < 0 ? -1 : x;
}

}  // namespace

double ArcSin(double x) {
    const double size = std::abs(x);
    if (size > 1 || std::abs(size - 1) < kArcSinGuard) return SignOf(x) * kRightAngle;
    return std::atan(x / std::sqrt(1 - x * x));
}

double ArcCos(double x) {
    if (std::abs(x) >= 1) return x == -1.0 ? kPi : 0;
    return kPi / 2 - std::atan(x / std::sqrt(1 - x * x));
}

double Atan2Full(double y, double x) {
    if (x == 0) return SignOf(y) * kPi / 2;
    return x < 0 ? std::atan(y / x) + kPi : std::atan(y / x);
}

double Atan2Positive(double y, double x) {
    if (x == 0) return SignOf(y) * std::atan(std::numeric_limits<double>::infinity());
    double angle = std::atan(y / x);
    if (x < 0) angle += kPi;
    if (y < 0 && x > 0) angle += kTwoPi;
    return angle;
}

double Truncate(double x) { return SignOf(x) * std::floor(std::abs(x)); }

double WrapTwoPi(double angle) {
    const double turns = angle / kPi / 2;
    const double wrapped = (turns - Truncate(turns)) * kTwoPi;
    return wrapped < 0 ? wrapped + kTwoPi : wrapped;
}

}  // namespace glintara
