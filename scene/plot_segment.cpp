#include "scene/plot_segment.h"

#include <cmath>

#include "orbit/astro/constants.h"

namespace glintara {
namespace {

/// What is done with a segment that is seen.
using Output = void (*)(const SceneContext& scene, const ScenePoint& a, const ScenePoint& b);

void AddToPolygon(const SceneContext& scene, const ScenePoint& a, const ScenePoint& b) {
    PolygonVertex(scene, a);
    PolygonVertex(scene, b);
}

ScenePoint OnScreen(const Vector3& view) { return {view.y, view.z}; }

void OutputOnMap(const SceneContext& scene, const ScenePoint& a, const ScenePoint& b, Output output) {
    // A latitude that has been shifted past the end of the range comes back on the other side: no line joins the two.
    if (std::fabs(a.y - b.y) > kPi) return;
    if (!CrossesSeam(a, b)) {
        output(scene, a, b);
        return;
    }
    const SeamCrossing seam = SplitAtSeam(a, b);
    output(scene, a, seam.leaves);
    output(scene, seam.returns, b);
}

void OutputOnGlobe(const SceneContext& scene, const Vector3& a, const Vector3& b, Output output) {
    const ViewState& view = scene.View();
    if (IsHidden(view, a) || IsHidden(view, b)) return;
    output(scene, OnScreen(a), OnScreen(b));
}

void OutputPlaces(const SceneContext& scene, const LatLonRadius& from, const LatLonRadius& to, Output output) {
    const ViewState& view = scene.View();
    if (scene.IsFlatMap()) {
        OutputOnMap(scene, FlatMapPosition(view, {from.lat, from.lon}), FlatMapPosition(view, {to.lat, to.lon}),
                    output);
    } else {
        OutputOnGlobe(scene, LatLonRadiusToView(view, from), LatLonRadiusToView(view, to), output);
    }
}

LatLonRadius OnUnitSphere(const LatLon& place) { return {place.lat, place.lon, 1}; }

bool IsSunlit(const SceneContext& scene, const LatLonRadius& place) {
    return Dot(LLRToSameXYZ(place.lat, place.lon, 1), scene.App.Data.SunDir) > 0;
}

/// The place on view axes, or on the flat map as (0, X, Y), as the sky's mapping takes it.
Vector3 SkyOnView(const SceneContext& scene, const LatLonRadius& place) {
    const ViewState& view = scene.View();
    if (!scene.IsFlatMap()) return LatLonRadiusToView(view, place);
    const ScenePoint point = FlatMapPosition(view, {place.lat, place.lon});
    return {0, point.x, point.y};
}

Vector3 SkyOnView(const SceneContext& scene, const Vector3& point) {
    if (!scene.IsFlatMap()) return RotateWorldToView(scene.View(), point);
    return SkyOnView(scene, XYZToLatLon(point));
}

void PlotFlattened(const SceneContext& scene, Vector3 from, Vector3 to) {
    if ((from.x < 0 || to.x < 0) && !scene.App.Main.CDrawBackStars.Value) return;
    if (scene.FlattenSky != nullptr) {
        scene.FlattenSky(scene, from);
        scene.FlattenSky(scene, to);
    }
    PlotMappedSkySegment(scene, from, to);
}

}  // namespace

void PlotSegment(const SceneContext& scene, const LatLon& from, const LatLon& to) {
    PlotSegment(scene, OnUnitSphere(from), OnUnitSphere(to));
}

void PlotSegment(const SceneContext& scene, const LatLonRadius& from, const LatLonRadius& to) {
    const Color before = scene.Surface.ForeColor;
    if (scene.BlackInSunlight && (IsSunlit(scene, from) || IsSunlit(scene, to))) scene.Surface.ForeColor = kBlack;
    OutputPlaces(scene, from, to, SceneLine);
    scene.Surface.ForeColor = before;
}

void PlotSegment(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    if (scene.IsFlatMap()) {
        OutputPlaces(scene, XYZToLatLon(from), XYZToLatLon(to), SceneLine);
        return;
    }
    const ViewState& view = scene.View();
    OutputOnGlobe(scene, RotateWorldToView(view, from), RotateWorldToView(view, to), SceneLine);
}

void PlotSkySegment(const SceneContext& scene, const LatLonRadius& from, const LatLonRadius& to) {
    PlotFlattened(scene, SkyOnView(scene, from), SkyOnView(scene, to));
}

void PlotSkySegment(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    PlotFlattened(scene, SkyOnView(scene, from), SkyOnView(scene, to));
}

void PlotMappedSkySegment(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    if (scene.IsFlatMap()) {
        OutputOnMap(scene, OnScreen(from), OnScreen(to), SceneLine);
    } else if (scene.App.Main.CSkyOnly.Value) {
        SceneLine(scene, OnScreen(from), OnScreen(to));
    } else {
        OutputOnGlobe(scene, from, to, SceneLine);
    }
}

void PlotPolygonSegment(const SceneContext& scene, const LatLon& from, const LatLon& to) {
    OutputPlaces(scene, OnUnitSphere(from), OnUnitSphere(to), AddToPolygon);
}

}  // namespace glintara
