#include "engine/astro/calendar.h"

#include <algorithm>
#include <cmath>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"

namespace glintara {

namespace {

constexpr double kMonthsPerYear = 12;

/// Years and days after which the four-year rule comes round.
constexpr double kCycleYears = 4;
constexpr double kCycleDays = 1461;

/// First Julian day number of the Gregorian calendar, 15 October 1582.
constexpr double kGregorianStart = 2299161;

bool IsFinite(const CalendarFields& f) {
    return std::isfinite(f.year) && std::isfinite(f.month) && std::isfinite(f.day) && std::isfinite(f.hour) &&
           std::isfinite(f.minute) && std::isfinite(f.second);
}

/// Brings `low` into 0 to below `size`, counting what is carried in `high`. The remainder is exact for a `low` of any
/// magnitude; one so little below 0 that it rounds to `size` becomes 0.
void Carry(double& low, double& high, double size) {
    double rest = std::fmod(low, size);
    if (rest < 0) rest += size;
    if (rest >= size) rest = 0;
    high += std::round((low - rest) / size);
    low = rest;
}

/// Brings a month into 1 to 12: the twelfth month is the one that a remainder of 0 stands for.
void CarryMonths(CalendarFields& f) {
    Carry(f.month, f.year, kMonthsPerYear);
    if (f.month == 0) {
        f.month = kMonthsPerYear;
        f.year -= 1;
    }
}

/// Brings a whole `day` into its month.
void CarryWholeDays(CalendarFields& f) {
    CarryMonths(f);
    if (std::abs(f.day) > kCycleDays) {
        // Month by month would lead to the same date, in a time that grows with the count.
        double cycles = 0;
        Carry(f.day, cycles, kCycleDays);
        f.year += kCycleYears * cycles;
    }
    for (;;) {
        CarryMonths(f);
        const double days = DaysInMonth(f.year, f.month);
        if (f.day > days) {
            f.day -= days;
            f.month += 1;
        } else if (f.day >= 1) {
            return;
        } else {
            // Month 0 has the 31 days of December, and becomes December of the year before in the next round.
            f.month -= 1;
            f.day += DaysInMonth(f.year, f.month);
        }
    }
}

/// Brings a day into its month, its fraction kept. A fraction belongs to the whole day before it, or a day between the
/// last of a month and the first of the next would go back and forth between the two for ever.
void CarryDays(CalendarFields& f) {
    const double fraction = f.day - std::floor(f.day);
    f.day = std::floor(f.day);
    CarryWholeDays(f);
    const double whole = f.day;
    f.day += fraction;
    if (std::floor(f.day) > whole) CarryWholeDays(f);  // the sum has rounded up to the next midnight
}

/// The last `count` characters of `text` with `count` zeros in front.
std::string LastCharacters(const std::string& text, std::size_t count) {
    const std::string padded = std::string(count, '0') + text;
    return padded.substr(padded.size() - count);
}

/// A year of four digits at least, the sign of one before 0 in front of them.
std::string YearText(double year) {
    constexpr std::size_t kDigits = 4;
    const std::string digits = PlainNumberText(std::abs(year));
    std::string text = year < 0 ? "-" : "";
    if (digits.size() < kDigits) text.append(kDigits - digits.size(), '0');
    return text + digits;
}

/// The plain text of a field of two digits; what stands behind the mark is kept.
std::string TwoDigits(double value) {
    std::string text(value < 10 ? "0" : "");
    return text += PlainNumberText(value);
}

}  // namespace

int DaysInMonth(double year, double month) {
    if (month == 4 || month == 6 || month == 9 || month == 11) return 30;
    if (month == 2) return std::fmod(year, kCycleYears) == 0 ? 29 : 28;
    return 31;
}

CalendarFields NormalizeDateTime(CalendarFields fields) {
    if (!IsFinite(fields)) return fields;
    Carry(fields.second, fields.minute, 60);
    Carry(fields.minute, fields.hour, 60);
    Carry(fields.hour, fields.day, 24);
    CarryDays(fields);
    return fields;
}

double DateToJD(const CalendarFields& fields) {
    double year = fields.year;
    double month = fields.month;
    if (month == 1 || month == 2) {
        year -= 1;
        month += 12;
    }
    const double a = std::floor(year / 100);
    const double b = 2 - a + std::floor(a / 4);
    const double c = std::floor((year + 4716) * 365.25);
    const double d = std::floor((month + 1) * 30.6001);
    const double date = c + d + fields.day + b - 1524.5;
    return date + fields.hour / 24 + fields.minute / 60 / 24 + fields.second / 60 / 60 / 24;
}

CalendarFields JDToDate(double jd) {
    const double z = std::floor(jd + 0.5);
    const double fraction = jd + 0.5 - z;
    double a = z;
    if (z >= kGregorianStart) {
        const double alpha = std::floor((z - 1867216.25) / 36524.25);
        a = z + 1 + alpha - std::floor(alpha / 4);
    }
    const double b = a + 1524;
    const double c = std::floor((b - 122.1) / 365.25);
    const double d = std::floor(c * 365.25);
    const double e = std::floor((b - d) / 30.6001);
    const double day = b - d - std::floor(e * 30.6001) + fraction;

    CalendarFields fields;
    fields.day = std::floor(day);
    fields.month = e < 14 ? e - 1 : e - 13;
    fields.year = fields.month > 2 ? c - 4716 : c - 4715;
    const double hour = 24 * (day - fields.day);
    fields.hour = std::floor(hour);
    const double minute = 60 * (hour - fields.hour);
    fields.minute = std::floor(minute);
    fields.second = 60 * (minute - fields.minute);
    return fields;
}

double EpochTextToJD(std::string_view epochText) {
    constexpr double kLastYear = 2050;
    const std::size_t yearDigits = std::min<std::size_t>(2, epochText.size());
    double year = LeadingNumber(epochText.substr(0, yearDigits)) + 2000;
    if (year > kLastYear) year -= 100;
    const double dayOfYear = LeadingNumber(epochText.substr(yearDigits));
    return DateToJD({year, 1, 1, 0, 0, 0}) + dayOfYear - 1;
}

std::string DateText(double year, double month, double day) {
    return TwoDigits(day) + "/" + TwoDigits(month) + "/" + YearText(year);
}

std::string TimeText(double hour, double minute, double second) {
    return TwoDigits(hour) + ":" + TwoDigits(minute) + ":" + TwoDigits(second);
}

std::string JDToText(double jd) {
    const CalendarFields f = JDToDate(jd);
    const std::string date = LastCharacters(PlainNumberText(f.day), 2) + "/" +
                             LastCharacters(PlainNumberText(f.month), 2) + "/" +
                             LastCharacters(PlainNumberText(f.year), 4);
    return date + " " + HoursToText((f.hour + f.minute / 60 + f.second / 3600) / 12 * kPi);
}

}  // namespace glintara
