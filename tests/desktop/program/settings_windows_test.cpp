// The windows of the settings and of the date in the whole program, by mouse and keys.

#include "desktop/program/settings_windows.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QTest>
#include <array>
#include <vector>

#include "core/colors.h"
#include "desktop/main/bindings.h"
#include "desktop/program/desktop_program.h"
#include "desktop/program/window_fixture.h"
#include "desktop/window_checks.h"
#include "support/working_folder.h"

namespace glintara::desktop {
namespace {

using testing::Named;

struct SettingsWindowsTest : ::testing::Test {
    SettingsWindowsTest() {
        window.resize(900, 640);
        testing::Open(window);
        app.Main.CRealTime.Value = false;
        program.Core().Time.ReadBase();
        program.Core().Time.TimeSyncronize();
    }

    bool IsOpen(const char* name) const {
        const auto* form = window.findChild<QDialog*>(name);
        return form != nullptr && form->isVisible();
    }

    QDialog& OpenBy(MenuEntry& entry, const char* name) {
        entry.Click();
        QDialog& form = Named<QDialog>(window, name);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
        return form;
    }

    static void Type(QLineEdit& field, const char* text) {
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, text);
    }

    static void ClickOn(const QDialog& form, const char* button) {
        QTest::mouseClick(&Named<QAbstractButton>(form, button), Qt::LeftButton);
    }

    glintara::testing::WorkingFolder folder;
    const QString placesFile = QString::fromStdString((folder.Path() / "places.ini").string());
    DesktopProgram program{placesFile};
    Application& app = program.State();
    MainScope& window = program.Window();
};

TEST_F(SettingsWindowsTest, TheMenuOpensEachAndEscapeClosesIt) {
    MainControls& main = app.Main;
    const std::array<std::pair<MenuEntry*, const char*>, 5> forms{{{&main.MnuLocalSettings, "FormLocalSettings"},
                                                                   {&main.MnuRTimeStep, "FormRealTime"},
                                                                   {&main.MnuColors, "FormColors"},
                                                                   {&main.MnuTwilight, "FormTwilight"},
                                                                   {&main.MnuGoToDate, "FormDate"}}};
    for (const auto& [entry, name] : forms) {
        EXPECT_TRUE(entry->IsWired());
        EXPECT_FALSE(IsOpen(name));
        QDialog& form = OpenBy(*entry, name);
        EXPECT_FALSE(form.windowTitle().isEmpty());
        entry->Click();
        EXPECT_TRUE(IsOpen(name)) << "a second call leaves it open";
        QTest::keyClick(&form, Qt::Key_Escape);
        EXPECT_FALSE(IsOpen(name));
        OpenBy(*entry, name);
    }
    EXPECT_TRUE(program.Core().End.Form_Unload());
    for (const auto& [entry, name] : forms) EXPECT_FALSE(IsOpen(name)) << name;
}

TEST_F(SettingsWindowsTest, NothingIsClippedAndAllHaveTheirNames) {
    MainControls& main = app.Main;
    for (QDialog* form : {&OpenBy(main.MnuLocalSettings, "FormLocalSettings"),
                          &OpenBy(main.MnuRTimeStep, "FormRealTime"), &OpenBy(main.MnuColors, "FormColors"),
                          &OpenBy(main.MnuTwilight, "FormTwilight"), &OpenBy(main.MnuGoToDate, "FormDate")}) {
        testing::ExpectNothingClipped(*form);
        for (const QWidget* widget : form->findChildren<QWidget*>()) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_")) continue;
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
            EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->objectName().toStdString();
        }
    }
}

TEST_F(SettingsWindowsTest, APlaceIsTypedAndReturnTakesIt) {
    QDialog& form = OpenBy(app.Main.MnuLocalSettings, "FormLocalSettings");
    auto& lat = Named<QLineEdit>(form, "TLAT");
    EXPECT_EQ(form.focusWidget(), &lat);
    QTest::keyClicks(&lat, "48 12 30 N");  // takes the place of what stands there
    EXPECT_FALSE(lat.property("bad").toBool());
    Type(Named<QLineEdit>(form, "TLON"), "16,37x");
    EXPECT_TRUE(Named<QLineEdit>(form, "TLON").property("bad").toBool());
    EXPECT_EQ(Named<QLabel>(form, "LPlace").text(), "48°12'30.0\" N   16°22'12.0\" E (?)   150 m");
    QTest::keyClick(&Named<QLineEdit>(form, "TLON"), Qt::Key_Return);
    EXPECT_FALSE(IsOpen("FormLocalSettings"));
    EXPECT_NEAR(app.Data.Site.SiteLat, (48 + 12.5 / 60) * kDegree, 1e-12);
    EXPECT_NEAR(app.Data.Site.SiteLon, 16.37 * kDegree, 1e-12);
}

