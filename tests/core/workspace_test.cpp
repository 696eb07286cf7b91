#include "core/workspace.h"

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <csignal>
#include <fstream>
#include <random>

#include "core/option_text.h"
#include "core/options.h"
#include "core/program_fixture.h"
#include "core/views.h"
#include "core/workspace_fixture.h"
#include "core/workspace_lines.h"
#include "flare/surface_editor.h"
#include "orbit/element_sets.h"
#include "orbit/files.h"
#include "orbit/location.h"
#include "orbit/satellite_table.h"
#include "support/working_folder.h"

namespace glintara::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLoadError = "File Load Error\n\n";

/// A standing clock, a satellite with its lines, one view.
WorkspaceLines OneOfEach(FileAge age = FileAge::Surfaces) {
    WorkspaceLines lines;
    lines.age = age;
    lines.satellites = {lines.Satellite("IRIDIUM 7, in orbit", 1)};
    lines.views[2] = lines.View();
    return lines;
}

TEST_F(WorkspaceTest, ALoadBringsEverythingIntoForce) {
    starLimits.clear();
    signals.fullScreens.clear();
    ASSERT_TRUE(Load(OneOfEach()));
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(loadingNotices, 1);
    EXPECT_EQ(Said(), "Loaded Workspace given.cst");
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), File("given.cst").string());
    EXPECT_TRUE(main.MnuSave.Enabled);
    EXPECT_TRUE(main.MnuLoad.Enabled);
    EXPECT_TRUE(main.Timer2.Enabled) << "a picture is asked for";
    // 19 January 2018, 16:41:08.25, with a day, an hour, a minute and a second on top, and what the displayed fields
    // have more than that.
    EXPECT_EQ(data.SimDay, 20);
    EXPECT_EQ(data.SimHour, 17);
    EXPECT_EQ(data.SimMinute, 42);
    EXPECT_NEAR(data.SimSecond, 9.5, 1e-9);
    EXPECT_EQ(data.TimeOffset.MilliOffset, 250);
    EXPECT_EQ(main.LDateTime.Caption.Get(), "DATE 20/01/2018 17:42:09.5 UTC (+)");
    EXPECT_NEAR(data.TwilightSine, std::sin(-6 * kDegree), 1e-15);
    const ObserverSite expected = MakeObserverSite({0.8, 0.2, 321.5});
    EXPECT_EQ(data.Site.SiteGeoLat, expected.SiteGeoLat);
    EXPECT_EQ(data.Site.SiteRadius, expected.SiteRadius);
    EXPECT_EQ(view.ViewLon, -1.25);
    EXPECT_EQ(main.LMaxStarMag.Caption.Get(), "Max Star Mag. 7.25");
    EXPECT_EQ(main.LStarSize.Caption.Get(), "Star Size: 9");
    EXPECT_TRUE(main.LOrbit.Caption.Get().find("100.4") != std::string::npos) << main.LOrbit.Caption.Get();
    EXPECT_TRUE(main.CPlotOrbit.Enabled);
    EXPECT_FALSE(main.CRealTime.Value);
    EXPECT_TRUE(data.SavedViews[3].Used);
    SatRecord satellite = data.Satellite(1);
    std::array<double, 3> position{};
    EXPECT_EQ(Satellite_SGP4(&satellite.EngineBlock, data.SimTime, position.data(), nullptr), 0) << "ready to go";
    EXPECT_NEAR(satellite.MeanRadiusA, MeanRadiusOf(14.34242484, expected.SiteRadius), 1e-12);
}

TEST_F(WorkspaceTest, MenusShowTheirBoxesAfterALoad) {
    WorkspaceLines lines = OneOfEach();
    std::mt19937 random(5);
    for (int round = 0; round < 50; ++round) {
        for (int place = 0; place < 50; ++place) {
            lines.options[static_cast<std::size_t>(2 * place)] = random() % 2 == 0 ? 'E' : 'D';
            lines.options[static_cast<std::size_t>(2 * place + 1)] = random() % 2 == 0 ? '1' : '0';
        }
        ASSERT_TRUE(Load(lines));
        for (const OptionPair& pair : OptionPairs(main)) {
            ASSERT_EQ(pair.entry->Checked, pair.box->Value) << pair.entry->Caption.Get();
            ASSERT_EQ(pair.entry->Enabled, pair.box->Enabled) << pair.entry->Caption.Get();
        }
        EXPECT_EQ(main.MnuNoUTC.Checked, !main.CLocalTime.Value);
        EXPECT_NE(main.CSGP1.Value, main.CSGP4.Value);
        EXPECT_FALSE(main.CLockSky.Value && main.CLockSatellite.Value);
        EXPECT_EQ(view.SkyLocked, main.CLockSky.Value) << "whatever the file says";
        EXPECT_EQ(main.CSunLight.Enabled, lines.options[2] == 'E') << "as the text says";
        EXPECT_EQ(main.CSunLight.Value, lines.options[3] == '1');
    }
}

