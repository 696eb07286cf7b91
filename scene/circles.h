#pragma once

// Circles on the Earth and on the sky: who sees what above the horizon.

#include "engine/astro/constants.h"
#include "scene/view_geometry.h"

namespace glintara {

/// Elevation above which a satellite counts as seen, radians.
inline constexpr double kVisibilityElevation = 5.0 / 180 * kPi;

/// Colour of the circles round the observer.
inline constexpr Color kSiteCircleColor = 0x208030;

/// Colour of the circle round the point under a satellite.
inline constexpr Color kSatCircleColor = 0x20C0E0;

/// A circle of angular radius `angle`, radians, round a place, on the sphere of `radius` scene units: 100 segments by
/// `PlotSegment` in `color`, thin. Nothing when a number is not finite.
void PlotSphereCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color);

/// The same on the star sphere, by `PlotSkySegment`.
void PlotSkyCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color);

/// Angle at the Earth's centre between the point under a satellite and the places that see it at `elevation`, radians:
/// acos(cos e / r) - e, from the triangle of centre, place and satellite. `distance` is that of the satellite from the
/// Earth's centre, scene units. 0 when it is not above the ground.
double VisibilityAngle(double distance, double elevation);

/// `CHCircle`, when it is set: the circle 90 degrees from the observer on the Earth (not with `CSkyOnly`), and the
/// observer's horizon on the star sphere (with `CDrawSky`).
void DrawHorizonCircles(const SceneContext& scene);

/// `CSatCircle`: round the point under a satellite, the places from which it stands 5 degrees high. `satellite` is on
/// world axes, scene units.
void DrawSatCircle(const SceneContext& scene, const Vector3& satellite);

/// `CDrawArea`: round the observer, the places over which a satellite at this distance from the Earth's centre, scene
/// units, stands 5 degrees high.
void DrawVisibilityArea(const SceneContext& scene, double distance);

}  // namespace glintara