TEST_F(SettingsWindowsTest, CancelAndEscapeTakeNothing) {
    for (const bool byButton : {true, false}) {
        QDialog& form = OpenBy(app.Main.MnuLocalSettings, "FormLocalSettings");
        Type(Named<QLineEdit>(form, "TLAT"), "48");
        if (byButton)
            ClickOn(form, "CCancel");
        else
            QTest::keyClick(&Named<QLineEdit>(form, "TLAT"), Qt::Key_Escape);
        EXPECT_FALSE(IsOpen("FormLocalSettings"));
        EXPECT_EQ(app.Data.Site.SiteLat, 0);
    }
}

TEST_F(SettingsWindowsTest, TheZoneOfTheComputerIsABoxThatTypingClears) {
    QDialog& form = OpenBy(app.Main.MnuLocalSettings, "FormLocalSettings");
    auto& box = Named<QCheckBox>(form, "CComputerZone");
    EXPECT_TRUE(box.isChecked());
    Type(Named<QLineEdit>(form, "TUTC"), "-23");
    EXPECT_FALSE(box.isChecked());
    ClickOn(form, "COk");
    EXPECT_EQ(app.Data.UTCOffsetHours, -23);
    EXPECT_TRUE(app.Run.Zone.chosen);
}

TEST_F(SettingsWindowsTest, TheButtonOfTheTimeZoneAnswers) {
    QDialog& form = OpenBy(app.Main.MnuLocalSettings, "FormLocalSettings");
    EXPECT_TRUE(Named<QLabel>(form, "LTimeZone").text().isEmpty());
    ClickOn(form, "CFromTimeZone");
    EXPECT_FALSE(Named<QLabel>(form, "LTimeZone").text().isEmpty()) << "a place, or why there is none";
    EXPECT_EQ(app.Data.Site.SiteLat, 0);
}

TEST_F(SettingsWindowsTest, TheSliderSetsTheRealTimeStep) {
    QDialog& form = OpenBy(app.Main.MnuRTimeStep, "FormRealTime");
    auto& slider = Named<QSlider>(form, "STime");
    EXPECT_EQ(slider.value(), 5);
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(app.Data.RealTimeStep, 6);
    EXPECT_EQ(Named<QLabel>(form, "LTStep").text(), "6 s");
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(app.Data.RealTimeStep, 60);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(app.Data.RealTimeStep, 1);
    ClickOn(form, "CExit");
    EXPECT_FALSE(IsOpen("FormRealTime"));
}

TEST_F(SettingsWindowsTest, ColoursAreChosenFromSwatches) {
    QDialog& form = OpenBy(app.Main.MnuColors, "FormColors");
    auto& land = Named<QListWidget>(form, "LSoilColor");
    ASSERT_EQ(land.count(), 8);
    EXPECT_EQ(land.currentRow(), 4);
    for (int row = 0; row < land.count(); ++row) {
        const QImage swatch = land.item(row)->icon().pixmap(land.iconSize()).toImage();
        const QColor middle = swatch.pixelColor(swatch.width() / 2, swatch.height() / 2);
        const std::uint32_t color = kSoilPalette[static_cast<std::size_t>(row)].color;
        EXPECT_EQ(middle, QColor(static_cast<int>(color & 255), static_cast<int>(color >> 8 & 255),
                                 static_cast<int>(color >> 16 & 255)));
        QTest::mouseClick(land.viewport(), Qt::LeftButton, {}, land.visualItemRect(land.item(row)).center());
        EXPECT_EQ(app.Data.SoilColor, color);
    }
    auto& sea = Named<QListWidget>(form, "LSealColor");
    sea.setFocus();
    QTest::keyClick(&sea, Qt::Key_Down);
    EXPECT_EQ(app.Data.SeaColor, kSeaPalette[4].color);
    Named<QSlider>(form, "SShadow").setFocus();
    QTest::keyClick(&Named<QSlider>(form, "SShadow"), Qt::Key_End);
    EXPECT_EQ(app.Data.ShadowColor, 0xFFFFFFU);
    EXPECT_EQ(Named<QLabel>(form, "LShadowLevel").text(), "255");
    for (const auto& [name, days] : {std::pair("CKI0", 0), std::pair("CKI1", 1), std::pair("CKI7", 7)}) {
        ClickOn(form, name);
        EXPECT_EQ(app.Data.UpdateCheckDays, days);
        EXPECT_EQ(Named<QLabel>(form, "LCheckInt").text(), QString("Days: %1").arg(days));
        EXPECT_TRUE(Named<QRadioButton>(form, name).isChecked());
        EXPECT_FALSE(Named<QRadioButton>(form, "CKI3").isChecked());
    }
    ClickOn(form, "CDefault");
    EXPECT_EQ(land.currentRow(), 4);
    EXPECT_EQ(sea.currentRow(), 3);
    EXPECT_TRUE(Named<QRadioButton>(form, "CKI3").isChecked());
    ClickOn(form, "CClose");
    EXPECT_FALSE(IsOpen("FormColors"));
}

