#include "flare/city_files.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <system_error>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/number_text.h"
#include "orbit/files.h"
#include "orbit/little_endian.h"

namespace glintara {

namespace {

/// Far more than a gazetteer takes; keeps a wrong file from filling the memory.
constexpr std::size_t kLargestFile = std::size_t{64} << 20;

constexpr std::size_t kTexts = 3;
constexpr std::size_t kReals = 10;
constexpr std::size_t kFlagBytes = 2;
constexpr std::size_t kLeastRecordBytes = kTexts * kLengthBytes + kReals * kRealBytes + kFlagBytes;

/// How far from 1 the length of a compiled position may be.
constexpr double kUnitTolerance = 1e-9;

constexpr std::size_t kCityColumns = 21;
constexpr std::size_t kSiteColumns = 6;

/// Columns of cities1000.txt, counted from 0.
constexpr std::size_t kNameColumn = 2;
constexpr std::size_t kLatColumn = 4;
constexpr std::size_t kLonColumn = 5;
constexpr std::size_t kCountryColumn = 8;
constexpr std::size_t kPopulationColumn = 15;
constexpr std::size_t kAltitudeColumn = 17;
constexpr std::size_t kDateColumn = 19;
constexpr std::size_t kExtraColumn = 20;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

using Splitter = void (*)(std::string_view line, std::string_view& rest, std::string_view& token);

void SplitAt(char delimiter, std::string_view line, std::string_view& rest, std::string_view& token) {
    const std::size_t at = line.find(delimiter);
    token = line.substr(0, at);
    rest = at == std::string_view::npos ? std::string_view() : line.substr(at + 1);
}

template <std::size_t Count>
std::array<std::string_view, Count> Columns(std::string_view line, Splitter split) {
    std::array<std::string_view, Count> columns;
    for (std::string_view& column : columns) split(line, line, column);
    return columns;
}

/// Calls `take(line)` for each line, without its end.
template <class Take>
void ForEachLine(std::string_view text, Take take) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        take(line);
    }
}

/// The place of latitude and longitude in degrees; `height` is what its geocentric latitude is taken at, metres.
/// Nothing when they are none.
std::optional<SiteRecord> PlaceAt(double latitude, double longitude, double height) {
    if (!(std::abs(latitude) <= 90) || !(std::abs(longitude) <= 360)) return std::nullopt;
    SiteRecord place;
    place.Lat = latitude * kDegToRad;
    place.Lon = longitude * kDegToRad;
    place.GeoLat = GeodeticToGeocentric({place.Lat, place.Lon, height}).lat;
    const Vector3 position = LLRToSameXYZ(place.GeoLat, place.Lon, 1);
    place.X = position.x;
    place.Y = position.y;
    place.Z = position.z;
    return place;
}

std::optional<SiteRecord> CityOf(std::string_view line) {
    const auto columns = Columns<kCityColumns>(line, SplitTab);
    const double population = LeadingNumber(columns[kPopulationColumn]);
    if (!(population >= kLeastPopulation) || columns[kDateColumn].empty()) return std::nullopt;
    std::optional<SiteRecord> city = PlaceAt(LeadingNumber(columns[kLatColumn]), LeadingNumber(columns[kLonColumn]), 0);
    if (!city) return std::nullopt;
    city->CityName = columns[kNameColumn];
    city->CityCountry = columns[kCountryColumn];
    city->CityExtra = columns[kExtraColumn];
    city->Population = population;
    city->Altitude = LeadingNumber(columns[kAltitudeColumn]);
    return city;
}

std::optional<SiteRecord> SiteOf(std::string_view line) {
    if (line.starts_with('#') || TrimmedText(line, " \t").empty()) return std::nullopt;
    const auto columns = Columns<kSiteColumns>(line, SplitComma);
    const double altitude = TokenToValue(TrimmedText(columns[3]));
    std::optional<SiteRecord> site =
        PlaceAt(TokenToValue(TrimmedText(columns[1])), TokenToValue(TrimmedText(columns[2])), altitude);
    if (!site) return std::nullopt;
    site->CityName = TrimmedText(columns[0]);
    site->Altitude = altitude;
    site->CityExtra = TrimmedText(columns[4]);
    site->CityCountry = TrimmedText(columns[5]);
    return site;
}

SiteRecord ReadRecord(ByteReader& reader) {
    SiteRecord city;
    city.CityName = reader.Text();
    city.CityCountry = reader.Text();
    city.CityExtra = reader.Text();
    for (double* number : {&city.Lat, &city.GeoLat, &city.Lon, &city.Population, &city.Altitude, &city.X, &city.Y,
                           &city.Z, &city.FoundJD})
        *number = reader.Real();
    reader.Real();
    std::array<std::byte, kFlagBytes> flag{};
    reader.Bytes(flag);
    city.FoundJD = 0;
    return city;
}

void WriteRecord(ByteWriter& writer, const SiteRecord& city) {
    writer.Text(city.CityName);
    writer.Text(city.CityCountry);
    writer.Text(city.CityExtra);
    for (const double number :
         {city.Lat, city.GeoLat, city.Lon, city.Population, city.Altitude, city.X, city.Y, city.Z, 0.0, 0.0})
        writer.Real(number);
    writer.Bytes(std::array<std::byte, kFlagBytes>{});
}

