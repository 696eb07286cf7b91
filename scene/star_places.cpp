#include "scene/star_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/glintcore.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

constexpr std::size_t kNameCharacters = 14;
constexpr double kDaysPerYear = 365.25;
constexpr double kEpoch2000 = 2000;

std::string_view PlotName(const StarRecord& star) {
    for (const std::string* name : {&star.ProperName, &star.Designation})
        if (name->size() > 1) return std::string_view(*name).substr(0, kNameCharacters);
    return {};
}

Vector3 DirectionOf(const StarRecord& star) {
    return star.IsGap() ? Vector3{} : LLRToSameXYZ(star.Declination, star.RightAscension, 1);
}

void Precess(StarRecord& star) {
    const std::array<double, 2> catalogue{star.RightAscensionJ2000, star.DeclinationJ2000};
    std::array<double, 2> ofDate{};
    std::int32_t flag = 0;
    Satellite_PrecessRADEC(ofDate.data(), catalogue.data(), &flag);
    star.RightAscension = ofDate[0];
    star.Declination = ofDate[1];
}

/// A direction of date on world axes.
Vector3 SkyToWorld(const Vector3& direction, double greenwich) { return TurnedAboutPole(direction, -greenwich); }

}  // namespace

std::vector<StarPlotRecord> MakeStarPlotTable(const std::vector<StarRecord>& stars) {
    std::vector<StarPlotRecord> table(stars.size());
    for (std::size_t i = 1; i < stars.size(); ++i) {
        const std::string_view name = PlotName(stars[i]);
        std::copy(name.begin(), name.end(), table[i].Name.begin());
        table[i].Magnitude = stars[i].Magnitude;
        table[i].Declination = stars[i].Declination;
        table[i].RightAscension = stars[i].RightAscension;
        table[i].ColorIndex = stars[i].ColorIndex;
    }
    return table;
}

void TakeStars(StarTables& stars, std::vector<StarRecord> catalogue) {
    stars.StarCatalogue = std::move(catalogue);
    stars.StarPlotTable = MakeStarPlotTable(stars.StarCatalogue);
    stars.StarDirections.assign(stars.StarCatalogue.size(), {});
    for (std::size_t i = 1; i < stars.StarCatalogue.size(); ++i)
        stars.StarDirections[i] = DirectionOf(stars.StarCatalogue[i]);
    stars.LastPrecession = 0;
    stars.VisibleStarList.assign(1, 0);
    stars.VisibleFlags.assign(stars.StarCatalogue.size(), 0);
}

bool PrecessStars(StarTables& stars, double jd) {
    const bool isNear = stars.LastPrecession != 0 && std::abs(jd - stars.LastPrecession) < kPrecessionDays;
    if (isNear || !std::isfinite(jd)) return false;
    Satellite_SetPrecession((jd - kJ2000) / kDaysPerYear + kEpoch2000, kEpoch2000);
    for (std::size_t i = 1; i < stars.StarCatalogue.size(); ++i) {
        StarRecord& star = stars.StarCatalogue[i];
        if (star.IsGap()) continue;
        Precess(star);
        stars.StarPlotTable[i].RightAscension = star.RightAscension;
        stars.StarPlotTable[i].Declination = star.Declination;
        stars.StarDirections[i] = DirectionOf(star);
    }
    stars.LastPrecession = jd;
    return true;
}

RotationMatrix SkyToView(const ViewState& view, double greenwich) {
    const auto turned = [&](const Vector3& axis) { return RotateWorldToView(view, SkyToWorld(axis, greenwich)); };
    const Vector3 x = turned({1, 0, 0});
    const Vector3 y = turned({0, 1, 0});
    const Vector3 z = turned({0, 0, 1});
    return {{{x.x, y.x, z.x}, {x.y, y.y, z.y}, {x.z, y.z, z.z}}};
}

Vector3 ZenithInSky(const ObserverSite& site, double greenwich) {
    return LLRToSameXYZ(site.SiteLat, site.SiteLon + greenwich, 1);
}

HorizonAngles SkyToHorizon(const ObserverSite& site, double greenwich, const Vector3& direction) {
    return WorldToHorizon(site, ObserverOnUnitSphere(site) + SkyToWorld(direction, greenwich));
}

}  // namespace glintara
