#pragma once

// The window "Date and Time", in which the displayed instant is typed. Its calendar is the Gregorian one at all times,
// like that of the clock; the year before 1 is 0, the one before that -1.

#include <string>
#include <string_view>

#include "core/simulated_time.h"
#include "state/application.h"

namespace glintara::date_entry {

/// A date or a time as it was typed.
struct Reading {
    CalendarFields fields;  ///< of a date its first three, of a time the others
    std::string problem;    ///< why there is no such date or time; empty when there is

    bool IsGood() const { return problem.empty(); }
};

/// Day, month and year, apart by "/", "." or blanks; or year, month and day, apart by "-". A year has three digits at
/// least, so that none is taken for the end of another; it may have a sign.
Reading ReadDate(std::string_view text);

/// Hour, minute and second, apart by colons or blanks; what lacks at the end is 0. The second may have a fraction.
Reading ReadTime(std::string_view text);

/// A date as it stands in the box: "20/01/2018".
std::string WriteDate(const CalendarFields& date);

/// Opens the window with the displayed instant, in the zone that is shown. One that is open stays as it is.
void Open(Application& app, const SimulatedTime& time);

/// Moves the date in the box. A text that is no date gives way to the first of the month that the calendar shows.
void StepDays(Application& app, int days);
void StepMonths(Application& app, int months);

/// Shows the instant that stands in the boxes, and closes the window; a clock that runs goes on from there. What is no
/// date or time is answered in words, and the window stays.
void COk_Click(Application& app, SimulatedTime& time);

/// Hangs the procedures on the controls of the window.
void Connect(Application& app, SimulatedTime& time);

}  // namespace glintara::date_entry
