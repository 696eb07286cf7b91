// The countries of one picture of 1920 x 1080, up to the calls of the painter: on the globe as it fits the window, far
// and close, and on the flat map; with the fine and the reduced borders.
//
// The program's own borders are used when they lie in data/; else as many vertices of wavy islands.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "engine/glintcore.h"

namespace glintara {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

struct Borders {
    std::vector<double> lat;
    std::vector<double> lon;
    std::vector<std::int32_t> id;
};

template <class Number>
void Read(std::ifstream& in, std::vector<Number>& numbers, std::int32_t count) {
    numbers.resize(static_cast<std::size_t>(count));
    in.read(reinterpret_cast<char*>(numbers.data()), static_cast<std::streamsize>(sizeof(Number) * numbers.size()));
}

Borders BordersOfFile(const std::string& name) {
    Borders borders;
    std::ifstream in(std::string(GLINTARA_SOURCE_DIR) + "/data/" + name, std::ios::binary);
    std::int32_t count = 0;
    if (in.read(reinterpret_cast<char*>(&count), sizeof count) && count > 0 && count < 10'000'000) {
        Read(in, borders.lat, count);
        Read(in, borders.lon, count);
        Read(in, borders.id, count);
    }
    return in ? borders : Borders{};
}

/// Islands all over the Earth, a few of them continents.
Borders Islands(std::int32_t count, std::int32_t vertices) {
    Borders borders;
    std::mt19937 engine{7};
    std::uniform_real_distribution<double> any(-1, 1);
    for (std::int32_t id = 1; id <= count; ++id) {
        const double size = 1 + 20 * std::pow(std::abs(any(engine)), 4);  // degrees
        const double lat = 60 * any(engine);
        const double lon = 180 * any(engine);
        const std::int32_t corners = vertices / count;
        for (std::int32_t i = 0; i <= corners; ++i) {
            const double angle = 2 * std::numbers::pi * (i % corners) / corners;
            const double reach = size * (1 + 0.2 * std::sin(7 * angle) + 0.03 * std::sin(91 * angle));
            borders.lat.push_back(lat + reach * std::sin(angle));
            borders.lon.push_back(std::remainder(lon + reach * std::cos(angle), 360));
            borders.id.push_back(id);
        }
    }
    return borders;
}

const Borders& Fine() {
    static const Borders borders = [] {
        const Borders own = BordersOfFile("DB001.VDB");
        return own.lat.empty() ? Islands(400, 100'000) : own;
    }();
    return borders;
}

const Borders& Reduced() {
    static const Borders borders = [] {
        const Borders own = BordersOfFile("DB002.VDB");
        return own.lat.empty() ? Islands(250, 5'000) : own;
    }();
    return borders;
}

GlintViewConfig Camera(double earthRadius) {
    GlintViewConfig config{};
    config.ViewLat = 0.3;
    config.ScaleX = earthRadius;
    config.ScaleY = earthRadius;
    config.HalfWidth = 960;
    config.HalfHeight = 540;
    return config;
}

/// Draws one picture after the other, the Earth turning a quarter of a degree between them.
void Turn(benchmark::State& state, const Borders& borders, GlintViewConfig config) {
    std::int64_t points = 0;
    const GlintDrawTarget target{
        &points,
        [](void* self, const double*, const std::int32_t* ends, std::int32_t contours) {
            *static_cast<std::int64_t*>(self) += ends[contours - 1];
        },
        [](void* self, const double*, std::int32_t count) { *static_cast<std::int64_t*>(self) += count; }, nullptr};
    std::vector<double> scratch(GLINTCORE_DRAW_SCRATCH(borders.lat.size()));
    for (auto _ : state) {
        auto room = static_cast<std::int32_t>(scratch.size());
        config.ViewLon += 0.25 * kDegree;
        Satellite_DrawEarth(&target, &config, static_cast<std::int32_t>(borders.lat.size()), borders.lat.data(),
                            borders.lon.data(), borders.id.data(), &room, scratch.data());
        benchmark::DoNotOptimize(points);
    }
    state.counters["vertices"] = static_cast<double>(borders.lat.size());
    state.counters["points"] = static_cast<double>(points) / static_cast<double>(state.iterations());
}

void EarthReducedGlobe(benchmark::State& state) { Turn(state, Reduced(), Camera(static_cast<double>(state.range(0)))); }
BENCHMARK(EarthReducedGlobe)->Arg(250)->Arg(540)->Arg(5000)->Unit(benchmark::kMillisecond);

void EarthFineGlobe(benchmark::State& state) { Turn(state, Fine(), Camera(static_cast<double>(state.range(0)))); }
BENCHMARK(EarthFineGlobe)->Arg(250)->Arg(540)->Arg(5000)->Arg(40000)->Unit(benchmark::kMillisecond);

void EarthReducedMap(benchmark::State& state) {
    GlintViewConfig config = Camera(300);
    config.CPlaniSphere = 255;
    Turn(state, Reduced(), config);
}
BENCHMARK(EarthReducedMap)->Unit(benchmark::kMillisecond);

void EarthFineMap(benchmark::State& state) {
    GlintViewConfig config = Camera(300);
    config.CPlaniSphere = 255;
    Turn(state, Fine(), config);
}
BENCHMARK(EarthFineMap)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
