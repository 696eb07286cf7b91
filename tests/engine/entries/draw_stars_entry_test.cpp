// The stars through the C interface: where they come to lie, which are drawn, and what is left alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numbers>
#include <vector>

#include "engine/glintcore.h"

namespace glintara::star_tests {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

/// Noon of 1 January 2000, and the sidereal time of Greenwich then: 18h 41m 50.548s.
constexpr double kEpoch = 2451545;
constexpr double kGreenwich = (18 + 41 / 60.0 + 50.548 / 3600) * 15 * kDegree;

struct Dot {
    double x = 0;
    double y = 0;
    double radius = 0;
    std::uint32_t color = 0;
    double weight = 0;
};

void Keep(void* self, double x, double y, double radius, std::uint32_t color, double weight) {
    static_cast<std::vector<Dot>*>(self)->push_back({x, y, radius, color, weight});
}

/// A star over a place of the Earth at `kEpoch`, degrees.
GlintStar StarOver(double lat, double lon, double magnitude = 2) {
    GlintStar star{};
    star.Magnitude = magnitude;
    star.Declination = lat * kDegree;
    star.RightAscension = lon * kDegree + kGreenwich;
    star.ColorIndex = 0.3;
    return star;
}

struct DrawStars : ::testing::Test {
    std::vector<GlintStar> stars;
    GlintViewConfig config{};

    /// A picture of 800 by 600 pixels, 100 to the Earth's radius, from over (0, 0); a star sphere of two radii.
    void SetUp() override {
        config.SimTime = kEpoch;
        config.ScaleX = config.ScaleY = 100;
        config.HalfWidth = 400;
        config.HalfHeight = 300;
        config.SkyScale = 2;
        config.MaxStarMag = 11;
        config.AutoMagLimit = 6;
        config.StarSizeScale = 0.5;
        config.CDrawFrontStars = 255;
    }

    std::vector<Dot> Draw() {
        std::vector<std::int32_t> list(stars.size());
        for (std::size_t i = 0; i < list.size(); ++i) list[i] = static_cast<std::int32_t>(i) + 1;
        config.StarCount = static_cast<std::int32_t>(list.size());
        std::vector<Dot> dots;
        const GlintDrawTarget target{&dots, nullptr, nullptr, Keep};
        Satellite_DrawStars(&target, &config, list.data(), stars.data());
        return dots;
    }

