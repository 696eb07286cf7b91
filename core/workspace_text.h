#pragma once

// The workspace file as text: everything that the user has set up. Reading and writing are pure; what becomes of the
// session is decided in core/workspace.
//
// One value a line, lines end in CR LF, numbers have "." as decimal mark:
//
//   the tag, "/5" and five settings, the option string, the clock, the camera, the place, the stars, the number of
//   satellites; then the satellites, each with its element set and its twenty surfaces; then ten views, each a line "1"
//   and its fields, or a line "0".
//
// The reader takes CR LF, LF and CR as line ends. A number may end at a comma, what follows it is then the next field; a
// text is always a whole line, as it stands. A number is read as `StrictNumber` does; where a whole one must stand, a
// fraction is rounded, ties to even. A word, an empty field, a number that is not finite or beyond its type is a break.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "state/common_data.h"

namespace glintara {

/// The tag that is written: the newest format.
inline constexpr std::string_view kWorkspaceTag = "GLNTA13D";

/// Largest file that is read as a workspace, bytes: four times a full list of satellites.
inline constexpr std::size_t kLargestWorkspaceFile = std::size_t{64} << 20;

/// An instant as the file holds it, UTC; the fields need not be in their ranges.
struct WorkspaceDate {
    std::int32_t year = 0;
    std::int16_t month = 0;
    std::int16_t day = 0;
    std::int16_t hour = 0;
    std::int16_t minute = 0;
    double second = 0;

    friend bool operator==(const WorkspaceDate&, const WorkspaceDate&) = default;
};

/// All that stands before the satellites. Names, units and ranges are those of `CommonData` and `ViewState`.
struct WorkspaceHead {
    double TwilightAngle = 0;
    std::uint32_t SoilColor = 0;
    std::uint32_t SeaColor = 0;
    std::uint32_t ShadowColor = 0;
    double UpdateCheckDays = 0;
    std::string Options;
    WorkspaceDate Sim;
    WorkspaceDate Base;
    glintara::TimeOffset TimeOffset;  ///< its `MilliOffset` is not in the file
    double ViewRoll = 0;
    double ViewLat = 0;
    double ViewLon = 0;
    double ZoomFactor = 0;
    double PanX = 0;
    double PanY = 0;
    double SiteLat = 0;
    double SiteLon = 0;
    double SiteAlt = 0;
    std::int16_t UTCOffsetHours = 0;
    double RealTimeStep = 0;
    double MaxStarMag = 0;
    double LockedLat = 0;
    double LockedAngle = 0;
    double LockedRoll = 0;
    bool SkyLocked = false;
    double OrbitTurns = 0;
    std::int16_t StarSizeScale = 0;
    double SkyScale = 0;
    double SkyScaleSaved = 0;
    std::int16_t SatCount = 0;

    friend bool operator==(const WorkspaceHead&, const WorkspaceHead&) = default;
};

/// A state as read from a file.
struct Workspace {
    WorkspaceHead Head;
    std::vector<SatRecord> Satellites;  ///< in the order of the list, without engine blocks
    std::array<SavedView, kViewCount + 1> Views;
};

/// How a reading ended.
enum class WorkspaceReading {
    Whole,         ///< everything is there
    Broken,        ///< the head and the satellites and views before the break are there
    HeadBroken,    ///< nothing can be used
    OtherVersion,  ///< a workspace of a version that is not known
    OtherFile,     ///< no workspace
};

/// The text of a workspace. `head.SatCount` is not read: the number of `satellites` counts. Of `views`, which begin with
/// the unused slot 0, all ten others are written. A number that is not finite is written as 0, a line end within a text
/// as a blank.
std::string WorkspaceText(const WorkspaceHead& head, std::span<const SatRecord> satellites,
                          std::span<const SavedView, kViewCount + 1> views);

/// The lines of one satellite, as they stand in the file.
std::string WorkspaceText(const SatRecord& satellite);

/// The lines of one view.
std::string WorkspaceText(const SavedView& view);

/// Reads the text of a workspace. `workspace.Head` holds the present values before, and keeps those that an older
/// format does not have. Satellites of a format without surfaces get those of their family. Numbers outside of the
/// ranges that their owners name are brought into them, a list number that is not one of 1 to `SatCount`, each once,
/// makes the list be numbered anew.
///
/// After a break `Satellites` are the complete ones, and views from the one that is not complete on are empty. `why` is
/// then the reason in words that can follow the file's name and a colon.
WorkspaceReading ReadWorkspace(std::string_view text, Workspace& workspace, std::string& why);

}  // namespace glintara
