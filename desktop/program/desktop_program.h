#pragma once

// The program with its windows: the rooms of the core, the scene and the desktop put together.

#include <QMenu>
#include <QSettings>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/keys.h"
#include "core/mouse.h"
#include "core/program.h"
#include "desktop/core/form_about.h"
#include "desktop/core/form_help.h"
#include "desktop/flare/form_find_flare.h"
#include "desktop/main/main_scope.h"
#include "desktop/main/picture_output.h"
#include "desktop/main/qt_services.h"
#include "desktop/program/download_window.h"
#include "desktop/program/editor_window.h"
#include "desktop/program/info_window.h"
#include "desktop/program/observation_windows.h"
#include "desktop/program/satellite_windows.h"
#include "desktop/program/settings_windows.h"
#include "desktop/program/track_windows.h"
#include "desktop/scene/painter_surface.h"
#include "scene/stages.h"

namespace glintara::desktop {

/// The signals of the core, and what they mean to windows that may be open.
class DesktopSignals : public ProgramSignals {
  public:
    using ProgramSignals::ProgramSignals;

    std::function<void()> refreshInfo;
    std::function<void()> refreshSatPosition;
    std::function<void(bool)> showFullScreen;

    void ShowWorkingSatellite() override {
        ProgramSignals::ShowWorkingSatellite();
        Tell(refreshInfo);
    }
    void RefreshInfo() override { Tell(refreshInfo); }
    void RefreshSatPosition() override { Tell(refreshSatPosition); }
    void ShowFullScreen(bool fullScreen) override { showFullScreen(fullScreen); }

  private:
    static void Tell(const std::function<void()>& window) {
        if (window) window();
    }
};

class DesktopProgram {
  public:
    /// `placesFile` is where the windows remember their places. With `mapTools` the window has the developers' menu
    /// "Map Tools". `browser` opens the news page; without one nothing is opened.
    explicit DesktopProgram(const QString& placesFile, bool mapTools = false,
                            std::unique_ptr<Browser> browser = std::make_unique<NoBrowser>());
    ~DesktopProgram();
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;

    /// Shows the window and begins the opening. `folder` becomes the current directory; data files that are missing
    /// there are read in `dataFolders`. `files`, by their whole paths, are opened after the opening as if they had been
    /// dropped on the window: a workspace in place of the start-up workspace.
    void Start(const std::filesystem::path& folder, const std::vector<std::filesystem::path>& dataFolders = {},
               const QStringList& files = {});

    Application& State() { return app_; }
    MainScope& Window() { return *window_; }
    Program& Core() { return *program_; }
    DownloadWindow& Download() { return *download_; }

  private:
    ProgramHooks MakeHooks();
    void ConnectWindow();
    void ConnectMenus();
    void ConnectMouse();
    void ConnectWorkspace();
    bool PressKey(int qtKey, bool shift);
    bool PressKeyElsewhere(int qtKey, bool shift);
    void OpenBeside(QWidget& form, Qt::Edge edge);
    void OpenTLEFile();
    std::optional<std::filesystem::path> AskForFile(const FileQuestion& question);
    void ShowPictureMenu(const QPoint& at);
    void TakeDropped(const QStringList& files);
    bool OpenFirst();
    void ShowSearch();
    void ShowSatellites();
    void ShowHelp();
    void ShowAbout();
    void ConnectLabels();
    void RefreshLabels();
    std::vector<std::string> LoadMap();
    bool LoadPlaces();
    void MakePicture();
    void ShowNotice();
    void ShowLoading();
    void FollowSize();
    void ShowFullScreen(bool fullScreen);

    const bool mapTools_;
    std::vector<std::filesystem::path> dataFolders_{"."};  // where data files are looked for, in order
    QStringList files_;                                    // to be opened first
    QSettings places_;                                     // outlives the windows, which write to it when they close
    QtMessageBoxes boxes_;
    QtEvents events_;
    SystemClock clock_;
    const std::unique_ptr<Browser> browser_;
    DesktopSignals signals_{app_, usage_};
    Application app_;
    UsageRecord usage_{app_.Data.UsageStats, clock_, *browser_, kUsageFile};
    std::unique_ptr<MainScope> window_;
    PainterSurface surface_;
    FrameMemory frame_;
    SatelliteWorkspace satellites_;
    FrameStages stages_;
    QImage labelGround_;  // the picture where its texts stand, without them; null while it has none
    int labelTop_ = 0;    // its first row, pixels of the display
    bool labelsChanged_ = false;
    std::unique_ptr<QtPictureDialogs> pictureDialogs_;
    std::unique_ptr<PictureOutput> pictureOutput_;
    std::unique_ptr<QMenu> pictureMenu_;  // made anew each time
    double rollAtPress_ = 0;              // of the picture when a button went down on it
    std::unique_ptr<Program> program_;
    std::unique_ptr<MouseSteering> mouse_;
    std::unique_ptr<TimerDrivers> timers_;
    std::unique_ptr<FormFindFlare> searchForm_;
    std::unique_ptr<FormHelp> helpForm_;
    std::unique_ptr<FormAbout> aboutForm_;
    std::unique_ptr<ObservationWindows> observations_;
    std::unique_ptr<SettingsWindows> settings_;
    std::unique_ptr<TrackWindows> tracks_;
    std::unique_ptr<SatelliteWindows> satelliteWindows_;
    std::unique_ptr<EditorWindow> editor_;
    std::unique_ptr<DownloadWindow> download_;
    std::unique_ptr<InfoWindow> info_;
};

}  // namespace glintara::desktop
