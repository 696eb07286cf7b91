#pragma once

// Element sets as they come, in two lines or as Orbit Mean-Elements Messages, and as the text of two lines that the box
// `TTLE` holds.

#include <optional>
#include <string>
#include <string_view>

namespace glintara {

/// Form of a text with element sets.
enum class ElementForm {
    TwoLine,   ///< two-line sets, or any text that is in none of the forms below
    Table,     ///< an Orbit Mean-Elements Message as comma-separated values,
    Json,      ///< as JSON,
    Xml,       ///< as XML,
    Notation,  ///< in "keyword = value" notation
};

/// What a text holds.
struct ElementText {
    ElementForm form = ElementForm::TwoLine;
    std::string text;  ///< the sets in two lines, as the box takes them; of any other text, that text
    int sets = 0;      ///< pairs of a line 1 and a line 2 in `text`; 0: there are no element sets in it

    // Of messages alone:
    int records = 0;
    int tooHigh = 0;            ///< records left out because their number has no two-line form
    std::string firstTooHigh;   ///< such as "STARLINK-99 (340001)"
    int unusable = 0;           ///< records left out for other reasons
    std::string firstUnusable;  ///< such as "record 17 (ISS): MEAN_MOTION is missing"
    std::string damage;         ///< where and why the text could not be read on; empty when it was read to its end

    bool IsMessage() const { return form != ElementForm::TwoLine; }
    int LeftOut() const { return tooHigh + unusable; }
};

/// Reads a text in any of the forms, which it tells apart by itself, in UTF-8 or in the UTF-16 that `TextOfUtf16`
/// knows. Never fails; it takes time in proportion to the text's length.
ElementText ReadElementText(std::string_view text);

/// What of a message is not in its text of two lines, and why: "2 of 979 records left out: 1 has a number above
/// 339999, NAME (340001); 1 cannot be used, record 17 (ISS): MEAN_MOTION is missing". Empty when nothing is left out.
std::string LeftOutText(const ElementText& read);

/// A text that begins with the byte order mark of UTF-16, as spreadsheets save tables, in UTF-8 and without the mark;
/// half a character becomes U+FFFD. Nothing for any other text: two letters of a name may look like the mark, so what
/// follows it must be ASCII.
std::optional<std::string> TextOfUtf16(std::string_view text);

/// `text` as the box takes it: every line end (CR LF, CR CR LF, LF or CR) becomes CR LF, blanks and tabs before it go,
/// and so does a byte order mark at the start.
std::string BoxText(std::string_view text);

}  // namespace glintara
