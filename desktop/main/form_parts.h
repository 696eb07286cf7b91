#pragma once

// What all windows are built of: one grid, and buttons made in one way.

#include <QPushButton>

#include "state/controls.h"

namespace glintara::desktop {

/// Pixels between frames, between controls, and from a frame to what it holds.
inline constexpr int kFrameGap = 8;
inline constexpr int kControlGap = 4;
inline constexpr int kFrameMargin = 12;

/// A button bound to its control, under the control's name.
QPushButton* MakeButton(Button& control, const char* name = nullptr);

/// The widget keeps its room in the layout while it is hidden, so that nothing moves when it comes.
void KeepRoom(QWidget& widget);

}  // namespace glintara::desktop
