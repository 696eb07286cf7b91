#include "engine/geometry/body_frame.h"

namespace glintara {

Vector3 HorizontalUnit(const Vector3& r, const Vector3& w) {
    const double radius = Length(r);
    const double c = Dot(r, w) / radius;
    return Normalized(w - c * r / radius);
}

BodyFrame VerticalFrame(const Vector3& r, const Vector3& w) {
    const Vector3 up = r / Length(r);
    const Vector3 ahead = HorizontalUnit(r, w);
    return {up, ahead, CrossProduct(ahead, up)};
}

BodyFrame InertialFrame(double greenwichAngle) {
    const double c = std::cos(-greenwichAngle);
    const double s = std::sin(-greenwichAngle);
    return {{c, s, 0}, {-s, c, 0}, {0, 0, 1}};
}

BodyComponents MirrorComponents(bool inertial, double angle, double tilt) {
    const double ahead = std::cos(tilt) * std::cos(angle);
    const double across = std::cos(tilt) * std::sin(angle);
    if (inertial) return {ahead, across, std::sin(tilt)};
    return {ahead, -std::sin(tilt), -across};
}

}  // namespace glintara
