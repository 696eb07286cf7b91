#include "core/satellite_panel.h"

#include <algorithm>
#include <string>

#include "core/options.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/element_sets.h"

namespace glintara {

namespace {

constexpr int kLabelDecimals = 2;

/// Rounding that sixths leave in a revolution: 1.5 of them must not read as 1.49.
constexpr double kSixthRounding = 1e-9;

void SetOrbitTurns(Application& app, double turns) {
    app.Data.View.OrbitTurns = std::clamp(turns, kLeastOrbitTurns, kMostOrbitTurns);
    ShowOrbitLabel(app);
    app.Windows.UpdateGraphicsLevel2();
}

}  // namespace

void ShowOrbitLabel(Application& app) {
    const CommonData& data = app.Data;
    const double revolutions = data.View.OrbitTurns / kTurnsPerRevolution;
    std::string text = "Orbit Turns: " + CutNumberText(revolutions + kSixthRounding, kLabelDecimals);
    if (data.SatCount > 0) {
        const double meanMotion = data.Satellite(data.WorkingSat()).MeanMotion;
        if (meanMotion > 0) text += "  Period: " + CutNumberText(kMinutesPerDay / meanMotion, kLabelDecimals) + " min";
    }
    app.Main.LOrbit.Caption = std::move(text);
}

void RefreshSatellitePanel(Application& app) {
    ShowOrbitLabel(app);
    if (app.Data.SatCount == 0) app.Main.LSatDetail.Caption = std::string();
    RefreshEnabled(app);
    app.Windows.SyncronizeMenuBar();
}

void ConnectSatellitePanel(Application& app) {
    MainControls& main = app.Main;
    main.COrbitTurnInc.SetClickHandler([&app] { SetOrbitTurns(app, app.Data.View.OrbitTurns + 1); });
    main.COrbitTurnDec.SetClickHandler([&app] { SetOrbitTurns(app, app.Data.View.OrbitTurns - 1); });
    main.CTurnOne.SetClickHandler([&app] { SetOrbitTurns(app, kTurnsPerRevolution); });
    main.CApplyTLEOrbit.SetClickHandler([&app] { CApplyTLEOrbit_click(app); });
    main.CUpdateTLE.SetClickHandler([&app] { CUpdateTLE_click(app); });
}

}  // namespace glintara
