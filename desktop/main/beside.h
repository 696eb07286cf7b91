#pragma once

// A tool window opens beside what it is about, not over it.

#include <QPoint>
#include <QRect>
#include <QSettings>
#include <QWidget>
#include <vector>

namespace glintara::desktop {

/// Where a window of that size stands on `screen` so that it covers as little as it can of `about`: beside one of them,
/// above or below it, or in a corner of the screen.
QRect PlaceBeside(const QSize& size, const std::vector<QRect>& about, const QRect& screen);

/// Moves a window that `store` remembers no place of, and that is not yet shown, beside `about`, the first of which
/// tells the screen; those that are null or not shown count for nothing. To be called after `RememberPlace`.
void OpenBeside(QWidget& window, const std::vector<const QWidget*>& about, const QSettings& store);

/// Where a tool window stands beside what it is about: outside `mainWindow` at that edge, left or right, when the
/// screen has room there; otherwise at that edge of `picture`, never over its middle as long as the window is narrower
/// than half of it.
QPoint PlaceAtEdge(const QWidget& window, const QWidget& mainWindow, const QWidget& picture, Qt::Edge edge);

}  // namespace glintara::desktop
