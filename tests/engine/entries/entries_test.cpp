// The C interface: what it accepts and refuses, and the flares of single instants.

#include <cstring>

#include "c_caller.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/sun_moon.h"
#include "engine_calls.h"

namespace glintara::engine_calls {
namespace {

const ElementSet kIss{"ISS (ZARYA)", "1 25544U 98067A   18020.52500000  .00002182  00000-0  40864-4 0  9990",
                      "2 25544  51.6436 147.2345 0003466 310.9234 150.4321 15.54000000 95234"};
constexpr double kNoon = 2458139.0;  // 20 January 2018, 12:00
const double kRange = 149597892000.0 / kSiteRadius;

/// Unit vector to the Sun on Earth-fixed axes.
Vector3 SunAt(double jd) {
    const Equatorial sun = SunPosition(jd);
    return UnitAt(sun.dec, sun.ra - SiderealFromJD(jd));
}

/// The normal that throws the Sun from `satellite` to `target`: half way between the two.
Vector3 NormalTo(const Vector3& target, const Vector3& satellite, const Vector3& source) {
    return Normalized(Normalized(source - satellite) + Normalized(target - satellite));
}

TEST(Entries, AllAreThereForC) {
    c_answers answers;
    ASSERT_EQ(call_every_entry(kIss.line1.c_str(), kIss.line2.c_str(), kNoon, &answers), 0);
    SetObserver({1, 0, 0});
    const double range = std::hypot(answers.position[0], answers.position[1], answers.position[2]);
    EXPECT_GT(range, 6750);
    EXPECT_LT(range, 6820);
    EXPECT_NEAR(answers.precessed[0], 0.5, 0.02);
    EXPECT_NE(answers.precessed[0], 0.5);
    EXPECT_NE(answers.found, 0);  // every place of the Earth is within 20000 km
    EXPECT_GE(answers.instant, kNoon);
    EXPECT_LT(answers.instant, kNoon + 1.0 / 24);
}

TEST(Init, RefusesWhatCannotBePropagated) {
    EngineBlock block;
    const auto init = [&](const std::string& line1, const std::string& line2) {
        return SatelliteInit(line1.c_str(), line2.c_str(), 'i', &block);
    };
    EXPECT_EQ(init(kIss.line1, kIss.line2), 0);
    EXPECT_NE(init(kIss.line2, kIss.line1), 0);
    EXPECT_NE(init("", ""), 0);
    EXPECT_NE(init("1", "2"), 0);
    EXPECT_NE(init(kIss.line1, "2 25544  51.6436 147.2345 0003466 310.9234 150.4321  0.00000000 95234"), 0);
    EXPECT_NE(init(kIss.line1, "2 25544  51.6436 147.2345 0003466 310.9234 150.4321 -1.00000000 95234"), 0);
    EXPECT_NE(init(kIss.line1, "2 25544  51.6436 147.2345 -003466 310.9234 150.4321 15.54000000 95234"), 0);
    EXPECT_NE(init(kIss.line1, "2 25544  5x.6436 147.2345 0003466 310.9234 150.4321 15.54000000 95234"), 0);
    EXPECT_NE(init("1 25544U 98067A   18abc.52500000  .00002182  00000-0  40864-4 0  9990", kIss.line2), 0);
    EXPECT_NE(SatelliteInit(nullptr, kIss.line2.c_str(), 'i', &block), 0);
    EXPECT_NE(SatelliteInit(kIss.line1.c_str(), kIss.line2.c_str(), 'i', nullptr), 0);
}

TEST(Init, AcceptsCircularOrbitsAndAlpha5Numbers) {
    EngineBlock block;
    EXPECT_EQ(SatelliteInit("1 A0000U 98067A   18020.52500000  .00002182  00000-0  40864-4 0  9990",
                            "2 A0000  51.6436 147.2345 0000000 310.9234 150.4321 15.54000000 95234", 'i', &block),
              0);
    double p[3];
    double v[3];
    EXPECT_EQ(Satellite_SGP4(&block, kNoon, p, v), 0);
    EXPECT_GT(std::hypot(p[0], p[1], p[2]), 6700);
}

TEST(Init, RefusedBlockGivesZerosAndNoFlares) {
    EngineBlock block;
    std::memset(&block, 0xA5, sizeof block);
    ASSERT_NE(SatelliteInit("1 nothing", "2 nothing", 'i', &block), 0);
    double p[3] = {1, 1, 1};
    double v[3] = {1, 1, 1};
    EXPECT_EQ(Satellite_SGP4(&block, kNoon, p, v), -1);
    EXPECT_EQ(p[0], 0);
    EXPECT_EQ(v[2], 0);
    double found = 7;
    EXPECT_EQ(Satellite_FindFlare(kNoon, 1, 0, 1e-6, kSiteRadius, &block, 0, 0, 0.7, 1e7, 0, &found), 0);
    EXPECT_EQ(found, 7);
}

TEST(Sgp4Entry, NeverReturnsNumbersThatAreNone) {
    EngineBlock block = BlockOf(kIss);
    double p[3];
    double v[3];
    for (const double jd : {std::nan(""), HUGE_VAL, -HUGE_VAL, 0.0, 1e300, -1e300, kNoon + 40 * 365.25}) {
        Satellite_SGP4(&block, jd, p, v);
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(std::isfinite(p[i])) << jd;
            EXPECT_TRUE(std::isfinite(v[i])) << jd;
        }
    }
}

TEST(Sgp4Entry, BlockIsAPlainValue) {
    EngineBlock block = BlockOf(kIss);
    EngineBlock copy = block;
    std::memset(&block, 0, sizeof block);
    double p[3];
    double v[3];
    EXPECT_EQ(Satellite_SGP4(&copy, kNoon, p, v), 0);
    EXPECT_GT(std::hypot(p[0], p[1], p[2]), 6700);
}

TEST(Sgp4Entry, TailOfTheBlockIsTheCallers) {
    EngineBlock block = BlockOf(kIss);
    block.WorldPosition[1] = 1.25;
    double p[3];
    double v[3];
    Satellite_SGP4(&block, kNoon, p, v);
    EXPECT_EQ(double{block.WorldPosition[1]}, 1.25);
}

TEST(CalcFlare, InertialMirrorHalfWayBetweenSunAndTargetLightsTheTarget) {
    const Vector3 sun = kRange * SunAt(kNoon);
    const Vector3 satellite = 1.13 * UnitAt(0.6, SunPosition(kNoon).ra - SiderealFromJD(kNoon) + 1.2);
    const Vector3 target = Normalized(satellite + Vector3{0.03, -0.05, 0.1});
    const Vector3 normal = NormalTo(target, satellite, sun);
    // Back to the inertial axes: declination is the tilt, right ascension counts from the second axis to the first.
    const Vector3 inertial = TurnedAboutPole(normal, SiderealFromJD(kNoon));
    const Mirror mirror{GLINTCORE_SUN, GLINTCORE_INERTIAL, std::atan2(inertial.x, inertial.y), std::asin(inertial.z)};
    const auto flare = FlareOf(mirror, kNoon, {satellite, {0, 0, 0}});
    ASSERT_TRUE(flare);
    EXPECT_LT(Length(flare->centre - target), 1e-9);
    EXPECT_NEAR(flare->result[1], Dot(target, SunAt(kNoon)), 1e-9);
    EXPECT_NEAR(flare->result[2], Dot(Normalized(satellite - sun), normal), 1e-9);
    EXPECT_EQ(flare->result[0], 0);
    EXPECT_EQ(flare->result[3], 0);
    EXPECT_EQ(flare->result[4], 0);
}

TEST(CalcFlare, MirrorAlongTheTrackLightsTheTarget) {
    const Vector3 sun = kRange * SunAt(kNoon);
    const Vector3 satellite = 1.12 * UnitAt(-0.4, 1.9);
    const Vector3 velocity = 7.4 * Normalized(CrossProduct({0.2, 0.1, 1}, satellite)) + 0.3 * satellite;
    const Vector3 up = Normalized(satellite);
    const Vector3 orbitPole = Normalized(CrossProduct(satellite, velocity));
    const Vector3 ahead = CrossProduct(orbitPole, up);
    const Vector3 target = Normalized(satellite + 0.1 * ahead + 0.05 * orbitPole);
    const Vector3 normal = NormalTo(target, satellite, sun);
    // Left of the track is the orbit's pole. Angle runs from ahead to the left, tilt downwards.
    const Mirror mirror{GLINTCORE_SUN, GLINTCORE_ALONG_TRACK, std::atan2(Dot(normal, orbitPole), Dot(normal, ahead)),
                        -std::asin(Dot(normal, up))};
    const auto flare = FlareOf(mirror, kNoon, {satellite, velocity});
    ASSERT_TRUE(flare);
    EXPECT_LT(Length(flare->centre - target), 1e-9);
}

TEST(CalcFlare, MirrorTurnedToTheSunLightsTheTarget) {
    const Vector3 sun = kRange * SunAt(kNoon);
    const Vector3 satellite = 1.2 * UnitAt(0.9, 2.0);
    const Vector3 up = Normalized(satellite);
    const Vector3 toSun = Normalized(sun - satellite);
    const Vector3 left = Normalized(CrossProduct(up, toSun));
    const Vector3 ahead = CrossProduct(left, up);
    const Vector3 target = Normalized(satellite - 0.1 * ahead + 0.2 * left);
    const Vector3 normal = NormalTo(target, satellite, sun);
    const Mirror mirror{GLINTCORE_SUN, GLINTCORE_VERTICAL_SUN, std::atan2(Dot(normal, left), Dot(normal, ahead)),
                        -std::asin(Dot(normal, up))};
    const auto flare = FlareOf(mirror, kNoon, {satellite, {0, 0, 0}});
    ASSERT_TRUE(flare);
    EXPECT_LT(Length(flare->centre - target), 1e-9);
}

TEST(CalcFlare, MoonIsASourceOfItsOwn) {
    const MoonPlace place = MoonPosition(kNoon);
    const Vector3 moon = place.distance / kSiteRadius * UnitAt(place.dec, place.ra - SiderealFromJD(kNoon));
    const Vector3 satellite = 1.13 * Normalized(moon + Vector3{3, 20, -1});
    const Vector3 target = Normalized(satellite + Vector3{-0.06, 0.1, 0.02});
    const Vector3 inertial = TurnedAboutPole(NormalTo(target, satellite, moon), SiderealFromJD(kNoon));
    const Mirror mirror{GLINTCORE_MOON, GLINTCORE_INERTIAL, std::atan2(inertial.x, inertial.y), std::asin(inertial.z)};
    const auto flare = FlareOf(mirror, kNoon, {satellite, {0, 0, 0}});
    ASSERT_TRUE(flare);
    EXPECT_LT(Length(flare->centre - target), 1e-9);
    EXPECT_NEAR(flare->result[1], Dot(target, SunAt(kNoon)), 1e-9);  // the Sun's elevation, whatever the source
}

TEST(CalcFlare, TransitRunsStraightOn) {
    const Vector3 sun = kRange * SunAt(kNoon);
    const Vector3 ground = Normalized(SunAt(kNoon) + Vector3{0.2, -0.3, 0.1});
    const Vector3 satellite = ground + 0.1 * Normalized(sun - ground);
    const auto transit = FlareOf({GLINTCORE_SUN, GLINTCORE_TRANSIT, 3, 3}, kNoon, {satellite, {0, 0, 0}});
    ASSERT_TRUE(transit);
    EXPECT_LT(Length(transit->centre - ground), 1e-9);
    EXPECT_EQ(transit->result[2], 1);
}

TEST(CalcFlare, ShadowPutsFlaresOut) {
    const Vector3 sun = SunAt(kNoon);
    const Vector3 aside = Normalized(CrossProduct(sun, {0, 0, 1}));
    // A mirror that faces the Sun and throws its light back to the Earth exists for both places; only one of them sees
    // the Sun.
    const auto flareAt = [&](const Vector3& satellite) {
        const Vector3 normal = NormalTo(Normalized(satellite), satellite, kRange * sun);
        const Vector3 inertial = TurnedAboutPole(normal, SiderealFromJD(kNoon));
        return FlareOf({GLINTCORE_SUN, GLINTCORE_INERTIAL, std::atan2(inertial.x, inertial.y), std::asin(inertial.z)},
                       kNoon, {satellite, {0, 0, 0}});
    };
    EXPECT_FALSE(flareAt(-0.8 * sun + 0.99 * aside));
    EXPECT_TRUE(flareAt(-0.8 * sun + 1.01 * aside));
}

TEST(CalcFlare, NonsenseGivesNoFlareAndTouchesNothing) {
    double centre[3] = {4, 5, 6};
    double result[5] = {4, 5, 6, 7, 8};
    const auto call = [&](double jd, int32_t geometry, double x, double vx) {
        return Satellite_CalcFlare(jd, 0, geometry, x, 0, 0, vx, 0, 0, 0, 0, centre, result);
    };
    EXPECT_EQ(call(NAN, 0, 1.1, 1), 0);
    EXPECT_EQ(call(kNoon, 0, NAN, 1), 0);
    EXPECT_EQ(call(kNoon, 0, 1.1, 1), 0);  // velocity along the radius: there is no frame
    EXPECT_EQ(call(kNoon, 0, 0, 0), 0);
    EXPECT_EQ(call(kNoon, 2, 1.1, 1), 0);  // no such geometry
    EXPECT_EQ(centre[0], 4);
    EXPECT_EQ(result[4], 8);
}

/// A pass of a flare over a place: built from the Iridium set, mirror R, that throws one on the ground.
struct Pass {
    EngineBlock block{};
    Mirror mirror{GLINTCORE_SUN, GLINTCORE_ALONG_TRACK, -120 * kDegToRad, 40 * kDegToRad};
    double begin = 0;  // Julian dates
    double end = 0;
};

constexpr double kDistance = 30000;

bool Near(Pass& pass, double jd, const Vector3& observer) {
    const auto flare = FlareOf(pass.mirror, jd, MotionAt(pass.block, jd));
    return flare && Length(flare->centre - observer) * kSiteRadius < kDistance;
}

double Ask(Pass& pass, double start, double seconds, int8_t skip, double distance = kDistance) {
    double found = 0;
    Satellite_FindFlare(start, seconds / kSecondsPerDay, pass.mirror.source, 0.1 / kSecondsPerDay, kSiteRadius,
                        &pass.block, pass.mirror.geometry, pass.mirror.angle, pass.mirror.tilt, distance, skip, &found);
    return found;
}

Pass SomePass() {
    Pass pass;
    pass.block = BlockOf(ExampleSets("iridium.tle").front());
    for (double jd = kNoon; jd < kNoon + 1; jd += 10 / kSecondsPerDay) {
        const auto flare = FlareOf(pass.mirror, jd, MotionAt(pass.block, jd));
        if (!flare) continue;
        SetObserver(flare->centre);
        pass.begin = pass.end = jd;
        const double step = 0.01 / kSecondsPerDay;
        while (Near(pass, pass.begin - step, flare->centre)) pass.begin -= step;
        while (Near(pass, pass.end + step, flare->centre)) pass.end += step;
        return pass;
    }
    ADD_FAILURE() << "the satellite throws no flare in a day";
    return pass;
}

constexpr double kSecond = 1 / kSecondsPerDay;

TEST(FindFlare, GivesTheBeginningOfThePass) {
    Pass pass = SomePass();
    EXPECT_NEAR(Ask(pass, pass.begin - 300 * kSecond, 600, 0), pass.begin, 0.02 * kSecond);
}

TEST(FindFlare, InsideThePassGivesTheStartOfTheWindow) {
    Pass pass = SomePass();
    const double middle = (pass.begin + pass.end) / 2;
    EXPECT_EQ(Ask(pass, middle, 600, 0), middle);
    EXPECT_EQ(Ask(pass, middle, 0, 0), middle);
}

TEST(FindFlare, WindowThatEndsBeforeThePassFindsNothing) {
    Pass pass = SomePass();
    EXPECT_EQ(Ask(pass, pass.begin - 300 * kSecond, 299.9, 0), 0);
}

TEST(FindFlare, DistanceOfZeroFindsNothing) {
    Pass pass = SomePass();
    EXPECT_EQ(Ask(pass, pass.begin - 300 * kSecond, 3600, 0, 0), 0);
    EXPECT_EQ(Ask(pass, pass.begin - 300 * kSecond, 3600, 0, -5), 0);
    EXPECT_EQ(Ask(pass, pass.begin - 300 * kSecond, 3600, 0, NAN), 0);
}

TEST(FindFlare, SkipLeavesOutThePassInProgress) {
    Pass pass = SomePass();
    EXPECT_EQ(Ask(pass, pass.begin, 1200, 1), 0);
    EXPECT_EQ(Ask(pass, (pass.begin + pass.end) / 2, 1200, 1), 0);
}

TEST(FindFlare, SkipLeavesOutAPassThatBeginsWithinATenthOfASecond) {
    Pass pass = SomePass();
    EXPECT_EQ(Ask(pass, pass.begin - 0.05 * kSecond, 1200, 1), 0);
}

TEST(FindFlare, SkipKeepsAPassThatBeginsLater) {
    Pass pass = SomePass();
    EXPECT_NEAR(Ask(pass, pass.begin - 0.2 * kSecond, 1200, 1), pass.begin, 0.02 * kSecond);
}

TEST(FindFlare, SkipAfterThePassIsAsWithout) {
    Pass pass = SomePass();
    const double after = pass.end + 1 * kSecond;
    EXPECT_EQ(Ask(pass, after, 3 * 86400, 1), Ask(pass, after, 3 * 86400, 0));
}

TEST(FindFlare, LeavesTheBlockAsItWas) {
    Pass pass = SomePass();
    const EngineBlock before = pass.block;
    Ask(pass, pass.begin - 300 * kSecond, 3600, 0);
    EXPECT_EQ(std::memcmp(&before, &pass.block, sizeof before), 0);
}

TEST(Precession, GoesToTheNewEpochAndBack) {
    // Theta Persei, J2000 to 2028 November 13.19: Meeus, Astronomical Algorithms, example 21.b, with the place already
    // moved by its proper motion: 2h44m12.975s, +49 13' 39.90" becomes 2h46m11.331s, +49 20' 54.54".
    const double hour = kPi / 12;
    double in[2] = {(2 + 44 / 60.0 + 12.9747 / 3600) * hour, (49 + 13 / 60.0 + 39.896 / 3600) * kDegToRad};
    double out[2];
    Satellite_SetPrecession(2000 + 28.86705, 2000);
    int32_t flag = 0;
    Satellite_PrecessRADEC(out, in, &flag);
    const double arcsecond = kDegToRad / 3600;
    EXPECT_NEAR(out[0], 41.547214 * kDegToRad, 0.2 * arcsecond);
    EXPECT_NEAR(out[1], 49.348483 * kDegToRad, 0.2 * arcsecond);
    Satellite_SetPrecession(2000, 2000 + 28.86705);
    Satellite_PrecessRADEC(out, out, nullptr);
    EXPECT_NEAR(out[0], in[0], 1e-9);
    EXPECT_NEAR(out[1], in[1], 1e-9);
}

}  // namespace
}  // namespace glintara::engine_calls
