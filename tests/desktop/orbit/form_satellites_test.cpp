#include "desktop/orbit/form_satellites.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBrush>
#include <QCheckBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPalette>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <functional>
#include <set>

#include "desktop/window_checks.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/satellite_manager.h"
#include "orbit/satellite_table.h"
#include "state/recording_services.h"

namespace glintara::desktop {
namespace {

using testing::ExpectNothingClipped;
using testing::Named;
using testing::Open;

class NoEvents : public Events {
  public:
    void ServeEvents() override {}
};

/// Tells the window, as the program does.
class WindowTeller : public WindowSignals {
  public:
    void UpDateAll() override { satellite_manager::UpDateAll(*app); }
    void ShowWorkingSatellite() override {
        if (tellsOfWorking) satellite_manager::ShowWorkingSatellite(*app);
    }
    void UpdateGraphicsLevel2() override { ++pictures; }

    Application* app = nullptr;
    bool tellsOfWorking = true;
    int pictures = 0;
};

struct FormSatellitesTest : ::testing::Test {
    FormSatellitesTest() {
        windows.app = &app;
        satellite_manager::Connect(app);
        app.Satellites.Visible.SetHandler([this] {
            if (form && !app.Satellites.Visible) form->close();
        });
        Load("iridium.tle");
        form = std::make_unique<FormSatellites>(app, nullptr);
        list = &Named<QListView>(*form, "LSat");
        Open(*form);
        list->setFocus();
    }

    void Load(const char* file) {
        ASSERT_TRUE(LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/" + file));
        CApplyTLEOrbit_click(app);
        ASSERT_TRUE(boxes.messages.empty());
    }

    QString Text(int row) const { return list->model()->index(row, 0).data().toString(); }

    int RowOfName(const char* name) const {
        for (int row = 0; row < list->model()->rowCount(); ++row)
            if (Text(row).mid(kListNameColumn) == name) return row;
        ADD_FAILURE() << "no row of " << name;
        return 0;
    }

    void Click(int row, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, PlaceOf(row));
    }

    void DoubleClick(int row) {
        Click(row);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, PlaceOf(row));
        QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, PlaceOf(row));
    }

    QPoint PlaceOf(int row) const {
        list->scrollTo(list->model()->index(row, 0));
        return list->visualRect(list->model()->index(row, 0)).center();
    }

    void Press(const char* button) { QTest::mouseClick(&Named<QPushButton>(*form, button), Qt::LeftButton); }

    /// Orbit numbers of the satellites that the table has selected.
    std::set<int> InTable() const {
        std::set<int> numbers;
        for (int index = 1; index <= app.Data.SatCount; ++index)
            if (app.Data.Satellite(index).Selected) numbers.insert(app.Data.Satellite(index).OrbitNumber);
        return numbers;
    }

    /// The same as the list shows it.
    std::set<int> InList() const {
        std::set<int> numbers;
        for (const QModelIndex& row : list->selectionModel()->selectedRows()) numbers.insert(row.row() + 1);
        return numbers;
    }

    void ExpectSelected(const std::set<int>& numbers) const {
        EXPECT_EQ(InTable(), numbers);
        EXPECT_EQ(InList(), numbers);
        EXPECT_EQ(Named<QLabel>(*form, "LSel").text(),
                  QString("%1 of %2 selected").arg(numbers.size()).arg(app.Data.SatCount));
    }

    SatRecord& WithNumber(int orbitNumber) { return app.Data.Satellite(SearchOrbitNumber(app.Data, orbitNumber)); }
    const SatRecord& Working() const { return app.Data.Satellite(app.Data.SatCount); }

    glintara::testing::RecordingBoxes boxes;
    NoEvents events;
    WindowTeller windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
    std::unique_ptr<FormSatellites> form;
    QListView* list = nullptr;
};

// What it shows.

TEST_F(FormSatellitesTest, ShowsOneLineASatelliteInTheOrderOfTheirNumbers) {
    EXPECT_EQ(form->windowTitle(), "Satellites");
    ASSERT_EQ(list->model()->rowCount(), 86);
    // The first set of the file.
    EXPECT_EQ(Text(0), "[XOO] 0001 (24793)   IRIDIUM 7 [+]");
    for (int row = 0; row < 86; ++row) EXPECT_EQ(Text(row).mid(6, 4).toInt(), row + 1);
    ExpectSelected({});
}

