#pragma once

// The five files of map and sky beside the program: what is in them, byte by byte, and back.
//
// All numbers are little-endian; counts are 32-bit and signed, reals are IEEE 754 doubles. No file has a header or a
// checksum, so a count is believed only when the file is long enough for it, and numbers only when they can be a place
// or a star. What a file has behind its last record is not read.
//
//   DB001.VDB  fine borders     count n, n latitudes, n longitudes (degrees), n polygon numbers (32-bit)
//   DB002.VDB  reduced borders  the same
//   DB003.VDB  stars            count n, n records: 9 doubles, 3 texts, 18 bytes
//   DB004.VDB  constellations   count n, n pairs of star and group number (32-bit)
//   DB005.VDB  cities           count n, n records: 3 texts, 82 bytes
//
// A text is its length in bytes, 16-bit, and so many characters of Windows-1252.
//
// What the border tables promise to those who draw them:
//  - Each run of one polygon number is a closed ring, its last vertex the same as its first, without holes. Larger
//  rings
//    come first: an enclave is another country, painted over the one around it.
//  - Latitudes are geocentric. An edge goes the short way round: a ring that crosses longitude 180 is whole, and its
//    longitudes jump there by a turn.
//  - A ring round a pole is opened at longitude 180 and led down to the pole at exactly +180, along latitude 90 or -90,
//    and back at exactly -180. Edges with both ends at +-180, or both at 90 or both at -90, bound what is filled and
//    are no coast: they get no outline.

#include <filesystem>
#include <optional>
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
inline constexpr const char* kCityFile = "DB005.VDB";

/// Reads the five files in `folder`. Each is taken or left as a whole: the table of one that cannot be read, or that
/// holds what it cannot, stays as it was. Gives the names of those.
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

std::string EncodeCities(const std::vector<CityRecord>& cities);
std::optional<std::vector<CityRecord>> DecodeCities(std::string_view bytes);

/// The records that the engine draws stars from. Their name is the proper name when it has more than one character,
/// else the designation when that has, else empty; cut to 14 characters.
std::vector<StarPlotRecord> MakeStarPlotTable(const std::vector<StarRecord>& stars);

}  // namespace glintara
