#include "desktop/program/settings_windows.h"

#include "core/colors.h"
#include "core/date_entry.h"
#include "core/local_settings.h"
#include "core/real_time_step.h"
#include "core/twilight.h"
#include "desktop/core/form_colors.h"
#include "desktop/core/form_date.h"
#include "desktop/core/form_local_settings.h"
#include "desktop/core/form_real_time.h"
#include "desktop/core/form_twilight.h"

namespace glintara::desktop {

namespace {

/// Neither the picture, which shows what is chosen, nor the panels are to be covered.
template <class Form>
ToolPlan PlanOf(std::string_view name, Application& app, MainScope& window) {
    return {.name = name,
            .make = [&app, &window] { return std::make_unique<Form>(app, &window); },
            .edge = [] { return Qt::LeftEdge; }};
}

}  // namespace

SettingsWindows::SettingsWindows(Application& app, const SimulatedTime& time, const ToolGround& ground)
    : app_(app),
      time_(time),
      local_(ground, app.Settings.Local.Visible, PlanOf<FormLocalSettings>("FormLocalSettings", app, ground.window)),
      realTime_(ground, app.Settings.RealTime.Visible, PlanOf<FormRealTime>("FormRealTime", app, ground.window)),
      colors_(ground, app.Settings.Colors.Visible, PlanOf<FormColors>("FormColors", app, ground.window)),
      twilight_(ground, app.Settings.Twilight.Visible, PlanOf<FormTwilight>("FormTwilight", app, ground.window)),
      date_(ground, app.DateEntry.Visible, PlanOf<FormDate>("FormDate", app, ground.window)) {}

void SettingsWindows::ShowLocalSettings() {
    local_settings::Open(app_, time_);
    local_.Show();
}

void SettingsWindows::ShowRealTime() {
    real_time_step::Open(app_);
    realTime_.Show();
}

void SettingsWindows::ShowColors() {
    form_colors::Open(app_);
    colors_.Show();
}

void SettingsWindows::ShowTwilight() {
    twilight::Open(app_);
    twilight_.Show();
}

void SettingsWindows::ShowDate() {
    date_entry::Open(app_, time_);
    date_.Show();
}

void SettingsWindows::Unload(std::string_view name) {
    for (ToolWindow* window : {&local_, &realTime_, &colors_, &twilight_, &date_}) window->Unload(name);
}

}  // namespace glintara::desktop
