#pragma once

// The window "Colors and other Settings": land, sea, night side, and how often the program looks for news.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "state/application.h"

namespace glintara {

/// A colour that can be chosen, 0xBBGGRR, and its name.
struct PaletteEntry {
    std::string_view name;
    std::uint32_t color;
};

inline constexpr std::size_t kPaletteSize = 8;

/// The colours of the land and of the sea. Users count them from 1.
inline constexpr std::array<PaletteEntry, kPaletteSize> kSoilPalette{{
    {"Forest", 28416},
    {"Moss", 13107},
    {"Olive", 25443},
    {"Slate", 2565935},
    {"Meadow", 0x3C6E3C},
    {"Savanna", 0x3A6E86},
    {"Clay", 0x3C5078},
    {"Steppe", 0x6E7468},
}};
inline constexpr std::array<PaletteEntry, kPaletteSize> kSeaPalette{{
    {"Night", 0x38281C},
    {"Abyss", 0x46280C},
    {"Lagoon", 0x5E5214},
    {"Ocean", 0x6E3A10},
    {"Azure", 0x8A5A1E},
    {"Ice", 0x78624C},
    {"Violet", 0x5C2E34},
    {"Lead", 0x40382E},
}};

/// What the program starts with: entries 5 and 4.
inline constexpr std::size_t kDefaultSoil = 4;
inline constexpr std::size_t kDefaultSea = 3;

/// Night sides are greys: this times a level, 0 to 255.
inline constexpr std::uint32_t kGreyStep = 0x010101;

namespace form_colors {

/// Brings the controls into line with the state. A colour that is not in its list leaves that without a selection, and
/// stays; so does an interval that no button stands for. A night side that is no grey shows as the grey of its mean.
void WinDataUpdate(Application& app);

/// The colours and the interval that the program starts with.
void CDefault_Click(Application& app);

/// Opens the window.
void Open(Application& app);

/// Fills the lists and hangs the procedures on the controls of the window: what is chosen is in force at once.
void Connect(Application& app);

}  // namespace form_colors

}  // namespace glintara
