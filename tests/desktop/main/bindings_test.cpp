#include "desktop/main/bindings.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QTest>

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
