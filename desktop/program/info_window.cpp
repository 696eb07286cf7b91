#include "desktop/program/info_window.h"

#include "desktop/orbit/form_sat_position.h"
#include "orbit/satellite_info.h"

namespace glintara::desktop {

InfoWindow::InfoWindow(Application& app, const ToolGround& ground)
    : ToolWindow(ground, app.SatPosition.Visible,
                 {.name = "FormSatPosition",
                  .make = [&app, &window = ground.window] { return std::make_unique<FormSatPosition>(app, &window); },
                  // The list of the orbit stands at the right.
                  .edge = [&app] { return app.Main.C2OrbitDetails.Value ? Qt::LeftEdge : Qt::RightEdge; },
                  .opens = [&app] { satellite_info::RefreshInfo(app); }}),
      app_(app) {
    satellite_info::Connect(app);
}

void InfoWindow::Refresh() {
    if (app_.SatPosition.Visible) satellite_info::RefreshInfo(app_);
}

}  // namespace glintara::desktop
