#include "desktop/main/beside.h"

#include <QScreen>
#include <algorithm>

namespace glintara::desktop {

namespace {

constexpr int kGap = 8;
/// What the frame of a window adds: it is not known before the window is shown.
constexpr int kTitleHeight = 28;

int CoveredOf(const std::vector<QRect>& about, const QRect& place) {
    int area = 0;
    for (const QRect& one : about) {
        const QRect covered = one & place;
        if (!covered.isEmpty()) area += covered.width() * covered.height();
    }
    return area;
}

/// `place` moved onto the screen; one that is larger keeps its upper left corner there.
QRect OnScreen(QRect place, const QRect& screen) {
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - place.width())));
    place.moveTop(std::max(screen.top() + kTitleHeight, std::min(place.top(), screen.bottom() + 1 - place.height())));
    return place;
}

/// The size that the window will have on the screen, with a frame like that of `mainWindow`.
QSize SizeWithFrame(const QWidget& window, const QWidget& mainWindow) {
    const bool sized = window.testAttribute(Qt::WA_Resized);
    const QSize inside = sized ? window.size() : window.sizeHint().expandedTo(window.minimumSize());
    return inside + mainWindow.frameGeometry().size() - mainWindow.size();
}

}  // namespace

QRect PlaceBeside(const QSize& size, const std::vector<QRect>& about, const QRect& screen) {
    std::vector<QPoint> corners;
    for (const QRect& one : about) {
        corners.emplace_back(one.right() + 1 + kGap, one.top());
        corners.emplace_back(one.left() - kGap - size.width(), one.top());
        corners.emplace_back(one.left(), one.bottom() + 1 + kGap + kTitleHeight);
        corners.emplace_back(one.left(), one.top() - kGap - size.height() - kTitleHeight);
    }
    for (const QPoint& corner : {screen.bottomRight(), screen.bottomLeft(), screen.topRight(), screen.topLeft()})
        corners.push_back(corner);

    QRect best;
    for (const QPoint& corner : corners) {
        const QRect tried = OnScreen(QRect(corner, size), screen);
        if (best.isNull() || CoveredOf(about, tried) < CoveredOf(about, best)) best = tried;
    }
    return best;
}

void OpenBeside(QWidget& window, const std::vector<const QWidget*>& about, const QSettings& store) {
    if (store.contains(window.objectName() + "/x")) return;
    const QScreen* const screen = about.front()->screen();
    if (screen == nullptr) return;
    std::vector<QRect> rooms;
    for (const QWidget* widget : about)
        if (widget != nullptr && widget->isVisible())
            rooms.emplace_back(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    window.move(PlaceBeside(window.size(), rooms, screen->availableGeometry()).topLeft());
}

QPoint PlaceAtEdge(const QWidget& window, const QWidget& mainWindow, const QWidget& picture, Qt::Edge edge) {
    const QSize size = SizeWithFrame(window, mainWindow);
    const QRect screen = mainWindow.screen()->availableGeometry();
    const QRect frame = mainWindow.frameGeometry();
    const QPoint corner = picture.mapToGlobal(QPoint(0, 0));
    const bool left = edge == Qt::LeftEdge;
    const int outside = left ? frame.left() - size.width() : frame.right() + 1;
    const bool hasRoom = left ? outside >= screen.left() : outside + size.width() <= screen.right() + 1;
    const int atPicture = left ? corner.x() : corner.x() + picture.width() - size.width();
    const int x =
        hasRoom ? outside
                : std::clamp(atPicture, screen.left(), std::max(screen.left(), screen.right() + 1 - size.width()));
    // Not every window manager takes the place for that of the frame: the menus stay in sight in any case.
    const int y = hasRoom ? frame.top() : corner.y() + mainWindow.geometry().top() - frame.top();
    return {x, std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() + 1 - size.height()))};
}

}  // namespace glintara::desktop
