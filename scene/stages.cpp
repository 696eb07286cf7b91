#include "scene/stages.h"

#include "scene/city_marks.h"
#include "scene/constellations.h"
#include "scene/detail_blocks.h"
#include "scene/map_text.h"
#include "scene/marks.h"
#include "scene/sky_pointer.h"
#include "scene/star_chart.h"
#include "scene/stars.h"

namespace glintara {

FrameStages StagesOfProgram(SatelliteWorkspace& satellites) {
    FrameStages stages;
    stages.FlattenSky = FlattenSky;
    stages.skyBackground = DrawSkyBackground;
    stages.site = DrawSiteMark;
    stages.sunAndMoon = DrawSunAndMoonOnEarth;
    stages.ariesLine = DrawAriesLine;
    stages.cities = DrawCityMarks;
    stages.satellites = [&satellites](const SceneContext& scene) {
        DrawSatellites(scene, satellites);
        const MainControls& main = scene.App.Main;
        if (main.MnuMarkCities.Checked && !main.CSkyOnly.Value) DrawCityNames(scene, satellites.names);
    };
    stages.unseen = [&satellites](const SceneContext& scene) { FollowWorkingSatellite(scene.App, satellites); };
    stages.orbitDetails = PrintOrbitDetails;
    stages.astroDetails = PrintAstroDetails;
    stages.polygonMarker = [](const SceneContext& scene) { PlotPolygonMarker(scene, scene.App.Run.BorderTool); };
    stages.stars = [&satellites](const SceneContext& scene) { PlotStars(scene, satellites.names); };
    stages.constellations = PlotConstallations;
    stages.skyPointer = DrawSkyPointer;
    return stages;
}

}  // namespace glintara
