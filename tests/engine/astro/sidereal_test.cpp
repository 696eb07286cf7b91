#include "engine/astro/sidereal.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::AroundCircle;
using test::kDegree;

constexpr double kSecondOfTime = 15 * test::kArcsecond;

constexpr double FromClock(double hours, double minutes, double seconds) {
    return ((hours * 60 + minutes) * 60 + seconds) * kSecondOfTime;
}

/// What a Julian date held in a double leaves of the Earth's rotation, and some rounding.
constexpr double kRotationStep = 1e-8;

/// What rounding leaves when both sides start from the same Julian date.
constexpr double kSameInstant = 2.5e-10;

TEST(SiderealFromJD, AtTheNoonOfJ2000) {
    // The mean sidereal time of 0 h UT that the polynomial begins with, 6 h 41 min 50.54841 s, and half a turn.
    EXPECT_NEAR(SiderealFromJD(2451545.0), FromClock(18, 41, 50.54841), 1e-12);
    EXPECT_NEAR(SiderealFromDate({2000, 1, 1, 12, 0, 0}), FromClock(18, 41, 50.54841) - 2 * std::numbers::pi, 1e-12);
}

// Meeus, Astronomical Algorithms, 2nd ed., examples 12.a and 12.b; the sign is that of dates before 2000.
TEST(SiderealFromJD, GivesThePublishedTimesNegatedBefore2000) {
    EXPECT_NEAR(SiderealFromJD(2446895.5), -FromClock(13, 10, 46.3668), kRotationStep);
    EXPECT_NEAR(SiderealFromJD(2446896.30625), -FromClock(8, 34, 57.0896), kRotationStep);
    EXPECT_NEAR(AroundCircle(SiderealFromDate({1987, 4, 10, 0, 0, 0}) + FromClock(13, 10, 46.3668)), 0, kRotationStep);
    EXPECT_NEAR(AroundCircle(SiderealFromDate({1987, 4, 10, 19, 21, 0}) + FromClock(8, 34, 57.0896)), 0, kRotationStep);
}

TEST(SiderealFromJD, IsTheMeanSiderealTimeFrom2000On) {
    test::Sampler sample(31);
    for (int i = 0; i < 5000; ++i) {
        const double jd = sample.Between(2451545.0, 2488070.0);
        const double angle = SiderealFromJD(jd);
        ASSERT_NEAR(AroundCircle(angle - eraGmst82(jd, 0)), 0, kSameInstant) << jd;
        ASSERT_GE(angle, 0);
        ASSERT_LE(angle, kTwoPi);
    }
}

TEST(SiderealFromJD, HasTheOppositeSignBefore2000) {
    test::Sampler sample(32);
    for (int i = 0; i < 5000; ++i) {
        const double jd = sample.Between(2415020.0, 2451545.0);
        const double angle = SiderealFromJD(jd);
        ASSERT_NEAR(AroundCircle(angle + eraGmst82(jd, 0)), 0, kSameInstant) << jd;
        ASSERT_LE(angle, 0);
        ASSERT_GE(angle, -kTwoPi);
    }
}

TEST(SiderealFromDate, IsTheAngleOfTheJulianDateWithinHalfATurn) {
    test::Sampler sample(33);
    for (int i = 0; i < 3000; ++i) {
        const double jd = sample.Between(2433282.5, 2469807.5);
        const CalendarFields fields = JDToDate(jd);
        const double angle = SiderealFromDate(fields);
        ASSERT_NEAR(AroundCircle(angle - SiderealFromJD(jd)), 0, 2 * kRotationStep) << jd;
        ASSERT_GE(angle, -kPi);
        ASSERT_LE(angle, kPi);
    }
}

TEST(SiderealBaseFromDate, LacksTheHalfTurn) {
    EXPECT_NEAR(SiderealBaseFromDate({2000, 1, 1, 12, 0, 0}), FromClock(6, 41, 50.54841), 1e-12);
    // Across the sign, a half turn more and a half turn less are the same angle.
    EXPECT_NEAR(
        AroundCircle(SiderealBaseFromDate({1987, 4, 10, 0, 0, 0}) - SiderealFromJD(2446895.5) - std::numbers::pi), 0,
        kRotationStep);
}

TEST(SiderealPlusAngle, WithALongitudeIsTheLocalSiderealTime) {
    // Turin, 7.69 degrees east, at a time of no wrap: the sum of the two.
    const CalendarFields fields{2018, 1, 20, 18, 30, 0};
    const double greenwich = eraGmst82(DateToJD(fields), 0);
    EXPECT_NEAR(AroundCircle(SiderealPlusAngle(fields, 7.69 * kDegree) - greenwich - 7.69 * kDegree), 0, kRotationStep);
    EXPECT_NEAR(AroundCircle(SiderealMinusAngle(fields, 2) - greenwich + 2), 0, kRotationStep);
}

TEST(SiderealPlusAngle, IsNotWrapped) {
    const CalendarFields fields{2018, 1, 20, 18, 30, 0};
    EXPECT_GT(SiderealPlusAngle(fields, 100), 100 - kPi - 1e-9);
    EXPECT_LT(SiderealMinusAngle(fields, 100), -100 + kPi + 1e-9);
}

TEST(Sidereal, FarDatesReturnInRange) {
    for (const double jd : {-1e7, 1e7, 1e9, -1e9, 1e12, -1e15, 1e20, -1e30}) {
        EXPECT_LE(std::abs(SiderealFromJD(jd)), kTwoPi + 1e-3) << jd;
        EXPECT_LE(std::abs(SiderealFromDate({jd, 1, 1, 0, 0, 0})), kPi) << jd;
    }
    for (const double jd : test::kHostile) {
        const double angle = SiderealFromJD(jd);
        EXPECT_FALSE(std::abs(angle) > 2 * kTwoPi) << jd;
        const double fromDate = SiderealFromDate({2018, 1, 1, 0, 0, jd});
        EXPECT_FALSE(std::abs(fromDate) > kPi) << jd;
    }
}

}  // namespace
}  // namespace glintara
