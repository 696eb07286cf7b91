#include "core/program.h"

#include <utility>

#include "core/colors.h"
#include "core/date_entry.h"
#include "core/element_labels.h"
#include "core/panels.h"
#include "core/quick_views.h"
#include "core/real_time_step.h"
#include "core/satellite_panel.h"
#include "core/time_buttons.h"
#include "core/tips.h"
#include "core/twilight.h"
#include "core/views.h"
#include "flare/cities.h"
#include "flare/pending_track.h"
#include "flare/search.h"
#include "flare/surface_editor.h"
#include "flare/surface_models.h"
#include "orbit/advanced_selection.h"
#include "orbit/progress.h"
#include "orbit/satellite_manager.h"
#include "scene/orientation.h"
#include "scene/sky_pointer.h"

namespace glintara {

void ProgramSignals::UpDateAll() {
    RefreshSatellitePanel(app_);
    ShowElementAge(app_);
    satellite_manager::UpDateAll(app_);
    advanced_selection::Refresh(app_, HasFlareModel);
    surface_editor::RefreshData(app_);
}

void ProgramSignals::ShowWorkingSatellite() {
    RefreshSatellitePanel(app_);
    satellite_manager::ShowWorkingSatellite(app_);
}

void ProgramSignals::ChangeSatelliteSignal() { surface_editor::ChangeSatelliteSignal(app_); }

void ProgramSignals::RefreshData() { surface_editor::RefreshData(app_); }

void ProgramSignals::UpdateGraphicsLevel2() { glintara::UpdateGraphicsLevel2(app_.Main); }

void ProgramSignals::RefreshSettings() {
    form_colors::WinDataUpdate(app_);
    const SettingsControls& forms = app_.Settings;
    if (forms.Local.Visible) local_settings::WinDataUpdate(app_);
    if (forms.RealTime.Visible) real_time_step::Open(app_);
    if (forms.Twilight.Visible) twilight::WinDataUpdate(app_);
}

void ProgramSignals::SyncronizeMenuBar() { glintara::SyncronizeMenuBar(app_.Main); }

void ProgramSignals::SaveStat() { usage_.SaveStat(); }

Program::Program(Application& app, UsageRecord& usage, const ComputerClock& clock, ProgramHooks hooks)
    : app_(app),
      startUpHooks_(hooks.startUp),
      Time(app, clock),
      Usage(usage),
      Loop(app, Time, hooks.picture),
      Files(app, Time, std::move(hooks.workspace)),
      OpeningSequence(
          app, clock, Loop,
          {hooks.loadStartUpWorkspace ? std::move(hooks.loadStartUpWorkspace) : [this] { return Files.LoadStartUp(); },
           [this] { Usage.CheckForUpdate(app_.Data.UpdateCheckDays, false); }}),
      End(app, std::move(hooks.shutDown)) {
    Loop.Connect();
    OpeningSequence.Connect();
    Files.Connect();
    End.Connect();
    ConnectOptions(app,
                   {[this] { Time.TimeSyncronize(); }, [this] { Loop.ClockTick(); }, hooks.startUp.rebuildStarList});
    ConnectTimeButtons(app, Time);
    ConnectSatellitePanel(app);
    ConnectPanels(app);
    ConnectViews();
    ConnectSearch();
    local_settings::Connect(app, Time, hooks.localSettings);
    real_time_step::Connect(app);
    form_colors::Connect(app);
    twilight::Connect(app);
    date_entry::Connect(app, Time);
    ConnectTracks();
    surface_editor::Connect(app, Time);
    Usage.SetAddressTeller([&app](const std::string& address) { TellNewsAddress(app.Main, address); });
    satellite_manager::Connect(app);
    advanced_selection::Connect(app, HasFlareModel);
    app.Observations.CEnDisPointer.SetClickHandler([&app] { ToggleSkyMouse(app); });
    app.Main.MnuTips.SetClickHandler([&app] { ShowTips(app); });
    app.Main.MnuUpdateCheck.SetClickHandler([this] { Usage.CheckForUpdate(app_.Data.UpdateCheckDays, true); });
}

void Program::ConnectSearch() {
    FindFlareControls& form = app_.FindFlare;
    form.CFindFirst.SetClickHandler([this] {
        const LongWork work(app_);
        CFindFirst_click(app_, Time);
    });
    form.CFindNext.SetClickHandler([this] {
        const LongWork work(app_);
        CFindNext_click(app_, Time);
    });
    form.CAbort.SetClickHandler([this] { CAbort_click(app_); });
}

void Program::ConnectTracks() {
    app_.Main.MnuExportTrack.SetClickHandler([this] { MnuExportTrack_Click(app_); });
    app_.Main.mnuFindCityTrack.SetClickHandler([this] { mnuFindCityTrack_Click(app_); });
    ConnectProgress(app_.Progress);
    End.AddAbort([this] { app_.Progress.Aborted = true; });
    ConnectCities(app_);
}

CityHooks Program::HooksOfCities() {
    return {&Time, [this] { CZenith_Click(app_); }};
}

void Program::ConnectViews() {
    MainControls& main = app_.Main;
    const auto connect = [this](Button& button, void (*orient)(Application&)) {
        button.SetClickHandler([this, orient] {
            Loop.GlobeRotation().StopIdle();
            orient(app_);
        });
    };
    connect(main.CZeroOrientation, CZeroOrientation_Click);
    connect(main.CZenith, CZenith_Click);
    connect(main.CUpOrientation, CUpOrientation_Click);
    connect(main.CNoon, CNoon_Click);
    connect(main.CNightOrientation, CNightOrientation_Click);
    connect(main.COrbitOrient, COrbitOrient_Click);
    ConnectSavedViews(app_, Time);
    ConnectQuickViews(app_, Time);
}

}  // namespace glintara
