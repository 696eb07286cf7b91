#include "scene/sky_scale.h"

#include "scene/view_geometry.h"

namespace glintara {

void FitSky(Application& app) {
    if (app.Main.CStarsOnGlobe.Value) return;
    ViewState& view = app.Data.View;
    view.SkyScaleSaved = kFullZoom / view.ZoomFactor;
    view.SkyScale = view.SkyScaleSaved;
}

}  // namespace glintara
