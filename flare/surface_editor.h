#pragma once

// The editor of the working satellite's surface model. It works on a copy of the satellite and gives the model back
// with each `Apply`; the model as it was when the window opened is kept for "Cancel".
//
// What the boxes hold is read strictly: a text that is no number in its range is never taken. It stays where it was
// typed; a command tells of it in words and does nothing.

#include <string>
#include <string_view>

#include "flare/search.h"
#include "state/application.h"

namespace glintara::surface_editor {

/// Milliseconds from the last move of a slider to the `Apply` that follows.
inline constexpr int kTrimmingDelay = 500;

/// Angles are taken up to this magnitude, degrees.
inline constexpr double kLargestAngle = 1e6;

/// Takes a copy of the working satellite, keeps its model as the one that "Cancel" brings back, and opens the window.
/// While it is open, element sets wait: the buttons of the main window that change the list of satellites are off.
/// Nothing happens without a satellite, or when the window is open.
void OpenWindow(Application& app);

/// What the end of the window does, whichever way it closed: a move of a slider that still waits is forgotten, and the
/// buttons of the main window are on again. The satellite keeps what was last applied.
void CloseWindow(Application& app);

/// The working satellite is about to change: what is typed and readable is applied to the one that still works.
void ChangeSatelliteSignal(Application& app);

/// The list of satellites, or what is in it, has changed. When another satellite works, the editor goes over to it;
/// when its model has been changed by others, it takes that; otherwise what is under edit stays. Without satellites the
/// window closes.
void RefreshData(Application& app);

/// Reads the fields, gives the model to the satellite in the list, and shows it: in the window and in a new picture.
/// Fields that cannot be read stay as they are typed.
void Apply(Application& app);

/// A field has been left: applies when its text is not the one that the program put there.
void LeaveField(Application& app);

/// Shows surface `index` of the model, 1 to `MirrorCount`, as the current one. Refused as long as a field of the one
/// before cannot be read.
void SelectMirror(Application& app, int index);

/// Whether the text of that box can be read; true also for a box that is not in use.
bool IsReadable(Application& app, const NumberBox& box);

void CApply_click(Application& app);

/// Applies and closes.
void COk_click(Application& app);

/// Brings back the model of the opening and closes.
void CCancel_click(Application& app);

void CAddMirror_click(Application& app);
void CDeleteMirror_click(Application& app);

/// The current surface becomes the first; those before it move down by one.
void CMoveUp_click(Application& app);

/// Deletes the surfaces of all selected satellites, after a question. The window of the satellite list offers the same;
/// the editor need not be open.
void CClearAllMirrors_click(Application& app);

/// The displayed instant becomes that of the current surface.
void CUpTime_click(Application& app);

/// Fits the current surface to a flare, or its normal, at the observer's place and the displayed instant.
void CFlareSet_click(Application& app);
void CBeamSet_click(Application& app);

/// The rotation axis from the first three surfaces.
void CRotation_click(Application& app);

/// Gives the model to all selected satellites, after a question.
void CCopyModel_click(Application& app);

/// Puts the current surface in the place of those of the same identifier on all selected satellites, after a question.
void CSynchMirror_click(Application& app);

/// Prints the model into the output window, in place of what stood there.
void CExportModel_click(Application& app);

/// The list pressed twice: moves the clock to the moment of the current surface, if it has one.
void LMirrors_DblClick(Application& app, SearchClock& clock);

/// The text of the model, with its orientation in the window's words.
std::string SurfaceModelText(const Application& app, const SatRecord& satellite);

/// Hangs the procedures on the controls of the window. Choosing satellites is the window's own.
void Connect(Application& app, SearchClock& clock);

}  // namespace glintara::surface_editor
