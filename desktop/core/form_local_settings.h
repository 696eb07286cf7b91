#pragma once

// The window of the observer's place, time zone and number.

#include "desktop/core/settings_form.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Local Settings".
class FormLocalSettings : public SettingsForm {
  public:
    FormLocalSettings(Application& app, QWidget* parent);

  private:
    QWidget* BuildPlace();
    QWidget* BuildTime();

    LocalSettingsControls& form_;
};

}  // namespace glintara::desktop
