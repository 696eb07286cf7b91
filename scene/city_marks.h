#pragma once

// The marks of cities on the Earth.

#include "scene/name_board.h"
#include "scene/view_geometry.h"

namespace glintara {

inline constexpr Color kCityColor = 0xFFFFFF;
inline constexpr Color kCityNameColor = 0xA0E0E0;
inline constexpr double kCityNameSize = 8;

/// Radius of a mark, scene units, and in pixels the least and the most that it is drawn with.
inline constexpr double kCityMarkRadius = 1.0 / 1000;
inline constexpr double kLeastCityMark = 0.8;
inline constexpr double kMostCityMark = 2.5;

/// A city is marked when it has this many inhabitants, divided by the zoom.
inline constexpr double kMarkedPopulation = 1.2e8;

/// Inhabitants from which cities are marked: fewer when the globe is near, and none at all when all are wanted.
double LeastMarkedPopulation(const CommonData& data);

/// Draws a dot for each selected city that is large enough, on the globe only where it is on the side that is seen.
void DrawCityMarks(const SceneContext& scene);

/// Writes the names of the cities that `DrawCityMarks` has marked, where `names` has room for them beside what stands
/// there already. Of two that would touch the larger city's is written.
void DrawCityNames(const SceneContext& scene, NameBoard& names);

}  // namespace glintara
