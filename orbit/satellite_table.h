#pragma once

// Finding satellites in the list, their line in it, and which of them works.

#include <string>
#include <string_view>

#include "state/application.h"

namespace glintara {

/// Width of the part of a list line that stands before the name.
inline constexpr int kListNameColumn = 21;

/// A name as it may be shown: control characters, which would steer a terminal or break a line, are "?".
std::string ShownName(std::string_view name);

/// Catalogue number of a satellite number text. The five characters of an element set hold numbers above 99999 in the
/// Alpha-5 form of the public catalogue: a capital letter other than I and O stands for 10 to 33 ("A0000" is 100000,
/// "Z9999" 339999). Any other text is read as a number from its start; 0 when there is none.
double SatelliteNumberValue(std::string_view satNumber);

/// The largest catalogue number that five characters can hold.
inline constexpr double kLargestSatelliteNumber = 339999;

/// The other way: the five characters of catalogue number `number`, a whole number of 0 to `kLargestSatelliteNumber`.
/// Numbers beyond 99999 are in the Alpha-5 form; any other number is zero padded and its last five characters are
/// taken.
std::string SatelliteNumberText(double number);

/// Index of the last satellite with that `OrbitNumber`; 0 for none.
int SearchOrbitNumber(const CommonData& data, int number);

/// Index of the last satellite with that catalogue number; 0 for none.
int SearchSatID(const CommonData& data, double id);

/// The satellite's line in lists: its first three switches as "[XOO]" (X for on), its `OrbitNumber` in four digits, its
/// satellite number in parentheses, and from column 22 its name.
std::string SatelliteListLine(const SatRecord& satellite);

/// Puts satellite `index`, 1 to `SatCount`, at the end of the list, where it works; those behind it move down by one.
void MoveToEnd(CommonData& data, int index);

/// Makes the satellite with that `OrbitNumber` the working one: it goes to the end of the list, those behind it move
/// down by one. The windows that show it are told and a new picture is asked for. Without such a satellite nothing
/// happens.
void ChangeWorkingSatellite(Application& app, int orbitNumber);

}  // namespace glintara
