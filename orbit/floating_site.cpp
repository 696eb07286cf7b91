#include "orbit/floating_site.h"

#include <string>

namespace glintara {

void EndFloatingSite(Application& app, std::string_view which) {
    if (!app.Main.MnuFloatingSite.Checked) return;
    app.Main.MnuFloatingSite.Checked = false;
    app.Main.LCommandOutput.Caption = "Floating Site is off: your place is the one " + std::string(which) + ".";
}

}  // namespace glintara
