#include "engine/astro/calendar.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "engine/astro/support.h"

namespace glintara {
namespace {

void ExpectFields(const CalendarFields& fields, const CalendarFields& wanted) {
    EXPECT_EQ(fields.year, wanted.year);
    EXPECT_EQ(fields.month, wanted.month);
    EXPECT_EQ(fields.day, wanted.day);
    EXPECT_EQ(fields.hour, wanted.hour);
    EXPECT_EQ(fields.minute, wanted.minute);
    EXPECT_EQ(fields.second, wanted.second);
}

// Table of Meeus, Astronomical Algorithms, 2nd ed., chapter 7, as far as it is of the Gregorian calendar.
TEST(DateToJD, GivesThePublishedJulianDates) {
    struct Row {
        double year, month, day, hour, jd;
    };
    const Row rows[] = {{2000, 1, 1, 12, 2451545.0},  {1999, 1, 1, 0, 2451179.5},  {1987, 1, 27, 0, 2446822.5},
                        {1987, 6, 19, 12, 2446966.0}, {1988, 1, 27, 0, 2447187.5}, {1988, 6, 19, 12, 2447332.0},
                        {1900, 1, 1, 0, 2415020.5},   {1600, 1, 1, 0, 2305447.5},  {1600, 12, 31, 0, 2305812.5},
                        {1582, 10, 15, 0, 2299160.5}};
    for (const Row& row : rows) EXPECT_EQ(DateToJD({row.year, row.month, row.day, row.hour, 0, 0}), row.jd) << row.year;
    EXPECT_NEAR(DateToJD({1957, 10, 4.81, 0, 0, 0}), 2436116.31, 1e-9);
}

TEST(DateToJD, AddsTheTimeOfDay) {
    EXPECT_EQ(DateToJD({2000, 1, 1, 12, 0, 0}), 2451545.0);
    EXPECT_NEAR(DateToJD({2018, 1, 20, 6, 30, 45.5}) - DateToJD({2018, 1, 20, 0, 0, 0}), 23445.5 / 86400, 1e-9);
}

TEST(DateToJD, IsGregorianInAllYears) {
    for (int year = -4700; year < 4000; year += 37) {
        const int month = 1 + (year + 4700) % 12;
        double zero = 0;
        double mjd = 0;
        ASSERT_EQ(eraCal2jd(year, month, 17, &zero, &mjd), 0);
        EXPECT_EQ(DateToJD({static_cast<double>(year), static_cast<double>(month), 17, 0, 0, 0}), zero + mjd) << year;
    }
}

// Meeus, chapter 7: examples 7.c and the exercises after it; the last two are of the Julian calendar.
TEST(JDToDate, GivesThePublishedDates) {
    const CalendarFields sputnik = JDToDate(2436116.31);
    EXPECT_EQ(sputnik.year, 1957);
    EXPECT_EQ(sputnik.month, 10);
    EXPECT_EQ(sputnik.day, 4);
    EXPECT_NEAR(sputnik.hour + sputnik.minute / 60 + sputnik.second / 3600, 0.81 * 24, 1e-7);

    ExpectFields(JDToDate(1842713.0), {333, 1, 27, 12, 0, 0});
    const CalendarFields early = JDToDate(1507900.13);
    EXPECT_EQ(early.year, -584);
    EXPECT_EQ(early.month, 5);
    EXPECT_EQ(early.day, 28);
    EXPECT_NEAR(early.hour + early.minute / 60 + early.second / 3600, 0.63 * 24, 1e-7);
}

TEST(JDToDate, AgreesWithTheLibraryOnEveryGregorianDay) {
    for (const double day : test::Spaced(2299160.5, 2299160.5 + 1000000, 41)) {
        int year = 0;
        int month = 0;
        int dayOfMonth = 0;
        double fraction = 0;
        ASSERT_EQ(eraJd2cal(day, 0.25, &year, &month, &dayOfMonth, &fraction), 0);
        ExpectFields(JDToDate(day + 0.25),
                     {static_cast<double>(year), static_cast<double>(month), static_cast<double>(dayOfMonth), 6, 0, 0});
    }
}

TEST(JDToDate, IsJulianBeforeTheReformWhileDateToJDStaysGregorian) {
    ExpectFields(JDToDate(2299160.0), {1582, 10, 4, 12, 0, 0});
    ExpectFields(JDToDate(2299161.0), {1582, 10, 15, 12, 0, 0});
    // The two calendars stood ten days apart.
    EXPECT_EQ(DateToJD(JDToDate(2299160.0)), 2299160.0 - 10);
    EXPECT_EQ(DateToJD(JDToDate(2299161.0)), 2299161.0);
}

TEST(JDToDate, InvertsDateToJDWithinTheStepOfADouble) {
    test::Sampler sample(11);
    for (int i = 0; i < 2000; ++i) {
        const double jd = sample.Between(2433282.5, 2469807.5);
        const CalendarFields f = JDToDate(jd);
        EXPECT_NEAR(DateToJD(f), jd, 1e-9);
        EXPECT_EQ(f.hour, std::floor(f.hour));
        EXPECT_EQ(f.minute, std::floor(f.minute));
        EXPECT_GE(f.second, 0);
        EXPECT_LT(f.second, 60);
    }
}

TEST(DaysInMonth, FollowsTheFourYearRuleAlone) {
    EXPECT_EQ(DaysInMonth(2100, 2), 29);
    EXPECT_EQ(DaysInMonth(2000, 2), 29);
    EXPECT_EQ(DaysInMonth(2019, 2), 28);
    EXPECT_EQ(DaysInMonth(-4, 2), 29);
    EXPECT_EQ(DaysInMonth(-3, 2), 28);
    const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) EXPECT_EQ(DaysInMonth(2018, month), days[month - 1]) << month;
    EXPECT_EQ(DaysInMonth(2018, 0), 31);
    EXPECT_EQ(DaysInMonth(2018, 13), 31);
    EXPECT_EQ(DaysInMonth(2018, -2), 31);
}

TEST(NormalizeDateTime, CarriesDaysOverTheEndsOfMonthsAndYears) {
    ExpectFields(NormalizeDateTime({2018, 1, 32, 0, 0, 0}), {2018, 2, 1, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 0, 0, 0, 0}), {2017, 12, 31, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 3, 0, 0, 0, 0}), {2018, 2, 28, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2020, 3, 0, 0, 0, 0}), {2020, 2, 29, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2100, 2, 29, 0, 0, 0}), {2100, 2, 29, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 12, 32, 0, 0, 0}), {2019, 1, 1, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 31, 0, 0, 0}), {2018, 1, 31, 0, 0, 0});
}

