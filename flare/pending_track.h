#pragma once

// The two commands that do more with the track of the working satellite than draw it: its export to files, and the scan
// for the cities along it. A command asks for a picture; what it is about is done when that picture stands. When it cannot
// begin then, `LCommandOutput` tells what it waits for.

#include <functional>
#include <string>
#include <vector>

#include "flare/tracks.h"
#include "state/application.h"

namespace glintara {

/// The menu entry `MnuExportTrack`.
void MnuExportTrack_Click(Application& app);

/// The menu entry `mnuFindCityTrack`.
void mnuFindCityTrack_Click(Application& app);

/// To be called when a picture is finished. Does what is pending for the working satellite, if its tracks are shown and
/// it has one; otherwise the commands wait for one that has. The files get the points of the track as the picture has
/// them. Cities are sought in steps of a third of a second, and those that the track comes near to are listed in the
/// output window and flagged. Whatever comes of it, nothing is pending afterwards; where files have been written stands
/// in `LCommandOutput`. It never begins inside itself.
void FinishPendingTrack(Application& app);

/// Steps of the scan, seconds.
inline constexpr double kScanStep = 1.0 / 3;

/// Speed at which a scan passes over ground without cities: no more than the centre covers, metres per second.
inline constexpr double kScanSpeed = 15000;

/// What a scan of a track tells whoever runs it.
struct ScanListener {
    std::function<bool(double part)> goesOn;                    ///< asked now and then, with the part done, 0 to 1
    std::function<void(const TrackPoint& point)> take;          ///< each point
    std::function<void()> takeGap;                              ///< each step without a point, and the end of a surface
    std::function<void(const std::vector<std::string>&)> tell;  ///< lines about cities, some at a time
};

/// Follows a track past the selected cities: from each point it goes on by `kScanStep`, and by as much more as it takes
/// at `kScanSpeed` to the nearest of them. Flags of cities are those of the last scan before: clear them. False when
/// it was broken off. What is empty in `listener` is not called.
bool ScanCities(CityTables& tables, double siteRadius, FlareTrack& track, const ScanListener& listener);

}  // namespace glintara
