#include "orbit/sgp1.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "engine/astro/sidereal.h"
#include "flare/observed_night.h"
#include "orbit/satellite_motion.h"

namespace glintara::observed_night {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kWholeTurn = 2 * 3.14159265358979323846;

/// Noon of 20 January 2018 as an element set has it, and as a Julian date.
constexpr const char* kNoonText = "18020.50000000";
constexpr double kNoon = 2458139.0;

/// Degrees, revolutions per day; and what comes of them.
struct Example {
    const char* name;
    double meanMotion, eccentricity, inclination, argPerigee, node, meanAnomaly, dot, ddot;
    double days;
    double axis, eccentricityThen, argPerigeeThen, nodeThen;  // radians
    double radius;
    Vector3 position;  // on the equinox
};

// Worked out from the formulas of the model in Python with mpmath, at 40 digits; the anomaly by Newton's method, the place
// by the node, the inclination and the argument of latitude.
const std::array<Example, 5> kExamples = {{
    {"station",
     15.5419008,
     0.0003646,
     51.6424,
     28.7227,
     32.9776,
     39.5332,
     .00002078,
     0,
     3.25,
     1.0633431076147493,
     0.00032821008413340801,
     0.72559068300289303,
     0.29272572610667488,
     1.0635960778983581,
     {0.10286186855305748, -0.65584235563012124, -0.83097945671362854}},
    {"Molniya",
     2.00613001,
     0.7106332,
     63.4349,
     281.6468,
     245.2871,
     14.0215,
     -.00000123,
     0,
     -11.5,
     4.1634263350975946,
     0.71061610753219455,
     4.9156637930571483,
     4.3058505118770464,
     1.7193954303219915,
     {0.27068694359549632, 1.5381191169907499, -0.71919316343154335}},
    {"geostationary",
     1.00271567,
     0.0001523,
     0.0418,
     93.6148,
     321.4127,
     197.3302,
     .00000012,
     0,
     7.75,
     6.6107009568462591,
     0.00014453114957725681,
     1.6578750334084104,
     5.6078955138004506,
     6.6111034546899189,
     {-6.5336308829877395, 1.0091335833649779, -0.0024050793732776734}},
    {"decaying",
     16.31204817,
     0.0021437,
     97.5012,
     151.0392,
     12.8871,
     209.4211,
     .01203445,
     .000012345,
     2.125,
     1.0163516252205605,
     1e-6,
     2.4790597007518381,
     0.26845034384611758,
     1.0163515921970774,
     {-0.65459633786046869, -0.074383695740901075, -0.77391295326355829}},
    {"fallen",
     16.44551203,
     0.0009871,
     51.6131,
     70.1185,
     88.3306,
     290.0043,
     .08999999,
     0,
     1.5,
     0.95918172019707465,
     1e-6,
     1.337845108015912,
     1.3926195876411781,
     0.95918266644652284,
     {0.47473698898933295, -0.46264276239397265, -0.69326607684299513}},
}};

SatRecord RecordOf(const Example& example) {
    SatRecord satellite;
    satellite.EpochText = kNoonText;
    satellite.Name = example.name;
    satellite.MeanMotion = example.meanMotion;
    satellite.Eccentricity = example.eccentricity;
    satellite.Inclination = example.inclination * kDegToRad;
    satellite.ArgPerigee = example.argPerigee * kDegToRad;
    satellite.RaanAngle = example.node * kDegToRad;
    satellite.MeanAnomaly = example.meanAnomaly * kDegToRad;
    satellite.MeanMotionDot = example.dot;
    satellite.MeanMotionDDot = example.ddot;
    return satellite;
}

KeplerElements After(const KeplerElements& source, double days) {
    KeplerElements working;
    double t = days;
    SGP1(source, working, t);
    return working;
}

/// An ellipse of the station's kind without drag.
KeplerElements Steady(double eccentricity = 0.01, double inclination = 51.6) {
    KeplerElements elements;
    elements.MeanMotion = 15.5;
    elements.Eccentricity = eccentricity;
    elements.Inclination = inclination * kDegToRad;
    elements.ArgPerigee = 1;
    elements.RaanAngle = 2;
    elements.MeanAnomaly = 3;
    return elements;
}

TEST(SGP1Test, CarriesTheEllipseToAnotherTime) {
    for (const Example& example : kExamples) {
        SCOPED_TRACE(example.name);
        const KeplerElements working = After(KeplerElementsOf(RecordOf(example)), example.days);
        EXPECT_NEAR(working.MeanRadiusA, example.axis, 1e-13 * example.axis);
        EXPECT_NEAR(working.Eccentricity, example.eccentricityThen, 1e-13);
        EXPECT_NEAR(working.ArgPerigee, example.argPerigeeThen, 1e-12);
        EXPECT_NEAR(working.RaanAngle, example.nodeThen, 1e-12);
    }
}

TEST(SGP1Test, PutsSatellitesIntoTheWorld) {
    Observatory o;
    o.app.Main.CSGP4.Value = false;
    for (const Example& example : kExamples) {
        SCOPED_TRACE(example.name);
        SetInstant(o.app.Data, kNoon + example.days);
        const WorldMotion motion = MotionNow(o.app, RecordOf(example));
        const double greenwich = SiderealFromDate(o.app.Data.SimFields());
        const Vector3 expected = TurnedAboutPole(example.position, -greenwich);
        EXPECT_NEAR(Length(motion.position), example.radius, 2e-6 * example.radius);
        EXPECT_LT(Length(motion.position - expected), 1e-5 * example.radius);
        EXPECT_EQ(motion.result, 0);
    }
}

TEST(SGP1Test, TheRestOfTheRecordIsThatOfTheSource) {
    const SatRecord source = RecordOf(kExamples[0]);
    SatRecord working;
    double t = 3.25;
    SGP1(source, working, t);
    EXPECT_EQ(working.Name, "station");
    EXPECT_EQ(working.EpochText, source.EpochText);
    EXPECT_EQ(working.MeanMotion, source.MeanMotion);
    EXPECT_EQ(working.MeanAnomaly, source.MeanAnomaly);
    EXPECT_EQ(working.Inclination, source.Inclination);
    EXPECT_EQ(working.MeanMotionDot, source.MeanMotionDot);
    EXPECT_EQ(KeplerElementsOf(working), After(KeplerElementsOf(source), 3.25));

    SatRecord inPlace = source;
    t = 3.25;
    SGP1(inPlace, inPlace, t);
    EXPECT_EQ(KeplerElementsOf(inPlace), KeplerElementsOf(working));
}

TEST(SGP1Test, ScalesTheTimeThatItIsGiven) {
    KeplerElements working;
    double t = 1.5;
    SGP1(Steady(), working, t);
    EXPECT_NEAR(t, 1.5 * kWholeTurn, 1e-13);
    const KeplerElements once = working;
    SGP1(Steady(), working, t);
    EXPECT_NEAR(t, 1.5 * kWholeTurn * kWholeTurn, 1e-12);
    EXPECT_NEAR(working.RaanAngle - 2, (once.RaanAngle - 2) * kWholeTurn, 1e-12) << "who does not compute it anew";
}

TEST(SGP1Test, WithoutDragTheEllipseKeepsItsShape) {
    for (const double e : {1e-5, 0.01, 0.3, 0.9}) {
        const KeplerElements atEpoch = After(Steady(e), 0);
        for (const double days : {-3000.0, -1.0, 0.5, 10.0, 3000.0}) {
            const KeplerElements working = After(Steady(e), days);
            EXPECT_EQ(working.MeanRadiusA, atEpoch.MeanRadiusA);
            EXPECT_NEAR(working.Eccentricity, e, 1e-15);
        }
    }
}

TEST(SGP1Test, AtTheEpochOnlyTheAxisIsAnother) {
    KeplerElements source = Steady();
    source.MeanMotionDot = 0.001;
    source.MeanMotionDDot = 0.0001;
    source.MeanRadiusA = 5;
    KeplerElements working = After(source, 0);
    EXPECT_NE(working.MeanRadiusA, 5);
    EXPECT_NEAR(working.Eccentricity, source.Eccentricity, 1e-15);
    working.MeanRadiusA = 5;
    working.Eccentricity = source.Eccentricity;
    EXPECT_EQ(working, source);
}

TEST(SGP1Test, AnEllipseThatFellBelowItsPerigeeIsRound) {
    KeplerElements source = Steady(0.01);
    source.MeanMotionDot = 0.05;
    const KeplerElements working = After(source, 5);
    EXPECT_EQ(working.Eccentricity, 1e-6);
    EXPECT_LT(working.MeanRadiusA, After(source, 0).MeanRadiusA * 0.99);
    // A round one has no room below its perigee.
    EXPECT_EQ(After(Steady(0), 1).Eccentricity, 1e-6);
}

TEST(SGP1Test, ThePerigeeRestsAtTheCriticalInclination) {
    const double critical = std::acos(std::sqrt(0.2)) / kDegree;
    EXPECT_NEAR(critical, 63.43, 0.01);
    EXPECT_NEAR(After(Steady(0.01, critical), 100).ArgPerigee, 1, 1e-12);
    EXPECT_GT(After(Steady(0.01, critical - 1), 100).ArgPerigee, 1.1);
    EXPECT_LT(After(Steady(0.01, critical + 1), 100).ArgPerigee, 0.9);
}

TEST(SGP1Test, TheNodeFollowsTheSunOnASunSynchronousOrbit) {
    // Landsat 8: 705 km, 98.2 degrees, 233 revolutions in 16 days (USGS).
    KeplerElements landsat = Steady(0.0001, 98.2);
    landsat.MeanMotion = 233.0 / 16;
    const double perDay = (After(landsat, 100).RaanAngle - landsat.RaanAngle) / 100 / kDegree;
    EXPECT_NEAR(perDay, 360 / 365.2422, 0.005);
    EXPECT_NEAR((After(landsat, 0).MeanRadiusA - 1) * 6378.135, 705, 5);
}

TEST(SGP1Test, ThePerigeeTurnsAsJ2HasItButForItsOneDivisor) {
    // Vallado, Fundamentals of Astrodynamics, 4th ed., eq. 9-41: 3 n J2 (4 - 5 sin^2 i) / 4 p^2. Here p is not squared.
    const KeplerElements source = Steady(0.4, 30);
    const double p = After(source, 0).MeanRadiusA * (1 - 0.4 * 0.4);
    const double s = std::sin(source.Inclination);
    const double rate = 3 * source.MeanMotion * kWholeTurn * 0.001082616 * (4 - 5 * s * s) / 4 / (p * p);
    EXPECT_NEAR((After(source, 10).ArgPerigee - 1) / 10, rate * p, 1e-12);
}

TEST(SGP1Test, TimeIsCountedFromTheEpochOfItsCentury) {
    Observatory o;
    SetInstant(o.app.Data, kNoon);
    SatRecord satellite;
    struct Epoch {
        const char* text;
        double jd;
    };
    // Julian dates of the almanac.
    for (const Epoch& epoch : {Epoch{"18020.50000000", 2458139.0}, Epoch{"51001.00000000", 2433647.5},
                               Epoch{"50001.00000000", 2469807.5}, Epoch{"00001.50000000", 2451545.0}}) {
        satellite.EpochText = epoch.text;
        EXPECT_NEAR(SatelliteTimeSinceEpoch(o.app.Data, satellite), kNoon - epoch.jd, 1e-8) << epoch.text;
    }
}

TEST(SGP1Test, TheMeanAnomalyRunsEvenly) {
    const KeplerElements elements = Steady();
    for (const double days : {0.0, 1 / 15.5, 2 / 15.5, -1 / 15.5})
        EXPECT_NEAR(std::remainder(MeanAnomalyAfter(elements, days) - 3, kWholeTurn), 0, 1e-12) << days;
    EXPECT_NEAR(MeanAnomalyAfter(elements, 0.25 / 15.5), 3 + kWholeTurn / 4, 1e-12);
    EXPECT_NEAR(MeanAnomalyAfter(elements, -0.25 / 15.5), 3 + 3 * kWholeTurn / 4, 1e-12) << "fractions are positive";
    EXPECT_LT(MeanAnomalyAfter(elements, 1e6), 3 + kWholeTurn);
}

/// Turns by the matrices of the textbooks (Vallado, 4th ed., section 2.6).
using Matrix = std::array<Vector3, 3>;

Matrix Times(const Matrix& a, const Matrix& b) {
    Matrix product;
    for (std::size_t i = 0; i < 3; ++i) product[i] = a[i].x * b[0] + a[i].y * b[1] + a[i].z * b[2];
    return product;
}

Vector3 Turned(const Matrix& a, const Vector3& v) { return {Dot(a[0], v), Dot(a[1], v), Dot(a[2], v)}; }

Matrix AboutZ(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
}

Matrix AboutX(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
}

struct KeplerWorldTest : ::testing::Test {
    KeplerElements Random() {
        KeplerElements elements;
        elements.MeanRadiusA = 1 + 7 * Dice();
        elements.Eccentricity = 0.9 * Dice();
        elements.Inclination = kWholeTurn / 2 * Dice();
        elements.RaanAngle = kWholeTurn * Dice();
        elements.ArgPerigee = kWholeTurn * Dice();
        return elements;
    }

