#include "desktop/flare/form_find_flare.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <set>

#include "desktop/main/qt_services.h"
#include "desktop/main/window_memory.h"
#include "desktop/window_checks.h"
#include "flare/observed_night.h"
#include "flare/search.h"

namespace glintara::desktop {
namespace {

using observed_night::kNight;
using observed_night::Observatory;
using observed_night::RecordingClock;
using observed_night::SetInstant;
using testing::ExpectNothingClipped;
using testing::Named;
using testing::Open;

/// The window over an observatory whose events are those of Qt.
struct FormFindFlareTest : ::testing::Test {
    FormFindFlareTest() {
        controls.CFindFirst.SetClickHandler([this] { CFindFirst_click(o.app, clock); });
        controls.CFindNext.SetClickHandler([this] { CFindNext_click(o.app, clock); });
        controls.CAbort.SetClickHandler([this] { CAbort_click(o.app); });
        o.events.hook = [this] {
            QCoreApplication::processEvents();
            if (during) during();
        };
        Open(form);
    }

    void Press(const char* button) { QTest::mouseClick(&Named<QPushButton>(form, button), Qt::LeftButton); }
    bool IsOn(const char* button) const { return Named<QPushButton>(form, button).isEnabled(); }
    QString Status() const { return Named<QLabel>(form, "LStatus").text(); }

    /// Puts the text into a field as a user does.
    void Type(const char* field, const char* text) {
        auto& edit = Named<QLineEdit>(form, field);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClick(&edit, Qt::Key_Backspace);
        QTest::keyClicks(&edit, text);
    }

    void ExpectIdle() const {
        EXPECT_FALSE(IsOn("CAbort"));
        for (const char* button : {"CFindFirst", "CFindNext", "CExit", "CSatList"}) EXPECT_TRUE(IsOn(button)) << button;
        EXPECT_EQ(Named<QProgressBar>(form, "PB1").value(), 0);
    }

    Observatory o;
    RecordingClock clock{o.app.Data};
    FindFlareControls& controls = o.app.FindFlare;
    QTemporaryDir folder;
    QSettings store{folder.filePath("windows.ini"), QSettings::IniFormat};
    std::function<void()> during;  ///< what happens whenever a search lets the window breathe
    FormFindFlare form{o.app, nullptr};
};

// The window as it opens.

TEST_F(FormFindFlareTest, OpensWithItsTextsAndDefaults) {
    EXPECT_EQ(form.windowTitle(), "Search Flares / Transits");
    EXPECT_EQ(Named<QGroupBox>(form, "FrameSearch").title(), "Search Flare Parameters");
    EXPECT_EQ(Named<QLabel>(form, "LInterval").text(), "Searching Interval [hours] :");
    EXPECT_EQ(Named<QLabel>(form, "LDist").text(), "Maximum Distance [km] :");
    EXPECT_EQ(Named<QLineEdit>(form, "TInterval").text(), "24");
    EXPECT_EQ(Named<QLineEdit>(form, "TMaxDistance").text(), "30");
    EXPECT_EQ(Named<QCheckBox>(form, "CAutoWSet").text(), "Set found satellite as working satellite");
    EXPECT_EQ(Named<QPushButton>(form, "CFindFirst").text(), "Find First");
    EXPECT_EQ(Named<QPushButton>(form, "CFindNext").text(), "Find Next");
    EXPECT_EQ(Status(), "Warning: search will involve only selected satellites");
    ExpectIdle();
}

TEST_F(FormFindFlareTest, EachOpeningShowsTheWarningAgainAndKeepsTheFields) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    Type("TInterval", "1");
    Press("CFindFirst");
    EXPECT_EQ(Status(), "Flare Not Found");
    Press("CExit");
    EXPECT_FALSE(form.isVisible());
    Open(form);
    EXPECT_EQ(Status(), "Warning: search will involve only selected satellites");
    EXPECT_EQ(Named<QLineEdit>(form, "TInterval").text(), "1");
}

TEST_F(FormFindFlareTest, NothingIsClipped) {
    ExpectNothingClipped(form);
    controls.LStatus.Caption = "Flare Found! (A SATELLITE WITH A NAME OF UNUSUAL LENGTH, AND MORE OF IT BEHIND)";
    ExpectNothingClipped(form);
}

TEST_F(FormFindFlareTest, EveryControlHasANameAndAToolTip) {
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus) continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->objectName().toStdString();
    }
    EXPECT_FALSE(Named<QProgressBar>(form, "PB1").accessibleName().isEmpty());
}

