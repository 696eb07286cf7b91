#include "scene/star_list.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

/// Faintest star that an eye sees through the air.
constexpr double kEyeLimit = 7;

/// A map has no depth to spread more stars over.
constexpr double kFlatMapLimit = 5;

/// The half of a sphere that a chart does not hide makes room for two magnitudes more.
constexpr double kChartBonus = 2;

/// Sky scale times zoom at which the stars have the room that the automatic limit counts from.
constexpr double kUsualSize = 100;

/// Zoom at which discs have the size that the limit gives them. Nearer they grow slower than the limit does, bright
/// stars would swell otherwise; from afar, where the limit leaves few stars, these are larger, down to this share.
constexpr double kUsualZoom = 50;
constexpr double kLeastDivisor = 0.8;

/// Magnitude to which stars are seen in a sky with the Sun at this elevation.
double AirLimit(double sunElevation) { return -sunElevation / kDegToRad - 3.5; }

double AutoLimit(const ViewState& view, bool chart) {
    const double limit = std::log(view.SkyScale * view.ZoomFactor / kUsualSize) * 1.7 + 4.5;
    return std::nearbyint(limit * 10) / 10 + (chart ? kChartBonus : 0);
}

double SizeDivisor(double zoom) { return std::max(std::log(zoom) / std::log(kUsualZoom), kLeastDivisor); }

}  // namespace

void RebuildStarList(StarTables& stars, double limit) {
    stars.VisibleStarList.reserve(static_cast<std::size_t>(kStarCapacity) + 1);
    stars.VisibleStarList.assign(1, 0);
    stars.VisibleFlags.assign(stars.StarCatalogue.size(), 0);
    for (std::size_t i = 1; i < stars.StarCatalogue.size(); ++i) {
        const StarRecord& star = stars.StarCatalogue[i];
        if (star.IsGap() || !(star.Magnitude <= limit)) continue;
        stars.VisibleStarList.push_back(static_cast<std::int32_t>(i));
        stars.VisibleFlags[i] = -1;
    }
}

StarLimits StarLimitsOf(const ViewState& view, const MainControls& main, double sunElevation) {
    StarLimits limits{.MaxStarMag = view.MaxStarMag, .AutoMagLimit = AutoLimit(view, main.CFlatSky.Value)};
    const double air = AirLimit(sunElevation);
    if (HasAtmosphere(main) && limits.AutoMagLimit > air) {
        limits.AutoMagLimit = air;
        limits.MaxStarMag = kEyeLimit;
    }
    if (main.CPlaniSphere.Value) limits.AutoMagLimit = std::min(limits.AutoMagLimit, kFlatMapLimit);
    const double size = view.StarSizeScale * 0.2 * limits.AutoMagLimit / 15 / SizeDivisor(view.ZoomFactor);
    limits.StarSize = std::max(size, 0.0);
    if (!main.CAutoMag.Value) limits.AutoMagLimit = HasAtmosphere(main) ? air : limits.MaxStarMag;
    return limits;
}

bool HasAtmosphere(const MainControls& main) {
    return main.MnuAtmo.Checked && !main.CReverseSky.Value && !main.CFlatSky.Value;
}

double TwilightValue(double sunElevation) { return (8 * kDegToRad + sunElevation) / kPi * 100; }

}  // namespace glintara
