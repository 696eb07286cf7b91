#pragma once

// Numbers as text, the same under every locale, and what reading them takes.

#include <optional>
#include <string>
#include <string_view>

namespace glintara {

/// Whether `c` is one of the ten ASCII digits.
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// `text` without the characters of `blanks` around it.
std::string_view TrimmedText(std::string_view text, std::string_view blanks = " ");

/// Shortest plain decimal text of `value` with up to 15 significant digits, "." as decimal mark, no leading blank,
/// a zero before the mark ("0.5", "-0.25"); whole numbers without a mark. Magnitudes beyond 1e15 and below 1e-15 use an
/// exponent ("1e+20"). What is not finite reads "nan", "inf", "-inf".
std::string PlainNumberText(double value);

/// The shortest text that reads back as the very same number.
std::string ExactNumberText(double value);

/// `value` cut (not rounded) to `decimals` places, floor(x 10^d)/10^d, as plain text.
std::string CutNumberText(double value, int decimals);

/// Reads the number at the start of `text`: leading blanks are skipped, then sign, digits, ".", digits and exponent (e
/// or E) are taken as far as they form a number; what follows is ignored. Text that does not begin with a number is 0,
/// and so is a number too large for a double. This is how text boxes and element-set columns are read.
double LeadingNumber(std::string_view text);

/// The whole of `text`, blanks around it apart, as one finite number; nothing when it is anything else.
std::optional<double> StrictNumber(std::string_view text);

}  // namespace glintara
