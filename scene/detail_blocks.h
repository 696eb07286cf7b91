#pragma once

// The two lists of facts over the picture: the working satellite's elements in the upper right corner, Sun and Moon at
// the lower left. Names of satellites, stars and cities keep clear of both.

#include <optional>

#include "scene/view_geometry.h"

namespace glintara {

inline constexpr Color kOrbitDetailsColor = 0x80FF80;

/// Size of the letters of both lists, points. Where the picture is too low for the orbit's list it is written smaller,
/// down to `kLeastDetailsSize`.
inline constexpr double kDetailsSize = 10;
inline constexpr double kLeastDetailsSize = 7;

/// Where the list of the orbit stands; nothing without `C2OrbitDetails`, and with an empty list of satellites.
std::optional<BoxArea> OrbitDetailsArea(const SceneContext& scene);

/// Writes it: one line each, right of the title, or below it where there is no room beside it.
void PrintOrbitDetails(const SceneContext& scene);

/// Where the list of Sun and Moon stands; nothing without `CAstroDetails`.
std::optional<BoxArea> AstroDetailsArea(const SceneContext& scene);

/// Writes it, with the lit disc of the Moon beside its heading, over the lower edge or the texts of the hidden panels.
void PrintAstroDetails(const SceneContext& scene);

/// The Moon as it shows its light: `phase` as `MoonPhase` gives it, centre and radius in twips. North is up: seen from
/// the northern hemisphere a waxing Moon is lit on the right, with `southern` on the left.
void DrawMoonDisc(const SceneContext& scene, double x, double y, double radius, double phase, bool southern);

}  // namespace glintara
