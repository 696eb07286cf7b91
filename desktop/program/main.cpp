// Glintara, the desktop program.

#include <QApplication>
#include <QCoreApplication>
#include <QStandardPaths>

#include "core/program_folder.h"
#include "desktop/main/style.h"
#include "desktop/main/window_memory.h"
#include "desktop/program/desktop_program.h"
#include "orbit/out_of_memory.h"
#include "state/version.h"

namespace {

/// Where the data of an installed program stand, seen from its executable.
constexpr auto kInstalledData = "../share/glintara";

/// Shows the menu "Map Tools", by which developers make the map files.
constexpr auto kMapToolsOption = "--map-tools";

std::filesystem::path PathOf(const QString& path) { return path.toStdString(); }

glintara::ProgramFolders FindFolders() {
    const std::filesystem::path executable = PathOf(QCoreApplication::applicationDirPath());
    const QString user = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    return glintara::FindProgramFolders({executable, executable / kInstalledData, PathOf(user)});
}

}  // namespace

int main(int argc, char** argv) {
    glintara::EndInWordsWithoutMemory("glintara");
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName("Glintara");
    QCoreApplication::setApplicationVersion(QString::fromStdString(std::string(glintara::kVersion)));
    // Numbers read and show the same everywhere.
    QLocale::setDefault(QLocale::c());
    glintara::desktop::ApplyStyle(application);
    const bool mapTools = QCoreApplication::arguments().contains(kMapToolsOption);
    glintara::desktop::DesktopProgram program(glintara::desktop::WindowPlacesFile(), mapTools,
                                              std::make_unique<glintara::desktop::QtBrowser>());
    const glintara::ProgramFolders folders = FindFolders();
    program.Start(folders.work, folders.data);
    return QApplication::exec();
}
