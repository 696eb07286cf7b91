#pragma once

// Surfaces fitted to what was seen: the angles of a surface from where its light fell, and the axis of a spinning body
// from three such surfaces. Vectors are Earth-fixed unless told, in `SiteRadius`; the observer is at distance 1.

#include <optional>
#include <string>

#include "engine/astro/vector.h"
#include "engine/geometry/body_frame.h"
#include "state/application.h"

namespace glintara {

/// `Angle` and `Tilt` of a surface, degrees.
struct SurfaceAngles {
    double angle = 0;  ///< -90 to 270
    double tilt = 0;   ///< -90 to 90

    friend bool operator==(const SurfaceAngles&, const SurfaceAngles&) = default;
};

/// Unit normal of the plane that throws the light of a source at `source` over a satellite at `r` to `observer`. By the
/// law of reflection it halves the angle between the directions to the two. Nothing when the satellite stands exactly
/// between them, where no plane can.
std::optional<Vector3> FlareNormal(const Vector3& r, const Vector3& source, const Vector3& observer);

/// The angles under which a surface in `frame` has the unit normal `normal`: the other way of `MirrorNormal`. Straight
/// up or down, where all angles are one, the angle is 0.
SurfaceAngles AnglesOfNormal(bool inertial, const Vector3& normal, const BodyFrame& frame);

/// Whether the angles of the surfaces stand for one direction at one instant, which can be fitted: not on a body that
/// rotates or is turned to a target, nor under a type that is none.
bool CanBeFitted(const SurfaceModel& model);

/// What a surface is fitted to.
enum class FitAim {
    Flare,  ///< it throws the sunlight on the observer
    Beam,   ///< its normal looks at the observer
};

/// The angles of a surface on `satellite` that does that at the displayed instant, rounded to four decimals of a degree
/// (two and a half metres for each thousand kilometres, across the beam). The shadow and the horizon are not asked: see
/// `ObjectionToFit`. Nothing when the model cannot be fitted, and where there is no body frame, no place of the
/// satellite, or no such plane.
std::optional<SurfaceAngles> FitSurface(const Application& app, const SatRecord& satellite, FitAim aim);

/// Why a flare of `satellite` cannot be seen from the observer's place at the displayed instant, whatever its surfaces:
/// it is below the horizon, or no sunlight reaches it. Empty when nothing speaks against it.
std::string ObjectionToFit(const Application& app, const SatRecord& satellite, FitAim aim);

/// Direction of a rotation axis, radians; the right ascension from -pi/2 to 3 pi/2.
struct RotationAxis {
    double declination = 0;
    double rightAscension = 0;
};

/// The axis of a body of which one surface had the directions `first`, `second` and `third` (right ascension as angle,
/// declination as tilt) at three moments. They lie on a cone about the axis k, so that (first - second) k = 0 and
/// (first - third) k = 0: k is the vector product of the two differences. Of its two ends that with a declination of
/// not less than 0 is given. Nothing when two of the directions are one, to within some thousandths of a degree.
std::optional<RotationAxis> RotationAxisOf(const SurfaceAngles& first, const SurfaceAngles& second,
                                           const SurfaceAngles& third);

}  // namespace glintara
