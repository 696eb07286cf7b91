// The mouse over the picture: buttons, keys held, wheel and touchpad, full screen, and the words over the picture.

#include <QMenuBar>
#include <QPointingDevice>
#include <QWheelEvent>
#include <string>

#include "desktop/program/window_fixture.h"

namespace glintara::desktop {
namespace {

class MouseWindowTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        Settle();
        picture_.setFocus();
    }

    void Send(QEvent::Type type, const QPointF& at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent event(type, at, picture_.mapToGlobal(at), button, buttons, modifiers);
        QCoreApplication::sendEvent(&picture_, &event);
    }

    /// From (300, 200), without the release.
    void Drag(Qt::MouseButtons buttons, const QPointF& way, Qt::KeyboardModifiers modifiers = {}) {
        const Qt::MouseButton button = buttons.testFlag(Qt::LeftButton)    ? Qt::LeftButton
                                       : buttons.testFlag(Qt::RightButton) ? Qt::RightButton
                                                                           : Qt::MiddleButton;
        const QPointF start(300, 200);
        Send(QEvent::MouseMove, start, Qt::NoButton, Qt::NoButton, modifiers);
        Send(QEvent::MouseButtonPress, start, button, buttons, modifiers);
        Send(QEvent::MouseMove, start + way, Qt::NoButton, buttons, modifiers);
    }

    void Release() { Send(QEvent::MouseButtonRelease, {300, 200}, Qt::LeftButton, Qt::NoButton); }

    /// Scene units of a way on the picture.
    double SceneOf(double pixels) const {
        return pixels * 128 / (std::min(picture_.width(), picture_.height()) * view_.ZoomFactor);
    }

    PictureBox& picture_ = window_.Picture();
};

// A pixel is 15 twips.
TEST_F(MouseWindowTest, TheMiddleButtonMovesThePicture) {
    Drag(Qt::MiddleButton, {40, 20});
    EXPECT_NEAR(view_.PanX, 40 * 15 / 29.0 / 50, 1e-9);
    EXPECT_NEAR(view_.PanY, -20 * 15 / 29.0 / 50, 1e-9);
    Release();
    view_.PanX = view_.PanY = 0;
    Drag(Qt::RightButton, {40, 20}, Qt::ShiftModifier);
    EXPECT_NEAR(view_.PanX, 40 * 15 / 29.0 / 50, 1e-9) << "as any button with Shift does";
}

TEST_F(MouseWindowTest, BothButtonsZoomAndTheRightOneRolls) {
    Drag(Qt::LeftButton | Qt::RightButton, {0, -10});
    EXPECT_NEAR(view_.ZoomFactor, 29 * (1 + 150 / 2500.0), 1e-9);
    Release();
    view_.ZoomFactor = 29;
    Drag(Qt::RightButton, {picture_.width() / 4.0, 0});
    EXPECT_NEAR(std::remainder(view_.ViewRoll + 50 / 29.0, 2 * std::numbers::pi), 0, 0.001);
}

TEST_F(MouseWindowTest, AltAndWhatStandsForItChangeThePointersTime) {
    for (const Qt::KeyboardModifier alt : {Qt::AltModifier, Qt::MetaModifier, Qt::GroupSwitchModifier}) {
        app_.Run.SkyPointer.TimeUncertainty = 0.5;
        Drag(Qt::LeftButton, {0, -picture_.height() / 10.0}, alt);
        EXPECT_NEAR(app_.Run.SkyPointer.TimeUncertainty, 0.58, 0.001) << alt;
        Release();
    }
    Drag(Qt::LeftButton, {0, -10}, Qt::ControlModifier);
    EXPECT_GT(app_.Run.SkyPointer.FieldOfView, 0.6 * kDegree);
}

TEST_F(MouseWindowTest, TheWheelLeavesThePlaceUnderTheMouse) {
    const QPointF at(picture_.width() / 2.0 + 60, picture_.height() / 2.0 - 40);
    Send(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
    const std::string before = main_.LStatus.Caption.Get().substr(0, main_.LStatus.Caption.Get().find("RA="));
    ASSERT_EQ(before.find("EARTH: "), 0U) << before;
    QWheelEvent nearer(at, picture_.mapToGlobal(at), {}, {0, 1200}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                       false);
    QCoreApplication::sendEvent(&picture_, &nearer);
    WaitForPicture();
    EXPECT_GT(view_.ZoomFactor, 70);
    EXPECT_EQ(main_.LStatus.Caption.Get().substr(0, before.size()), before);
}

TEST_F(MouseWindowTest, TwoFingersOnATouchpadZoomAboutTheMouse) {
    const QPointF at(picture_.width() / 2.0 + 60, picture_.height() / 2.0);
    const double before = SceneOf(60);
    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at, at,
                              picture_.mapToGlobal(at), 0.25, QPointF());
    QCoreApplication::sendEvent(&picture_, &pinch);
    EXPECT_NEAR(view_.ZoomFactor, 29 * 1.25, 1e-9);
    EXPECT_NEAR(view_.PanX, SceneOf(60) - before, 1e-9);
    QNativeGestureEvent turn(Qt::RotateNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at, at,
                             picture_.mapToGlobal(at), 0.25, QPointF());
    QCoreApplication::sendEvent(&picture_, &turn);
    EXPECT_NEAR(view_.ZoomFactor, 29 * 1.25, 1e-9);
}

