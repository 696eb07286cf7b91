#include "scene/view_geometry.h"

#include <array>
#include <limits>

#include "engine/astro/constants.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using ViewGeometryTest = SceneFixture;

Vector3 Direction(double lat, double lon) { return LLRToSameXYZ(lat * kDegree, lon * kDegree, 1); }

/// View coordinates by projection on the axes of the screen: where the camera looks, east there, north there; then the
/// roll about the last.
Vector3 Projected(const ViewState& view, const Vector3& point) {
    const Vector3 pole{0, 0, 1};
    Vector3 look = TurnedAboutPole({std::cos(view.ViewLat), 0, std::sin(view.ViewLat)}, view.ViewLon);
    const Vector3 east = TurnedAboutPole({0, 1, 0}, view.ViewLon);
    const Vector3 north = CrossProduct(look, east);
    EXPECT_NEAR(Dot(north, pole), std::cos(view.ViewLat), 1e-12);
    const Vector3 flat{Dot(point, look), Dot(point, east), Dot(point, north)};
    return TurnedAboutPole(flat, -view.ViewRoll);
}

TEST_F(ViewGeometryTest, AtZoom64TheDiscTouchesTheShortSides) {
    LookAt(0, 0);
    SceneCircle(scene, {0, 0}, 1, 0x123456);
    ASSERT_EQ(surface.Operations().size(), 1U);
    ExpectNumbers(surface.Operations()[0], {300, 200, 200});
    EXPECT_EQ(BoxFromSceneY(GetWindowScale(view, surface), view, 1), 0);
    EXPECT_EQ(BoxFromSceneY(GetWindowScale(view, surface), view, -1), 400);
}

TEST_F(ViewGeometryTest, TheScaleOfTheWindow) {
    view.ZoomFactor = 32;
    surface.ScaleWidth = 1000.9;
    surface.ScaleHeight = 2000;
    const WindowScale window = GetWindowScale(view, surface);
    EXPECT_EQ(window.shortSide, 1000);
    EXPECT_EQ(window.sceneWidth, 4);
    EXPECT_EQ(window.scaleX, 250);
    EXPECT_EQ(window.scaleY, 250);
    EXPECT_NEAR(window.halfW, 500.45, 1e-4);
    EXPECT_EQ(window.halfH, 1000);
}

TEST_F(ViewGeometryTest, ABoxWithoutSizeStillHasAScale) {
    surface.ScaleWidth = 0;
    surface.ScaleHeight = 0;
    view.ZoomFactor = 64;
    const WindowScale window = GetWindowScale(view, surface);
    EXPECT_EQ(window.scaleX, 0.5);
    EXPECT_EQ(SceneFromBoxX(window, view, 1), 2);
}

TEST_F(ViewGeometryTest, ThePlaceLookedAtIsInTheMiddleOfTheBox) {
    LookAt(45, 8);
    const Vector3 point = LatLonRadiusToView(view, {45 * kDegree, 8 * kDegree, 1});
    ExpectVector(point, {1, 0, 0});
    const WindowScale window = GetWindowScale(view, surface);
    EXPECT_NEAR(BoxFromSceneX(window, view, point.y), 300, 1e-9);
    EXPECT_NEAR(BoxFromSceneY(window, view, point.z), 200, 1e-9);
}

TEST_F(ViewGeometryTest, EastIsRightAndNorthIsUp) {
    LookAt(0, 100);
    ExpectVector(RotateWorldToView(view, Direction(0, 190)), {0, 1, 0});
    ExpectVector(RotateWorldToView(view, Direction(90, 0)), {0, 0, 1});
    LookAt(90, 0);
    ExpectVector(RotateWorldToView(view, Direction(0, 180)), {0, 0, 1});
}

TEST_F(ViewGeometryTest, TheRollTurnsAboutTheVerticalOfTheScreen) {
    LookAt(30, -70, 25);
    ExpectVector(RotateWorldToView(view, Direction(30, -70)), {std::cos(25 * kDegree), -std::sin(25 * kDegree), 0});
    // The vertical itself, a quarter turn up from the middle over the pole, stays, and with it every height on the
    // screen.
    ExpectVector(RotateWorldToView(view, Direction(60, 110)), {0, 0, 1});
    EXPECT_NEAR(RotateWorldToView(view, Direction(90, 0)).z, std::cos(30 * kDegree), 1e-12);
}

