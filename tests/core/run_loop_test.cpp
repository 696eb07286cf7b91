#include "core/run_loop.h"

#include <algorithm>
#include <limits>

#include "core/program_fixture.h"
#include "core/views.h"

namespace glintara::testing {
namespace {

struct RunLoopTest : ProgramTest {
    RunLoopTest() { RunAtOnce(); }

    void Request() { UpdateGraphicsLevel2(app.Main); }

    /// Seconds of the displayed minute at which the clock asked for pictures, over `seconds` of running.
    std::vector<int> SecondsPictured(int seconds) {
        pictures.clear();
        clock.Advance(seconds * 1000);
        std::vector<int> shown;
        for (const Picture& picture : pictures) shown.push_back(static_cast<int>(picture.simSecond));
        return shown;
    }

    MainControls& main = app.Main;
};

TEST_F(RunLoopTest, RequestsWithinTenMillisecondsGiveOnePicture) {
    Request();
    clock.Advance(9);
    Request();
    Request();
    EXPECT_TRUE(pictures.empty());
    clock.Advance(30);
    EXPECT_EQ(pictures.size(), 1U);
    EXPECT_EQ(app.Run.FrameCounter, 1);
}

TEST_F(RunLoopTest, ARequestDoesNotDelayTheOneBeforeIt) {
    const std::int64_t start = clock.NowMs();
    Request();
    for (int i = 0; i < 4; ++i) {
        clock.Advance(3);
        Request();
    }
    ASSERT_FALSE(pictures.empty());
    EXPECT_EQ(pictures.front().ms, start + 10);
}

TEST_F(RunLoopTest, TheFinePictureComesSoonerWhenTheGlobeIsNear) {
    app.Data.View.ZoomFactor = 13;
    Request();
    clock.Advance(10);
    EXPECT_EQ(main.Timer3.Interval, 2500);
    EXPECT_TRUE(main.Timer3.Enabled);
    app.Data.View.ZoomFactor = 12.99;
    Request();
    clock.Advance(10);
    EXPECT_EQ(main.Timer3.Interval, 14500);
}

TEST_F(RunLoopTest, AFarGlobeWithoutClockKeepsTheIntervalThatItHas) {
    main.CRealTime.Value = false;
    clock.Advance(20);
    main.Timer3.Interval = 15000;
    app.Data.View.ZoomFactor = 12;
    main.CAutoRefine.Value = true;
    clock.Advance(10);
    pictures.clear();
    clock.Advance(14999);
    EXPECT_TRUE(pictures.empty());
    clock.Advance(1);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_TRUE(pictures[0].fine);
    EXPECT_FALSE(main.Timer3.Enabled) << "a standing picture is refined once";
}

TEST_F(RunLoopTest, ANearGlobeIsRefinedAfterTwoAndAHalfSeconds) {
    main.CRealTime.Value = false;
    main.CAutoRefine.Value = true;
    app.Data.View.ZoomFactor = 100;
    clock.Advance(10);
    pictures.clear();
    Request();
    clock.Advance(10);
    const std::int64_t coarse = clock.NowMs();
    clock.Advance(10000);
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_FALSE(pictures[0].fine);
    EXPECT_TRUE(pictures[1].fine);
    EXPECT_EQ(notices.back(), coarse + 2500);
    EXPECT_EQ(pictures[1].ms, coarse + 2501) << "the notice has its turn of the event loop to be seen";
    EXPECT_FALSE(app.Run.FinePass);
}

TEST_F(RunLoopTest, WithoutAutoFinePlotAPictureStaysCoarse) {
    main.CRealTime.Value = false;
    app.Data.View.ZoomFactor = 100;
    clock.Advance(60000);
    EXPECT_TRUE(std::none_of(pictures.begin(), pictures.end(), [](const Picture& p) { return p.fine; }));
    EXPECT_TRUE(notices.empty());
}

TEST_F(RunLoopTest, AFinePictureOnDemandComesAtOnce) {
    main.CRealTime.Value = false;
    clock.Advance(20);
    for (const auto& press : {std::function<void()>([&] { main.CRefreshDraw.Click(); }),
                              std::function<void()>([&] { main.MnuFinePlot.Click(); })}) {
        pictures.clear();
        press();
        EXPECT_TRUE(pictures.empty()) << "no handler draws";
        clock.Advance(20);
        ASSERT_EQ(pictures.size(), 1U);
        EXPECT_TRUE(pictures[0].fine);
        EXPECT_EQ(main.Timer3.Interval, 5000) << "the real-time step";
        EXPECT_FALSE(main.Timer3.Enabled);
    }
    EXPECT_EQ(app.Run.FrameCounter, 1) << "coarse pictures are counted";
}

TEST_F(RunLoopTest, AFinePictureIsNotStartedInsideAnother) {
    int depth = 0;
    whilePictured = [&] {
        if (!app.Run.FinePass || ++depth > 1) return;
        RequestFinePicture(main);
        clock.Advance(1000);
    };
    main.CRealTime.Value = false;
    clock.Advance(20);
    pictures.clear();
    main.CRefreshDraw.Click();
    clock.Advance(10);
    EXPECT_EQ(std::count_if(pictures.begin(), pictures.end(), [](const Picture& p) { return p.fine; }), 1);
    EXPECT_EQ(depth, 1);
}

TEST_F(RunLoopTest, WithTheClockRunningTheFinePicturesSetThePace) {
    main.CAutoRefine.Value = true;
    clock.Advance(20);
    pictures.clear();
    clock.Advance(30000);
    ASSERT_GE(pictures.size(), 4U);
    for (std::size_t i = 1; i < pictures.size(); ++i) {
        EXPECT_TRUE(pictures[i].fine);
        EXPECT_NEAR(static_cast<double>(pictures[i].ms - pictures[i - 1].ms), 5000, 10);
    }
}

TEST_F(RunLoopTest, RequestsDuringAPictureGiveOneThatFollows) {
    int requests = 0;
    whilePictured = [&] {
        if (++requests > 1) return;
        Request();
        Request();
        Request();
    };
    Request();
    clock.Advance(200);
    EXPECT_EQ(pictures.size(), 2U);
}

TEST_F(RunLoopTest, EachPictureBringsTheProgressOfAScanToTheFront) {
    program.Loop.MakePicture();
    EXPECT_EQ(progressRaised, 0) << "there is none";
    app.Progress.Visible = true;
    program.Loop.MakePicture();
    program.Loop.MakePicture();
    EXPECT_EQ(progressRaised, 2);
    app.Progress.Visible = false;
    program.Loop.MakePicture();
    EXPECT_EQ(progressRaised, 2);
}

TEST_F(RunLoopTest, APictureIsNeverMadeInsideAnother) {
    bool first = true;
    int deepest = 0;
    int depth = 0;
    whilePictured = [&] {
        deepest = std::max(deepest, ++depth);
        if (first) {
            first = false;
            RequestFinePicture(main);
            EXPECT_FALSE(program.Loop.MakePicture());
            clock.Advance(100);  // the fine picture is due meanwhile
        }
        --depth;
    };
    Request();
    clock.Advance(10);
    EXPECT_EQ(pictures.size(), 1U);
    clock.Advance(100);
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(pictures.size(), 2U) << "it comes afterwards";
    EXPECT_TRUE(pictures[1].fine);
}

TEST_F(RunLoopTest, ACoarsePictureThatIsDueDuringAFineOneWaits) {
    whilePictured = [&] {
        if (!app.Run.FinePass) return;
        Request();
        clock.Advance(55);
    };
    main.CRealTime.Value = false;
    clock.Advance(20);
    pictures.clear();
    app.Run.FrameCounter = 0;
    main.CRefreshDraw.Click();
    clock.Advance(10);
    EXPECT_EQ(pictures.size(), 1U);
    EXPECT_EQ(app.Run.FrameCounter, 0);
    EXPECT_TRUE(main.Timer2.Enabled);
    EXPECT_EQ(main.Timer2.Interval, 10);
    clock.Advance(20);
    EXPECT_EQ(pictures.size(), 2U);
    EXPECT_EQ(app.Run.FrameCounter, 1);
}

TEST_F(RunLoopTest, ThePicturesOfTheClockFallOnMultiplesOfTheStep) {
    EXPECT_EQ(SecondsPictured(60), (std::vector<int>{10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 0, 5}));
    // A picture in between does not shift them.
    clock.Advance(2000);
    Request();
    clock.Advance(10);
    EXPECT_EQ(SecondsPictured(10), (std::vector<int>{15, 20}));
}

TEST_F(RunLoopTest, AStepOfAMinuteGivesAPictureEachMinute) {
    app.Data.RealTimeStep = 60;
    EXPECT_EQ(SecondsPictured(180), (std::vector<int>{0, 0, 0}));
}

TEST_F(RunLoopTest, AStepBelowASecondGivesAPictureEachSecond) {
    clock.Advance(20);  // a picture follows its tick by 10 ms
    for (const double step : {0.25, 0.0, -3.0, std::numeric_limits<double>::quiet_NaN()}) {
        app.Data.RealTimeStep = step;
        EXPECT_EQ(SecondsPictured(20).size(), 20U) << step;
    }
}

TEST_F(RunLoopTest, OnlyTheWholePartOfTheStepCounts) {
    app.Data.RealTimeStep = 10.9;
    EXPECT_EQ(SecondsPictured(60), (std::vector<int>{10, 20, 30, 40, 50, 0}));
}

TEST_F(RunLoopTest, ASecondThatALateTickSkippedStillGivesItsPicture) {
    clock.Advance(12000);  // 17:42:21
    pictures.clear();
    clock.Stall(5600);
    program.Loop.ClockTick();  // :26.9, past :25
    EXPECT_TRUE(main.Timer2.Enabled);
    clock.Advance(10);
    EXPECT_EQ(pictures.size(), 1U);
    main.Timer2.Stop();
    clock.Stall(1500);
    program.Loop.ClockTick();  // :28.4, nothing skipped
    EXPECT_FALSE(main.Timer2.Enabled);
}

TEST_F(RunLoopTest, TheStepGoesOnAcrossMidnight) {
    const auto until = [this](int hour, int minute, double second) {
        return static_cast<std::int64_t>(1000 * (((hour - 17) * 60 + minute - 42) * 60 + second - 9.31));
    };
    clock.Advance(until(23, 59, 50.5) - clock.NowMs());
    EXPECT_EQ(SecondsPictured(20), (std::vector<int>{55, 0, 5, 10}));
    EXPECT_EQ(app.Data.SimDay, 21);
}

TEST_F(RunLoopTest, ASecondThatALateTickSkippedAtMidnightStillGivesItsPicture) {
    clock.Advance(6 * 3600 * 1000 + 17 * 60 * 1000 + 49 * 1000);  // 23:59:58
    pictures.clear();
    main.Timer2.Stop();
    clock.Stall(4500);
    program.Loop.ClockTick();  // 0:00:02 or 3, past 0:00:00
    EXPECT_EQ(app.Data.SimDay, 21);
    EXPECT_TRUE(main.Timer2.Enabled);
}

TEST_F(RunLoopTest, OldElementsAreWarnedOfAsSoonAsTheInstantIsFarFromThem) {
    AddSatellite();
    app.Data.Satellite(1).EpochText = "18020.50000000";
    signals.UpDateAll();
    EXPECT_FALSE(main.LElementAge.Visible);
    app.Data.TimeOffset.MonthOffset = 1;
    program.Time.TimeSyncronize();
    Request();
    clock.Advance(10);
    EXPECT_EQ(main.LElementAge.Caption.Get(), "Elements are 31 days old: positions will be off");
    EXPECT_TRUE(main.LElementAge.Visible);
    EXPECT_EQ(app.FindFlare.LElementAge.Caption.Get(), main.LElementAge.Caption.Get());
    app.Data.TimeOffset = {};
    program.Time.TimeSyncronize();
    Request();
    clock.Advance(10);
    EXPECT_FALSE(main.LElementAge.Visible);
    EXPECT_FALSE(app.FindFlare.LElementAge.Visible);
}

TEST_F(RunLoopTest, TwoTicksInOneSecondGiveOnePicture) {
    clock.Stall(800);  // 17:42:10.11
    program.Loop.ClockTick();
    clock.Advance(10);
    program.Loop.ClockTick();
    EXPECT_FALSE(main.Timer2.Enabled);
    EXPECT_EQ(pictures.size(), 1U);
}

TEST_F(RunLoopTest, TheTickSetsTimer2AnewSoThatItIsTenMillisecondsAway) {
    clock.Stall(800);
    Request();
    const std::int64_t start = clock.NowMs();
    clock.Advance(6);
    program.Loop.ClockTick();
    clock.Advance(30);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0].ms, start + 16);
}

