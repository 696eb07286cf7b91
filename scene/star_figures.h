#pragma once

// Stars by name, and the twelve constellation figures that are told by names and star numbers.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "state/star_tables.h"

namespace glintara {

/// The number of the first star that has `name` as its proper name or its designation, capital or small letters alike;
/// 0 when there is none.
std::int32_t FindStar(const std::vector<StarRecord>& stars, std::string_view name);

/// The pairs, from index 1, of the twelve figures in a catalogue: each figure a chain of its own, one of them two. A
/// star that the catalogue has not breaks its chain.
std::vector<ConstellationLine> TwelveFigures(const std::vector<StarRecord>& stars);

/// Whether entry `index` of the constellations is joined to the one before it: both are stars of one chain.
bool JoinsPrevious(const StarTables& stars, std::size_t index);

}  // namespace glintara
