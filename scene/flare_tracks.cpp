#include "scene/flare_tracks.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "engine/astro/number_text.h"
#include "flare/footprint.h"
#include "flare/tracks.h"
#include "scene/flare_marks.h"
#include "scene/marks.h"
#include "scene/picture_measures.h"
#include "scene/plot_segment.h"

namespace glintara {
namespace {

constexpr double kTrackLineWidth = 1;
constexpr double kRingWidth = 1;

/// Longest piece of the line between two points, radians: longer ones would leave the ground.
constexpr double kLongestPiece = 0.03;

constexpr int kPlaceDecimals = 4;

double DotRadius(const SceneContext& scene) {
    const double pixel = 1 / ScreenPixelsPerUnit(scene);
    return std::clamp(kTrackDotRadius, kLeastTrackDot * pixel, kMostTrackDot * pixel);
}

/// The line over the ground from one point to the next.
void Join(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    const double angle = std::atan2(Length(CrossProduct(from, to)), Dot(from, to));
    if (!(angle <= kLongestTrackStep)) return;
    const int pieces = static_cast<int>(std::ceil(angle / kLongestPiece));
    Vector3 last = from;
    for (int i = 1; i <= pieces; ++i) {
        const double part = static_cast<double>(i) / pieces;
        const Vector3 next = Normalized((1 - part) * from + part * to);
        PlotUpToLimb(scene, last, next);
        last = next;
    }
}

void TellFirstPoint(Application& app, const TrackPoint& point) {
    const Geodetic place = GroundPlaceOf(point);
    app.Main.LCommandOutput.Caption = CutNumberText(place.lat / kDegToRad, kPlaceDecimals) + "   " +
                                      CutNumberText(place.lon / kDegToRad, kPlaceDecimals);
}

/// Whether the outline can be seen: it is large enough, and not all of it on one side of the picture.
bool IsWorthDrawing(const SceneContext& scene, const FootprintRing& ring) {
    const ViewState& view = scene.View();
    const DrawSurface& surface = scene.Surface;
    const WindowScale window = GetWindowScale(view, surface);
    constexpr double kFar = std::numeric_limits<double>::infinity();
    BoxArea area{kFar, kFar, -kFar, -kFar};
    for (const std::optional<Vector3>& point : ring) {
        if (!point) continue;
        const std::optional<ScenePoint> place = SeenOnEarth(scene, *point);
        if (!place) continue;
        const double x = BoxFromSceneX(window, view, place->x);
        const double y = BoxFromSceneY(window, view, place->y);
        area = {std::min(area.left, x), std::min(area.top, y), std::max(area.right, x), std::max(area.bottom, y)};
    }
    const double extent = std::max(area.right - area.left, area.bottom - area.top);
    return extent >= kLeastRing * kTwipsPerScreenPixel && area.right >= 0 && area.left <= surface.ScaleWidth &&
           area.bottom >= 0 && area.top <= surface.ScaleHeight;
}

void DrawRing(const SceneContext& scene, const FootprintRing& ring) {
    for (std::size_t i = 1; i < ring.size(); ++i)
        if (ring[i - 1] && ring[i]) PlotUpToLimb(scene, *ring[i - 1], *ring[i]);
}

}  // namespace

void DrawFlareTrack(const SceneContext& scene, const SatRecord& satellite) {
    Application& app = scene.App;
    FlareTrack track(app.Data, satellite, TrackQuestOf(app));
    if (!track.Exists()) return;
    DrawSurface& surface = scene.Surface;
    const double radius = DotRadius(scene);
    surface.DrawMode = MixMode::Copy;
    surface.DrawStyle = PenPattern::Solid;
    std::optional<Vector3> last;
    WalkTrack(
        track,
        [&](std::int32_t step, const TrackPoint& point) {
            if (step == 0) {
                TellFirstPoint(app, point);
                last.reset();
            }
            surface.ForeColor = kTrackLineColor;
            surface.DrawWidth = kTrackLineWidth;
            if (last) Join(scene, *last, point.centre);
            if (const std::optional<ScenePoint> place = SeenOnEarth(scene, point.centre))
                DrawDisc(scene, *place, radius, kTrackColor);
            last = point.centre;
        },
        [&](std::int32_t /*step*/, int /*mirror*/) { last.reset(); });
}

void DrawFootprints(const SceneContext& scene, const SatRecord& satellite, const WorldMotion& motion,
                    const LightPlaces& lights, const LiveFlareQuest& quest) {
    if (quest.transit || !HasFootprints(satellite)) return;
    const std::optional<BodyFrame> frame = LiveFlareFrame(scene.App, satellite, motion);
    if (!frame) return;
    const double unit = scene.App.Data.Site.SiteRadius;
    scene.Surface.DrawMode = MixMode::Copy;
    scene.Surface.DrawStyle = PenPattern::Solid;
    scene.Surface.DrawWidth = kRingWidth;
    for (const bool moon : {false, true}) {
        if (moon && !quest.moon) break;
        const Vector3& source = moon ? lights.moon : lights.sun;
        if (!IsLit(motion.position, source, quest)) continue;
        scene.Surface.ForeColor = moon ? kMoonFlareColor : kSunFlareColor;
        const double radius = (moon ? kMoonDiscRadius : kSunDiscRadius) / unit;
        ForEachNormal(satellite.Surface, *frame, quest, [&](int index, const Vector3& normal) {
            const double scatter = satellite.Surface.Mirror(index).ScatterFactor;
            const FootprintRing ring = FootprintOf(motion.position, source, radius, scatter, normal);
            if (IsWorthDrawing(scene, ring)) DrawRing(scene, ring);
        });
    }
}

}  // namespace glintara
