#include "engine/astro/trigonometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::kInfinity;
using test::kNotANumber;

constexpr double kRightAngleText = 1.5707963267949;

TEST(ArcSin, IsARightAngleAHairAboveOne) {
    EXPECT_EQ(ArcSin(1.00000000000001), kRightAngleText);
    EXPECT_EQ(ArcSin(-1.00000000000001), -kRightAngleText);
    EXPECT_EQ(ArcSin(1), kRightAngleText);
    EXPECT_EQ(ArcSin(1 - 5e-15), kRightAngleText);
}

TEST(ArcSin, ClampsFarBeyondOne) {
    EXPECT_EQ(ArcSin(1.5), kRightAngleText);
    EXPECT_EQ(ArcSin(-7), -kRightAngleText);
    EXPECT_EQ(ArcSin(kInfinity), kRightAngleText);
    EXPECT_TRUE(std::isnan(ArcSin(kNotANumber)));
}

TEST(ArcSin, AgreesWithTheLibraryInside) {
    for (const double x : test::Spaced(-0.999, 1, 0.0137)) EXPECT_NEAR(ArcSin(x), std::asin(x), 1e-14) << x;
    EXPECT_EQ(ArcSin(0), 0);
    // Just outside the guard the angle still follows the sine.
    EXPECT_NEAR(ArcSin(1 - 1e-12), std::asin(1 - 1e-12), 1e-9);
}

TEST(ArcCos, BeyondOneOnlyExactlyMinusOneIsAHalfTurn) {
    EXPECT_EQ(ArcCos(-1.5), 0);
    EXPECT_EQ(ArcCos(-1.0), kPi);
    EXPECT_EQ(ArcCos(1.0), 0);
    EXPECT_EQ(ArcCos(3), 0);
    EXPECT_TRUE(std::isnan(ArcCos(kNotANumber)));
}

TEST(ArcCos, AgreesWithTheLibraryInside) {
    for (const double x : test::Spaced(-0.999, 1, 0.0137)) EXPECT_NEAR(ArcCos(x), std::acos(x), 1e-14) << x;
}

TEST(Atan2Full, RunsFromMinusAQuarterToThreeQuartersOfATurn) {
    EXPECT_EQ(Atan2Full(0, 0), 0);
    EXPECT_EQ(Atan2Full(2, 0), kPi / 2);
    EXPECT_EQ(Atan2Full(-2, 0), -kPi / 2);
    EXPECT_EQ(Atan2Full(0, -1), kPi);
    EXPECT_NEAR(Atan2Full(-1, -1), 1.25 * kPi, 1e-14);
    EXPECT_NEAR(Atan2Full(-1, 1), -0.25 * kPi, 1e-14);
}

TEST(Atan2Full, PointsTheSameWayAsTheLibrary) {
    test::Sampler sample(1);
    for (int i = 0; i < 1000; ++i) {
        const double x = sample.Between(-1, 1);
        const double y = sample.Between(-1, 1);
        EXPECT_NEAR(test::AroundCircle(Atan2Full(y, x) - std::atan2(y, x)), 0, 1e-14);
        EXPECT_GE(Atan2Full(y, x), -kPi / 2 - 1e-14);
        EXPECT_LE(Atan2Full(y, x), 1.5 * kPi + 1e-14);
    }
}

TEST(Atan2Positive, StaysWithinOneTurn) {
    test::Sampler sample(2);
    for (int i = 0; i < 1000; ++i) {
        const double x = sample.Between(-1, 1);
        const double y = sample.Between(-1, 1);
        EXPECT_NEAR(test::AroundCircle(Atan2Positive(y, x) - std::atan2(y, x)), 0, 1e-14);
        EXPECT_GE(Atan2Positive(y, x), 0);
        EXPECT_LE(Atan2Positive(y, x), kTwoPi);
    }
}

TEST(Atan2Positive, OnTheAxisIsAQuarterTurnWithTheSignOfY) {
    for (const double zero : {0.0, -0.0}) {
        EXPECT_NEAR(Atan2Positive(3, zero), kPi / 2, 1e-14);
        EXPECT_NEAR(Atan2Positive(-3, zero), -kPi / 2, 1e-14);
        EXPECT_TRUE(std::isfinite(Atan2Positive(0, zero)));
    }
}

TEST(Truncate, CutsTowardsZero) {
    EXPECT_EQ(Truncate(2.9), 2);
    EXPECT_EQ(Truncate(-2.9), -2);
    EXPECT_EQ(Truncate(-0.3), 0);
    EXPECT_EQ(Truncate(5), 5);
    EXPECT_EQ(Truncate(-1e300), -1e300);
}

TEST(WrapTwoPi, BringsAnyAngleIntoOneTurn) {
    test::Sampler sample(3);
    for (int i = 0; i < 1000; ++i) {
        const double angle = sample.Between(-1000, 1000);
        const double wrapped = WrapTwoPi(angle);
        EXPECT_GE(wrapped, 0);
        EXPECT_LE(wrapped, kTwoPi);
        EXPECT_NEAR(test::AroundCircle(wrapped - angle), 0, 1e-11);
    }
    EXPECT_EQ(WrapTwoPi(0), 0);
    EXPECT_NEAR(WrapTwoPi(-kPi / 2), 1.5 * kPi, 1e-14);
}

TEST(WrapTwoPi, KeepsHugeAnglesInRangeAndLetsNonNumbersThrough) {
    for (const double angle : {1e17, -1e17, 1e300, -1e300}) {
        EXPECT_GE(WrapTwoPi(angle), 0) << angle;
        EXPECT_LE(WrapTwoPi(angle), kTwoPi) << angle;
    }
    EXPECT_TRUE(std::isnan(WrapTwoPi(kNotANumber)));
    EXPECT_TRUE(std::isnan(WrapTwoPi(kInfinity)));
}

}  // namespace
}  // namespace glintara
