#pragma once

// What every hand on the camera ends with.

#include "state/application.h"

namespace glintara {

/// The user has moved the camera: it is brought back to what can be drawn, a locked sky stays locked as it is seen now,
/// and a picture is asked for.
void CameraMoved(Application& app);

/// The user has set another zoom: a maximized sky is fitted to it, and the rest as for every move of the camera.
void CameraZoomed(Application& app);

}  // namespace glintara
