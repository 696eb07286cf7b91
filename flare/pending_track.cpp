#include "flare/pending_track.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "flare/cities.h"
#include "flare/track_export.h"
#include "orbit/output.h"
#include "orbit/progress.h"
#include "orbit/satellite_table.h"
#include "state/long_work.h"

namespace glintara {

namespace {

/// The windows are served this often while a scan goes on, and looked whether it is time every so many steps.
constexpr std::chrono::milliseconds kServePause{50};
constexpr int kStepsBetweenLooks = 16;

/// Whether the time to serve has come; the first time it has.
class ServeClock {
  public:
    bool IsTime() {
        if (++steps_ % kStepsBetweenLooks != 1) return false;
        const auto now = std::chrono::steady_clock::now();
        if (served_ && now - *served_ < kServePause) return false;
        served_ = now;
        return true;
    }

  private:
    int steps_ = 0;
    std::optional<std::chrono::steady_clock::time_point> served_;
};

/// Marks the work as begun, so that pictures that are made meanwhile leave it alone, and clears what was pending.
class Work {
  public:
    explicit Work(Application& app) : long_(app), run_(app.Run) { run_.TrackBusy = true; }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work() {
        run_.TrackBusy = false;
        run_.ExportPending = false;
        run_.CityScanPending = false;
    }

  private:
    LongWork long_;
    RunState& run_;
};

void Scan(Application& app, FlareTrack& track, TrackFiles* files) {
    output::Init(app);
    output::PrintLine(app, "List of cities along the track (less than 5 km from the track)");
    output::PrintLine(app, "");
    ClearAllCityFlag(app.Data.Cities);
    if (app.Data.Cities.SelectedCities.empty()) {
        output::PrintLine(app, "There are no cities to look at: Settings, Cities chooses them");
        if (files != nullptr) AddTrack(track, *files);
        return;
    }
    ProgressWindow window(app, "Looking for cities along the track");
    ScanListener listener;
    listener.goesOn = [&window](double part) { return window.GoesOn(100 * part); };
    bool found = false;
    listener.tell = [&app, &found](const std::vector<std::string>& lines) {
        found = true;
        std::string text;
        for (const std::string& line : lines) text += (text.empty() ? "" : "\r\n") + line;
        output::PrintLine(app, text);
    };
    if (files != nullptr) {
        listener.take = [files](const TrackPoint& point) { files->Add(point); };
        listener.takeGap = [files] { files->Gap(); };
    }
    const bool whole = ScanCities(app.Data.Cities, app.Data.Site.SiteRadius, track, listener);
    if (whole && !found) output::PrintLine(app, "None of the cities lies along it");
}

/// Writes the files and says what came of it.
void SaveFiles(Application& app, TrackFiles& files, double start) {
    files.End();
    const std::filesystem::path stem = TrackFileStem(app.Main.TTLE.Text.Get(), start);
    const std::string problem = WriteTrackFiles(stem, files);
    if (app.Run.Closing) return;  // nobody is there to read it
    std::error_code unknown;
    const std::string folder = ShownName(std::filesystem::current_path(unknown).string());
    if (!problem.empty()) {
        app.Boxes.Tell("Cannot write " + problem + "\r\nin " + folder, MessageIcon::Critical);
        return;
    }
    app.Main.LCommandOutput.Caption = stem.string() + ".txt and .kml are in " + folder;
    app.Boxes.Tell("Flare Track Exported", MessageIcon::Information);
}

/// What the commands wait for, in words that follow "waits for"; empty when they can begin.
std::string MissingForTrack(const Application& app) {
    const CommonData& data = app.Data;
    if (data.SatCount < 1) return "a satellite";
    if (!app.Main.CFlareTrack.Value) return app.Main.CFlareTrack.Caption;
    if (!app.Main.CSGP4.Value) return app.Main.CSGP4.Caption;
    const SatRecord& satellite = data.Satellite(data.WorkingSat());
    if (FlareTrack(data, satellite, TrackQuestOf(app)).Exists()) return {};
    const std::string name = ShownName(TrimmedText(satellite.Name));
    if (satellite.IsDisabled()) return "an enabled satellite: " + name + " is disabled";
    if (!(satellite.MeanMotion > 0)) return "a satellite with an orbit: " + name + " has none";
    return "a satellite with surfaces: " + name + " has none";
}

/// Asks for the picture after which the work is done, and says so when that will be a later one.
void Command(Application& app, bool& pending, std::string_view work) {
    pending = true;
    if (const std::string missing = MissingForTrack(app); !missing.empty())
        app.Main.LCommandOutput.Caption = std::string(work) + " waits for " + missing;
    app.Windows.UpdateGraphicsLevel2();
}

}  // namespace

void MnuExportTrack_Click(Application& app) { Command(app, app.Run.ExportPending, "Track export"); }

void mnuFindCityTrack_Click(Application& app) { Command(app, app.Run.CityScanPending, "Search for cities"); }

bool ScanCities(CityTables& tables, double siteRadius, FlareTrack& track, const ScanListener& listener) {
    std::vector<std::string> lines;
    const auto tell = [&] {
        if (!lines.empty() && listener.tell) listener.tell(lines);
        lines.clear();
    };
    ServeClock clock;
    const double start = track.InstantOf(0);
    const double whole = (track.End() - start) * kSecondsPerDay;
    for (int mirror = 1; mirror <= track.MirrorCount(); ++mirror) {
        for (double second = 0; second <= whole;) {
            if (clock.IsTime()) {
                tell();
                const double part = (mirror - 1 + second / whole) / track.MirrorCount();
                if (listener.goesOn && !listener.goesOn(part)) return false;
            }
            const double jd = start + second / kSecondsPerDay;
            double nearest = 0;
            if (const std::optional<TrackPoint> point = track.At(mirror, jd)) {
                nearest = CheckCityProximity(tables, siteRadius, jd, point->centre, lines);
                if (listener.take) listener.take(*point);
            } else if (listener.takeGap) {
                listener.takeGap();
            }
            second += kScanStep + nearest / kScanSpeed;
        }
        if (listener.takeGap) listener.takeGap();
    }
    tell();
    return true;
}

void FinishPendingTrack(Application& app) {
    const RunState& run = app.Run;
    if (run.TrackBusy || run.Closing || !(run.ExportPending || run.CityScanPending)) return;
    if (!MissingForTrack(app).empty()) return;
    const CommonData& data = app.Data;
    const TrackQuest quest = TrackQuestOf(app);
    FlareTrack track(data, data.Satellite(data.WorkingSat()), quest);
    std::optional<TrackFiles> files;
    if (run.ExportPending) files.emplace(quest.transit);
    {
        const Work work(app);
        if (run.CityScanPending)
            Scan(app, track, files ? &*files : nullptr);
        else
            AddTrack(track, *files);
    }
    if (files) SaveFiles(app, *files, quest.start);
}

}  // namespace glintara
