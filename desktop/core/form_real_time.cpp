#include "desktop/core/form_real_time.h"

#include <QHBoxLayout>
#include <QSlider>
#include <QVBoxLayout>

#include "desktop/main/bindings.h"
#include "desktop/main/form_parts.h"
#include "desktop/main/style.h"

namespace glintara::desktop {

namespace {

constexpr int kSliderWidth = 260;
constexpr int kStepPixels = 12;
constexpr int kPageSeconds = 5;

}  // namespace

FormRealTime::FormRealTime(Application& app, QWidget* parent)
    : SettingsForm(app.Settings.RealTime.Visible, "FormRealTime", "Real Time Step", parent) {
    RealTimeControls& form = app.Settings.RealTime;
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kFrameGap);
    auto* row = new QHBoxLayout;
    row->setSpacing(kFrameGap);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName("STime");
    slider->setAccessibleName("Seconds from one picture to the next");
    slider->setPageStep(kPageSeconds);
    slider->setMinimumWidth(kSliderWidth);
    Bind(*slider, form.STime);
    row->addWidget(slider, 1);
    QLabel* const step = MakeLabel(form.LTStep, "LTStep");
    step->setFont(NumberFont(kStepPixels));
    step->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    step->setMinimumWidth(step->fontMetrics().horizontalAdvance("00.00 s"));
    row->addWidget(step);
    column->addLayout(row);
    column->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(MakeDefaultButton(form.CExit, "CExit"));
    column->addLayout(buttons);
    slider->setFocus();
}

}  // namespace glintara::desktop
