#include "scene/star_chart.h"

#include <algorithm>

#include "engine/astro/constants.h"
#include "scene/star_places.h"

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

double SkyCircleRadius(const SceneContext& scene, double diameter) {
    if (scene.IsFlatMap()) return diameter / 2;
    const SkyProjection sky = SkyProjectionOf(scene);
    return sky.radius * diameter / (sky.flat ? kPi : 2);
}

double SkyDiscRadius(const SceneContext& scene, double diameter) {
    return std::max(SkyCircleRadius(scene, diameter), 1 / scene.View().ZoomFactor);
}

SkySight SkySightOf(const SceneContext& scene, double greenwich) {
    const MainControls& main = scene.App.Main;
    return {.front = scene.IsFlatMap() || main.CDrawFrontStars.Value,
            .back = scene.IsFlatMap() || main.CDrawBackStars.Value,
            .local = main.CLocalSky.Value,
            .zenith = ZenithInSky(scene.App.Data.Site, greenwich)};
}

}  // namespace glintara
