#pragma once

// Where the Sun and the Moon stand over the Earth.

#include "engine/astro/horizon.h"
#include "engine/astro/vector.h"
#include "state/common_data.h"

namespace glintara {

/// A place given by its direction among the stars, on Earth-fixed axes, at the Greenwich sidereal angle. The result has
/// the unit of `distance`, from the Earth's centre.
Vector3 WorldPlace(const Equatorial& direction, double distance, double greenwichAngle);

/// Position of the Sun at `jd`, Earth-fixed, in `SiteRadius`.
Vector3 SunPlace(const CommonData& data, double jd);

/// The same of the Moon.
Vector3 MoonPlaceInWorld(const CommonData& data, double jd);

/// The points of the unit sphere below the Sun and the Moon that the state keeps, at the displayed instant.
Vector3 PointBelowSun(const CommonData& data);
Vector3 PointBelowMoon(const CommonData& data);

/// The Sun's elevation at the observer's place, radians, from the direction that the state keeps: that of its middle,
/// without refraction.
double SunElevation(const CommonData& data);

/// The direction in which the observer sees the Moon at the displayed instant, a unit vector on Earth-fixed axes. It is up
/// to a degree away from that of the point below.
Vector3 MoonSeenByObserver(const CommonData& data);

}  // namespace glintara
