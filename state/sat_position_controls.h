#pragma once

// The window of the working satellite's position.

#include <array>
#include <cstddef>

#include "state/controls.h"

namespace glintara {

/// Elements of `LInfo`.
inline constexpr std::size_t kInfoLines = 14;

/// State of the window "Satellite Info".
struct SatPositionControls {
    Label FrameSatPos{"Position and velocity"};
    std::array<Label, kInfoLines> LInfo;  ///< 0 the title, 1 to 12 the values; 13 stays empty
    Label LNote;                          ///< what the values are, or why there are none
    Button CCopy{"COPY", "Copy all lines (Ctrl+C, while none of them is marked)"};
    Button CClose{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

}  // namespace glintara
