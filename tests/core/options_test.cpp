#include "core/options.h"

#include <algorithm>
#include <set>

#include "core/panels.h"
#include "core/program_fixture.h"
#include "core/satellite_panel.h"
#include "orbit/element_sets.h"
#include "scene/sky_scale.h"

namespace glintara::testing {
namespace {

struct OptionsTest : ProgramTest {
    OptionsTest() { RunAtOnce(); }

    void Request() { UpdateGraphicsLevel2(app.Main); }

    MainControls& main = app.Main;
};

TEST_F(OptionsTest, EachPairIsThereOnce) {
    std::set<const void*> seen;
    for (const OptionPair& pair : OptionPairs(main)) {
        EXPECT_TRUE(seen.insert(pair.box).second) << pair.box->Caption.Get();
        EXPECT_TRUE(seen.insert(pair.entry).second) << pair.entry->Caption.Get();
    }
}

TEST_F(OptionsTest, AMenuEntryShowsItsBoxAndTurnsIt) {
    AddSatellite();
    for (const OptionPair& pair : OptionPairs(main)) {
        if (pair.box == &main.CSGP1 || pair.box == &main.CSGP4) continue;
        pair.box->Enabled = pair.entry->Enabled = true;
        const bool before = pair.box->Value;
        EXPECT_EQ(pair.entry->Checked, before) << pair.entry->Caption.Get();
        main.Timer2.Stop();
        pair.entry->Click();
        EXPECT_EQ(pair.box->Value, !before) << pair.entry->Caption.Get();
        EXPECT_EQ(pair.entry->Checked, !before) << pair.entry->Caption.Get();
        EXPECT_TRUE(main.Timer2.Enabled) << pair.entry->Caption.Get();
        pair.box->Value = before;
        EXPECT_EQ(pair.entry->Checked, before) << pair.entry->Caption.Get();
    }
}

TEST_F(OptionsTest, AMenuEntryIsEnabledWithItsBox) {
    main.CGlobeGrid.Enabled = false;
    main.COrbitOrient.Enabled = false;
    main.CZenith.Enabled = false;
    SyncronizeMenuBar(main);
    EXPECT_FALSE(main.MnuGlobeGrid.Enabled);
    EXPECT_FALSE(main.MnuOrbitOrient.Enabled);
    EXPECT_FALSE(main.MnuZenithOrient.Enabled);
    EXPECT_TRUE(main.MnuNoon.Enabled);
}

TEST_F(OptionsTest, TheEntryForUtcIsCheckedWhileTheTimeIsNotLocal) {
    main.MnuNoUTC.Checked = false;
    SyncronizeMenuBar(main);
    EXPECT_TRUE(main.MnuNoUTC.Checked);
    main.MnuNoUTC.Click();
    EXPECT_TRUE(main.CLocalTime.Value);
    EXPECT_FALSE(main.MnuNoUTC.Checked);
    main.MnuNoUTC.Click();
    EXPECT_FALSE(main.CLocalTime.Value);
    EXPECT_TRUE(main.MnuNoUTC.Checked);
}

TEST_F(OptionsTest, OneOrbitModelIsSetAtATime) {
    main.CSGP1.Value = true;
    EXPECT_FALSE(main.CSGP4.Value);
    EXPECT_TRUE(main.MnuSGP1.Checked);
    EXPECT_FALSE(main.MnuSGP4.Checked);
    main.MnuSGP4.Click();
    EXPECT_TRUE(main.CSGP4.Value);
    EXPECT_FALSE(main.CSGP1.Value);
    main.MnuSGP4.Click();
    EXPECT_TRUE(main.CSGP4.Value) << "a press on the model in use changes nothing";
    EXPECT_TRUE(main.MnuSGP4.Checked);
    main.CSGP4.Value = false;
    EXPECT_TRUE(main.CSGP4.Value) << "nor does one on its button";
    EXPECT_FALSE(main.CSGP1.Value);
}

TEST_F(OptionsTest, TracksThatSGP1DoesNotDrawAreSpokenOf) {
    const std::string words = "SGP1 draws no flare tracks: choose SGP4/SDP4.";
    AddSatellite();
    main.LCommandOutput.Caption = "before";
    main.CSGP1.Value = true;
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "before") << "none are wanted";
    main.CFlareTrack.Value = true;
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), words);
    main.CSGP4.Value = true;
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "") << "they are there now";
    main.CSGP1.Value = true;
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), words);
    main.CFlareTrack.Value = false;
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "");
    main.CFlareTrack.Value = true;
    main.LCommandOutput.Caption = "after";
    main.CSGP4.Value = true;
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "after") << "other words stay";
}