TEST_F(ViewGeometryTest, RotationIsProjectionOnTheAxesOfTheScreen) {
    Dice dice;
    for (int i = 0; i < 500; ++i) {
        dice.Camera(view);
        const Vector3 point = dice.Point();
        ExpectVector(RotateWorldToView(view, point), Projected(view, point), 1e-11);
    }
}

TEST_F(ViewGeometryTest, BackToTheWorld) {
    Dice dice;
    for (int i = 0; i < 500; ++i) {
        dice.Camera(view);
        const Vector3 point = dice.Point();
        ExpectVector(RotateViewToWorld(view, RotateWorldToView(view, point)), point, 1e-12);
        ExpectVector(RotateWorldToView(view, RotateViewToWorld(view, point)), point, 1e-12);
    }
}

TEST_F(ViewGeometryTest, APlaceAtARadius) {
    LookAt(0, 10);
    ExpectVector(LatLonRadiusToView(view, {0, 100 * kDegree, 4.2}), {0, 4.2, 0});
    ExpectVector(LatLonRadiusToView(view, {-90 * kDegree, 0, 0.5}), {0, 0, -0.5});
}

TEST_F(ViewGeometryTest, AnglesAsSeenOnViewAxes) {
    LookAt(0, 40);
    const LatLonRadius right = ViewXYZToLatLon(view, 2 * Direction(10, 60));
    EXPECT_NEAR(right.lat, 10 * kDegree, 1e-12);
    EXPECT_NEAR(right.lon, 20 * kDegree, 1e-12);
    EXPECT_NEAR(right.radius, 2, 1e-12);
    const LatLonRadius behind = ViewXYZToLatLon(view, Direction(0, 190));
    EXPECT_NEAR(behind.lon, 150 * kDegree, 1e-12);
    const LatLonRadius behindLeft = ViewXYZToLatLon(view, Direction(0, -110));
    EXPECT_NEAR(behindLeft.lon, 210 * kDegree, 1e-12);
    LookAt(90, 40);
    EXPECT_NEAR(ViewXYZToLatLon(view, Direction(90, 0)).lat, 0, 1e-12);
}

TEST_F(ViewGeometryTest, TheAntipodeIsHiddenWhateverThePan) {
    LookAt(45, 8);
    const Vector3 antipode = LatLonRadiusToView(view, {-45 * kDegree, 188 * kDegree, 1});
    ExpectVector(antipode, {-1, 0, 0});
    EXPECT_TRUE(IsHidden(view, antipode));
    view.PanX = 2;
    TakeFramePan(view);
    EXPECT_TRUE(IsHidden(view, antipode));
}

TEST_F(ViewGeometryTest, OnlyWhatIsBehindAndInsideTheDiscIsHidden) {
    LookAt(0, 0);
    EXPECT_TRUE(IsHidden(view, {-1e-9, 0.6, 0.79}));
    EXPECT_FALSE(IsHidden(view, {0, 0.6, 0.79}));
    EXPECT_FALSE(IsHidden(view, {1, 0, 0}));
    EXPECT_FALSE(IsHidden(view, {-1, 0, 1})) << "the limb is seen";
    EXPECT_FALSE(IsHidden(view, {-1, -1, 0}));
    EXPECT_TRUE(IsHidden(view, {-40, 0.9, 0}));
    EXPECT_FALSE(IsHidden(view, {-40, 1.1, 0}));
    EXPECT_TRUE(IsHidden(view, {-0.2, 0, 0})) << "inside the Earth, behind its middle";
    EXPECT_FALSE(IsHidden(view, {0.2, 0, 0})) << "inside the Earth, before its middle";
}

TEST_F(ViewGeometryTest, InASkyStageTheDiscHidesWhatItCoversOnTheScreen) {
    LookAt(0, 0);
    Pan(0.4, -1.3);
    TakeFramePan(view);
    const WindowScale window = GetWindowScale(view, surface);
    const double discX = BoxFromSceneX(window, view, 0);
    const double discY = BoxFromSceneY(window, view, 0);
    PushSkyPan(scene);
    view.PanX += 0.3;
    Dice dice;
    int hidden = 0;
    for (int i = 0; i < 2000; ++i) {
        const Vector3 star{-1, dice.Between(-2, 2), dice.Between(-3, 2)};
        const double x = BoxFromSceneX(window, view, star.y);
        const double y = BoxFromSceneY(window, view, star.z);
        const bool covered = std::hypot(x - discX, y - discY) < 200;
        EXPECT_EQ(IsHidden(view, star), covered) << star.y << ' ' << star.z;
        hidden += covered ? 1 : 0;
    }
    EXPECT_GT(hidden, 100);
}

