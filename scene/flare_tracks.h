#pragma once

// Tracks of flares and transits, and the outlines of live flares, on the Earth.

#include "flare/live_flares.h"
#include "scene/view_geometry.h"

namespace glintara {

/// Colour of a track: its points, and the hairline that joins them.
inline constexpr Color kTrackColor = 0x40C080;
inline constexpr Color kTrackLineColor = 0x305838;

/// Radius of a point of a track, scene units, and in pixels the least and the most that it is drawn with.
inline constexpr double kTrackDotRadius = 0.005;
inline constexpr double kLeastTrackDot = 1.0;
inline constexpr double kMostTrackDot = 3.5;

/// Points that are farther apart than this at the Earth's centre, radians, are not joined: between them the centre has
/// run over the ground too fast for its way to be known.
inline constexpr double kLongestTrackStep = 0.25;

/// An outline with a smaller extent than this, pixels, is not drawn: it would hide the mark of its centre.
inline constexpr double kLeastRing = 3;

/// Draws the track of `satellite` from the displayed instant on: a dot for each point, on the globe only where it is on
/// the side that is seen, and a hairline from each point to the next. A flare that falls at the displayed instant
/// itself is told in `LCommandOutput` by its latitude and longitude, degrees cut to four decimals. Without a track
/// nothing happens. Whether it is wanted is the caller's to ask.
void DrawFlareTrack(const SceneContext& scene, const SatRecord& satellite);

/// Draws the outline of the light of each surface of `satellite`, which is at `motion` at the displayed instant, under
/// each source of `quest`; none in transit mode, nor of attitudes whose outlines are not known.
void DrawFootprints(const SceneContext& scene, const SatRecord& satellite, const WorldMotion& motion,
                    const LightPlaces& lights, const LiveFlareQuest& quest);

}  // namespace glintara
