#pragma once

// Segments of chains (orbits, tracks, grid, terminator, constellations) on the picture, whatever the mapping.
//
// On the globe a segment is drawn when the Earth's disc hides neither of its ends; one with a hidden end is left out
// whole, so chains are to be made of short segments. On the flat map it is drawn from place to place; one that is
// shorter through the seam is split there. Lines are drawn with the pen of the surface.

#include <span>

#include "engine/astro/geodesy.h"
#include "engine/astro/vector.h"
#include "scene/view_geometry.h"

namespace glintara {

/// A line between two places on the unit sphere. Black in sunlight when the scene says so.
void PlotSegment(const SceneContext& scene, const LatLon& from, const LatLon& to);

/// A line between two places given by angles and distance from the Earth's centre, scene units. Black in sunlight when
/// the scene says so; what counts is the direction, not the place's own shadow.
void PlotSegment(const SceneContext& scene, const LatLonRadius& from, const LatLonRadius& to);

/// A line between two points on world axes, scene units.
void PlotSegment(const SceneContext& scene, const Vector3& from, const Vector3& to);

/// Segments between each point and the next, on world axes, scene units.
void PlotChain(const SceneContext& scene, std::span<const Vector3> points);

/// A segment of a chain that ends where the Earth's disc begins to hide it: of one with a hidden end, the seen part.
/// For chains of such large steps that a step left out whole would leave a gap at the limb.
void PlotUpToLimb(const SceneContext& scene, const Vector3& from, const Vector3& to);

/// As `PlotSegment` between two places on the star sphere, which go through the scene's `FlattenSky`. Places behind the
/// plane of the disc are drawn only with `CDrawBackStars`, and nothing hides them while the Earth is not drawn
/// (`CSkyOnly`).
void PlotSkySegment(const SceneContext& scene, const LatLonRadius& from, const LatLonRadius& to);
void PlotSkySegment(const SceneContext& scene, const Vector3& from, const Vector3& to);
void PlotSkyChain(const SceneContext& scene, std::span<const Vector3> points);

/// A line between two places of the star sphere as they are to be drawn: on view axes (of the flat map: depth ignored,
/// its X and Y), flattened already if they have to be, and on a side of the sky that is shown.
void PlotMappedSkySegment(const SceneContext& scene, const Vector3& from, const Vector3& to);

/// Adds both ends of a segment between two places on the unit sphere to the polygon of the scene; of one that is split
/// at the seam, those of both parts.
void PlotPolygonSegment(const SceneContext& scene, const LatLon& from, const LatLon& to);

}  // namespace glintara
