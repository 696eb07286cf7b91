#include "desktop/main/beside.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QTemporaryDir>

#include "desktop/window_checks.h"

namespace glintara::desktop {
namespace {

using testing::Open;

const QRect kScreen(0, 0, 1920, 1080);

TEST(PlaceBeside, StandsBesideWhatItIsAbout) {
    const QRect about(40, 60, 900, 700);
    const QRect place = PlaceBeside({640, 500}, {about}, kScreen);
    EXPECT_FALSE(place.intersects(about));
    EXPECT_TRUE(kScreen.contains(place));
    EXPECT_EQ(place.left(), 948);
    EXPECT_EQ(place.top(), 60);
}

TEST(PlaceBeside, GoesToTheSideThatHasRoom) {
    const QRect about(980, 60, 900, 700);
    const QRect place = PlaceBeside({640, 500}, {about}, kScreen);
    EXPECT_FALSE(place.intersects(about));
    EXPECT_EQ(place.right(), 971);
    const QRect wide(0, 500, 1920, 580);
    EXPECT_FALSE(PlaceBeside({640, 400}, {wide}, kScreen).intersects(wide));
}

TEST(PlaceBeside, CoversNeitherOfTwo) {
    const std::vector<QRect> about{QRect(0, 0, 1000, 1080), QRect(1000, 500, 920, 580)};
    const QRect place = PlaceBeside({600, 400}, about, kScreen);
    for (const QRect& one : about) EXPECT_FALSE(place.intersects(one));
    EXPECT_TRUE(kScreen.contains(place));
}

TEST(PlaceBeside, WithoutRoomItCoversACornerAndKeepsItsTitleOnTheScreen) {
    const QRect about(0, 28, 1366, 600);  // the panels below it may be covered
    const QRect screen(0, 0, 1366, 768);
    const QRect place = PlaceBeside({640, 520}, {about}, screen);
    EXPECT_TRUE(screen.contains(place));
    EXPECT_EQ(place.bottom(), screen.bottom());
    const QRect large = PlaceBeside({1600, 900}, {about}, screen);
    EXPECT_EQ(large.left(), 0);
    EXPECT_GE(large.top(), 20);
}

TEST(OpenBeside, LeavesAWindowThatHasAPlace) {
    const QTemporaryDir folder;
    QSettings store(folder.filePath("windows.ini"), QSettings::IniFormat);
    QWidget about;
    about.setGeometry(100, 100, 300, 200);
    about.show();
    QWidget window;
    window.setObjectName("Tool");
    window.resize(100, 100);
    window.move(150, 150);
    store.setValue("Tool/x", 150);
    OpenBeside(window, {&about}, store);
    EXPECT_EQ(window.pos(), QPoint(150, 150));
    store.clear();
    OpenBeside(window, {&about}, store);
    EXPECT_FALSE(QRect(window.pos(), window.size()).intersects(about.geometry()));
}

struct PlaceAtEdgeTest : ::testing::Test {
    void OpenAt(const QRect& place) {
        main.setCentralWidget(picture);
        main.setGeometry(place);
        Open(main);
    }

    QRect ToolAt(Qt::Edge edge) { return {PlaceAtEdge(tool, main, *picture, edge), tool.size()}; }

    PlaceAtEdgeTest() { tool.resize(400, 300); }

    QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QMainWindow main;
    QWidget* picture = new QWidget;
    QDialog tool;
};

TEST_F(PlaceAtEdgeTest, OutsideTheMainWindowWhereTheScreenHasRoom) {
    OpenAt({450, 50, 700, 600});
    EXPECT_FALSE(main.frameGeometry().intersects(ToolAt(Qt::RightEdge)));
    EXPECT_FALSE(main.frameGeometry().intersects(ToolAt(Qt::LeftEdge)));
    EXPECT_TRUE(screen.contains(ToolAt(Qt::RightEdge)));
    EXPECT_TRUE(screen.contains(ToolAt(Qt::LeftEdge)));
}

TEST_F(PlaceAtEdgeTest, OtherwiseAtTheEdgeOfThePictureAndNeverOverItsMiddle) {
    for (const QRect& place : {screen, QRect(0, 0, 960, 540)}) {
        OpenAt(place);
        const QPoint middle = picture->mapToGlobal(picture->rect().center());
        for (const Qt::Edge edge : {Qt::LeftEdge, Qt::RightEdge}) {
            const QRect there = ToolAt(edge);
            EXPECT_FALSE(there.contains(middle));
            EXPECT_TRUE(screen.contains(there));
        }
        EXPECT_EQ(ToolAt(Qt::LeftEdge).left(), place.left());
    }
}

}  // namespace
}  // namespace glintara::desktop
