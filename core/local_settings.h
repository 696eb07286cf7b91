#pragma once

// The window "Local Settings": the observer's place, time zone and number.

#include <functional>
#include <string>
#include <string_view>

#include "core/simulated_time.h"
#include "core/time_zone_place.h"
#include "state/application.h"

namespace glintara {

/// Takes the observer's code as it is typed: through a number, so that leading zeros are lost. A fraction is cut off; a
/// negative number is 0.
void SetStationCode(CommonData& data, std::string_view text);

namespace local_settings {

struct Hooks {
    std::function<TimeZoneSources()> timeZone = SystemTimeZoneSources;
    std::function<void(const std::string&)> keepStationCode;  ///< keeps the code for the next start, if given
};

/// Brings the boxes into line with the values: what was typed is gone.
void WinDataUpdate(Application& app);

/// Opens the window with the present values in its boxes. One that is open stays as it is.
void Open(Application& app, const SimulatedTime& time);

/// Takes what stands in the boxes, and closes the window. When `TUTC`, cut to a whole number, is not -24 to 24, a
/// message says so and nothing is taken. A place that was typed ends the floating of the site.
void COk_Click(Application& app, SimulatedTime& time, const Hooks& hooks);

/// Writes the place of the computer's time zone into the boxes; where it cannot be told, a word says so.
void CFromTimeZone_Click(Application& app, const TimeZoneSources& sources);

/// Hangs the procedures on the controls of the window.
void Connect(Application& app, SimulatedTime& time, const Hooks& hooks);

}  // namespace local_settings

}  // namespace glintara
