// The tests of the windows run on Qt's offscreen platform, on a screen on which the main window has its usual size.

#include <gtest/gtest.h>

#include <QApplication>

#include "desktop/main/style.h"

/// What the desktop's own libraries keep until the end is not ours to free. Read by LeakSanitizer, when there is one.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\nleak:libQt6\n"; }

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GLINTARA_SOURCE_DIR "/tests/desktop/screen.json");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    glintara::desktop::ApplyStyle(application);
    return RUN_ALL_TESTS();
}
