#include "desktop/orbit/form_download_tle.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <set>

#include "desktop/window_checks.h"
#include "orbit/download_fixture.h"

namespace glintara::desktop {
namespace {

using glintara::testing::DownloadFixture;
using glintara::testing::SetOf;
using testing::Named;

struct FormDownloadTLETest : DownloadFixture {
    FormDownloadTLETest() : window(app, downloads, nullptr) { testing::Open(window); }

    QListView& List() const { return Named<QListView>(window, "LSiteTLE"); }
    QPushButton& ButtonOf(const char* name) const { return Named<QPushButton>(window, name); }
    QString TextOf(const char* label) const { return Named<QLabel>(window, label).text(); }

    void ClickLine(int line, Qt::KeyboardModifiers modifiers = {}) {
        QListView& list = List();
        list.scrollTo(list.model()->index(line, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers,
                          list.visualRect(list.model()->index(line, 0)).center());
    }

    /// A click on the mark of a box.
    static void Tick(QWidget& box) {
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.height() / 2, box.height() / 2));
    }

    std::set<int> SelectedRows() const {
        std::set<int> rows;
        for (const QModelIndex& row : List().selectionModel()->selectedRows()) rows.insert(row.row());
        return rows;
    }

    FormDownloadTLE window;
};

TEST_F(FormDownloadTLETest, ShowsSourcesAndWords) {
    EXPECT_EQ(window.windowTitle(), "Download TLE From Internet");
    ASSERT_EQ(List().model()->rowCount(), 26);
    EXPECT_EQ(List().model()->index(1, 0).data().toString(),
              "ISS          - https://celestrak.org/NORAD/elements/stations.txt");
    EXPECT_TRUE(QFontInfo(List().font()).fixedPitch());
    EXPECT_EQ(ButtonOf("CDownAdd").text(), "Download, Add");
    EXPECT_EQ(ButtonOf("CDownAdd").toolTip(), "All the satellites are added even if they already exist in the list");
    EXPECT_EQ(ButtonOf("CDownUp").text(), "Download, Add, Update");
    EXPECT_EQ(ButtonOf("CDownUp").toolTip(),
              "New Satellites are added to the list, while the existing ones are replaced");
    EXPECT_EQ(ButtonOf("CDownOUP").text(), "Download, Update");
    EXPECT_EQ(ButtonOf("CDownOUP").toolTip(),
              "No new satellites will be added, only the existing ones will be updated");
    EXPECT_EQ(Named<QGroupBox>(window, "Frame1").title(), "Update strategy");
    EXPECT_EQ(Named<QRadioButton>(window, "OUpdateAlways0").text(), "Update always");
    EXPECT_EQ(Named<QRadioButton>(window, "OUpdateAlways1").text(), "Update only if more recent");
    EXPECT_EQ(Named<QCheckBox>(window, "COnlySel").text(), "Update only selected Sats");
    EXPECT_EQ(ButtonOf("CSelSat").text(), "Satellite List...");
    EXPECT_TRUE(TextOf("LOrigin").contains("celestrak.org"));
    testing::ExpectNothingClipped(window);
    // No line of the list is cut.
    EXPECT_LE(List().sizeHintForColumn(0), List().viewport()->width());
}

TEST_F(FormDownloadTLETest, ButtonsComeWithTheFirstClick) {
    for (const char* name : {"CDownAdd", "CDownUp", "CDownOUP"}) EXPECT_FALSE(ButtonOf(name).isEnabled());
    ClickLine(3);
    for (const char* name : {"CDownAdd", "CDownUp", "CDownOUP"}) EXPECT_TRUE(ButtonOf(name).isEnabled());
    EXPECT_EQ(form.LSiteTLE.Current, 3);
    EXPECT_EQ(form.LSiteTLE.Selected.Get(), (std::set<int>{3}));
    ClickLine(5, Qt::ControlModifier);
    EXPECT_EQ(form.LSiteTLE.Selected.Get(), (std::set<int>{3, 5}));
    ClickLine(8, Qt::ShiftModifier);
    EXPECT_TRUE(form.LSiteTLE.Selected.Get().contains(7));
}

TEST_F(FormDownloadTLETest, KeysChooseToo) {
    EXPECT_TRUE(List().hasFocus());
    QTest::keyClicks(&List(), "wea");
    EXPECT_EQ(form.LSiteTLE.Current, LineOf("WEATHER"));
    EXPECT_TRUE(ButtonOf("CDownUp").isEnabled());
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(form.LSiteTLE.Selected.Get().size(), 26U);
}

TEST_F(FormDownloadTLETest, AnyClickOrKeyClearsWhatWasSaid) {
    ClickLine(3);
    form.LProg.Caption = std::string("Error");
    EXPECT_EQ(TextOf("LProg"), "Error");
    ClickLine(3);
    EXPECT_EQ(TextOf("LProg"), "");
    form.LProg.Caption = std::string("Error");
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(TextOf("LProg"), "");
}

TEST_F(FormDownloadTLETest, WhatCameInStaysSaidAndIsSelectedNoMore) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    ClickLine(LineOf("GEO"));
    QTest::mouseClick(&ButtonOf("CDownAdd"), Qt::LeftButton);
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(TextOf("LProg"), "Added Satellites #1") << "the program's own changes of the list clear nothing";
    EXPECT_TRUE(SelectedRows().empty());
    EXPECT_EQ(List().currentIndex().row(), LineOf("GEO"));
    EXPECT_EQ(Named<QProgressBar>(window, "PB1").value(), 100);
}

