#include "scene/stars.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/star_color.h"
#include "engine/astro/star_dot.h"
#include "engine/astro/trigonometry.h"
#include "orbit/sun_and_moon.h"
#include "scene/engine_target.h"
#include "scene/globe.h"
#include "scene/marks.h"
#include "scene/picture_measures.h"
#include "scene/star_list.h"
#include "scene/star_places.h"

namespace glintara {
namespace {

/// Names are written for stars so much brighter than those that crowd the picture, magnitudes. Designations mean little
/// to most, so they wait until the picture shows a small part of the sky: pixels of a screen for a quarter of it.
constexpr double kNamedAboveCrowd = 3;
constexpr double kDesignatedAboveCrowd = 4;
constexpr double kDesignationPixels = 3000;

/// While the sky is dragged, stars so much fainter than those that crowd the picture wait, magnitudes: each is a breath
/// of light, but there are tens of thousands of them.
constexpr double kCoarseBeyondCrowd = 2;

/// From the middle of a star to its name, pixels more than the radius of its dot.
constexpr double kStarNameGap = 1;

/// The letters of north, east, south and west stand so high over the horizon; width of one, pixels.
constexpr double kQuarterRise = 12;
constexpr double kQuarterWidth = 7.2;
constexpr Color kQuarterColor = 0xD9D1C9;

double PixelsOfQuarterSky(const SceneContext& scene) {
    const double pixels = ScreenPixelsPerUnit(scene);
    return scene.IsFlatMap() ? pixels * kPi / 2 : pixels * scene.View().SkyScale;
}

StarDots DotsOf(const SceneContext& scene, const StarLimits& limits) {
    const double ratio = kTwipsPerScreenPixel / scene.Surface.TwipsPerPixelX;
    return {std::min(limits.Shown(), CrowdedMagnitude(PixelsOfQuarterSky(scene) * ratio)), limits.StarSize};
}

/// What is drawn now, of the stars that are shown: all but while a drag is under way.
StarLimits LimitsNow(const SceneContext& scene) {
    const CommonData& data = scene.App.Data;
    StarLimits limits = StarLimitsOf(data.View, scene.App.Main, SunElevation(data));
    const double coarse = CrowdedMagnitude(PixelsOfQuarterSky(scene)) + kCoarseBeyondCrowd;
    if (scene.App.Run.DragActive) limits.MaxStarMag = std::min(limits.MaxStarMag, coarse);
    return limits;
}

std::size_t IndexOf(std::int32_t star) { return static_cast<std::size_t>(star); }

/// The name of a star in full; the engine's record has room for its beginning only.
std::string_view NameOf(const StarTables& stars, std::size_t star) {
    const std::string& proper = stars.StarCatalogue[star].ProperName;
    if (proper.size() > 1) return proper;
    const StarPlotRecord& record = stars.StarPlotTable[star];
    return {record.Name.data(), static_cast<std::size_t>(std::ranges::find(record.Name, '\0') - record.Name.begin())};
}

ScenePoint OnBox(const SceneContext& scene, const ScenePoint& place) {
    const ViewState& view = scene.View();
    const WindowScale window = GetWindowScale(view, scene.Surface);
    return {BoxFromSceneX(window, view, place.x), BoxFromSceneY(window, view, place.y)};
}

void DrawSkyCircle(const SceneContext& scene) {
    DrawSurface& surface = scene.Surface;
    surface.DrawWidth = 1;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    surface.FillStyle = FillPattern::Transparent;
    if (!scene.IsFlatMap()) {
        SceneCircle(scene, {0, 0}, scene.View().SkyScale, kSkyCircleColor);
        return;
    }
    const MapFrame frame = FlatMapFrame(scene.View());
    surface.ForeColor = kSkyCircleColor;
    SceneLine(scene, {frame.left, frame.bottom}, {frame.right, frame.bottom});
    SceneLine(scene, {frame.right, frame.bottom}, {frame.right, frame.top});
    SceneLine(scene, {frame.right, frame.top}, {frame.left, frame.top});
    SceneLine(scene, {frame.left, frame.top}, {frame.left, frame.bottom});
}

void DrawStarsByEngine(const SceneContext& scene, const StarLimits& limits) {
    StarTables& stars = scene.App.Data.Stars;
    GlintViewConfig config{};
    SetGLTConfig(scene, config);
    config.MaxStarMag = limits.MaxStarMag;
    config.AutoMagLimit = limits.AutoMagLimit;
    config.StarSizeScale = limits.StarSize;
    config.SiteLat = scene.App.Data.Site.SiteLat;
    config.SiteLon = scene.App.Data.Site.SiteLon;
    config.StarCount = stars.VisibleStarCount();
    const GlintDrawTarget target = EngineTarget(scene.Surface);
    Satellite_DrawStars(&target, &config, stars.VisibleStarList.data() + 1, stars.StarPlotTable.data() + 1);
}

void DrawStarsOnMap(const SceneContext& scene, const SkyCamera& camera, const StarLimits& limits) {
    const StarTables& stars = scene.App.Data.Stars;
    DrawSurface& surface = scene.Surface;
    const double limit = limits.Shown();
    const StarDots dots = DotsOf(scene, limits);
    for (std::size_t i = 1; i < stars.VisibleStarList.size(); ++i) {
        const std::size_t star = IndexOf(stars.VisibleStarList[i]);
        const StarPlotRecord& record = stars.StarPlotTable[star];
        if (!(record.Magnitude <= limit)) continue;
        const std::optional<ScenePoint> place = camera.Seen(stars.StarDirections[star]);
        if (!place) continue;
        const ScenePoint box = OnBox(scene, *place);
        const StarDot dot = dots.Of(record.Magnitude);
        const auto color = static_cast<std::size_t>(StarColorStep(record.ColorIndex));
        surface.StarDot(box.x / surface.TwipsPerPixelX, box.y / surface.TwipsPerPixelY, dot.radius,
                        StarPalette()[color], dot.weight);
    }
}

/// Faintest stars that are named, by their proper names and by their designations.
struct NameLimits {
    double proper = 0;
    double designation = 0;
};

NameLimits NameLimitsOf(const SceneContext& scene, double shown) {
    constexpr double kNone = -100;
    const double pixels = PixelsOfQuarterSky(scene);
    const double crowded = CrowdedMagnitude(pixels);
    return {std::min(shown, crowded - kNamedAboveCrowd),
            pixels < kDesignationPixels ? kNone : std::min(shown, crowded - kDesignatedAboveCrowd)};
}

void AskForStarNames(const SceneContext& scene, const SkyCamera& camera, const StarLimits& limits, NameBoard& names) {
    const StarTables& stars = scene.App.Data.Stars;
    const NameLimits named = NameLimitsOf(scene, limits.Shown());
    const double faintest = std::max(named.proper, named.designation);
    const StarDots dots = DotsOf(scene, limits);
    for (std::size_t i = 1; i < stars.VisibleStarList.size(); ++i) {
        const std::size_t star = IndexOf(stars.VisibleStarList[i]);
        const StarPlotRecord& record = stars.StarPlotTable[star];
        if (!(record.Magnitude <= faintest)) continue;
        const bool proper = stars.StarCatalogue[star].ProperName.size() > 1;
        if (record.Magnitude > (proper ? named.proper : named.designation)) continue;
        const std::optional<ScenePoint> place = camera.Seen(stars.StarDirections[star]);
        if (!place) continue;
        const ScenePoint box = OnBox(scene, *place);
        names.Add({.x = box.x,
                   .y = box.y,
                   .gap = (dots.Of(record.Magnitude).radius + kStarNameGap) * kTwipsPerScreenPixel,
                   .range = record.Magnitude,
                   .color = kStarNameColor,
                   .name = NameOf(stars, star)});
    }
}

/// Where north, east, south and west stand on the horizon of the sky, for who holds the chart overhead.
void NameQuarters(const SceneContext& scene, const SkyCamera& camera, NameBoard& names) {
    const MainControls& main = scene.App.Main;
    if (!main.CHCircle.Value || main.CStarsOnGlobe.Value || scene.IsFlatMap()) return;
    const ObserverSite& site = scene.App.Data.Site;
    const Vector3 up = LLRToSameXYZ(site.SiteLat, site.SiteLon, 1);
    const Vector3 east{-std::sin(site.SiteLon), std::cos(site.SiteLon), 0};
    const Vector3 north = CrossProduct(up, east);
    const double altitude = std::min(kQuarterRise / PixelsOfQuarterSky(scene), 1.0) * kPi / 2;
    const auto name = [&](std::string_view letter, const Vector3& quarter) {
        const Vector3 world = std::cos(altitude) * quarter + std::sin(altitude) * up;
        const std::optional<ScenePoint> place = camera.Seen(camera.FromWorld(world));
        if (!place) return;
        const ScenePoint box = OnBox(scene, *place);
        std::string& text = names.EmptyText();
        text += letter;
        // The board puts a blank before a name: the letter itself stands in the middle.
        names.AddLabel({.x = box.x,
                        .y = box.y,
                        .gap = -kQuarterWidth * 1.5 * kTwipsPerScreenPixel,
                        .rank = NameRank::Flare,
                        .color = kQuarterColor,
                        .rise = 0.5,
                        .name = text});
    };
    name("N", north);
    name("E", east);
    name("S", -1 * north);
    name("W", -1 * east);
}

void MarkSelectedStar(const SceneContext& scene, const SkyCamera& camera, NameBoard& names) {
    const StarTables& stars = scene.App.Data.Stars;
    const std::int32_t selected = scene.App.Run.Finder.SelectedStar;
    if (!stars.HasStar(selected)) return;
    const std::optional<ScenePoint> place = camera.Seen(stars.StarDirections[IndexOf(selected)]);
    if (!place) return;
    DrawSurface& surface = scene.Surface;
    surface.DrawWidth = 1;
    surface.DrawStyle = PenPattern::Solid;
    surface.DrawMode = MixMode::Copy;
    surface.FillStyle = FillPattern::Transparent;
    SceneCircle(scene, *place, kSelectionRing / ScreenPixelsPerUnit(scene), kSelectedStarColor);
    const std::string_view name = NameOf(stars, IndexOf(selected));
    if (name.empty()) return;
    const ScenePoint box = OnBox(scene, *place);
    std::string& text = names.EmptyText();
    text += "SELECTED ";
    text += name;
    names.AddLabel({.x = box.x,
                    .y = box.y,
                    .gap = kSelectionRing * kTwipsPerScreenPixel,
                    .rank = NameRank::Working,
                    .color = kSelectedStarColor,
                    .name = text});
}

void PlotBody(const SceneContext& scene, const SkyCamera& camera, const Vector3& world, double diameter, Color color) {
    const std::optional<ScenePoint> place = camera.Seen(camera.FromWorld(world));
    if (place) DrawDisc(scene, *place, SkyDiscRadius(scene, diameter), color);
}

/// A colour of the sky, and the twilight value at which it has it.
struct SkyStop {
    double twilight = 0;
    Color color = kSpaceColor;
};

/// From the end of astronomical twilight, the Sun 18 degrees below the horizon, to full day.
constexpr std::array kSkyStops{SkyStop{-5.5, kSpaceColor}, SkyStop{-2.2, 0x24120C}, SkyStop{1, 0x58341E},
                               SkyStop{4.4, 0x9C6A44}, SkyStop{9, 0xD09A68}};

Color Mixed(Color a, Color b, double part) {
    const auto channel = [part](int from, int to) {
        return static_cast<Color>(std::lround(from + part * (to - from)));
    };
    return channel(RedOf(a), RedOf(b)) | channel(GreenOf(a), GreenOf(b)) << 8 | channel(BlueOf(a), BlueOf(b)) << 16;
}

}  // namespace

SkyCamera::SkyCamera(const SceneContext& scene)
    : scene_(scene),
      greenwich_(SiderealFromJD(scene.App.Data.SimTime)),
      matrix_(SkyToView(scene.View(), greenwich_)),
      projection_(SkyProjectionOf(scene)),
      sight_(SkySightOf(scene, greenwich_)) {}

std::optional<Vector3> SkyCamera::Mapped(const Vector3& direction) const {
    if (scene_.IsFlatMap()) {
        if (!sight_.Shows(direction, 0)) return std::nullopt;
        const double lat = ArcSin(direction.z);
        const double lon = std::atan2(direction.y, direction.x) - greenwich_;
        const ScenePoint point = FlatMapPosition(scene_.View(), {lat, lon});
        return Vector3{0, point.x, point.y};
    }
    const Vector3 seen = matrix_ * direction;
    if (!sight_.Shows(direction, seen.x)) return std::nullopt;
    return FlattenSky(projection_, projection_.radius * seen);
}

std::optional<ScenePoint> SkyCamera::Seen(const Vector3& direction) const {
    const std::optional<Vector3> place = Mapped(direction);
    if (!place) return std::nullopt;
    const bool earthBefore = !scene_.IsFlatMap() && !scene_.App.Main.CSkyOnly.Value;
    if (earthBefore && IsHidden(scene_.View(), *place)) return std::nullopt;
    return ScenePoint{place->y, place->z};
}

Vector3 SkyCamera::FromWorld(const Vector3& direction) const { return TurnedAboutPole(direction, greenwich_); }

void PlotStars(const SceneContext& scene, NameBoard& names) {
    CommonData& data = scene.App.Data;
    const MainControls& main = scene.App.Main;
    PrecessStars(data.Stars, data.SimTime);
    if (main.CSkyCircle.Value) DrawSkyCircle(scene);
    const StarLimits limits = LimitsNow(scene);
    const SkyCamera camera(scene);
    if (scene.IsFlatMap())
        DrawStarsOnMap(scene, camera, limits);
    else
        DrawStarsByEngine(scene, limits);
    PlotSunAndMoonOnSky(scene);
    NameQuarters(scene, camera, names);
    MarkSelectedStar(scene, camera, names);
    if (main.CStarNames.Value) AskForStarNames(scene, camera, limits, names);
    names.Draw(scene);
}

void PlotSunAndMoonOnSky(const SceneContext& scene) {
    const MainControls& main = scene.App.Main;
    if (!main.CDrawSun.Value) return;
    const CommonData& data = scene.App.Data;
    const SkyCamera camera(scene);
    PlotBody(scene, camera, PointBelowSun(data), kSunDisc, kSkySunColor);
    // A sky that lies on the Earth shows over which places things stand, every other sky how the observer sees them.
    const bool liesOnEarth = scene.IsFlatMap() || main.CStarsOnGlobe.Value;
    PlotBody(scene, camera, liesOnEarth ? PointBelowMoon(data) : MoonSeenByObserver(data), kMoonDisc, kSkyMoonColor);
}

void DrawSkyBackground(const SceneContext& scene) {
    if (!HasAtmosphere(scene.App.Main)) return;
    scene.Surface.BackColor = SkyColor(SunElevation(scene.App.Data));
    scene.Surface.Cls();
}

Color SkyColor(double sunElevation) {
    const double twilight = TwilightValue(sunElevation);
    if (!(twilight > kSkyStops.front().twilight)) return kSpaceColor;
    for (std::size_t i = 1; i < kSkyStops.size(); ++i) {
        const SkyStop& before = kSkyStops[i - 1];
        const SkyStop& after = kSkyStops[i];
        if (twilight < after.twilight)
            return Mixed(before.color, after.color, (twilight - before.twilight) / (after.twilight - before.twilight));
    }
    return kSkyStops.back().color;
}

}  // namespace glintara
