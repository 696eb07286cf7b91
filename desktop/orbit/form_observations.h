#pragma once

// The window of the observations.

#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QSettings>

#include "desktop/orbit/iod_list_model.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Observations": the object and the conditions of an observation, and the list of the observations as lines. In the
/// list the usual keys copy, paste and delete, and a double click or Return edits a line in its place.
class FormObservations : public QDialog {
  public:
    /// `store` remembers where files of observations were last.
    FormObservations(Application& app, QSettings& store, QWidget* parent);
    FormObservations(const FormObservations&) = delete;
    FormObservations& operator=(const FormObservations&) = delete;
    ~FormObservations() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* BuildObject();
    QWidget* BuildConditions();
    QLayout* BuildCommands();
    QLayout* BuildList();
    QLayout* BuildEntry();
    QLayout* BuildButtons();
    void ConnectFiles();
    void ShowList();
    void TakeSelection();
    bool ListKey(QKeyEvent& key);
    QString Folder() const;
    void KeepFolder(const QString& file);

    Application& app_;
    ObservationControls& form_;
    QSettings& store_;
    IODListModel model_;
    QListView* list_ = nullptr;
    QLineEdit* entry_ = nullptr;
    bool busy_ = false;  // list and control are being brought into line
};

}  // namespace glintara::desktop
