#pragma once

// Element sets as text, and how they become satellites.
//
// The text waits in the box `TTLE`. An element set is an optional name line, line 1 and line 2; lines end in CR LF.
// Sets with and without a name line may follow one another. Admission takes the sets off the front of the box, one
// after the other; what it cannot use stays there.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "state/application.h"

namespace glintara {

/// What happens to a set whose satellite is in the list already, and to one whose satellite is not.
enum class TLEMode {
    Add = 0,             ///< every set is added
    AddAndUpdate = 1,    ///< a known satellite is replaced, any other is added
    UpdateExisting = 2,  ///< a known satellite is replaced, any other is dropped
};

/// Characters of line 1 and line 2 of an element set, the checksum digit included.
inline constexpr std::size_t kElementLineLength = 69;

/// Largest file that is read as element sets, bytes: some hundred times a full list.
inline constexpr std::size_t kLargestTLEFile = std::size_t{64} << 20;

/// What is known of a line of an element set.
struct TLELineCheck {
    bool ok = true;                ///< whether the line may be used; no line is refused for its checksum or length
    bool checksumMatches = false;  ///< whether it is 69 characters long and the last one is the checksum of the others
};

/// The line check. The checksum of columns 1 to 68 is the sum of the digits, with 1 for each minus sign, modulo 10.
TLELineCheck CheckTLELine(std::string_view line);

/// Julian date of the epoch of the satellite's elements, from its `EpochText`.
double EpochToJD(const SatRecord& satellite);

/// Semi-major axis of an orbit with `meanMotion` revolutions per day, in units of `siteRadius` (metres), by Kepler's
/// third law. Infinite for a mean motion of 0.
double MeanRadiusOf(double meanMotion, double siteRadius);

/// Admits all of `TTLE`. `onlyNewer` and `onlySelected` concern updates: a known satellite is replaced only when the
/// set's epoch is later, only when it is selected in the list.
///
/// A replaced satellite keeps its `OptionFlags`, `OrbitNumber`, `Surface` and `Selected`; all records with its
/// satellite number are replaced. A set that is not newer does not replace, but under `AddAndUpdate` it is added as a
/// second satellite. The list takes `kSatCapacity` satellites and must have room for one more even when a set would
/// only replace.
///
/// `LCommandOutput` tells what was done or "ERROR: ..."; a set that cannot be used ends the work with a message box and
/// stays in the box, name line included, with what follows it. The sets before it stay admitted.
void CApplyTLEOrbitFnct(Application& app, TLEMode mode, bool onlyNewer, bool onlySelected);

/// The button `CApplyTLEOrbit`: adds every set of the box.
void CApplyTLEOrbit_click(Application& app);

/// The button `CUpdateTLE`: replaces known satellites, adds the others.
void CUpdateTLE_click(Application& app);

/// `text` as the box takes it: every line end (CR LF, LF or CR) becomes CR LF, blanks and tabs before it go, and so
/// does a byte order mark at the start.
std::string BoxText(std::string_view text);

/// Puts text from a file, the clipboard or a download into `TTLE`, in place of what was there.
void EnterTLEText(Application& app, std::string_view text);

/// Fills `TTLE` from a file; the user then presses one of the buttons, and `LCommandOutput` says so. A file that cannot
/// be read or is larger than `kLargestTLEFile` gives the message box "Error Loading File" and leaves the box as it was.
/// Returns whether the file was read.
bool LoadTLEFile(Application& app, const std::filesystem::path& path);

}  // namespace glintara
