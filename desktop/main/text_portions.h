#pragma once

// A text of any length in a box that stays quick.
//
// Qt lays out a text line by line as it is set, some five seconds for 16 MiB. So the box gets the beginning of a long
// text, and further portions as the user goes down to the end of what it has; the control holds everything. What is
// edited is the part that the box has, and the part behind it follows unchanged. Who replaces or deletes all of the
// box means all of the text; undoing that brings it back.

#include <QPlainTextEdit>
#include <cstddef>
#include <string>

#include "state/controls.h"

namespace glintara::desktop {

/// How much of a text is shown at first, and how much follows at a time, bytes; then to the end of the line.
inline constexpr std::size_t kTextPortion = std::size_t{128} << 10;

class TextPortions : public QObject {
  public:
    /// Belongs to `widget`. Both must outlive the window's use of them.
    TextPortions(QPlainTextEdit& widget, TextBox& control);

    /// What the user pastes, in place of the selection. Line ends are read as those of a file are, and blanks before
    /// them go.
    void Paste(const QString& text);

    /// What the user copies or cuts: the selection, or all of the text when all of the box is selected.
    QString SelectedText() const;

  private:
    /// Brings the box into line with the control.
    void Show();

    /// Brings the control into line with the box.
    void Tell();

    /// Moves a portion of the part behind into the box.
    void ShowMore();

    void GoneDown();

    void CountCharacters();

    bool AllSelected() const;

    /// The part in the box, as the control holds it.
    std::string ShownText() const;

    struct Parts {
        std::string shown;   // in the box
        std::string behind;  // not yet
    };

    QPlainTextEdit& widget_;
    TextBox& control_;
    Parts parts_;
    int characters_ = 0;        // in the box
    Parts replaced_;            // what was there before all of it was replaced
    bool allReplaced_ = false;  // by the change that is under way
    bool busy_ = false;         // this object changes the box itself
};

}  // namespace glintara::desktop
