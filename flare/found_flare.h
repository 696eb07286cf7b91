#pragma once

// What an observer needs to know of the flare that a search has found. The search gives the instant at which the centre
// comes within the distance; what is worth going outside for is the moment at which it is nearest.

#include <optional>

#include "flare/passes.h"
#include "state/application.h"

namespace glintara {

/// The flare, or transit, of the satellite with `orbitNumber`, of that surface, that begins at Julian date `jd` (UTC)
/// by coming within `maxDistance` metres of the observer. Light source and mode are those of the options. Nothing when
/// the satellite is not in the list, or when no pass begins there.
std::optional<FlarePass> PassOfFoundFlare(const Application& app, int orbitNumber, int mirror, double jd,
                                          double maxDistance);

/// Tells a pass in the search window: date, time and distance of the centre in `LFlareTime`; the satellite's azimuth
/// and elevation and the Sun's elevation, all at the observer, in `LFlareSky`. Numbers are cut, the time is rounded
/// to a tenth of a second. Without a pass both are empty.
void TellFoundFlare(Application& app, const std::optional<FlarePass>& pass);

}  // namespace glintara
