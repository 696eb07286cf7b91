#include "scene/constellations.h"

#include <cmath>
#include <cstddef>
#include <optional>

#include "scene/picture_measures.h"
#include "scene/plot_segment.h"
#include "scene/star_figures.h"
#include "scene/stars.h"

namespace glintara {
namespace {

/// A figure spans less than a quarter of the sky. What is longer on a chart goes round the place opposite of its
/// centre, which the chart tears apart.
bool IsTorn(const SceneContext& scene, double length) {
    return SkyProjectionOf(scene).flat && length > scene.View().SkyScale;
}

void PlotFigureLine(const SceneContext& scene, const Vector3& from, const Vector3& to) {
    const double length = std::hypot(to.y - from.y, to.z - from.z);
    const double gap = kFigureGap / ScreenPixelsPerUnit(scene);
    // On the flat map a long one goes through the seam the other way round, and has its ends where the stars are.
    const bool isShort = length < 1;
    if (IsTorn(scene, length) || length <= 2 * gap) return;
    const double part = scene.IsFlatMap() && !isShort ? 0 : gap / length;
    PlotMappedSkySegment(scene, from + part * (to - from), to - part * (to - from));
}

}  // namespace

void PlotConstallations(const SceneContext& scene) {
    const StarTables& stars = scene.App.Data.Stars;
    DrawSurface& surface = scene.Surface;
    surface.ForeColor = kConstellationColor;
    surface.DrawWidth = 1;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    const SkyCamera camera(scene);
    const auto mapped = [&](std::size_t entry) {
        return camera.Mapped(stars.StarDirections[static_cast<std::size_t>(stars.Constellations[entry].Star)]);
    };
    for (std::size_t i = 2; i < stars.Constellations.size(); ++i) {
        if (!JoinsPrevious(stars, i)) continue;
        const std::optional<Vector3> from = mapped(i - 1);
        const std::optional<Vector3> to = from ? mapped(i) : std::nullopt;
        if (to) PlotFigureLine(scene, *from, *to);
    }
}

}  // namespace glintara
