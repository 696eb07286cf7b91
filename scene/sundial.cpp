#include "scene/sundial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/astro/trigonometry.h"
#include "scene/detail_blocks.h"
#include "scene/overlays.h"
#include "scene/picture_measures.h"

namespace glintara {
namespace {

constexpr std::string_view kTitle = "HORIZONTAL MERIDIANA";
constexpr double kFontSize = 8;

constexpr Color kPlateColor = 0x1E1813;
constexpr Color kRingColor = 0x463C34;
constexpr Color kSeasonColor = 0x9A8A78;
constexpr Color kQuietColor = 0x9E948B;
constexpr Color kSleepingHourColor = 0x5C534B;  ///< hours at which the Sun is down on this day
constexpr Color kPathColor = 0x20C0E0;

constexpr double kHairline = 0.7;
constexpr double kPathWidth = 2;
constexpr double kShadowWidth = 2.5;

/// Least sine of the Sun's elevation that casts a shadow: below, the shadow is longer than anything on the plate.
constexpr double kLeastSine = 1e-6;

/// Declination of the Sun at the solstices: the obliquity of the ecliptic in 2000.
constexpr double kObliquity = 23.4393 * kDegToRad;

/// Where a line goes that has no end, heights of the gnomon.
constexpr double kFarAway = 1000;

constexpr int kHours = 24;
constexpr int kMinutesPerHour = 60;

/// Radius of the ring round the end of the shadow, pixels.
constexpr double kMarkRing = 6.5;

/// Steps of the path in a day, of a season's line in a turn, of a line of hours over the year.
constexpr int kPathSteps = 360;
constexpr int kSeasonSteps = 240;
constexpr int kYearSteps = 96;

/// Elevations of the Sun that the rings stand for, degrees.
constexpr std::array kRings = {60, 45, 30, 20};
constexpr double kAzimuthStep = 10;
constexpr int kAzimuthSteps = 36;

constexpr double kMetre = kPlateRadius / kPlateShadow;  ///< scene units in a height of the gnomon

ScenePoint OnPlate(const ShadowTip& tip) { return {tip.east * kMetre, tip.north * kMetre}; }

double LengthOf(const ShadowTip& tip) { return std::hypot(tip.east, tip.north); }

ShadowTip Towards(double azimuth, double length) { return {std::sin(azimuth) * length, std::cos(azimuth) * length}; }

/// From one point of the line beyond the other, as far as the plate could matter.
ShadowTip FarBeyond(const ShadowTip& from, const ShadowTip& through) {
    const ShadowTip way{through.east - from.east, through.north - from.north};
    const double length = LengthOf(way);
    if (!(length > 0)) return through;
    return {through.east + way.east / length * kFarAway, through.north + way.north / length * kFarAway};
}

/// What stands on the chart already, so that no text covers another.
class Places {
  public:
    void Take(const BoxArea& area) {
        if (count_ < places_.size()) places_[count_++] = area;
    }

    bool IsFree(const BoxArea& area) const {
        return std::none_of(
            places_.begin(), places_.begin() + static_cast<std::ptrdiff_t>(count_),
            [&area](const BoxArea& other) {
                return area.left < other.right && area.right > other.left && area.top < other.bottom &&
                       area.bottom > other.top;
            });
    }

  private:
    std::array<BoxArea, 64> places_;
    std::size_t count_ = 0;
};

/// A curve through ends of shadows, in the present pen, as far as it lies on the plate. Drawn at the end of its life.
class PlateCurve {
  public:
    explicit PlateCurve(const SceneContext& scene)
        : scene_(scene), window_(GetWindowScale(scene.View(), scene.Surface)) {}
    PlateCurve(const PlateCurve&) = delete;
    PlateCurve& operator=(const PlateCurve&) = delete;
    ~PlateCurve() { Flush(); }

    /// The next point; nothing breaks the curve.
    void Add(const std::optional<ShadowTip>& tip) {
        if (last_ && tip) AddStretch(*last_, *tip);
        last_ = tip;
    }

  private:
    void AddStretch(ShadowTip from, ShadowTip to) {
        const bool comesIn = LengthOf(from) > kPlateShadow;
        if (!ClipToPlate(from, to)) return Flush();
        if (comesIn || count_ == 0) {
            Flush();
            Put(from);
        }
        Put(to);
    }

