#pragma once

// What the tests of the astronomy rooms share: angles in the units of published tables, comparison around the circle,
// and random places that are the same in every run.

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "engine/astro/vector.h"

namespace glintara::test {

inline constexpr double kDegree = std::numbers::pi / 180;
inline constexpr double kArcsecond = kDegree / 3600;
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

/// Numbers that no caller should pass and none may crash on.
inline constexpr double kHostile[] = {0.0,  -0.0,  1e-320, -1e-20, 0.5,       -1,         1e9,        -1e9,
                                      1e15, -1e17, 1e100,  -1e300, kInfinity, -kInfinity, kNotANumber};

/// `difference` of two angles, without whole turns: -pi to pi.
inline double AroundCircle(double difference) { return std::remainder(difference, 2 * std::numbers::pi); }

/// Angle between two directions, radians; good for small angles too.
inline double AngleBetween(const Vector3& a, const Vector3& b) {
    return std::atan2(Length(CrossProduct(a, b)), Dot(a, b));
}

/// The direction at the two angles.
inline Vector3 Direction(double lon, double lat) {
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

/// `low`, `low + step`, ... as far as `high`.
inline std::vector<double> Spaced(double low, double high, double step) {
    const auto count = static_cast<std::size_t>(std::floor((high - low) / step)) + 1;
    std::vector<double> values(count);
    for (std::size_t i = 0; i < count; ++i) values[i] = low + static_cast<double>(i) * step;
    return values;
}

/// Uniform numbers, the same in every run.
class Sampler {
  public:
    explicit Sampler(unsigned seed) : generator_(seed) {}

    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(generator_); }

  private:
    std::mt19937_64 generator_;
};

}  // namespace glintara::test
