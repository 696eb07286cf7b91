#pragma once

// How the text boxes of the settings are read.

#include <string>
#include <string_view>

namespace glintara {

/// What a text is read as.
struct BoxNumber {
    double value = 0;    ///< 0 for a text without a number
    bool whole = false;  ///< nothing of the text was passed over
};

/// The number that `text` begins with. The decimal mark may be a comma.
BoxNumber ReadBoxNumber(std::string_view text);

/// The same for an angle in degrees. Minutes and seconds may follow, apart by blanks, colons or their signs ("48 12 30",
/// "48°12.5'"), and one of the two letters of the circle may stand before or behind: `positive`, or `negative`, which
/// turns the sign ("70.6 W"). They may be small.
BoxNumber ReadBoxAngle(std::string_view text, char positive, char negative);

/// An angle in degrees as degrees, minutes and tenths of a second, with the letter of its sign: 48°12'29.5" N. UTF-8.
std::string AngleText(double degrees, char positive, char negative);

}  // namespace glintara
