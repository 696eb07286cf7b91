#include "engine/geometry/rotating_mirror.h"

#include <gtest/gtest.h>

#include <numbers>

namespace glintara {
namespace {

constexpr double kDeg = std::numbers::pi / 180;

double Distance(const Vector3& a, const Vector3& b) { return Length(a - b); }

TEST(RotatingMirror, PhaseZeroIsTheMirrorFixedInSpace) {
    for (const double greenwich : {0.0, 1.3, -2.2}) {
        const RotatingMirror mirror = MakeRotatingMirror(20 * kDeg, 70 * kDeg, 210 * kDeg, -15 * kDeg);
        const BodyFrame axes = InertialFrame(greenwich);
        const Vector3 fixed = MirrorNormal(true, 210 * kDeg, -15 * kDeg, axes);
        EXPECT_LT(Distance(OnAxes(NormalComponentsAt(mirror, 0), axes), fixed), 1e-14);
    }
}

TEST(RotatingMirror, NormalKeepsItsAngleFromTheAxisAndItsLength) {
    const RotatingMirror mirror = MakeRotatingMirror(20 * kDeg, 70 * kDeg, 210 * kDeg, -15 * kDeg);
    for (int k = 0; k < kRotationPhases; ++k) {
        const Vector3 normal = NormalComponentsAt(mirror, RotationPhase(k, kRotationPhases));
        EXPECT_NEAR(Length(normal), 1, 1e-14);
        EXPECT_NEAR(Dot(normal, mirror.axis), mirror.onAxis, 1e-14);
    }
}

TEST(RotatingMirror, AboutThePoleAQuarterTurnIsAQuarterTurn) {
    const RotatingMirror mirror = MakeRotatingMirror(90 * kDeg, 0, 0, 30 * kDeg);
    const double c = 0.8660254037844386;
    EXPECT_LT(Distance(NormalComponentsAt(mirror, 0), {c, 0, 0.5}), 1e-14);
    EXPECT_LT(Distance(NormalComponentsAt(mirror, 90 * kDeg), {0, -c, 0.5}), 1e-14);
    EXPECT_LT(Distance(NormalComponentsAt(mirror, 180 * kDeg), {-c, 0, 0.5}), 1e-14);
}

TEST(RotatingMirror, NormalOnTheAxisStandsStill) {
    const RotatingMirror mirror = MakeRotatingMirror(90 * kDeg, 0, 0, 90 * kDeg);
    EXPECT_LT(Distance(NormalComponentsAt(mirror, 1.0), {0, 0, 1}), 1e-7);
}

TEST(RotatingMirror, PhasesCoverOneTurnOnce) {
    EXPECT_EQ(RotationPhase(0, 36), 0);
    EXPECT_NEAR(RotationPhase(9, 36), 90 * kDeg, 1e-13);
    EXPECT_NEAR(RotationPhase(71, kRotationPhasesFine), 355 * kDeg, 1e-13);
}

TEST(RotatingMirror, ReadOutGivesPlaceOfTheNormalInBothFrames) {
    // Satellite over the equator flying east; a normal half way between forward (+y) and down (-x).
    const RotatingMirror mirror = MakeRotatingMirror(90 * kDeg, 0, 0, 0);
    const double h = std::sqrt(0.5);
    const RotatingReadOut readOut =
        ReadOutOf(mirror, {-h, h, 0}, VerticalFrame({1.1, 0, 0}, {0, 7, 0}), InertialFrame(0));
    EXPECT_NEAR(readOut.angle, 0, 1e-9);
    EXPECT_NEAR(readOut.tilt, 45, 1e-9);
    EXPECT_NEAR(readOut.axisDistance, 90, 1e-9);
    EXPECT_NEAR(readOut.rightAscension, 135, 1e-9);
    EXPECT_NEAR(readOut.declination, 0, 1e-9);
}

TEST(RotatingMirror, ReadOutFoldsAnglesAboveHalfATurn) {
    const RotatingMirror mirror = MakeRotatingMirror(90 * kDeg, 0, 0, 0);
    const RotatingReadOut readOut =
        ReadOutOf(mirror, {-0.6, -0.8, 0}, VerticalFrame({1.1, 0, 0}, {0, 7, 0}), InertialFrame(0));
    EXPECT_NEAR(readOut.rightAscension, -126.86989764584402, 1e-9);
}

}  // namespace
}  // namespace glintara
