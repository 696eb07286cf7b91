#pragma once

// The forms in which Orbit Mean-Elements Messages are published. Each reader hands every record to `take`, in the order
// of the text, and never fails as a whole: what it cannot make out is told with the record, or, where no more can be
// read, by the text it returns, such as "the text breaks off at character 4711". Any bytes may come; the work is
// proportional to their number.
//
// Texts begin behind their byte order mark and blanks.

#include <functional>
#include <string>
#include <string_view>

#include "orbit/mean_elements.h"

namespace glintara {

using TakeRecord = std::function<void(const MessageRecord& record)>;

/// Fewest keywords that make an object of JSON a record, and a line the head of a table.
inline constexpr int kFewestKeywords = 3;

/// Whether the first line is the head of a table: keywords between commas, semicolons or tabs.
bool IsMessageTable(std::string_view text);

/// A table, RFC 4180: the first line tells the columns, in any order and with any others among them. Quoted fields may
/// hold separators and doubled quotes, but no line ends: a quote that is never closed costs its line alone. A later
/// line of keywords begins a new table.
std::string ReadMessageTable(std::string_view text, const TakeRecord& take);

/// JSON: an object is a record, wherever it stands; those named "metadata", "meanElements" and the like are parts of
/// the one that they stand in. Numbers may be texts. Values may follow one another; what is no JSON costs the object
/// that it is in.
std::string ReadMessageJson(std::string_view text, const TakeRecord& take);

/// XML: an element "omm" is a record, wherever it stands and whatever its prefix.
std::string ReadMessageXml(std::string_view text, const TakeRecord& take);

/// Whether the text is in "keyword = value" notation.
bool IsMessageNotation(std::string_view text);

/// "Keyword = value [unit]", a line each; "CCSDS_OMM_VERS" begins a record.
std::string ReadMessageNotation(std::string_view text, const TakeRecord& take);

}  // namespace glintara
