#pragma once

// The observer's place. The one writer of `CommonData::Site`.

#include "state/common_data.h"

namespace glintara {

/// Height of a place that is chosen without one, metres.
inline constexpr double kDefaultSiteHeight = 150;

/// Moves the observer to a geodetic place (radians, metres), works out what follows from it, and tells the engine. The
/// orbits' semi-major axes, which count in the radius of the place, follow.
void SetLocation(CommonData& data, const Geodetic& place);

/// The same at latitude and longitude in degrees and `kDefaultSiteHeight`.
void SetLocationDegrees(CommonData& data, double lat, double lon);

/// Works out the present place anew.
void RefreshLocation(CommonData& data);

}  // namespace glintara
