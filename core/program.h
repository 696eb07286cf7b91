#pragma once

// The rooms of the program's core put together. What stands above them, the windows, and what stands beside them is
// given as functions.

#include <filesystem>

#include "core/computer_clock.h"
#include "core/local_settings.h"
#include "core/opening.h"
#include "core/options.h"
#include "core/run_loop.h"
#include "core/shut_down.h"
#include "core/simulated_time.h"
#include "core/start_up.h"
#include "core/usage_record.h"
#include "core/workspace.h"
#include "flare/cities.h"

namespace glintara {

/// What the core asks of others. What is empty is not there.
struct ProgramHooks {
    PictureHooks picture;
    StartUpHooks startUp;
    std::function<bool()> loadStartUpWorkspace;  ///< in place of the workspace's own; whether one was loaded
    WorkspaceHooks workspace;
    ShutDownHooks shutDown;
    local_settings::Hooks localSettings;
};

/// The services of the core behind `WindowSignals`. The windows derive from it, and what they override goes on to it.
/// `app` and `usage` may be built after it, but before the first call.
class ProgramSignals : public WindowSignals {
  public:
    ProgramSignals(Application& app, UsageRecord& usage) : app_(app), usage_(usage) {}

    void UpDateAll() override;
    void ShowWorkingSatellite() override;
    void RefreshSettings() override;
    void ChangeSatelliteSignal() override;
    void RefreshData() override;
    void UpdateGraphicsLevel2() override;
    void SyncronizeMenuBar() override;
    void SaveStat() override;

  private:
    Application& app_;
    UsageRecord& usage_;
};

/// The core of the program. It hangs its handlers on the controls of `app`, so both live together; the clock and the
/// usage record must outlive it.
class Program {
  public:
    Program(Application& app, UsageRecord& usage, const ComputerClock& clock, ProgramHooks hooks);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Brings the program up; the opening follows from the timers.
    void Start(const std::filesystem::path& programFolder) {
        Form_Load(app_, Time, Usage, startUpHooks_, programFolder);
    }

    /// What a choice in the window of cities asks of the core.
    CityHooks HooksOfCities();

  private:
    void ConnectSearch();
    void ConnectTracks();
    void ConnectViews();

    Application& app_;
    StartUpHooks startUpHooks_;

  public:
    SimulatedTime Time;
    UsageRecord& Usage;
    RunLoop Loop;
    WorkspaceFiles Files;
    Opening OpeningSequence;
    ShutDown End;
};

}  // namespace glintara
