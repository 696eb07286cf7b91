#pragma once

// The window in which the displayed instant is typed.

#include "desktop/core/settings_form.h"
#include "state/application.h"

namespace glintara::desktop {

/// "Date and Time": a date, a time, a calendar. The cursor keys up and down step the date by a day, the page keys by a
/// month; a double click on a day goes there.
class FormDate : public SettingsForm {
  public:
    FormDate(Application& app, QWidget* parent);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLayout* BuildFields();
    QWidget* BuildCalendar();
    bool StepByKey(int key);

    Application& app_;
    DateEntryControls& form_;
    QLineEdit* date_ = nullptr;
};

}  // namespace glintara::desktop
