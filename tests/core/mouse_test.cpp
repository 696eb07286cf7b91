#include "core/mouse.h"

#include <limits>

#include "core/panels.h"
#include "core/program_fixture.h"
#include "engine/astro/sidereal.h"
#include "scene/orientation.h"
#include "scene/star_list.h"
#include "scene/star_places.h"
#include "scene/view_geometry.h"

namespace glintara::testing {
namespace {

constexpr MouseHold kNone{};
constexpr MouseHold kLeft{.left = true};
constexpr MouseHold kRight{.right = true};
constexpr MouseHold kMiddle{.middle = true};
constexpr MouseHold kBoth{.left = true, .right = true};
constexpr MouseHold kShiftLeft{.left = true, .shift = true};

/// A picture of 12000 x 8000 twips at zoom 100: dragging across the whole of it turns by 2 radians.
struct MouseTest : ProgramTest {
    MouseTest() {
        app.Main.CRealTime.Value = false;
        RunAtOnce();
        app.Run.AutoTurn = 1;  // the opening is over
        view.ViewLat = 0.2;
        view.ViewLon = 1;
        view.ViewRoll = 0.1;
        view.ZoomFactor = 100;
        view.PanX = 0.3;
        view.PanY = -0.2;
    }

    void MoveTo(double x, double y, const MouseHold& hold = kNone) { mouse.Moved({x, y, 12000, 8000}, hold); }

    /// A drag from the middle of the picture, not released.
    void Drag(const MouseHold& hold, double dx, double dy) {
        MoveTo(6000, 4000);
        MoveTo(6000, 4000, hold);
        MoveTo(6000 + dx, 4000 + dy, hold);
    }

    /// Drags to the left for 100 ms, by 0.02 radians each 10 ms, and leaves the button down.
    void Swing() {
        MoveTo(6000, 4000);
        MoveTo(6000, 4000, kLeft);
        for (int i = 1; i <= 10; ++i) {
            clock.Advance(10);
            MoveTo(6000 - 120 * i, 4000, kLeft);
        }
    }

    CameraView Camera() const { return CaptureCamera(app.Data.View); }
    bool Turns() const { return app.Main.TimerHRot.Enabled; }

