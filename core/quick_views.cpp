#include "core/quick_views.h"

#include "core/camera_moves.h"
#include "core/views.h"
#include "scene/orientation.h"
#include "scene/sky_scale.h"

namespace glintara {

namespace {

/// Radius of the star sphere around the Earth, and of a chart that is not fitted.
constexpr double kWideSky = 55;

// The horizon views: the sky stands close over an Earth that is shifted below the middle.
constexpr double kHorizonSky = 1.5;
constexpr double kHorizonPan = -1.3;
constexpr double kHorizonZoom = 150;
constexpr double kFarHorizonZoom = 75;

/// None of the kept views is shown any more, and nothing turns.
void LeaveKeptView(Application& app) {
    app.Main.TimerHRot.Stop();
    SetPendingView(app, 0);
}

void SetSkyRadius(ViewState& view, double radius) {
    view.SkyScale = radius;
    view.SkyScaleSaved = radius;
}

void Centre(ViewState& view) {
    view.PanX = 0;
    view.PanY = 0;
}

/// What every chart has. A flat map has no chart.
void SetChart(Application& app) {
    MainControls& main = app.Main;
    main.CPlaniSphere.Value = false;
    for (CheckBox* box : {&main.CFlatSky, &main.CDrawSky, &main.CSkyCircle, &main.CReverseSky,
                          &main.CDrawConstallations, &main.CDrawFrontStars})
        box->Value = true;
    for (CheckBox* box : {&main.CStarsOnGlobe, &main.CDrawBackStars, &main.CLocalSky}) box->Value = false;
    Centre(app.Data.View);
    SetSkyRadius(app.Data.View, kWideSky);
    main.CMaximizeSky.Value = true;
    FitSky(app);  // it may have been set already
}

void SetSphere(Application& app) {
    MainControls& main = app.Main;
    for (CheckBox* box : {&main.CFlatSky, &main.CReverseSky, &main.CStarsOnGlobe, &main.CLocalSky, &main.CSkyCircle,
                          &main.CMaximizeSky})
        box->Value = false;
    for (CheckBox* box : {&main.CDrawSky, &main.CDrawFrontStars, &main.CDrawBackStars}) box->Value = true;
    SetSkyRadius(app.Data.View, kWideSky);
}

void SetHorizon(Application& app, double zoom) {
    MainControls& main = app.Main;
    ViewState& view = app.Data.View;
    main.CPlaniSphere.Value = false;
    for (CheckBox* box : {&main.CMaximizeSky, &main.CStarsOnGlobe}) box->Value = false;
    for (CheckBox* box : {&main.CDrawSky, &main.CDrawBackStars, &main.CHCircle, &main.CDrawConstallations})
        box->Value = true;
    for (CheckBox* box :
         {&main.CDrawFrontStars, &main.CLocalSky, &main.CFlatSky, &main.CReverseSky, &main.CSkyCircle, &main.CSkyOnly})
        box->Value = false;
    view.PanX = 0;
    view.PanY = kHorizonPan;
    view.ZoomFactor = zoom;
    SetSkyRadius(view, kHorizonSky);
    app.Windows.SyncronizeMenuBar();
    CUpOrientation_Click(app);
}

}  // namespace

void DrawSkyMap(Application& app) {
    LeaveKeptView(app);
    SetChart(app);
    app.Main.CSkyOnly.Value = true;
    app.Main.CHCircle.Value = true;
    app.Windows.SyncronizeMenuBar();
    CZenith_Click(app);
}

void SwitchSkyChart(Application& app) {
    if (app.Main.CFlatSky.Value)
        SetSphere(app);
    else
        SetChart(app);
    app.Windows.SyncronizeMenuBar();
    CameraMoved(app);
}

void ShowHorizon(Application& app) {
    LeaveKeptView(app);
    SetHorizon(app, kHorizonZoom);
}

void ShowHorizonNow(Application& app, SimulatedTime& time) {
    LeaveKeptView(app);
    app.Main.CClearTimeOffset.Click();
    app.Main.CRealTime.Value = true;
    app.Main.CDrawSky.Value = false;
    time.TimeSyncronize();
    SetHorizon(app, kFarHorizonZoom);
}

void ToggleSkyEarth(Application& app) {
    MainControls& main = app.Main;
    if (!main.CSkyOnly.Value) main.CDrawSky.Value = true;
    main.CSkyOnly.Value = !main.CSkyOnly.Value;
}

void ConnectQuickViews(Application& app, SimulatedTime& time) {
    MainControls& main = app.Main;
    main.MnuQResetView.SetClickHandler([&app, &time] { ResetView(app, time); });
    main.MnuDrawSkyMap.SetClickHandler([&app] { DrawSkyMap(app); });
    main.MnuQSkyChart.SetClickHandler([&app] { DrawSkyMap(app); });
    main.MnuQHorizontView.SetClickHandler([&app] { ShowHorizon(app); });
    main.MnuQLHView.SetClickHandler([&app, &time] { ShowHorizonNow(app, time); });
    main.CSkyChartSphere.SetClickHandler([&app] { SwitchSkyChart(app); });
    main.CToggleSkyEarth.SetClickHandler([&app] { ToggleSkyEarth(app); });
    main.MnuToggleSkyEarth.SetClickHandler([&app] { ToggleSkyEarth(app); });
}

}  // namespace glintara
