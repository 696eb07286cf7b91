#include "orbit/propagation.h"

#include <array>
#include <random>

#include "engine/astro/sun_moon.h"
#include "flare/observed_night.h"
#include "orbit/sun_and_moon.h"

namespace glintara::observed_night {
namespace {

/// Difference of two angles in degrees, without whole turns.
double AroundCircle(double degrees) { return std::remainder(degrees, 360.0); }

double LongitudeOf(const Vector3& v) { return std::atan2(v.y, v.x) / kDegree; }

/// A day by the stars (Explanatory Supplement to the Astronomical Almanac, 2.24).
constexpr double kSiderealDay = 0.99726956633;

constexpr double kGeosynchronousRadius = 42164e3;

struct PropagationTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;

    /// The block of a satellite of an example file.
    EngineBlock BlockOf(const std::string& file, const std::string& name) {
        o.LoadOne(file, name);
        return data.Satellite(data.SatCount).EngineBlock;
    }
};

/// Position and velocity as the engine gives them, on inertial axes: kilometres, kilometres per second.
struct InertialMotion {
    std::array<double, 3> p{};
    std::array<double, 3> v{};
    std::int32_t result = 0;
};

InertialMotion InertialAt(EngineBlock block, double jd) {
    InertialMotion motion;
    motion.result = Satellite_SGP4(&block, jd, motion.p.data(), motion.v.data());
    return motion;
}

TEST_F(PropagationTest, GeosynchronousSatellitesStandWhereTheyAreStationed) {
    // The stations of GOES-East and GOES-West in January 2018 (NOAA).
    struct Station {
        const char* name;
        double longitude;
    };
    for (const Station& station : {Station{"GOES 16", -75.2}, Station{"GOES 15", -135.0}}) {
        EngineBlock block = BlockOf("geo.tle", station.name);
        for (int hour = 0; hour < 24; hour += 3) {
            const double jd = kNight + hour * kHour;
            SetInstant(data, jd);
            const WorldMotion displayed = PropagateSatellite(data, EarthRotation::Displayed, block, jd);
            EXPECT_NEAR(LongitudeOf(displayed.position), station.longitude, 0.4) << station.name;
            EXPECT_EQ(displayed.result, 0);
            SetInstant(data, kNight - 1000.3);
            const WorldMotion given = PropagateSatellite(data, EarthRotation::GivenJd, block, jd);
            EXPECT_NEAR(LongitudeOf(given.position), station.longitude, 0.4) << station.name;
            EXPECT_NEAR(Length(given.position) * data.Site.SiteRadius, kGeosynchronousRadius, 60e3);
        }
    }
}

TEST_F(PropagationTest, BothRotationsAgreeAtTheDisplayedInstant) {
    EngineBlock block = BlockOf("stations.tle", "ISS (ZARYA)");
    for (double jd = kNight; jd < kNight + 3; jd += 0.1234) {
        SetInstant(data, jd);
        const WorldMotion displayed = PropagateSatellite(data, EarthRotation::Displayed, block, jd);
        const WorldMotion given = PropagateSatellite(data, EarthRotation::GivenJd, block, jd);
        // The fields may round to the next Julian date, which is 40 microseconds off.
        EXPECT_LT(Length(displayed.position - given.position), 1e-8);
        EXPECT_LT(Length(displayed.velocity - given.velocity), 1e-7);
    }
}

TEST_F(PropagationTest, AnotherInstantIsTurnedByTheAngleOfTheDisplayedOne) {
    EngineBlock block = BlockOf("geo.tle", "GOES 16");
    const double start = LongitudeOf(PropagateSatellite(data, EarthRotation::Displayed, block, kNight).position);
    // The satellite keeps pace with the stars' day, while the displayed Earth stands still.
    for (int eighth = 1; eighth <= 8; ++eighth) {
        const double jd = kNight + eighth * kSiderealDay / 8;
        const Vector3 there = PropagateSatellite(data, EarthRotation::Displayed, block, jd).position;
        EXPECT_NEAR(AroundCircle(LongitudeOf(there) - start - 45.0 * eighth), 0, 0.1) << eighth;
    }
}

TEST_F(PropagationTest, AMotionIsBroughtToTheAxesOfItsInstant) {
    o.Load("stations.tle");
    o.Load("molniya.tle");
    std::mt19937 random(5);
    std::uniform_real_distribution<double> days(-20, 20);
    for (const double displayed : {kNight, kNight - 4000.7, 2451545.2, 2450000.1}) {
        SetInstant(data, displayed);
        for (int s = 1; s <= data.SatCount; ++s) {
            EngineBlock block = data.Satellite(s).EngineBlock;
            const double jd = kNight + days(random);
            const WorldMotion turned =
                OnAxesOfInstant(data, PropagateSatellite(data, EarthRotation::Displayed, block, jd), jd);
            const WorldMotion given = PropagateSatellite(data, EarthRotation::GivenJd, block, jd);
            EXPECT_LT(Length(turned.position - given.position), 1e-12 * Length(given.position));
            EXPECT_LT(Length(turned.velocity - given.velocity), 1e-12 * Length(given.velocity));
            EXPECT_EQ(turned.result, given.result);
        }
    }
}

TEST_F(PropagationTest, TheAxesTurnByThePublishedSiderealTime) {
    // GMST by the expression of Meeus, Astronomical Algorithms, (12.4), worked out apart for these instants, degrees.
    struct Published {
        double jd;
        double gmst;
    };
    EngineBlock block = BlockOf("stations.tle", "ISS (ZARYA)");
    for (const Published& at : {Published{kNight, 119.32654}, Published{kNight + 0.25, 209.57295}}) {
        const InertialMotion inertial = InertialAt(block, at.jd);
        SetInstant(data, at.jd);
        for (const EarthRotation rotation : {EarthRotation::Displayed, EarthRotation::GivenJd}) {
            const WorldMotion world = PropagateSatellite(data, rotation, block, at.jd);
            const double turn = LongitudeOf({inertial.p[0], inertial.p[1], 0}) - LongitudeOf(world.position);
            EXPECT_NEAR(AroundCircle(turn - at.gmst), 0, 1e-4);
            EXPECT_NEAR(world.position.z * data.Site.SiteRadius, inertial.p[2] * 1000, 1e-3);
        }
    }
}

TEST_F(PropagationTest, Before2000TheEarthTurnsTheOtherWayAndTheSunFollows) {
    constexpr double kNewYear1999 = 2451179.5;
    constexpr double kGmst = 100.20651;  // degrees, as above
    EngineBlock block = BlockOf("iridium.tle", "IRIDIUM 32 [+]");
    const InertialMotion inertial = InertialAt(block, kNewYear1999);
    SetInstant(data, kNewYear1999);
    for (const EarthRotation rotation : {EarthRotation::Displayed, EarthRotation::GivenJd}) {
        const WorldMotion world = PropagateSatellite(data, rotation, block, kNewYear1999);
        const double turn = LongitudeOf({inertial.p[0], inertial.p[1], 0}) - LongitudeOf(world.position);
        EXPECT_NEAR(AroundCircle(turn + kGmst), 0, 1e-4);

        // Seen from the Earth's centre the satellite is as far from the Sun as among the stars.
        const Equatorial sun = SunPosition(kNewYear1999);
        const Vector3 toSun{std::cos(sun.dec) * std::cos(sun.ra), std::cos(sun.dec) * std::sin(sun.ra),
                            std::sin(sun.dec)};
        const Vector3 star = Normalized({inertial.p[0], inertial.p[1], inertial.p[2]});
        const Vector3 place = Normalized(SunPlace(data, kNewYear1999));
        EXPECT_NEAR(Dot(Normalized(world.position), place), Dot(star, toSun), 1e-8);
    }
}

TEST_F(PropagationTest, TheTailOfTheBlockKeepsWhatTheEngineGave) {
    EngineBlock block = BlockOf("stations.tle", "ISS (ZARYA)");
    const double jd = kNight + 0.3;
    const InertialMotion inertial = InertialAt(block, jd);
    for (const EarthRotation rotation : {EarthRotation::Displayed, EarthRotation::GivenJd}) {
        block.WorldPosition[0] = 99;
        const WorldMotion world = PropagateSatellite(data, rotation, block, jd);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(static_cast<double>(block.InertialPosition[i]), inertial.p[i]);
            EXPECT_EQ(static_cast<double>(block.InertialVelocity[i]), inertial.v[i]);
        }
        EXPECT_EQ(static_cast<double>(block.WorldPosition[0]), world.position.x);
        EXPECT_EQ(static_cast<double>(block.WorldPosition[1]), world.position.y);
        EXPECT_EQ(static_cast<double>(block.WorldPosition[2]), world.position.z);
    }
}

