#pragma once

// Measures of the picture that several rooms of the scene share.

#include "scene/view_geometry.h"

namespace glintara {

/// Length of a scene unit, the Earth's radius, in pixels of a screen at scale 1.
double ScreenPixelsPerUnit(const SceneContext& scene);

/// Step of an angle, radians, at which a curve of radius 1 is drawn by chords: `coarse`, or less when the globe is so
/// near that the chords would show. At least `kLeastStep`.
double FineStep(const SceneContext& scene, double coarse);

inline constexpr double kLeastStep = 0.004;

/// The flat map's frame, radians on the plane of the map. It is one turn wide and half a turn high, and moves up and
/// down with the camera's latitude.
struct MapFrame {
    double left = 0;
    double right = 0;
    double bottom = 0;  ///< the south pole
    double middle = 0;  ///< the equator
    double top = 0;     ///< the north pole
};

MapFrame FlatMapFrame(const ViewState& view);

}  // namespace glintara
