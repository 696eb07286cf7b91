#include "engine/drawing/draw_stars.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/star_color.h"
#include "engine/astro/star_dot.h"

namespace glintara {
namespace {

/// How far beyond the picture's edge a star still shines into it, pixels.
constexpr double kMargin = 48;

/// Radius of the star sphere, Earth radii, beyond which nothing is drawn.
constexpr double kMostSkyScale = 1e6;

/// What the engine keeps with a star. Single precision is a hundredth of a second of arc: far below a pixel at any
/// zoom.
struct KeptDirection {
    std::uint64_t key = 0;  // of the place that it was taken from; 0 before
    std::array<float, 3> xyz{};
    std::uint32_t unused = 0;
};
static_assert(sizeof(GlintStar) == 72 && sizeof(KeptDirection) == sizeof(GlintStar::Rest));

/// A number that two places do not share but by a chance of one in 2^63; never 0.
std::uint64_t KeyOf(const GlintStar& star) {
    constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15;
    const auto dec = std::bit_cast<std::uint64_t>(star.Declination);
    const auto ra = std::bit_cast<std::uint64_t>(star.RightAscension);
    const std::uint64_t mixed = (dec * kMixer) ^ std::rotl(ra, 29);
    return (mixed * kMixer) | 1;
}

/// The direction of a star, taken from its angles only when nothing is kept of them. It is no number where they are
/// none.
Vector3 DirectionOf(const GlintStar& star, unsigned char* rest) {
    KeptDirection kept;
    std::memcpy(&kept, star.Rest, sizeof kept);
    const std::uint64_t key = KeyOf(star);
    if (kept.key != key) {
        const double cosDec = std::cos(star.Declination);
        kept.key = key;
        kept.xyz = {static_cast<float>(cosDec * std::cos(star.RightAscension)),
                    static_cast<float>(cosDec * std::sin(star.RightAscension)),
                    static_cast<float>(std::sin(star.Declination))};
        std::memcpy(rest, &kept, sizeof kept);
    }
    return {kept.xyz[0], kept.xyz[1], kept.xyz[2]};
}

/// An axis of a view over the turning Earth as a direction among the stars.
ViewAxes AmongStars(const ViewAxes& axes, double greenwich) {
    return {TurnedAboutPole(axes.towards, greenwich), TurnedAboutPole(axes.right, greenwich),
            TurnedAboutPole(axes.up, greenwich)};
}

bool IsShown(const StarView& view, const Vector3& direction, const Vector3& seen) {
    if (!(seen.x < 0 ? view.back : view.front)) return false;
    return !view.local || Dot(direction, view.zenith) >= 0;
}

bool IsBehindEarth(const StarView& view, const Vector3& place) {
    if (!view.earthHides || !(place.x < 0)) return false;
    const double y = place.y - view.framePanX + view.picture.panX;
    const double z = place.z - view.framePanY + view.picture.panY;
    return y * y + z * z < 1;
}

}  // namespace

std::optional<StarView> StarViewOf(const GlintViewConfig& config) {
    const std::optional<EarthView> picture = EarthViewOf(config);
    if (!picture || picture->flatMap) return std::nullopt;
    const bool isDate = config.SimTime >= GLINTCORE_FIRST_JD && config.SimTime <= GLINTCORE_LAST_JD;
    const bool isSphere = config.SkyScale > 0 && config.SkyScale <= kMostSkyScale;
    const double numbers = config.FramePanX + config.FramePanY + config.SiteLat + config.SiteLon + config.StarSizeScale;
    const double limit = config.MaxStarMag < config.AutoMagLimit ? config.MaxStarMag : config.AutoMagLimit;
    if (!isDate || !isSphere || !std::isfinite(numbers) || std::isnan(config.MaxStarMag) || std::isnan(limit))
        return std::nullopt;

    const double greenwich = SiderealFromJD(config.SimTime);
    const double zenithRA = config.SiteLon + greenwich;
    const double cosLat = std::cos(config.SiteLat);
    StarView view;
    view.picture = *picture;
    view.framePanX = config.FramePanX;
    view.framePanY = config.FramePanY;
    view.axes = AmongStars(AxesOfView(picture->lat, picture->lon, picture->roll), greenwich);
    view.zenith = {cosLat * std::cos(zenithRA), cosLat * std::sin(zenithRA), std::sin(config.SiteLat)};
    view.sky = {.radius = config.SkyScale,
                .mirrored = config.CReverseSky != 0,
                .flat = config.CFlatSky != 0,
                .front = config.CDrawFrontStars != 0};
    view.front = config.CDrawFrontStars != 0;
    view.back = config.CDrawBackStars != 0;
    view.local = config.CLocalSky != 0;
    view.earthHides = config.CSkyOnly == 0;
    view.limit = limit;
    view.growth = config.StarSizeScale;
    return view;
}

void DrawStars(const GlintDrawTarget& target, const StarView& view, std::span<const std::int32_t> visible,
               unsigned char* stars) {
    const EarthView& picture = view.picture;
    const double crowded = CrowdedMagnitude(view.sky.radius * picture.scaleX);
    const StarDots dots(view.limit < crowded ? view.limit : crowded, view.growth);
    const auto& palette = StarPalette();
    for (const std::int32_t number : visible) {
        if (number < 1) continue;
        unsigned char* const record = stars + (static_cast<std::size_t>(number) - 1) * sizeof(GlintStar);
        GlintStar star;
        std::memcpy(&star, record, sizeof star);
        if (!(star.Magnitude <= view.limit)) continue;
        const Vector3 direction = DirectionOf(star, record + offsetof(GlintStar, Rest));
        const Vector3 seen = view.axes.FromWorld(direction);
        if (!IsShown(view, direction, seen)) continue;
        const Vector3 place = FlattenSky(view.sky, view.sky.radius * seen);
        const double x = picture.halfW + picture.scaleX * (place.y + picture.panX);
        const double y = picture.halfH - picture.scaleY * (place.z + picture.panY);
        const bool onPicture =
            x > -kMargin && x < 2 * picture.halfW + kMargin && y > -kMargin && y < 2 * picture.halfH + kMargin;
        if (!onPicture || IsBehindEarth(view, place)) continue;
        const StarDot dot = dots.Of(star.Magnitude);
        const auto step = static_cast<std::size_t>(StarColorStep(star.ColorIndex));
        target.dot(target.self, x, y, dot.radius, palette[step], dot.weight);
    }
}

}  // namespace glintara
