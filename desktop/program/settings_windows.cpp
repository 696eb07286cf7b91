#include "desktop/program/settings_windows.h"

#include <algorithm>
#include <utility>

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
#include "desktop/main/beside.h"
#include "desktop/main/keyboard.h"
#include "desktop/main/window_memory.h"

namespace glintara::desktop {

SettingsWindows::SettingsWindows(Application& app, const SimulatedTime& time, MainScope& window, QSettings& places,
                                 std::function<bool(int key, bool shift)> keyPressed)
    : app_(app), time_(time), window_(window), places_(places), keyPressed_(std::move(keyPressed)) {
    SettingsControls& forms = app.Settings;
    const auto add = [this](std::string_view name, Observed<bool>& visible, auto make) {
        entries_.push_back({name, visible, std::move(make), nullptr});
    };
    add(
        "FormLocalSettings", forms.Local.Visible,
        [this] { return std::make_unique<FormLocalSettings>(app_, &window_); });
    add(
        "FormRealTime", forms.RealTime.Visible, [this] { return std::make_unique<FormRealTime>(app_, &window_); });
    add(
        "FormColors", forms.Colors.Visible, [this] { return std::make_unique<FormColors>(app_, &window_); });
    add(
        "FormTwilight", forms.Twilight.Visible, [this] { return std::make_unique<FormTwilight>(app_, &window_); });
    add("FormDate", app.DateEntry.Visible, [this] { return std::make_unique<FormDate>(app_, &window_); });
    // The vector has its final place from here on.
    for (Entry& entry : entries_) entry.visible.SetHandler([this, &entry] { Follow(entry); });
}

SettingsWindows::~SettingsWindows() {
    for (Entry& entry : entries_) entry.visible.SetHandler({});
}

void SettingsWindows::ShowLocalSettings() {
    local_settings::Open(app_, time_);
    BringToFront("FormLocalSettings");
}

void SettingsWindows::ShowRealTime() {
    real_time_step::Open(app_);
    BringToFront("FormRealTime");
}

void SettingsWindows::ShowColors() {
    form_colors::Open(app_);
    BringToFront("FormColors");
}

void SettingsWindows::ShowTwilight() {
    twilight::Open(app_);
    BringToFront("FormTwilight");
}

void SettingsWindows::ShowDate() {
    date_entry::Open(app_, time_);
    BringToFront("FormDate");
}

void SettingsWindows::Unload(std::string_view name) {
    for (Entry& entry : entries_)
        if (entry.name == name) entry.visible = false;
}

void SettingsWindows::Follow(Entry& entry) {
    if (!entry.visible) {
        if (entry.form && entry.form->isVisible()) entry.form->close();
        return;
    }
    if (!entry.form) {
        entry.form = entry.make();
        // Neither the picture, which shows what is chosen, nor the panels are to be covered.
        RememberPlace(*entry.form, places_, [this](const QWidget& opening) {
            return PlaceAtEdge(opening, window_, window_.Picture(), Qt::LeftEdge);
        });
        HandKeysOn(*entry.form, keyPressed_);
    }
    entry.form->show();
}

void SettingsWindows::BringToFront(std::string_view name) {
    const auto entry =
        std::find_if(entries_.begin(), entries_.end(), [name](const Entry& one) { return one.name == name; });
    entry->form->raise();
    entry->form->activateWindow();
}

}  // namespace glintara::desktop
