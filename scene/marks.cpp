#include "scene/marks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "orbit/sun_and_moon.h"
#include "scene/picture_measures.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

/// The part of the Aries line that the Earth may hide is drawn in pieces, and a piece is seen or hidden as a whole.
constexpr int kAriesPieces = 60;

constexpr double kRayWidth = 1.5;

/// Chords of each of the crescent's two arcs.
constexpr int kCrescentSteps = 24;

ScenePoint OnFlatMap(const SceneContext& scene, const Vector3& world) {
    const LatLonRadius place = XYZToLatLon(world);
    return FlatMapPosition(scene.View(), {place.lat, place.lon});
}

void DrawEarthMark(const SceneContext& scene, const Vector3& world, double radius, Color color) {
    if (const std::optional<ScenePoint> place = SeenOnEarth(scene, world)) DrawDisc(scene, *place, radius, color);
}

double SiteMarkRadius(const SceneContext& scene) {
    const double pixel = 1 / ScreenPixelsPerUnit(scene);
    return std::clamp(kSiteMarkRadius, kLeastSiteMark * pixel, kMostSiteMark * pixel);
}

void DrawSunMark(const SceneContext& scene, const ScenePoint& place, double radius) {
    DrawDisc(scene, place, radius, kSunMarkColor);
    DrawSurface& surface = scene.Surface;
    surface.ForeColor = kSunMarkColor;
    surface.DrawWidth = kRayWidth;
    for (int i = 0; i < kRays; ++i) {
        const double angle = kTwoPi * i / kRays;
        const auto at = [&](double radii) {
            return ScenePoint{place.x + radii * radius * std::cos(angle), place.y + radii * radius * std::sin(angle)};
        };
        SceneLine(scene, at(kRayStart), at(kRayEnd));
    }
    surface.DrawWidth = 1;
}

/// A crescent that opens to the right: the outer arc of one circle, and back on another one that cuts it.
void DrawMoonMark(const SceneContext& scene, const ScenePoint& place, double radius) {
    // From where both circles meet: their distance from the middle along the line between the centres.
    constexpr double kMeet =
        (kCrescentRadius * kCrescentRadius - kCutRadius * kCutRadius + kCutOffset * kCutOffset) / (2 * kCutOffset);
    const double outer = std::acos(kMeet / kCrescentRadius);
    const double inner = std::acos((kMeet - kCutOffset) / kCutRadius);
    scene.Polygon.Clear();
    const auto add = [&](double x, double y) { PolygonVertex(scene, {place.x + radius * x, place.y + radius * y}); };
    for (int i = 0; i <= kCrescentSteps; ++i) {
        const double angle = outer + (kTwoPi - 2 * outer) * i / kCrescentSteps;
        add(kCrescentRadius * std::cos(angle), kCrescentRadius * std::sin(angle));
    }
    for (int i = 0; i <= kCrescentSteps; ++i) {
        const double angle = -inner - (kTwoPi - 2 * inner) * i / kCrescentSteps;
        add(kCutOffset + kCutRadius * std::cos(angle), kCutRadius * std::sin(angle));
    }
    DrawSurface& surface = scene.Surface;
    surface.DrawMode = MixMode::Copy;
    surface.FillStyle = FillPattern::Solid;
    surface.FillColor = kMoonMarkColor;
    const std::array<std::int32_t, 1> ends{static_cast<std::int32_t>(scene.Polygon.Count())};
    surface.PolyPolygon(scene.Polygon.Exact(), ends);
}

}  // namespace

std::optional<ScenePoint> SeenOnEarth(const SceneContext& scene, const Vector3& world) {
    if (scene.IsFlatMap()) return OnFlatMap(scene, world);
    const Vector3 seen = RotateWorldToView(scene.View(), world);
    if (seen.x < 0) return std::nullopt;
    return ScenePoint{seen.y, seen.z};
}

std::optional<ScenePoint> SeenInSpace(const SceneContext& scene, const Vector3& world) {
    if (scene.IsFlatMap()) return OnFlatMap(scene, world);
    const Vector3 seen = RotateWorldToView(scene.View(), world);
    if (IsHidden(scene.View(), seen)) return std::nullopt;
    return ScenePoint{seen.y, seen.z};
}

bool IsSkyShown(const SceneContext& scene, const LatLonRadius& direction, double altitude) {
    const MainControls& main = scene.App.Main;
    if (main.CLocalSky.Value && altitude < 0) return false;
    if (scene.IsFlatMap()) return true;
    const bool front = LatLonRadiusToView(scene.View(), {direction.lat, direction.lon, 1}).x >= 0;
    return front ? main.CDrawFrontStars.Value : main.CDrawBackStars.Value;
}