    ViewState& view = app.Data.View;
    MainControls& main = app.Main;
    MouseSteering mouse{app, program.Loop,
                        [this] { return MouseSteering::Clock::time_point(std::chrono::milliseconds(clock.NowMs())); }};
};

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

TEST_F(MouseTest, TheMiddleButtonAloneLeavesTheViewAlone) {
    for (const bool flat : {false, true}) {
        main.CPlaniSphere.Value = flat;
        const CameraView before = Camera();
        Drag(kMiddle, 500, 250);
        EXPECT_EQ(Camera(), before);
        mouse.Released();
    }
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

/// A star under the middle of a picture of the sky alone.
struct MouseSkyTest : MouseTest {
    MouseSkyTest() {
        main.CSkyOnly.Value = main.CDrawFrontStars.Value = true;
        main.CDrawSky.Value = true;
        view.PanX = view.PanY = view.ViewRoll = 0;
        view.SkyScale = 0.64;
        RefreshViewCache(view);
        StarRecord star;
        star.ProperName = "Vega";
        star.Magnitude = 0.03;
        star.Declination = 0.2;
        star.RightAscension = 1 + SiderealFromDate(app.Data.SimFields());
        TakeStars(app.Data.Stars, {{}, star});
        RebuildStarList(app.Data.Stars, 11);
    }
};

TEST_F(MouseTest, LStatusTellsWhatLiesUnderTheMouse) {
    view.PanX = view.PanY = view.ViewRoll = 0;
    view.ViewLat = 0;
    view.ViewLon = 1;
    RefreshViewCache(view);
    MoveTo(6000, 4000);
    EXPECT_EQ(main.LStatus.Caption.Get().find("EARTH: Latitude= 0° N,  N,  Longitude= 57.2958° E, RA= "), 0U)
        << main.LStatus.Caption.Get();
    MoveTo(11999, 4000);
    EXPECT_EQ(main.LStatus.Caption.Get().find("EARTH: "), 0U);
    MoveTo(6000, 0);
    EXPECT_EQ(main.LStatus.Caption.Get().find("EARTH: "), 0U);
    view.ZoomFactor = 16;
    MoveTo(11999, 4000);
    EXPECT_EQ(main.LStatus.Caption.Get(), "SPACE");
}

TEST_F(MouseTest, AtTheEndOfEachPictureTheTextIsThatOfThePicture) {
    view.PanX = view.PanY = view.ViewRoll = view.ViewLat = 0;
    RefreshViewCache(view);
    MoveTo(6000, 4000);
    view.ViewLon = 2;
    RefreshViewCache(view);
    program.Loop.MakePicture();
    EXPECT_NE(main.LStatus.Caption.Get().find("Longitude= 114.5916° E"), std::string::npos)
        << main.LStatus.Caption.Get();
}

TEST_F(MouseTest, ADragWithControlChangesThePointersFieldAndLeavesTheViewAlone) {
    const CameraView before = Camera();
    Drag({.left = true, .control = true}, 3000, -80);
    EXPECT_EQ(Camera(), before);
    EXPECT_NEAR(app.Run.SkyPointer.FieldOfView, 0.5 * kDegree + 0.02, 1e-12) << "a hundredth of two radians";
    EXPECT_NE(main.LSkyMouseFOV.Caption.Get(), "");
    MoveTo(6000, 8000, {.left = true, .control = true});
    EXPECT_NEAR(app.Run.SkyPointer.FieldOfView, kDegree / 3600, 1e-12);
    mouse.Released();
    EXPECT_FALSE(main.TimerSkyFine.Enabled);
}

TEST_F(MouseTest, ADragWithAltChangesThePointersTimeAndLeavesTheViewAlone) {
    const CameraView before = Camera();
    Drag({.left = true, .alt = true}, 3000, -800);
    EXPECT_EQ(Camera(), before);
    EXPECT_NEAR(app.Run.SkyPointer.TimeUncertainty, 0.5 * (1 + 0.1 * 4 * 0.4), 1e-12);
    EXPECT_EQ(main.LSkyMouseTAcc.Caption.Get(), "TACC: 0.58 s");
    MoveTo(6000, 4000 + 3999, {.left = true, .alt = true});
    EXPECT_NEAR(app.Run.SkyPointer.TimeUncertainty, 0.5 * (1 - 3999 / 8000.0 * 1.6), 1e-12);
    mouse.Released();
    for (int i = 0; i < 10; ++i) {
        Drag({.left = true, .alt = true}, 0, 3999);
        mouse.Released();
    }
    EXPECT_EQ(app.Run.SkyPointer.TimeUncertainty, 0.001);
}

TEST_F(MouseTest, ADoubleClickWithAltShowsTheSkyPointerAndHidesIt) {
    mouse.DoubleClicked({.alt = true});
    EXPECT_TRUE(main.FSkyMouse.Visible);
    EXPECT_TRUE(main.Timer2.Enabled) << "a picture is asked for";
    app.Observations.CEnDisPointer.Click();
    EXPECT_FALSE(main.FSkyMouse.Visible);
    EXPECT_FALSE(app.Run.PanelsHidden);
}

TEST_F(MouseTest, WhileThePointerIsShownAMoveAsksForAPicture) {
    MoveTo(100, 100);
    clock.Advance(20);
    MoveTo(200, 100);
    EXPECT_FALSE(main.Timer2.Enabled);
    mouse.DoubleClicked({.alt = true});
    clock.Advance(20);
    MoveTo(300, 100);
    EXPECT_TRUE(main.Timer2.Enabled);
}

TEST_F(MouseSkyTest, AClickWithControlChoosesAStar) {
    const MouseHold hold{.left = true, .control = true};
    MoveTo(7000, 4000);
    MoveTo(7000, 4000, hold);
    main.TimerHRot.Restart(20);
    EXPECT_EQ(app.Run.Finder.SelectedStar, 0) << "not before the release";
    mouse.Released();
    EXPECT_EQ(app.Run.Finder.SelectedStar, 1);
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Vega");
    EXPECT_FALSE(Turns());
}

TEST_F(MouseSkyTest, NothingElseChoosesAStar) {
    MoveTo(6000, 4000);
    MoveTo(6000, 4000, kLeft);
    mouse.Released();
    Drag({.left = true, .control = true}, 100, 0);
    MoveTo(6000, 4000, {.left = true, .control = true});
    mouse.Released();
    EXPECT_EQ(app.Run.Finder.SelectedStar, 0) << "neither a click without Control nor a drag with it";
    main.CDrawSky.Value = false;
    MoveTo(6000, 4000, {.left = true, .control = true});
    mouse.Released();
    EXPECT_EQ(app.Run.Finder.SelectedStar, 0);
}

TEST_F(MouseSkyTest, ADoubleClickWithControlDefinesAnObservation) {
    MoveTo(6000, 4000);
    mouse.DoubleClicked({.left = true, .control = true});
    ASSERT_EQ(app.Observations.LIOD.Lines.Get().size(), 1U);
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), app.Observations.LIOD.Lines.Get()[0]);
    EXPECT_NEAR(app.Observations.Point.Declination, 0.2, 0.002) << "precession since 2000 apart";
    MoveTo(6000, 100);
    main.CDrawSky.Value = false;
    mouse.DoubleClicked({.left = true, .control = true});
    EXPECT_EQ(app.Observations.LIOD.Lines.Get().size(), 1U) << "there is no sky";
    EXPECT_FALSE(app.Run.PanelsHidden);
}

TEST_F(MouseTest, ADoubleClickOnASatelliteLetsItWork) {
    AddSatellite();
    AddSatellite();
    app.Run.Finder.Add({0.1, 0, 1});
    const double unit = 4000 * 100 / 64.0;
    MoveTo(6000 + 0.1 * unit, 4000 + 1.4 / 100 * unit);
    mouse.DoubleClicked(kNone);
    EXPECT_EQ(app.Data.Satellite(2).OrbitNumber, 1);
    EXPECT_FALSE(app.Run.PanelsHidden);
    MoveTo(6000 + 0.1 * unit, 4000 + 1.6 / 100 * unit);
    mouse.DoubleClicked(kNone);
    EXPECT_TRUE(app.Run.PanelsHidden);
}

TEST_F(MouseSkyTest, TheBoxShowsOncePerRestAndStaysUntilTheMouseMoves) {
    MoveTo(5900, 4000);
    MoveTo(6000, 4000);
    clock.Advance(1999);
    EXPECT_FALSE(main.LFInfo.Visible);
    clock.Advance(1);
    EXPECT_TRUE(main.LFInfo.Visible);
    EXPECT_EQ(main.LFInfo.Caption.Get().find("SELECTED STAR #1\n (Vega)\n"), 0U);
    clock.Advance(60000);
    EXPECT_TRUE(main.LFInfo.Visible) << "as long as the mouse rests";
    main.LFInfo.Visible = false;
    clock.Advance(60000);
    EXPECT_FALSE(main.LFInfo.Visible) << "once";
    main.LFInfo.Visible = true;
    MoveTo(6015, 4000);
    clock.Advance(999);
    EXPECT_TRUE(main.LFInfo.Visible);
    clock.Advance(1);
    EXPECT_FALSE(main.LFInfo.Visible);
    clock.Advance(1000);
    EXPECT_TRUE(main.LFInfo.Visible) << "the next rest";
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

TEST_F(MouseTest, APictureWithoutSizeIsNoFault) {
    mouse.Moved({0, 0, 0, 0}, kLeft);
    mouse.Moved({5, 5, 0, 0}, kLeft);
    EXPECT_TRUE(std::isfinite(view.ViewLon));
    EXPECT_TRUE(std::isfinite(view.ViewLat));
}

TEST_F(MouseTest, TheWheelZoomsByTenths) {
    mouse.Wheel(120);
    EXPECT_NEAR(view.ZoomFactor, 110, 1e-9);
    mouse.Wheel(-120);
    EXPECT_NEAR(view.ZoomFactor, 100, 1e-9);
    mouse.Wheel(240);
    EXPECT_NEAR(view.ZoomFactor, 121, 1e-9);
    for (int i = 0; i < 100; ++i) mouse.Wheel(120);
    EXPECT_EQ(view.ZoomFactor, 5000);
    for (int i = 0; i < 200; ++i) mouse.Wheel(-120);
    EXPECT_EQ(view.ZoomFactor, 0.1);
    mouse.Wheel(std::numeric_limits<double>::quiet_NaN());
    mouse.Wheel(1e9);
    EXPECT_EQ(view.ZoomFactor, 0.1);
}

TEST_F(MouseTest, AZoomThatIsDraggedGoesOnFromTheWheels) {
    Drag(kBoth, 0, -250);
    mouse.Wheel(120);
    EXPECT_NEAR(view.ZoomFactor, 121, 1e-9);
    MoveTo(6000, 4000 - 251, kBoth);
    EXPECT_NEAR(view.ZoomFactor, 110 * (1 + 251 / 2500.0), 1e-9);
}

TEST_F(MouseTest, AMaximizedSkyFollowsTheZoom) {
    view.ZoomFactor = 32;
    main.CMaximizeSky.Value = true;
    ASSERT_EQ(view.SkyScale, 2);
    mouse.Wheel(120);
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

TEST_F(MouseTest, ADragIsUnderWayFromItsFirstMoveToItsEnd) {
    MoveTo(100, 100);
    EXPECT_FALSE(app.Run.DragActive);
    MoveTo(200, 100, kLeft);
    EXPECT_TRUE(app.Run.DragActive);
    MoveTo(300, 100, kLeft);
    EXPECT_FALSE(main.TimerSkyFine.Enabled);
    MoveTo(400, 100);
    EXPECT_FALSE(app.Run.DragActive);
    EXPECT_TRUE(main.TimerSkyFine.Enabled);
    EXPECT_EQ(main.TimerSkyFine.Interval, 1000);
}

TEST_F(MouseTest, TheFineStarsComeASecondAfterTheDrag) {
    main.CDrawSky.Value = true;
    Drag(kLeft, 600, 0);
    clock.Advance(5000);
    EXPECT_EQ(fineStars, 0);
    mouse.Released();
    clock.Advance(500);
    Drag(kLeft, 600, 0);
    clock.Advance(2000);
    EXPECT_EQ(fineStars, 0) << "another drag puts them off";
    mouse.Released();
    clock.Advance(999);
    EXPECT_EQ(fineStars, 0);
    clock.Advance(1);
    EXPECT_EQ(fineStars, 1);
}

TEST_F(MouseTest, AClickIsNoDrag) {
    MoveTo(6000, 4000);
    MoveTo(6000, 4000, kLeft);
    mouse.Released();
    EXPECT_FALSE(main.TimerSkyFine.Enabled);
    EXPECT_FALSE(app.Run.DragActive);
    EXPECT_FALSE(Turns());
}

TEST_F(MouseTest, TheMouseIsAtRestTwoSecondsAfterItsLastMove) {
    for (int i = 0; i < 5; ++i) {
        MoveTo(100 * i, 500);
        clock.Advance(1500);
    }
    EXPECT_EQ(objectsSought, 0);
    clock.Advance(500);
    EXPECT_EQ(objectsSought, 1);
    EXPECT_EQ(app.Run.LastMouseX, 400);
    EXPECT_EQ(app.Run.LastMouseY, 500);
    clock.Advance(10000);
    EXPECT_EQ(objectsSought, 1);
}

TEST_F(MouseTest, TheInfoBoxGoesASecondAfterTheFirstMove) {
    MoveTo(0, 0);
    main.LFInfo.Visible = true;
    for (int i = 1; i <= 5; ++i) {
        MoveTo(100 * i, 0);
        clock.Advance(199);
        EXPECT_TRUE(main.LFInfo.Visible) << "move " << i;
    }
    clock.Advance(5);
    EXPECT_FALSE(main.LFInfo.Visible) << "though the mouse has moved on";
}

TEST_F(MouseTest, AGlobeReleasedInMotionTurnsOnAndRests) {
    Swing();
    const double released = view.ViewLon;
    EXPECT_NEAR(released, 1 + 0.2, 1e-9);
    mouse.Released();
    ASSERT_TRUE(Turns());
    EXPECT_EQ(app.Run.AutoTurn, 2);
    const std::int64_t start = clock.NowMs();
    clock.Advance(20);
    EXPECT_GT(view.ViewLon - released, 0.009) << "0.04 radians in 20 ms, a quarter of that";
    EXPECT_LE(view.ViewLon - released, 0.01);
    while (Turns()) {
        clock.Advance(20);
        ASSERT_LE(clock.NowMs() - start, 1500);
    }
    EXPECT_EQ(view.ViewLat, 0.2);
}

TEST_F(MouseTest, AShortFlickTurnsTheWayItWent) {
    Swing();
    mouse.Released();
    clock.Advance(3000);
    view.ViewLon = 3;
    MoveTo(6000, 4000);
    MoveTo(6000, 4000, kLeft);
    clock.Advance(10);
    MoveTo(6120, 4000, kLeft);
    mouse.Released();
    clock.Advance(20);
    EXPECT_LT(view.ViewLon, 2.98);
    EXPECT_GT(view.ViewLon, 2.97) << "the drag before it does not count";
}

TEST_F(MouseTest, AGlobeHeldStillBeforeTheReleaseStays) {
    Swing();
    clock.Advance(51);
    mouse.Released();
    EXPECT_FALSE(Turns());
    Swing();
    clock.Advance(50);
    mouse.Released();
    EXPECT_TRUE(Turns());
}

TEST_F(MouseTest, OnlyATurningGoesOn) {
    for (const MouseHold& hold : {kRight, kBoth, kShiftLeft}) {
        Drag(hold, 100, 100);
        clock.Advance(10);
        MoveTo(6200, 4200, hold);
        mouse.Released();
        EXPECT_FALSE(Turns());
    }
    main.CPlaniSphere.Value = true;
    Swing();
    mouse.Released();
    EXPECT_FALSE(Turns()) << "the flat map has been shifted";
}

TEST_F(MouseTest, AHandOnTheGlobeEndsItsMotion) {
    Swing();
    mouse.Released();
    clock.Advance(200);
    MoveTo(5000, 5000);
    EXPECT_TRUE(Turns()) << "the mouse alone does not";
    MoveTo(5000, 5000, kLeft);
    const double held = view.ViewLon;
    clock.Advance(2000);
    EXPECT_FALSE(Turns());
    EXPECT_EQ(view.ViewLon, held);
}

TEST_F(MouseTest, UnderTheKeysTurningTheMotionLasts) {
    program.Loop.GlobeRotation().Toggle();
    Swing();
    clock.Advance(20);  // the mouse still moves: a tick notes it, the next one takes what follows
    MoveTo(6000 - 1440, 4000, kLeft);
    mouse.Released();
    clock.Advance(5000);
    EXPECT_TRUE(Turns());
    EXPECT_GT(app.Run.RotIncLon, 0);
    const double before = view.ViewLon;
    clock.Advance(20);
    EXPECT_NEAR(view.ViewLon - before, app.Run.RotIncLon / 4, 1e-9);
}

TEST_F(MouseTest, TheMouseStopsTheIdleTurningAndOnlyThat) {
    GlobeTurning& turning = program.Loop.GlobeRotation();
    app.Run.AutoTurn = 0;
    turning.Start(Turning::Lasting);
    MoveTo(100, 100);
    EXPECT_TRUE(Turns()) << "the window has opened under it";
    MoveTo(100, 100);
    EXPECT_TRUE(Turns());
    MoveTo(115, 100);
    EXPECT_FALSE(Turns());
    turning.Toggle();
    ASSERT_EQ(app.Run.AutoTurn, 2);
    MoveTo(200, 100);
    mouse.Wheel(120);
    mouse.DoubleClicked(kNone);
    EXPECT_TRUE(Turns());
}

TEST_F(MouseTest, APressTheWheelAndADoubleClickStopTheIdleTurningToo) {
    GlobeTurning& turning = program.Loop.GlobeRotation();
    for (const auto& touch :
         {std::function<void()>([&] { MoveTo(100, 100, kLeft); }), std::function<void()>([&] { mouse.Wheel(120); }),
          std::function<void()>([&] { mouse.DoubleClicked(kNone); })}) {
        app.Run.AutoTurn = 0;
        turning.Start(Turning::Lasting);
        touch();
        EXPECT_FALSE(Turns());
    }
}

TEST_F(MouseTest, APressCutsTheOpeningShort) {
    app.Run.Opening = true;
    MoveTo(100, 100);
    MoveTo(200, 100);
    EXPECT_FALSE(app.Run.OpeningCut) << "a move does not";
    MoveTo(200, 100, kLeft);
    EXPECT_TRUE(app.Run.OpeningCut);
}

TEST_F(MouseTest, ADoubleClickHidesThePanelsAndShowsThem) {
    mouse.DoubleClicked(kNone);
    EXPECT_TRUE(app.Run.PanelsHidden);
    EXPECT_FALSE(main.FrameInfo.Visible);
    mouse.DoubleClicked(kNone);
    EXPECT_FALSE(app.Run.PanelsHidden);
    EXPECT_TRUE(main.FrameInfo.Visible);
}

TEST_F(MouseTest, ADoubleClickLeavesFullScreenFirst) {
    SetFullScreen(app, true);
    mouse.DoubleClicked(kNone);
    EXPECT_FALSE(app.Run.FullScreen);
    EXPECT_FALSE(app.Run.PanelsHidden);
    EXPECT_TRUE(main.FrameInfo.Visible);
    EXPECT_EQ(signals.fullScreens, (std::vector<bool>{true, false}));
}

TEST_F(MouseTest, ADoubleClickWithControlOrAltIsAnotherThing) {
    mouse.DoubleClicked({.control = true});
    mouse.DoubleClicked({.alt = true});
    EXPECT_FALSE(app.Run.PanelsHidden);
}

TEST_F(MouseTest, InFullScreenTheMenusComeAtTheUpperEdge) {
    SetFullScreen(app, true);
    MoveTo(6000, 399);
    EXPECT_TRUE(main.MnuFile.Visible);
    MoveTo(6000, 400);
    EXPECT_FALSE(main.MnuFile.Visible);
    MoveTo(6000, 400, kLeft);
    MoveTo(6000, 100, kLeft);
    EXPECT_FALSE(main.MnuFile.Visible) << "a drag calls for no menu";
    SetFullScreen(app, false);
    MoveTo(6000, 4000);
    EXPECT_TRUE(main.MnuFile.Visible);
}

}  // namespace
}  // namespace glintara::testing
