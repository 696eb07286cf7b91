#include "flare/footprint.h"

#include <cmath>

#include "flare/observed_night.h"
#include "flare/surface_models.h"

namespace glintara::observed_night {
namespace {

constexpr double kUnit = 6378137.0;
constexpr double kSunAway = 149597892000.0 / kUnit;

/// Angle at the satellite between two places on the ground.
double AngleAt(const Vector3& r, const Vector3& a, const Vector3& b) {
    const Vector3 to = Normalized(a - r);
    const Vector3 other = Normalized(b - r);
    return std::atan2(Length(CrossProduct(to, other)), Dot(to, other));
}

// A flat mirror keeps angles: seen from the satellite, the outline on the ground is as large as the Sun in its sky.
TEST(Footprint, IsTheImageOfTheSunsLimb) {
    const Vector3 r{1.12, 0.02, 0.03};
    const Vector3 sun = kSunAway * Normalized(Vector3{0.3, 0.85, -0.35});
    // The mirror that throws the light straight down.
    const Vector3 normal = Normalized(Normalized(sun - r) + Normalized(-1 * r));
    const Vector3 below = Normalized(r);
    for (const double scatter : {1.0, 5.0, 50.0}) {
        const FootprintRing ring = FootprintOf(r, sun, kSunDiscRadius / kUnit, scatter, normal);
        const double limb = std::atan(scatter * 695500.0 / 149597892.0);
        for (const auto& point : ring) {
            ASSERT_TRUE(point);
            EXPECT_NEAR(Length(*point), 1, 1e-12);
            EXPECT_NEAR(AngleAt(r, *point, below), limb, 1e-6 * scatter);
        }
        EXPECT_LT(Length(*ring.front() - *ring.back()), 1e-9) << "closed";
        // Straight below, at 0.12 radii, it is round: 0.12 times the angle across.
        EXPECT_NEAR(Length(*ring[0] - *ring[20]), 2 * std::tan(limb) * (Length(r) - 1), 0.02 * scatter * 1e-3);
    }
}

TEST(Footprint, APointWhoseLightMissesTheEarthIsNone) {
    const Vector3 r{1.12, 0, 0};
    const Vector3 sun = kSunAway * Normalized(Vector3{-0.2, 0.9, 0.3});
    // Thrown along the limb: part of the light falls beside the Earth.
    const double edge = std::asin(1 / 1.12);
    const Vector3 limb{-std::cos(edge), std::sin(edge), 0};
    const Vector3 normal = Normalized(Normalized(sun - r) + limb);
    const FootprintRing ring = FootprintOf(r, sun, kSunDiscRadius / kUnit, 5, normal);
    int missing = 0;
    for (const auto& point : ring) missing += point ? 0 : 1;
    EXPECT_GT(missing, 10);
    EXPECT_LT(missing, 31);

    const FootprintRing away = FootprintOf(r, sun, kSunDiscRadius / kUnit, 5, -1 * normal);
    for (const auto& point : away) EXPECT_FALSE(point) << "the mirror faces away";
}

TEST(Footprint, IsKnownOfAttitudesWithAVertical) {
    Observatory o;
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SatRecord& satellite = o.app.Data.Satellite(1);
    const bool known[] = {true, false, false, false, true, false};
    for (int type = 0; type <= 5; ++type) {
        satellite.Surface.OrientationType = type;
        EXPECT_EQ(HasFootprints(satellite), known[type]) << type;
    }
    satellite.Surface.OrientationType = 0;
    satellite.Surface.ModelFlags[0] = '0';
    EXPECT_FALSE(HasFootprints(satellite));
}

}  // namespace
}  // namespace glintara::observed_night