TEST_F(OptionsTest, TheTwoLocksExcludeEachOther) {
    AddSatellite();
    main.CLockSky.Value = true;
    EXPECT_TRUE(app.Data.View.SkyLocked);
    main.CLockSatellite.Value = true;
    EXPECT_FALSE(main.CLockSky.Value);
    EXPECT_FALSE(app.Data.View.SkyLocked);
    EXPECT_TRUE(main.CLockSatellite.Value);
    main.CLockSky.Value = true;
    EXPECT_FALSE(main.CLockSatellite.Value);
    EXPECT_TRUE(main.CLockSky.Value);
    main.CLockSky.Value = false;
    EXPECT_FALSE(app.Data.View.SkyLocked);
    main.CLockSatellite.Value = true;
    main.CLockSky.Value = false;
    EXPECT_TRUE(main.CLockSatellite.Value);
}

TEST_F(OptionsTest, TheSkyIsLockedAsItIsSeenAtThatMoment) {
    ViewState& view = app.Data.View;
    view.ViewLat = 0.2;
    view.ViewLon = 1;
    view.ViewRoll = 0.1;
    main.CLockSky.Value = true;
    EXPECT_EQ(view.LockedLat, 0.2);
    EXPECT_EQ(view.LockedRoll, 0.1);
    program.Time.SetJDToTimeOffset(app.Data.SimTime + 0.25);
    EXPECT_NEAR(std::remainder(view.ViewLon - (1 - 2 * kPlainPi * 0.25 * 1.00273791), 2 * kPlainPi), 0, 1e-6)
        << "six hours later the Earth has turned below it";
    EXPECT_EQ(view.ViewLat, 0.2);
}

TEST_F(OptionsTest, LockingOnTheSatelliteTicksAtOnce) {
    AddSatellite();
    clock.Stall(700);
    main.CLockSatellite.Value = true;
    EXPECT_EQ(main.LDateTime.Caption.Get(), "DATE 20/01/2018 17:42:10.01 UTC");
}

TEST_F(OptionsTest, TheSkyBoxesFollowDrawSky) {
    const std::vector<CheckBox*> sky = {&main.CStarsOnGlobe,   &main.CStarNames,    &main.CDrawConstallations,
                                        &main.CSkyCircle,      &main.CFlatSky,      &main.CMaximizeSky,
                                        &main.CReverseSky,     &main.CSkyOnly,      &main.CLocalSky,
                                        &main.CDrawFrontStars, &main.CDrawBackStars};
    main.CDrawSky.Value = true;
    for (const CheckBox* box : sky) EXPECT_TRUE(box->Enabled) << box->Caption.Get();
    main.CDrawSky.Value = false;
    for (const CheckBox* box : sky) EXPECT_FALSE(box->Enabled) << box->Caption.Get();
    EXPECT_FALSE(main.MnuFlatSky.Enabled);
    EXPECT_TRUE(main.CDrawSun.Enabled);
}

TEST_F(OptionsTest, WithTheSkyGoneTheEarthComesBack) {
    main.CDrawSky.Value = true;
    main.CSkyOnly.Value = true;
    main.CDrawSky.Value = false;
    EXPECT_FALSE(main.CSkyOnly.Value);
    EXPECT_FALSE(main.MnuSkyOnly.Checked);
    EXPECT_FALSE(main.CSkyOnly.Enabled);
    main.CDrawSky.Value = true;
    EXPECT_FALSE(main.CSkyOnly.Value);
}

TEST_F(OptionsTest, OnAFlatMapTheSidesOfTheStarsStayAsTheyAre) {
    main.CDrawSky.Value = true;
    main.CPlaniSphere.Value = true;
    main.CDrawSky.Value = false;
    EXPECT_TRUE(main.CDrawBackStars.Enabled);
    EXPECT_FALSE(main.CFlatSky.Enabled);
    main.CPlaniSphere.Value = false;
    EXPECT_FALSE(main.CDrawBackStars.Enabled) << "the globe asks anew";
}