    void Put(const ShadowTip& tip) {
        if (count_ + 2 > pixels_.size()) return;
        const ScenePoint at = OnPlate(tip);
        pixels_[count_++] = BoxFromSceneX(window_, scene_.View(), at.x) / scene_.Surface.TwipsPerPixelX;
        pixels_[count_++] = BoxFromSceneY(window_, scene_.View(), at.y) / scene_.Surface.TwipsPerPixelY;
    }

    void Flush() {
        if (count_ > 2) scene_.Surface.Polyline({pixels_.data(), count_});
        count_ = 0;
    }

    const SceneContext& scene_;
    WindowScale window_;
    std::optional<ShadowTip> last_;
    std::array<double, 2 * (kPathSteps + 2)> pixels_;
    std::size_t count_ = 0;
};

class Chart {
  public:
    explicit Chart(const SceneContext& scene)
        : scene_(scene),
          surface_(scene.Surface),
          site_(scene.App.Data.Site),
          day_(SundialDayOf(scene.App)),
          window_(GetWindowScale(scene.View(), scene.Surface)),
          now_(SunHourAt(site_, scene.App.Data.SimTime)),
          noon_(NoonOf(day_, site_.SiteLon)),
          tick_(kSundialTick / scene.View().ZoomFactor) {}

    void Draw() {
        TakeCorners();
        surface_.DrawMode = MixMode::Copy;
        DrawPlate();
        WriteFigures();
        TakeMark();
        FollowPath();
        DrawSeasons();
        DrawHours();
        DrawPath();
        DrawMoment();
        DrawNoon();
        WriteCompass();
        WriteSeasons();
        surface_.FontOutlined = false;
    }

  private:
    double Pixels(double count) const { return count / ScreenPixelsPerUnit(scene_); }

    void Pen(Color color, double width, PenPattern pattern = PenPattern::Solid) {
        surface_.ForeColor = color;
        surface_.DrawWidth = width;
        surface_.DrawStyle = pattern;
        surface_.FillStyle = FillPattern::Transparent;
    }

    void Stretch(ShadowTip a, ShadowTip b) {
        if (ClipToPlate(a, b)) SceneLine(scene_, OnPlate(a), OnPlate(b));
    }

    void Dot(const ShadowTip& tip, double pixels, Color color) {
        surface_.DrawStyle = PenPattern::None;
        surface_.FillStyle = FillPattern::Solid;
        surface_.FillColor = color;
        SceneCircle(scene_, OnPlate(tip), Pixels(pixels), color);
    }

    /// Where a text may stand: the place of the scene at (`partX`, `partY`) of the text's box.
    struct Berth {
        ScenePoint at;
        double partX = 0;
        double partY = 0;
    };

    BoxArea AreaAt(const Berth& berth, std::string_view text) const {
        const double width = surface_.TextWidth(text);
        const double height = surface_.TextHeight(text);
        const double left = BoxFromSceneX(window_, scene_.View(), berth.at.x) - berth.partX * width;
        const double top = BoxFromSceneY(window_, scene_.View(), berth.at.y) - berth.partY * height;
        return {left, top, left + width, top + height};
    }

    bool HasRoom(const BoxArea& area) const {
        const bool whole =
            area.left >= 0 && area.top >= 0 && area.right <= surface_.ScaleWidth && area.bottom <= surface_.ScaleHeight;
        return whole && places_.IsFree(area);
    }

    /// Whether the path of the shadow's end runs through `area`.
    bool IsOnPath(const BoxArea& area) const {
        return std::ranges::any_of(
            path_,
            [&](const std::optional<ShadowTip>& tip) {
                if (!tip || LengthOf(*tip) > kPlateShadow) return false;
                const ScenePoint at = OnPlate(*tip);
                const double x = BoxFromSceneX(window_, scene_.View(), at.x);
                const double y = BoxFromSceneY(window_, scene_.View(), at.y);
                return x > area.left && x < area.right && y > area.top && y < area.bottom;
            });
    }

    /// Writes at the first of `berths` where the text covers no other and not the path; where there is none, at the
    /// first where it covers no other; else not at all.
    void WriteAtOneOf(std::span<const Berth> berths, std::string_view text, Color color) {
        std::optional<BoxArea> chosen;
        for (const Berth& berth : berths) {
            const BoxArea area = AreaAt(berth, text);
            if (!HasRoom(area)) continue;
            const bool clear = !IsOnPath(area);
            if (clear || !chosen) chosen = area;
            if (clear) break;
        }
        if (!chosen) return;
        places_.Take(*chosen);
        PrintLine(chosen->left, chosen->top, text, color);
    }

