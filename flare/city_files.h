#pragma once

// The files from which the table of places comes, and back.
//
//   DB005.VDB       the cities, compiled: a count, then so many records
//                      3 texts: name, country, region or time zone
//                      10 reals: Lat, GeoLat, Lon, Population, Altitude, X, Y, Z, FoundJD, and one that is 0
//                      FoundFlag, 16 bits
//                   Numbers are little-endian, reals 64 bits; a text is its length in bytes, 16 bits, and so many bytes
//                   of UTF-8. FoundJD and FoundFlag have no meaning in a file.
//   cities1000.txt  the same cities as a gazetteer: a city a line, in 21 columns with tabs between them:
//                      3 name
//                      5 latitude, degrees
//                      6 longitude, degrees
//                      9 country code
//                     16 population
//                     18 altitude, metres
//                     20 date of the last change; a line without one is dropped
//                     21 region or time zone
//                   A line with a population below `kLeastPopulation` is dropped.
//   sites.txt       observing sites, a site a line, with commas between its fields:
//                      name, latitude, longitude, altitude in metres, remark, country
//                   Latitude and longitude are degrees; a letter N, S, E or W may stand behind. A line that begins with
//                   "#" is a comment.
//
// A number that is none counts as 0. A place with numbers that can be no place (a latitude beyond the pole) is dropped.

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "state/city_tables.h"

namespace glintara {

inline constexpr const char* kCityFile = "DB005.VDB";
inline constexpr const char* kCityTextFile = "cities1000.txt";
inline constexpr const char* kSiteFile = "sites.txt";

/// Inhabitants that a city must have to be in the table.
inline constexpr double kLeastPopulation = 5000;

/// Takes what stands before the first delimiter off a line: `token`; `rest` is what stands behind it. Without a
/// delimiter the token is the whole line and the rest is empty. The outputs may be the line itself.
void SplitTab(std::string_view line, std::string_view& rest, std::string_view& token);
void SplitComma(std::string_view line, std::string_view& rest, std::string_view& token);

/// The number at the start of `text`, negative when the last character is an S or a W of either case. 0 for a text
/// that begins with no number.
double TokenToValue(std::string_view text);

/// The bytes of DB005.VDB, and what is in them, from index 1. Nothing for bytes that are no such file, or hold more
/// places than the table.
std::string EncodeCities(const std::vector<SiteRecord>& cities);
std::optional<std::vector<SiteRecord>> DecodeCities(std::string_view bytes);

/// The cities of cities1000.txt, from index 1. What does not fit into the table is left out.
std::vector<SiteRecord> ReadCityText(std::string_view text);

/// The sites of sites.txt, from index 0.
std::vector<SiteRecord> ReadSiteText(std::string_view text);

/// Fills the table with the cities: of DB005.VDB, or of cities1000.txt when that is newer or the only one. Each is
/// looked for in `folders`, in their order. False when neither can be read; the table is then as it was.
bool LoadCities(std::span<const std::filesystem::path> folders, CityTables& tables);

/// Puts the sites of sites.txt behind the cities. A file that is missing or cannot be read has none.
void LoadSites(std::span<const std::filesystem::path> folders, CityTables& tables);

}  // namespace glintara
