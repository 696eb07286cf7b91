#include "core/views.h"

#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/option_text.h"
#include "core/program_fixture.h"
#include "core/value_text.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "scene/globe.h"
#include "scene/map_files.h"
#include "scene/orientation.h"
#include "scene/stages.h"
#include "scene/star_list.h"
#include "scene/star_places.h"
#include "scene/surface/recording_surface.h"

namespace glintara::testing {
namespace {

namespace fs = std::filesystem;

struct ViewsTest : ProgramTest {
    ViewsTest() { RunAtOnce(); }

    void Enter(int n) { EnterView(app, program.Time, n); }
    SavedView& Slot(int n) { return app.Data.SavedViews[static_cast<std::size_t>(n)]; }
    const std::string& Said() const { return main.LCommandOutput.Caption; }

    MainControls& main = app.Main;
    ViewState& view = app.Data.View;
};

TEST_F(ViewsTest, ACaptureHoldsEachNumberAtItsPlace) {
    main.CRealTime.Value = false;
    app.Data.TimeOffset = {.MonthOffset = 1,
                           .DayOffset = -2,
                           .MinuteOffset = 3,
                           .HourOffset = -4,
                           .SecondOffset = 5,
                           .MilliOffset = 0,
                           .YearOffset = 6};
    program.Time.TimeSyncronize();
    view.OrbitTurns = 7.9;
    view.StarSizeScale = 11;
    view.MaxStarMag = 6.25;
    SavedView kept;
    kept.Spare = 0.5;
    CaptureView(app, kept);
    EXPECT_TRUE(kept.Used);
    EXPECT_EQ(kept.Options, OptionsToString(main));
    EXPECT_EQ(kept.OrbitTurns, 7) << "the whole part";
    EXPECT_EQ(kept.StarSizeScale, 11);
    EXPECT_EQ(kept.MaxStarMag, 6.25);
    EXPECT_EQ(kept.Spare, 0.5) << "nothing sets it";
    // 20 January 2018, 17:42:09.31, with the offsets: 18 February 2024, 13:45:14.31.
    const std::array<std::string, kTimeTextCount> texts = {"2024", "2",  "18",   "13", "45", "14.31", "2018", "1", "20",
                                                           "17",   "42", "9.31", "1",  "-2", "3",     "-4",   "5", "6"};
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_NEAR(std::stod(kept.TimeText[i]), std::stod(texts[i]), 1e-9) << i;
    EXPECT_EQ(kept.TimeText[0], "2024");
    EXPECT_EQ(kept.TimeText[13], "-2");
}

TEST_F(ViewsTest, NumbersKeepTheirLastDigit) {
    EXPECT_EQ(ValueToText(0.1), "0.1");
    EXPECT_EQ(ValueToText(-0.5), "-0.5");
    EXPECT_EQ(ValueToText(2018), "2018");
    EXPECT_EQ(ValueToText(0), "0");
    std::mt19937_64 random(1);
    for (int i = 0; i < 10000; ++i) {
        const double value = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 120) - 60);
        ASSERT_EQ(std::stod(ValueToText(value)), value);
    }
}