    void Write(const ScenePoint& at, std::string_view text, Color color, double partX, double partY) {
        const std::array only = {Berth{at, partX, partY}};
        WriteAtOneOf(only, text, color);
    }

    /// Room of the texts that stand over every picture.
    void TakeCorners() {
        places_.Take(TitleArea(surface_));
        if (const std::optional<BoxArea> astro = AstroDetailsArea(scene_)) places_.Take(*astro);
        if (const auto labels = LabelTextAreas(scene_))
            for (const BoxArea& area : *labels) places_.Take(area);
    }

    /// Half the height of the cross that marks the end of the shadow, scene units.
    double MarkReach() const { return std::max(Pixels(kMarkRing), tick_ / 4); }

    /// Room of the mark of the moment, so that no number is drawn under it.
    void TakeMark() {
        const std::optional<ShadowTip> tip = ShadowAt(site_.SiteLat, now_);
        if (!tip || LengthOf(*tip) > kPlateShadow) return;
        const ScenePoint at = OnPlate(*tip);
        const double reach = MarkReach();
        places_.Take(
            {BoxFromSceneX(window_, scene_.View(), at.x - reach), BoxFromSceneY(window_, scene_.View(), at.y + reach),
             BoxFromSceneX(window_, scene_.View(), at.x + reach), BoxFromSceneY(window_, scene_.View(), at.y - reach)});
    }

    void DrawPlate() {
        Pen(kQuietColor, 1);
        surface_.FillStyle = FillPattern::Solid;
        surface_.FillColor = kPlateColor;
        SceneCircle(scene_, {0, 0}, kPlateRadius, kQuietColor);
        for (const int elevation : kRings) {
            Pen(kRingColor, 1, PenPattern::Dotted);
            SceneCircle(scene_, {0, 0}, kMetre / std::tan(elevation * kDegToRad), kRingColor);
        }
        Pen(kRingColor, kHairline);
        Stretch({0, -kPlateShadow}, {0, kPlateShadow});
        Stretch({-kPlateShadow, 0}, {kPlateShadow, 0});
        Pen(kQuietColor, kHairline);
        for (int i = 0; i < kAzimuthSteps; ++i) {
            // Longer ones every thirty degrees.
            const double length = (i % 3 == 0 ? tick_ / 5 : tick_ / 9) / kMetre;
            const double azimuth = i * kAzimuthStep * kDegToRad;
            Stretch(Towards(azimuth, kPlateShadow), Towards(azimuth, std::max(0.0, kPlateShadow - length)));
        }
    }

    void WriteCompass() {
        constexpr std::array<std::string_view, 4> kNames = {"N", "E", "S", "W"};
        const double inside = kPlateShadow - (tick_ / 5 + Pixels(9)) / kMetre;
        for (std::size_t i = 0; i < kNames.size(); ++i)
            Write(OnPlate(Towards(static_cast<double>(i) * kPi / 2, inside)), kNames[i], kWhite, 0.5, 0.5);
        for (const int elevation : kRings) {
            // Shadows fall to the other side.
            const double direction = site_.SiteLat < 0 ? kPi / 4 : 3 * kPi / 4;
            const ShadowTip at = Towards(direction, 1 / std::tan(elevation * kDegToRad));
            Write(OnPlate(at), std::to_string(elevation) + "\u00B0", kQuietColor, 0.5, 0.5);
        }
    }

    void DrawCurve(double dec) {
        PlateCurve curve(scene_);
        for (int i = 0; i <= kSeasonSteps; ++i)
            curve.Add(ShadowAt(site_.SiteLat, {dec, -kPi + kTwoPi * i / kSeasonSteps}));
    }

    void DrawSeasons() {
        for (const double dec : {-kObliquity, 0.0, kObliquity}) {
            Pen(kSeasonColor, kHairline);
            DrawCurve(dec);
        }
    }

    void WriteSeasons() {
        WriteSeason(-kObliquity, "21 Dec");
        WriteSeason(0, "equinox");
        WriteSeason(kObliquity, "21 Jun");
    }