TEST_F(MouseWindowTest, OnlyTheLeftButtonDoubleClicks) {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        Send(QEvent::MouseButtonDblClick, {10, 10}, button, button);
        EXPECT_FALSE(app_.Run.PanelsHidden);
        EXPECT_TRUE(app_.Run.DragActive) << "it is a press, from which a drag may follow";
        Release();
    }
    Send(QEvent::MouseButtonDblClick, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    EXPECT_TRUE(app_.Run.PanelsHidden);
}

TEST_F(MouseWindowTest, ADragEndsWithTheReleaseAndWithTheKeyboard) {
    Drag(Qt::LeftButton, {20, 0});
    EXPECT_TRUE(app_.Run.DragActive);
    Release();
    EXPECT_FALSE(app_.Run.DragActive);
    Drag(Qt::LeftButton, {20, 0});
    window_.findChild<QAbstractButton*>()->setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(app_.Run.DragActive) << "the keyboard is another's";
    Release();
}

TEST_F(MouseWindowTest, InFullScreenTheMenusLieOverThePicture) {
    auto* const bar = window_.findChild<QMenuBar*>();
    const int inWindow = picture_.height();
    QTest::keyClick(&picture_, Qt::Key_F11);
    ASSERT_TRUE(WaitFor([&] { return picture_.size() == window_.size() && !bar->isVisible(); }));
    const QSize whole = picture_.size();
    QTest::mouseMove(&picture_, QPoint(300, whole.height() / 2));
    EXPECT_FALSE(bar->isVisible());
    QTest::mouseMove(&picture_, QPoint(300, whole.height() / 20 - 1));
    ASSERT_TRUE(WaitFor([&] { return bar->isVisible(); }));
    QTest::qWait(30);
    EXPECT_EQ(picture_.size(), whole) << "the picture keeps its size";
    EXPECT_EQ(bar->geometry().topLeft(), QPoint(0, 0));
    EXPECT_EQ(bar->width(), whole.width());
    EXPECT_GT(bar->height(), 15);
    EXPECT_EQ(bar->visibleRegion().boundingRect(), bar->rect()) << "nothing lies over it";
    QTest::mouseMove(&picture_, QPoint(300, whole.height() / 2));
    EXPECT_TRUE(WaitFor([&] { return !bar->isVisible(); }));
    QTest::keyClick(&picture_, Qt::Key_F11);
    EXPECT_TRUE(WaitFor([&] { return bar->isVisible() && picture_.height() == inWindow; }));
    EXPECT_EQ(picture_.mapTo(&window_, QPoint(0, 0)).y(), bar->height()) << "they stand above it again";
}

/// Pixels of the lower left corner that have changed.
int ChangedPixels(const QImage& a, const QImage& b) {
    int changed = 0;
    for (int y = a.height() * 3 / 4; y < a.height(); ++y)
        for (int x = 0; x < a.width() / 2; ++x) changed += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    return changed;
}

TEST_F(MouseWindowTest, TheWordsOverThePictureAreFreshWithoutANewPicture) {
    Send(QEvent::MouseButtonDblClick, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return picture_.Image().size() == picture_.size() * picture_.devicePixelRatioF(); }));
    WaitForPicture();
    QTest::qWait(200);
    WaitForPicture();
    const std::int64_t pictures = program_.Core().Loop.PicturesMade();
    const QImage before = picture_.Image().copy();
    const std::string words = main_.LCommandOutput.Caption.Get();
    main_.LCommandOutput.Caption = "Something that has been said just now";
    EXPECT_TRUE(WaitFor([&] { return ChangedPixels(before, picture_.Image()) > 300; }, 2000));
    main_.LCommandOutput.Caption = words;
    EXPECT_TRUE(WaitFor([&] { return ChangedPixels(before, picture_.Image()) == 0; }, 2000))
        << "and what was below them is as it was";
    EXPECT_EQ(program_.Core().Loop.PicturesMade(), pictures);
}

}  // namespace
}  // namespace glintara::desktop
