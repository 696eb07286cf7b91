#pragma once

// What all windows are built of: one grid, and buttons made in one way.

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <string>

#include "state/controls.h"

namespace glintara::desktop {

/// Pixels between frames, between controls, and from a frame to what it holds.
inline constexpr int kFrameGap = 8;
inline constexpr int kControlGap = 4;
inline constexpr int kFrameMargin = 12;

/// A button bound to its control, under the control's name.
QPushButton* MakeButton(Button& control, const char* name = nullptr);

/// A label bound to its control, under the control's name.
QLabel* MakeLabel(Label& control, const char* name);

/// A frame with the caption of `control` as its title, under the control's name.
QGroupBox* MakeFrame(Label& control, const char* name);

/// Marks `field` while its text is not what `isGood` accepts.
void MarkUnless(QLineEdit& field, std::function<bool(const std::string&)> isGood);

/// The widget keeps its room in the layout while it is hidden, so that nothing moves when it comes.
void KeepRoom(QWidget& widget);

}  // namespace glintara::desktop
