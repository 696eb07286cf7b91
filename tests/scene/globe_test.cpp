#include "scene/globe.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "orbit/location.h"
#include "support/globe_fixture.h"

namespace glintara {
namespace {

using testing::kDegree;
using testing::kPiExact;

constexpr Color kSea = 0x6E3A10;
constexpr Color kLand = 0x3C6E3C;
constexpr Color kNight = 0x5A5A5A;

TEST_F(GlobeTest, BeginsWithAnEmptyPicture) {
    Frame();
    ASSERT_FALSE(surface.Operations().empty());
    EXPECT_EQ(surface.Operations().front().operation, DrawOperation::Cls);
    EXPECT_TRUE(surface.Operations().front().state.AutoRedraw);
    EXPECT_FALSE(surface.AutoRedraw);
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Cls).size(), 1U);
}

// At zoom 64 the Earth touches the short sides.
TEST_F(GlobeTest, DiscOfTheEarthInTheSeasColour) {
    Frame();
    const auto discs = FillsIn(kSea);
    ASSERT_EQ(discs.size(), 1U);
    EXPECT_EQ(discs[0].operation, DrawOperation::Circle);
    EXPECT_EQ(discs[0].state.FillStyle, FillPattern::Solid);
    EXPECT_EQ(discs[0].state.ForeColor, kSea);
    EXPECT_EQ(discs[0].state.DrawMode, MixMode::Copy);
    testing::ExpectNumbers(discs[0], {6000, 4500, 4500});
}

TEST_F(GlobeTest, SeaIsFilledWithSolidGlobeClearToo) {
    app.Main.CSolidGlobe.Value = false;
    Frame();
    EXPECT_EQ(FillsIn(kSea).size(), 1U);
    EXPECT_TRUE(FillsIn(kLand).empty());
    EXPECT_FALSE(BorderLines().empty());
}

TEST_F(GlobeTest, GlowLiesUnderTheDisc) {
    view.ZoomFactor = 29;
    Frame();
    const auto& all = surface.Operations();
    const auto disc = std::ranges::find_if(all, [](const auto& op) { return op.operation == DrawOperation::Circle; });
    ASSERT_NE(disc, all.end());
    const auto glows = RowsIn(kLimbColor);
    ASSERT_FALSE(glows.empty());
    EXPECT_EQ(std::count_if(all.begin(), disc, [](const auto& op) { return op.operation == DrawOperation::CoverRow; }),
              std::ssize(glows));
    app.Main.CPlaniSphere.Value = true;
    Frame();
    EXPECT_TRUE(RowsIn(kLimbColor).empty());
}

TEST_F(GlobeTest, LandAndBordersWithTheirPens) {
    Frame();
    const auto land = FillsIn(kLand);
    ASSERT_EQ(land.size(), 1U);
    EXPECT_EQ(land[0].state.FillStyle, FillPattern::Solid);
    const auto borders = BorderLines();
    ASSERT_EQ(borders.size(), 1U);
    EXPECT_EQ(borders[0].state.DrawMode, MixMode::Copy);
    EXPECT_EQ(borders[0].state.DrawStyle, PenPattern::Solid);
    EXPECT_LE(borders[0].state.DrawWidth, 1);
    // The square's edge at longitude 10: on a disc of 300 pixels sin 10 of it at the equator. The corners are nearer.
    EXPECT_NEAR(HalfWidth(land[0]), 300 * std::sin(10 * kDegree), 1);
}

TEST_F(GlobeTest, FineBordersInAFinePictureAndUnderAutoRefine) {
    const double fine = 300 * std::sin(5 * kDegree);
    const double reduced = 300 * std::sin(10 * kDegree);
    Frame();
    EXPECT_NEAR(HalfWidth(FillsIn(kLand).at(0)), reduced, 1);
    app.Run.FinePass = true;
    Frame();
    EXPECT_NEAR(HalfWidth(FillsIn(kLand).at(0)), fine, 1);
    app.Run.FinePass = false;
    app.Main.CAutoRefine.Value = true;
    Frame();
    EXPECT_NEAR(HalfWidth(FillsIn(kLand).at(0)), fine, 1);
}

