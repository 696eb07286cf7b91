// The whole catalogue of stars: what start-up pays for it, what a jump in time does, and what a picture computes.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>

#include "orbit/files.h"
#include "scene/map_files.h"
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

}  // namespace
}  // namespace glintara
