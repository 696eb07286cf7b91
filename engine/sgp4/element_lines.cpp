#include "engine/sgp4/element_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>

#include "engine/astro/calendar.h"

namespace glintara {

namespace {

constexpr std::size_t kLineLength = 69;
constexpr std::size_t kLine1LeastLength = 61;
constexpr std::size_t kLine2LeastLength = 55;
constexpr std::size_t kMeanMotionEnd = 63;

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kMinutesPerDay = 1440;

// Digits of the century that the two of the epoch's year belong to: from here on the 20th.
constexpr double kFirstYearOf1900s = 51;

constexpr std::string_view kDigits = "0123456789";

// Columns `first` to `last`, counted from 1, as far as the line reaches.
std::string_view Columns(std::string_view line, std::size_t first, std::size_t last) {
    return first > line.size() ? std::string_view{} : line.substr(first - 1, last - first + 1);
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view WithoutLineEnd(std::string_view line) {
    return line.substr(0, std::min(line.find_first_of("\r\n"), kLineLength));
}

// The whole of `text`, blanks around it apart, as a decimal number without an exponent.
std::optional<double> PlainNumber(std::string_view text) {
    std::string_view number = WithoutBlanks(text);
    const bool negative = number.starts_with('-');
    if (negative || number.starts_with('+')) number.remove_prefix(1);
    // Keeps out words and hexadecimal digits, which the conversion would accept, and a second sign.
    if (number.find_first_not_of("0123456789.") != std::string_view::npos) return {};
    double value = 0;
    const char* const end = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), end, value, std::chars_format::fixed);
    if (error != std::errc{} || stop != end) return {};
    return negative ? -value : value;
}

std::optional<double> PlainNumberOrBlank(std::string_view text) {
    return WithoutBlanks(text).empty() ? 0 : PlainNumber(text);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Digits behind an implied decimal point; blanks before and behind them stand for zeros.
std::optional<double> ImpliedFraction(std::string_view text) {
    if (WithoutBlanks(text).empty()) return {};
    double digits = 0;
    double scale = 1;
    for (const char c : text) {
        digits = digits * 10 + (IsDigit(c) ? c - '0' : 0);
        scale *= 10;
    }
    return WithoutBlanks(text).find_first_not_of(kDigits) == std::string_view::npos ? std::optional(digits / scale)
                                                                                    : std::nullopt;
}

// The same with a sign, or a blank for it, in a column of its own in front.
std::optional<double> SignedImpliedFraction(std::string_view text) {
    if (text.empty() || (text[0] != ' ' && text[0] != '+' && text[0] != '-')) return {};
    const std::optional<double> value = ImpliedFraction(text.substr(1));
    return value && text[0] == '-' ? std::optional(-*value) : value;
}

// Sign column, five digits behind an implied point, and two columns for a power of ten.
std::optional<double> ScaledFractionOrBlank(std::string_view text) {
    constexpr std::size_t kMantissaWidth = 6;
    if (WithoutBlanks(text).empty()) return 0;
    const std::string_view exponentText = text.substr(kMantissaWidth);
    if (exponentText.find('.') != std::string_view::npos) return {};
    const std::optional<double> mantissa = SignedImpliedFraction(text.substr(0, kMantissaWidth));
    const std::optional<double> exponent = PlainNumberOrBlank(exponentText);
    if (!mantissa || !exponent) return {};
    return *mantissa * std::pow(10.0, *exponent);
}

std::optional<double> Eccentricity(std::string_view text) {
    return text.starts_with('-') ? SignedImpliedFraction(text) : ImpliedFraction(text);
}

// Year by its last two digits, the first of which may be blank.
std::optional<double> EpochYear(std::string_view text) {
    const bool readable = text.size() == 2 && (IsDigit(text[0]) || text[0] == ' ') && IsDigit(text[1]);
    if (!readable) return {};
    const double digits = (IsDigit(text[0]) ? text[0] - '0' : 0) * 10 + (text[1] - '0');
    return digits >= kFirstYearOf1900s ? 1900 + digits : 2000 + digits;
}

// Whether the line goes as far as its last needed field does.
bool HoldsMeanMotion(std::string_view line2) {
    if (line2.size() < kLine2LeastLength) return false;
    if (line2.size() >= kMeanMotionEnd) return true;
    const std::string_view field = Columns(line2, 53, kMeanMotionEnd);
    const std::size_t point = field.find('.');
    return point != std::string_view::npos && point + 1 < field.size() && IsDigit(field[point + 1]);
}

// Epoch and drag of line 1; false when a column holds no number.
bool ReadLine1(std::string_view line, MeanElements& elements) {
    const std::optional<double> year = EpochYear(Columns(line, 19, 20));
    const std::optional<double> day = PlainNumber(Columns(line, 21, 32));
    const std::optional<double> bstar = ScaledFractionOrBlank(Columns(line, 54, 61));
    const bool derivativesRead = PlainNumberOrBlank(Columns(line, 34, 43)).has_value() &&
                                 ScaledFractionOrBlank(Columns(line, 45, 52)).has_value();
    if (!year || !day || !bstar || !derivativesRead) return false;

    // Day 1 of the year is its first of January.
    const double wholeDays = std::floor(*day);
    elements.epochDay = DateToJD({.year = *year, .month = 1, .day = 1}) + (wholeDays - 1);
    elements.epochFraction = *day - wholeDays;
    elements.bstar = *bstar;
    return true;
}

// Elements of line 2; false when a column holds no number.
bool ReadLine2(std::string_view line, MeanElements& elements) {
    const std::optional<double> inclination = PlainNumber(Columns(line, 9, 16));
    const std::optional<double> node = PlainNumber(Columns(line, 18, 25));
    const std::optional<double> eccentricity = Eccentricity(Columns(line, 27, 33));
    const std::optional<double> argPerigee = PlainNumber(Columns(line, 35, 42));
    const std::optional<double> meanAnomaly = PlainNumber(Columns(line, 44, 51));
    const std::optional<double> turnsPerDay = PlainNumber(Columns(line, 53, kMeanMotionEnd));
    if (!inclination || !node || !eccentricity || !argPerigee || !meanAnomaly || !turnsPerDay) return false;

    elements.inclination = *inclination * kDegree;
    elements.node = *node * kDegree;
    elements.eccentricity = *eccentricity;
    elements.argPerigee = *argPerigee * kDegree;
    elements.meanAnomaly = *meanAnomaly * kDegree;
    elements.meanMotion = *turnsPerDay * 2 * std::numbers::pi / kMinutesPerDay;
    return true;
}

}  // namespace

ElementLinesError ReadElementLines(std::string_view line1, std::string_view line2, MeanElements& out) {
    line1 = WithoutLineEnd(line1);
    line2 = WithoutLineEnd(line2);
    const bool areTwoLines =
        line1.starts_with('1') && line2.starts_with('2') && line1.size() >= kLine1LeastLength && HoldsMeanMotion(line2);
    if (!areTwoLines) return ElementLinesError::NotTwoLines;

    MeanElements elements;
    if (!ReadLine1(line1, elements) || !ReadLine2(line2, elements)) return ElementLinesError::NotNumbers;
    if (!(elements.meanMotion > 0)) return ElementLinesError::MeanMotion;
    if (elements.eccentricity < 0 || elements.eccentricity >= 1) return ElementLinesError::Eccentricity;
    out = elements;
    return ElementLinesError::None;
}

}  // namespace glintara