TEST_F(WorkspaceTest, AShortOptionStringLeavesTheRestOff) {
    WorkspaceLines lines = OneOfEach();
    lines.options = "E0E1E1";
    ASSERT_TRUE(Load(lines));
    EXPECT_TRUE(main.CSunLight.Value);
    EXPECT_TRUE(main.CDrawSun.Value);
    for (const OptionPair& pair : OptionPairs(main))
        if (pair.box != &main.CSunLight && pair.box != &main.CDrawSun && pair.box != &main.CSGP4)
            EXPECT_FALSE(pair.box->Value) << pair.entry->Caption.Get();
    EXPECT_TRUE(main.CSGP4.Value) << "without a model nothing could be searched";
    EXPECT_TRUE(main.CPlotOrbit.Enabled) << "what the text did not hold can be used as the rules say";
    EXPECT_TRUE(main.CSGP1.Enabled);
}

TEST_F(WorkspaceTest, OfOldFilesTheRestStaysAsItWas) {
    view.PanX = 1.5;
    view.PanY = -1.5;
    data.RealTimeStep = 7;
    data.UTCOffsetHours = 3;
    SetLocation(data, {0.1, 0.2, 77});
    ASSERT_TRUE(Load(OneOfEach(FileAge::First)));
    EXPECT_EQ(view.PanX, 1.5);
    EXPECT_EQ(view.PanY, -1.5);
    EXPECT_EQ(data.RealTimeStep, 7);
    EXPECT_EQ(data.UTCOffsetHours, 3);
    EXPECT_EQ(data.Site.SiteAlt, 77);
    EXPECT_EQ(data.Site.SiteLat, 0.8);
    std::array<double, 3> position{};
    SatRecord satellite = data.Satellite(1);
    EXPECT_NE(Satellite_SGP4(&satellite.EngineBlock, data.SimTime, position.data(), nullptr), 0)
        << "without lines it stands nowhere";
    EXPECT_EQ(satellite.Surface.MirrorCount, 3);
}

TEST_F(WorkspaceTest, SatellitesNeedLinesOfSomeLength) {
    WorkspaceLines lines = OneOfEach();
    for (const std::size_t length : {30U, 31U}) {
        lines.satellites[0][18] = kIridiumLine1.substr(0, length);
        ASSERT_TRUE(Load(lines));
        EXPECT_EQ(data.SatCount, 1) << "listed all the same";
        std::array<double, 3> position{};
        EXPECT_NE(Satellite_SGP4(&data.Satellite(1).EngineBlock, data.SimTime, position.data(), nullptr), 0);
        EXPECT_EQ(position, (std::array<double, 3>{}));
    }
}

// Elements that came in another form are kept as the two lines that they became.
TEST_F(WorkspaceTest, ASatelliteOfAMessageComesBack) {
    EnterTLEText(app,
                 "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,"
                 "MEAN_ANOMALY,NORAD_CAT_ID,BSTAR\n"
                 "\"A \"\"B\"\", <b>C</b>\",2026-001A,2026-11-20T12:25:40.104192,15.72125391,.0006703,51.6416,247.4627,"
                 "130.5360,325.0288,270001,-.11606E-4\n");
    CApplyTLEOrbit_click(app);
    ASSERT_EQ(data.SatCount, 1);
    const SatRecord came = data.Satellite(1);
    EXPECT_EQ(came.Line1.substr(0, 32), "1 T0001U 26001A   26324.51782528");
    ASSERT_TRUE(program.Files.SaveWorkspace(File()));
    data.SatCount = 0;
    data.Satellite(1) = SatRecord();
    ASSERT_TRUE(program.Files.LoadWorkspaceCommand(File(), true)) << Told();
    ASSERT_EQ(data.SatCount, 1);
    SatRecord& back = data.Satellite(1);
    EXPECT_EQ(back.Name, "A \"B\", <b>C</b>");
    EXPECT_EQ(back.Line1, came.Line1);
    EXPECT_EQ(back.Line2, came.Line2);
    EXPECT_EQ(back.SatNumber, "T0001");
    std::array<double, 3> position{};
    EXPECT_EQ(Satellite_SGP4(&back.EngineBlock, 2461365.5, position.data(), nullptr), 0);
    EXPECT_NEAR(std::hypot(position[0], position[1], position[2]), 6725, 30);
}

