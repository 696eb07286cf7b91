#pragma once

// Where the working satellite is, in words and numbers: the texts of the window "Satellite Info".

#include <array>
#include <string>
#include <string_view>

#include "state/application.h"

namespace glintara::satellite_info {

/// The lines of `LInfo`.
using Lines = std::array<std::string, kInfoLines>;

/// The lines for the working satellite, as the last picture has left its engine block; nothing is propagated here.
///
///   0      "Satellite #", its number in the list, and its name; other words when the list is empty
///   1-4    X, Y, Z and distance from the Earth's centre, kilometres, on the inertial axes of the engine
///   5-8    velocity along the same axes and its length, kilometres per second
///   9, 10  declination and right ascension, as the observer sees it
///   11, 12 elevation and azimuth, degrees, cut to three decimals
///   13     empty
///
/// Lengths are rounded to three decimals, ties to even, without zeros at the end. Under SGP1, which fills no engine
/// block, and for a satellite that the engine has no place for, the values read "n.a.".
Lines LinesOf(const Application& app);

/// What the values of the lines are, or why there are none.
std::string NoteOf(const Application& app);

/// A line of values in its parts: "vX: -1.5 km/s" is "vX:", "-1.5", "km/s". A value that is no plain number has no
/// unit; a degree sign stays with its number.
struct LineParts {
    std::string_view name;
    std::string_view value;
    std::string_view unit;

    friend bool operator==(const LineParts&, const LineParts&) = default;
};

/// The parts of `line`, which must outlive them.
LineParts PartsOf(std::string_view line);

/// All lines that are not empty, one below the other: what is copied.
std::string TextOf(const SatPositionControls& form);

/// Writes the lines and the note into the window's labels.
void RefreshInfo(Application& app);

/// Hangs `CClose` on its window. To be called once, before the window is made.
void Connect(Application& app);

}  // namespace glintara::satellite_info
