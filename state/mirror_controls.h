#pragma once

// The surface editor: the options by which the design of a satellite's surfaces is shown in the picture, and what the
// picture tells back.

#include <string_view>

#include "state/controls.h"

namespace glintara {

/// Words of the labels of the read-out; the number follows.
inline constexpr std::string_view kRotAngleWords = "ANGLE [°]: ";
inline constexpr std::string_view kRotTiltWords = "TILT  [°]: ";
inline constexpr std::string_view kRotRMAWords = "RMA [°]: ";
inline constexpr std::string_view kRotRAWords = "RA [°]: ";
inline constexpr std::string_view kRotDECWords = "DEC [°]: ";

/// Last step of a slider that goes once round in tenths of a degree.
inline constexpr int kLastTenthOfTurn = 3599;

/// State of the surface editor.
struct MirrorControls {
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
};

}  // namespace glintara