TEST_F(FormFindFlareTest, TabGoesThroughFieldsAndButtonsInReadingOrder) {
    QStringList seen{form.focusWidget()->objectName()};
    for (int k = 0; k < 7; ++k) {
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        seen << form.focusWidget()->objectName();
    }
    EXPECT_EQ(seen.join(" "), "TInterval TMaxDistance CAutoWSet CFindFirst CFindNext CSatList CExit TInterval");
}

TEST_F(FormFindFlareTest, WhatIsTypedFirstTakesThePlaceOfTheInterval) {
    QTest::keyClicks(form.focusWidget(), "96");
    EXPECT_EQ(controls.TInterval.Text.Get(), "96");
}

TEST_F(FormFindFlareTest, EscapeCloses) {
    QTest::keyClick(&Named<QLineEdit>(form, "TInterval"), Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormFindFlareTest, ItsPlaceIsRememberedUnderItsName) {
    store.setValue("FormFindFlare/x", 60);
    store.setValue("FormFindFlare/y", 70);
    store.setValue("FormFindFlare/width", 450);
    store.setValue("FormFindFlare/height", 300);
    form.hide();
    RememberPlace(form, store);
    Open(form);
    EXPECT_EQ(form.pos(), QPoint(60, 70));
    EXPECT_EQ(form.size(), QSize(450, 300));
    form.move(80, 90);
    QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(store.value("FormFindFlare/x").toInt(), 80);
    EXPECT_EQ(store.value("FormFindFlare/y").toInt(), 90);
}

TEST_F(FormFindFlareTest, TheListOfSatellitesIsAskedFor) {
    int asked = 0;
    controls.CSatList.SetClickHandler([&] { ++asked; });
    Press("CSatList");
    EXPECT_EQ(asked, 1);
}

// What is typed.

TEST_F(FormFindFlareTest, TextThatIsNoNumberIsMarkedAndToldUntilItIsMended) {
    auto& field = Named<QLineEdit>(form, "TInterval");
    for (const QString typed : {"abc", "12 hours", "1,5", "", "1e999"}) {
        Type("TInterval", typed.toUtf8());
        EXPECT_TRUE(field.property("bad").toBool()) << typed.toStdString();
        Named<QLineEdit>(form, "TMaxDistance").setFocus();
        EXPECT_EQ(field.text(), typed) << "what was typed is not lost";
        EXPECT_EQ(Status(), "Not a number: " + typed);
        EXPECT_TRUE(field.property("bad").toBool()) << typed.toStdString();
        Press("CFindFirst");
        EXPECT_EQ(Status(), "Not a number: " + typed);
        Type("TInterval", "24");
        EXPECT_FALSE(field.property("bad").toBool());
        EXPECT_EQ(Status(), "");
    }
    EXPECT_TRUE(clock.instants.empty());
}

TEST_F(FormFindFlareTest, ANegativeNumberGivesWayToNone) {
    auto& field = Named<QLineEdit>(form, "TInterval");
    Type("TInterval", "-5");
    EXPECT_TRUE(field.property("bad").toBool());
    Named<QLineEdit>(form, "TMaxDistance").setFocus();
    EXPECT_EQ(field.text(), "0");
    EXPECT_EQ(controls.TInterval.Text.Get(), "0");
    EXPECT_FALSE(field.property("bad").toBool());
}

TEST_F(FormFindFlareTest, AFoundFlareIsToldWithWhatAnObserverNeeds) {
    o.Load("iridium.tle");
    Press("CFindFirst");
    EXPECT_EQ(Named<QLabel>(form, "LFlareTime").text(), "Nearest 20/01/2018 05:03:23.6 UTC, 2.54 km away");
    EXPECT_EQ(Named<QLabel>(form, "LFlareSky").text(),
              QString::fromUtf8("Azimuth 350.6\u00B0, elevation 37.4\u00B0, Sun at -20.5\u00B0"));
    ExpectNothingClipped(form);
    Press("CExit");
    Open(form);
    EXPECT_EQ(Named<QLabel>(form, "LFlareTime").text(), "");
}

TEST_F(FormFindFlareTest, OldElementsAreWarnedOf) {
    auto& label = Named<QLabel>(form, "LElementAge");
    EXPECT_FALSE(label.isVisible());
    const QRect before = Named<QProgressBar>(form, "PB1").geometry();
    controls.LElementAge.Caption = "2999 of 3000 elements up to 3254 days old: positions will be off";
    controls.LElementAge.Visible = true;
    QCoreApplication::processEvents();
    EXPECT_TRUE(label.isVisible());
    EXPECT_EQ(Named<QProgressBar>(form, "PB1").geometry(), before) << "nothing jumps";
    ExpectNothingClipped(form);
}

TEST_F(FormFindFlareTest, GoodNumbersStayAsTheyAreTyped) {
    auto& field = Named<QLineEdit>(form, "TMaxDistance");
    for (const char* typed : {"7.5", "0", " 30 ", "1e2", "007"}) {
        Type("TMaxDistance", typed);
        EXPECT_FALSE(field.property("bad").toBool()) << typed;
        Named<QLineEdit>(form, "TInterval").setFocus();
        EXPECT_EQ(field.text(), typed);
    }
}

TEST_F(FormFindFlareTest, ThePointIsTheDecimalMarkWhereverTheUserLives) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    // The flare at 5:03 lies in the sixth window; 4.5 hours reach the fifth.
    Type("TInterval", "4.5");
    QTest::keyClick(&Named<QLineEdit>(form, "TInterval"), Qt::Key_Return);
    EXPECT_EQ(Status(), "Flare Not Found");
    Type("TInterval", "5.5");
    QTest::keyClick(&Named<QLineEdit>(form, "TInterval"), Qt::Key_Return);
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    QLocale::setDefault(before);
}