    /// Beside the meridian, on the side where the time of noon is not.
    void WriteSeason(double dec, std::string_view name) {
        const std::optional<ShadowTip> tip = ShadowAt(site_.SiteLat, {dec, 0});
        if (!tip || LengthOf(*tip) > kPlateShadow) return;
        ScenePoint at = OnPlate(*tip);
        at.x -= Pixels(8);
        const std::array berths = {Berth{at, 1, 1}, Berth{at, 1, 0}};
        WriteAtOneOf(berths, name, kSeasonColor);
    }

    void DrawHours() {
        for (int hour = 0; hour < kHours; ++hour) {
            const SunHour sun = SunHourAt(site_, day_.At(hour));
            const std::optional<HourLine> line = HourLineAt(site_.SiteLat, sun.hourAngle);
            if (!line) continue;
            const bool up = ShadowAt(site_.SiteLat, sun).has_value();
            Pen(up ? kWhite : kSleepingHourColor, kHairline);
            ShadowTip from = site_.SiteLat < 0 ? line->winter : line->summer;
            ShadowTip to = site_.SiteLat < 0 ? line->summer : line->winter;
            if (!ClipToPlate(from, to)) continue;
            SceneLine(scene_, OnPlate(from), OnPlate(to));
            WriteHour(hour, from, to, up);
        }
    }

    /// Behind the end of the line, or farther behind where the mark of the moment stands there.
    void WriteHour(int hour, const ShadowTip& from, const ShadowTip& to, bool up) {
        const ShadowTip way{to.east - from.east, to.north - from.north};
        const double length = LengthOf(way);
        if (!(length > 0)) return;
        const ScenePoint end = OnPlate(to);
        const auto behind = [&](double distance) {
            return Berth{{end.x + way.east / length * distance, end.y + way.north / length * distance}, 0.5, 0.5};
        };
        const std::array berths = {behind(Pixels(11)), behind(Pixels(19) + MarkReach())};
        WriteAtOneOf(berths, std::to_string(hour), up ? kWhite : kQuietColor);
    }

    void FollowPath() {
        for (std::size_t i = 0; i < path_.size(); ++i)
            path_[i] = ShadowAt(site_.SiteLat, SunHourAt(site_, day_.At(kHours * static_cast<double>(i) / kPathSteps)));
    }

    void DrawPath() {
        Pen(kPathColor, kPathWidth);
        {
            PlateCurve curve(scene_);
            for (const std::optional<ShadowTip>& tip : path_) curve.Add(tip);
        }
        for (int hour = 0; hour < kHours; ++hour) {
            const std::optional<ShadowTip> tip = ShadowAt(site_.SiteLat, SunHourAt(site_, day_.At(hour)));
            if (tip && LengthOf(*tip) <= kPlateShadow) Dot(*tip, 2.5, kPathColor);
        }
    }

    /// The Sun on the meridian. Its declination is that of the moment; the hour angle is 0 whatever the clock says.
    std::optional<ShadowTip> NoonTip() const { return ShadowAt(site_.SiteLat, {SunHourAt(site_, noon_).dec, 0}); }

    void DrawNoon() {
        const std::optional<ShadowTip> tip = NoonTip();
        if (!tip || LengthOf(*tip) > kPlateShadow) return;
        const ScenePoint at = OnPlate(*tip);
        Pen(kWhite, 1.5);
        SceneLine(scene_, {at.x, at.y - tick_ / 4}, {at.x, at.y + tick_ / 4});
        const double right = at.x + Pixels(6);
        const std::array berths = {Berth{{right, at.y + tick_ / 4}, 0, 0.5}, Berth{{right, at.y - tick_ / 4}, 0, 0.5}};
        WriteAtOneOf(berths, "noon " + ClockText(noon_, true), kWhite);
    }

    void DrawMoment() {
        const std::optional<ShadowTip> tip = ShadowAt(site_.SiteLat, now_);
        if (tip) {
            ShadowTip foot;
            ShadowTip end = *tip;
            ClipToPlate(foot, end);
            Pen(kWhite, kShadowWidth);
            SceneLine(scene_, OnPlate(foot), OnPlate(end));
            if (LengthOf(*tip) <= kPlateShadow)
                MarkTip(*tip);
            else
                MarkLongShadow(end);
        }
        Dot({0, 0}, 4, kWhite);
        Dot({0, 0}, 2, kPlateColor);
    }

