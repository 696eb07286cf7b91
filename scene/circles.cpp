#include "scene/circles.h"

#include <array>
#include <cmath>
#include <span>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

constexpr int kSegments = 100;

/// On the ground, but not so exactly that rounding decides which parts of a circle along the limb are seen.
constexpr double kGroundRadius = 1 + 1e-12;

/// Deeper than this a point of the sky counts as in front. A horizon along the limb is all within it.
constexpr double kFrontDepth = 1e-9;

/// Draws the segments between points on world axes.
using PlotWorldChain = void (*)(const SceneContext& scene, std::span<const Vector3> points);

struct Direction {
    double cosine = 1;
    double sine = 0;
};

/// All circles have their corners in the same directions from their middle: the first again at the end.
const std::array<Direction, kSegments + 1>& Corners() {
    static const std::array<Direction, kSegments + 1> corners = [] {
        std::array<Direction, kSegments + 1> made;
        for (int i = 0; i <= kSegments; ++i) {
            const double around = kTwoPi * (i % kSegments) / kSegments;
            made[static_cast<std::size_t>(i)] = {std::cos(around), std::sin(around)};
        }
        return made;
    }();
    return corners;
}

/// In a horizon view the sky's horizon is seen from its edge: the half whose stars are left out would lie beside the
/// other one as a second line.
void PlotHorizonOfStars(const SceneContext& scene, std::span<const Vector3> points) {
    const ViewState& view = scene.View();
    const bool shifted = view.FramePanX != 0 || view.FramePanY != 0;
    if (scene.IsFlatMap() || !shifted || scene.App.Main.CDrawFrontStars.Value) {
        PlotSkyChain(scene, points);
        return;
    }
    const auto isFront = [&view](const Vector3& point) { return RotateWorldToView(view, point).x > kFrontDepth; };
    for (std::size_t i = 1; i < points.size(); ++i)
        if (!isFront(points[i - 1]) && !isFront(points[i])) PlotSkyChain(scene, points.subspan(i - 1, 2));
}

void PlotCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color,
                PlotWorldChain plot) {
    if (!std::isfinite(center.lat + center.lon + angle + radius)) return;
    DrawSurface& surface = scene.Surface;
    surface.ForeColor = color;
    surface.DrawWidth = 1;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;

    const Vector3 up = LLRToSameXYZ(center.lat, center.lon, 1);
    const Vector3 east{-std::sin(center.lon), std::cos(center.lon), 0};
    const Vector3 south = CrossProduct(east, up);
    const Vector3 middle = radius * std::cos(angle) * up;
    const double reach = radius * std::sin(angle);
    std::array<Vector3, kSegments + 1> points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Direction& corner = Corners()[i];
        points[i] = middle + reach * (corner.cosine * south + corner.sine * east);
    }
    plot(scene, points);
}

}  // namespace

void PlotSphereCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color) {
    PlotCircle(scene, center, angle, radius, color, PlotChain);
}

void PlotSkyCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color) {
    PlotCircle(scene, center, angle, radius, color, PlotSkyChain);
}

double VisibilityAngle(double distance, double elevation) {
    if (!(distance > 1)) return 0;
    const double angle = ArcCos(std::cos(elevation) / distance) - elevation;
    return angle > 0 ? angle : 0;
}

void DrawHorizonCircles(const SceneContext& scene) {
    const MainControls& main = scene.App.Main;
    if (!main.CHCircle.Value) return;
    const ObserverSite& site = scene.App.Data.Site;
    if (!main.CSkyOnly.Value)
        PlotSphereCircle(scene, {site.SiteGeoLat, site.SiteLon}, kPi / 2, kGroundRadius, kSiteCircleColor);
    if (!main.CDrawSky.Value) return;
    PushSkyPan(scene);
    // The stars rise where their direction meets the plane below the geodetic zenith.
    PlotCircle(scene, {site.SiteLat, site.SiteLon}, kPi / 2, scene.View().SkyScale, kSiteCircleColor,
               PlotHorizonOfStars);
    PopSkyPan(scene);
}

void DrawSatCircle(const SceneContext& scene, const Vector3& satellite) {
    const LatLonRadius place = XYZToLatLon(satellite);
    const double angle = VisibilityAngle(place.radius, kVisibilityElevation);
    if (!(angle > 0)) return;
    PlotSphereCircle(scene, {place.lat, place.lon}, angle, kGroundRadius, kSatCircleColor);
}

void DrawVisibilityArea(const SceneContext& scene, double distance) {
    const double angle = VisibilityAngle(distance, kVisibilityElevation);
    if (!(angle > 0)) return;
    const ObserverSite& site = scene.App.Data.Site;
    PlotSphereCircle(scene, {site.SiteGeoLat, site.SiteLon}, angle, kGroundRadius, kSiteCircleColor);
}

}  // namespace glintara
