#pragma once

// The window of the flare search.

#include <QDialog>

#include "core/state/application.h"

namespace glintara::desktop {

/// "Search Flares / Transits": lays out the form's controls and mirrors them.
class FormFindFlare : public QDialog {
  public:
    FormFindFlare(Application& app, QWidget* parent);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    Application& app_;
};

}  // namespace glintara::desktop