TEST_F(GlobeTest, NearPicturesHaveTheFineBorders) {
    const auto halfWidth = [&](double zoom) {
        view.ZoomFactor = zoom;
        Frame();
        return HalfWidth(FillsIn(kLand).at(0)) / (300 * zoom / 64);
    };
    EXPECT_NEAR(halfWidth(119), std::sin(10 * kDegree), 0.005);
    EXPECT_NEAR(halfWidth(120), std::sin(5 * kDegree), 0.005);
    app.Main.CPlaniSphere.Value = true;
    EXPECT_NEAR(halfWidth(119), 10 * kDegree, 0.005);
    EXPECT_NEAR(halfWidth(120), 5 * kDegree, 0.005);
}

TEST_F(GlobeTest, CountriesCanBeHidden) {
    app.Main.CHideCountries.Value = true;
    Frame();
    EXPECT_TRUE(FillsIn(kLand).empty());
    EXPECT_TRUE(BorderLines().empty());
    EXPECT_EQ(FillsIn(kSea).size(), 1U);
}

TEST_F(GlobeTest, WithoutMapDataTheRestIsDrawn) {
    app.Data.Map = {};
    Frame();
    EXPECT_EQ(FillsIn(kSea).size(), 1U);
    EXPECT_TRUE(BorderLines().empty());
    EXPECT_FALSE(GridLines().empty());
}

// From above the north pole at zoom 64: parallels are circles, meridians are straight through the middle.
TEST_F(GlobeTest, GridHasALineEveryThirtyDegrees) {
    LookAt(90, 0);
    view.ZoomFactor = 60;  // the equator within the picture
    Frame();
    const double radius = 300 * 60.0 / 64;
    int onCircle[4] = {};
    for (const RecordedOperation& line : GridLines()) {
        EXPECT_EQ(line.state.DrawStyle, PenPattern::Dotted);
        EXPECT_EQ(line.state.DrawMode, MixMode::Copy);
        for (std::size_t i = 0; i < line.numbers.size(); i += 2) {
            const double x = (line.numbers[i] - 400) / radius;
            const double y = (line.numbers[i + 1] - 300) / radius;
            const double off = std::hypot(x, y);
            ASSERT_LE(off, 1 + 1e-9);
            const double lat = std::acos(std::min(1.0, off)) / kDegree;
            const double lon = std::atan2(y, x) / kDegree;
            const bool onMeridian = off < 1e-6 || std::fabs(std::remainder(lon, 30)) < 1e-6;
            const bool onParallel = std::fabs(std::remainder(lat, 30)) < 1e-4;
            ASSERT_TRUE(onMeridian || onParallel) << lat << " " << lon;
            if (onParallel && !onMeridian) ++onCircle[std::lround(lat / 30)];
        }
    }
    EXPECT_GT(onCircle[1], 20);
    EXPECT_GT(onCircle[2], 20);
    EXPECT_EQ(surface.DrawStyle, PenPattern::Solid);
}

TEST_F(GlobeTest, GridOnlyOnTheGlobeAndOnlyWhenAskedFor) {
    app.Main.CGlobeGrid.Value = false;
    Frame();
    EXPECT_TRUE(GridLines().empty());
    app.Main.CPlaniSphere.Value = true;
    Frame();
    EXPECT_TRUE(MapGridLines().empty());
}

