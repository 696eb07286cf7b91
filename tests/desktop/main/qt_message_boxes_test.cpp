#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <string>

#include "desktop/main/qt_services.h"

namespace glintara::desktop {
namespace {

/// Asks, presses a button of the box, and returns the answer.
bool Ask(const std::string& text, QMessageBox::StandardButton pressed) {
    QtMessageBoxes boxes;
    QTimer::singleShot(0, QApplication::instance(), [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text().toStdString(), text);
        EXPECT_EQ(box->textFormat(), Qt::PlainText) << "a file may have any name";
        EXPECT_EQ(box->icon(), QMessageBox::Question);
        QTest::mouseClick(box->button(pressed), Qt::LeftButton);
    });
    return boxes.AskYesNo(text);
}

TEST(QtMessageBoxes, AQuestionIsAnsweredByItsButtons) {
    const std::string question = "Save Workspace (<b>mine</b>.cst)\nAre you sure?";
    EXPECT_TRUE(Ask(question, QMessageBox::Yes));
    EXPECT_FALSE(Ask(question, QMessageBox::No));
}

TEST(QtMessageBoxes, EscapeMeansNo) {
    QtMessageBoxes boxes;
    QTimer::singleShot(0, QApplication::instance(),
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(boxes.AskYesNo("All the satellites will be removed from the list!\nAre you sure?"));
}

}  // namespace
}  // namespace glintara::desktop
