#include "desktop/main/window_memory.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace glintara::desktop {

namespace {

/// How much of a title bar must be on a screen for the window to be grasped by it, and how high it is, in pixels.
constexpr int kLeastGrip = 80;
constexpr int kTitleHeight = 24;
/// What the frame of a window may take of the screen: its width is known only when it stands there.
constexpr QSize kFrameRoom(4, 32);
/// Positions and sizes beyond this do not come from a window.
constexpr int kFarthest = 100000;

constexpr auto kMaximized = "maximized";

std::optional<int> NumberIn(const QSettings& store, const QString& key) {
    bool ok = false;
    const int value = store.value(key).toInt(&ok);
    return ok && std::abs(static_cast<long long>(value)) <= kFarthest ? std::optional(value) : std::nullopt;
}

/// The screen on which a window at `place` can be grasped; null for none.
const QScreen* ScreenOf(const QRect& place) {
    const QRect title(place.topLeft(), QSize(place.width(), kTitleHeight));
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry() & title;
        if (seen.height() == kTitleHeight && seen.width() >= std::min(kLeastGrip, place.width())) return screen;
    }
    return nullptr;
}

class PlaceKeeper : public QObject {
  public:
    PlaceKeeper(QWidget& window, QSettings& store, std::function<QPoint(const QWidget&)> firstPlace)
        : QObject(&window), window_(window), store_(store), firstPlace_(std::move(firstPlace)) {
        Restore();
        // After that, so that the window knows the place to come back to.
        if (store_.value(Key(kMaximized)).toBool()) window_.setWindowState(window_.windowState() | Qt::WindowMaximized);
        window_.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == &window_ && !event->spontaneous()) {
            if (event->type() == QEvent::Hide) {
                Save();
            } else if (event->type() == QEvent::Show && !Fills()) {
                // Each time, because a dialog that is shown again puts itself before its parent.
                if (!Restore() && firstPlace_) window_.move(firstPlace_(window_));
            }
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QString Key(const char* name) const { return window_.objectName() + "/" + name; }

    bool Fills() const { return window_.isMaximized() || window_.isFullScreen(); }

    void Save() {
        store_.setValue(Key(kMaximized), window_.windowState().testFlag(Qt::WindowMaximized));
        if (Fills() || window_.isMinimized()) return;  // the place to come back to is the one stored before
        store_.setValue(Key("x"), window_.x());
        store_.setValue(Key("y"), window_.y());
        store_.setValue(Key("width"), window_.width());
        store_.setValue(Key("height"), window_.height());
    }

    /// False when there is no position to go back to.
    bool Restore() {
        const std::optional<int> x = NumberIn(store_, Key("x"));
        const std::optional<int> y = NumberIn(store_, Key("y"));
        const std::optional<int> width = NumberIn(store_, Key("width"));
        const std::optional<int> height = NumberIn(store_, Key("height"));
        if (!x || !y || !width || !height || *width <= 0 || *height <= 0) return false;
        const QRect place(*x, *y, *width, *height);
        const QScreen* const screen = ScreenOf(place);
        const QScreen* const room = screen != nullptr ? screen : window_.screen();
        window_.resize(room != nullptr ? place.size().boundedTo(room->availableSize()) : place.size());
        if (screen != nullptr) window_.move(place.topLeft());
        return screen != nullptr;
    }

    QWidget& window_;
    QSettings& store_;
    std::function<QPoint(const QWidget&)> firstPlace_;
};

}  // namespace

QString WindowPlacesFile() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/windows.ini";
}

void RememberPlace(QWidget& window, QSettings& store, std::function<QPoint(const QWidget&)> firstPlace) {
    // It goes with the window.
    if (!window.objectName().isEmpty()) new PlaceKeeper(window, store, std::move(firstPlace));
}

QSize RoomOnScreen(const QWidget& window) { return window.screen()->availableSize() - kFrameRoom; }

}  // namespace glintara::desktop
