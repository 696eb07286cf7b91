// The menus: what stands in them, and every entry pressed as a hand presses it.

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <string>
#include <vector>

#include "core/keys.h"
#include "desktop/program/window_fixture.h"

namespace glintara::desktop {
namespace {

class MenusTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        Settle();
        LoadIridium();
        main_.CDrawSky.Value = true;
    }

    QMenu* MenuNamed(const QString& caption) const {
        for (const QAction* top : window_.findChild<QMenuBar*>()->actions())
            if (CaptionOf(*top) == caption) return top->menu();
        ADD_FAILURE() << "no menu " << caption.toStdString();
        return nullptr;
    }

    /// Opens the menu of the bar and clicks on the entry.
    void Choose(QMenu& menu, QAction& entry) {
        auto* const bar = window_.findChild<QMenuBar*>();
        // A message or a dialog that the entry opens would wait for ever.
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [] {
            if (QWidget* const modal = QApplication::activeModalWidget()) modal->close();
        });
        closer.start(20);
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu.menuAction()).center());
        ASSERT_TRUE(menu.isVisible()) << entry.text().toStdString();
        QTest::mouseMove(&menu, menu.actionGeometry(&entry).center());
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&entry).center());
        EXPECT_FALSE(menu.isVisible());
        closer.stop();
    }

    void ChooseNamed(const QString& menu, const QString& caption) {
        QMenu* const in = MenuNamed(menu);
        ASSERT_NE(in, nullptr);
        for (QAction* entry : in->actions())
            if (CaptionOf(*entry) == caption) return Choose(*in, *entry);
        ADD_FAILURE() << "no entry " << caption.toStdString();
    }

    void LeaveFullScreen() {
        QTest::keyClick(&window_.Picture(), Qt::Key_Escape);
        const QMenuBar& bar = *window_.findChild<QMenuBar*>();
        EXPECT_TRUE(WaitFor(
            [&] { return bar.isVisible() && window_.Picture().mapTo(&window_, QPoint(0, 0)).y() == bar.height(); }));
    }

    MenuEntry* ControlOf(const QString& caption) {
        for (const OptionPair& pair : OptionPairs(main_))
            if (QString::fromStdString(pair.entry->Caption.Get()) == caption) return pair.entry;
        return nullptr;
    }
};

TEST_F(MenusTest, TheEntriesStandInTheirOrder) {
    const std::pair<const char*, std::vector<const char*>> menus[] = {
        {"File",
         {"Open Workspace...", "Save Workspace", "Save Workspace as...", "Update and News Check", "Load TLE file...",
          "Exit"}},
        {"Draw",
         {"Run Time", "Auto Fine Plot", "OpenGL", "2D Rendering", "Mark Cities", "Sun Light", "Draw Sky", "Globe Grid",
          "Solid Globe", "Local Visibility Circle", "Satellite Visibility Circle", "Aries Line", "Astronomical Details",
          "Orbit Details", "Show Satellite Names", "Hide Countries", "Hide Earth", "Use Thin Lines",
          "Toggle Sky/Earth"}},
        {"Sky",
         {"Draw Sky Map", "Auto Select Max Magnitude", "Show Atmosphere", "Visible Sky Only", "Stars On Globe",
          "Sun and Moon", "Constellations", "Star Names", "Front Stars", "Back Stars", "Sky Circle", "Maximize Sky",
          "Reverse Sky", "Flat Sky"}},
        {"Satellites",
         {"Plot Orbit", "ECEF Plotting", "Project Orbit On The Earth", "ECEF Projection",
          "Project Orbit On The Local Sky", "Hide All Orbit Traces", "Satellite Info...",
          "Download TLE From Internet...", "Manage Satellite List..."}},
        {"Propagation", {"SGP1", "SGP4/SDP4", "Observations..."}},
        {"Tracking",
         {"Model Satellite Surfaces...", "Search Flares/Transits...", "Export Flare/Transit Track",
          "Find Cities along Track", "Show Satellite Flares/Shadows", "Show Flare/Transit Tracks",
          "Include Day Time Tracks", "Show Flaring Surface ID", "Moon Light Flare/Shadow"}},
        {"View",
         {"Fine Plot",
          "Zenith Orientation",
          "Up Orientation",
          "Noon Orientation",
          "Midnight Orientation",
          "Zero Orientation",
          "Orbit Orientation",
          "Lock On Sky",
          "Lock On Satellite",
          "View 1",
          "View 2",
          "View 3",
          "View 4",
          "View 5",
          "View 6",
          "View 7",
          "View 8",
          "View 9",
          "View 10",
          "Full Screen/Window"}},
        {"Quick", {"Reset View", "Sky Chart", "Horizont View", "Real, Locked, Horizont View"}},
        {"Settings",
         {"Local Settings...", "Floating Site", "Transit Mode", "Twilight Settings...", "Real Time Step...",
          "Cities...", "UTC Time", "Colors and other Settings..."}},
        {"Help", {"Basic Instructions", "Help", "About"}},
    };
    QStringList tops;
    for (const QAction* top : window_.findChild<QMenuBar*>()->actions()) tops << CaptionOf(*top);
    ASSERT_EQ(tops.size(), 10);
    qsizetype next = 0;
    for (const auto& [caption, told] : menus) {
        EXPECT_EQ(tops[next++], caption);
        QStringList entries;
        for (const QAction* entry : MenuNamed(caption)->actions())
            if (!entry->isSeparator() && entry->isVisible()) entries << CaptionOf(*entry);
        // Further entries may stand between them.
        qsizetype at = -1;
        for (const char* entry : told) {
            const qsizetype found = entries.indexOf(entry, at + 1);
            EXPECT_GT(found, at) << caption << ": " << entry;
            at = std::max(at, found);
        }
    }
}

