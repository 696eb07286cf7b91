#include "core/computer_clock.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

#include "engine/astro/constants.h"

namespace glintara {

namespace {

using std::chrono::system_clock;

/// Calendar fields of a count since the epoch of the system's clock, on the days that the count itself begins.
CalendarFields FieldsOf(system_clock::time_point instant) {
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(std::chrono::duration_cast<std::chrono::microseconds>(instant - day));
    const std::chrono::duration<double> second = time.seconds() + time.subseconds();
    return {static_cast<double>(static_cast<int>(date.year())),
            static_cast<double>(static_cast<unsigned>(date.month())),
            static_cast<double>(static_cast<unsigned>(date.day())),
            static_cast<double>(time.hours().count()),
            static_cast<double>(time.minutes().count()),
            second.count()};
}

constexpr int kSecondsPerMinute = 60;

/// The epoch of the system's clock, 1 January 1970, and the last second of the year 9999 from there.
constexpr double kEpoch = 2440587.5;
constexpr double kLastSecond = 253402300799;

}  // namespace

int ComputerClock::OffsetMinutes(double /*jd*/) const {
    return static_cast<int>(std::lround((DateToJD(ReadLocal()) - DateToJD(ReadUtc())) * kMinutesPerDay));
}

int SystemClock::OffsetMinutes(double jd) const {
    const double since = (jd - kEpoch) * kSecondsPerDay;
    // Written so that what is not a number is the epoch.
    const auto seconds = static_cast<std::time_t>(since > 0 ? std::min(since, kLastSecond) : 0.0);
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr) return 0;
    return static_cast<int>(local.tm_gmtoff / kSecondsPerMinute);
}

CalendarFields SystemClock::ReadUtc() const { return FieldsOf(system_clock::now()); }

CalendarFields SystemClock::ReadLocal() const {
    constexpr int kFirstYearOfTm = 1900;
    const system_clock::time_point now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr) return FieldsOf(now);
    const double fraction = FieldsOf(now).second - static_cast<double>(seconds % 60);
    return {static_cast<double>(local.tm_year + kFirstYearOfTm),
            static_cast<double>(local.tm_mon + 1),
            static_cast<double>(local.tm_mday),
            static_cast<double>(local.tm_hour),
            static_cast<double>(local.tm_min),
            static_cast<double>(local.tm_sec) + fraction};
}

}  // namespace glintara
