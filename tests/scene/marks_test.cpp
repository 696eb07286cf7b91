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
    view.ZoomFactor = 320;
    DrawSiteMark(scene);
    ASSERT_EQ(Circles().size(), 1U);
    EXPECT_NEAR(Circles()[0].numbers[2], 0.002 * 40500, 1e-6);
    // Near globes: no more than 6 pixels of 15 twips.
    for (const double zoom : {400.0, 5000.0}) {
        surface.Forget();
        view.ZoomFactor = zoom;
        DrawSiteMark(scene);
        EXPECT_NEAR(Circles().at(0).numbers[2], 90, 1e-6);
    }
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
    ASSERT_EQ(Circles().size(), 1U);
    const double sunX = 300 - 200 * std::sqrt(0.75);
    EXPECT_EQ(Circles()[0].state.FillColor, 0x0080FFU);
    EXPECT_NEAR(Circles()[0].numbers[0], sunX, 1e-6);
    // The Sun has rays: they begin outside of its disc and point away from it, one every 45 degrees.
    ASSERT_EQ(Lines().size(), 8U);
    const double disc = Circles()[0].numbers[2];
    std::vector<double> directions;
    for (const RecordedOperation& ray : Lines()) {
        EXPECT_EQ(ray.state.ForeColor, 0x0080FFU);
        const auto& n = ray.numbers;
        EXPECT_GT(std::hypot(n[0] - sunX, n[1] - 200), 1.2 * disc);
        EXPECT_LT(std::hypot(n[2] - sunX, n[3] - 200), 3 * disc);
        EXPECT_GT(std::hypot(n[2] - sunX, n[3] - 200), std::hypot(n[0] - sunX, n[1] - 200));
        directions.push_back(std::atan2(n[3] - 200, n[2] - sunX) / kDegree);
    }
    std::ranges::sort(directions);
    for (std::size_t i = 1; i < directions.size(); ++i) EXPECT_NEAR(directions[i] - directions[i - 1], 45, 1e-6);
    surface.Forget();
    LookAt(0, 180);
    DrawSunAndMoonOnEarth(scene);
    EXPECT_TRUE(surface.Operations().empty());
    LookAt(0, 0);
    app.Main.CDrawSun.Value = false;
    DrawSunAndMoonOnEarth(scene);
    EXPECT_TRUE(surface.Operations().empty());
    app.Main.CDrawSun.Value = true;
    app.Main.CSkyOnly.Value = true;
    DrawSunAndMoonOnEarth(scene);
    EXPECT_TRUE(surface.Operations().empty());
}

TEST_F(MarksTest, TheMoonIsACrescent) {
    // Mean sidereal time of Greenwich at 0 h UT of 1 January 2001: 6 h 42 min 51.5 s.
    app.Data.SimYear = 2001;
    app.Data.SimMonth = 1;
    app.Data.SimDay = 1;
    app.Data.SimHour = 0;
    app.Data.SimMinute = 0;
    app.Data.SimSecond = 0;
    app.Data.MoonRA = (6 + 42.86 / 60) * 15 * kDegree;
    app.Data.MoonDec = 0;
    app.Data.SunDir = {-1, 0, 0};
    surface.ScaleWidth = 28800;
    surface.ScaleHeight = 16200;
    LookAt(0, 0);
    DrawSunAndMoonOnEarth(scene);
    const auto shapes = surface.OperationsOf(DrawOperation::PolyPolygon);
    ASSERT_EQ(shapes.size(), 1U);
    EXPECT_EQ(shapes[0].state.FillColor, 0x00FFFFU);
    EXPECT_EQ(shapes[0].state.FillStyle, FillPattern::Solid);
    EXPECT_EQ(shapes[0].state.DrawMode, MixMode::Copy);
    // A disc round the point below the Moon, of which the right part is cut out: less than half of it is filled.
    const auto& xy = shapes[0].numbers;
    double area = 0;
    double farthest = 0;
    double left = 1e9;
    for (std::size_t i = 0, j = xy.size() - 2; i < xy.size(); j = i, i += 2) {
        const double x = xy[i] * 15 - 14400;
        const double y = xy[i + 1] * 15 - 8100;
        area += ((xy[j] * 15 - 14400) * y - x * (xy[j + 1] * 15 - 8100)) / 2;
        farthest = std::max(farthest, std::hypot(x, y));
        left = std::min(left, x);
    }
    EXPECT_NEAR(left, -farthest, 0.05 * farthest);
    EXPECT_NEAR(farthest, 1.5 * 0.5 / 64 * 8100, 0.5);
    const double share = std::fabs(area) / (kPiExact * farthest * farthest);
    EXPECT_GT(share, 0.3);
    EXPECT_LT(share, 0.55);
}

TEST_F(MarksTest, InASmallPictureSunAndMoonHaveThreePixelsEach) {
    app.Data.SunDir = {1, 0, 0};
    LookAt(0, 0);
    DrawSunAndMoonOnEarth(scene);
    ASSERT_EQ(Circles().size(), 1U);
    EXPECT_NEAR(Circles()[0].numbers[2], 45, 1e-9);
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
