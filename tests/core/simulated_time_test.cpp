#include "core/simulated_time.h"

#include <chrono>
#include <cstdint>
#include <limits>
#include <random>

#include "core/program_fixture.h"
#include "engine/astro/horizon.h"
#include "orbit/location.h"
#include "scene/orientation.h"
#include "scene/view_geometry.h"

namespace glintara::testing {
namespace {

/// Turn of the Earth against the stars in a day, degrees (IAU 1982 at J2000).
constexpr double kDegreesPerDay = 360.98564736629;

/// Julian date of a Gregorian date, by the calendar of the standard library.
double JulianDate(int year, unsigned month, unsigned day, double hours = 0) {
    const std::chrono::sys_days days{std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day)};
    return 2440587.5 + static_cast<double>(days.time_since_epoch().count()) + hours / 24;
}

double Degrees(double radians) { return std::remainder(radians / kDegree, 360); }

struct SimulatedTimeTest : ProgramTest {
    SimulatedTimeTest() { time.ReadBase(); }

    /// Stops the clock at a date.
    void StandAt(std::int32_t year, int month, int day, int hour = 0, int minute = 0, double second = 0) {
        app.Main.CRealTime.Value = false;
        data.BaseYear = year;
        data.BaseMonth = static_cast<std::int16_t>(month);
        data.BaseDay = static_cast<std::int16_t>(day);
        data.BaseHour = static_cast<std::int16_t>(hour);
        data.BaseMinute = static_cast<std::int16_t>(minute);
        data.BaseSecond = second;
        data.TimeOffset = {};
        time.TimeSyncronize();
    }

    const std::string& DateLabel() const { return app.Main.LDateTime.Caption.Get(); }
    const std::string& JulianLabel() const { return app.Main.LJD.Caption.Get(); }

    /// Milliseconds between the displayed instant and `jd`.
    double MillisOff(double jd) const { return (data.SimTime - jd) / kSecond * 1000; }

