#include "core/box_numbers.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "engine/astro/number_text.h"

namespace glintara {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Signs of degrees, minutes and seconds, and the minus of typeset text, as what they stand for here.
constexpr std::array<std::pair<std::string_view, std::string_view>, 9> kSigns{{
    {"\u00B0", " "},
    {"\u00BA", " "},
    {"\u2032", " "},
    {"\u2033", " "},
    {"\u2019", " "},
    {"\u201D", " "},
    {"'", " "},
    {"\"", " "},
    {"\u2212", "-"},
}};

std::string WithPoint(std::string_view text) {
    std::string pointed(text);
    const std::size_t comma = pointed.find(',');
    if (comma != std::string::npos && pointed.find('.') == std::string::npos) pointed[comma] = '.';
    return pointed;
}

std::string WithoutSigns(std::string_view text) {
    std::string plain(text);
    for (const auto& [sign, stands] : kSigns)
        for (std::size_t at = plain.find(sign); at != std::string::npos; at = plain.find(sign, at + stands.size()))
            plain.replace(at, sign.size(), stands);
    for (char& c : plain) {
        if (c == ':') c = ' ';
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return plain;
}

/// The digits, and the mark among them, that `text` begins with.
std::string_view DigitsAtStart(std::string_view text) {
    std::size_t length = 0;
    bool mark = false;
    while (length < text.size() && (IsDigit(text[length]) || (text[length] == '.' && !mark))) {
        mark = mark || text[length] == '.';
        ++length;
    }
    return text.substr(0, length);
}

/// Reads degrees, minutes and seconds from the start of `text`, without a sign, and takes them off it. Only the last of
/// them may have a fraction; minutes and seconds go up to 60.
double TakeSexagesimal(std::string_view& text) {
    constexpr double kParts = 60;
    double value = 0;
    double unit = 1;
    for (int i = 0; i < 3; ++i, unit /= kParts) {
        const std::string_view behind = i == 0 ? text : TrimmedText(text, kBlanks);
        const std::string_view digits = DigitsAtStart(behind);
        const std::optional<double> number = StrictNumber(digits);
        if (!number || (i > 0 && *number >= kParts)) break;
        value += *number * unit;
        text = behind.substr(digits.size());
        if (digits.find('.') != std::string_view::npos) break;
    }
    return value;
}

}  // namespace

BoxNumber ReadBoxNumber(std::string_view text) {
    const std::string pointed = WithPoint(text);
    return {LeadingNumber(pointed), StrictNumber(pointed).has_value()};
}

BoxNumber ReadBoxAngle(std::string_view text, char positive, char negative) {
    const BoxNumber plain = ReadBoxNumber(text);
    if (plain.whole) return plain;

    const std::string readable = WithPoint(WithoutSigns(text));
    std::string_view rest = TrimmedText(readable, kBlanks);
    char letter = 0;
    const auto takeLetter = [&] {
        if (letter != 0 || rest.empty() || (rest.front() != positive && rest.front() != negative)) return;
        letter = rest.front();
        rest = TrimmedText(rest.substr(1), kBlanks);
    };
    takeLetter();
    const bool minus = !rest.empty() && rest.front() == '-';
    if (minus || (!rest.empty() && rest.front() == '+')) rest.remove_prefix(1);
    const std::size_t before = rest.size();
    const double size = TakeSexagesimal(rest);
    if (rest.size() == before) return {};
    // "12e5" is a number with an exponent, not twelve degrees east.
    if (rest.size() > 1 && rest[0] == 'E' && (IsDigit(rest[1]) || rest[1] == '-' || rest[1] == '+')) return plain;
    rest = TrimmedText(rest, kBlanks);
    takeLetter();
    return {minus != (letter == negative) ? -size : size, rest.empty()};
}

std::string AngleText(double degrees, char positive, char negative) {
    constexpr double kTenthsPerMinute = 600;
    constexpr double kTenthsPerDegree = 36000;
    const double tenths = std::nearbyint(std::abs(degrees) * kTenthsPerDegree);
    const double whole = std::floor(tenths / kTenthsPerDegree);
    const double minutes = std::floor(std::fmod(tenths, kTenthsPerDegree) / kTenthsPerMinute);
    const double seconds = std::fmod(tenths, kTenthsPerMinute);
    const auto two = [](double value) { return (value < 10 ? "0" : "") + PlainNumberText(value); };
    return PlainNumberText(whole) + "\u00B0" + two(minutes) + "'" + two(std::floor(seconds / 10)) + "." +
           PlainNumberText(std::fmod(seconds, 10)) + "\" " + (degrees < 0 ? negative : positive);
}

}  // namespace glintara
