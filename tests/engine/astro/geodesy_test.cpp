#include "engine/astro/geodesy.h"

#include <erfa.h>
#include <erfam.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::AroundCircle;
using test::kDegree;

constexpr double kGeodesyTolerance = 1e-9;

TEST(XYZToLatLon, TheOriginHasARadiusThatCanBeDividedBy) {
    const LatLonRadius place = XYZToLatLon({0, 0, 0});
    EXPECT_EQ(place.radius, 1e-16);
    EXPECT_EQ(place.lat, 0);
    EXPECT_EQ(place.lon, 0);
}

TEST(XYZToLatLon, LongitudeRunsPastAHalfTurn) {
    EXPECT_EQ(XYZToLatLon({-2, 0, 0}).lon, kPi);
    EXPECT_NEAR(XYZToLatLon({-1, -1, 0}).lon, 225 * kDegree, 1e-14);
    EXPECT_NEAR(XYZToLatLon({1, -1, 0}).lon, -45 * kDegree, 1e-14);
    EXPECT_NEAR(XYZToLatLon({1, 1, 0}).lon, 45 * kDegree, 1e-14);
}

TEST(XYZToLatLon, IsFiniteOnTheMeridiansWhereRoundingPassesOne) {
    for (int i = -900; i <= 900; ++i) {
        const double lat = i * 0.1 * kDegree;
        for (const double lon : {90 * kDegree, 270 * kDegree, -90 * kDegree}) {
            const LatLonRadius place = XYZToLatLon(LLRToSameXYZ(lat, lon, 1));
            ASSERT_TRUE(std::isfinite(place.lat) && std::isfinite(place.lon)) << i;
            ASSERT_NEAR(place.lat, lat, 1e-7) << i;
        }
        // At a pole itself every longitude is the same place.
        if (std::abs(i) < 900) {
            const double lon = XYZToLatLon(LLRToSameXYZ(lat, 90 * kDegree, 1)).lon;
            ASSERT_NEAR(lon, 90 * kDegree, 1e-6) << i;
        }
    }
}

TEST(XYZToLatLon, OnThePolarAxis) {
    const LatLonRadius north = XYZToLatLon({0, 0, 3});
    EXPECT_NEAR(north.lat, 90 * kDegree, 1e-14);
    EXPECT_EQ(north.lon, 0);
    EXPECT_EQ(north.radius, 3);
    EXPECT_NEAR(XYZToLatLon({0, 0, -3}).lat, -90 * kDegree, 1e-14);
}

TEST(XYZToLatLon, UndoesLLRToSameXYZ) {
    test::Sampler sample(51);
    for (int i = 0; i < 2000; ++i) {
        const double lat = sample.Between(-1.5, 1.5);
        const double lon = sample.Between(-1.5, 4.6);
        const double radius = sample.Between(0.5, 7);
        const LatLonRadius place = XYZToLatLon(LLRToSameXYZ(lat, lon, radius));
        EXPECT_NEAR(place.lat, lat, 1e-12);
        EXPECT_NEAR(place.lon, lon, 1e-6);
        EXPECT_NEAR(place.radius, radius, 1e-14);
    }
}

TEST(LLRToSameXYZ, PointsAlongTheAxes) {
    EXPECT_NEAR(Length(LLRToSameXYZ(0, 0, 2) - Vector3{2, 0, 0}), 0, 1e-15);
    EXPECT_NEAR(Length(LLRToSameXYZ(0, 90 * kDegree, 2) - Vector3{0, 2, 0}), 0, 1e-15);
    EXPECT_NEAR(Length(LLRToSameXYZ(90 * kDegree, 0, 2) - Vector3{0, 0, 2}), 0, 1e-15);
}

TEST(GeodeticToGeocentric, OnTheEquator) {
    const Geocentric place = GeodeticToGeocentric({0, 0, 0});
    EXPECT_EQ(place.radius, 6378137.0);
    EXPECT_EQ(place.lat, 0);
}

TEST(GeodeticToGeocentric, AtThePoleIsTheSmallAxis) {
    // Derived geometric constant b of the WGS 84 ellipsoid: 6356752.3142 m (NIMA TR8350.2, table 3.3).
    const Geocentric place = GeodeticToGeocentric({90 * kDegree, 1, 0});
    EXPECT_NEAR(place.radius, 6356752.3142, 1e-4);
    EXPECT_NEAR(place.lat, 90 * kDegree, 1e-9);
}

TEST(GeodeticToGeocentric, OneHundredFiftyMetresUpIsAsMuchFurtherOut) {
    EXPECT_NEAR(GeodeticToGeocentric({0, 2, 150}).radius - GeodeticToGeocentric({0, 2, 0}).radius, 150, 1e-8);
    EXPECT_NEAR(GeodeticToGeocentric({0.8, 2, 150}).radius - GeodeticToGeocentric({0.8, 2, 0}).radius, 150, 1e-2);
}

