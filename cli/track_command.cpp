#include "cli/track_command.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "cli/session.h"
#include "cli/texts.h"
#include "flare/cities.h"
#include "flare/city_files.h"
#include "flare/pending_track.h"
#include "flare/track_export.h"
#include "flare/tracks.h"
#include "orbit/files.h"
#include "orbit/satellite_table.h"

namespace glintara::cli {

namespace {

/// As many as the window draws.
constexpr double kMostOrbits = 50;

/// Satellites that are named when the name fits too many.
constexpr std::size_t kMostNamed = 5;

/// Where the data of an installed program stand, seen from its executable.
constexpr const char* kInstalledData = "../share/glintara";

void Check(const TrackOptions& options) {
    if (!(options.orbits > 0 && options.orbits <= kMostOrbits))
        throw Failure(kBadUsage, "--orbits is a number above 0, at most " + FullText(kMostOrbits));
    if (options.kml && options.kml == options.table)
        throw Failure(kBadUsage, "--kml and --table name the same file: one would replace the other");
    if (!(options.population >= 0)) throw Failure(kBadUsage, "--population is a number that is not negative");
}

/// The satellite whose name is meant: the only one that is left of the list, or the one that bears the name in full.
const SatRecord& SatelliteMeant(const CommonData& data, const std::string& name) {
    std::vector<const SatRecord*> fitting;
    for (int i = 1; i <= data.SatCount; ++i)
        if (!data.Satellite(i).IsDisabled()) fitting.push_back(&data.Satellite(i));
    const auto inFull = std::ranges::find_if(
        fitting, [&](const SatRecord* satellite) { return LowerCase(satellite->Name) == LowerCase(name); });
    if (inFull != fitting.end()) return **inFull;
    if (fitting.size() == 1) return *fitting.front();
    std::string text = "a track is one satellite's; tell by --name which: ";
    for (std::size_t i = 0; i < std::min(fitting.size(), kMostNamed); ++i)
        text += (i > 0 ? ", " : "") + ShownName(fitting[i]->Name);
    if (fitting.size() > kMostNamed) text += " or one of " + std::to_string(fitting.size() - kMostNamed) + " more";
    throw Failure(kBadUsage, text);
}

TrackQuest QuestOf(const TrackOptions& options) {
    TrackQuest quest;
    quest.start = InstantOf(options.from);
    quest.turns = options.orbits;
    quest.moon = options.moon;
    quest.transit = options.transit;
    quest.day = options.day;
    return quest;
}

FlareTrack TrackOf(Session& session, const TrackOptions& options) {
    Check(options);
    const TrackQuest quest = QuestOf(options);
    session.Prepare(options, quest.start);
    const CommonData& data = session.App().Data;
    const SatRecord& satellite = SatelliteMeant(data, options.name);
    FlareTrack track(data, satellite, quest);
    if (!track.Exists())
        throw Failure(kBadData, ShownName(satellite.Name) +
                                    " has no surfaces to flare: those with \"Iridium\" in their name do (for others, "
                                    "--transit follows its passages in front of the Sun or Moon)");
    return track;
}

void Save(const std::optional<std::string>& file, std::string_view bytes) {
    std::string why;
    if (file && !ReplaceFile(*file, bytes, &why)) throw Failure(kBadData, ShownName(*file) + ": " + why);
}

/// The text with the line ends of a terminal.
std::string ForTerminal(std::string text) {
    std::erase(text, '\r');
    return text;
}

/// Fills `files` and writes those that are asked for.
void SaveFiles(FlareTrack& track, const TrackOptions& options, TrackFiles& files) {
    AddTrack(track, files);
    files.End();
    Save(options.kml, files.Kml());
    Save(options.table, files.Table());
}

std::vector<std::filesystem::path> DataFolders(const TrackOptions& options) {
    if (!options.data.empty()) return {options.data};
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed).parent_path();
    return {".", program, program / kInstalledData};
}

}  // namespace

void RunTrack(const TrackOptions& options, std::ostream& out) {
    Session session;
    FlareTrack track = TrackOf(session, options);
    TrackFiles files(options.transit);
    SaveFiles(track, options, files);
    if (!options.kml && !options.table) out << ForTerminal(files.Table());
}

void RunCities(const TrackOptions& options, std::ostream& out) {
    Session session;
    FlareTrack track = TrackOf(session, options);
    CityTables& tables = session.App().Data.Cities;
    if (!LoadCities(DataFolders(options), tables))
        throw Failure(kBadData, "there is neither " + std::string(kCityFile) + " nor " + kCityTextFile +
                                    " to be read; tell by --data in which folder");
    for (std::int32_t i = 1; i <= tables.SiteCount(); ++i)
        if (tables.Site(i).Population >= options.population) tables.SelectedCities.push_back(i);
    if (options.kml || options.table) {
        TrackFiles files(options.transit);
        SaveFiles(track, options, files);
    }
    out << "List of cities along the track (less than 5 km from the track)\n\n";
    Progress progress("Looking for cities...");
    ScanListener listener;
    listener.goesOn = [&progress](double part) { return progress(part); };
    listener.tell = [&](const std::vector<std::string>& lines) {
        progress.Clear();
        for (const std::string& line : lines) out << ShownName(line) << '\n';
    };
    const bool complete = ScanCities(tables, session.App().Data.Site.SiteRadius, track, listener);
    progress.Clear();
    if (complete) return;
    out.flush();
    throw Failure(kInterrupted, "interrupted; what had been found until then is listed");
}

}  // namespace glintara::cli
