#include "core/real_time_step.h"

#include <algorithm>
#include <cmath>

#include "engine/astro/number_text.h"

namespace glintara::real_time_step {

namespace {

void ShowStep(Application& app) {
    app.Settings.RealTime.LTStep.Caption = PlainNumberText(app.Data.RealTimeStep) + " s";
}

}  // namespace

void Open(Application& app) {
    RealTimeControls& form = app.Settings.RealTime;
    double& step = app.Data.RealTimeStep;
    step = std::isnan(step)
               ? form.STime.Least
               : std::clamp(step, static_cast<double>(form.STime.Least), static_cast<double>(form.STime.Most));
    form.STime.MoveTo(static_cast<int>(step));
    ShowStep(app);
    form.Visible = true;
}

void Connect(Application& app) {
    RealTimeControls& form = app.Settings.RealTime;
    form.STime.Value.SetHandler([&app, &form] {
        // The slider shows the whole seconds of a step that has a fraction.
        if (static_cast<int>(app.Data.RealTimeStep) == form.STime.Value) return;
        app.Data.RealTimeStep = form.STime.Value;
        ShowStep(app);
        app.Windows.UpdateGraphicsLevel2();
    });
    form.CExit.SetClickHandler([&form] { form.Visible = false; });
}

}  // namespace glintara::real_time_step