TEST_F(RunLoopTest, AStandingClockStillTicks) {
    main.CRealTime.Value = false;
    clock.Advance(20);
    pictures.clear();
    app.Data.TimeOffset.DayOffset = 1;
    clock.Advance(1000);
    EXPECT_EQ(main.LDateTime.Caption.Get(), "DATE 21/01/2018 17:42:09.31 UTC (+)");
    clock.Advance(20000);
    EXPECT_TRUE(pictures.empty());
}

TEST_F(RunLoopTest, TheClockStandsStillDuringLongWork) {
    const std::string before = main.LDateTime.Caption;
    {
        const LongWork work(app);
        main.TimerFastRefresh.Enabled = true;
        main.TimerViewShow.Enabled = true;
        SaveUserView(app, 3);
        SaveUserView(app, 9);
        clock.Advance(12000);
        EXPECT_EQ(main.LDateTime.Caption.Get(), before);
        EXPECT_EQ(app.Run.PendingView, 9) << "nor do the kept views go round";
    }
    clock.Advance(1000);
    EXPECT_NE(main.LDateTime.Caption.Get(), before);
}

TEST_F(RunLoopTest, FastRefreshRunsWithTheClock) {
    main.TimerFastRefresh.Enabled = true;
    clock.Advance(1000);
    EXPECT_GT(pictures.size(), 45U);
    main.CRealTime.Value = false;
    clock.Advance(50);
    EXPECT_FALSE(main.TimerFastRefresh.Enabled);
}

