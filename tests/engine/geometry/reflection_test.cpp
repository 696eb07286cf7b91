#include "engine/geometry/reflection.h"

#include <gtest/gtest.h>

namespace glintara {
namespace {

TEST(Reflection, TurnsARayByTwiceTheGrazingAngle) {
    // A 3-4-5 ray on a horizontal plane: the vertical component changes its sign.
    const Reflection reflection = ReflectVector({0.6, 0, -0.8}, {0, 0, 1});
    EXPECT_TRUE(reflection.hit);
    EXPECT_DOUBLE_EQ(reflection.ray.x, 0.6);
    EXPECT_DOUBLE_EQ(reflection.ray.z, 0.8);
}

TEST(Reflection, AlongThePlaneIsAHitAndRunsOn) {
    const Reflection reflection = ReflectVector({1, 0, 0}, {0, 0, 1});
    EXPECT_TRUE(reflection.hit);
    EXPECT_EQ(reflection.ray, (Vector3{1, 0, 0}));
}

TEST(Reflection, FromBehindIsNone) {
    const Reflection reflection = ReflectVector({0.6, 0, 0.8}, {0, 0, 1});
    EXPECT_FALSE(reflection.hit);
    EXPECT_EQ(reflection.ray, (Vector3{0, 0, 0}));
}

TEST(IntersectEarth, StraightDown) {
    const auto hit = IntersectEarth({0, 0, 2.5}, {0, 0, -1});
    ASSERT_TRUE(hit);
    EXPECT_DOUBLE_EQ(hit->z, 1);
}

TEST(IntersectEarth, TangentRayHits) {
    const auto hit = IntersectEarth({1, -2, 0}, {0, 1, 0});
    ASSERT_TRUE(hit);
    EXPECT_DOUBLE_EQ(hit->x, 1);
    EXPECT_DOUBLE_EQ(hit->y, 0);
}

TEST(IntersectEarth, RayBesideMisses) { EXPECT_FALSE(IntersectEarth({1.0001, -2, 0}, {0, 1, 0})); }

TEST(IntersectEarth, EarthBehindIsNoHit) { EXPECT_FALSE(IntersectEarth({0, 0, 2.5}, {0, 0, 1})); }

TEST(IntersectEarth, NearSideIsTheOneMet) {
    const auto hit = IntersectEarth({-3, 0.6, 0}, {1, 0, 0});
    ASSERT_TRUE(hit);
    EXPECT_NEAR(hit->x, -0.8, 1e-15);
}

TEST(IntersectEarth, NotANumberIsNoHit) { EXPECT_FALSE(IntersectEarth({NAN, 0, 2}, {0, 0, -1})); }

TEST(Shadow, IsACylinderBehindTheEarth) {
    const Vector3 sun{1, 0, 0};
    EXPECT_TRUE(InShadow({-2, 0.999, 0}, sun));
    EXPECT_FALSE(InShadow({-2, 0, 1.001}, sun));
    EXPECT_FALSE(InShadow({2, 0, 0}, sun));
}

TEST(Shadow, ItsEdgeIsLit) {
    EXPECT_FALSE(InShadow({-2, 1, 0}, {1, 0, 0}));
    EXPECT_FALSE(InShadow({0, 0.5, 0}, {1, 0, 0}));  // on the terminator plane
}

TEST(MirrorFlare, MirrorThatHalvesTheAngleSendsTheSunStraightDown) {
    // The Sun far away on +y, the satellite on +z: a normal half way between the Sun and the nadir lights the point
    // below.
    const double h = std::sqrt(0.5);
    const auto flare = MirrorFlare({0, 0, 1.2}, {0, 1e9, 0}, {0, h, -h});
    ASSERT_TRUE(flare);
    EXPECT_NEAR(flare->centre.z, 1, 1e-9);
    EXPECT_NEAR(flare->incidence, -h, 1e-9);
}

TEST(MirrorFlare, TurnedAwayGivesNone) { EXPECT_FALSE(MirrorFlare({0, 0, 1.2}, {0, 1e9, 0}, {0, -0.6, -0.8})); }

TEST(MirrorFlare, SentToTheSkyGivesNone) { EXPECT_FALSE(MirrorFlare({0, 0, 1.2}, {0, 1e9, 0}, {0, 0.8, 0.6})); }

TEST(MirrorFlare, NoFrameGivesNone) { EXPECT_FALSE(MirrorFlare({0, 0, 1.2}, {0, 1e9, 0}, {NAN, NAN, NAN})); }

TEST(TransitPoint, LiesOnTheLineFromTheSourceThroughTheSatellite) {
    const Vector3 sun{20000, 5000, -3000};
    const Vector3 satellite{1.1, 0.1, 0.05};
    const auto transit = TransitPoint(satellite, sun);
    ASSERT_TRUE(transit);
    EXPECT_NEAR(Length(transit->centre), 1, 1e-9);
    EXPECT_NEAR(Length(CrossProduct(Normalized(sun - transit->centre), Normalized(satellite - transit->centre))), 0,
                1e-9);
    EXPECT_EQ(transit->incidence, 1);
}

}  // namespace
}  // namespace glintara
