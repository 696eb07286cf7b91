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

#include "engine/astro/element_fields.h"
#include "orbit/element_text.h"
#include "state/application.h"

namespace glintara {

/// What happens to a set whose satellite is in the list already, and to one whose satellite is not.
enum class TLEMode {
    Add = 0,             ///< every set is added
    AddAndUpdate = 1,    ///< a known satellite is replaced, any other is added
    UpdateExisting = 2,  ///< a known satellite is replaced, any other is dropped
};

/// Largest file that is read as element sets, bytes: every object in orbit, in the longest of the forms.
inline constexpr std::size_t kLargestTLEFile = std::size_t{32} << 20;

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

/// How an admission ended.
enum class AdmissionEnd {
    AllTaken,    ///< every set of the box was used
    NoLineEnd,   ///< what is left has no line end
    ListFull,    ///< the list has no room for one more
    BadData,     ///< the set at the front of what is left cannot be used
    BadMessage,  ///< a message is at the front, no record of which can be used
};

/// What an admission did.
struct AdmissionOutcome {
    TLEMode mode = TLEMode::Add;
    AdmissionEnd end = AdmissionEnd::AllTaken;
    int sets = 0;     ///< element sets that were used, and cut off the box
    int added = 0;    ///< satellites that the list has more
    int updated = 0;  ///< satellites that were replaced

    // Of `BadData` alone:
    std::string refusedName;  ///< name of the set that cannot be used; may be empty
    int refusedLine = 0;      ///< its line that is at fault, 1 or 2; 0 when it is the two together
    std::string reason;       ///< what is wrong with it, such as "the mean motion is not above 0"

    bool fromMessage = false;  ///< whether a message in the box became sets of two lines

    /// What of that message was left out, as `LeftOutText` tells it; empty for nothing.
    std::string leftOut;

    bool Failed() const { return end != AdmissionEnd::AllTaken; }
};

/// The outcome as `LCommandOutput` shows it: "Added Satellites #3 (2 updated)", or "ERROR: ..." and how many were added
/// before that.
std::string AdmissionLabel(const AdmissionOutcome& outcome);

/// Where and why a set was refused, such as "Set 3 (SPUTNIK), line 2: the mean motion is not above 0", or why no record
/// of a message can be used; empty when none was refused.
std::string RefusalText(const AdmissionOutcome& outcome);

/// "2 satellites added before that", with those updated when the mode may replace; empty when nothing was done.
std::string DoneBeforeText(const AdmissionOutcome& outcome);

/// Admits all of `TTLE`. `onlyNewer` and `onlySelected` concern updates: a known satellite is replaced only when the
/// set's epoch is later, only when it is selected in the list.
///
/// A replaced satellite keeps its `OptionFlags`, `OrbitNumber`, `Surface` and `Selected`; all records with its
/// satellite number are replaced. A set that is not newer does not replace, but under `AddAndUpdate` it is added as a
/// second satellite. The list takes `kSatCapacity` satellites and must have room for one more even when a set would
/// only replace.
///
/// `LCommandOutput` tells what was done or "ERROR: ..."; a set that cannot be used ends the work with a message box,
/// which tells where and why, and stays in the box, name line included, with what follows it. The sets before it stay
/// admitted.
///
/// An Orbit Mean-Elements Message that was typed or pasted into the box, alone or behind other sets, becomes its two
/// lines there first. What of it cannot be used is told in a message box when the work ends; a message without any
/// usable record stays in the box.
AdmissionOutcome CApplyTLEOrbitFnct(Application& app, TLEMode mode, bool onlyNewer, bool onlySelected);

/// The button `CApplyTLEOrbit`: adds every set of the box.
AdmissionOutcome CApplyTLEOrbit_click(Application& app);

/// The button `CUpdateTLE`: replaces known satellites, adds the others.
AdmissionOutcome CUpdateTLE_click(Application& app);

/// Puts text from a file, the clipboard or a download into `TTLE`, in place of what was there; the records of an Orbit
/// Mean-Elements Message as sets of two lines. A message without any usable record leaves the box as it was. Returns
/// what the text is, without its `text`, for the box has that.
ElementText EnterTLEText(Application& app, std::string_view text);

/// Fills `TTLE` from a file; the user then presses one of the buttons, and `LCommandOutput` says so. A file that cannot
/// be read, is larger than `kLargestTLEFile`, or is a message without any usable record gives the message box "Error
/// Loading File" with the file's name and the reason, and leaves the box as it was. What else of a message cannot be
/// used is told in a message box of its own. Returns whether the file was read.
bool LoadTLEFile(Application& app, const std::filesystem::path& path);

/// Puts element sets that the user pastes outside of the box into `TTLE`, behind what waits there, and `LCommandOutput`
/// says so; what of a message was left out, and why, is told in a message box. Text without an element set, or of more
/// than `kLargestTLEFile`, is told in `LCommandOutput` and left alone. Returns whether the box has them.
bool PasteTLEText(Application& app, std::string_view text);

/// What comes into `TTLE` itself when the user pastes `text` there: the sets of an Orbit Mean-Elements Message in two
/// lines, any other text as it is. `LCommandOutput` says what of a message was left out; a message without any usable
/// record gives nothing.
std::string TextPastedIntoBox(MainControls& main, std::string_view text);

}  // namespace glintara
