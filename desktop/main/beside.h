#pragma once

// A tool window opens beside what it is about, not over it.

#include <QRect>
#include <QSettings>
#include <QWidget>

namespace glintara::desktop {

/// Where a window of that size stands on `screen` so that it covers as little as it can of `about`: beside it, above or
/// below, or in a corner of the screen.
QRect PlaceBeside(const QSize& size, const QRect& about, const QRect& screen);

/// Moves a window that `store` remembers no place of, and that is not yet shown, beside `about`. To be called after
/// `RememberPlace`.
void OpenBeside(QWidget& window, const QWidget& about, const QSettings& store);

}  // namespace glintara::desktop