TEST_F(SettingsWindowsTest, AColourOfNoListLeavesNoneSelected) {
    app.Data.SoilColor = 0x123456;
    QDialog& form = OpenBy(app.Main.MnuColors, "FormColors");
    EXPECT_EQ(Named<QListWidget>(form, "LSoilColor").currentRow(), -1);
    EXPECT_EQ(app.Data.SoilColor, 0x123456U);
}

TEST_F(SettingsWindowsTest, TheTwilightIsAppliedAndHeldToItsRange) {
    QDialog& form = OpenBy(app.Main.MnuTwilight, "FormTwilight");
    auto& field = Named<QLineEdit>(form, "TTwilight");
    EXPECT_EQ(field.toolTip(), "This is the minimum sun elevation to consider day time.");
    Type(field, "120");
    ClickOn(form, "CApply");
    EXPECT_EQ(field.text(), "90");
    EXPECT_TRUE(IsOpen("FormTwilight"));
    Type(field, "-6");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_FALSE(IsOpen("FormTwilight"));
    EXPECT_EQ(app.Data.TwilightAngle, -6);
    OpenBy(app.Main.MnuTwilight, "FormTwilight");
    Type(field, "5");
    ClickOn(form, "CClose");
    EXPECT_EQ(app.Data.TwilightAngle, -6);
}

TEST_F(SettingsWindowsTest, ADateIsTypedAndReturnJumpsThere) {
    QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier);
    QDialog& form = Named<QDialog>(window, "FormDate");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    auto& date = Named<QLineEdit>(form, "TDate");
    EXPECT_EQ(form.focusWidget(), &date);
    QTest::keyClicks(&date, "29/02/2000");
    Type(Named<QLineEdit>(form, "TTime"), "17:42:30");
    QTest::keyClick(&Named<QLineEdit>(form, "TTime"), Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(app.Main.LDateTime.Caption.Get(), "DATE 29/02/2000 17:42:30 UTC (+)");
}

TEST_F(SettingsWindowsTest, ADoubleClickOnTheDateOpensItAndLeavesThePanels) {
    const int group = app.Run.PanelGroup;
    const QPoint there(20, 8);
    auto& label = Named<QLabel>(window, "LDateTime");
    QTest::mouseClick(&label, Qt::LeftButton, {}, there);
    QTest::mouseDClick(&label, Qt::LeftButton, {}, there);
    EXPECT_TRUE(IsOpen("FormDate"));
    EXPECT_EQ(app.Run.PanelGroup, group);
}

