#pragma once

// What colour a star has to the eye, from its colour index B-V.
//
// Temperature from B-V: Ballesteros, Europhysics Letters 97, 34008 (2012). Colour of a glowing body of that
// temperature: the cubic fit of the Planckian locus by Kim et al., Journal of the Korean Physical Society 41, 865
// (2002), taken to sRGB (IEC 61966-2-1, white D65) at full brightness. The eye sees stars paler than that, so a share
// of white is mixed in.

#include <array>
#include <cstdint>

namespace glintara {

/// Temperature of a star's surface, kelvins; falls with growing B-V. An index from beyond -0.4 to 2 counts as the end.
double StarTemperature(double colorIndex);

/// Colour of a glowing body, 0xBBGGRR, its strongest channel 255; 1667 to 25000 kelvins, beyond that of the end.
std::uint32_t BlackBodyColor(double kelvins);

/// Colours that stars are drawn in, from B-V of -0.4 to 2 in steps of 0.1, 0xBBGGRR: pale blue over white to pale
/// orange.
inline constexpr int kStarColors = 25;
const std::array<std::uint32_t, kStarColors>& StarPalette();

/// The place in the palette of a colour index; that of white for one that is no number.
int StarColorStep(double colorIndex);

}  // namespace glintara
