#pragma once

// All options as one text, for views and workspaces: two characters for each, "E" or "D" for enabled or not, "1" or "0"
// for set or not.

#include <cstddef>
#include <string>
#include <string_view>

#include "state/application.h"

namespace glintara {

/// Characters of an option string.
inline constexpr std::size_t kOptionTextLength = 100;

/// The state of the boxes, of `MnuTransitMode`, `MnuFloatingSite`, `MnuLib3D`, and of `TimerFastRefresh`, whose both
/// characters tell whether it runs.
std::string OptionsToString(const MainControls& main);

/// The reverse. What a shorter text does not hold comes out disabled and unset, any other character than "E" and "1"
/// counts as missing, and what follows the last option is passed over. `MnuLib3D` comes out enabled. Each box that
/// changes fires its handler, so locks and sky fit act on the camera, which is to be put back after it, not before;
/// the picture and the tick of the clock wait for the end. Of the two orbit models one stays set whatever the text says.
void StringToOptions(Application& app, std::string_view text);

/// After `StringToOptions` of the same text, when the list of satellites is in place: makes the options fit together.
/// Boxes that `text` held keep their state, unless what decides it (satellites, the orbit drawn, flares) is otherwise
/// now than when the text was written; those that it did not hold get theirs by the rules. `CSGP4` is set when the text
/// sets no orbit model. The Earth is not hidden without a sky.
void SettleOptions(Application& app, std::string_view text);

}  // namespace glintara