TEST_F(SettingsWindowsTest, TheCalendarIsSteppedByKeysAndPressed) {
    app.Main.MnuGoToDate.Click();
    QDialog& form = Named<QDialog>(window, "FormDate");
    auto& date = Named<QLineEdit>(form, "TDate");
    Type(date, "31/12/1999");
    QTest::keyClick(&date, Qt::Key_Up);
    EXPECT_EQ(date.text(), "01/01/2000");
    QTest::keyClick(&date, Qt::Key_Down);
    EXPECT_EQ(date.text(), "31/12/1999");
    QTest::keyClick(&date, Qt::Key_PageUp);
    EXPECT_EQ(date.text(), "31/01/2000");
    QTest::keyClick(&date, Qt::Key_PageDown);
    EXPECT_EQ(date.text(), "31/12/1999");
    // 1 December 1999 was a Wednesday.
    auto& first = Named<QPushButton>(form, "Days_2");
    EXPECT_EQ(first.text(), "1");
    QTest::mouseClick(&first, Qt::LeftButton);
    EXPECT_EQ(date.text(), "01/12/1999");
    EXPECT_TRUE(first.isChecked());
    EXPECT_FALSE(Named<QPushButton>(form, "Days_1").isEnabled());
    ClickOn(form, "CNextMonth");
    EXPECT_EQ(date.text(), "01/01/2000");
    Type(Named<QLineEdit>(form, "TTime"), "0:0:0");
    auto& sunday = Named<QPushButton>(form, "Days_6");  // 2 January 2000
    QTest::mouseClick(&sunday, Qt::LeftButton);
    QTest::mouseDClick(&sunday, Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(app.Main.LDateTime.Caption.Get(), "DATE 02/01/2000 00:00:00 UTC (+)");
}

TEST_F(SettingsWindowsTest, NoSuchDateIsToldAndEscapeLeavesAllAsItIs) {
    const std::string before = app.Main.LDateTime.Caption;
    app.Main.MnuGoToDate.Click();
    QDialog& form = Named<QDialog>(window, "FormDate");
    auto& date = Named<QLineEdit>(form, "TDate");
    Type(date, "31/04/2018");
    EXPECT_TRUE(date.property("bad").toBool());
    QTest::keyClick(&date, Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(Named<QLabel>(form, "LProblem").text(), "April 2018 has 30 days.");
    QTest::keyClick(&date, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(app.Main.LDateTime.Caption.Get(), before);
}

TEST_F(WindowTest, TheObserversCodeIsKeptWithTheUsersSettings) {
    Settle();
    main_.MnuLocalSettings.Click();
    QDialog& form = Named<QDialog>(window_, "FormLocalSettings");
    auto& field = Named<QLineEdit>(form, "TStationCode");
    field.selectAll();
    QTest::keyClicks(&field, "0042");
    QTest::mouseClick(&Named<QPushButton>(form, "COk"), Qt::LeftButton);
    EXPECT_EQ(app_.Data.StationNumber, 42);
    DesktopProgram later(QString::fromStdString((folder_.Path() / "places.ini").string()));
    later.Start(folder_.Path());
    EXPECT_EQ(later.State().Data.StationCode, "42");
    EXPECT_EQ(later.State().Data.StationNumber, 42);
}

// What is chosen shows at once.
TEST_F(WindowTest, TheChosenColoursAreInThePicture) {
    Settle();
    main_.CSunLight.Value = false;
    app_.Settings.Colors.LSoilColor.Current = 5;
    app_.Settings.Colors.LSealColor.Current = 6;
    WaitForPicture();
    const auto isExactly = [](std::uint32_t color) {
        return [color](const QColor& c) {
            return c.red() == static_cast<int>(color & 255) && c.green() == static_cast<int>(color >> 8 & 255) &&
                   c.blue() == static_cast<int>(color >> 16 & 255);
        };
    };
    EXPECT_GT(CountPixels(isExactly(kSoilPalette[5].color)), 1000);
    EXPECT_GT(CountPixels(isExactly(kSeaPalette[6].color)), 1000);
    EXPECT_EQ(CountPixels(isExactly(kSoilPalette[kDefaultSoil].color)), 0);

    // The night side at level 0 is black, at level 255 it is like the day.
    const int day = CountPixels(isExactly(kSeaPalette[6].color));
    main_.CSunLight.Value = true;
    app_.Settings.Colors.SShadow.Value = 0;
    WaitForPicture();
    EXPECT_LT(CountPixels(isExactly(kSeaPalette[6].color)), 0.95 * day);
    app_.Settings.Colors.SShadow.Value = 255;
    WaitForPicture();
    EXPECT_NEAR(CountPixels(isExactly(kSeaPalette[6].color)), day, 0.002 * day);
}

}  // namespace
}  // namespace glintara::desktop
