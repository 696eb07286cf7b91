#pragma once

// Writing into the output window.

#include <string_view>

#include "state/application.h"

namespace glintara::output {

/// Puts `text` and a line end behind what the window holds. `text` may hold lines of its own, which end in CR LF.
void PrintLine(Application& app, std::string_view text);

/// Prints date and time of the computer, in the time zone of `UTCOffsetHours`, with that offset behind.
void TimeStamp(Application& app);

/// Begins again with the head alone, which names the program.
void ClearAll(Application& app);

/// Opens the window, with an empty page when it was closed, and stamps the time.
void Init(Application& app);

/// Hangs the procedures on the buttons of the window.
void Connect(Application& app);

}  // namespace glintara::output
