#include "orbit/satellite_manager.h"

#include <string>
#include <utility>

#include "orbit/satellite_table.h"

namespace glintara::satellite_manager {

namespace {

constexpr const char* kLineEnd = "\r\n";

void Switch(Application& app, std::size_t place, bool on) {
    if (SelectedCount(app.Data) == 0) return;
    SwitchSelected(app.Data, place, on);
    app.Windows.UpDateAll();
    app.Windows.UpdateGraphicsLevel2();
}

}  // namespace

void ShowAll(Application& app) {
    SatellitesControls& form = app.Satellites;
    form.Busy = true;
    form.LSat.Shown = form.LSat.Shown + 1;
    form.Busy = false;
    CountSelection(app);
}

void CountSelection(Application& app) {
    SatellitesControls& form = app.Satellites;
    const int selected = SelectedCount(app.Data);
    form.LSel.Caption = std::to_string(selected) + " of " + std::to_string(app.Data.SatCount) + " selected";
    for (Button* button : {&form.CEnable, &form.CDisable, &form.CShowOrbit, &form.CHideOrbit, &form.CClearAllMirrors})
        button->Enabled = selected > 0;
    form.LSat.Selection = form.LSat.Selection + 1;
}

void ShowWorkingSatellite(Application& app) {
    SatellitesControls& form = app.Satellites;
    const CommonData& data = app.Data;
    form.LSat.Order = form.LSat.Order + 1;
    if (data.SatCount < 1) {
        form.LWorkingSat.Caption = std::string();
        form.TTLE.Text = std::string();
        return;
    }
    const SatRecord& satellite = data.Satellite(data.SatCount);
    form.LWorkingSat.Caption = ShownName(SatelliteListLine(satellite));
    form.TTLE.Text = ShownName(satellite.Name) + kLineEnd + satellite.Line1 + kLineEnd + satellite.Line2 + kLineEnd;
}

void UpDateAll(Application& app) {
    if (!app.Satellites.Visible) return;
    ShowAll(app);
    ShowWorkingSatellite(app);
}

void AutoClose(Application& app) { app.Satellites.Visible = false; }

void FilterSelection(Application& app, bool select) {
    const SatellitesControls& form = app.Satellites;
    SelectByName(app.Data, {form.TWith.Text.Get(), form.TWithout.Text.Get(), form.CMCase.Value}, select);
    ShowAll(app);
}

void CEnable_click(Application& app) { Switch(app, kDisabledPlace, false); }

void CDisable_click(Application& app) { Switch(app, kDisabledPlace, true); }

void CShowOrbit_click(Application& app) { Switch(app, kOrbitHiddenPlace, false); }

void CHideOrbit_click(Application& app) { Switch(app, kOrbitHiddenPlace, true); }

void CChangeOrbit_click(Application& app) {
    if (app.Data.SatCount < 1) return;
    app.Windows.ChangeSatelliteSignal();
    MoveToEnd(app.Data, 1);
    app.Windows.UpdateGraphicsLevel2();
    app.Windows.UpDateAll();
    app.Windows.RefreshInfo();
    app.Windows.RefreshSatPosition();
}

void CClearOrbitList_click(Application& app) {
    CommonData& data = app.Data;
    if (data.SatCount > 0 && !app.Boxes.AskYesNo("All the satellites will be removed from the list!\nAre you sure?"))
        return;
    app.Windows.ChangeSatelliteSignal();
    // A search would go on through satellites that are gone.
    app.FindFlare.SearchAbort = true;
    app.FindFlare.LastFoundSat = -1;
    app.FindFlare.LastFoundMirror = -1;
    for (int index = 1; index <= data.SatCount; ++index) data.Satellite(index) = {};
    data.SatCount = 0;
    RunState& run = app.Run;
    run.Working.Forget();
    run.Finder.ClearList();
    run.Finder.Found = FoundKind::None;
    app.Main.LFInfo.Visible = false;
    app.Main.CPlotOrbit.Value = false;
    app.Main.LCommandOutput.Caption = std::string("Satellite List Emptied");
    app.Windows.SyncronizeMenuBar();
    app.Windows.UpdateGraphicsLevel2();
    app.Windows.UpDateAll();
    app.Windows.RefreshInfo();
    app.Windows.RefreshSatPosition();
}

void Connect(Application& app) {
    SatellitesControls& form = app.Satellites;
    form.CFindOr.SetClickHandler([&app] { FilterSelection(app, true); });
    form.CFindAnd.SetClickHandler([&app] { FilterSelection(app, false); });
    const auto connectSelection = [&app](Button& button, auto change) {
        button.SetClickHandler([&app, change] {
            change(app.Data);
            ShowAll(app);
        });
    };
    connectSelection(
        form.CSelectAll, [](CommonData& data) { SelectEvery(data, true); });
    connectSelection(form.CDeselectAll, [](CommonData& data) { SelectEvery(data, false); });
    connectSelection(form.CInvertSel, InvertSelection);
    connectSelection(form.CSelEnabled, SelectEnabled);
    form.CEnable.SetClickHandler([&app] { CEnable_click(app); });
    form.CDisable.SetClickHandler([&app] { CDisable_click(app); });
    form.CShowOrbit.SetClickHandler([&app] { CShowOrbit_click(app); });
    form.CHideOrbit.SetClickHandler([&app] { CHideOrbit_click(app); });
    form.CAdvSelection.SetClickHandler([&app] { app.AdvSel.Visible = true; });
    form.CClose.SetClickHandler([&app] { AutoClose(app); });
    app.Main.CChangeOrbit.SetClickHandler([&app] { CChangeOrbit_click(app); });
    app.Main.CClearOrbitList.SetClickHandler([&app] { CClearOrbitList_click(app); });
}

}  // namespace glintara::satellite_manager
