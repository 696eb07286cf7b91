#include "engine/astro/precession.h"

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

RotationMatrix PrecessionMatrix(double toEpoch, double fromEpoch) {
    constexpr double kArcsecond = kDegToRad / 3600;
    const double t0 = (fromEpoch - 2000.0) / 100;
    const double t = (toEpoch - fromEpoch) / 100;
    const double rate = 2306.2181 + (1.39656 - 0.000139 * t0) * t0;
    const double zeta = (rate + ((0.30188 - 0.000344 * t0) + 0.017998 * t) * t) * t * kArcsecond;
    const double z = (rate + ((1.09468 + 0.000066 * t0) + 0.018203 * t) * t) * t * kArcsecond;
    const double theta =
        ((2004.3109 + (-0.85330 - 0.000217 * t0) * t0) + ((-0.42665 - 0.000217 * t0) - 0.041833 * t) * t) * t *
        kArcsecond;
    const double cosZeta = std::cos(zeta);
    const double sinZeta = std::sin(zeta);
    const double cosZ = std::cos(z);
    const double sinZ = std::sin(z);
    const double cosTheta = std::cos(theta);
    const double sinTheta = std::sin(theta);
    return {
        {{cosZeta * cosTheta * cosZ - sinZeta * sinZ, -sinZeta * cosTheta * cosZ - cosZeta * sinZ, -sinTheta * cosZ},
         {cosZeta * cosTheta * sinZ + sinZeta * cosZ, -sinZeta * cosTheta * sinZ + cosZeta * cosZ, -sinTheta * sinZ},
         {cosZeta * sinTheta, -sinZeta * sinTheta, cosTheta}}};
}

Equatorial Precess(const RotationMatrix& matrix, const Equatorial& place) {
    const Vector3 v = matrix * LLRToSameXYZ(place.dec, place.ra, 1);
    return {std::atan2(v.z, std::hypot(v.x, v.y)), WrapTwoPi(std::atan2(v.y, v.x))};
}

}  // namespace glintara
