#include "flare/surface_fits.h"

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/trigonometry.h"
#include "engine/geometry/attitude_types.h"
#include "engine/geometry/reflection.h"
#include "flare/attitude.h"
#include "orbit/satellite_motion.h"
#include "orbit/sun_and_moon.h"

namespace glintara {

namespace {

/// Steps of an angle in a degree: the fourth decimal.
constexpr double kStepsPerDegree = 10000;

/// Length of the sum of two unit vectors below which they are opposite but for rounding.
constexpr double kLeastSum = 1e-9;

/// Two directions of a spinning surface that are nearer to each other than this, radians, are one: rounded to the fourth
/// decimal they would turn the axis about.
constexpr double kLeastTurn = 1e-4;

/// A direction without a part in the plane in which the angle is counted, but for rounding.
constexpr double kLeastInPlane = 1e-12;

/// Whether the angles of the surfaces stand for a direction that can be fitted at one instant; and then whether they are
/// right ascension and declination.
std::optional<bool> IsInertialFit(const SurfaceModel& model) {
    const std::optional<OrientationType> type = OrientationTypeOf(model.OrientationType);
    if (!type) return std::nullopt;
    switch (*type) {
        case OrientationType::AlongTrack:
        case OrientationType::VerticalSun:
            return false;
        case OrientationType::Inertial:
            return true;
        case OrientationType::Rotating:
        case OrientationType::AlongTarget:
            return std::nullopt;
    }
    return std::nullopt;
}

double Rounded(double degrees) { return std::nearbyint(degrees * kStepsPerDegree) / kStepsPerDegree; }

Vector3 DirectionOf(const SurfaceAngles& angles) {
    return LLRToSameXYZ(angles.tilt * kDegToRad, angles.angle * kDegToRad, 1);
}

}  // namespace

bool CanBeFitted(const SurfaceModel& model) { return IsInertialFit(model).has_value(); }

std::optional<Vector3> FlareNormal(const Vector3& r, const Vector3& source, const Vector3& observer) {
    const Vector3 sum = Normalized(source - r) + Normalized(observer - r);
    if (!(Length(sum) > kLeastSum)) return std::nullopt;
    return Normalized(sum);
}

SurfaceAngles AnglesOfNormal(bool inertial, const Vector3& normal, const BodyFrame& frame) {
    const double ahead = Dot(normal, frame.BodyAhead);
    const double up = Dot(normal, frame.BodyUp);
    const double side = Dot(normal, frame.BodySide);
    const double sine = inertial ? side : -up;
    const double across = inertial ? up : -side;
    const double angle = std::hypot(ahead, across) > kLeastInPlane ? Atan2Full(across, ahead) : 0;
    return {angle / kDegToRad, ArcSin(sine) / kDegToRad};
}

std::optional<SurfaceAngles> FitSurface(const Application& app, const SatRecord& satellite, FitAim aim) {
    const std::optional<bool> inertial = IsInertialFit(satellite.Surface);
    if (!inertial) return std::nullopt;
    const WorldMotion motion = MotionNow(app, satellite);
    const Vector3& r = motion.position;
    if (!(Length(r) > 1)) return std::nullopt;
    const double jd = app.Data.SimTime;
    const std::optional<BodyFrame> frame = BuildBodyFrame(app, satellite, r, motion.velocity, jd);
    if (!frame) return std::nullopt;
    const Vector3 observer = ObserverOnUnitSphere(app.Data.Site);
    const std::optional<Vector3> normal =
        aim == FitAim::Flare ? FlareNormal(r, SunPlace(app.Data, jd), observer) : Normalized(observer - r);
    if (!normal || !IsFinite(*normal)) return std::nullopt;
    const SurfaceAngles angles = AnglesOfNormal(*inertial, *normal, *frame);
    return SurfaceAngles{Rounded(angles.angle), Rounded(angles.tilt)};
}

std::string ObjectionToFit(const Application& app, const SatRecord& satellite, FitAim aim) {
    const Vector3 r = MotionNow(app, satellite).position;
    // The sphere on which flares fall hides what is behind the plane that touches it at the observer.
    if (Dot(r, ObserverOnUnitSphere(app.Data.Site)) < 1) return "At that moment the satellite is below your horizon";
    if (aim == FitAim::Flare && InShadow(r, Normalized(SunPlace(app.Data, app.Data.SimTime))))
        return "At that moment the satellite is in the shadow of the Earth";
    return {};
}

std::optional<RotationAxis> RotationAxisOf(const SurfaceAngles& first, const SurfaceAngles& second,
                                           const SurfaceAngles& third) {
    const Vector3 a = DirectionOf(first) - DirectionOf(second);
    const Vector3 b = DirectionOf(first) - DirectionOf(third);
    if (!(Length(a) > kLeastTurn && Length(b) > kLeastTurn && Length(a - b) > kLeastTurn)) return std::nullopt;
    const Vector3 axis = CrossProduct(a, b);
    const LatLonRadius place = XYZToLatLon(axis.z < 0 ? -axis : axis);
    return RotationAxis{place.lat, place.lon};
}

}  // namespace glintara
