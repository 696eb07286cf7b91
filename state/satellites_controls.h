#pragma once

// The window of the satellite list.

#include "state/controls.h"

namespace glintara {

/// The list of all satellites. Its lines and which of them are selected stand in the table of satellites itself; a
/// window reads them there.
struct SatelliteListBox {
    Observed<int> Shown;      ///< grows each time that the list is filled anew
    Observed<int> Order;      ///< grows each time that the same lines stand for other places of the table
    Observed<int> Selection;  ///< grows each time that another selection may hold
};

/// State of the window "Satellites".
struct SatellitesControls {
    SatelliteListBox LSat;
    Label LSel{"", "How much of the list is selected; searches, and updates on request, keep to the selection"};
    Label LWorkingSat{"", "The satellite that the main window shows"};
    TextBox TTLE{"", "Element set of the satellite that the main window shows"};

    Label FrameFilter{"Filter"};
    Label LWith{"Contains:"};
    TextBox TWith{"", "What the name holds; empty for every name"};
    Label LWithout{"without"};
    TextBox TWithout{"", "What the name does not hold; empty for no such text"};
    CheckBox CMCase{"Match Case", "Tell capitals from small letters"};
    Button CFindOr{"Select", "Add the satellites that the filter finds to the selection (Return)"};
    Button CFindAnd{"Deselect", "Take the satellites that the filter finds out of the selection"};

    Label FrameSelection{"Selection"};
    Button CSelectAll{"Select All", "Select every satellite (Ctrl+A in the list)"};
    Button CDeselectAll{"Deselect All", "Select none"};
    Button CInvertSel{"Invert Selection", "Select those that are not selected, and no others"};
    Button CSelEnabled{"Select Enabled Sats", "Select those that are enabled, and no others"};
    Button CAdvSelection{"Advanced Selection...",
                         "Select by orbit, age of the elements, surface model, or place in your sky"};

    Label FrameSelected{"Selected Satellites"};
    Button CEnable{"Enable Selected Sats", "Draw them and let them take part in searches"};
    Button CDisable{"Disable Selected Sats", "Neither draw them nor let them take part in searches"};
    Button CShowOrbit{"Show Orbit", "Draw their orbits too, not the working satellite's alone"};
    Button CHideOrbit{"Hide Orbit", "Draw their marks without orbits; the working satellite keeps its own"};
    Button CClearAllMirrors{"Clear All Mirrors", "Delete the surfaces of all satellites that are selected"};

    Button CClose{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
    bool Busy = false;  ///< the program is setting the list: what the window tells of its selection is not the user's
};

}  // namespace glintara
