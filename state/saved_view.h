#pragma once

// A view that the user keeps: camera, options and clock in one.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace glintara {

/// Views that the user can keep, from index 1.
inline constexpr std::size_t kViewCount = 10;

/// Numbers of the clock that a view keeps.
inline constexpr std::size_t kTimeTextCount = 18;

/// One kept view. The fields that bear the name of one of `ViewState` are its copies, in the same units.
struct SavedView {
    bool Used = false;    ///< whether the slot holds a view
    std::string Options;  ///< state of the boxes, as `OptionsToString` writes it
    double ViewLat = 0;
    double ViewLon = 0;
    double ViewRoll = 0;
    double ZoomFactor = 0;
    double PanX = 0;
    double PanY = 0;
    double MaxStarMag = 0;
    double LockedLat = 0;
    double LockedAngle = 0;
    double LockedRoll = 0;
    bool SkyLocked = false;
    std::int16_t OrbitTurns = 0;  ///< the whole part
    double StarSizeScale = 0;
    double SkyScale = 0;
    double Spare = 0;  ///< kept as a file holds it; nothing reads it

    /// Texts of numbers: the six fields of the displayed instant (year, month, day, hour, minute, second), the six of
    /// the base, then the offsets of month, day, minute, hour, second and year.
    std::array<std::string, kTimeTextCount> TimeText;

    friend bool operator==(const SavedView&, const SavedView&) = default;
};

}  // namespace glintara
