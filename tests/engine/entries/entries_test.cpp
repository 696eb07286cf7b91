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
    EXPECT_EQ(answers.first, 2);  // the first of the two is no surface
    EXPECT_EQ(answers.firstInstant, answers.instant);
    EXPECT_EQ(answers.version, GLINTCORE_VERSION);
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

TEST(Init, EachReasonThatTextCanGiveHasItsNumber) {
    EngineBlock block;
    const auto init = [&](const std::string& line1, const std::string& line2) {
        return SatelliteInit(line1.c_str(), line2.c_str(), 'i', &block);
    };
    const auto line2With = [](std::size_t column, const std::string& text) {
        std::string line = kIss.line2;
        return line.replace(column - 1, text.size(), text);
    };
    EXPECT_EQ(SatelliteInit(nullptr, kIss.line2.c_str(), 'i', &block), 1);
    EXPECT_EQ(SatelliteInit(kIss.line1.c_str(), nullptr, 'i', &block), 1);
    EXPECT_EQ(SatelliteInit(kIss.line1.c_str(), kIss.line2.c_str(), 'i', nullptr), 1);
    EXPECT_EQ(init(kIss.line2, kIss.line1), 2);
    EXPECT_EQ(init(kIss.line1, kIss.line1), 2);
    EXPECT_EQ(init(kIss.line1.substr(0, 40), kIss.line2), 2);
    EXPECT_EQ(init(kIss.line1, line2With(9, " 5x.6436")), 3);
    EXPECT_EQ(init(kIss.line1, line2With(53, " 0.00000000")), 4);
    EXPECT_EQ(init(kIss.line1, line2With(53, "-1.00000000")), 4);
    EXPECT_EQ(init(kIss.line1, line2With(27, "-003466")), 5);
}

