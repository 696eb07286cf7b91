#include "core/simulated_time.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "core/zone_text.h"
#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/number_text.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/astro/trigonometry.h"
#include "orbit/sun_and_moon.h"
#include "scene/sundial.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

constexpr double kMillisPerSecond = 1000;
constexpr double kMillisPerDay = kSecondsPerDay * kMillisPerSecond;

/// A jump that lands farther off than this is corrected.
constexpr double kJumpTolerance = 1 / kMillisPerDay;

/// The calendar for counting days has a 29 February in 1800, 1900, 2100 and so on, the Julian date has not, so a jump
/// across such a day misses by one. The correction may cross one itself.
constexpr int kMostCorrections = 3;

/// The same of a date that is typed, which may lie millions of years off: each correction leaves 3/146097 of the miss.
constexpr int kMostDateCorrections = 6;

/// Years that days can bridge; those beyond are bridged by whole years, in fours, so that leap years stay leap years.
constexpr double kYearsInDays = 4e6;
constexpr double kLeapYears = 4;

constexpr int kMinutesPerHour = 60;

constexpr int kJulianDecimals = 5;
constexpr std::size_t kJulianWidth = 14;
constexpr int kUtcSecondDecimals = 2;
constexpr int kLocalSecondDecimals = 1;

bool FitsOffset(double value) {
    return value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
}

/// Adds whole `steps` to `offset`; false, and nothing is done, when the sum has no room.
bool AddTo(std::int32_t& offset, double steps) {
    const double sum = offset + steps;
    if (!FitsOffset(sum)) return false;
    offset = static_cast<std::int32_t>(sum);
    return true;
}

std::string StateMark(const TimeOffset& offset, bool running) {
    TimeOffset whole = offset;
    whole.MilliOffset = 0;
    if (!(whole == TimeOffset{})) return " (+)";
    return running ? "" : " (N)";
}

std::string DateAndTime(const CalendarFields& f, int secondDecimals) {
    const double unit = std::pow(10, secondDecimals);
    const double second = Truncate(f.second * unit) / unit;
    return "DATE " + DateText(f.year, f.month, f.day) + " " + TimeText(f.hour, f.minute, second) + " UTC";
}

std::string JulianText(double jd) {
    std::string text = CutNumberText(jd, kJulianDecimals);
    if (text.find('.') == std::string::npos) text += ".";
    if (text.size() < kJulianWidth) text.append(kJulianWidth - text.size(), '0');
    return text;
}

/// The base date plus the offsets, those of milliseconds left out.
CalendarFields WholeOffsetsApplied(const CommonData& data) {
    const TimeOffset& offset = data.TimeOffset;
    return {static_cast<double>(data.BaseYear) + offset.YearOffset,
            static_cast<double>(data.BaseMonth) + offset.MonthOffset,
            static_cast<double>(data.BaseDay) + offset.DayOffset,
            static_cast<double>(data.BaseHour) + offset.HourOffset,
            static_cast<double>(data.BaseMinute) + offset.MinuteOffset,
            data.BaseSecond + offset.SecondOffset};
}

}  // namespace

void SettleMilliOffset(Application& app) {
    CommonData& data = app.Data;
    std::int32_t& millis = data.TimeOffset.MilliOffset;
    millis = 0;
    if (app.Main.CRealTime.Value) return;
    const double base = DateToJD(NormalizeDateTime(WholeOffsetsApplied(data)));
    const double missing = std::nearbyint((DateToJD(data.SimFields()) - base) * kMillisPerDay);
    if (FitsOffset(missing)) millis = static_cast<std::int32_t>(missing);
}

void SimulatedTime::ReadBase() {
    CommonData& data = app_.Data;
    const CalendarFields now = clock_.ReadUtc();
    data.BaseYear = static_cast<std::int32_t>(now.year);
    data.BaseMonth = static_cast<std::int16_t>(now.month);
    data.BaseDay = static_cast<std::int16_t>(now.day);
    data.BaseHour = static_cast<std::int16_t>(now.hour);
    data.BaseMinute = static_cast<std::int16_t>(now.minute);
    data.BaseSecond = now.second;
}

void SimulatedTime::TimeSyncronize() { Synchronize(true); }

void SimulatedTime::Synchronize(bool readClock) {
    NoteForeignZone();
    if (readClock && app_.Main.CRealTime.Value) ReadBase();
    if (!WriteInstant()) return;
    FollowComputerZone();
    WriteDateLabel();
    PlaceSunAndMoon();
    WriteJulianLabel();
    AimAtSatellite();
    HoldSky();
    CommonData& data = app_.Data;
    RefreshViewCache(data.View);
    data.SunDir = PointBelowSun(data);
}

bool SimulatedTime::WriteInstant() {
    CommonData& data = app_.Data;
    CalendarFields sum = WholeOffsetsApplied(data);
    sum.second += data.TimeOffset.MilliOffset / kMillisPerSecond;
    const CalendarFields instant = NormalizeDateTime(sum);
    if (!std::isfinite(instant.second) || !FitsOffset(instant.year)) return false;
    data.SetSimInstant(instant, DateToJD(instant));
    return true;
}

