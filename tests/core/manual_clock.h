#pragma once

// A clock that stands until a test moves it: the computer's clock, the timers' clock and the event loop in one.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <list>

#include "core/computer_clock.h"
#include "state/events.h"
#include "state/main_controls.h"

namespace glintara::testing {

class ManualClock : public ComputerClock, public Events {
  public:
    explicit ManualClock(const CalendarFields& start) : start_(start) {}

    CalendarFields ReadUtc() const override {
        CalendarFields now = start_;
        now.second += static_cast<double>(now_) / 1000;
        return NormalizeDateTime(now);
    }

    CalendarFields ReadLocal() const override {
        CalendarFields now = ReadUtc();
        now.hour += zoneHours;
        return NormalizeDateTime(now);
    }

    int OffsetMinutes(double jd) const override {
        return zoneAt ? zoneAt(jd) : static_cast<int>(std::lround(zoneHours * 60));
    }

    /// Drives the timers of the main window from now on.
    void Drive(MainControls& main) {
        for (Timer* timer : main.Timers()) {
            entries_.push_back({timer, kNever, false});
            Entry& entry = entries_.back();
            const auto obey = [this, &entry] {
                entry.due = entry.timer->Armed() ? now_ + entry.timer->Interval : kNever;
            };
            timer->Watch(obey);
            obey();
        }
    }

    /// Lets `ms` pass. Timers fire when they are due, in the order of their times; none fires inside its own handler.
    void Advance(std::int64_t ms) {
        const std::int64_t target = now_ + ms;
        for (;;) {
            Entry* const next = NextDue(target);
            if (next == nullptr) break;
            now_ = std::max(now_, next->due);
            next->due = now_ + next->timer->Interval;
            next->firing = true;
            next->timer->Fire();
            next->firing = false;
        }
        now_ = std::max(now_, target);
    }

    /// Lets `ms` pass while the program is too busy for its timers.
    void Stall(std::int64_t ms) { now_ += ms; }

    /// One turn of the event loop: a millisecond.
    void ServeEvents() override {
        ++served;
        if (hook) hook();
        Advance(1);
    }

    /// The same, for one who sleeps meanwhile.
    void WaitForEvents() override {
        ++waited;
        ServeEvents();
        --served;
    }

    std::int64_t NowMs() const { return now_; }

    int served = 0;  ///< turns that were asked for without waiting
    int waited = 0;
    std::function<void()> hook;  ///< what a test does while events are served
    double zoneHours = 0;
    std::function<int(double)> zoneAt;  ///< minutes ahead of UTC at a Julian date, where they change

  private:
    static constexpr std::int64_t kNever = -1;

    struct Entry {
        Timer* timer;
        std::int64_t due;
        bool firing;
    };

    Entry* NextDue(std::int64_t limit) {
        Entry* next = nullptr;
        for (Entry& entry : entries_) {
            if (entry.due == kNever || entry.firing || entry.due > limit) continue;
            if (next == nullptr || entry.due < next->due) next = &entry;
        }
        return next;
    }

    CalendarFields start_;
    std::int64_t now_ = 0;
    std::list<Entry> entries_;
};

}  // namespace glintara::testing
