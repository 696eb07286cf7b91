#include "scene/marks.h"

#include <algorithm>

#include "orbit/location.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

struct MarksTest : SceneFixture {
    std::vector<RecordedOperation> Circles() { return surface.OperationsOf(DrawOperation::Circle); }
};

TEST_F(MarksTest, TheObserverOnTheNearSideOnly) {
    SetLocationDegrees(app.Data, 0, 30);
    LookAt(0, 0);
    DrawSiteMark(scene);
    ASSERT_EQ(Circles().size(), 1U);
    EXPECT_NEAR(Circles()[0].numbers[0], 400, 1e-6);  // the sine of 30 degrees
    EXPECT_NEAR(Circles()[0].numbers[1], 200, 1e-6);
    EXPECT_EQ(Circles()[0].state.FillColor, 0x8080FFU);
    surface.Forget();
    LookAt(0, 180);
    DrawSiteMark(scene);
    EXPECT_TRUE(Circles().empty());
    app.Main.CPlaniSphere.Value = true;
    DrawSiteMark(scene);
    ASSERT_EQ(Circles().size(), 1U);
    EXPECT_NEAR(Circles()[0].numbers[0], 300 - 200 * 150 * kDegree, 1e-6);
    surface.Forget();
    app.Main.CSkyOnly.Value = true;
    DrawSiteMark(scene);
    EXPECT_TRUE(Circles().empty());
}

TEST_F(MarksTest, TheMarkOfTheObserverGrowsWithTheGlobe) {
    SetLocationDegrees(app.Data, 0, 0);
    LookAt(0, 0);
    surface.ScaleWidth = 28800;
    surface.ScaleHeight = 16200;
    view.ZoomFactor = 640;
    DrawSiteMark(scene);
    ASSERT_EQ(Circles().size(), 1U);
    EXPECT_NEAR(Circles()[0].numbers[2], 0.002 * 81000, 1e-6);
    // Small globes: 2.5 pixels of 15 twips.
    surface.Forget();
    view.ZoomFactor = 10;
    DrawSiteMark(scene);
    EXPECT_NEAR(Circles()[0].numbers[2], 37.5, 1e-6);
}

TEST_F(MarksTest, SunAndMoonStandOverTheirPlaces) {
    // 20 March 2018, 16:15 UTC: the equinox. The Sun stood 4 h 7.6 min west of Greenwich (the equation of time was
    // -7.4 minutes), and with it the first point of Aries.
    app.Data.SimYear = 2018;
    app.Data.SimMonth = 3;
    app.Data.SimDay = 20;
    app.Data.SimHour = 16;
    app.Data.SimMinute = 15;
    app.Data.SunDir = {0.5, -std::sqrt(0.75), 0};
    // So a Moon of that right ascension stood over Greenwich.
    app.Data.MoonRA = (4 + 7.6 / 60) * 15 * kDegree;
    app.Data.MoonDec = 0;
    LookAt(0, 0);
    DrawSunAndMoonOnEarth(scene);
    ASSERT_EQ(Circles().size(), 2U);
    EXPECT_EQ(Circles()[0].state.FillColor, 0x0080FFU);
    EXPECT_NEAR(Circles()[0].numbers[0], 300 - 200 * std::sqrt(0.75), 1e-6);
    EXPECT_EQ(Circles()[1].state.FillColor, 0x00FFFFU);
    EXPECT_NEAR(Circles()[1].numbers[0], 300, 0.5);
    surface.Forget();
    LookAt(0, 180);
    DrawSunAndMoonOnEarth(scene);
    EXPECT_TRUE(Circles().empty());
    LookAt(0, 0);
    app.Main.CDrawSun.Value = false;
    DrawSunAndMoonOnEarth(scene);
    EXPECT_TRUE(Circles().empty());
    app.Main.CDrawSun.Value = true;
    app.Main.CSkyOnly.Value = true;
    DrawSunAndMoonOnEarth(scene);
    EXPECT_TRUE(Circles().empty());
}

TEST_F(MarksTest, TheAriesLine) {
    // At noon of 1 January 2000 the first point of Aries stood over 79.54 degrees east.
    app.Data.SimYear = 2000;
    app.Data.SimMonth = 1;
    app.Data.SimDay = 1;
    app.Data.SimHour = 12;
    LookAt(90, -10.46);  // from over the pole, its meridian to the right
    DrawAriesLine(scene);
    EXPECT_TRUE(Lines().empty());
    app.Main.CDrawAries.Value = true;
    const auto farthest = [&] {
        surface.Forget();
        DrawAriesLine(scene);
        double x = 0;
        for (const auto& line : Lines()) {
            EXPECT_NEAR(line.numbers[3], 200, 0.5);
            EXPECT_EQ(line.state.ForeColor, 0x208030U);
            x = std::max(x, line.numbers[2]);
        }
        return x;
    };
    EXPECT_NEAR(farthest(), 300 + 1.5 * 200, 1e-2);
    app.Main.CDrawSky.Value = true;
    view.SkyScale = 4;
    EXPECT_NEAR(farthest(), 300 + 4 * 200, 1e-2);
    view.SkyScale = 1;
    EXPECT_NEAR(farthest(), 300 + 200, 1e-2);
    app.Main.CSkyOnly.Value = true;
    EXPECT_EQ(farthest(), 0);
}

TEST_F(MarksTest, WhichSideOfTheSkyIsShown) {
    LookAt(0, 0);
    const LatLonRadius front{0, 0, 1};
    const LatLonRadius back{0, kPiExact, 1};
    EXPECT_FALSE(IsSkyShown(scene, front, 1));
    EXPECT_TRUE(IsSkyShown(scene, back, 1));
    app.Main.CDrawFrontStars.Value = true;
    app.Main.CDrawBackStars.Value = false;
    EXPECT_TRUE(IsSkyShown(scene, front, 1));
    EXPECT_FALSE(IsSkyShown(scene, back, 1));
    EXPECT_TRUE(IsSkyShown(scene, front, -1));
    app.Main.CLocalSky.Value = true;
    EXPECT_FALSE(IsSkyShown(scene, front, -1));
    EXPECT_TRUE(IsSkyShown(scene, front, 0));
    app.Main.CPlaniSphere.Value = true;
    EXPECT_TRUE(IsSkyShown(scene, back, 1));
}

}  // namespace
}  // namespace glintara::testing
