#include "scene/city_marks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "scene/marks.h"
#include "scene/picture_measures.h"

namespace glintara {
namespace {

/// Names that ask for room: more than the board writes, as some find none.
constexpr std::size_t kMostWishes = 4 * kMostNames;

Vector3 PositionOf(const SiteRecord& city) { return {city.X, city.Y, city.Z}; }

double MarkRadius(const SceneContext& scene) {
    const double pixel = 1 / ScreenPixelsPerUnit(scene);
    return std::clamp(kCityMarkRadius, kLeastCityMark * pixel, kMostCityMark * pixel);
}

/// Calls `take(city, place, x, y)` for each city whose mark is on the picture: `place` in scene units, `x` and `y` in
/// twips.
template <class Take>
void ForEachMarked(const SceneContext& scene, Take take) {
    const CityTables& tables = scene.App.Data.Cities;
    const ViewState& view = scene.View();
    const DrawSurface& surface = scene.Surface;
    const WindowScale window = GetWindowScale(view, surface);
    const double least = LeastMarkedPopulation(scene.App.Data);
    for (const std::int32_t index : tables.SelectedCities) {
        const SiteRecord& city = tables.Site(index);
        if (!(city.Population >= least)) continue;
        const std::optional<ScenePoint> place = SeenOnEarth(scene, PositionOf(city));
        if (!place) continue;
        const double x = BoxFromSceneX(window, view, place->x);
        const double y = BoxFromSceneY(window, view, place->y);
        if (x >= 0 && x <= surface.ScaleWidth && y >= 0 && y <= surface.ScaleHeight) take(city, *place, x, y);
    }
}

}  // namespace

double LeastMarkedPopulation(const CommonData& data) {
    return data.Cities.ShowAllCities ? -1 : kMarkedPopulation / data.View.ZoomFactor;
}

void DrawCityMarks(const SceneContext& scene) {
    const double radius = MarkRadius(scene);
    ForEachMarked(scene, [&](const SiteRecord&, const ScenePoint& place, double, double) {
        DrawDisc(scene, place, radius, kCityColor);
    });
}

void DrawCityNames(const SceneContext& scene, NameBoard& names) {
    std::array<NameWish, kMostWishes> wishes;
    std::size_t count = 0;
    const double gap = MarkRadius(scene) * GetWindowScale(scene.View(), scene.Surface).scaleX;
    const auto larger = [](const NameWish& a, const NameWish& b) { return a.range < b.range; };
    ForEachMarked(scene, [&](const SiteRecord& city, const ScenePoint&, double x, double y) {
        NameWish wish;
        wish.x = x;
        wish.y = y;
        wish.gap = gap;
        wish.range = -city.Population;
        wish.color = kCityNameColor;
        wish.name = city.CityName;
        // A heap with the smallest of the cities on top, which goes when a larger one comes.
        if (count < wishes.size()) {
            wishes[count++] = wish;
            std::push_heap(wishes.begin(), wishes.begin() + static_cast<std::ptrdiff_t>(count), larger);
        } else if (larger(wish, wishes.front())) {
            std::ranges::pop_heap(wishes, larger);
            wishes.back() = wish;
            std::ranges::push_heap(wishes, larger);
        }
    });
    for (std::size_t i = 0; i < count; ++i) names.Add(wishes[i]);
    names.Draw(scene, kCityNameSize);
}

}  // namespace glintara
