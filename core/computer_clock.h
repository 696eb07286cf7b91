#pragma once

// The computer's clock.

#include "engine/astro/calendar.h"

namespace glintara {

/// Where the program reads the time from. A test has one of its own, which stands until it is moved.
class ComputerClock {
  public:
    ComputerClock() = default;
    ComputerClock(const ComputerClock&) = delete;
    ComputerClock& operator=(const ComputerClock&) = delete;
    virtual ~ComputerClock() = default;

    /// The present instant, UTC; `second` with its fraction.
    virtual CalendarFields ReadUtc() const = 0;

    /// The same instant in the time zone of the computer.
    virtual CalendarFields ReadLocal() const = 0;

    /// How many minutes local time is ahead of UTC at Julian date `jd`. A clock that knows its present offset alone
    /// gives that at all times.
    virtual int OffsetMinutes(double jd) const;
};

/// The clock of the system.
class SystemClock : public ComputerClock {
  public:
    CalendarFields ReadUtc() const override;
    CalendarFields ReadLocal() const override;

    /// By the rules of the computer's time zone, summer time included. Before 1970, where those are incomplete and go
    /// back to the local mean time of one town, by the offset at the beginning of that year.
    int OffsetMinutes(double jd) const override;
};

}  // namespace glintara
