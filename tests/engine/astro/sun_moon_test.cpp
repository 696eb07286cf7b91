#include "engine/astro/sun_moon.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::AngleBetween;
using test::Direction;
using test::kDegree;

constexpr double kEarthRadius = 6378137.0;
constexpr double kAstronomicalUnit = 149597870700.0;
constexpr double kYear1950 = 2433282.5;
constexpr double kYear2050 = 2469807.5;

/// A vector of the celestial reference frame on the mean equator and equinox of date.
Vector3 OnMeanEquatorOfDate(double jd, double v[3]) {
    double matrix[3][3];
    eraPmat06(jd, 0, matrix);
    double turned[3];
    eraRxp(matrix, v, turned);
    return {turned[0], turned[1], turned[2]};
}

/// The Sun as seen from the Earth, with the annual aberration (20.5" backwards in its motion, by the Earth's velocity).
Vector3 LibrarySun(double jd) {
    double heliocentric[2][3];
    double barycentric[2][3];
    EXPECT_GE(eraEpv00(jd, 0, heliocentric, barycentric), 0);
    constexpr double kLightDaysPerUnit = 499.004784 / 86400;
    double v[3];
    const double length = std::hypot(heliocentric[0][0], heliocentric[0][1], heliocentric[0][2]);
    for (int i = 0; i < 3; ++i) v[i] = -heliocentric[0][i] / length + barycentric[1][i] * kLightDaysPerUnit;
    return OnMeanEquatorOfDate(jd, v);
}

Vector3 LibraryMoonMetres(double jd) {
    double pv[2][3];
    eraMoon98(jd, 0, pv);
    return OnMeanEquatorOfDate(jd, pv[0]) * kAstronomicalUnit;
}

TEST(SunPosition, IsWithinTwoHundredthsOfADegreeFrom1950To2050) {
    double worst = 0;
    for (const double jd : test::Spaced(kYear1950, kYear2050, 1.37)) {
        const Equatorial sun = SunPosition(jd);
        worst = std::max(worst, AngleBetween(Direction(sun.ra, sun.dec), LibrarySun(jd)));
    }
    RecordProperty("largest_difference_degrees", std::to_string(worst / kDegree));
    EXPECT_LT(worst, 0.02 * kDegree);
}

// Meeus, Astronomical Algorithms, 2nd ed., example 25.b: 1992 October 13, 0 h TD.
TEST(SunPosition, GivesThePublishedPlace) {
    const Equatorial sun = SunPosition(2448908.5);
    EXPECT_NEAR(sun.ra, 198.378178 * kDegree, 0.02 * kDegree);
    EXPECT_NEAR(sun.dec, -7.783871 * kDegree, 0.02 * kDegree);
}

TEST(SunPosition, AtTheNoonOfJ2000) {
    // Mean anomaly 357.529 and mean longitude 280.459 degrees: the equation of the centre is -0.0843 degrees, which
    // puts the Sun at longitude 280.3747 on an ecliptic of 23.439 degrees.
    const Equatorial sun = SunPosition(2451545.0);
    const Vector3 onEcliptic = Direction(280.3747 * kDegree, 0);
    const double tilt = 23.439 * kDegree;
    const Vector3 wanted{onEcliptic.x, onEcliptic.y * std::cos(tilt), onEcliptic.y * std::sin(tilt)};
    EXPECT_LT(AngleBetween(Direction(sun.ra, sun.dec), wanted), 0.0001 * kDegree);
}

TEST(SunPosition, RightAscensionIsNeverNegativeAtTheVernalPoint) {
    for (int year = 1990; year < 2030; ++year) {
        const double start = DateToJD({static_cast<double>(year), 3, 19, 0, 0, 0});
        bool before = false;
        bool after = false;
        for (int step = 0; step < 3000; ++step) {
            const double ra = SunPosition(start + step * 0.001).ra;
            ASSERT_GE(ra, 0) << year;
            ASSERT_LE(ra, kTwoPi) << year;
            before = before || ra > 6;
            after = after || ra < 0.1;
        }
        EXPECT_TRUE(before && after) << year;
    }
}