TEST_F(WorkspaceTest, WhatIsNoWorkspaceLeavesTheSession) {
    AddIridiums();
    view.ViewLat = 0.4;
    SaveUserView(app, 2);
    ASSERT_TRUE(program.Files.SaveWorkspace(File()));
    const std::string before =
        WorkspaceText(CaptureHead(app), std::span(data.SatTable).subspan(1, 86), data.SavedViews);
    WorkspaceLines broken = OneOfEach();
    std::vector<std::string> head = broken.Head();
    head.resize(40);
    const std::pair<std::string, std::string> files[] = {
        {"", "it is no workspace."},
        {"1 24793U 97020B\r\n", "it is no workspace."},
        {broken.Joined(head), "it ends too early."},
    };
    for (const auto& [text, why] : files) {
        EXPECT_FALSE(Load(text));
        EXPECT_EQ(Told(), std::string(kLoadError) + "given.cst: " + why);
    }
    EXPECT_EQ(program.Files.Failure(), LoadFailure::None);
    EXPECT_FALSE(Load("GLNTA13E\r\n"));
    EXPECT_EQ(program.Files.Failure(), LoadFailure::OtherVersion);
    EXPECT_EQ(Told(),
              "The configuration file has been saved by a different software version.\r\n"
              "The loading is not possible.");
    EXPECT_FALSE(program.Files.LoadWorkspaceCommand(File("none.cst"), true));
    EXPECT_EQ(Told(), std::string(kLoadError) + "none.cst: there is no such file.")
        << "the version before is forgotten";
    EXPECT_FALSE(program.Files.LoadWorkspaceCommand(folder.Path(), true));
    EXPECT_EQ(boxes.messages.size(), 6U);
    EXPECT_EQ(boxes.messages.back().icon, MessageIcon::Critical);
    EXPECT_FALSE(Load("", false));
    EXPECT_EQ(boxes.messages.size(), 6U) << "without a word";
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), File().string());
    EXPECT_TRUE(main.MnuSave.Enabled);
    EXPECT_FALSE(program.Files.HasChanges());
    EXPECT_TRUE(WorkspaceText(CaptureHead(app), std::span(data.SatTable).subspan(1, 86), data.SavedViews) == before);
}

TEST_F(WorkspaceTest, ADamagedFileGivesBackWhatIsWhole) {
    ASSERT_TRUE(program.Files.SaveWorkspace(File()));
    WorkspaceLines lines = OneOfEach();
    for (int number = 2; number <= 4; ++number)
        lines.satellites.push_back(lines.Satellite("SAT " + std::to_string(number), number));
    std::vector<std::string> all = lines.All();
    ASSERT_EQ(all[47 + 2 * 441 + 3], "1.5");
    all[47 + 2 * 441 + 3] = "none";  // of the third
    EXPECT_FALSE(Load(lines.Joined(all)));
    EXPECT_EQ(Told(),
              std::string(kLoadError) + "given.cst: line 933: there is no number.\n\nLoaded: 2 of 4 satellites.");
    EXPECT_EQ(data.SatCount, 2);
    EXPECT_EQ(data.Site.SiteRadius, MakeObserverSite({0.8, 0.2, 321.5}).SiteRadius);
    EXPECT_FALSE(data.SavedViews[3].Used);
    EXPECT_TRUE(main.CPlotOrbit.Enabled) << "the panels know of them";
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), "") << "neither file is to be replaced by what is left";
    EXPECT_FALSE(main.MnuSave.Enabled);
    EXPECT_FALSE(main.MnuLoad.Enabled);
    EXPECT_TRUE(program.Files.HasChanges());
}

