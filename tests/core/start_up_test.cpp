#include "core/start_up.h"

#include <algorithm>

#include "core/keys.h"
#include "core/opening.h"
#include "core/program_fixture.h"
#include "orbit/location.h"
#include "scene/orientation.h"

namespace glintara::testing {
namespace {

struct StartUpTest : ProgramTest {
    /// A key that means nothing else.
    void PressAnyKey() { Form_KeyDown(app, program.Loop, {}); }

    void Start() { program.Start({}); }

    /// Starts and lets the opening run to its end; whether it came to it.
    bool Open() {
        Start();
        clock.Advance(100);
        return !app.Run.Opening && app.Main.Timer5.Enabled;
    }
};

TEST_F(StartUpTest, TheOptionsOfTheStart) {
    Start();
    MainControls& main = app.Main;
    const std::vector<CheckBox*> set = {
        &main.CRealTime,      &main.CSunLight,           &main.CDrawSun,  &main.CSolidGlobe,    &main.CGlobeGrid,
        &main.CDrawBackStars, &main.CDrawConstallations, &main.CSatNames, &main.CIridiumFlares, &main.CSGP4,
        &main.CAutoMag};
    for (const OptionPair& pair : OptionPairs(main)) {
        const bool expected = std::find(set.begin(), set.end(), pair.box) != set.end();
        EXPECT_EQ(pair.box->Value, expected) << pair.box->Caption.Get();
        EXPECT_EQ(pair.entry->Checked, expected) << pair.entry->Caption.Get();
    }
    EXPECT_FALSE(main.CHCircle.Value);
    EXPECT_FALSE(main.CNOSSFlare.Value);
    EXPECT_TRUE(main.MnuNoUTC.Checked);
    EXPECT_EQ(app.Run.PanelGroup, 0);
    EXPECT_TRUE(main.FrameTime.Visible);
    EXPECT_FALSE(main.FrameDraw.Visible);
    EXPECT_TRUE(app.Run.MenusShown);
    EXPECT_FALSE(main.MnuLib3D.Enabled);
    EXPECT_FALSE(main.MnuLib3D.Checked);
}

TEST_F(StartUpTest, TheStateOfTheStart) {
    Start();
    const CommonData& data = app.Data;
    EXPECT_EQ(data.RealTimeStep, 5);
    EXPECT_EQ(data.StationCode, "0000");
    EXPECT_EQ(data.UTCOffsetHours, 0);
    EXPECT_EQ(data.Site.SiteAlt, 150);
    EXPECT_NEAR(data.Site.SiteRadius, 6378137 + 150, 1e-6) << "on the equator";
    EXPECT_EQ(data.View.OrbitTurns, 6);
    EXPECT_EQ(data.View.ZoomFactor, 16);
    EXPECT_EQ(data.View.SkyScale, 55);
    EXPECT_EQ(data.View.SkyScaleSaved, 55);
    EXPECT_EQ(data.View.MaxStarMag, 11);
    EXPECT_EQ(data.View.StarSizeScale, 8);
    EXPECT_EQ(starLimits, (std::vector<double>{5, 11}));
    EXPECT_EQ(app.Main.LMaxStarMag.Caption.Get(), "Max Star Mag. 11");
    EXPECT_EQ(app.Main.LStarSize.Caption.Get(), "Star Size: 8");
    EXPECT_EQ(app.Main.LOrbit.Caption.Get(), "Orbit Turns: 1");
    EXPECT_NEAR(app.Run.RotIncLon, kPlainPi / 72, 1e-12);
}

TEST_F(StartUpTest, TheTimeIsKnownBeforeTheFirstTick) {
    Start();
    EXPECT_EQ(app.Data.SimYear, 2018);
    EXPECT_NEAR(app.Data.SimTime, 2458139.2376077, 1e-6);
    EXPECT_NEAR(app.Data.SunDec / kDegree, -20, 0.1) << "and not the place that stands for none";
    EXPECT_EQ(app.Main.LDateTime.Caption.Get(), "DATE 20/01/2018 17:42:09.31 UTC");
}

TEST_F(StartUpTest, TheTimersOfTheStart) {
    Start();
    MainControls& main = app.Main;
    EXPECT_TRUE(main.Timer1.Enabled);
    EXPECT_FALSE(main.Timer2.Enabled);
    EXPECT_EQ(main.Timer2.Interval, 1000);
    EXPECT_FALSE(main.Timer3.Enabled);
    EXPECT_EQ(main.Timer3.Interval, 15000);
    EXPECT_FALSE(main.Timer5.Enabled);
    EXPECT_TRUE(main.Timer7.Enabled);
    EXPECT_EQ(main.TimerResize.Interval, 100);
    EXPECT_EQ(main.TimerViewShow.Interval, 5000);
    EXPECT_EQ(main.Timer_ObjectFinder.Interval, 2000);
    EXPECT_TRUE(pictures.empty());
}

TEST_F(StartUpTest, DataThatCannotBeReadIsToldOnceAndTheProgramGoesOn) {
    mapLoads = false;
    sitesLoad = false;
    EXPECT_TRUE(Open());
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, "Error Loading Database\n\nMissing or damaged: DB001.VDB DB003.VDB");
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
    EXPECT_FALSE(pictures.empty());
}

TEST_F(StartUpTest, DataThatIsReadIsNotSpokenOf) {
    Start();
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(StartUpTest, TheFolderOfTheProgramBecomesTheCurrentOne) {
    const std::filesystem::path before = std::filesystem::current_path();
    program.Start(folder.Path());
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), folder.Path()));
    std::filesystem::current_path(before);
    program.Start(folder.Path() / "not there");
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(StartUpTest, TheOpeningZoomsInAndOut) {
    ASSERT_TRUE(Open());
    const double steps[] = {1, 11, 21, 31, 41, 51, 61, 63, 57, 51, 45, 39, 33, 29};
    auto at = pictures.begin();
    for (const double zoom : steps) {
        at = std::find_if(at, pictures.end(), [zoom](const Picture& p) { return p.zoom == zoom; });
        ASSERT_NE(at, pictures.end()) << zoom;
    }
    for (std::size_t i = 1; i < pictures.size(); ++i) {
        EXPECT_LT(std::abs(pictures[i].zoom - pictures[i - 1].zoom), 2.1) << "it glides";
        EXPECT_GT(pictures[i].ms, pictures[i - 1].ms - (pictures[i].zoom == 29)) << "each in its own turn of the loop";
    }
}