TEST(NormalizeDateTime, CarriesMonths) {
    ExpectFields(NormalizeDateTime({2018, 24, 5, 0, 0, 0}), {2019, 12, 5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 13, 5, 0, 0, 0}), {2019, 1, 5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 0, 5, 0, 0, 0}), {2017, 12, 5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, -11, 5, 0, 0, 0}), {2017, 1, 5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, -12, 5, 0, 0, 0}), {2016, 12, 5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 12, 5, 0, 0, 0}), {2018, 12, 5, 0, 0, 0});
}

TEST(NormalizeDateTime, CarriesTimesOfDay) {
    ExpectFields(NormalizeDateTime({2018, 1, 20, 23, 59, 60}), {2018, 1, 21, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 20, 0, 0, -1}), {2018, 1, 19, 23, 59, 59});
    ExpectFields(NormalizeDateTime({2018, 1, 20, 0, -60, 0}), {2018, 1, 19, 23, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 20, -25, 0, 0}), {2018, 1, 18, 23, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 20, 5, 7, 86400}), {2018, 1, 21, 5, 7, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 20, 5, 7, -7200}), {2018, 1, 20, 3, 7, 0});
}

TEST(NormalizeDateTime, CarriesSecondsBetweenMinusOneAndZero) {
    ExpectFields(NormalizeDateTime({2018, 1, 20, 20, 15, -0.25}), {2018, 1, 20, 20, 14, 59.75});
    // A second so little below zero that the minute less it rounds to a whole one.
    ExpectFields(NormalizeDateTime({2018, 1, 20, 20, 15, -1e-20}), {2018, 1, 20, 20, 15, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 20, 20, 0, -1e-20}), {2018, 1, 20, 20, 0, 0});
}

