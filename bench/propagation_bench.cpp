// All example satellites, and a full list, propagated to one instant and turned to the world frame: what every picture
// begins with.

#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "core/state/application.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "orbit/propagation.h"

namespace glintara {
namespace {

constexpr double kStart = 2458138.5;            // 20 January 2018, 0 h UTC
constexpr double kFrame = 60 / kSecondsPerDay;  // from one picture to the next
constexpr int kFrames = 1440;                   // pictures before the day begins again

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

// `count` satellites, or as many as the file has when that is 0; copies fill the list.
void PropagationOfAList(benchmark::State& state, int count) {
    SilentBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app(boxes, events, windows);
    CommonData& data = app.Data;
    SetLocationDegrees(data, 45.07, 7.69);
    if (!LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/all.tle")) {
        throw std::runtime_error("all.tle");
    }
    CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
    for (int next = 1; data.SatCount < count; ++next) {
        data.Satellite(data.SatCount + 1) = data.Satellite(next);
        ++data.SatCount;
    }

    int frame = 0;
    for (auto _ : state) {
        const double jd = kStart + frame * kFrame;
        frame = (frame + 1) % kFrames;
        for (int s = 1; s <= data.SatCount; ++s) {
            benchmark::DoNotOptimize(
                PropagateSatellite(data, EarthRotation::Displayed, data.Satellite(s).EngineBlock, jd));
        }
    }
    state.SetItemsProcessed(state.iterations() * data.SatCount);
}
BENCHMARK_CAPTURE(PropagationOfAList, examples, 0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PropagationOfAList, full, kSatCapacity)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace glintara
