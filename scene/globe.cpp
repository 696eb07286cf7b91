#include "scene/globe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"
#include "orbit/location.h"
#include "scene/circles.h"
#include "scene/engine_target.h"
#include "scene/night_side.h"
#include "scene/overlays.h"
#include "scene/picture_measures.h"
#include "scene/sundial.h"

namespace glintara {
namespace {

constexpr Color kBorderColor = 0xAAAAAA;
constexpr Color kGridColor = 0x202020;
constexpr Color kMapFrameColor = kLimbColor;

constexpr double kGridSpacing = kPi / 6;
constexpr double kGridStep = 0.1;

/// The poles themselves are points, and the meridian of +90 degrees is that of -90 again.
constexpr int kLinesInHalfTurn = 6;

/// Points of a line of the grid at the finest step.
constexpr std::size_t kMostChainPoints = 2048;

/// A dash pattern begins anew with each line, so a chain is drawn in one; off the picture it is not drawn at all. This
/// much beyond the edges counts as on it, pixels.
constexpr double kOffPicture = 4;

void FloatSite(Application& app) {
    CommonData& data = app.Data;
    std::optional<FloatingCamera>& last = app.Run.SiteFloatedAt;
    if (!app.Main.MnuFloatingSite.Checked) {
        last.reset();
        return;
    }
    const ViewState& view = data.View;
    const FloatingCamera now{view.ViewLat, view.ViewLon};
    if (last == now) return;
    last = now;
    const Geodetic below = EcefToGeodetic(LLRToSameXYZ(view.ViewLat, view.ViewLon, kWgs84Radius));
    SetLocation(data, {below.lat, FoldLongitude(below.lon), kDefaultSiteHeight});
}

/// Whether the frame begins with an empty picture. A drawing in three dimensions would keep its own, unless the sky is
/// a chart.
bool BeginsEmpty(const MainControls& main) {
    const bool skyChart = main.CSkyOnly.Value && main.CDrawSky.Value && (main.CReverseSky.Value || main.CFlatSky.Value);
    return !main.MnuLib3D.Checked || skyChart;
}

void ClearPicture(const SceneContext& scene, const FrameStages& stages) {
    const MainControls& main = scene.App.Main;
    if (!BeginsEmpty(main)) return;
    DrawSurface& surface = scene.Surface;
    surface.AutoRedraw = true;
    surface.BackColor = kSpaceColor;
    surface.Cls();
    if (main.CDrawSky.Value && stages.skyBackground) stages.skyBackground(scene);
    surface.AutoRedraw = false;
}

void DrawDisc(const SceneContext& scene, FrameMemory& memory) {
    DrawGlow(scene, memory.Coverage);
    DrawSurface& surface = scene.Surface;
    surface.FillColor = scene.App.Data.SeaColor;
    SceneCircle(scene, {0, 0}, 1, surface.FillColor);
}

void FillPolygon(const SceneContext& scene) {
    const std::array<std::int32_t, 1> ends{static_cast<std::int32_t>(scene.Polygon.Count())};
    scene.Surface.PolyPolygon(scene.Polygon.Exact(), ends);
}

std::array<ScenePoint, 4> FrameCorners(const SceneContext& scene) {
    const MapFrame frame = FlatMapFrame(scene.View());
    return {ScenePoint{frame.left, frame.bottom},
            {frame.right, frame.bottom},
            {frame.right, frame.top},
            {frame.left, frame.top}};
}

void DrawFrameLines(const SceneContext& scene, Color color) {
    const std::array<ScenePoint, 4> corners = FrameCorners(scene);
    scene.Surface.ForeColor = color;
    scene.Surface.DrawWidth = 1;
    scene.Surface.DrawStyle = PenPattern::Solid;
    for (std::size_t i = 0; i < corners.size(); ++i) SceneLine(scene, corners[i], corners[(i + 1) % corners.size()]);
}

void DrawMapGround(const SceneContext& scene) {
    scene.Polygon.Clear();
    for (const ScenePoint& corner : FrameCorners(scene)) PolygonVertex(scene, corner);
    FillPolygon(scene);
    DrawFrameLines(scene, scene.Surface.FillColor);
}

/// A line of the grid: points of the unit sphere, drawn where the globe shows them.
class GridLine {
  public:
    GridLine(const SceneContext& scene, std::vector<double>& points) : scene_(scene), points_(points) {
        points_.clear();
    }

