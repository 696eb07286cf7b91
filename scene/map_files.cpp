#include "scene/map_files.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "flare/city_files.h"
#include "orbit/files.h"
#include "orbit/little_endian.h"
#include "scene/star_places.h"

namespace glintara {

namespace {

/// Far more than the largest catalogues take; keeps a wrong file from filling the memory.
constexpr std::size_t kLargestFile = std::size_t{64} << 20;

constexpr std::size_t kRecordTexts = 3;

constexpr std::size_t kVertexBytes = 2 * kRealBytes + kIntegerBytes;
constexpr std::size_t kPairBytes = 2 * kIntegerBytes;

/// Of records with texts: what they take when all texts are empty.
constexpr std::size_t kLeastStarBytes = 9 * kRealBytes + kRecordTexts * kLengthBytes + sizeof(StarRecord::Tail);

/// The count at the head of a file, when so many records of at least `recordBytes` can follow.
std::optional<std::size_t> ReadCount(ByteReader& reader, std::size_t recordBytes) {
    const std::int32_t count = reader.Integer();
    if (reader.Failed() || count < 0) return std::nullopt;
    const auto records = static_cast<std::size_t>(count);
    if (records > reader.Rest() / recordBytes) return std::nullopt;
    return records;
}

/// Number of the elements of a table that counts from 1.
void WriteCount(ByteWriter& writer, std::size_t elements) { writer.Integer(static_cast<std::int32_t>(elements) - 1); }

/// Degrees of latitude or longitude. A full turn is allowed: a table corrected by hand may reach a little beyond 180.
bool IsPlace(double degrees) { return std::isfinite(degrees) && std::abs(degrees) <= 360; }

void ReadReals(ByteReader& reader, std::size_t count, std::vector<double>& table) {
    table.resize(count + 1);
    for (std::size_t i = 1; i <= count; ++i) table[i] = reader.Real();
}

void WriteReals(ByteWriter& writer, const std::vector<double>& table) {
    for (std::size_t i = 1; i < table.size(); ++i) writer.Real(table[i]);
}

/// The numbers of a star in the order of the file.
template <typename Star, typename Visit>
void VisitNumbers(Star& star, Visit visit) {
    visit(star.Magnitude);
    visit(star.Declination);
    visit(star.RightAscension);
    visit(star.DeclinationJ2000);
    visit(star.RightAscensionJ2000);
    for (auto& spare : star.Spare) visit(spare);
    visit(star.ColorIndex);
}

StarRecord ReadStar(ByteReader& reader) {
    StarRecord star;
    VisitNumbers(star, [&reader](double& number) { number = reader.Real(); });
    star.ProperName = reader.Text();
    star.Designation = reader.Text();
    star.SpectralType = reader.Text();
    reader.Bytes(star.Tail);
    return star;
}

void WriteStar(ByteWriter& writer, const StarRecord& star) {
    VisitNumbers(star, [&writer](double number) { writer.Real(number); });
    writer.Text(star.ProperName);
    writer.Text(star.Designation);
    writer.Text(star.SpectralType);
    writer.Bytes(star.Tail);
}

bool IsStar(const StarRecord& star) {
    const std::array numbers = {star.Magnitude,        star.Declination,         star.RightAscension,
                                star.DeclinationJ2000, star.RightAscensionJ2000, star.ColorIndex};
    return std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
}

/// Reads a file, in the first of `folders` where that can be done, into `table`; nowhere, and it stays as it was.
template <typename Table>
bool Load(std::span<const std::filesystem::path> folders, const char* file,
          std::optional<Table> (*decode)(std::string_view), Table& table) {
    for (const std::filesystem::path& folder : folders) {
        const std::optional<std::string> bytes = ReadWholeFile(folder / file, kLargestFile);
        if (!bytes) continue;
        std::optional<Table> read = decode(*bytes);
        if (!read) continue;
        table = std::move(*read);
        return true;
    }
    return false;
}

}  // namespace

std::string EncodeBorders(const BorderTable& table) {
    ByteWriter writer;
    WriteCount(writer, table.Lat.size());
    WriteReals(writer, table.Lat);
    WriteReals(writer, table.Lon);
    for (std::size_t i = 1; i < table.Id.size(); ++i) writer.Integer(table.Id[i]);
    return writer.Take();
}

std::optional<BorderTable> DecodeBorders(std::string_view bytes) {
    ByteReader reader(bytes);
    const std::optional<std::size_t> count = ReadCount(reader, kVertexBytes);
    if (!count) return std::nullopt;
    BorderTable table;
    ReadReals(reader, *count, table.Lat);
    ReadReals(reader, *count, table.Lon);
    table.Id.resize(*count + 1);
    for (std::size_t i = 1; i <= *count; ++i) table.Id[i] = reader.Integer();
    const bool places = std::all_of(table.Lat.begin(), table.Lat.end(), IsPlace) &&
                        std::all_of(table.Lon.begin(), table.Lon.end(), IsPlace);
    if (!places) return std::nullopt;
    return table;
}

std::string EncodeStars(const std::vector<StarRecord>& stars) {
    ByteWriter writer;
    WriteCount(writer, stars.size());
    for (std::size_t i = 1; i < stars.size(); ++i) WriteStar(writer, stars[i]);
    return writer.Take();
}

std::optional<std::vector<StarRecord>> DecodeStars(std::string_view bytes) {
    ByteReader reader(bytes);
    const std::optional<std::size_t> count = ReadCount(reader, kLeastStarBytes);
    if (!count || *count > kStarCapacity) return std::nullopt;
    std::vector<StarRecord> stars(*count + 1);
    for (std::size_t i = 1; i <= *count; ++i) {
        stars[i] = ReadStar(reader);
        if (reader.Failed() || !IsStar(stars[i])) return std::nullopt;
    }
    return stars;
}

std::string EncodeConstellations(const std::vector<ConstellationLine>& lines) {
    ByteWriter writer;
    WriteCount(writer, lines.size());
    for (std::size_t i = 1; i < lines.size(); ++i) {
        writer.Integer(lines[i].Star);
        writer.Integer(lines[i].Group);
    }
    return writer.Take();
}

std::optional<std::vector<ConstellationLine>> DecodeConstellations(std::string_view bytes) {
    ByteReader reader(bytes);
    const std::optional<std::size_t> count = ReadCount(reader, kPairBytes);
    if (!count) return std::nullopt;
    std::vector<ConstellationLine> lines(*count + 1);
    for (std::size_t i = 1; i <= *count; ++i) {
        lines[i].Star = reader.Integer();
        lines[i].Group = reader.Integer();
    }
    return lines;
}

std::vector<std::string> LoadMapFiles(std::span<const std::filesystem::path> folders, MapTables& map, StarTables& stars,
                                      CityTables& cities) {
    std::vector<std::string> failed;
    const auto load = [&](const char* file, auto decode, auto& table) {
        const bool loaded = Load(folders, file, decode, table);
        if (!loaded) failed.emplace_back(file);
        return loaded;
    };
    load(kFineBorderFile, DecodeBorders, map.Border);
    load(kReducedBorderFile, DecodeBorders, map.Zip);
    std::vector<StarRecord> catalogue;
    if (load(kStarFile, DecodeStars, catalogue)) TakeStars(stars, std::move(catalogue));
    load(kConstellationFile, DecodeConstellations, stars.Constellations);
    if (!LoadCities(folders, cities)) failed.emplace_back(kCityFile);
    return failed;
}

std::vector<std::string> LoadMapFiles(const std::filesystem::path& folder, MapTables& map, StarTables& stars,
                                      CityTables& cities) {
    return LoadMapFiles(std::span(&folder, 1), map, stars, cities);
}

std::vector<std::string> SaveMapFiles(const std::filesystem::path& folder, const MapTables& map,
                                      const StarTables& stars, const CityTables& cities) {
    std::vector<std::string> failed;
    const auto save = [&](const char* file, const std::string& bytes) {
        if (!ReplaceFile(folder / file, bytes)) failed.emplace_back(file);
    };
    save(kFineBorderFile, EncodeBorders(map.Border));
    save(kReducedBorderFile, EncodeBorders(map.Zip));
    save(kStarFile, EncodeStars(stars.StarCatalogue));
    save(kConstellationFile, EncodeConstellations(stars.Constellations));
    // The sites behind the cities have a file of their own.
    const auto citiesEnd = cities.SiteTable.begin() + std::min(cities.FirstSiteIndex, cities.SiteCount() + 1);
    save(kCityFile, EncodeCities({cities.SiteTable.begin(), citiesEnd}));
    return failed;
}

}  // namespace glintara
