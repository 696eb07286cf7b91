#pragma once

// The output window: a pane of text into which reports are written.

#include <functional>

#include "engine/astro/calendar.h"
#include "state/controls.h"

namespace glintara {

/// State of the window "Output". The text is kept in the box alone; the user copies it from there.
struct OutputControls {
    TextBox TOutput{"", "What the program has written; it can be edited, selected and copied"};
    Button CClear{"Clear", "Begin again with an empty page"};
    Button CClose{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it

    /// Puts the open window before the others, for a report that begins.
    std::function<void()> BringToFront;

    /// The computer's clock, UTC, which the program hands in. Without it there is no time to be stamped.
    std::function<CalendarFields()> ReadClock;
};

}  // namespace glintara