TEST_F(StartUpTest, TheOpeningLastsAboutASecond) {
    ASSERT_TRUE(Open());
    const std::int64_t lasted = pictures.back().ms - pictures.front().ms;
    EXPECT_GE(lasted, 700);
    EXPECT_LE(lasted, 2000);
    // And half a second for the last splash.
    EXPECT_GE(clock.NowMs() - pictures.back().ms, 500);
    EXPECT_LE(clock.NowMs() - pictures.back().ms, 600);
}

TEST_F(StartUpTest, TheOpeningSleepsUntilThereIsAnEvent) {
    ASSERT_TRUE(Open());
    EXPECT_GT(clock.waited, 100);
    EXPECT_LE(clock.served, 1) << "no turn in between keeps the processor busy";
}

TEST_F(StartUpTest, ASlowComputerLeavesPicturesOut) {
    whilePictured = [&] { clock.Stall(100); };
    ASSERT_TRUE(Open());
    const std::int64_t lasted = pictures.back().ms - pictures.front().ms;
    EXPECT_LE(lasted, 2500);
    EXPECT_GE(pictures.size(), 14U) << "the steps themselves are all shown";
}

TEST_F(StartUpTest, TheSplashStandsInTheOpeningOnly) {
    ASSERT_TRUE(Open());
    const std::size_t opening = pictures.size();
    for (std::size_t i = 0; i + 1 < opening; ++i) EXPECT_EQ(pictures[i].splash, Splash::Title);
    EXPECT_EQ(pictures.back().splash, Splash::Final);
    clock.Advance(100);
    ASSERT_GT(pictures.size(), opening);
    EXPECT_EQ(pictures.back().splash, Splash::None);
}

