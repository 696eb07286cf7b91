#pragma once

// The night side of the Earth, darkened so that land and sea below stay readable.
//
// The edge of night is the terminator, the great circle 90 degrees from the point that the Sun stands over. Twilight
// and the refraction of the air are left out.

#include "scene/view_geometry.h"

namespace glintara {

/// How far outside of the globe's disc the night reaches, pixels of a screen at scale 1: it takes the antialiased edge
/// of the disc and the glow of the limb along.
inline constexpr double kNightRim = 5;

/// Fills the polygon of the scene with the part of the globe's disc where it is night: bounded by the seen half of the
/// terminator and by the limb. `sun` is the direction of the Sun on view axes. With the Sun on the axis of the view the
/// whole disc is day when it stands in front, and night when it stands behind. A zero vector gives an empty polygon.
void MakeGlobeNight(const SceneContext& scene, const Vector3& sun);

/// Fills the polygon of the scene with the part of the flat map where it is night, closed along the frame at the pole
/// that has polar night. With the Sun over the equator that is the south pole, where the night then does not reach. A
/// place is `sun`, the point that the Sun stands over.
void MakeFlatMapNight(const SceneContext& scene, const LatLon& sun);

/// Darkens the night side, on the globe or on the flat map: the polygon is filled with `ShadowColor` by the mask mode.
/// The mode is Copy afterwards.
void DrawNightSide(const SceneContext& scene);

}  // namespace glintara
