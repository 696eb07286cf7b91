#include "engine/astro/star_dot.h"

#include <gtest/gtest.h>

namespace glintara {
namespace {

constexpr double kSirius = -1.46;

TEST(StarDots, TheBrightestStaysAStar) {
    for (const double growth : {0.2, 0.8, 2.0}) {
        const StarDots dots(6.5, growth);
        EXPECT_LE(dots.Of(kSirius).radius, 6) << growth;
        EXPECT_GT(dots.Of(kSirius).radius, dots.Of(6.5).radius) << growth;
    }
}

TEST(StarDots, ABrighterStarIsNeverSmallerNorDimmer) {
    const StarDots dots(6.5, 0.8);
    for (double magnitude = kSirius; magnitude < 12; magnitude += 0.1) {
        const StarDot brighter = dots.Of(magnitude);
        const StarDot fainter = dots.Of(magnitude + 0.1);
        EXPECT_GE(brighter.radius, fainter.radius) << magnitude;
        EXPECT_GE(brighter.weight, fainter.weight) << magnitude;
    }
    EXPECT_LT(dots.Of(9).weight, 0.2) << "barely there";
}

// The catalogue ends at magnitude 9: a picture with room for fainter stars has none to show beside them.
TEST(StarDots, DeeperPicturesDoNotSwellTheStarsThereAre) {
    for (const double magnitude : {kSirius, 4.0, 8.9})
        EXPECT_EQ(StarDots(14, 0.8).Of(magnitude).radius, StarDots(9, 0.8).Of(magnitude).radius) << magnitude;
    EXPECT_LT(StarDots(14, 0.8).Of(9).radius, 1.5);
}

}  // namespace
}  // namespace glintara
