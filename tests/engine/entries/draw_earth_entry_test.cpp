// The countries through the C interface: what is called, and what is left alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <string>
#include <vector>

#include "engine/drawing/earth_canvas.h"
#include "engine/drawing/earth_shapes.h"
#include "engine/glintcore.h"

namespace glintara::earth_tests {
namespace {

/// Calls the engine with enough scratch memory; returns how much it used.
std::int32_t Draw(const GlintDrawTarget& target, const GlintViewConfig& config, const Vertices& map) {
    std::vector<double> scratch(GLINTCORE_DRAW_SCRATCH(map.lat.size()));
    auto count = static_cast<std::int32_t>(scratch.size());
    Satellite_DrawEarth(&target, &config, map.Count(), map.lat.data(), map.lon.data(), map.polygon.data(), &count,
                        scratch.data());
    return count;
}

Vertices TwoIslands() {
    Vertices map = BoxShape(0, 20, -30, -10, 1, 7).vertices;
    const Vertices other = BoxShape(-10, 10, 10, 40, 1, 3).vertices;
    for (std::size_t i = 0; i < other.lat.size(); ++i) map.Add(other.lat[i], other.lon[i], 3);
    return map;
}

TEST(ViewConfig, IsLaidOutAsOtherLanguagesFillIt) {
    // 24 doubles, a 32-bit integer, 8 bytes, nothing between them.
    EXPECT_EQ(sizeof(GlintViewConfig), 24 * 8 + 4 + 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, SimTime), 0U);
    EXPECT_EQ(offsetof(GlintViewConfig, ViewLon), 1 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, ViewRoll), 2 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, ViewLat), 3 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, ScaleX), 6 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, HalfWidth), 8 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, FramePanX), 10 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, SkyScale), 12 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, Unused), 16 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, SiteLat), 22 * 8U);
    EXPECT_EQ(offsetof(GlintViewConfig, StarCount), 192U);
    EXPECT_EQ(offsetof(GlintViewConfig, CPlaniSphere), 199U);
    EXPECT_EQ(offsetof(GlintViewConfig, CStarNames), 203U);
}

/// The order of calls, one letter each.
struct Order {
    std::string calls;
    static void Fill(void* self, const double*, const std::int32_t*, std::int32_t) {
        static_cast<Order*>(self)->calls += 'F';
    }
    static void Line(void* self, const double*, std::int32_t) { static_cast<Order*>(self)->calls += 'L'; }
};

TEST(DrawEarth, FillsThenOutlinesEachPolygon) {
    Order order;
    const GlintDrawTarget target{&order, &Order::Fill, &Order::Line, nullptr};
    Draw(target, Camera(0, 0, 0, 290), TwoIslands());
    EXPECT_EQ(order.calls, "FLFL");
    order.calls.clear();
    Draw({&order, nullptr, &Order::Line, nullptr}, Camera(0, 0, 0, 290), TwoIslands());
    EXPECT_EQ(order.calls, "LL");
    order.calls.clear();
    Draw({&order, &Order::Fill, nullptr, nullptr}, Camera(0, 0, 0, 290), TwoIslands());
    EXPECT_EQ(order.calls, "FF");
    order.calls.clear();
    Draw({&order, nullptr, nullptr, nullptr}, Camera(0, 0, 0, 290), TwoIslands());
    EXPECT_EQ(order.calls, "");
}

TEST(DrawEarth, PutsPlacesWhereTheCameraSeesThem) {
    // From over longitude 20 and the equator, with pans of 30 and 60 pixels: (0, 20) is at the centre, (90, any) at
    // the top of the disc.
    GlintViewConfig config = Camera(0, 20 * kDegree, 0, 300);
    config.PanX = 0.1;
    config.PanY = 0.2;
    Canvas canvas;
    Vertices triangle;
    triangle.Add(0, 20, 1);
    triangle.Add(0, 50, 1);
    triangle.Add(30, 20, 1);
    triangle.Add(0, 20, 1);
    EXPECT_GT(Draw(canvas.Target(), config, triangle), 0);
    ASSERT_EQ(canvas.lines.size(), 1U);
    const Contour& line = canvas.lines.front();
    EXPECT_TRUE(std::any_of(
        line.begin(), line.end(),
        [](const Pixel& p) { return std::abs(p.x - 430) < 1e-9 && std::abs(p.y - 240) < 1e-9; }));
    const auto rightmost = std::max_element(
        line.begin(), line.end(), [](auto& a, auto& b) { return a.x < b.x; });
    const auto highest = std::min_element(line.begin(), line.end(), [](auto& a, auto& b) { return a.y < b.y; });
    EXPECT_NEAR(rightmost->x, 430 + 150, 1e-9);  // sin 30 degrees is a half
    EXPECT_NEAR(highest->y, 240 - 150, 1e-9);
}

