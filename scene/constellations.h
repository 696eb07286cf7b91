#pragma once

// The figures of the constellations.

#include "scene/view_geometry.h"

namespace glintara {

inline constexpr Color kConstellationColor = 0x604832;

/// Lines end so far from the stars that they join, pixels of a screen at scale 1: stars remain points of light.
inline constexpr double kFigureGap = 5;

/// Joins the stars of each chain of the tables, where both ends belong to the sky that is shown. To be called between
/// `PushSkyPan` and `PopSkyPan`.
void PlotConstallations(const SceneContext& scene);

}  // namespace glintara