// Meeus, Astronomical Algorithms, 2nd ed., example 11.a: Palomar (its ellipsoid differs from WGS 84 in the seventh
// digit).
TEST(GeodeticToGeocentric, GivesThePublishedObservatory) {
    const Geocentric palomar =
        GeodeticToGeocentric({(33 + 21 / 60.0 + 22 / 3600.0) * kDegree, -116.8625 * kDegree, 1706});
    EXPECT_NEAR(palomar.radius * std::sin(palomar.lat) / 6378140, 0.546861, 1.5e-6);
    EXPECT_NEAR(palomar.radius * std::cos(palomar.lat) / 6378140, 0.836339, 1.5e-6);
}

TEST(GeodeticToGeocentric, AgreesWithTheLibrary) {
    test::Sampler sample(52);
    for (int i = 0; i < 2000; ++i) {
        const Geodetic place{sample.Between(-90, 90) * kDegree, sample.Between(-180, 180) * kDegree,
                             sample.Between(-400, 9000)};
        double xyz[3];
        ASSERT_EQ(eraGd2gc(ERFA_WGS84, place.lon, place.lat, place.height, xyz), 0);
        const Geocentric found = GeodeticToGeocentric(place);
        EXPECT_NEAR(found.lat, std::atan2(xyz[2], std::hypot(xyz[0], xyz[1])), kGeodesyTolerance);
        EXPECT_NEAR(found.radius, std::hypot(xyz[0], xyz[1], xyz[2]), 1e-7);
    }
}

TEST(EcefToGeodetic, AgreesWithTheLibraryFromTheSeaToTheGeosynchronousRing) {
    test::Sampler sample(53);
    for (int i = 0; i < 5000; ++i) {
        const double lat = sample.Between(-90, 90) * kDegree;
        const double lon = sample.Between(-180, 180) * kDegree;
        const double height = i % 2 == 0 ? sample.Between(-5000, 10000) : sample.Between(1e5, 4e7);
        double xyz[3];
        ASSERT_EQ(eraGd2gc(ERFA_WGS84, lon, lat, height, xyz), 0);
        double elong = 0;
        double phi = 0;
        double h = 0;
        ASSERT_EQ(eraGc2gd(ERFA_WGS84, xyz, &elong, &phi, &h), 0);
        const Geodetic found = EcefToGeodetic({xyz[0], xyz[1], xyz[2]});
        EXPECT_NEAR(found.lat, phi, kGeodesyTolerance);
        EXPECT_NEAR(AroundCircle(found.lon - elong), 0, kGeodesyTolerance);
        EXPECT_NEAR(found.height, h, 1e-6);
        EXPECT_GE(found.lon, -90 * kDegree - 1e-12);
        EXPECT_LE(found.lon, 270 * kDegree + 1e-12);
    }
}

TEST(EcefToGeodetic, OnThePolarAxisAndTheEquator) {
    const Geodetic north = EcefToGeodetic({0, 0, 6356752.3142 + 1000});
    EXPECT_NEAR(north.lat, 90 * kDegree, 1e-12);
    EXPECT_NEAR(north.height, 1000, 1e-3);
    EXPECT_NEAR(EcefToGeodetic({0, 0, -7e6}).lat, -90 * kDegree, 1e-12);
    const Geodetic equator = EcefToGeodetic({-6378137.0, 0, 0});
    EXPECT_EQ(equator.lat, 0);
    EXPECT_EQ(equator.lon, kPi);
    EXPECT_NEAR(equator.height, 0, 1e-8);
}

TEST(EcefToGeodetic, TheCentreHasLatitudeZero) {
    const Geodetic centre = EcefToGeodetic({0, 0, 0});
    EXPECT_EQ(centre.lat, 0);
    EXPECT_EQ(centre.lon, 0);
    EXPECT_TRUE(std::isfinite(centre.height));
}

TEST(EcefToGeodetic, IsFiniteForEveryFinitePoint) {
    for (const double x : test::kHostile) {
        for (const double z : test::kHostile) {
            const Geodetic place = EcefToGeodetic({x, x / 3, z});
            if (std::isfinite(x) && std::isfinite(z)) {
                EXPECT_TRUE(std::isfinite(place.lat) && std::isfinite(place.lon)) << x << " " << z;
                EXPECT_LE(std::abs(place.lat), 90 * kDegree + 1e-9) << x << " " << z;
            }
        }
    }
    test::Sampler sample(54);
    for (int i = 0; i < 20000; ++i) {
        const double size = std::pow(10, sample.Between(-12, 12));
        const Geodetic place =
            EcefToGeodetic({size * sample.Between(-1, 1), size * sample.Between(-1, 1), size * sample.Between(-1, 1)});
        ASSERT_TRUE(std::isfinite(place.lat) && std::isfinite(place.height)) << size;
    }
}

TEST(FoldLongitude, ShowsLongitudesEastAndWest) {
    EXPECT_NEAR(FoldLongitude(270 * kDegree), -90 * kDegree, 1e-14);
    EXPECT_NEAR(FoldLongitude(-200 * kDegree), 160 * kDegree, 1e-14);
    EXPECT_NEAR(FoldLongitude(45 * kDegree), 45 * kDegree, 1e-14);
    EXPECT_NEAR(FoldLongitude(-45 * kDegree), -45 * kDegree, 1e-14);
    EXPECT_NEAR(FoldLongitude(745 * kDegree), 25 * kDegree, 1e-13);
}

}  // namespace
}  // namespace glintara
