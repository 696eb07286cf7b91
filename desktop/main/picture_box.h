#pragma once

// The picture: the widget that shows what the scene has painted, and hears the mouse.

#include <QImage>
#include <QWidget>
#include <functional>
#include <optional>

class QNativeGestureEvent;

namespace glintara::desktop {

/// What the mouse does over the picture. Empty functions are not called. The right button belongs to drags; a click is
/// one without a key and without another button that is held still.
struct PictureListener {
    std::function<void()> resized;
    std::function<void(const QMouseEvent&)> moved;
    std::function<void()> left;  ///< the mouse is over something else now
    std::function<void(const QMouseEvent&)> pressed;
    std::function<void(const QMouseEvent&)> released;
    std::function<void(const QMouseEvent&)> doubleClicked;
    std::function<void(const QWheelEvent&)> wheel;
    std::function<void(const QNativeGestureEvent&)> pinched;  ///< two fingers on a touchpad
    std::function<void(const QPoint&)> rightClicked;          ///< at this place of the widget
    std::function<void(const QPoint&)> menuWanted;            ///< there, by the menu key or Shift+F10
    std::function<void()> keysLost;                           ///< the keyboard is another's now
};

class PictureBox : public QWidget {
  public:
    explicit PictureBox(QWidget* parent);

    void SetListener(PictureListener listener) { listener_ = std::move(listener); }

    /// The image to paint on. It has the widget's size in pixels of the display; `TakeSize` makes it follow the widget.
    QImage& Image() { return image_; }

    /// Gives the image the widget's present size. What it showed is gone.
    void TakeSize();

    /// Size of the widget, pixels of the layout.
    QSize PictureSize() const { return size(); }

  protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void ShowPicture();
    void FollowRightClick(const QMouseEvent& event);

    PictureListener listener_;
    QImage image_;
    std::optional<QPointF> rightClick_;  // where the right button went down by itself, as long as it may be a click
};

}  // namespace glintara::desktop