/// Somebody has written another offset than the one that was left: it has come with a workspace. When it is what the
/// computer has at the instant that came with it, it is the computer's own, and goes on following it.
void SimulatedTime::NoteForeignZone() {
    const CommonData& data = app_.Data;
    LocalZone& zone = app_.Run.Zone;
    if (data.UTCOffsetHours == zone.hours) return;
    zone.hours = data.UTCOffsetHours;
    zone.chosen = clock_.OffsetMinutes(DateToJD(data.SimFields())) / kMinutesPerHour != data.UTCOffsetHours;
}

void SimulatedTime::FollowComputerZone() {
    LocalZone& zone = app_.Run.Zone;
    if (zone.chosen) return;
    zone.hours = static_cast<std::int16_t>(clock_.OffsetMinutes(app_.Data.SimTime) / kMinutesPerHour);
    app_.Data.UTCOffsetHours = zone.hours;
}

int SimulatedTime::ShownOffsetMinutes(const CalendarFields& utc) const {
    if (!app_.Main.CLocalTime.Value) return 0;
    if (!app_.Run.Zone.chosen) return clock_.OffsetMinutes(DateToJD(utc));
    return app_.Data.UTCOffsetHours * kMinutesPerHour;
}

CalendarFields SimulatedTime::ShownFields() const {
    CalendarFields shown = app_.Data.SimFields();
    shown.minute += ShownOffsetMinutes(shown);
    return NormalizeDateTime(shown);
}

CalendarFields SimulatedTime::UtcOfShown(const CalendarFields& shown) const {
    CalendarFields utc = shown;
    // The offset at the instant itself follows from a first one that is some hours off.
    for (int i = 0; i < 2; ++i) {
        CalendarFields next = shown;
        next.minute -= ShownOffsetMinutes(utc);
        utc = NormalizeDateTime(next);
    }
    return utc;
}

void SimulatedTime::WriteDateLabel() {
    const CommonData& data = app_.Data;
    const std::string mark = StateMark(data.TimeOffset, app_.Main.CRealTime.Value);
    app_.Run.Zone.shownMinutes = ShownOffsetMinutes(data.SimFields());
    if (!app_.Main.CLocalTime.Value) {
        app_.Main.LDateTime.Caption = DateAndTime(data.SimFields(), kUtcSecondDecimals) + mark;
        return;
    }
    app_.Main.LDateTime.Caption =
        DateAndTime(ShownFields(), kLocalSecondDecimals) + ZoneText(app_.Run.Zone.shownMinutes) + mark;
}

void SimulatedTime::PlaceSunAndMoon() {
    CommonData& data = app_.Data;
    const Equatorial sun = SunPosition(data.SimTime);
    data.SunRA = sun.ra;
    data.SunDec = sun.dec;

    const MoonPlace moon = MoonPosition(data.SimTime);
    data.MoonRA = moon.ra;
    data.MoonDec = moon.dec;
    data.MoonDistance = moon.distance;
    const double siteAngle = SiderealPlusAngle(data.SimFields(), data.Site.SiteLon);
    const Equatorial seen =
        TopocentricShift({moon.dec, moon.ra}, moon.distance, data.Site.SiteRadius, data.Site.SiteGeoLat, siteAngle);
    data.MoonTopoRA = seen.ra;
    data.MoonTopoDec = seen.dec;
}

void SimulatedTime::WriteJulianLabel() {
    const CommonData& data = app_.Data;
    const double siteAngle = SiderealPlusAngle(data.SimFields(), data.Site.SiteLon);
    app_.Main.LJD.Caption = "JD: " + JulianText(data.SimTime) + " LST: " + HoursToText(WrapTwoPi(siteAngle)) +
                            " LAT: " + DegreesToText(data.Site.SiteLat) + " LON: " + DegreesToText(data.Site.SiteLon);
}

void SimulatedTime::AimAtSatellite() {
    const CommonData& data = app_.Data;
    const MainControls& main = app_.Main;
    if (!main.CLockSatellite.Enabled || !main.CLockSatellite.Value || app_.Run.DragActive || data.SatCount == 0) return;
    if (ShowsSundial(app_.Run)) return;  // the aim may shift the picture
    const WorkingDirection& satellite = app_.Run.Working;
    if (!satellite.IsOf(data.Satellite(data.WorkingSat()))) return;

    ViewState& view = app_.Data.View;
    const bool panned = view.PanX != 0 || view.PanY != 0;
    view.ViewLon = data.Site.SiteLon;
    if (main.CDrawSky.Value && (panned || !main.CFlatSky.Value)) {
        // The observer stands on top of the Earth and faces the satellite's azimuth.
        view.ViewLat = data.Site.SiteGeoLat - kPi / 2;
        view.ViewRoll = -satellite.LastAzimuth;
        if (main.CFlatSky.Value) {
            view.PanX = 0;
            view.PanY = -satellite.LastElevation * view.SkyScale / kPi * 2 - 1;
        }
        return;
    }
    // The eye looks back along the line of sight: satellite and observer fall on one point of the picture, and the
    // satellite's place on the sky sphere stands on the axis of the view.
    const HorizonAngles direction{satellite.LastAzimuth, satellite.LastElevation};
    const LatLonRadius axis = XYZToLatLon(HorizonToWorld(data.Site, direction));
    view.ViewLat = axis.lat;
    view.ViewLon = axis.lon;
    view.ViewRoll = 0;
}

