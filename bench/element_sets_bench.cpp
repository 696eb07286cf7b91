// Admission of a full list: 3000 element sets, added, and replaced by newer ones.

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "state/application.h"

namespace glintara {
namespace {

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

// `count` sets with names; every second one is an Iridium, which gets surfaces.
std::string ThreeLineSets(int count, std::string_view epoch) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        std::string line1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
        std::string line2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
        const std::string number = std::to_string(10000 + i);
        line1.replace(2, number.size(), number);
        line1.replace(18, epoch.size(), epoch);
        line2.replace(2, number.size(), number);
        text += (i % 2 == 0 ? "IRIDIUM " : "COSMOS ") + number + "\r\n" + line1 + "\r\n" + line2 + "\r\n";
    }
    return text;
}

struct Bench {
    SilentBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
};

void AdmitSets(benchmark::State& state) {
    Bench bench;
    const std::string text = ThreeLineSets(kSatCapacity, "08264.51782528");
    for (auto _ : state) {
        bench.app.Data.SatCount = 0;
        bench.app.Main.TTLE.Text = text;
        CApplyTLEOrbitFnct(bench.app, TLEMode::Add, false, false);
    }
    if (bench.app.Data.SatCount != kSatCapacity) state.SkipWithError("not all sets were admitted");
    state.SetItemsProcessed(state.iterations() * kSatCapacity);
}
BENCHMARK(AdmitSets)->Unit(benchmark::kMillisecond);

// One satellite short of a full list: a full one takes no updates.
void UpdateSets(benchmark::State& state) {
    Bench bench;
    const int count = kSatCapacity - 1;
    bench.app.Main.TTLE.Text = ThreeLineSets(count, "08264.51782528");
    CApplyTLEOrbitFnct(bench.app, TLEMode::Add, false, false);
    const std::string newer = ThreeLineSets(count, "08265.51782528");
    for (auto _ : state) {
        bench.app.Main.TTLE.Text = newer;
        CApplyTLEOrbitFnct(bench.app, TLEMode::AddAndUpdate, false, false);
    }
    if (bench.app.Data.SatCount != count) state.SkipWithError("sets were added that should have replaced");
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(UpdateSets)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
