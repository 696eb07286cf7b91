#pragma once

// The sky pointer: a marker that the observer moves over the sky with the mouse, to give a direction, a field of view
// and how well the time is known.

#include "engine/astro/geodesy.h"
#include "scene/view_geometry.h"

namespace glintara {

inline constexpr Color kPointerColor = 0x60D0FF;

/// Radius of the spots that mark a place, scene units at zoom 1: their size on the screen does not change with it.
inline constexpr double kPointerSpot = 0.3;

/// Width of the circle round a marked place, radians, and the most that its radius is drawn with, scene units.
inline constexpr double kMarkCircle = 0.00247;
inline constexpr double kMostMarkCircle = 0.027;

/// Least width of the pointer's field of view, radians: a second of arc. The most is half of the sky.
inline constexpr double kLeastField = kDegToRad / 60 / 60;
inline constexpr double kMostField = kPi;

/// Least and most of the uncertainty of the time, seconds.
inline constexpr double kLeastTimeUncertainty = 0.001;
inline constexpr double kMostTimeUncertainty = 86400;

/// Shows the pointer, with its frame `FSkyMouse`, or hides it, and asks for a picture.
void ToggleSkyMouse(Application& app);

/// Shows the pointer; nothing when it is shown.
void EnableSkyMouse(Application& app);

/// Hides the pointer; nothing when it is hidden.
void DisableSkyMouse(Application& app);

/// Sets the width of the pointer's field of view, radians, and the uncertainty of the time, seconds, as near as they
/// may be, and shows them in the frame.
void SetPointerField(Application& app, double fieldOfView);
void SetPointerTime(Application& app, double timeUncertainty);

/// While the pointer is shown: keeps the place of the sky under the mouse with the displayed instant, and shows it in
/// the frame. Off the sky the place before stays.
void RefreshSkyPointer(Application& app);

/// Defines an observation at the sky under the mouse, whether the pointer is shown or not: `LCommandOutput` shows its
/// line, and the place stays marked. Off the sky nothing happens, and the answer is false.
bool DefinePointUnderMouse(Application& app);

/// The stage of the frame: the pointer at the mouse, and the place of the observation defined last.
void DrawSkyPointer(const SceneContext& scene);

/// A spot at a place of the picture, from its middle, and round the sky that lies there the field of view.
void ShowSkyPointer(const SceneContext& scene, const ScenePoint& place);

/// A circle of `radius` scene units round a direction of the sky, given by latitude and longitude on world axes; in a
/// shifted picture where the sky stands. Nothing when that place of the sky is not shown. To be called outside of
/// `PushSkyPan` and `PopSkyPan`.
void DrawSkyCircle(const SceneContext& scene, const LatLon& center, double radius);

/// A spot at a direction of the sky, `position` on world axes, with a small circle round it.
void DrawSkyLPointer(const SceneContext& scene, const Vector3& position);

}  // namespace glintara