TEST_F(MenusTest, EachEntryShowsItsKeyAndTakesNone) {
    int shown = 0;
    for (const QAction* top : window_.findChild<QMenuBar*>()->actions()) {
        for (const QAction* entry : top->menu()->actions()) {
            const QString keys = entry->text().section('\t', 1);
            if (keys.isEmpty()) continue;
            ++shown;
            // A shortcut of the window would be taken from whoever types.
            EXPECT_TRUE(entry->shortcut().isEmpty()) << entry->text().toStdString();
        }
    }
    EXPECT_EQ(shown, 18 + 16 + 9) << "options, other entries, views";
    EXPECT_EQ(EntryNamed("Sun Light")->text().section('\t', 1), "G");
    EXPECT_EQ(EntryNamed("ECEF Plotting")->text().section('\t', 1), "Shift+O");
    EXPECT_EQ(EntryNamed("Full Screen/Window")->text().section('\t', 1), "F11, Space");
    EXPECT_FALSE(EntryNamed("OpenGL")->toolTip().isEmpty());
}

TEST_F(MenusTest, EveryOptionTurnsItsBoxOver) {
    int chosen = 0;
    for (const QAction* top : window_.findChild<QMenuBar*>()->actions()) {
        for (QAction* entry : top->menu()->actions()) {
            const QString caption = CaptionOf(*entry);
            const MenuEntry* const control = ControlOf(caption);
            if (control == nullptr) continue;
            // What an entry needs to be usable.
            main_.CPlotOrbit.Value = main_.CProjectOrbit.Value = true;
            main_.CIridiumFlares.Value = true;
            if (!entry->isEnabled()) {
                EXPECT_TRUE(!control->Acts || !control->Enabled) << caption.toStdString();
                continue;
            }
            ++chosen;
            const bool model = caption.startsWith("SGP");
            const bool before = control->Checked;
            Choose(*top->menu(), *entry);
            EXPECT_EQ(control->Checked, model || !before) << caption.toStdString();
            ExpectMenusAndBoxesAgree(caption.toStdString());
            if (model) continue;
            Choose(*top->menu(), *entry);
            EXPECT_EQ(control->Checked, before) << caption.toStdString();
            ExpectMenusAndBoxesAgree(caption.toStdString() + " again");
        }
    }
    EXPECT_GE(chosen, 36);
}

