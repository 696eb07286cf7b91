#include "core/start_up.h"

#include <system_error>

#include "core/colors.h"
#include "core/local_settings.h"
#include "core/options.h"
#include "core/panels.h"
#include "core/satellite_panel.h"
#include "core/views.h"
#include "orbit/location.h"
#include "scene/orientation.h"

namespace glintara {

namespace {

constexpr double kStartStep = 5;  // seconds
constexpr double kStartZoom = 16;
constexpr double kStartOrbitTurns = 6;
constexpr double kStartSkyScale = 55;

// The stars of a program that has none of its own to choose yet; `CAutoMag` raises both at once.
constexpr double kStartStarMag = 5;
constexpr std::int16_t kStartStarSize = 6;

/// An object of the program that no drawing stands behind yet.
void RestLib3D(MainControls& main) {
    main.MnuLib3D.Checked = true;
    main.MnuLib3D.Checked = false;
    main.MnuLib3D.Enabled = false;
}

void LoadDataFiles(Application& app, const StartUpHooks& hooks) {
    const std::vector<std::string> notRead = hooks.loadMap ? hooks.loadMap() : std::vector<std::string>();
    const bool sites = !hooks.loadSites || hooks.loadSites();
    if (notRead.empty() && sites) return;
    std::string text = "Error Loading Database";
    if (!notRead.empty()) text += "\n\nMissing or damaged:";
    for (const std::string& file : notRead) text += " " + file;
    app.Boxes.Tell(text, MessageIcon::Critical);
}

void StartSky(Application& app, const StartUpHooks& hooks) {
    ViewState& view = app.Data.View;
    view.StarSizeScale = kStartStarSize;
    view.SkyScale = kStartSkyScale;
    view.SkyScaleSaved = kStartSkyScale;
    SetSkyOptions(app, false);
    view.MaxStarMag = kStartStarMag;
    if (hooks.rebuildStarList) hooks.rebuildStarList();
}

void StartSatellites(Application& app) {
    RefreshSatellitePanel(app);
    form_colors::CDefault_Click(app);
    app.Main.CAutoMag.Value = true;
}

void StartObserver(CommonData& data, const StartUpHooks& hooks) {
    data.StationCode = "0000";
    data.StationNumber = 0;
    const std::string kept = hooks.keptStationCode ? hooks.keptStationCode() : std::string();
    if (!kept.empty()) SetStationCode(data, kept);
}

void StartClock(Application& app, SimulatedTime& time) {
    SetLocationDegrees(app.Data, 0, 0);
    app.Data.UTCOffsetHours = 0;
    time.ReadBase();
    ReSizeWindow(app);
}

void PlaceView(Application& app, SimulatedTime& time) {
    app.Data.View.OrbitTurns = kStartOrbitTurns;
    app.Data.View.ZoomFactor = kStartZoom;
    time.TimeSyncronize();
    CZenith_Click(app);
    ShowOrbitLabel(app);
}

}  // namespace

void Form_Load(Application& app, SimulatedTime& time, UsageRecord& usage, const StartUpHooks& hooks,
               const std::filesystem::path& programFolder) {
    if (!programFolder.empty()) {
        std::error_code failed;  // a folder that cannot be entered shows in the data files, which are not found then
        std::filesystem::current_path(programFolder, failed);
    }
    RestLib3D(app.Main);
    StartObserver(app.Data, hooks);
    app.Run.PanelsHidden = false;
    app.Data.RealTimeStep = kStartStep;
    SetMenusVisible(app, true);
    MenuToggle(app);
    MenuToggle(app);
    LoadDataFiles(app, hooks);
    usage.CountStart();
    ClearViews(app);
    StartSky(app, hooks);
    StartSatellites(app);
    app.Run.RotIncLat = app.Run.RotIncLon = app.Run.RotIncRoll = kStartRotation;
    app.Data.SunRA = kStartSunRA;
    app.Data.SunDec = kStartSunDec;
    StartClock(app, time);
    PlaceView(app, time);
    app.Main.Timer1.Enabled = true;
    app.Main.Timer2.Stop();
    app.Main.Timer2.Interval = 1000;
    app.Main.Timer3.Stop();
}

}  // namespace glintara