    CommonData& data = app.Data;
    SimulatedTime& time = program.Time;
};

TEST_F(SimulatedTimeTest, TheClockRunsAsTheComputersDoes) {
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 17:42:09.31 UTC");
    EXPECT_NEAR(MillisOff(JulianDate(2018, 1, 20, 17 + 42 / 60.0 + 9.31 / 3600)), 0, 0.1);
    clock.Stall(50690);
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 17:43:00 UTC");
}

TEST_F(SimulatedTimeTest, TheSystemsClockIsReadInUtcWithItsFraction) {
    const SystemClock system;
    const auto seconds = [](auto instant) { return std::chrono::duration<double>(instant.time_since_epoch()).count(); };
    const double before = seconds(std::chrono::system_clock::now());
    const double read = (DateToJD(system.ReadUtc()) - 2440587.5) / kSecond;
    EXPECT_NEAR(read, before, 2);
    const double zone = (DateToJD(system.ReadLocal()) - DateToJD(system.ReadUtc())) * 24;
    EXPECT_LE(std::abs(zone), 14.01);
    EXPECT_NEAR(zone * 4, std::round(zone * 4), 0.01) << "zones differ by quarters of an hour";
}

TEST_F(SimulatedTimeTest, FortyDaysFromTheEndOfAMonthLieInTheNextMonthButOne) {
    StandAt(2018, 1, 31, 6);
    data.TimeOffset.DayOffset = 40;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 12/03/2018 06:00:00 UTC (+)");
    StandAt(2020, 1, 31, 6);
    data.TimeOffset.DayOffset = 40;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 11/03/2020 06:00:00 UTC (+)");
    EXPECT_NEAR(MillisOff(JulianDate(2020, 3, 11, 6)), 0, 0.1);
}

TEST_F(SimulatedTimeTest, AStandingClockIsMarked) {
    StandAt(2018, 1, 20, 17, 42, 9.25);
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 17:42:09.25 UTC (N)");
}

TEST_F(SimulatedTimeTest, AnOffsetIsMarkedInEitherMode) {
    data.TimeOffset.HourOffset = -1;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 16:42:09.31 UTC (+)");
    app.Main.CRealTime.Value = false;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 16:42:09.31 UTC (+)");
}

TEST_F(SimulatedTimeTest, EachOffsetButTheMillisecondsIsMarked) {
    for (std::int32_t TimeOffset::*offset :
         {&TimeOffset::YearOffset, &TimeOffset::MonthOffset, &TimeOffset::DayOffset, &TimeOffset::HourOffset,
          &TimeOffset::MinuteOffset, &TimeOffset::SecondOffset}) {
        data.TimeOffset = {};
        data.TimeOffset.*offset = 1;
        time.TimeSyncronize();
        EXPECT_TRUE(DateLabel().ends_with(" UTC (+)")) << DateLabel();
    }
    data.TimeOffset = {};
    data.TimeOffset.MilliOffset = 100;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 20/01/2018 17:42:09.41 UTC");
}

TEST_F(SimulatedTimeTest, SecondsAreCutAndShowTheDigitsThatTheyHave) {
    const std::pair<double, const char*> cases[] = {{5.25, "05.25"}, {5.5, "05.5"},     {5, "05"},        {0.5, "00.5"},
                                                    {0, "00"},       {59.999, "59.99"}, {12.345, "12.34"}};
    for (const auto& [second, text] : cases) {
        StandAt(2018, 1, 20, 7, 8, second);
        EXPECT_EQ(DateLabel(), std::string("DATE 20/01/2018 07:08:") + text + " UTC (N)");
    }
}

TEST_F(SimulatedTimeTest, LocalTimeNamesItsZone) {
    StandAt(2018, 12, 31, 23, 30, 5.25);
    app.Main.CLocalTime.Value = true;
    data.UTCOffsetHours = 2;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 01/01/2019 01:30:05.2 UTC+2 (N)");
    data.UTCOffsetHours = -3;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 31/12/2018 20:30:05.2 UTC-3 (N)");
    data.UTCOffsetHours = 0;
    time.TimeSyncronize();
    EXPECT_EQ(DateLabel(), "DATE 31/12/2018 23:30:05.2 UTC (N)");
    EXPECT_EQ(data.SimYear, 2018) << "the zone is for show";
}

TEST_F(SimulatedTimeTest, TheJulianLabelHasFourteenCharacters) {
    StandAt(2000, 1, 1, 14, 57, 46.1);
    EXPECT_TRUE(JulianLabel().starts_with("JD: 2451545.123450 LST: ")) << JulianLabel();
}

// Greenwich mean sidereal time at 2000 January 1, 12h UT1 is 18h41m50.548s.
TEST_F(SimulatedTimeTest, TheJulianLabelTellsSiderealTimeAndPlace) {
    StandAt(2000, 1, 1, 12);
    EXPECT_EQ(JulianLabel(), "JD: 2451545.000000 LST: 18h41'50\" LAT: 000°00'00\" LON: 000°00'00\"");
    SetLocation(data, {45.0703 * kDegree, 7.6869 * kDegree, 240});
    time.TimeSyncronize();
    // 7.6869 degrees are 30m44.9s of sidereal time.
    EXPECT_EQ(JulianLabel(), "JD: 2451545.000000 LST: 19h12'35\" LAT: 045°04'13\" LON: 007°41'12\"");
    SetLocation(data, {0, 170 * kDegree, 0});
    time.TimeSyncronize();
    EXPECT_TRUE(JulianLabel().starts_with("JD: 2451545.000000 LST: 06h01'50\" ")) << "wrapped into a day";
}

// Meeus, Astronomical Algorithms, example 25.a: 13 October 1992, 0h.
TEST_F(SimulatedTimeTest, TheSunStandsWhereTheAlmanacSays) {
    StandAt(1992, 10, 13);
    EXPECT_NEAR(data.SunRA / kDegree, 198.38083, 0.02);
    EXPECT_NEAR(data.SunDec / kDegree, -7.78507, 0.02);
}

// Meeus, example 47.a: 12 April 1992, 0h.
TEST_F(SimulatedTimeTest, TheMoonStandsWhereTheAlmanacSays) {
    StandAt(1992, 4, 12);
    EXPECT_NEAR(data.MoonRA / kDegree, 134.68847, 0.1);
    EXPECT_NEAR(data.MoonDec / kDegree, 13.768368, 0.1);
    EXPECT_NEAR(data.MoonDistance / 1000, 368409.7, 1500);
}

// Equation of time on 20 January: the Sun passes the meridian 10.9 minutes late, so it stands over 2.7 degrees east at
// noon. At the solstice of 21 June 2018, 10:07, its declination is the obliquity.
TEST_F(SimulatedTimeTest, TheSunsDirectionIsEarthFixed) {
    StandAt(2018, 1, 20, 12);
    EXPECT_NEAR(Degrees(std::atan2(data.SunDir.y, data.SunDir.x)), 2.72, 0.1);
    EXPECT_NEAR(Length(data.SunDir), 1, 1e-12);
    StandAt(2018, 6, 21, 10, 7);
    EXPECT_NEAR(data.SunDir.z, std::sin(23.435 * kDegree), 1e-4);
}

// In the evening of Greenwich it is noon over America.
TEST_F(SimulatedTimeTest, TheSunGoesWest) {
    StandAt(2018, 3, 20, 18);
    EXPECT_LT(data.SunDir.y, -0.99);
    StandAt(2018, 3, 20, 6);
    EXPECT_GT(data.SunDir.y, 0.99);
    StandAt(2018, 3, 20, 16, 15);  // the equinox
    EXPECT_NEAR(data.SunDir.z, 0, 3e-4);
}

// Full moon of 31 January 2018, 13:27 UTC, with a total eclipse: the Moon stands opposite the Sun.
TEST_F(SimulatedTimeTest, TheMoonIsFullAtTheEclipse) {
    StandAt(2018, 1, 31, 13, 27);
    EXPECT_NEAR(std::abs(Degrees(data.MoonRA - data.SunRA)), 180, 0.7);
    EXPECT_NEAR((data.MoonDec + data.SunDec) / kDegree, 0, 0.7);
    EXPECT_NEAR(data.MoonDistance / 1000, 360100, 3000);
    const double shift =
        std::hypot((data.MoonTopoRA - data.MoonRA) * std::cos(data.MoonDec), data.MoonTopoDec - data.MoonDec);
    EXPECT_LT(shift / kDegree, 1.05) << "no more than the horizontal parallax";
    EXPECT_GT(shift / kDegree, 0.1);
}

TEST_F(SimulatedTimeTest, AJumpHitsTheInstantToTheMillisecond) {
    std::mt19937_64 random(20180120);
    std::uniform_real_distribution<double> jd(JulianDate(1850, 1, 1), JulianDate(2150, 1, 1));
    std::uniform_int_distribution<int> pause(0, 2500);
    for (int i = 0; i < 5000; ++i) {
        app.Main.CRealTime.Value = i % 3 != 0;
        clock.Stall(pause(random));
        const double wanted = jd(random);
        time.SetJDToTimeOffset(wanted);
        ASSERT_NEAR(MillisOff(wanted), 0, 0.6) << "to " << wanted;
        // The calendar fields say the same by another calendar; the day that it does not have stands for the next one.
        const std::chrono::year_month_day date{std::chrono::year(data.SimYear),
                                               std::chrono::month(static_cast<unsigned>(data.SimMonth)),
                                               std::chrono::day(static_cast<unsigned>(data.SimDay))};
        if (!date.ok()) continue;
        const double hours = data.SimHour + data.SimMinute / 60.0 + data.SimSecond / 3600;
        const double shown =
            2440587.5 + static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count()) + hours / 24;
        ASSERT_NEAR((shown - wanted) / kSecond * 1000, 0, 0.7) << "to " << wanted;
    }
}