TEST_F(PropagationTest, VelocityIsTheInertialOneOnTurnedAxes) {
    // A satellite that stands still over the ground still moves at 3.07 km/s.
    EngineBlock block = BlockOf("geo.tle", "GOES 16");
    const WorldMotion world = PropagateSatellite(data, EarthRotation::GivenJd, block, kNight);
    EXPECT_NEAR(Length(world.velocity), 3.0747, 0.001);
    EXPECT_NEAR(AroundCircle(LongitudeOf(world.velocity) - LongitudeOf(world.position) - 90), 0, 0.05);
}

TEST_F(PropagationTest, ASiteOnAHillChangesTheUnitAndNothingElse) {
    EngineBlock block = BlockOf("stations.tle", "ISS (ZARYA)");
    SetLocation(data, {kTurin.lat, kTurin.lon, 0});
    const double low = data.Site.SiteRadius;
    const WorldMotion fromLow = PropagateSatellite(data, EarthRotation::Displayed, block, kNight);
    SetLocation(data, {kTurin.lat, kTurin.lon, 150});
    const double high = data.Site.SiteRadius;
    const WorldMotion fromHigh = PropagateSatellite(data, EarthRotation::Displayed, block, kNight);

    EXPECT_NEAR(high - low, 150, 0.01);  // the zenith points 0.19 degrees past the Earth's centre
    const double ratio = low / high;
    EXPECT_NEAR(fromHigh.position.x / fromLow.position.x, ratio, 1e-13);
    EXPECT_NEAR(fromHigh.position.y / fromLow.position.y, ratio, 1e-13);
    EXPECT_NEAR(fromHigh.position.z / fromLow.position.z, ratio, 1e-13);
    EXPECT_EQ(fromHigh.velocity, fromLow.velocity);
}

