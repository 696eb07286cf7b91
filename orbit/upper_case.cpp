#include "orbit/upper_case.h"

namespace glintara {

namespace {

/// The capital of a letter of the Latin (up to Latin Extended-A), Greek or Cyrillic alphabet.
char32_t Capital(char32_t c) {
    const auto within = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
    if (within('a', 'z')) return c - 0x20;
    if (within(0xE0, 0xFE) && c != 0xF7) return c - 0x20;
    if (c == 0xFF) return 0x178;
    if (within(0x100, 0x137) && c != 0x131) return c & ~char32_t{1};
    if (within(0x139, 0x148)) return ((c - 1) | 1);
    if (within(0x14A, 0x177)) return c & ~char32_t{1};
    if (within(0x179, 0x17E)) return ((c - 1) | 1);
    if (within(0x3B1, 0x3C9) && c != 0x3C2) return c - 0x20;
    if (within(0x430, 0x44F)) return c - 0x20;
    if (within(0x450, 0x45F)) return c - 0x50;
    return c;
}

}  // namespace

std::string UpperCase(std::string_view text) {
    constexpr unsigned char kFirstOfMany = 0xC0;
    constexpr unsigned char kFirstOfThree = 0xE0;
    constexpr unsigned kContentBits = 0x3F;
    constexpr unsigned kContinued = 0x80;
    std::string upper;
    upper.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // A byte that only looks like the first of two, in a text of another encoding, leaves the next one alone.
        const bool pair = byte >= kFirstOfMany && byte < kFirstOfThree && i + 1 < text.size() &&
                          (static_cast<unsigned char>(text[i + 1]) & ~kContentBits) == kContinued;
        if (!pair) {
            upper += static_cast<char>(byte < 0x80 ? Capital(byte) : byte);
            continue;
        }
        const auto second = static_cast<unsigned char>(text[++i]);
        const char32_t capital = Capital((byte & 0x1Fu) << 6 | (second & kContentBits));
        upper += static_cast<char>(kFirstOfMany | capital >> 6);
        upper += static_cast<char>(kContinued | (capital & kContentBits));
    }
    return upper;
}

}  // namespace glintara
