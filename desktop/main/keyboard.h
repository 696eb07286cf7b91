#pragma once

// Whom the keyboard belongs to. The keys of the program are those of the picture; a control has them only when it was
// reached by Tab, and then no more than it needs; a text field has them while it is typed in.

#include <QWidget>
#include <functional>

namespace glintara::desktop {

/// Leaves the keyboard with `picture` whatever is clicked in `panels`. A button there takes it by Tab alone; then Space
/// and Return press it, Tab goes on, Esc gives the keyboard back to the picture, and all other keys go to the window. A
/// text field is left by Esc too.
void KeepKeysWithPicture(QWidget& panels, QWidget& picture);

/// Hands the keys that no control of `form` takes to `keyPressed` (a key of Qt's, and whether Shift is held); where
/// that returns false they are the form's.
void HandKeysOn(QWidget& form, std::function<bool(int key, bool shift)> keyPressed);

}  // namespace glintara::desktop
