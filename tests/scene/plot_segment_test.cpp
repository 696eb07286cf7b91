#include "scene/plot_segment.h"

#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

using PlotSegmentTest = SceneFixture;

LatLon Place(double lat, double lon) { return {lat * kDegree, lon * kDegree}; }

LatLonRadius Place(double lat, double lon, double radius) { return {lat * kDegree, lon * kDegree, radius}; }

Vector3 Point(double lat, double lon, double radius) { return LLRToSameXYZ(lat * kDegree, lon * kDegree, radius); }

/// A chart for tests: mirrored and twice as large.
void MirrorAndDouble(const SceneContext&, Vector3& view) {
    view.y *= -2;
    view.z *= 2;
}

TEST_F(PlotSegmentTest, OnTheGlobe) {
    LookAt(0, 10);
    PlotSegment(scene, Place(0, 10), Place(30, 10));
    ASSERT_EQ(Lines().size(), 1U);
    ExpectNumbers(Lines()[0], {300, 200, 300, 100});
    surface.Forget();
    PlotSegment(scene, Place(0, 40), Place(0, -20));
    ASSERT_EQ(Lines().size(), 1U);
    ExpectNumbers(Lines()[0], {400, 200, 200, 200});
}

TEST_F(PlotSegmentTest, EveryKindOfEndDrawsTheSameLine) {
    LookAt(20, -30, 15);
    PlotSegment(scene, Place(30, -20), Place(35, -25));
    PlotSegment(scene, Place(30, -20, 1), Place(35, -25, 1));
    PlotSegment(scene, Point(30, -20, 1), Point(35, -25, 1));
    PlotSkySegment(scene, Place(30, -20, 1), Place(35, -25, 1));
    PlotSkySegment(scene, Point(30, -20, 1), Point(35, -25, 1));
    PlotMappedSkySegment(scene, LatLonRadiusToView(view, Place(30, -20, 1)),
                         LatLonRadiusToView(view, Place(35, -25, 1)));
    app.Main.CPlaniSphere.Value = true;
    PlotSegment(scene, Place(30, -20), Place(35, -25));
    PlotSegment(scene, Place(30, -20, 7), Place(35, -25, 7));
    PlotSegment(scene, Point(30, -20, 1), Point(35, -25, 3));
    PlotSkySegment(scene, Place(30, -20, 55), Place(35, -25, 55));
    PlotSkySegment(scene, Point(30, -20, 55), Point(35, -25, 55));
    ASSERT_EQ(Lines().size(), 11U);
    for (std::size_t i = 1; i < 6; ++i) ExpectNumbers(Lines()[i], Lines()[0].numbers);
    ExpectNumbers(Lines()[6], {300 + 200 * 10 * kDegree, 200 - 200 * 10 * kDegree, 300 + 200 * 5 * kDegree,
                               200 - 200 * 15 * kDegree});
    for (std::size_t i = 7; i < 11; ++i) ExpectNumbers(Lines()[i], Lines()[6].numbers);
}

TEST_F(PlotSegmentTest, ASegmentWithAHiddenEndIsLeftOutWhole) {
    LookAt(0, 0);
    PlotSegment(scene, Place(0, 89), Place(0, 91));
    PlotSegment(scene, Place(0, 91), Place(0, 89));
    PlotSegment(scene, Place(0, 170), Place(0, 175));
    PlotSegment(scene, Point(0, 89, 1), Point(0, 91, 1));
    PlotSkySegment(scene, Place(0, 89, 1), Place(0, 91, 1));
    PlotMappedSkySegment(scene, {-0.5, 0.2, 0}, {0.5, 0.2, 0});
    PlotPolygonSegment(scene, Place(0, 89), Place(0, 91));
    EXPECT_TRUE(surface.Operations().empty()) << surface.Text();
    EXPECT_EQ(polygon.Count(), 0U);
}

TEST_F(PlotSegmentTest, AnOrbitBehindTheGlobeShowsBesideItsDisc) {
    LookAt(0, 0);
    // At 1.2 radii: the sine of the angle to the line of sight must be above 1/1.2, 56.44 degrees from the far side.
    PlotSegment(scene, Place(0, 123, 1.2), Place(0, 123.5, 1.2));
    EXPECT_EQ(Lines().size(), 1U);
    PlotSegment(scene, Place(0, 123.5, 1.2), Place(0, 124, 1.2));
    EXPECT_EQ(Lines().size(), 1U);
    PlotSegment(scene, Point(0, 123, 1.2), Point(0, 123.5, 1.2));
    EXPECT_EQ(Lines().size(), 2U);
}