TEST_F(MenusTest, EveryBoxOfThePanelsTurnsItsEntryOver) {
    for (int group = 0; group < 2; ++group) {
        for (const OptionPair& pair : OptionPairs(main_)) {
            QAbstractButton* const widget = WidgetOf(*pair.box);
            ASSERT_NE(widget, nullptr) << pair.box->Caption.Get();
            if (!widget->isVisible() || !widget->isEnabled()) continue;
            const bool before = pair.box->Value;
            const bool model = pair.box == &main_.CSGP4 || pair.box == &main_.CSGP1;
            QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
            EXPECT_EQ(pair.box->Value, model || !before) << pair.box->Caption.Get();
            ExpectMenusAndBoxesAgree(pair.box->Caption.Get());
            if (pair.box->Value != before) pair.box->Value = before;
        }
        main_.FrameInfo.Click();
    }
}

TEST_F(MenusTest, TheEntryForUtcShowsTheOtherSideOfItsBox) {
    ChooseNamed("Settings", "UTC Time");
    EXPECT_TRUE(main_.CLocalTime.Value);
    ExpectMenusAndBoxesAgree("UTC Time");
    ChooseNamed("Settings", "UTC Time");
    EXPECT_FALSE(main_.CLocalTime.Value);
    ExpectMenusAndBoxesAgree("UTC Time again");
}

TEST_F(MenusTest, EntriesWithoutABoxTurnTheirOwnMark) {
    for (const auto& [menu, caption] : {std::pair("Sky", "Show Atmosphere"), std::pair("Settings", "Floating Site"),
                                        std::pair("Settings", "Transit Mode")}) {
        for (const bool on : {true, false}) {
            ChooseNamed(menu, caption);
            EXPECT_EQ(EntryNamed(caption)->isChecked(), on) << caption;
        }
    }
    EXPECT_FALSE(EntryNamed("OpenGL")->isEnabled()) << "until a workspace of old brings it";
    main_.MnuLib3D.Enabled = true;
    ChooseNamed("Draw", "OpenGL");
    EXPECT_TRUE(main_.MnuLib3D.Checked);
    ChooseNamed("Draw", "OpenGL");
    EXPECT_FALSE(EntryNamed("OpenGL")->isChecked());
}

TEST_F(MenusTest, OrientationsTellThemselves) {
    const std::pair<const char*, const char*> entries[] = {
        {"Zenith Orientation", "Local Zenith Orientation"}, {"Up Orientation", "Up Orientation"},
        {"Noon Orientation", "Noon Orientation"},           {"Midnight Orientation", "MidNight Orientation"},
        {"Zero Orientation", "Zero Angle Orientation"},     {"Orbit Orientation", "Orbit Orientation"},
    };
    for (const auto& [caption, said] : entries) {
        ChooseNamed("View", caption);
        EXPECT_EQ(main_.LCommandOutput.Caption.Get(), said);
        ExpectMenusAndBoxesAgree(caption);
    }
}

TEST_F(MenusTest, EveryOtherEntryCanBeChosen) {
    for (const QAction* top : window_.findChild<QMenuBar*>()->actions()) {
        for (QAction* entry : top->menu()->actions()) {
            const QString caption = CaptionOf(*entry);
            if (entry->isSeparator() || !entry->isEnabled() || caption == "Exit" || ControlOf(caption)) continue;
            Choose(*top->menu(), *entry);
            ExpectMenusAndBoxesAgree(caption.toStdString());
            if (app_.Run.FullScreen) LeaveFullScreen();
            for (QDialog* form : window_.findChildren<QDialog*>()) form->close();
            window_.activateWindow();
        }
    }
    app_.Run.AskToSave = false;  // what has changed meanwhile
    ChooseNamed("File", "Exit");
    EXPECT_TRUE(WaitFor([&] { return app_.Run.Closing; }, 5000));
}

TEST_F(MenusTest, EntriesThatOpenAWindowOpenIt) {
    for (const auto& [menu, caption] :
         {std::pair("Tracking", "Search Flares/Transits..."), std::pair("Satellites", "Manage Satellite List..."),
          std::pair("Propagation", "Observations..."), std::pair("Help", "Help"), std::pair("Help", "About")}) {
        const auto open = [this] {
            int count = 0;
            for (const QDialog* form : window_.findChildren<QDialog*>()) count += form->isVisible() ? 1 : 0;
            return count;
        };
        ASSERT_EQ(open(), 0);
        ChooseNamed(menu, caption);
        EXPECT_EQ(open(), 1) << caption;
        for (QDialog* form : window_.findChildren<QDialog*>()) form->close();
        window_.activateWindow();
    }
}

}  // namespace
}  // namespace glintara::desktop
