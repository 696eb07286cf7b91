#pragma once

// The window of the satellite list.

#include <QDialog>
#include <QLabel>
#include <QListView>

#include "desktop/orbit/satellite_list_model.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Satellites": the whole list, in the order of the orbit numbers, and which of it is selected. Searches and updates
/// keep to the selection. A double click, or Return, makes a satellite the working one.
class FormSatellites : public QDialog {
  public:
    FormSatellites(Application& app, QWidget* parent);
    FormSatellites(const FormSatellites&) = delete;
    FormSatellites& operator=(const FormSatellites&) = delete;
    ~FormSatellites() override;

    /// Shows the table as it is now: after satellites came or went, and after another room has changed them or their
    /// selection.
    void UpDateAll();

    /// Shows which satellite works. To be called whenever another one has begun to.
    void ShowWorkingSatellite();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLayout* BuildButtons();
    void ShowSelection(const QItemSelection& selection);
    void TakeSelection();
    void InvertSelection();
    void CountSelection();
    void MakeWorking(const QModelIndex& row);

    Application& app_;
    SatelliteListModel model_;
    QListView* list_;
    QLabel* count_;
    QLabel* working_;
    bool busy_ = false;  // the selection is being set by the program, not by the user
};

}  // namespace glintara::desktop
