#pragma once

// The windows of the settings: the observer's place and time zone, the real-time step, the colours, the twilight.

#include <string_view>

#include "state/controls.h"
#include "state/list_box.h"

namespace glintara {

/// State of the window "Local Settings".
struct LocalSettingsControls {
    Label FramePlace{"Place"};
    Label LLAT{"Latitude [°]:"};
    TextBox TLAT{"",
                 "Degrees, north positive, on the WGS 84 ellipsoid: 48.2082, or degrees, minutes and seconds: "
                 "48 12 29.5 N"};
    Label LLON{"Longitude [°]:"};
    TextBox TLON{"", "Degrees, east positive: 16.3738, or degrees, minutes and seconds: 16 22 25.7 E"};
    Label LALT{"Height [m]:"};
    TextBox TALT{"", "Metres above the WGS 84 ellipsoid, as receivers give it"};
    Label LPlace{"", "How the three texts are read"};
    Button CFromTimeZone{"From Time Zone",
                         "Fill in the chief place of this computer's time zone, as a first guess of yours"};
    Label LTimeZone;  ///< what the button has found

    Label FrameTime{"Time and Observer"};
    Label LUTC{"Local Time minus UTC [h]:"};
    TextBox TUTC{"", "Whole hours that local time is ahead of UTC, -24 to 24"};
    CheckBox CComputerZone{"", "", true};  ///< set while `TUTC` is the computer's own offset, which follows the date
    Label LStationCode{"Station Code:"};
    TextBox TStationCode{"", "Your number as an observer, four digits; it stands in the lines of observations"};

    Button COk{"OK", "Take all that stands here, and close this window"};
    Button CCancel{"Cancel", "Close this window and change nothing"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

/// Seconds between which the real-time step is chosen.
inline constexpr int kLeastRealTimeStep = 1;
inline constexpr int kMostRealTimeStep = 60;

/// State of the window of the real-time step.
struct RealTimeControls {
    Slider STime{kLeastRealTimeStep, kMostRealTimeStep, "How often a new picture is made while the clock runs"};
    Label LTStep{"", "Seconds from one picture to the next"};
    Button CExit{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

/// State of the window "Colors and other Settings". What is chosen here is in force at once.
struct ColorControls {
    Label LSoilCaption{"Soil Color:"};
    ListBox LSoilColor;  ///< the lines of `kSoilPalette`, counted from 0
    Label LSeaCaption{"Sea Color:"};
    ListBox LSealColor;  ///< the lines of `kSeaPalette`
    Label LShadow{"Shadowing Schema:"};
    Slider SShadow{0, 255, "How much light the night side keeps: 0 is black, 255 is as bright as day"};
    Label LShadowLevel{"", "The level of the slider, 0 to 255"};

    Label FrameUpdate{"Update Check Interval"};
    OptionButton CKI0{"Always", "Look for news at every start"};
    OptionButton CKI1{"Every Day", "Look for news when the last look is more than a day old"};
    OptionButton CKI3{"Every 3 Days", "Look for news when the last look is more than three days old", true};
    OptionButton CKI7{"Every Week", "Look for news when the last look is more than a week old"};
    Label LCheckInt{"", "Days between two looks"};

    Button CDefault{"Default", "Back to the colors and the interval that the program starts with"};
    Button CClose{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

/// State of the window of the twilight.
struct TwilightControls {
    Label LTwilight{"Sun Elevation [°]:"};
    TextBox TTwilight{"", "This is the minimum sun elevation to consider day time."};
    Label LHelp{"This is the minimum sun elevation to consider day time."};
    Button CApply{"Apply", "Take the elevation, held between -90 and 90 degrees"};
    Button COk{"OK", "Take the elevation, and close this window"};
    Button CClose{"Close", "Close this window; what was applied stays"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

/// State of the four windows.
struct SettingsControls {
    LocalSettingsControls Local;
    RealTimeControls RealTime;
    ColorControls Colors;
    TwilightControls Twilight;
};

}  // namespace glintara
