#include "core/camera_moves.h"

#include "scene/orientation.h"
#include "scene/sky_scale.h"
#include "scene/view_geometry.h"

namespace glintara {

void CameraMoved(Application& app) {
    ViewState& view = app.Data.View;
    HoldView(view);
    RefreshViewCache(view);
    // Otherwise the next tick of the clock would turn the camera back to where the lock was taken.
    if (view.SkyLocked) TakeSkyLock(app.Data);
    app.Windows.UpdateGraphicsLevel2();
}

void CameraZoomed(Application& app) {
    HoldView(app.Data.View);
    if (app.Main.CMaximizeSky.Value) FitSky(app);
    CameraMoved(app);
}

}  // namespace glintara
