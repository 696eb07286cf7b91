// The windows of the satellite list in the program, and the buttons of the main window that act on the list.

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QListView>
#include <QMessageBox>

#include "desktop/program/window_fixture.h"
#include "desktop/window_checks.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {
namespace {

using testing::Named;

class SatelliteWindowsTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Settle();
        LoadIridium();
    }

    QDialog& Open(const char* entry, const char* name) {
        EntryNamed(entry)->trigger();
        auto& form = Named<QDialog>(window_, name);
        EXPECT_TRUE(WaitFor([&] { return form.isVisible(); }));
        return form;
    }

    /// Answers the question that comes next.
    void AnswerNext(QMessageBox::StandardButton answer) {
        QTimer::singleShot(
            50,
            [this, answer] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                ASSERT_NE(box, nullptr);
                question_ = box->text();
                box->button(answer)->click();
            });
    }

    const SatRecord& Working() const { return app_.Data.Satellite(app_.Data.WorkingSat()); }

    QString question_;
};

TEST_F(SatelliteWindowsTest, TheListOpensAndClosesWithItsControl) {
    QDialog& form = Open("Manage Satellite List...", "FormSatellites");
    EXPECT_TRUE(app_.Satellites.Visible);
    EXPECT_EQ(form.parentWidget(), &window_);
    QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(app_.Satellites.Visible);
    app_.Satellites.Visible = true;
    EXPECT_TRUE(form.isVisible());
    Named<QPushButton>(form, "CClose").click();
    EXPECT_FALSE(form.isVisible());
    app_.Satellites.Visible = true;
    app_.Run.AskToSave = false;
    EXPECT_TRUE(window_.close());
    EXPECT_FALSE(form.isVisible());
}

TEST_F(SatelliteWindowsTest, TheListFollowsTheMainWindow) {
    QDialog& form = Open("Manage Satellite List...", "FormSatellites");
    const auto& working = Named<QLabel>(form, "LWorkingSat");
    const std::string first = app_.Data.Satellite(1).Name;
    Press("Next");
    EXPECT_EQ(Working().Name, first);
    EXPECT_EQ(working.text().toStdString(), SatelliteListLine(Working()));
    EntryNamed("Next Satellite")->trigger();
    EXPECT_EQ(Working().OrbitNumber, 2);
    EXPECT_EQ(working.text().toStdString(), SatelliteListLine(Working()));
    EXPECT_TRUE(main_.Timer2.Enabled) << "a picture is asked for";
    LoadTLEFile(app_, GLINTARA_SOURCE_DIR "/data/examples/stations.tle");
    Press("Add TLE");
    EXPECT_EQ(Named<QListView>(form, "LSat").model()->rowCount(), app_.Data.SatCount);
    EXPECT_EQ(working.text().toStdString(), SatelliteListLine(Working()));
}

TEST_F(SatelliteWindowsTest, TheListIsEmptiedAfterAYesOnly) {
    QDialog& form = Open("Manage Satellite List...", "FormSatellites");
    Open("Model Satellite Surfaces...", "FormMirror");
    EXPECT_FALSE(EntryNamed("Clear Satellite List")->isEnabled()) << "while surfaces are edited";
    EXPECT_FALSE(EntryNamed("Next Satellite")->isEnabled());
    EXPECT_FALSE(ButtonNamed("Next")->isEnabled());
    app_.Mirror.CCancel.Click();
    EXPECT_TRUE(EntryNamed("Clear Satellite List")->isEnabled());
    AnswerNext(QMessageBox::No);
    Press("Clear List");
    EXPECT_EQ(question_, "All the satellites will be removed from the list!\nAre you sure?");
    EXPECT_EQ(app_.Data.SatCount, 86);
    AnswerNext(QMessageBox::Yes);
    EntryNamed("Clear Satellite List")->trigger();
    EXPECT_EQ(app_.Data.SatCount, 0);
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "Satellite List Emptied");
    EXPECT_EQ(Named<QListView>(form, "LSat").model()->rowCount(), 0);
    EXPECT_TRUE(Named<QLabel>(form, "LWorkingSat").text().isEmpty());
    EXPECT_FALSE(main_.CPlotOrbit.Enabled);
    WaitForPicture();
    // Nothing is asked now: a box would block here.
    Press("Clear List");
    Press("Next");
    EXPECT_EQ(app_.Data.SatCount, 0);
    LoadIridium();
    EXPECT_EQ(app_.Data.Satellite(1).OrbitNumber, 1);
}

