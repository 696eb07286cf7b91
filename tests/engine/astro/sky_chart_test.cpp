#include "engine/astro/sky_chart.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/astro/support.h"

namespace glintara {
namespace {

using test::kDegree;

constexpr double kRadius = 55;

/// The place on the star sphere at an angle from the viewer, towards `around` (0: to the right, counter-clockwise).
Vector3 OnSphere(double fromViewer, double around) {
    return kRadius * Vector3{std::cos(fromViewer), std::sin(fromViewer) * std::cos(around),
                             std::sin(fromViewer) * std::sin(around)};
}

void ExpectPlace(const Vector3& found, double y, double z) {
    EXPECT_NEAR(found.y, y, 1e-6);
    EXPECT_NEAR(found.z, z, 1e-6);
}

TEST(SkyChart, ASphereIsMirroredAndNothingElse) {
    const Vector3 place = OnSphere(70 * kDegree, 20 * kDegree);
    EXPECT_EQ(FlattenSky({.radius = kRadius}, place), place);
    EXPECT_EQ(FlattenSky({.radius = kRadius, .mirrored = true}, place), (Vector3{place.x, -place.y, place.z}));
    EXPECT_EQ(DeFlattenSky({.radius = kRadius}, place), place);
    EXPECT_EQ(DeFlattenSky({.radius = kRadius, .mirrored = true}, place), (Vector3{place.x, -place.y, place.z}));
}

TEST(SkyChart, DistancesFromTheCentreAreAngles) {
    const SkyProjection chart{.radius = kRadius, .flat = true};
    ExpectPlace(FlattenSky(chart, OnSphere(90 * kDegree, 0)), kRadius, 0);
    ExpectPlace(FlattenSky(chart, OnSphere(30 * kDegree, 90 * kDegree)), 0, kRadius / 3);
    ExpectPlace(FlattenSky(chart, OnSphere(45 * kDegree, 180 * kDegree)), -kRadius / 2, 0);
    ExpectPlace(FlattenSky(chart, OnSphere(135 * kDegree, 0)), 1.5 * kRadius, 0);
    EXPECT_NEAR(FlattenSky(chart, OnSphere(60 * kDegree, 1)).x, kRadius / 2, 1e-12) << "the depth stays";
}

TEST(SkyChart, WithoutTheFrontTheCentreIsTheFarSide) {
    const SkyProjection chart{.radius = kRadius, .flat = true, .front = false};
    ExpectPlace(FlattenSky(chart, OnSphere(90 * kDegree, 0)), kRadius, 0);
    ExpectPlace(FlattenSky(chart, OnSphere(150 * kDegree, 90 * kDegree)), 0, kRadius / 3);
}

TEST(SkyChart, TheCentreStaysInTheMiddle) {
    for (const bool front : {true, false}) {
        const SkyProjection chart{.radius = kRadius, .mirrored = true, .flat = true, .front = front};
        for (const double x : {kRadius, -kRadius}) {
            EXPECT_EQ(FlattenSky(chart, {x, 0, 0}).y, 0);
            EXPECT_EQ(FlattenSky(chart, {x, 0, 0}).z, 0);
        }
        EXPECT_EQ(DeFlattenSky(chart, {}).x, front ? kRadius : -kRadius);
        EXPECT_EQ(DeFlattenSky(chart, {}).y, 0);
    }
}

TEST(SkyChart, BothWaysLeadBack) {
    test::Sampler sampler(8);
    for (int i = 0; i < 2000; ++i) {
        const SkyProjection sky{.radius = sampler.Between(0.5, 100),
                                .mirrored = sampler.Between(0, 1) < 0.5,
                                .flat = sampler.Between(0, 1) < 0.8,
                                .front = sampler.Between(0, 1) < 0.5};
        const Vector3 place =
            sky.radius * test::Direction(sampler.Between(-3.1, 3.1), std::asin(sampler.Between(-1, 1)));
        const Vector3 back = DeFlattenSky(sky, FlattenSky(sky, place));
        EXPECT_NEAR(back.x, place.x, 1e-6 * sky.radius);
        EXPECT_NEAR(back.y, place.y, 1e-6 * sky.radius);
        EXPECT_NEAR(back.z, place.z, 1e-6 * sky.radius);
    }
}

TEST(SkyChart, TheMirrorTurnsLeftAndRightOfTheChart) {
    const Vector3 place = OnSphere(40 * kDegree, 25 * kDegree);
    const Vector3 plain = FlattenSky({.radius = kRadius, .flat = true}, place);
    const Vector3 mirrored = FlattenSky({.radius = kRadius, .mirrored = true, .flat = true}, place);
    EXPECT_EQ(mirrored.y, -plain.y);
    EXPECT_EQ(mirrored.z, plain.z);
}

}  // namespace
}  // namespace glintara
