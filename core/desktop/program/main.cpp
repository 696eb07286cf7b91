// Glintara, the desktop program.

#include <QApplication>
#include <QCoreApplication>
#include <QTimer>

#include "core/desktop/desktop_program.h"
#include "core/desktop/style.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName("Glintara");
    QCoreApplication::setApplicationVersion(GLINTARA_VERSION);
    // Numbers read and show the same everywhere.
    QLocale::setDefault(QLocale::c());
    glintara::desktop::ApplyStyle(application);
    glintara::desktop::DesktopProgram program;
    program.Start();
    return QApplication::exec();
}