TEST_F(OptionsTest, WithoutSatellitesNothingThatNeedsOneCanBeUsed) {
    RefreshSatellitePanel(app);
    const std::vector<const Observed<bool>*> enabled = {
        &main.CPlotOrbit.Enabled,         &main.CProjectOrbit.Enabled,
        &main.CProjectOrbitOnSky.Enabled, &main.CSatOnly.Enabled,
        &main.CSatCircle.Enabled,         &main.CDrawArea.Enabled,
        &main.CLockSatellite.Enabled,     &main.C2OrbitDetails.Enabled,
        &main.CIridiumFlares.Enabled,     &main.CFlareTrack.Enabled,
        &main.COrbitOrient.Enabled,       &main.CTOrbInc.Enabled,
        &main.CTOrbDec.Enabled,           &main.MnuFindFlare.Enabled,
        &main.MnuSatInfo.Enabled,         &main.MnuModelSatSurfaces.Enabled,
        &main.MnuPlotOrbit.Enabled,       &main.MnuOrbitOrient.Enabled};
    for (std::size_t i = 0; i < enabled.size(); ++i) EXPECT_FALSE(*enabled[i]) << i;
    EXPECT_TRUE(main.CSatNames.Enabled);
    EXPECT_TRUE(main.CRealTime.Enabled);
    AddSatellite();
    for (std::size_t i = 0; i < enabled.size(); ++i) EXPECT_TRUE(*enabled[i]) << i;
}

TEST_F(OptionsTest, OrbitOverTimeNeedsTheOrbit) {
    AddSatellite();
    EXPECT_FALSE(main.CPlotOrbitOverTime.Enabled);
    EXPECT_FALSE(main.CProjectOverTime.Enabled);
    main.CPlotOrbit.Value = true;
    EXPECT_TRUE(main.CPlotOrbitOverTime.Enabled);
    EXPECT_TRUE(main.MnuPlotOrbitOverTime.Enabled);
    EXPECT_FALSE(main.CProjectOverTime.Enabled);
    main.CProjectOrbit.Value = true;
    EXPECT_TRUE(main.CProjectOverTime.Enabled);
    main.CPlotOrbit.Value = false;
    EXPECT_FALSE(main.CPlotOrbitOverTime.Enabled);
}

TEST_F(OptionsTest, FlareOptionsNeedFlares) {
    AddSatellite();
    EXPECT_TRUE(main.CAntennaID.Enabled) << "live flares are on at start";
    EXPECT_FALSE(main.CDayFlares.Enabled);
    EXPECT_FALSE(main.MnuExportTrack.Enabled);
    main.CIridiumFlares.Value = false;
    for (const CheckBox* box : {&main.CAntennaID, &main.CMoonFlares, &main.CNOSSFlare}) EXPECT_FALSE(box->Enabled);
    main.CFlareTrack.Value = true;
    for (const CheckBox* box : {&main.CAntennaID, &main.CMoonFlares, &main.CNOSSFlare, &main.CDayFlares})
        EXPECT_TRUE(box->Enabled);
    EXPECT_TRUE(main.MnuExportTrack.Enabled);
    EXPECT_TRUE(main.mnuFindCityTrack.Enabled);
    main.CSGP1.Value = true;
    EXPECT_FALSE(main.MnuExportTrack.Enabled);
    EXPECT_FALSE(main.mnuFindCityTrack.Enabled);
}

TEST_F(OptionsTest, StarsOnTheGlobeHaveItsRadius) {
    app.Data.View.SkyScale = app.Data.View.SkyScaleSaved = 55;
    main.CStarsOnGlobe.Value = true;
    EXPECT_EQ(app.Data.View.SkyScale, 1);
    FitSky(app);
    EXPECT_EQ(app.Data.View.SkyScale, 1) << "no fit meanwhile";
    main.CStarsOnGlobe.Value = false;
    EXPECT_EQ(app.Data.View.SkyScale, 55);
}