    void MarkTip(const ShadowTip& tip) {
        Dot(tip, 3.5, kPathColor);
        Pen(kWhite, 1.5);
        const ScenePoint at = OnPlate(tip);
        SceneCircle(scene_, at, Pixels(kMarkRing), kWhite);
        for (const double side : {-1.0, 1.0}) {
            SceneLine(scene_, {at.x + side * Pixels(kMarkRing), at.y}, {at.x + side * tick_ / 4, at.y});
            SceneLine(scene_, {at.x, at.y + side * Pixels(kMarkRing)}, {at.x, at.y + side * tick_ / 4});
        }
        // Away from the shadow, which comes from the foot of the gnomon; beside the path, which has the same colour.
        const double outwards = tip.east < 0 ? -1 : 1;
        std::array<Berth, 4> berths;
        std::size_t count = 0;
        for (const double side : {outwards, -outwards}) {
            const ScenePoint beside{at.x + side * (MarkReach() + Pixels(2)), at.y};
            const double partX = side < 0 ? 1 : 0;
            const double inner = tip.north > 0 ? -0.3 : 1.3;
            berths[count++] = {beside, partX, inner};
            berths[count++] = {beside, partX, 1 - inner};
        }
        WriteAtOneOf(berths, ClockText(scene_.App.Data.SimTime, false), kPathColor);
    }

    /// An arrow at the edge: the shadow goes on.
    void MarkLongShadow(const ShadowTip& edge) {
        const double azimuth = std::atan2(edge.east, edge.north);
        const double back = kPlateShadow - tick_ / 4 / kMetre;
        constexpr double kOpening = 0.35;
        for (const double side : {-1.0, 1.0}) {
            const ShadowTip from = Towards(azimuth, kPlateShadow);
            const ShadowTip wing = Towards(azimuth + side * kOpening * (kPlateShadow - back) / kPlateShadow, back);
            SceneLine(scene_, OnPlate(from), OnPlate(wing));
        }
        Write(OnPlate(Towards(azimuth, kPlateShadow + Pixels(24) / kMetre)), ClockText(scene_.App.Data.SimTime, false),
              kPathColor, 0.5, 0.5);
    }

    /// An instant in the time that is shown: hours and minutes, and the seconds where they are wanted.
    std::string ClockText(double jd, bool seconds) const {
        constexpr int kSecondsInDay = 86400;
        constexpr int kMinute = 60;
        const double passed = (jd - day_.start) * kSecondsInDay;
        if (!std::isfinite(passed)) return {};
        // Half a millisecond is what a Julian date does not tell.
        int left = static_cast<int>(
            std::fmod(std::fmod(std::floor(passed + 5e-4), kSecondsInDay) + kSecondsInDay, kSecondsInDay));
        const auto two = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
        std::string text = two(left / (kMinute * kMinute)) + ":" + two(left / kMinute % kMinute);
        if (seconds) text += ":" + two(left % kMinute);
        return text;
    }

    std::string ZoneName() const {
        if (!scene_.App.Main.CLocalTime.Value) return "UTC";
        const int size = std::abs(day_.zoneMinutes);
        std::string text = "local time, UTC";
        if (size == 0) return text;
        text += (day_.zoneMinutes < 0 ? "-" : "+") + std::to_string(size / kMinutesPerHour);
        const int rest = size % kMinutesPerHour;
        if (rest != 0) text += (rest < 10 ? ":0" : ":") + std::to_string(rest);
        return text;
    }

    /// Minutes and seconds of an hour angle, with its sign.
    static std::string MinutesText(double hourAngle) {
        constexpr double kSecondsPerTurn = 86400;
        const double seconds = std::round(hourAngle / kTwoPi * kSecondsPerTurn);
        const int whole = static_cast<int>(std::abs(seconds));
        const std::string rest = std::to_string(whole % kMinutesPerHour);
        return (seconds < 0 ? "-" : "+") + std::to_string(whole / kMinutesPerHour) + "m" +
               (rest.size() < 2 ? "0" : "") + rest + "s";
    }

    static std::string Degrees(double radians) { return CutNumberText(radians / kDegToRad, 3) + "\u00B0"; }

    /// What the day has of its own: nothing where the Sun rises and sets.
    std::string_view DayInWords() const {
        const double dec = SunHourAt(site_, noon_).dec;
        if (!(SunInSky(site_.SiteLat, {dec, 0}).altitude > 0)) return "The Sun does not rise on this day";
        if (SunInSky(site_.SiteLat, {dec, kPi}).altitude > 0) return "The Sun does not set on this day";
        return {};
    }

