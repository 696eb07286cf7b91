#pragma once

// The window of the satellite list, and the two buttons of the main window that act on the list.

#include "orbit/satellite_selection.h"
#include "state/application.h"

namespace glintara::satellite_manager {

/// Fills the list anew from the table, with the selection that the table has, and counts it.
void ShowAll(Application& app);

/// Writes `LSel`; what acts on the selected satellites can be pressed when there are some.
void CountSelection(Application& app);

/// Writes `LWorkingSat` and `TTLE`; both are empty without satellites.
void ShowWorkingSatellite(Application& app);

/// The list and the working satellite, after the table has changed. Nothing happens while the window is closed.
void UpDateAll(Application& app);

/// The window closes, with its owner.
void AutoClose(Application& app);

/// Applies the filter of the window: the satellites that it finds are selected, or deselected; the others stay.
void FilterSelection(Application& app, bool select);

/// The switches of the selected satellites. Without a selected one nothing happens.
void CEnable_click(Application& app);
void CDisable_click(Application& app);
void CShowOrbit_click(Application& app);
void CHideOrbit_click(Application& app);

/// The next satellite works: the first of the table goes to its end.
void CChangeOrbit_click(Application& app);

/// Empties the table, after a question; where nothing is lost none is asked.
void CClearOrbitList_click(Application& app);

/// Hangs the procedures on the controls. Deleting surfaces is the business of a room above this one.
void Connect(Application& app);

}  // namespace glintara::satellite_manager
