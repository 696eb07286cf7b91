// The window of the surface editor in the whole program, under real keys and presses.

#include "desktop/flare/form_mirror.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <filesystem>

#include "desktop/main/bindings.h"
#include "desktop/program/desktop_program.h"
#include "desktop/window_checks.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/satellite_table.h"
#include "support/working_folder.h"

namespace glintara::desktop {
namespace {

using testing::Named;

struct FormMirrorTest : ::testing::Test {
    FormMirrorTest() {
        window.resize(900, 640);
        testing::Open(window);
        EXPECT_TRUE(LoadTLEFile(app, GLINTARA_SOURCE_DIR "/data/examples/iridium.tle"));
        app.Main.CApplyTLEOrbit.Click();
        for (int s = 1; s <= app.Data.SatCount; ++s) app.Data.Satellite(s).Selected = false;
        program.Core().Time.ReadBase();
        program.Core().Time.TimeSyncronize();
        app.Main.MnuModelSatSurfaces.Click();
        WaitUntilActive();
    }

    /// A window counts as active as soon as the one that it belongs to is: that does not give it the keyboard.
    void WaitUntilActive() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Form(); }));
    }

    ~FormMirrorTest() override { program.Core().End.Form_Unload(); }

    QDialog& Form() { return Named<QDialog>(window, "FormMirror"); }
    SatRecord& Working() { return app.Data.Satellite(app.Data.WorkingSat()); }
    SurfaceModel& Model() { return Working().Surface; }
    QLineEdit& Field(const char* name) { return Named<QLineEdit>(Form(), name); }
    void Press(const char* name) { QTest::mouseClick(&Named<QPushButton>(Form(), name), Qt::LeftButton); }
    void Choose(const char* name) {
        QRadioButton& option = Named<QRadioButton>(Form(), name);
        QTest::mouseClick(&option, Qt::LeftButton, {}, {8, option.height() / 2});
    }

    void ShowPage(int page) { Named<QTabWidget>(Form(), "Pages").setCurrentIndex(page); }

    /// Types a text over what the field holds.
    void Type(const char* name, const QString& text) {
        QLineEdit& field = Field(name);
        field.setFocus();
        EXPECT_TRUE(field.hasFocus()) << name;
        field.selectAll();
        QTest::keyClicks(&field, text);
    }

    glintara::testing::WorkingFolder folder;
    DesktopProgram program{QString::fromStdString((folder.Path() / "places.ini").string())};
    Application& app = program.State();
    MainScope& window = program.Window();
    MirrorControls& form = app.Mirror;
};

TEST_F(FormMirrorTest, TheMenuOpensItOnTheWorkingSatellite) {
    EXPECT_TRUE(app.Main.MnuModelSatSurfaces.IsWired());
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(FromQt(Named<QLabel>(Form(), "LSatRef").text()), SatelliteIdentityText(Working()));
    QListWidget& list = Named<QListWidget>(Form(), "LMirrors");
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(1)->text(), "M#02 - L");
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_EQ(Field("TMID").text(), "IRIDIUM_F");
    EXPECT_TRUE(Field("TMID").isReadOnly());
    app.Main.MnuModelSatSurfaces.Click();
    EXPECT_TRUE(Form().isVisible());
}

/// Every text in sight has the room that it asks for.
void ExpectNothingInSightClipped(const QWidget& form, const std::string& where) {
    const auto check = [&](const QWidget& widget, const QString& text) {
        if (!widget.isVisible()) return;
        EXPECT_GE(widget.width(), widget.sizeHint().width()) << where << text.toStdString();
        EXPECT_GE(widget.height(), widget.sizeHint().height()) << where << text.toStdString();
        EXPECT_TRUE(form.rect().contains(QRect(widget.mapTo(&form, QPoint(0, 0)), widget.size())))
            << where << text.toStdString();
    };
    for (const QAbstractButton* button : form.findChildren<QAbstractButton*>()) check(*button, button->text());
    for (const QLabel* label : form.findChildren<QLabel*>()) check(*label, label->text());
}

TEST_F(FormMirrorTest, NothingIsClippedAndItHasRoomOnSmallScreens) {
    for (const char* option : {"OOrient_0", "OOrient_1", "OOrient_2", "OUndefined"}) {
        Choose(option);
        form.CRotAng.Value = true;
        for (const int page : {0, 1}) {
            ShowPage(page);
            QTest::qWait(20);
            ExpectNothingInSightClipped(Form(), std::string(option) + " ");
            EXPECT_LE(Form().width(), 480);
            EXPECT_LE(Form().height(), 680);
        }
    }
}

