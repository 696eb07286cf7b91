// The boxes of the program, which names from files and from servers stand in.

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "desktop/main/qt_services.h"

namespace glintara::desktop {
namespace {

const std::string kMarkup = "Reload Workspace (<b>A</b> &amp; \"B\".cst)\r\nAre you sure?";
const QString kShown = "Reload Workspace (<b>A</b> &amp; \"B\".cst)\nAre you sure?";

struct MessageBoxes : ::testing::Test {
    /// Presses `button` of the box that comes up, and looks at it first.
    void Answer(QMessageBox::StandardButton button) {
        QTimer::singleShot(
            0, &closer,
            [this, button] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (box == nullptr) return;
                text = box->text();
                format = box->textFormat();
                icon = box->icon();
                box->done(button);
            });
    }

    void ExpectShownAsItIs(QMessageBox::Icon wanted) {
        EXPECT_EQ(text, kShown);
        EXPECT_EQ(format, Qt::PlainText);
        EXPECT_EQ(icon, wanted);
    }

    QObject closer;
    QtMessageBoxes boxes;
    QString text;
    Qt::TextFormat format = Qt::AutoText;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

TEST_F(MessageBoxes, MarkupInANameIsNone) {
    Answer(QMessageBox::Ok);
    boxes.Tell(kMarkup, MessageIcon::Critical);
    ExpectShownAsItIs(QMessageBox::Critical);
    Answer(QMessageBox::Cancel);
    bool dontAskAgain = false;
    EXPECT_EQ(boxes.AskAboutChanges(kMarkup, dontAskAgain), ChangesAnswer::Cancel);
    ExpectShownAsItIs(QMessageBox::Question);
    Answer(QMessageBox::No);
    EXPECT_FALSE(boxes.AskYesNo(kMarkup));
    ExpectShownAsItIs(QMessageBox::Question);
}

TEST_F(MessageBoxes, YesIsYes) {
    Answer(QMessageBox::Yes);
    EXPECT_TRUE(boxes.AskYesNo(kMarkup));
}

TEST_F(MessageBoxes, EscapeMeansNo) {
    QTimer::singleShot(0, &closer, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(boxes.AskYesNo(kMarkup));
}

}  // namespace
}  // namespace glintara::desktop