TEST_F(OptionsTest, AMaximizedSkyTouchesTheEdgeOfThePicture) {
    app.Data.View.ZoomFactor = 16;
    main.CMaximizeSky.Value = true;
    EXPECT_EQ(app.Data.View.SkyScale, 4) << "at zoom 64 the unit sphere touches it";
    EXPECT_EQ(app.Data.View.SkyScaleSaved, 4);
}

TEST_F(OptionsTest, MaximizedSkyAndStarsOnTheGlobeExcludeEachOther) {
    app.Data.View.ZoomFactor = 32;
    main.CMaximizeSky.Value = true;
    main.CStarsOnGlobe.Value = true;
    EXPECT_FALSE(main.CMaximizeSky.Value);
    EXPECT_EQ(app.Data.View.SkyScale, 1);
    main.CMaximizeSky.Value = true;
    EXPECT_FALSE(main.CStarsOnGlobe.Value);
    EXPECT_EQ(app.Data.View.SkyScale, 2);
}

TEST_F(OptionsTest, AutomaticMagnitudeKeepsAFainterLimit) {
    app.Data.View.MaxStarMag = 12.5;
    main.CAutoMag.Value = true;
    EXPECT_EQ(app.Data.View.MaxStarMag, 12.5);
    EXPECT_EQ(app.Data.View.StarSizeScale, 8);
    EXPECT_EQ(starLimits, (std::vector<double>{12.5}));
    main.CAutoMag.Value = false;
    EXPECT_EQ(starLimits.size(), 1U);
}

TEST_F(OptionsTest, TheStarLimitGoesInQuarters) {
    app.Data.View.MaxStarMag = 6;
    main.CMaxMagInc.Click();
    EXPECT_EQ(app.Data.View.MaxStarMag, 6.25);
    EXPECT_EQ(main.LMaxStarMag.Caption.Get(), "Max Star Mag. 6.25");
    for (int i = 0; i < 100; ++i) main.CMaxMagDec.Click();
    EXPECT_EQ(app.Data.View.MaxStarMag, -5);
    for (int i = 0; i < 100; ++i) main.CMaxMagInc.Click();
    EXPECT_EQ(app.Data.View.MaxStarMag, 15);
    EXPECT_EQ(starLimits.back(), 15) << "the list is made anew each time";
    EXPECT_EQ(starLimits.size(), 201U);
}

TEST_F(OptionsTest, TheSizeOfStarsGoesFromNoneToThirty) {
    app.Data.View.StarSizeScale = 8;
    main.CStarSizeInc.Click();
    EXPECT_EQ(app.Data.View.StarSizeScale, 9);
    EXPECT_EQ(main.LStarSize.Caption.Get(), "Star Size: 9");
    EXPECT_TRUE(main.Timer2.Enabled);
    for (int i = 0; i < 40; ++i) main.CStarSizeInc.Click();
    EXPECT_EQ(app.Data.View.StarSizeScale, 30);
    for (int i = 0; i < 40; ++i) main.CStarSizeDec.Click();
    EXPECT_EQ(app.Data.View.StarSizeScale, 0);
    EXPECT_TRUE(starLimits.empty()) << "the list of stars stays";
}

TEST_F(OptionsTest, TheOrbitDrawnGoesInSixthsOfARevolution) {
    main.COrbitTurnInc.Click();
    EXPECT_EQ(app.Data.View.OrbitTurns, 7);
    EXPECT_EQ(main.LOrbit.Caption.Get(), "Orbit Turns: 1.16");
    for (int i = 0; i < 2; ++i) main.COrbitTurnInc.Click();
    EXPECT_EQ(main.LOrbit.Caption.Get(), "Orbit Turns: 1.5");
    for (int i = 0; i < 400; ++i) main.COrbitTurnInc.Click();
    EXPECT_EQ(app.Data.View.OrbitTurns, 300);
    for (int i = 0; i < 400; ++i) main.COrbitTurnDec.Click();
    EXPECT_EQ(app.Data.View.OrbitTurns, 1);
    main.CTurnOne.Click();
    EXPECT_EQ(app.Data.View.OrbitTurns, 6);
}

