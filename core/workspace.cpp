#include "core/workspace.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <span>
#include <system_error>
#include <utility>

#include "core/option_text.h"
#include "core/options.h"
#include "core/satellite_panel.h"
#include "core/views.h"
#include "engine/glintcore.h"
#include "flare/found_flare.h"
#include "orbit/files.h"
#include "orbit/location.h"
#include "orbit/satellite_table.h"
#include "scene/sky_scale.h"
#include "scene/star_list.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

namespace fs = std::filesystem;

/// Lines of element sets that are shorter hold no elements.
constexpr std::size_t kLineWithElements = 31;

/// A file's name as words show it: without its folder.
std::string NameOf(const fs::path& file) { return ShownName(file.filename().string()); }

WorkspaceDate SimDate(const CommonData& data) {
    return {data.SimYear, data.SimMonth, data.SimDay, data.SimHour, data.SimMinute, data.SimSecond};
}

WorkspaceDate BaseDate(const CommonData& data) {
    return {data.BaseYear, data.BaseMonth, data.BaseDay, data.BaseHour, data.BaseMinute, data.BaseSecond};
}

/// The displayed instant of a file, in its ranges; nothing when that has no year.
std::optional<CalendarFields> InstantOf(const WorkspaceDate& date) {
    const CalendarFields fields = NormalizeDateTime({static_cast<double>(date.year), static_cast<double>(date.month),
                                                     static_cast<double>(date.day), static_cast<double>(date.hour),
                                                     static_cast<double>(date.minute), date.second});
    constexpr double kMostYear = std::numeric_limits<std::int32_t>::max();
    if (!std::isfinite(fields.second) || !(std::abs(fields.year) < kMostYear)) return std::nullopt;
    return fields;
}

std::span<const SatRecord> ListOf(const CommonData& data) {
    return std::span(data.SatTable).subspan(1, static_cast<std::size_t>(data.SatCount));
}

/// What the engine knows of a satellite. One without lines stays as it is: it is listed, but stands nowhere.
void MakeReady(SatRecord& satellite) {
    satellite.EngineBlock = {};
    if (satellite.Line1.size() < kLineWithElements || satellite.Line2.size() < kLineWithElements) return;
    SatelliteInit(satellite.Line1.c_str(), satellite.Line2.c_str(), 'i', &satellite.EngineBlock);
}

bool SamePlace(const Geodetic& a, const Geodetic& b) {
    return a.lat == b.lat && a.lon == b.lon && a.height == b.height;
}

}  // namespace