TEST_F(PlotSegmentTest, TheSeamOfTheFlatMap) {
    LookAt(0, 0);
    app.Main.CPlaniSphere.Value = true;
    PlotSegment(scene, Place(0, 179), Place(0, -179));
    ASSERT_EQ(Lines().size(), 2U);
    // 179 degrees are 624.828 twips from the middle, the overshot seam 631.460; the frame's edge is at 628.319.
    ExpectNumbers(Lines()[0], {924.8278723, 200, 931.4601234, 200}, 1e-6);
    ExpectNumbers(Lines()[1], {-331.4601234, 200, -324.8278723, 200}, 1e-6);
    surface.Forget();
    PlotSegment(scene, Point(10, 178, 1), Point(16, -179, 1));
    ASSERT_EQ(Lines().size(), 2U);
    EXPECT_NEAR(Lines()[0].numbers[3], 200 - 200 * 14 * kDegree, 1e-9);
    EXPECT_NEAR(Lines()[1].numbers[1], 200 - 200 * 14 * kDegree, 1e-9);
}

TEST_F(PlotSegmentTest, TheSeamMovesWithTheCamera) {
    LookAt(0, 90);
    app.Main.CPlaniSphere.Value = true;
    PlotSegment(scene, Place(0, 179), Place(0, -179));
    EXPECT_EQ(Lines().size(), 1U);
    surface.Forget();
    PlotSegment(scene, Place(0, -91), Place(0, -89));
    EXPECT_EQ(Lines().size(), 2U);
    for (const RecordedOperation& line : Lines())
        EXPECT_LT(std::fabs(line.numbers[2] - line.numbers[0]), 8) << OperationText(line);
}

TEST_F(PlotSegmentTest, AMapShiftedBeyondThePoleStaysWhole) {
    LookAt(-100, 0);
    app.Main.CPlaniSphere.Value = true;
    // 179 and 181 degrees above the middle, one line.
    PlotSegment(scene, Place(79, 0), Place(81, 0));
    ASSERT_EQ(Lines().size(), 1U);
    ExpectNumbers(Lines()[0], {300, 200 - 200 * 179 * kDegree, 300, 200 - 200 * 181 * kDegree});
}

TEST_F(PlotSegmentTest, ACameraAWholeTurnOnDrawsTheSameMap) {
    app.Main.CPlaniSphere.Value = true;
    for (const double lat : {6 - 2 * kPiExact, 6.0}) {
        LookAt(lat / kDegree, 0);
        surface.Forget();
        PlotSegment(scene, Place(-80, 20), Place(80, 22));
        ASSERT_EQ(Lines().size(), 1U);
        // The equator is 0.2831853 above the middle.
        const double equator = 200 - 200 * 0.28318530717958648;
        ExpectNumbers(Lines()[0], {300 + 200 * 20 * kDegree, equator + 200 * 80 * kDegree, 300 + 200 * 22 * kDegree,
                                   equator - 200 * 80 * kDegree});
    }
}

TEST_F(PlotSegmentTest, AChainIsTheSegmentsBetweenItsPoints) {
    Dice dice;
    app.Main.CDrawBackStars.Value = true;
    std::size_t drawn = 0;
    for (int i = 0; i < 300; ++i) {
        dice.Camera(view);
        TakeFramePan(view);
        app.Main.CPlaniSphere.Value = i % 3 == 0;
        std::vector<Vector3> points;
        for (int k = 0; k < 5; ++k) points.push_back(dice.Point());
        for (const bool sky : {false, true}) {
            surface.Forget();
            for (std::size_t k = 1; k < points.size(); ++k)
                if (sky)
                    PlotSkySegment(scene, points[k - 1], points[k]);
                else
                    PlotSegment(scene, points[k - 1], points[k]);
            const std::string expected = surface.Text();
            drawn += surface.Operations().size();
            surface.Forget();
            if (sky)
                PlotSkyChain(scene, points);
            else
                PlotChain(scene, points);
            EXPECT_EQ(surface.Text(), expected);
        }
    }
    EXPECT_GT(drawn, 1000U);
    surface.Forget();
    PlotChain(scene, {});
    PlotSkyChain(scene, {});
    PlotChain(scene, std::vector<Vector3>{{1, 0, 0}});
    EXPECT_TRUE(surface.Operations().empty());
}