TEST(NormalizeDateTime, KeepsTheFractionOfTheSecond) {
    const CalendarFields fields = JDToDate(2458138.626543);
    EXPECT_NE(fields.second, std::floor(fields.second));
    ExpectFields(NormalizeDateTime(fields), fields);
    ExpectFields(NormalizeDateTime({2018, 1, 20, 20, 15, 61.625}), {2018, 1, 20, 20, 16, 1.625});
}

TEST(NormalizeDateTime, CountsDaysAsTheCalendarDoes) {
    using namespace std::chrono;
    // Between 1 March 1900 and 28 February 2100 the four-year rule is the true one.
    const sys_days start = year{1901} / January / 1;
    for (int offset = -290; offset < 72000; offset += 13) {
        const year_month_day truth{start + days{offset}};
        const CalendarFields f = NormalizeDateTime({1901, 1, 1.0 + offset, 0, 0, 0});
        ASSERT_EQ(f.year, static_cast<int>(truth.year())) << offset;
        ASSERT_EQ(f.month, static_cast<unsigned>(truth.month())) << offset;
        ASSERT_EQ(f.day, static_cast<unsigned>(truth.day())) << offset;
    }
    // ... and the other way round.
    const sys_days end = year{2099} / December / 31;
    for (int offset = 0; offset < 72000; offset += 17) {
        const year_month_day truth{end - days{offset}};
        const CalendarFields f = NormalizeDateTime({2099, 12, 31.0 - offset, 0, 0, 0});
        ASSERT_EQ(f.year, static_cast<int>(truth.year())) << offset;
        ASSERT_EQ(f.month, static_cast<unsigned>(truth.month())) << offset;
        ASSERT_EQ(f.day, static_cast<unsigned>(truth.day())) << offset;
    }
}

TEST(NormalizeDateTime, FarFieldsCostNoTimeAndKeepTheDate) {
    // 1461 days are four years by the four-year rule, however many times.
    ExpectFields(NormalizeDateTime({2018, 5, 20 + 1461e6, 0, 0, 0}), {4002018, 5, 20, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 5, 20 - 1461e6, 0, 0, 0}), {-3997982, 5, 20, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 5 + 12e9, 20, 0, 0, 0}), {2018 + 1e9, 5, 20, 0, 0, 0});
    ExpectFields(NormalizeDateTime({5e8, 2, 30, 0, 0, 0}), {5e8, 3, 1, 0, 0, 0});
    // 1e12 days of seconds.
    ExpectFields(NormalizeDateTime({2018, 5, 20, 1, 2, 3 + 86400.0 * 1461 * 1000}), {6018, 5, 20, 1, 2, 3});
}

TEST(NormalizeDateTime, DaysWithAFractionComeToRest) {
    // A fraction belongs to the day before it, also on the last of a month.
    ExpectFields(NormalizeDateTime({2018, 1, 31.5, 0, 0, 0}), {2018, 1, 31.5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 2, 0.5, 0, 0, 0}), {2018, 1, 31.5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 1, 40.5, 0, 0, 0}), {2018, 2, 9.5, 0, 0, 0});
    ExpectFields(NormalizeDateTime({2018, 3, std::nextafter(1.0, 0.0), 0, 0, 0}), {2018, 3, 1, 0, 0, 0});
}

TEST(NormalizeDateTime, AnyFiniteFieldsComeIntoRange) {
    for (const double a : test::kHostile) {
        for (const double b : test::kHostile) {
            const CalendarFields cases[] = {{2018, a, b, 0, 0, 0},
                                            {a, 1, 20, 0, b, 0},
                                            {2018, 1, a, b, 0, 0},
                                            {2018, 1, 20, 0, a, b},
                                            {a, b, 20, 0, 0, 0}};
            for (const CalendarFields& fields : cases) {
                const CalendarFields f = NormalizeDateTime(fields);
                if (!std::isfinite(a) || !std::isfinite(b)) continue;  // that they come back at all is the point
                EXPECT_GE(f.second, 0);
                EXPECT_LT(f.second, 60);
                EXPECT_GE(f.minute, 0);
                EXPECT_LT(f.minute, 60);
                EXPECT_GE(f.hour, 0);
                EXPECT_LT(f.hour, 24);
                EXPECT_GE(f.day, 1);
                EXPECT_LT(f.day, 32);
                EXPECT_GT(f.month, 0);
                EXPECT_LT(f.month, 13);
            }
        }
    }
}