// At zoom 16 the map is 471 pixels wide: 75 pixels to the radian.
TEST_F(GlobeTest, GridOfTheFlatMapHasALineEveryThirtyDegrees) {
    app.Main.CPlaniSphere.Value = true;
    view.ZoomFactor = 16;
    view.ViewLat = 0.2;
    view.ViewLon = 1;
    Frame();
    EXPECT_TRUE(GridLines().empty());
    std::vector<double> parallels;
    std::vector<double> meridians;
    const double unit = 75 * 15;
    for (const RecordedOperation& line : MapGridLines()) {
        EXPECT_EQ(line.state.DrawStyle, PenPattern::Dotted);
        EXPECT_EQ(line.state.DrawMode, MixMode::Copy);
        EXPECT_EQ(line.state.DrawWidth, 1);
        const auto& n = line.numbers;
        if (n[1] == n[3]) {
            EXPECT_NEAR(std::fabs(n[0] - n[2]), 2 * kPiExact * unit, 1e-6);
            parallels.push_back((4500 - n[1]) / unit + 0.2);
        } else {
            EXPECT_EQ(n[0], n[2]);
            EXPECT_NEAR(std::fabs(n[1] - n[3]), kPiExact * unit, 1e-6);
            EXPECT_NEAR((n[1] + n[3]) / 2, 4500 + 0.2 * unit, 1e-6);
            meridians.push_back((n[0] - 6000) / unit + 1);
        }
    }
    ASSERT_EQ(parallels.size(), 5U);
    ASSERT_EQ(meridians.size(), 12U);
    std::ranges::sort(parallels);
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(parallels[static_cast<std::size_t>(i)], (i - 2) * kPiExact / 6, 1e-9);
    for (const double lon : meridians) {
        EXPECT_NEAR(std::remainder(lon, kPiExact / 6), 0, 1e-9);
        EXPECT_LE(std::fabs(lon - 1), kPiExact);
    }
    EXPECT_EQ(surface.DrawStyle, PenPattern::Solid);
}

TEST_F(GlobeTest, GridOfANearMapStaysOnThePictureAndItsDotsStayInPlace) {
    app.Main.CPlaniSphere.Value = true;
    view.ZoomFactor = 2000;
    LookAt(29.9, 29.9);
    view.ZoomFactor = 2000;
    Frame();
    const auto lines = MapGridLines();
    ASSERT_EQ(lines.size(), 2U);
    const double unit = 4500 * 2000.0 / 64;
    const double left = 6000 - unit * kPiExact;
    const double bottom = 4500 + unit * (kPiExact / 2 + 29.9 * kDegree);
    for (const RecordedOperation& line : lines) {
        const auto& n = line.numbers;
        EXPECT_LT(std::hypot(n[2] - n[0], n[3] - n[1]), 13000);
        // Whole periods of a dot and a gap, 4 pixels, from the end of the whole line.
        if (n[1] == n[3])
            EXPECT_NEAR(std::remainder(n[0] - left, 60), 0, 1e-4);
        else
            EXPECT_NEAR(std::remainder(n[1] - bottom, 60), 0, 1e-4);
        const bool acrossX = std::min(n[0], n[2]) <= 0 && std::max(n[0], n[2]) >= 12000;
        const bool acrossY = std::min(n[1], n[3]) <= 0 && std::max(n[1], n[3]) >= 9000;
        EXPECT_TRUE(acrossX || acrossY) << OperationText(line);
    }
}

TEST_F(GlobeTest, GridOfANearGlobeStaysOnThePicture) {
    LookAt(20, 40);
    view.ZoomFactor = 5000;
    Frame();
    for (const RecordedOperation& line : GridLines()) {
        for (std::size_t i = 0; i + 3 < line.numbers.size(); i += 2) {
            // No segment lies beside the picture; each is short enough to be dotted quickly.
            EXPECT_LT(std::hypot(line.numbers[i] - line.numbers[i + 2], line.numbers[i + 1] - line.numbers[i + 3]),
                      1000);
        }
    }
}

TEST_F(GlobeTest, LayersOfTheEarthInTheirOrder) {
    Frame();
    std::string order;
    for (const RecordedOperation& operation : surface.Operations()) {
        char layer = 0;
        if (operation.operation == DrawOperation::Print)
            layer = 't';
        else if (operation.state.DrawMode == MixMode::Mask)
            layer = 'n';
        else if (operation.operation == DrawOperation::Polyline)
            layer = operation.state.ForeColor == 0x202020 ? 'g' : 'b';
        else if (operation.operation != DrawOperation::Cls)
            layer = operation.state.FillColor == kSea ? 's' : operation.state.FillColor == kLand ? 'l' : 0;
        if (layer != 0 && (order.empty() || order.back() != layer)) order += layer;
    }
    EXPECT_EQ(order, "slbgnt");
}

