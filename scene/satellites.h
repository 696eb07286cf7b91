#pragma once

// The satellites of a picture: orbits, live flares, marks on the Earth and on the sky, names.

#include "flare/live_flares.h"
#include "scene/name_board.h"
#include "scene/view_geometry.h"
#include "state/application.h"

namespace glintara {

/// Radius of the mark in space, scene units, from `kMarkGrowthZoom` on; below, it keeps its size on the screen.
inline constexpr double kMarkRadius = 19.2 / 40 / 100 / 2;
inline constexpr double kMarkGrowthZoom = 155;

/// Radius of the small mark, on the ground: scene units at zoom 1.
inline constexpr double kSmallMarkRadius = 0.3;

/// Radius of the ring round the working satellite, in radii of its mark, and of its small mark.
inline constexpr double kRingFactor = 1.8;
inline constexpr double kSmallRingFactor = 3;

/// Hairline round marks in shadow, whose own colour is that of land by night, and its width in pixels.
inline constexpr Color kShadowedOutline = 0x5080B0;
inline constexpr double kShadowedOutlineWidth = 0.7;

/// Memory of the satellite loop, kept from picture to picture: the loop allocates nothing per satellite.
struct SatelliteWorkspace {
    NameBoard names{2 * static_cast<std::size_t>(kSatCapacity)};  // each may stand on the Earth and on the sky
    LiveFlares flares;
};

/// Draws all satellites that are not disabled, in the order of the list, so the working one last, on top. Each is
/// taken to the displayed instant once, by the orbit model that is chosen; SGP4 does it in the satellite's own engine
/// block. Per satellite: the orbit, unless hidden by its switch (the working satellite's is always drawn); with
/// `CFlareTrack` the track of its flares, on the same terms, but by SGP4 only; with `CIridiumFlares` the live flares,
/// their rays and the outlines of their light; the mark in space, with `CProjectOrbit` the mark on the ground, and
/// then the one in space only with `CPlotOrbit`; with `CDrawSky` the mark on the sky. Names and the labels of flares
/// follow when all marks stand.
///
/// For the working satellite, disabled or not, `LSatDetail`, `Run.Working` and the read-out of its rotation are
/// written; a satellite without a place (`HasPlace`) is left out, and of the working one they tell nothing then. Each
/// mark on the picture goes to the finder's list, which is that of this picture afterwards. With `CSkyOnly` nothing of
/// this is drawn over the Earth.
void DrawSatellites(const SceneContext& scene, SatelliteWorkspace& work);

/// What remains of that while nothing of it is drawn: the working satellite is propagated and told as above, and the
/// finder's list is empty.
void FollowWorkingSatellite(Application& app, SatelliteWorkspace& work);

}  // namespace glintara
