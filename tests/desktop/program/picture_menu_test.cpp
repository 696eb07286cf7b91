// The menu of the picture: a click of the right button that is no drag, the menu key, and what its entries do.

#include <QApplication>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>

#include "desktop/program/window_fixture.h"

namespace glintara::desktop {
namespace {

class PictureMenuTest : public WindowTest {
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

    /// A press of the right button, a move by `way`, and the release.
    void RightClick(const QPointF& way = {}, Qt::KeyboardModifiers modifiers = {}) {
        const QPointF start(300, 200);
        Send(QEvent::MouseMove, start, Qt::NoButton, Qt::NoButton, modifiers);
        Send(QEvent::MouseButtonPress, start, Qt::RightButton, Qt::RightButton, modifiers);
        if (!way.isNull()) Send(QEvent::MouseMove, start + way, Qt::NoButton, Qt::RightButton, modifiers);
        Send(QEvent::MouseButtonRelease, start + way, Qt::RightButton, Qt::NoButton, modifiers);
    }

    static QMenu* Shown() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    static QStringList EntriesOf(const QMenu& menu) {
        QStringList entries;
        for (const QAction* action : menu.actions()) entries << action->text();
        return entries;
    }

    PictureBox& picture_ = window_.Picture();
};

TEST_F(PictureMenuTest, AStillClickOfTheRightButtonOpensIt) {
    const double roll = view_.ViewRoll;
    RightClick();
    ASSERT_NE(Shown(), nullptr);
    EXPECT_EQ(EntriesOf(*Shown()), QStringList({"Save picture...", "Print picture..."}));
    Shown()->close();
    RightClick({1, 1});
    ASSERT_NE(Shown(), nullptr) << "a hand trembles";
    EXPECT_EQ(view_.ViewRoll, roll) << "and rolls nothing by that";
    Shown()->close();
}

TEST_F(PictureMenuTest, ADragOfTheRightButtonRollsAsEver) {
    const double roll = view_.ViewRoll;
    RightClick({40, 0});
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_NE(view_.ViewRoll, roll);
}

TEST_F(PictureMenuTest, OtherButtonsAndKeysLeaveTheRightOneToTheDrags) {
    RightClick({}, Qt::ShiftModifier);
    EXPECT_EQ(Shown(), nullptr);
    const QPointF at(300, 200);
    Send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    Send(QEvent::MouseButtonPress, at, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    Send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::RightButton);
    Send(QEvent::MouseButtonRelease, at, Qt::RightButton, Qt::NoButton);
    EXPECT_EQ(Shown(), nullptr) << "both zoom";
    QTest::mouseClick(&picture_, Qt::LeftButton, {}, QPoint(300, 200));
    EXPECT_EQ(Shown(), nullptr);
    // A drag that comes back to where it began stays a drag.
    Send(QEvent::MouseButtonPress, at, Qt::RightButton, Qt::RightButton);
    Send(QEvent::MouseMove, at + QPointF(40, 0), Qt::NoButton, Qt::RightButton);
    Send(QEvent::MouseMove, at, Qt::NoButton, Qt::RightButton);
    Send(QEvent::MouseButtonRelease, at, Qt::RightButton, Qt::NoButton);
    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(PictureMenuTest, TheMenuKeyOpensItAndTheMousesOwnRequestDoesNot) {
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, QPoint(300, 200), picture_.mapToGlobal(QPoint(300, 200)));
    QCoreApplication::sendEvent(&picture_, &mouse);
    EXPECT_EQ(Shown(), nullptr) << "it comes with the press, before it is known to be a click";
    const double roll = view_.ViewRoll = 0.25;
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(300, 200), picture_.mapToGlobal(QPoint(300, 200)));
    QCoreApplication::sendEvent(&picture_, &key);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_EQ(view_.ViewRoll, roll);
    Shown()->close();
}

TEST_F(PictureMenuTest, ShiftAndF10OpenItToo) {
    QTest::keyClick(&picture_, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_NE(Shown(), nullptr);
    Shown()->close();
}

TEST_F(PictureMenuTest, SavesThePictureByTheDialog) {
    const fs::path file = folder_.Path() / "shown.png";
    QString suggested;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        look.stop();
        suggested = dialog->selectedFiles().value(0);
        // Without its ending, which the dialog adds.
        dialog->findChild<QLineEdit*>()->setText(QString::fromStdString((folder_.Path() / "shown").string()));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    look.start(1);
    RightClick();
    ASSERT_NE(Shown(), nullptr);
    QMenu& menu = *Shown();
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(0)).center());
    EXPECT_EQ(Shown(), nullptr);
    ASSERT_TRUE(fs::exists(file));
    EXPECT_TRUE(suggested.contains("Glintara ")) << suggested.toStdString();
    EXPECT_EQ(QImage(QString::fromStdString(file.string())).size(), picture_.Image().size());
}

TEST_F(PictureMenuTest, TheFileMenuHasBothEntries) {
    for (const char* entry : {"Save picture...", "Print picture..."}) {
        ASSERT_NE(EntryNamed(entry), nullptr) << entry;
        EXPECT_TRUE(EntryNamed(entry)->isEnabled()) << entry;
    }
}

}  // namespace
}  // namespace glintara::desktop
