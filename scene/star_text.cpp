#include "scene/star_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/files.h"
#include "scene/star_places.h"

namespace glintara {

namespace {

constexpr const char* kStarHeader =
    "Number,,Designation,,,,Name,RightAscension,Declination,,Magnitude,,Spectrum,ColorIndex\n";

/// A full catalogue takes some six megabytes; more than this is another file.
constexpr std::size_t kLargestText = std::size_t{32} << 20;

constexpr std::size_t kColumns = 14;
constexpr double kDegreesPerHour = 15;

constexpr std::string_view kBlanks = " \t\r";

/// Takes the next line off the front of `text`, without its end.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

using Columns = std::array<std::string_view, kColumns>;

/// The columns of a line, without blanks around them; nothing when there are more or fewer.
std::optional<Columns> SplitColumns(std::string_view line) {
    Columns columns;
    for (std::size_t i = 0; i < kColumns; ++i) {
        const std::size_t comma = line.find(',');
        const bool last = i + 1 == kColumns;
        if ((comma == std::string_view::npos) != last) return std::nullopt;
        columns[i] = TrimmedText(line.substr(0, comma), kBlanks);
        if (!last) line.remove_prefix(comma + 1);
    }
    return columns;
}

std::optional<double> NumberWithin(std::string_view text, double least, double most) {
    const std::optional<double> number = StrictNumber(text);
    if (!number || *number < least || *number > most) return std::nullopt;
    return number;
}

std::optional<std::int32_t> StarNumber(std::string_view text) {
    const std::optional<double> number = NumberWithin(text, 1, kStarCapacity);
    if (!number || *number != std::floor(*number)) return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

std::optional<StarRecord> ReadStar(const Columns& columns) {
    const std::optional<double> hours = NumberWithin(columns[7], 0, kHoursPerDay);
    const std::optional<double> degrees = NumberWithin(columns[8], -90, 90);
    const std::optional<double> magnitude = StrictNumber(columns[10]);
    const std::optional<double> color = columns[13].empty() ? 0 : StrictNumber(columns[13]);
    if (!hours || !degrees || !magnitude || !color) return std::nullopt;
    StarRecord star;
    star.Magnitude = *magnitude;
    star.RightAscensionJ2000 = star.RightAscension = *hours * kDegreesPerHour * kDegToRad;
    star.DeclinationJ2000 = star.Declination = *degrees * kDegToRad;
    star.ColorIndex = *color;
    star.ProperName = columns[6];
    star.Designation = columns[2];
    star.SpectralType = columns[12];
    return star;
}

/// A text without what would end its column.
std::string ColumnText(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == ',' || c == '\n' || c == '\r'; }, ' ');
    return text;
}

std::optional<std::string> ReadText(const std::filesystem::path& path) { return ReadWholeFile(path, kLargestText); }

}  // namespace

std::optional<std::vector<StarRecord>> ReadStars(std::string_view text) {
    if (text.empty()) return std::nullopt;
    TakeLine(text);
    std::vector<StarRecord> stars(1);
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (TrimmedText(line, kBlanks).empty()) continue;
        const std::optional<Columns> columns = SplitColumns(line);
        if (!columns) return std::nullopt;
        const std::optional<std::int32_t> number = StarNumber((*columns)[0]);
        std::optional<StarRecord> star = ReadStar(*columns);
        if (!number || !star || static_cast<std::size_t>(*number) < stars.size()) return std::nullopt;
        stars.resize(static_cast<std::size_t>(*number));
        stars.push_back(std::move(*star));
    }
    return stars;
}

std::string StarsText(const std::vector<StarRecord>& stars) {
    std::string text = kStarHeader;
    for (std::size_t i = 1; i < stars.size(); ++i) {
        const StarRecord& star = stars[i];
        if (star.IsGap()) continue;
        text += std::to_string(i) + ",," + ColumnText(star.Designation) + ",,,," + ColumnText(star.ProperName) + ',';
        text += PlainNumberText(star.RightAscensionJ2000 / kDegToRad / kDegreesPerHour) + ',';
        text += PlainNumberText(star.DeclinationJ2000 / kDegToRad) + ",," + PlainNumberText(star.Magnitude) + ",,";
        text += ColumnText(star.SpectralType) + ',' + PlainNumberText(star.ColorIndex) + '\n';
    }
    return text;
}

std::optional<std::vector<ConstellationLine>> ReadConstellations(std::string_view text) {
    std::vector<ConstellationLine> lines(1);
    std::int32_t group = 0;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.starts_with('#') || LeadingNumber(line) == 0) {
            ++group;
            continue;
        }
        const std::optional<std::int32_t> star = StarNumber(TrimmedText(line, kBlanks));
        if (!star) return std::nullopt;
        lines.push_back({*star, group});
    }
    return lines;
}

std::string ConstellationsText(const std::vector<ConstellationLine>& lines) {
    std::string text;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::int32_t before = i > 1 ? lines[i - 1].Group : 0;
        if (lines[i].Group != before) text += "#\n";
        text += std::to_string(lines[i].Star) + '\n';
    }
    return text;
}

bool LoadStarText(const std::filesystem::path& folder, StarTables& stars) {
    const std::optional<std::string> text = ReadText(folder / kStarTextFile);
    if (!text) return false;
    std::optional<std::vector<StarRecord>> read = ReadStars(*text);
    if (!read) return false;
    TakeStars(stars, std::move(*read));
    return true;
}

bool LoadConstellationText(const std::filesystem::path& folder, StarTables& stars) {
    const std::optional<std::string> text = ReadText(folder / kConstellationTextFile);
    if (!text) return false;
    std::optional<std::vector<ConstellationLine>> lines = ReadConstellations(*text);
    if (!lines) return false;
    stars.Constellations = std::move(*lines);
    return true;
}

bool SaveStarText(const std::filesystem::path& folder, const StarTables& stars) {
    return ReplaceFile(folder / kStarTextFile, StarsText(stars.StarCatalogue));
}

bool SaveConstellationText(const std::filesystem::path& folder, const StarTables& stars) {
    return ReplaceFile(folder / kConstellationTextFile, ConstellationsText(stars.Constellations));
}

}  // namespace glintara