// A search.

TEST_F(FormFindFlareTest, FindsTheNightsFirstFlareAndTheNextOnes) {
    o.Load("iridium.tle");
    Press("CFindFirst");
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    ASSERT_EQ(clock.instants.size(), 1u);
    const CalendarFields first = JDToDate(clock.instants[0]);
    EXPECT_EQ(first.hour, 5);
    EXPECT_EQ(first.minute, 3);
    ExpectIdle();

    Press("CFindNext");
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 18 [+])");
    Press("CFindNext");
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 64 [+])");
    Press("CFindNext");
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 28 [-])");
    EXPECT_TRUE(std::is_sorted(clock.instants.begin(), clock.instants.end()));
    ExpectIdle();
}

TEST_F(FormFindFlareTest, ReturnSearchesFromAField) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    Type("TInterval", "6");
    QTest::keyClick(&Named<QLineEdit>(form, "TInterval"), Qt::Key_Return);
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    EXPECT_TRUE(form.isVisible());
}

TEST_F(FormFindFlareTest, TheFoundSatelliteWorksOnlyWhenTheBoxIsTicked) {
    o.Load("iridium.tle");
    const std::string before = o.app.Data.Satellite(o.app.Data.SatCount).Name;
    Press("CFindFirst");
    EXPECT_EQ(o.app.Data.Satellite(o.app.Data.SatCount).Name, before);
    SetInstant(o.app.Data, kNight);
    QTest::mouseClick(&Named<QCheckBox>(form, "CAutoWSet"), Qt::LeftButton, {}, QPoint(8, 8));
    Press("CFindFirst");
    EXPECT_EQ(o.app.Data.Satellite(o.app.Data.SatCount).Name, "IRIDIUM 32 [+]");
}

TEST_F(FormFindFlareTest, SaysWhenNothingIsSelectedOrNothingIsFound) {
    o.Load("iridium.tle");
    o.SelectAll(false);
    Press("CFindFirst");
    EXPECT_EQ(Status(), "Warning: No Satellite Selected / No Mirror Found");
    o.SelectAll(true);
    Type("TMaxDistance", "0");
    Press("CFindFirst");
    EXPECT_EQ(Status(), "Flare Not Found");
    EXPECT_TRUE(clock.instants.empty());
}

TEST_F(FormFindFlareTest, OnlyAbortCanBePressedWhileItSearches) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    Type("TInterval", "4");
    QStringList texts;
    std::vector<int> percents;
    during = [&] {
        texts << Status();
        percents.push_back(Named<QProgressBar>(form, "PB1").value());
        EXPECT_TRUE(IsOn("CAbort"));
        for (const char* button : {"CFindFirst", "CFindNext", "CExit", "CSatList"})
            EXPECT_FALSE(IsOn(button)) << button;
        Press("CFindFirst");
        QTest::keyClick(&Named<QLineEdit>(form, "TInterval"), Qt::Key_Return);
    };
    Press("CFindFirst");
    EXPECT_EQ(texts.join("|"),
              "Searching...|Searching... (0 hour)|Searching... (1 hour)|Searching... (2 hour)|Searching... (3 hour)|"
              "Searching... (4 hour)");
    EXPECT_EQ(percents, (std::vector<int>{0, 0, 25, 50, 75, 100}));
    EXPECT_EQ(Status(), "Flare Not Found");
    ExpectIdle();
}