void SimulatedTime::HoldSky() {
    ViewState& view = app_.Data.View;
    if (!view.SkyLocked) return;
    view.ViewRoll = view.LockedRoll;
    view.ViewLat = view.LockedLat;
    view.ViewLon = EastLongitudeOf(view.LockedAngle, SiderealFromDate(app_.Data.SimFields()));
}

bool SimulatedTime::SpreadOverOffsets(double days) {
    // From the large unit to the small, always the nearest whole count: what remains may be negative.
    const double day = std::nearbyint(days);
    double rest = (days - day) * kHoursPerDay;
    const double hour = std::nearbyint(rest);
    rest = (rest - hour) * 60;
    const double minute = std::nearbyint(rest);
    rest = (rest - minute) * 60;
    const double second = std::nearbyint(rest);
    rest = (rest - second) * kMillisPerSecond;
    const double milli = std::nearbyint(rest);
    const double applied = (((day * kHoursPerDay + hour) * 60 + minute) * 60 + second) * kMillisPerSecond + milli;
    const double missing = std::nearbyint(days * kMillisPerDay - applied);

    TimeOffset offset = app_.Data.TimeOffset;
    if (!AddTo(offset.DayOffset, day) || !AddTo(offset.HourOffset, hour) || !AddTo(offset.MinuteOffset, minute) ||
        !AddTo(offset.SecondOffset, second) || !AddTo(offset.MilliOffset, milli + missing))
        return false;
    app_.Data.TimeOffset = offset;
    return true;
}

void SimulatedTime::SetJDToTimeOffset(double jd) {
    if (!std::isfinite(jd)) return;
    Synchronize(true);
    double days = jd - app_.Data.SimTime;
    for (int i = 0; i <= kMostCorrections; ++i) {
        if (!SpreadOverOffsets(days)) break;
        Synchronize(false);  // the clock must not move between the measure and the jump
        days = jd - app_.Data.SimTime;
        if (std::abs(days) <= kJumpTolerance) break;
    }
    app_.Windows.UpdateGraphicsLevel2();
}

bool SimulatedTime::SpreadFields(const CalendarFields& utc) {
    CommonData& data = app_.Data;
    TimeOffset offset;
    const double years = utc.year - data.BaseYear;
    if (std::abs(years) > kYearsInDays && !AddTo(offset.YearOffset, Truncate(years / kLeapYears) * kLeapYears))
        return false;
    const double second = std::floor(utc.second);
    const double baseSecond = std::floor(data.BaseSecond);
    offset.HourOffset = static_cast<std::int32_t>(utc.hour - data.BaseHour);
    offset.MinuteOffset = static_cast<std::int32_t>(utc.minute - data.BaseMinute);
    offset.SecondOffset = static_cast<std::int32_t>(second - baseSecond);
    offset.MilliOffset = static_cast<std::int32_t>(std::nearbyint((utc.second - second) * kMillisPerSecond) -
                                                   std::floor((data.BaseSecond - baseSecond) * kMillisPerSecond));
    // A hair before the second would be shown as the one before it.
    while (data.BaseSecond + offset.SecondOffset + offset.MilliOffset / kMillisPerSecond < second) ++offset.MilliOffset;

    const CalendarFields target{utc.year, utc.month, utc.day, 0, 0, 0};
    for (int i = 0; i <= kMostDateCorrections; ++i) {
        const CalendarFields date = NormalizeDateTime({static_cast<double>(data.BaseYear) + offset.YearOffset,
                                                       static_cast<double>(data.BaseMonth),
                                                       static_cast<double>(data.BaseDay) + offset.DayOffset, 0, 0, 0});
        if (date.year == target.year && date.month == target.month && date.day == target.day) {
            data.TimeOffset = offset;
            return true;
        }
        double days = DateToJD(target) - DateToJD(date);
        // 29 February of a year such as 1900 has the Julian date of 1 March.
        if (days == 0) days = target.day > date.day ? -1 : 1;
        if (!AddTo(offset.DayOffset, days)) return false;
    }
    return false;
}

bool SimulatedTime::JumpTo(const CalendarFields& utc) {
    CommonData& data = app_.Data;
    if (!std::isfinite(utc.second) || !FitsOffset(utc.year)) return false;
    const double baseSecond = data.BaseSecond;
    if (app_.Main.CRealTime.Value)
        ReadBase();
    else
        data.BaseSecond = std::floor(data.BaseSecond);
    if (!SpreadFields(utc)) {
        data.BaseSecond = baseSecond;
        return false;
    }
    Synchronize(false);  // the clock must not move between the measure and the jump
    app_.Windows.UpdateGraphicsLevel2();
    return true;
}

}  // namespace glintara
