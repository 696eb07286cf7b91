// The satellites of a picture of 1920 by 1080 pixels, without the painting: what the program itself adds to the
// painter's work. Counters tell how many operations the painter then gets.

#include <benchmark/benchmark.h>

#include "bench/example_list.h"
#include "orbit/satellite_motion.h"
#include "scene/satellites.h"

namespace glintara {
namespace {

/// Counts what it is asked for.
class CountingSurface : public DrawSurface {
  public:
    CountingSurface() {
        ScaleWidth = 1920 * TwipsPerPixelX;
        ScaleHeight = 1080 * TwipsPerPixelY;
    }
    void Cls() override {}
    void Line(double, double, double, double) override { ++lines; }
    void Circle(double, double, double) override { ++circles; }
    void PSet(double, double) override {}
    void Print(std::string_view) override { ++texts; }
    double TextWidth(std::string_view text) const override { return 105 * static_cast<double>(text.size()); }
    double TextHeight(std::string_view) const override { return 210; }
    void Polygon(std::span<const PixelVertex>) override {}
    void ExtFloodFill(std::int32_t, std::int32_t, Color, FloodFillMode) override {}
    void AlphaBlend(const PixelRectangle&, const DrawSurface&, const PixelRectangle&, std::uint8_t) override {}
    void PolyPolygon(std::span<const double>, std::span<const std::int32_t>) override {}
    void Polyline(std::span<const double>) override { ++polylines; }
    void CoverRow(std::int32_t, std::int32_t, std::span<const std::uint8_t>) override {}
    void StarDot(double, double, double, Color, double) override {}

    double lines = 0;
    double circles = 0;
    double texts = 0;
    double polylines = 0;
};

// Marks and names of `count` satellites; with `all` also an orbit and the live flares.
void SatellitesOfAPicture(benchmark::State& state, int count, bool all, OrbitModel model = OrbitModel::SGP4) {
    ExampleList list(count);
    Application& app = list.app;
    CommonData& data = app.Data;
    app.Main.CSGP4.Value = model == OrbitModel::SGP4;
    app.Main.CSatOnly.Value = !all;
    app.Main.CIridiumFlares.Value = all;
    data.SunDir = {0, 1, 0};
    data.View.ZoomFactor = 29;
    RefreshViewCache(data.View);

    CountingSurface surface;
    PolygonBuffer polygon;
    const SceneContext scene{app, surface, polygon};
    SatelliteWorkspace work;
    int frame = 0;
    for (auto _ : state) {
        list.SetInstant(kBenchStart + frame * kBenchFrame);
        frame = (frame + 1) % kBenchFrames;
        DrawSatellites(scene, work);
    }
    state.SetItemsProcessed(state.iterations() * data.SatCount);
    constexpr auto kPerFrame = benchmark::Counter::kAvgIterations;
    state.counters["lines"] = benchmark::Counter(surface.lines, kPerFrame);
    state.counters["circles"] = benchmark::Counter(surface.circles, kPerFrame);
    state.counters["texts"] = benchmark::Counter(surface.texts, kPerFrame);
    state.counters["polylines"] = benchmark::Counter(surface.polylines, kPerFrame);
}
BENCHMARK_CAPTURE(SatellitesOfAPicture, marks_of_examples, 0, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SatellitesOfAPicture, marks_of_a_full_list, kSatCapacity, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SatellitesOfAPicture, all_of_a_full_list, kSatCapacity, true)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SatellitesOfAPicture, marks_of_a_full_list_by_sgp1, kSatCapacity, false, OrbitModel::SGP1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SatellitesOfAPicture, all_of_a_full_list_by_sgp1, kSatCapacity, true, OrbitModel::SGP1)
    ->Unit(benchmark::kMicrosecond);

// A full list with the orbit of each on show: two hundred places a satellite.
void OrbitsOfAPicture(benchmark::State& state, OrbitModel model) {
    ExampleList list(kSatCapacity);
    Application& app = list.app;
    CommonData& data = app.Data;
    app.Main.CSGP4.Value = model == OrbitModel::SGP4;
    app.Main.CPlotOrbit.Value = true;
    app.Main.CSatNames.Value = false;
    app.Main.CIridiumFlares.Value = false;
    for (int s = 1; s <= data.SatCount; ++s) data.Satellite(s).OptionFlags[kOrbitHiddenPlace] = '0';
    data.SunDir = {0, 1, 0};
    data.View.ZoomFactor = 29;
    RefreshViewCache(data.View);
    list.SetInstant(kBenchStart);

    CountingSurface surface;
    PolygonBuffer polygon;
    const SceneContext scene{app, surface, polygon};
    SatelliteWorkspace work;
    for (auto _ : state) DrawSatellites(scene, work);
    state.SetItemsProcessed(state.iterations() * data.SatCount);
}
BENCHMARK_CAPTURE(OrbitsOfAPicture, by_sgp4, OrbitModel::SGP4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OrbitsOfAPicture, by_sgp1, OrbitModel::SGP1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
