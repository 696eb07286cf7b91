// What the library promises about threads: with place and epochs set, calls on separate blocks may run side by side.
// Built with the thread sanitizer, which sees each access to memory that two threads share without an order.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "engine/glintcore.h"

namespace {

constexpr double kNight = 2458138.5;  // 20 January 2018
constexpr double kSiteRadius = 6371000;
constexpr double kHour = 1 / 24.0;

struct ElementSet {
    std::string line1;
    std::string line2;
};

/// Iridiums, and satellites on the orbits whose resonance is integrated.
std::vector<ElementSet> SomeSets() {
    std::ifstream in(std::string(GLINTARA_SOURCE_DIR) + "/data/examples/all.tle");
    std::vector<ElementSet> sets;
    std::string name;
    ElementSet set;
    while (std::getline(in, name) && std::getline(in, set.line1) && std::getline(in, set.line2))
        if (name.starts_with("IRIDIUM 3") || name.starts_with("MOLNIYA 1-5")) sets.push_back(set);
    return sets;
}

/// All that the library tells of one satellite through one run of calls.
struct Told {
    std::int32_t init = 0;
    std::array<double, 6> state{};
    std::int32_t flare = 0;
    std::array<double, 8> centre{};
    std::int32_t found = 0;
    std::int32_t first = 0;
    std::array<double, 2> instants{};
    std::array<double, 2> precessed{};
    std::int32_t drawn = 0;
};

void CountLine(void* self, const double* /*xy*/, std::int32_t points) { *static_cast<std::int32_t*>(self) += points; }
void CountFill(void* self, const double* /*xy*/, const std::int32_t* ends, std::int32_t contours) {
    *static_cast<std::int32_t*>(self) += ends[contours - 1];
}

std::int32_t PointsOfASquare() {
    std::int32_t points = 0;
    const GlintDrawTarget target{&points, CountFill, CountLine, nullptr};
    GlintViewConfig config{};
    config.ScaleX = config.ScaleY = 200;
    config.HalfWidth = config.HalfHeight = 300;
    const double lat[] = {-10, 10, 10, -10, -10};
    const double lon[] = {-10, -10, 10, 10, -10};
    const std::int32_t polygon[] = {1, 1, 1, 1, 1};
    std::vector<double> scratch(GLINTCORE_DRAW_SCRATCH(5));
    auto room = static_cast<std::int32_t>(scratch.size());
    Satellite_DrawEarth(&target, &config, 5, lat, lon, polygon, &room, scratch.data());
    return points;
}

Told RunOf(const ElementSet& set) {
    Told told;
    EngineBlock block;
    told.init = SatelliteInit(set.line1.c_str(), set.line2.c_str(), 'i', &block);
    Satellite_SGP4(&block, kNight + 40, told.state.data(), told.state.data() + 3);
    std::array<double, 3> p{};
    for (std::size_t i = 0; i < 3; ++i) p[i] = told.state[i] * 1000 / kSiteRadius;
    told.flare = Satellite_CalcFlare(kNight, GLINTCORE_MOON, GLINTCORE_TRANSIT, p[0], p[1], p[2], 1, 0, 0, 0, 0,
                                     told.centre.data(), told.centre.data() + 3);
    const GlintSurface surfaces[] = {{0, 0.7, 0, GLINTCORE_ALONG_TRACK, 0},
                                     {2.1, 0.7, 0, GLINTCORE_VERTICAL_SUN, 0},
                                     {1, -0.4, 0, GLINTCORE_INERTIAL, 0}};
    told.first = Satellite_FindFirstFlare(kNight, 12 * kHour, GLINTCORE_SUN, 1e-6, kSiteRadius, &block, surfaces, 3,
                                          1000e3, &told.instants[0]);
    told.found = Satellite_FindFlare(kNight, 6 * kHour, GLINTCORE_MOON, 1e-6, kSiteRadius, &block,
                                     GLINTCORE_ALONG_TRACK, 0, 0.7, 1000e3, 0, &told.instants[1]);
    const double place[] = {1, 0.5};
    Satellite_PrecessRADEC(told.precessed.data(), place, nullptr);
    told.drawn = PointsOfASquare();
    return told;
}

void ExpectSame(const Told& a, const Told& b) {
    EXPECT_EQ(a.init, b.init);
    EXPECT_EQ(a.state, b.state);
    EXPECT_EQ(a.flare, b.flare);
    EXPECT_EQ(a.centre, b.centre);
    EXPECT_EQ(a.found, b.found);
    EXPECT_EQ(a.first, b.first);
    EXPECT_EQ(a.instants, b.instants);
    EXPECT_EQ(a.precessed, b.precessed);
    EXPECT_EQ(a.drawn, b.drawn);
}

TEST(ParallelCalls, OnSeparateBlocksGiveWhatTheyGiveAlone) {
    Satellite_SetSiteGeoPosition(0.7 * kSiteRadius, 0.1 * kSiteRadius, 0.7 * kSiteRadius, kSiteRadius);
    Satellite_SetPrecession(2018, 2000);
    const std::vector<ElementSet> sets = SomeSets();
    ASSERT_GT(sets.size(), 8u);

    constexpr std::size_t kThreads = 4;
    std::vector<std::vector<Told>> told(kThreads, std::vector<Told>(sets.size()));
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            // All are at each satellite at about the same time, on blocks of their own.
            for (std::size_t k = 0; k < sets.size(); ++k) told[t][k] = RunOf(sets[k]);
        });
    for (std::thread& thread : threads) thread.join();

    int found = 0;
    for (std::size_t k = 0; k < sets.size(); ++k) {
        const Told alone = RunOf(sets[k]);
        found += alone.first != 0 ? 1 : 0;
        EXPECT_EQ(alone.init, 0);
        EXPECT_GT(alone.drawn, 0);
        for (const std::vector<Told>& one : told) ExpectSame(one[k], alone);
    }
    EXPECT_GT(found, 0);
}

}  // namespace
