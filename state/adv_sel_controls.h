#pragma once

// The window that selects satellites by what is known of them.

#include <string_view>

#include "state/controls.h"

namespace glintara {

/// A quantity that is to lie between two numbers, both included; an empty field is no limit.
struct RangeFields {
    RangeFields(std::string_view caption, std::string_view toolTip) : Caption(caption, toolTip) {}

    Label Caption;
    TextBox TFrom{"", "The least that is selected; empty for no limit"};
    TextBox TTo{"", "The most that is selected; empty for no limit"};
    Label LNote;  ///< what is wrong with the fields
};

/// State of the window "Advanced Satellite Selection".
struct AdvSelControls {
    Label FrameOrbit{"Orbit"};
    RangeFields Inclination{"Inclination [deg]", "Of the orbit to the equator, 0 to 180"};
    RangeFields Perigee{"Perigee height [km]", "Over the sphere through your place, as the orbit details tell it"};
    RangeFields Apogee{"Apogee height [km]", "Over the sphere through your place, as the orbit details tell it"};
    RangeFields Period{"Period [min]", "Of one revolution"};
    RangeFields Eccentricity{"Eccentricity", "0 for a circle, below 1"};

    Label FrameElements{"Elements"};
    RangeFields Age{"Age [days]", "From their epoch to the displayed moment; negative when the epoch is later"};

    Label FrameModel{"Surface Model"};
    OptionButton OAnyModel{"With or without", "Whatever surfaces are known", true};
    OptionButton OWithModel{"With a surface model", "Only those that can flare"};
    OptionButton OWithoutModel{"Without a surface model", "Only those that cannot flare"};

    Label FrameSky{"At the Displayed Moment"};
    CheckBox CLit{"In sunlight", "Only those that are outside the Earth's shadow"};
    CheckBox CAbove{"Above your horizon", "Only those that stand higher than that in the sky of your place"};
    Label LMinElevation{"Minimum elevation [deg]"};
    TextBox TMinElevation{"0", "Height over the horizon, -90 to 90; empty for 0"};
    Label LElevationNote;  ///< what is wrong with the field

    Label FrameHow{"What Becomes of the Selection"};
    OptionButton OReplace{"Replace", "Select what matches, and nothing else", true};
    OptionButton OAdd{"Add to it", "Select what matches besides what is selected"};
    OptionButton OTake{"Take from it", "Deselect what matches"};

    Label LCount;  ///< how many match, and how many "Apply" would leave selected
    Button CApply{"Apply", "Select as the count says (Return)"};
    Button CClear{"Clear Fields", "Take all limits away"};
    Button CClose{"CLOSE", "Close this window"};

    Timer TimerCount{1000};  ///< counts again while the sky moves on

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
    bool Muted = false;      ///< the program is setting the fields: they are counted once, at the end
};

}  // namespace glintara
