#include "scene/star_chart.h"

#include <gtest/gtest.h>

#include "orbit/location.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

struct StarChartTest : SceneFixture {
    /// A third of the way from the near point of the star sphere to its edge, to the right.
    const Vector3 place{10 * std::cos(30 * kDegree), 10 * std::sin(30 * kDegree), 0};

    void SetUp() override {
        view.SkyScale = 10;
        Choose(false, false, true);
    }

    void Choose(bool reverse, bool flat, bool front) {
        app.Main.CReverseSky.Value = reverse;
        app.Main.CFlatSky.Value = flat;
        app.Main.CDrawFrontStars.Value = front;
    }

    Vector3 Flattened() const {
        Vector3 found = place;
        FlattenSky(scene, found);
        return found;
    }
};

TEST_F(StarChartTest, TheSphereIsLeftAsItIs) { EXPECT_EQ(Flattened(), place); }

TEST_F(StarChartTest, BoxesMirrorAndUnroll) {
    Choose(true, false, true);
    ExpectVector(Flattened(), {place.x, -5, 0});
    Choose(false, true, true);
    ExpectVector(Flattened(), {place.x, 10 / 3.0, 0}, 1e-9);
    Choose(true, true, true);
    ExpectVector(Flattened(), {place.x, -10 / 3.0, 0}, 1e-9);
    Choose(false, true, false);
    ExpectVector(Flattened(), {place.x, 10 * 5 / 3.0, 0}, 1e-9);
}

TEST_F(StarChartTest, TheFlatMapIsNoStarSphere) {
    Choose(true, true, true);
    app.Main.CPlaniSphere.Value = true;
    EXPECT_EQ(Flattened(), place);
}

TEST_F(StarChartTest, LeadsBack) {
    for (const bool reverse : {false, true}) {
        for (const bool front : {false, true}) {
            Choose(reverse, true, front);
            Vector3 found = Flattened();
            found.x = 99;
            DeFlattenSky(scene, found);
            ExpectVector(found, place, 1e-9);
        }
    }
}

TEST_F(StarChartTest, ServesAsTheMappingOfAScene) {
    SceneContext mapped = scene;
    mapped.FlattenSky = FlattenSky;
    Choose(true, false, true);
    Vector3 found = place;
    mapped.FlattenSky(mapped, found);
    EXPECT_EQ(found.y, -place.y);
}

TEST_F(StarChartTest, AQuarterTurnOnBothSidesIsTheWidthOfTheChart) {
    Choose(false, true, true);
    EXPECT_NEAR(SkyCircleRadius(scene, kPiExact), 10, 1e-9);
    EXPECT_NEAR(SkyCircleRadius(scene, 18 * kDegree), 1, 1e-9);
    Vector3 edge{10 * std::cos(9 * kDegree), 0, 10 * std::sin(9 * kDegree)};
    FlattenSky(scene, edge);
    EXPECT_NEAR(SkyCircleRadius(scene, 18 * kDegree), edge.z, 1e-9) << "a place half as far from the centre";
}

TEST_F(StarChartTest, ACircleOnTheSphereHasTheRadiusOfItsArc) {
    EXPECT_NEAR(SkyCircleRadius(scene, 0.5 * kDegree), 10 * 0.25 * kDegree, 1e-9);
    app.Main.CPlaniSphere.Value = true;
    EXPECT_NEAR(SkyCircleRadius(scene, 0.5 * kDegree), 0.25 * kDegree, 1e-9);
}

TEST_F(StarChartTest, DiscsAreNeverTooSmallToBeSeen) {
    view.ZoomFactor = 64;
    EXPECT_NEAR(SkyDiscRadius(scene, kSunDisc), 5 * kSunDisc, 1e-12);
    view.ZoomFactor = 10;
    EXPECT_EQ(SkyDiscRadius(scene, kSunDisc), 0.1);
    EXPECT_NEAR(kSunDisc, 32.0 / 60 * kDegree, 0.1 / 60 * kDegree) << "32 arcminutes";
    EXPECT_NEAR(kMoonDisc, 31.4 / 60 * kDegree, 0.1 / 60 * kDegree);
}

TEST_F(StarChartTest, HalvesOfTheSphereAreDrawnByTheirBoxes) {
    app.Main.CLocalSky.Value = false;
    app.Main.CDrawFrontStars.Value = true;
    app.Main.CDrawBackStars.Value = false;
    EXPECT_TRUE(SkySightOf(scene, 0).Shows({1, 0, 0}, 3));
    EXPECT_TRUE(SkySightOf(scene, 0).Shows({1, 0, 0}, 0));
    EXPECT_FALSE(SkySightOf(scene, 0).Shows({1, 0, 0}, -3));
    app.Main.CDrawFrontStars.Value = false;
    app.Main.CDrawBackStars.Value = true;
    EXPECT_FALSE(SkySightOf(scene, 0).Shows({1, 0, 0}, 3));
    EXPECT_TRUE(SkySightOf(scene, 0).Shows({1, 0, 0}, -3));
    app.Main.CPlaniSphere.Value = true;
    EXPECT_TRUE(SkySightOf(scene, 0).Shows({1, 0, 0}, 3)) << "a map has no depth";
}

TEST_F(StarChartTest, TheLocalSkyEndsAtTheHorizon) {
    app.Main.CDrawFrontStars.Value = app.Main.CDrawBackStars.Value = app.Main.CLocalSky.Value = true;
    SetLocationDegrees(app.Data, 40, 20);
    const auto shows = [this](double ra, double dec) {
        const double a = ra * kDegree;
        const double d = dec * kDegree;
        return SkySightOf(scene, 100 * kDegree)
            .Shows({std::cos(d) * std::cos(a), std::cos(d) * std::sin(a), std::sin(d)}, 1);
    };
    // The meridian is at a right ascension of 120 degrees; 50 degrees south of the equator is its horizon.
    EXPECT_TRUE(shows(120, -49.9));
    EXPECT_FALSE(shows(120, -50.1));
    EXPECT_TRUE(shows(300, 50.1)) << "under the pole";
    EXPECT_FALSE(shows(300, 49.9));
    EXPECT_TRUE(shows(209.9, 0));
    EXPECT_FALSE(shows(210.1, 0));
}

}  // namespace
}  // namespace glintara::testing