    std::vector<std::string> Figures() const {
        CalendarFields shown = scene_.App.Data.SimFields();
        shown.minute += day_.zoneMinutes;
        shown = NormalizeDateTime(shown);
        const HorizonAngles sun = SunInSky(site_.SiteLat, now_);
        const std::optional<ShadowTip> tip = ShadowAt(site_.SiteLat, now_);
        std::vector<std::string> lines{
            "LAT: " + DegreesToText(site_.SiteLat),
            "LON: " + DegreesToText(site_.SiteLon),
            DateText(shown.year, shown.month, shown.day) + " " +
                TimeText(shown.hour, shown.minute, std::floor(shown.second)),
            "Hours in " + ZoneName(),
            "",
            "Sun's azimuth: " + Degrees(sun.azimuth),
            "Sun's elevation: " + Degrees(sun.altitude),
            tip ? "Shadow: " + CutNumberText(LengthOf(*tip), 3) + " of the gnomon" : "No shadow: the Sun is down",
            "Noon: " + ClockText(noon_, true),
            "Equation of time: " + MinutesText(EquationOfTime(scene_.App.Data.SimTime))};
        if (const std::string_view day = DayInWords(); !day.empty()) lines.emplace_back(day);
        return lines;
    }

    bool IsOutOfSight() const {
        const double x = BoxFromSceneX(window_, scene_.View(), 0);
        const double y = BoxFromSceneY(window_, scene_.View(), 0);
        return x < 0 || y < 0 || x > surface_.ScaleWidth || y > surface_.ScaleHeight;
    }

    /// The title and the figures, in the upper right corner.
    void WriteFigures() {
        std::vector<std::string> lines = Figures();
        const std::size_t told = lines.size();
        lines.emplace_back();
        if (IsOutOfSight()) lines.insert(lines.end(), {"F5 brings the chart", "back to the middle", ""});
        lines.insert(lines.end(), {"Another view (1 to 8)", "brings the globe back"});
        UseTextFont(surface_, kFontSize);
        double width = surface_.TextWidth(kTitle);
        for (const std::string& line : lines) width = std::max(width, surface_.TextWidth(line));
        const double margin = surface_.TextWidth("x");
        const double height = surface_.TextHeight("x");
        const double left = std::max(margin, surface_.ScaleWidth - margin - width);
        const BoxArea title = TitleArea(surface_);
        const double floor = DateTextTop(scene_);
        UseTextFont(surface_, kFontSize);
        surface_.FontOutlined = true;
        double y = left < title.right + margin ? title.bottom : margin;
        places_.Take({left, y, left + width, y + height * static_cast<double>(lines.size() + 1)});
        PrintLine(left, y, kTitle, kWhite);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            y += height;
            if (y + height > floor) break;  // a low picture has no room for what is told last
            PrintLine(left, y, lines[i], i < told ? kWhite : kQuietColor);
        }
    }

    void PrintLine(double x, double y, std::string_view text, Color color) {
        surface_.ForeColor = color;
        surface_.CurrentX = x;
        surface_.CurrentY = y;
        if (!text.empty()) surface_.Print(text);
    }

    const SceneContext& scene_;
    DrawSurface& surface_;
    const ObserverSite& site_;
    SundialDay day_;
    WindowScale window_;
    SunHour now_;
    double noon_;
    double tick_;
    Places places_;
    std::array<std::optional<ShadowTip>, kPathSteps + 1> path_;  // of the displayed day
};

/// The Sun's direction to the east, to the north and upwards, a unit vector.
Vector3 EastNorthUp(double lat, const SunHour& sun) {
    const double across = std::cos(sun.dec) * std::cos(sun.hourAngle);
    return {-std::cos(sun.dec) * std::sin(sun.hourAngle), std::sin(sun.dec) * std::cos(lat) - across * std::sin(lat),
            std::sin(sun.dec) * std::sin(lat) + across * std::cos(lat)};
}

}  // namespace

bool ShowsSundial(const RunState& run) { return run.PendingView == kSundialView; }

SunHour SunHourAt(const ObserverSite& site, double jd) {
    const Equatorial sun = SunPosition(jd);
    return {sun.dec, std::remainder(site.SiteLon - EastLongitudeOf(sun.ra, SiderealFromJD(jd)), kTwoPi)};
}

