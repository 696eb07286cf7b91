#pragma once

// The stars on their sphere round the Earth, or on a chart of it.

#include <cstdint>
#include <optional>
#include <span>

#include "engine/astro/sky_chart.h"
#include "engine/drawing/draw_earth.h"
#include "engine/drawing/sphere_clip.h"
#include "engine/glintcore.h"

namespace glintara {

/// What of a GlintViewConfig stars are drawn by.
struct StarView {
    EarthView picture;
    double framePanX = 0;  ///< pan of the Earth's disc
    double framePanY = 0;
    ViewAxes axes;   ///< of the view, as directions of date
    Vector3 zenith;  ///< direction of date
    SkyProjection sky;
    bool front = false;
    bool back = false;
    bool local = false;
    bool earthHides = false;
    double limit = 0;   ///< faintest magnitude drawn
    double growth = 0;  ///< of a dot's radius with each magnitude, pixels
};

/// Nothing when the record holds numbers that no stars can be drawn by, and for the flat map.
std::optional<StarView> StarViewOf(const GlintViewConfig& config);

/// Draws the stars of these numbers; `stars` is the first byte of the records, which keep the stars' directions.
void DrawStars(const GlintDrawTarget& target, const StarView& view, std::span<const std::int32_t> visible,
               unsigned char* stars);

}  // namespace glintara
