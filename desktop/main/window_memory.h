#pragma once

// Windows open where they stood the last time.

#include <QSettings>
#include <QWidget>
#include <functional>

namespace glintara::desktop {

/// The file of the windows' places, in the user's configuration folder.
QString WindowPlacesFile();

/// Makes a window remember its position, its size and whether it was maximized: they are written to `store` when it is
/// closed or hidden, and it opens there the next time. To be called before the window is first shown. The places are
/// told apart by the windows' object names; a window without one is not remembered. A position whose title bar could
/// not be seen and grasped on a screen of today is not used: then only the size is, as far as the screen has room.
/// `store` must outlive the window. A window without a place to remember opens where `firstPlace` says, if that is
/// given: the corner of its frame on the screen.
void RememberPlace(QWidget& window, QSettings& store, std::function<QPoint(const QWidget&)> firstPlace = {});

/// The largest inside of a window that its screen has room for.
QSize RoomOnScreen(const QWidget& window);

}  // namespace glintara::desktop
