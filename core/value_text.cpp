#include "core/value_text.h"

#include <array>
#include <charconv>

namespace glintara {

namespace {

/// Room for a sign, 17 digits, the mark and an exponent.
constexpr std::size_t kLongestNumber = 32;

}  // namespace

std::string ValueToText(double value) {
    std::array<char, kLongestNumber> buffer{};
    const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), done.ptr};
}

}  // namespace glintara