TEST_F(ViewsTest, ARestoredViewIsTheSameToTheLastBit) {
    AddSatellite();
    std::mt19937_64 random(99);
    const auto part = [&random] { return static_cast<double>(random() >> 11U) * 0x1p-53; };
    for (int round = 0; round < 200; ++round) {
        main.CRealTime.Value = false;
        for (CheckBox* box : {&main.CDrawSky, &main.CStarsOnGlobe, &main.CMaximizeSky, &main.CLockSky,
                              &main.CPlaniSphere, &main.CLocalTime, &main.CAutoMag, &main.CFlatSky})
            if (box->Enabled && part() < 0.5) box->Value = !box->Value;
        app.Data.TimeOffset = {.MonthOffset = static_cast<int>(random() % 30) - 15,
                               .DayOffset = static_cast<int>(random() % 3000) - 1500,
                               .MinuteOffset = static_cast<int>(random() % 300) - 150,
                               .HourOffset = static_cast<int>(random() % 300) - 150,
                               .SecondOffset = static_cast<int>(random() % 3000) - 1500,
                               .MilliOffset = static_cast<int>(random() % 30000) - 15000,
                               .YearOffset = static_cast<int>(random() % 60) - 30};
        program.Time.TimeSyncronize();
        view.ViewLat = part() * 3 - 1.5;
        view.ViewLon = part() * 9 - 3;
        view.ViewRoll = part() * 9 - 3;
        view.ZoomFactor = 1 + part() * 400;
        view.PanX = part() - 0.5;
        view.PanY = part() - 0.5;
        view.MaxStarMag = std::floor(part() * 60) / 4 - 5;
        view.StarSizeScale = static_cast<std::int16_t>(random() % 31);
        view.OrbitTurns = 1 + static_cast<double>(random() % 300);
        if (main.CMaximizeSky.Value) view.SkyScale = view.SkyScaleSaved = 64 / view.ZoomFactor;
        if (view.SkyLocked) TakeSkyLock(app.Data);
        program.Time.TimeSyncronize();

        const ViewState camera = view;
        const CalendarFields instant = app.Data.SimFields();
        const double simTime = app.Data.SimTime;
        const TimeOffset offset = app.Data.TimeOffset;
        const std::string options = OptionsToString(main);
        SaveUserView(app, 4);

        view.ViewLat = view.ViewLon = 1;
        view.ZoomFactor = 33;
        main.CDrawSky.Value = !main.CDrawSky.Value;
        main.CLockSky.Value = !main.CLockSky.Value;
        main.CStarsOnGlobe.Value = !main.CStarsOnGlobe.Value;
        main.CLocalTime.Value = !main.CLocalTime.Value;
        main.CRealTime.Value = true;
        app.Data.TimeOffset.MilliOffset = 77;
        clock.Stall(5000);
        program.Time.TimeSyncronize();
        Enter(4);

        ASSERT_EQ(OptionsToString(main).substr(0, 96), options.substr(0, 96)) << round;
        ASSERT_EQ(CaptureCamera(view), CaptureCamera(camera)) << round;
        ASSERT_EQ(view.SkyScale, camera.SkyScale);
        ASSERT_EQ(view.MaxStarMag, camera.MaxStarMag);
        ASSERT_EQ(view.StarSizeScale, camera.StarSizeScale);
        ASSERT_EQ(view.OrbitTurns, camera.OrbitTurns);
        ASSERT_EQ(view.SkyLocked, camera.SkyLocked);
        ASSERT_EQ(view.LockedAngle, camera.LockedAngle);
        ASSERT_EQ(app.Data.TimeOffset, offset) << round;
        ASSERT_EQ(app.Data.SimSecond, instant.second) << round;
        ASSERT_EQ(app.Data.SimTime, simTime) << round;
    }
}

TEST_F(ViewsTest, AViewOfARunningClockRunsOnFromNow) {
    app.Data.TimeOffset.HourOffset = 2;
    app.Data.TimeOffset.MilliOffset = 300;
    program.Time.TimeSyncronize();
    SaveUserView(app, 1);
    app.Data.TimeOffset = {};
    clock.Stall(60000);
    Enter(1);
    EXPECT_EQ(app.Data.TimeOffset.HourOffset, 2);
    EXPECT_EQ(app.Data.TimeOffset.MilliOffset, 0);
    EXPECT_EQ(main.LDateTime.Caption.Get(), "DATE 20/01/2018 19:43:09.31 UTC (+)");
}

TEST_F(ViewsTest, SavingAndEnteringAreTold) {
    SaveUserView(app, 10);
    EXPECT_EQ(Said(), "Saved View 10");
    EXPECT_TRUE(Slot(10).Used);
    Enter(10);
    EXPECT_EQ(Said(), "Restored View 10");
    Enter(2);
    EXPECT_EQ(Said(), "Enter View 2");
}

TEST_F(ViewsTest, AnEmptySlotChangesNothing) {
    view.ViewLat = 0.5;
    const ViewState camera = view;
    const std::string options = OptionsToString(main);
    const std::string said = Said();
    RestoreUserView(app, 3);
    EXPECT_EQ(CaptureCamera(view), CaptureCamera(camera));
    EXPECT_EQ(OptionsToString(main), options);
    EXPECT_EQ(Said(), said);
    EXPECT_EQ(app.Run.PendingView, 0);
    for (const int n : {0, 11, -1}) {
        SaveUserView(app, n);
        RestoreUserView(app, n);
        Enter(n);
    }
    for (const SavedView& slot : app.Data.SavedViews) EXPECT_FALSE(slot.Used);
    EXPECT_EQ(app.Run.PendingView, 0);
}

TEST_F(ViewsTest, TheMarkStandsAtTheViewEnteredOrSavedLast) {
    const auto checked = [this] {
        std::string marks;
        for (std::size_t n = 1; n <= kViewCount; ++n) marks += main.MnuViewX[n].Checked ? 'x' : '-';
        return marks;
    };
    Enter(3);
    EXPECT_EQ(app.Run.PendingView, 3);
    EXPECT_EQ(checked(), "--x-------") << "used or not";
    SaveUserView(app, 9);
    EXPECT_EQ(app.Run.PendingView, 9);
    EXPECT_EQ(checked(), "--------x-");
    Enter(9);
    EXPECT_EQ(checked(), "--------x-");
    ResetView(app, program.Time);
    EXPECT_EQ(app.Run.PendingView, 0);
    EXPECT_EQ(checked(), "----------");
}

