// What the window of the satellite list does, without a window.

#include "orbit/satellite_manager.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "orbit/satellite_table.h"
#include "state/recording_services.h"

namespace glintara {
namespace {

using Calls = std::vector<std::string>;

struct SatelliteManager : ::testing::Test {
    SatelliteManager() {
        for (const char* name : {"A", "B", "C", "D"}) {
            SatRecord& satellite = data.Satellite(++data.SatCount);
            satellite.Name = name;
            satellite.SatNumber = "2494" + std::to_string(data.SatCount);
            satellite.Line1 = std::string("1 ") + name;
            satellite.Line2 = std::string("2 ") + name;
            satellite.OrbitNumber = static_cast<std::int16_t>(data.SatCount);
        }
        satellite_manager::Connect(app);
        form.Visible = true;
        satellite_manager::UpDateAll(app);
    }

    std::string Names() const {
        std::string names;
        for (int i = 1; i <= data.SatCount; ++i) names += data.Satellite(i).Name;
        return names;
    }

    std::string SelectedNames() const {
        std::string names;
        for (int i = 1; i <= data.SatCount; ++i)
            if (data.Satellite(i).Selected) names += data.Satellite(i).Name;
        return names;
    }

    Calls TakeCalls() { return std::exchange(windows.calls, {}); }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    CommonData& data = app.Data;
    SatellitesControls& form = app.Satellites;
};

TEST_F(SatelliteManager, TheControlsBearTheirCaptions) {
    EXPECT_EQ(form.FrameFilter.Caption.Get(), "Filter");
    EXPECT_EQ(form.LWith.Caption.Get(), "Contains:");
    EXPECT_EQ(form.LWithout.Caption.Get(), "without");
    EXPECT_EQ(form.CMCase.Caption.Get(), "Match Case");
    EXPECT_EQ(form.CFindOr.Caption.Get(), "Select");
    EXPECT_EQ(form.CFindAnd.Caption.Get(), "Deselect");
    EXPECT_EQ(form.CInvertSel.Caption.Get(), "Invert Selection");
    EXPECT_EQ(form.CSelEnabled.Caption.Get(), "Select Enabled Sats");
    EXPECT_EQ(form.CEnable.Caption.Get(), "Enable Selected Sats");
    EXPECT_EQ(form.CDisable.Caption.Get(), "Disable Selected Sats");
    EXPECT_EQ(form.CShowOrbit.Caption.Get(), "Show Orbit");
    EXPECT_EQ(form.CHideOrbit.Caption.Get(), "Hide Orbit");
    EXPECT_EQ(form.CAdvSelection.Caption.Get(), "Advanced Selection...");
    EXPECT_EQ(form.CClearAllMirrors.Caption.Get(), "Clear All Mirrors");
    EXPECT_EQ(form.CClose.Caption.Get(), "CLOSE");
}

TEST_F(SatelliteManager, TheWorkingSatelliteIsToldByItsLineAndItsElements) {
    EXPECT_EQ(form.LWorkingSat.Caption.Get(), "[XOO] 0004 (24944)   D");
    EXPECT_EQ(form.TTLE.Text.Get(), "D\r\n1 D\r\n2 D\r\n");
    data.Satellite(4).Name = "D\x1b[2J";
    satellite_manager::ShowWorkingSatellite(app);
    EXPECT_EQ(form.LWorkingSat.Caption.Get(), "[XOO] 0004 (24944)   D?[2J");
    EXPECT_EQ(form.TTLE.Text.Get(), "D?[2J\r\n1 D\r\n2 D\r\n");
    data.SatCount = 0;
    satellite_manager::ShowWorkingSatellite(app);
    EXPECT_EQ(form.LWorkingSat.Caption.Get(), "");
    EXPECT_EQ(form.TTLE.Text.Get(), "");
}

TEST_F(SatelliteManager, TheSelectionIsCounted) {
    EXPECT_EQ(form.LSel.Caption.Get(), "0 of 4 selected");
    form.CSelectAll.Click();
    EXPECT_EQ(form.LSel.Caption.Get(), "4 of 4 selected");
    data.Satellite(2).Selected = false;
    form.CInvertSel.Click();
    EXPECT_EQ(SelectedNames(), "B");
    EXPECT_EQ(form.LSel.Caption.Get(), "1 of 4 selected");
    form.CDeselectAll.Click();
    EXPECT_EQ(SelectedNames(), "");
    data.Satellite(3).OptionFlags[kDisabledPlace] = '1';
    form.CSelEnabled.Click();
    EXPECT_EQ(SelectedNames(), "ABD");
}

TEST_F(SatelliteManager, TheListIsFilledAnewAndNobodyTakesThatForTheUser) {
    const int before = form.LSat.Shown;
    bool busy = false;
    form.LSat.Shown.SetHandler([&] { busy = form.Busy; });
    form.CSelectAll.Click();
    EXPECT_GT(form.LSat.Shown, before);
    EXPECT_TRUE(busy);
    EXPECT_FALSE(form.Busy);
}

TEST_F(SatelliteManager, WhatActsOnTheSelectedNeedsSome) {
    const auto expect = [this](bool enabled) {
        for (const Button* button :
             {&form.CEnable, &form.CDisable, &form.CShowOrbit, &form.CHideOrbit, &form.CClearAllMirrors})
            EXPECT_EQ(button->Enabled, enabled) << button->Caption.Get();
    };
    expect(false);
    form.CSelectAll.Click();
    expect(true);
    form.CDeselectAll.Click();
    expect(false);
}

TEST_F(SatelliteManager, AClosedWindowIsNotFilled) {
    satellite_manager::AutoClose(app);
    EXPECT_FALSE(form.Visible);
    const int before = form.LSat.Shown;
    satellite_manager::UpDateAll(app);
    EXPECT_EQ(form.LSat.Shown, before);
    form.Visible = true;
    form.CClose.Click();
    EXPECT_FALSE(form.Visible);
}

// The filter.

TEST_F(SatelliteManager, WithBothFieldsEmptySelectTakesEveryLine) {
    form.CFindOr.Click();
    EXPECT_EQ(SelectedNames(), "ABCD");
    EXPECT_EQ(form.LSel.Caption.Get(), "4 of 4 selected");
    form.CFindAnd.Click();
    EXPECT_EQ(SelectedNames(), "");
}

TEST_F(SatelliteManager, TheFieldsOfTheFilterAreRead) {
    for (int i = 1; i <= 4; ++i)
        data.Satellite(i).Name = std::string(i % 2 == 1 ? "Iridium " : "IRIDIUM ") + "abcd"[i - 1];
    form.TWith.Text = std::string("iridium");
    form.TWithout.Text = std::string("B");
    form.CFindOr.Click();
    EXPECT_EQ(SelectedCount(data), 3);
    EXPECT_FALSE(data.Satellite(2).Selected);
    form.CMCase.Value = true;
    form.TWith.Text = std::string("IRIDIUM");
    form.TWithout.Text = std::string("");
    form.CFindAnd.Click();
    EXPECT_EQ(SelectedCount(data), 2);
    EXPECT_TRUE(data.Satellite(1).Selected && data.Satellite(3).Selected);
}

// The switches.

TEST_F(SatelliteManager, TheSwitchesShowInTheLinesAndInANewPicture) {
    data.Satellite(1).Selected = true;
    data.Satellite(2).Selected = true;
    satellite_manager::CountSelection(app);
    const auto line = [this](int index) { return SatelliteListLine(data.Satellite(index)).substr(0, 5); };
    TakeCalls();
    form.CDisable.Click();
    EXPECT_EQ(TakeCalls(), (Calls{"UpDateAll", "UpdateGraphicsLevel2"}));
    EXPECT_EQ(line(1), "[XXO]") << "a hidden orbit and a disabled satellite";
    form.CShowOrbit.Click();
    EXPECT_EQ(line(2), "[OXO]");
    form.CEnable.Click();
    EXPECT_EQ(line(2), "[OOO]");
    form.CHideOrbit.Click();
    EXPECT_EQ(line(1), "[XOO]");
    EXPECT_EQ(line(3), "[XOO]");
    EXPECT_EQ(data.Satellite(1).OptionFlags, kNewOptionFlags);
}

TEST_F(SatelliteManager, WithoutASelectionTheSwitchesDoNothing) {
    satellite_manager::CDisable_click(app);
    EXPECT_FALSE(data.Satellite(1).IsDisabled());
    EXPECT_TRUE(TakeCalls().empty());
}

TEST_F(SatelliteManager, OnAnEmptyListTheButtonsDoNothing) {
    data.SatCount = 0;
    satellite_manager::UpDateAll(app);
    EXPECT_EQ(form.LSel.Caption.Get(), "0 of 0 selected");
    for (const Button* button :
         {&form.CSelectAll, &form.CDeselectAll, &form.CInvertSel, &form.CSelEnabled, &form.CFindOr, &form.CFindAnd,
          &form.CEnable, &form.CDisable, &form.CShowOrbit, &form.CHideOrbit})
        button->Click();
    EXPECT_EQ(form.LSel.Caption.Get(), "0 of 0 selected");
    EXPECT_EQ(data.Satellite(1).OptionFlags, kNewOptionFlags);
    EXPECT_TRUE(boxes.questions.empty());
}

// The buttons of the main window.

TEST_F(SatelliteManager, TheNextSatelliteIsTheFirstOfTheList) {
    app.Main.CChangeOrbit.Click();
    EXPECT_EQ(Names(), "BCDA");
    EXPECT_EQ(TakeCalls(), (Calls{"ChangeSatelliteSignal", "UpdateGraphicsLevel2", "UpDateAll", "RefreshInfo",
                                  "RefreshSatPosition"}));
    for (int k = 0; k < 3; ++k) app.Main.CChangeOrbit.Click();
    EXPECT_EQ(Names(), "ABCD") << "once round";
    EXPECT_EQ(data.Satellite(4).OrbitNumber, 4);
}

TEST_F(SatelliteManager, OneSatelliteIsItsOwnNext) {
    data.SatCount = 1;
    app.Main.CChangeOrbit.Click();
    EXPECT_EQ(Names(), "A");
}

TEST_F(SatelliteManager, OnAnEmptyListThereIsNoNext) {
    data.SatCount = 0;
    app.Main.CChangeOrbit.Click();
    EXPECT_EQ(data.SatCount, 0);
    EXPECT_EQ(data.Satellite(1).Name, "A") << "nothing is moved";
    EXPECT_TRUE(TakeCalls().empty());
}

TEST_F(SatelliteManager, TheListIsEmptiedAfterAQuestion) {
    app.Main.CPlotOrbit.Value = true;
    app.FindFlare.LastFoundSat = 2;
    app.FindFlare.LastFoundMirror = 1;
    app.Run.Finder.Add({0, 0, 3});
    app.Run.Finder.Found = FoundKind::Satellite;
    app.Main.LFInfo.Visible = true;
    app.Main.CClearOrbitList.Click();
    EXPECT_EQ(boxes.questions, (Calls{"All the satellites will be removed from the list!\nAre you sure?"}));
    EXPECT_EQ(data.SatCount, 0);
    EXPECT_EQ(data.Satellite(1).Name, "");
    EXPECT_EQ(data.Satellite(4).Name, "");
    EXPECT_FALSE(app.Main.CPlotOrbit.Value);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Satellite List Emptied");
    EXPECT_EQ(TakeCalls(), (Calls{"ChangeSatelliteSignal", "SyncronizeMenuBar", "UpdateGraphicsLevel2", "UpDateAll",
                                  "RefreshInfo", "RefreshSatPosition"}));
    EXPECT_TRUE(app.FindFlare.SearchAbort);
    EXPECT_EQ(app.FindFlare.LastFoundSat, -1);
    EXPECT_EQ(app.FindFlare.LastFoundMirror, -1);
    EXPECT_EQ(app.Run.Finder.FinderCount(), 0);
    EXPECT_EQ(app.Run.Finder.Found, FoundKind::None);
    EXPECT_FALSE(app.Main.LFInfo.Visible) << "the mouse rests on nothing that is there";
}

TEST_F(SatelliteManager, NoLeavesEverythingAsItIs) {
    boxes.answer = false;
    app.Main.CPlotOrbit.Value = true;
    app.Main.LCommandOutput.Caption = std::string("before");
    app.Main.CClearOrbitList.Click();
    EXPECT_EQ(boxes.questions.size(), 1u);
    EXPECT_EQ(Names(), "ABCD");
    EXPECT_TRUE(app.Main.CPlotOrbit.Value);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "before");
    EXPECT_FALSE(app.FindFlare.SearchAbort);
    EXPECT_TRUE(TakeCalls().empty());
}

TEST_F(SatelliteManager, NothingIsAskedWhereNothingIsLost) {
    data.SatCount = 0;
    app.Main.CClearOrbitList.Click();
    EXPECT_TRUE(boxes.questions.empty());
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Satellite List Emptied");
}

}  // namespace
}  // namespace glintara