TEST_F(FormSatellitesTest, ElementSetsThatAreLoadedAppearAndTheRestStaysAsItWas) {
    Click(3);
    Click(40, Qt::ControlModifier);
    const int scrolled = list->verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    Load("stations.tle");
    const int count = app.Data.SatCount;
    EXPECT_GT(count, 86);
    EXPECT_EQ(list->model()->rowCount(), count);
    EXPECT_EQ(Text(count - 1).mid(kListNameColumn).toStdString(), Working().Name);
    ExpectSelected({4, 41});
    EXPECT_EQ(list->currentIndex().row(), 40);
    EXPECT_EQ(list->verticalScrollBar()->value(), scrolled);
}

TEST_F(FormSatellitesTest, AnEmptyListIsHarmless) {
    app.Data.SatCount = 0;
    satellite_manager::UpDateAll(app);
    for (const char* button : {"CSelectAll", "CDeselectAll", "CInvertSel"}) Press(button);
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClicks(list, "iri");
    EXPECT_EQ(list->model()->rowCount(), 0);
    ExpectSelected({});
    EXPECT_TRUE(Named<QLabel>(*form, "LWorkingSat").text().isEmpty());
}

TEST_F(FormSatellitesTest, SwitchesThatAnotherRoomSetsAreShown) {
    WithNumber(5).OptionFlags = "0100000000000000";
    satellite_manager::UpDateAll(app);
    EXPECT_TRUE(Text(4).startsWith("[OXO] 0005 "));
}

TEST_F(FormSatellitesTest, NothingIsClipped) { ExpectNothingClipped(*form); }

// The selection, both ways.

TEST_F(FormSatellitesTest, ClicksSelectInTheTable) {
    Click(2);
    ExpectSelected({3});
    Click(5, Qt::ShiftModifier);
    ExpectSelected({3, 4, 5, 6});
    Click(4, Qt::ControlModifier);
    Click(9, Qt::ControlModifier);
    ExpectSelected({3, 4, 6, 10});
    Click(0);
    ExpectSelected({1});
}

TEST_F(FormSatellitesTest, KeysSelectInTheTable) {
    Click(10);
    QTest::keyClick(list, Qt::Key_Down);
    ExpectSelected({12});
    QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
    ExpectSelected({12, 13});
    QTest::keyClick(list, Qt::Key_Home);
    ExpectSelected({1});
    QTest::keyClick(list, Qt::Key_End);
    ExpectSelected({86});
    QTest::keyClick(list, Qt::Key_Up, Qt::ControlModifier);
    ExpectSelected({86});
    QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
    ExpectSelected({85, 86});
    QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(InTable().size(), 86u);
    EXPECT_EQ(InList().size(), 86u);
}

TEST_F(FormSatellitesTest, ButtonsSelectAllNoneAndTheOthers) {
    Press("CSelectAll");
    EXPECT_EQ(InTable().size(), 86u);
    Click(7);
    Press("CInvertSel");
    EXPECT_EQ(InTable().size(), 85u);
    EXPECT_EQ(InTable().count(8), 0u);
    EXPECT_EQ(InTable(), InList());
    Press("CInvertSel");
    ExpectSelected({8});
    Press("CDeselectAll");
    ExpectSelected({});
}

TEST_F(FormSatellitesTest, TheTablesSelectionIsShown) {
    WithNumber(2).Selected = true;
    WithNumber(3).Selected = true;
    WithNumber(80).Selected = true;
    satellite_manager::UpDateAll(app);
    ExpectSelected({2, 3, 80});
    WithNumber(3).Selected = false;
    satellite_manager::UpDateAll(app);
    ExpectSelected({2, 80});
}

TEST_F(FormSatellitesTest, ASecondWindowOpensWithTheTablesSelection) {
    Click(4);
    Click(6, Qt::ControlModifier);
    form.reset();
    form = std::make_unique<FormSatellites>(app, nullptr);
    list = &Named<QListView>(*form, "LSat");
    ExpectSelected({5, 7});
}