TEST_F(StartUpTest, TheLastSplashStandsHalfASecondUnlessItIsCutShort) {
    std::int64_t shown = 0;
    clock.hook = [&] {
        if (app.Run.SplashShown == Splash::Final && shown == 0) shown = clock.NowMs();
        if (shown != 0 && clock.NowMs() >= shown + 100) PressAnyKey();
    };
    ASSERT_TRUE(Open());
    ASSERT_NE(shown, 0);
    EXPECT_EQ(app.Run.SplashShown, Splash::None);
    EXPECT_LE(clock.NowMs() - shown, 200);
}

TEST_F(StartUpTest, ClosingDuringTheLastSplashUnwindsTheOpening) {
    bool closed = true;
    clock.hook = [&] {
        if (app.Run.SplashShown == Splash::Final && closed) closed = program.End.Form_Unload();
    };
    Start();
    clock.Advance(100);
    EXPECT_FALSE(closed);
    EXPECT_FALSE(app.Main.Timer5.Enabled);
    EXPECT_TRUE(browser.opened.empty());
    EXPECT_EQ(closesPosted, 1);
}

TEST_F(StartUpTest, TheOpeningEndsOnTheViewAtRest) {
    ASSERT_TRUE(Open());
    const SavedView& start = app.Run.StartView;
    EXPECT_TRUE(start.Used);
    EXPECT_EQ(start.ViewRoll, 0);
    EXPECT_EQ(start.ViewLat, 0);
    EXPECT_EQ(start.ViewLon, 0.0857908);
    EXPECT_EQ(start.ZoomFactor, 29);
    EXPECT_EQ(start.PanX, 0);
    EXPECT_EQ(start.PanY, 0);
    EXPECT_EQ(pictures.back().zoom, 29);
    EXPECT_NEAR(pictures.back().lon, 0.0857908, 1e-12);
    app.Data.View.ViewLat = 1;
    app.Data.TimeOffset.DayOffset = 3;
    app.Main.MnuQResetView.Click();
    EXPECT_EQ(CaptureCamera(app.Data.View), (CameraView{0, 0, 0.0857908, 29, 0, 0}));
    EXPECT_EQ(app.Data.TimeOffset, TimeOffset{});
    EXPECT_TRUE(app.Main.LDateTime.Caption.Get().ends_with(" UTC"));
}

TEST_F(StartUpTest, TheGlobeTurnsUntilTheFirstTouch) {
    ASSERT_TRUE(Open());
    EXPECT_EQ(app.Run.AutoTurn, 1);
    EXPECT_TRUE(app.Main.TimerHRot.Enabled);
    EXPECT_EQ(app.Main.TimerHRot.Interval, 20);
    const double before = app.Data.View.ViewLon;
    clock.Advance(1000);
    EXPECT_GT(app.Data.View.ViewLon, before + 0.3);
    PressAnyKey();
    const double held = app.Data.View.ViewLon;
    clock.Advance(1000);
    EXPECT_EQ(app.Data.View.ViewLon, held);
}

TEST_F(StartUpTest, AWorkspaceOfTheStartIsNotTurned) {
    workspaceLoads = true;
    ASSERT_TRUE(Open());
    EXPECT_FALSE(app.Main.TimerHRot.Enabled);
    EXPECT_EQ(app.Run.AutoTurn, 1);
    EXPECT_TRUE(app.Main.Timer2.Enabled) << "a picture of it is asked for";
}

TEST_F(StartUpTest, AFarGlobeWithoutClockIsRefinedFifteenSecondsAfterStartUp) {
    workspaceLoads = true;
    whileLoaded = [&] {
        app.Data.View.ZoomFactor = 12;
        app.Main.CRealTime.Value = false;
        app.Main.CAutoRefine.Value = true;
    };
    ASSERT_TRUE(Open());
    clock.Advance(10);
    const std::int64_t coarse = pictures.back().ms;
    clock.Advance(20000);
    EXPECT_TRUE(pictures.back().fine);
    EXPECT_NEAR(static_cast<double>(pictures.back().ms - coarse), 15000, 2);
}

