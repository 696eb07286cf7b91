#pragma once

// The window of the real-time step.

#include "desktop/core/settings_form.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Real Time Step": a slider.
class FormRealTime : public SettingsForm {
  public:
    FormRealTime(Application& app, QWidget* parent);
};

}  // namespace glintara::desktop
