#pragma once

// The window of the colours and the interval of the news.

#include <QListWidget>

#include "core/colors.h"
#include "desktop/core/settings_form.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Colors and other Settings".
class FormColors : public SettingsForm {
  public:
    FormColors(Application& app, QWidget* parent);

  private:
    QLayout* BuildLists();
    QLayout* BuildShadow();
    QWidget* BuildInterval();
    QLayout* BuildButtons();

    ColorControls& form_;
};

}  // namespace glintara::desktop
