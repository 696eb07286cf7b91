#pragma once

// How a satellite's body stands in space, and where a mirror fixed to it looks.
//
// Vectors of one call are all on the same axes: Earth-fixed, or inertial with a Greenwich angle of 0. Positions are in
// units of the site's radius.

#include "engine/astro/vector.h"

namespace glintara {

/// Three unit vectors at right angles: the frame in which `Angle` and `Tilt` of a mirror are counted.
struct BodyFrame {
    Vector3 BodyUp;
    Vector3 BodyAhead;
    Vector3 BodySide;
};

/// The horizontal part, at position `r`, of a reference direction `w`, as a unit vector. Non-finite when `w` is
/// parallel to `r` or zero.
Vector3 HorizontalUnit(const Vector3& r, const Vector3& w);

/// The frame with `BodyUp` on the local vertical at `r` and `BodyAhead` along the horizontal part of `w`: the velocity,
/// the line to a target or the line to the Sun. Non-finite when `w` is parallel to `r` or zero: callers leave the
/// satellite out.
BodyFrame VerticalFrame(const Vector3& r, const Vector3& w);

/// The inertial axes as they stand when the Greenwich sidereal angle is `greenwichAngle`, on Earth-fixed axes: x on
/// `BodyUp`, y on `BodyAhead`, z on `BodySide`. With an angle of 0 they are the inertial axes themselves.
BodyFrame InertialFrame(double greenwichAngle);

/// Components of a mirror's normal along the three axes of its frame.
struct BodyComponents {
    double ahead = 0;
    double up = 0;
    double side = 0;
};

inline bool IsFinite(const BodyComponents& c) { return IsFinite(Vector3{c.ahead, c.up, c.side}); }

/// Components of the unit normal of a mirror at `angle` and `tilt` (radians). In a frame with a vertical, `angle` runs
/// in the horizontal plane from ahead to the left and a positive `tilt` bends the normal down towards the Earth. Under
/// `inertial` they are a right ascension, counted from `BodyAhead` towards `BodyUp`, and a declination.
BodyComponents MirrorComponents(bool inertial, double angle, double tilt);

/// The vector with these components along the axes of `frame`.
constexpr Vector3 OnFrame(const BodyComponents& c, const BodyFrame& frame) {
    return c.ahead * frame.BodyAhead + c.up * frame.BodyUp + c.side * frame.BodySide;
}

/// Unit normal of a mirror at `angle` and `tilt` on the axes that `frame` stands on.
inline Vector3 MirrorNormal(bool inertial, double angle, double tilt, const BodyFrame& frame) {
    return OnFrame(MirrorComponents(inertial, angle, tilt), frame);
}

}  // namespace glintara
