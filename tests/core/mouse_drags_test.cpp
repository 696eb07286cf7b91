// The life of a drag, the motion that it leaves, and double clicks.

#include "core/panels.h"
#include "support/mouse_fixture.h"

namespace glintara::testing {
namespace {

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

TEST_F(MouseTest, AWindowThatLosesTheKeyboardEndsTheDrag) {
    Swing();
    mouse.Abandoned();
    EXPECT_FALSE(app.Run.DragActive);
    EXPECT_TRUE(main.TimerSkyFine.Enabled);
    EXPECT_FALSE(Turns()) << "nobody has let the globe go";
    mouse.Released();
    EXPECT_FALSE(Turns());
    mouse.Abandoned();
    EXPECT_FALSE(app.Run.DragActive);
}

TEST_F(MouseTest, AfterADragTheSatelliteIsAimedAtAgain) {
    AddSatellite();
    app.Run.Working.Keep(app.Data.Satellite(1), {130 * kDegree, 25 * kDegree});
    main.CLockSatellite.Value = true;
    const double aimed = view.ViewLon;
    Drag(kLeft, 3000, 0);
    program.Loop.ClockTick();
    EXPECT_NEAR(view.ViewLon, aimed - 0.5, 1e-9) << "not while the hand is on the globe";
    mouse.Released();
    program.Loop.ClockTick();
    EXPECT_NEAR(view.ViewLon, aimed, 1e-9) << "with the release, though the mouse rests";
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
    Wheel(120);
    mouse.DoubleClicked(kNone);
    EXPECT_TRUE(Turns());
}

TEST_F(MouseTest, APressTheWheelAndADoubleClickStopTheIdleTurningToo) {
    GlobeTurning& turning = program.Loop.GlobeRotation();
    for (const auto& touch :
         {std::function<void()>([&] { MoveTo(100, 100, kLeft); }), std::function<void()>([&] { Wheel(120); }),
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

TEST_F(MouseTest, TheWheelCutsTheOpeningShort) {
    app.Run.Opening = true;
    MoveTo(100, 100);
    Wheel(120);
    EXPECT_TRUE(app.Run.OpeningCut) << "its next picture would take the zoom back";
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