TEST_F(WorkspaceTest, ALoadEndsWhatWasUnderWay) {
    AddIridiums();
    SaveUserView(app, 2);
    main.TimerViewShow.Enabled = true;
    program.Loop.GlobeRotation().Start(Turning::Lasting);
    app.FindFlare.LastFoundSat = 7;
    app.Run.SkyPointer.HasMark = true;
    app.Run.SkyPointer.HasPlace = true;
    app.Run.Finder.Add({0, 0, 86});
    ASSERT_EQ(app.Run.PendingView, 2);
    surface_editor::OpenWindow(app);
    ASSERT_TRUE(app.Mirror.Visible);
    app.Settings.Local.Visible = true;
    ASSERT_TRUE(Load(OneOfEach()));
    EXPECT_FALSE(main.TimerViewShow.Enabled);
    EXPECT_FALSE(main.TimerHRot.Enabled);
    EXPECT_TRUE(app.FindFlare.SearchAbort);
    EXPECT_EQ(app.FindFlare.LastFoundSat, -1);
    EXPECT_FALSE(app.Run.SkyPointer.HasMark);
    EXPECT_FALSE(app.Run.SkyPointer.HasPlace);
    EXPECT_EQ(app.Run.Finder.FinderCount(), 0);
    EXPECT_TRUE(app.Mirror.Visible);
    EXPECT_EQ(app.Mirror.LSatRef.Caption.Get(), SatelliteIdentityText(data.Satellite(1)))
        << "it goes over to the new one";
    EXPECT_FALSE(app.Settings.Local.Visible) << "it would put the place before back";
    EXPECT_EQ(app.Run.PendingView, 0);
    EXPECT_FALSE(main.MnuViewX[2].Checked);
    EXPECT_FALSE(data.SavedViews[2].Used);
    EXPECT_EQ(data.SatCount, 1);
    EXPECT_EQ(data.Satellite(86).Name, "");
}

TEST_F(WorkspaceTest, BoxesDoNotSpoilTheFieldsBehindThem) {
    WorkspaceLines lines = OneOfEach();
    const auto set = [&lines](std::size_t place) { lines.options[2 * place + 1] = '1'; };
    set(18);  // CLockSky captures the view when it is clicked
    set(22);  // CMaximizeSky fits the sky
    set(9);   // CDrawSky
    set(44);  // CAutoMag raises the limit of the stars
    ASSERT_TRUE(Load(lines));
    EXPECT_EQ(view.LockedLat, 0.1);
    EXPECT_EQ(view.LockedAngle, 0.3);
    EXPECT_EQ(view.LockedRoll, 0.7);
    EXPECT_TRUE(view.SkyLocked);
    EXPECT_EQ(view.ViewLat, 0.1) << "the lock holds from the start";
    EXPECT_EQ(view.MaxStarMag, 7.25);
    EXPECT_EQ(view.StarSizeScale, 9);
    EXPECT_DOUBLE_EQ(view.SkyScale, 64.0 / 30) << "fitted to the zoom of the file";
}

TEST_F(WorkspaceTest, ASkyWithoutARadiusGetsOne) {
    std::vector<std::string> all = OneOfEach().All();
    all[44] = "0";   // the radius that is drawn
    all[45] = "-7";  // and the one that comes back when the stars leave the globe
    ASSERT_TRUE(Load(OneOfEach().Joined(all)));
    EXPECT_EQ(view.SkyScale, 55);
    EXPECT_EQ(view.SkyScaleSaved, 55);
}

TEST_F(WorkspaceTest, AClockThatRunsGoesOnFromNow) {
    WorkspaceLines lines = OneOfEach();
    lines.options[1] = '1';
    clock.Stall(60000);
    ASSERT_TRUE(Load(lines));
    EXPECT_TRUE(main.CRealTime.Value);
    EXPECT_EQ(data.BaseDay, 20);
    EXPECT_EQ(data.BaseMinute, 43);
    EXPECT_EQ(data.TimeOffset.MilliOffset, 0);
    EXPECT_EQ(data.SimDay, 21);
    EXPECT_EQ(data.SimMinute, 44);
}