TEST_F(ViewGeometryTest, TheSkyStagesOfAHorizonViewStandOnTopOfTheDisc) {
    Pan(0.25, -1.3);
    TakeFramePan(view);
    PushSkyPan(scene);
    EXPECT_EQ(view.PanX, 0.25);
    EXPECT_NEAR(view.PanY, -0.3, 1e-15);
    PopSkyPan(scene);
    EXPECT_EQ(view.PanX, 0.25);
    EXPECT_EQ(view.PanY, -1.3);
}

TEST_F(ViewGeometryTest, NestedSkyStagesShiftOnce) {
    Pan(0, -1.3);
    TakeFramePan(view);
    for (int depth = 0; depth < 40; ++depth) {
        PushSkyPan(scene);
        EXPECT_NEAR(view.PanY, -0.3, 1e-15);
    }
    for (int depth = 0; depth < 40; ++depth) PopSkyPan(scene);
    EXPECT_EQ(view.PanY, -1.3);
    EXPECT_EQ(view.PanStackDepth, 0);
    PopSkyPan(scene);
    EXPECT_EQ(view.PanY, -1.3);
    EXPECT_EQ(view.PanStackDepth, 0);
}

TEST_F(ViewGeometryTest, WithoutAShiftOrWithStarsOnTheGlobeTheSkyStays) {
    TakeFramePan(view);
    PushSkyPan(scene);
    EXPECT_EQ(view.PanY, 0);
    PopSkyPan(scene);

    Pan(0, -1.3);
    TakeFramePan(view);
    app.Main.CStarsOnGlobe.Value = true;
    PushSkyPan(scene);
    EXPECT_EQ(view.PanY, -1.3);
    PopSkyPan(scene);
    EXPECT_EQ(view.PanY, -1.3);
    EXPECT_EQ(view.PanStackDepth, 0);
}

TEST_F(ViewGeometryTest, PlacesOnTheFlatMap) {
    LookAt(0, 0);
    const ScenePoint sydney = FlatMapPosition(view, {-33.9 * kDegree, 151.2 * kDegree});
    EXPECT_NEAR(sydney.x, 151.2 * kDegree, 1e-12);
    EXPECT_NEAR(sydney.y, -33.9 * kDegree, 1e-12);
    LookAt(10, -100);
    const ScenePoint shifted = FlatMapPosition(view, {-33.9 * kDegree, 151.2 * kDegree});
    EXPECT_NEAR(shifted.x, -108.8 * kDegree, 1e-12) << "251.2 degrees east is 108.8 west";
    EXPECT_NEAR(shifted.y, -43.9 * kDegree, 1e-12);
    EXPECT_NEAR(FlatMapPosition(view, {0, 1000 * kDegree}).x, 20 * kDegree, 1e-11);
}

TEST_F(ViewGeometryTest, TheFrameOfTheFlatMap) {
    LookAt(20, 77);
    EXPECT_NEAR(FlatMapFramePoint(view, -1, 1).x, -kPiExact, 1e-12);
    EXPECT_NEAR(FlatMapFramePoint(view, -1, 1).y, 70 * kDegree, 1e-12);
    EXPECT_NEAR(FlatMapFramePoint(view, 1, -1).x, kPiExact, 1e-12);
    EXPECT_NEAR(FlatMapFramePoint(view, 1, -1).y, -110 * kDegree, 1e-12);
    // The pole is on the frame's edge.
    EXPECT_NEAR(FlatMapPosition(view, {90 * kDegree, 0}).y, FlatMapFramePoint(view, 0, 1).y, 1e-12);
}

TEST_F(ViewGeometryTest, WholeTurnsOfTheCameraDoNotMoveTheFlatMap) {
    // 6 is 0.2831853 short of a turn, so the equator lies that much above the middle; -6 puts it as much below.
    for (const double side : {1.0, -1.0}) {
        view.ViewLat = side * 6;
        EXPECT_NEAR(FlatMapFramePoint(view, 0, 0).y, side * 0.28318530717958648, 1e-12);
        EXPECT_NEAR(FlatMapFramePoint(view, -1, side).y, side * 1.85398163397448310, 1e-12);
        EXPECT_NEAR(FlatMapFramePoint(view, 1, -side).y, side * -1.28761101961531014, 1e-12);
        // What lies on the map lies in its frame.
        for (const double lat : {-90.0, -45.0, 0.0, 45.0, 90.0})
            EXPECT_NEAR(FlatMapPosition(view, {lat * kDegree, 0}).y, FlatMapFramePoint(view, 0, lat / 90).y, 1e-12);
    }
}

