// One propagation at a time that changes from call to call, as drawing and searching ask for it: through the engine's
// inner function, and through its C entry, which reads the caller's block and writes it back.

#include <benchmark/benchmark.h>

#include <stdexcept>

#include "engine/glintcore.h"
#include "engine/sgp4/element_lines.h"
#include "engine/sgp4/sgp4.h"

namespace {

struct Set {
    const char* line1;
    const char* line2;
};

// Near-earth; and deep space without a resonance, with that of one day, and with that of half a day.
constexpr Set kStation = {"1 25544U 98067A   18020.50000000  .00002489  00000-0  44617-4 0  9990",
                          "2 25544  51.6428  87.1954 0003425  46.9108 313.3084 15.54213118 87812"};
constexpr Set kNavigation = {"1 28129U 03058A   06175.57071136 -.00000104  00000-0  10000-3 0   459",
                             "2 28129  54.7298 324.8098 0048506 266.2640  93.1663  2.00562768 18443"};
constexpr Set kGeosynchronous = {"1 24208U 96044A   06177.04061740 -.00000094  00000-0  10000-3 0  1600",
                                 "2 24208   3.8536  80.0121 0026640 311.0977  48.3000  1.00778054 36119"};
constexpr Set kMolniya = {"1 08195U 75081A   06176.33215444  .00000099  00000-0  11873-3 0   813",
                          "2 08195  64.1586 279.0717 6877146 264.7651  20.2257  2.00491383225656"};

// Times run through a week from the epoch in steps of 44 seconds, and begin again.
constexpr double kStepMinutes = 0.731;
constexpr double kSpanMinutes = 7 * 1440;

double NextTime(double minutes) { return minutes + kStepMinutes > kSpanMinutes ? 0 : minutes + kStepMinutes; }

glintara::MeanElements ElementsOf(const Set& set) {
    glintara::MeanElements elements;
    if (glintara::ReadElementLines(set.line1, set.line2, elements) != glintara::ElementLinesError::None)
        throw std::invalid_argument(set.line1);
    return elements;
}

void Propagation(benchmark::State& state, const Set& set) {
    glintara::Sgp4Record record;
    if (!glintara::Sgp4Prepare(ElementsOf(set), record)) throw std::invalid_argument(set.line1);
    double minutes = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(glintara::Sgp4AtMinutes(record, minutes));
        minutes = NextTime(minutes);
    }
}

void PropagationByEntry(benchmark::State& state, const Set& set) {
    EngineBlock block;
    if (SatelliteInit(set.line1, set.line2, 'i', &block) != 0) throw std::invalid_argument(set.line1);
    const glintara::MeanElements elements = ElementsOf(set);
    const double epoch = elements.epochDay + elements.epochFraction;
    double minutes = 0;
    double position[3];
    double velocity[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(Satellite_SGP4(&block, epoch + minutes / 1440, position, velocity));
        benchmark::ClobberMemory();
        minutes = NextTime(minutes);
    }
}

void Preparation(benchmark::State& state, const Set& set) {
    const glintara::MeanElements elements = ElementsOf(set);
    glintara::Sgp4Record record;
    for (auto _ : state) {
        benchmark::DoNotOptimize(glintara::Sgp4Prepare(elements, record));
        benchmark::ClobberMemory();
    }
}

BENCHMARK_CAPTURE(Propagation, near_earth, kStation);
BENCHMARK_CAPTURE(Propagation, deep_space, kNavigation);
BENCHMARK_CAPTURE(Propagation, deep_space_one_day, kGeosynchronous);
BENCHMARK_CAPTURE(Propagation, deep_space_half_day, kMolniya);
BENCHMARK_CAPTURE(PropagationByEntry, near_earth, kStation);
BENCHMARK_CAPTURE(PropagationByEntry, deep_space, kNavigation);
BENCHMARK_CAPTURE(PropagationByEntry, deep_space_one_day, kGeosynchronous);
BENCHMARK_CAPTURE(PropagationByEntry, deep_space_half_day, kMolniya);
BENCHMARK_CAPTURE(Preparation, near_earth, kStation);
BENCHMARK_CAPTURE(Preparation, deep_space_half_day, kMolniya);

}  // namespace
