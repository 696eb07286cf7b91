#include "core/simulated_time.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "engine/astro/angle_text.h"
#include "engine/astro/constants.h"
#include "engine/astro/geodesy.h"
#include "engine/astro/number_text.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/astro/trigonometry.h"
#include "orbit/sun_and_moon.h"
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

std::string ZoneText(int hours) {
    if (hours == 0) return "";
    return (hours > 0 ? "+" : "") + std::to_string(hours);
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
    if (readClock && app_.Main.CRealTime.Value) ReadBase();
    if (!WriteInstant()) return;
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

void SimulatedTime::WriteDateLabel() {
    const CommonData& data = app_.Data;
    const std::string mark = StateMark(data.TimeOffset, app_.Main.CRealTime.Value);
    if (!app_.Main.CLocalTime.Value) {
        app_.Main.LDateTime.Caption = DateAndTime(data.SimFields(), kUtcSecondDecimals) + mark;
        return;
    }
    CalendarFields local = data.SimFields();
    local.hour += data.UTCOffsetHours;
    local = NormalizeDateTime(local);
    app_.Main.LDateTime.Caption = DateAndTime(local, kLocalSecondDecimals) + ZoneText(data.UTCOffsetHours) + mark;
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

}  // namespace glintara
