#pragma once

// The simplified orbit model beside SGP4: a Kepler ellipse whose node, perigee and size change evenly with time.
//
// Source: F. R. Hoots, R. L. Roehrich, "Spacetrack Report No. 3: Models for Propagation of NORAD Element Sets" (1980),
// section 5, of which it keeps the secular terms. It differs from the report, on purpose, in this:
//
//   mean anomaly    It runs with the mean motion of the element set. The drag terms change the ellipse only, not where
//                   on it the satellite is.
//   drag terms      They are multiplied by the time in units of a day over 2 pi, like the angular rates, so that they
//                   count 2 pi and 4 pi^2 times as much.
//   perigee         Its rate is divided by the semi-latus rectum at the epoch, not by the square of it; the rate of the
//                   node is divided by the square.
//   periodic terms  There are none, long or short.
//   lengths         In equatorial radii of 6378135 m, with the gravitational constant of WGS 84.

#include "engine/astro/vector.h"
#include "state/common_data.h"

namespace glintara {

/// The gravitational constant of the model, m^3/s^2.
inline constexpr double kSGP1Mu = 3.986004418e14;

/// Its unit of length, metres.
inline constexpr double kSGP1Radius = 6378135;

/// Least eccentricity of an ellipse that drag has made round.
inline constexpr double kSGP1LeastEccentricity = 1e-6;

/// Tolerance of Kepler's equation, radians.
inline constexpr double kKeplerTolerance = 1e-6;

/// The ellipse of a satellite: the numbers of its record, without the texts. Angles in radians, the node on the
/// equinox; the rest as the record has it.
struct KeplerElements {
    double Inclination = 0;
    double RaanAngle = 0;
    double Eccentricity = 0;
    double ArgPerigee = 0;
    double MeanAnomaly = 0;  ///< at the epoch
    double MeanMotion = 0;   ///< revolutions per day
    double MeanMotionDot = 0;
    double MeanMotionDDot = 0;
    double MeanRadiusA = 0;  ///< semi-major axis: in `SiteRadius` in the record, in `kSGP1Radius` behind `SGP1`

    friend bool operator==(const KeplerElements&, const KeplerElements&) = default;
};

KeplerElements KeplerElementsOf(const SatRecord& satellite);

/// Days from the epoch of the elements to the displayed instant; negative before the epoch.
double SatelliteTimeSinceEpoch(const CommonData& data, const SatRecord& satellite);

/// Carries the ellipse of `source` to `t` days after its epoch: `working` is the source with another node, perigee and
/// eccentricity, and its semi-major axis in `kSGP1Radius`. `t` is scaled by 2 pi: it has to be computed anew before the
/// next call. An ellipse that drag has made smaller than the perigee distance of the epoch is round. Elements without
/// an orbit (no mean motion, or none left at that time) give numbers that are not finite.
void SGP1(const KeplerElements& source, KeplerElements& working, double& t);

/// The same on whole records: `working` becomes a copy of `source` but for those four numbers. `source` and `working`
/// may be one.
void SGP1(const SatRecord& source, SatRecord& working, double& t);

/// Mean anomaly `days` after the epoch, radians, not reduced: the fraction of the revolutions since then, and what it
/// was at the epoch.
double MeanAnomalyAfter(const KeplerElements& elements, double days);

/// World position at a true anomaly, in the unit of the semi-major axis; the Earth as at the displayed instant.
Vector3 KeplerToWorld(const CommonData& data, const KeplerElements& elements, double trueAnomaly);

/// The unit vector in the plane of the orbit a quarter turn ahead of that position: where a satellite on a round orbit
/// moves to.
Vector3 KeplerDirectionToWorld(const CommonData& data, const KeplerElements& elements, double trueAnomaly);

}  // namespace glintara
