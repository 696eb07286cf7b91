#include "desktop/core/form_twilight.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "core/box_numbers.h"
#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"

namespace glintara::desktop {

namespace {

constexpr int kAngleCharacters = 8;

}  // namespace

FormTwilight::FormTwilight(Application& app, QWidget* parent)
    : SettingsForm(app.Settings.Twilight.Visible, "FormTwilight", "Twilight Settings", parent) {
    TwilightControls& form = app.Settings.Twilight;
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* row = new QHBoxLayout;
    row->setSpacing(kFrameGap);
    QLabel* const caption = MakeLabel(form.LTwilight, "LTwilight");
    QLineEdit* const field = MakeNumberField(form.TTwilight, "TTwilight", form.LTwilight, kAngleCharacters);
    MarkUnless(*field, [](const std::string& text) { return ReadBoxNumber(text).whole; });
    caption->setBuddy(field);
    row->addWidget(caption);
    row->addWidget(field);
    row->addStretch(1);
    column->addLayout(row);
    QLabel* const help = MakeLabel(form.LHelp, "LHelp");
    help->setProperty("quiet", true);
    column->addWidget(help);
    column->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kControlGap);
    buttons->addStretch(1);
    buttons->addWidget(MakePlainButton(form.CApply, "CApply"));
    buttons->addWidget(MakeDefaultButton(form.COk, "COk"));
    buttons->addWidget(MakePlainButton(form.CClose, "CClose"));
    column->addLayout(buttons);
    BeginWith(*field);
}

}  // namespace glintara::desktop
