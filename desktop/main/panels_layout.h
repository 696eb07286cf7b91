#pragma once

// The row of panels below the picture.

#include <QWidget>

#include "state/application.h"

namespace glintara::desktop {

/// All panels of both groups, bound to their controls; which of them show, the controls tell. While a text field has
/// the focus, `KeyLock` is set.
QWidget* BuildPanelRow(Application& app, QWidget* parent);

}  // namespace glintara::desktop
