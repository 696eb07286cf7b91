#include "scene/star_chart.h"

#include <gtest/gtest.h>

#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

struct StarChartTest : SceneFixture {
    /// A third of the way from the near point of the star sphere to its edge, to the right.
    const Vector3 place{10 * std::cos(30 * kDegree), 10 * std::sin(30 * kDegree), 0};

    void SetUp() override {
        view.SkyScale = 10;
        Choose(false, false, true);
    }

    void Choose(bool reverse, bool flat, bool front) {
        app.Main.CReverseSky.Value = reverse;
        app.Main.CFlatSky.Value = flat;
        app.Main.CDrawFrontStars.Value = front;
    }

    Vector3 Flattened() const {
        Vector3 found = place;
        FlattenSky(scene, found);
        return found;
    }
};

TEST_F(StarChartTest, TheSphereIsLeftAsItIs) { EXPECT_EQ(Flattened(), place); }

TEST_F(StarChartTest, BoxesMirrorAndUnroll) {
    Choose(true, false, true);
    ExpectVector(Flattened(), {place.x, -5, 0});
    Choose(false, true, true);
    ExpectVector(Flattened(), {place.x, 10 / 3.0, 0}, 1e-9);
    Choose(true, true, true);
    ExpectVector(Flattened(), {place.x, -10 / 3.0, 0}, 1e-9);
    Choose(false, true, false);
    ExpectVector(Flattened(), {place.x, 10 * 5 / 3.0, 0}, 1e-9);
}

TEST_F(StarChartTest, TheFlatMapIsNoStarSphere) {
    Choose(true, true, true);
    app.Main.CPlaniSphere.Value = true;
    EXPECT_EQ(Flattened(), place);
}

TEST_F(StarChartTest, LeadsBack) {
    for (const bool reverse : {false, true}) {
        for (const bool front : {false, true}) {
            Choose(reverse, true, front);
            Vector3 found = Flattened();
            found.x = 99;
            DeFlattenSky(scene, found);
            ExpectVector(found, place, 1e-9);
        }
    }
}

TEST_F(StarChartTest, ServesAsTheMappingOfAScene) {
    SceneContext mapped = scene;
    mapped.FlattenSky = FlattenSky;
    Choose(true, false, true);
    Vector3 found = place;
    mapped.FlattenSky(mapped, found);
    EXPECT_EQ(found.y, -place.y);
}

}  // namespace
}  // namespace glintara::testing
