#include "scene/orbits.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "engine/astro/constants.h"
#include "engine/astro/kepler.h"
#include "engine/astro/trigonometry.h"
#include "engine/geometry/reflection.h"
#include "orbit/satellite_motion.h"
#include "scene/marks.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

constexpr double kSixthsOfATurn = 6;

/// A number of steps that rounding has left just below a whole one is that whole one.
constexpr double kStepRounding = 1e-9;

/// Longest part of a step on the star sphere, radians, and most parts of one.
constexpr double kLongestOnSky = 2.5 * kDegToRad;
constexpr int kMostPartsOnSky = 48;

struct ShownChains {
    bool inSpace = false;
    bool inSpaceOverTime = false;
    bool onGround = false;
    bool onGroundOverTime = false;
    bool onSky = false;

    bool Any() const { return inSpace || inSpaceOverTime || onGround || onGroundOverTime || onSky; }
    bool AnyOverTime() const { return inSpaceOverTime || onGroundOverTime; }
};

ShownChains ShownChainsOf(const MainControls& main) {
    ShownChains shown;
    if (main.CSatOnly.Value) return shown;
    if (!main.CSkyOnly.Value) {
        shown.inSpace = main.CPlotOrbit.Value;
        shown.inSpaceOverTime = main.CPlotOrbit.Value && main.CPlotOrbitOverTime.Value;
        shown.onGround = main.CProjectOrbit.Value;
        shown.onGroundOverTime = main.CProjectOrbit.Value && main.CProjectOverTime.Value;
    }
    shown.onSky = main.CProjectOrbitOnSky.Value && main.CDrawSky.Value;
    return shown;
}

/// One point of all chains.
struct ChainPoint {
    Vector3 atInstant;  // world position, the Earth as at the displayed instant
    Vector3 asFlown;    // the Earth as at the point's own time
};

/// A point of the chain on the star sphere.
struct SkyPoint {
    LatLonRadius place;
    bool shown = false;
};

SkyPoint SkyPointOf(const SceneContext& scene, const Vector3& position) {
    const ObserverSite& site = scene.App.Data.Site;
    SkyPoint point;
    point.place = SatXYZToSkyLatLon(site, position);
    point.place.radius = scene.View().SkyScale;
    point.shown = IsSkyShown(scene, point.place, WorldToHorizon(site, position).altitude);
    return point;
}

ChainPoint PointOf(const CommonData& data, const ShownChains& shown, const WorldMotion& motion, double jd) {
    ChainPoint point;
    point.atInstant = motion.position;
    if (shown.AnyOverTime()) point.asFlown = OnAxesOfInstant(data, motion, jd).position;
    return point;
}

/// A satellite that passes near the observer crosses a large part of the sky in one step: parts of it then follow the
/// straight line from place to place, which even on the lowest orbits is only a quarter of a degree beside its path.
int PartsOnSky(const ObserverSite& site, const Vector3& from, const Vector3& to) {
    const Vector3 observer = ObserverOnUnitSphere(site);
    const double angle = ArcCos(Dot(Normalized(from - observer), Normalized(to - observer)));
    return static_cast<int>(std::clamp(std::ceil(angle / kLongestOnSky), 1.0, double{kMostPartsOnSky}));
}

void DrawStepOnSky(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    const int parts = PartsOnSky(scene.App.Data.Site, from, to);
    PushSkyPan(scene);
    SkyPoint last = SkyPointOf(scene, from);
    for (int i = 1; i <= parts; ++i) {
        const double part = static_cast<double>(i) / parts;
        const SkyPoint next = SkyPointOf(scene, (1 - part) * from + part * to);
        if (last.shown && next.shown) PlotSkySegment(scene, last.place, next.place);
        last = next;
    }
    PopSkyPan(scene);
}

void DrawStep(const SceneContext& scene, const ShownChains& shown, const ChainPoint& from, const ChainPoint& to) {
    if (shown.inSpace) PlotUpToLimb(scene, from.atInstant, to.atInstant);
    if (shown.inSpaceOverTime) PlotUpToLimb(scene, from.asFlown, to.asFlown);
    if (shown.onGround) PlotUpToLimb(scene, Normalized(from.atInstant), Normalized(to.atInstant));
    if (shown.onGroundOverTime) PlotUpToLimb(scene, Normalized(from.asFlown), Normalized(to.asFlown));
    if (shown.onSky) DrawStepOnSky(scene, from.atInstant, to.atInstant);
}

}  // namespace

Color LightColor(const Application& app, const Vector3& position) {
    const bool dark = app.Main.CSunLight.Value && InShadow(position, app.Data.SunDir);
    return dark ? kShadowedColor : kSunlitColor;
}

OrbitSteps::OrbitSteps(const KeplerElements& ellipse, double meanAnomaly, int stepsPerTurn)
    : isOrbit_(ellipse.MeanMotion > 0 && ellipse.Eccentricity >= 0 && ellipse.Eccentricity < 1),
      eccentricity_(ellipse.Eccentricity),
      step_(kTwoPi / stepsPerTurn) {
    if (!isOrbit_) return;
    period_ = 1 / ellipse.MeanMotion;
    start_ = TrueFromMean(meanAnomaly, eccentricity_, kKeplerTolerance);
    startMean_ = MeanFromTrue(start_, eccentricity_) / kTwoPi;
    lastMean_ = startMean_;
}

double OrbitSteps::Next() {
    trueAnomaly_ = start_ + next_ * step_;
    const double mean = MeanFromTrue(trueAnomaly_, eccentricity_) / kTwoPi;
    ++next_;
    if (mean < lastMean_) ++turns_;
    lastMean_ = mean;
    return (mean - startMean_ + turns_) * period_;
}

bool AreOrbitsShown(const MainControls& main) { return ShownChainsOf(main).Any(); }

void DrawOrbits(const SceneContext& scene, const SatRecord& satellite) {
    const Application& app = scene.App;
    const ShownChains shown = ShownChainsOf(app.Main);
    if (!shown.Any()) return;
    const double now = app.Data.SimTime;
    const int stepsPerTurn = app.Run.FinePass ? kOrbitStepsFine : kOrbitSteps;
    SatellitePath path(app, satellite);
    OrbitSteps steps(path.Ellipse(), path.MeanAnomaly(), stepsPerTurn);
    if (!steps.IsOrbit()) return;

    DrawSurface& surface = scene.Surface;
    surface.DrawWidth = app.Main.CThinLines.Value ? kThinOrbitWidth : kOrbitWidth;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;

    const double wanted = scene.View().OrbitTurns / kSixthsOfATurn * stepsPerTurn;
    const int count = static_cast<int>(std::floor(wanted + kStepRounding));
    std::optional<ChainPoint> last;
    for (int i = 0; i <= count; ++i) {
        const double days = steps.Next();
        const WorldMotion motion = path.At(days, steps.TrueAnomaly());
        if (!HasPlace(motion.position)) {
            last.reset();
            continue;
        }
        const ChainPoint point = PointOf(app.Data, shown, motion, now + days);
        surface.ForeColor = LightColor(app, motion.position);
        if (last) DrawStep(scene, shown, *last, point);
        last = point;
    }
}

}  // namespace glintara