    void ExpectAt(double x, double y) {
        const std::vector<Dot> dots = Draw();
        ASSERT_EQ(dots.size(), 1U);
        EXPECT_NEAR(dots[0].x, x, 1e-3);
        EXPECT_NEAR(dots[0].y, y, 1e-3);
    }
};

TEST_F(DrawStars, TheRecordIsLaidOutAsOtherLanguagesFillIt) {
    EXPECT_EQ(sizeof(GlintStar), 72U);
    EXPECT_EQ(offsetof(GlintStar, Magnitude), 16U);
    EXPECT_EQ(offsetof(GlintStar, Rest), 48U);
}

TEST_F(DrawStars, AStarStandsOverThePlaceThatTheSiderealTimeTells) {
    stars = {StarOver(0, 0)};
    ExpectAt(400, 300);
    stars = {StarOver(0, 30)};
    ExpectAt(500, 300);  // sin 30 degrees is a half
    stars = {StarOver(30, 0)};
    ExpectAt(400, 200);
    // An hour later the Earth has turned by 15.041 degrees to the east, and the star is seen so much farther west.
    stars = {StarOver(0, 15.041)};
    config.SimTime += 1 / 24.0;
    ExpectAt(400, 300);
}

TEST_F(DrawStars, TheCameraTurnsAndShiftsThem) {
    stars = {StarOver(30, 0)};
    config.ViewLat = 30 * kDegree;
    config.PanX = 0.5;
    config.PanY = 1;
    ExpectAt(450, 200);
    stars = {StarOver(30, 20)};
    config.ViewLon = 20 * kDegree;
    ExpectAt(450, 200);
    config.ViewRoll = 30 * kDegree;  // turned to the left, by half of the sphere's radius
    ExpectAt(450 - 100, 200);
}

TEST_F(DrawStars, AChartHasADegreeOfOneLengthFromItsCentre) {
    config.CFlatSky = 255;
    config.CSkyOnly = 255;
    stars = {StarOver(0, 30)};
    ExpectAt(400 + 200 / 3.0, 300);
    stars = {StarOver(60, 0)};
    ExpectAt(400, 300 - 200 * 2 / 3.0);
    // From below: the centre is the far point, which lies over the other side of the Earth.
    config.CDrawFrontStars = 0;
    config.CDrawBackStars = 255;
    stars = {StarOver(0, 150)};
    ExpectAt(400 + 200 / 3.0, 300);
}

TEST_F(DrawStars, MirroredEastIsLeft) {
    stars = {StarOver(0, 30)};
    config.CReverseSky = 255;
    ExpectAt(300, 300);
    config.CFlatSky = 255;
    ExpectAt(400 - 200 / 3.0, 300);
}

TEST_F(DrawStars, EachHalfOfTheSphereHasItsSwitch) {
    stars = {StarOver(45, 0), StarOver(45, 180)};
    EXPECT_EQ(Draw().size(), 1U);
    config.CDrawBackStars = 255;
    EXPECT_EQ(Draw().size(), 2U);
    config.CDrawFrontStars = 0;
    EXPECT_EQ(Draw().size(), 1U);
    config.CDrawBackStars = 0;
    EXPECT_EQ(Draw().size(), 0U);
}

TEST_F(DrawStars, TheEarthHidesWhatIsBehindIt) {
    config.CDrawFrontStars = 0;
    config.CDrawBackStars = 255;
    stars = {StarOver(20, 180), StarOver(40, 180)};  // sin 20 degrees is 0.34 and sin 40 is 0.64, of two radii
    ASSERT_EQ(Draw().size(), 1U);
    EXPECT_LT(Draw()[0].y, 200);
    config.CSkyOnly = 255;
    EXPECT_EQ(Draw().size(), 2U);
    config.CSkyOnly = 0;
    config.PanY = 1;  // the sky is shifted up, the Earth stays
    config.FramePanY = 0;
    EXPECT_EQ(Draw().size(), 2U);
}

TEST_F(DrawStars, TheLocalSkyEndsAtTheHorizon) {
    config.CLocalSky = 255;
    config.SiteLat = 45 * kDegree;
    stars = {StarOver(45, 0), StarOver(-44, 0), StarOver(-46, 0)};
    EXPECT_EQ(Draw().size(), 2U);
    config.SiteLon = 90 * kDegree;
    config.SiteLat = 0;
    stars = {StarOver(0, 1), StarOver(0, -1)};
    ASSERT_EQ(Draw().size(), 1U);
    EXPECT_GT(Draw()[0].x, 400);
}

TEST_F(DrawStars, WhatIsTooFaintIsLeftAway) {
    stars = {StarOver(0, 0, 5.9), StarOver(0, 10, 6.1), StarOver(0, 20, -1.4)};
    EXPECT_EQ(Draw().size(), 2U);
    config.MaxStarMag = 5;
    EXPECT_EQ(Draw().size(), 1U);
    config.MaxStarMag = -2;
    EXPECT_EQ(Draw().size(), 0U);
}

TEST_F(DrawStars, BrightStarsAreLargerAndFaintOnesDimmer) {
    stars = {StarOver(0, 0, -1.4), StarOver(0, 10, 1), StarOver(0, 20, 5), StarOver(0, 30, 5.8)};
    const std::vector<Dot> dots = Draw();
    ASSERT_EQ(dots.size(), 4U);
    EXPECT_GT(dots[0].radius, dots[1].radius + 0.5);
    EXPECT_GT(dots[1].radius, dots[2].radius + 0.5);
    EXPECT_EQ(dots[0].weight, 1);
    EXPECT_EQ(dots[1].weight, 1);
    EXPECT_LT(dots[3].weight, dots[2].weight);
    EXPECT_GT(dots[3].weight, 0);
    config.StarSizeScale = 1;
    EXPECT_GT(Draw()[1].radius, 1.5 * dots[1].radius);
}

TEST_F(DrawStars, WearTheirColors) {
    stars = {StarOver(0, 0), StarOver(0, 10)};
    stars[0].ColorIndex = -0.2;
    stars[1].ColorIndex = 1.8;
    const std::vector<Dot> dots = Draw();
    ASSERT_EQ(dots.size(), 2U);
    const auto red = [](std::uint32_t color) { return color & 0xFF; };
    const auto blue = [](std::uint32_t color) { return color >> 16; };
    EXPECT_LT(red(dots[0].color), blue(dots[0].color));
    EXPECT_GT(red(dots[1].color), blue(dots[1].color));
}

TEST_F(DrawStars, ADirectionThatIsKeptGivesTheSamePicture) {
    stars = {StarOver(33, 21)};
    const std::vector<Dot> first = Draw();
    const std::vector<unsigned char> rest(stars[0].Rest, stars[0].Rest + sizeof stars[0].Rest);
    EXPECT_TRUE(std::any_of(rest.begin(), rest.end(), [](unsigned char byte) { return byte != 0; }));
    const std::vector<Dot> second = Draw();
    ASSERT_EQ(first.size(), 1U);
    ASSERT_EQ(second.size(), 1U);
    EXPECT_EQ(first[0].x, second[0].x);
    EXPECT_EQ(first[0].y, second[0].y);
}

TEST_F(DrawStars, AStarThatHasMovedIsSeenWhereItIsNow) {
    stars = {StarOver(0, 0)};
    ExpectAt(400, 300);
    stars[0].RightAscension += 30 * kDegree;
    ExpectAt(500, 300);
    stars[0].Declination = 90 * kDegree;
    ExpectAt(400, 100);
}

TEST_F(DrawStars, StarsFarOffThePictureCostNoDot) {
    config.SkyScale = 55;
    stars = {StarOver(0, 0), StarOver(0, 30), StarOver(30, 0)};
    EXPECT_EQ(Draw().size(), 1U);
}

TEST_F(DrawStars, TheFlatMapIsLeftToTheCaller) {
    stars = {StarOver(0, 0)};
    config.CPlaniSphere = 255;
    EXPECT_TRUE(Draw().empty());
}

TEST_F(DrawStars, BadStarsAreLeftOut) {
    stars = {StarOver(0, 0), StarOver(0, 0), StarOver(0, 0), StarOver(0, 0), StarOver(0, 5)};
    stars[0].Magnitude = kNoNumber;
    stars[1].Declination = kNoNumber;
    stars[2].RightAscension = std::numeric_limits<double>::infinity();
    stars[3].ColorIndex = kNoNumber;
    std::memset(stars[4].Rest, 0xFF, sizeof stars[4].Rest);
    EXPECT_EQ(Draw().size(), 2U);
    std::vector<Dot> dots;
    const GlintDrawTarget target{&dots, nullptr, nullptr, Keep};
    const std::int32_t list[] = {0, -1, std::numeric_limits<std::int32_t>::min(), 5};
    config.StarCount = 4;
    Satellite_DrawStars(&target, &config, list, stars.data());
    EXPECT_EQ(dots.size(), 1U);
}

TEST_F(DrawStars, BadCallsDrawNothing) {
    stars = {StarOver(0, 0)};
    config.StarCount = 1;
    std::vector<Dot> dots;
    const GlintDrawTarget target{&dots, nullptr, nullptr, Keep};
    const GlintDrawTarget noDots{&dots, nullptr, nullptr, nullptr};
    const std::int32_t list[] = {1};
    Satellite_DrawStars(nullptr, &config, list, stars.data());
    Satellite_DrawStars(&noDots, &config, list, stars.data());
    Satellite_DrawStars(&target, nullptr, list, stars.data());
    Satellite_DrawStars(&target, &config, nullptr, stars.data());
    Satellite_DrawStars(&target, &config, list, nullptr);
    for (double GlintViewConfig::*field :
         {&GlintViewConfig::SimTime, &GlintViewConfig::ViewLat, &GlintViewConfig::PanX, &GlintViewConfig::ScaleX,
          &GlintViewConfig::FramePanY, &GlintViewConfig::SkyScale, &GlintViewConfig::MaxStarMag,
          &GlintViewConfig::AutoMagLimit, &GlintViewConfig::StarSizeScale, &GlintViewConfig::SiteLat}) {
        GlintViewConfig broken = config;
        broken.*field = kNoNumber;
        Satellite_DrawStars(&target, &broken, list, stars.data());
    }
    for (const std::int32_t count : {0, -1}) {
        GlintViewConfig none = config;
        none.StarCount = count;
        Satellite_DrawStars(&target, &none, list, stars.data());
    }
    EXPECT_TRUE(dots.empty());
    Satellite_DrawStars(&target, &config, list, stars.data());
    EXPECT_EQ(dots.size(), 1U);
}

}  // namespace
}  // namespace glintara::star_tests
