// The developers' menu, there only for who asks for it.

#include <gtest/gtest.h>

#include <QMenuBar>
#include <QMouseEvent>
#include <QtTest/QTest>
#include <filesystem>

#include "desktop/program/desktop_program.h"
#include "scene/view_geometry.h"
#include "support/temporary_folder.h"

namespace glintara::desktop {
namespace {

namespace fs = std::filesystem;

class MapToolsWindowTest : public ::testing::Test {
  protected:
    const fs::path before_ = fs::current_path();
    testing::TemporaryFolder folder_;

    QString Places() const { return QString::fromStdString((folder_.Path() / "places.ini").string()); }

    void SetUp() override {
        for (const char* file : {"DB001.VDB", "DB002.VDB", "DB003.VDB", "DB004.VDB", "DB005.VDB", "SeaSpot.txt"})
            fs::create_symlink(fs::path(GLINTARA_SOURCE_DIR) / "data" / file, folder_.Path() / file);
    }

    void TearDown() override { fs::current_path(before_); }

    static QStringList Menus(DesktopProgram& program) {
        QStringList menus;
        for (const QAction* menu : program.Window().menuBar()->actions()) menus << QString(menu->text()).remove('&');
        return menus;
    }
};

TEST_F(MapToolsWindowTest, UsersSeeNoMapTools) {
    DesktopProgram program(Places());
    EXPECT_EQ(Menus(program).size(), 10);
    EXPECT_EQ(Menus(program).last(), "Help");
    EXPECT_FALSE(program.State().Main.CSaveBinDbg.IsWired());
    program.Start(folder_.Path());
    EXPECT_EQ(program.State().Data.Map.SeaSpots.size(), 1U);
}

TEST_F(MapToolsWindowTest, DevelopersHaveThemAtTheEndOfTheBar) {
    DesktopProgram program(Places(), true);
    ASSERT_EQ(Menus(program).last(), "Map Tools");
    QStringList entries;
    for (const QAction* entry : program.Window().menuBar()->actions().last()->menu()->actions()) {
        if (entry->isSeparator()) continue;
        EXPECT_TRUE(entry->isEnabled()) << entry->text().toStdString();
        EXPECT_FALSE(entry->toolTip().isEmpty()) << entry->text().toStdString();
        entries << entry->text();
    }
    EXPECT_EQ(entries.join("|").toStdString(),
              "Select Vertex|Previous Vertex|Next Vertex|New Polygon|Add Vertex|Save Reduced Borders as Text|"
              "Save Sea Spots as Text|Save Map Files");
    program.Start(folder_.Path());
    EXPECT_GT(program.State().Data.Map.SeaSpots.size(), 24U);
}

TEST_F(MapToolsWindowTest, TheKeyPicksTheVertexUnderTheMouse) {
    DesktopProgram program(Places(), true);
    Application& app = program.State();
    app.Data.Map.Border.Lat = {0, 45, 0, -45};
    app.Data.Map.Border.Lon = {0, 10, 0, -10};
    app.Data.Map.Border.Id = {0, 1, 1, 2};
    app.Data.View.ZoomFactor = 64;
    RefreshViewCache(app.Data.View);
    MainScope& window = program.Window();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    PictureBox& picture = window.Picture();
    // The lower left of the disc's middle.
    const QPointF at(picture.width() / 2.0 - 20, picture.height() / 2.0 + picture.height() * 0.3);
    QMouseEvent move(QEvent::MouseMove, at, picture.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&picture, &move);
    QTest::keyClick(&window, Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Vertex 3, polygon 2");
    QTest::keyClick(&window, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Vertex 2, polygon 1");
    window.menuBar()->setVisible(false);  // as in full screen
    QTest::keyClick(&window, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Vertex 3, polygon 2");
}

}  // namespace
}  // namespace glintara::desktop
