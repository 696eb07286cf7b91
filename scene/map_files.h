#pragma once

// The five files of map and sky beside the program: what is in them, byte by byte, and back.
//
//   file        holds            count   then                                                       bytes a record
//   ---------   --------------   -----   --------------------------------------------------------   --------------
//   DB001.VDB   fine borders     n       n latitudes, n longitudes (degrees), n polygon numbers     20
//   DB002.VDB   reduced borders  n       the same                                                   20
//   DB003.VDB   stars            n       n records: 9 reals, 3 texts, 18 bytes                      96 and the texts
//   DB004.VDB   constellations   n       n pairs: number of a star, number of its group             8
//   DB005.VDB   cities           n       n records: told in flare/city_files.h                      88 and the texts
//
//   kind        in the file
//   ---------   -----------------------------------------------------------------------------------
//   count       32-bit integer, signed, little-endian like all numbers
//   number      the same
//   real        IEEE 754 double, 64-bit
//   text        length in bytes, 16-bit, and so many characters of Windows-1252; of cities in UTF-8
//
// No file has a header or a checksum, so a count is believed only when the file is long enough for it, and numbers only
// when they can be a place or a star. What a file has behind its last record is not read.
//
// What the border tables promise to those who draw them:
//
//   rings       Each run of one polygon number is a closed ring, its last vertex the same as its first, without holes.
//   order       Larger rings come first: an enclave is another country, painted over the one around it.
//   places      Latitudes are geocentric. An edge goes the short way round: a ring that crosses longitude 180 is
//               whole, and its longitudes jump there by a turn.
//   poles       A ring round a pole is opened at longitude 180 and led down to the pole at exactly +180, along latitude
//               90 or -90, and back at exactly -180. Edges with both ends at +-180, or both at 90 or both at -90, bound
//               what is filled and are no coast: they get no outline.

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "state/city_tables.h"
#include "state/map_tables.h"
#include "state/star_tables.h"

namespace glintara {

inline constexpr const char* kFineBorderFile = "DB001.VDB";
inline constexpr const char* kReducedBorderFile = "DB002.VDB";
inline constexpr const char* kStarFile = "DB003.VDB";
inline constexpr const char* kConstellationFile = "DB004.VDB";

/// Reads the five files, each in the first of `folders` where it can be read; of the cities their text when that is
/// newer. Each is taken or left as a whole: the table of one that cannot be read, or that holds what it cannot, stays as
/// it was. Gives the names of those.
std::vector<std::string> LoadMapFiles(std::span<const std::filesystem::path> folders, MapTables& map, StarTables& stars,
                                      CityTables& cities);

/// The same in one folder.
std::vector<std::string> LoadMapFiles(const std::filesystem::path& folder, MapTables& map, StarTables& stars,
                                      CityTables& cities);

/// Writes the five files, each in place of the one before. Gives the names of those that could not be written.
std::vector<std::string> SaveMapFiles(const std::filesystem::path& folder, const MapTables& map,
                                      const StarTables& stars, const CityTables& cities);

// The bytes of one file. Decoders give nothing for bytes that are no such file. A text of more than 65535 characters is
// cut when written.

std::string EncodeBorders(const BorderTable& table);
std::optional<BorderTable> DecodeBorders(std::string_view bytes);

std::string EncodeStars(const std::vector<StarRecord>& stars);
std::optional<std::vector<StarRecord>> DecodeStars(std::string_view bytes);

std::string EncodeConstellations(const std::vector<ConstellationLine>& lines);
std::optional<std::vector<ConstellationLine>> DecodeConstellations(std::string_view bytes);

}  // namespace glintara
