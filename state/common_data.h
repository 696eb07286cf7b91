#pragma once

// What the program remembers: plain tables and scalars, visible to every room. Tables are allocated once at full
// capacity and addressed from index 1; index 0 stays empty.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/astro/vector.h"
#include "state/city_tables.h"
#include "state/map_tables.h"
#include "state/satellite_record.h"
#include "state/saved_view.h"
#include "state/star_tables.h"
#include "state/view_state.h"

namespace glintara {

/// Satellites that the list can hold.
inline constexpr int kSatCapacity = 3000;

/// Signed offsets that are added to the clock base field by field. Cleared as a whole by assigning a fresh one.
struct TimeOffset {
    std::int32_t MonthOffset = 0;
    std::int32_t DayOffset = 0;
    std::int32_t MinuteOffset = 0;
    std::int32_t HourOffset = 0;
    std::int32_t SecondOffset = 0;
    std::int32_t MilliOffset = 0;
    std::int32_t YearOffset = 0;

    friend bool operator==(const TimeOffset&, const TimeOffset&) = default;
};

/// Counters that are kept between runs.
struct UsageStats {
    std::int32_t StartCount = 0;      ///< program starts
    std::int32_t MirrorAddCount = 0;  ///< surfaces added
    std::int32_t TLECount = 0;        ///< element sets added
    std::string RandomID;             ///< ten random digits, made once
    double LastCheckJD = 0;           ///< when the news page was last opened; 0 for never
};

/// Right ascension of the Sun before the clock has run, radians (16 h 23 m 27 s).
inline constexpr double kStartSunRA = (16 + 23 / 60.0 + 27 / 3600.0) * 15 * kDegToRad;

/// Declination of the Sun before the clock has run, radians (-21 degrees 35' 11").
inline constexpr double kStartSunDec = -(21 + 35 / 60.0 + 11 / 3600.0) * kDegToRad;

/// The state of the program.
struct CommonData {
    CommonData() : SatTable(static_cast<std::size_t>(kSatCapacity) + 1) {}

    // Satellites.
    std::vector<SatRecord> SatTable;  ///< indices 1 to `SatCount` are live
    int SatCount = 0;                 ///< 0 to `kSatCapacity`

    /// Index of the satellite that commands act on: always the last one; 0 when the list is empty.
    int WorkingSat() const { return SatCount; }

    /// Satellite `index`, 1 to `SatCount`.
    SatRecord& Satellite(int index) { return SatTable[static_cast<std::size_t>(index)]; }
    const SatRecord& Satellite(int index) const { return SatTable[static_cast<std::size_t>(index)]; }

    // The displayed instant, UTC.
    std::int32_t SimYear = 0;
    std::int16_t SimMonth = 0;
    std::int16_t SimDay = 0;
    std::int16_t SimHour = 0;
    std::int16_t SimMinute = 0;
    double SimSecond = 0;
    double SimTime = 0;  ///< the same instant as a Julian date

    /// The displayed instant as calendar fields.
    CalendarFields SimFields() const {
        return {static_cast<double>(SimYear), static_cast<double>(SimMonth),  static_cast<double>(SimDay),
                static_cast<double>(SimHour), static_cast<double>(SimMinute), SimSecond};
    }

    /// Writes the displayed instant, `jd` and the same as calendar fields. In the program the clock alone does it.
    void SetSimInstant(const CalendarFields& fields, double jd) {
        SimYear = static_cast<std::int32_t>(fields.year);
        SimMonth = static_cast<std::int16_t>(fields.month);
        SimDay = static_cast<std::int16_t>(fields.day);
        SimHour = static_cast<std::int16_t>(fields.hour);
        SimMinute = static_cast<std::int16_t>(fields.minute);
        SimSecond = fields.second;
        SimTime = jd;
    }

    // The last reading of the computer's clock, to which the offsets are added.
    std::int32_t BaseYear = 0;
    std::int16_t BaseMonth = 0;
    std::int16_t BaseDay = 0;
    std::int16_t BaseHour = 0;
    std::int16_t BaseMinute = 0;
    double BaseSecond = 0;

    glintara::TimeOffset TimeOffset;
    std::int16_t UTCOffsetHours = 0;  ///< local time minus UTC, whole hours; see `LocalZone` for who sets it
    double RealTimeStep = 5;          ///< redraw period while the clock runs, seconds

    // The observer.
    ObserverSite Site;
    std::string StationCode = "0000";  ///< observer code: "0000", or a number as it is written without leading zeros
    std::int32_t StationNumber = 0;    ///< the same as a number

    // The Sun, apparent, of date.
    double SunRA = kStartSunRA;    ///< radians
    double SunDec = kStartSunDec;  ///< radians
    Vector3 SunDir;                ///< unit vector to the Sun in Earth-fixed axes
    double TwilightAngle = 0;      ///< least elevation of the Sun that counts as day time, degrees, -90 to 90
    double TwilightSine = 0;       ///< its sine

    /// Sets both, with the angle held to its range; one that is not a number is 0.
    void SetTwilightAngle(double degrees) {
        TwilightAngle = std::isnan(degrees) ? 0 : std::clamp(degrees, -90.0, 90.0);
        TwilightSine = std::sin(TwilightAngle / 180 * kPi);
    }

    // The Moon: geocentric, and as seen by the observer.
    double MoonRA = 0;        ///< radians
    double MoonDec = 0;       ///< radians
    double MoonDistance = 0;  ///< metres
    double MoonTopoRA = 0;    ///< radians
    double MoonTopoDec = 0;   ///< radians

    glintara::UsageStats UsageStats;

    ViewState View;
    std::array<SavedView, kViewCount + 1> SavedViews;  ///< indices 1 to `kViewCount`; 0 stays empty

    // What the map files hold.
    MapTables Map;
    StarTables Stars;
    CityTables Cities;

    // Appearance. Colours are 0xBBGGRR.
    std::uint32_t SoilColor = 0x3C6E3C;    ///< land
    std::uint32_t SeaColor = 0x6E3A10;     ///< sea
    std::uint32_t ShadowColor = 0x5A5A5A;  ///< night side, a mask: grey of level 90

    double UpdateCheckDays = 3;  ///< days between two openings of the news page, 0 to 7
};

}  // namespace glintara
