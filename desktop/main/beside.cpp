#include "desktop/main/beside.h"

#include <QScreen>
#include <algorithm>
#include <array>

namespace glintara::desktop {

namespace {

constexpr int kGap = 8;
/// What the frame of a window adds: it is not known before the window is shown.
constexpr int kTitleHeight = 28;

int CoveredOf(const QRect& about, const QRect& place) {
    const QRect covered = about & place;
    return covered.isEmpty() ? 0 : covered.width() * covered.height();
}

/// `place` moved onto the screen; one that is larger keeps its upper left corner there.
QRect OnScreen(QRect place, const QRect& screen) {
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - place.width())));
    place.moveTop(std::max(screen.top() + kTitleHeight, std::min(place.top(), screen.bottom() + 1 - place.height())));
    return place;
}

}  // namespace

QRect PlaceBeside(const QSize& size, const QRect& about, const QRect& screen) {
    const QRect place(QPoint(0, 0), size);
    const int right = about.right() + 1 + kGap;
    const int left = about.left() - kGap - size.width();
    const int below = about.bottom() + 1 + kGap + kTitleHeight;
    const int above = about.top() - kGap - size.height();
    const std::array<QPoint, 6> wanted{QPoint(right, about.top()),
                                       QPoint(left, about.top()),
                                       QPoint(about.left(), below),
                                       QPoint(about.left(), above),
                                       QPoint(screen.right(), screen.bottom()),
                                       QPoint(screen.left(), screen.bottom())};
    QRect best;
    for (const QPoint& corner : wanted) {
        const QRect tried = OnScreen(place.translated(corner), screen);
        if (best.isNull() || CoveredOf(about, tried) < CoveredOf(about, best)) best = tried;
    }
    return best;
}

void OpenBeside(QWidget& window, const QWidget& about, const QSettings& store) {
    if (store.contains(window.objectName() + "/x")) return;
    const QScreen* const screen = about.screen();
    if (screen == nullptr) return;
    const QRect there(about.mapToGlobal(QPoint(0, 0)), about.size());
    window.move(PlaceBeside(window.size(), there, screen->availableGeometry()).topLeft());
}

}  // namespace glintara::desktop
