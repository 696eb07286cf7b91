#pragma once

// The window of the flare search.

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

#include "state/application.h"

namespace glintara::desktop {

/// "Search Flares / Transits": lays out the form's controls and mirrors them. Esc closes it, and aborts while a search
/// runs; closing it while a search runs aborts that, and closes when it has ended.
class FormFindFlare : public QDialog {
  public:
    FormFindFlare(Application& app, QWidget* parent);
    FormFindFlare(const FormFindFlare&) = delete;
    FormFindFlare& operator=(const FormFindFlare&) = delete;
    ~FormFindFlare() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool Searching() const { return app_.FindFlare.CAbort.Enabled; }
    QWidget* BuildParameters();
    QLayout* BuildButtons();
    void FollowSearch();

    Application& app_;
    QLineEdit* interval_ = nullptr;
    QPushButton* abort_ = nullptr;
    QWidget* focusBefore_ = nullptr;  // what had the focus when the search began
    bool returnFocus_ = false;        // the search has ended with the focus on Abort
    bool closeAfterSearch_ = false;
};

}  // namespace glintara::desktop
