#include "engine/astro/horizon.h"

#include <erfa.h>
#include <erfam.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::AroundCircle;
using test::Direction;
using test::kDegree;

ObserverSite SiteAt(double latDegrees, double lonDegrees, double height) {
    return MakeObserverSite({latDegrees * kDegree, lonDegrees * kDegree, height});
}

const ObserverSite kTurin = SiteAt(45.07, 7.69, 240);
const ObserverSite kPuntaArenas = SiteAt(-53.16, -70.91, 34);
const ObserverSite kQuito = SiteAt(-0.18, -78.47, 2850);
const ObserverSite kSites[] = {kTurin, kPuntaArenas, kQuito, SiteAt(89.9, 100, 0)};

/// So far away that where the observer stands does not matter.
constexpr double kFarAway = 1e12;

TEST(ObserverSite, StandsWhereTheEllipsoidSays) {
    double xyz[3];
    ASSERT_EQ(eraGd2gc(ERFA_WGS84, 7.69 * kDegree, 45.07 * kDegree, 240, xyz), 0);
    const Vector3 metres = ObserverOnUnitSphere(kTurin) * kTurin.SiteRadius;
    EXPECT_NEAR(Length(metres - Vector3{xyz[0], xyz[1], xyz[2]}), 0, 1e-6);
    EXPECT_NEAR(Length(ObserverOnUnitSphere(kTurin)), 1, 1e-15);
    EXPECT_EQ(kTurin.SiteLat, 45.07 * kDegree);
    EXPECT_EQ(kTurin.SiteAlt, 240);
    EXPECT_LT(kTurin.SiteGeoLat, kTurin.SiteLat);
}

TEST(HorizonAxes, AreARightHandedFrameWithNorthTowardsThePole) {
    for (const ObserverSite& site : kSites) {
        const HorizonAxes axes = HorizonAxesAt(site);
        EXPECT_NEAR(Length(axes.north), 1, 1e-12);
        EXPECT_NEAR(Length(axes.east), 1, 1e-12);
        EXPECT_NEAR(Length(axes.up), 1, 1e-12);
        EXPECT_NEAR(Dot(axes.north, axes.up), 0, 1e-12);
        EXPECT_NEAR(axes.east.z, 0, 1e-12);
        EXPECT_GT(axes.north.z, 0);
        EXPECT_NEAR(Length(CrossProduct(axes.east, axes.north) - axes.up), 0, 1e-11);
    }
}

TEST(WorldToHorizon, OfAFarPointIsThatOfTheLibrary) {
    test::Sampler sample(61);
    for (const ObserverSite& site : kSites) {
        for (int i = 0; i < 1000; ++i) {
            const double dec = sample.Between(-1.55, 1.55);
            const double lon = sample.Between(-3.14, 3.14);
            double azimuth = 0;
            double altitude = 0;
            eraHd2ae(site.SiteLon - lon, dec, site.SiteLat, &azimuth, &altitude);
            const HorizonAngles found = WorldToHorizon(site, Direction(lon, dec) * kFarAway);
            EXPECT_NEAR(test::AngleBetween(Direction(found.azimuth, found.altitude), Direction(azimuth, altitude)), 0,
                        1e-9);
            EXPECT_GE(found.azimuth, 0);
            EXPECT_LE(found.azimuth, kTwoPi);
        }
    }
}

TEST(HorizonToWorld, IsThatOfTheLibrary) {
    test::Sampler sample(62);
    for (const ObserverSite& site : kSites) {
        for (int i = 0; i < 1000; ++i) {
            const double azimuth = sample.Between(0, 6.28);
            const double altitude = sample.Between(-1.55, 1.55);
            double hourAngle = 0;
            double dec = 0;
            eraAe2hd(azimuth, altitude, site.SiteLat, &hourAngle, &dec);
            const Vector3 found = HorizonToWorld(site, {azimuth, altitude});
            EXPECT_NEAR(test::AngleBetween(found, Direction(site.SiteLon - hourAngle, dec)), 0, 1e-11);
            EXPECT_NEAR(Length(found), 1, 1e-14);
        }
    }
}