TEST_F(FormMirrorTest, AFieldIsAppliedWhenItIsLeftOrByReturn) {
    Type("TAngle", "12.5");
    EXPECT_EQ(Model().Mirror(1).Angle, 0);
    QTest::keyClick(&Field("TAngle"), Qt::Key_Tab);
    EXPECT_EQ(Model().Mirror(1).Angle, 12.5);
    EXPECT_EQ(Named<QSlider>(Form(), "SAngle").value(), 125);
    Type("TTilt", "-5");
    QTest::keyClick(&Field("TTilt"), Qt::Key_Return);
    EXPECT_EQ(Model().Mirror(1).Tilt, -5);
    EXPECT_TRUE(Form().isVisible());
    Type("TName", "Fwd");
    EXPECT_EQ(Field("TMID").text(), "IRIDIUM_Fwd");
    Type("TMagnify", "99");
    EXPECT_EQ(Model().Mirror(1).MirrorName, "Fwd");
    QTest::keyClick(&Field("TMagnify"), Qt::Key_Tab);
    EXPECT_EQ(Field("TMagnify").text(), "50");
    EXPECT_EQ(Named<QListWidget>(Form(), "LMirrors").item(0)->text(), "M#01 - Fwd");
}

TEST_F(FormMirrorTest, WhatIsNoNumberIsMarkedAndStays) {
    Type("TTilt", "forty");
    EXPECT_TRUE(Field("TTilt").property("bad").toBool());
    QTest::keyClick(&Field("TTilt"), Qt::Key_Tab);
    EXPECT_EQ(Field("TTilt").text(), "forty");
    EXPECT_EQ(Model().Mirror(1).Tilt, 40);
    Type("TTilt", "41");
    EXPECT_FALSE(Field("TTilt").property("bad").toBool());
    Press("CApply");
    EXPECT_EQ(Model().Mirror(1).Tilt, 41);
}

TEST_F(FormMirrorTest, ASliderMovesItsBoxAndTheModelFollows) {
    QSlider& slider = Named<QSlider>(Form(), "SAngle");
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(Field("TAngle").text(), "0.1");
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_EQ(Field("TAngle").text(), "10.1");
    EXPECT_EQ(Model().Mirror(1).Angle, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Model().Mirror(1).Angle == 10.1; }, 3000));
    EXPECT_EQ(slider.value(), 101);
    QSlider& tilt = Named<QSlider>(Form(), "STilt");
    QTest::keyClick(&tilt, Qt::Key_Home);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Model().Mirror(1).Tilt == 0; }, 3000));
}

TEST_F(FormMirrorTest, TheListChoosesTheSurface) {
    QListWidget& list = Named<QListWidget>(Form(), "LMirrors");
    const auto press = [&](int row) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
        QTest::qWait(0);
    };
    press(2);
    EXPECT_EQ(form.CurrentMirror, 3);
    EXPECT_EQ(Field("TAngle").text(), "-120");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_EQ(form.CurrentMirror, 2);
    // The boxes before the lines have no effect.
    const SurfaceModel before = Model();
    list.item(0)->setCheckState(Qt::Checked);
    EXPECT_EQ(Model(), before);
    EXPECT_EQ(form.CurrentMirror, 2);
}

TEST_F(FormMirrorTest, ReturnOnTheListGoesToTheMomentOfTheSurface) {
    QListWidget& list = Named<QListWidget>(Form(), "LMirrors");
    app.Main.CRealTime.Value = false;
    Press("CUpTime");
    const double noted = Model().Mirror(1).MirrorJD;
    EXPECT_EQ(noted, app.Data.SimTime);
    app.Main.CDayOffsetInc.Click();
    ASSERT_GT(app.Data.SimTime, noted + 0.9);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_NEAR(app.Data.SimTime, noted, 1e-7);
    app.Main.CDayOffsetInc.Click();
    const QPoint line = list.visualItemRect(list.item(0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, line);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, line);
    EXPECT_NEAR(app.Data.SimTime, noted, 1e-7);
}

TEST_F(FormMirrorTest, ButtonsOfTheList) {
    Press("CAddMirror");
    EXPECT_EQ(Model().MirrorCount, 4);
    EXPECT_EQ(Field("TName").text(), "UM1");
    Press("CMoveUp");
    EXPECT_EQ(Model().Mirror(1).MirrorName, "UM1");
    EXPECT_EQ(Named<QListWidget>(Form(), "LMirrors").currentRow(), 0);
}

