// Contours and lines cut to a rectangle.

#include "engine/drawing/plane_clip.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "earth_canvas.h"

namespace glintara {
namespace {

using earth_tests::Canvas;

constexpr PlaneRectangle kWindow{0, 0, 100, 50};

TEST(Rectangles, MeetOrDoNot) {
    EXPECT_TRUE(Overlap(kWindow, {100, 50, 200, 200}));  // at a corner
    EXPECT_TRUE(Intersection(kWindow, {100, 50, 200, 200}).IsEmpty());
    EXPECT_FALSE(Overlap(kWindow, {100.1, 0, 200, 50}));
    const PlaneRectangle common = Intersection(kWindow, {-10, 20, 30, 70});
    EXPECT_EQ(common.left, 0);
    EXPECT_EQ(common.top, 20);
    EXPECT_EQ(common.right, 30);
    EXPECT_EQ(common.bottom, 50);
}

TEST(ClipSegment, KeepsWhatIsInside) {
    PlanePoint a{-50, 25};
    PlanePoint b{150, 25};
    ASSERT_TRUE(ClipSegment(kWindow, a, b));
    EXPECT_EQ(a, (PlanePoint{0, 25}));
    EXPECT_EQ(b, (PlanePoint{100, 25}));

    a = {-25, 0};  // past the lower left corner region, down to the bottom edge
    b = {75, 100};
    ASSERT_TRUE(ClipSegment(kWindow, a, b));
    EXPECT_EQ(a, (PlanePoint{0, 25}));
    EXPECT_EQ(b, (PlanePoint{25, 50}));

    a = {-20, 40};  // past a corner
    b = {5, 70};
    EXPECT_FALSE(ClipSegment(kWindow, a, b));
    EXPECT_EQ(a, (PlanePoint{-20, 40}));

    a = {10, -5};  // beside an edge
    b = {90, -5};
    EXPECT_FALSE(ClipSegment(kWindow, a, b));
}

double AreaOf(const std::vector<PlanePoint>& contour) {
    std::array<double, 200> room{};
    ContourStore store(kWindow, 0, room);
    for (const PlanePoint& p : contour) store.Add(p);
    store.EndContour();
    EXPECT_FALSE(store.Overflowed());
    return store.DoubledArea() / 2;
}

TEST(Contours, KeepTheAreaInsideTheRectangle) {
    EXPECT_DOUBLE_EQ(AreaOf({{10, 10}, {20, 10}, {20, 30}, {10, 30}}), 200);
    EXPECT_DOUBLE_EQ(AreaOf({{10, 10}, {10, 30}, {20, 30}, {20, 10}}), -200);         // the other sense
    EXPECT_DOUBLE_EQ(AreaOf({{-10, -10}, {200, -10}, {200, 90}, {-10, 90}}), 5000);   // all of it
    EXPECT_DOUBLE_EQ(AreaOf({{50, 25}, {150, 25}, {150, 125}, {50, 125}}), 50 * 25);  // a corner of it
    EXPECT_DOUBLE_EQ(AreaOf({{0, 0}, {200, 0}, {0, 100}}), 100 * 50);                 // just up to its corner
    EXPECT_DOUBLE_EQ(AreaOf({{-50, 25}, {50, -75}, {150, 25}, {50, 125}}), 5000);     // a rhomb round it
    EXPECT_DOUBLE_EQ(AreaOf({{200, 0}, {300, 0}, {300, 40}, {200, 40}}), 0);
    // A comb whose two teeth reach out at the right.
    EXPECT_DOUBLE_EQ(AreaOf({{80, 10}, {120, 10}, {120, 20}, {90, 20}, {90, 30}, {120, 30}, {120, 40}, {80, 40}}), 500);
}

TEST(Contours, OfTwoPartsAndTooSmallOnes) {
    std::array<double, 64> room{};
    ContourStore store(kWindow, 0.25, room);
    for (const PlanePoint& p : {PlanePoint{1, 1}, PlanePoint{1.1, 1}, PlanePoint{1, 1.1}, PlanePoint{1, 1}})
        store.Add(p);
    store.EndContour();
    EXPECT_EQ(store.ContourCount(), 0);
    EXPECT_TRUE(store.Points().empty());
    for (const double x : {10.0, 60.0}) {
        for (const PlanePoint& p : {PlanePoint{x, 10}, PlanePoint{x + 10, 10}, PlanePoint{x, 20}, PlanePoint{x, 10}})
            store.Add(p);
        store.EndContour();
    }
    ASSERT_EQ(store.ContourCount(), 2);
    EXPECT_EQ(store.Ends()[0], 3);
    EXPECT_EQ(store.Ends()[1], 6);
    EXPECT_FALSE(store.WasCut());
}

TEST(Contours, TellWhenTheRoomIsTooSmall) {
    std::array<double, 7> room{};
    ContourStore store(kWindow, 0, room);
    for (const PlanePoint& p : {PlanePoint{10, 10}, PlanePoint{20, 10}, PlanePoint{20, 20}}) store.Add(p);
    EXPECT_FALSE(store.Overflowed());
    store.Add({10, 20});
    EXPECT_TRUE(store.Overflowed());
}

TEST(Lines, BreakWhereTheyAreCut) {
    Canvas canvas;
    const GlintDrawTarget target = canvas.Target();
    {
        LineWriter line(target, kWindow, 0.25);
        // Out at the right and back in.
        const std::vector<PlanePoint> way{{10, 10}, {90, 10}, {110, 10}, {110, 40}, {90, 40}, {10, 40}};
        for (std::size_t i = 1; i < way.size(); ++i) line.Segment(way[i - 1], way[i]);
    }
    ASSERT_EQ(canvas.lines.size(), 2U);
    EXPECT_EQ(canvas.lines[0].size(), 3U);
    EXPECT_EQ(canvas.lines[0].back().x, 100);
    EXPECT_EQ(canvas.lines[1].size(), 3U);
    EXPECT_EQ(canvas.lines[1].front().y, 40);
}

TEST(Lines, KeepTheirEndAndComeInPieces) {
    Canvas canvas;
    const GlintDrawTarget target = canvas.Target();
    {
        LineWriter line(target, {0, 0, 5000, 50}, 0.25);
        for (int i = 0; i < 20000; ++i) line.Segment({i * 0.1, 10}, {(i + 1) * 0.1, 10});
    }
    ASSERT_GT(canvas.lines.size(), 5U);
    std::size_t points = 0;
    for (std::size_t i = 0; i < canvas.lines.size(); ++i) {
        points += canvas.lines[i].size();
        if (i > 0) EXPECT_EQ(canvas.lines[i].front().x, canvas.lines[i - 1].back().x);
    }
    EXPECT_NEAR(static_cast<double>(points), 20000 / 3.0, 100);
    EXPECT_EQ(canvas.lines.front().front().x, 0);
    EXPECT_EQ(canvas.lines.back().back().x, 20000 * 0.1);
}

TEST(Lines, OfNoLengthAreNotDrawn) {
    Canvas canvas;
    const GlintDrawTarget target = canvas.Target();
    {
        LineWriter line(target, kWindow, 0.25);
        line.Segment({-10, -10}, {0, 0});  // touches the corner
        line.Segment({20, 20}, {20, 20});
    }
    EXPECT_TRUE(canvas.lines.empty());
}

}  // namespace
}  // namespace glintara