TEST(WorldToHorizon, OfASatelliteByTurningTheWholeFrame) {
    // Another route: turn the site onto the meridian, then the pole away, until z is the zenith and x is south.
    test::Sampler sample(63);
    for (const ObserverSite& site : kSites) {
        for (int i = 0; i < 500; ++i) {
            const Vector3 point =
                Direction(sample.Between(-3, 3), sample.Between(-1.5, 1.5)) * sample.Between(1.02, 6.6);
            const Vector3 away = point - Direction(site.SiteLon, site.SiteGeoLat);
            const Vector3 m = TurnedAboutPole(away, -site.SiteLon);
            const double s = std::sin(site.SiteLat);
            const double c = std::cos(site.SiteLat);
            const double south = m.x * s - m.z * c;
            const double up = m.x * c + m.z * s;
            const HorizonAngles found = WorldToHorizon(site, point);
            EXPECT_NEAR(found.altitude, std::atan2(up, std::hypot(south, m.y)), 1e-7);
            EXPECT_NEAR(test::AngleBetween(Direction(found.azimuth, found.altitude),
                                           {-south / Length(away), m.y / Length(away), up / Length(away)}),
                        0, 1e-9);
        }
    }
}

TEST(WorldToHorizon, AlongTheGeocentricVerticalIsJustBelowTheZenith) {
    const HorizonAngles found = WorldToHorizon(kTurin, ObserverOnUnitSphere(kTurin) * 1.1);
    // The angle of the vertical near latitude 45 is 11.5 minutes of arc.
    EXPECT_LT(found.altitude, (90 - 11.4 / 60) * kDegree);
    EXPECT_GT(found.altitude, (90 - 11.7 / 60) * kDegree);
    // The geocentric vertical leans towards the near pole.
    EXPECT_NEAR(std::cos(found.azimuth), -1, 1e-6);
    const HorizonAngles south = WorldToHorizon(kPuntaArenas, ObserverOnUnitSphere(kPuntaArenas) * 1.1);
    EXPECT_LT(south.altitude, (90 - 10.0 / 60) * kDegree);
    EXPECT_NEAR(std::cos(south.azimuth), 1, 1e-6);
}

TEST(WorldToHorizon, KnowsTheFourWinds) {
    const HorizonAxes axes = HorizonAxesAt(kTurin);
    const Vector3 here = ObserverOnUnitSphere(kTurin);
    EXPECT_NEAR(AroundCircle(WorldToHorizon(kTurin, here + axes.north).azimuth), 0, 1e-12);
    EXPECT_NEAR(WorldToHorizon(kTurin, here + axes.east).azimuth, 90 * kDegree, 1e-12);
    EXPECT_NEAR(WorldToHorizon(kTurin, here - axes.north).azimuth, 180 * kDegree, 1e-12);
    EXPECT_NEAR(WorldToHorizon(kTurin, here - axes.east).azimuth, 270 * kDegree, 1e-12);
    EXPECT_NEAR(WorldToHorizon(kTurin, here + axes.up).altitude, 90 * kDegree, 1e-7);
    // The centre of the Earth is underfoot.
    EXPECT_LT(WorldToHorizon(kTurin, {0, 0, 0}).altitude, -89 * kDegree);
}

TEST(WorldToHorizon, UndoesHorizonToWorld) {
    test::Sampler sample(64);
    for (int i = 0; i < 500; ++i) {
        const HorizonAngles angles{sample.Between(0, 6.28), sample.Between(-1.5, 1.5)};
        const Vector3 direction = HorizonToWorld(kTurin, angles);
        const HorizonAngles found = WorldToHorizon(kTurin, ObserverOnUnitSphere(kTurin) + 0.3 * direction);
        EXPECT_NEAR(found.azimuth, angles.azimuth, 1e-10);
        EXPECT_NEAR(found.altitude, angles.altitude, 1e-10);
    }
}

