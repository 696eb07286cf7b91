#pragma once

// The quiet warning that the elements in use are too far from the displayed instant.

#include "state/application.h"

namespace glintara {

/// Shows the warning in the Info panel and in the search window, or hides it while the elements are fresh.
void ShowElementAge(Application& app);

}  // namespace glintara
