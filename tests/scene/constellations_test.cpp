#include "scene/constellations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "engine/astro/sidereal.h"
#include "orbit/location.h"
#include "scene/scene_fixture.h"
#include "scene/star_places.h"

namespace glintara::testing {
namespace {

constexpr double kEpoch = 2451545;

/// A picture of 800 by 600 pixels from over (0, 0), 300 pixels to the scene unit and the radius of the star sphere.
struct ConstellationsTest : SceneFixture {
    std::vector<StarRecord> catalogue = std::vector<StarRecord>(1);

    void SetUp() override {
        surface.ScaleWidth = 12000;
        surface.ScaleHeight = 9000;
        LookAt(0, 0);
        view.SkyScale = 1;
        MainControls& main = app.Main;
        main.CSkyOnly.Value = true;
        main.CDrawFrontStars.Value = true;
        for (CheckBox* box :
             {&main.CDrawBackStars, &main.CFlatSky, &main.CReverseSky, &main.CLocalSky, &main.CPlaniSphere})
            box->Value = false;
        SetLocationDegrees(app.Data, 0, 0);
        app.Data.SetSimInstant(JDToDate(kEpoch), kEpoch);
    }

    /// A star over a place of the Earth at `kEpoch`, degrees.
    void AddStar(double lat, double lon) {
        StarRecord star;
        star.Magnitude = 2;
        star.Designation = "HD 1";
        star.Declination = star.DeclinationJ2000 = lat * kDegree;
        star.RightAscension = star.RightAscensionJ2000 = lon * kDegree + SiderealFromJD(kEpoch);
        catalogue.push_back(star);
    }

    void Plot(const std::vector<ConstellationLine>& chains) {
        TakeStars(app.Data.Stars, catalogue);
        app.Data.Stars.Constellations.assign(1, {});
        for (const ConstellationLine& line : chains) app.Data.Stars.Constellations.push_back(line);
        surface.Forget();
        PlotConstallations(scene);
    }
};

TEST_F(ConstellationsTest, ALineJoinsTwoStarsAndLeavesThemFree) {
    AddStar(0, 0);
    AddStar(0, 30);
    Plot({{1, 1}, {2, 1}});
    ASSERT_EQ(Lines().size(), 1U);
    const double gap = kFigureGap * 15;
    ExpectNumbers(Lines()[0], {6000 + gap, 4500, 6000 + 2250 - gap, 4500}, 0.01);
    EXPECT_EQ(Lines()[0].state.ForeColor, kConstellationColor);
    EXPECT_EQ(Lines()[0].state.DrawWidth, 1);
    app.Main.CReverseSky.Value = true;
    Plot({{1, 1}, {2, 1}});
    ExpectNumbers(Lines()[0], {6000 - gap, 4500, 6000 - 2250 + gap, 4500}, 0.01);
}

TEST_F(ConstellationsTest, AnotherGroupIsAnotherChain) {
    AddStar(0, 0);
    AddStar(0, 10);
    AddStar(0, 20);
    AddStar(0, 30);
    Plot({{1, 1}, {2, 1}, {3, 2}, {4, 2}});
    EXPECT_EQ(Lines().size(), 2U);
}

TEST_F(ConstellationsTest, AStarThatIsNoneBreaksTheChain) {
    AddStar(0, 0);
    AddStar(0, 10);
    AddStar(0, 20);
    Plot({{1, 1}, {0, 1}, {2, 1}, {3, 1}, {99, 1}});
    EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(ConstellationsTest, BothEndsHaveToBeShown) {
    AddStar(10, 80);
    AddStar(0, 100);
    AddStar(20, 120);
    const std::vector<ConstellationLine> chain{{1, 1}, {2, 1}, {3, 1}};
    Plot(chain);
    EXPECT_EQ(Lines().size(), 0U);
    app.Main.CDrawBackStars.Value = true;
    Plot(chain);
    EXPECT_EQ(Lines().size(), 2U);
    app.Main.CDrawFrontStars.Value = false;
    Plot(chain);
    EXPECT_EQ(Lines().size(), 1U);
    app.Main.CDrawFrontStars.Value = true;
    app.Main.CLocalSky.Value = true;
    Plot(chain);
    EXPECT_EQ(Lines().size(), 0U);
}

TEST_F(ConstellationsTest, TheEarthHidesLinesBehindIt) {
    AddStar(0, 170);
    AddStar(0, 190);
    app.Main.CDrawBackStars.Value = true;
    Plot({{1, 1}, {2, 1}});
    EXPECT_EQ(Lines().size(), 1U);
    app.Main.CSkyOnly.Value = false;
    Plot({{1, 1}, {2, 1}});
    EXPECT_EQ(Lines().size(), 0U);
}

TEST_F(ConstellationsTest, NoLineRunsAcrossTheChartFromEdgeToEdge) {
    app.Main.CFlatSky.Value = true;
    app.Main.CDrawBackStars.Value = true;
    AddStar(0, 170);
    AddStar(0, -170);
    AddStar(0, 150);
    Plot({{1, 1}, {2, 1}});
    EXPECT_EQ(Lines().size(), 0U);
    Plot({{1, 1}, {3, 1}});
    EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(ConstellationsTest, OnTheFlatMapALineGoesThroughTheSeam) {
    app.Main.CPlaniSphere.Value = true;
    AddStar(0, 175);
    AddStar(0, -175);
    Plot({{1, 1}, {2, 1}});
    ASSERT_EQ(Lines().size(), 2U);
    for (const RecordedOperation& line : Lines())
        EXPECT_LT(std::abs(line.numbers[2] - line.numbers[0]), 10 * kDegree * 4500) << OperationText(line);
}

}  // namespace
}  // namespace glintara::testing
