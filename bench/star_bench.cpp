// The whole catalogue of stars: what start-up pays for it, what a jump in time does, and what a picture computes.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "orbit/files.h"
#include "scene/map_files.h"
#include "scene/object_finder.h"
#include "scene/star_list.h"
#include "scene/star_places.h"

namespace glintara {
namespace {

constexpr double kToday = 2461345.5;  // 1 November 2026

std::string StarFile() {
    return ReadWholeFile(std::filesystem::path(GLINTARA_SOURCE_DIR) / "data" / kStarFile, 20000000).value_or("");
}

/// The catalogue of the program; empty when its file cannot be read.
StarTables AllStars(benchmark::State& state) {
    StarTables stars;
    if (auto read = DecodeStars(StarFile()))
        TakeStars(stars, std::move(*read));
    else
        state.SkipWithError("no stars");
    return stars;
}

void LoadStars(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(AllStars(state).StarCount());
}
BENCHMARK(LoadStars)->Unit(benchmark::kMillisecond);

void PrecessAllStars(benchmark::State& state) {
    StarTables stars = AllStars(state);
    double jd = kToday;
    for (auto _ : state) {
        jd += kPrecessionDays;
        benchmark::DoNotOptimize(PrecessStars(stars, jd));
    }
}
BENCHMARK(PrecessAllStars)->Unit(benchmark::kMillisecond);

void ListAllStars(benchmark::State& state) {
    StarTables stars = AllStars(state);
    for (auto _ : state) RebuildStarList(stars, 11);
    state.counters["stars"] = stars.VisibleStarCount();
}
BENCHMARK(ListAllStars)->Unit(benchmark::kMillisecond);

void TurnAllStars(benchmark::State& state) {
    StarTables stars = AllStars(state);
    RebuildStarList(stars, 11);
    ViewState view;
    for (auto _ : state) {
        const RotationMatrix matrix = SkyToView(view, 1);
        double sum = 0;
        for (std::size_t i = 1; i < stars.VisibleStarList.size(); ++i)
            sum += (matrix * stars.StarDirections[static_cast<std::size_t>(stars.VisibleStarList[i])]).x;
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(TurnAllStars)->Unit(benchmark::kMillisecond);

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

/// The finder among all stars: 0 on the sphere, 1 on the chart, 2 on the flat map.
void FindAmongAllStars(benchmark::State& state) {
    SilentBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app(boxes, events, windows);
    app.Data.Stars = AllStars(state);
    RebuildStarList(app.Data.Stars, 15);
    app.Data.View.MaxStarMag = 15;
    app.Data.View.ZoomFactor = 32;
    app.Data.View.SkyScale = 2;
    app.Main.CAutoMag.Value = false;
    app.Main.CDrawSky.Value = app.Main.CSkyOnly.Value = true;
    app.Main.CDrawFrontStars.Value = app.Main.CDrawBackStars.Value = true;
    app.Main.CFlatSky.Value = state.range(0) == 1;
    app.Main.CPlaniSphere.Value = state.range(0) == 2;
    double x = 0;
    for (auto _ : state) {
        x = x < 0.7 ? x + 0.01 : 0;
        benchmark::DoNotOptimize(ObjectAt(app, {x, 0.3}));
    }
}
BENCHMARK(FindAmongAllStars)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