std::optional<ScenePoint> SeenOnSky(const SceneContext& scene, const LatLonRadius& direction) {
    const ViewState& view = scene.View();
    Vector3 seen;
    if (scene.IsFlatMap()) {
        const ScenePoint point = FlatMapPosition(view, {direction.lat, direction.lon});
        seen = {0, point.x, point.y};
    } else {
        seen = LatLonRadiusToView(view, {direction.lat, direction.lon, view.SkyScale});
    }
    if (scene.FlattenSky != nullptr) scene.FlattenSky(scene, seen);
    const bool earthBefore = !scene.IsFlatMap() && !scene.App.Main.CSkyOnly.Value;
    if (earthBefore && IsHidden(view, seen)) return std::nullopt;
    return ScenePoint{seen.y, seen.z};
}

void DrawDisc(const SceneContext& scene, const ScenePoint& place, double radius, Color color) {
    DrawSurface& surface = scene.Surface;
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::None;
    surface.FillStyle = FillPattern::Solid;
    surface.FillColor = color;
    SceneCircle(scene, place, radius, color);
    surface.DrawStyle = PenPattern::Solid;
}

void DrawOutlinedDisc(const SceneContext& scene, const ScenePoint& place, double radius, Color color, Color outline,
                      double width) {
    DrawSurface& surface = scene.Surface;
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawWidth = width;
    surface.FillStyle = FillPattern::Solid;
    surface.FillColor = color;
    SceneCircle(scene, place, radius, outline);
    surface.DrawWidth = 1;
}

std::optional<BoxArea> SiteMarkArea(const SceneContext& scene) {
    if (scene.App.Main.CSkyOnly.Value) return std::nullopt;
    const std::optional<ScenePoint> place = SeenOnEarth(scene, ObserverOnUnitSphere(scene.App.Data.Site));
    if (!place) return std::nullopt;
    const ViewState& view = scene.View();
    const WindowScale window = GetWindowScale(view, scene.Surface);
    const double x = BoxFromSceneX(window, view, place->x);
    const double y = BoxFromSceneY(window, view, place->y);
    const double radius = SiteMarkRadius(scene) * window.scaleX;
    return BoxArea{x - radius, y - radius, x + radius, y + radius};
}

void DrawSiteMark(const SceneContext& scene) {
    if (scene.App.Main.CSkyOnly.Value) return;
    DrawEarthMark(scene, ObserverOnUnitSphere(scene.App.Data.Site), SiteMarkRadius(scene), kSiteColor);
}

void DrawSunAndMoonOnEarth(const SceneContext& scene) {
    const MainControls& main = scene.App.Main;
    if (main.CSkyOnly.Value || !main.CDrawSun.Value) return;
    const CommonData& data = scene.App.Data;
    const double radius = std::max(kBodyMarkRadius / data.View.ZoomFactor, kLeastBodyMark / ScreenPixelsPerUnit(scene));
    if (const std::optional<ScenePoint> sun = SeenOnEarth(scene, data.SunDir)) DrawSunMark(scene, *sun, radius);
    if (const std::optional<ScenePoint> moon = SeenOnEarth(scene, PointBelowMoon(data)))
        DrawMoonMark(scene, *moon, radius);
}

void DrawAriesLine(const SceneContext& scene) {
    const MainControls& main = scene.App.Main;
    if (main.CSkyOnly.Value || !main.CDrawAries.Value) return;
    const CommonData& data = scene.App.Data;
    const Vector3 aries = LLRToSameXYZ(0, EastLongitudeOf(0, SiderealFromDate(data.SimFields())), 1);
    DrawSurface& surface = scene.Surface;
    surface.ForeColor = kAriesColor;
    surface.DrawWidth = 1;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    if (scene.IsFlatMap()) {
        DrawEarthMark(scene, aries, kLeastSiteMark / ScreenPixelsPerUnit(scene), kAriesColor);
        return;
    }
    const double length = main.CDrawSky.Value ? data.View.SkyScale : kAriesLength;
    const double near = std::min(length, kAriesLength);
    for (int i = 0; i < kAriesPieces; ++i)
        PlotSegment(scene, near * i / kAriesPieces * aries, near * (i + 1) / kAriesPieces * aries);
    if (length > near) PlotSegment(scene, near * aries, length * aries);
}

}  // namespace glintara
