#pragma once

// The manual, as it stands with the program.

#include <QDialog>

namespace glintara::desktop {

/// "Help": a page to be read, with its pictures. It comes from inside of the program, so it is there whatever is
/// installed; no other program is started, and links that lead out of it are not followed.
class FormHelp : public QDialog {
  public:
    explicit FormHelp(QWidget* parent);
};

}  // namespace glintara::desktop
