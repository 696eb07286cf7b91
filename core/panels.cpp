#include "core/panels.h"

namespace glintara {

namespace {

constexpr int kPanelGroups = 2;

/// The mouse calls for the menus in this part of the picture's height.
constexpr double kMenuEdge = 0.05;

void ShowGroup(Application& app) {
    MainControls& main = app.Main;
    const bool shown = !app.Run.PanelsHidden && !app.Run.FullScreen;
    main.FrameInfo.Visible = shown;
    for (Frame* frame : {&main.FrameTime, &main.FrameStar, &main.FrameOrbit, &main.FrameSat})
        frame->Visible = shown && app.Run.PanelGroup == 0;
    for (Frame* frame : {&main.FrameDraw, &main.FrameViews}) frame->Visible = shown && app.Run.PanelGroup == 1;
}

}  // namespace

void MenuShow(Application& app) {
    app.Run.PanelsHidden = false;
    ShowGroup(app);
    ReSizeWindow(app);
}

void MenuHide(Application& app) {
    app.Run.PanelsHidden = true;
    ShowGroup(app);
    ReSizeWindow(app);
}

void MenuToggle(Application& app) {
    app.Run.PanelGroup = (app.Run.PanelGroup + 1) % kPanelGroups;
    ShowGroup(app);
}

void SetMenusVisible(Application& app, bool visible) {
    MainControls& main = app.Main;
    for (MenuEntry* entry :
         {&main.MnuFile, &main.MnuTHelp, &main.MnuView, &main.MnuSatellites, &main.MnuTSky, &main.MnuTDraw,
          &main.MnuTFlares, &main.MnuModelS, &main.MnuTQuick, &main.MnuTSettings, &main.MnuMapTools})
        entry->Visible = visible;
    app.Run.MenusShown = visible;
}

void ReSizeWindow(Application& app) {
    const RunState& run = app.Run;
    if (run.FullScreen || run.ClientWidth < kLeastLayoutTwips || run.ClientHeight < kLeastLayoutTwips) return;
    app.Main.TimerResize.Restart(app.Main.TimerResize.Interval);
}

void WindowResized(Application& app, double clientWidth, double clientHeight) {
    app.Run.ClientWidth = clientWidth;
    app.Run.ClientHeight = clientHeight;
    ReSizeWindow(app);
    if (app.Run.FullScreen) app.Main.TimerResize.Restart(app.Main.TimerResize.Interval);
}

void SetFullScreen(Application& app, bool fullScreen) {
    if (app.Run.FullScreen == fullScreen) return;
    app.Run.FullScreen = fullScreen;
    app.Main.MnuFullScreen.Checked = fullScreen;
    SetMenusVisible(app, !fullScreen);
    ShowGroup(app);
    app.Windows.ShowFullScreen(fullScreen);
    app.Windows.UpdateGraphicsLevel2();
}

void ShowMenusByEdge(Application& app, double part) {
    const bool atEdge = part < kMenuEdge;
    if (app.Run.FullScreen && app.Run.MenusShown != atEdge) SetMenusVisible(app, atEdge);
}

void ConnectPanels(Application& app) {
    app.Main.FrameInfo.SetClickHandler([&app] { MenuToggle(app); });
    app.Main.MnuFullScreen.SetClickHandler([&app] { SetFullScreen(app, !app.Run.FullScreen); });
    ShowGroup(app);
}

}  // namespace glintara
