#include "engine/astro/element_fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "engine/astro/number_text.h"

namespace glintara {

namespace {

constexpr std::size_t kLine1LeastLength = kBStar.last;
constexpr std::size_t kLine2LeastLength = 55;

/// Sign and digits of a field whose last two columns are a power of ten.
constexpr std::size_t kMantissaWidth = 6;

/// Digits of the century that the two of the epoch's year belong to: from here on the 20th.
constexpr double kFirstYearOf1900s = 51;
constexpr std::size_t kYearDigits = 2;

std::string_view WithoutLineEnd(std::string_view line) {
    return line.substr(0, std::min(line.find_first_of("\r\n"), kElementLineLength));
}

/// The whole of `text`, blanks around it apart, as a decimal number without an exponent.
std::optional<double> PlainNumber(std::string_view text) {
    std::string_view number = TrimmedText(text);
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
    return TrimmedText(text).empty() ? 0 : PlainNumber(text);
}

/// Digits behind an implied decimal point; blanks before and behind them stand for zeros.
std::optional<double> ImpliedFraction(std::string_view text) {
    const std::string_view number = TrimmedText(text);
    if (number.empty() || !std::all_of(number.begin(), number.end(), IsDigit)) return {};
    double digits = 0;
    double scale = 1;
    for (const char c : text) {
        digits = digits * 10 + (IsDigit(c) ? c - '0' : 0);
        scale *= 10;
    }
    return digits / scale;
}

/// The same with a sign, or a blank for it, in a column of its own in front.
std::optional<double> SignedImpliedFraction(std::string_view text) {
    if (text.empty() || (text[0] != ' ' && text[0] != '+' && text[0] != '-')) return {};
    const std::optional<double> value = ImpliedFraction(text.substr(1));
    return value && text[0] == '-' ? std::optional(-*value) : value;
}

/// Sign column, five digits behind an implied point, and two columns for a power of ten.
std::optional<double> ScaledFractionOrBlank(std::string_view text) {
    if (TrimmedText(text).empty()) return 0;
    const std::string_view exponentText = text.substr(kMantissaWidth);
    if (exponentText.find('.') != std::string_view::npos) return {};
    const std::optional<double> mantissa = SignedImpliedFraction(text.substr(0, kMantissaWidth));
    const std::optional<double> exponent = PlainNumberOrBlank(exponentText);
    if (!mantissa || !exponent) return {};
    return *mantissa * std::pow(10.0, *exponent);
}

std::optional<double> EccentricityOf(std::string_view text) {
    return text.starts_with('-') ? SignedImpliedFraction(text) : ImpliedFraction(text);
}

/// Year by its last two digits, the first of which may be blank.
std::optional<double> EpochYear(std::string_view text) {
    const bool readable = text.size() == kYearDigits && (IsDigit(text[0]) || text[0] == ' ') && IsDigit(text[1]);
    if (!readable) return {};
    const double digits = (IsDigit(text[0]) ? text[0] - '0' : 0) * 10 + (text[1] - '0');
    return digits >= kFirstYearOf1900s ? 1900 + digits : 2000 + digits;
}

/// The columns can hold numbers like "9e99"; what does not fit becomes the nearest that does.
std::int16_t NearestShort(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(
        std::clamp(std::nearbyint(value), static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

/// Whether the line goes as far as its last needed field does.
bool HoldsMeanMotion(std::string_view line) {
    if (line.size() < kLine2LeastLength) return false;
    if (line.size() >= kMeanMotion.last) return true;
    const std::string_view field = ElementField(line, kMeanMotion);
    const std::size_t point = field.find('.');
    return point != std::string_view::npos && point + 1 < field.size() && IsDigit(field[point + 1]);
}

/// Puts the number of a field into its place; false when the field holds none.
bool Take(const std::optional<double>& number, double& place) {
    if (number) place = *number;
    return number.has_value();
}

std::string_view FieldName(ElementFault fault) {
    using enum ElementFault;
    switch (fault) {
        case Epoch:
            return "epoch";
        case MeanMotionDot:
            return "first derivative of the mean motion";
        case MeanMotionDDot:
            return "second derivative of the mean motion";
        case BStar:
            return "drag term";
        case Inclination:
            return "inclination";
        case RaanAngle:
            return "right ascension of the node";
        case ArgPerigee:
            return "argument of perigee";
        case MeanAnomaly:
            return "mean anomaly";
        case Eccentricity:
        case EccentricityNegative:
            return "eccentricity";
        case MeanMotion:
        case MeanMotionNotPositive:
            return "mean motion";
        case None:
        case NotItsDigit:
        case TooShort:
            break;
    }
    return {};
}

}  // namespace

std::string_view ElementField(std::string_view line, ElementColumns columns) {
    if (line.size() < columns.first) return {};
    return line.substr(columns.first - 1, columns.last - columns.first + 1);
}

std::string FaultText(ElementFault fault, char lineDigit) {
    const std::string field = "the " + std::string(FieldName(fault));
    switch (fault) {
        case ElementFault::None:
            return {};
        case ElementFault::NotItsDigit:
            return std::string("it does not begin with \"") + lineDigit + '"';
        case ElementFault::TooShort:
            return "it is too short";
        case ElementFault::MeanMotionNotPositive:
            return field + " is not above 0";
        case ElementFault::EccentricityNegative:
            return field + " is negative";
        default:
            return field + " is no number";
    }
}

ElementFault ReadElementLine1(std::string_view line, ElementLine1& out) {
    using enum ElementFault;
    line = WithoutLineEnd(line);
    if (!line.starts_with(kLine1Digit)) return NotItsDigit;
    if (line.size() < kLine1LeastLength) return TooShort;

    ElementLine1 read;
    read.satNumber = ElementField(line, kSatNumber);
    read.designator = ElementField(line, kDesignator);
    read.epochText = ElementField(line, kEpochText);
    if (!Take(EpochYear(read.epochText.substr(0, kYearDigits)), read.epochYear)) return Epoch;
    if (!Take(PlainNumber(read.epochText.substr(kYearDigits)), read.epochDay)) return Epoch;
    if (!Take(PlainNumberOrBlank(ElementField(line, kMeanMotionDot)), read.meanMotionDot)) return MeanMotionDot;
    if (!Take(ScaledFractionOrBlank(ElementField(line, kMeanMotionDDot)), read.meanMotionDDot)) return MeanMotionDDot;
    if (!Take(ScaledFractionOrBlank(ElementField(line, kBStar)), read.bstar)) return BStar;
    read.elementSetNumber = NearestShort(LeadingNumber(ElementField(line, kElementSetNumber)));
    out = read;
    return None;
}

ElementFault ReadElementLine2(std::string_view line, ElementLine2& out) {
    using enum ElementFault;
    line = WithoutLineEnd(line);
    if (!line.starts_with(kLine2Digit)) return NotItsDigit;
    if (!HoldsMeanMotion(line)) return TooShort;

    ElementLine2 read;
    if (!Take(PlainNumber(ElementField(line, kInclination)), read.inclination)) return Inclination;
    if (!Take(PlainNumber(ElementField(line, kRaanAngle)), read.raanAngle)) return RaanAngle;
    if (!Take(EccentricityOf(ElementField(line, kEccentricity)), read.eccentricity)) return Eccentricity;
    if (!Take(PlainNumber(ElementField(line, kArgPerigee)), read.argPerigee)) return ArgPerigee;
    if (!Take(PlainNumber(ElementField(line, kMeanAnomaly)), read.meanAnomaly)) return MeanAnomaly;
    if (!Take(PlainNumber(ElementField(line, kMeanMotion)), read.meanMotion)) return MeanMotion;
    if (!(read.meanMotion > 0)) return MeanMotionNotPositive;
    if (read.eccentricity < 0) return EccentricityNegative;
    out = read;
    return None;
}

}  // namespace glintara
