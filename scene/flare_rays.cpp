#include "scene/flare_rays.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "scene/plot_segment.h"

namespace glintara {
namespace {

constexpr double kRayWidth = 1;

/// Largest step of a line over the flat map, radians, and so many fill half a turn.
constexpr double kMapStep = 2 * kDegToRad;
constexpr int kMostMapSteps = 90;

/// Sine of the angle between the ends of a line below which the map shows it as a point, or does not know its way.
constexpr double kLeastArc = 1e-9;

/// Depth that counts as behind the plane of the disc, scene units: safe from rounding, far below a pixel.
constexpr double kJustBehind = 1e-9;

/// Of a line between two points on view axes: where, from 0 to 1, it passes behind the plane of the disc, and where it
/// is nearest to the disc's centre on the screen. Between those places and its ends, in their order, what the disc
/// hides reaches to one end of a piece or is all of it.
std::array<double, 4> Stops(const ViewState& view, const Vector3& a, const Vector3& b) {
    const Vector3 way = b - a;
    const auto onLine = [](double part) { return part > 0 && part < 1 ? part : 0; };
    const double plane = onLine((-kJustBehind - a.x) / way.x);
    const double y = a.y - view.FramePanX + view.PanX;
    const double z = a.z - view.FramePanY + view.PanY;
    const double nearest = onLine(-(y * way.y + z * way.z) / (way.y * way.y + way.z * way.z));
    return {0, std::min(plane, nearest), std::max(plane, nearest), 1};
}

void PlotOverMap(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    const Vector3 start = Normalized(from);
    const Vector3 end = Normalized(to);
    const Vector3 pole = CrossProduct(start, end);
    const double sine = Length(pole);
    if (!(sine > kLeastArc)) return;
    const double angle = std::atan2(sine, Dot(start, end));
    const Vector3 ahead = CrossProduct(pole, start) / sine;
    std::array<Vector3, kMostMapSteps + 1> places;
    const int steps = std::clamp(static_cast<int>(std::ceil(angle / kMapStep)), 1, kMostMapSteps);
    for (int i = 0; i <= steps; ++i) {
        const double a = angle * i / steps;
        places[static_cast<std::size_t>(i)] = std::cos(a) * start + std::sin(a) * ahead;
    }
    PlotChain(scene, std::span(places.data(), static_cast<std::size_t>(steps) + 1));
}

/// Where a ray from the satellite towards its source has left the picture for good, or the source.
Vector3 EndOfRay(const SceneContext& scene, const Vector3& satellite, const Vector3& source) {
    const ViewState& view = scene.View();
    const DrawSurface& surface = scene.Surface;
    const WindowScale window = GetWindowScale(view, surface);
    const double centreX = SceneFromBoxX(window, view, surface.ScaleWidth / 2);
    const double centreY = SceneFromBoxY(window, view, surface.ScaleHeight / 2);
    const double toCorner = std::hypot(surface.ScaleWidth, surface.ScaleHeight) / 2 / window.scaleX;
    const Vector3 seen = RotateWorldToView(view, satellite);
    const Vector3 way = RotateWorldToView(view, source) - seen;
    const double reach = std::hypot(seen.y - centreX, seen.z - centreY) + toCorner;
    const double across = std::hypot(way.y, way.z);
    return reach < across ? satellite + reach / across * (source - satellite) : source;
}

void DrawSourceRay(const SceneContext& scene, const Vector3& satellite, const Vector3& source, bool moon) {
    scene.Surface.ForeColor = moon ? kMoonRayColor : kSunRayColor;
    const Vector3 begin = scene.IsFlatMap() ? source : EndOfRay(scene, satellite, source);
    PlotStraightLine(scene, begin, satellite);
}

void DrawRotAxis(const SceneContext& scene, const SurfaceModel& model, const Vector3& satellite,
                 const BodyFrame& frame) {
    const Vector3 arm = kRotAxisLength / scene.View().ZoomFactor * OnAxes(RotatingMirrorOf(model).axis, frame);
    scene.Surface.ForeColor = kRotAxisColor;
    PlotStraightLine(scene, satellite - arm, satellite + arm);
}

void DrawNormals(const SceneContext& scene, const SurfaceModel& model, const Vector3& satellite, const BodyFrame& frame,
                 const LiveFlareQuest& quest) {
    const double length = kMirrorNormalLength / scene.View().ZoomFactor;
    const bool rotating = IsRotating(model);
    scene.Surface.ForeColor = kMirrorNormalColor;
    ForEachNormal(model, frame, quest, [&](int index, const Vector3& normal) {
        if (rotating && index % 2 != 0) return;
        PlotStraightLine(scene, satellite, satellite + length * normal);
    });
}

}  // namespace

void PlotStraightLine(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    if (scene.IsFlatMap()) {
        PlotOverMap(scene, from, to);
        return;
    }
    const ViewState& view = scene.View();
    const Vector3 a = RotateWorldToView(view, from);
    const Vector3 b = RotateWorldToView(view, to);
    const std::array<double, 4> stops = Stops(view, a, b);
    const auto isHidden = [&](double part) { return IsHidden(view, a + part * (b - a)); };
    if (std::ranges::none_of(stops, isHidden)) {
        PlotSegment(scene, from, to);
        return;
    }
    const auto at = [&](double part) { return from + part * (to - from); };
    for (std::size_t i = 1; i < stops.size(); ++i)
        if (stops[i] > stops[i - 1]) PlotUpToLimb(scene, at(stops[i - 1]), at(stops[i]));
}

void DrawFlareRays(const SceneContext& scene, const SatRecord& satellite, const WorldMotion& motion,
                   const LightPlaces& lights, const LiveFlareQuest& quest) {
    const MirrorControls& options = scene.App.Mirror;
    const bool onBody = options.CShowRotAxis.Value || options.CShowMirrorNormal.Value;
    if (!onBody && !options.CShowSourceRay.Value) return;
    std::optional<BodyFrame> frame;
    if (!quest.transit) {
        frame = LiveFlareFrame(scene.App, satellite, motion);
        if (!frame) return;
    }
    scene.Surface.DrawMode = MixMode::Copy;
    scene.Surface.DrawStyle = PenPattern::Solid;
    scene.Surface.DrawWidth = kRayWidth;
    bool lit = false;
    for (const bool moon : {false, true}) {
        if (moon && !quest.moon) break;
        const Vector3& source = moon ? lights.moon : lights.sun;
        if (!IsLit(motion.position, source, quest)) continue;
        lit = true;
        if (options.CShowSourceRay.Value) DrawSourceRay(scene, motion.position, source, moon);
    }
    if (!frame || !lit) return;
    const SurfaceModel& model = satellite.Surface;
    if (options.CShowMirrorNormal.Value) DrawNormals(scene, model, motion.position, *frame, quest);
    if (options.CShowRotAxis.Value && IsRotating(model)) DrawRotAxis(scene, model, motion.position, *frame);
}

}  // namespace glintara
