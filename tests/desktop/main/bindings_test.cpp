#include "desktop/main/bindings.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextCursor>

namespace glintara::desktop {
namespace {

TEST(Bindings, CheckBoxMirrorsInBothDirections) {
    CheckBox control("Globe Grid", "Draw parallels", true);
    int changes = 0;
    control.Value.SetHandler([&] { ++changes; });
    QCheckBox box;
    Bind(box, control);
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(box.text(), "Globe Grid");
    EXPECT_EQ(box.toolTip(), "Draw parallels");

    control.Value = false;
    EXPECT_FALSE(box.isChecked());
    EXPECT_EQ(changes, 1);

    box.click();
    EXPECT_TRUE(control.Value);
    EXPECT_EQ(changes, 2);

    control.Enabled = false;
    EXPECT_FALSE(box.isEnabled());
}

TEST(Bindings, ButtonIsPressedOnceAndNotWhileDisabled) {
    Button control("Find First");
    int presses = 0;
    control.SetClickHandler([&] { ++presses; });
    QPushButton button;
    Bind(button, control);
    button.click();
    EXPECT_EQ(presses, 1);
    control.Enabled = false;
    button.click();
    EXPECT_EQ(presses, 1);
}

TEST(Bindings, AButtonStandsInAMenu) {
    Button control("Add Vertex", "Add the selected vertex");
    QAction idle;
    Bind(idle, control);
    EXPECT_FALSE(idle.isEnabled()) << "nothing would happen";
    int presses = 0;
    control.SetClickHandler([&] { ++presses; });
    QAction action;
    Bind(action, control);
    EXPECT_EQ(action.text(), "Add Vertex");
    EXPECT_EQ(action.toolTip(), "Add the selected vertex");
    action.trigger();
    EXPECT_EQ(presses, 1);
    control.Enabled = false;
    EXPECT_FALSE(action.isEnabled());
}

TEST(Bindings, MenuEntryFollowsItsControlAndNotItsOwnClick) {
    MenuEntry control("Sun Light");
    control.SetClickHandler([] {});  // the option stays as it is
    QAction action;
    control.Checked = true;
    Bind(action, control);
    EXPECT_TRUE(action.isChecked());
    action.trigger();
    EXPECT_TRUE(action.isChecked());
    control.Checked = false;
    EXPECT_FALSE(action.isChecked());
}

TEST(Bindings, MenuEntryWithoutAHandlerIsGrey) {
    MenuEntry control("Cities...");
    QAction action;
    Bind(action, control);
    EXPECT_FALSE(action.isEnabled());
}

TEST(Bindings, TextBoxKeepsCarriageReturns) {
    TextBox control;
    QPlainTextEdit edit;
    Bind(edit, control);
    edit.setPlainText("1 25544U\n2 25544\n");
    EXPECT_EQ(control.Text.Get(), "1 25544U\r\n2 25544\r\n");
    control.Text = std::string("ISS\r\n");
    EXPECT_EQ(edit.toPlainText(), "ISS\n");
    EXPECT_EQ(control.Text.Get(), "ISS\r\n");
}

// ---- Texts of any length

/// A text of numbered lines, each of 20 characters and a line end.
std::string NumberedLines(int count, const std::string& word = "line") {
    std::string text;
    for (int i = 0; i < count; ++i) {
        std::string line = word + " " + std::to_string(i);
        line.resize(20, '.');
        text += line + "\r\n";
    }
    return text;
}

struct LongText : ::testing::Test {
    LongText() {
        edit.resize(300, 200);
        edit.show();
        control.Text = text;
    }

    qsizetype ShownBytes() const { return edit.toPlainText().size(); }

    void GoDown() {
        edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
        QCoreApplication::processEvents();
    }