TEST_F(WorkspaceTest, AClockOfAbsurdNumbersDoesNoHarm) {
    WorkspaceLines lines = OneOfEach();
    std::vector<std::string> all = lines.All();
    const std::vector<std::string> absurd = {"2147483647",  "-32768", "32767",  "-32768", "32767", "1e300",
                                             "-2147483648", "32767",  "-32768", "32767",  "32767", "-1e300"};
    std::copy(absurd.begin(), absurd.end(), all.begin() + 8);
    for (int i = 20; i < 26; ++i) all[static_cast<std::size_t>(i)] = i % 2 == 0 ? "2147483647" : "-2147483648";
    ASSERT_TRUE(Load(lines.Joined(all)));
    EXPECT_TRUE(std::isfinite(data.SimTime));
    EXPECT_GE(data.SimMonth, 1);
    EXPECT_LE(data.SimMonth, 12);
    clock.Advance(3000);
    EXPECT_TRUE(std::isfinite(data.SimTime));
}

TEST_F(WorkspaceTest, AFloatingPlaceStandsWhereTheFileHasItUntilTheViewMoves) {
    WorkspaceLines lines = OneOfEach();
    lines.options[2 * 47 + 1] = '1';
    ASSERT_TRUE(Load(lines));
    ASSERT_TRUE(main.MnuFloatingSite.Checked);
    EXPECT_EQ(app.Run.SiteFloatedAt, (FloatingCamera{0.5, -1.25}));
    EXPECT_EQ(data.Site.SiteLat, 0.8);
}

TEST_F(WorkspaceTest, TheCommandsOfTheMenu) {
    EXPECT_FALSE(main.MnuSave.Enabled);
    EXPECT_FALSE(main.MnuLoad.Enabled);
    main.MnuSave.Click();
    main.MnuLoad.Click();
    main.MnuSaveAs.Click();
    EXPECT_EQ(fileQuestions, std::vector<std::string>{"Save Glintara Configuration"});
    EXPECT_EQ(folder.FileCount(), 1) << "the dialog was cancelled; the usage record is there";

    fileChosen = File("night");
    main.MnuSaveAs.Click();
    EXPECT_TRUE(fs::exists(File("night.cst")));
    EXPECT_EQ(Said(), "Saved Workspace night.cst");
    EXPECT_TRUE(boxes.questions.empty());
    fileChosen = File("NIGHT.CST");
    main.MnuSaveAs.Click();
    EXPECT_TRUE(fs::exists(File("NIGHT.CST"))) << "in any case";

    boxes.answer = false;
    view.ViewLat = 0.25;
    main.MnuSave.Click();
    EXPECT_EQ(boxes.questions.back(), "Save Workspace (NIGHT.CST)\r\nAre you sure?");
    ASSERT_TRUE(program.Files.LoadWorkspaceCommand(File("NIGHT.CST"), false));
    EXPECT_NE(view.ViewLat, 0.25) << "not saved";
    boxes.answer = true;
    view.ViewLat = 0.25;
    main.MnuSave.Click();
    view.ViewLat = 0.5;
    main.MnuLoad.Click();
    EXPECT_EQ(view.ViewLat, 0.25);
    EXPECT_EQ(boxes.questions.size(), 2U) << "nothing was lost, so nothing is asked";

    fileChosen = File("night.cst");
    main.MnuOpenAs.Click();
    EXPECT_EQ(fileQuestions.back(), "Open Glintara Configuration");
    EXPECT_NE(view.ViewLat, 0.25);
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), File("night.cst").string());

    // The dialog did not ask about the name that comes out.
    fileChosen = File("night");
    boxes.answer = false;
    main.MnuSaveAs.Click();
    EXPECT_EQ(boxes.questions.back(), "Save Workspace (night.cst)\r\nAre you sure?");
}

TEST_F(WorkspaceTest, ReloadAsksBeforeChangesAreLost) {
    ASSERT_TRUE(program.Files.SaveWorkspace(File()));
    SetLocation(data, {0.5, 0.5, 10});
    boxes.answer = false;
    main.MnuLoad.Click();
    EXPECT_EQ(boxes.questions.back(),
              "Reload Workspace (night.cst)\r\nAre you sure?\r\n\r\nWhat has changed since is lost.");
    EXPECT_EQ(data.Site.SiteLat, 0.5);
    boxes.answer = true;
    main.MnuLoad.Click();
    EXPECT_EQ(data.Site.SiteLat, 0);
}

