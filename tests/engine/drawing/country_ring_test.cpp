// Rings of the map: where they lie, what they enclose, which of their vertices are drawn.

#include "engine/drawing/country_ring.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace glintara {
namespace {

struct Ring {
    std::vector<double> lat;
    std::vector<double> lon;

    CountryRing View() const { return {lat, lon}; }
};

std::vector<MapVertex> Walk(const Ring& ring, double merge) {
    std::vector<MapVertex> vertices;
    WalkRing(ring.View(), merge, [&](const MapVertex& v, bool) { vertices.push_back(v); });
    return vertices;
}

TEST(Extent, FollowsTheLongitudeThroughTheSeam) {
    // From 170 east to 160 west.
    const auto extent = ExtentOf(Ring{{10, 10, 30, 30, 10}, {170, -160, -160, 170, 170}}.View());
    ASSERT_TRUE(extent.has_value());
    EXPECT_EQ(extent->west, 170);
    EXPECT_EQ(extent->east, 200);
    EXPECT_EQ(extent->south, 10);
    EXPECT_EQ(extent->north, 30);
    EXPECT_EQ(extent->turn, 0);
    EXPECT_EQ(extent->pole, 0);
    EXPECT_FALSE(extent->touchesSeam);
}

TEST(Extent, KnowsThePoleThatARingGoesRound) {
    const auto north = ExtentOf(Ring{{60, 70, 60, 70, 60}, {0, 90, 180, -90, 0}}.View());
    ASSERT_TRUE(north.has_value());
    EXPECT_EQ(north->turn, 360);
    EXPECT_EQ(north->pole, 90);
    EXPECT_TRUE(north->touchesSeam);
    // Westwards, not closed, and across the equator for a part of the way.
    const auto south = ExtentOf(Ring{{-60, 5, -60, -60}, {10, -80, -170, 100}}.View());
    ASSERT_TRUE(south.has_value());
    EXPECT_EQ(south->turn, -360);
    EXPECT_EQ(south->pole, -90);
    // Twice round is no way round.
    const auto twice = ExtentOf(Ring{{60, 60, 60, 70, 70, 70, 60}, {0, 120, -120, 0, 120, -120, 0}}.View());
    ASSERT_TRUE(twice.has_value());
    EXPECT_EQ(twice->pole, 0);
}

TEST(Extent, RefusesWhatIsNoRing) {
    EXPECT_FALSE(ExtentOf(Ring{{0, 1}, {0, 1}}.View()).has_value());
    EXPECT_FALSE(ExtentOf(Ring{{0, 1, std::nan("")}, {0, 1, 2}}.View()).has_value());
    EXPECT_FALSE(ExtentOf(Ring{{0, 1, 1}, {0, 1, INFINITY}}.View()).has_value());
    EXPECT_FALSE(ExtentOf(Ring{{0, 1, -90.5}, {0, 1, 1}}.View()).has_value());
    EXPECT_TRUE(ExtentOf(Ring{{0, 1, -90}, {0, 1, 360}}.View()).has_value());
}

TEST(Walk, MergesWhatIsNearButKeepsEndsAndSeam) {
    const Ring ring{{0, 0.1, 0.2, 5, 5, 5, 0.1, 0}, {0, 0, 0, 0, 179.99, 180, 0.1, 0}};
    const std::vector<MapVertex> vertices = Walk(ring, 0.5);
    ASSERT_EQ(vertices.size(), 6U);
    EXPECT_EQ(vertices[0].lat, 0);
    EXPECT_EQ(vertices[1].lat, 5);
    EXPECT_EQ(vertices[2].lon, 179.99);
    EXPECT_EQ(vertices[3].lon, 180);
    EXPECT_EQ(vertices[5].lat, 0);  // the end, although near to the one before
    EXPECT_EQ(Walk(ring, 0).size(), 8U);
}

TEST(Walk, EndsWhereItBeganToTheLastBit) {
    // Steps that no binary fraction holds, all the way round the Earth.
    Ring ring;
    for (int i = 0; i < 1000; ++i) {
        ring.lat.push_back(50);
        ring.lon.push_back(std::remainder(0.3 + 0.36 * i, 360));
    }
    ring.lat.push_back(ring.lat[0]);
    ring.lon.push_back(ring.lon[0]);
    const std::vector<MapVertex> vertices = Walk(ring, 0.1);
    EXPECT_EQ(vertices.front().lon + 360, vertices.back().lon);
}

TEST(Walk, TellsBordersFromSeams) {
    // A coast, the seam down to the pole, the pole's edge, the seam back; and a closing line that is not given.
    const Ring ring{{-80, -75, -80, -90, -90, -85}, {-170, 0, 180, 180, -180, -180}};
    std::vector<bool> isBorder;
    WalkRing(ring.View(), 0, [&](const MapVertex&, bool border) { isBorder.push_back(border); });
    EXPECT_EQ(isBorder, (std::vector<bool>{false, true, true, false, false, false, false}));
}

bool Contains(const Ring& ring, const MapVertex& place) {
    const auto extent = ExtentOf(ring.View());
    EXPECT_TRUE(extent.has_value());
    RingContains contains(place);
    MapVertex at;
    bool begun = false;
    WalkRing(ring.View(), 0, [&](const MapVertex& v, bool) {
        if (begun) contains.AddLine(at, v);
        begun = true;
        at = v;
    });
    return contains.Result(*extent);
}

TEST(Contains, BoxesAlsoThroughTheSeam) {
    const Ring box{{-10, -10, 20, 20, -10}, {170, -160, -160, 170, 170}};
    EXPECT_TRUE(Contains(box, {0, 175}));
    EXPECT_TRUE(Contains(box, {0, -175}));
    EXPECT_TRUE(Contains(box, {0, 180}));
    EXPECT_TRUE(Contains(box, {0, -180}));
    EXPECT_FALSE(Contains(box, {0, 165}));
    EXPECT_FALSE(Contains(box, {0, -155}));
    EXPECT_FALSE(Contains(box, {30, 175}));
    EXPECT_FALSE(Contains(box, {-30, 175}));
}

TEST(Contains, PolesAlsoOnTheMeridianWhereTheRingBegins) {
    const Ring north{{60, 60, 60, 60, 60}, {0, 90, 180, -90, 0}};
    const Ring south{{-60, -60, -60, -60, -60}, {0, -90, 180, 90, 0}};
    for (const double lon : {0.0, -0.0, 1e-16, -1e-16, 90.0, 180.0, -180.0, -90.0, 33.0}) {
        EXPECT_TRUE(Contains(north, {80, lon})) << lon;
        EXPECT_FALSE(Contains(north, {40, lon})) << lon;
        EXPECT_FALSE(Contains(north, {-80, lon})) << lon;
        EXPECT_TRUE(Contains(south, {-80, lon})) << lon;
        EXPECT_FALSE(Contains(south, {-40, lon})) << lon;
        EXPECT_FALSE(Contains(south, {80, lon})) << lon;
    }
}

}  // namespace
}  // namespace glintara
