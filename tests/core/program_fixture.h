#pragma once

// The core of the program without windows, on a clock that a test moves.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/manual_clock.h"
#include "core/program.h"
#include "flare/surface_models.h"
#include "state/recording_services.h"
#include "support/temporary_folder.h"

namespace glintara::testing {

constexpr double kPlainPi = 3.14159265358979323846;
constexpr double kDegree = kPlainPi / 180;
constexpr double kSecond = 1 / 86400.0;

class RecordingBrowser : public Browser {
  public:
    void Open(const std::string& address, std::function<void()> failed) override {
        opened.push_back(address);
        if (fails) failed();
    }

    bool fails = false;

    std::vector<std::string> opened;
};

class RecordingSignals : public ProgramSignals {
  public:
    using ProgramSignals::ProgramSignals;

    void ShowFullScreen(bool fullScreen) override { fullScreens.push_back(fullScreen); }

    std::vector<bool> fullScreens;  ///< what the window was told
};

/// What a picture showed.
struct Picture {
    std::int64_t ms = 0;
    double zoom = 0;
    double lon = 0;
    double simSecond = 0;
    bool fine = false;
    Splash splash = Splash::None;
};

/// The program before `Start`: 20 January 2018, 17:42:09.31 UTC.
struct ProgramTest : ::testing::Test {
    ProgramTest() {
        clock.Drive(app.Main);
        usage.SetNewsHost("https://news.example");
    }

    /// The program in its running phase, without the opening; no picture has been made.
    void RunAtOnce() {
        program.Time.ReadBase();
        program.Time.TimeSyncronize();
        app.Main.Timer2.Stop();
        app.Main.Timer5.Enabled = true;
        pictures.clear();
    }

    /// One satellite of `meanMotion` revolutions a day.
    void AddSatellite(double meanMotion = 15) {
        SatRecord& satellite = app.Data.Satellite(++app.Data.SatCount);
        satellite.MeanMotion = meanMotion;
        satellite.OrbitNumber = static_cast<std::int16_t>(app.Data.SatCount);
        satellite.SatNumber = "2494" + std::to_string(app.Data.SatCount);
        signals.UpDateAll();
    }

    ProgramHooks Hooks() {
        ProgramHooks hooks;
        hooks.picture.makePicture = [this] {
            pictures.push_back({clock.NowMs(), app.Data.View.ZoomFactor, app.Data.View.ViewLon, app.Data.SimSecond,
                                app.Run.FinePass, app.Run.SplashShown});
            if (whilePictured) whilePictured();
        };
        hooks.picture.showPlottingNotice = [this] { notices.push_back(clock.NowMs()); };
        hooks.picture.drawFineStars = [this] { ++fineStars; };
        hooks.picture.findObject = [this] { ++objectsSought; };
        hooks.picture.raiseProgress = [this] { ++progressRaised; };
        hooks.picture.updateSatPosition = [this] { ++positionsTold; };
        hooks.startUp.loadMap = [this] {
            return mapLoads ? std::vector<std::string>() : std::vector<std::string>{"DB001.VDB", "DB003.VDB"};
        };
        hooks.startUp.loadSites = [this] { return sitesLoad; };
        hooks.startUp.rebuildStarList = [this] { starLimits.push_back(app.Data.View.MaxStarMag); };
        hooks.workspace.askForFile = [this](const FileQuestion& question) {
            fileQuestions.emplace_back(question.title);
            return fileChosen;
        };
        hooks.workspace.showLoadingNotice = [this] { ++loadingNotices; };
        hooks.startUp.keptStationCode = [this] { return keptCode; };
        hooks.localSettings.keepStationCode = [this](const std::string& code) { keptCode = code; };
        hooks.loadStartUpWorkspace = [this] {
            if (whileLoaded) whileLoaded();
            return workspaceLoads;
        };
        hooks.shutDown.unloadForm = [this](std::string_view form) { unloaded.emplace_back(form); };
        hooks.shutDown.closeWindow = [this] { ++closesPosted; };
        return hooks;
    }

    TemporaryFolder folder;
    RecordingBoxes boxes;
    ManualClock clock{{2018, 1, 20, 17, 42, 9.31}};
    RecordingBrowser browser;
    RecordingSignals signals{app, usage};
    Application app{boxes, clock, signals, ApplyDefaultModel};
    UsageRecord usage{app.Data.UsageStats, clock, browser, folder.Path() / "glt.ini"};

    std::vector<Picture> pictures;
    std::function<void()> whilePictured;
    std::vector<std::int64_t> notices;
    int fineStars = 0;
    int objectsSought = 0;
    int progressRaised = 0;
    int positionsTold = 0;
    bool mapLoads = true;
    bool sitesLoad = true;
    bool workspaceLoads = false;
    std::function<void()> whileLoaded;
    std::vector<std::string> fileQuestions;           ///< titles of the file dialogs
    std::optional<std::filesystem::path> fileChosen;  ///< what the user chooses in them
    int loadingNotices = 0;
    std::vector<double> starLimits;
    std::vector<std::string> unloaded;
    int closesPosted = 0;
    std::string keptCode;  ///< the observer's code, as the desktop keeps it

    Program program{app, usage, clock, Hooks()};
};

}  // namespace glintara::testing
