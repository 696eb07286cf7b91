#include "flare/attitude.h"

#include <array>

#include "engine/geometry/attitude_types.h"
#include "flare/observed_night.h"
#include "orbit/propagation.h"
#include "orbit/sun_and_moon.h"

namespace glintara::observed_night {
namespace {

constexpr double kSiderealDay = 0.99726956633;

struct AttitudeTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;

    void SetUp() override { o.LoadOne("iridium.tle", "IRIDIUM 32 [+]"); }

    SatRecord& First() { return data.Satellite(1); }

    static SatRecord& WithType(SatRecord& satellite, OrientationType type) {
        satellite.Surface.OrientationType = static_cast<std::int32_t>(type);
        return satellite;
    }

    WorldMotion MotionOf(const SatRecord& satellite, double jd) const {
        EngineBlock block = satellite.EngineBlock;
        return PropagateSatellite(data, EarthRotation::GivenJd, block, jd);
    }

    std::optional<BodyFrame> FrameOf(const SatRecord& satellite, double jd) const {
        const WorldMotion motion = MotionOf(satellite, jd);
        return BuildBodyFrame(o.app, satellite, motion.position, motion.velocity, jd);
    }
};

void ExpectNear(const Vector3& a, const Vector3& b, double tolerance) { EXPECT_LT(Length(a - b), tolerance); }

void ExpectRightAngled(const BodyFrame& frame) {
    for (const Vector3& axis : {frame.BodyUp, frame.BodyAhead, frame.BodySide}) EXPECT_NEAR(Length(axis), 1, 1e-12);
    EXPECT_NEAR(Dot(frame.BodyUp, frame.BodyAhead), 0, 1e-12);
    EXPECT_NEAR(Dot(frame.BodyUp, frame.BodySide), 0, 1e-12);
    EXPECT_NEAR(Dot(frame.BodyAhead, frame.BodySide), 0, 1e-12);
}

// Along the track.

TEST_F(AttitudeTest, InACircularOrbitAheadIsTheVelocity) {
    // Due east over the equator at 90 degrees east, and due north over Greenwich: up is the place itself.
    const SatRecord& satellite = WithType(First(), OrientationType::AlongTrack);
    const auto east = BuildBodyFrame(o.app, satellite, {0, 1.12, 0}, {-7.46, 0, 0}, kNight);
    ASSERT_TRUE(east);
    ExpectNear(east->BodyUp, {0, 1, 0}, 1e-15);
    ExpectNear(east->BodyAhead, {-1, 0, 0}, 1e-15);
    ExpectNear(east->BodySide, {0, 0, -1}, 1e-15);  // to the right of the track

    const auto north = BuildBodyFrame(o.app, satellite, {1.12, 0, 0}, {0, 0, 7.46}, kNight);
    ASSERT_TRUE(north);
    ExpectNear(north->BodyAhead, {0, 0, 1}, 1e-15);
}

TEST_F(AttitudeTest, AClimbIsTakenOutOfTheVelocity) {
    const SatRecord& satellite = WithType(First(), OrientationType::AlongTrack);
    const auto frame = BuildBodyFrame(o.app, satellite, {2, 0, 0}, {4, 3, 0}, kNight);
    ASSERT_TRUE(frame);
    ExpectNear(frame->BodyAhead, {0, 1, 0}, 1e-15);
}

TEST_F(AttitudeTest, OnALowOrbitAheadLeansFromTheVelocityByTheFlightPathAngleAlone) {
    const SatRecord& satellite = WithType(First(), OrientationType::AlongTrack);
    const WorldMotion motion = MotionOf(satellite, kNight);
    const auto frame = FrameOf(satellite, kNight);
    ASSERT_TRUE(frame);
    ExpectRightAngled(*frame);
    // An eccentricity below 0.002 tilts the path by less than that from the horizontal.
    EXPECT_GT(Dot(frame->BodyAhead, Normalized(motion.velocity)), 1 - 0.002 * 0.002);
}

TEST_F(AttitudeTest, AVelocityAlongTheVerticalGivesNoFrame) {
    const SatRecord& satellite = WithType(First(), OrientationType::AlongTrack);
    const Vector3 r{0.3, -0.7, 0.9};
    EXPECT_FALSE(BuildBodyFrame(o.app, satellite, r, r, kNight));
    // Multiples that a double cannot hold leave rounding behind, which is no direction either.
    for (const double k : {-1.0, 0.1, 1 / 3.0, -7.7, 1e-9, 1e9})
        EXPECT_FALSE(BuildBodyFrame(o.app, satellite, r, k * r, kNight)) << k;
    EXPECT_FALSE(BuildBodyFrame(o.app, satellite, r, {0, 0, 0}, kNight));
    EXPECT_FALSE(BuildBodyFrame(o.app, satellite, {0, 0, 0}, {1, 2, 3}, kNight));
    EXPECT_TRUE(BuildBodyFrame(o.app, satellite, r, {0.3, -0.7, 0.9 + 1e-9}, kNight));
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(BuildBodyFrame(o.app, satellite, r, {kNotANumber, 0, 1}, kNight));
    EXPECT_FALSE(BuildBodyFrame(o.app, satellite, {kNotANumber, 0, 1}, r, kNight));
}

// Fixed in space.

TEST_F(AttitudeTest, AtNoonOf1January2000TheEquinoxStoodOver79DegreesEast) {
    // Greenwich mean sidereal time then was 18 h 41 m 50.548 s (IAU 1982).
    constexpr double kLongitude = 360 - 280.460618;
    for (const OrientationType type : {OrientationType::Inertial, OrientationType::Rotating}) {
        const auto frame = BuildBodyFrame(o.app, WithType(First(), type), {1.1, 0.2, 0.3}, {1, 2, 3}, 2451545.0);
        ASSERT_TRUE(frame);
        ExpectRightAngled(*frame);
        EXPECT_NEAR(std::atan2(frame->BodyUp.y, frame->BodyUp.x) / kDegree, kLongitude, 1e-5);
        EXPECT_NEAR(std::atan2(frame->BodyAhead.y, frame->BodyAhead.x) / kDegree, kLongitude + 90, 1e-5);
        EXPECT_EQ(frame->BodySide, (Vector3{0, 0, 1}));
    }
}

TEST_F(AttitudeTest, FixedInSpaceItTurnsAgainstTheEarthOnceInADayByTheStars) {
    const SatRecord& satellite = WithType(First(), OrientationType::Inertial);
    const auto start = FrameOf(satellite, kNight);
    const auto quarter = FrameOf(satellite, kNight + kSiderealDay / 4);
    const auto whole = FrameOf(satellite, kNight + kSiderealDay);
    ASSERT_TRUE(start && quarter && whole);
    // The Earth turns to the east, and so on its axes the stars turn to the west.
    ExpectNear(quarter->BodyUp, {start->BodyUp.y, -start->BodyUp.x, 0}, 1e-6);
    ExpectNear(quarter->BodyAhead, {start->BodyAhead.y, -start->BodyAhead.x, 0}, 1e-6);
    ExpectNear(whole->BodyUp, start->BodyUp, 1e-6);
    ExpectNear(whole->BodyAhead, start->BodyAhead, 1e-6);
}

TEST_F(AttitudeTest, FixedInSpaceThePlaceOfTheSatellitePlaysNoPart) {
    const SatRecord& satellite = WithType(First(), OrientationType::Inertial);
    const auto here = BuildBodyFrame(o.app, satellite, {1.1, 0.2, 0.3}, {1, 2, 3}, kNight);
    const auto there = BuildBodyFrame(o.app, satellite, {-4, 2, -1}, {-4, 2, -1}, kNight);
    ASSERT_TRUE(here && there);
    EXPECT_EQ(here->BodyUp, there->BodyUp);
    EXPECT_EQ(here->BodyAhead, there->BodyAhead);
    EXPECT_EQ(here->BodySide, there->BodySide);
}

// Towards another satellite.

struct TargetTest : AttitudeTest {
    void SetUp() override {
        AttitudeTest::SetUp();
        o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
        WithType(First(), OrientationType::AlongTarget);
        First().Surface.TargetSatID = 38552;
    }
};

TEST_F(TargetTest, AheadPointsUnderTheTarget) {
    // At the displayed instant, and at others, for which the Earth's turn between the two must be minded.
    for (const double jd : {kNight, kNight + 0.1, kNight + 0.35, kNight - 2.6}) {
        const auto frame = FrameOf(First(), jd);
        ASSERT_TRUE(frame);
        ExpectRightAngled(*frame);
        const Vector3 r = MotionOf(First(), jd).position;
        // The target stands over Greenwich, within its half degree.
        const double ring = 42165e3 / data.Site.SiteRadius;
        const Vector3 line = Vector3{ring, 0, 0} - r;
        const double ahead = Dot(frame->BodyAhead, line);
        EXPECT_GT(ahead, 0);
        EXPECT_NEAR(Dot(frame->BodySide, line) / Length(line), 0, 0.02);
        ExpectNear(frame->BodyUp, Normalized(r), 1e-12);
        EXPECT_NEAR(Dot(frame->BodyAhead, Normalized(r)), 0, 1e-12);
    }
}

TEST_F(TargetTest, TheLastSatelliteOfThatNumberIsTheTarget) {
    const auto frame = FrameOf(First(), kNight);
    o.LoadOne("geo.tle", "GOES 16");
    data.Satellite(3).SatNumber = "38552";
    const auto other = FrameOf(First(), kNight);
    ASSERT_TRUE(frame && other);
    EXPECT_GT(Length(other->BodyAhead - frame->BodyAhead), 0.1);
}

TEST_F(TargetTest, WithoutATargetThereIsNoFrame) {
    ASSERT_TRUE(FrameOf(First(), kNight));
    First().Surface.TargetSatID = 38553;
    EXPECT_FALSE(FrameOf(First(), kNight));
    First().Surface.TargetSatID = 0;
    EXPECT_FALSE(FrameOf(First(), kNight));
    First().Surface.TargetSatID = 38552;
    data.SatCount = 1;  // the record still lies behind the end of the list
    EXPECT_FALSE(FrameOf(First(), kNight));
}

TEST_F(TargetTest, TheSimplePropagatorLeavesItOut) {
    o.app.Main.CSGP4.Value = false;
    EXPECT_FALSE(FrameOf(First(), kNight));
    WithType(First(), OrientationType::AlongTrack);
    EXPECT_TRUE(FrameOf(First(), kNight));
}

TEST_F(TargetTest, ASatelliteIsNoTargetOfItsOwn) {
    First().Surface.TargetSatID = 24945;
    ASSERT_EQ(First().SatNumber, "24945");
    for (double jd = kNight - 3; jd < kNight + 3; jd += 0.037) {
        EXPECT_FALSE(FrameOf(First(), jd)) << jd;
        const SatRecord copy = First();
        EXPECT_FALSE(FrameOf(copy, jd)) << jd;
        // The frame's own propagation, under the displayed rotation: rounding differs then.
        SetInstant(data, jd);
        EngineBlock block = First().EngineBlock;
        const WorldMotion motion = PropagateSatellite(data, EarthRotation::Displayed, block, jd);
        EXPECT_FALSE(BuildBodyFrame(o.app, First(), motion.position, motion.velocity, jd)) << jd;
        SetInstant(data, kNight);
    }
    // The others of the list go on.
    EXPECT_TRUE(FrameOf(data.Satellite(2), kNight));
}

TEST_F(TargetTest, ATargetThatTheEngineCannotPropagateLiesAtTheEarthsCentre) {
    // Straight down there is no direction ahead.
    data.Satellite(2).EngineBlock = EngineBlock{};
    EXPECT_FALSE(FrameOf(First(), kNight));
}

// Towards the Sun.

TEST_F(AttitudeTest, TheSunsPlaceAtTheEquinoxOfMarch2018) {
    // 20 March 2018, 16:15 UTC, the moment of the equinox: the Sun stood over the equator. Sundials were 7 m 26 s slow,
    // and so it stood at 61.9 west. Its distance is one astronomical unit by decree.
    const Vector3 sun = SunPlace(data, 2458198.1770833);
    EXPECT_NEAR(std::atan2(sun.y, sun.x) / kDegree, -61.89, 0.05);
    EXPECT_NEAR(std::asin(sun.z / Length(sun)) / kDegree, 0, 0.02);
    EXPECT_NEAR(Length(sun) * data.Site.SiteRadius, 149597892000, 1);
}

TEST_F(AttitudeTest, AheadIsTheSunsAzimuthAtTheSatellite) {
    const SatRecord& satellite = WithType(First(), OrientationType::VerticalSun);
    // Over the north pole at the equinox, ahead is the Sun itself.
    const auto pole = BuildBodyFrame(o.app, satellite, {0, 0, 1.2}, {1, 0, 0}, 2458198.1770833);
    ASSERT_TRUE(pole);
    EXPECT_NEAR(std::atan2(pole->BodyAhead.y, pole->BodyAhead.x) / kDegree, -61.89, 0.05);

    for (double jd = kNight; jd < kNight + 1; jd += 0.09) {
        const auto frame = FrameOf(satellite, jd);
        ASSERT_TRUE(frame);
        ExpectRightAngled(*frame);
        const Vector3 r = MotionOf(satellite, jd).position;
        const Vector3 line = SunPlace(data, jd) - r;
        EXPECT_GT(Dot(frame->BodyAhead, line), 0);
        EXPECT_NEAR(Dot(frame->BodySide, line) / Length(line), 0, 1e-9);
        ExpectNear(frame->BodyUp, Normalized(r), 1e-12);
    }
}

TEST_F(AttitudeTest, UnderTheSunThereIsNoFrame) {
    const SatRecord& satellite = WithType(First(), OrientationType::VerticalSun);
    const Vector3 under = 1.3 * Normalized(SunPlace(data, kNight));
    EXPECT_FALSE(BuildBodyFrame(o.app, satellite, under, {1, 2, 3}, kNight));
}

// Types and codes.

TEST_F(AttitudeTest, ATypeThatIsNoneGivesNoFrame) {
    for (const std::int32_t type : {-1, 5, 6, 32767, -32768}) {
        First().Surface.OrientationType = type;
        EXPECT_FALSE(FrameOf(First(), kNight)) << type;
    }
}

struct SurfacesTakingPartTest : AttitudeTest {
    std::vector<int> Geometries(bool transit) {
        std::vector<int> codes;
        const EngineSurfaces surfaces = SurfacesTakingPart(First(), transit);
        for (const GlintSurface& surface : surfaces.All()) codes.push_back(surface.Geometry);
        return codes;
    }
};

TEST_F(SurfacesTakingPartTest, RotatingAndTargetAreCarriedAsFixedInSpace) {
    First().Surface.MirrorCount = 1;
    const std::vector<int> codes{0, 1, 1, 1, 4};
    for (int type = 0; type <= 4; ++type) {
        First().Surface.OrientationType = type;
        EXPECT_EQ(Geometries(false), std::vector<int>{codes[static_cast<std::size_t>(type)]}) << type;
        EXPECT_EQ(Geometries(true), std::vector<int>{-1}) << type;
    }
}

TEST_F(SurfacesTakingPartTest, AllThreeAntennasInTheirOrderInRadians) {
    const EngineSurfaces surfaces = SurfacesTakingPart(First(), false);
    ASSERT_EQ(surfaces.All().size(), 3u);
    for (std::size_t k = 0; k < 3; ++k) {
        const MirrorRecord& mirror = First().Surface.Mirror(static_cast<int>(k) + 1);
        EXPECT_NEAR(surfaces.All()[k].Angle, mirror.Angle * kDegree, 1e-12);
        EXPECT_NEAR(surfaces.All()[k].Tilt, 40 * kDegree, 1e-12);
        EXPECT_EQ(surfaces.All()[k].Skip, 0);
    }
}

TEST_F(SurfacesTakingPartTest, NoneOfASatelliteThatIsDisabledOrHasNoModel) {
    First().Surface.OrientationType = 5;
    EXPECT_TRUE(Geometries(false).empty());
    EXPECT_EQ(Geometries(true).size(), 1u);
    First().Surface.OrientationType = 0;
    First().Surface.ModelFlags[0] = '0';
    EXPECT_TRUE(Geometries(false).empty());
    First().Surface.ModelFlags[0] = '1';
    First().Surface.MirrorCount = 20;
    EXPECT_EQ(Geometries(false).size(), 20u);
    First().Surface.MirrorCount = 0;
    EXPECT_TRUE(Geometries(false).empty());
    First().Surface.MirrorCount = 3;
    First().OptionFlags = "1100000000000000";
    EXPECT_TRUE(Geometries(false).empty());
    EXPECT_TRUE(Geometries(true).empty());
}

}  // namespace
}  // namespace glintara::observed_night