TEST(SunPosition, CrossesTheEquatorAtThePublishedInstant) {
    // Astronomical Almanac: the equinox of March 2018 fell on the 20th at 16:15 UT, the June solstice on the 21st at
    // 10:07.
    EXPECT_NEAR(SunPosition(DateToJD({2018, 3, 20, 16, 15, 0})).dec, 0, 0.01 * kDegree);
    const Equatorial solstice = SunPosition(DateToJD({2018, 6, 21, 10, 7, 0}));
    EXPECT_NEAR(solstice.ra, 90 * kDegree, 0.02 * kDegree);
    EXPECT_NEAR(solstice.dec, 23.435 * kDegree, 0.01 * kDegree);
}

TEST(SunPosition, AtFarDatesIsTheUnreducedSeries) {
    // Bringing angles into one turn must not move the Sun: here nothing is brought into anything, in wider numbers.
    constexpr long double kWideDegree = std::numbers::pi_v<long double> / 180;
    for (const double jd : {-3e7, -1e6, 0.0, 2451545.0, 1e6, 5e6, 3e7}) {
        const long double n = static_cast<long double>(jd) - 2451545;
        const long double g = (357.529L + 0.98560028L * n) * kWideDegree;
        const long double l =
            (280.459L + 0.98564736L * n + 1.915L * std::sin(g) + 0.02L * std::sin(2 * g)) * kWideDegree;
        const long double e = (23.439L - 3.6e-7L * n) * kWideDegree;
        const Vector3 wanted{static_cast<double>(std::cos(l)), static_cast<double>(std::cos(e) * std::sin(l)),
                             static_cast<double>(std::sin(e) * std::sin(l))};
        const Equatorial sun = SunPosition(jd);
        EXPECT_LT(AngleBetween(Direction(sun.ra, sun.dec), wanted), 1e-8) << jd;
        EXPECT_GE(sun.ra, 0) << jd;
    }
}

// One whose loops bring an angle back turn by turn would never come to the end of this.
TEST(SunPosition, FarDatesAreAnsweredToo) {
    for (int i = 0; i < 1000; ++i) {
        for (const double jd : test::kHostile) {
            const Equatorial sun = SunPosition(jd);
            EXPECT_EQ(std::isfinite(sun.ra), std::isfinite(jd)) << jd;
        }
    }
}

TEST(MoonPosition, IsWithinFifteenHundredthsOfADegreeFrom1950To2050) {
    double worst = 0;
    double worstDistance = 0;
    for (const double jd : test::Spaced(kYear1950, kYear2050, 0.373)) {
        const MoonPlace moon = MoonPosition(jd);
        const Vector3 truth = LibraryMoonMetres(jd);
        worst = std::max(worst, AngleBetween(Direction(moon.ra, moon.dec), truth));
        worstDistance = std::max(worstDistance, std::abs(moon.distance - Length(truth)));
    }
    RecordProperty("largest_difference_degrees", std::to_string(worst / kDegree));
    RecordProperty("largest_difference_in_distance_metres", std::to_string(worstDistance));
    EXPECT_LT(worst, 0.15 * kDegree);
    EXPECT_LT(worstDistance, 0.3 * kEarthRadius);
}

/// Mean elongation, anomalies of Sun and Moon and the Moon's argument of latitude, degrees, by the linear parts of
/// Meeus, Astronomical Algorithms, 2nd ed., formulas 47.2 to 47.5.
struct LunarArguments {
    double d, m, mm, f;
};

LunarArguments LunarArgumentsAt(double jd) {
    const double t = (jd - 2451545) / 36525;
    return {297.8501921 + 445267.1114034 * t, 357.5291092 + 35999.0502909 * t, 134.9633964 + 477198.8675055 * t,
            93.2720950 + 483202.0175233 * t};
}

/// A periodic term: multiples of the four arguments.
struct LunarTerm {
    double d, m, mm, f;
    double AngleAt(double jd) const {
        const LunarArguments a = LunarArgumentsAt(jd);
        return (d * a.d + m * a.m + mm * a.mm + f * a.f) * kDegree;
    }
};

