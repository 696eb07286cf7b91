#include "engine/geometry/reflection.h"

namespace glintara {

namespace {

std::optional<FlareCentre> CentreOf(const Vector3& r, const Vector3& beam, double incidence) {
    const std::optional<Vector3> centre = IntersectEarth(r, beam);
    if (!centre || !IsFinite(*centre)) return std::nullopt;
    return FlareCentre{*centre, incidence};
}

}  // namespace

Reflection ReflectVector(const Vector3& d, const Vector3& n) {
    const double dot = Dot(d, n);
    if (dot <= 0) return {d - 2 * dot * n, true};
    return {};
}

std::optional<Vector3> IntersectEarth(const Vector3& r, const Vector3& d) {
    const double b = 2 * Dot(r, d);
    const double c = Dot(r, r) - 1;
    const double discriminant = b * b - 4 * c;
    if (!(discriminant >= 0)) return std::nullopt;
    const double near = (-b - std::sqrt(discriminant)) / 2;
    if (!(near >= 0)) return std::nullopt;
    return r + near * d;
}

bool InShadow(const Vector3& r, const Vector3& u) {
    if (!(Dot(r, u) < 0)) return false;
    const Vector3 across = CrossProduct(r, u);
    return Dot(across, across) < 1;
}

std::optional<FlareCentre> MirrorFlare(const Vector3& r, const Vector3& source, const Vector3& normal) {
    const Vector3 ray = Normalized(r - source);
    const Reflection reflection = ReflectVector(ray, normal);
    if (!reflection.hit) return std::nullopt;
    return CentreOf(r, reflection.ray, Dot(ray, normal));
}

std::optional<FlareCentre> TransitPoint(const Vector3& r, const Vector3& source) {
    return CentreOf(r, Normalized(r - source), 1);
}

}  // namespace glintara
