#pragma once

// The calendar. Every instant inside the program is a Julian date (UTC, days, 64-bit); calendar fields exist only at
// the edges. Formulas: Meeus, Astronomical Algorithms, 2nd ed., chapter 7.

#include <string>
#include <string_view>

namespace glintara {

/// Calendar fields, UTC. Each is able to hold a fraction; only `second` normally does. `NormalizeDateTime` brings
/// fields of any size into range: month 1 to 12, day 1 to 31, hour 0 to 23, minute 0 to 59, second 0 to under 60.
struct CalendarFields {
    double year = 0;
    double month = 0;
    double day = 0;
    double hour = 0;
    double minute = 0;
    double second = 0;
};

/// Days in that month. February has 29 in every fourth year, centuries included: editing dates by hand follows the
/// four-year rule alone. A month outside 1 to 12 gives 31.
int DaysInMonth(double year, double month);

/// Carries over- and underflowing fields upward until all are in range, each by its whole count of units at once, so
/// fields may be any distance out of range. Days pass from month to month by `DaysInMonth`. A second that rounds to
/// exactly 60 carries. With a field that is not finite, all are left alone.
CalendarFields NormalizeDateTime(CalendarFields fields);

/// Julian date of the fields, by the Gregorian calendar at all times, years before the first included.
double DateToJD(const CalendarFields& fields);

/// Calendar fields of a Julian date; `second` keeps its fraction. Before 15 October 1582 the fields are of the Julian
/// calendar, so it is not the inverse of `DateToJD` there.
CalendarFields JDToDate(double jd);

/// Julian date of the epoch of an element set, from columns 19 to 32 of line 1: two year digits (51 to 99 are of the
/// 20th century, 00 to 50 of the 21st), then the day of the year with its fraction.
double EpochTextToJD(std::string_view epochText);

/// Day, month and year as "DD/MM/YYYY"; of a year before 0 as "DD/MM/-YYYY".
std::string DateText(double year, double month, double day);

/// "HH:MM:SS"; fractions are kept as they are ("05.25").
std::string TimeText(double hour, double minute, double second);

/// Date text (of the year its last four digits), a blank, and the time of day as an angle text in hours.
std::string JDToText(double jd);

}  // namespace glintara
