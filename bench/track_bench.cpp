// Tracks and what is done with them: one revolution of an Iridium with its three antennas, as a picture asks for it, and
// the scan for the 4442 cities of 100,000 inhabitants and more along it.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "bench/example_list.h"
#include "flare/cities.h"
#include "flare/city_files.h"
#include "flare/pending_track.h"
#include "flare/tracks.h"

namespace glintara {
namespace {

const SatRecord& Iridium(const CommonData& data) {
    for (int i = 1; i <= data.SatCount; ++i)
        if (data.Satellite(i).Name == "IRIDIUM 32") return data.Satellite(i);
    for (int i = 1; i <= data.SatCount; ++i)
        if (data.Satellite(i).Name.starts_with("IRIDIUM 32")) return data.Satellite(i);
    throw std::runtime_error("no IRIDIUM 32");
}

TrackQuest OneTurn(int steps) {
    TrackQuest quest;
    quest.start = kBenchStart + 5 / kHoursPerDay;
    quest.stepsPerTurn = steps;
    quest.day = true;
    return quest;
}

void LoadExampleCities(CityTables& tables) {
    const std::array folders = {std::filesystem::path(GLINTARA_SOURCE_DIR "/data")};
    if (!LoadCities(folders, tables)) throw std::runtime_error("no cities");
    DeselectAllCities(tables);
}

// Coarse and fine.
void TrackOfATurn(benchmark::State& state) {
    const ExampleList list(0);
    const CommonData& data = list.app.Data;
    int points = 0;
    for (auto _ : state) {
        FlareTrack track(data, Iridium(data), OneTurn(static_cast<int>(state.range(0))));
        points = 0;
        WalkTrack(
            track, [&points](std::int32_t, const TrackPoint&) { ++points; }, [](std::int32_t, int) {});
    }
    state.counters["points"] = points;
}
BENCHMARK(TrackOfATurn)->Arg(kTrackSteps)->Arg(kTrackStepsFine)->Unit(benchmark::kMillisecond);

void CityScanOfATurn(benchmark::State& state) {
    ExampleList list(0);
    CommonData& data = list.app.Data;
    LoadExampleCities(data.Cities);
    std::size_t found = 0;
    for (auto _ : state) {
        ClearAllCityFlag(data.Cities);
        FlareTrack track(data, Iridium(data), OneTurn(kTrackSteps));
        found = 0;
        ScanListener listener;
        listener.tell = [&found](const std::vector<std::string>& lines) { found += lines.size(); };
        ScanCities(data.Cities, data.Site.SiteRadius, track, listener);
    }
    state.counters["cities"] = data.Cities.SelectedCityCount();
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(CityScanOfATurn)->Unit(benchmark::kMillisecond);

void CitiesLoaded(benchmark::State& state) {
    CityTables tables;
    for (auto _ : state) LoadExampleCities(tables);
    state.counters["cities"] = tables.SiteCount();
}
BENCHMARK(CitiesLoaded)->Unit(benchmark::kMillisecond);

// The filters of the window, over all cities, with the list that is filled then.
void CitiesFiltered(benchmark::State& state) {
    ExampleList list(0);
    Application& app = list.app;
    LoadExampleCities(app.Data.Cities);
    app.Cities.TMinPop.Text = std::string("0");
    app.Cities.TNameFilter.Text = std::string(state.range(0) != 0 ? "s" : "");
    for (auto _ : state) ApplyFilter(app);
    state.counters["selected"] = app.Data.Cities.SelectedCityCount();
}
BENCHMARK(CitiesFiltered)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