TEST_F(FormSatellitesTest, TheSelectionStaysWithItsSatellitesWhenTheTableTurns) {
    Click(1);
    Click(20, Qt::ControlModifier);
    ChangeWorkingSatellite(app, 5);
    ExpectSelected({2, 21});
    EXPECT_EQ(Text(4).mid(6, 4), "0005");
    Click(30, Qt::ControlModifier);
    ExpectSelected({2, 21, 31});

    // Even if nobody has told the window.
    windows.tellsOfWorking = false;
    ChangeWorkingSatellite(app, 9);
    ExpectSelected({2, 21, 31});
    EXPECT_EQ(Text(8).mid(6, 4), "0009");
    Click(40, Qt::ControlModifier);
    ExpectSelected({2, 21, 31, 41});
}

// Type-ahead.

TEST_F(FormSatellitesTest, TypingANameFindsIt) {
    QTest::keyClicks(list, "iridium 32");
    EXPECT_EQ(list->currentIndex().row(), RowOfName("IRIDIUM 32 [+]"));
    EXPECT_EQ(InTable(), std::set<int>{RowOfName("IRIDIUM 32 [+]") + 1});
}

TEST_F(FormSatellitesTest, TypingANumberFindsIt) {
    const int row = RowOfName("IRIDIUM 28 [-]");
    QTest::keyClicks(list, Text(row).mid(12, 5));
    EXPECT_EQ(list->currentIndex().row(), row);
}

TEST_F(FormSatellitesTest, ANumberOfSixDigitsIsFoundByItsDigitsAndByItsFiveCharacters) {
    const int row = RowOfName("IRIDIUM 28 [-]");
    app.Data.Satellite(row + 1).SatNumber = "T0001";
    for (const char* typed : {"270001", "t0001"}) {
        Click(0);
        // What was typed before is forgotten.
        QTest::qWait(QApplication::keyboardInputInterval() + 50);
        QTest::keyClicks(list, typed);
        EXPECT_EQ(list->currentIndex().row(), row) << typed;
    }
}

TEST_F(FormSatellitesTest, TypingWhatIsNotThereLeavesTheRow) {
    Click(12);
    QTest::keyClicks(list, "zzz");
    EXPECT_EQ(list->currentIndex().row(), 12);
}

// The working satellite.

