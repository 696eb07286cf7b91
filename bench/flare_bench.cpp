// A day of flares within 30 km of Turin: the search, hour by hour as the program asks for it when nothing is found; and
// the same question put to a plain sweep in steps of 0.1 seconds, on a part of the day, with the ratio of the two.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "engine/glintcore.h"
#include "flare/attitude.h"
#include "flare/passes.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "orbit/propagation.h"
#include "state/application.h"

namespace glintara {
namespace {

constexpr double kHour = 1 / kHoursPerDay;
constexpr int kHours = 24;
constexpr double kResolution = 0.1 / kSecondsPerDay;
constexpr double kMaxDistance = 30e3;      // metres
constexpr double kStart = 2458138.5;       // 20 January 2018, 0 h UTC
constexpr double kYearsLater = 2461365.5;  // 20 November 2026
constexpr Geodetic kTurin{45.07 * kDegToRad, 7.69 * kDegToRad, 240};

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

/// A satellite as the search asks for it.
struct Followed {
    EngineBlock block{};
    EngineSurfaces surfaces;
};

/// An observer in Turin and the surfaces of an example file.
struct Day {
    /// With `everySatellite` all of them get the three antennas of an Iridium.
    Day(const std::string& file, bool everySatellite) {
        SetLocation(app.Data, kTurin);
        if (!LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/" + file))
            throw std::runtime_error(file);
        CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
        for (int s = 1; s <= app.Data.SatCount; ++s) {
            SatRecord& satellite = app.Data.Satellite(s);
            if (everySatellite && !HasFlareModel(satellite)) ApplyIridiumModel(satellite);
            followed.push_back({satellite.EngineBlock, SurfacesTakingPart(satellite, false)});
            surfaceCount += followed.back().surfaces.All().size();
        }
    }

    SilentBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
    std::vector<Followed> followed;
    std::size_t surfaceCount = 0;
};

/// Hours of satellites in which there is a flare.
int SearchHours(Day& day, double start) {
    int found = 0;
    for (int hour = 0; hour < kHours; ++hour) {
        for (Followed& satellite : day.followed) {
            const std::span<const GlintSurface> surfaces = satellite.surfaces.All();
            double jd = 0;
            found += Satellite_FindFirstFlare(start + hour * kHour, kHour, GLINTCORE_SUN, kResolution,
                                              day.app.Data.Site.SiteRadius, &satellite.block, surfaces.data(),
                                              static_cast<std::int32_t>(surfaces.size()), kMaxDistance, &jd) != 0;
        }
    }
    return found;
}

/// Whether one surface flares within the distance in the hour from `start` on, by looking every 0.1 seconds.
bool SweepHour(const Day& day, const Followed& satellite, const GlintSurface& surface, double start) {
    EngineBlock block = satellite.block;
    const Vector3 observer = ObserverOnUnitSphere(day.app.Data.Site);
    const double radius = day.app.Data.Site.SiteRadius;
    constexpr int kSteps = 36000;
    bool found = false;
    for (int step = 0; step < kSteps && !found; ++step) {
        const double jd = start + step * kResolution;
        const WorldMotion motion = PropagateSatellite(day.app.Data, EarthRotation::GivenJd, block, jd);
        const Vector3& r = motion.position;
        const Vector3& v = motion.velocity;
        std::array<double, 3> centre{};
        std::array<double, 5> result{};
        found = Satellite_CalcFlare(jd, GLINTCORE_SUN, surface.Geometry, r.x, r.y, r.z, v.x, v.y, v.z, surface.Angle,
                                    surface.Tilt, centre.data(), result.data()) != 0 &&
                Length(Vector3{centre[0], centre[1], centre[2]} - observer) * radius < kMaxDistance;
    }
    return found;
}

void SearchOfADay(benchmark::State& state, const std::string& file, bool everySatellite, double start) {
    Day day(file, everySatellite);
    int found = 0;
    for (auto _ : state) {
        found = SearchHours(day, start);
        benchmark::DoNotOptimize(found);
    }
    state.counters["satellites"] = day.app.Data.SatCount;
    state.counters["surfaces"] = static_cast<double>(day.surfaceCount);
    state.counters["flares"] = found;
}
BENCHMARK_CAPTURE(SearchOfADay, iridium, std::string("iridium.tle"), false, kStart)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchOfADay, all, std::string("all.tle"), true, kStart)->Unit(benchmark::kMillisecond);
// Elements that are years old: many of the satellites are in error, others decayed.
BENCHMARK_CAPTURE(SearchOfADay, allOld, std::string("all.tle"), true, kYearsLater)->Unit(benchmark::kMillisecond);

// All passes of a day, by one thread and by two.
void PassesOfADay(benchmark::State& state) {
    Day day("all.tle", true);
    PassQuest quest;
    quest.start = kStart;
    quest.maxDistance = kMaxDistance;
    quest.threads = static_cast<int>(state.range(0));
    std::size_t passes = 0;
    for (auto _ : state) passes = ListPasses(day.app.Data, quest).size();
    state.counters["passes"] = static_cast<double>(passes);
}
BENCHMARK(PassesOfADay)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

// The sweep of one surface each of six satellites for one hour; `times_search` tells how many times longer the whole
// day of all surfaces would take than the search of it.
void SweepOfAnHour(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    constexpr std::size_t kSurfaces = 6;
    constexpr int kRepeats = 5;
    Day day("iridium.tle", false);
    if (day.followed.size() < kSurfaces) throw std::runtime_error("too few surfaces");

    Clock::duration search = Clock::duration::max();
    for (int i = 0; i < kRepeats; ++i) {
        const auto begin = Clock::now();
        benchmark::DoNotOptimize(SearchHours(day, kStart));
        search = std::min(search, Clock::now() - begin);
    }
    Clock::duration sweep = Clock::duration::max();
    for (auto _ : state) {
        const auto begin = Clock::now();
        for (std::size_t i = 0; i < kSurfaces; ++i)
            benchmark::DoNotOptimize(SweepHour(day, day.followed[i], day.followed[i].surfaces.All()[0], kStart));
        sweep = std::min(sweep, Clock::now() - begin);
    }
    const double part = static_cast<double>(kSurfaces) / static_cast<double>(day.surfaceCount) / kHours;
    const double ratio = static_cast<double>(sweep.count()) / part / static_cast<double>(search.count());
    state.counters["times_search"] = ratio;
}
BENCHMARK(SweepOfAnHour)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
