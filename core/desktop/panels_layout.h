#pragma once

// The row of panels below the picture.

#include <QWidget>

#include "core/state/main_controls.h"

namespace glintara::desktop {

/// All panels of both groups, bound to their controls; which of them show, the controls tell.
QWidget* BuildPanelRow(MainControls& main, QWidget* parent);

}  // namespace glintara::desktop