bool IsWorkspaceName(const fs::path& file) {
    std::string name = file.string();
    if (name.size() < kWorkspaceEnding.size()) return false;
    name.erase(0, name.size() - kWorkspaceEnding.size());
    return std::ranges::equal(name, kWorkspaceEnding, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

WorkspaceHead CaptureHead(const Application& app) {
    const CommonData& data = app.Data;
    const ViewState& view = data.View;
    WorkspaceHead head;
    head.TwilightAngle = data.TwilightAngle;
    head.SoilColor = data.SoilColor;
    head.SeaColor = data.SeaColor;
    head.ShadowColor = data.ShadowColor;
    head.UpdateCheckDays = data.UpdateCheckDays;
    head.Options = OptionsToString(app.Main);
    head.Sim = SimDate(data);
    head.Base = BaseDate(data);
    head.TimeOffset = data.TimeOffset;
    head.ViewRoll = view.ViewRoll;
    head.ViewLat = view.ViewLat;
    head.ViewLon = view.ViewLon;
    head.ZoomFactor = view.ZoomFactor;
    head.PanX = view.PanX;
    head.PanY = view.PanY;
    head.SiteLat = data.Site.SiteLat;
    head.SiteLon = data.Site.SiteLon;
    head.SiteAlt = data.Site.SiteAlt;
    head.UTCOffsetHours = data.UTCOffsetHours;
    head.RealTimeStep = data.RealTimeStep;
    head.MaxStarMag = view.MaxStarMag;
    head.LockedLat = view.LockedLat;
    head.LockedAngle = view.LockedAngle;
    head.LockedRoll = view.LockedRoll;
    head.SkyLocked = view.SkyLocked;
    head.OrbitTurns = view.OrbitTurns;
    head.StarSizeScale = view.StarSizeScale;
    head.SkyScale = view.SkyScale;
    head.SkyScaleSaved = view.SkyScaleSaved;
    head.SatCount = static_cast<std::int16_t>(data.SatCount);
    return head;
}

WorkspaceFiles::WorkspaceFiles(Application& app, SimulatedTime& time, WorkspaceHooks hooks)
    : app_(app), time_(time), hooks_(std::move(hooks)), saved_(TakeMarks()) {}

void WorkspaceFiles::Connect() {
    MainControls& main = app_.Main;
    main.MnuLoad.SetClickHandler([this] { Reload(); });
    main.MnuOpenAs.SetClickHandler([this] {
        const std::optional<fs::path> file = hooks_.askForFile ? hooks_.askForFile(kOpenWorkspace) : std::nullopt;
        if (file) Open(*file);
    });
    main.MnuSave.SetClickHandler([this] {
        const fs::path file = app_.Run.WorkspaceFile.Get();
        if (ConfirmSave(file)) Save(file);
    });
    main.MnuSaveAs.SetClickHandler([this] { SaveAs(); });
    main.MnuSaveStartUp.SetClickHandler([this] { SaveStartUp(); });
}

// Loading.

bool WorkspaceFiles::LoadWorkspace(const fs::path& file, bool verbose) {
    failure_ = LoadFailure::None;
    put_ = false;
    if (verbose) {
        if (hooks_.showLoadingNotice) hooks_.showLoadingNotice();
        app_.EventQueue.ServeEvents();
    }
    const std::optional<std::string> text = ReadWholeFile(file, kLargestWorkspaceFile, &why_);
    if (!text) return false;

    Workspace workspace;
    workspace.Head = CaptureHead(app_);
    const WorkspaceReading reading = ReadWorkspace(*text, workspace, why_);
    if (reading == WorkspaceReading::OtherFile) failure_ = LoadFailure::OtherFile;
    if (reading == WorkspaceReading::OtherVersion) failure_ = LoadFailure::OtherVersion;
    if (reading != WorkspaceReading::Whole && reading != WorkspaceReading::Broken) return false;

    const std::size_t complete = workspace.Satellites.size();
    Put(workspace);
    if (reading == WorkspaceReading::Broken) {
        why_ += ".\n\nLoaded: " + std::to_string(complete) + " of " + std::to_string(workspace.Head.SatCount) +
                " satellites";
        BelongToNoFile();
        return false;
    }
    BecomeCurrent(file);
    return true;
}

bool WorkspaceFiles::LoadWorkspaceCommand(const fs::path& file, bool verbose) {
    if (loading_) return false;
    loading_ = true;
    const bool loaded = LoadWorkspace(file, verbose);
    if (put_) ShowSession();
    RefreshLocation(app_.Data);
    app_.Windows.RefreshSettings();
    app_.Windows.UpdateGraphicsLevel2();
    loading_ = false;
    if (!loaded && verbose) TellLoadFailure(file);
    if (loaded && verbose) app_.Main.LCommandOutput.Caption = "Loaded Workspace " + NameOf(file);
    return loaded;
}

void WorkspaceFiles::TellLoadFailure(const fs::path& file) const {
    std::string text = "File Load Error\n\n" + NameOf(file) + ": " + why_ + ".";
    if (failure_ == LoadFailure::OtherVersion)
        text = "The configuration file has been saved by a different software version.\r\nThe loading is not possible.";
    app_.Boxes.Tell(text, MessageIcon::Critical);
    app_.Windows.UpdateGraphicsLevel2();
}

void WorkspaceFiles::Put(Workspace& workspace) {
    put_ = true;
    // A search ends, and nothing moves the view any more.
    app_.Windows.ChangeSatelliteSignal();
    app_.FindFlare.SearchAbort = true;
    app_.FindFlare.LastFoundSat = -1;
    app_.FindFlare.LastFoundMirror = -1;
    TellFoundFlare(app_, std::nullopt);
    app_.Main.TimerViewShow.Stop();
    app_.Main.TimerHRot.Stop();
    ClearViews(app_);
    SetPendingView(app_, 0);
    // What stands in these windows would put the place and the numbers before back.
    SettingsControls& settings = app_.Settings;
    for (Observed<bool>* window : {&settings.Local.Visible, &settings.RealTime.Visible, &settings.Twilight.Visible})
        *window = false;

    // What boxes do when they change is overwritten by the fields that follow.
    StringToOptions(app_, workspace.Head.Options);
    PutSatellites(workspace.Satellites);
    PutHead(workspace.Head);
    SettleOptions(app_, workspace.Head.Options);
    SettleMilliOffset(app_);
    for (std::size_t slot = 1; slot <= kViewCount; ++slot)
        app_.Data.SavedViews[slot] = std::move(workspace.Views[slot]);

    ViewState& view = app_.Data.View;
    view.SkyLocked = app_.Main.CLockSky.Value;
    HoldView(view);
    if (app_.Main.CMaximizeSky.Value) FitSky(app_);
    if (app_.Main.CStarsOnGlobe.Value) view.SkyScale = 1;
    RefreshViewCache(view);
}

void WorkspaceFiles::PutHead(const WorkspaceHead& head) {
    CommonData& data = app_.Data;
    data.SetTwilightAngle(head.TwilightAngle);
    data.SoilColor = head.SoilColor;
    data.SeaColor = head.SeaColor;
    data.ShadowColor = head.ShadowColor;
    data.UpdateCheckDays = head.UpdateCheckDays;

    if (const std::optional<CalendarFields> instant = InstantOf(head.Sim))
        data.SetSimInstant(*instant, DateToJD(*instant));
    data.BaseYear = head.Base.year;
    data.BaseMonth = head.Base.month;
    data.BaseDay = head.Base.day;
    data.BaseHour = head.Base.hour;
    data.BaseMinute = head.Base.minute;
    data.BaseSecond = head.Base.second;
    data.TimeOffset = head.TimeOffset;
    data.UTCOffsetHours = head.UTCOffsetHours;
    data.RealTimeStep = head.RealTimeStep;

    SetLocation(data, {head.SiteLat, head.SiteLon, head.SiteAlt});

    ViewState& view = data.View;
    view.ViewRoll = head.ViewRoll;
    view.ViewLat = head.ViewLat;
    view.ViewLon = head.ViewLon;
    view.ZoomFactor = head.ZoomFactor;
    view.PanX = head.PanX;
    view.PanY = head.PanY;
    view.MaxStarMag = head.MaxStarMag;
    view.LockedLat = head.LockedLat;
    view.LockedAngle = head.LockedAngle;
    view.LockedRoll = head.LockedRoll;
    view.OrbitTurns = head.OrbitTurns;
    view.StarSizeScale = head.StarSizeScale;
    view.SkyScale = head.SkyScale;
    view.SkyScaleSaved = head.SkyScaleSaved;
}

void WorkspaceFiles::PutSatellites(std::vector<SatRecord>& satellites) {
    CommonData& data = app_.Data;
    const int before = data.SatCount;
    // An editor of surfaces goes over to the satellite that works then, even should it bear the same numbers.
    app_.Mirror.Satellite = {};
    data.SatCount = static_cast<int>(satellites.size());
    for (int index = 1; index <= data.SatCount; ++index) {
        data.Satellite(index) = std::move(satellites[static_cast<std::size_t>(index - 1)]);
        MakeReady(data.Satellite(index));
    }
    for (int index = data.SatCount + 1; index <= before; ++index) data.Satellite(index) = {};

    // What was known of those before.
    RunState& run = app_.Run;
    run.Working.Forget();
    run.Finder.ClearList();
    run.Finder.Found = FoundKind::None;
    app_.Main.LFInfo.Visible = false;
}

void WorkspaceFiles::ShowSession() {
    RunState& run = app_.Run;
    app_.Windows.UpDateAll();
    run.SkyPointer.HasPlace = false;
    run.SkyPointer.HasMark = false;
    run.LastTickSecond = kNoTickSecond;
    time_.TimeSyncronize();
    // The place of a floating site is the file's until the view moves.
    const ViewState& view = app_.Data.View;
    if (app_.Main.MnuFloatingSite.Checked) run.SiteFloatedAt = FloatingCamera{view.ViewLat, view.ViewLon};
    RebuildStarList(app_.Data.Stars, view.MaxStarMag);
    ShowStarLimits(app_);
    ShowOrbitLabel(app_);
    ShowSavedViews(app_);
    app_.Windows.SyncronizeMenuBar();
    app_.Windows.RefreshInfo();
    app_.Windows.RefreshSatPosition();
}

bool WorkspaceFiles::LoadStartUp() {
    // Who has opened one during the opening wants that.
    if (!app_.Run.WorkspaceFile.Get().empty()) return true;
    return LoadWorkspaceCommand(kStartUpWorkspace, false);
}

void WorkspaceFiles::Open(const fs::path& file) {
    if (MayDiscard()) LoadWorkspaceCommand(file, true);
}

void WorkspaceFiles::Reload() {
    const fs::path file = app_.Run.WorkspaceFile.Get();
    if (HasChanges() && !app_.Boxes.AskYesNo("Reload Workspace (" + NameOf(file) +
                                             ")\r\nAre you sure?\r\n\r\nWhat has changed since is lost."))
        return;
    LoadWorkspaceCommand(file, true);
}

// Saving.

bool WorkspaceFiles::WriteTo(const fs::path& file) {
    const CommonData& data = app_.Data;
    const std::string text = WorkspaceText(CaptureHead(app_), ListOf(data), data.SavedViews);
    if (text.size() > kLargestWorkspaceFile) {
        why_ = "it would be too large to be loaded again";
        return false;
    }
    return ReplaceFile(file, text, &why_);
}

bool WorkspaceFiles::SaveWorkspace(const fs::path& file) {
    if (!WriteTo(file)) return false;
    BecomeCurrent(file);
    return true;
}

bool WorkspaceFiles::Save(const fs::path& file) { return TellSaved(SaveWorkspace(file), file); }

bool WorkspaceFiles::TellSaved(bool saved, const fs::path& file) const {
    if (saved)
        app_.Main.LCommandOutput.Caption = "Saved Workspace " + NameOf(file);
    else
        app_.Boxes.Tell("File Save Error\n\n" + NameOf(file) + ": " + why_ + ".", MessageIcon::Critical);
    return saved;
}

bool WorkspaceFiles::ConfirmSave(const fs::path& file) const {
    return app_.Boxes.AskYesNo("Save Workspace (" + NameOf(file) + ")\r\nAre you sure?");
}

bool WorkspaceFiles::SaveAs() {
    const std::optional<fs::path> chosen = hooks_.askForFile ? hooks_.askForFile(kSaveWorkspace) : std::nullopt;
    if (!chosen) return false;
    if (IsWorkspaceName(*chosen)) return Save(*chosen);
    // The dialog has asked about a file of the name as it was typed.
    fs::path file = *chosen;
    file += kWorkspaceEnding;
    std::error_code unknown;
    return (!fs::exists(file, unknown) || ConfirmSave(file)) && Save(file);
}

void WorkspaceFiles::SaveStartUp() {
    std::error_code unknown;
    if (fs::exists(kStartUpWorkspace, unknown) && !ConfirmSave(kStartUpWorkspace)) return;
    if (app_.Run.WorkspaceFile.Get().empty()) {
        Save(kStartUpWorkspace);
        return;
    }
    // It is a copy: the user goes on with the workspace at hand.
    const bool saved = WriteTo(kStartUpWorkspace);
    if (saved) saved_ = TakeMarks();
    TellSaved(saved, kStartUpWorkspace);
}

void WorkspaceFiles::BecomeCurrent(const fs::path& file) {
    std::error_code failed;
    const fs::path whole = fs::absolute(file, failed);
    app_.Run.WorkspaceFile = (failed ? file : whole).string();
    app_.Main.MnuSave.Enabled = true;
    app_.Main.MnuLoad.Enabled = true;
    saved_ = TakeMarks();
}

void WorkspaceFiles::BelongToNoFile() {
    // Neither the broken file nor the one before is to be replaced by what is left.
    app_.Run.WorkspaceFile = std::string();
    app_.Main.MnuSave.Enabled = false;
    app_.Main.MnuLoad.Enabled = false;
    saved_.reset();
}

// Changes.

WorkspaceFiles::Marks WorkspaceFiles::TakeMarks() const {
    const CommonData& data = app_.Data;
    const std::hash<std::string> hash;
    Marks marks;
    for (SatRecord satellite : ListOf(data)) {
        satellite.MeanRadiusA = 0;  // it follows the place
        marks.content += hash(WorkspaceText(satellite));
    }
    for (std::size_t slot = 1; slot <= kViewCount; ++slot)
        marks.content += hash(std::to_string(slot) + WorkspaceText(data.SavedViews[slot]));
    marks.place = {data.Site.SiteLat, data.Site.SiteLon, data.Site.SiteAlt};
    return marks;
}

bool WorkspaceFiles::HasChanges() const {
    if (!saved_) return true;
    const Marks now = TakeMarks();
    const bool placeCounts = !app_.Main.MnuFloatingSite.Checked;
    return now.content != saved_->content || (placeCounts && !SamePlace(now.place, saved_->place));
}

bool WorkspaceFiles::MayDiscard() {
    if (!app_.Run.AskToSave || !HasChanges()) return true;
    const fs::path file = app_.Run.WorkspaceFile.Get();
    std::string text = "Satellites, surfaces, views or the place have changed since they were last saved.\r\n";
    text += file.empty() ? "Save Workspace?" : "Save Workspace (" + NameOf(file) + ")?";
    bool dontAskAgain = false;
    const ChangesAnswer answer = app_.Boxes.AskAboutChanges(text, dontAskAgain);
    if (answer == ChangesAnswer::Cancel) return false;
    if (dontAskAgain) app_.Run.AskToSave = false;
    if (answer == ChangesAnswer::Discard) return true;
    return file.empty() ? SaveAs() : Save(file);
}

}  // namespace glintara
