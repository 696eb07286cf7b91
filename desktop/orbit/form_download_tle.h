#pragma once

// The window that downloads element sets.

#include <QDialog>
#include <QListView>
#include <QPointer>
#include <QStringListModel>

#include "orbit/download.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Download TLE From Internet": lays out the form's controls and mirrors them. It is open as long as
/// `app.Download.Visible` is set; closing it ends a download that is under way, and so does Esc.
class FormDownloadTLE : public QDialog {
  public:
    FormDownloadTLE(Application& app, Downloads& downloads, QWidget* parent);
    FormDownloadTLE(const FormDownloadTLE&) = delete;
    FormDownloadTLE& operator=(const FormDownloadTLE&) = delete;
    ~FormDownloadTLE() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QListView* BuildList();
    QWidget* BuildStrategy();
    QLayout* BuildButtons();
    QLayout* BuildProgress();
    void ShowLines();
    void ShowList();
    void ShowRunning();
    void TakeSelection();

    Application& app_;
    DownloadControls& form_;
    Downloads& downloads_;
    QStringListModel model_;
    QListView* list_ = nullptr;
    QPointer<QWidget> focusBefore_;  // what had the focus when the download began
    bool busy_ = false;              // the list is being brought into line with its control
};

}  // namespace glintara::desktop