TEST_F(FormMirrorTest, OptionsOfTheOrientation) {
    const auto visible = [this](const char* name) { return Named<QWidget>(Form(), name).isVisible(); };
    EXPECT_TRUE(Named<QRadioButton>(Form(), "OOrient_0").isChecked());
    EXPECT_FALSE(Field("TRotAxisRA").isEnabled());
    EXPECT_FALSE(visible("TExtra1"));
    Choose("OOrient_2");
    EXPECT_EQ(Model().OrientationType, 2);
    EXPECT_FALSE(Named<QRadioButton>(Form(), "OOrient_0").isChecked());
    EXPECT_TRUE(Field("TRotAxisRA").isEnabled());
    EXPECT_EQ(Field("TRotAxisRA").text(), "57.295");
    EXPECT_TRUE(Named<QPushButton>(Form(), "CRotation").isEnabled());
    Type("TRotAxisDEC", "30");
    QTest::keyClick(&Field("TRotAxisDEC"), Qt::Key_Tab);
    EXPECT_NEAR(Model().RotAxisDEC, 0.52359877559829887, 1e-12);
    Choose("OOrient_1");
    EXPECT_EQ(Model().OrientationType, 3);
    EXPECT_TRUE(visible("TExtra1"));
    EXPECT_FALSE(visible("CRotation"));
    Type("TExtra1", QString::fromStdString(app.Data.Satellite(1).SatNumber));
    EXPECT_EQ(FromQt(Named<QLabel>(Form(), "LExtraInfo1").text()), "Target Sat: " + app.Data.Satellite(1).Name);
    Choose("OOrient_1");
    EXPECT_TRUE(Named<QRadioButton>(Form(), "OOrient_1").isChecked()) << "it is not left by itself";
    Choose("OUndefined");
    EXPECT_EQ(Model().ModelFlags[0], '0');
    EXPECT_FALSE(visible("FMirrorData"));
    EXPECT_FALSE(visible("FMirror"));
    EXPECT_TRUE(visible("LHint"));
    Choose("OOrient_5");
    EXPECT_EQ(Model().OrientationType, 1);
    EXPECT_TRUE(visible("FMirrorData"));
    EXPECT_FALSE(visible("LHint"));
    Choose("OOrient_4");
    EXPECT_EQ(Model().OrientationType, 4);
}

TEST_F(FormMirrorTest, FitsTurnTheSurface) {
    app.Main.CRealTime.Value = false;
    const SurfaceModel before = Model();
    Press("CFlareSet");
    EXPECT_NE(Model().Mirror(1).Angle, before.Mirror(1).Angle);
    EXPECT_EQ(Field("TAngle").text().toDouble(), Model().Mirror(1).Angle);
    const SurfaceModel fitted = Model();
    Press("CBeamSet");
    EXPECT_NE(Model().Mirror(1).Angle, fitted.Mirror(1).Angle);
}

TEST_F(FormMirrorTest, DrawOptions) {
    Choose("OOrient_2");
    ShowPage(1);
    const std::vector<std::pair<const char*, CheckBox*>> boxes{{"CRotAng", &form.CRotAng},
                                                               {"CShowSourceRay", &form.CShowSourceRay},
                                                               {"CShowRotAxis", &form.CShowRotAxis},
                                                               {"CShowMirrorNormal", &form.CShowMirrorNormal},
                                                               {"CForceIllumination", &form.CForceIllumination}};
    for (const auto& [name, control] : boxes) {
        QCheckBox& box = Named<QCheckBox>(Form(), name);
        ASSERT_TRUE(box.isEnabled()) << name;
        EXPECT_FALSE(box.accessibleName().isEmpty()) << name;
        app.Main.Timer2.Stop();
        QTest::mouseClick(&box, Qt::LeftButton, {}, {6, box.height() / 2});
        EXPECT_TRUE(control->Value) << name;
        EXPECT_TRUE(app.Main.Timer2.Armed()) << name << " asks for a picture";
    }
    QSlider& slider = Named<QSlider>(Form(), "SRotTeta");
    app.Main.Timer2.Stop();
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_EQ(form.SRotTeta.Value, 100);
    EXPECT_TRUE(app.Main.Timer2.Armed());
}

TEST_F(FormMirrorTest, SelectsSatellitesInTheirList) {
    ShowPage(1);
    Press("CSelectWin");
    EXPECT_TRUE(Named<QDialog>(window, "FormSatellites").isVisible());
}

TEST_F(FormMirrorTest, ExportsIntoTheOutputWindow) {
    Press("CExportModel");
    EXPECT_TRUE(Named<QDialog>(window, "FormOutput").isVisible());
    EXPECT_NE(app.Output.TOutput.Text.Get().find("M#03 - R >>> -120;40;5"), std::string::npos);
}

