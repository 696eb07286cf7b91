#include "desktop/core/settings_form.h"

#include <QHBoxLayout>
#include <QShowEvent>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kNumberPixels = 12;

}  // namespace

SettingsForm::SettingsForm(Observed<bool>& visible, const char* name, const QString& title, QWidget* parent)
    : QDialog(parent), visible_(visible) {
    setObjectName(name);
    setWindowTitle(title);
}

void SettingsForm::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        visible_ = true;
        if (first_ != nullptr) {
            first_->setFocus();
            first_->selectAll();
        }
    }
    QDialog::showEvent(event);
}

void SettingsForm::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) visible_ = false;
    QDialog::hideEvent(event);
}

QLineEdit* MakeNumberField(TextBox& control, const char* name, const Label& caption, int characters) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    Bind(*field, control);
    field->setFont(NumberFont(kNumberPixels));
    // The two more are the room between the text and the frame.
    field->setFixedWidth((characters + 2) * field->fontMetrics().horizontalAdvance('0'));
    field->setAccessibleName(ToQt(caption.Caption));
    return field;
}

QPushButton* MakeDefaultButton(Button& control, const char* name) {
    QPushButton* const button = MakeButton(control, name);
    button->setDefault(true);
    return button;
}

QPushButton* MakePlainButton(Button& control, const char* name) {
    QPushButton* const button = MakeButton(control, name);
    button->setAutoDefault(false);
    return button;
}

QLayout* MakeOkAndCancel(Button& ok, Button& cancel) {
    auto* row = new QHBoxLayout;
    row->setSpacing(kControlGap);
    row->addStretch(1);
    row->addWidget(MakeDefaultButton(ok, "COk"));
    row->addWidget(MakePlainButton(cancel, "CCancel"));
    return row;
}

}  // namespace glintara::desktop