TEST_F(PlotSegmentTest, AStepOfALargeChainEndsAtTheLimb) {
    LookAt(0, 0);
    // Along a parallel at height 0.6 the disc's edge is 0.8 to the right.
    const Vector3 beside{-3, 1.6, 0.6};
    const Vector3 behind{-3, 0.2, 0.6};
    PlotUpToLimb(scene, beside, behind);
    PlotUpToLimb(scene, behind, beside);
    ASSERT_EQ(Lines().size(), 2U);
    ExpectNumbers(Lines()[0], {300 + 1.6 * 200, 80, 300 + 0.8 * 200, 80}, 1e-3);
    ExpectNumbers(Lines()[1], {300 + 0.8 * 200, 80, 300 + 1.6 * 200, 80}, 1e-3);
    EXPECT_GE(Lines()[0].numbers[2], 460) << "not over the disc";
    surface.Forget();
    PlotUpToLimb(scene, behind, {-2, 0, 0});
    EXPECT_TRUE(Lines().empty());
    // On the ground the limb is where the sphere turns away.
    PlotUpToLimb(scene, LLRToSameXYZ(0, 85 * kDegree, 1), LLRToSameXYZ(0, 95 * kDegree, 1));
    ASSERT_EQ(Lines().size(), 1U);
    EXPECT_NEAR(Lines()[0].numbers[2], 300 + 200 * std::sin(85 * kDegree), 1e-3) << "the chord's middle";
    surface.Forget();
    app.Main.CPlaniSphere.Value = true;
    PlotUpToLimb(scene, beside, behind);
    EXPECT_EQ(Lines().size(), 1U) << "nothing is hidden on the map";
}

TEST_F(PlotSegmentTest, RandomSegmentsOfTheFlatMapStayShort) {
    Dice dice;
    app.Main.CPlaniSphere.Value = true;
    int split = 0;
    for (int i = 0; i < 3000; ++i) {
        LookAt(0, dice.Between(-180, 180));
        const double lat = dice.Between(-80, 80);
        const double lon = dice.Between(-180, 180);
        surface.Forget();
        PlotSegment(scene, Place(lat, lon), Place(lat + 3, lon + 3));
        double width = 0;
        for (const RecordedOperation& line : Lines()) width += std::fabs(line.numbers[2] - line.numbers[0]);
        const double length = 200 * 3 * kDegree;
        const double overshoot = 200 * 2 * 0.005 * kPiExact;
        if (Lines().size() == 1) {
            EXPECT_NEAR(width, length, 1e-6);
        } else {
            ASSERT_EQ(Lines().size(), 2U);
            EXPECT_NEAR(width, length + overshoot, 1e-6);
            ++split;
        }
    }
    // The seam is met by 3 of 360 longitudes.
    EXPECT_GT(split, 5);
    EXPECT_LT(split, 80);
}

TEST_F(PlotSegmentTest, BlackInSunlight) {
    LookAt(0, 0);
    app.Data.SunDir = {0, 1, 0};  // over 90 degrees east
    scene.BlackInSunlight = true;
    surface.ForeColor = 0xAAAAAA;
    PlotSegment(scene, Place(0, -2), Place(0, -1));
    PlotSegment(scene, Place(0, -1), Place(0, 1));
    PlotSegment(scene, Place(10, 1, 1.1), Place(10, 2, 1.1));
    PlotSegment(scene, Point(0, 1, 1), Point(0, 2, 1));
    scene.BlackInSunlight = false;
    PlotSegment(scene, Place(0, 1), Place(0, 2));
    ASSERT_EQ(Lines().size(), 5U);
    EXPECT_EQ(Lines()[0].state.ForeColor, 0xAAAAAAU);
    EXPECT_EQ(Lines()[1].state.ForeColor, 0U) << "one end in sunlight is enough";
    EXPECT_EQ(Lines()[2].state.ForeColor, 0U);
    EXPECT_EQ(Lines()[3].state.ForeColor, 0xAAAAAAU) << "only segments given by angles ask for the Sun";
    EXPECT_EQ(Lines()[4].state.ForeColor, 0xAAAAAAU);
    EXPECT_EQ(surface.ForeColor, 0xAAAAAAU);
}

