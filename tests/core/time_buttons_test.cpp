#include "core/time_buttons.h"

#include <cstdint>
#include <limits>

#include "core/program_fixture.h"

namespace glintara::testing {
namespace {

struct TimeButtonsTest : ProgramTest {
    TimeButtonsTest() {
        app.Main.CRealTime.Value = false;
        RunAtOnce();
    }

    const std::string& DateLabel() const { return app.Main.LDateTime.Caption.Get(); }
    TimeOffset& Offsets() { return app.Data.TimeOffset; }
};

TEST_F(TimeButtonsTest, EachPairMovesByItsUnitAndBack) {
    MainControls& main = app.Main;
    const struct {
        Button& later;
        Button& earlier;
        const char* shown;
    } pairs[] = {
        {main.CYearOffsetInc, main.CYearOffsetDec, "DATE 20/01/2019 17:42:09.31 UTC (+)"},
        {main.CMonthOffsetInc, main.CMonthOffsetDec, "DATE 20/02/2018 17:42:09.31 UTC (+)"},
        {main.CDayOffsetInc, main.CDayOffsetDec, "DATE 21/01/2018 17:42:09.31 UTC (+)"},
        {main.CHourOffsetInc, main.CHourOffsetDec, "DATE 20/01/2018 18:42:09.31 UTC (+)"},
        {main.CMinuteOffsetInc, main.CMinuteOffsetDec, "DATE 20/01/2018 17:43:09.31 UTC (+)"},
        {main.CSecondOffsetInc, main.CSecondOffsetDec, "DATE 20/01/2018 17:42:10.31 UTC (+)"},
        {main.CMilliInc, main.Command3, "DATE 20/01/2018 17:42:09.41 UTC (N)"},
    };
    for (const auto& pair : pairs) {
        main.Timer2.Stop();
        pair.later.Click();
        EXPECT_EQ(DateLabel(), pair.shown);
        EXPECT_TRUE(main.Timer2.Enabled) << "a picture of " << pair.shown;
        pair.earlier.Click();
        EXPECT_EQ(DateLabel(), "DATE 20/01/2018 17:42:09.31 UTC (N)");
        EXPECT_EQ(Offsets(), TimeOffset{});
    }
}

TEST_F(TimeButtonsTest, ClearGoesBackToTheClock) {
    Offsets() = {1, 2, 3, 4, 5, 6, 7};
    app.Main.CClearTimeOffset.Click();
    EXPECT_EQ(Offsets(), TimeOffset{});
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 17:42:09.31 UTC (N)");
}

TEST_F(TimeButtonsTest, AnOrbitIsOnePeriodInWholeSeconds) {
    AddSatellite(14.34216);  // an Iridium: 100.4 minutes
    app.Main.CTOrbInc.Click();
    EXPECT_EQ(Offsets().SecondOffset, 6024);
    app.Main.CTOrbInc.Click();
    EXPECT_EQ(Offsets().SecondOffset, 12048);
    app.Main.CTOrbDec.Click();
    app.Main.CTOrbDec.Click();
    app.Main.CTOrbDec.Click();
    EXPECT_EQ(Offsets().SecondOffset, -6024);
    EXPECT_EQ(app.Main.LOrbit.Caption.Get(), "Orbit Turns: 1  Period: 100.4 min");
}

TEST_F(TimeButtonsTest, WithoutASatelliteThereIsNoOrbit) {
    app.Main.CTOrbInc.Enabled = true;
    app.Main.CTOrbInc.Click();
    EXPECT_EQ(Offsets(), TimeOffset{});
}

TEST_F(TimeButtonsTest, ASatelliteThatDoesNotRevolveMovesNothing) {
    AddSatellite(0);
    app.Main.CTOrbInc.Click();
    app.Main.CTOrbDec.Click();
    EXPECT_EQ(Offsets(), TimeOffset{});
}

TEST_F(TimeButtonsTest, AnOffsetStopsAtThirtyTwoBits) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    AddSatellite();
    Offsets().SecondOffset = kMost - 100;
    app.Main.CTOrbInc.Click();
    EXPECT_EQ(Offsets().SecondOffset, kMost - 100);
    Offsets() = {};
    Offsets().DayOffset = kMost;
    app.Main.CDayOffsetInc.Click();
    EXPECT_EQ(Offsets().DayOffset, kMost);
    Offsets().DayOffset = kLeast;
    app.Main.CDayOffsetDec.Click();
    EXPECT_EQ(Offsets().DayOffset, kLeast);
}

TEST_F(TimeButtonsTest, StartingTheClockKeepsTheOffsets) {
    app.Main.CDayOffsetInc.Click();
    clock.Stall(60000);
    app.Main.CRealTime.Value = true;
    EXPECT_EQ(DateLabel(), "DATE 21/01/2018 17:43:09.31 UTC (+)");
}

}  // namespace
}  // namespace glintara::testing
