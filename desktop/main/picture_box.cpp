#include "desktop/main/picture_box.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "engine/astro/processor.h"

namespace glintara::desktop {

namespace {

constexpr QRgb kSpace = 0xFF000000;

/// A hand that clicks moves the mouse by no more, pixels of the layout.
constexpr double kStill = 2;

template <class Function, class Event>
void Tell(const Function& function, const Event& event) {
    if (function) function(event);
}

}  // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(240, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    TakeSize();
}

void PictureBox::TakeSize() {
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * ratio).toSize().expandedTo(QSize(1, 1));
    if (image_.size() == pixels && image_.devicePixelRatio() == ratio) return;
    image_ = QImage(pixels, QImage::Format_RGB32);
    image_.setDevicePixelRatio(ratio);
    image_.fill(kSpace);
}

void PictureBox::paintEvent(QPaintEvent* /*event*/) {
    ShowPicture();
    ClearUpperHalves();
}

void PictureBox::ShowPicture() {
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(kSpace));
    // While the window is being resized the picture still has its old size: it is shown whole, in its shape.
    const QSizeF old = QSizeF(image_.size()) / image_.devicePixelRatio();
    if (old.toSize() == size()) {
        painter.drawImage(QPointF(0, 0), image_);
        return;
    }
    const QSizeF fitted = old.scaled(QSizeF(size()), Qt::KeepAspectRatio);
    const QPointF corner((width() - fitted.width()) / 2, (height() - fitted.height()) / 2);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(corner, fitted), image_);
}

void PictureBox::resizeEvent(QResizeEvent* /*event*/) {
    if (listener_.resized) listener_.resized();
}

bool PictureBox::event(QEvent* event) {
    if (event->type() != QEvent::NativeGesture) return QWidget::event(event);
    const auto& gesture = static_cast<const QNativeGestureEvent&>(*event);
    if (gesture.gestureType() == Qt::ZoomNativeGesture) Tell(listener_.pinched, gesture);
    return true;
}

void PictureBox::focusOutEvent(QFocusEvent* event) {
    if (listener_.keysLost) listener_.keysLost();
    QWidget::focusOutEvent(event);
}

void PictureBox::keyPressEvent(QKeyEvent* event) {
    // Keyboards without a menu key have this for it; not every platform turns it into the request.
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        Tell(listener_.menuWanted, rect().center());
    else
        QWidget::keyPressEvent(event);
}

void PictureBox::leaveEvent(QEvent* event) {
    if (listener_.left) listener_.left();
    QWidget::leaveEvent(event);
}

/// Keeps in mind whether a press of the right button may still become a click.
void PictureBox::FollowRightClick(const QMouseEvent& event) {
    const bool alone = event.buttons() == Qt::RightButton && event.modifiers() == Qt::NoModifier;
    if (!alone)
        rightClick_.reset();
    else if (event.type() == QEvent::MouseButtonPress)
        rightClick_ = event.position();
    else if (rightClick_ && (event.position() - *rightClick_).manhattanLength() > kStill)
        rightClick_.reset();
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    FollowRightClick(*event);
    Tell(listener_.moved, *event);
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
    FollowRightClick(*event);
    Tell(listener_.pressed, *event);
}

void PictureBox::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicked = event->button() == Qt::RightButton && rightClick_.has_value();
    const QPoint at = event->position().toPoint();
    rightClick_.reset();
    Tell(listener_.released, *event);
    if (clicked) Tell(listener_.rightClicked, at);
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* event) {
    FollowRightClick(*event);
    Tell(listener_.doubleClicked, *event);
}

void PictureBox::contextMenuEvent(QContextMenuEvent* event) {
    // That of the mouse comes with the press, which may become a drag.
    if (event->reason() == QContextMenuEvent::Keyboard) Tell(listener_.menuWanted, rect().center());
}

void PictureBox::wheelEvent(QWheelEvent* event) { Tell(listener_.wheel, *event); }

}  // namespace glintara::desktop
