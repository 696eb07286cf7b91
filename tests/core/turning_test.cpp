#include "core/turning.h"

#include "core/program_fixture.h"

namespace glintara::testing {
namespace {

struct TurningTest : ProgramTest {
    TurningTest() {
        app.Main.CRealTime.Value = false;
        RunAtOnce();
    }

    double Lon() const { return app.Data.View.ViewLon; }
    bool Turns() const { return app.Main.TimerHRot.Enabled; }

    GlobeTurning& turning = program.Loop.GlobeRotation();
};

TEST_F(TurningTest, TheGlobeTurnsByAQuarterOfTheIncrementEachTick) {
    turning.Start(Turning::Lasting);
    clock.Advance(20);
    EXPECT_NEAR(Lon(), kPlainPi / 72 / 4, 1e-9);
    clock.Advance(980);
    EXPECT_NEAR(Lon(), 50 * kPlainPi / 72 / 4, 1e-9);
    EXPECT_GT(pictures.size(), 30U);
    clock.Advance(20000);
    EXPECT_GE(Lon(), 0);
    EXPECT_LT(Lon(), 2 * kPlainPi);
    EXPECT_EQ(app.Data.View.ViewLat, 0);
    EXPECT_EQ(app.Data.View.ViewRoll, 0);
}

TEST_F(TurningTest, StartsAreCountedUpToTen) {
    for (int n = 1; n <= 15; ++n) {
        turning.Start(Turning::Lasting);
        EXPECT_EQ(app.Run.AutoTurn, std::min(n, 10));
        turning.Stop();
    }
}

TEST_F(TurningTest, AnyTouchStopsTheIdleTurningAndOnlyThat) {
    turning.Start(Turning::Lasting);
    EXPECT_TRUE(turning.StopIdle());
    EXPECT_FALSE(Turns());
    EXPECT_FALSE(turning.StopIdle()) << "nothing turns";
    turning.Toggle();
    EXPECT_TRUE(Turns());
    EXPECT_FALSE(turning.StopIdle());
    EXPECT_TRUE(Turns()) << "the key's turning goes on";
    turning.Toggle();
    EXPECT_FALSE(Turns());
}

TEST_F(TurningTest, ADragReleasedInMotionComesToRestWithinASecondAndAHalf) {
    turning.DragReleased(0.08);
    clock.Advance(20);
    const double first = Lon();
    EXPECT_GT(first, 0.018);
    EXPECT_LE(first, 0.02) << "a quarter of the drag's speed";
    double last = Lon();
    double step = first;
    while (Turns()) {
        clock.Advance(20);
        EXPECT_LE(Lon() - last, step + 1e-12);
        step = Lon() - last;
        last = Lon();
        ASSERT_LE(clock.NowMs(), 1500);
    }
    EXPECT_GT(clock.NowMs(), 1000);
    EXPECT_EQ(app.Data.View.ViewLat, 0);
}

TEST_F(TurningTest, ADragThatDoesNotTurnLeavesTheGlobeAtRest) {
    turning.DragReleased(0);
    EXPECT_FALSE(Turns());
    EXPECT_EQ(app.Run.AutoTurn, 0);
}

TEST_F(TurningTest, ATouchEndsTheDecay) {
    turning.DragReleased(0.08);
    clock.Advance(100);
    const double held = Lon();
    app.Run.DragActive = true;
    clock.Advance(100);
    EXPECT_EQ(Lon(), held);
    app.Run.DragActive = false;
    clock.Advance(1000);
    EXPECT_EQ(Lon(), held);
}

TEST_F(TurningTest, ATurningThatLastsTakesTheDragsMotionOn) {
    turning.Start(Turning::Lasting);
    app.Run.DragActive = true;
    clock.Advance(100);
    EXPECT_EQ(Lon(), 0) << "the drag holds it";
    app.Data.View.ViewLon = 1;
    clock.Advance(20);
    app.Data.View.ViewLon = 1.04;
    app.Data.View.ViewLat = -0.01;
    app.Run.DragActive = false;
    clock.Advance(20);
    EXPECT_NEAR(app.Run.RotIncLon, 0.04, 1e-12);
    EXPECT_NEAR(app.Run.RotIncLat, -0.01, 1e-12);
    EXPECT_NEAR(Lon(), 1.04, 1e-12);
    clock.Advance(40);
    EXPECT_NEAR(Lon(), 1.06, 1e-12);
    clock.Advance(10000);
    EXPECT_TRUE(Turns()) << "it does not decay";
}

TEST_F(TurningTest, AClickLeavesATurningThatLastsAsItWas) {
    turning.Start(Turning::Lasting);
    clock.Advance(20);
    app.Run.DragActive = true;
    clock.Advance(100);
    app.Run.DragActive = false;
    clock.Advance(20);
    const double before = Lon();
    clock.Advance(20);
    EXPECT_NEAR(Lon() - before, kPlainPi / 72 / 4, 1e-9);
}

TEST_F(TurningTest, AHandThatHoldsTheGlobeStillBringsItToAStandstillUntilTheKeyStartsItAnew) {
    turning.Toggle();
    app.Run.DragActive = true;
    clock.Advance(20);
    app.Data.View.ViewLon = 2;
    clock.Advance(100);
    app.Run.DragActive = false;
    clock.Advance(1000);
    EXPECT_NEAR(Lon(), 2, 1e-12);
    EXPECT_EQ(app.Run.RotIncLon, 0);
    EXPECT_TRUE(Turns());
    turning.Toggle();
    EXPECT_FALSE(Turns());
    turning.Toggle();
    clock.Advance(20);
    EXPECT_NEAR(Lon(), 2 + kPlainPi / 72 / 4, 1e-9);
}

TEST_F(TurningTest, ADecayLeavesTheStepsOfTheKeysAlone) {
    turning.DragReleased(0.003);
    clock.Advance(3000);
    EXPECT_NEAR(app.Run.RotIncLat, 2.5 * kDegree, 1e-12);
    EXPECT_NEAR(app.Run.RotIncLon, 2.5 * kDegree, 1e-12);
    EXPECT_NEAR(app.Run.RotIncRoll, 2.5 * kDegree, 1e-12);
}

TEST_F(TurningTest, ALockedSkyIsLockedWhereItHasTurnedTo) {
    app.Main.CLockSky.Value = true;
    turning.Start(Turning::Lasting);
    clock.Advance(400);
    turning.Stop();
    const double turned = Lon();
    EXPECT_NEAR(turned, 20 * kPlainPi / 72 / 4, 1e-6);
    clock.Advance(2000);
    EXPECT_NEAR(Lon(), turned, 1e-6) << "the clock stands, so do the stars";
}

}  // namespace
}  // namespace glintara::testing