    const std::string text = NumberedLines(100000);  // 2.2 MB
    TextBox control;
    QPlainTextEdit edit;
    TextPortions& portions = Bind(edit, control);
};

TEST_F(LongText, TheBoxShowsTheBeginningInWholeLinesAndTheControlHoldsAll) {
    EXPECT_EQ(control.Text.Get(), text);
    EXPECT_LT(ShownBytes(), 140000);
    EXPECT_GT(ShownBytes(), 100000);
    EXPECT_TRUE(edit.toPlainText().startsWith("line 0."));
    EXPECT_TRUE(edit.toPlainText().endsWith(".\n"));
}

TEST_F(LongText, MoreFollowsAtTheLowerEndUntilAllIsThere) {
    qsizetype before = 0;
    for (int i = 0; i < 100 && ShownBytes() > before; ++i) {
        before = ShownBytes();
        GoDown();
    }
    EXPECT_EQ(FromQt(edit.toPlainText().replace("\n", "\r\n")), text);
    EXPECT_EQ(control.Text.Get(), text);
    edit.undo();
    EXPECT_EQ(control.Text.Get(), text) << "what came in by itself is no step of the user's";
}

TEST_F(LongText, MoreLeavesCursorAndSelectionWhereTheyAre) {
    QTextCursor cursor = edit.textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, 5);
    edit.setTextCursor(cursor);
    const QString selected = cursor.selectedText();
    GoDown();
    EXPECT_EQ(edit.textCursor().selectedText(), selected);
    EXPECT_GT(ShownBytes(), 200000);
}

TEST_F(LongText, AnEditOfTheBeginningLeavesTheRest) {
    edit.insertPlainText("0 NAME\n");
    EXPECT_EQ(control.Text.Get(), "0 NAME\r\n" + text);
    edit.undo();
    EXPECT_EQ(control.Text.Get(), text);
    QTextCursor cursor(edit.document());
    cursor.movePosition(QTextCursor::Down, QTextCursor::KeepAnchor, 3);
    cursor.removeSelectedText();
    EXPECT_EQ(control.Text.Get(), text.substr(3 * 22));
}

TEST_F(LongText, WhenMostOfTheShownGoesTheRestComesUp) {
    QTextCursor cursor(edit.document());
    cursor.movePosition(QTextCursor::Down);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    const auto removed = static_cast<std::size_t>(cursor.selectedText().size());
    cursor.removeSelectedText();
    QCoreApplication::processEvents();
    EXPECT_EQ(control.Text.Get(), text.substr(0, 22) + text.substr(22 + removed / 21 * 22));
    EXPECT_GT(ShownBytes(), 100000);
}

TEST_F(LongText, WhoReplacesAllOfTheBoxMeansAllOfTheText) {
    edit.selectAll();
    edit.insertPlainText("ISS\n");
    EXPECT_EQ(control.Text.Get(), "ISS\r\n");
    edit.undo();
    EXPECT_EQ(control.Text.Get(), text) << "nothing is lost";
    edit.redo();
    EXPECT_EQ(control.Text.Get(), "ISS\r\n");
    control.Text = text;
    edit.selectAll();
    EXPECT_EQ(portions.SelectedText().size(), 100000 * 21) << "all of it goes to the clipboard";
    edit.textCursor().removeSelectedText();
    EXPECT_EQ(control.Text.Get(), "");
    EXPECT_EQ(edit.toPlainText(), "");
}

TEST_F(LongText, WhatIsCutOffTheFrontMakesRoomForTheRest) {
    control.Text = text.substr(90000 * 22);
    EXPECT_TRUE(edit.toPlainText().startsWith("line 90000."));
    control.Text = std::string();
    EXPECT_EQ(edit.toPlainText(), "");
}

TEST_F(LongText, ALongPasteIsHeldAsAWholeAndShownInPortions) {
    QTextCursor cursor(edit.document());
    cursor.movePosition(QTextCursor::Down, QTextCursor::KeepAnchor, 2);
    edit.setTextCursor(cursor);
    const std::string pasted = NumberedLines(50000, "paste");
    portions.Paste(ToQt(pasted));
    EXPECT_EQ(control.Text.Get(), pasted + text.substr(2 * 22));
    EXPECT_LT(ShownBytes(), 140000);
    edit.selectAll();
    portions.Paste(ToQt(pasted));
    EXPECT_EQ(control.Text.Get(), pasted);
}

TEST(Bindings, APasteLosesTrailingBlanksAndHasOneKindOfLineEnd) {
    TextBox control;
    QPlainTextEdit edit;
    TextPortions& portions = Bind(edit, control);
    portions.Paste("ISS (ZARYA)   \t\r\r\n1 25544U  \r\n2 25544 \n");
    EXPECT_EQ(control.Text.Get(), "ISS (ZARYA)\r\n1 25544U\r\n2 25544\r\n");
    EXPECT_EQ(edit.toPlainText(), "ISS (ZARYA)\n1 25544U\n2 25544\n");
    edit.insertPlainText("typed  \nend ");
    EXPECT_EQ(control.Text.Get(), "ISS (ZARYA)\r\n1 25544U\r\n2 25544\r\ntyped\r\nend ");
}

TEST(Bindings, TimerFiresWhileArmedAndNeverAtIntervalZero) {
    Timer control;
    int ticks = 0;
    control.SetTickHandler([&] {
        ++ticks;
        control.Stop();
    });
    QTimer timer;
    Bind(timer, control);
    control.Enabled = true;  // interval 0
    QTest::qWait(20);
    EXPECT_EQ(ticks, 0);
    control.Restart(5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks == 1; }, 2000));
    QTest::qWait(30);
    EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace glintara::desktop
