#include "scene/plot_segment.h"

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
    if (!CrossesSeam(a, b)) {
        output(scene, a, b);
        return;
    }
    const SeamCrossing seam = SplitAtSeam(a, b);
    output(scene, a, seam.leaves);
    output(scene, seam.returns, b);
}

ScenePoint MapPosition(const ViewState& view, const Vector3& world) {
    const LatLonRadius place = XYZToLatLon(world);
    return FlatMapPosition(view, {place.lat, place.lon});
}

/// A point of a chain on view axes, looked at once for both segments that meet in it.
struct ViewPoint {
    ViewPoint(const ViewState& view, const Vector3& world)
        : place(RotateWorldToView(view, world)), hidden(IsHidden(view, place)) {}

    Vector3 place;
    bool hidden = false;
};

/// Where the line from a seen point to a hidden one passes behind the limb, on view axes, a little before it.
Vector3 LastSeen(const ViewState& view, const Vector3& seen, const Vector3& hidden) {
    // Halved so often, a step of a radius is far below a pixel at any zoom.
    constexpr int kHalvings = 24;
    double last = 0;
    double part = 0.5;
    for (int i = 0; i < kHalvings; ++i) {
        if (!IsHidden(view, seen + (last + part) * (hidden - seen))) last += part;
        part /= 2;
    }
    return seen + last * (hidden - seen);
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

void PlotChain(const SceneContext& scene, std::span<const Vector3> points) {
    if (points.empty()) return;
    const ViewState& view = scene.View();
    if (scene.IsFlatMap()) {
        ScenePoint last = MapPosition(view, points.front());
        for (const Vector3& point : points.subspan(1)) {
            const ScenePoint next = MapPosition(view, point);
            OutputOnMap(scene, last, next, SceneLine);
            last = next;
        }
        return;
    }
    ViewPoint last(view, points.front());
    for (const Vector3& point : points.subspan(1)) {
        const ViewPoint next(view, point);
        if (!last.hidden && !next.hidden) SceneLine(scene, OnScreen(last.place), OnScreen(next.place));
        last = next;
    }
}

void PlotUpToLimb(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    if (scene.IsFlatMap()) {
        PlotSegment(scene, from, to);
        return;
    }
    const ViewState& view = scene.View();
    ViewPoint a(view, from);
    ViewPoint b(view, to);
    if (a.hidden && b.hidden) return;
    if (a.hidden) a.place = LastSeen(view, b.place, a.place);
    if (b.hidden) b.place = LastSeen(view, a.place, b.place);
    SceneLine(scene, OnScreen(a.place), OnScreen(b.place));
}

void PlotSkySegment(const SceneContext& scene, const LatLonRadius& from, const LatLonRadius& to) {
    PlotFlattened(scene, SkyOnView(scene, from), SkyOnView(scene, to));
}

void PlotSkySegment(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    PlotFlattened(scene, SkyOnView(scene, from), SkyOnView(scene, to));
}

void PlotSkyChain(const SceneContext& scene, std::span<const Vector3> points) {
    if (points.empty()) return;
    Vector3 last = SkyOnView(scene, points.front());
    for (const Vector3& point : points.subspan(1)) {
        const Vector3 next = SkyOnView(scene, point);
        PlotFlattened(scene, last, next);
        last = next;
    }
}

void PlotMappedSkySegment(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    if (scene.IsFlatMap())
        OutputOnMap(scene, OnScreen(from), OnScreen(to), SceneLine);
    else if (scene.App.Main.CSkyOnly.Value)
        SceneLine(scene, OnScreen(from), OnScreen(to));
    else
        OutputOnGlobe(scene, from, to, SceneLine);
}

void PlotPolygonSegment(const SceneContext& scene, const LatLon& from, const LatLon& to) {
    OutputPlaces(scene, OnUnitSphere(from), OnUnitSphere(to), AddToPolygon);
}

}  // namespace glintara
