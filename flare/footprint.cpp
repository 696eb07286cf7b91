#include "flare/footprint.h"

#include <cmath>

#include "engine/geometry/attitude_types.h"
#include "engine/geometry/reflection.h"
#include "flare/surface_models.h"

namespace glintara {

FootprintRing FootprintOf(const Vector3& r, const Vector3& source, double radius, double scatter,
                          const Vector3& normal) {
    const Vector3 p = Normalized(source);
    // Any vector that is not parallel to p. This one never is for a body that stands within 35 degrees of the equator.
    const Vector3 q = Normalized(Vector3{-source.y, source.z, -source.x});
    const Vector3 e1 = Normalized(CrossProduct(p, q));
    const Vector3 e2 = CrossProduct(p, e1);
    FootprintRing ring;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const double angle = static_cast<double>(i) * kRingStep;
        const Vector3 limb = source + radius * scatter * (std::cos(angle) * e1 + std::sin(angle) * e2);
        if (const std::optional<FlareCentre> point = MirrorFlare(r, limb, normal)) ring[i] = point->centre;
    }
    return ring;
}

bool HasFootprints(const SatRecord& satellite) {
    if (!HasFlareModel(satellite)) return false;
    switch (*OrientationTypeOf(satellite.Surface.OrientationType)) {
        case OrientationType::AlongTrack:
        case OrientationType::VerticalSun:
            return true;
        case OrientationType::Inertial:
        case OrientationType::Rotating:
        case OrientationType::AlongTarget:
            return false;
    }
    return false;
}

}  // namespace glintara