/// Amplitude that the differences hold of the term, by projection on its sine and cosine.
double AmplitudeIn(const std::vector<double>& days, const std::vector<double>& differences, const LunarTerm& term) {
    double sine = 0;
    double cosine = 0;
    for (std::size_t i = 0; i < days.size(); ++i) {
        const double angle = term.AngleAt(days[i]);
        sine += differences[i] * std::sin(angle);
        cosine += differences[i] * std::cos(angle);
    }
    return 2 * std::hypot(sine, cosine) / static_cast<double>(days.size());
}

/// The vector on the mean ecliptic of date.
Vector3 OnEcliptic(double jd, const Vector3& v) {
    const double e = eraObl06(jd, 0);
    return {v.x, v.y * std::cos(e) + v.z * std::sin(e), v.z * std::cos(e) - v.y * std::sin(e)};
}

TEST(MoonPosition, LacksNoTermOfItsSeries) {
    const LunarTerm inLongitude[] = {{-2, 0, 1, 0}, {2, 0, 0, 0}, {0, 1, 0, 0},  {-2, 0, 2, 0},
                                     {-2, 1, 1, 0}, {2, 0, 1, 0}, {2, -1, 0, 0}, {0, -1, 1, 0},
                                     {1, 0, 0, 0},  {0, 1, 1, 0}, {-2, 0, 0, 2}};
    const LunarTerm inLatitude[] = {{-2, 0, 0, 1}, {-2, 0, 1, -1}, {-2, 0, 1, 1}, {2, 0, 0, 1}};
    const LunarTerm inDistance[] = {{-2, 0, 1, 0}, {2, 0, 0, 0}};
    const std::vector<double> days = test::Spaced(2451545 - 9000, 2451545 + 9000, 0.379);
    std::vector<double> longitude;
    std::vector<double> latitude;
    std::vector<double> distance;
    for (const double jd : days) {
        const MoonPlace moon = MoonPosition(jd);
        const Vector3 found = OnEcliptic(jd, Direction(moon.ra, moon.dec));
        const Vector3 truth = OnEcliptic(jd, LibraryMoonMetres(jd));
        longitude.push_back(test::AroundCircle(std::atan2(found.y, found.x) - std::atan2(truth.y, truth.x)) / kDegree);
        latitude.push_back((std::asin(found.z) - std::asin(truth.z / Length(truth))) / kDegree);
        distance.push_back((moon.distance - Length(truth)) / kEarthRadius);
    }
    // The smallest of these terms are 0.015 and 0.033 degrees; rounded coefficients leave far less.
    for (const LunarTerm& term : inLongitude)
        EXPECT_LT(AmplitudeIn(days, longitude, term), 0.005) << term.d << term.m << term.mm << term.f;
    for (const LunarTerm& term : inLatitude)
        EXPECT_LT(AmplitudeIn(days, latitude, term), 0.005) << term.d << term.m << term.mm << term.f;
    for (const LunarTerm& term : inDistance)
        EXPECT_LT(AmplitudeIn(days, distance, term), 0.05) << term.d << term.m << term.mm << term.f;
    // Two terms the source has otherwise than the full theory (Meeus, tables 47.A and 47.B): that of four elongations
    // with its 0.0107 degrees the other way round, and 0.0172 degrees in latitude that its ellipse holds already.
    EXPECT_NEAR(AmplitudeIn(days, longitude, {-4, 0, 1, 0}), 0.011 + 0.0107, 0.003);
    EXPECT_NEAR(AmplitudeIn(days, latitude, {0, 0, 2, 1}), 0.0172, 0.003);
}

// Meeus, Astronomical Algorithms, 2nd ed., example 47.a: 1992 April 12, 0 h TD.
TEST(MoonPosition, GivesThePublishedPlace) {
    const MoonPlace moon = MoonPosition(2448724.5);
    EXPECT_NEAR(moon.ra, 134.688470 * kDegree, 0.15 * kDegree);
    EXPECT_NEAR(moon.dec, 13.768368 * kDegree, 0.15 * kDegree);
    EXPECT_NEAR(moon.distance, 368409.7e3, 1000e3);
}

