#pragma once

// The fields of an element set: in which columns they stand, and what a column may hold. Format: NORAD two-line element
// sets (T. S. Kelso, celestrak.org, "NORAD Two-Line Element Set Format").
//
// The list of satellites and the propagator read a set by this one table, so that the elements that are shown are those
// that are flown.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace glintara {

/// Characters of line 1 and line 2, the checksum digit included. What stands behind them is not read.
inline constexpr std::size_t kElementLineLength = 69;

/// The digit that each line begins with.
inline constexpr char kLine1Digit = '1';
inline constexpr char kLine2Digit = '2';

/// Columns of a line, counted from 1, both ends included.
struct ElementColumns {
    std::size_t first;
    std::size_t last;
};

/// Line 1.
inline constexpr ElementColumns kSatNumber{3, 7};
inline constexpr ElementColumns kDesignator{10, 17};
inline constexpr ElementColumns kEpochText{19, 32};       ///< two digits of the year, then the day of the year
inline constexpr ElementColumns kMeanMotionDot{34, 43};   ///< revolutions per day squared
inline constexpr ElementColumns kMeanMotionDDot{45, 52};  ///< sign, five digits behind an implied point, exponent
inline constexpr ElementColumns kBStar{54, 61};           ///< the same; per Earth radius
inline constexpr ElementColumns kElementSetNumber{65, 68};

/// Line 2.
inline constexpr ElementColumns kInclination{9, 16};    ///< degrees
inline constexpr ElementColumns kRaanAngle{18, 25};     ///< degrees
inline constexpr ElementColumns kEccentricity{27, 33};  ///< digits behind an implied point
inline constexpr ElementColumns kArgPerigee{35, 42};    ///< degrees
inline constexpr ElementColumns kMeanAnomaly{44, 51};   ///< degrees
inline constexpr ElementColumns kMeanMotion{53, 63};    ///< revolutions per day

/// The columns of `line`, as far as it reaches.
std::string_view ElementField(std::string_view line, ElementColumns columns);

/// What is wrong with a line.
enum class ElementFault {
    None,
    NotItsDigit,  ///< it does not begin with "1", or "2"
    TooShort,     ///< it ends before its last needed column
    Epoch,        ///< from here on: the field holds no number
    MeanMotionDot,
    MeanMotionDDot,
    BStar,
    Inclination,
    RaanAngle,
    Eccentricity,
    ArgPerigee,
    MeanAnomaly,
    MeanMotion,
    MeanMotionNotPositive,
    EccentricityNegative,
};

/// `fault` of the line that begins with `lineDigit` in words, such as "the eccentricity is no number"; empty for none.
std::string FaultText(ElementFault fault, char lineDigit);

/// Line 1 as numbers. The texts are parts of the line that was read.
struct ElementLine1 {
    std::string_view satNumber;
    std::string_view designator;
    std::string_view epochText;
    double epochYear = 0;  ///< 1951 to 2050
    double epochDay = 0;   ///< of the year with its fraction; 1 is the first of January, midnight
    double meanMotionDot = 0;
    double meanMotionDDot = 0;
    double bstar = 0;
    std::int16_t elementSetNumber = 0;  ///< the nearest that fits; 0 when the columns hold none
};

/// Line 2 as numbers. Angles are degrees here: the propagator and the list take them to radians by constants of their
/// own.
struct ElementLine2 {
    double inclination = 0;
    double raanAngle = 0;
    double eccentricity = 0;
    double argPerigee = 0;
    double meanAnomaly = 0;
    double meanMotion = 0;  ///< revolutions per day
};

/// Reads a line into `out`, which is left alone on a fault. The line ends at its first line-end character, and at
/// column 69. What is asked of it:
///
///   length          Line 1 reaches column 61, so that no field of it can be a part of a longer number. Line 2 reaches
///                   column 55; when it ends inside the mean motion (blanks taken off the line's end), that has a
///                   decimal point and a digit behind it.
///   numbers         A field holds one decimal number without an exponent. Blanks may surround it; "+" is a sign.
///   implied point   A digit counts by its column. Blanks before and behind the digits are zeros; one between them
///                   makes the field no number.
///   may be blank    Both derivatives of the mean motion and the drag term, for 0; the exponents, for 0.
///   epoch           The first digit of the year may be blank. 51 to 99 are of the 20th century, 00 to 50 of the 21st.
///   ranges          The eccentricity is not negative, the mean motion is above 0. Any finite angle passes.
///   not looked at   Satellite number, designator, element set number, ephemeris type, checksum.
[[nodiscard]] ElementFault ReadElementLine1(std::string_view line, ElementLine1& out);
[[nodiscard]] ElementFault ReadElementLine2(std::string_view line, ElementLine2& out);

}  // namespace glintara
