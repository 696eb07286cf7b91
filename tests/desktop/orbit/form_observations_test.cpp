#include "desktop/orbit/form_observations.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <set>

#include "desktop/main/bindings.h"
#include "desktop/main/window_memory.h"
#include "desktop/window_checks.h"
#include "orbit/element_sets.h"
#include "orbit/files.h"
#include "orbit/observations.h"
#include "orbit/output.h"
#include "state/recording_services.h"

namespace glintara::desktop {
namespace {

using testing::ExpectNothingClipped;
using testing::Named;
using testing::Open;

constexpr const char* kFirst = "25544 98 067A   2701 G 20180120174233508 17 35 0546125-012345 27";
constexpr const char* kSecond = "00005 58 002B   0433 F 20180120180000000 57 35 1200000+450000 18";
constexpr const char* kThird = "12345 80 123AB  6226 T 20180121045901004 25 35 1859001+005959 84 S+045 05  12.345";

/// Tells the open window, as the program does.
class ObservationTeller : public WindowSignals {
  public:
    void RefreshInfo() override {
        if (app != nullptr) observations::RefreshInfo(*app);
    }
    Application* app = nullptr;
};

struct FormObservationsTest : ::testing::Test {
    FormObservationsTest() {
        observations::Connect(app);
        output::Connect(app);
        windows.app = &app;
        form = std::make_unique<FormObservations>(app, store, nullptr);
        controls.Visible.SetHandler([this] {
            if (!controls.Visible) form->close();
        });
        list = &Named<QListView>(*form, "LIOD");
        Open(*form);
    }
    ~FormObservationsTest() override { controls.Visible.SetHandler({}); }

    void Press(const char* button) { QTest::mouseClick(&Named<QPushButton>(*form, button), Qt::LeftButton); }
    bool IsOn(const char* button) const { return Named<QPushButton>(*form, button).isEnabled(); }

    QString Text(const char* field) const { return Named<QLineEdit>(*form, field).text(); }

    /// Puts the text into a field as a user does.
    void Type(const char* field, const char* text) {
        auto& edit = Named<QLineEdit>(*form, field);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClick(&edit, Qt::Key_Backspace);
        QTest::keyClicks(&edit, text);
    }

    void Paste(const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        list->setFocus();
        QTest::keySequence(list, QKeySequence::Paste);
    }

    void PasteThree() { Paste(QString("%1\n%2\n%3\n").arg(kFirst, kSecond, kThird)); }

    void Click(int row, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, PlaceOf(row));
    }

    QPoint PlaceOf(int row) const {
        const QRect place = list->visualRect(list->model()->index(row, 0));
        return {place.left() + 40, place.center().y()};
    }

    QStringList Shown() const {
        QStringList lines;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            lines += list->model()->index(row, 0).data().toString();
        return lines;
    }

    std::set<int> SelectedRows() const {
        std::set<int> rows;
        for (const QModelIndex& row : list->selectionModel()->selectedRows()) rows.insert(row.row());
        return rows;
    }

    /// The field in which a line is being edited.
    QLineEdit& Editor() {
        auto* const editor = list->viewport()->findChild<QLineEdit*>();
        if (editor == nullptr) {
            ADD_FAILURE() << "no line is being edited";
            std::abort();
        }
        return *editor;
    }

