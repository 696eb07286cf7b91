#include "cli/flares_command.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <set>

#include "cli/session.h"
#include "cli/texts.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "flare/passes.h"
#include "flare/surface_models.h"
#include "orbit/propagation.h"
#include "orbit/satellite_table.h"

namespace glintara::cli {

namespace {

/// The longest span, hours: a year. Elements do not reach further.
constexpr double kMostHours = 366 * 24;
/// Half the Earth's circumference, kilometres: every place is within it.
constexpr double kMostWithin = 20038;
/// Far more than there are cores.
constexpr double kMostThreads = 256;

double Degrees(double radians) { return radians / kDegToRad; }

std::string NumberOf(const SatRecord& satellite) { return std::string(TrimmedText(satellite.SatNumber)); }

std::string SurfaceOf(const SatRecord& satellite, const FlarePass& pass, bool transit) {
    return transit ? "" : satellite.Surface.Mirror(pass.mirror).MirrorName;
}

void Check(const FlareOptions& options) {
    if (!(options.hours > 0 && options.hours <= kMostHours))
        throw Failure(kBadUsage, "--hours is a number above 0, at most " + FullText(kMostHours));
    if (!(options.within > 0 && options.within <= kMostWithin))
        throw Failure(kBadUsage, "--within is a number of kilometres above 0, at most " + FullText(kMostWithin));
    if (!(options.threads >= 0 && options.threads <= kMostThreads && options.threads == std::floor(options.threads)))
        throw Failure(kBadUsage, "--threads is a whole number up to " + FullText(kMostThreads) + ", 0 for all cores");
}

void PrintText(const CommonData& data, const std::vector<FlarePass>& passes, bool transit, std::ostream& out) {
    using enum Table::Align;
    Table table;
    table.AddColumn({"UTC", ""}, Left);
    table.AddColumn({"Number", ""}, Left);
    table.AddColumn({"Satellite", ""}, Left);
    if (!transit) table.AddColumn({"Surface", ""}, Left);
    table.AddColumn({"Distance", "km"}, Right);
    table.AddColumn({"Within", "s"}, Right);
    table.AddColumn({"Centre", "lat"}, Right);
    table.AddColumn({"", "lon"}, Right);
    table.AddColumn({"Sun", "el"}, Right);
    table.AddColumn({"Azimuth", "deg"}, Right);
    table.AddColumn({"Elevation", "deg"}, Right);
    if (!transit) table.AddColumn({"Sun-mirror", "deg"}, Right);
    for (const FlarePass& pass : passes) {
        const SatRecord& satellite = data.Satellite(pass.satellite);
        std::vector<std::string> row{ShortInstant(pass.closest), NumberOf(satellite), ShownName(satellite.Name)};
        if (!transit) row.push_back(SurfaceOf(satellite, pass, transit));
        row.push_back(FixedText(pass.distance / 1000, 2));
        row.push_back(FixedText((pass.end - pass.begin) * kSecondsPerDay, 1));
        row.push_back(FixedText(Degrees(pass.centre.lat), 3));
        row.push_back(FixedText(Degrees(pass.centre.lon), 3));
        row.push_back(FixedText(Degrees(pass.sunElevation), 1));
        row.push_back(FixedText(Degrees(pass.sky.azimuth), 1));
        row.push_back(FixedText(Degrees(pass.sky.altitude), 1));
        if (!transit) row.push_back(FixedText(Degrees(pass.sunMirrorAngle), 1));
        table.AddRow(std::move(row));
    }
    table.Print(out);
}

void PrintCsv(const CommonData& data, const std::vector<FlarePass>& passes, bool transit, std::ostream& out) {
    out << "utc,begin_utc,end_utc,jd,number,name,surface,distance_km,centre_latitude_deg,centre_longitude_deg,"
           "sun_elevation_deg,azimuth_deg,elevation_deg,range_km,sun_mirror_angle_deg\n";
    for (const FlarePass& pass : passes) {
        const SatRecord& satellite = data.Satellite(pass.satellite);
        out << CsvLine({IsoInstant(pass.closest), IsoInstant(pass.begin), IsoInstant(pass.end), FullText(pass.closest),
                        NumberOf(satellite), ShownName(satellite.Name), SurfaceOf(satellite, pass, transit),
                        FullText(pass.distance / 1000), FullText(Degrees(pass.centre.lat)),
                        FullText(Degrees(pass.centre.lon)), FullText(Degrees(pass.sunElevation)),
                        FullText(Degrees(pass.sky.azimuth)), FullText(Degrees(pass.sky.altitude)),
                        FullText(pass.range / 1000), transit ? "" : FullText(Degrees(pass.sunMirrorAngle))})
            << '\n';
    }
}

nlohmann::ordered_json PassJson(const CommonData& data, const FlarePass& pass, bool transit) {
    const SatRecord& satellite = data.Satellite(pass.satellite);
    nlohmann::ordered_json json{
        {"utc", IsoInstant(pass.closest)}, {"begin_utc", IsoInstant(pass.begin)},
        {"end_utc", IsoInstant(pass.end)}, {"jd", pass.closest},
        {"number", NumberOf(satellite)},   {"name", ShownName(satellite.Name)},
    };
    if (!transit) json["surface"] = SurfaceOf(satellite, pass, transit);
    json["distance_km"] = pass.distance / 1000;
    json["centre"] = {{"latitude_deg", Degrees(pass.centre.lat)}, {"longitude_deg", Degrees(pass.centre.lon)}};
    json["sun_elevation_deg"] = Degrees(pass.sunElevation);
    json["satellite"] = {{"azimuth_deg", Degrees(pass.sky.azimuth)},
                         {"elevation_deg", Degrees(pass.sky.altitude)},
                         {"range_km", pass.range / 1000}};
    if (!transit) json["sun_mirror_angle_deg"] = Degrees(pass.sunMirrorAngle);
    return json;
}

void PrintJson(const CommonData& data, const PassQuest& quest, const std::vector<FlarePass>& passes, bool complete,
               std::ostream& out) {
    nlohmann::ordered_json json;
    json["from"] = IsoInstant(quest.start);
    json["to"] = IsoInstant(quest.start + quest.days);
    json["site"] = {{"latitude_deg", Degrees(data.Site.SiteLat)},
                    {"longitude_deg", Degrees(data.Site.SiteLon)},
                    {"height_m", data.Site.SiteAlt}};
    json["within_km"] = quest.maxDistance / 1000;
    json["source"] = quest.moon ? "moon" : "sun";
    json["kind"] = quest.transit ? "transit" : "flare";
    if (!complete) json["interrupted"] = true;
    json["flares"] = nlohmann::ordered_json::array();
    for (const FlarePass& pass : passes) json["flares"].push_back(PassJson(data, pass, quest.transit));
    // Names may hold any bytes; what is no UTF-8 is replaced.
    out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

/// Whether the elements give a position at that instant.
bool HasOrbit(const CommonData& data, const SatRecord& satellite, double jd) {
    EngineBlock block = satellite.EngineBlock;
    return PropagateSatellite(data, EarthRotation::GivenJd, block, jd).result == 0;
}

/// Takes away what was worked out from a failing propagation, and tells of which satellites there is no word, or none
/// for all of the span.
void LeaveOutErrors(const CommonData& data, const PassQuest& quest, std::vector<FlarePass>& passes) {
    std::set<int> failing;
    for (int i = 1; i <= data.SatCount; ++i) {
        const SatRecord& satellite = data.Satellite(i);
        const bool searched = !satellite.IsDisabled() && (quest.transit || HasFlareModel(satellite));
        if (!searched) continue;
        if (!HasOrbit(data, satellite, quest.start) || !HasOrbit(data, satellite, quest.start + quest.days))
            failing.insert(i);
    }
    std::erase_if(passes, [&](const FlarePass& pass) {
        const SatRecord& satellite = data.Satellite(pass.satellite);
        const bool failed = !HasOrbit(data, satellite, pass.begin) || !HasOrbit(data, satellite, pass.closest) ||
                            !HasOrbit(data, satellite, pass.end);
        if (failed) failing.insert(pass.satellite);
        return failed;
    });
    if (failing.empty()) return;

    constexpr std::size_t kMostNamed = 5;
    std::string text = "left out where the elements give no orbit:";
    std::size_t named = 0;
    for (const int i : failing) {
        if (named++ == kMostNamed) break;
        text += std::string(named > 1 ? "," : "") + " " + ShownName(data.Satellite(i).Name) + " (" +
                NumberOf(data.Satellite(i)) + ")";
    }
    if (failing.size() > kMostNamed) text += " and " + std::to_string(failing.size() - kMostNamed) + " more";
    Warn(text);
}

void Print(const CommonData& data, const FlareOptions& options, const PassQuest& quest,
           const std::vector<FlarePass>& passes, bool complete, std::ostream& out) {
    switch (options.format) {
        case Format::Text:
            if (!passes.empty())
                PrintText(data, passes, quest.transit, out);
            else if (complete)
                out << (quest.transit ? "No transit" : "No flare") << " within " << FullText(options.within)
                    << " km in " << FullText(options.hours) << " hours from " << ShortInstant(quest.start) << " UTC\n";
            return;
        case Format::Csv:
            PrintCsv(data, passes, quest.transit, out);
            return;
        case Format::Json:
            PrintJson(data, quest, passes, complete, out);
            return;
    }
}

}  // namespace

void RunFlares(const FlareOptions& options, std::ostream& out) {
    Check(options);
    PassQuest quest;
    quest.start = InstantOf(options.from);
    quest.days = options.hours / kHoursPerDay;
    quest.maxDistance = options.within * 1000;
    quest.moon = options.moon;
    quest.transit = options.transit;
    quest.threads = static_cast<int>(options.threads);

    Session session;
    session.Prepare(options, quest.start);
    const CommonData& data = session.App().Data;
    if (!HasCandidates(data, quest.transit)) {
        throw Failure(
            kBadData,
            "no satellite has surfaces to flare: those with \"Iridium\" in their name do (for others, --transit "
            "looks for passages in front of the Sun or Moon)");
    }
    Progress progress("Searching...");
    std::vector<FlarePass> passes = ListPasses(data, quest, std::ref(progress));
    progress.Clear();
    LeaveOutErrors(data, quest, passes);
    const bool complete = !Progress::Interrupted();
    Print(data, options, quest, passes, complete, out);
    if (!complete) {
        out.flush();
        throw Failure(kInterrupted, "interrupted; what had been found until then is listed");
    }
}

}  // namespace glintara::cli