TEST(Init, EveryRefusedBlockIsOneWithoutASatellite) {
    const std::string lines[][2] = {{kIss.line2, kIss.line1},
                                    {kIss.line1, "2 25544  5x.6436 147.2345 0003466 310.9234 150.4321 15.54000000"},
                                    {kIss.line1, "2 25544  51.6436 147.2345 0003466 310.9234 150.4321  0.00000000"}};
    for (const auto& pair : lines) {
        EngineBlock block = BlockOf(kIss);
        ASSERT_NE(SatelliteInit(pair[0].c_str(), pair[1].c_str(), 'i', &block), 0);
        double p[3] = {1, 1, 1};
        double v[3] = {1, 1, 1};
        EXPECT_EQ(Satellite_SGP4(&block, kNoon, p, v), -1);
        for (const double number : {p[0], p[1], p[2], v[0], v[1], v[2]}) EXPECT_EQ(number, 0);
    }
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

TEST(Sgp4Entry, AnswersFromTheFirstToTheLastJulianDateAndNoOther) {
    EngineBlock block = BlockOf(kIss);
    double p[3];
    double v[3];
    for (const double jd : {GLINTCORE_FIRST_JD, GLINTCORE_LAST_JD}) EXPECT_NE(Satellite_SGP4(&block, jd, p, v), -1);
    for (const double jd : {std::nextafter(GLINTCORE_FIRST_JD, -1.0), std::nextafter(GLINTCORE_LAST_JD, 2e7), 1e300,
                            -1e300, HUGE_VAL, std::nan("")}) {
        p[0] = v[2] = 1;
        EXPECT_EQ(Satellite_SGP4(&block, jd, p, v), -1) << jd;
        EXPECT_EQ(p[0], 0);
        EXPECT_EQ(v[2], 0);
    }
}

TEST(Sgp4Entry, EitherResultMayBeLeftAway) {
    EngineBlock block = BlockOf(kIss);
    double p[3];
    double v[3];
    double q[3];
    ASSERT_EQ(Satellite_SGP4(&block, kNoon, p, v), 0);
    EXPECT_EQ(Satellite_SGP4(&block, kNoon, q, nullptr), 0);
    EXPECT_EQ(q[1], p[1]);
    EXPECT_EQ(Satellite_SGP4(&block, kNoon, nullptr, q), 0);
    EXPECT_EQ(q[1], v[1]);
    EXPECT_EQ(Satellite_SGP4(&block, kNoon, nullptr, nullptr), 0);
    EXPECT_EQ(Satellite_SGP4(nullptr, kNoon, nullptr, nullptr), -1);
    EXPECT_EQ(Satellite_SGP4(nullptr, kNoon, q, q), -1);
    EXPECT_EQ(q[1], 0);
}

TEST(Version, IsThatOfTheHeader) {
    EXPECT_EQ(GlintcoreVersion(), GLINTCORE_VERSION);
    EXPECT_EQ(GlintcoreVersion() / 10000, GLINTCORE_VERSION_MAJOR);
    EXPECT_EQ(GlintcoreVersion() / 100 % 100, GLINTCORE_VERSION_MINOR);
    EXPECT_EQ(GlintcoreVersion() % 100, GLINTCORE_VERSION_PATCH);
}

/// A question with an answer: the Sun in line with the space station, somewhere within 12000 km.
struct Question {
    double start = kNoon;
    double length = 0.2;
    double resolution = 1e-6;
    double siteRadius = kSiteRadius;
    double maxDistance = 12e6;
    GlintSurface surface{0, 0, 0, GLINTCORE_TRANSIT, 0};

    int32_t Answer(double* found) const {
        EngineBlock block = BlockOf(kIss);
        const int32_t one =
            Satellite_FindFlare(start, length, GLINTCORE_SUN, resolution, siteRadius, &block, surface.Geometry,
                                surface.Angle, surface.Tilt, maxDistance, static_cast<int8_t>(surface.Skip), found);
        double again = 0;
        const int32_t several = Satellite_FindFirstFlare(start, length, GLINTCORE_SUN, resolution, siteRadius, &block,
                                                         &surface, 1, maxDistance, &again);
        EXPECT_EQ(one, several);
        if (one != 0 && found != nullptr) EXPECT_EQ(again, *found);
        return one;
    }
};

TEST(FindFlareRanges, WhatLiesOutsideIsRefusedAndLeavesTheResultAlone) {
    SetObserver({1, 0, 0});
    double found = 0;
    ASSERT_NE(Question().Answer(&found), 0);
    EXPECT_GE(found, kNoon);
    const double none = std::nan("");
    const auto refused = [](auto change) {
        Question question;
        change(question);
        double untouched = 7;
        EXPECT_EQ(question.Answer(&untouched), 0);
        EXPECT_EQ(untouched, 7);
    };
    for (const double bad : {none, HUGE_VAL, -HUGE_VAL, -1.0, 1e300, 1e7}) {
        SCOPED_TRACE(bad);
        refused([&](Question& q) { q.start = bad; });
    }
    for (const double bad : {none, HUGE_VAL, -1e-9, 366.001, 1e300}) {
        SCOPED_TRACE(bad);
        refused([&](Question& q) { q.length = bad; });
    }
    for (const double bad : {none, HUGE_VAL, 0.0, -6371000.0, 9.9e5, 1.01e8, 1e-300}) {
        SCOPED_TRACE(bad);
        refused([&](Question& q) { q.siteRadius = bad; });
    }
    for (const double bad : {none, 0.0, -1.0, -HUGE_VAL}) {
        SCOPED_TRACE(bad);
        refused([&](Question& q) { q.maxDistance = bad; });
    }
    for (const int32_t bad : {-2, 2, 3, 5, 1000, INT32_MIN, INT32_MAX})
        refused([&](Question& q) { q.surface.Geometry = bad; });
    refused([&](Question& q) { q.surface = {none, 0, 0, GLINTCORE_INERTIAL, 0}; });
    refused([&](Question& q) { q.surface = {0, HUGE_VAL, 0, GLINTCORE_ALONG_TRACK, 0}; });
}

TEST(FindFlareRanges, AnglesOfATransitAndAnyResolutionAreTaken) {
    double expected = 0;
    ASSERT_NE(Question().Answer(&expected), 0);
    for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL, 0.0, 1e300}) {
        double found = 0;
        Question question;
        question.surface.Angle = question.surface.Tilt = odd;
        EXPECT_NE(question.Answer(&found), 0);
        EXPECT_EQ(found, expected);
        question = {};
        question.resolution = odd;
        EXPECT_NE(question.Answer(&found), 0);
        EXPECT_NEAR(found, expected, 1.1e-3 / kSecondsPerDay);
    }
    EXPECT_NE(Question().Answer(nullptr), 0);
    double found = 0;
    Question wide;
    wide.maxDistance = HUGE_VAL;
    EXPECT_NE(wide.Answer(&found), 0);
    EXPECT_TRUE(std::isfinite(found));
}

