#pragma once

// Whom the keyboard belongs to. The keys of the program are those of the picture; a control has them only when it was
// reached by Tab, and then no more than it needs; a text field has them while it is typed in.

#include <QKeyEvent>
#include <QWidget>
#include <functional>

namespace glintara::desktop {

/// Whether Shift at most is held: with other keys it is a shortcut of the desktop's, or writes another sign.
bool IsPlain(const QKeyEvent& event);

/// The key of Qt's that was pressed, but for digits and for the letters of other scripts. The keys of the number row are
/// digits by their place on the keyboard, whatever Shift or the layout makes of them, and so are those of the keypad
/// unless they move a cursor. A letter of another script, as with a Cyrillic or Greek layout, counts as the Latin letter
/// that keyboards have in its place.
int KeyByPlace(const QKeyEvent& event);

/// Leaves the keyboard with `picture` whatever is clicked in `panels`. A button there takes it by Tab alone; then Space
/// and Return press it, Tab goes on, Esc gives the keyboard back to the picture, and all other keys go to the window. A
/// text field is left by Esc too.
void KeepKeysWithPicture(QWidget& panels, QWidget& picture);

/// Hands the keys that no control of `form` takes to `keyPressed` (a key of Qt's, Latin, and whether Shift is held); where
/// that returns false they are the form's.
void HandKeysOn(QWidget& form, std::function<bool(int key, bool shift)> keyPressed);

}  // namespace glintara::desktop
