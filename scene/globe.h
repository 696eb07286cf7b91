#pragma once

// The frame: the Earth as a globe or as a map, and the order in which all else is drawn over it.

#include <functional>
#include <vector>

#include "engine/glintcore.h"
#include "scene/night_side.h"
#include "scene/view_geometry.h"

namespace glintara {

/// Borders are hairlines, pixels of a screen at scale 1.
inline constexpr double kBorderWidth = 0.7;

/// The ground of the picture: space, and the sky at night.
inline constexpr Color kSpaceColor = 0x0C0706;

/// `ZoomFactor` from which every picture has the fine borders: the reduced ones begin to show their corners there. Such
/// a picture takes about as long as a fine one of the whole globe.
inline constexpr double kFineBordersZoom = 120;

/// What the frame keeps from one picture to the next, so that drawing takes no memory. Whoever makes pictures owns it.
struct FrameMemory {
    PolygonBuffer Polygon;
    std::vector<double> EarthScratch;  ///< working room of the engine's drawing; grows with the border table
    std::vector<double> ChainPoints;   ///< points of one line of the grid
    CoverageRow Coverage;              ///< shades of one row of pixels
    GlintViewConfig ViewConfig{};      ///< what the engine's drawing is told of the view
};

/// A stage of the frame that another room draws.
using Stage = std::function<void(const SceneContext&)>;

/// The stages of other rooms. What is empty is left out. Each is called only when its options ask for it; options
/// within a stage are its own to read.
struct FrameStages {
    SkyMapping FlattenSky = nullptr;  ///< what the sky's places go through; null leaves the sky as it is

    Stage skyBackground;   ///< the ground of the sky (`CDrawSky`), before the Earth
    Stage cities;          ///< `MnuMarkCities`, not with `CSkyOnly`
    Stage site;            ///< mark of the observer's place, not with `CSkyOnly`
    Stage sunAndMoon;      ///< the points below the Sun and the Moon (`CDrawSun`), not with `CSkyOnly`
    Stage ariesLine;       ///< `CDrawAries`
    Stage satellites;      ///< the satellite loop
    Stage polygonMarker;   ///< the vertex selected by the map tools, when there is one, not with `CSkyOnly`
    Stage orbitDetails;    ///< `C2OrbitDetails`, with satellites in the list
    Stage stars;           ///< all stars (`CDrawSky`), between `PushSkyPan` and `PopSkyPan`
    Stage constellations;  ///< `CDrawConstallations` with `CDrawSky`, in the same place
    Stage astroDetails;    ///< `CAstroDetails`
    Stage beforeLabels;    ///< when only the texts of `DrawLabelOverlay` are still to come over what is there
    Stage unseen;          ///< what the satellite loop does besides drawing, while a chart stands for the globe
    Stage skyPointer;      ///< circle of the sky pointer, and the line of text for the mouse
};

/// Makes one picture on `surface`; while view 9 is shown, the sundial in place of the globe and all that is over it, with
/// the astronomical details, the title and the labels. Nothing keeps one picture from beginning inside another: that is the run loop's.
void GlobeFrame(Application& app, DrawSurface& surface, FrameMemory& memory, const FrameStages& stages);

/// What stands over the Earth, in the order of the layers.
void SceneStages(const SceneContext& scene, const FrameStages& stages);

/// Writes to `config` what the engine's drawing has to know of camera, picture and boxes. What only the stars need is
/// left as it is.
void SetGLTConfig(const SceneContext& scene, GlintViewConfig& config);

/// The countries, as borders and, with `CSolidGlobe`, filled: the fine table in a fine picture, under `CAutoRefine` and
/// from `kFineBordersZoom` on, the reduced one otherwise.
void PlotCountryPolygons(const SceneContext& scene, FrameMemory& memory);

/// Parallels and meridians every 30 degrees on the near side of the globe, as dotted lines.
void DrawGlobeGrid(const SceneContext& scene, FrameMemory& memory);

/// The same on the flat map.
void DrawMapGrid(const SceneContext& scene);

}  // namespace glintara
