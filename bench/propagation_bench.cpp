// All example satellites, and a full list, propagated to one instant and turned to the world frame: what every picture
// begins with.

#include <benchmark/benchmark.h>

#include "bench/example_list.h"
#include "orbit/propagation.h"
#include "orbit/satellite_motion.h"

namespace glintara {
namespace {

// `count` satellites, or as many as the file has when that is 0; copies fill the list.
void PropagationOfAList(benchmark::State& state, int count) {
    ExampleList list(count);
    int frame = 0;
    for (auto _ : state) {
        const double jd = kBenchStart + frame * kBenchFrame;
        frame = (frame + 1) % kBenchFrames;
        for (int s = 1; s <= list.app.Data.SatCount; ++s) {
            benchmark::DoNotOptimize(PropagateSatellite(list.app.Data, EarthRotation::Displayed,
                                                        list.app.Data.Satellite(s).EngineBlock, jd));
        }
    }
    state.SetItemsProcessed(state.iterations() * list.app.Data.SatCount);
}
BENCHMARK_CAPTURE(PropagationOfAList, examples, 0)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PropagationOfAList, full, kSatCapacity)->Unit(benchmark::kMicrosecond);

// A full list placed at the displayed instant by either model.
void PlacesOfAList(benchmark::State& state, OrbitModel model) {
    ExampleList list(kSatCapacity);
    list.app.Main.CSGP4.Value = model == OrbitModel::SGP4;
    int frame = 0;
    for (auto _ : state) {
        list.SetInstant(kBenchStart + frame * kBenchFrame);
        frame = (frame + 1) % kBenchFrames;
        for (int s = 1; s <= list.app.Data.SatCount; ++s)
            benchmark::DoNotOptimize(MoveToNow(list.app, list.app.Data.Satellite(s)));
    }
    state.SetItemsProcessed(state.iterations() * list.app.Data.SatCount);
}
BENCHMARK_CAPTURE(PlacesOfAList, by_sgp4, OrbitModel::SGP4)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PlacesOfAList, by_sgp1, OrbitModel::SGP1)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace glintara
