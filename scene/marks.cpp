#include "scene/marks.h"

#include <algorithm>

#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "scene/picture_measures.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

/// The part of the Aries line that the Earth may hide is drawn in pieces, and a piece is seen or hidden as a whole.
constexpr int kAriesPieces = 60;

ScenePoint OnFlatMap(const SceneContext& scene, const Vector3& world) {
    const LatLonRadius place = XYZToLatLon(world);
    return FlatMapPosition(scene.View(), {place.lat, place.lon});
}

void DrawEarthMark(const SceneContext& scene, const Vector3& world, double radius, Color color) {
    if (const std::optional<ScenePoint> place = SeenOnEarth(scene, world)) DrawDisc(scene, *place, radius, color);
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

void DrawSiteMark(const SceneContext& scene) {
    if (scene.App.Main.CSkyOnly.Value) return;
    const double radius = std::max(kSiteMarkRadius, kLeastSiteMark / ScreenPixelsPerUnit(scene));
    DrawEarthMark(scene, ObserverOnUnitSphere(scene.App.Data.Site), radius, kSiteColor);
}

void DrawSunAndMoonOnEarth(const SceneContext& scene) {
    const MainControls& main = scene.App.Main;
    if (main.CSkyOnly.Value || !main.CDrawSun.Value) return;
    const CommonData& data = scene.App.Data;
    const double greenwich = SiderealFromDate(data.SimFields());
    const double radius = kBodyMarkRadius / data.View.ZoomFactor;
    const Vector3 underMoon = LLRToSameXYZ(data.MoonDec, EastLongitudeOf(data.MoonRA, greenwich), 1);
    DrawEarthMark(scene, data.SunDir, radius, kSunMarkColor);
    DrawEarthMark(scene, underMoon, radius, kMoonMarkColor);
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