    void Add(double lat, double lon) {
        const ViewState& view = scene_.View();
        const Vector3 point = LatLonRadiusToView(view, {lat, lon, 1});
        if (point.x < 0) {
            End();
            return;
        }
        const DrawSurface& surface = scene_.Surface;
        const WindowScale window = GetWindowScale(view, surface);
        const ScenePoint pixel{BoxFromSceneX(window, view, point.y) / surface.TwipsPerPixelX,
                               BoxFromSceneY(window, view, point.z) / surface.TwipsPerPixelY};
        if (!points_.empty() && MissesPicture(last_, pixel)) End();
        points_.push_back(pixel.x);
        points_.push_back(pixel.y);
        last_ = pixel;
    }

    /// Draws what has come together.
    void End() {
        if (points_.size() > 2) scene_.Surface.Polyline(points_);
        points_.clear();
    }

  private:
    bool MissesPicture(const ScenePoint& a, const ScenePoint& b) const {
        const double width = scene_.Surface.ScaleWidth / scene_.Surface.TwipsPerPixelX;
        const double height = scene_.Surface.ScaleHeight / scene_.Surface.TwipsPerPixelY;
        return std::max(a.x, b.x) < -kOffPicture || std::min(a.x, b.x) > width + kOffPicture ||
               std::max(a.y, b.y) < -kOffPicture || std::min(a.y, b.y) > height + kOffPicture;
    }

    const SceneContext& scene_;
    std::vector<double>& points_;
    ScenePoint last_;
};

/// A line of the map's grid, along an axis of the box. A near map is far longer than the picture, so the ends are taken
/// to its edges, by whole dots and gaps.
class MapGridLine {
  public:
    explicit MapGridLine(const SceneContext& scene)
        : surface_(scene.Surface), window_(GetWindowScale(scene.View(), scene.Surface)), view_(scene.View()) {}

    void Draw(const ScenePoint& from, const ScenePoint& to) {
        double x1 = BoxFromSceneX(window_, view_, from.x);
        double y1 = BoxFromSceneY(window_, view_, from.y);
        double x2 = BoxFromSceneX(window_, view_, to.x);
        double y2 = BoxFromSceneY(window_, view_, to.y);
        if (TakeToEdges(x1, x2, surface_.ScaleWidth) && TakeToEdges(y1, y2, surface_.ScaleHeight))
            surface_.Line(x1, y1, x2, y2);
    }

  private:
    /// A dot and a gap of the pen, twips.
    static constexpr double kPeriod = 4 * kTwipsPerScreenPixel;

    /// False when nothing between them lies on the picture.
    static bool TakeToEdges(double& a, double& b, double size) {
        if (std::max(a, b) < 0 || std::min(a, b) > size) return false;
        const double direction = a < b ? 1 : -1;
        const double edge = a < b ? 0 : size;
        const double before = (edge - a) * direction;
        if (before > kPeriod) a += direction * std::floor(before / kPeriod) * kPeriod;
        b = std::clamp(b, -kPeriod, size + kPeriod);
        return true;
    }