TEST_F(GlobeTest, NightOnlyWithSunLight) {
    Frame();
    ASSERT_FALSE(RowsIn(kNight).empty());
    EXPECT_EQ(RowsIn(kNight)[0].state.DrawMode, MixMode::Mask);
    app.Main.CSunLight.Value = false;
    Frame();
    EXPECT_TRUE(RowsIn(kNight).empty());
}

TEST_F(GlobeTest, FlatMapIsAFilledRectangleOneTurnWide) {
    app.Main.CPlaniSphere.Value = true;
    view.ZoomFactor = 16;
    view.ViewLat = 0.25;
    Frame();
    const auto ground = FillsIn(kSea);
    ASSERT_FALSE(ground.empty());
    ASSERT_EQ(ground[0].operation, DrawOperation::PolyPolygon);
    const double unit = 300 * 16.0 / 64;  // pixels for a radian
    const double left = 400 - unit * kPiExact;
    const double right = 400 + unit * kPiExact;
    const double bottom = 300 + unit * (kPiExact / 2 + 0.25);
    const double top = 300 - unit * (kPiExact / 2 - 0.25);
    testing::ExpectNumbers(ground[0], {left, bottom, right, bottom, right, top, left, top}, 1e-6);
    EXPECT_EQ(LinesIn(kSea, DrawOperation::Line).size(), 4U);

    // The frame stands over the night.
    const auto frame = LinesIn(kLimbColor, DrawOperation::Line);
    ASSERT_EQ(frame.size(), 4U);
    for (const RecordedOperation& line : frame) {
        EXPECT_EQ(line.state.DrawStyle, PenPattern::Solid);
        EXPECT_EQ(line.state.DrawMode, MixMode::Copy);
        EXPECT_EQ(line.state.DrawWidth, 1);
        for (const std::size_t i : {0U, 2U}) {
            EXPECT_NEAR(std::fabs(line.numbers[i] / 15 - 400), unit * kPiExact, 1e-6);
            EXPECT_NEAR(std::fabs(line.numbers[i + 1] / 15 - 300 - 0.25 * unit), unit * kPiExact / 2, 1e-6);
        }
    }
    app.Data.SunDir = {0, 0, 1};
    Frame();
    const auto& all = surface.Operations();
    const auto isRow = [](const auto& operation) { return operation.operation == DrawOperation::CoverRow; };
    const auto last = std::find_if(all.rbegin(), all.rend(), isRow);
    ASSERT_NE(last, all.rend());
    EXPECT_EQ(std::count_if(all.rbegin(), last,
                            [](const auto& operation) {
                                return operation.operation == DrawOperation::Line &&
                                       operation.state.ForeColor == kLimbColor;
                            }),
              4);
}

TEST_F(GlobeTest, FlatMapLiesWhereItLayAfterAWholeTurnOfTheCamera) {
    app.Main.CPlaniSphere.Value = true;
    view.ViewLat = -0.5;
    Frame();
    const RecordedOperation before = FillsIn(kSea).at(0);
    view.ViewLat = 2 * kPiExact - 0.5;
    Frame();
    testing::ExpectNumbers(FillsIn(kSea).at(0), before.numbers, 1e-6);
}

TEST_F(GlobeTest, NothingOnTheFlatMapMovesWithAWholeTurnOfTheCamera) {
    app.Main.CPlaniSphere.Value = true;
    app.Main.CHCircle.Value = true;
    app.Data.SunDir = {0.6, 0.64, 0.48};
    view.ZoomFactor = 20;
    const double lats[] = {6 - 2 * kPiExact, 6, 6 - 4 * kPiExact};
    view.ViewLat = lats[0];
    Frame();
    const std::vector<RecordedOperation> before = surface.Operations();
    EXPECT_FALSE(RowsIn(kNight).empty());
    EXPECT_FALSE(Lines().empty());
    for (const double lat : {lats[1], lats[2]}) {
        view.ViewLat = lat;
        Frame();
        ASSERT_EQ(surface.Operations().size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i)
            testing::ExpectNumbers(surface.Operations()[i], before[i].numbers, 1e-6);
    }
}

