#include "core/time_zone_place.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <vector>

#include "engine/astro/number_text.h"
#include "orbit/files.h"

namespace glintara {

namespace {

namespace fs = std::filesystem;

/// The tables of the database, those that go first.
constexpr std::array<const char*, 2> kTables{"zone1970.tab", "zone.tab"};
constexpr auto kCountries = "iso3166.tab";
constexpr auto kLinks = "tzdata.zi";

/// No file of the database is larger.
constexpr std::size_t kLargestFile = std::size_t{4} << 20;
constexpr int kMostLinks = 8;

constexpr std::string_view kBlanks = " \t\r\n";

struct ZoneLine {
    std::string countries;  // codes, apart by commas
    std::string zone;
    double lat = 0;
    double lon = 0;
};

std::vector<std::string_view> Split(std::string_view text, char mark) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(mark);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

std::string TextOf(const fs::path& file) { return ReadWholeFile(file, kLargestFile).value_or(std::string()); }

/// Sign, degrees of `degreeDigits` digits, minutes, and seconds or none, as degrees.
std::optional<double> PackedAngle(std::string_view text, std::size_t degreeDigits) {
    if (text.empty() || (text[0] != '+' && text[0] != '-')) return std::nullopt;
    const std::string_view digits = text.substr(1);
    if (digits.size() != degreeDigits + 2 && digits.size() != degreeDigits + 4) return std::nullopt;
    if (!std::all_of(digits.begin(), digits.end(), IsDigit)) return std::nullopt;
    const double size = LeadingNumber(digits.substr(0, degreeDigits)) +
                        LeadingNumber(digits.substr(degreeDigits, 2)) / 60 +
                        LeadingNumber(digits.substr(degreeDigits + 2)) / 3600;
    return text[0] == '-' ? -size : size;
}

std::vector<ZoneLine> ReadTables(const fs::path& database) {
    constexpr std::size_t kLatDigits = 2;
    constexpr std::size_t kLonDigits = 3;
    std::vector<ZoneLine> lines;
    for (const char* table : kTables) {
        const std::string text = TextOf(database / table);
        for (const std::string_view line : Split(text, '\n')) {
            if (line.empty() || line.front() == '#') continue;
            const std::vector<std::string_view> columns = Split(TrimmedText(line, "\r"), '\t');
            if (columns.size() < 3) continue;
            const std::size_t second = columns[1].find_first_of("+-", 1);
            if (second == std::string_view::npos) continue;
            const std::optional<double> lat = PackedAngle(columns[1].substr(0, second), kLatDigits);
            const std::optional<double> lon = PackedAngle(columns[1].substr(second), kLonDigits);
            if (lat && lon) lines.push_back({std::string(columns[0]), std::string(columns[2]), *lat, *lon});
        }
    }
    return lines;
}

const ZoneLine* FindZone(const std::vector<ZoneLine>& lines, std::string_view zone) {
    const auto found =
        std::find_if(lines.begin(), lines.end(), [zone](const ZoneLine& line) { return line.zone == zone; });
    return found != lines.end() ? &*found : nullptr;
}

/// The chief zone of the country of that name: a few old zones are named so.
const ZoneLine* FindCountry(const std::vector<ZoneLine>& lines, const fs::path& database, std::string_view name) {
    const std::string text = TextOf(database / kCountries);
    for (const std::string_view line : Split(text, '\n')) {
        const std::vector<std::string_view> columns = Split(TrimmedText(line, "\r"), '\t');
        if (columns.size() < 2 || columns[1] != name) continue;
        const auto found = std::find_if(lines.begin(), lines.end(),
                                        [&](const ZoneLine& entry) { return entry.countries == columns[0]; });
        if (found != lines.end()) return &*found;
    }
    return nullptr;
}

/// What the old name `zone` stands for; empty when it is none.
std::string LinkTarget(const fs::path& database, std::string_view zone) {
    const std::string text = TextOf(database / kLinks);
    for (const std::string_view line : Split(text, '\n')) {
        const std::vector<std::string_view> words = Split(TrimmedText(line, kBlanks), ' ');
        if (words.size() == 3 && words[0] == "L" && words[2] == zone) return std::string(words[1]);
    }
    std::error_code failed;
    const fs::path link = fs::read_symlink(database / zone, failed);
    if (failed) return "";
    return ((fs::path(zone).parent_path() / link).lexically_normal()).generic_string();
}

/// The name of a zone as the tables have it: without the folders of the variants of the database.
std::string PlainZone(std::string zone) {
    for (const std::string_view variant : {"posix/", "right/"})
        if (zone.starts_with(variant)) return zone.substr(variant.size());
    return zone;
}

/// The zone that a file of the database holds, told by its path; empty when it lies elsewhere.
std::string ZoneOfPath(const fs::path& file, const fs::path& database) {
    const std::string text = file.lexically_normal().generic_string();
    const std::string folder = database.lexically_normal().generic_string() + "/";
    if (text.starts_with(folder)) return PlainZone(text.substr(folder.size()));
    // The same database under another name, such as that of a container.
    constexpr std::string_view kFolderName = "/zoneinfo/";
    const std::size_t at = text.rfind(kFolderName);
    return at == std::string::npos ? "" : PlainZone(text.substr(at + kFolderName.size()));
}

/// Follows links one by one: an old name of the database is a link itself, and may lead into another country.
std::string ZoneOfLink(fs::path file, const fs::path& database) {
    for (int i = 0; i < kMostLinks; ++i) {
        std::string zone = ZoneOfPath(file, database);
        if (!zone.empty()) return zone;
        std::error_code failed;
        const fs::path target = fs::read_symlink(file, failed);
        if (failed) return "";
        file = file.parent_path() / target;
    }
    return "";
}

/// The zone whose rules are those of `file`; empty for none.
std::string ZoneOfCopy(const fs::path& file, const std::vector<ZoneLine>& lines, const fs::path& database) {
    const std::string rules = TextOf(file);
    if (rules.empty()) return "";
    for (const ZoneLine& line : lines)
        if (TextOf(database / line.zone) == rules) return line.zone;
    return "";
}

std::string FindZoneName(const TimeZoneSources& sources, const std::vector<ZoneLine>& lines) {
    fs::path file = sources.localTime;
    if (sources.variable) {
        std::string zone = *sources.variable;
        if (zone.starts_with(':')) zone.erase(0, 1);
        if (zone.empty()) return "UTC";
        if (!zone.starts_with('/')) return PlainZone(zone);
        file = zone;
    }
    std::string zone = ZoneOfLink(file, sources.database);
    if (zone.empty() && !sources.variable) {
        const std::string text = TextOf(sources.zoneName);
        zone = TrimmedText(Split(text, '\n').front(), kBlanks);
    }
    return zone.empty() ? ZoneOfCopy(file, lines, sources.database) : zone;
}

std::string TownOf(std::string_view zone) {
    std::string town(zone.substr(zone.rfind('/') + 1));
    std::replace(town.begin(), town.end(), '_', ' ');
    return town;
}

}  // namespace

TimeZoneSources SystemTimeZoneSources() {
    TimeZoneSources sources;
    if (const char* const zone = std::getenv("TZ")) sources.variable = zone;
    if (const char* const folder = std::getenv("TZDIR"); folder != nullptr && *folder != '\0')
        sources.database = folder;
    return sources;
}

TimeZonePlace FindTimeZonePlace(const TimeZoneSources& sources) {
    TimeZonePlace place;
    const std::vector<ZoneLine> lines = ReadTables(sources.database);
    if (lines.empty()) {
        place.words = "This computer has no table of the places of time zones (zone1970.tab).";
        return place;
    }
    const std::string zone = FindZoneName(sources, lines);
    if (zone.empty()) {
        place.words = "This computer does not tell its time zone.";
        return place;
    }
    const ZoneLine* line = FindZone(lines, zone);
    if (line == nullptr) line = FindCountry(lines, sources.database, zone);
    std::string name = zone;
    for (int i = 0; line == nullptr && i < kMostLinks; ++i) {
        name = LinkTarget(sources.database, name);
        if (name.empty()) break;
        line = FindZone(lines, name);
    }
    if (line == nullptr) {
        place.words = "The time zone of this computer, " + zone + ", tells no place.";
        return place;
    }
    place.found = true;
    place.lat = line->lat;
    place.lon = line->lon;
    place.words = TownOf(line->zone) + ", by the time zone " + zone + ": a first guess, to be mended.";
    return place;
}

}  // namespace glintara
