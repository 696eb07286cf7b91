#pragma once

// The search window: its controls, and what it remembers between searches.

#include "state/controls.h"

namespace glintara {

/// State of the search window "Search Flares / Transits".
struct FindFlareControls {
    FindFlareControls() {
        CAbort.Enabled = false;
        LElementAge.Visible = false;
    }

    Label LInterval{"Searching Interval [hours] :"};
    TextBox TInterval{"24"};
    Label LDist{"Maximum Distance [km] :"};
    TextBox TMaxDistance{"30"};
    CheckBox CAutoWSet{"Set found satellite as working satellite"};
    Button CFindFirst{"Find First"};
    Button CFindNext{"Find Next"};
    Button CAbort{"Abort"};  ///< enabled only while a search runs
    Button CExit{"Exit"};
    Button CSatList{"Satellite List..."};
    Label FrameSearch{"Search Flare Parameters"};
    Label LStatus{"Warning: search will involve only selected satellites"};
    Label LFlareTime{"", "The moment at which the centre is nearest to you"};
    Label LFlareSky{"", "Where the satellite stands in your sky at that moment, and how high the Sun"};
    Label LElementAge{"",
                      "Orbits change: elements tell them well near their own date only"};  ///< shown when that is far
    ProgressBar PB1;  ///< part of the interval that has been searched

    bool SearchAbort = false;  ///< set to end the running search at its next hour
    int LastFoundSat = -1;     ///< `OrbitNumber` of the last flare found; -1 for none
    int LastFoundMirror = -1;  ///< index of its surface; -1 for none
};

}  // namespace glintara
