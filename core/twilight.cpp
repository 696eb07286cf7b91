#include "core/twilight.h"

#include "core/box_numbers.h"
#include "engine/astro/number_text.h"

namespace glintara::twilight {

void WinDataUpdate(Application& app) { app.Settings.Twilight.TTwilight.Text = PlainNumberText(app.Data.TwilightAngle); }

void Open(Application& app) {
    if (app.Settings.Twilight.Visible) return;
    WinDataUpdate(app);
    app.Settings.Twilight.Visible = true;
}

void CApply_Click(Application& app) {
    // What nobody has typed over keeps the digits that the box does not show.
    const std::string text = app.Settings.Twilight.TTwilight.Text;
    if (text != PlainNumberText(app.Data.TwilightAngle)) app.Data.SetTwilightAngle(ReadBoxNumber(text).value);
    WinDataUpdate(app);
    app.Windows.UpdateGraphicsLevel2();
}

void Connect(Application& app) {
    TwilightControls& form = app.Settings.Twilight;
    form.CApply.SetClickHandler([&app] { CApply_Click(app); });
    form.COk.SetClickHandler([&app, &form] {
        CApply_Click(app);
        form.Visible = false;
    });
    form.CClose.SetClickHandler([&form] { form.Visible = false; });
}

}  // namespace glintara::twilight
