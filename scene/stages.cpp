#include "scene/stages.h"

#include "scene/map_text.h"
#include "scene/marks.h"

namespace glintara {

FrameStages StagesOfProgram(SatelliteWorkspace& satellites) {
    FrameStages stages;
    stages.site = DrawSiteMark;
    stages.sunAndMoon = DrawSunAndMoonOnEarth;
    stages.ariesLine = DrawAriesLine;
    stages.satellites = [&satellites](const SceneContext& scene) { DrawSatellites(scene, satellites); };
    stages.polygonMarker = [](const SceneContext& scene) { PlotPolygonMarker(scene, scene.App.Run.BorderTool); };
    return stages;
}

}  // namespace glintara
