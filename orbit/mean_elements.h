#pragma once

// One record of an Orbit Mean-Elements Message and the two lines that say the same.
//
// Source: CCSDS 502.0-B-3, Orbit Data Messages, chapter 4 (keywords, units), and NORAD's two-line form as told in
// engine/astro/element_fields.h. Values are taken as they stand: the units of a message are those of the lines, and
// MEAN_MOTION_DOT and MEAN_MOTION_DDOT bear the numbers of the lines, which are a half and a sixth of the derivatives.
// So does the standard's own example, whose derivative is -0.00000113 in both forms, and so do the public catalogues.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace glintara {

/// The keywords that the lines are made of, or that tell whether they can be.
enum class MessageKey {
    ObjectName,
    ObjectId,
    CenterName,
    TimeSystem,
    MeanElementTheory,
    Epoch,
    MeanMotion,
    Eccentricity,
    Inclination,
    RaOfAscNode,
    ArgOfPericenter,
    MeanAnomaly,
    EphemerisType,
    ClassificationType,
    NoradCatId,
    ElementSetNo,
    RevAtEpoch,
    BStar,
    MeanMotionDot,
    MeanMotionDDot,
};

inline constexpr std::size_t kMessageKeys = 20;

/// The keyword as messages spell it, such as "RA_OF_ASC_NODE".
std::string_view MessageKeyText(MessageKey key);

/// The key that is spelled `text`, case counts; nothing for any other word.
std::optional<MessageKey> FindMessageKey(std::string_view text);

/// Values of one record as they stand in the text; empty for what it does not have.
struct MessageRecord {
    std::array<std::string, kMessageKeys> values;
    int known = 0;      ///< keywords that were found, with a value or without
    std::string fault;  ///< what is wrong with the record as a whole; empty for nothing

    const std::string& Value(MessageKey key) const { return values[static_cast<std::size_t>(key)]; }
    void Set(MessageKey key, std::string_view value);
    void Clear();
};

/// An element set: its name and two lines of 69 characters with their checksums.
struct ElementLines {
    std::string name;
    std::string line1;
    std::string line2;
};

/// Why a record has no two lines.
struct RecordFault {
    bool numberTooHigh = false;  ///< its catalogue number is above 339999, and nothing else is known to be wrong
    std::string reason;          ///< such as "MEAN_MOTION is missing"
};

/// The lines of a record, every number rounded to the nearest that its columns hold. Nothing when they cannot say what
/// the record does; `fault` then tells why:
///
///   must be there     EPOCH, MEAN_MOTION, ECCENTRICITY, INCLINATION, RA_OF_ASC_NODE, ARG_OF_PERICENTER, MEAN_ANOMALY,
///                     NORAD_CAT_ID, BSTAR
///   EPOCH             calendar date or day of the year, then the time of day: "2018-01-20T12:25:40.104192",
///                     "2007-064T10:34:41.4264"; UTC, of the years 1951 to 2050
///   ranges            MEAN_MOTION above 0 and below 100; ECCENTRICITY 0 to below 1; INCLINATION 0 to 180; the other
///                     angles -360 to 360; NORAD_CAT_ID a whole number of 0 to 339999
///   not for SGP4      a MEAN_ELEMENT_THEORY other than SGP4, EPHEMERIS_TYPE above 3, a TIME_SYSTEM other than UTC, a
///                     CENTER_NAME other than EARTH
///
/// What has no part in a position is never a reason: the derivatives of the mean motion are 0 where they are missing,
/// an ELEMENT_SET_NO or REV_AT_EPOCH that is no number is 0, the last four or five digits of a longer one are taken.
/// A record without a name is named by its OBJECT_ID, or by its number.
std::optional<ElementLines> LinesOfRecord(const MessageRecord& record, RecordFault& fault);

/// Checksum digit of a line: the digits of its first 68 columns, with 1 for each minus sign, modulo 10.
char ElementLineChecksum(std::string_view line);

}  // namespace glintara