TEST_F(WorkspaceTest, TheStartUpWorkspaceBringsEverythingBack) {
    const WorkingFolder here;
    AddIridiums();
    SetLocation(data, {0.9, 0.1, 55});
    main.MnuSaveStartUp.Click();
    EXPECT_EQ(Said(), "Saved Workspace startup.cst");
    EXPECT_TRUE(boxes.questions.empty());
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), (fs::current_path() / "startup.cst").string());

    ASSERT_TRUE(Load(OneOfEach()));
    EXPECT_EQ(data.SatCount, 1);
    boxes.answer = false;
    main.MnuSaveStartUp.Click();
    EXPECT_EQ(boxes.questions.back(), "Save Workspace (startup.cst)\r\nAre you sure?");
    EXPECT_TRUE(program.Files.LoadStartUp());
    EXPECT_EQ(data.SatCount, 1) << "one that was opened during the opening stays";
    app.Run.WorkspaceFile = std::string();
    EXPECT_TRUE(program.Files.LoadStartUp());
    EXPECT_EQ(data.SatCount, 86);
    EXPECT_EQ(data.Site.SiteAlt, 55);

    ASSERT_TRUE(Load(OneOfEach()));
    boxes.answer = true;
    main.MnuSaveStartUp.Click();
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), File("given.cst").string()) << "a copy; the work goes on in its file";
    app.Run.WorkspaceFile = std::string();
    EXPECT_TRUE(program.Files.LoadStartUp());
    EXPECT_EQ(data.SatCount, 1);

    fs::remove("startup.cst");
    app.Run.WorkspaceFile = std::string();
    boxes.messages.clear();
    EXPECT_FALSE(program.Files.LoadStartUp());
    ASSERT_TRUE(ReplaceFile("startup.cst", "nonsense"));
    EXPECT_FALSE(program.Files.LoadStartUp());
    EXPECT_TRUE(boxes.messages.empty()) << "without a word";
}

TEST_F(WorkspaceTest, TheProgramStartsOnTheStartUpWorkspace) {
    const WorkingFolder here;
    WorkspaceLines lines = OneOfEach();
    ASSERT_TRUE(ReplaceFile("startup.cst", lines.Text()));
    ProgramHooks hooks = Hooks();
    hooks.loadStartUpWorkspace = {};
    Program second(app, usage, clock, std::move(hooks));
    second.Start({});
    clock.Advance(3000);
    EXPECT_TRUE(main.Timer5.Enabled);
    EXPECT_EQ(data.SatCount, 1);
    EXPECT_EQ(data.Site.SiteLat, 0.8);
    EXPECT_EQ(view.ZoomFactor, 30);
    EXPECT_FALSE(main.TimerHRot.Enabled) << "the globe stands as it was left";
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_FALSE(second.Files.HasChanges());
}

TEST_F(WorkspaceTest, ChangesAreThoseOfSatellitesSurfacesViewsAndPlace) {
    EXPECT_FALSE(program.Files.HasChanges()) << "a fresh program";
    main.CDrawSky.Value = true;
    view.ZoomFactor = 99;
    main.CHourOffsetInc.Click();
    EXPECT_FALSE(program.Files.HasChanges());
    const auto changes = [this] {
        const bool changed = program.Files.HasChanges();
        EXPECT_TRUE(program.Files.SaveWorkspace(File()));
        EXPECT_FALSE(program.Files.HasChanges());
        return changed;
    };
    AddIridiums();
    EXPECT_TRUE(changes());
    ChangeWorkingSatellite(app, 3);
    EXPECT_FALSE(changes()) << "another one works, but the satellites are the same";
    data.Satellite(5).OptionFlags[1] = '1';
    EXPECT_TRUE(changes());
    data.Satellite(5).Surface.Mirror(2).Tilt += 0.001;
    EXPECT_TRUE(changes());
    SaveUserView(app, 4);
    EXPECT_TRUE(changes());
    SetLocation(data, {0.3, 0.3, 0});
    EXPECT_TRUE(changes());
    main.MnuFloatingSite.Click();
    SetLocation(data, {0.4, 0.3, 0});
    EXPECT_FALSE(changes()) << "the place follows the view";
}

