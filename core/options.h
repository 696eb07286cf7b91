#pragma once

// The options: check boxes that hold them, menu entries that mirror them, and what else follows when one changes.

#include <array>
#include <cstddef>
#include <functional>

#include "state/application.h"

namespace glintara {

/// A check box and the menu entry that shows the same option.
struct OptionPair {
    CheckBox* box = nullptr;
    MenuEntry* entry = nullptr;
};

/// Check boxes with a menu entry that is checked when the box is set. `CLocalTime` is not among them: its entry
/// `MnuNoUTC` shows the opposite.
inline constexpr std::size_t kOptionPairCount = 43;

std::array<OptionPair, kOptionPairCount> OptionPairs(MainControls& main);

/// Copies every check box onto its menu entry, value and `Enabled`; the orientation entries take `Enabled` from their
/// buttons.
void SyncronizeMenuBar(MainControls& main);

/// Enables the boxes of the sky or disables them. Those of the stars' sides stay as they are while the map is flat.
void SetSkyOptions(Application& app, bool enabled);

/// Works out which controls can be used now: what needs satellites, an orbit drawn, flares shown. The boxes of the sky
/// are left to `SetSkyOptions`.
void RefreshEnabled(Application& app);

/// What the options ask of other rooms. What is empty is not asked.
struct OptionHooks {
    std::function<void()> syncronizeTime;   ///< works the displayed instant out
    std::function<void()> clockTick;        ///< the tick of the clock, at once
    std::function<void()> rebuildStarList;  ///< after a change of `MaxStarMag`
};

/// Hangs its handler on every check box and every menu entry that mirrors or is an option.
void ConnectOptions(Application& app, const OptionHooks& hooks);

}  // namespace glintara
