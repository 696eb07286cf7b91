#pragma once

// Single marks over the Earth: the observer, the points under Sun and Moon, the first point of Aries; and where a place
// on the star sphere is drawn.

#include <optional>

#include "engine/astro/geodesy.h"
#include "scene/view_geometry.h"

namespace glintara {

inline constexpr Color kSiteColor = 0x8080FF;
inline constexpr Color kSunMarkColor = 0x0080FF;
inline constexpr Color kMoonMarkColor = 0x00FFFF;
inline constexpr Color kAriesColor = 0x208030;

/// Radius of the observer's mark, scene units, and in pixels the least and the most that it is drawn with.
inline constexpr double kSiteMarkRadius = 2.0 / 1000;
inline constexpr double kLeastSiteMark = 2.5;
inline constexpr double kMostSiteMark = 6;

/// Radius of the marks under Sun and Moon, scene units at zoom 1: their size on the screen does not change with it. In
/// a small picture they have at least so many pixels, to be told apart.
inline constexpr double kBodyMarkRadius = 0.5;
inline constexpr double kLeastBodyMark = 3;

/// The Sun's rays, in radii of its mark: where they begin and end; and how many there are.
inline constexpr double kRayStart = 1.5;
inline constexpr double kRayEnd = 2.2;
inline constexpr int kRays = 8;

/// The Moon's mark is a crescent, somewhat larger than the Sun's disc: its radius, and radius and distance of the
/// circle that is cut out of it, in radii of the Sun's.
inline constexpr double kCrescentRadius = 1.5;
inline constexpr double kCutRadius = 1.3;
inline constexpr double kCutOffset = 0.75;

/// Length of the Aries line while no sky is drawn, scene units.
inline constexpr double kAriesLength = 1.5;

/// Whether there is anything to draw at a position that the engine gives. A satellite that it calls decayed has one, as
/// long as the numbers are finite; a set without elements has none, and so no picture either.
inline bool HasPlace(const Vector3& position) { return IsFinite(position) && position != Vector3{}; }

/// A point on the unit sphere as it is seen: on the globe nothing when it lies behind.
std::optional<ScenePoint> SeenOnEarth(const SceneContext& scene, const Vector3& world);

/// A point in space as it is seen: on the globe nothing when the Earth hides it.
std::optional<ScenePoint> SeenInSpace(const SceneContext& scene, const Vector3& world);

/// Whether a direction on the star sphere belongs to the sky that is shown: the side before the viewer with
/// `CDrawFrontStars`, the other with `CDrawBackStars` (the flat map has both), and with `CLocalSky` only what stands
/// above the horizon. `altitude` in radians.
bool IsSkyShown(const SceneContext& scene, const LatLonRadius& direction, double altitude);

/// A direction on the star sphere as it is seen, flattened as the scene has it; nothing when the Earth is drawn and
/// hides it. To be called for what `IsSkyShown`, between `PushSkyPan` and `PopSkyPan`.
std::optional<ScenePoint> SeenOnSky(const SceneContext& scene, const LatLonRadius& direction);

/// A disc without outline.
void DrawDisc(const SceneContext& scene, const ScenePoint& place, double radius, Color color);

/// A disc outlined with a hairline, `width` pixels.
void DrawOutlinedDisc(const SceneContext& scene, const ScenePoint& place, double radius, Color color, Color outline,
                      double width);

/// The square round the observer's mark; nothing where it is not drawn.
std::optional<BoxArea> SiteMarkArea(const SceneContext& scene);

/// The observer's mark; not with `CSkyOnly`.
void DrawSiteMark(const SceneContext& scene);

/// With `CDrawSun` the points that Sun and Moon stand over, as a disc with short rays and as a crescent; not with
/// `CSkyOnly`.
void DrawSunAndMoonOnEarth(const SceneContext& scene);

/// With `CDrawAries` the line from the Earth's centre to the first point of Aries: up to the star sphere with
/// `CDrawSky`. On the flat map, where it would be a point, it is the point. Not with `CSkyOnly`.
void DrawAriesLine(const SceneContext& scene);

}  // namespace glintara
