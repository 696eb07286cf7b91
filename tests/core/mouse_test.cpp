// Turning, rolling, zooming and shifting with the mouse.

#include <limits>
#include <optional>

#include "scene/mouse_place.h"
#include "support/mouse_fixture.h"

namespace glintara::testing {
namespace {

TEST_F(MouseTest, TheLeftButtonTurnsTheGlobe) {
    Drag(kLeft, 3000, 2000);
    EXPECT_NEAR(view.ViewLon, 0.5, 1e-12);
    EXPECT_NEAR(view.ViewLat, 0.7, 1e-12);
    EXPECT_EQ(view.ViewRoll, 0.1);
    EXPECT_EQ(view.ZoomFactor, 100);
    EXPECT_EQ(view.PanX, 0.3);
    EXPECT_EQ(view.PanY, -0.2);
}

TEST_F(MouseTest, TheRightButtonRollsIt) {
    Drag(kRight, 3000, 2000);
    EXPECT_NEAR(view.ViewRoll, -0.4, 1e-12);
    EXPECT_EQ(view.ViewLon, 1);
    EXPECT_EQ(view.ViewLat, 0.2);
}

TEST_F(MouseTest, TheNearerTheGlobeTheSlowerItTurns) {
    view.ZoomFactor = 400;
    Drag(kLeft, 3000, 0);
    EXPECT_NEAR(view.ViewLon, 1 - 0.125, 1e-12);
}

TEST_F(MouseTest, OnlyTheWayFromTheStartCounts) {
    MoveTo(1000, 1000, kLeft);
    for (int i = 1; i <= 1000; ++i) MoveTo(1000 + i * 7 % 5000, 1000 + i * 13 % 4000, kLeft);
    MoveTo(4000, 3000, kLeft);
    EXPECT_NEAR(view.ViewLon, 0.5, 1e-12);
    EXPECT_NEAR(view.ViewLat, 0.7, 1e-12);
}

TEST_F(MouseTest, WholeUnitsOfThePictureCount) {
    Drag(kLeft, 600.9, -600.9);
    EXPECT_NEAR(view.ViewLon, 1 - 0.1, 1e-12);
    EXPECT_NEAR(view.ViewLat, 0.2 - 0.15, 1e-12);
}

TEST_F(MouseTest, EachMoveAsksForAPictureOfIt) {
    clock.Advance(20);
    pictures.clear();
    Drag(kLeft, 3000, 2000);
    EXPECT_TRUE(pictures.empty()) << "no handler draws";
    EXPECT_NEAR(view.SinLon, std::sin(0.5), 1e-12);
    EXPECT_NEAR(view.CosLat, std::cos(0.7), 1e-12);
    clock.Advance(10);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_NEAR(pictures[0].lon, 0.5, 1e-12);
}

TEST_F(MouseTest, BothButtonsZoom) {
    Drag(kBoth, 900, -250);
    EXPECT_NEAR(view.ZoomFactor, 110, 1e-9);
    EXPECT_EQ(view.ViewLon, 1);
    MoveTo(6000, 4000 + 250, kBoth);
    EXPECT_NEAR(view.ZoomFactor, 97.5, 1e-9) << "a quarter of the speed downwards";
    EXPECT_EQ(view.PanX, 0.3);
}

TEST_F(MouseTest, TheZoomNeverFallsUnderATenth) {
    for (int round = 0; round < 50; ++round) {
        for (const double dy : {4000.0, -4000.0, 2000.0, 4000.0}) {
            Drag(kBoth, 0, dy);
            ASSERT_GE(view.ZoomFactor, 0.1);
            ASSERT_LE(view.ZoomFactor, 5000);
            mouse.Released();
        }
    }
    view.ZoomFactor = 0.11;
    Drag(kBoth, 0, 4000);
    EXPECT_NEAR(view.ZoomFactor, 0.1, 1e-12) << "a tall picture: the factor 1 - 4000 / 4 / 2500 is 0.6";
    mouse.Released();
    mouse.Moved({0, 0, 12000, 80000}, kBoth);
    mouse.Moved({0, 20000, 12000, 80000}, kBoth);
    EXPECT_EQ(view.ZoomFactor, 0.1) << "and a factor below 0 is no zoom at all";
}

TEST_F(MouseTest, TheZoomEndsAtFiveThousand) {
    view.ZoomFactor = 4900;
    Drag(kBoth, 0, -2500);
    EXPECT_EQ(view.ZoomFactor, 5000);
}

TEST_F(MouseTest, ShiftAndAnyButtonMoveThePicture) {
    for (MouseHold hold : {kLeft, kRight, kMiddle, kBoth}) {
        hold.shift = true;
        view.PanX = 0.3;
        view.PanY = -0.2;
        Drag(hold, 500, 250);
        EXPECT_NEAR(view.PanX, 0.4, 1e-12);
        EXPECT_NEAR(view.PanY, -0.25, 1e-12) << "down is down";
        EXPECT_EQ(view.ViewLon, 1);
        EXPECT_EQ(view.ViewRoll, 0.1);
        EXPECT_EQ(view.ZoomFactor, 100);
        mouse.Released();
    }
}

TEST_F(MouseTest, TheMiddleButtonMovesThePictureToo) {
    for (const bool flat : {false, true}) {
        main.CPlaniSphere.Value = flat;
        view.PanX = 0.3;
        view.PanY = -0.2;
        Drag(kMiddle, 500, 250);
        EXPECT_NEAR(view.PanX, 0.4, 1e-12);
        EXPECT_NEAR(view.PanY, -0.25, 1e-12);
        EXPECT_EQ(view.ViewLon, 1);
        EXPECT_EQ(view.ZoomFactor, 100);
        mouse.Released();
    }
}

TEST_F(MouseTest, TheMiddleButtonDoesNotLetASkyWithoutTheEarthJump) {
    main.CDrawSky.Value = main.CSkyOnly.Value = true;
    view.PanX = view.PanY = 0;
    const ScenePoint before = SkyCentre(app);
    Drag(kMiddle, 500, 250);
    EXPECT_NEAR(SkyCentre(app).x - before.x, 0.1, 1e-12);
    EXPECT_NEAR(SkyCentre(app).y - before.y, -0.05, 1e-12);
    mouse.Released();
    view.PanX = view.PanY = 0;
    main.CStarsOnGlobe.Value = true;
    Drag(kMiddle, 500, 250);
    EXPECT_NEAR(view.PanY, -0.05, 1e-12) << "stars on the globe move with it";
}

TEST_F(MouseTest, OnTheFlatMapTheLeftButtonMovesThePicture) {
    main.CPlaniSphere.Value = true;
    Drag(kLeft, 500, 250);
    EXPECT_NEAR(view.PanX, 0.4, 1e-12);
    EXPECT_NEAR(view.PanY, -0.25, 1e-12);
    EXPECT_EQ(view.ViewLon, 1);
    mouse.Released();
    Drag(kBoth, 0, -250);
    EXPECT_NEAR(view.ZoomFactor, 110, 1e-9);
}

TEST_F(MouseTest, OnAFlatMapOfTheSkyTheFirstShiftSetsTheSkysCentre) {
    main.CPlaniSphere.Value = true;
    main.CSkyOnly.Value = true;
    view.PanX = view.PanY = 0;
    Drag(kLeft, 500, 250);
    EXPECT_NEAR(view.PanX, 0.1, 1e-12);
    EXPECT_NEAR(view.PanY, -1.05, 1e-12);
    MoveTo(6000, 4000, kLeft);
    EXPECT_EQ(view.PanX, 0);
    EXPECT_EQ(view.PanY, 0);
    mouse.Released();
    view.PanX = 0.3;
    Drag(kLeft, 500, 250);
    EXPECT_NEAR(view.PanY, -0.05, 1e-12) << "only from the middle";
    mouse.Released();
    main.CSkyOnly.Value = false;
    view.PanX = view.PanY = 0;
    Drag(kLeft, 500, 250);
    EXPECT_NEAR(view.PanY, -0.05, 1e-12) << "and only without the Earth";
}

TEST_F(MouseTest, AFloatingSiteIsMovedSlowly) {
    main.MnuFloatingSite.Checked = true;
    Drag(kLeft, 3000, 2000);
    EXPECT_NEAR(view.ViewLon, 1 - 0.0625, 1e-12);
    EXPECT_NEAR(view.ViewLat, 0.2 + 0.0625, 1e-12);
    mouse.Released();
    main.CPlaniSphere.Value = true;
    Drag(kRight, 3000, 0);
    EXPECT_NEAR(view.ViewRoll, 0.1 - 0.5, 1e-12) << "not on the flat map";
}

TEST_F(MouseTest, ADragThatEndsWhereItBeganLeavesTheViewUnchanged) {
    const CameraView before = Camera();
    for (const bool flat : {false, true}) {
        main.CPlaniSphere.Value = flat;
        for (int mask = 1; mask < 32; ++mask) {
            const MouseHold hold{(mask & 1) != 0, (mask & 2) != 0, (mask & 4) != 0, (mask & 8) != 0, (mask & 16) != 0};
            MoveTo(6000, 4000);
            MoveTo(6000, 4000, hold);
            MoveTo(7234, 2345, hold);
            MoveTo(6000, 4000, hold);
            EXPECT_EQ(Camera(), before) << mask;
            clock.Advance(100);
            mouse.Released();
            EXPECT_EQ(Camera(), before) << mask;
        }
    }
    EXPECT_FALSE(Turns());
}

// In the picture the centre of a shifted sky lies at (PanX, PanY + 1) scene units.
TEST_F(MouseTest, WhatAMaximizedSkyHasAtTheCentreStaysThere) {
    main.CSkyOnly.Value = true;
    main.CMaximizeSky.Value = true;
    Drag(kBoth, 0, 0);
    MoveTo(6000, 4000 - 1250, kBoth);
    ASSERT_NEAR(view.ZoomFactor, 150, 1e-9);
    EXPECT_NEAR(view.SkyScale, 64 / 150.0, 1e-12) << "it still touches the edge";
    EXPECT_NEAR(view.PanX / view.SkyScale, 0.3 / 0.64, 1e-9);
    EXPECT_NEAR((view.PanY + 1) / view.SkyScale, 0.8 / 0.64, 1e-9);
}

TEST_F(MouseTest, WhatASkyOfFixedSizeHasAtTheCentreStaysThere) {
    main.CSkyOnly.Value = true;
    view.SkyScale = 55;
    Drag(kBoth, 0, -1250);
    EXPECT_EQ(view.SkyScale, 55);
    EXPECT_EQ(view.PanX, 0.3);
    EXPECT_EQ(view.PanY, -0.2);
}

TEST_F(MouseTest, AnotherButtonOnTheWayBeginsAnew) {
    Drag(kLeft, 3000, 0);
    MoveTo(9000, 4000, kBoth);
    EXPECT_NEAR(view.ViewLon, 0.5, 1e-12);
    EXPECT_EQ(view.ZoomFactor, 100);
    MoveTo(9000, 3750, kBoth);
    EXPECT_NEAR(view.ZoomFactor, 110, 1e-9);
    EXPECT_NEAR(view.ViewLon, 0.5, 1e-12);
}

TEST_F(MouseTest, AnotherKeyOnTheWayBeginsAnew) {
    for (MouseHold hold : {MouseHold{.left = true, .shift = true}, MouseHold{.left = true, .control = true},
                           MouseHold{.left = true, .alt = true}}) {
        Drag(kLeft, 3000, 0);
        const CameraView turned = Camera();
        MoveTo(9000, 4000, hold);
        EXPECT_EQ(Camera(), turned);
        MoveTo(9000, 4000 - 80, hold);
        EXPECT_EQ(view.ViewLon, turned.ViewLon) << "the turning has ended";
        MoveTo(9000, 4000, kLeft);
        const CameraView changed = Camera();
        MoveTo(9000, 4000, kLeft);
        EXPECT_EQ(Camera(), changed) << "and the next one begins where the mouse is";
        mouse.Released();
    }
}

TEST_F(MouseTest, APictureWithoutSizeIsNoFault) {
    mouse.Moved({0, 0, 0, 0}, kLeft);
    mouse.Moved({5, 5, 0, 0}, kLeft);
    EXPECT_TRUE(std::isfinite(view.ViewLon));
    EXPECT_TRUE(std::isfinite(view.ViewLat));
}

TEST_F(MouseTest, TheWheelZoomsByTenths) {
    Wheel(120);
    EXPECT_NEAR(view.ZoomFactor, 110, 1e-9);
    Wheel(-120);
    EXPECT_NEAR(view.ZoomFactor, 100, 1e-9);
    Wheel(240);
    EXPECT_NEAR(view.ZoomFactor, 121, 1e-9);
    for (int i = 0; i < 100; ++i) Wheel(120);
    EXPECT_EQ(view.ZoomFactor, 5000);
    for (int i = 0; i < 200; ++i) Wheel(-120);
    EXPECT_EQ(view.ZoomFactor, 0.1);
    const CameraView before = Camera();
    Wheel(std::numeric_limits<double>::quiet_NaN(), 7000, 3000);
    Wheel(1e9, 7000, 3000);
    mouse.Pinched({7000, 3000, 12000, 8000}, 0);
    mouse.Pinched({7000, 3000, 12000, 8000}, -2);
    EXPECT_EQ(Camera(), before);
}

TEST_F(MouseTest, TwoFingersZoomByWhatTheyTell) {
    mouse.Pinched({6000, 4000, 12000, 8000}, 1.25);
    EXPECT_NEAR(view.ZoomFactor, 125, 1e-9);
    mouse.Pinched({6000, 4000, 12000, 8000}, 0.5);
    EXPECT_NEAR(view.ZoomFactor, 62.5, 1e-9);
}

/// A scene unit is 6250 twips at zoom 100.
TEST_F(MouseTest, TheWheelLeavesWhatIsUnderTheMouseThere) {
    for (const bool flat : {false, true}) {
        main.CPlaniSphere.Value = flat;
        view.ZoomFactor = 100;
        view.PanX = 0.3;
        view.PanY = -0.2;
        RefreshViewCache(view);
        MoveTo(7000, 3500);
        const std::optional<LatLon> before = EarthAt(app, *MouseOnPicture(app));
        ASSERT_TRUE(before);
        Wheel(120, 7000, 3500);
        EXPECT_NEAR(view.PanX, 0.3 + 1000 / 6875.0 - 1000 / 6250.0, 1e-12);
        EXPECT_NEAR(view.PanY, -0.2 + 500 / 6875.0 - 500 / 6250.0, 1e-12);
        Wheel(-5 * 120, 7000, 3500);
        Wheel(20 * 120, 7000, 3500);
        const std::optional<LatLon> after = EarthAt(app, *MouseOnPicture(app));
        ASSERT_TRUE(after);
        EXPECT_NEAR(after->lat, before->lat, 1e-9);
        EXPECT_NEAR(after->lon, before->lon, 1e-9);
        EXPECT_EQ(view.ViewLon, 1) << "it shifts, it does not turn";
        for (int i = 0; i < 100; ++i) Wheel(120, 7000, 3500);
        ASSERT_EQ(view.ZoomFactor, 5000);
        const std::optional<LatLon> near = EarthAt(app, *MouseOnPicture(app));
        EXPECT_NEAR(near->lat, before->lat, 1e-9) << "at the end of the zoom as well";
    }
}

TEST_F(MouseTest, WithTheSatelliteHeldTheWheelZoomsAboutIt) {
    AddSatellite();
    main.CLockSatellite.Value = true;
    const CameraView before = Camera();
    Wheel(240, 9000, 1000);
    EXPECT_NEAR(view.ZoomFactor, 121, 1e-9);
    EXPECT_EQ(view.PanX, before.PanX);
    EXPECT_EQ(view.PanY, before.PanY);
}

TEST_F(MouseTest, TheWheelLeavesTheSkyUnderTheMouseThere) {
    main.CDrawSky.Value = main.CSkyOnly.Value = main.CDrawFrontStars.Value = true;
    for (const bool chart : {false, true}) {
        main.CFlatSky.Value = chart;
        for (const bool flat : {false, true}) {
            main.CPlaniSphere.Value = flat;
            for (const bool shifted : {false, true}) {
                view.ZoomFactor = 100;
                view.SkyScale = 0.64;
                view.PanX = shifted ? 0.05 : 0;
                view.PanY = shifted ? -0.9 : 0;
                RefreshViewCache(view);
                MoveTo(7000, 3500);
                const std::optional<Vector3> before = SkyAt(app, *MouseOnPicture(app));
                ASSERT_TRUE(before) << chart << flat << shifted;
                for (const double units : {120.0, 600.0, -240.0}) {
                    Wheel(units, 7000, 3500);
                    const std::optional<Vector3> after = SkyAt(app, *MouseOnPicture(app));
                    ASSERT_TRUE(after) << chart << flat << shifted;
                    EXPECT_NEAR(Dot(*after, *before), 1, 1e-12) << chart << flat << shifted;
                }
            }
        }
    }
}

TEST_F(MouseTest, ASkyThatFillsThePictureStaysUnderTheWheel) {
    main.CDrawSky.Value = main.CDrawFrontStars.Value = main.CMaximizeSky.Value = true;
    view.PanX = view.PanY = 0;
    MoveTo(6000, 300);
    ASSERT_FALSE(EarthAt(app, *MouseOnPicture(app)).has_value() && main.CSkyOnly.Value);
    main.CSkyOnly.Value = true;
    Wheel(120, 6000, 300);
    EXPECT_EQ(view.PanX, 0) << "it keeps its size, so nothing has to be shifted";
    EXPECT_EQ(view.PanY, 0);
    view.ZoomFactor = 40;
    main.CSkyOnly.Value = false;
    MoveTo(6000, 300);
    ASSERT_FALSE(EarthAt(app, *MouseOnPicture(app)));
    Wheel(120, 6000, 300);
    EXPECT_EQ(view.PanY, 0) << "the sky beside the Earth is meant";
    Wheel(120, 6000, 3000);
    EXPECT_NE(view.PanY, 0) << "the Earth is meant";
}

TEST_F(MouseTest, AZoomThatIsDraggedGoesOnFromTheWheels) {
    Drag(kBoth, 0, -250);
    Wheel(120, 6000, 3750);
    EXPECT_NEAR(view.ZoomFactor, 121, 1e-9);
    MoveTo(6000, 3750 - 250, kBoth);
    EXPECT_NEAR(view.ZoomFactor, 121 * 1.1, 1e-9);
}

TEST_F(MouseTest, AShiftGoesOnFromTheWheels) {
    Drag(kShiftLeft, 500, 0);
    Wheel(120, 6500, 4000);
    const double panX = view.PanX;
    MoveTo(6500, 4000, kShiftLeft);
    EXPECT_EQ(view.PanX, panX);
    MoveTo(6600, 4000, kShiftLeft);
    EXPECT_NEAR(view.PanX - panX, 100 / view.ZoomFactor / 50, 1e-12);
}

TEST_F(MouseTest, AMaximizedSkyFollowsTheZoom) {
    view.ZoomFactor = 32;
    main.CMaximizeSky.Value = true;
    ASSERT_EQ(view.SkyScale, 2);
    Wheel(120);
    EXPECT_NEAR(view.SkyScale, 2 / 1.1, 1e-9);
    Drag(kBoth, 0, -250);
    EXPECT_NEAR(view.SkyScale, 2 / 1.21, 1e-9);
}

TEST_F(MouseTest, ALockedSkyIsLockedWhereTheMouseHasTurnedIt) {
    main.CLockSky.Value = true;
    Drag(kLeft, 3000, 2000);
    clock.Advance(100);
    mouse.Released();
    clock.Advance(1500);
    EXPECT_NEAR(view.ViewLon, 0.5, 1e-6);
    EXPECT_NEAR(view.ViewLat, 0.7, 1e-9);
}

}  // namespace
}  // namespace glintara::testing
