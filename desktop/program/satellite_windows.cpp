#include "desktop/program/satellite_windows.h"

#include "desktop/orbit/form_adv_sel.h"
#include "desktop/orbit/form_satellites.h"
#include "orbit/satellite_manager.h"

namespace glintara::desktop {

namespace {

constexpr std::string_view kListForm = "FormSatellites";

}  // namespace

SatelliteWindows::SatelliteWindows(Application& app, const ToolGround& ground)
    : app_(app),
      satellites_(ground, app.Satellites.Visible,
                  {.name = kListForm,
                   .make = [&app, &window = ground.window] { return std::make_unique<FormSatellites>(app, &window); },
                   .edge = [] { return Qt::LeftEdge; },
                   .fitsScreen = true}),
      // At the other edge than the list, which shows what it selects.
      advSel_(ground, app.AdvSel.Visible, {.name = "FormAdvSel", .make = [&app, &window = ground.window] {
                                               return std::make_unique<FormAdvSel>(app, &window);
                                           }}) {
    // Pressed again, the button brings the window to the front.
    app.Satellites.CAdvSelection.SetClickHandler([this] { advSel_.Show(); });
}

void SatelliteWindows::Unload(std::string_view name) {
    if (name == kListForm) satellite_manager::AutoClose(app_);
    advSel_.Unload(name);
}

}  // namespace glintara::desktop
