#pragma once

// Whole passes of flares over the observer: from when to when the centre is near, and how near it comes. The search
// gives the beginning of one; a list of all that a night offers wants the moment that is best.

#include <functional>
#include <string>
#include <vector>

#include "orbit/propagation.h"
#include "state/common_data.h"

namespace glintara {

/// Which passes are wanted.
struct PassQuest {
    double start = 0;        ///< Julian date (UTC)
    double days = 1;         ///< length of the span
    double maxDistance = 0;  ///< metres; the centre must come nearer
    bool moon = false;       ///< the Moon is the light source instead of the Sun
    bool transit = false;    ///< passages in front of the source instead of reflections
    int threads = 1;         ///< how many threads share the satellites; 0 is one for each core. The list is the same
};

/// One pass of the centre of a flare, or of the place from which a transit is seen, within the distance.
struct FlarePass {
    int satellite = 0;        ///< index in `SatTable`
    int mirror = 0;           ///< index of the surface; 1 for a transit
    double begin = 0;         ///< Julian dates (UTC): entry into the distance,
    double closest = 0;       ///< nearest approach of the centre,
    double end = 0;           ///< and exit, all within the span
    double distance = 0;      ///< of the centre at `closest`, metres, straight through the sphere of the site's radius
    Geodetic centre;          ///< geodetic place of the centre at `closest`; its height has no meaning
    double sunElevation = 0;  ///< of the Sun at the centre at `closest`, radians
    double sunMirrorAngle = 0;  ///< between the light and the surface's normal at `closest`, radians; 0 for a transit
    HorizonAngles sky;          ///< the satellite in the observer's sky at `closest`
    double range = 0;           ///< its distance from the observer then, metres
};

/// All passes in the span, of all surfaces of the satellites that are not disabled, in order of `closest`. A pass in
/// progress at either end of the span is cut there. `progress` is called now and then, always from the calling thread,
/// with the part done, 0 to 1, and ends the work by returning false: what was found so far is returned. The observer is
/// `data.Site`, which is also the engine's, and neither may change meanwhile. Passes with the same `closest` come in
/// the order of the list. An instant at which the engine reports an error has no flare. Memory that runs out is thrown
/// from here, whichever thread it happened in.
std::vector<FlarePass> ListPasses(const CommonData& data, const PassQuest& quest,
                                  const std::function<bool(double)>& progress = {});

/// Whether any satellite of the list has a part in such a search.
bool HasCandidates(const CommonData& data, bool transit);

}  // namespace glintara