bool IsPlace(const SiteRecord& city) {
    for (const double number : {city.Lat, city.GeoLat, city.Lon, city.Population, city.Altitude})
        if (!std::isfinite(number)) return false;
    return std::abs(Length(Vector3{city.X, city.Y, city.Z}) - 1) < kUnitTolerance;
}

/// A file that is there, with the time of its last change.
struct Found {
    std::filesystem::path path;
    std::filesystem::file_time_type changed;
};

std::optional<Found> Find(std::span<const std::filesystem::path> folders, const char* file) {
    for (const std::filesystem::path& folder : folders) {
        std::error_code failed;
        const auto changed = std::filesystem::last_write_time(folder / file, failed);
        if (!failed) return Found{folder / file, changed};
    }
    return std::nullopt;
}

std::optional<std::vector<SiteRecord>> CitiesOfText(const std::optional<Found>& file) {
    if (!file) return std::nullopt;
    const std::optional<std::string> text = ReadWholeFile(file->path, kLargestFile);
    return text ? std::optional(ReadCityText(*text)) : std::nullopt;
}

/// DB005.VDB of the first folder in which it can be read.
std::optional<std::vector<SiteRecord>> CompiledCities(std::span<const std::filesystem::path> folders) {
    for (const std::filesystem::path& folder : folders)
        if (const std::optional<std::string> bytes = ReadWholeFile(folder / kCityFile, kLargestFile))
            if (std::optional<std::vector<SiteRecord>> cities = DecodeCities(*bytes)) return cities;
    return std::nullopt;
}

}  // namespace

void SplitTab(std::string_view line, std::string_view& rest, std::string_view& token) {
    SplitAt('\t', line, rest, token);
}

void SplitComma(std::string_view line, std::string_view& rest, std::string_view& token) {
    SplitAt(',', line, rest, token);
}

double TokenToValue(std::string_view text) {
    const double value = LeadingNumber(text);
    const char last = text.empty() ? ' ' : text.back();
    const bool negative = last == 'S' || last == 's' || last == 'W' || last == 'w';
    return negative ? -std::abs(value) : value;
}

std::string EncodeCities(const std::vector<SiteRecord>& cities) {
    ByteWriter writer;
    writer.Integer(static_cast<std::int32_t>(cities.size()) - 1);
    for (std::size_t i = 1; i < cities.size(); ++i) WriteRecord(writer, cities[i]);
    return writer.Take();
}

std::optional<std::vector<SiteRecord>> DecodeCities(std::string_view bytes) {
    ByteReader reader(bytes);
    const std::int32_t count = reader.Integer();
    if (reader.Failed() || count < 0 || count > kSiteCapacity) return std::nullopt;
    if (static_cast<std::size_t>(count) > reader.Rest() / kLeastRecordBytes) return std::nullopt;
    std::vector<SiteRecord> cities(static_cast<std::size_t>(count) + 1);
    for (std::size_t i = 1; i < cities.size(); ++i) {
        cities[i] = ReadRecord(reader);
        if (reader.Failed() || !IsPlace(cities[i])) return std::nullopt;
    }
    return cities;
}

std::vector<SiteRecord> ReadCityText(std::string_view text) {
    std::vector<SiteRecord> cities(1);
    ForEachLine(text, [&cities](std::string_view line) {
        if (cities.size() > static_cast<std::size_t>(kSiteCapacity)) return;
        if (std::optional<SiteRecord> city = CityOf(line)) cities.push_back(std::move(*city));
    });
    return cities;
}

std::vector<SiteRecord> ReadSiteText(std::string_view text) {
    std::vector<SiteRecord> sites;
    ForEachLine(text, [&sites](std::string_view line) {
        if (std::optional<SiteRecord> site = SiteOf(line)) sites.push_back(std::move(*site));
    });
    return sites;
}

bool LoadCities(std::span<const std::filesystem::path> folders, CityTables& tables) {
    const std::optional<Found> compiled = Find(folders, kCityFile);
    const std::optional<Found> text = Find(folders, kCityTextFile);
    const bool textFirst = text && (!compiled || text->changed > compiled->changed);
    std::optional<std::vector<SiteRecord>> cities = textFirst ? CitiesOfText(text) : CompiledCities(folders);
    if (!cities) cities = textFirst ? CompiledCities(folders) : CitiesOfText(text);
    if (!cities) return false;
    tables.SiteTable = std::move(*cities);
    tables.FirstSiteIndex = tables.SiteCount() + 1;
    return true;
}

void LoadSites(std::span<const std::filesystem::path> folders, CityTables& tables) {
    tables.FirstSiteIndex = tables.SiteCount() + 1;
    const std::optional<Found> file = Find(folders, kSiteFile);
    const std::optional<std::string> text = file ? ReadWholeFile(file->path, kLargestFile) : std::nullopt;
    if (!text) return;
    for (SiteRecord& site : ReadSiteText(*text))
        if (tables.SiteCount() < kSiteCapacity) tables.SiteTable.push_back(std::move(site));
}

}  // namespace glintara
