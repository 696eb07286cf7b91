// What the mouse points at: the line of text, the finder, the sky pointer, stars and satellites that are chosen.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "engine/astro/sidereal.h"
#include "orbit/satellite_table.h"
#include "scene/star_list.h"
#include "scene/star_places.h"
#include "scene/view_geometry.h"
#include "support/mouse_fixture.h"

namespace glintara::testing {
namespace {

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

    /// The mouse rests on the star.
    void Rest() {
        MoveTo(5900, 4000);
        MoveTo(6000, 4000);
        clock.Advance(2000);
        ASSERT_TRUE(main.LFInfo.Visible);
    }

    /// The pictures that have been asked for are there.
    void TakePictures() { clock.Advance(50); }
};

/// A satellite under the middle of each picture, as long as it is told to stand there.
struct MouseSatelliteTest : MouseTest {
    MouseSatelliteTest() {
        main.CDrawSky.Value = false;
        AddSatellite();
        AddSatellite();
        whilePictured = [this] {
            app.Run.Finder.ClearList();
            for (int i = 1; i <= app.Data.SatCount; ++i) {
                const bool inMiddle = app.Data.Satellite(i).SatNumber == inMiddle_;
                app.Run.Finder.Add({inMiddle ? 0.0 : 0.5, 0, i});
            }
        };
        Picture();
        MoveTo(5900, 4000);
        MoveTo(6000, 4000);
        clock.Advance(2000);
    }

    void Picture() {
        signals.UpdateGraphicsLevel2();
        clock.Advance(50);
    }

    std::string inMiddle_ = "24941";
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

TEST_F(MouseSkyTest, WhenTheMouseHasLeftThePictureTheBoxGoesAsAfterAMove) {
    Rest();
    mouse.Left();
    clock.Advance(999);
    EXPECT_TRUE(main.LFInfo.Visible);
    clock.Advance(1);
    EXPECT_FALSE(main.LFInfo.Visible);
    MoveTo(5900, 4000);
    MoveTo(6000, 4000);
    clock.Advance(1500);
    mouse.Left();
    clock.Advance(60000);
    EXPECT_FALSE(main.LFInfo.Visible) << "nothing is sought where the mouse was";
    Rest();
}

TEST_F(MouseSkyTest, ABoxWhoseStarHasGoneWithTheViewGoesToo) {
    const std::vector<std::pair<const char*, std::function<void()>>> changes = {
        {"a key", [this] { Form_KeyDown(app, program.Loop, {.special = SpecialKey::Right}); }},
        {"a quick view", [this] { main.MnuQHorizontView.Click(); }},
        {"an option", [this] { main.CDrawSky.Value = false; }},
        {"another limit", [this] { view.MaxStarMag = -1; }},
        {"another instant",
         [this] {
             app.Data.TimeOffset.HourOffset = 5;
             program.Time.TimeSyncronize();
         }},
    };
    for (const auto& [name, change] : changes) {
        const ViewState before = view;
        Rest();
        change();
        signals.UpdateGraphicsLevel2();
        EXPECT_TRUE(main.LFInfo.Visible) << name << ": the old picture is still there";
        TakePictures();
        EXPECT_FALSE(main.LFInfo.Visible) << name;
        view = before;
        app.Data.TimeOffset = {};
        program.Time.TimeSyncronize();
        main.CSkyOnly.Value = main.CDrawFrontStars.Value = main.CDrawSky.Value = true;
    }
}

TEST_F(MouseSkyTest, ABoxStaysWhileItsStarDoes) {
    Rest();
    Form_KeyDown(app, program.Loop, {.special = SpecialKey::Up, .shift = true});
    TakePictures();
    EXPECT_EQ(view.ZoomFactor, 105);
    EXPECT_TRUE(main.LFInfo.Visible) << "nearer, about the star";
}

TEST_F(MouseSatelliteTest, TheClockMayCarryTheSatelliteOnUnderTheBox) {
    ASSERT_TRUE(main.LFInfo.Visible);
    main.CRealTime.Value = true;
    Picture();
    EXPECT_TRUE(main.LFInfo.Visible);
    inMiddle_ = "";
    clock.Advance(5000);
    EXPECT_TRUE(main.LFInfo.Visible);
    view.ViewLon += 1e-6;
    Picture();
    EXPECT_FALSE(main.LFInfo.Visible) << "another view, and nothing there";
}

TEST_F(MouseSatelliteTest, TheBoxKnowsItsSatelliteAtAnotherPlaceOfTheList) {
    ASSERT_TRUE(main.LFInfo.Visible);
    ChangeWorkingSatellite(app, 1);
    ASSERT_EQ(app.Data.Satellite(2).SatNumber, "24941");
    view.ViewLon += 1e-6;
    Picture();
    EXPECT_TRUE(main.LFInfo.Visible);
    inMiddle_ = "24942";
    view.ViewLon += 1e-6;
    Picture();
    EXPECT_FALSE(main.LFInfo.Visible) << "what lies there now is another one";
}

TEST_F(MouseSatelliteTest, ASatelliteTakenFromTheListTakesItsBoxWithIt) {
    ASSERT_TRUE(main.LFInfo.Visible);
    app.Data.Satellite(1) = app.Data.Satellite(2);
    app.Data.SatCount = 1;
    Picture();
    EXPECT_FALSE(main.LFInfo.Visible);
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

}  // namespace
}  // namespace glintara::testing