TEST_F(PropagationTest, DecayedAndEmptyBlocksGiveFiniteNumbers) {
    EngineBlock decayed = BlockOf("iridium.tle", "IRIDIUM 6 [-]");
    bool reported = false;
    for (double jd = kNight - 30; jd < kNight + 60; jd += 0.01) {
        const WorldMotion motion = PropagateSatellite(data, EarthRotation::Displayed, decayed, jd);
        EXPECT_TRUE(IsFinite(motion.position) && IsFinite(motion.velocity));
        EXPECT_EQ(motion.result, InertialAt(decayed, jd).result);
        reported = reported || motion.result != 0;
    }
    EXPECT_TRUE(reported);

    EngineBlock empty{};
    empty.WorldPosition[1] = 5;
    const WorldMotion motion = PropagateSatellite(data, EarthRotation::Displayed, empty, kNight);
    EXPECT_NE(motion.result, 0);
    EXPECT_EQ(motion.position, Vector3{});
    EXPECT_EQ(static_cast<double>(empty.WorldPosition[1]), 0);
}

TEST_F(PropagationTest, SubSatellitePointAndHeight) {
    // 10 N, 105 W, at the distance of the geosynchronous ring.
    const double rings = kGeosynchronousRadius / data.Site.SiteRadius;
    const Vector3 place{-0.25488700224417876 * rings, -0.9512512425641977 * rings, 0.17364817766693033 * rings};
    const LatLonRadius under = SubSatellitePoint(place);
    EXPECT_NEAR(under.lat / kDegree, 10, 1e-9);
    EXPECT_NEAR(AroundCircle(under.lon / kDegree + 105), 0, 1e-9);
    EXPECT_NEAR(under.radius * data.Site.SiteRadius, kGeosynchronousRadius, 1e-3);
    // 6367703.416 m is the distance of the site from the Earth's centre.
    EXPECT_NEAR(HeightOverSphere(data.Site, place), 42164 - 6367.703416, 1e-6);
    EXPECT_NEAR(HeightOverSphere(data.Site, {0, 0.5, 0}), -6367.703416 / 2, 1e-6);
}

TEST_F(PropagationTest, AGeosynchronousSatelliteStandsInTheSkyWhereADishPoints) {
    // From New York to the station at 75.2 W: worked out apart on the WGS 84 ellipsoid for a radius of 42164.2 km.
    EngineBlock block = BlockOf("geo.tle", "GOES 16");
    SetLocation(data, {40.7 * kDegree, -74 * kDegree, 150});
    const SkyPlace sky = SkyPlaceOf(data, PropagateSatellite(data, EarthRotation::Displayed, block, kNight).position);
    EXPECT_NEAR(sky.horizon.azimuth / kDegree, 181.841, 0.3);
    EXPECT_NEAR(sky.horizon.altitude / kDegree, 42.958, 0.2);
    EXPECT_NEAR(sky.direction.radius * data.Site.SiteRadius, 37551519, 60e3);
}

TEST_F(PropagationTest, RightAscensionIsThatOfTheStarsAtTheDisplayedInstant) {
    // Far out over the meridian of Greenwich the right ascension is the sidereal time, whoever looks.
    constexpr double kFar = 1e9;
    for (const double lon : {0.0, 100.0, 200.0, 300.0}) {
        const SkyPlace sky = SkyPlaceOf(data, {kFar * std::cos(lon * kDegree), kFar * std::sin(lon * kDegree), 0});
        EXPECT_NEAR(AroundCircle(sky.rightAscension / kDegree - 119.32654 - lon), 0, 1e-4);
        EXPECT_GE(sky.rightAscension, 0);
        EXPECT_LT(sky.rightAscension, 360 * kDegree);
        EXPECT_NEAR(sky.direction.lat, 0, 1e-8);
    }
}

}  // namespace
}  // namespace glintara::observed_night