TEST_F(SimulatedTimeTest, AJumpAcrossTheCenturiesHitsToo) {
    for (const int century : {1500, 1700, 1800, 1900, 2100, 2200, 2300, 2500}) {
        for (int day = -3; day <= 4; ++day) {
            const double wanted = JulianDate(century, 2, 28, 13.25) + day;
            StandAt(2018, 1, 20, 17);
            time.SetJDToTimeOffset(wanted);
            EXPECT_NEAR(MillisOff(wanted), 0, 0.6) << century << " " << day;
            time.SetJDToTimeOffset(JulianDate(2018, 1, 20, 3.5));
            EXPECT_NEAR(MillisOff(JulianDate(2018, 1, 20, 3.5)), 0, 0.6) << "and back from " << century << " " << day;
        }
    }
}

TEST_F(SimulatedTimeTest, ARunningClockRunsOnAfterAJump) {
    const double wanted = JulianDate(2018, 1, 21, 5.0628);
    clock.Stall(987);
    time.SetJDToTimeOffset(wanted);
    EXPECT_NEAR(MillisOff(wanted), 0, 0.6) << "though the clock had gone on since the last tick";
    clock.Stall(1000);
    time.TimeSyncronize();
    EXPECT_NEAR(MillisOff(wanted), 1000, 0.7);
    EXPECT_TRUE(DateLabel().ends_with(" UTC (+)"));
}