TEST_F(PlotSegmentTest, TheSkyGoesThroughItsMapping) {
    LookAt(0, 0);
    scene.FlattenSky = MirrorAndDouble;
    PlotSkySegment(scene, Place(0, 30, 1), Place(30, 0, 1));
    PlotSkySegment(scene, Point(0, 30, 1), Point(30, 0, 1));
    PlotMappedSkySegment(scene, {0.5, 0.5, 0}, {0.5, 0, 0.5});
    PlotSegment(scene, Place(0, 30, 1), Place(30, 0, 1));
    app.Main.CPlaniSphere.Value = true;
    PlotSkySegment(scene, Place(0, 10, 55), Place(20, 0, 55));
    ASSERT_EQ(Lines().size(), 5U);
    ExpectNumbers(Lines()[0], {100, 200, 300, 0});
    ExpectNumbers(Lines()[1], {100, 200, 300, 0});
    ExpectNumbers(Lines()[2], {400, 200, 300, 100});
    ExpectNumbers(Lines()[3], {400, 200, 300, 100});
    ExpectNumbers(Lines()[4], {300 - 400 * 10 * kDegree, 200, 300, 200 - 400 * 20 * kDegree});
}

TEST_F(PlotSegmentTest, TheBackOfTheSkyIsDrawnWithItsBox) {
    LookAt(0, 0);
    app.Main.CDrawBackStars.Value = true;
    PlotSkySegment(scene, Place(0, 120, 5), Place(0, 121, 5));
    PlotSkySegment(scene, Point(0, 120, 5), Point(0, 121, 5));
    EXPECT_EQ(Lines().size(), 2U);
    app.Main.CDrawBackStars.Value = false;
    PlotSkySegment(scene, Place(0, 120, 5), Place(0, 121, 5));
    PlotSkySegment(scene, Point(0, 89, 5), Point(0, 91, 5));
    EXPECT_EQ(Lines().size(), 2U);
    PlotSkySegment(scene, Place(0, 60, 5), Place(0, 61, 5));
    EXPECT_EQ(Lines().size(), 3U);
}

TEST_F(PlotSegmentTest, NothingHidesTheSkyWhileTheEarthIsNotDrawn) {
    LookAt(0, 0);
    app.Main.CDrawBackStars.Value = true;
    PlotSkySegment(scene, Place(0, 179, 5), Place(0, 180, 5));
    EXPECT_TRUE(Lines().empty());
    app.Main.CSkyOnly.Value = true;
    PlotSkySegment(scene, Place(0, 179, 5), Place(0, 180, 5));
    EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(PlotSegmentTest, PolygonsFromSegments) {
    LookAt(0, 0);
    PlotPolygonSegment(scene, Place(0, 0), Place(30, 0));
    EXPECT_TRUE(surface.Operations().empty());
    ASSERT_EQ(polygon.Count(), 2U);
    EXPECT_NEAR(polygon.Exact()[0], 20, 1e-9);
    EXPECT_NEAR(polygon.Exact()[3], 100 / 15.0, 1e-9);
    polygon.Clear();
    app.Main.CPlaniSphere.Value = true;
    PlotPolygonSegment(scene, Place(0, 179), Place(0, -179));
    ASSERT_EQ(polygon.Count(), 4U);
    EXPECT_NEAR(polygon.Exact()[2], 931.4601234 / 15, 1e-6);
    EXPECT_NEAR(polygon.Exact()[4], -331.4601234 / 15, 1e-6);
}

TEST_F(PlotSegmentTest, AFullCircleRoundTheLimbIsDrawn) {
    // The limb itself belongs to what is seen: a terminator under a Sun on the view axis does not flicker away.
    LookAt(0, 0);
    int ends = 0;
    for (int i = 0; i < 360; i += 15) {
        PlotMappedSkySegment(scene, {0, std::cos(i * kDegree), std::sin(i * kDegree)},
                             {0, std::cos((i + 15) * kDegree), std::sin((i + 15) * kDegree)});
        ++ends;
    }
    EXPECT_EQ(static_cast<int>(Lines().size()), ends);
}

}  // namespace
}  // namespace glintara::testing