TEST_F(ViewsTest, ClearedViewsAreEmpty) {
    SaveUserView(app, 1);
    SaveUserView(app, 10);
    ClearViews(app);
    for (const SavedView& slot : app.Data.SavedViews) EXPECT_EQ(slot, SavedView{});
}

TEST_F(ViewsTest, TheSlideShowGoesRoundOneToEight) {
    const auto next = [this] {
        ShowNextView(app, program.Time);
        return static_cast<int>(app.Run.PendingView);
    };
    EXPECT_EQ(next(), 0) << "nothing is kept";
    SaveUserView(app, 9);
    main.LCommandOutput.Caption = "";
    EXPECT_EQ(next(), 9);
    EXPECT_EQ(Said(), "") << "view 9 is never shown";
    for (const int n : {2, 5, 8, 10}) SaveUserView(app, n);
    EXPECT_EQ(app.Run.PendingView, 10);
    EXPECT_EQ(next(), 2) << "after 10 it begins anew";
    EXPECT_EQ(Said(), "Restored View 2");
    EXPECT_EQ(next(), 5);
    EXPECT_EQ(next(), 8);
    EXPECT_EQ(next(), 2);
    SetPendingView(app, 6);
    EXPECT_EQ(next(), 8);
    SetPendingView(app, 0);
    EXPECT_EQ(next(), 2);
}

TEST_F(ViewsTest, ASingleViewIsShownAgainAndAgain) {
    SaveUserView(app, 3);
    clock.Advance(20);
    for (int i = 0; i < 2; ++i) {
        main.LCommandOutput.Caption = "";
        ShowNextView(app, program.Time);
        EXPECT_EQ(Said(), "Restored View 3");
    }
}

TEST_F(ViewsTest, ResettingGoesBackToTheEndOfTheOpening) {
    signals.UpDateAll();
    app.Data.TimeOffset.HourOffset = 5;
    ResetView(app, program.Time);
    EXPECT_EQ(CaptureCamera(view), kStartCamera) << "before the opening has ended";
    EXPECT_EQ(app.Data.TimeOffset, TimeOffset{});
    EXPECT_EQ(view.LockedLat, 0);

    view.ViewLat = 0.2;
    view.ZoomFactor = 33;
    view.PanY = 2;
    CaptureView(app, app.Run.StartView);
    const std::string options = OptionsToString(main);
    view.ViewLat = 1;
    main.CDrawSky.Value = main.CPlaniSphere.Value = true;
    main.CRealTime.Value = false;
    app.Data.TimeOffset.DayOffset = 3;
    main.MnuQResetView.Click();
    EXPECT_EQ(view.ViewLat, 0.2);
    EXPECT_EQ(view.ZoomFactor, 33);
    EXPECT_EQ(view.PanY, 2);
    EXPECT_EQ(OptionsToString(main).substr(0, 96), options.substr(0, 96));
    EXPECT_EQ(app.Data.TimeOffset, TimeOffset{});
    EXPECT_EQ(view.LockedLat, 0.2);
    EXPECT_TRUE(main.Timer2.Enabled);
}

TEST_F(ViewsTest, ADamagedViewIsDrawable) {
    SavedView bad;
    bad.Used = true;
    bad.Options = "x";
    bad.ZoomFactor = 0;
    bad.PanX = std::numeric_limits<double>::infinity();
    bad.ViewLat = std::numeric_limits<double>::quiet_NaN();
    bad.OrbitTurns = -3;
    bad.StarSizeScale = 1e300;
    bad.TimeText.fill("99999999999999999999");
    Slot(1) = bad;
    Enter(1);
    EXPECT_EQ(view.ZoomFactor, 0.1);
    EXPECT_EQ(view.OrbitTurns, 1);
    EXPECT_EQ(view.StarSizeScale, 30);
    EXPECT_TRUE(std::isfinite(view.PanX));
    EXPECT_TRUE(std::isfinite(view.ViewLat));
    EXPECT_TRUE(std::isfinite(app.Data.SimTime));
    EXPECT_GT(view.SkyScale, 0);
}

