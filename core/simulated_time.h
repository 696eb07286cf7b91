#pragma once

// The displayed instant: the last reading of the computer's clock plus the offsets that the user has set.

#include "core/computer_clock.h"
#include "flare/search.h"
#include "state/application.h"

namespace glintara {

/// The one writer of the displayed instant, and of what follows from it: labels, Sun, Moon, locked views.
class SimulatedTime : public SearchClock {
  public:
    SimulatedTime(Application& app, const ComputerClock& clock) : app_(app), clock_(clock) {}

    /// Reads the computer's clock into the base date, whether it runs or not.
    void ReadBase();

    /// Works the displayed instant out: the base date, which is read anew while `CRealTime` is set, plus the offsets.
    /// A year beyond 32 bits leaves everything as it was.
    void TimeSyncronize();

    /// Moves the offsets so that the displayed instant becomes Julian date `jd`, to the millisecond. While the clock
    /// runs, it goes on from there. What no 32-bit offset reaches changes nothing.
    void SetJDToTimeOffset(double jd) override;

    /// Moves the offsets so that the displayed instant becomes these fields, UTC, exactly: whole seconds stay whole. A
    /// clock that runs goes on from there; one that stands loses the fraction of its second. False, and nothing is
    /// changed, when the instant is beyond what offsets reach.
    bool JumpTo(const CalendarFields& utc);

    /// The displayed instant in the time zone that the date label shows.
    CalendarFields ShownFields() const;

    /// How many minutes that zone is ahead of UTC at the instant `utc`: local time while `CLocalTime` is set, otherwise
    /// UTC itself.
    int ShownOffsetMinutes(const CalendarFields& utc) const;

    /// The instant, UTC, at which the date label shows the fields `shown`. Of an hour that summer time leaves out or
    /// repeats, one of the two readings.
    CalendarFields UtcOfShown(const CalendarFields& shown) const;

    /// The computer's own offset at Julian date `jd`, minutes.
    int ComputerOffsetMinutes(double jd) const { return clock_.OffsetMinutes(jd); }

  private:
    void NoteForeignZone();
    void FollowComputerZone();
    bool SpreadFields(const CalendarFields& utc);
    void Synchronize(bool readClock);
    bool WriteInstant();
    void WriteDateLabel();
    void WriteJulianLabel();
    void PlaceSunAndMoon();
    void AimAtSatellite();
    void HoldSky();
    bool SpreadOverOffsets(double days);

    Application& app_;
    const ComputerClock& clock_;
};

/// After displayed instant, base and offsets were read back from where `MilliOffset` is not kept: 0 while the clock
/// runs; else what is missing between base plus offsets and the displayed fields, to the millisecond.
void SettleMilliOffset(Application& app);

}  // namespace glintara
