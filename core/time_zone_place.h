#pragma once

// A first guess of the observer's place: the chief place of the computer's time zone, as the time zone database has it.

#include <filesystem>
#include <optional>
#include <string>

namespace glintara {

/// Where a computer tells its time zone.
struct TimeZoneSources {
    std::optional<std::string> variable;  ///< `TZ`, when it is set
    std::filesystem::path localTime = "/etc/localtime";
    std::filesystem::path zoneName = "/etc/timezone";
    std::filesystem::path database = "/usr/share/zoneinfo";
};

/// Those of this computer; `TZDIR` may put the database elsewhere.
TimeZoneSources SystemTimeZoneSources();

/// What was found.
struct TimeZonePlace {
    bool found = false;
    double lat = 0;     ///< degrees, north positive
    double lon = 0;     ///< degrees, east positive
    std::string words;  ///< the place and the zone, or why there is none
};

/// Looks the time zone up in the database's zone1970.tab, and in zone.tab, which has the places of countries whose
/// clocks go like a larger neighbour's; old names by the links of the database. The zone is what `TZ` says, else what
/// /etc/localtime links to, else what /etc/timezone says, else that whose rules /etc/localtime is a copy of.
TimeZonePlace FindTimeZonePlace(const TimeZoneSources& sources);

}  // namespace glintara
