#pragma once

// The two lines of an element set, read by column for the propagator. Format: NORAD two-line element sets, T. S. Kelso,
// celestrak.org, "NORAD Two-Line Element Set Format".

#include <string_view>

#include "engine/sgp4/sgp4.h"

namespace glintara {

/// Why two lines are no element set. The numbers are results of `SatelliteInit`.
enum class ElementLinesError {
    None = 0,
    NotTwoLines = 2,   ///< line 1 does not begin with "1", or line 2 with "2", or a line is too short
    NotNumbers = 3,    ///< a column that must hold a number does not
    MeanMotion = 4,    ///< the mean motion is not above 0
    Eccentricity = 5,  ///< the eccentricity is negative
};

/// Reads the elements of two lines into `out`, which is left alone on an error. Each line ends at its first line-end
/// character, and is not read beyond column 69. What is asked of the columns:
///   - Line 1 reaches column 61, the exponent of the drag term, so that no field of it can be a part of a longer
///   number. Line 2 reaches
///     column 55; when it ends inside the mean motion (blanks taken off the line's end), that has a decimal point and a
///     digit behind it.
///   - A field holds one number, which blanks may surround; a "+" counts as a sign.
///   - Derivatives of the mean motion and the drag term may be blank and are 0 then. In the drag term and the second
///   derivative the
///     exponent may be blank, for 0, behind digits.
///   - In fields with an implied decimal point a digit counts by its column: blanks before the digits are zeros.
///   - Satellite number, designator, set number, ephemeris type and checksums are not looked at.
/// Any finite angle passes. The year of the epoch is 1951 to 2050.
[[nodiscard]] ElementLinesError ReadElementLines(std::string_view line1, std::string_view line2, MeanElements& out);

}  // namespace glintara
