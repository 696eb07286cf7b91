#include "desktop/main/window_memory.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QFile>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <limits>

#include "desktop/window_checks.h"

namespace glintara::desktop {
namespace {

using testing::Open;

struct WindowMemoryTest : ::testing::Test {
    /// A run of the program: a window opens, something is done to it, it closes, the program ends.
    template <class Window = QDialog>
    QRect Run(const std::function<void(QWidget&)>& doing = {}, const char* name = "FormFindFlare") {
        QSettings store(File(), QSettings::IniFormat);
        Window window;
        window.setObjectName(name);
        window.resize(200, 150);
        RememberPlace(window, store);
        Open(window);
        const QRect opened(window.pos(), window.size());
        maximized = window.isMaximized();
        if (doing) doing(window);
        window.close();
        return opened;
    }

    /// Writes a place by hand.
    void Write(const QVariant& x, const QVariant& y, const QVariant& width, const QVariant& height) {
        QSettings store(File(), QSettings::IniFormat);
        store.setValue("FormFindFlare/x", x);
        store.setValue("FormFindFlare/y", y);
        store.setValue("FormFindFlare/width", width);
        store.setValue("FormFindFlare/height", height);
    }

    QString File() const { return folder.filePath("places/windows.ini"); }

    QTemporaryDir folder;
    QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    bool maximized = false;
};

const auto kMove = [](QWidget& window) {
    window.move(60, 45);
    window.resize(250, 167);
};

TEST_F(WindowMemoryTest, AWindowOpensWhereItStoodWhenItWasClosed) {
    Run(kMove);
    ASSERT_TRUE(QFile::exists(File()));
    EXPECT_EQ(Run(), QRect(60, 45, 250, 167));
    // And so it does the time after.
    EXPECT_EQ(Run(), QRect(60, 45, 250, 167));
}

TEST_F(WindowMemoryTest, AWindowThatIsOnlyHiddenIsRememberedToo) {
    Run([](QWidget& window) {
        kMove(window);
        window.hide();
    });
    EXPECT_EQ(Run(), QRect(60, 45, 250, 167));
}

TEST_F(WindowMemoryTest, ADialogThatIsShownAgainIsWhereTheUserHasPutIt) {
    QSettings store(File(), QSettings::IniFormat);
    QMainWindow main;
    main.setGeometry(0, 0, 150, 100);
    Open(main);
    QDialog dialog(&main);
    dialog.setObjectName("FormFindFlare");
    RememberPlace(dialog, store);
    Open(dialog);
    // As the window manager moves it.
    dialog.windowHandle()->setGeometry(160, 110, 175, 125);
    QCoreApplication::processEvents();
    ASSERT_EQ(dialog.geometry(), QRect(160, 110, 175, 125));
    dialog.close();
    Open(dialog);
    EXPECT_EQ(dialog.geometry(), QRect(160, 110, 175, 125));
}

TEST_F(WindowMemoryTest, EachWindowHasItsOwnPlace) {
    Run(kMove, "FormFindFlare");
    Run(
        [](QWidget& window) {
            window.move(40, 50);
            window.resize(220, 110);
        },
        "FormSatellites");
    EXPECT_EQ(Run({}, "FormFindFlare"), QRect(60, 45, 250, 167));
    EXPECT_EQ(Run({}, "FormSatellites"), QRect(40, 50, 220, 110));
}

TEST_F(WindowMemoryTest, AWindowWithoutANameIsNotRemembered) {
    Run(kMove, "");
    EXPECT_FALSE(QFile::exists(File()));
}

TEST_F(WindowMemoryTest, APositionOffTheScreensIsRefusedAndTheSizeKept) {
    const QRect usual = Run();
    const std::vector<QPoint> outside{{screen.right() + 500, 100},
                                      {100, screen.bottom() + 100},
                                      {-5000, 100},
                                      {100, -40},                  // the title bar is above the screen
                                      {screen.right() - 20, 100},  // too little of it to be grasped
                                      {100, screen.bottom() - 5}};
    for (const QPoint& place : outside) {
        Write(place.x(), place.y(), 240, 180);
        const QRect opened = Run();
        EXPECT_EQ(opened.size(), QSize(240, 180)) << place.x() << ", " << place.y();
        EXPECT_NE(opened.topLeft(), place);
        EXPECT_TRUE(screen.contains(opened)) << place.x() << ", " << place.y();
    }
    EXPECT_TRUE(screen.contains(usual));
}

TEST_F(WindowMemoryTest, AWindowPartlyOffTheScreenStaysThere) {
    Write(screen.right() - 150, screen.bottom() - 100, 240, 180);
    EXPECT_EQ(Run(), QRect(screen.right() - 150, screen.bottom() - 100, 240, 180));
}

TEST_F(WindowMemoryTest, ASizeLargerThanTheScreenIsCut) {
    Write(0, 0, 9000, 8000);
    EXPECT_EQ(Run().size(), screen.size());
}

TEST_F(WindowMemoryTest, WhatIsNoPlaceIsIgnored) {
    const QRect usual = Run();
    const int huge = std::numeric_limits<int>::max();
    const int tiny = std::numeric_limits<int>::min();
    Write("here", 5, 240, 180);
    EXPECT_EQ(Run(), usual);
    Write(10, 10, 0, 180);
    EXPECT_EQ(Run(), usual);
    Write(10, 10, -240, -180);
    EXPECT_EQ(Run(), usual);
    Write(huge, tiny, huge, huge);
    EXPECT_EQ(Run(), usual);
    QFile file(File());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[FormFindFlare\nx=\xff\xfe\n=\n@Rect(");
    file.close();
    EXPECT_EQ(Run(), usual);
}

TEST_F(WindowMemoryTest, AMaximizedWindowOpensMaximizedAndFindsItsOldPlace) {
    Run<QMainWindow>(kMove);
    Run<QMainWindow>([](QWidget& window) { window.showMaximized(); });
    Run<QMainWindow>([](QWidget& window) { EXPECT_EQ(window.normalGeometry().size(), QSize(250, 167)); });
    EXPECT_TRUE(maximized);
    Run<QMainWindow>([](QWidget& window) {
        window.showNormal();
        kMove(window);
    });
    EXPECT_TRUE(maximized);
    EXPECT_EQ(Run<QMainWindow>(), QRect(60, 45, 250, 167));
    EXPECT_FALSE(maximized);
}

TEST_F(WindowMemoryTest, AMaximizedWindowIsNotRememberedAsALargeOne) {
    Run<QMainWindow>(kMove);
    Run<QMainWindow>([](QWidget& window) { window.showMaximized(); });
    const QSettings store(File(), QSettings::IniFormat);
    EXPECT_EQ(store.value("FormFindFlare/x").toInt(), 60);
    EXPECT_EQ(store.value("FormFindFlare/y").toInt(), 45);
    EXPECT_EQ(store.value("FormFindFlare/width").toInt(), 250);
    EXPECT_EQ(store.value("FormFindFlare/height").toInt(), 167);
}

TEST_F(WindowMemoryTest, AFullScreenLeavesThePlaceAlone) {
    Run<QMainWindow>(kMove);
    Run<QMainWindow>([](QWidget& window) { window.showFullScreen(); });
    EXPECT_EQ(Run<QMainWindow>(), QRect(60, 45, 250, 167));
}

TEST_F(WindowMemoryTest, AWindowWithoutAMemoryOpensAtItsFirstPlace) {
    QSettings store(File(), QSettings::IniFormat);
    for (const QPoint& place : {QPoint(77, 66), QPoint(30, 40)}) {
        QDialog window;
        window.setObjectName("FormFindFlare");
        RememberPlace(window, store, [&place](const QWidget&) { return place; });
        Open(window);
        EXPECT_EQ(window.pos(), QPoint(77, 66)) << "the second time it is remembered";
        window.close();
    }
}

TEST_F(WindowMemoryTest, ThePlacesLieInTheUsersConfigurationFolder) {
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    EXPECT_TRUE(WindowPlacesFile().startsWith(folder.path() + "/")) << WindowPlacesFile().toStdString();
    EXPECT_TRUE(WindowPlacesFile().endsWith("/windows.ini"));
    if (before.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", before);
}

}  // namespace
}  // namespace glintara::desktop
