#pragma once

// The countries, as filled areas and outlines, on the globe or on the flat map.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "engine/glintcore.h"

namespace glintara {

/// What of a GlintViewConfig the Earth is drawn by. Angles in radians, scales in pixels for one Earth radius (on the
/// flat map: for one radian), pans in Earth radii.
struct EarthView {
    bool flatMap = false;
    double lat = 0;
    double lon = 0;
    double roll = 0;
    double panX = 0;
    double panY = 0;
    double scaleX = 0;
    double scaleY = 0;
    double halfW = 0;  ///< centre of the picture, pixels
    double halfH = 0;
};

/// Nothing when the record holds numbers that no picture can be drawn by: not finite, scales not above 0, a picture
/// without an area, or any of them beyond all use.
std::optional<EarthView> EarthViewOf(const GlintViewConfig& config);

/// Vertices of all rings, degrees, and the number of the polygon that each belongs to. Of one length.
struct EarthMap {
    std::span<const double> lat;
    std::span<const double> lon;
    std::span<const std::int32_t> polygon;
};

/// Draws each ring, filled first and then outlined, ring after ring. `room` is memory for the contour of one ring; a
/// ring that finds too little is outlined alone. Returns how much of it was used at most. What a ring encloses is told
/// in country_ring.h. A ring that is out of sight, too small to be seen, or holds a vertex that is no place is left
/// out.
std::size_t DrawEarth(const GlintDrawTarget& target, const EarthView& view, const EarthMap& map,
                      std::span<double> room);

}  // namespace glintara
