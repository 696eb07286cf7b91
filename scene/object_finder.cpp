#include "scene/object_finder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/trigonometry.h"
#include "orbit/satellite_motion.h"
#include "orbit/satellite_table.h"
#include "orbit/sun_and_moon.h"
#include "scene/mouse_place.h"
#include "scene/mouse_text.h"
#include "scene/star_chart.h"
#include "scene/star_list.h"
#include "scene/star_places.h"
#include "scene/sundial.h"

namespace glintara {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

/// Height of the box in lines of text.
constexpr double kSatelliteLines = 3.5;
constexpr double kStarLines = 6.5;

constexpr double kMetresPerKilometre = 1000;
constexpr int kDecimals = 3;

/// Rounding must not put a star outside that lies at the very edge of the search.
constexpr double kEdge = 1e-9;

double CatchRadius(const ViewState& view) { return kCatch / view.ZoomFactor; }

/// A search among the stars. Nearly all of them are passed over by scalar products with fixed vectors; what is left is
/// placed as it is drawn. The nearer the best one so far, the fewer are left.
class StarSearch {
  public:
    StarSearch(const Application& app, const ScenePoint& place, double within)
        : app_(app),
          stars_(app.Data.Stars),
          greenwich_(GreenwichOfPicture(app.Data)),
          limit_(StarLimitsOf(app.Data.View, app.Main, SunElevation(app.Data)).Shown()),
          sight_(SkySightOf(app, greenwich_)),
          toView_(SkyToView(app.Data.View, greenwich_)),
          sky_(SkyProjectionOf(app)),
          flatMap_(app.Main.CPlaniSphere.Value) {
        const ScenePoint centre = SkyCentre(app);
        point_ = {place.x - centre.x, place.y - centre.y};
        best_.distance = within;
        if (sky_.flat) TakeChartDirection();
        Narrow();
    }

    FoundObject Run() {
        const std::int32_t count = stars_.VisibleStarCount();
        for (std::int32_t i = 1; i <= count; ++i) {
            const std::int32_t star = stars_.VisibleStarList[static_cast<std::size_t>(i)];
            const Vector3& direction = stars_.StarDirections[static_cast<std::size_t>(star)];
            if (IsNear(direction)) Try(star, direction);
        }
        return best_.kind == FoundKind::Star ? best_ : FoundObject{};
    }

  private:
    /// The place of the sky at the mouse, or at the chart's edge next to it: no star is nearer to the mouse than to
    /// that.
    void TakeChartDirection() {
        const double r = std::hypot(point_.x, point_.y);
        const double inside = std::min(1.0, r > 0 ? 2 * sky_.radius / r : 1.0);
        const Vector3 seen = DeFlattenSky(sky_, {0, inside * point_.x, inside * point_.y}) / sky_.radius;
        chartDirection_ = seen.x * toView_.row[0] + seen.y * toView_.row[1] + seen.z * toView_.row[2];
    }

    /// Fits the sieve to the best distance so far.
    void Narrow() {
        if (flatMap_) {
            const double equator = FlatMapPosition(app_.Data.View, {0, 0}).y;
            const double lat = std::clamp(point_.y - equator, -kPi / 2, kPi / 2);
            low_ = lat - best_.distance > -kPi / 2 ? std::sin(lat - best_.distance) - kEdge : -2;
            high_ = lat + best_.distance < kPi / 2 ? std::sin(lat + best_.distance) + kEdge : 2;
        } else if (sky_.flat) {
            // The chart stretches the sky, and shrinks it nowhere: two places of it are at least as far apart as in the
            // sky.
            const double angle = best_.distance / (sky_.radius / (kPi / 2));
            leastCosine_ = angle < kPi ? std::cos(angle) - kEdge : -2;
        }
    }

    bool IsNear(const Vector3& direction) const {
        if (flatMap_) return direction.z >= low_ && direction.z <= high_;
        if (sky_.flat) return Dot(direction, chartDirection_) >= leastCosine_;
        const double y = sky_.radius * Dot(toView_.row[1], direction);
        const double z = sky_.radius * Dot(toView_.row[2], direction);
        return std::fabs((sky_.mirrored ? -y : y) - point_.x) < best_.distance &&
               std::fabs(z - point_.y) < best_.distance;
    }

    void Try(std::int32_t star, const Vector3& direction) {
        if (stars_.StarPlotTable[static_cast<std::size_t>(star)].Magnitude > limit_) return;
        const std::optional<ScenePoint> place = flatMap_ ? OnFlatMap(direction) : OnSphere(direction);
        if (!place) return;
        const double distance = std::hypot(place->x - point_.x, place->y - point_.y);
        if (!(distance < best_.distance)) return;
        best_ = {FoundKind::Star, star, distance};
        Narrow();
    }

    std::optional<ScenePoint> OnFlatMap(const Vector3& direction) const {
        if (!sight_.Shows(direction, 0)) return std::nullopt;
        const LatLonRadius place = XYZToLatLon(direction);
        return FlatMapPosition(app_.Data.View, {place.lat, place.lon - greenwich_});
    }

    std::optional<ScenePoint> OnSphere(const Vector3& direction) const {
        const Vector3 onSphere = sky_.radius * (toView_ * direction);
        if (!sight_.Shows(direction, onSphere.x)) return std::nullopt;
        const Vector3 seen = FlattenSky(sky_, onSphere);
        if (IsBehindEarth(app_, seen)) return std::nullopt;
        return ScenePoint{seen.y, seen.z};
    }

