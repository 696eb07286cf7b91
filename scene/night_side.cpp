#include "scene/night_side.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"
#include "scene/picture_measures.h"

namespace glintara {
namespace {

constexpr double kTerminatorStep = kPi / 100;
constexpr double kLimbStep = kPi / 128;

/// Below this sine of its distance from the axis of the view the Sun counts as standing on it, and below this sine of
/// its declination over the equator: it is less than a thousandth of a pixel at any zoom.
constexpr double kAxisSine = 1e-9;

/// Steps of the terminator are shortened where its longitude changes fast, down to this part of them.
constexpr double kLeastAdvance = 1.0 / 1024;

/// The terminator's longitude changes by no more than half a turn from one point to the next.
constexpr double kLongestLeap = 1.1 * kPi;

/// It never goes back: less than this is rounding, more the way past the seam.
constexpr double kLeastReturn = 0.5;

/// A direction to the Sun is a unit vector; anything far shorter is none.
constexpr double kLeastSun = 0.5;

/// Two axes at right angles through the centre of the disc.
struct LimbAxes {
    ScenePoint along;
    ScenePoint across;

    ScenePoint At(double a, double b) const { return {a * along.x + b * across.x, a * along.y + b * across.y}; }
};

/// The radius of the night's outer edge.
double RimRadius(const SceneContext& scene) { return 1 + kNightRim / ScreenPixelsPerUnit(scene); }

/// The number of equal steps of at most `step` in half a turn.
int StepsInHalfTurn(double step) { return static_cast<int>(std::ceil(kPi / step)); }

void AddArc(const SceneContext& scene, const LimbAxes& axes, double start, double radius) {
    const int steps = StepsInHalfTurn(FineStep(scene, kLimbStep));
    for (int i = 0; i <= steps; ++i) {
        const double angle = start + kPi * i / steps;
        PolygonVertex(scene, axes.At(radius * std::cos(angle), radius * std::sin(angle)));
    }
}

/// The terminator under a Sun of northern declination, or over the equator. Its points are given by an angle that
/// counts from the eastern one on the equator by way of the northernmost; their longitudes, counted from the one that
/// the Sun stands over, grow with it.
struct Terminator {
    double sinDeclination = 0;
    double cosDeclination = 1;

    double Longitude(double angle) const { return std::atan2(std::cos(angle), -sinDeclination * std::sin(angle)); }
    double Latitude(double angle) const { return ArcSin(std::sin(angle) * cosDeclination); }

    /// The angle at which the terminator has this longitude.
    double AngleAt(double longitude) const {
        return std::atan2(-std::cos(longitude), sinDeclination * std::sin(longitude));
    }
};

}  // namespace

void MakeGlobeNight(const SceneContext& scene, const Vector3& sun) {
    scene.Polygon.Clear();
    const double size = Length(sun);
    if (!(size > kLeastSun)) return;
    const double depth = sun.x / size;
    const double aside = std::hypot(sun.y, sun.z) / size;
    const double rim = RimRadius(scene);
    if (aside < kAxisSine) {
        if (depth > 0) return;
        const LimbAxes upright{{1, 0}, {0, 1}};
        AddArc(scene, upright, 0, rim);
        AddArc(scene, upright, kPi, rim);
        return;
    }

    // The terminator meets the limb on both sides of the Sun, as seen on the screen; its seen half bulges away from the
    // Sun when the Sun is in front.
    const ScenePoint towardsSun{sun.y / size / aside, sun.z / size / aside};
    const LimbAxes axes{{-towardsSun.y, towardsSun.x}, {-towardsSun.x, -towardsSun.y}};
    const int steps = StepsInHalfTurn(FineStep(scene, kTerminatorStep));
    for (int i = 0; i <= steps; ++i) {
        const double angle = kPi - kPi * i / steps;
        PolygonVertex(scene, axes.At(std::cos(angle), depth * std::sin(angle)));
    }
    AddArc(scene, axes, 0, rim);
}

void MakeFlatMapNight(const SceneContext& scene, const LatLon& sun) {
    scene.Polygon.Clear();
    if (!std::isfinite(sun.lat) || !std::isfinite(sun.lon)) return;

    // A Sun in the south gives the picture of one in the north, turned upside down.
    const double side = sun.lat < 0 ? -1 : 1;
    const double sine = std::fabs(std::sin(sun.lat));
    const Terminator terminator{sine < kAxisSine ? 0 : sine, std::cos(sun.lat)};
    const MapFrame frame = FlatMapFrame(scene.View());
    const double seam = scene.View().ViewLon - kPi - sun.lon;
    const double start = terminator.AngleAt(seam);
    const double step = FineStep(scene, kTerminatorStep);

    const auto latitude = [&](double angle) { return frame.middle + side * terminator.Latitude(angle); };
    double covered = 0;
    // How far from the left edge. Rounding may put a place at one edge to the other.
    const auto distance = [&](double done) {
        if (done >= kTwoPi) return kTwoPi;
        const double along = WrapTwoPi(terminator.Longitude(start + done) - seam);
        if (along - covered > kLongestLeap) return covered;
        return covered - along > kLeastReturn ? kTwoPi : std::max(along, covered);
    };

    PolygonVertex(scene, {-kPi, latitude(start)});
    // With the Sun near the equator, the terminator runs along two meridians and turns sharply at the poles.
    for (double done = 0; done < kTwoPi;) {
        double advance = step;
        while (advance > step * kLeastAdvance && distance(done + advance) - covered > 2 * step) advance /= 2;
        done += advance;
        if (done >= kTwoPi) break;
        covered = distance(done);
        PolygonVertex(scene, {covered - kPi, latitude(start + done)});
    }
    PolygonVertex(scene, {kPi, latitude(start)});
    const double darkPole = frame.middle - side * kPi / 2;
    PolygonVertex(scene, {kPi, darkPole});
    PolygonVertex(scene, {-kPi, darkPole});
}

void DrawNightSide(const SceneContext& scene) {
    const CommonData& data = scene.App.Data;
    const double size = Length(data.SunDir);
    if (!(size > kLeastSun) || !std::isfinite(size)) return;
    if (scene.IsFlatMap()) {
        const LatLonRadius sun = XYZToLatLon(data.SunDir);
        MakeFlatMapNight(scene, {sun.lat, sun.lon});
    } else {
        MakeGlobeNight(scene, RotateWorldToView(data.View, data.SunDir));
    }
    if (scene.Polygon.Count() == 0) return;

    DrawSurface& surface = scene.Surface;
    surface.ForeColor = data.ShadowColor;
    surface.FillColor = data.ShadowColor;
    surface.FillStyle = FillPattern::Solid;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Mask;
    const std::array<std::int32_t, 1> ends{static_cast<std::int32_t>(scene.Polygon.Count())};
    surface.PolyPolygon(scene.Polygon.Exact(), ends);
    surface.DrawMode = MixMode::Copy;
}

}  // namespace glintara