    DrawSurface& surface_;
    WindowScale window_;
    const ViewState& view_;
};

void UseGridPen(DrawSurface& surface) {
    surface.ForeColor = kGridColor;
    surface.DrawWidth = 1;
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::Dotted;
}

void DrawEarth(const SceneContext& scene, FrameMemory& memory) {
    DrawSurface& surface = scene.Surface;
    const MainControls& main = scene.App.Main;
    surface.DrawWidth = 1;
    surface.FillStyle = FillPattern::Solid;
    surface.FillColor = scene.App.Data.SeaColor;
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::Solid;
    if (scene.IsFlatMap())
        DrawMapGround(scene);
    else
        DrawDisc(scene, memory);
    if (!main.CHideCountries.Value && !main.MnuLib3D.Checked) PlotCountryPolygons(scene, memory);
    if (main.CGlobeGrid.Value && scene.IsFlatMap()) DrawMapGrid(scene);
    if (main.CGlobeGrid.Value && !scene.IsFlatMap()) DrawGlobeGrid(scene, memory);
    if (main.CSunLight.Value) DrawNightSide(scene, memory.Coverage);
    if (scene.IsFlatMap()) DrawFrameLines(scene, kMapFrameColor);
}

void Draw(const SceneContext& scene, const Stage& stage, bool wanted = true) {
    if (wanted && stage) stage(scene);
}

void SundialFrame(const SceneContext& scene, const FrameStages& stages) {
    DrawSurface& surface = scene.Surface;
    surface.AutoRedraw = true;
    surface.BackColor = kSpaceColor;
    surface.Cls();
    surface.AutoRedraw = false;
    Draw(scene, stages.unseen);
    DrawSundial(scene);
    Draw(scene, stages.astroDetails, scene.App.Main.CAstroDetails.Value);
    DrawTitleBlock(scene);
    Draw(scene, stages.beforeLabels);
    DrawLabelOverlay(scene);
}

/// Vertices of the longest run with one polygon number.
std::int32_t LongestPolygon(const BorderTable& borders) {
    std::int32_t longest = 0;
    std::int32_t length = 0;
    for (std::size_t i = 1; i < borders.Id.size(); ++i) {
        length = i > 1 && borders.Id[i] == borders.Id[i - 1] ? length + 1 : 1;
        longest = std::max(longest, length);
    }
    return longest;
}

std::uint8_t Byte(const CheckBox& box) { return box.Value ? 255 : 0; }

}  // namespace

void SetGLTConfig(const SceneContext& scene, GlintViewConfig& config) {
    const ViewState& view = scene.View();
    const MainControls& main = scene.App.Main;
    const DrawSurface& surface = scene.Surface;
    const WindowScale window = GetWindowScale(view, surface);
    config.SimTime = scene.App.Data.SimTime;
    config.ViewLon = view.ViewLon;
    config.ViewRoll = view.ViewRoll;
    config.ViewLat = view.ViewLat;
    config.PanX = view.PanX;
    config.PanY = view.PanY;
    config.ScaleX = window.scaleX / surface.TwipsPerPixelX;
    config.ScaleY = window.scaleY / surface.TwipsPerPixelY;
    config.HalfWidth = window.halfW / surface.TwipsPerPixelX;
    config.HalfHeight = window.halfH / surface.TwipsPerPixelY;
    config.FramePanX = view.FramePanX;
    config.FramePanY = view.FramePanY;
    config.SkyScale = view.SkyScale;
    config.CDrawFrontStars = Byte(main.CDrawFrontStars);
    config.CDrawBackStars = Byte(main.CDrawBackStars);
    config.CLocalSky = Byte(main.CLocalSky);
    config.CPlaniSphere = Byte(main.CPlaniSphere);
    config.CFlatSky = Byte(main.CFlatSky);
    config.CReverseSky = Byte(main.CReverseSky);
    config.CSkyOnly = Byte(main.CSkyOnly);
    config.CStarNames = Byte(main.CStarNames);
}

void PlotCountryPolygons(const SceneContext& scene, FrameMemory& memory) {
    const MapTables& map = scene.App.Data.Map;
    const MainControls& main = scene.App.Main;
    const bool near = scene.View().ZoomFactor >= kFineBordersZoom;
    const bool fine = near || scene.App.Run.FinePass || main.CAutoRefine.Value;
    const BorderTable& borders = fine ? map.Border : map.Zip;
    if (borders.Count() < 1) return;

    DrawSurface& surface = scene.Surface;
    surface.FillStyle = main.CSolidGlobe.Value ? FillPattern::Solid : FillPattern::Transparent;
    surface.FillColor = scene.App.Data.SoilColor;
    surface.ForeColor = kBorderColor;
    surface.DrawWidth = kBorderWidth;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    SetGLTConfig(scene, memory.ViewConfig);

    const std::size_t room = GLINTCORE_DRAW_SCRATCH(static_cast<std::size_t>(LongestPolygon(borders)));
    if (memory.EarthScratch.size() < room) memory.EarthScratch.resize(room);
    GlintDrawTarget target = EngineTarget(surface);
    if (surface.FillStyle == FillPattern::Transparent) target.fill = nullptr;
    auto scratch = static_cast<std::int32_t>(memory.EarthScratch.size());
    Satellite_DrawEarth(&target, &memory.ViewConfig, borders.Count(), &borders.Lat[1], &borders.Lon[1], &borders.Id[1],
                        &scratch, memory.EarthScratch.data());
    surface.FillStyle = FillPattern::Solid;
    surface.DrawWidth = 1;
}

void DrawGlobeGrid(const SceneContext& scene, FrameMemory& memory) {
    DrawSurface& surface = scene.Surface;
    UseGridPen(surface);
    if (memory.ChainPoints.capacity() < 2 * kMostChainPoints) memory.ChainPoints.reserve(2 * kMostChainPoints);
    GridLine line(scene, memory.ChainPoints);
    const int steps = static_cast<int>(std::ceil(kTwoPi / FineStep(scene, kGridStep)));
    for (int i = 1; i < kLinesInHalfTurn; ++i) {
        const double lat = -kPi / 2 + i * kGridSpacing;
        for (int k = 0; k <= steps; ++k) line.Add(lat, kTwoPi * k / steps);
        line.End();
    }
    for (int i = 0; i < kLinesInHalfTurn; ++i) {
        const double lon = -kPi / 2 + i * kGridSpacing;
        for (int k = 0; k <= steps; ++k) line.Add(kTwoPi * k / steps, lon);
        line.End();
    }
    surface.DrawStyle = PenPattern::Solid;
}

void DrawMapGrid(const SceneContext& scene) {
    UseGridPen(scene.Surface);
    const ViewState& view = scene.View();
    const MapFrame frame = FlatMapFrame(view);
    MapGridLine line(scene);
    for (int i = 1; i < kLinesInHalfTurn; ++i) {
        const double y = frame.bottom + i * kGridSpacing;
        line.Draw({frame.left, y}, {frame.right, y});
    }
    for (int i = 0; i < 2 * kLinesInHalfTurn; ++i) {
        const double x = FlatMapPosition(view, {0, i * kGridSpacing}).x;
        line.Draw({x, frame.bottom}, {x, frame.top});
    }
    scene.Surface.DrawStyle = PenPattern::Solid;
}

void GlobeFrame(Application& app, DrawSurface& surface, FrameMemory& memory, const FrameStages& stages) {
    const SceneContext scene{app, surface, memory.Polygon, stages.FlattenSky};
    HoldView(app.Data.View);
    FloatSite(app);
    RefreshViewCache(app.Data.View);
    TakeFramePan(app.Data.View);
    if (ShowsSundial(app.Run)) {
        SundialFrame(scene, stages);
        DrawSplash(scene);
        return;
    }
    SetGLTConfig(scene, memory.ViewConfig);
    ClearPicture(scene, stages);
    if (!app.Main.CSkyOnly.Value) {
        DrawEarth(scene, memory);
        Draw(scene, stages.cities, app.Main.MnuMarkCities.Checked);
    }
    SceneStages(scene, stages);
    DrawSplash(scene);
}

void SceneStages(const SceneContext& scene, const FrameStages& stages) {
    const MainControls& main = scene.App.Main;
    const bool earth = !main.CSkyOnly.Value;
    const bool sky = main.CDrawSky.Value;
    TakeFramePan(scene.View());
    DrawHorizonCircles(scene);
    Draw(scene, stages.site, earth);
    Draw(scene, stages.sunAndMoon, earth && main.CDrawSun.Value);
    Draw(scene, stages.ariesLine, main.CDrawAries.Value);
    Draw(scene, stages.satellites);
    Draw(scene, stages.polygonMarker, earth && scene.App.Run.BorderTool.Selected > 0);
    Draw(scene, stages.orbitDetails, main.C2OrbitDetails.Value && scene.App.Data.SatCount > 0);
    if (sky) {
        PushSkyPan(scene);
        Draw(scene, stages.stars);
        Draw(scene, stages.constellations, main.CDrawConstallations.Value);
        PopSkyPan(scene);
    }
    Draw(scene, stages.astroDetails, main.CAstroDetails.Value);
    DrawTitleBlock(scene);
    Draw(scene, stages.skyPointer);
    Draw(scene, stages.beforeLabels);
    DrawLabelOverlay(scene);
}

}  // namespace glintara
