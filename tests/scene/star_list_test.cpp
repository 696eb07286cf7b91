#include "scene/star_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "orbit/location.h"
#include "orbit/sun_and_moon.h"
#include "scene/scene_fixture.h"
#include "scene/star_places.h"

namespace glintara::testing {
namespace {

StarRecord StarOf(double magnitude) {
    StarRecord star;
    star.Magnitude = magnitude;
    star.Designation = "HD 1";
    return star;
}

struct StarListTest : SceneFixture {
    StarTables stars;

    void SetUp() override {
        TakeStars(stars, {{}, StarOf(5), StarOf(-1.44), {}, StarOf(6.5), StarOf(6.51)});
        app.Main.CAutoMag.Value = true;
        app.Main.CFlatSky.Value = false;
        app.Main.CReverseSky.Value = false;
        app.Main.CPlaniSphere.Value = false;
        app.Main.MnuAtmo.Checked = false;
        view.SkyScale = 55;
        view.ZoomFactor = 16;
        view.MaxStarMag = 11;
        view.StarSizeScale = 8;
    }

    StarLimits Limits(double sunDegrees = -90) const {
        return StarLimitsOf(app.Data.View, app.Main, sunDegrees * kDegree);
    }
};

TEST_F(StarListTest, HasTheStarsAsBrightAsTheLimit) {
    RebuildStarList(stars, 6.5);
    EXPECT_EQ(stars.VisibleStarCount(), 3);
    EXPECT_EQ(stars.VisibleStarList, (std::vector<std::int32_t>{0, 1, 2, 4}));
    EXPECT_EQ(stars.VisibleFlags, (std::vector<std::int16_t>{0, -1, -1, 0, -1, 0}));
}

TEST_F(StarListTest, IsBuiltAnew) {
    RebuildStarList(stars, 11);
    RebuildStarList(stars, 0);
    EXPECT_EQ(stars.VisibleStarList, (std::vector<std::int32_t>{0, 2}));
    EXPECT_EQ(stars.VisibleFlags, (std::vector<std::int16_t>{0, 0, -1, 0, 0, 0}));
}

TEST_F(StarListTest, ALimitBelowTheBrightestEmptiesIt) {
    RebuildStarList(stars, 11);
    RebuildStarList(stars, -1.5);
    EXPECT_EQ(stars.VisibleStarCount(), 0);
    EXPECT_EQ(stars.VisibleFlags, std::vector<std::int16_t>(6, 0));
    RebuildStarList(stars, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(stars.VisibleStarCount(), 0);
}

TEST_F(StarListTest, ANumberWithoutAStarIsNeverListed) {
    RebuildStarList(stars, 100);
    EXPECT_EQ(stars.VisibleStarList, (std::vector<std::int32_t>{0, 1, 2, 4, 5}));
    EXPECT_FALSE(stars.HasStar(3));
    EXPECT_FALSE(stars.HasStar(0));
    EXPECT_FALSE(stars.HasStar(6));
    EXPECT_TRUE(stars.HasStar(5));
}

TEST_F(StarListTest, AnotherCatalogueBeginsWithAnEmptyList) {
    RebuildStarList(stars, 11);
    TakeStars(stars, {{}, StarOf(1)});
    EXPECT_EQ(stars.VisibleStarCount(), 0);
    EXPECT_EQ(stars.VisibleFlags.size(), 2U);
}

// The limits by hand: 1.7 ln(55 x 16 / 100) + 4.5 = 8.197.

TEST_F(StarListTest, TheAutomaticLimitGoesWithTheSizeOfTheSphere) {
    EXPECT_NEAR(Limits().AutoMagLimit, 8.2, 1e-12);
    view.ZoomFactor = 64;
    EXPECT_NEAR(Limits().AutoMagLimit, 10.6, 1e-12);  // 10.554
    view.SkyScale = 1;
    EXPECT_NEAR(Limits().AutoMagLimit, 3.7, 1e-12);  // 3.741
    EXPECT_EQ(Limits().MaxStarMag, 11);
}

TEST_F(StarListTest, AChartHasRoomForTwoMagnitudesMore) {
    app.Main.CFlatSky.Value = true;
    EXPECT_NEAR(Limits().AutoMagLimit, 10.2, 1e-12);
}

TEST_F(StarListTest, TheFlatMapHasRoomForMagnitudeFive) {
    app.Main.CPlaniSphere.Value = true;
    EXPECT_EQ(Limits().AutoMagLimit, 5);
    view.SkyScale = 1;
    EXPECT_NEAR(Limits().AutoMagLimit, 1.4, 1e-12);  // 1.385
}

TEST_F(StarListTest, TheAirHidesStarsAsTheSunComesUp) {
    app.Main.MnuAtmo.Checked = true;
    EXPECT_NEAR(Limits(-18).AutoMagLimit, 8.2, 1e-12) << "the air would let through magnitude 14.5";
    EXPECT_EQ(Limits(-18).MaxStarMag, 11);
    EXPECT_NEAR(Limits(-6).AutoMagLimit, 2.5, 1e-9);
    EXPECT_EQ(Limits(-6).MaxStarMag, 7);
    EXPECT_NEAR(Limits(10).AutoMagLimit, -13.5, 1e-9);
}

TEST_F(StarListTest, AChartAndAMirroredSkyHaveNoAir) {
    app.Main.MnuAtmo.Checked = true;
    app.Main.CReverseSky.Value = true;
    EXPECT_FALSE(HasAtmosphere(app.Main));
    EXPECT_NEAR(Limits(10).AutoMagLimit, 8.2, 1e-12);
    app.Main.CReverseSky.Value = false;
    EXPECT_TRUE(HasAtmosphere(app.Main));
    app.Main.CFlatSky.Value = true;
    EXPECT_NEAR(Limits(10).AutoMagLimit, 10.2, 1e-12);
    app.Main.CFlatSky.Value = false;
    app.Main.MnuAtmo.Checked = false;
    EXPECT_NEAR(Limits(10).AutoMagLimit, 8.2, 1e-12);
}

TEST_F(StarListTest, TheFainterOfTheLimitsIsNotShown) {
    EXPECT_NEAR(Limits().Shown(), 8.2, 1e-12);
    view.MaxStarMag = 6;
    EXPECT_EQ(Limits().Shown(), 6);
}

TEST_F(StarListTest, WithoutTheAutomaticOnlyTheAirCounts) {
    app.Main.CAutoMag.Value = false;
    EXPECT_EQ(Limits().Shown(), 11);
    app.Main.CPlaniSphere.Value = true;
    EXPECT_EQ(Limits().Shown(), 11);
    app.Main.CPlaniSphere.Value = false;
    app.Main.MnuAtmo.Checked = true;
    EXPECT_NEAR(Limits(-6).Shown(), 2.5, 1e-9);
    EXPECT_EQ(Limits(-30).Shown(), 11);
}

TEST_F(StarListTest, DiscsGrowWithSizeAndLimit) {
    view.ZoomFactor = 50;
    view.SkyScale = 17.6;
    EXPECT_NEAR(Limits().StarSize, 8 * 0.2 * 8.2 / 15, 1e-12);
    view.StarSizeScale = 16;
    EXPECT_NEAR(Limits().StarSize, 16 * 0.2 * 8.2 / 15, 1e-12);
    view.ZoomFactor = 1;  // from afar as much larger as is allowed
    view.SkyScale = 880;
    EXPECT_NEAR(Limits().StarSize, 16 * 0.2 * 8.2 / 15 / 0.8, 1e-12);
    view.StarSizeScale = 0;
    EXPECT_EQ(Limits().StarSize, 0);
}

TEST_F(StarListTest, BrightStarsDoNotSwellAsTheViewComesNearer) {
    const auto sirius = [this] { return Limits().StarSize * (Limits().AutoMagLimit + 1.44); };
    const double far = sirius();
    view.ZoomFactor = 1000;
    EXPECT_LT(sirius(), 2 * far);
    EXPECT_GT(sirius(), far);
}

TEST_F(StarListTest, ThereAreNoNegativeDiscs) {
    app.Main.MnuAtmo.Checked = true;
    EXPECT_EQ(Limits(40).StarSize, 0);
}

TEST_F(StarListTest, TwilightEndsTheNight) {
    EXPECT_LT(TwilightValue(-6.3 * kDegree), 1);
    EXPECT_GT(TwilightValue(-6.1 * kDegree), 1);
    EXPECT_NEAR(TwilightValue(0), 8 / 1.8, 1e-9);
}

TEST_F(StarListTest, TheSunStandsOverThePlaceBelowIt) {
    SetLocationDegrees(app.Data, 23, 50);
    app.Data.SunDir = {0, 1, 0};
    EXPECT_NEAR(SunElevation(app.Data), std::asin(std::cos(23 * kDegree) * std::sin(50 * kDegree)), 1e-9);
    app.Data.SunDir = {0, 0, 1};
    EXPECT_NEAR(SunElevation(app.Data), 23 * kDegree, 1e-9);
}

}  // namespace
}  // namespace glintara::testing
