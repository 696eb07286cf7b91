#pragma once

// The window that shows how far a long scan is, and ends it.

#include "state/controls.h"

namespace glintara {

/// State of the window "Progress". While it is open, no other window takes a command.
struct ProgressControls {
    Label LWork;               ///< what is being done
    ProgressBar ProgressBar1;  ///< how far it is
    Button CAbort{"Abort", "End the work; what has been found so far is kept"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
    bool Aborted = false;    ///< set to end the work at its next look
};

}  // namespace glintara
