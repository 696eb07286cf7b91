#include "scene/flare_marks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "engine/astro/constants.h"
#include "scene/picture_measures.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

constexpr double kPointWidth = 4;

constexpr int kLeastCorners = 12;
constexpr int kMostCorners = 96;

using Corners = std::array<Vector3, kMostCorners + 1>;

/// Corners that a circle needs to look round: its chords then are some two pixels long, and longer when it is large.
int CornersFor(const SceneContext& scene) {
    const double pixels = kFlareCircleAngle * ScreenPixelsPerUnit(scene);
    return static_cast<int>(std::clamp(3 * pixels, double{kLeastCorners}, double{kMostCorners}));
}

/// The circle on world axes, the first corner again at the end.
std::span<const Vector3> CircleRound(const Vector3& centre, int corners, Corners& out) {
    const Vector3 reference = std::fabs(centre.z) < 0.9 ? Vector3{0, 0, 1} : Vector3{1, 0, 0};
    const Vector3 across = std::sin(kFlareCircleAngle) * Normalized(CrossProduct(reference, centre));
    const Vector3 along = CrossProduct(centre, across);
    const Vector3 middle = std::cos(kFlareCircleAngle) * centre;
    for (int i = 0; i <= corners; ++i) {
        const double a = kTwoPi * i / corners;
        out[static_cast<std::size_t>(i)] = middle + std::cos(a) * across + std::sin(a) * along;
    }
    return {out.data(), static_cast<std::size_t>(corners) + 1};
}

bool AllSeen(const ViewState& view, std::span<const Vector3> circle) {
    return std::ranges::none_of(
        circle, [&](const Vector3& corner) { return IsHidden(view, RotateWorldToView(view, corner)); });
}

void DrawAsOneLine(const SceneContext& scene, std::span<const Vector3> circle) {
    const ViewState& view = scene.View();
    const WindowScale window = GetWindowScale(view, scene.Surface);
    std::array<double, std::size_t{2} * (kMostCorners + 1)> xy;
    std::size_t n = 0;
    for (const Vector3& corner : circle) {
        const Vector3 seen = RotateWorldToView(view, corner);
        xy[n++] = BoxFromSceneX(window, view, seen.y) / scene.Surface.TwipsPerPixelX;
        xy[n++] = BoxFromSceneY(window, view, seen.z) / scene.Surface.TwipsPerPixelY;
    }
    scene.Surface.Polyline(std::span<const double>(xy.data(), n));
}

void DrawCircle(const SceneContext& scene, const Vector3& centre, int corners) {
    scene.Surface.ForeColor = kFlareCircleColor;
    scene.Surface.DrawWidth = 1;
    Corners storage;
    const std::span<const Vector3> circle = CircleRound(centre, corners, storage);
    if (!scene.IsFlatMap() && AllSeen(scene.View(), circle)) {
        DrawAsOneLine(scene, circle);
        return;
    }
    for (std::size_t i = 1; i < circle.size(); ++i) PlotSegment(scene, circle[i - 1], circle[i]);
}

void DrawPoint(const SceneContext& scene, const SatRecord& satellite, const LiveFlare& flare, const ScenePoint& point,
               NameBoard& names) {
    DrawSurface& surface = scene.Surface;
    const WindowScale window = GetWindowScale(scene.View(), surface);
    NameWish label;
    label.x = BoxFromSceneX(window, scene.View(), point.x);
    label.y = BoxFromSceneY(window, scene.View(), point.y);
    label.range = flare.distance;
    label.rank = NameRank::Flare;
    label.color = flare.moon ? kMoonFlareColor : kSunFlareColor;
    label.rise = 0;
    surface.ForeColor = label.color;
    surface.DrawWidth = kPointWidth;
    surface.PSet(label.x, label.y);
    std::string& text = names.EmptyText();
    AppendLiveFlareLabel(satellite, flare, scene.App.Main.CAntennaID.Value, text);
    label.name = text;
    // The board sets the blank that all labels begin with.
    if (label.name.starts_with(' ')) label.name.remove_prefix(1);
    names.AddLabel(label);
}

}  // namespace

void DrawFlareMarks(const SceneContext& scene, const SatRecord& satellite, const LiveFlares& flares, NameBoard& names) {
    if (flares.All().empty()) return;
    const ViewState& view = scene.View();
    const bool circles = scene.App.Main.CPlotOrbit.Value;
    const int corners = CornersFor(scene);
    scene.Surface.DrawMode = MixMode::Copy;
    scene.Surface.DrawStyle = PenPattern::Solid;
    for (const LiveFlare& flare : flares.All()) {
        const Vector3 seen = RotateWorldToView(view, flare.centre);
        if (!scene.IsFlatMap() && seen.x < 0) continue;
        if (flare.distance < kLabelledDistance) {
            const LatLonRadius place = XYZToLatLon(flare.centre);
            const ScenePoint point =
                scene.IsFlatMap() ? FlatMapPosition(view, {place.lat, place.lon}) : ScenePoint{seen.y, seen.z};
            DrawPoint(scene, satellite, flare, point, names);
        } else if (circles) {
            DrawCircle(scene, flare.centre, corners);
        }
    }
}

}  // namespace glintara
