#include "scene/stages.h"

#include "scene/marks.h"

namespace glintara {

FrameStages StagesOfProgram(SatelliteWorkspace& satellites) {
    FrameStages stages;
    stages.site = DrawSiteMark;
    stages.sunAndMoon = DrawSunAndMoonOnEarth;
    stages.ariesLine = DrawAriesLine;
    stages.satellites = [&satellites](const SceneContext& scene) { DrawSatellites(scene, satellites); };
    return stages;
}

}  // namespace glintara