TEST_F(FormDownloadTLETest, ReturnIsTheDefaultButton) {
    FillList();
    Answer(FileAt("geo"), SetOf("FRESH", "00001", "12001"));
    ClickLine(LineOf("GEO"));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(TextOf("LProg"), "Added Satellites #0 (1 updated)");
}

TEST_F(FormDownloadTLETest, StrategiesReachTheDownload) {
    FillList();
    Answer(FileAt("geo"), SetOf("OLD", "00001", "09001") + SetOf("FRESH", "00002", "12001"));
    Tick(Named<QRadioButton>(window, "OUpdateAlways1"));
    EXPECT_FALSE(Named<QRadioButton>(window, "OUpdateAlways0").isChecked());
    Tick(Named<QCheckBox>(window, "COnlySel"));
    ClickLine(LineOf("GEO"));
    QTest::mouseClick(&ButtonOf("CDownOUP"), Qt::LeftButton);
    EXPECT_EQ(app.Data.Satellite(1).Name, "ONE") << "not more recent";
    EXPECT_EQ(app.Data.Satellite(2).Name, "TWO") << "not selected";
}

TEST_F(FormDownloadTLETest, ListAndButtonsRestWhileItRuns) {
    network.answers[FileAt("geo")] = {.text = SetOf("A", "00001"), .waits = 1};
    ClickLine(LineOf("GEO"));
    int looked = 0;
    events.hook = [&] {
        ++looked;
        EXPECT_FALSE(List().isEnabled());
        for (const char* name : {"CDownAdd", "CDownUp", "CDownOUP"}) EXPECT_FALSE(ButtonOf(name).isEnabled());
        EXPECT_FALSE(Named<QCheckBox>(window, "COnlySel").isEnabled());
        EXPECT_TRUE(ButtonOf("CExit").isEnabled());
        QTest::mouseClick(&ButtonOf("CDownAdd"), Qt::LeftButton);
        // A Return that is held down must not end what it has begun.
        if (QWidget* const focus = window.focusWidget()) QTest::keyClick(focus, Qt::Key_Return);
        EXPECT_FALSE(form.Aborted);
    };
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_GT(looked, 0);
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_TRUE(List().isEnabled());
    EXPECT_TRUE(List().hasFocus()) << "the keys go on where they were";
}

TEST_F(FormDownloadTLETest, AReturnThatIsHeldDownPressesOnce) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    ClickLine(LineOf("GEO"));
    QTest::keyPress(&List(), Qt::Key_Return);
    for (QWidget* widget : {static_cast<QWidget*>(&List()), static_cast<QWidget*>(&ButtonOf("CDownUp"))}) {
        widget->setFocus();
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QApplication::sendEvent(widget, &again);
    }
    EXPECT_EQ(TextOf("LProg"), "Added Satellites #1 (0 updated)");
}

TEST_F(FormDownloadTLETest, AButtonKeepsTheFocus) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    ClickLine(LineOf("GEO"));
    ButtonOf("CDownOUP").setFocus();
    QTest::keyClick(&ButtonOf("CDownOUP"), Qt::Key_Space);
    EXPECT_EQ(TextOf("LProg"), "Added Satellites #0 (0 updated)");
    EXPECT_TRUE(ButtonOf("CDownOUP").hasFocus());
}

TEST_F(FormDownloadTLETest, EscapeEndsADownloadAndCloses) {
    form.Visible.SetHandler([&] {
        if (!form.Visible) downloads.Form_Unload();
    });
    network.answers[FileAt("geo")] = {.text = SetOf("A", "00001"), .waits = 1};
    ClickLine(LineOf("GEO"));
    events.hook = [&] {
        if (!network.asked.empty() && window.isVisible()) QTest::keyClick(&window, Qt::Key_Escape);
    };
    QTest::mouseClick(&ButtonOf("CDownAdd"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(app.Data.SatCount, 0);
    EXPECT_TRUE(boxes.messages.empty());
    form.Visible.SetHandler({});
}

TEST_F(FormDownloadTLETest, EachControlIsReachedByTab) {
    ClickLine(3);
    std::set<QString> reached;
    for (int i = 0; i < 20; ++i) {
        reached.insert(window.focusWidget()->objectName());
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    for (const char* name :
         {"LSiteTLE", "OUpdateAlways0", "COnlySel", "CSelSat", "CDownAdd", "CDownUp", "CDownOUP", "CExit"})
        EXPECT_TRUE(reached.contains(name)) << name;
    for (const QWidget* widget : window.findChildren<QWidget*>())
        if (widget->focusPolicy() != Qt::NoFocus && !widget->objectName().startsWith("qt_"))
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
}

TEST_F(FormDownloadTLETest, LongWordsFindRoom) {
    form.LProg.Caption = std::string(
        "ERROR: Invalid TLE Text (2870 satellites added and 130 updated before that); kept text, fetched 23 hours 59 "
        "minutes ago, and the server has none newer");
    form.LTotal.Caption = std::string("26 of 26 sources: 3000 satellites added, 3000 updated");
    QTest::qWait(1);
    testing::ExpectNothingClipped(window);
}

}  // namespace
}  // namespace glintara::desktop
