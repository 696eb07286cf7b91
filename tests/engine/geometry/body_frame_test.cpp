#include "engine/geometry/body_frame.h"

#include <gtest/gtest.h>

#include <numbers>

#include "engine/astro/constants.h"

namespace glintara {
namespace {

constexpr double kDeg = std::numbers::pi / 180;

void ExpectNear(const Vector3& a, const Vector3& b, double tolerance) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

// A satellite over the equator at longitude 0 flying east: up is +x, ahead +y, north +z, so its left is north.
const Vector3 kPlace{1.12, 0, 0};
const Vector3 kEast{0, 7.4, 0};

TEST(BodyFrame, AheadIsTheVelocityOnACircularOrbit) {
    const Vector3 r{0.3, -0.9, 0.6};
    const Vector3 v = 7.5 * Normalized(CrossProduct({0.1, 0.2, 1}, r));
    const BodyFrame frame = VerticalFrame(r, v);
    ExpectNear(frame.BodyAhead, Normalized(v), 1e-15);
    ExpectNear(frame.BodyUp, Normalized(r), 1e-15);
}

TEST(BodyFrame, AheadStaysHorizontalWhenTheSatelliteClimbs) {
    const BodyFrame frame = VerticalFrame(kPlace, {3, 7, 0});
    ExpectNear(frame.BodyAhead, {0, 1, 0}, 1e-15);
    ExpectNear(frame.BodySide, {0, 0, -1}, 1e-15);
}

TEST(BodyFrame, AxesAreAtRightAngles) {
    const BodyFrame frame = VerticalFrame({0.4, 0.8, -1.1}, {2, -3, 5});
    EXPECT_NEAR(Dot(frame.BodyUp, frame.BodyAhead), 0, 1e-15);
    EXPECT_NEAR(Dot(frame.BodyUp, frame.BodySide), 0, 1e-15);
    EXPECT_NEAR(Dot(frame.BodySide, frame.BodyAhead), 0, 1e-15);
    EXPECT_NEAR(Length(frame.BodySide), 1, 1e-15);
}

TEST(BodyFrame, ReferenceAlongTheVerticalGivesNoFrame) {
    EXPECT_FALSE(IsFinite(VerticalFrame(kPlace, {2, 0, 0}).BodyAhead));
    EXPECT_FALSE(IsFinite(VerticalFrame(kPlace, {0, 0, 0}).BodyAhead));  // a satellite as its own target
}

TEST(MirrorNormal, AngleRunsFromAheadToTheLeft) {
    const BodyFrame frame = VerticalFrame(kPlace, kEast);
    ExpectNear(MirrorNormal(false, 0, 0, frame), {0, 1, 0}, 1e-15);
    ExpectNear(MirrorNormal(false, 90 * kDeg, 0, frame), {0, 0, 1}, 1e-15);
    ExpectNear(MirrorNormal(false, 180 * kDeg, 0, frame), {0, -1, 0}, 1e-15);
}

TEST(MirrorNormal, PositiveTiltLooksDown) {
    const BodyFrame frame = VerticalFrame(kPlace, kEast);
    ExpectNear(MirrorNormal(false, 0, 90 * kDeg, frame), {-1, 0, 0}, 1e-15);
    const Vector3 forward = MirrorNormal(false, 0, 40 * kDeg, frame);
    EXPECT_NEAR(forward.x, -0.6427876, 1e-7);  // sine of 40 degrees, towards the Earth
    EXPECT_NEAR(forward.y, 0.7660444, 1e-7);
}

TEST(MirrorNormal, ThreeMirrorsOfTheIridiumModelAreAThirdOfATurnApart) {
    const BodyFrame frame = VerticalFrame({0.5, 0.7, 0.8}, {-4, 1, 6});
    const Vector3 f = MirrorNormal(false, 0, 40 * kDeg, frame);
    const Vector3 l = MirrorNormal(false, 120 * kDeg, 40 * kDeg, frame);
    const Vector3 r = MirrorNormal(false, -120 * kDeg, 40 * kDeg, frame);
    // Spherical cosine theorem: sin^2 40 + cos^2 40 cos 120.
    const double expected = 0.6427876097 * 0.6427876097 - 0.5 * 0.7660444431 * 0.7660444431;
    EXPECT_NEAR(Dot(f, l), expected, 1e-9);
    EXPECT_NEAR(Dot(l, r), expected, 1e-9);
    EXPECT_NEAR(Dot(r, f), expected, 1e-9);
    EXPECT_LT(Dot(l, frame.BodySide), 0);  // L is on the left, and the side axis points right
    EXPECT_GT(Dot(r, frame.BodySide), 0);
}

TEST(MirrorNormal, FixedInSpaceTurnsAgainstTheEarthOnceInASiderealDay) {
    const double angle = 200 * kDeg;
    const double tilt = -35 * kDeg;
    const Vector3 now = MirrorNormal(true, angle, tilt, InertialFrame(0.8));
    const Vector3 quarterLater = MirrorNormal(true, angle, tilt, InertialFrame(0.8 + 90 * kDeg));
    ExpectNear(quarterLater, {now.y, -now.x, now.z}, 1e-15);
    const Vector3 dayLater = MirrorNormal(true, angle, tilt, InertialFrame(0.8 + 360 * kDeg));
    ExpectNear(dayLater, now, 1e-14);
}

TEST(MirrorNormal, FixedInSpaceCountsRightAscensionFromTheSecondAxisTowardsTheFirst) {
    const BodyFrame axes = InertialFrame(0);
    ExpectNear(MirrorNormal(true, 0, 0, axes), {0, 1, 0}, 1e-15);
    ExpectNear(MirrorNormal(true, 90 * kDeg, 0, axes), {1, 0, 0}, 1e-15);
    ExpectNear(MirrorNormal(true, 0, 90 * kDeg, axes), {0, 0, 1}, 1e-15);
}

TEST(MirrorNormal, SunFrameKeepsAngleZeroOnTheSunsAzimuth) {
    const Vector3 r{0.2, -1.0, 0.4};
    const Vector3 sun{9000, 18000, -7000};
    const Vector3 normal = MirrorNormal(false, 0, 25 * kDeg, VerticalFrame(r, sun - r));
    // The normal, the vertical and the Sun lie in one plane, with the normal on the Sun's side.
    const Vector3 toSun = Normalized(sun - r);
    EXPECT_NEAR(Dot(CrossProduct(Normalized(r), toSun), normal), 0, 1e-15);
    EXPECT_GT(Dot(normal, toSun - Dot(toSun, Normalized(r)) * Normalized(r)), 0);
}

}  // namespace
}  // namespace glintara
