#include "scene/sky_pointer.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "engine/astro/angle_text.h"
#include "engine/astro/trigonometry.h"
#include "orbit/observations.h"
#include "scene/marks.h"
#include "scene/mouse_place.h"
#include "scene/mouse_text.h"
#include "scene/star_chart.h"

namespace glintara {

namespace {

/// Corners of a circle that is drawn by lines.
constexpr int kSeamCircleCorners = 100;

Equatorial PlaceOf(const Vector3& direction) {
    const LatLonRadius place = XYZToLatLon(direction);
    return {place.lat, WrapTwoPi(place.lon)};
}

double Held(double value, double least, double most) { return value > least ? std::min(value, most) : least; }

void ShowReadouts(Application& app) {
    const SkyPointerState& pointer = app.Run.SkyPointer;
    MainControls& main = app.Main;
    main.LSkyMousePlace.Caption =
        pointer.HasPlace ? "DEC: " + DegreesToText(pointer.Place.dec) + "  RA: " + HoursToText(pointer.Place.ra)
                         : std::string();
    main.LSkyMouseFOV.Caption =
        "FOV: " + DegreesToText(pointer.FieldOfView) + " (deg " + FourDecimals(pointer.FieldOfView / kDegToRad) + ")";
    main.LSkyMouseTAcc.Caption = "TACC: " + FourDecimals(pointer.TimeUncertainty) + " s";
}

void UsePointerPen(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    surface.FillStyle = FillPattern::Transparent;
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawWidth = 1;
}

double SpotRadius(const SceneContext& scene) { return kPointerSpot / scene.View().ZoomFactor; }

/// A circle of the flat map that reaches over its seam: what lies beyond is drawn on the other side. The scene places
/// of the map are moved by `shift`.
void DrawSeamCircle(const SceneContext& scene, const ScenePoint& center, double radius, const ScenePoint& shift) {
    const Color before = scene.Surface.ForeColor;
    scene.Surface.ForeColor = kPointerColor;
    const auto line = [&](const ScenePoint& a, const ScenePoint& b) {
        SceneLine(scene, {a.x + shift.x, a.y + shift.y}, {b.x + shift.x, b.y + shift.y});
    };
    const auto corner = [&](int i) {
        const double around = kTwoPi * (i % kSeamCircleCorners) / kSeamCircleCorners;
        return ScenePoint{WrapTwoPi(center.x + radius * std::cos(around) + kPi) - kPi,
                          center.y + radius * std::sin(around)};
    };
    for (int i = 0; i < kSeamCircleCorners; ++i) {
        const ScenePoint a = corner(i);
        const ScenePoint b = corner(i + 1);
        if (!CrossesSeam(a, b)) {
            line(a, b);
            continue;
        }
        const SeamCrossing seam = SplitAtSeam(a, b);
        line(a, seam.leaves);
        line(seam.returns, b);
    }
    scene.Surface.ForeColor = before;
}

/// Something infinitely far: the observer's place does not count.
double AltitudeOf(const SceneContext& scene, const LatLon& direction) {
    const Vector3 up = HorizonAxesAt(scene.App.Data.Site).up;
    return ArcSin(Dot(up, LLRToSameXYZ(direction.lat, direction.lon, 1)));
}

}  // namespace

void ToggleSkyMouse(Application& app) {
    Observed<bool>& shown = app.Main.FSkyMouse.Visible;
    shown = !shown;
    RefreshSkyPointer(app);
    app.Windows.UpdateGraphicsLevel2();
}

void EnableSkyMouse(Application& app) {
    if (!app.Main.FSkyMouse.Visible) ToggleSkyMouse(app);
}

void DisableSkyMouse(Application& app) {
    if (app.Main.FSkyMouse.Visible) ToggleSkyMouse(app);
}

void SetPointerField(Application& app, double fieldOfView) {
    app.Run.SkyPointer.FieldOfView = Held(fieldOfView, kLeastField, kMostField);
    ShowReadouts(app);
}

void SetPointerTime(Application& app, double timeUncertainty) {
    app.Run.SkyPointer.TimeUncertainty = Held(timeUncertainty, kLeastTimeUncertainty, kMostTimeUncertainty);
    ShowReadouts(app);
}

void RefreshSkyPointer(Application& app) {
    if (!app.Main.FSkyMouse.Visible) return;
    const std::optional<ScenePoint> mouse = MouseOnPicture(app);
    const std::optional<Vector3> direction = mouse ? SkyAt(app, *mouse) : std::optional<Vector3>();
    if (direction) {
        SkyPointerState& pointer = app.Run.SkyPointer;
        pointer.HasPlace = true;
        pointer.Instant = app.Data.SimFields();
        pointer.Place = PlaceOf(*direction);
        pointer.HalfField = pointer.FieldOfView / 2;
    }
    ShowReadouts(app);
}

bool DefinePointUnderMouse(Application& app) {
    const std::optional<ScenePoint> mouse = MouseOnPicture(app);
    const std::optional<Vector3> direction = mouse ? SkyAt(app, *mouse) : std::optional<Vector3>();
    if (!direction) return false;
    SkyPointerState& pointer = app.Run.SkyPointer;
    pointer.HasMark = true;
    pointer.Mark = *direction;
    app.Main.LCommandOutput.Caption =
        observations::DefineIODPoint(app, PlaceOf(*direction), pointer.TimeUncertainty, pointer.FieldOfView);
    app.Windows.UpdateGraphicsLevel2();
    return true;
}

void DrawSkyPointer(const SceneContext& scene) {
    if (!scene.App.Main.CDrawSky.Value || !scene.App.Main.FSkyMouse.Visible) return;
    const SkyPointerState& pointer = scene.App.Run.SkyPointer;
    if (pointer.HasMark) DrawSkyLPointer(scene, TurnedAboutPole(pointer.Mark, -GreenwichOfPicture(scene.App.Data)));
    if (const std::optional<ScenePoint> mouse = MouseOnPicture(scene.App)) ShowSkyPointer(scene, *mouse);
}

void ShowSkyPointer(const SceneContext& scene, const ScenePoint& place) {
    const std::optional<Vector3> direction = SkyAt(scene.App, place);
    if (!direction) return;
    const ScenePoint earth = EarthCentre(scene.View());
    UsePointerPen(scene);
    SceneCircle(scene, {place.x - earth.x, place.y - earth.y}, SpotRadius(scene), kPointerColor);
    const LatLonRadius world = XYZToLatLon(TurnedAboutPole(*direction, -GreenwichOfPicture(scene.App.Data)));
    DrawSkyCircle(scene, {world.lat, world.lon}, SkyCircleRadius(scene, scene.App.Run.SkyPointer.FieldOfView));
}

void DrawSkyCircle(const SceneContext& scene, const LatLon& center, double radius) {
    const LatLonRadius direction{center.lat, center.lon, 1};
    if (!IsSkyShown(scene, direction, AltitudeOf(scene, center))) return;
    const ViewState& view = scene.View();
    Vector3 seen;
    if (scene.IsFlatMap()) {
        const ScenePoint point = FlatMapPosition(view, center);
        seen = {0, point.x, point.y};
    } else {
        seen = LatLonRadiusToView(view, {center.lat, center.lon, view.SkyScale});
        FlattenSky(scene, seen);
    }
    const ScenePoint sky = SkyCentre(scene.App);
    const ScenePoint earth = EarthCentre(view);
    UsePointerPen(scene);
    const ScenePoint shift{sky.x - earth.x, sky.y - earth.y};
    const bool overSeam = scene.IsFlatMap() && std::fabs(seen.y) + radius > kPi && std::isfinite(radius);
    if (overSeam)
        DrawSeamCircle(scene, {seen.y, seen.z}, radius, shift);
    else
        SceneCircle(scene, {seen.y + shift.x, seen.z + shift.y}, radius, kPointerColor);
}

void DrawSkyLPointer(const SceneContext& scene, const Vector3& position) {
    const LatLonRadius place = XYZToLatLon(position);
    const LatLon center{place.lat, place.lon};
    DrawSkyCircle(scene, center, SpotRadius(scene));
    DrawSkyCircle(scene, center, std::min(kMarkCircle / kPi * scene.View().SkyScale, kMostMarkCircle));
}

}  // namespace glintara
