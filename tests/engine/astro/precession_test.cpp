#include "engine/astro/precession.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::AngleBetween;
using test::Direction;
using test::kArcsecond;
using test::kDegree;

double JulianDateOf(double epoch) { return 2451545.0 + (epoch - 2000) * 365.25; }

Vector3 Turned(const double (&m)[3][3], const Vector3& v) {
    return {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z, m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z,
            m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z};
}

Vector3 TurnedBack(const double (&m)[3][3], const Vector3& v) {
    return {m[0][0] * v.x + m[1][0] * v.y + m[2][0] * v.z, m[0][1] * v.x + m[1][1] * v.y + m[2][1] * v.z,
            m[0][2] * v.x + m[1][2] * v.y + m[2][2] * v.z};
}

/// Largest turn between what `matrix` and the library do to directions all over the sky.
template <typename Library>
double LargestDifference(const RotationMatrix& matrix, const Library& library) {
    double worst = 0;
    for (const double dec : test::Spaced(-85, 85, 17)) {
        for (const double ra : test::Spaced(0, 359, 30)) {
            const Vector3 v = Direction(ra * kDegree, dec * kDegree);
            worst = std::max(worst, AngleBetween(matrix * v, library(v)));
        }
    }
    return worst;
}

TEST(Precession, IsThatOfIau1976WithinACenturyOfJ2000) {
    double worst = 0;
    for (const double epoch : test::Spaced(1900, 2100, 3.7)) {
        double m[3][3];
        eraPmat76(JulianDateOf(epoch), 0, m);
        worst = std::max(
            worst, LargestDifference(PrecessionMatrix(epoch, 2000.0), [&m](const Vector3& v) { return Turned(m, v); }));
    }
    RecordProperty("largest_difference_arcseconds", std::to_string(worst / kArcsecond));
    EXPECT_LT(worst, 1e-6 * kArcsecond);
}

TEST(Precession, IsWithinAFifthOfAnArcsecondOfIau2006) {
    double worst = 0;
    for (const double epoch : test::Spaced(1950, 2050, 1.7)) {
        double m[3][3];
        eraPmat06(JulianDateOf(epoch), 0, m);
        worst = std::max(
            worst, LargestDifference(PrecessionMatrix(epoch, 2000.0), [&m](const Vector3& v) { return Turned(m, v); }));
    }
    RecordProperty("largest_difference_arcseconds", std::to_string(worst / kArcsecond));
    EXPECT_LT(worst, 0.2 * kArcsecond);
}

TEST(Precession, GoesBetweenAnyTwoEpochs) {
    for (const double from : {1900.0, 1950.0, 1987.3, 2018.05, 2100.0}) {
        for (const double to : {1900.0, 1975.5, 2000.0, 2018.05, 2060.0}) {
            double first[3][3];
            double second[3][3];
            eraPmat76(JulianDateOf(from), 0, first);
            eraPmat76(JulianDateOf(to), 0, second);
            const double worst = LargestDifference(
                PrecessionMatrix(to, from), [&](const Vector3& v) { return Turned(second, TurnedBack(first, v)); });
            EXPECT_LT(worst, 0.01 * kArcsecond) << from << " to " << to;
        }
    }
}

// Meeus, Astronomical Algorithms, 2nd ed., example 21.b: theta Persei, proper motion applied, from J2000.0 to 2028
// November 13.19 TD.
TEST(Precession, GivesThePublishedPlaceOfThetaPersei) {
    const double epoch = 2000 + (2462088.69 - 2451545.0) / 365.25;
    const Equatorial star = Precess(PrecessionMatrix(epoch, 2000.0), {49.227750 * kDegree, 41.054063 * kDegree});
    EXPECT_NEAR(star.ra, 41.547214 * kDegree, 2e-6 * kDegree);
    EXPECT_NEAR(star.dec, 49.348483 * kDegree, 2e-6 * kDegree);
}

// Meeus, exercise after the same example: alpha Ursae Minoris from J2000.0 (proper motion is small beside it) to 2050.
TEST(Precession, CarriesPolarisRigorously) {
    // J2000.0: 2 h 31 min 48.704 s, +89 15' 50.72", with the proper motion of 50 years; 2050.0: 3 h 48 min 16.43 s, +89
    // 27' 15.38".
    const double ra = ((2 * 60 + 31) * 60 + 48.704 + 50 * 0.19877) * 15 * kArcsecond;
    const double dec = (89 + 15 / 60.0 + (50.72 - 50 * 0.0152) / 3600) * kDegree;
    const Equatorial star = Precess(PrecessionMatrix(2050.0, 2000.0), {dec, ra});
    const double wantedRa = ((3 * 60 + 48) * 60 + 16.43) * 15 * kArcsecond;
    const double wantedDec = (89 + 27 / 60.0 + 15.38 / 3600) * kDegree;
    EXPECT_LT(AngleBetween(Direction(star.ra, star.dec), Direction(wantedRa, wantedDec)), 0.1 * kArcsecond);
}

TEST(Precession, BetweenEqualEpochsChangesNothing) {
    const RotationMatrix matrix = PrecessionMatrix(2018.3, 2018.3);
    const Vector3 v{0.3, -0.4, 0.5};
    EXPECT_NEAR(Length(matrix * v - v), 0, 1e-16);
}

TEST(Precession, KeepsRightAscensionWithinOneTurn) {
    const RotationMatrix back = PrecessionMatrix(1950.0, 2000.0);
    for (const double dec : test::Spaced(-90, 90, 15)) {
        for (const double ra : test::Spaced(0, 359, 1)) {
            const Equatorial star = Precess(back, {dec * kDegree, ra * kDegree});
            ASSERT_GE(star.ra, 0);
            ASSERT_LE(star.ra, kTwoPi);
            ASSERT_LE(std::abs(star.dec), 90 * kDegree + 1e-12);
        }
    }
}

TEST(Precession, ReturnsOnAnyNumbers) {
    for (const double epoch : test::kHostile) {
        const Equatorial star = Precess(PrecessionMatrix(epoch, 2000.0), {0.3, 0.4});
        if (std::abs(epoch) < 1e6) EXPECT_TRUE(std::isfinite(star.ra) && std::isfinite(star.dec)) << epoch;
        EXPECT_FALSE(star.ra < 0) << epoch;
    }
}

}  // namespace
}  // namespace glintara
