#pragma once

// The whole program in its window, steered as a user steers it: with the mouse and keys.

#include <gtest/gtest.h>

#include <QAction>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <filesystem>
#include <functional>
#include <numbers>

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
            if (QString(action->text()).remove('&') == text) return action;
        return nullptr;
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