TEST_F(FormMirrorTest, EscapeLeavesWhatWasLastAppliedAndCancelBringsBackTheOpening) {
    const SurfaceModel before = Model();
    Type("TAngle", "12.5");
    Press("CApply");
    Type("TAngle", "99");
    QTest::keyClick(&Field("TAngle"), Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(Model().Mirror(1).Angle, 12.5);
    EXPECT_TRUE(app.Main.CApplyTLEOrbit.Enabled);
    app.Main.MnuModelSatSurfaces.Click();
    ASSERT_TRUE(Form().isVisible());
    WaitUntilActive();
    EXPECT_EQ(Field("TAngle").text(), "12.5");
    Type("TAngle", "44");
    Press("CApply");
    EXPECT_EQ(Model().Mirror(1).Angle, 44);
    Press("CCancel");
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(Model().Mirror(1).Angle, 12.5);
    EXPECT_EQ(before.Mirror(1).Angle, 0);
}

TEST_F(FormMirrorTest, ClosingTheFrameLeavesWhatWasLastApplied) {
    Type("TAngle", "12.5");
    Press("CApply");
    Type("TAngle", "99");
    Form().close();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(Model().Mirror(1).Angle, 12.5);
}

TEST_F(FormMirrorTest, OkAppliesAndCloses) {
    Type("TAngle", "12.5");
    Press("COk");
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(Model().Mirror(1).Angle, 12.5);
}

TEST_F(FormMirrorTest, GoesOverToAnotherSatellite) {
    const std::string before = Working().Name;
    Type("TAngle", "12.5");
    ChangeWorkingSatellite(app, app.Data.Satellite(1).OrbitNumber);
    EXPECT_NE(Working().Name, before);
    EXPECT_EQ(FromQt(Named<QLabel>(Form(), "LSatRef").text()), SatelliteIdentityText(Working()));
    EXPECT_EQ(Field("TAngle").text(), "0");
    const int old = app.Data.SatCount - 1;
    EXPECT_EQ(app.Data.Satellite(old).Name, before);
    EXPECT_EQ(app.Data.Satellite(old).Surface.Mirror(1).Angle, 12.5) << "what was typed is not lost";
}

TEST_F(FormMirrorTest, ALetterWithAltPressesAButton) {
    const QString text = Named<QPushButton>(Form(), "CAddMirror").text();
    ASSERT_TRUE(text.contains('&'));
    QTest::keyClick(&Form(), text[text.indexOf('&') + 1].toLower().toLatin1(), Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Model().MirrorCount == 4; }, 3000));
}

TEST_F(FormMirrorTest, NoLetterStandsForTwoControlsInSight) {
    for (const int page : {0, 1}) {
        ShowPage(page);
        QMap<QString, QString> owners;
        for (const QWidget* widget : Form().findChildren<QWidget*>()) {
            if (!widget->isVisible()) continue;
            QString text;
            if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) text = button->text();
            if (const auto* label = qobject_cast<const QLabel*>(widget); label != nullptr && label->buddy() != nullptr)
                text = label->text();
            const qsizetype mark = text.indexOf('&');
            if (mark < 0) continue;
            const QString letter = text.mid(mark + 1, 1).toLower();
            EXPECT_FALSE(owners.contains(letter))
                << letter.toStdString() << " " << owners[letter].toStdString() << " " << text.toStdString();
            owners[letter] = text;
        }
        EXPECT_GT(owners.size(), 15);
    }
}

TEST_F(FormMirrorTest, TabGoesThroughItFromTheListToTheCommands) {
    QListWidget& list = Named<QListWidget>(Form(), "LMirrors");
    list.setFocus();
    QStringList way;
    for (int i = 0; i < 60 && (way.isEmpty() || QApplication::focusWidget() != &list); ++i) {
        way << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const QStringList wanted{"LMirrors", "CAddMirror", "OOrient_0", "TName",        "TMagnify", "TAngle",  "SAngle",
                             "TTilt",    "STilt",      "CFlareSet", "CExportModel", "COk",      "CCancel", "CApply"};
    qsizetype place = -1;
    for (const QString& name : wanted) {
        const qsizetype next = way.indexOf(name);
        EXPECT_GT(next, place) << name.toStdString() << " in " << way.join(' ').toStdString();
        place = next;
    }
}

TEST_F(FormMirrorTest, TheEndOfTheProgramClosesIt) {
    EXPECT_TRUE(program.Core().End.Form_Unload());
    EXPECT_FALSE(Form().isVisible());
    EXPECT_FALSE(form.Visible);
}

}  // namespace
}  // namespace glintara::desktop