TEST_F(OptionsTest, EntriesWithoutABoxTurnThemselves) {
    for (MenuEntry* entry :
         {&main.MnuFloatingSite, &main.MnuTransitMode[kTransitEntry], &main.MnuMarkCities, &main.MnuAtmo}) {
        main.Timer2.Stop();
        entry->Click();
        EXPECT_TRUE(entry->Checked) << entry->Caption.Get();
        EXPECT_TRUE(main.Timer2.Enabled);
        entry->Click();
        EXPECT_FALSE(entry->Checked);
    }
}

TEST_F(OptionsTest, AnOrientationEntryPressesItsButton) {
    main.MnuZeroOrient.Click();
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Zero Angle Orientation");
    main.COrbitOrient.Enabled = false;
    SyncronizeMenuBar(main);
    main.MnuOrbitOrient.Click();
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Zero Angle Orientation");
}

// What a workspace does: it sets the boxes, and each shows in the menu.
TEST_F(OptionsTest, AfterManyBoxesWereSetEachEntryShowsItsBox) {
    AddSatellite();
    for (const bool value : {true, false}) {
        for (const OptionPair& pair : OptionPairs(main)) pair.box->Value = value;
        main.CLocalTime.Value = value;
        for (const OptionPair& pair : OptionPairs(main)) {
            EXPECT_EQ(pair.entry->Checked, pair.box->Value) << pair.entry->Caption.Get();
            EXPECT_EQ(pair.entry->Enabled, pair.box->Enabled) << pair.entry->Caption.Get();
        }
        EXPECT_EQ(main.MnuNoUTC.Checked, !value);
        EXPECT_FALSE(main.CLockSky.Value && main.CLockSatellite.Value);
    }
}

TEST_F(OptionsTest, ABoxThatIsSetByTheProgramFiresOnce) {
    main.CRealTime.Value = false;
    clock.Advance(20);
    pictures.clear();
    main.CGlobeGrid.Value = false;
    main.CGlobeGrid.Value = false;
    clock.Advance(100);
    EXPECT_EQ(pictures.size(), 1U);
    // Pictures that are asked for twice are drawn once; the list of stars is made as often as it is asked for.
    starLimits.clear();
    main.CAutoMag.Value = true;
    main.CAutoMag.Value = true;
    EXPECT_EQ(starLimits, std::vector<double>{11});
}

TEST_F(OptionsTest, TheTipsAreShownLineByLine) {
    main.MnuTips.Click();
    ASSERT_EQ(boxes.messages.size(), 1U);
    const std::string& text = boxes.messages[0].text;
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Information);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n') + 1, 22);
    EXPECT_TRUE(
        text.starts_with("- Click on the Info Frame to switch the control panels\r\n- Mouse Move with Left Button"));
    EXPECT_NE(text.find("\r\n  s m h d e y + [shift]: quickly change the time\r\n"), std::string::npos);
    EXPECT_TRUE(text.ends_with("\r\n  space bar: toggle full screen"));
}

TEST_F(OptionsTest, AdmittedSatellitesEnableTheirOptions) {
    RefreshSatellitePanel(app);
    ASSERT_TRUE(LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/iridium.tle"));
    main.CApplyTLEOrbit.Click();
    EXPECT_GT(app.Data.SatCount, 50);
    EXPECT_TRUE(main.CPlotOrbit.Enabled);
    EXPECT_TRUE(main.CPlotOrbit.Value);
    EXPECT_TRUE(main.MnuPlotOrbit.Checked);
    EXPECT_TRUE(main.MnuPlotOrbit.Enabled);
    EXPECT_TRUE(main.CPlotOrbitOverTime.Enabled);
    EXPECT_TRUE(main.MnuFindFlare.Enabled);
    EXPECT_TRUE(main.LOrbit.Caption.Get().starts_with("Orbit Turns: 1  Period: 10")) << main.LOrbit.Caption.Get();
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "glt.ini")) << "the counters are kept";
}