TEST_F(SatelliteWindowsTest, SurfacesOfTheSelectedAreDeletedFromTheListToo) {
    QDialog& form = Open("Manage Satellite List...", "FormSatellites");
    ASSERT_EQ(app_.Data.Satellite(2).Surface.MirrorCount, 3);
    app_.Data.Satellite(2).Selected = true;
    app_.Data.Satellite(86).Selected = true;
    app_.Windows.UpDateAll();
    auto& button = Named<QPushButton>(form, "CClearAllMirrors");
    AnswerNext(QMessageBox::No);
    button.click();
    EXPECT_EQ(question_, "All the mirrors of the selected satellites will be deleted!\nAre you sure?");
    EXPECT_EQ(app_.Data.Satellite(2).Surface.MirrorCount, 3);
    // With the editor open on one of them, it shows what is left: nothing.
    Open("Model Satellite Surfaces...", "FormMirror");
    AnswerNext(QMessageBox::Yes);
    button.click();
    EXPECT_EQ(app_.Data.Satellite(2).Surface.MirrorCount, 0);
    EXPECT_EQ(app_.Data.Satellite(86).Surface.MirrorCount, 0);
    EXPECT_EQ(app_.Data.Satellite(3).Surface.MirrorCount, 3);
    EXPECT_EQ(app_.Mirror.LMirrors.Count(), 0);
}

TEST_F(SatelliteWindowsTest, TheAdvancedSelectionSelectsInTheList) {
    QDialog& form = Open("Manage Satellite List...", "FormSatellites");
    Named<QPushButton>(form, "CAdvSelection").click();
    auto& adv = Named<QDialog>(window_, "FormAdvSel");
    EXPECT_TRUE(adv.isVisible());
    EXPECT_EQ(Named<QLabel>(adv, "LCount").text(), "86 of 86 match. Selected: 0 now, 86 after \"Apply\"");
    Named<QPushButton>(adv, "CApply").click();
    EXPECT_EQ(Named<QListView>(form, "LSat").selectionModel()->selectedRows().size(), 86);
    // What is clicked in the list is counted here.
    Named<QPushButton>(form, "CDeselectAll").click();
    EXPECT_EQ(Named<QLabel>(adv, "LCount").text(), "86 of 86 match. Selected: 0 now, 86 after \"Apply\"");
    QTest::mouseClick(Named<QListView>(form, "LSat").viewport(), Qt::LeftButton, {}, QPoint(30, 30));
    EXPECT_EQ(Named<QLabel>(adv, "LCount").text(), "86 of 86 match. Selected: 1 now, 86 after \"Apply\"");
    app_.Run.AskToSave = false;
    EXPECT_TRUE(window_.close());
    EXPECT_FALSE(adv.isVisible());
}

TEST_F(SatelliteWindowsTest, DisabledSatellitesLeaveThePicture) {
    main_.CSatNames.Value = false;
    WaitForPicture();
    const int before = app_.Run.Finder.FinderCount();
    ASSERT_GT(before, 5);
    QDialog& form = Open("Manage Satellite List...", "FormSatellites");
    Named<QPushButton>(form, "CSelectAll").click();
    Named<QPushButton>(form, "CDisable").click();
    EXPECT_TRUE(main_.Timer2.Enabled);
    WaitForPicture();
    EXPECT_EQ(app_.Run.Finder.FinderCount(), 0);
    Named<QPushButton>(form, "CEnable").click();
    WaitForPicture();
    EXPECT_EQ(app_.Run.Finder.FinderCount(), before);
}

}  // namespace
}  // namespace glintara::desktop
