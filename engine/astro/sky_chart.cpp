#include "engine/astro/sky_chart.h"

#include <algorithm>
#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

Vector3 FlattenSky(const SkyProjection& sky, const Vector3& view) {
    Vector3 place = view;
    if (sky.mirrored) place.y = -place.y;
    if (!sky.flat) return place;
    const double r = std::sqrt(place.y * place.y + place.z * place.z);
    if (r == 0) return place;
    const double fromCentre = kPi / 2 - ArcSin((sky.front ? place.x : -place.x) / sky.radius);
    const double stretch = sky.radius * fromCentre / (kPi / 2) / r;
    place.y *= stretch;
    place.z *= stretch;
    return place;
}

Vector3 DeFlattenSky(const SkyProjection& sky, const Vector3& view) {
    Vector3 place = view;
    if (sky.flat) {
        const double r = std::sqrt(place.y * place.y + place.z * place.z);
        const double fromCentre = r / sky.radius * (kPi / 2);
        place.x = (sky.front ? sky.radius : -sky.radius) * std::cos(fromCentre);
        if (r > 0) {
            // Rounding must not carry the rest below zero at the very centre.
            const double offAxis = std::sqrt(std::max(sky.radius * sky.radius - place.x * place.x, 0.0));
            place.y *= offAxis / r;
            place.z *= offAxis / r;
        }
    }
    if (sky.mirrored) place.y = -place.y;
    return place;
}

}  // namespace glintara
