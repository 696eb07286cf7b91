#pragma once

// One satellite of the list.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/glintcore.h"
#include "state/surface_model.h"

namespace glintara {

/// Switches of a new satellite: its orbit is hidden, all else is off.
inline constexpr std::string_view kNewOptionFlags = "1000000000000000";

/// Places of `OptionFlags`, counted from 0.
inline constexpr std::size_t kOrbitHiddenPlace = 0;  ///< "1": the orbit is not drawn
inline constexpr std::size_t kDisabledPlace = 1;     ///< "1": the satellite is neither drawn nor searched

/// One satellite: its element set as text and as numbers, its switches, its surfaces, and what the engine knows of it.
/// It owns its texts: assignment is a deep copy. Column numbers count from 1.
struct SatRecord {
    bool Selected = false;   ///< selected in the satellite list; not saved
    std::string SatNumber;   ///< columns 3 to 7 of line 1; updates find the satellite by this text
    std::string Designator;  ///< columns 10 to 17 of line 1
    std::string EpochText;   ///< columns 19 to 32 of line 1: year (2 digits), day of year with fraction
    double Inclination = 0;  ///< radians
    double RaanAngle = 0;    ///< right ascension of the ascending node, radians
    double Eccentricity = 0;
    double ArgPerigee = 0;              ///< radians
    double MeanAnomaly = 0;             ///< radians
    double MeanMotion = 0;              ///< revolutions per day
    std::int16_t ElementSetNumber = 0;  ///< columns 65 to 68 of line 1
    double MeanRadiusA = 0;             ///< semi-major axis, in `SiteRadius`; follows changes of the place
    std::int16_t OrbitNumber = 0;       ///< `SatCount` at admission; kept by updates
    double MeanMotionDot = 0;   ///< as it stands in line 1: half the first derivative, revolutions per day squared
    double MeanMotionDDot = 0;  ///< as it stands in line 1: a sixth of the second, revolutions per day cubed
    double BStar = 0;           ///< drag term, per Earth radius
    std::string Name;           ///< shown name
    std::string OptionFlags = std::string(kNewOptionFlags);  ///< 16 switches, "0" or "1"; kept by updates
    std::string TitleLine;        ///< name line of the element set, whatever becomes of `Name`
    std::string Line1;            ///< line 1 as loaded, at most 69 characters
    std::string Line2;            ///< line 2 as loaded, at most 69 characters
    SurfaceModel Surface;         ///< kept by updates
    ::EngineBlock EngineBlock{};  ///< filled by `SatelliteInit`

    /// Whether the satellite is left out of drawing and searching.
    bool IsDisabled() const { return OptionFlags.size() > kDisabledPlace && OptionFlags[kDisabledPlace] == '1'; }
};

}  // namespace glintara