TEST_F(WorkspaceTest, ClosingAsksWhenThereIsSomethingToLose) {
    EXPECT_TRUE(program.Files.MayDiscard());
    EXPECT_TRUE(boxes.questions.empty());
    AddIridiums();
    const std::string question =
        "Satellites, surfaces, views or the place have changed since they were last saved.\r\n";

    boxes.aboutChanges = ChangesAnswer::Cancel;
    boxes.neverAgain = true;
    EXPECT_FALSE(program.Files.MayDiscard());
    EXPECT_EQ(boxes.questions.back(), question + "Save Workspace?");
    EXPECT_TRUE(app.Run.AskToSave) << "who cancels has decided nothing";

    boxes.neverAgain = false;
    boxes.aboutChanges = ChangesAnswer::Save;
    EXPECT_FALSE(program.Files.MayDiscard()) << "the file dialog was cancelled";
    EXPECT_EQ(fileQuestions.back(), "Save Glintara Configuration");
    fileChosen = File();
    EXPECT_TRUE(program.Files.MayDiscard());
    EXPECT_TRUE(fs::exists(File()));
    EXPECT_TRUE(program.Files.MayDiscard());
    EXPECT_EQ(boxes.questions.size(), 3U) << "nothing more to ask";

    SaveUserView(app, 1);
    fileChosen.reset();
    EXPECT_TRUE(program.Files.MayDiscard()) << "into its file, without a dialog";
    EXPECT_EQ(boxes.questions.back(), question + "Save Workspace (night.cst)?");
    EXPECT_FALSE(program.Files.HasChanges());

    SaveUserView(app, 2);
    boxes.aboutChanges = ChangesAnswer::Discard;
    boxes.neverAgain = true;
    EXPECT_TRUE(program.Files.MayDiscard());
    EXPECT_FALSE(app.Run.AskToSave);
    const std::size_t asked = boxes.questions.size();
    EXPECT_TRUE(program.Files.MayDiscard());
    EXPECT_EQ(boxes.questions.size(), asked);
    EXPECT_TRUE(program.Files.HasChanges()) << "and it never saves by itself";
}

TEST_F(WorkspaceTest, OpeningAsksBeforeChangesAreLost) {
    AddIridiums();
    ASSERT_TRUE(ReplaceFile(File("other.cst"), OneOfEach().Text()));
    boxes.aboutChanges = ChangesAnswer::Cancel;
    program.Files.Open(File("other.cst"));
    EXPECT_EQ(data.SatCount, 86);
    boxes.aboutChanges = ChangesAnswer::Discard;
    program.Files.Open(File("other.cst"));
    EXPECT_EQ(data.SatCount, 1);
}

TEST_F(WorkspaceTest, AFailedSaveIsToldWithItsCauseAndCostsNothing) {
    ASSERT_TRUE(program.Files.SaveWorkspace(File()));
    const std::optional<std::string> before = ReadWholeFile(File(), kLargestWorkspaceFile);
    AddIridiums();
    fileChosen = folder.Path() / "nowhere" / "x.cst";
    main.MnuSaveAs.Click();
    EXPECT_EQ(Told(), "File Save Error\n\nx.cst: there is no such folder.");
    fs::create_directory(File("folder.cst"));
    fileChosen = File("folder.cst");
    main.MnuSaveAs.Click();
    EXPECT_EQ(Told(), "File Save Error\n\nfolder.cst: it is a folder.");
    fs::create_symlink("/dev/full", File("full.cst"));
    fileChosen = File("full.cst");
    main.MnuSaveAs.Click();
    EXPECT_EQ(Told(), "File Save Error\n\nfull.cst: it is no plain file.");

    // A disk with room for a part of it.
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit little{20000, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    main.MnuSave.Click();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(Told(), "File Save Error\n\nnight.cst: there is no room for it.");
    EXPECT_EQ(ReadWholeFile(File(), kLargestWorkspaceFile), before);
    EXPECT_FALSE(fs::exists(File("night.cst.new")));
    EXPECT_EQ(app.Run.WorkspaceFile.Get(), File().string());
    EXPECT_TRUE(program.Files.HasChanges());
    EXPECT_EQ(boxes.messages.size(), 4U);
}

}  // namespace
}  // namespace glintara::testing
