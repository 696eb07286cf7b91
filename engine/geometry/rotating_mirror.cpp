#include "engine/geometry/rotating_mirror.h"

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

double FoldedDegrees(double radians) {
    const double degrees = radians / kDegToRad;
    return degrees > 180 ? degrees - 360 : degrees;
}

/// Angle of a direction above the plane of the two components `a` and `b`.
double Elevation(double out, double a, double b) { return Atan2Full(out, std::sqrt(a * a + b * b)); }

}  // namespace

RotatingMirror MakeRotatingMirror(double rotAxisDec, double rotAxisRa, double angle, double tilt) {
    RotatingMirror mirror;
    mirror.axis = LLRToSameXYZ(rotAxisDec, rotAxisRa, 1);
    const Vector3 normal = LLRToSameXYZ(tilt, angle, 1);
    mirror.onAxis = Dot(mirror.axis, normal);
    const Vector3 across = normal - mirror.onAxis * mirror.axis;
    mirror.offAxis = Length(across);
    if (mirror.offAxis > 0) {
        mirror.outward = across / mirror.offAxis;
        mirror.along = CrossProduct(mirror.outward, mirror.axis);
    }
    return mirror;
}

Vector3 NormalComponentsAt(const RotatingMirror& mirror, double phase) {
    return mirror.onAxis * mirror.axis + mirror.offAxis * std::cos(phase) * mirror.outward +
           mirror.offAxis * std::sin(phase) * mirror.along;
}

Vector3 OnAxes(const Vector3& components, const BodyFrame& inertialFrame) {
    return OnFrame({components.x, components.y, components.z}, inertialFrame);
}

double RotationPhase(int k, int count) { return kTwoPi * k / count; }

RotatingReadOut ReadOutOf(const RotatingMirror& mirror, const Vector3& normal, const BodyFrame& orbitFrame,
                          const BodyFrame& inertialFrame) {
    const double ahead = Dot(normal, orbitFrame.BodyAhead);
    const double side = Dot(normal, orbitFrame.BodySide);
    const double x = Dot(normal, inertialFrame.BodyUp);
    const double y = Dot(normal, inertialFrame.BodyAhead);
    RotatingReadOut readOut;
    readOut.angle = FoldedDegrees(Atan2Full(side, ahead));
    readOut.tilt = FoldedDegrees(-Elevation(Dot(normal, orbitFrame.BodyUp), ahead, side));
    readOut.axisDistance = FoldedDegrees(ArcCos(mirror.onAxis));
    readOut.rightAscension = FoldedDegrees(Atan2Full(y, x));
    readOut.declination = FoldedDegrees(Elevation(Dot(normal, inertialFrame.BodySide), x, y));
    return readOut;
}

}  // namespace glintara
