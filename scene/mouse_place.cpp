#include "scene/mouse_place.h"

#include <algorithm>
#include <cmath>

#include "engine/astro/geodesy.h"
#include "engine/astro/sidereal.h"
#include "scene/star_chart.h"
#include "scene/sundial.h"

namespace glintara {

namespace {

/// The observer's place on the disc of a shifted Earth.
constexpr double kTopOfEarth = 1;

std::optional<Vector3> SkyOfFlatMap(const Application& app, const ScenePoint& point, double greenwich) {
    const std::optional<LatLon> below = EarthPlaceAt(app.Data.View, true, point);
    if (!below) return std::nullopt;
    const Vector3 direction = LLRToSameXYZ(below->lat, below->lon + greenwich, 1);
    if (!SkySightOf(app, greenwich).Shows(direction, 0)) return std::nullopt;
    return direction;
}

/// Directions of date, unlike places on the Earth, do not turn with it.
Vector3 SkyOfView(const ViewState& view, const Vector3& point, double greenwich) {
    return Normalized(TurnedAboutPole(RotateViewToWorld(view, point), greenwich));
}

}  // namespace

std::optional<ScenePoint> MouseOnPicture(const Application& app) {
    const RunState& run = app.Run;
    if (!(run.LastPictureWidth > 0 && run.LastPictureHeight > 0)) return std::nullopt;
    const ViewState& view = app.Data.View;
    const WindowScale window = GetWindowScale(view, run.LastPictureWidth, run.LastPictureHeight);
    return ScenePoint{SceneFromBoxX(window, view, run.LastMouseX) + view.PanX,
                      SceneFromBoxY(window, view, run.LastMouseY) + view.PanY};
}

ScenePoint EarthCentre(const ViewState& view) { return {view.PanX, view.PanY}; }

ScenePoint SkyCentre(const Application& app) {
    const ViewState& view = app.Data.View;
    const bool shifted = view.PanX != 0 || view.PanY != 0;
    const bool onTop = shifted && !app.Main.CStarsOnGlobe.Value;
    return {view.PanX, view.PanY + (onTop ? kTopOfEarth : 0)};
}

bool IsBehindEarth(const Application& app, const Vector3& view) {
    if (app.Main.CSkyOnly.Value || app.Main.CPlaniSphere.Value || !(view.x < 0)) return false;
    const ScenePoint earth = EarthCentre(app.Data.View);
    const ScenePoint sky = SkyCentre(app);
    return std::hypot(view.y + sky.x - earth.x, view.z + sky.y - earth.y) < 1;
}

std::optional<LatLon> EarthAt(const Application& app, const ScenePoint& place) {
    if (app.Main.CSkyOnly.Value || ShowsSundial(app.Run)) return std::nullopt;
    const ScenePoint earth = EarthCentre(app.Data.View);
    return EarthPlaceAt(app.Data.View, app.Main.CPlaniSphere.Value, {place.x - earth.x, place.y - earth.y});
}

std::optional<Vector3> SkyAt(const Application& app, const ScenePoint& place) {
    if (!app.Main.CDrawSky.Value || ShowsSundial(app.Run)) return std::nullopt;
    const ViewState& view = app.Data.View;
    const double greenwich = GreenwichOfPicture(app.Data);
    const ScenePoint centre = SkyCentre(app);
    const ScenePoint point{place.x - centre.x, place.y - centre.y};
    if (app.Main.CPlaniSphere.Value) return SkyOfFlatMap(app, point, greenwich);

    const SkyProjection sky = SkyProjectionOf(app);
    const SkySight sight = SkySightOf(app, greenwich);
    const double r = std::hypot(point.x, point.y);
    if (!(r <= (sky.flat ? 2 : 1) * sky.radius)) return std::nullopt;
    Vector3 seen = DeFlattenSky(sky, {std::sqrt(std::max(sky.radius * sky.radius - r * r, 0.0)), point.x, point.y});
    const auto shown = [&](const Vector3& at) -> std::optional<Vector3> {
        const Vector3 direction = SkyOfView(view, at, greenwich);
        // Where a star at this place would be drawn tells what covers it.
        const bool covered = IsBehindEarth(app, {at.x, point.x, point.y});
        if (covered || !sight.Shows(direction, at.x)) return std::nullopt;
        return direction;
    };
    // Of the two halves of a sphere that lie one behind the other, the near one comes first.
    const std::optional<Vector3> near = shown(seen);
    if (near || sky.flat) return near;
    seen.x = -seen.x;
    return shown(seen);
}

double GreenwichOfPicture(const CommonData& data) { return SiderealFromDate(data.SimFields()); }

}  // namespace glintara
