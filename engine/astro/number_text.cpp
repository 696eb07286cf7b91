#include "engine/astro/number_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace glintara {

namespace {

constexpr int kSignificantDigits = 15;

/// Decimal exponents between which numbers are written without an exponent; of the largest, 10^15 alone.
constexpr int kLargestPlainExponent = 15;
constexpr int kSmallestPlainExponent = -15;

/// Room for a sign, 15 digits, the mark and an exponent.
using Buffer = std::array<char, 32>;

/// A decimal number: 0.d1d2d3... x 10^(exponent + 1), without trailing zeros.
struct Decimal {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

/// `value`, finite, rounded to 15 significant digits.
Decimal ToDecimal(double value) {
    Buffer buffer{};
    const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific,
                                    kSignificantDigits - 1);
    Decimal decimal;
    const char* c = buffer.data();
    for (; c != done.ptr && *c != 'e'; ++c)
        if (*c == '-')
            decimal.negative = true;
        else if (*c != '.')
            decimal.digits += *c;
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
    const char* const exponent = c + (c[1] == '+' ? 2 : 1);  // from_chars takes no "+"
    std::from_chars(exponent, done.ptr, decimal.exponent);
    return decimal;
}

bool IsPlain(const Decimal& decimal) {
    if (decimal.exponent == kLargestPlainExponent) return decimal.digits == "1";
    return decimal.exponent >= kSmallestPlainExponent && decimal.exponent < kLargestPlainExponent;
}

/// The sign and the digits, with the mark in its place and no exponent.
std::string PlainDigits(const Decimal& decimal) {
    std::string text(decimal.negative ? "-" : "");
    if (decimal.exponent < 0) {
        text += "0.";
        text.append(static_cast<std::size_t>(-decimal.exponent) - 1, '0');
        return text += decimal.digits;
    }
    const auto wholeDigits = static_cast<std::size_t>(decimal.exponent) + 1;
    text.append(decimal.digits, 0, wholeDigits);
    if (decimal.digits.size() > wholeDigits) {
        text += '.';
        text.append(decimal.digits, wholeDigits);
    } else {
        text.append(wholeDigits - decimal.digits.size(), '0');
    }
    return text;
}

constexpr std::string_view kBlanks = " \t\r\n";

struct Parsed {
    double value = 0;
    std::size_t length = 0;  ///< characters taken; 0 when there is no number
};

/// The number at the very start of `text`.
Parsed ParseNumber(std::string_view text) {
    const bool plus = !text.empty() && text.front() == '+';
    const std::string_view body = plus ? text.substr(1) : text;
    const bool negative = !plus && !body.empty() && body.front() == '-';
    const std::size_t first = negative ? 1 : 0;
    // Only digits and the mark begin a number: "inf" and "nan" are words here.
    if (first >= body.size() || !(IsDigit(body[first]) || body[first] == '.')) return {};
    Parsed parsed;
    const auto [end, error] = std::from_chars(body.data(), body.data() + body.size(), parsed.value);
    if (error == std::errc::invalid_argument) return {};
    parsed.length = static_cast<std::size_t>(end - body.data()) + (plus ? 1 : 0);
    if (error == std::errc::result_out_of_range) parsed.value = std::nan("");
    return parsed;
}

}  // namespace

std::string_view TrimmedText(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string PlainNumberText(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
    if (value == 0) return "0";
    const Decimal decimal = ToDecimal(value);
    if (IsPlain(decimal)) return PlainDigits(decimal);
    Buffer buffer{};
    const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general,
                                    kSignificantDigits);
    return {buffer.data(), done.ptr};
}

std::string ExactNumberText(double value) {
    Buffer buffer{};
    const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), done.ptr};
}

std::string CutNumberText(double value, int decimals) {
    const double power = std::pow(10, decimals);
    const double scaled = value * power;
    // So large a number, or so many places, that there is nothing to cut.
    if (!std::isfinite(scaled) || power == 0) return PlainNumberText(value);
    return PlainNumberText(std::floor(scaled) / power);
}

double LeadingNumber(std::string_view text) {
    const double value = ParseNumber(TrimmedText(text, kBlanks)).value;
    return std::isfinite(value) ? value : 0;
}

std::optional<double> StrictNumber(std::string_view text) {
    const std::string_view body = TrimmedText(text, kBlanks);
    const Parsed parsed = ParseNumber(body);
    if (body.empty() || parsed.length != body.size() || !std::isfinite(parsed.value)) return std::nullopt;
    return parsed.value;
}

}  // namespace glintara