TEST_F(GlobeTest, SkyAloneShowsNothingOfTheEarthButClearsThePicture) {
    NoteAllStages();
    app.Main.CSkyOnly.Value = true;
    app.Main.CDrawSky.Value = true;
    app.Main.MnuMarkCities.Checked = true;
    Frame();
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Cls).size(), 1U);
    EXPECT_EQ(called.front(), "background");
    EXPECT_TRUE(FillsIn(kSea).empty());
    EXPECT_TRUE(FillsIn(kLand).empty());
    EXPECT_TRUE(FillsIn(kNight).empty());
    EXPECT_TRUE(BorderLines().empty());
    EXPECT_TRUE(GridLines().empty());
    EXPECT_EQ(called, (std::vector<std::string>{"background", "satellites", "stars", "constellations", "pointer"}));
}

TEST_F(GlobeTest, ThreeDimensionsKeepThePictureUnlessTheSkyIsAChart) {
    app.Main.MnuLib3D.Checked = true;
    Frame();
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Cls).empty());
    EXPECT_TRUE(BorderLines().empty());
    app.Main.CSkyOnly.Value = true;
    app.Main.CDrawSky.Value = true;
    Frame();
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Cls).empty());
    app.Main.CFlatSky.Value = true;
    Frame();
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Cls).size(), 1U);
    app.Main.CFlatSky.Value = false;
    app.Main.CReverseSky.Value = true;
    Frame();
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Cls).size(), 1U);
}

TEST_F(GlobeTest, AllStagesInTheirOrder) {
    NoteAllStages();
    app.Data.SatCount = 1;
    app.Main.CDrawSky.Value = true;
    app.Main.MnuMarkCities.Checked = true;
    app.Main.CDrawAries.Value = true;
    app.Main.C2OrbitDetails.Value = true;
    app.Main.CAstroDetails.Value = true;
    Frame();
    EXPECT_EQ(called,
              (std::vector<std::string>{"background", "cities", "site", "sun", "aries", "satellites", "orbit details",
                                        "stars", "constellations", "astro details", "pointer"}));
}

TEST_F(GlobeTest, StagesWaitForTheirOptions) {
    NoteAllStages();
    app.Main.CDrawSun.Value = false;
    app.Main.C2OrbitDetails.Value = true;  // but there is no satellite
    Frame();
    EXPECT_EQ(called, (std::vector<std::string>{"site", "satellites", "pointer"}));
}

TEST_F(GlobeTest, StarsAreDrawnRoundTheShiftedObserver) {
    app.Main.CDrawSky.Value = true;
    view.PanY = -1.3;
    double panOfStars = 0;
    double panOfSatellites = 0;
    stages.stars = [&](const SceneContext& scene) { panOfStars = scene.View().PanY; };
    stages.satellites = [&](const SceneContext& scene) { panOfSatellites = scene.View().PanY; };
    Frame();
    EXPECT_NEAR(panOfStars, -0.3, 1e-12);
    EXPECT_EQ(panOfSatellites, -1.3);
    EXPECT_EQ(view.PanY, -1.3);
    EXPECT_EQ(view.PanStackDepth, 0);
    EXPECT_EQ(view.FramePanY, -1.3);
}

TEST_F(GlobeTest, BrokenCameraIsHeldBeforeAnythingIsDrawn) {
    view.ZoomFactor = std::nan("");
    view.PanX = INFINITY;
    view.ViewLon = std::nan("");
    Frame();
    EXPECT_TRUE(std::isfinite(view.ZoomFactor + view.PanX + view.ViewLon));
    EXPECT_EQ(FillsIn(kSea).size(), 1U);
}