TEST_F(SimulatedTimeTest, AJumpAsksForAPicture) {
    app.Main.Timer2.Stop();
    time.SetJDToTimeOffset(JulianDate(2018, 1, 21));
    EXPECT_TRUE(app.Main.Timer2.Enabled);
}

TEST_F(SimulatedTimeTest, AJumpOutOfReachChangesNothing) {
    StandAt(2018, 1, 20, 17);
    data.TimeOffset.HourOffset = 3;
    time.TimeSyncronize();
    const TimeOffset before = data.TimeOffset;
    const double shown = data.SimTime;
    for (const double jd :
         {1e12, -1e12, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        time.SetJDToTimeOffset(jd);
        EXPECT_EQ(data.TimeOffset, before) << jd;
        EXPECT_EQ(data.SimTime, shown) << jd;
    }
}

TEST_F(SimulatedTimeTest, AYearBeyondThirtyTwoBitsLeavesTheInstant) {
    StandAt(2018, 1, 20, 17);
    const double shown = data.SimTime;
    data.TimeOffset.YearOffset = std::numeric_limits<std::int32_t>::max();
    time.TimeSyncronize();
    EXPECT_EQ(data.SimTime, shown);
    EXPECT_EQ(data.SimYear, 2018);
    data.TimeOffset.YearOffset = std::numeric_limits<std::int32_t>::min();
    time.TimeSyncronize();
    EXPECT_TRUE(std::isfinite(data.SimTime)) << "an early year is only early";
    EXPECT_TRUE(IsFinite(data.SunDir));
}

TEST_F(SimulatedTimeTest, OffsetsOfAnySizeGiveADate) {
    StandAt(2018, 1, 20, 17);
    for (std::int32_t TimeOffset::*offset :
         {&TimeOffset::MonthOffset, &TimeOffset::DayOffset, &TimeOffset::HourOffset, &TimeOffset::MinuteOffset,
          &TimeOffset::SecondOffset, &TimeOffset::MilliOffset}) {
        for (const std::int32_t value :
             {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
            data.TimeOffset = {};
            data.TimeOffset.*offset = value;
            time.TimeSyncronize();
            EXPECT_GE(data.SimMonth, 1);
            EXPECT_LE(data.SimMonth, 12);
            EXPECT_GE(data.SimDay, 1);
            EXPECT_LE(data.SimDay, 31);
            EXPECT_GE(data.SimSecond, 0);
            EXPECT_LT(data.SimSecond, 60);
            EXPECT_TRUE(IsFinite(data.SunDir));
        }
    }
}

// Locked to the stars, the view goes back over the Earth by as much as the Earth turns.
TEST_F(SimulatedTimeTest, ALockedSkyStandsWhileTheEarthTurns) {
    StandAt(2018, 1, 20, 17);
    data.View.ViewLon = 40 * kDegree;
    data.View.ViewLat = 20 * kDegree;
    data.View.ViewRoll = 5 * kDegree;
    app.Main.CLockSky.Value = true;
    time.TimeSyncronize();
    EXPECT_NEAR(Degrees(data.View.ViewLon), 40, 1e-6) << "the lock itself moves nothing";
    app.Main.CHourOffsetInc.Click();
    EXPECT_NEAR(Degrees(data.View.ViewLon), 40 - kDegreesPerDay / 24, 1e-6);
    EXPECT_NEAR(Degrees(data.View.ViewLat), 20, 1e-9);
    EXPECT_NEAR(Degrees(data.View.ViewRoll), 5, 1e-9);
    app.Main.CDayOffsetInc.Click();
    EXPECT_NEAR(Degrees(data.View.ViewLon - 40 * kDegree), Degrees(-kDegreesPerDay * 25 / 24 * kDegree), 1e-5);
}

TEST_F(SimulatedTimeTest, AnUnlockedSkyTurns) {
    StandAt(2018, 1, 20, 17);
    data.View.ViewLon = 40 * kDegree;
    app.Main.CLockSky.Value = true;
    app.Main.CLockSky.Value = false;
    app.Main.CHourOffsetInc.Click();
    EXPECT_NEAR(Degrees(data.View.ViewLon), 40, 1e-9);
}

TEST_F(SimulatedTimeTest, TheViewsTablesFollowALockedView) {
    StandAt(2018, 1, 20, 17);
    app.Main.CLockSky.Value = true;
    app.Main.CHourOffsetInc.Click();
    EXPECT_NEAR(data.View.SinLon, std::sin(data.View.ViewLon), 1e-12);
    EXPECT_NEAR(data.View.CosLon, std::cos(data.View.ViewLon), 1e-12);
}

struct AimTest : SimulatedTimeTest {
    AimTest() {
        SetLocation(data, {0, 7.69 * kDegree, 0});
        AddSatellite();
        StandAt(2018, 1, 20, 17);
        app.Main.CLockSatellite.Value = true;
        data.View = ViewState{};
        Keep(direction);
    }

    void Keep(const HorizonAngles& angles) { app.Run.Working.Keep(data.Satellite(data.WorkingSat()), angles); }

    /// The satellite's direction from the observer, on view axes.
    Vector3 Seen() {
        RefreshViewCache(data.View);
        return RotateWorldToView(data.View, HorizonToWorld(data.Site, direction));
    }

    const HorizonAngles direction{130 * kDegree, 25 * kDegree};
};

TEST_F(AimTest, WithoutSkyTheEyeLooksAlongTheLineOfSight) {
    time.TimeSyncronize();
    const Vector3 seen = Seen();
    EXPECT_NEAR(seen.x, 1, 1e-9);
    EXPECT_NEAR(seen.y, 0, 1e-9);
    EXPECT_NEAR(seen.z, 0, 1e-9);
    EXPECT_EQ(data.View.ViewRoll, 0);
}

TEST_F(AimTest, WithSkyTheObserverFacesTheSatellite) {
    app.Main.CDrawSky.Value = true;
    time.TimeSyncronize();
    const Vector3 seen = Seen();
    EXPECT_LT(seen.x, 0) << "away from the viewer";
    EXPECT_NEAR(seen.y, 0, 1e-9);
    EXPECT_NEAR(seen.z, std::sin(direction.altitude), 1e-9);
    // The observer is the top of the disc.
    const Vector3 observer = RotateWorldToView(data.View, ObserverOnUnitSphere(data.Site));
    EXPECT_NEAR(observer.z, 1, 1e-9);
    EXPECT_EQ(data.View.PanY, 0) << "only a flat sky is shifted";
}

TEST_F(AimTest, AFlatSkyThatIsShiftedBringsTheSatelliteToTheCentre) {
    app.Main.CDrawSky.Value = true;
    app.Main.CFlatSky.Value = true;
    data.View.SkyScale = 55;
    data.View.PanX = 0.3;
    time.TimeSyncronize();
    EXPECT_EQ(data.View.PanX, 0);
    EXPECT_NEAR(data.View.PanY, -(25.0 / 90 * 55) - 1, 1e-9);
    EXPECT_NEAR(Degrees(data.View.ViewRoll), -130, 1e-9);
    EXPECT_NEAR(Degrees(data.View.ViewLat), -90, 1e-9);
    EXPECT_NEAR(Degrees(data.View.ViewLon), 7.69, 1e-9);
}

TEST_F(AimTest, AFlatSkyInItsMiddleIsTurned) {
    app.Main.CDrawSky.Value = true;
    app.Main.CFlatSky.Value = true;
    time.TimeSyncronize();
    EXPECT_NEAR(Seen().x, 1, 1e-9);
    EXPECT_EQ(data.View.PanY, 0);
}

TEST_F(AimTest, NothingIsAimedAtWhileTheMouseHoldsTheView) {
    app.Run.DragActive = true;
    time.TimeSyncronize();
    EXPECT_EQ(data.View.ViewLon, 0);
    app.Run.DragActive = false;
    time.TimeSyncronize();
    EXPECT_NE(data.View.ViewLon, 0);
}

TEST_F(AimTest, AnotherSatelliteIsAimedAtOnlyWhenAPassHasSeenIt) {
    AddSatellite();
    time.TimeSyncronize();
    EXPECT_EQ(data.View.ViewLon, 0) << "the direction is that of the satellite that worked before";
    Keep(direction);
    time.TimeSyncronize();
    EXPECT_NE(data.View.ViewLon, 0);
}

TEST_F(AimTest, AnEmptyListIsLegal) {
    data.SatCount = 0;
    app.Main.CLockSatellite.Enabled = true;
    time.TimeSyncronize();
    EXPECT_EQ(data.View.ViewLon, 0);
}

TEST_F(AimTest, ADisabledLockDoesNotAim) {
    app.Main.CLockSatellite.Enabled = false;
    time.TimeSyncronize();
    EXPECT_EQ(data.View.ViewLon, 0);
}

}  // namespace
}  // namespace glintara::testing