TEST(FindFirstFlare, NullPointersAndNoSurfacesFindNothing) {
    EngineBlock block = BlockOf(kIss);
    const Question q;
    double found = 7;
    const auto ask = [&](void* satellite, const GlintSurface* surfaces, int32_t count) {
        return Satellite_FindFirstFlare(q.start, q.length, GLINTCORE_SUN, q.resolution, q.siteRadius, satellite,
                                        surfaces, count, q.maxDistance, &found);
    };
    EXPECT_EQ(ask(nullptr, &q.surface, 1), 0);
    EXPECT_EQ(ask(&block, nullptr, 1), 0);
    EXPECT_EQ(ask(&block, &q.surface, 0), 0);
    EXPECT_EQ(ask(&block, &q.surface, -1), 0);
    EXPECT_EQ(ask(&block, &q.surface, INT32_MIN), 0);
    EngineBlock empty{};
    EXPECT_EQ(ask(&empty, &q.surface, 1), 0);
    EXPECT_EQ(Satellite_FindFlare(q.start, q.length, GLINTCORE_SUN, q.resolution, q.siteRadius, nullptr,
                                  GLINTCORE_TRANSIT, 0, 0, q.maxDistance, 0, &found),
              0);
    EXPECT_EQ(found, 7);
    EXPECT_EQ(ask(&block, &q.surface, 1), 1);
    EXPECT_NE(found, 7);
}

TEST(FindFirstFlare, NamesTheSurfaceAmongMoreThanAreFollowedTogether) {
    EngineBlock block = BlockOf(kIss);
    Question q;
    const auto ask = [&](const std::vector<GlintSurface>& surfaces, double& found) {
        return Satellite_FindFirstFlare(q.start, q.length, GLINTCORE_SUN, q.resolution, q.siteRadius, &block,
                                        surfaces.data(), static_cast<int32_t>(surfaces.size()), q.maxDistance, &found);
    };
    double first = 0;
    ASSERT_EQ(ask({q.surface}, first), 1);
    const GlintSurface none{0, 0, 0, 17, 0};
    GlintSurface late = q.surface;
    late.From = first + 1.0 / 1440;
    for (const int32_t place : {1, 2, 32, 33, 64, 65, 100}) {
        std::vector<GlintSurface> surfaces(100, late);
        surfaces[static_cast<std::size_t>(place - 1)] = q.surface;
        if (place > 1) surfaces[0] = none;
        double found = 0;
        EXPECT_EQ(ask(surfaces, found), place);
        EXPECT_EQ(found, first);
    }
    // Of equal ones the first, here too.
    double found = 0;
    EXPECT_EQ(ask(std::vector<GlintSurface>(100, q.surface), found), 1);
    // What begins before it is asked is found where it is asked.
    EXPECT_EQ(ask({late}, found), 1);
    EXPECT_NEAR(found, late.From, 1e-3 / kSecondsPerDay);
    late.From = std::nan("");
    EXPECT_EQ(ask({late}, found), 0);
    late.From = q.start + 1;
    EXPECT_EQ(ask({late}, found), 0);
}

TEST(FindFirstFlare, TheBlockItLeavesGivesTheSameNumbers) {
    // A Molniya, whose resonance is integrated from the epoch on: years later that is what costs.
    EngineBlock block;
    for (const ElementSet& set : ExampleSets("all.tle"))
        if (set.name.starts_with("MOLNIYA 1-53")) block = BlockOf(set);
    EngineBlock untouched = block;
    const Question q;
    double found = 0;
    const double later = kNoon + 3000;
    Satellite_FindFirstFlare(later, 1, GLINTCORE_SUN, q.resolution, q.siteRadius, &block, &q.surface, 1, 30e3, &found);
    for (const double jd : {later, later + 1, kNoon, kNoon + 1500}) {
        double p[3];
        double v[3];
        double expected[3];
        Satellite_SGP4(&block, jd, p, v);
        EngineBlock fresh = untouched;
        Satellite_SGP4(&fresh, jd, expected, v);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(p[i], expected[i]);
    }
}

TEST(CalcFlare, ResultsMayBeLeftAwayAndRangesAreKept) {
    const Vector3 above = 1.1 * SunAt(kNoon);
    double centre[3] = {7, 7, 7};
    double result[5] = {7, 7, 7, 7, 7};
    const auto ask = [&](double jd, double* c, double* r) {
        return Satellite_CalcFlare(jd, GLINTCORE_SUN, GLINTCORE_TRANSIT, above.x, above.y, above.z, 0, 0, 0, 0, 0, c,
                                   r);
    };
    EXPECT_NE(ask(kNoon, nullptr, nullptr), 0);
    EXPECT_NE(ask(kNoon, centre, nullptr), 0);
    EXPECT_NEAR(std::hypot(centre[0], centre[1], centre[2]), 1, 1e-9);
    EXPECT_NE(ask(kNoon, nullptr, result), 0);
    EXPECT_NEAR(result[1], 1, 1e-6);
    for (const double jd : {std::nan(""), -1.0, 1.0000001e7, HUGE_VAL, 1e300}) {
        centre[0] = 7;
        EXPECT_EQ(ask(jd, centre, result), 0);
        EXPECT_EQ(centre[0], 7);
    }
}

