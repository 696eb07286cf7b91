#pragma once

// The text forms of the stars and the constellation figures: for tools, never needed by a user.
//
//   stars2.txt  a line that is skipped, then a star a line, in 14 columns with commas between them:
//                  1 number of the star
//                  3 designation
//                  7 proper name
//                  8 right ascension of 2000, hours
//                  9 declination of 2000, degrees
//                 11 magnitude
//                 13 spectral type
//                 14 colour index; nothing counts as 0
//               Numbers rise; one that is left out has no star.
//   const.txt   a star number a line. A line that begins with "#", or whose value is 0, ends a chain of joined stars;
//               what follows the "#" is for the reader's eye.
//
// Texts with lines of another shape, or with numbers that can be no star, are refused as a whole.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "state/star_tables.h"

namespace glintara {

inline constexpr const char* kStarTextFile = "stars2.txt";
inline constexpr const char* kConstellationTextFile = "const.txt";

/// The catalogue, from index 1, of stars2.txt. The places of date are those of 2000. More than `kStarCapacity` stars
/// are refused.
std::optional<std::vector<StarRecord>> ReadStars(std::string_view text);

/// stars2.txt of a catalogue. In texts, commas and ends of lines become blanks.
std::string StarsText(const std::vector<StarRecord>& stars);

/// The pairs, from index 1, of const.txt. Groups count from 0 on, one more with each end of a chain.
std::optional<std::vector<ConstellationLine>> ReadConstellations(std::string_view text);

/// const.txt of pairs from index 1: "#" before the first entry of each new group.
std::string ConstellationsText(const std::vector<ConstellationLine>& lines);

/// Read a text in `folder`, and take what is in it. False when that cannot be done; the tables then stay as they were.
bool LoadStarText(const std::filesystem::path& folder, StarTables& stars);
bool LoadConstellationText(const std::filesystem::path& folder, StarTables& stars);

/// Write a text in `folder`. False when it cannot be written.
bool SaveStarText(const std::filesystem::path& folder, const StarTables& stars);
bool SaveConstellationText(const std::filesystem::path& folder, const StarTables& stars);

}  // namespace glintara