TEST_F(RunLoopTest, TheRateIsCountedAnewEachSecond) {
    main.CRealTime.Value = false;
    clock.Advance(1000 - clock.NowMs() % 1000);
    for (int i = 0; i < 7; ++i) {
        Request();
        clock.Advance(100);
    }
    clock.Advance(300);
    EXPECT_EQ(main.LFPS.Caption.Get(), "FPS= 7");
    clock.Advance(1000);
    EXPECT_EQ(main.LFPS.Caption.Get(), "FPS= 0");
}

TEST_F(RunLoopTest, AResizedWindowIsDrawnOnceItHasComeToRest) {
    main.CRealTime.Value = false;
    clock.Advance(20);
    pictures.clear();
    for (int i = 0; i < 20; ++i) {
        main.TimerResize.Restart(main.TimerResize.Interval);
        clock.Advance(50);
    }
    EXPECT_TRUE(pictures.empty());
    clock.Advance(1000);
    EXPECT_EQ(pictures.size(), 1U);
}

TEST_F(RunLoopTest, TheInfoBoxIsHiddenAfterItsTime) {
    main.LFInfo.Visible = true;
    main.Timer_InfoHider.Restart(1000);
    clock.Advance(999);
    EXPECT_TRUE(main.LFInfo.Visible);
    clock.Advance(1);
    EXPECT_FALSE(main.LFInfo.Visible);
    EXPECT_FALSE(main.Timer_InfoHider.Enabled);
}

