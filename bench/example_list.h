#pragma once

// The satellites that the benchmarks work on: the example sets, and copies of them up to a full list.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "engine/astro/calendar.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "state/application.h"

namespace glintara {

inline constexpr double kBenchStart = 2458138.5;            // 20 January 2018, 0 h UTC
inline constexpr double kBenchFrame = 60 / kSecondsPerDay;  // from one picture to the next
inline constexpr int kBenchFrames = 1440;                   // pictures before the day begins again

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

/// An application with `count` satellites, or with as many as the file has when that is less. Copies have no surfaces
/// of their own: flares come from the originals.
class ExampleList {
  public:
    explicit ExampleList(int count) {
        SetLocationDegrees(app.Data, 45.07, 7.69);
        if (!LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/all.tle"))
            throw std::runtime_error("all.tle");
        CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
        CommonData& data = app.Data;
        const int loaded = data.SatCount;
        for (int next = 1; data.SatCount < count; next = next % loaded + 1) {
            data.Satellite(data.SatCount + 1) = data.Satellite(next);
            data.Satellite(data.SatCount + 1).Surface.ModelFlags[0] = '0';
            ++data.SatCount;
        }
    }

    /// The displayed instant, without the clock.
    void SetInstant(double jd) { app.Data.SetSimInstant(JDToDate(jd), jd); }

  private:
    SilentBoxes boxes_;
    Events events_;
    WindowSignals windows_;

  public:
    Application app{boxes_, events_, windows_, ApplyDefaultModel};
};

}  // namespace glintara
