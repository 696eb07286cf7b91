#include "orbit/sun_and_moon.h"

#include <cmath>

#include "flare/observed_night.h"

namespace glintara::observed_night {
namespace {

struct SunAndMoonTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;

    void SetUp() override { data.Site.SiteRadius = 6.371e6; }
};

// 20 March 2018, 16:15 UTC, the equinox. The equation of time was -7.4 minutes, so the Sun stood 4 h 7.6 min west of
// Greenwich; its distance was 0.996 astronomical units.
TEST_F(SunAndMoonTest, TheSunAtTheEquinox) {
    const double jd = 2458198.177083;
    const Vector3 sun = SunPlace(data, jd);
    EXPECT_NEAR(Length(sun) * data.Site.SiteRadius, 149.6e9, 3e9);
    EXPECT_NEAR(std::atan2(sun.y, sun.x) / kDegree, -(4 * 60 + 7.6) / 4, 0.1);
    EXPECT_NEAR(std::asin(sun.z / Length(sun)) / kDegree, 0, 0.05);
}

// At the total eclipse of 21 August 2017 the middle of the shadow stood at 18:25.5 UTC over 37.0 N, 87.7 W, and lay
// nearly on the line through the Earth's centre and both bodies (gamma 0.4367 radii of the Earth). The Moon was 372,000
// km away.
TEST_F(SunAndMoonTest, SunAndMoonInLineAtAnEclipse) {
    const double jd = 2457987.267708;
    const Vector3 sun = Normalized(SunPlace(data, jd));
    const Vector3 moon = MoonPlaceInWorld(data, jd) * (data.Site.SiteRadius / 6.378137e6);
    EXPECT_NEAR(Length(moon) * 6378.137, 372000, 3000);
    // The axis of the shadow passes the Earth's centre at gamma.
    EXPECT_NEAR(Length(CrossProduct(moon, sun)), 0.4367, 0.15);
    // Where it meets the ground: from the Moon along the line from the Sun.
    const double along = Dot(moon, sun);
    const Vector3 nearest = moon - along * sun;
    const Vector3 ground = nearest + std::sqrt(1 - Dot(nearest, nearest)) * sun;
    EXPECT_NEAR(std::asin(ground.z) / kDegree, 37.0, 6);
    EXPECT_NEAR(std::atan2(ground.y, ground.x) / kDegree, -87.7, 6);
}

TEST_F(SunAndMoonTest, PointsBelowAreThoseOfTheDisplayedInstant) {
    // Mean sidereal time of Greenwich at 0 h UT of 1 January 2001: 6 h 42 min 51.5 s.
    data.SetSimInstant({2001, 1, 1, 0, 0, 0}, 2451910.5);
    data.SunRA = data.MoonRA = (6 + 42.86 / 60) * 15 * kDegree;
    data.SunDec = 0;
    data.MoonDec = 30 * kDegree;
    EXPECT_NEAR(PointBelowSun(data).x, 1, 1e-6);
    EXPECT_NEAR(PointBelowSun(data).y, 0, 1e-4);
    EXPECT_NEAR(PointBelowMoon(data).x, std::cos(30 * kDegree), 1e-6);
    EXPECT_NEAR(PointBelowMoon(data).z, 0.5, 1e-12);
    data.MoonRA += 90 * kDegree;
    EXPECT_NEAR(PointBelowMoon(data).y, std::cos(30 * kDegree), 1e-6);
}

}  // namespace
}  // namespace glintara::observed_night
