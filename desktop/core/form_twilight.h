#pragma once

// The window of the twilight.

#include "desktop/core/settings_form.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Twilight Settings": the elevation of the Sun from which it is day.
class FormTwilight : public SettingsForm {
  public:
    FormTwilight(Application& app, QWidget* parent);
};

}  // namespace glintara::desktop
