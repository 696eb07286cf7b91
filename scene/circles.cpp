#include "scene/circles.h"

#include <cmath>

#include "orbit/astro/constants.h"
#include "orbit/astro/trigonometry.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

constexpr int kSegments = 100;

/// On the ground, but not so exactly that rounding decides which parts of a circle along the limb are seen.
constexpr double kGroundRadius = 1 + 1e-12;

/// A segment of a circle on world axes.
using PlotWorldSegment = void (*)(const SceneContext& scene, const Vector3& from, const Vector3& to);

/// A point of the circle round the north pole, carried to `center`.
Vector3 CirclePoint(const LatLon& center, double angle, double radius, double around) {
    const Vector3 atPole = LLRToSameXYZ(kPi / 2 - angle, around, radius);
    const double tilt = kPi / 2 - center.lat;
    const double c = std::cos(tilt);
    const double s = std::sin(tilt);
    const Vector3 tilted{c * atPole.x + s * atPole.z, atPole.y, -s * atPole.x + c * atPole.z};
    return TurnedAboutPole(tilted, center.lon);
}

void PlotCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color,
                PlotWorldSegment plot) {
    if (!std::isfinite(center.lat + center.lon + angle + radius)) return;
    DrawSurface& surface = scene.Surface;
    surface.ForeColor = color;
    surface.DrawWidth = 1;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    Vector3 from = CirclePoint(center, angle, radius, 0);
    for (int i = 1; i <= kSegments; ++i) {
        const Vector3 to = CirclePoint(center, angle, radius, kTwoPi * i / kSegments);
        plot(scene, from, to);
        from = to;
    }
}

}  // namespace

void PlotSphereCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color) {
    PlotCircle(scene, center, angle, radius, color, PlotSegment);
}

void PlotSkyCircle(const SceneContext& scene, const LatLon& center, double angle, double radius, Color color) {
    PlotCircle(scene, center, angle, radius, color, PlotSkySegment);
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
    if (!main.CSkyOnly.Value) {
        PlotSphereCircle(scene, {site.SiteGeoLat, site.SiteLon}, kPi / 2, kGroundRadius, kSiteCircleColor);
    }
    if (!main.CDrawSky.Value) return;
    PushSkyPan(scene);
    // The stars rise where their direction meets the plane below the geodetic zenith.
    PlotSkyCircle(scene, {site.SiteLat, site.SiteLon}, kPi / 2, scene.View().SkyScale, kSiteCircleColor);
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