TEST(NormalizeDateTime, LeavesFieldsAloneThatAreNoNumbers) {
    const CalendarFields f = NormalizeDateTime({2018, 13, 40, test::kNotANumber, 75, 0});
    EXPECT_EQ(f.month, 13);
    EXPECT_EQ(f.day, 40);
    EXPECT_EQ(f.minute, 75);
    EXPECT_EQ(NormalizeDateTime({2018, 1, 20, 5, test::kInfinity, 80}).second, 80);
}

TEST(Calendar, HostileDatesReturn) {
    for (const double x : test::kHostile) {
        const CalendarFields f = JDToDate(x);
        EXPECT_EQ(std::isfinite(f.day), std::isfinite(x)) << x;
        EXPECT_EQ(std::isfinite(DateToJD({x, 1, 1, 0, 0, 0})), std::isfinite(x)) << x;
    }
}

// Epochs of the element sets of the report and of its revision, with the dates that the texts tell for them.
TEST(EpochTextToJD, GivesTheInstantOfTheEpoch) {
    EXPECT_NEAR(EpochTextToJD("80275.98708465"), DateToJD({1980, 10, 1, 0, 0, 0}) + 0.98708465, 1e-9);
    EXPECT_NEAR(EpochTextToJD("00179.78495062"), DateToJD({2000, 6, 27, 0, 0, 0}) + 0.78495062, 1e-9);
    EXPECT_NEAR(EpochTextToJD("18020.50000000"), 2458139.0, 1e-9);
    EXPECT_EQ(EpochTextToJD("00001.00000000"), 2451544.5);
}

TEST(EpochTextToJD, TurnsTheCenturyAfterFifty) {
    EXPECT_EQ(EpochTextToJD("50001.00000000"), DateToJD({2050, 1, 1, 0, 0, 0}));
    EXPECT_EQ(EpochTextToJD("51001.00000000"), DateToJD({1951, 1, 1, 0, 0, 0}));
    EXPECT_EQ(EpochTextToJD("57001.00000000"), DateToJD({1957, 1, 1, 0, 0, 0}));
    EXPECT_EQ(EpochTextToJD("99365.00000000"), DateToJD({1999, 12, 31, 0, 0, 0}));
}

TEST(EpochTextToJD, ReadsShortAndOddText) {
    // A blank year digit, as old sets have it, is a year below ten.
    EXPECT_EQ(EpochTextToJD(" 8264.51782528"), EpochTextToJD("08264.51782528"));
    // Without a day of the year it is the day before the first.
    EXPECT_EQ(EpochTextToJD("18"), DateToJD({2017, 12, 31, 0, 0, 0}));
    for (const char* text : {"", "1", "x", "\0\0\0", "        ", "99999999999999999999", "18 e999", "--1e308e308"})
        EXPECT_TRUE(std::isfinite(EpochTextToJD(text))) << text;
}

TEST(EpochTextToJD, IsTheSameDayAsTheLibraryCounts) {
    for (int dayOfYear = 1; dayOfYear <= 366; ++dayOfYear) {
        const std::string text = "16" +
                                 std::string(dayOfYear < 10    ? "00"
                                             : dayOfYear < 100 ? "0"
                                                               : "") +
                                 std::to_string(dayOfYear) + ".25000000";
        double zero = 0;
        double newYear = 0;
        ASSERT_EQ(eraCal2jd(2016, 1, 1, &zero, &newYear), 0);
        EXPECT_EQ(EpochTextToJD(text), zero + newYear + dayOfYear - 1 + 0.25);
    }
}

}  // namespace
}  // namespace glintara
