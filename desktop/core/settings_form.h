#pragma once

// What the windows of the settings have in common.

#include <QDialog>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

#include "state/controls.h"

namespace glintara::desktop {

/// A window that a control opens and closes. Esc closes it and changes nothing.
class SettingsForm : public QDialog {
  public:
    SettingsForm(Observed<bool>& visible, const char* name, const QString& title, QWidget* parent);
    SettingsForm(const SettingsForm&) = delete;
    SettingsForm& operator=(const SettingsForm&) = delete;

  protected:
    /// `field` has the keyboard when the window opens, and what is typed takes the place of its text.
    void BeginWith(QLineEdit& field) { first_ = &field; }

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    Observed<bool>& visible_;
    QLineEdit* first_ = nullptr;
};

/// A field of so many characters, in the face of numbers, under the control's name. Its label gives it a name to be
/// told by.
QLineEdit* MakeNumberField(TextBox& control, const char* name, const Label& caption, int characters);

/// A button that Return presses from any field.
QPushButton* MakeDefaultButton(Button& control, const char* name);

/// A button that Return presses only when it has the keyboard.
QPushButton* MakePlainButton(Button& control, const char* name);

/// The row that ends a window: `COk`, which Return presses, and `CCancel`, at the right.
QLayout* MakeOkAndCancel(Button& ok, Button& cancel);

}  // namespace glintara::desktop