TEST_F(ViewGeometryTest, EveryPlaceLiesInTheFrameOfTheFlatMap) {
    Dice dice;
    for (int i = 0; i < 500; ++i) {
        view.ViewLat = i < 2 ? (i == 0 ? kPiExact : -kPiExact) : dice.Between(-20, 20);
        view.ViewLon = dice.Between(-20, 20);
        const double lat = dice.Between(-90, 90);
        const ScenePoint place = FlatMapPosition(view, {lat * kDegree, dice.Between(-10, 10)});
        EXPECT_NEAR(place.y, FlatMapFramePoint(view, 0, lat / 90).y, 1e-12);
        EXPECT_LE(std::fabs(place.x), kPiExact);
        EXPECT_LE(std::fabs(FlatMapFramePoint(view, 0, 0).y), kPiExact) << "the equator is the nearest of its turns";
    }
}

TEST_F(ViewGeometryTest, SplitAtTheSeam) {
    const ScenePoint a{178 * kDegree, 10 * kDegree};
    const ScenePoint b{-179 * kDegree, 16 * kDegree};
    ASSERT_TRUE(CrossesSeam(a, b));
    const SeamCrossing seam = SplitAtSeam(a, b);
    EXPECT_NEAR(seam.leaves.x, 3.15730061685774, 1e-12);
    EXPECT_NEAR(seam.returns.x, -3.15730061685774, 1e-12);
    EXPECT_NEAR(seam.leaves.y, 14 * kDegree, 1e-12) << "the seam is two thirds of the way from 178 to 181 degrees";
    EXPECT_NEAR(seam.returns.y, 14 * kDegree, 1e-12);
    const SeamCrossing back = SplitAtSeam(b, a);
    EXPECT_NEAR(back.leaves.x, -3.15730061685774, 1e-12);
    EXPECT_NEAR(back.leaves.y, 14 * kDegree, 1e-12);
    EXPECT_FALSE(CrossesSeam({-89 * kDegree, 0}, {90 * kDegree, 0}));
    EXPECT_FALSE(CrossesSeam({178 * kDegree, 0}, {179 * kDegree, 0}));
}

TEST_F(ViewGeometryTest, BothEndsOnTheSeamItself) {
    const SeamCrossing seam = SplitAtSeam({kPi, 0.5}, {-kPi, 0.7});
    EXPECT_GE(seam.leaves.y, 0.5);
    EXPECT_LE(seam.leaves.y, 0.7);
}

TEST_F(ViewGeometryTest, MappersAndTheirInverses) {
    Dice dice;
    for (int i = 0; i < 500; ++i) {
        dice.Camera(view);
        surface.ScaleWidth = dice.Between(1000, 60000);
        surface.ScaleHeight = dice.Between(1000, 40000);
        const WindowScale window = GetWindowScale(view, surface);
        const double x = dice.Between(-5, 5);
        const double y = dice.Between(-5, 5);
        EXPECT_NEAR(SceneFromBoxX(window, view, BoxFromSceneX(window, view, x)), x, 1e-9);
        EXPECT_NEAR(SceneFromBoxY(window, view, BoxFromSceneY(window, view, y)), y, 1e-9);
    }
    LookAt(0, 0);
    Pan(0.5, 0.25);
    surface.ScaleWidth = 600;
    surface.ScaleHeight = 400;
    const WindowScale window = GetWindowScale(view, surface);
    EXPECT_EQ(BoxFromSceneX(window, view, 0.5), 500);
    EXPECT_EQ(BoxFromSceneY(window, view, 0.5), 50);
    EXPECT_EQ(SceneFromBoxX(window, view, 500), 0.5);
    EXPECT_EQ(SceneFromBoxY(window, view, 50), 0.5);
}

TEST_F(ViewGeometryTest, TheCacheFollowsTheCameraOnlyWhenTold) {
    LookAt(0, 0);
    view.ViewLon = 90 * kDegree;
    ExpectVector(RotateWorldToView(view, {1, 0, 0}), {1, 0, 0});
    RefreshViewCache(view);
    ExpectVector(RotateWorldToView(view, {1, 0, 0}), {0, -1, 0});
}