// P. Schlyter, "Computing planetary positions - a tutorial with worked examples": 1990 April 19, 0 h UT, day number
// -3543. The example refines the eccentric anomaly further, which moves the place by some 0.005 degrees.
TEST(MoonPosition, GivesTheExampleOfItsSource) {
    const MoonPlace moon = MoonPosition(2448000.5);
    EXPECT_NEAR(moon.ra, 309.5011 * kDegree, 0.01 * kDegree);
    EXPECT_NEAR(moon.dec, -19.1032 * kDegree, 0.01 * kDegree);
    EXPECT_NEAR(moon.distance / kEarthRadius, 60.6779, 0.001);
}

TEST(MoonPosition, CountsItsDaysFromTheLastMidnightOf1999) {
    // One and a half days off, the Moon would stand some 20 degrees away: on both sides of that midnight it is in
    // place.
    for (const double jd : {2451543.5, 2451543.4, 2451545.0, 2451540.0}) {
        const MoonPlace moon = MoonPosition(jd);
        EXPECT_LT(AngleBetween(Direction(moon.ra, moon.dec), LibraryMoonMetres(jd)), 0.15 * kDegree) << jd;
    }
}

TEST(MoonPosition, StaysNearSixtyEarthRadii) {
    double least = 1e12;
    double most = 0;
    for (const double jd : test::Spaced(kYear1950, kYear2050, 0.41)) {
        const MoonPlace moon = MoonPosition(jd);
        least = std::min(least, moon.distance / kEarthRadius);
        most = std::max(most, moon.distance / kEarthRadius);
        ASSERT_GE(moon.ra, 0);
        ASSERT_LE(moon.ra, kTwoPi);
        ASSERT_LE(std::abs(moon.dec), 29 * kDegree);
    }
    // Perigee and apogee of the century: 356375 and 406720 km (Meeus, chapter 50).
    EXPECT_NEAR(least, 356375e3 / kEarthRadius, 0.3);
    EXPECT_NEAR(most, 406720e3 / kEarthRadius, 0.3);
}

TEST(MoonPosition, IsFullAtThePublishedEclipse) {
    // Greatest eclipse of 2018 January 31, 13:29:50 UT (NASA eclipse catalogue): Moon opposite the Sun, within 0.4
    // degrees.
    const double jd = DateToJD({2018, 1, 31, 13, 29, 50});
    const Equatorial sun = SunPosition(jd);
    const MoonPlace moon = MoonPosition(jd);
    const double apart = AngleBetween(Direction(moon.ra, moon.dec), -Direction(sun.ra, sun.dec));
    EXPECT_LT(apart, 0.4 * kDegree + 0.15 * kDegree);
    EXPECT_GT(apart, 0.2 * kDegree);
}

TEST(MoonPosition, ReturnsOnAnyNumbers) {
    for (const double jd : test::kHostile) {
        const MoonPlace moon = MoonPosition(jd);
        EXPECT_EQ(std::isfinite(moon.ra), std::isfinite(jd)) << jd;
        EXPECT_EQ(std::isfinite(moon.distance), std::isfinite(jd)) << jd;
    }
}

TEST(EastLongitudeOf, IsWhereTheSunStandsOverhead) {
    // 2018 April 15, when the equation of time is nearly nothing: at 12 h UT the Sun stands over Greenwich.
    const double jd = DateToJD({2018, 4, 15, 12, 0, 0});
    const double lon = EastLongitudeOf(SunPosition(jd).ra, eraGmst82(jd, 0));
    EXPECT_NEAR(test::AroundCircle(lon), 0, 0.1 * kDegree);
    // Three hours later it stands 45 degrees west.
    const double later = jd + 0.125;
    EXPECT_NEAR(test::AroundCircle(EastLongitudeOf(SunPosition(later).ra, eraGmst82(later, 0))), -45 * kDegree,
                0.1 * kDegree);
}

}  // namespace
}  // namespace glintara
