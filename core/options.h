#pragma once

// The options: check boxes that hold them, menu entries that mirror them, and what else follows when one changes.

#include <array>
#include <cstddef>
#include <cstdint>
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

/// The boxes that are of no use without a satellite.
inline constexpr std::size_t kSatelliteBoxCount = 10;

std::array<CheckBox*, kSatelliteBoxCount> BoxesThatNeedSatellites(MainControls& main);

/// What decides now which boxes can be used.
UsableInputs CurrentInputs(const Application& app);

/// Whether `box`, one of the main window's, can be used by the rules: of the sky, of satellites, orbits and flares.
/// What no rule speaks of always can.
bool CanBeUsed(Application& app, const CheckBox& box);

/// Works out which controls can be used now: what needs satellites, an orbit drawn, flares shown. A box changes only
/// when what decides it has changed since the last call, so that the states of a loaded option string stand until then.
/// The boxes of the sky are left to `SetSkyOptions`.
void RefreshEnabled(Application& app);

/// Least and greatest size of the stars.
inline constexpr double kLeastStarSize = 0;
inline constexpr double kMostStarSize = 30;

/// A size of the stars that comes from outside, as `StarSizeScale` can hold it.
std::int16_t StarSize(double size);

/// Writes the labels of the star limit and of the star size.
void ShowStarLimits(Application& app);

/// What the options ask of other rooms. What is empty is not asked.
struct OptionHooks {
    std::function<void()> syncronizeTime;   ///< works the displayed instant out
    std::function<void()> clockTick;        ///< the tick of the clock, at once
    std::function<void()> rebuildStarList;  ///< after a change of `MaxStarMag`
};

/// Hangs its handler on every check box and every menu entry that mirrors or is an option.
void ConnectOptions(Application& app, const OptionHooks& hooks);

}  // namespace glintara
