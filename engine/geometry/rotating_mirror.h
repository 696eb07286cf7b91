#pragma once

// A mirror on a spinning body: its normal sweeps a cone about the spin axis.

#include "engine/astro/vector.h"
#include "engine/geometry/body_frame.h"

namespace glintara {

/// The cone of normals of a spinning mirror. Vectors hold inertial components in the order in which `Angle` and `Tilt`
/// of a mirror fixed in space give them.
struct RotatingMirror {
    Vector3 axis;        ///< spin axis, unit
    Vector3 outward;     ///< unit vector from the axis to the normal at phase 0; zero when the normal lies on the axis
    Vector3 along;       ///< unit vector that the normal turns towards
    double onAxis = 0;   ///< component of the normal on the axis: cosine of the angle between mirror and axis
    double offAxis = 0;  ///< its component across the axis
};

/// The cone of a mirror at `angle`, `tilt` (right ascension and declination at phase 0) on a body that spins about the
/// axis at declination `rotAxisDec`, right ascension `rotAxisRa`. All in radians.
RotatingMirror MakeRotatingMirror(double rotAxisDec, double rotAxisRa, double angle, double tilt);

/// The normal at rotation phase `phase` (radians), in the components of `RotatingMirror`.
Vector3 NormalComponentsAt(const RotatingMirror& mirror, double phase);

/// Such components on the axes that `inertialFrame` stands on: first on `BodyAhead`, second on `BodyUp`, third on
/// `BodySide`, the same slots as a mirror fixed in space, so that phase 0 gives the normal which that mirror has.
Vector3 OnAxes(const Vector3& components, const BodyFrame& inertialFrame);

/// Phases drawn for one turn, and while the fine picture is made.
inline constexpr int kRotationPhases = 36;
inline constexpr int kRotationPhasesFine = 72;

/// Phase number `k` of `count`, radians.
double RotationPhase(int k, int count);

/// What the design panel reads out of one normal, degrees, each folded to at most 180.
struct RotatingReadOut {
    double angle = 0;         ///< azimuth in the orbit frame
    double tilt = 0;          ///< depression in the orbit frame
    double axisDistance = 0;  ///< between normal and spin axis
    double rightAscension = 0;
    double declination = 0;
};

/// Read-out of `normal` (unit, on the same axes as the two frames).
RotatingReadOut ReadOutOf(const RotatingMirror& mirror, const Vector3& normal, const BodyFrame& orbitFrame,
                          const BodyFrame& inertialFrame);

}  // namespace glintara
