#pragma once

// What the program is, and whose data it shows.

#include <QDialog>

namespace glintara::desktop {

/// "About": the program's version and date, and where its data come from, under which licences.
class FormAbout : public QDialog {
  public:
    explicit FormAbout(QWidget* parent);
};

}  // namespace glintara::desktop