TEST_F(StartUpTest, ATouchEndsTheOpeningEarly) {
    int shown = 0;
    whilePictured = [&] {
        if (++shown == 5) PressAnyKey();
    };
    ASSERT_TRUE(Open());
    EXPECT_EQ(app.Run.StartView.ZoomFactor, 29);
    EXPECT_LE(pictures.size(), 6U);
    EXPECT_EQ(pictures.back().zoom, 29);
}

TEST_F(StartUpTest, TheTouchThatEndedTheOpeningDoesNotStopTheTurning) {
    clock.hook = [&] { PressAnyKey(); };
    ASSERT_TRUE(Open());
    EXPECT_TRUE(app.Main.TimerHRot.Enabled);
}

TEST_F(StartUpTest, TheRunningPhaseTicks) {
    ASSERT_TRUE(Open());
    EXPECT_FALSE(app.Main.Timer1.Enabled);
    EXPECT_FALSE(app.Main.Timer4.Enabled);
    const std::string before = app.Main.LDateTime.Caption;
    clock.Advance(1000);
    EXPECT_NE(app.Main.LDateTime.Caption.Get(), before);
}

TEST_F(StartUpTest, AFirstRunIsCountedAndOpensTheNewsPageAfterTheOpening) {
    Start();
    EXPECT_EQ(app.Data.UsageStats.StartCount, 1);
    EXPECT_TRUE(browser.opened.empty());
    clock.Advance(3000);
    EXPECT_EQ(browser.opened.size(), 1U);
}

TEST_F(StartUpTest, TheFirstStartTellsWhereThePlaceIsSet) {
    const std::string words = "Set your place: Settings, Local Settings. A start-up workspace (File) keeps it.";
    ASSERT_TRUE(Open());
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), words);
    app.Main.LCommandOutput.Caption = std::string();
    ASSERT_TRUE(Open());
    EXPECT_EQ(app.Data.UsageStats.StartCount, 2);
    EXPECT_NE(app.Main.LCommandOutput.Caption.Get(), words) << "once is enough";
}

TEST_F(StartUpTest, WithoutABrowserTheAddressIsToldAndNothingElseIsLost) {
    browser.fails = true;
    ASSERT_TRUE(Open());
    const std::string told = app.Main.LCommandOutput.Caption;
    ASSERT_EQ(browser.opened.size(), 1U);
    EXPECT_EQ(told,
              "Set your place: Settings, Local Settings. A start-up workspace (File) keeps it.\r\n"
              "No browser has opened the news page: https://news.example/Glintara/update.html");
    app.Main.MnuUpdateCheck.Click();
    EXPECT_EQ(browser.opened.size(), 2U);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), told) << "once is enough";
    app.Main.LCommandOutput.Caption = std::string();
    app.Main.MnuUpdateCheck.Click();
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(),
              "No browser has opened the news page: https://news.example/Glintara/update.html");
}

TEST_F(StartUpTest, AFirstStartThatHasAWorkspaceKnowsItsPlace) {
    workspaceLoads = true;
    ASSERT_TRUE(Open());
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get().find("Set your place"), std::string::npos);
}

TEST_F(StartUpTest, TheObserversCodeComesBack) {
    keptCode = "42";
    Start();
    EXPECT_EQ(app.Data.StationCode, "42");
    EXPECT_EQ(app.Data.StationNumber, 42);
}

TEST_F(StartUpTest, ClosingInTheOpeningUnwindsIt) {
    bool closed = true;
    int shown = 0;
    whilePictured = [&] {
        if (++shown == 4) closed = program.End.Form_Unload();
    };
    Start();
    clock.Advance(100);
    EXPECT_FALSE(closed) << "not inside the opening";
    EXPECT_FALSE(app.Run.Opening);
    EXPECT_EQ(pictures.size(), 4U);
    EXPECT_FALSE(app.Main.Timer5.Enabled);
    EXPECT_TRUE(browser.opened.empty());
    EXPECT_EQ(closesPosted, 1);
    EXPECT_TRUE(program.End.Form_Unload());
}

}  // namespace
}  // namespace glintara::testing