TEST_F(ViewsTest, TheStarLimitOfAViewComesBack) {
    view.MaxStarMag = 4.5;
    view.StarSizeScale = 21;
    StarRecord star;
    star.Magnitude = 5;
    TakeStars(app.Data.Stars, {{}, star});
    SaveUserView(app, 1);
    main.CAutoMag.Value = true;
    view.MaxStarMag = 6;
    view.StarSizeScale = 3;
    RebuildStarList(app.Data.Stars, view.MaxStarMag);
    ASSERT_EQ(app.Data.Stars.VisibleStarCount(), 1);
    Enter(1);
    EXPECT_EQ(view.MaxStarMag, 4.5);
    EXPECT_EQ(view.StarSizeScale, 21);
    EXPECT_EQ(app.Data.Stars.VisibleStarCount(), 0) << "the list is built anew";
    EXPECT_EQ(main.LMaxStarMag.Caption.Get(), "Max Star Mag. 4.5");
    EXPECT_EQ(main.LStarSize.Caption.Get(), "Star Size: 21");
}

TEST_F(ViewsTest, TheSkyGoesBackToTheRadiusOfTheView) {
    main.CDrawSky.Value = true;
    view.SkyScale = view.SkyScaleSaved = 1.5;
    SaveUserView(app, 1);
    main.CStarsOnGlobe.Value = true;
    SaveUserView(app, 2);
    view.SkyScaleSaved = 55;
    Enter(1);
    EXPECT_EQ(view.SkyScaleSaved, 1.5);
    view.SkyScaleSaved = 7;
    Enter(2);
    EXPECT_EQ(view.SkyScale, 1);
    EXPECT_EQ(view.SkyScaleSaved, 7) << "the stars on the globe say nothing of the radius around it";
}

/// The program with its map, its stars and the satellites of the example, and a picture that writes down what is drawn.
struct PictureOfViewTest : ViewsTest {
    PictureOfViewTest() {
        LoadMapFiles(std::vector<fs::path>{fs::path(GLINTARA_SOURCE_DIR) / "data"}, app.Data.Map, app.Data.Stars,
                     app.Data.Cities);
        SetLocationDegrees(app.Data, 52.37, 4.9);
        LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/stations.tle");
        main.CApplyTLEOrbit.Click();
        main.CRealTime.Value = false;
        program.Time.TimeSyncronize();
    }

    std::vector<RecordedOperation> Draw() {
        RecordingSurface surface(9600, 6000);
        GlobeFrame(app, surface, frame, stages);
        return surface.Operations();
    }

    void Elsewhere() {
        main.MnuQResetView.Click();
        main.CPlaniSphere.Value = !main.CPlaniSphere.Value;
        main.CSolidGlobe.Value = !main.CSolidGlobe.Value;
        main.CStarNames.Value = !main.CStarNames.Value;
        view.StarSizeScale = 3;
        view.MaxStarMag = 2;
        app.Data.TimeOffset = {};
        app.Data.TimeOffset.YearOffset = 7;
        app.Data.TimeOffset.MilliOffset = 400;
        program.Time.TimeSyncronize();
        Draw();
        clock.Stall(86400000);
    }

    FrameMemory frame;
    SatelliteWorkspace satellites;
    FrameStages stages = StagesOfProgram(satellites);
};

TEST_F(PictureOfViewTest, EveryKindOfPictureIsDrawnAgainStrokeByStroke) {
    ASSERT_GT(app.Data.SatCount, 0);
    ASSERT_GT(app.Data.Stars.StarCount(), 80000);
    const std::vector<std::function<void()>> pictures = {
        [&] { main.CPlotOrbit.Value = true; },
        [&] { main.MnuQSkyChart.Click(); },
        [&] { main.CProjectOrbitOnSky.Value = true; },
        [&] { main.CLockSky.Value = true; },
        [&] { main.MnuQHorizontView.Click(); },
        [&] { main.CLockSatellite.Value = true; },
        [&] { main.CSkyChartSphere.Click(); },
        [&] { main.CSkyChartSphere.Click(); },
        [&] { main.CStarsOnGlobe.Value = true; },
        [&] { main.CPlaniSphere.Value = true; },
        [&] { main.CNoon.Click(); },
    };
    app.Data.TimeOffset.MilliOffset = 123;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        pictures[i]();
        app.Data.TimeOffset.MinuteOffset += 7;
        program.Time.TimeSyncronize();
        Draw();
        if (main.CLockSatellite.Value) program.Time.TimeSyncronize();  // the camera follows one picture behind
        SaveUserView(app, 3);
        const std::vector<RecordedOperation> kept = Draw();
        ASSERT_GT(kept.size(), 50U) << i;
        Elsewhere();
        ASSERT_NE(Draw(), kept) << i;
        Enter(3);
        const std::vector<RecordedOperation> again = Draw();
        ASSERT_EQ(again.size(), kept.size()) << i;
        for (std::size_t k = 0; k < kept.size(); ++k) ASSERT_EQ(again[k], kept[k]) << "picture " << i << ", " << k;
    }
}

}  // namespace
}  // namespace glintara::testing
