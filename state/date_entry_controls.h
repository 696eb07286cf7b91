#pragma once

// The window in which the displayed instant is typed: a date, a time, and a small calendar.

#include <array>
#include <cstddef>
#include <cstdint>

#include "state/controls.h"

namespace glintara {

/// Cells of the calendar: six weeks, from Monday to Sunday.
inline constexpr std::size_t kCalendarCells = 42;

/// State of the window "Date and Time".
struct DateEntryControls {
    Label LDate{"Date:"};
    TextBox TDate{
        "",
        "Day, month and year, such as 20/01/2018; also 2018-01-20. The cursor keys up and down step by a day, "
        "the page keys by a month"};
    Label LTime{"Time:"};
    TextBox TTime{"", "Hours, minutes and seconds, such as 17:42:30"};
    Label LZone{"", "The time zone in which date and time are read, as \"Local Time\" says"};

    Button CPrevYear{"\u00AB", "One year earlier"};
    Button CPrevMonth{"\u2039", "One month earlier"};
    Label LMonth{"", "Month and year of the calendar"};
    Button CNextMonth{"\u203A", "One month later"};
    Button CNextYear{"\u00BB", "One year later"};
    /// The days of the month that `TDate` stands in; cells before the first and behind the last are disabled and blank.
    std::array<CheckBox, kCalendarCells> Days;
    std::int32_t CalendarYear = 2000;  ///< the month that they show
    int CalendarMonth = 1;

    Label LRun{"", "What the clock does after the jump"};
    Label LProblem;  ///< why there is no such date or time
    Button COk{"Go There", "Show this instant (Return)"};
    Button CCancel{"Cancel", "Leave all as it is (Esc)"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

}  // namespace glintara