TEST_F(RunLoopTest, TheFineStarsComeOnceAndOnlyWithASky) {
    main.TimerSkyFine.Restart(1000);
    clock.Advance(5000);
    EXPECT_EQ(fineStars, 0);
    main.CDrawSky.Value = true;
    main.TimerSkyFine.Restart(1000);
    clock.Advance(5000);
    EXPECT_EQ(fineStars, 1);
}

TEST_F(RunLoopTest, TheMouseAtRestIsLookedAtOnce) {
    main.Timer_ObjectFinder.Enabled = true;
    clock.Advance(10000);
    EXPECT_EQ(objectsSought, 1);
}

TEST_F(RunLoopTest, AnotherProgramIsToldOfEachPicture) {
    Request();
    clock.Advance(10);
    EXPECT_EQ(positionsTold, 1);
}

TEST_F(RunLoopTest, ATimerOfIntervalZeroNeverFires) {
    int ticks = 0;
    main.TimerHRot.SetTickHandler([&] { ++ticks; });
    main.TimerHRot.Enabled = true;
    EXPECT_FALSE(main.TimerHRot.Armed());
    clock.Advance(1000);
    main.TimerHRot.Fire();
    EXPECT_EQ(ticks, 0);
}

}  // namespace
}  // namespace glintara::testing
