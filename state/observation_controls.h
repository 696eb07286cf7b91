#pragma once

// The window of observations: its controls, and the point under edit.

#include <array>
#include <cstdint>
#include <string>

#include "engine/astro/constants.h"
#include "state/controls.h"
#include "state/list_box.h"

namespace glintara {

/// One place of a satellite in the sky, as an observer reports it.
struct IODPoint {
    std::int32_t ObjectNumber = 0;  ///< catalogue number; 0 when it is not known
    std::int16_t LaunchYear = 0;    ///< two digits
    std::int16_t LaunchNumber = 0;
    std::array<char, 3> LaunchSuffix{' ', ' ', ' '};  ///< letters of the launch piece, blanks behind
    std::int32_t StationCode = 0;                     ///< number of the observer
    char Condition = 'G';                             ///< of the sky: one of `kConditionLetters`
    std::int32_t Year = 0;                            ///< UTC
    std::int32_t Month = 0;
    std::int32_t Day = 0;
    std::int32_t Hour = 0;
    std::int32_t Minute = 0;
    double Second = 0;                           ///< with fraction
    double TimeAccuracy = 0.1;                   ///< seconds; 90 or more: not known
    double PositionAccuracy = 0.25 * kDegToRad;  ///< radians; 90 degrees or more: not known
    double Declination = 0;                      ///< radians, mean equator and equinox of J2000
    double RightAscension = 0;                   ///< likewise

    friend bool operator==(const IODPoint&, const IODPoint&) = default;
};

inline constexpr std::size_t kConditionCount = 6;

/// State of the window "Observations".
struct ObservationControls {
    Label FrameObject{"Object Info"};
    CheckBox COInfo{"Take from Selected Satellite",
                    "Number and launch are those of the satellite that the main window shows"};
    Label LSatNumber{"Object Number:"};
    TextBox TSatNumber{"", "Catalogue number; those above 99999 also in the form A0000"};
    Label LLaunchYear{"Launch Year:"};
    TextBox TLaunchYear{"", "Year of the launch, its last two digits"};
    Label LLaunchNumber{"Launch N.:"};
    TextBox TLaunchNumber{"", "Number of the launch in its year"};
    Label LLaunchSuffix{"Launch Suffix:"};
    TextBox TLaunchSuffix{"", "Letters of the piece of the launch, up to three"};

    Label FObs1{"Conditions"};
    /// The conditions of the sky, in the order of `kConditionLetters`.
    std::array<OptionButton, kConditionCount> Option1{
        OptionButton("Excellent", "E: sky, sight and timing as good as they get"),
        OptionButton("Good", "G", true),
        OptionButton("Fair", "F"),
        OptionButton("Poor", "P"),
        OptionButton("Bad", "B"),
        OptionButton("Terrible", "T: what could be got at all"),
    };

    Label LIODCaption{"Observations (IOD Format)"};
    ListBox LIOD;
    TextBox TIODLine{"", "A line in the IOD format, to be added to the list"};
    Button CAddLine{"Add", "Add the typed line to the list"};

    Button CApply{"Apply", "Write object and conditions into the selected lines"};
    Button CEnDisPointer{"Enable/Disable Sky Pointer", "The pointer by which a place in the sky is taken"};
    Button CExport{"Export", "Print all lines into the output window"};
    Button CClearAllIOD{"Clear All", "Empty the list"};
    Button CDeleteIOD{"Delete", "Take the selected lines out of the list"};
    Button CCopyIOD{"Copy", "Copy the selected lines to the clipboard"};
    Button CPasteIOD{"Paste", "Add the lines of the clipboard to the list"};
    Button CLoadIOD{"Load...", "Add the lines of a text file to the list"};
    Button CSaveIOD{"Save...", "Write all lines to a text file"};
    Button CClose{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it

    IODPoint Point;  ///< the point under edit: that of the line that was selected or defined last
};

}  // namespace glintara
