#include "engine/astro/vector.h"

#include <gtest/gtest.h>

#include "engine/astro/support.h"

namespace glintara {
namespace {

TEST(Vector, ProductsFollowTheRightHand) {
    const Vector3 x{1, 0, 0};
    const Vector3 y{0, 1, 0};
    const Vector3 z{0, 0, 1};
    EXPECT_EQ(CrossProduct(x, y), z);
    EXPECT_EQ(CrossProduct(y, z), x);
    EXPECT_EQ(CrossProduct(z, x), y);
    EXPECT_EQ(CrossProduct(y, x), -z);
    EXPECT_EQ(Dot(Vector3{1, 2, 3}, Vector3{4, -5, 6}), 12);
}

TEST(Vector, NormalizedKeepsTheDirection) {
    const Vector3 v{3, -4, 12};
    EXPECT_EQ(Length(v), 13);
    const Vector3 unit = Normalized(v);
    EXPECT_NEAR(Length(unit), 1, 1e-15);
    EXPECT_NEAR(test::AngleBetween(unit, v), 0, 1e-15);
    Vector3 inPlace = v;
    NormalizeInPlace(inPlace);
    EXPECT_EQ(inPlace, unit);
}

TEST(Vector, NormalizedZeroIsSeenAsNotFinite) {
    EXPECT_FALSE(IsFinite(Normalized({0, 0, 0})));
    EXPECT_TRUE(IsFinite({1e300, 0, -1e-300}));
    EXPECT_FALSE(IsFinite({0, test::kInfinity, 0}));
    EXPECT_FALSE(IsFinite({0, 0, test::kNotANumber}));
}

TEST(Vector, TurningAboutThePoleIsCounterClockwiseFromAbove) {
    const Vector3 turned = TurnedAboutPole({1, 0, 5}, 90 * test::kDegree);
    EXPECT_NEAR(turned.x, 0, 1e-15);
    EXPECT_NEAR(turned.y, 1, 1e-15);
    EXPECT_EQ(turned.z, 5);
    const Vector3 v{0.3, -0.7, 0.2};
    const Vector3 back = TurnedAboutPole(TurnedAboutPole(v, 1.234), -1.234);
    EXPECT_NEAR(Length(back - v), 0, 1e-15);
}

}  // namespace
}  // namespace glintara
