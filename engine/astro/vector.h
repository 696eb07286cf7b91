#pragma once

// Vectors of three components. What frame and unit they are in, the name or the comment at the use tells.

#include <cmath>

namespace glintara {

struct Vector3 {
    double x = 0;
    double y = 0;
    double z = 0;

    friend constexpr bool operator==(const Vector3&, const Vector3&) = default;
};

constexpr Vector3 operator+(const Vector3& a, const Vector3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vector3 operator-(const Vector3& a, const Vector3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vector3 operator-(const Vector3& a) { return {-a.x, -a.y, -a.z}; }
constexpr Vector3 operator*(double k, const Vector3& a) { return {k * a.x, k * a.y, k * a.z}; }
constexpr Vector3 operator*(const Vector3& a, double k) { return {a.x * k, a.y * k, a.z * k}; }
constexpr Vector3 operator/(const Vector3& a, double k) { return {a.x / k, a.y / k, a.z / k}; }

/// Scalar product.
constexpr double Dot(const Vector3& a, const Vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// Vector product a x b, right-handed.
constexpr Vector3 CrossProduct(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Euclidean length.
inline double Length(const Vector3& a) { return std::sqrt(Dot(a, a)); }

/// Divides `v` by its length. A zero vector becomes non-finite: callers keep it away or test with `IsFinite`.
inline void NormalizeInPlace(Vector3& v) {
    const double length = Length(v);
    v = v / length;
}

/// `v` divided by its length; non-finite for a zero vector.
inline Vector3 Normalized(Vector3 v) {
    NormalizeInPlace(v);
    return v;
}

/// Whether all three components are finite numbers.
inline bool IsFinite(const Vector3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

/// `v` turned about the z axis by `angle` radians, counter-clockwise as seen from +z.
inline Vector3 TurnedAboutPole(const Vector3& v, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y, v.z};
}

}  // namespace glintara
