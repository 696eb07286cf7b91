#include "core/shut_down.h"

#include "core/program_fixture.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"

namespace glintara::testing {
namespace {

struct ShutDownTest : ProgramTest {
    ShutDownTest() { RunAtOnce(); }
};

TEST_F(ShutDownTest, TheWindowsAreUnloadedInTheirOrder) {
    EXPECT_TRUE(program.End.Form_Unload());
    EXPECT_EQ(unloaded, (std::vector<std::string>{"FormSatellites", "FormLocalSettings", "FormRealTime",
                                                  "FormDownloadTLE", "FormMirror", "FormSatPosition", "FormFindFlare",
                                                  "FormColors", "FormTwilight", "FormIOD", "FormOutput", "FormCities",
                                                  "FormProgress", "FormAdvSel", "FormAbout", "FormDate"}));
    EXPECT_TRUE(program.End.Form_Unload());
    EXPECT_EQ(unloaded.size(), 16U) << "once";
}

TEST_F(ShutDownTest, NothingFiresAfterwards) {
    UpdateGraphicsLevel2(app.Main);
    program.End.Form_Unload();
    for (const Timer* timer : app.Main.Timers()) EXPECT_FALSE(timer->Enabled);
    clock.Advance(10000);
    EXPECT_TRUE(pictures.empty());
}

TEST_F(ShutDownTest, NothingIsWritten) {
    program.End.Form_Unload();
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(ShutDownTest, LongWorkIsToldToEndAndUnwindsFirst) {
    int aborted = 0;
    program.End.AddAbort([&] { ++aborted; });
    {
        const LongWork outer(app);
        {
            const LongWork inner(app);
            EXPECT_FALSE(program.End.Form_Unload());
            EXPECT_EQ(aborted, 1);
            EXPECT_TRUE(app.FindFlare.SearchAbort);
            EXPECT_TRUE(unloaded.empty());
        }
        EXPECT_EQ(closesPosted, 0) << "the outer one still runs";
    }
    EXPECT_EQ(closesPosted, 1);
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_TRUE(program.End.Form_Unload());
    EXPECT_EQ(unloaded.size(), 16U);
}

TEST_F(ShutDownTest, LongWorkThatEndsByItselfClosesNothing) {
    { const LongWork work(app); }
    EXPECT_EQ(closesPosted, 0);
}

struct SearchAndCloseTest : ShutDownTest {
    SearchAndCloseTest() {
        SetLocation(app.Data, {45.07 * kDegree, 7.69 * kDegree, 240});
        LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/iridium.tle");
        app.Main.CApplyTLEOrbit.Click();
        for (int i = 1; i <= app.Data.SatCount; ++i) app.Data.Satellite(i).Selected = true;
    }
};

TEST_F(SearchAndCloseTest, ASearchEndsWhenTheWindowCloses) {
    ASSERT_GT(app.Data.SatCount, 50);
    app.FindFlare.TInterval.Text = std::string("2000");
    app.FindFlare.TMaxDistance.Text = std::string("0.000001");
    clock.hook = [&] {
        if (clock.served != 5) return;
        EXPECT_FALSE(program.End.Form_Unload());
    };
    clock.served = 0;
    app.FindFlare.CFindFirst.Click();
    EXPECT_EQ(clock.served, 5) << "it looks once an hour of search";
    EXPECT_EQ(closesPosted, 1);
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(SearchAndCloseTest, TheClockStandsWhileItSearchesAndThenStandsOnTheFlare) {
    // A flare of IRIDIUM 28 is due over Turin at 16:44 of the 20th; a search from midnight on finds that of 5:03 first.
    app.Main.CRealTime.Value = false;
    app.Data.TimeOffset.HourOffset = -17;
    app.Data.TimeOffset.MinuteOffset = -42;
    program.Time.TimeSyncronize();
    const std::string before = app.Main.LDateTime.Caption;
    std::string during;
    clock.hook = [&] {
        clock.Advance(3000);
        during = app.Main.LDateTime.Caption;
    };
    app.FindFlare.CFindFirst.Click();
    EXPECT_EQ(during, before);
    EXPECT_EQ(app.FindFlare.LStatus.Caption.Get(), "Flare Found! (IRIDIUM 32 [+])");
    EXPECT_TRUE(app.Main.LDateTime.Caption.Get().starts_with("DATE 20/01/2018 05:0"))
        << app.Main.LDateTime.Caption.Get();
    EXPECT_TRUE(app.Main.Timer2.Enabled) << "a picture of it is asked for";
    app.FindFlare.CFindNext.Click();
    EXPECT_TRUE(app.Main.LDateTime.Caption.Get().starts_with("DATE 20/01/2018 11:04"))
        << app.Main.LDateTime.Caption.Get();
}

}  // namespace
}  // namespace glintara::testing
