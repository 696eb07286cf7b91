#include "scene/star_chart.h"

namespace glintara {

SkyProjection SkyProjectionOf(const SceneContext& scene) {
    const MainControls& main = scene.App.Main;
    const bool ownSphere = !scene.IsFlatMap();
    return {.radius = scene.View().SkyScale,
            .mirrored = ownSphere && main.CReverseSky.Value,
            .flat = ownSphere && main.CFlatSky.Value,
            .front = main.CDrawFrontStars.Value};
}

void FlattenSky(const SceneContext& scene, Vector3& view) { view = FlattenSky(SkyProjectionOf(scene), view); }

void DeFlattenSky(const SceneContext& scene, Vector3& view) { view = DeFlattenSky(SkyProjectionOf(scene), view); }

}  // namespace glintara