TEST_F(OptionsTest, ThePanelsOfOneGroupAreShown) {
    main.FrameInfo.Click();
    EXPECT_EQ(app.Run.PanelGroup, 1);
    for (const Frame* frame : {&main.FrameInfo, &main.FrameDraw, &main.FrameViews}) EXPECT_TRUE(frame->Visible);
    for (const Frame* frame : {&main.FrameTime, &main.FrameStar, &main.FrameOrbit, &main.FrameSat})
        EXPECT_FALSE(frame->Visible);
    MenuHide(app);
    for (const Frame* frame : {&main.FrameInfo, &main.FrameDraw, &main.FrameTime}) EXPECT_FALSE(frame->Visible);
    EXPECT_TRUE(app.Run.PanelsHidden);
    MenuShow(app);
    EXPECT_TRUE(main.FrameDraw.Visible);
    main.FrameInfo.Click();
    EXPECT_TRUE(main.FrameTime.Visible);
    EXPECT_FALSE(main.FrameDraw.Visible);
}

TEST_F(OptionsTest, FullScreenHidesMenusAndPanelsAndBringsThemBack) {
    main.MnuFullScreen.Click();
    EXPECT_TRUE(app.Run.FullScreen);
    EXPECT_FALSE(main.FrameInfo.Visible);
    for (const MenuEntry* entry :
         {&main.MnuFile, &main.MnuTHelp, &main.MnuView, &main.MnuSatellites, &main.MnuTSky, &main.MnuTDraw,
          &main.MnuTFlares, &main.MnuModelS, &main.MnuTQuick, &main.MnuTSettings})
        EXPECT_FALSE(entry->Visible) << entry->Caption.Get();
    EXPECT_FALSE(app.Run.MenusShown);
    main.MnuFullScreen.Click();
    EXPECT_TRUE(main.FrameInfo.Visible);
    EXPECT_TRUE(main.MnuFile.Visible);
    MenuHide(app);
    SetFullScreen(app, true);
    SetFullScreen(app, false);
    EXPECT_FALSE(main.FrameInfo.Visible) << "panels that were hidden stay hidden";
    EXPECT_EQ(signals.fullScreens, (std::vector<bool>{true, false, true, false})) << "the window is told each time";
    SetFullScreen(app, false);
    EXPECT_EQ(signals.fullScreens.size(), 4U);
}

TEST_F(OptionsTest, InFullScreenTheMenusComeAtTheUpperEdge) {
    ShowMenusByEdge(app, 0.5);
    EXPECT_TRUE(app.Run.MenusShown) << "a window keeps its menus";
    SetFullScreen(app, true);
    ShowMenusByEdge(app, 0.0499);
    EXPECT_TRUE(app.Run.MenusShown);
    EXPECT_TRUE(main.MnuFile.Visible);
    EXPECT_TRUE(main.MnuTHelp.Visible);
    EXPECT_FALSE(main.FrameInfo.Visible) << "the panels stay away";
    ShowMenusByEdge(app, 0.05);
    EXPECT_FALSE(app.Run.MenusShown);
    EXPECT_FALSE(main.MnuFile.Visible);
    ShowMenusByEdge(app, 0);
    SetFullScreen(app, false);
    EXPECT_TRUE(main.MnuFile.Visible);
}

TEST_F(OptionsTest, AResizedWindowIsDrawnAnewInFullScreenToo) {
    WindowResized(app, 16500, 10800);
    EXPECT_EQ(app.Run.ClientWidth, 16500);
    EXPECT_EQ(app.Run.ClientHeight, 10800);
    EXPECT_TRUE(main.TimerResize.Enabled);
    main.TimerResize.Stop();
    WindowResized(app, 16500, 6000);
    EXPECT_FALSE(main.TimerResize.Enabled);
    app.Run.FullScreen = true;
    WindowResized(app, 28800, 16200);
    EXPECT_TRUE(main.TimerResize.Enabled);
}

TEST_F(OptionsTest, ASmallWindowIsNotLaidOut) {
    app.Run.ClientWidth = 6000;
    app.Run.ClientHeight = 20000;
    ReSizeWindow(app);
    EXPECT_FALSE(main.TimerResize.Enabled);
    app.Run.ClientWidth = 6001;
    app.Run.ClientHeight = 6001;
    ReSizeWindow(app);
    EXPECT_TRUE(main.TimerResize.Enabled);
    main.TimerResize.Stop();
    app.Run.FullScreen = true;
    ReSizeWindow(app);
    EXPECT_FALSE(main.TimerResize.Enabled);
}

}  // namespace
}  // namespace glintara::testing