    const Application& app_;
    const StarTables& stars_;
    double greenwich_;
    double limit_;
    SkySight sight_;
    RotationMatrix toView_;
    SkyProjection sky_;
    bool flatMap_;
    ScenePoint point_;  // from the middle of the sky
    FoundObject best_;
    Vector3 chartDirection_;
    double leastCosine_ = -2;
    double low_ = -2;
    double high_ = 2;
};

std::string StarName(const StarRecord& star, std::int32_t number) {
    if (star.ProperName.size() > 1) return star.ProperName;
    if (!star.Designation.empty()) return star.Designation;
    return "#" + std::to_string(number);
}

std::string DegreesCut(double radians) { return CutNumberText(radians / kDegToRad, kDecimals) + "\u00B0"; }

std::string InfoOf(const Application& app, const FoundObject& found) {
    return found.kind == FoundKind::Satellite ? SatelliteInfo(app, found.index) : StarInfo(app.Data.Stars, found.index);
}

/// Beside `from`, on the far side of the mouse where there is room, else on the near side.
double BesideMouse(double from, double gap, double size, double room) {
    const double after = from + gap;
    if (after + size <= room) return after;
    return std::max(0.0, from - gap - size);
}

}  // namespace

FoundObject NearestSatellite(const Application& app, const ScenePoint& place, double within) {
    FoundObject best;
    best.distance = within;
    const FinderState& finder = app.Run.Finder;
    for (std::int32_t i = 1; i <= finder.FinderCount(); ++i) {
        const FinderEntry& entry = finder.FinderList[static_cast<std::size_t>(i)];
        const bool inList = entry.satellite >= 1 && entry.satellite <= app.Data.SatCount;
        const double distance = std::hypot(entry.x - place.x, entry.y - place.y);
        if (inList && distance < best.distance) best = {FoundKind::Satellite, entry.satellite, distance};
    }
    return best.kind == FoundKind::Satellite ? best : FoundObject{};
}

FoundObject NearestStar(const Application& app, const ScenePoint& place, double within) {
    if (!app.Main.CDrawSky.Value || ShowsSundial(app.Run) || app.Data.Stars.VisibleStarCount() < 1) return {};
    return StarSearch(app, place, within).Run();
}

FoundObject ObjectAt(const Application& app, const ScenePoint& place) {
    const double within = CatchRadius(app.Data.View);
    const FoundObject satellite = NearestSatellite(app, place, within);
    const bool caught = satellite.kind != FoundKind::None;
    const FoundObject star = NearestStar(app, place, caught ? satellite.distance : within);
    return star.kind != FoundKind::None ? star : satellite;
}

std::string SatelliteInfo(const Application& app, int satellite) {
    const CommonData& data = app.Data;
    const SatRecord& record = data.Satellite(satellite);
    std::string text = "Satellite #" + record.SatNumber + " (" + record.Name + ")\n";
    const Vector3 position = MotionNow(app, record).position;
    const double range = Length(position - ObserverOnUnitSphere(data.Site)) * data.Site.SiteRadius;
    const HorizonAngles horizon = WorldToHorizon(data.Site, position);
    text += "HEIGHT: " + CutNumberText(HeightOverSphere(data.Site, position), kDecimals) +
            " km  RANGE: " + CutNumberText(range / kMetresPerKilometre, kDecimals) + " km\n";
    return text + "AZ: " + DegreesCut(horizon.azimuth) + "  EL: " + DegreesCut(horizon.altitude);
}

std::string StarInfo(const StarTables& stars, std::int32_t star) {
    const StarRecord& record = stars.StarCatalogue[static_cast<std::size_t>(star)];
    return "SELECTED STAR #" + std::to_string(star) + "\n (" + StarName(record, star) +
           ")\nDEC: " + DegreesToText(record.Declination) + "\nRA : " + HoursToText(record.RightAscension) +
           "\nMAG: " + FourDecimals(record.Magnitude);
}

void FindObject(Application& app) {
    FinderState& finder = app.Run.Finder;
    const std::optional<ScenePoint> mouse = MouseOnPicture(app);
    const FoundObject found = mouse ? ObjectAt(app, *mouse) : FoundObject{};
    finder.Found = found.kind;
    finder.FoundIndex = found.index;
    finder.LastDistance = found.distance;
    if (found.kind == FoundKind::None) return;
    app.Main.LFInfo.Caption = InfoOf(app, found);
    app.Main.LFInfo.Visible = true;
}

BoxArea InfoBoxArea(const RunState& run, const InfoLetters& letters) {
    const double lines = run.Finder.Found == FoundKind::Satellite ? kSatelliteLines : kStarLines;
    const double width = letters.textWidth + 2 * letters.xWidth;
    const double height = lines * letters.lineHeight;
    const double left = BesideMouse(run.LastMouseX, letters.xWidth, width, run.LastPictureWidth);
    const double top = BesideMouse(run.LastMouseY, letters.xHeight, height, run.LastPictureHeight);
    return {left, top, left + width, top + height};
}

void SelectStar(Application& app) {
    const std::optional<ScenePoint> mouse = MouseOnPicture(app);
    if (!mouse) return;
    const FoundObject found = NearestStar(app, *mouse, kInfinite);
    if (found.kind == FoundKind::None) return;
    app.Run.Finder.SelectedStar = found.index;
    app.Main.TimerHRot.Stop();
    app.Main.LCommandOutput.Caption =
        StarName(app.Data.Stars.StarCatalogue[static_cast<std::size_t>(found.index)], found.index);
    app.Windows.UpdateGraphicsLevel2();
}

bool SelectSatellite(Application& app) {
    const std::optional<ScenePoint> mouse = MouseOnPicture(app);
    if (!mouse) return false;
    const FoundObject found = NearestSatellite(app, *mouse, CatchRadius(app.Data.View));
    if (found.kind == FoundKind::None) return false;
    ChangeWorkingSatellite(app, app.Data.Satellite(found.index).OrbitNumber);
    return true;
}

}  // namespace glintara
