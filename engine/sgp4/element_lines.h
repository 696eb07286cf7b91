#pragma once

// The two lines of an element set as the elements that the propagator works with. What stands in which column, and what
// a column may hold, is told in engine/astro/element_fields.h.

#include <string_view>

#include "engine/sgp4/sgp4.h"

namespace glintara {

/// Why two lines are no element set. The numbers are results of `SatelliteInit`; when several hold, it is the lowest.
enum class ElementLinesError {
    None = 0,
    NotTwoLines = 2,   ///< line 1 does not begin with "1", or line 2 with "2", or a line is too short
    NotNumbers = 3,    ///< a field that must hold a number does not
    MeanMotion = 4,    ///< the mean motion is not above 0
    Eccentricity = 5,  ///< the eccentricity is negative
};

/// Reads the elements of two lines into `out`, which is left alone on an error.
///
///   out              from                                unit
///   epochDay         year and whole day of the epoch     Julian date of the midnight before
///   epochFraction    fraction of the epoch's day         days, 0 to below 1
///   bstar            drag term                           per Earth radius
///   inclination      inclination                         radians
///   node             right ascension of the node         radians
///   eccentricity     eccentricity                        0 to below 1
///   argPerigee       argument of perigee                 radians
///   meanAnomaly      mean anomaly                        radians
///   meanMotion       mean motion                         radians per minute
///
/// Nothing else of the lines has a part in it.
[[nodiscard]] ElementLinesError ReadElementLines(std::string_view line1, std::string_view line2, MeanElements& out);

}  // namespace glintara