TEST(SatXYZToSkyLatLon, SeesFromTheObserver) {
    // A place due north along the axis, half a unit from the observer.
    const Vector3 here = ObserverOnUnitSphere(kTurin);
    const LatLonRadius up = SatXYZToSkyLatLon(kTurin, here + Vector3{0, 0, 0.5});
    EXPECT_NEAR(up.lat, 90 * kDegree, 1e-7);
    EXPECT_NEAR(up.radius, 0.5, 1e-15);
    const LatLonRadius out = SatXYZToSkyLatLon(kTurin, here + Vector3{-3, -4, 0});
    EXPECT_NEAR(out.radius, 5, 1e-14);
    EXPECT_NEAR(out.lat, 0, 1e-15);
    EXPECT_NEAR(out.lon, 180 * kDegree + std::atan2(4, 3), 1e-14);
}

// Meeus, Astronomical Algorithms, 2nd ed., example 40.a: Mars from Palomar on 2003 August 28, 3:17 UT.
TEST(TopocentricShift, GivesThePublishedParallaxOfMars) {
    const double geocentricLat = std::atan2(0.546861, 0.836339);
    const double siteRadius = std::hypot(0.546861, 0.836339) * 6378140;
    const Equatorial mars{-15.771083 * kDegree, 339.530208 * kDegree};
    const double localSiderealAngle = (288.7958 + 339.530208) * kDegree;
    const double distance = 0.37276 * 149597870700.0;
    const Equatorial seen = TopocentricShift(mars, distance, siteRadius, geocentricLat, localSiderealAngle);
    EXPECT_NEAR(seen.ra, ((22 * 60 + 38) * 60 + 8.54) * 15 * test::kArcsecond, 0.2 * test::kArcsecond);
    EXPECT_NEAR(seen.dec, -(15 + 46 / 60.0 + 30.0 / 3600) * kDegree, 0.2 * test::kArcsecond);
}

TEST(TopocentricShift, IsTheDirectionFromTheSite) {
    test::Sampler sample(65);
    for (int i = 0; i < 1000; ++i) {
        const Equatorial body{sample.Between(-1.4, 1.4), sample.Between(0, 6.28)};
        const double distance = sample.Between(3.6e8, 4.1e8);
        const double siteLat = sample.Between(-1.5, 1.5);
        const double siteAngle = sample.Between(-6, 6);
        const Vector3 seen = Direction(body.ra, body.dec) * distance - Direction(siteAngle, siteLat) * 6371000.0;
        const Equatorial found = TopocentricShift(body, distance, 6371000.0, siteLat, siteAngle);
        EXPECT_NEAR(test::AngleBetween(Direction(found.ra, found.dec), seen), 0, 1e-8);
        EXPECT_GE(found.ra, 0);
        EXPECT_LE(found.ra, kTwoPi);
        // The Moon's horizontal parallax is never above 61.5 minutes of arc.
        EXPECT_LT(test::AngleBetween(Direction(body.ra, body.dec), seen), 61.5 / 60 * kDegree);
    }
}

TEST(Horizon, ReturnsOnAnyNumbers) {
    for (const double a : test::kHostile) {
        for (const double b : test::kHostile) {
            const ObserverSite site = MakeObserverSite({a, b, 0});
            const HorizonAngles angles = WorldToHorizon(site, {1.2, 0.3, 0.4});
            const Vector3 direction = HorizonToWorld(site, {0.4, 0.5});
            if (std::isfinite(a) && std::isfinite(b)) {
                EXPECT_TRUE(std::isfinite(angles.azimuth) && std::isfinite(angles.altitude)) << a << " " << b;
                EXPECT_NEAR(Length(direction), 1, 1e-12) << a << " " << b;
            }
            const Equatorial shifted = TopocentricShift({a, b}, 4e8, 6.4e6, 0.3, 0.4);
            EXPECT_EQ(std::isfinite(shifted.ra), std::isfinite(a) && std::isfinite(b)) << a << " " << b;
        }
    }
}

}  // namespace
}  // namespace glintara