TEST_F(ViewGeometryTest, TheCameraIsHeldWithinWhatCanBeDrawn) {
    view.ZoomFactor = 0;
    HoldView(view);
    EXPECT_EQ(view.ZoomFactor, 0.1);
    view.ZoomFactor = -kInfinity;
    HoldView(view);
    EXPECT_EQ(view.ZoomFactor, 0.1);
    view.ZoomFactor = 1e9;
    HoldView(view);
    EXPECT_EQ(view.ZoomFactor, 5000);
    view.ZoomFactor = kNaN;
    HoldView(view);
    EXPECT_EQ(view.ZoomFactor, 16);

    view.ViewLat = kNaN;
    view.ViewLon = kInfinity;
    view.ViewRoll = -kInfinity;
    view.PanX = kNaN;
    view.PanY = 1e300;
    HoldView(view);
    EXPECT_EQ(view.ViewLat, 0);
    EXPECT_EQ(view.ViewLon, 0);
    EXPECT_EQ(view.ViewRoll, 0);
    EXPECT_EQ(view.PanX, 0);
    EXPECT_EQ(view.PanY, 1e6);

    for (const double none : {0.0, -7.0, kNaN, kInfinity}) {
        view.SkyScale = view.SkyScaleSaved = none;
        HoldView(view);
        EXPECT_EQ(view.SkyScale, 55) << none;
        EXPECT_EQ(view.SkyScaleSaved, 55) << none;
    }
}

TEST_F(ViewGeometryTest, AHeldCameraIsLeftAlone) {
    view.ZoomFactor = 29;
    view.ViewLat = -1.2;
    view.ViewLon = 40;
    view.ViewRoll = 0.3;
    view.PanX = -1.3;
    view.PanY = 7;
    view.SkyScale = 1.5;
    view.SkyScaleSaved = 0.25;
    HoldView(view);
    EXPECT_EQ(view.SkyScale, 1.5);
    EXPECT_EQ(view.SkyScaleSaved, 0.25);
    EXPECT_EQ(view.ZoomFactor, 29);
    EXPECT_EQ(view.ViewLat, -1.2);
    EXPECT_EQ(view.ViewLon, 40);
    EXPECT_EQ(view.ViewRoll, 0.3);
    EXPECT_EQ(view.PanX, -1.3);
    EXPECT_EQ(view.PanY, 7);
}

TEST_F(ViewGeometryTest, PlacesOfTheGlobeAreFoundAgain) {
    Dice dice;
    for (int round = 0; round < 1000; ++round) {
        dice.Camera(view);
        const double lat = dice.Between(-1.57, 1.57);
        const double lon = dice.Between(-kPiExact, kPiExact);
        const Vector3 seen = LatLonRadiusToView(view, {lat, lon, 1});
        if (seen.x < 0.01) continue;
        const auto place = EarthPlaceAt(view, false, {seen.y, seen.z});
        ASSERT_TRUE(place);
        EXPECT_NEAR(place->lat, lat, 1e-9);
        EXPECT_NEAR(std::remainder(place->lon - lon, 2 * kPiExact), 0, 1e-9 / std::cos(lat));
        EXPECT_LE(std::fabs(place->lon), kPiExact);
    }
}

TEST_F(ViewGeometryTest, PlacesOfTheFlatMapAreFoundAgain) {
    Dice dice;
    for (int round = 0; round < 1000; ++round) {
        dice.Camera(view);
        const LatLon place{dice.Between(-1.57, 1.57), dice.Between(-kPiExact, kPiExact)};
        const auto found = EarthPlaceAt(view, true, FlatMapPosition(view, place));
        ASSERT_TRUE(found);
        EXPECT_NEAR(found->lat, place.lat, 1e-9);
        EXPECT_NEAR(std::remainder(found->lon - place.lon, 2 * kPiExact), 0, 1e-9);
    }
}

TEST_F(ViewGeometryTest, ThereIsNoPlaceOffTheEarth) {
    LookAt(10, 20);
    EXPECT_FALSE(EarthPlaceAt(view, false, {0.6, 0.8}));
    EXPECT_FALSE(EarthPlaceAt(view, false, {0, -1.1}));
    EXPECT_FALSE(EarthPlaceAt(view, false, {kNaN, 0}));
    // The pole lies 80 degrees above the middle of the map, the other one 100 below.
    EXPECT_TRUE(EarthPlaceAt(view, true, {3.14, 79 * kDegree}));
    EXPECT_TRUE(EarthPlaceAt(view, true, {-3.14, -99 * kDegree}));
    EXPECT_FALSE(EarthPlaceAt(view, true, {0, 81 * kDegree}));
    EXPECT_FALSE(EarthPlaceAt(view, true, {0, -101 * kDegree}));
    EXPECT_FALSE(EarthPlaceAt(view, true, {3.15, 0}));
    EXPECT_FALSE(EarthPlaceAt(view, true, {-3.15, 0}));
    EXPECT_FALSE(EarthPlaceAt(view, true, {0, kNaN}));
}