TEST_F(FormFindFlareTest, AbortEndsTheSearchAndLeavesTheText) {
    o.Load("iridium.tle");
    during = [&] {
        if (Status() == "Searching... (3 hour)") Press("CAbort");
    };
    Press("CFindFirst");
    EXPECT_EQ(Status(), "Searching... (3 hour)");
    EXPECT_TRUE(clock.instants.empty());
    ExpectIdle();
    EXPECT_TRUE(form.isVisible());
}

TEST_F(FormFindFlareTest, EscapeAbortsASearchAndOnlyTheNextOneCloses) {
    o.Load("iridium.tle");
    during = [&] {
        if (Status() == "Searching... (2 hour)") QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
    };
    Press("CFindFirst");
    QCoreApplication::processEvents();
    EXPECT_EQ(Status(), "Searching... (2 hour)");
    EXPECT_TRUE(form.isVisible());
    ExpectIdle();
    QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FormFindFlareTest, ClosingWhileItSearchesAbortsAndClosesAfterwards) {
    o.Load("iridium.tle");
    during = [&] {
        if (Status() == "Searching... (2 hour)") {
            EXPECT_FALSE(form.close());
            EXPECT_TRUE(form.isVisible());
        }
    };
    Press("CFindFirst");
    EXPECT_TRUE(clock.instants.empty());
    ExpectIdle();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !form.isVisible(); }));

    // It opens again as ever.
    during = nullptr;
    Open(form);
    Press("CFindFirst");
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    QCoreApplication::processEvents();
    EXPECT_TRUE(form.isVisible());
}

TEST_F(FormFindFlareTest, TheKeyboardIsOnAbortDuringASearchAndBackOnItsButtonAfterwards) {
    o.Load("iridium.tle");
    std::set<QString> focus;
    during = [&] { focus.insert(form.focusWidget()->objectName()); };
    auto& next = Named<QPushButton>(form, "CFindNext");
    next.setFocus();
    QTest::keyClick(&next, Qt::Key_Space);
    EXPECT_EQ(focus, std::set<QString>{"CAbort"});
    EXPECT_EQ(form.focusWidget(), &next);

    // A Return that is still held down does not end what it began.
    SetInstant(o.app.Data, kNight);
    during = [&] { QTest::keyClick(form.focusWidget(), Qt::Key_Return); };
    QTest::keyClick(&next, Qt::Key_Return);
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
}

TEST_F(FormFindFlareTest, TheWindowStaysAwakeWithTheWholeCatalogueSelected) {
    constexpr int kTick = 5;  // ms
    constexpr int kTicksBeforeTheAbort = 20;
    constexpr int kLongestSleep = 1000;  // ms; a hundred times what it takes
    o.Load("all.tle");
    ASSERT_GT(o.app.Data.SatCount, 900);
    Type("TInterval", "50000");
    Type("TMaxDistance", "0.001");
    int ticks = 0;
    qint64 longest = 0;
    QElapsedTimer sinceTick;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        longest = std::max(longest, sinceTick.restart());
        if (++ticks == kTicksBeforeTheAbort) Press("CAbort");
    });
    sinceTick.start();
    timer.start(kTick);
    Press("CFindFirst");
    EXPECT_EQ(ticks, kTicksBeforeTheAbort);
    EXPECT_LT(longest, kLongestSleep);
    EXPECT_TRUE(Status().startsWith("Searching... ("));
    ExpectIdle();
}

/// The warning in a real box over the window.
TEST(FormFindFlareBox, TheSimplePropagatorIsRefused) {
    QtMessageBoxes boxes;
    QtEvents events;
    glintara::testing::RecordingWindows windows;
    Application app(boxes, events, windows);
    RecordingClock clock{app.Data};
    app.FindFlare.CFindFirst.SetClickHandler([&] { CFindFirst_click(app, clock); });
    app.Main.CSGP4.Value = false;
    FormFindFlare form(app, nullptr);
    boxes.SetParent(&form);
    Open(form);
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QTimer::singleShot(0, &form, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        text = box->text();
        icon = box->icon();
        QTest::keyClick(box, Qt::Key_Return);
    });
    QTest::mouseClick(&Named<QPushButton>(form, "CFindFirst"), Qt::LeftButton);
    EXPECT_EQ(text,
              "Flare Search can be performed only with the SDP4/SGP4 propagation model\n"
              "Please switch to the right model.");
    EXPECT_EQ(icon, QMessageBox::Warning);
    EXPECT_TRUE(Named<QPushButton>(form, "CFindFirst").isEnabled());
    EXPECT_EQ(Named<QLabel>(form, "LStatus").text(), "Warning: search will involve only selected satellites");
}

}  // namespace
}  // namespace glintara::desktop
