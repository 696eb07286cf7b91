#pragma once

// Places of the Sun and the Moon, apparent, mean equator and equinox of date, by short series.

#include "engine/astro/horizon.h"

namespace glintara {

/// The Sun at Julian date `jd`: low-precision formula of the Astronomical Almanac (page C5), good to 0.02 degrees
/// between 1950 and 2050. `ra` is 0 to 2 pi.
Equatorial SunPosition(double jd);

/// Geocentric place of the Moon: equatorial angles and distance in metres.
struct MoonPlace {
    double dec = 0;
    double ra = 0;
    double distance = 0;
};

/// The Moon at Julian date `jd`: P. Schlyter's series ("Computing planetary positions"), some 0.1 degrees.
MoonPlace MoonPosition(double jd);

/// East longitude, radians, of the point that a body of right ascension `ra` stands over, when the Greenwich sidereal
/// angle is `greenwichAngle`. Not wrapped.
constexpr double EastLongitudeOf(double ra, double greenwichAngle) { return ra - greenwichAngle; }

}  // namespace glintara
