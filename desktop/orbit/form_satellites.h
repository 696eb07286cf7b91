#pragma once

// The window of the satellite list.

#include <QDialog>
#include <QListView>

#include "desktop/orbit/satellite_list_model.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Satellites": lays out the form's controls and mirrors them, and shows the whole list in the order of the orbit
/// numbers. A double click, or Return in the list, makes a satellite the working one. It is open as long as
/// `app.Satellites.Visible` is set.
class FormSatellites : public QDialog {
  public:
    FormSatellites(Application& app, QWidget* parent);
    FormSatellites(const FormSatellites&) = delete;
    FormSatellites& operator=(const FormSatellites&) = delete;
    ~FormSatellites() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildList();
    QWidget* BuildFilter();
    QWidget* BuildSelection();
    QWidget* BuildSelected();
    QWidget* BuildWorking();
    void ShowList();
    void ShowSelection();
    void ShowFirstSelected();
    void ShowCurrent();
    void TakeSelection();
    void MakeWorking(const QModelIndex& row);

    Application& app_;
    SatellitesControls& form_;
    SatelliteListModel model_;
    QListView* list_ = nullptr;
    QItemSelection beforePress_;  // what was selected before the mouse was pressed last
};

}  // namespace glintara::desktop