TEST_F(ViewGeometryTest, LinesAndCirclesInTheBox) {
    LookAt(0, 0);
    Pan(0.5, 0);
    surface.ForeColor = 0x202020;
    SceneLine(scene, {-1, 1}, {1, -0.5});
    SceneCircle(scene, {0, 0.5}, 0.1, 0x80FF);
    SceneLine(scene, {0, 0}, {0, 1});
    ASSERT_EQ(surface.Operations().size(), 3U);
    ExpectNumbers(surface.Operations()[0], {200, 0, 600, 300});
    ExpectNumbers(surface.Operations()[1], {400, 100, 20});
    EXPECT_EQ(surface.Operations()[0].state.ForeColor, 0x202020U);
    EXPECT_EQ(surface.Operations()[1].state.ForeColor, 0x80FFU);
    EXPECT_EQ(surface.Operations()[2].state.ForeColor, 0x202020U) << "a circle's colour is its own";
}

TEST_F(ViewGeometryTest, WhatIsNotFiniteIsNotDrawn) {
    LookAt(0, 0);
    SceneLine(scene, {kNaN, 0}, {0, 0});
    SceneLine(scene, {0, 0}, {0, kInfinity});
    SceneCircle(scene, {0, 0}, kNaN, 0);
    SceneCircle(scene, {0, kNaN}, 1, 0);
    PolygonVertex(scene, {kInfinity, 0});
    EXPECT_TRUE(surface.Operations().empty()) << surface.Text();
    EXPECT_EQ(polygon.Count(), 0U);
}

TEST_F(ViewGeometryTest, PolygonVerticesAreCutToWholePixels) {
    LookAt(0, 0);
    // 300 + 200 * 0.1 = 320 twips are 21.33 pixels, 200 - 200 * 0.3 = 140 twips are 9.33.
    PolygonVertex(scene, {0.1, 0.3});
    // -100 twips are -6.67 pixels.
    PolygonVertex(scene, {-2, 1.5});
    ASSERT_EQ(polygon.Count(), 2U);
    EXPECT_EQ(polygon.Vertices()[0], (PixelVertex{21, 9}));
    EXPECT_EQ(polygon.Vertices()[1], (PixelVertex{-6, -6}));
    ASSERT_EQ(polygon.Exact().size(), 4U);
    EXPECT_NEAR(polygon.Exact()[0], 64 / 3.0, 1e-12);
    EXPECT_NEAR(polygon.Exact()[1], 28 / 3.0, 1e-12);
    EXPECT_NEAR(polygon.Exact()[2], -20 / 3.0, 1e-12);
    polygon.Clear();
    EXPECT_EQ(polygon.Count(), 0U);
    EXPECT_TRUE(polygon.Exact().empty());
}

TEST_F(ViewGeometryTest, TheTwoDirectionsHaveTheirOwnPixels) {
    LookAt(0, 0);
    surface.TwipsPerPixelX = 10;
    surface.TwipsPerPixelY = 20;
    PolygonVertex(scene, {0, 0});
    EXPECT_EQ(polygon.Vertices()[0], (PixelVertex{30, 10}));
}

TEST_F(ViewGeometryTest, APolygonBufferTakesItsMemoryOnce) {
    PolygonBuffer small(3);
    small.Add(1, 2);
    const PixelVertex* first = small.Vertices().data();
    small.Add(3e300, -3e300);
    small.Add(5, 6);
    small.Add(7, 8);
    EXPECT_EQ(small.Count(), 3U);
    EXPECT_EQ(small.Exact().size(), 6U);
    EXPECT_EQ(small.Vertices().data(), first);
    EXPECT_GT(small.Vertices()[1].x, 1000000000);
    EXPECT_LT(small.Vertices()[1].y, -1000000000);
    EXPECT_EQ(small.Vertices()[2], (PixelVertex{5, 6}));
}

}  // namespace
}  // namespace glintara::testing