TEST(DrawEarth, PutsPlacesOnTheFlatMap) {
    GlintViewConfig config = FlatCamera(0.25, 1, 100);
    config.PanX = 0.5;
    config.PanY = -0.5;
    config.ScaleY = 50;
    Canvas canvas;
    Draw(canvas.Target(), config, BoxShape(0, 20, 60, 90).vertices);
    ASSERT_EQ(canvas.lines.size(), 1U);
    EXPECT_NEAR(canvas.lines[0][0].x, 400 + 100 * (std::numbers::pi / 3 - 1 + 0.5), 1e-9);
    EXPECT_NEAR(canvas.lines[0][0].y, 300 - 50 * (0 - 0.25 - 0.5), 1e-9);
    ASSERT_EQ(canvas.fills.size(), 1U);
    ASSERT_EQ(canvas.fills[0].size(), 1U);
    EXPECT_EQ(canvas.fills[0][0].size(), 4U);
}

TEST(DrawEarth, TellsHowMuchScratchItUsed) {
    const Vertices map = TwoIslands();
    const GlintViewConfig config = FlatCamera(0, 0, 100);
    Canvas canvas;
    // Four corners, and the first again for the outline: five points of two doubles, one island after the other.
    EXPECT_EQ(Draw(canvas.Target(), config, map), 10);
    canvas.Clear();

    std::vector<double> scratch(20, -1.0);
    std::int32_t count = 10;
    const GlintDrawTarget target = canvas.Target();
    Satellite_DrawEarth(&target, &config, map.Count(), map.lat.data(), map.lon.data(), map.polygon.data(), &count,
                        scratch.data());
    EXPECT_EQ(count, 10);
    EXPECT_EQ(canvas.fills.size(), 2U);
    EXPECT_EQ(std::count(scratch.begin() + 10, scratch.end(), -1.0), 10);  // nothing beyond the room told
}

TEST(DrawEarth, OutlinesAloneWithoutScratch) {
    const Vertices map = TwoIslands();
    const GlintViewConfig config = Camera(0, 0, 0, 290);
    Canvas canvas;
    const GlintDrawTarget target = canvas.Target();
    std::vector<double> scratch(1000);
    const auto draw = [&](std::int32_t* count, void* buffer) {
        canvas.Clear();
        Satellite_DrawEarth(&target, &config, map.Count(), map.lat.data(), map.lon.data(), map.polygon.data(), count,
                            buffer);
        EXPECT_TRUE(canvas.fills.empty());
        EXPECT_EQ(canvas.lines.size(), 2U);
    };
    std::int32_t count = 0;
    draw(&count, scratch.data());
    EXPECT_EQ(count, 0);
    count = 1000;
    draw(&count, nullptr);
    EXPECT_EQ(count, 0);
    count = -5;
    draw(&count, scratch.data());
    EXPECT_EQ(count, 0);
    draw(nullptr, scratch.data());
}

TEST(DrawEarth, LeavesBadCallsAlone) {
    const Vertices map = TwoIslands();
    const GlintViewConfig config = Camera(0, 0, 0, 290);
    Canvas canvas;
    const GlintDrawTarget target = canvas.Target();
    std::vector<double> scratch(1000);
    const auto draw = [&](const GlintDrawTarget* to, const GlintViewConfig* by, std::int32_t n, const double* lat,
                          const double* lon, const std::int32_t* polygon) {
        std::int32_t count = 1000;
        Satellite_DrawEarth(to, by, n, lat, lon, polygon, &count, scratch.data());
        EXPECT_EQ(count, 0);
        EXPECT_TRUE(canvas.fills.empty());
        EXPECT_TRUE(canvas.lines.empty());
    };
    const double* lat = map.lat.data();
    const double* lon = map.lon.data();
    const std::int32_t* polygon = map.polygon.data();
    draw(nullptr, &config, map.Count(), lat, lon, polygon);
    draw(&target, nullptr, map.Count(), lat, lon, polygon);
    draw(&target, &config, 0, lat, lon, polygon);
    draw(&target, &config, -1, lat, lon, polygon);
    draw(&target, &config, map.Count(), nullptr, lon, polygon);
    draw(&target, &config, map.Count(), lat, nullptr, polygon);
    draw(&target, &config, map.Count(), lat, lon, nullptr);
    GlintViewConfig broken = config;
    broken.ScaleX = std::nan("");
    draw(&target, &broken, map.Count(), lat, lon, polygon);
}

TEST(DrawEarth, ReadsNoFieldThatItsCallersDoNotWrite) {
    const Vertices map = TwoIslands();
    GlintViewConfig config = Camera(0.3, 0.2, 0.1, 290);
    Canvas canvas;
    Draw(canvas.Target(), config, map);
    const auto before = canvas.lines;
    canvas.Clear();
    std::fill_n(reinterpret_cast<unsigned char*>(&config) + offsetof(GlintViewConfig, Unused), 48, 0xFF);
    config.SkyScale = std::nan("");
    config.CFlatSky = config.CReverseSky = config.CSkyOnly = 255;
    Draw(canvas.Target(), config, map);
    ASSERT_EQ(canvas.lines.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        ASSERT_EQ(canvas.lines[i].size(), before[i].size());
        EXPECT_EQ(canvas.lines[i].back().x, before[i].back().x);
    }
}

}  // namespace
}  // namespace glintara::earth_tests