TEST_F(FormSatellitesTest, ADoubleClickMakesASatelliteTheWorkingOne) {
    const std::string second = app.Data.Satellite(2).Name;
    const std::string first = app.Data.Satellite(1).Name;
    windows.pictures = 0;
    DoubleClick(0);
    EXPECT_EQ(Working().Name, first);
    EXPECT_EQ(app.Data.Satellite(1).Name, second);
    EXPECT_EQ(windows.pictures, 1);
    // Its row stays where it is.
    EXPECT_EQ(Text(0).mid(kListNameColumn).toStdString(), first);
    EXPECT_EQ(Named<QLabel>(*form, "LWorkingSat").text(), Text(0));
    EXPECT_TRUE(list->model()->index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(list->model()->index(85, 0).data(Qt::FontRole).isValid());
}

TEST_F(FormSatellitesTest, ReturnMakesASatelliteTheWorkingOneAndLeavesTheWindowOpen) {
    Click(8);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(Working().OrbitNumber, 9);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FormSatellitesTest, EachRowKnowsThePlaceOfItsSatelliteInTheTable) {
    const auto place = [this](int row) { return list->model()->index(row, 0).data(Qt::UserRole).toInt(); };
    for (int row = 0; row < 86; ++row) EXPECT_EQ(place(row), row + 1);
    DoubleClick(0);
    EXPECT_EQ(place(0), 86);
    for (int row = 1; row < 86; ++row) EXPECT_EQ(place(row), row) << "those behind it moved down";
    DoubleClick(40);
    EXPECT_EQ(place(40), 86);
    EXPECT_EQ(place(0), 85);
    EXPECT_EQ(place(39), 39);
    EXPECT_EQ(place(41), 40);
}

TEST_F(FormSatellitesTest, ADoubleClickLeavesASelectionOfManyAlone) {
    Click(2);
    Click(6, Qt::ShiftModifier);
    DoubleClick(40);
    EXPECT_EQ(Working().OrbitNumber, 41);
    ExpectSelected({3, 4, 5, 6, 7});
    Click(9);
    DoubleClick(12);
    ExpectSelected({13});
}

TEST_F(FormSatellitesTest, TheElementsOfTheWorkingSatelliteAreShown) {
    auto& elements = Named<QPlainTextEdit>(*form, "TTLE");
    EXPECT_TRUE(elements.isReadOnly());
    DoubleClick(0);
    const SatRecord& first = Working();
    EXPECT_EQ(elements.toPlainText().toStdString(), first.Name + "\n" + first.Line1 + "\n" + first.Line2 + "\n");
    EXPECT_GE(elements.viewport()->height(), 3 * elements.fontMetrics().lineSpacing());
}

TEST_F(FormSatellitesTest, TheWindowOpensOnTheSatelliteThatWorks) {
    ChangeWorkingSatellite(app, 50);
    form->close();
    Open(*form);
    EXPECT_EQ(list->currentIndex().row(), 49);
    EXPECT_TRUE(list->viewport()->rect().contains(list->visualRect(list->currentIndex())));
    ExpectSelected({});
}

TEST_F(FormSatellitesTest, TheWorkingSatelliteIsGoldenAndDisabledOnesAreQuiet) {
    const auto color = [this](int row) {
        return list->model()->index(row, 0).data(Qt::ForegroundRole).value<QBrush>().color();
    };
    EXPECT_EQ(color(85), QGuiApplication::palette().color(QPalette::Highlight));
    EXPECT_FALSE(list->model()->index(3, 0).data(Qt::ForegroundRole).isValid());
    WithNumber(4).OptionFlags = "0100000000000000";
    EXPECT_EQ(color(3), QGuiApplication::palette().color(QPalette::PlaceholderText));
}

TEST_F(FormSatellitesTest, TheRowOfTheKeysIsNotTakenForASelectedOne) {
    // Their grounds, behind the names.
    const auto ground = [this](const QImage& image, int row) {
        const QRect place = list->visualRect(list->model()->index(row, 0));
        return image.pixelColor(place.right() - 10, place.center().y());
    };
    Click(4);
    QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
    ASSERT_EQ(list->currentIndex().row(), 6);
    ExpectSelected({5});
    ASSERT_TRUE(list->hasFocus());
    const QImage image = list->viewport()->grab().toImage();
    const QRect current = list->visualRect(list->currentIndex());
    EXPECT_EQ(ground(image, 6), ground(image, 8));
    EXPECT_NE(ground(image, 4), ground(image, 8));
    EXPECT_NE(image.pixelColor(current.center().x(), current.top()), ground(image, 8)) << "it has a frame";
}

// The filter.

TEST_F(FormSatellitesTest, ReturnInTheFilterSelectsWhatItFinds) {
    auto& with = Named<QLineEdit>(*form, "TWith");
    with.setFocus();
    QTest::keyClicks(&with, "iridium 3");
    QTest::keyClick(&with, Qt::Key_Return);
    std::set<int> expected;
    for (int row = 0; row < 86; ++row)
        if (Text(row).mid(kListNameColumn).contains("IRIDIUM 3")) expected.insert(row + 1);
    ASSERT_GT(expected.size(), 3u);
    ExpectSelected(expected);
    EXPECT_TRUE(form->isVisible());
    auto& without = Named<QLineEdit>(*form, "TWithout");
    QTest::keyClicks(&without, "[+]");
    Press("CFindAnd");
    EXPECT_LT(InTable().size(), expected.size());
    EXPECT_EQ(InTable(), InList());
}

TEST_F(FormSatellitesTest, WhatTheFilterFindsComesIntoSight) {
    Load("stations.tle");
    list->scrollToTop();
    auto& with = Named<QLineEdit>(*form, "TWith");
    with.setFocus();
    QTest::keyClicks(&with, "iss (zarya)");
    const int row = RowOfName("ISS (ZARYA)");
    ASSERT_FALSE(list->viewport()->rect().intersects(list->visualRect(list->model()->index(row, 0))));
    QTest::keyClick(&with, Qt::Key_Return);
    EXPECT_TRUE(list->viewport()->rect().contains(list->visualRect(list->model()->index(row, 0))));
    // What is in sight stays where it is.
    const int scrolled = list->verticalScrollBar()->value();
    QTest::keyClick(&with, Qt::Key_Return);
    EXPECT_EQ(list->verticalScrollBar()->value(), scrolled);
}

TEST_F(FormSatellitesTest, KeysGoOnAfterAClickOnACheckBox) {
    auto& box = Named<QCheckBox>(*form, "CMCase");
    auto& with = Named<QLineEdit>(*form, "TWith");
    QTest::mouseClick(&with, Qt::LeftButton);
    QTest::keyClicks(&with, "iridium");
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, box.height() / 2));
    EXPECT_TRUE(app.Satellites.CMCase.Value);
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    ExpectSelected({});  // none has small letters
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, box.height() / 2));
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(InList().size(), 86u);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, box.height() / 2));
    QTest::keyClick(form->focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormSatellitesTest, CtrlASelectsTheTextOfAFieldThatIsTypedIn) {
    auto& with = Named<QLineEdit>(*form, "TWith");
    with.setFocus();
    QTest::keyClicks(&with, "iridium");
    QTest::keyClick(&with, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(with.selectedText(), "iridium");
    ExpectSelected({});
}

// Switches.

TEST_F(FormSatellitesTest, SwitchesOfTheSelectedShowInTheirLines) {
    Click(3);
    Click(5, Qt::ControlModifier);
    windows.pictures = 0;
    Press("CDisable");
    EXPECT_EQ(windows.pictures, 1);
    EXPECT_TRUE(Text(3).startsWith("[XXO] 0004"));
    EXPECT_TRUE(Text(5).startsWith("[XXO] 0006"));
    EXPECT_TRUE(Text(4).startsWith("[XOO] 0005"));
    ExpectSelected({4, 6});
    Press("CShowOrbit");
    EXPECT_TRUE(Text(3).startsWith("[OXO]"));
    Press("CSelEnabled");
    EXPECT_EQ(InTable().size(), 84u);
    EXPECT_EQ(InTable().count(4), 0u);
    EXPECT_EQ(InTable(), InList());
    Press("CSelectAll");
    Press("CEnable");
    Press("CHideOrbit");
    for (int row = 0; row < 86; ++row) EXPECT_TRUE(Text(row).startsWith("[XOO]")) << row;
}

TEST_F(FormSatellitesTest, ButtonsForTheSelectedWaitForSome) {
    const auto& button = Named<QPushButton>(*form, "CDisable");
    EXPECT_FALSE(button.isEnabled());
    Click(3);
    EXPECT_TRUE(button.isEnabled());
    Press("CDeselectAll");
    EXPECT_FALSE(button.isEnabled());
}

// The window.

TEST_F(FormSatellitesTest, EscapeAndTheButtonClose) {
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    Open(*form);
    EXPECT_EQ(Named<QPushButton>(*form, "CClose").text(), "CLOSE");
    Press("CClose");
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormSatellitesTest, TabGoesThroughListAndButtons) {
    QStringList seen{form->focusWidget()->objectName()};
    Press("CSelectAll");  // what acts on the selected can be pressed
    list->setFocus();
    for (int k = 0; k < 18; ++k) {
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
        seen << form->focusWidget()->objectName();
    }
    EXPECT_EQ(
        seen.join(" "),
        "LSat TWith TWithout CMCase CFindOr CFindAnd CSelectAll CDeselectAll CInvertSel CSelEnabled CAdvSelection "
        "CEnable CDisable CShowOrbit CHideOrbit CClearAllMirrors TTLE CClose LSat");
}

// The view lays out what it is told has changed: a word for each of three thousand rows would be three thousand
// layouts.
TEST_F(FormSatellitesTest, AFullTableChangesInFewWords) {
    const SatRecord sample = app.Data.Satellite(1);
    while (app.Data.SatCount < kSatCapacity) {
        SatRecord& copy = app.Data.Satellite(++app.Data.SatCount);
        copy = sample;
        copy.OrbitNumber = static_cast<std::int16_t>(app.Data.SatCount);
        copy.Selected = app.Data.SatCount % 2 == 0;
    }
    QSignalSpy resets(list->model(), &QAbstractItemModel::modelReset);
    QSignalSpy inserted(list->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(list->model(), &QAbstractItemModel::dataChanged);
    satellite_manager::UpDateAll(app);
    QCoreApplication::processEvents();
    EXPECT_EQ(list->model()->rowCount(), kSatCapacity);
    Press("CInvertSel");
    Click(1499, Qt::ControlModifier);
    QTest::keyClick(list, Qt::Key_End);
    QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
    EXPECT_LT(resets.count() + inserted.count() + changed.count(), 12);
    EXPECT_EQ(InTable().size(), static_cast<std::size_t>(kSatCapacity));
}

}  // namespace
}  // namespace glintara::desktop
