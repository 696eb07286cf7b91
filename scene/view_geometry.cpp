#include "scene/view_geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"

namespace glintara {
namespace {

constexpr double kFreshZoom = ViewState{}.ZoomFactor;
constexpr double kFreshSky = ViewState{}.SkyScale;

double FiniteOr(double value, double instead) { return std::isfinite(value) ? value : instead; }

/// A radius of the star sphere that stars can be put on.
double SkyRadius(double radius) { return radius > 0 && std::isfinite(radius) ? radius : kFreshSky; }

bool IsFinite(const ScenePoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

/// Height of the equator on the flat map. The map is moved as a whole: a place that a shift beyond a pole carries half
/// a turn from the middle stays in the frame, and does not come back on the other side.
double EquatorOnFlatMap(const ViewState& view) { return -std::remainder(view.ViewLat, kTwoPi); }

std::int32_t WholePixel(double position) {
    constexpr double kFarthest = std::numeric_limits<std::int32_t>::max() / 2.0;
    return static_cast<std::int32_t>(std::clamp(position, -kFarthest, kFarthest));
}

}  // namespace

PolygonBuffer::PolygonBuffer(std::size_t capacity) : capacity_(capacity) {
    whole_.reserve(capacity);
    exact_.reserve(2 * capacity);
}

void PolygonBuffer::Clear() {
    whole_.clear();
    exact_.clear();
}

void PolygonBuffer::Add(double pixelX, double pixelY) {
    if (whole_.size() == capacity_) return;
    whole_.push_back({WholePixel(pixelX), WholePixel(pixelY)});
    exact_.push_back(pixelX);
    exact_.push_back(pixelY);
}

void RefreshViewCache(ViewState& view) {
    view.SinRoll = std::sin(view.ViewRoll);
    view.CosRoll = std::cos(view.ViewRoll);
    view.SinLat = std::sin(view.ViewLat);
    view.CosLat = std::cos(view.ViewLat);
    view.SinLon = std::sin(view.ViewLon);
    view.CosLon = std::cos(view.ViewLon);
}

void HoldView(ViewState& view) {
    const double zoom = std::isnan(view.ZoomFactor) ? kFreshZoom : view.ZoomFactor;
    view.ZoomFactor = std::clamp(zoom, kLeastZoom, kMostZoom);
    view.PanX = std::clamp(FiniteOr(view.PanX, 0), -kMostPan, kMostPan);
    view.PanY = std::clamp(FiniteOr(view.PanY, 0), -kMostPan, kMostPan);
    view.ViewRoll = FiniteOr(view.ViewRoll, 0);
    view.ViewLat = FiniteOr(view.ViewLat, 0);
    view.ViewLon = FiniteOr(view.ViewLon, 0);
    view.SkyScale = SkyRadius(view.SkyScale);
    view.SkyScaleSaved = SkyRadius(view.SkyScaleSaved);
}

void TakeFramePan(ViewState& view) {
    view.FramePanX = view.PanX;
    view.FramePanY = view.PanY;
}

void PushSkyPan(const SceneContext& scene) {
    ViewState& view = scene.View();
    ++view.PanStackDepth;
    // Deeper pairs are counted only: they find the pan moved already, so there is nothing to keep.
    if (view.PanStackDepth <= ViewState::kPanStackCapacity) {
        const auto top = static_cast<std::size_t>(view.PanStackDepth);
        view.PanStackX[top] = view.PanX;
        view.PanStackY[top] = view.PanY;
    }
    if (view.FramePanX == 0 && view.FramePanY == 0) return;
    if (scene.App.Main.CStarsOnGlobe.Value) return;
    view.PanY = view.FramePanY + 1;
}

void PopSkyPan(const SceneContext& scene) {
    ViewState& view = scene.View();
    if (view.PanStackDepth < 1) return;
    if (view.PanStackDepth <= ViewState::kPanStackCapacity) {
        const auto top = static_cast<std::size_t>(view.PanStackDepth);
        view.PanX = view.PanStackX[top];
        view.PanY = view.PanStackY[top];
    }
    --view.PanStackDepth;
}

Vector3 RotateWorldToView(const ViewState& view, const Vector3& world) {
    const double p = -view.SinLon * world.x + view.CosLon * world.y;
    const double q = view.CosLon * world.x + view.SinLon * world.y;
    const double u = view.CosLat * q + view.SinLat * world.z;
    const double w = -view.SinLat * q + view.CosLat * world.z;
    return {view.CosRoll * u + view.SinRoll * p, view.CosRoll * p - view.SinRoll * u, w};
}

Vector3 RotateViewToWorld(const ViewState& view, const Vector3& point) {
    const double a = point.y * view.CosRoll + point.x * view.SinRoll;
    const double b = point.x * view.CosRoll - point.y * view.SinRoll;
    const double c = view.CosLat * b - point.z * view.SinLat;
    const double d = point.z * view.CosLat + view.SinLat * b;
    return {view.CosLon * c - view.SinLon * a, view.SinLon * c + view.CosLon * a, d};
}

Vector3 LatLonRadiusToView(const ViewState& view, const LatLonRadius& place) {
    return place.radius * RotateWorldToView(view, LLRToSameXYZ(place.lat, place.lon, 1));
}

LatLonRadius ViewXYZToLatLon(const ViewState& view, const Vector3& world) {
    return XYZToLatLon(RotateWorldToView(view, world));
}

bool IsHidden(const ViewState& view, const Vector3& point) {
    if (!(point.x < 0)) return false;
    const double y = point.y - view.FramePanX + view.PanX;
    const double z = point.z - view.FramePanY + view.PanY;
    return y * y + z * z < 1;
}

ScenePoint FlatMapPosition(const ViewState& view, const LatLon& place) {
    return {WrapTwoPi(place.lon - view.ViewLon + kPi) - kPi, place.lat + EquatorOnFlatMap(view)};
}

ScenePoint FlatMapFramePoint(const ViewState& view, double x, double y) {
    return {x * kPi, y * kPi / 2 + EquatorOnFlatMap(view)};
}

bool CrossesSeam(const ScenePoint& a, const ScenePoint& b) { return std::fabs(a.x - b.x) > kPi; }

SeamCrossing SplitAtSeam(const ScenePoint& a, const ScenePoint& b) {
    const double length = kTwoPi - std::fabs(a.x - b.x);
    const double part = length > 0 ? (kPi - std::fabs(a.x)) / length : 0;
    const double y = a.y + (b.y - a.y) * part;
    const double seam = kPi * kSeamOvershoot;
    return {{std::copysign(seam, a.x), y}, {std::copysign(seam, b.x), y}};
}

WindowScale GetWindowScale(const ViewState& view, const DrawSurface& surface) {
    return GetWindowScale(view, surface.ScaleWidth, surface.ScaleHeight);
}

WindowScale GetWindowScale(const ViewState& view, double boxWidth, double boxHeight) {
    const double shortSide = std::max(1.0, Truncate(std::min(boxWidth, boxHeight)));
    const double sceneWidth = 2 / (view.ZoomFactor / kFullZoom);
    WindowScale window;
    window.shortSide = shortSide;
    window.sceneWidth = sceneWidth;
    window.scaleX = shortSide / sceneWidth;
    window.scaleY = window.scaleX;
    window.halfW = static_cast<float>(boxWidth / 2);
    window.halfH = static_cast<float>(boxHeight / 2);
    return window;
}

double BoxFromSceneX(const WindowScale& window, const ViewState& view, double x) {
    return window.halfW + window.shortSide * (x + view.PanX) / window.sceneWidth;
}

double BoxFromSceneY(const WindowScale& window, const ViewState& view, double y) {
    return window.halfH + window.shortSide * (-(y + view.PanY)) / window.sceneWidth;
}

double SceneFromBoxX(const WindowScale& window, const ViewState& view, double x) {
    return (x - window.halfW) * window.sceneWidth / window.shortSide - view.PanX;
}

double SceneFromBoxY(const WindowScale& window, const ViewState& view, double y) {
    return -(y - window.halfH) * window.sceneWidth / window.shortSide - view.PanY;
}

std::optional<LatLon> EarthPlaceAt(const ViewState& view, bool flatMap, const ScenePoint& point) {
    if (flatMap) {
        const double lat = point.y - EquatorOnFlatMap(view);
        const bool onMap = std::fabs(point.x) <= kPi && std::fabs(lat) <= kPi / 2;
        if (!onMap) return std::nullopt;
        return LatLon{lat, FoldLongitude(point.x + view.ViewLon)};
    }
    const double fromCentre = point.x * point.x + point.y * point.y;
    if (!(fromCentre < 1)) return std::nullopt;
    const Vector3 world = RotateViewToWorld(view, {std::sqrt(1 - fromCentre), point.x, point.y});
    const LatLonRadius place = XYZToLatLon(world);
    return LatLon{place.lat, FoldLongitude(place.lon)};
}

void SceneLine(const SceneContext& scene, const ScenePoint& a, const ScenePoint& b) {
    if (!IsFinite(a) || !IsFinite(b)) return;
    const ViewState& view = scene.View();
    const WindowScale window = GetWindowScale(view, scene.Surface);
    scene.Surface.Line(BoxFromSceneX(window, view, a.x), BoxFromSceneY(window, view, a.y),
                       BoxFromSceneX(window, view, b.x), BoxFromSceneY(window, view, b.y));
}

void SceneCircle(const SceneContext& scene, const ScenePoint& center, double radius, Color color) {
    if (!IsFinite(center) || !std::isfinite(radius)) return;
    const ViewState& view = scene.View();
    const WindowScale window = GetWindowScale(view, scene.Surface);
    const Color before = scene.Surface.ForeColor;
    scene.Surface.ForeColor = color;
    scene.Surface.Circle(BoxFromSceneX(window, view, center.x), BoxFromSceneY(window, view, center.y),
                         radius * window.scaleX);
    scene.Surface.ForeColor = before;
}

void PolygonVertex(const SceneContext& scene, const ScenePoint& vertex) {
    if (!IsFinite(vertex)) return;
    const ViewState& view = scene.View();
    const WindowScale window = GetWindowScale(view, scene.Surface);
    scene.Polygon.Add(BoxFromSceneX(window, view, vertex.x) / scene.Surface.TwipsPerPixelX,
                      BoxFromSceneY(window, view, vertex.y) / scene.Surface.TwipsPerPixelY);
}

}  // namespace glintara
