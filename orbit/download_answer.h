#pragma once

// What a server has answered when it was asked for element sets.

#include <optional>
#include <string>
#include <string_view>

namespace glintara {

/// An answer that has been looked at.
struct DownloadAnswer {
    std::string elements;  ///< two-line element sets, as the box takes them; empty when the answer holds none
    std::string leftOut;   ///< what of it is not in `elements`, and why; empty when all is
    bool damaged = false;  ///< it breaks off

    // Of an answer without element sets:
    std::string problem;  ///< what it is instead, in words that can follow a name and a colon
    bool last = false;    ///< asking for the same in another form would bring nothing: there is no such group, or the
                          ///< server wants to be left in peace
    bool unchanged = false;  ///< the server refuses because it has nothing newer than what it gave here last

    bool Usable() const { return !elements.empty(); }
};

/// Looks at the text of an answer with the HTTP status `status`. From 400 on it is an error, whatever the text; below,
/// it is usable when it holds an element set in two lines, or a message of mean elements as a table, JSON or XML.
DownloadAnswer ReadAnswer(std::string_view text, int status);

}  // namespace glintara
