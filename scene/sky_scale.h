#pragma once

// The radius of the star sphere, in units of the observer's distance from the Earth's centre.

#include "state/application.h"

namespace glintara {

/// Fits the star sphere into the picture; nothing while the stars are on the globe.
void FitSky(Application& app);

}  // namespace glintara
