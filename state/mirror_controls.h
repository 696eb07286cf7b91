#pragma once

// The surface editor: the surface model of the working satellite under edit, and the options by which its design is
// shown in the picture, with what the picture tells back.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "state/controls.h"
#include "state/list_box.h"
#include "state/satellite_record.h"
#include "state/surface_model.h"

namespace glintara {

/// Words of the labels of the read-out; the number follows.
inline constexpr std::string_view kRotAngleWords = "ANGLE [°]: ";
inline constexpr std::string_view kRotTiltWords = "TILT  [°]: ";
inline constexpr std::string_view kRotRMAWords = "RMA [°]: ";
inline constexpr std::string_view kRotRAWords = "RA [°]: ";
inline constexpr std::string_view kRotDECWords = "DEC [°]: ";

/// Last step of a slider that goes once round in tenths of a degree.
inline constexpr int kLastTenthOfTurn = 3599;

/// Options of an orientation, by their places; one place has none.
inline constexpr std::size_t kOrientationOptions = 6;
inline constexpr std::size_t kNoOrientationOption = 3;

/// A box for a number that never wears the number down: it is read only when its text is another than the program put
/// there.
struct NumberBox : TextBox {
    using TextBox::TextBox;

    std::string Shown;  ///< the text that the program put there, or read from there, last
};

/// State of the surface editor.
struct MirrorControls {
    Label LSatRef{"", "The working satellite, whose surfaces these are"};

    // The surfaces.
    ListBox LMirrors;
    Clickable LMirrorsTwice;  ///< the list pressed twice
    Button CAddMirror{"Add Mirror", "Add a surface at the end of the list"};
    Button CDeleteMirror{"Delete Mirror", "Take the current surface out of the list"};
    Button CMoveUp{"Move Up", "Make the current surface the first; a rotating body is drawn by its first"};
    Button CClearAllMirrors{"Clear All Mirrors", "Delete the surfaces of all satellites that are selected in the list"};

    // How they are carried around the orbit.
    Label FOrient{"Satellite Orientation"};
    std::array<OptionButton, kOrientationOptions> OOrient{
        OptionButton("Vertical, Along Track", "One axis up, one along the flight"),
        OptionButton("Vertical, Along a Target", "One axis up, one towards another satellite"),
        OptionButton("Rotating", "Spinning about an axis fixed in space; the first surface counts"),
        OptionButton(),
        OptionButton("V-Sun", "One axis up, one towards the Sun"),
        OptionButton("None", "Fixed in space: right ascension and declination"),
    };
    OptionButton OUndefined{"Undefined", "Not known: the satellite does not flare"};
    Label LRotAxisRA{"Rotation Axis RA [deg]"};
    NumberBox TRotAxisRA{"", "Right ascension of the axis about which the body spins"};
    Label LRotAxisDEC{"Rotation Axis DEC [deg]"};
    NumberBox TRotAxisDEC{"", "Declination of the axis about which the body spins"};
    Button CRotation{"Compute Rotation Axis",
                     "From the first three surfaces: the same one, fitted to flares at three moments"};
    Label LExtra1{"Target Satellite N."};
    NumberBox TExtra1{"", "Catalogue number of the satellite towards which this one is turned"};
    Label LExtraInfo1;

    // The current surface.
    Label FMirrorData{"Mirror Data"};
    Label LName{"Mirror Name"};
    TextBox TName{"", "Name of the surface, as the list and the flares show it"};
    Label LMID{"Mirror ID"};
    TextBox TMID{"", "Follows the name; satellites of one model share it"};
    Label LMagnify{"Scattering factor"};
    NumberBox TMagnify{"", "How much wider than the Sun's disc the light falls, 1 to 50"};
    Button CUpTime{"Update Time",
                   "Note the displayed moment as that of this surface; a double click in the list goes there"};
    Label FMirror{"Mirror Trimming"};
    Label LAngle{"Angle / RA [deg]"};
    NumberBox TAngle{"",
                     "From the reference ahead to the left, in the horizontal plane; without orientation right "
                     "ascension"};
    Slider SAngle{0, kLastTenthOfTurn, "Angle or right ascension in tenths of a degree"};
    Label LTilt{"Tilt / DEC [deg]"};
    NumberBox TTilt{"", "Downwards from the horizontal plane; without orientation declination"};
    Slider STilt{0, kLastTenthOfTurn, "Tilt or declination in tenths of a degree"};
    Button CFlareSet{"Auto Orient Mirror to flare",
                     "Turn the surface so that at the displayed moment it throws the sunlight on your place"};
    Button CBeamSet{"Auto Orient Beam to Hit",
                    "Turn the surface so that at the displayed moment it looks straight at your place"};
    Label LFitInfo;  ///< what speaks against the fit that was made last
    Timer TimerUpdate;

    // How the design is shown.
    Label FrameDesignDraw{"Design Draw Options"};

    Label LRotTeta{"Rot. Angle"};
    CheckBox CRotAng{"", "Show a rotating body at the angle of the slider instead of through its whole turn"};
    Slider SRotTeta{0, kLastTenthOfTurn, "How far a rotating body has turned, 0 to 359.9 degrees"};

    CheckBox CShowSourceRay{"Source Ray", "Draw the light's way from the Sun or the Moon to the satellite"};
    CheckBox CShowRotAxis{"Rotation Axis", "Draw the axis about which a rotating body spins"};
    CheckBox CShowMirrorNormal{"Mirror Normal", "Draw where the surfaces look"};
    CheckBox CForceIllumination{"Force Light", "Let satellites reflect light also in the shadow of the Earth"};

    // The read-out: where the first surface of the working satellite looks at the angle of the slider.
    Label LRotAngle{kRotAngleWords, "From the direction of flight, in the horizontal plane"};
    Label LRotTilt{kRotTiltWords, "Below the horizontal plane"};
    Label LRotRMA{kRotRMAWords, "Between the rotation axis and the surface's normal"};
    Label LRotRA{kRotRAWords, "Right ascension"};
    Label LRotDEC{kRotDECWords, "Declination"};

    // Many satellites at once.
    Label FSelected{"Selected Satellite Actions"};
    Button CCopyModel{"Copy the whole model to all Sats", "Give every selected satellite this model"};
    Button CSynchMirror{"Update this mirror ID to all Sats",
                        "Put the current surface in the place of those of the same ID, on every selected satellite"};
    Button CSelectWin{"Select Satellites", "Open the list in which satellites are selected"};

    Button CExportModel{"Export Model", "Print the model into the output window"};
    Button CApply{"Apply", "Give the satellite the model as it stands here"};
    Button COk{"OK", "Give the satellite the model as it stands here, and close"};
    Button CCancel{"Cancel", "Give the satellite back the model that it had when this window opened, and close"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it

    SatRecord Satellite;    ///< copy of the working satellite; its model is the one under edit
    SurfaceModel Backup;    ///< the model as it was when the window opened, or when the satellite began to work
    SurfaceModel InList;    ///< the model as the satellite in the list has it, as far as the editor knows
    int CurrentMirror = 0;  ///< index of the current surface; 0 for none
    bool Muted = false;     ///< the program is setting the controls: their handlers do nothing
};

}  // namespace glintara
