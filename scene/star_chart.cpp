#include "scene/star_chart.h"

#include <algorithm>

#include "engine/astro/constants.h"
#include "scene/star_places.h"

namespace glintara {

SkyProjection SkyProjectionOf(const Application& app) {
    const MainControls& main = app.Main;
    const bool ownSphere = !main.CPlaniSphere.Value;
    return {.radius = app.Data.View.SkyScale,
            .mirrored = ownSphere && main.CReverseSky.Value,
            .flat = ownSphere && main.CFlatSky.Value,
            .front = main.CDrawFrontStars.Value};
}

SkyProjection SkyProjectionOf(const SceneContext& scene) { return SkyProjectionOf(scene.App); }

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

SkySight SkySightOf(const Application& app, double greenwich) {
    const MainControls& main = app.Main;
    const bool flatMap = main.CPlaniSphere.Value;
    return {.front = flatMap || main.CDrawFrontStars.Value,
            .back = flatMap || main.CDrawBackStars.Value,
            .local = main.CLocalSky.Value,
            .zenith = ZenithInSky(app.Data.Site, greenwich)};
}

SkySight SkySightOf(const SceneContext& scene, double greenwich) { return SkySightOf(scene.App, greenwich); }

}  // namespace glintara