HorizonAngles SunInSky(double lat, const SunHour& sun) {
    const Vector3 direction = EastNorthUp(lat, sun);
    return {WrapTwoPi(std::atan2(direction.x, direction.y)), ArcSin(direction.z)};
}

std::optional<ShadowTip> ShadowAt(double lat, const SunHour& sun) {
    const Vector3 direction = EastNorthUp(lat, sun);
    if (!(direction.z > kLeastSine)) return std::nullopt;
    return ShadowTip{-direction.x / direction.z, -direction.y / direction.z};
}

HorizonAngles SunCasting(const ShadowTip& tip) {
    return {WrapTwoPi(std::atan2(-tip.east, -tip.north)), std::atan2(1, LengthOf(tip))};
}

bool ClipToPlate(ShadowTip& a, ShadowTip& b) {
    // |a + t (b - a)| is the plate's radius at two values of t.
    const ShadowTip way{b.east - a.east, b.north - a.north};
    const double square = way.east * way.east + way.north * way.north;
    const double half = a.east * way.east + a.north * way.north;
    const double beyond = a.east * a.east + a.north * a.north - kPlateShadow * kPlateShadow;
    if (!(square > 0)) return beyond <= 0;
    const double root = half * half - square * beyond;
    if (!(root > 0)) return false;
    const double first = std::max(0.0, (-half - std::sqrt(root)) / square);
    const double last = std::min(1.0, (-half + std::sqrt(root)) / square);
    if (!(first < last)) return false;
    const ShadowTip start = a;
    a = {start.east + first * way.east, start.north + first * way.north};
    b = {start.east + last * way.east, start.north + last * way.north};
    return true;
}

std::optional<HourLine> HourLineAt(double lat, double hourAngle) {
    // Once in the range at most the Sun goes through the horizon, so what is seen lies at one end of it.
    std::array<ShadowTip, kYearSteps + 1> seen;
    std::size_t count = 0;
    bool first = false;
    bool last = false;
    for (int i = 0; i <= kYearSteps; ++i) {
        const double dec = kObliquity * (2.0 * i / kYearSteps - 1);
        const std::optional<ShadowTip> tip = ShadowAt(lat, {dec, hourAngle});
        if (!tip) continue;
        seen[count++] = *tip;
        first = first || i == 0;
        last = last || i == kYearSteps;
    }
    if (count < 2) return std::nullopt;
    HourLine line{seen[0], seen[count - 1]};
    if (!first) line.winter = FarBeyond(seen[1], seen[0]);
    if (!last) line.summer = FarBeyond(seen[count - 2], seen[count - 1]);
    return line;
}

double EquationOfTime(double jd) {
    const double longitude = (280.460 + 0.9856474 * (jd - kJ2000)) * kDegToRad;
    return std::remainder(longitude - SunPosition(jd).ra, kTwoPi);
}

SundialDay SundialDayOf(const Application& app) {
    SundialDay day;
    day.zoneMinutes = app.Main.CLocalTime.Value ? app.Run.Zone.shownMinutes : 0;
    CalendarFields shown = app.Data.SimFields();
    shown.minute += day.zoneMinutes;
    shown = NormalizeDateTime(shown);
    day.start = DateToJD({shown.year, shown.month, shown.day, 0, 0, 0}) - day.zoneMinutes / kMinutesPerDay;
    return day;
}

double NoonOf(const SundialDay& day, double siteLon) {
    double noon = day.At(kHours / 2);
    // The equation of time changes by half a minute in a day, so the second look is exact.
    for (int i = 0; i < 2; ++i) {
        // A Julian date begins at noon of mean solar time at Greenwich.
        const double early = (siteLon + EquationOfTime(noon)) / kTwoPi;
        const double fraction = -early - day.start;
        noon = day.start + (fraction - std::floor(fraction));
    }
    return noon;
}

std::optional<ShadowTip> TipAt(const Application& app, const ScenePoint& place) {
    const ViewState& view = app.Data.View;
    const ShadowTip tip{(place.x - view.PanX) / kMetre, (place.y - view.PanY) / kMetre};
    if (!(LengthOf(tip) <= kPlateShadow)) return std::nullopt;
    return tip;
}

void DrawSundial(const SceneContext& scene) { Chart(scene).Draw(); }

}  // namespace glintara