TEST_F(GlobeTest, DrawingNeedsNoNewMemoryInTheSecondPicture) {
    Frame();
    const double* const earth = memory.EarthScratch.data();
    const double* const chain = memory.ChainPoints.data();
    const double* const polygon = memory.Polygon.Exact().data();
    LookAt(40, 130);
    view.ZoomFactor = 3000;
    Frame();
    EXPECT_EQ(memory.EarthScratch.data(), earth);
    EXPECT_EQ(memory.ChainPoints.data(), chain);
    EXPECT_EQ(memory.Polygon.Exact().data(), polygon);
}

TEST_F(GlobeTest, EngineIsToldTheViewInPixels) {
    app.Data.SimTime = 2458139.25;
    view = {.ViewRoll = 0.1, .ViewLat = 0.2, .ViewLon = 0.3, .ZoomFactor = 32, .PanX = 0.4, .PanY = 0.5};
    view.FramePanX = 0.6;
    view.FramePanY = 0.7;
    view.SkyScale = 2;
    app.Main.CPlaniSphere.Value = true;
    app.Main.CDrawBackStars.Value = true;
    app.Main.CStarNames.Value = true;
    GlintViewConfig config{};
    config.MaxStarMag = 6.5;
    config.StarCount = 77;
    SetGLTConfig(scene, config);
    EXPECT_EQ(config.SimTime, 2458139.25);
    EXPECT_EQ(config.ViewRoll, 0.1);
    EXPECT_EQ(config.ViewLat, 0.2);
    EXPECT_EQ(config.ViewLon, 0.3);
    EXPECT_EQ(config.PanX, 0.4);
    EXPECT_EQ(config.PanY, 0.5);
    EXPECT_NEAR(config.ScaleX, 150, 1e-9);  // half of what fills 600 pixels
    EXPECT_NEAR(config.ScaleY, 150, 1e-9);
    EXPECT_EQ(config.HalfWidth, 400);
    EXPECT_EQ(config.HalfHeight, 300);
    EXPECT_EQ(config.FramePanX, 0.6);
    EXPECT_EQ(config.FramePanY, 0.7);
    EXPECT_EQ(config.SkyScale, 2);
    EXPECT_EQ(config.CPlaniSphere, 255);
    EXPECT_EQ(config.CDrawBackStars, 255);
    EXPECT_EQ(config.CStarNames, 255);
    EXPECT_EQ(config.CFlatSky, 0);
    EXPECT_EQ(config.CSkyOnly, 0);
    EXPECT_EQ(config.MaxStarMag, 6.5);
    EXPECT_EQ(config.StarCount, 77);
}

// The geodetic latitude to the geocentric 45 degrees is 45.1924 on the WGS 84 ellipsoid; 50 metres are allowed for the
// height at which the place is taken.
TEST_F(GlobeTest, FloatingSiteFollowsTheCentreOfTheView) {
    app.Main.MnuFloatingSite.Checked = true;
    LookAt(45, -170);
    Frame();
    EXPECT_NEAR(app.Data.Site.SiteLat / kDegree, 45.1924, 5e-4);
    EXPECT_NEAR(app.Data.Site.SiteLon / kDegree, -170, 1e-9);
    EXPECT_EQ(app.Data.Site.SiteAlt, 150);
}

TEST_F(GlobeTest, FloatingSiteStaysWhileTheViewStays) {
    app.Main.MnuFloatingSite.Checked = true;
    LookAt(10, 20);
    Frame();
    SetLocationDegrees(app.Data, 50, 60);
    Frame();
    EXPECT_NEAR(app.Data.Site.SiteLon / kDegree, 60, 1e-9);
    LookAt(10, 21);
    Frame();
    EXPECT_NEAR(app.Data.Site.SiteLon / kDegree, 21, 1e-9);
    app.Main.MnuFloatingSite.Checked = false;
    LookAt(10, 30);
    Frame();
    EXPECT_NEAR(app.Data.Site.SiteLon / kDegree, 21, 1e-9);
    app.Main.MnuFloatingSite.Checked = true;
    Frame();
    EXPECT_NEAR(app.Data.Site.SiteLon / kDegree, 30, 1e-9);
}

}  // namespace
}  // namespace glintara
