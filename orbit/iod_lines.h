#pragma once

// Observations as text: the IOD format, in which observers of satellites exchange places in the sky. One line of 64
// columns is one point; what may stand behind it (brightness and flash period) is not read here.
//
// Columns, from 1:
//
//      1 to 5   catalogue number            42, 43  accuracy of the time, M and X, seconds
//      7 to 8   year of the launch          45      how the angles are written: 3, HHMMmmm+DDdddd
//     10 to 12  number of the launch        46      their equinox: 5, J2000
//     13 to 15  piece                       48 to 54  right ascension: hours, minutes, thousandths of a minute
//     17 to 20  station                     55 to 61  declination: sign, degrees, ten-thousandths of a degree
//     22        condition of the sky        63, 64  accuracy of the place, M and X, degrees
//     24 to 40  date and time, UTC, to the thousandth of a second; all other columns are blank
//
// An accuracy is M times ten to the power of X - 8.

#include <string>
#include <string_view>

#include "state/observation_controls.h"

namespace glintara {

/// Columns of a line.
inline constexpr std::size_t kIODLineLength = 64;

/// `value` rounded to one significant digit when `scale` is 1, halves up; to as many digits more or fewer as `scale`
/// has powers of ten less or more. 0, and what is not finite, stays as it is.
double RoundSignificant(double value, double scale);

/// The line of `point`. The seconds are cut at their thousandths; the thousandths of the minute of right ascension and
/// the ten-thousandths of the degree of declination are rounded, and a fraction that rounds up to a whole one reads 0
/// without a carry. The accuracy of the time is rounded to its digit, that of the place is cut; 90 or more, and what is
/// no accuracy at all, reads "99". Catalogue numbers beyond 99999 take the Alpha-5 form. A number that is too wide for
/// its columns loses its first digits.
std::string IODPointToText(const IODPoint& point);

/// What keeps `line` from being read, as a sentence's end ("it has 12 columns, not 64"); empty for a line that is good.
std::string IODLineFault(std::string_view line);

/// Reads a line. Digits stand at their places and blanks on the right of a time or an angle are digits that were not
/// given, so that "334  " in the place of the seconds is 33.4 s. An accuracy that was not given is one that is not
/// known. Returns false, and leaves `point` as it was, for a line with an `IODLineFault`: one that is too short or out
/// of its columns, whose angles are written in another way, or whose equinox is another.
bool IODTextToPoint(std::string_view line, IODPoint& point);

}  // namespace glintara