TEST(CalcFlare, NoNumberHandedOutIsNone) {
    const double odd[] = {0, 1e-320, 1, -1.2, 1e155, -1e300, HUGE_VAL, std::nan("")};
    int flares = 0;
    for (const double x : odd)
        for (const double y : odd)
            for (const double vx : odd)
                for (const double angle : odd)
                    for (const int32_t geometry : {-1, 0, 1, 4}) {
                        double centre[3] = {0, 0, 0};
                        double result[5] = {0, 0, 0, 0, 0};
                        flares += Satellite_CalcFlare(kNoon, 0, geometry, x, y, 0.3, vx, 1, 0, angle, 0.4, centre,
                                                      result) != 0;
                        for (const double number : centre) ASSERT_TRUE(std::isfinite(number));
                        for (const double number : result) ASSERT_TRUE(std::isfinite(number));
                    }
    EXPECT_GT(flares, 0);
}

TEST(Site, OutsideTheEarthsNeighbourhoodThePlaceBeforeStays) {
    const Question q;
    SetObserver({1, 0, 0});
    Question near;
    near.maxDistance = 500e3;
    near.length = 3;
    double expected = 0;
    ASSERT_NE(near.Answer(&expected), 0);
    const double none = std::nan("");
    const double places[][4] = {{0, 6e6, 0, 9.9e5}, {0, 6e6, 0, 1.01e8},  {0, 6e6, 0, none},   {0, 6e6, 0, HUGE_VAL},
                                {0, 9e5, 0, 6.4e6}, {0, 1.1e8, 0, 6.4e6}, {0, none, 0, 6.4e6}, {0, HUGE_VAL, 0, 6.4e6},
                                {0, 0, 0, 6.4e6},   {0, 6e6, 0, 0},       {0, 6e6, 0, -6.4e6}};
    for (const auto& place : places) {
        Satellite_SetSiteGeoPosition(place[0], place[1], place[2], place[3]);
        double found = 0;
        ASSERT_NE(near.Answer(&found), 0);
        EXPECT_EQ(found, expected);
    }
    Satellite_SetSiteGeoPosition(0, 6.4e6, 0, 6.4e6);
    double found = 0;
    EXPECT_TRUE(near.Answer(&found) == 0 || found != expected);
    SetObserver({1, 0, 0});
}

TEST(Precession, OutsideTheRangeThePairBeforeStaysAndNullPointersDoNothing) {
    double in[2] = {1, 0.5};
    double expected[2];
    Satellite_SetPrecession(2018, 2000);
    Satellite_PrecessRADEC(expected, in, nullptr);
    const double none = std::nan("");
    for (const double bad : {none, HUGE_VAL, -HUGE_VAL, -5001.0, 25001.0, 1e300}) {
        double out[2];
        Satellite_SetPrecession(bad, 2000);
        Satellite_PrecessRADEC(out, in, nullptr);
        EXPECT_EQ(out[0], expected[0]);
        Satellite_SetPrecession(2018, bad);
        Satellite_PrecessRADEC(out, in, nullptr);
        EXPECT_EQ(out[1], expected[1]);
    }
    for (const double epoch : {GLINTCORE_FIRST_EPOCH, GLINTCORE_LAST_EPOCH}) {
        double out[2];
        Satellite_SetPrecession(epoch, 2000);
        Satellite_PrecessRADEC(out, in, nullptr);
        EXPECT_NE(out[0], expected[0]);
        EXPECT_TRUE(std::isfinite(out[0]) && std::isfinite(out[1]));
    }
    Satellite_PrecessRADEC(nullptr, in, nullptr);
    Satellite_PrecessRADEC(nullptr, nullptr, nullptr);
    double out[2] = {7, 7};
    Satellite_PrecessRADEC(out, nullptr, nullptr);
    EXPECT_EQ(out[0], 0);
    EXPECT_EQ(out[1], 0);
    for (const double bad : {none, HUGE_VAL}) {
        const double first[2] = {bad, 0.5};
        const double second[2] = {0.5, bad};
        for (const double* place : {first, second}) {
            out[0] = out[1] = 7;
            Satellite_PrecessRADEC(out, place, nullptr);
            EXPECT_EQ(out[0], 0);
            EXPECT_EQ(out[1], 0);
        }
    }
    const double huge[2] = {1e300, -1e300};
    Satellite_PrecessRADEC(out, huge, nullptr);
    EXPECT_TRUE(std::isfinite(out[0]) && std::isfinite(out[1]));
    Satellite_SetPrecession(2018, 2000);
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
