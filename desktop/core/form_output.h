#pragma once

// The window that reports are written into.

#include <QDialog>

#include "state/application.h"

namespace glintara::desktop {

/// "Output": a page of text, to be read, copied and cleared.
class FormOutput : public QDialog {
  public:
    FormOutput(Application& app, QWidget* parent);
    FormOutput(const FormOutput&) = delete;
    FormOutput& operator=(const FormOutput&) = delete;
    ~FormOutput() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    OutputControls& form_;
};

}  // namespace glintara::desktop
