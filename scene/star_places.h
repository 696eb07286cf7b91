#pragma once

// Where the stars stand: of date, and as seen from a camera and a place on the Earth.
//
// The sky turns against the Earth by the Greenwich angle alone: a star of date at right ascension a stands over
// longitude a - G. So its direction, a unit vector, is taken once for each date; a picture turns it by one matrix.

#include <cstdint>
#include <vector>

#include "engine/astro/horizon.h"
#include "engine/astro/precession.h"
#include "engine/astro/vector.h"
#include "state/star_tables.h"
#include "state/view_state.h"

namespace glintara {

/// Days of simulated time in which precession is too small to be seen.
inline constexpr double kPrecessionDays = 60;

/// The records that the engine draws stars from. Their name is the proper name when it has more than one character,
/// else the designation when that has, else empty; cut to 14 characters.
std::vector<StarPlotRecord> MakeStarPlotTable(const std::vector<StarRecord>& stars);

/// Puts a catalogue, from index 1, in the place of the one before: nobody knows of which date its places are, and none
/// of its stars is listed to be drawn.
void TakeStars(StarTables& stars, std::vector<StarRecord> catalogue);

/// Carries all stars from 2000 to `jd` when their places are `kPrecessionDays` or more away from it, and tells whether.
bool PrecessStars(StarTables& stars, double jd);

/// The rotation that takes a direction of date to view axes. `greenwich` is the Greenwich angle of the picture,
/// radians.
RotationMatrix SkyToView(const ViewState& view, double greenwich);

/// The direction of date of the observer's zenith. Its scalar product with a star's direction is the sine of the star's
/// altitude: stars are infinitely far, wherever the sphere is drawn.
Vector3 ZenithInSky(const ObserverSite& site, double greenwich);

/// Azimuth and altitude of a direction of date, of something infinitely far.
HorizonAngles SkyToHorizon(const ObserverSite& site, double greenwich, const Vector3& direction);

}  // namespace glintara