    /// Ends the edit of a line with that text.
    void Write(const QString& text) {
        Editor().setText(text);
        QTest::keyClick(&Editor(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([this] { return list->viewport()->findChildren<QLineEdit*>().isEmpty(); }));
        EXPECT_TRUE(form->isVisible());
    }

    /// Chooses a file in the dialog that the next press opens.
    void ChooseFile(const QString& file) {
        QTimer::singleShot(
            0, form.get(),
            [file] {
                for (QWidget* widget : QApplication::topLevelWidgets())
                    if (auto* const dialog = qobject_cast<QFileDialog*>(widget);
                        dialog != nullptr && dialog->isVisible()) {
                        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
                        QMetaObject::invokeMethod(dialog, "accept");
                    }
            });
    }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    ObservationTeller windows;
    Application app{boxes, events, windows};
    ObservationControls& controls = app.Observations;
    QTemporaryDir folder;
    QSettings store{folder.filePath("windows.ini"), QSettings::IniFormat};
    std::unique_ptr<FormObservations> form;
    QListView* list = nullptr;
};

TEST_F(FormObservationsTest, OpensWithItsTextsAndDefaults) {
    EXPECT_EQ(form->windowTitle(), "Observations");
    EXPECT_EQ(Named<QGroupBox>(*form, "FrameObject").title(), "Object Info");
    EXPECT_EQ(Named<QGroupBox>(*form, "FObs1").title(), "Conditions");
    EXPECT_EQ(Named<QCheckBox>(*form, "COInfo").text(), "Take from Selected Satellite");
    EXPECT_FALSE(Named<QCheckBox>(*form, "COInfo").isEnabled());
    EXPECT_EQ(Named<QLabel>(*form, "LSatNumber").text(), "Object Number:");
    EXPECT_EQ(Named<QLabel>(*form, "LIODCaption").text(), "Observations (IOD Format)");
    EXPECT_EQ(Text("TSatNumber"), "00000");
    EXPECT_EQ(Text("TLaunchYear"), "00");
    EXPECT_EQ(Text("TLaunchNumber"), "000");
    EXPECT_TRUE(Named<QRadioButton>(*form, "Option1_1").isChecked());
    EXPECT_EQ(Named<QRadioButton>(*form, "Option1_5").text(), "Terrible");
    EXPECT_FALSE(IsOn("CEnDisPointer"));  // there is no pointer yet
    EXPECT_TRUE(controls.Visible);
}

TEST_F(FormObservationsTest, NothingIsClipped) {
    ExpectNothingClipped(*form);
    PasteThree();
    // The longest line, with all that may stand behind its columns.
    const int needed = list->fontMetrics().horizontalAdvance(Shown()[2]);
    EXPECT_GE(list->viewport()->width(), needed);
}

TEST_F(FormObservationsTest, EveryControlHasANameAndAToolTip) {
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_")) continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->objectName().toStdString();
    }
}

TEST_F(FormObservationsTest, TheTabulatorGoesThroughTheWindowAsItIsRead) {
    PasteThree();
    Named<QLineEdit>(*form, "TSatNumber").setFocus();
    QStringList names;
    for (int i = 0; i < 20; ++i) {
        names += form->focusWidget()->objectName();
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    }
    const QStringList expected{"TSatNumber", "TLaunchYear", "TLaunchNumber", "TLaunchSuffix", "Option1_0",
                               "Option1_1",  "Option1_2",   "Option1_3",     "Option1_4",     "Option1_5",
                               "CApply",     "LIOD",        "TIODLine",      "CAddLine",      "CCopyIOD",
                               "CPasteIOD",  "CDeleteIOD",  "CLoadIOD",      "CSaveIOD",      "CExport"};
    EXPECT_EQ(names, expected);
}

TEST_F(FormObservationsTest, PastesLinesAndShowsTheLastOfThem) {
    PasteThree();
    EXPECT_EQ(Shown(), (QStringList{kFirst, kSecond, kThird}));
    EXPECT_EQ(SelectedRows(), (std::set<int>{0, 1, 2}));
    EXPECT_EQ(Text("TSatNumber"), "12345");
    EXPECT_EQ(Text("TLaunchSuffix"), "AB");
    EXPECT_TRUE(Named<QRadioButton>(*form, "Option1_5").isChecked());
    Press("CPasteIOD");
    EXPECT_EQ(Shown().size(), 6);
    EXPECT_EQ(SelectedRows(), (std::set<int>{3, 4, 5}));
}

TEST_F(FormObservationsTest, WrongTextIsRefusedAndTheListStays) {
    PasteThree();
    Click(1);
    Paste("1 25544U 98067A   18020.50000000  .00000000  00000-0  00000-0 0  9999");
    EXPECT_EQ(Shown().size(), 3);
    EXPECT_EQ(SelectedRows(), (std::set<int>{1}));
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text,
              "The line cannot be read as an observation in the IOD format: column 6 must be blank.\nThe list stays as "
              "it was.");
}

