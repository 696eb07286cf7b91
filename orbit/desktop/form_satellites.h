#pragma once

// The window of the satellite list.

#include <QDialog>
#include <QLabel>
#include <QListWidget>

#include "core/state/application.h"

namespace glintara::desktop {

/// "Satellites": the whole list, in the order of the orbit numbers, and which of it is selected. Searches and updates
/// keep to the selection.
class FormSatellites : public QDialog {
  public:
    FormSatellites(Application& app, QWidget* parent);

    /// Rebuilds the list from the table.
    void UpDateAll();

  private:
    void TakeSelection();
    void Select(bool all);
    void InvertSelection();
    void CountSelection();

    Application& app_;
    QListWidget* list_;
    QLabel* count_;
    bool busy_ = false;  // the list is being filled: its own signals are not the user's
};

}  // namespace glintara::desktop
