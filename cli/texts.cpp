#include "cli/texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"

namespace glintara::cli {

namespace {

/// Two blanks between columns.
constexpr std::string_view kGap = "  ";

std::string Padded(int value, std::size_t width) {
    std::string text = std::to_string(value);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

/// The instant rounded to 10^-decimals seconds, as fields.
CalendarFields RoundedFields(double jd, int decimals) {
    const double steps = std::pow(10, decimals);
    CalendarFields fields = JDToDate(jd);
    fields.second = std::round(fields.second * steps) / steps;
    return NormalizeDateTime(fields);
}

std::string InstantText(double jd, int decimals, char between) {
    const CalendarFields f = RoundedFields(jd, decimals);
    std::array<char, 32> buffer{};
    const auto done =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), f.second, std::chars_format::fixed, decimals);
    std::string seconds(buffer.data(), done.ptr);
    if (f.second < 10) seconds.insert(0, 1, '0');
    return Padded(static_cast<int>(f.year), 4) + "-" + Padded(static_cast<int>(f.month), 2) + "-" +
           Padded(static_cast<int>(f.day), 2) + between + Padded(static_cast<int>(f.hour), 2) + ":" +
           Padded(static_cast<int>(f.minute), 2) + ":" + seconds;
}

/// Characters of a UTF-8 text as they stand on the screen: its bytes but for continuations.
std::size_t ScreenWidth(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

}  // namespace

std::string FixedText(double value, int decimals) {
    const double power = std::pow(10, decimals);
    const double cut = std::floor(value * power) / power + 0.0;  // a negative zero becomes zero
    std::array<char, 400> buffer{};
    const auto done =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), cut, std::chars_format::fixed, decimals);
    return {buffer.data(), done.ptr};
}

std::string FullText(double value) {
    std::array<char, 32> buffer{};
    const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), done.ptr};
}

std::string ShortInstant(double jd) { return InstantText(jd, 1, ' '); }

std::string IsoInstant(double jd) { return InstantText(jd, 3, 'T') + "Z"; }

std::string CsvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c;
        if (c == '"') quoted += c;
    }
    quoted += '"';
    return quoted;
}

std::string CsvLine(const std::vector<std::string>& fields) {
    std::string line;
    for (const std::string& field : fields) {
        if (!line.empty()) line += ',';
        line += CsvField(field);
    }
    return line;
}

void Table::AddColumn(std::vector<std::string> heading, Align align) {
    columns_.push_back({std::move(heading), align});
}

void Table::Print(std::ostream& out) const {
    std::vector<std::vector<std::string>> lines;
    std::size_t headingLines = 0;
    for (const Column& column : columns_) headingLines = std::max(headingLines, column.heading.size());
    for (std::size_t i = 0; i < headingLines; ++i) {
        std::vector<std::string> line;
        for (const Column& column : columns_) line.push_back(i < column.heading.size() ? column.heading[i] : "");
        lines.push_back(line);
    }
    lines.insert(lines.end(), rows_.begin(), rows_.end());

    std::vector<std::size_t> widths(columns_.size(), 0);
    for (const auto& line : lines)
        for (std::size_t c = 0; c < widths.size(); ++c) widths[c] = std::max(widths[c], ScreenWidth(line[c]));
    for (const auto& line : lines) {
        std::string text;
        for (std::size_t c = 0; c < widths.size(); ++c) {
            const std::string padding(widths[c] - ScreenWidth(line[c]), ' ');
            text += columns_[c].align == Align::Right ? padding + line[c] : line[c] + padding;
            text += kGap;
        }
        text.erase(text.find_last_not_of(' ') + 1);
        out << text << '\n';
    }
}

}  // namespace glintara::cli