TEST_F(FormObservationsTest, AClickLoadsALineAndApplyRewritesIt) {
    PasteThree();
    Click(0);
    EXPECT_EQ(Text("TSatNumber"), "25544");
    EXPECT_TRUE(Named<QRadioButton>(*form, "Option1_1").isChecked());
    Type("TSatNumber", "20580");
    QTest::mouseClick(&Named<QRadioButton>(*form, "Option1_0"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(Named<QRadioButton>(*form, "Option1_1").isChecked());
    Press("CApply");
    EXPECT_EQ(Shown()[0], "20580 98 067A   2701 E 20180120174233508 17 35 0546125-012345 27");
    EXPECT_EQ(Shown()[1], kSecond);
    EXPECT_EQ(SelectedRows(), (std::set<int>{0}));
}

TEST_F(FormObservationsTest, TheCursorGoesThroughTheLines) {
    PasteThree();
    Click(0);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(Text("TSatNumber"), "00005");
    EXPECT_EQ(controls.LIOD.Selected.Get(), (std::set<int>{1}));
    QTest::keyClick(list, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(controls.LIOD.Selected.Get(), (std::set<int>{0, 1}));
    EXPECT_EQ(Text("TSatNumber"), "25544");
}

TEST_F(FormObservationsTest, CopiesTheSelectedLines) {
    PasteThree();
    Click(0);
    Click(2, Qt::ControlModifier);
    QTest::keySequence(list, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString("%1\n%2\n").arg(kFirst, kThird));
    Click(1);
    Press("CCopyIOD");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString("%1\n").arg(kSecond));
}

TEST_F(FormObservationsTest, DeletesTheSelectedLines) {
    PasteThree();
    Click(0);
    Click(2, Qt::ControlModifier);
    boxes.answer = false;
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(Shown().size(), 3);
    boxes.answer = true;
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(Shown(), QStringList{kSecond});
    EXPECT_FALSE(IsOn("CDeleteIOD"));
    Press("CClearAllIOD");
    EXPECT_TRUE(Shown().isEmpty());
    for (const char* button : {"CClearAllIOD", "CSaveIOD", "CExport", "CCopyIOD"}) EXPECT_FALSE(IsOn(button)) << button;
}

TEST_F(FormObservationsTest, ATypedLineIsAddedByReturn) {
    Type("TIODLine", kSecond);
    QTest::keyClick(&Named<QLineEdit>(*form, "TIODLine"), Qt::Key_Return);
    EXPECT_EQ(Shown(), QStringList{kSecond});
    EXPECT_EQ(Text("TIODLine"), "");
    EXPECT_EQ(Text("TSatNumber"), "00005");
}

TEST_F(FormObservationsTest, ALineIsEditedInItsPlace) {
    PasteThree();
    Click(0);
    QTest::keyClick(list, Qt::Key_Return);
    Write(QString(kFirst).replace("174233508", "174233000"));
    EXPECT_EQ(Shown()[0], QString(kFirst).replace("174233508", "174233000"));
    EXPECT_EQ(Shown().size(), 3);
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(FormObservationsTest, AWrongEditIsRefusedAndKeptBelowTheList) {
    PasteThree();
    Click(0);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, PlaceOf(0));
    Write("25544 wrong");
    EXPECT_EQ(Shown()[0], kFirst);
    EXPECT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(Text("TIODLine"), "25544 wrong");
}

TEST_F(FormObservationsTest, NumbersThatAreNoneAreMarked) {
    const auto marked = [this](const char* field) { return Named<QLineEdit>(*form, field).property("bad").toBool(); };
    EXPECT_FALSE(marked("TSatNumber"));
    Type("TSatNumber", "25x");
    EXPECT_TRUE(marked("TSatNumber"));
    Type("TSatNumber", "T0001");
    EXPECT_FALSE(marked("TSatNumber"));
    Type("TLaunchYear", "a");
    EXPECT_TRUE(marked("TLaunchYear"));
    Press("CApply");
    EXPECT_EQ(Text("TLaunchYear"), "00");
    EXPECT_FALSE(marked("TLaunchYear"));
}

TEST_F(FormObservationsTest, TakesTheObjectFromTheSatelliteAndFollowsIt) {
    app.Main.TTLE.Text = BoxText(ReadWholeFile(GLINTARA_SOURCE_DIR "/data/examples/stations.tle", 1 << 20).value());
    CApplyTLEOrbit_click(app);
    ASSERT_GT(app.Data.SatCount, 1);
    auto& box = Named<QCheckBox>(*form, "COInfo");
    EXPECT_TRUE(box.isEnabled());
    box.click();
    const SatRecord& working = app.Data.Satellite(app.Data.SatCount);
    EXPECT_EQ(FromQt(Text("TSatNumber")), working.SatNumber);
    EXPECT_EQ(FromQt(Text("TLaunchYear")), working.Designator.substr(0, 2));
    for (const char* field : {"TSatNumber", "TLaunchYear", "TLaunchNumber", "TLaunchSuffix"})
        EXPECT_FALSE(Named<QLineEdit>(*form, field).isEnabled()) << field;
    PasteThree();
    Click(1);
    Press("CApply");
    EXPECT_EQ(FromQt(Shown()[1].left(5)), working.SatNumber);
    EXPECT_EQ(Shown()[0], kFirst);
    box.click();
    EXPECT_TRUE(Named<QLineEdit>(*form, "TSatNumber").isEnabled());
}

TEST_F(FormObservationsTest, ADefinedPointIsShownAndSelected) {
    PasteThree();
    app.Data.SetSimInstant({2000, 1, 1, 12, 0, 0}, 2451545.0);
    observations::DefineIODPoint(app, {0, 0}, 0.1, 0.02);
    EXPECT_EQ(Shown().size(), 4);
    EXPECT_EQ(Shown()[3].mid(23, 17), "20000101120000000");
    EXPECT_EQ(SelectedRows(), (std::set<int>{3}));
}

TEST_F(FormObservationsTest, ExportsToTheOutput) {
    PasteThree();
    Press("CExport");
    EXPECT_TRUE(app.Output.Visible);
    EXPECT_NE(app.Output.TOutput.Text.Get().find(std::string(kFirst) + "\r\n" + kSecond + "\r\n" + kThird + "\r\n"),
              std::string::npos);
}

TEST_F(FormObservationsTest, SavesToAFileAndLoadsIt) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    PasteThree();
    const QString file = folder.filePath("night.iod");
    ChooseFile(file);
    Press("CSaveIOD");
    EXPECT_EQ(ReadWholeFile(FromQt(file), 1 << 20), QString("%1\n%2\n%3\n").arg(kFirst, kSecond, kThird).toStdString());
    Press("CClearAllIOD");
    ChooseFile(file);
    Press("CLoadIOD");
    EXPECT_EQ(Shown(), (QStringList{kFirst, kSecond, kThird}));
    EXPECT_EQ(store.value("FormIOD/folder").toString(), folder.path());
}

TEST_F(FormObservationsTest, ALongListIsShownAndSelectedAsAWhole) {
    QString text;
    for (int i = 0; i < 2000; ++i) text += QString(kFirst) + "\n";
    Paste(text);
    EXPECT_EQ(Shown().size(), 2000);
    EXPECT_EQ(SelectedRows().size(), 2000U);
    Click(list->model()->rowCount() - 1);
    EXPECT_EQ(controls.LIOD.Selected.Get(), (std::set<int>{1999}));
}

TEST_F(FormObservationsTest, ClosesWithEscapeAndKeepsItsLines) {
    PasteThree();
    Click(1);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(controls.Visible);
    Open(*form);
    EXPECT_TRUE(controls.Visible);
    EXPECT_EQ(Shown(), (QStringList{kFirst, kSecond, kThird}));
    EXPECT_EQ(SelectedRows(), (std::set<int>{1}));
    Press("CClose");
    EXPECT_FALSE(form->isVisible());
}

TEST_F(FormObservationsTest, RemembersItsPlace) {
    form->close();
    RememberPlace(*form, store);
    Open(*form);
    form->resize(800, 560);
    form->close();
    EXPECT_EQ(store.value("FormIOD/width").toInt(), 800);
}

TEST_F(FormObservationsTest, ReadsAndWritesTheSameInACountryWithCommas) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    PasteThree();
    Click(0);
    Type("TSatNumber", "20580");
    Press("CApply");
    QLocale::setDefault(before);
    EXPECT_EQ(Shown()[0], "20580 98 067A   2701 G 20180120174233508 17 35 0546125-012345 27");
}

}  // namespace
}  // namespace glintara::desktop
