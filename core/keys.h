#pragma once

// What the keys of the main window do.

#include <string>

#include "core/run_loop.h"
#include "state/application.h"

namespace glintara {

/// Keys without a character.
enum class SpecialKey { None, F1, F2, F3, F4, F5, F6, F7, F8, F9, F11, Up, Down, Left, Right, Escape };

/// One key as it was pressed. Letters are capitals whatever the shift.
struct KeyPress {
    char character = 0;
    SpecialKey special = SpecialKey::None;
    bool shift = false;
};

/// Whether the key acts in the other windows of the program too, where no text takes it: the function keys, and those
/// of the displayed instant.
bool ActsInEveryWindow(const KeyPress& key);

/// Acts on a key that no text field has taken; while `KeyLock` is set there is none. Any key cuts the opening short and
/// stops the idle turning; `U` does not start again what it has just stopped. A key whose control is disabled, or
/// stands for what is still to come, does nothing. Returns whether the key means anything.
bool Form_KeyDown(Application& app, RunLoop& loop, const KeyPress& key);

/// The key that does what `entry` does, as a menu shows it ("F8", "Shift+O"); empty for none.
std::string KeyTextOf(MainControls& main, const MenuEntry& entry);

}  // namespace glintara
