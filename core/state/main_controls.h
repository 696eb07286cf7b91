#pragma once

// The controls of the main window.

#include <array>
#include <cstddef>

#include "core/state/controls.h"

namespace glintara {

/// Entry of `MnuTransitMode` that turns the search and the tracks from flares to transits.
inline constexpr std::size_t kTransitEntry = 1;

/// The controls of the main window, as they stand when the program starts.
struct MainControls {
    MainControls() { MnuTransitMode[0].Visible = false; }

    // Texts.
    Label LCommandOutput;  ///< what the last command did
    Label LDateTime;       ///< the displayed instant
    Label LJD;             ///< the displayed instant as a Julian date, and the local sidereal angle
    TextBox TTLE;          ///< element sets that wait to be admitted; lines end in CR LF

    // Element sets.
    Button CApplyTLEOrbit{"Add TLE", "Add every satellite of the text to the list"};
    Button CUpdateTLE{"Update TLE", "Replace the satellites that are in the list already and add the others"};
    MenuEntry MnuLoadTLE{"Load TLE file..."};

    // Orbit model: one of the two is set.
    OptionButton CSGP1{"SGP1", "Employ a simplified SGP1 model for the orbit propagation"};
    OptionButton CSGP4{"SGP4", "Employ the SGP4/SDP4 model for the orbit propagation (Revised SpaceTrack Report No.3)",
                       true};
    CheckBox CPlotOrbit{"Plot Orbit"};

    // Flares and transits.
    CheckBox CIridiumFlares{"Show Satellite Flares/Shadows", "", true};
    CheckBox CFlareTrack{"Flare/Tr Track"};
    CheckBox CDayFlares{"Include Day Time Tracks",
                        "Checking this option also day flares will be tracked (Sun above the horizont for the "
                        "location of the flare centre)."};
    CheckBox CAntennaID{"Show Flaring Surface ID"};
    CheckBox CMoonFlares{"Moon Light Flare/Shadow",
                         "Use the Moon as light source for flare plotting (No supported yet for flare tracking)"};
    CheckBox CNOSSFlare{"NOSS Flare"};
    std::array<MenuEntry, 2> MnuTransitMode{MenuEntry{}, MenuEntry{"Transit Mode"}};  ///< only `kTransitEntry` is shown

    // Clock.
    CheckBox CRealTime{"Run Time", "", true};
    CheckBox CLocalTime{"Local Time"};
};

}  // namespace glintara
