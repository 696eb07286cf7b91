#pragma once

// The chart of view 9: a horizontal sundial for the observer's place and the displayed day, seen from above with north up
// and east to the right. An upright gnomon of height 1 stands in the middle; its shadow falls away from the Sun and is
// 1/tan(elevation) long. The chart works the Sun out for itself and writes nothing that another room reads.

#include <cstdint>
#include <optional>

#include "engine/astro/horizon.h"
#include "scene/view_geometry.h"

namespace glintara {

/// The view that the chart stands for.
inline constexpr std::int16_t kSundialView = 9;

/// Whether pictures show the chart in place of the globe: as long as it was this view that was entered last.
bool ShowsSundial(const RunState& run);

/// The longest shadow on the plate, in heights of the gnomon, and the radius of the plate, scene units.
inline constexpr double kPlateShadow = 4;
inline constexpr double kPlateRadius = 1.9;

/// Length of a tick, scene units at zoom 1: its size on the screen does not change with it.
inline constexpr double kSundialTick = 9.9;

/// The end of a shadow, in heights of the gnomon from its foot.
struct ShadowTip {
    double east = 0;
    double north = 0;
};

/// The Sun against an observer's meridian, radians. The hour angle is positive in the afternoon.
struct SunHour {
    double dec = 0;
    double hourAngle = 0;
};

/// The Sun over `site` at Julian date `jd`.
SunHour SunHourAt(const ObserverSite& site, double jd);

/// Where that stands in the sky at geodetic latitude `lat`.
HorizonAngles SunInSky(double lat, const SunHour& sun);

/// The end of the shadow at geodetic latitude `lat`; nothing while the Sun is not above the horizon.
std::optional<ShadowTip> ShadowAt(double lat, const SunHour& sun);

/// Where the Sun stands when the shadow ends there.
HorizonAngles SunCasting(const ShadowTip& tip);

/// Cuts the stretch between `a` and `b` off where it leaves the plate. False when nothing of it lies on the plate.
bool ClipToPlate(ShadowTip& a, ShadowTip& b);

/// The line of one hour angle: all ends of shadows that the Sun casts at it in the course of a year, a straight line.
struct HourLine {
    ShadowTip winter;  ///< the end of the least declination, far off where the Sun sinks below the horizon before
    ShadowTip summer;  ///< the end of the greatest
};

/// Nothing when the Sun is never up at that hour angle.
std::optional<HourLine> HourLineAt(double lat, double hourAngle);

/// Apparent less mean solar time at `jd`, radians of hour angle, by the Sun's mean longitude (Astronomical Almanac, page
/// C5).
double EquationOfTime(double jd);

/// The displayed day, in the time that the date label shows.
struct SundialDay {
    double start = 0;     ///< Julian date (UTC) of its 0 hours
    int zoneMinutes = 0;  ///< that time less UTC

    /// Julian date (UTC) of one of its hours.
    double At(double hour) const { return start + hour / 24; }
};

SundialDay SundialDayOf(const Application& app);

/// Julian date at which the Sun crosses the meridian on that day.
double NoonOf(const SundialDay& day, double siteLon);

/// The place of the plate at a scene position as the mouse has it; nothing beside the plate.
std::optional<ShadowTip> TipAt(const Application& app, const ScenePoint& place);

/// Draws the chart: plate, hour lines in the time that the date label shows, the lines of the solstices and of the equinox,
/// the path of the shadow's end on the displayed day, noon, the shadow of the moment, and the figures in words. The
/// picture must be empty.
void DrawSundial(const SceneContext& scene);

}  // namespace glintara
