#include "scene/engine_target.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace glintara {
namespace {

DrawSurface& SurfaceOf(void* self) { return *static_cast<DrawSurface*>(self); }

}  // namespace

GlintDrawTarget EngineTarget(DrawSurface& surface) {
    return {.self = &surface,
            .fill =
                [](void* self, const double* xy, const std::int32_t* contourEnds, std::int32_t contours) {
                    const std::span ends(contourEnds, static_cast<std::size_t>(contours));
                    if (ends.empty()) return;
                    SurfaceOf(self).PolyPolygon({xy, 2 * static_cast<std::size_t>(ends.back())}, ends);
                },
            .line =
                [](void* self, const double* xy, std::int32_t points) {
                    SurfaceOf(self).Polyline({xy, 2 * static_cast<std::size_t>(points)});
                },
            .dot = [](void* self, double x, double y, double radius, std::uint32_t color,
                      double weight) { SurfaceOf(self).StarDot(x, y, radius, color, weight); }};
}

}  // namespace glintara
