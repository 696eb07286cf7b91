#pragma once

// The window that shows how far a long scan is.

#include <QDialog>

#include "state/application.h"

namespace glintara::desktop {

/// "Progress": mirrors the form's controls. While it is open no other window takes a command. Esc and its frame's close
/// button abort the work, whose end closes it.
class FormProgress : public QDialog {
  public:
    FormProgress(Application& app, QWidget* parent);
    FormProgress(const FormProgress&) = delete;
    FormProgress& operator=(const FormProgress&) = delete;
    ~FormProgress() override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    ProgressControls& form_;
};

}  // namespace glintara::desktop
