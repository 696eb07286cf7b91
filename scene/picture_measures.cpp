#include "scene/picture_measures.h"

#include <algorithm>
#include <cmath>

#include "engine/astro/constants.h"

namespace glintara {
namespace {

/// How far a chord may stand off its arc, pixels.
constexpr double kChordError = 0.1;

}  // namespace

double ScreenPixelsPerUnit(const SceneContext& scene) {
    return GetWindowScale(scene.View(), scene.Surface).scaleX / kTwipsPerScreenPixel;
}

double FineStep(const SceneContext& scene, double coarse) {
    // The height of an arc of angle a over its chord is a^2 / 8 radii.
    const double fine = std::sqrt(8 * kChordError / ScreenPixelsPerUnit(scene));
    return std::clamp(fine, kLeastStep, coarse);
}

MapFrame FlatMapFrame(const ViewState& view) {
    const ScenePoint leftBottom = FlatMapFramePoint(view, -1, -1);
    const ScenePoint rightTop = FlatMapFramePoint(view, 1, 1);
    return {leftBottom.x, rightTop.x, leftBottom.y, FlatMapFramePoint(view, 0, 0).y, rightTop.y};
}

}  // namespace glintara
