#pragma once

// The whole program in its window, steered as a user steers it: with the mouse and keys.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <filesystem>
#include <functional>
#include <numbers>

#include "core/options.h"
#include "desktop/program/desktop_program.h"
#include "orbit/element_sets.h"
#include "support/temporary_folder.h"

namespace glintara::desktop {

namespace fs = std::filesystem;

inline constexpr double kNight = 2458138.5;  // 20 January 2018, 0 h UTC
inline constexpr double kDegree = std::numbers::pi / 180;

class WindowTest : public ::testing::Test {
  protected:
    const fs::path before_ = fs::current_path();
    testing::TemporaryFolder folder_;
    DesktopProgram program_{QString::fromStdString((folder_.Path() / "places.ini").string())};
    Application& app_ = program_.State();
    MainControls& main_ = app_.Main;
    ViewState& view_ = app_.Data.View;
    MainScope& window_ = program_.Window();

    void SetUp() override {
        for (const char* file : {"DB001.VDB", "DB002.VDB", "DB003.VDB", "DB004.VDB", "DB005.VDB"})
            fs::create_symlink(fs::path(GLINTARA_SOURCE_DIR) / "data" / file, folder_.Path() / file);
        program_.Start(folder_.Path());
    }

    void TearDown() override { fs::current_path(before_); }

    template <class Condition>
    static bool WaitFor(Condition condition, int milliseconds = 20000) {
        return QTest::qWaitFor(condition, milliseconds);
    }

    /// The opening is over, and the globe stands still.
    void Settle() {
        // The opening runs inside its timer and serves events; the key comes while it does.
        QTimer key;
        QObject::connect(&key, &QTimer::timeout, [&] {
            if (app_.Run.Opening) {
                key.stop();
                QTest::keyClick(&window_, Qt::Key_Shift);
                EXPECT_TRUE(app_.Run.OpeningCut);
            }
        });
        key.start(1);
        ASSERT_TRUE(WaitFor([&] { return main_.Timer5.Enabled && !app_.Run.Opening; }));
        EXPECT_EQ(view_.ZoomFactor, 29);
        main_.TimerHRot.Stop();
        main_.CRealTime.Value = false;
        WaitForPicture();
    }

    /// A picture that has been asked for before this call is there.
    void WaitForPicture() {
        QTest::qWait(1);
        ASSERT_TRUE(WaitFor([&] { return !main_.Timer2.Enabled && !app_.Run.FrameBusy; }));
    }

    QPushButton* ButtonNamed(const QString& text) const {
        for (QPushButton* button : window_.findChildren<QPushButton*>())
            if (button->text() == text) return button;
        return nullptr;
    }

    void Press(const QString& button) {
        QPushButton* const widget = ButtonNamed(button);
        ASSERT_NE(widget, nullptr) << button.toStdString();
        ASSERT_TRUE(widget->isVisible());
        QTest::mouseClick(widget, Qt::LeftButton);
    }

    QAction* EntryNamed(const QString& text) const {
        for (QAction* action : window_.findChildren<QAction*>())
            if (CaptionOf(*action) == text) return action;
        return nullptr;
    }

    /// What an entry is called, without its letter and its key.
    static QString CaptionOf(const QAction& action) { return action.text().section('\t', 0, 0).remove('&'); }

    /// The button or box on the panels that shows `box`.
    QAbstractButton* WidgetOf(const CheckBox& box) const {
        for (QAbstractButton* widget : window_.findChildren<QAbstractButton*>())
            if (widget->isCheckable() && widget->text() == QString::fromStdString(box.Caption.Get())) return widget;
        return nullptr;
    }

    /// Each option is the same on its panel, in its menu and in the program.
    void ExpectMenusAndBoxesAgree(const std::string& after) {
        for (const OptionPair& pair : OptionPairs(main_)) ExpectAgrees(*pair.box, *pair.entry, pair.box->Value, after);
        ExpectAgrees(main_.CLocalTime, main_.MnuNoUTC, !main_.CLocalTime.Value, after);
        EXPECT_NE(main_.CSGP1.Value.Get(), main_.CSGP4.Value.Get()) << after;
        EXPECT_FALSE(main_.CLockSky.Value && main_.CLockSatellite.Value) << after;
        EXPECT_FALSE(main_.CSkyOnly.Value && !main_.CDrawSky.Value) << after;
    }

    void ExpectAgrees(const CheckBox& box, const MenuEntry& entry, bool checked, const std::string& after) {
        const std::string where = entry.Caption.Get() + " after " + after;
        EXPECT_EQ(entry.Checked.Get(), checked) << where;
        const QAction* const action = EntryNamed(QString::fromStdString(entry.Caption.Get()));
        ASSERT_NE(action, nullptr) << where;
        EXPECT_EQ(action->isChecked(), checked) << where;
        const QAbstractButton* const widget = WidgetOf(box);
        ASSERT_NE(widget, nullptr) << where;
        EXPECT_EQ(widget->isChecked(), box.Value) << where;
    }

    void LoadIridium() {
        ASSERT_TRUE(LoadTLEFile(app_, GLINTARA_SOURCE_DIR "/data/examples/iridium.tle"));
        Press("Add TLE");
        ASSERT_EQ(app_.Data.SatCount, 86);
    }

    /// Places of colour in the picture.
    int CountPixels(const std::function<bool(const QColor&)>& wanted) {
        const QImage& image = window_.Picture().Image();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) count += wanted(image.pixelColor(x, y)) ? 1 : 0;
        return count;
    }
};

}  // namespace glintara::desktop
