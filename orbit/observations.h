#pragma once

// The observer's list of observations. Its lines are the store: a line is read when it is needed and written again when
// something in it changes.

#include <filesystem>
#include <string>
#include <string_view>

#include "engine/astro/horizon.h"
#include "state/application.h"

namespace glintara::observations {

/// The letters of the conditions of the sky, from excellent to terrible.
inline constexpr std::string_view kConditionLetters = "EGFPBT";

/// Largest file that is read as observations, bytes: some hundred thousand lines.
inline constexpr std::size_t kLargestIODFile = std::size_t{8} << 20;

/// Place of `condition` among the letters, counted from 1, capital or not; the last for any other letter.
int ConditionIndex(char condition);

/// What `RefreshInfo` is called for.
enum class RefreshMode {
    Refresh,   ///< something that the window shows has changed
    AddPoint,  ///< a point has been defined
};

/// Brings the window up to date: every line is read and written again (what stands behind its columns is kept), and
/// with `COInfo` on the fields take the working satellite's data. Fields that the user is filling in stay as they are.
/// With `AddPoint`, `point` becomes the point under edit and the last line of the list, which is selected; the window
/// opens.
void RefreshInfo(Application& app, RefreshMode mode = RefreshMode::Refresh, const IODPoint& point = {});

/// Puts the point under edit into the fields and the condition option; with `COInfo` on, and a satellite in the list,
/// the fields take that satellite's data instead and are locked.
void ShowPoint(Application& app);

/// Defines a point at the displayed instant: `ofDate` is where the sky pointer stands, on the equator and equinox of
/// date; `timeStep` its step of time, seconds, and `pointerSize` its field of view, radians. The place is precessed to
/// J2000, the accuracies are the step's first digit and half the field. The station is the observer's, the object that
/// of `COInfo` or the point before. Returns the line, which is the new last one of the list.
std::string DefineIODPoint(Application& app, const Equatorial& ofDate, double timeStep, double pointerSize);

/// The button `CApply`: takes object and condition from the window into the point under edit, and writes them into the
/// selected lines: what differs from the point as it was, so that several lines keep what they do not share; of an
/// object taken from the satellite, all. A number that has no room in a line is refused with a message, and nothing
/// changes.
void CApply_click(Application& app);

/// The button `CClearAllIOD`: empties the list, after a question.
void CClearAllIOD_click(Application& app);

/// The button `CDeleteIOD`: takes the selected lines out of the list, after a question.
void CDeleteIOD_click(Application& app);

/// The button `CExport`: clears the output window and prints all lines into it.
void CExport_click(Application& app);

/// The button `CAddLine`: adds the typed line and empties its field.
void CAddLine_click(Application& app);

/// Adds the lines of a text that was typed, pasted or read, and selects them. Empty lines count for nothing. When one
/// of them is no observation a message says which and why, the list stays as it was and the answer is false; so it is
/// for a text without lines.
bool EnterIODLines(Application& app, std::string_view text);

/// Puts another text in the place of line `index`. When it is no observation a message says why and the line stays.
bool ReplaceIODLine(Application& app, int index, std::string_view text);

/// The lines of the list, one below the other: all of them, or those that are selected.
std::string AllLinesText(const Application& app);
std::string SelectedLinesText(const Application& app);

/// Adds the lines of a file. One that cannot be read, or is too large, is answered with "Error Loading File".
bool LoadIODFile(Application& app, const std::filesystem::path& path);

/// Writes all lines to a file; "Error Saving File" when that cannot be done.
bool SaveIODFile(Application& app, const std::filesystem::path& path);

/// Hangs the procedures on the controls of the window and shows the first point. Copying, pasting and the choice of
/// files are the window's own.
void Connect(Application& app);

}  // namespace glintara::observations