    double Dice() { return std::uniform_real_distribution<double>(0, 1)(engine_); }

    Observatory o;
    CommonData& data = o.app.Data;

  private:
    std::mt19937_64 engine_{20180120};
};

TEST_F(KeplerWorldTest, IsTheTurnByNodeInclinationAndArgumentOfLatitude) {
    for (int round = 0; round < 500; ++round) {
        SetInstant(data, kNoon + 300 * Dice());
        const KeplerElements elements = Random();
        const double v = kWholeTurn * Dice();
        const double a = elements.MeanRadiusA;
        const double e = elements.Eccentricity;
        const double node = elements.RaanAngle - SiderealFromDate(data.SimFields());
        const Matrix turn = Times(Times(AboutZ(node), AboutX(elements.Inclination)), AboutZ(elements.ArgPerigee));
        // From the eccentric anomaly, where the place in the plane of the orbit has another form.
        const double anomaly = 2 * std::atan(std::sqrt((1 - e) / (1 + e)) * std::tan(v / 2));
        const Vector3 inPlane{a * (std::cos(anomaly) - e), a * std::sqrt(1 - e * e) * std::sin(anomaly), 0};
        const Vector3 position = KeplerToWorld(data, elements, v);
        EXPECT_LT(Length(position - Turned(turn, inPlane)), 1e-11 * a);
        const Vector3 ahead = KeplerDirectionToWorld(data, elements, v);
        EXPECT_LT(Length(ahead - Turned(turn, {-std::sin(v), std::cos(v), 0})), 1e-12);
    }
}

TEST_F(KeplerWorldTest, OnARoundOrbitTheDirectionIsThatOfTheMotion) {
    constexpr double kStep = 1e-5;
    for (int round = 0; round < 200; ++round) {
        KeplerElements elements = Random();
        elements.Eccentricity = 0;
        const double v = kWholeTurn * Dice();
        const Vector3 step = KeplerToWorld(data, elements, v + kStep) - KeplerToWorld(data, elements, v - kStep);
        const Vector3 ahead = KeplerDirectionToWorld(data, elements, v);
        EXPECT_LT(Length(Normalized(step) - ahead), 1e-8);
    }
}

TEST_F(KeplerWorldTest, OnAnEllipseTheDirectionIsThatOfTheMotionAcrossTheRadius) {
    constexpr double kStep = 1e-6;
    for (int round = 0; round < 200; ++round) {
        const KeplerElements elements = Random();
        const double v = kWholeTurn * Dice();
        const Vector3 up = Normalized(KeplerToWorld(data, elements, v));
        const Vector3 step = KeplerToWorld(data, elements, v + kStep) - KeplerToWorld(data, elements, v - kStep);
        const Vector3 across = Normalized(step - Dot(step, up) * up);
        EXPECT_LT(Length(across - KeplerDirectionToWorld(data, elements, v)), 1e-8);
    }
}

// Both models from the same elements. What parts them is known: the perigee turns faster by SGP1, as many times as the
// orbit is larger than the Earth, and takes the satellite along. The rest are the periodic terms, some 20 km.
TEST(SGP1AgainstSGP4Test, DiffersByWhatThePerigeeIsAheadAndByPeriodicTerms) {
    struct Sample {
        const char* file;
        const char* name;
        double days;
    };
    for (const Sample& sample : {Sample{"stations.tle", "ISS (ZARYA)", 3}, Sample{"iridium.tle", "IRIDIUM 32 [+]", 5},
                                 Sample{"geo.tle", "METEOSAT-10 (MSG-3)", 5}}) {
        SCOPED_TRACE(sample.name);
        Observatory o;
        o.LoadOne(sample.file, sample.name);
        SatRecord& satellite = o.app.Data.Satellite(1);
        const double epoch = EpochToJD(satellite);
        double worst = 0;
        double turned = 0;
        for (double days = -sample.days; days <= sample.days; days += 0.0137) {
            SetInstant(o.app.Data, epoch + days);
            o.app.Main.CSGP4.Value = true;
            const WorldMotion full = MotionNow(o.app, satellite);
            o.app.Main.CSGP4.Value = false;
            const WorldMotion simple = MotionNow(o.app, satellite);
            worst = std::max(worst, Length(simple.position - full.position) / Length(full.position));
            turned = std::max(turned, Length(simple.velocity - Normalized(full.velocity)));
        }
        // The rate after Vallado, 4th ed., eq. 9-41.
        const double p = satellite.MeanRadiusA;
        const double s = std::sin(satellite.Inclination);
        const double rate = 3 * satellite.MeanMotion * kWholeTurn * 0.001082616 * (4 - 5 * s * s) / 4 / (p * p);
        const double ahead = std::abs(rate) * (p - 1) * sample.days;
        EXPECT_NEAR(worst, ahead, 0.004);
        EXPECT_NEAR(turned, ahead, 0.004);
    }
}

TEST(SGP1ExtremesTest, NumbersStayFiniteOrThereIsNoPlace) {
    Observatory o;
    o.app.Main.CSGP4.Value = false;
    int without = 0;
    for (const double dot : {0.0, 0.99999999, -0.99999999, 1e300, -1e300, kInfinite, -kInfinite, kNoNumber})
        for (const double ddot : {0.0, 9.9999e8, -9.9999e8, 1e300, kInfinite, kNoNumber})
            for (const double motion : {15.5, 1e-300, 0.0, -1.0, 1e300, kInfinite, kNoNumber})
                for (const double e : {0.0, 0.9999999, 1.0, 2.0, kNoNumber})
                    for (const double years : {-60.0, -8.0, 0.0, 8.0}) {
                        SatRecord satellite = RecordOf(kExamples[0]);
                        satellite.MeanMotion = motion;
                        satellite.Eccentricity = e;
                        satellite.MeanMotionDot = dot;
                        satellite.MeanMotionDDot = ddot;
                        SetInstant(o.app.Data, kNoon + years * 365.25);
                        const WorldMotion now = MotionNow(o.app, satellite);
                        ASSERT_TRUE(IsFinite(now.position) && IsFinite(now.velocity));
                        ASSERT_LE(Length(now.position), 1e6);
                        ASSERT_EQ(now.result != 0, now.position == Vector3{});
                        if (now.result != 0) ++without;
                        SatellitePath path(o.app, satellite);
                        const WorldMotion there = path.At(0.5, 1);
                        ASSERT_TRUE(IsFinite(there.position) && IsFinite(there.velocity));
                    }
    EXPECT_GT(without, 100);
}

TEST(SGP1ExtremesTest, ASatelliteWhoseMotionHasRunOutHasNoPlace) {
    Observatory o;
    o.app.Main.CSGP4.Value = false;
    SatRecord satellite = RecordOf(kExamples[0]);
    satellite.MeanMotionDot = -0.01;
    SetInstant(o.app.Data, kNoon + 100);
    EXPECT_EQ(MotionNow(o.app, satellite).result, 0) << "15.54 - 2 * 0.01 * 200 pi is above 0";
    SetInstant(o.app.Data, kNoon + 130);
    const WorldMotion motion = MotionNow(o.app, satellite);
    EXPECT_EQ(motion.result, kNoPlace);
    EXPECT_EQ(motion.position, Vector3{});
    EXPECT_EQ(motion.velocity, Vector3{});
}

}  // namespace
}  // namespace glintara::observed_night
