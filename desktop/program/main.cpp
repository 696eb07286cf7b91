// Glintara, the desktop program.

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QIcon>
#include <QStandardPaths>
#include <algorithm>
#include <iterator>
#include <string_view>

#include "core/program_folder.h"
#include "desktop/main/style.h"
#include "desktop/main/window_memory.h"
#include "desktop/program/desktop_program.h"
#include "orbit/out_of_memory.h"
#include "state/version.h"

namespace {

/// Where the data of an installed program stand, seen from its executable.
constexpr auto kInstalledData = "../share/glintara";

const QCommandLineOption kMapToolsOption("map-tools", "Show the menu by which developers make the map files.");

std::filesystem::path PathOf(const QString& path) { return path.toStdString(); }

glintara::ProgramFolders FindFolders() {
    const std::filesystem::path executable = PathOf(QCoreApplication::applicationDirPath());
    const QString user = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    return glintara::FindProgramFolders({executable, executable / kInstalledData, PathOf(user)});
}

/// What may stand on the command line.
void Describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        "Artificial satellites, their orbits, and the flares that they throw on the ground.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(kMapToolsOption);
    parser.addPositionalArgument("FILE", "A workspace (.cst), or element sets.", "[FILE...]");
}

/// Whether the user only asks what can be asked without a screen.
bool WantsWordsOnly(int argc, char** argv) {
    constexpr std::string_view kQuestions[] = {"-h", "--help", "--help-all", "-v", "--version"};
    return std::any_of(argv + 1, argv + argc, [&](const char* argument) {
        return std::ranges::find(kQuestions, std::string_view(argument)) != std::end(kQuestions);
    });
}

/// The files of the command line by their whole paths: the program is going to change its folder.
QStringList WholePaths(const QStringList& files) {
    QStringList paths;
    for (const QString& file : files) paths << QFileInfo(file).absoluteFilePath();
    return paths;
}

}  // namespace

int main(int argc, char** argv) {
    glintara::EndInWordsWithoutMemory("glintara");
    QCoreApplication::setApplicationName("Glintara");
    QCoreApplication::setApplicationVersion(QString::fromStdString(std::string(glintara::kVersion)));
    QCommandLineParser parser;
    Describe(parser);
    if (argc > 1 && WantsWordsOnly(argc, argv)) {
        const QCoreApplication asked(argc, argv);
        parser.process(asked);
    }
    QApplication application(argc, argv);
    parser.process(application);
    QApplication::setWindowIcon(QIcon(":/icon/glintara.png"));
    QGuiApplication::setDesktopFileName("glintara");
    // Numbers read and show the same everywhere.
    QLocale::setDefault(QLocale::c());
    glintara::desktop::ApplyStyle(application);
    glintara::desktop::DesktopProgram program(glintara::desktop::WindowPlacesFile(), parser.isSet(kMapToolsOption),
                                              std::make_unique<glintara::desktop::QtBrowser>());
    const glintara::ProgramFolders folders = FindFolders();
    program.Start(folders.work, folders.data, WholePaths(parser.positionalArguments()));
    return QApplication::exec();
}
