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

  private:
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
