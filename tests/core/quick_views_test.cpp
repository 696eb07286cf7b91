#include "core/quick_views.h"

#include <cmath>
#include <filesystem>
#include <random>
#include <vector>

#include "core/camera_moves.h"
#include "core/options.h"
#include "core/panels.h"
#include "core/program_fixture.h"
#include "core/views.h"
#include "orbit/location.h"
#include "scene/map_files.h"
#include "scene/star_chart.h"
#include "scene/star_figures.h"
#include "scene/star_places.h"
#include "scene/stars.h"
#include "scene/surface/recording_surface.h"

namespace glintara::testing {
namespace {

constexpr double kAmsterdamLat = 52.37;  // degrees
constexpr double kAmsterdamLon = 4.9;

struct QuickViewsTest : ProgramTest {
    QuickViewsTest() {
        RunAtOnce();
        SetLocationDegrees(app.Data, kAmsterdamLat, kAmsterdamLon);
        main.CRealTime.Value = false;
    }

    /// Any state that a user may come from.
    void Shake() {
        const auto coin = [this] { return (random() & 1U) != 0; };
        for (const OptionPair& pair : OptionPairs(main))
            if (pair.box->Enabled && pair.box != &main.CRealTime && coin()) pair.box->Value = !pair.box->Value;
        main.CHCircle.Value = coin();
        view.PanX = coin() ? 0.3 : 0;
        view.PanY = coin() ? -2 : 0;
        view.ViewLat = 0.1;
        view.ViewRoll = 0.7;
        view.ZoomFactor = 5 + static_cast<double>(random() % 300);
        if (main.CMaximizeSky.Value) CameraZoomed(app);
    }

    void Expect(const std::vector<const CheckBox*>& set, const std::vector<const CheckBox*>& clear) const {
        for (const CheckBox* box : set) EXPECT_TRUE(box->Value) << box->Caption.Get();
        for (const CheckBox* box : clear) EXPECT_FALSE(box->Value) << box->Caption.Get();
        for (const OptionPair& pair : OptionPairs(app_.Main)) {
            EXPECT_EQ(pair.entry->Checked, pair.box->Value) << pair.entry->Caption.Get();
            EXPECT_EQ(pair.entry->Enabled, pair.box->Enabled) << pair.entry->Caption.Get();
        }
    }

    Application& app_ = app;
    MainControls& main = app.Main;
    ViewState& view = app.Data.View;
    std::mt19937 random{5};
};

TEST_F(QuickViewsTest, TheSkyChartIsThatOfTheObserversZenithWhereverItIsCalledFrom) {
    for (int round = 0; round < 60; ++round) {
        Shake();
        main.Timer2.Stop();
        (round % 2 == 0 ? main.MnuQSkyChart : main.MnuDrawSkyMap).Click();
        Expect({&main.CSkyOnly, &main.CFlatSky, &main.CDrawSky, &main.CSkyCircle, &main.CMaximizeSky, &main.CReverseSky,
                &main.CDrawConstallations, &main.CHCircle, &main.CDrawFrontStars},
               {&main.CStarsOnGlobe, &main.CDrawBackStars, &main.CLocalSky, &main.CPlaniSphere});
        EXPECT_EQ(view.ViewLat, app.Data.Site.SiteGeoLat);
        EXPECT_EQ(view.ViewLon, app.Data.Site.SiteLon);
        EXPECT_EQ(view.ViewRoll, 0);
        EXPECT_EQ(view.PanX, 0);
        EXPECT_EQ(view.PanY, 0);
        EXPECT_DOUBLE_EQ(view.SkyScale * view.ZoomFactor, 64) << "the horizon touches the short sides";
        EXPECT_EQ(view.SkyScaleSaved, view.SkyScale);
        EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Local Zenith Orientation");
        EXPECT_TRUE(main.Timer2.Enabled);
    }
}

/// Amsterdam, 19 January 2018, 22 h UTC: altitude and azimuth (from north through east), degrees, worked out by hand
/// from the places of 2000, a yearly precession and the sidereal time.
struct StarOverAmsterdam {
    const char* name;
    double altitude;
    double azimuth;
};

constexpr StarOverAmsterdam kWinterStars[] = {
    {"Betelgeuse", 44.84, 187.15}, {"Sirius", 20.60, 172.49},    {"Regulus", 28.55, 108.78}, {"Dubhe", 51.84, 46.98},
    {"Deneb", 12.58, 334.72},      {"Alpheratz", 21.68, 290.12}, {"Capella", 78.55, 242.13}};

TEST_F(QuickViewsTest, TheChartShowsEachStarWhereItStandsForWhoLooksUp) {
    LoadMapFiles(std::vector<std::filesystem::path>{std::filesystem::path(GLINTARA_SOURCE_DIR) / "data"}, app.Data.Map,
                 app.Data.Stars, app.Data.Cities);
    program.Time.SetJDToTimeOffset(2458138.416667);
    main.MnuQSkyChart.Click();
    PrecessStars(app.Data.Stars, app.Data.SimTime);
    RecordingSurface surface(9600, 6000);
    PolygonBuffer polygon;
    for (const bool mirrored : {true, false}) {
        main.CReverseSky.Value = mirrored;
        RefreshViewCache(view);
        const SceneContext scene{app, surface, polygon, FlattenSky};
        const SkyCamera camera(scene);
        for (const StarOverAmsterdam& star : kWinterStars) {
            const auto number = static_cast<std::size_t>(FindStar(app.Data.Stars.StarCatalogue, star.name));
            ASSERT_GT(number, 0U) << star.name;
            const auto place = camera.Seen(app.Data.Stars.StarDirections[number]);
            ASSERT_TRUE(place) << star.name;
            // The zenith in the middle, the horizon at the rim, north at the top. Who looks up has east on the left.
            const double out = (90 - star.altitude) / 90 * view.SkyScale;
            const double right = out * std::sin(star.azimuth * kDegree);
            // A third of a degree: the middle of the chart is the vertical of a round Earth.
            const double near = view.SkyScale / 90 / 3;
            EXPECT_NEAR(place->x, mirrored ? -right : right, near) << star.name;
            EXPECT_NEAR(place->y, out * std::cos(star.azimuth * kDegree), near) << star.name;
        }
    }
}

TEST_F(QuickViewsTest, AChartThatIsNotFittedIsWide) {
    main.MnuQSkyChart.Click();
    main.CMaximizeSky.Value = false;
    main.CSkyChartSphere.Click();
    EXPECT_EQ(view.SkyScale, 55);
    EXPECT_EQ(view.SkyScaleSaved, 55);
}

TEST_F(QuickViewsTest, TheHorizonViewsStandTheObserverOnTheEarth) {
    for (int round = 0; round < 60; ++round) {
        Shake();
        app.Data.TimeOffset.HourOffset = 3;
        const bool far = round % 2 != 0;
        (far ? main.MnuQLHView : main.MnuQHorizontView).Click();
        Expect({&main.CDrawSky, &main.CDrawBackStars, &main.CHCircle, &main.CDrawConstallations},
               {&main.CPlaniSphere, &main.CDrawFrontStars, &main.CLocalSky, &main.CFlatSky, &main.CReverseSky,
                &main.CSkyCircle, &main.CSkyOnly, &main.CMaximizeSky, &main.CStarsOnGlobe});
        EXPECT_EQ(view.ZoomFactor, far ? 75 : 150);
        EXPECT_EQ(view.PanX, 0);
        EXPECT_EQ(view.PanY, -1.3);
        EXPECT_EQ(view.SkyScale, 1.5);
        EXPECT_EQ(view.SkyScaleSaved, 1.5);
        EXPECT_NEAR(view.ViewLat, app.Data.Site.SiteGeoLat - kPlainPi / 2, 1e-12);
        EXPECT_EQ(view.ViewLon, app.Data.Site.SiteLon);
        EXPECT_EQ(view.ViewRoll, 0);
        EXPECT_EQ(main.CRealTime.Value, far);
        EXPECT_EQ(app.Data.TimeOffset.HourOffset, far ? 0 : 3) << "only the one goes back to the clock";
        main.CRealTime.Value = false;
    }
}

TEST_F(QuickViewsTest, WGoesFromTheSphereToTheChartAndBack) {
    for (int round = 0; round < 60; ++round) {
        Shake();
        const bool alone = main.CSkyOnly.Value;
        const bool circle = main.CHCircle.Value;
        const bool chart = !main.CFlatSky.Value;
        const double lat = view.ViewLat;
        main.CSkyChartSphere.Click();
        if (chart) {
            Expect({&main.CFlatSky, &main.CDrawSky, &main.CSkyCircle, &main.CMaximizeSky, &main.CReverseSky,
                    &main.CDrawConstallations, &main.CDrawFrontStars},
                   {&main.CStarsOnGlobe, &main.CDrawBackStars, &main.CLocalSky, &main.CPlaniSphere});
            EXPECT_DOUBLE_EQ(view.SkyScale * view.ZoomFactor, 64);
            EXPECT_EQ(view.PanX, 0);
            EXPECT_EQ(view.PanY, 0);
        } else {
            Expect({&main.CDrawSky, &main.CDrawFrontStars, &main.CDrawBackStars},
                   {&main.CFlatSky, &main.CReverseSky, &main.CStarsOnGlobe, &main.CLocalSky, &main.CSkyCircle,
                    &main.CMaximizeSky});
            EXPECT_EQ(view.SkyScale, 55);
        }
        EXPECT_EQ(main.CSkyOnly.Value, alone);
        EXPECT_EQ(main.CHCircle.Value, circle);
        EXPECT_EQ(view.ViewLat, lat) << "the camera stays as it is turned";
    }
}

TEST_F(QuickViewsTest, TheSkyAloneNeedsASky) {
    for (Clickable* press : std::vector<Clickable*>{&main.CToggleSkyEarth, &main.MnuToggleSkyEarth}) {
        main.CDrawSky.Value = false;
        press->Click();
        EXPECT_TRUE(main.CSkyOnly.Value);
        EXPECT_TRUE(main.CDrawSky.Value);
        EXPECT_TRUE(main.MnuSkyOnly.Checked);
        press->Click();
        EXPECT_FALSE(main.CSkyOnly.Value);
        EXPECT_TRUE(main.CDrawSky.Value) << "the sky stays";
        press->Click();
        main.CDrawSky.Value = false;
        EXPECT_FALSE(main.CSkyOnly.Value) << "without a sky the Earth comes back";
    }
}

TEST_F(QuickViewsTest, AMaximizedSkyIsFittedAtEveryZoomAndSize) {
    main.MnuQSkyChart.Click();
    for (const double zoom : {0.1, 3.0, 64.0, 900.0, 5000.0}) {
        view.ZoomFactor = zoom;
        CameraZoomed(app);
        EXPECT_DOUBLE_EQ(view.SkyScale, 64 / zoom);
        EXPECT_DOUBLE_EQ(view.SkyScaleSaved, 64 / zoom);
    }
    view.SkyScale = view.SkyScaleSaved = 55;
    WindowResized(app, 20000, 15000);
    clock.Advance(100);
    EXPECT_DOUBLE_EQ(view.SkyScale, 64.0 / 5000);
    main.CMaximizeSky.Value = false;
    view.SkyScale = 55;
    WindowResized(app, 16000, 12000);
    clock.Advance(100);
    view.ZoomFactor = 10;
    CameraZoomed(app);
    EXPECT_EQ(view.SkyScale, 55) << "who has not asked for the fit keeps the radius";
}

TEST_F(QuickViewsTest, AQuickViewLeavesTheKeptOnesAndStandsStill) {
    for (MenuEntry* entry :
         {&main.MnuQSkyChart, &main.MnuDrawSkyMap, &main.MnuQHorizontView, &main.MnuQLHView, &main.MnuQResetView}) {
        EnterView(app, program.Time, 9);
        program.Loop.GlobeRotation().Start(Turning::Lasting);
        entry->Click();
        EXPECT_EQ(app.Run.PendingView, 0) << entry->Caption.Get();
        EXPECT_FALSE(main.MnuViewX[9].Checked);
        EXPECT_FALSE(main.TimerHRot.Enabled) << entry->Caption.Get();
    }
}

TEST_F(QuickViewsTest, AnOrientationStopsTheIdleTurning) {
    AddSatellite();
    for (Button* button : {&main.CZenith, &main.CUpOrientation, &main.CNoon, &main.CNightOrientation,
                           &main.CZeroOrientation, &main.COrbitOrient}) {
        app.Run.AutoTurn = 0;
        program.Loop.GlobeRotation().Start(Turning::Lasting);
        ASSERT_TRUE(main.TimerHRot.Enabled);
        button->Click();
        EXPECT_FALSE(main.TimerHRot.Enabled) << button->Caption.Get();
    }
}

TEST_F(QuickViewsTest, EachOrientationIsToldAndLocksTheSkyAnew) {
    AddSatellite();
    const struct {
        Button& button;
        const char* text;
    } buttons[] = {{main.CZenith, "Local Zenith Orientation"},       {main.CNoon, "Noon Orientation"},
                   {main.CNightOrientation, "MidNight Orientation"}, {main.CZeroOrientation, "Zero Angle Orientation"},
                   {main.CUpOrientation, "Up Orientation"},          {main.COrbitOrient, "Orbit Orientation"}};
    main.CLockSky.Value = true;
    for (const auto& [button, text] : buttons) {
        view.ViewRoll = 1;
        button.Click();
        EXPECT_EQ(main.LCommandOutput.Caption.Get(), text);
        EXPECT_EQ(view.LockedLat, view.ViewLat);
        EXPECT_EQ(view.LockedRoll, 0);
        const double lon = view.ViewLon;
        program.Time.TimeSyncronize();
        EXPECT_NEAR(std::remainder(view.ViewLon - lon, 2 * kPlainPi), 0, 1e-9) << "the lock holds what was chosen";
    }
}

TEST_F(QuickViewsTest, NoonAndMidnightFaceEachOther) {
    main.CNoon.Click();
    const double lat = view.ViewLat;
    const double lon = view.ViewLon;
    // 20 January 2018, 17 h 42 UTC: the equation of time is -11 minutes, the Sun stands over 82.7 degrees west.
    EXPECT_NEAR(lon / kDegree, 360 - 82.8, 0.2);
    EXPECT_NEAR(lat / kDegree, -20.1, 0.1);
    main.CNightOrientation.Click();
    EXPECT_EQ(view.ViewLat, -lat);
    EXPECT_NEAR(std::remainder(view.ViewLon - lon - kPlainPi, 2 * kPlainPi), 0, 1e-12);
}

TEST_F(QuickViewsTest, TheSizeOfTheStarsGoesFromNoughtToThirty) {
    view.StarSizeScale = 8;
    main.CStarSizeInc.Click();
    EXPECT_EQ(view.StarSizeScale, 9);
    EXPECT_EQ(main.LStarSize.Caption.Get(), "Star Size: 9");
    for (int i = 0; i < 50; ++i) main.CStarSizeInc.Click();
    EXPECT_EQ(view.StarSizeScale, 30);
    for (int i = 0; i < 50; ++i) main.CStarSizeDec.Click();
    EXPECT_EQ(view.StarSizeScale, 0);
    for (int i = 0; i < 100; ++i) main.CMaxMagInc.Click();
    EXPECT_EQ(view.MaxStarMag, 15);
}

TEST_F(QuickViewsTest, AKeptViewStandsOutAndTellsWhatItHolds) {
    const auto i = std::size_t{4};
    ClearViews(app);
    EXPECT_FALSE(main.CEnterView[i].Lit);
    EXPECT_EQ(main.CEnterView[i].ToolTip.Get(), "View 4 is empty (4)");
    EXPECT_EQ(main.CSaveView[i].ToolTip.Get(), "Keep what is shown as view 4 (Shift+4)");
    main.CSaveView[i].Click();
    EXPECT_TRUE(main.CEnterView[i].Lit);
    EXPECT_EQ(main.CEnterView[i].ToolTip.Get(), "View 4: 20/01/2018 17:42:09 UTC (4)");
    EXPECT_EQ(main.CSaveView[i].ToolTip.Get(), "Replace view 4 (Shift+4)");
    EXPECT_EQ(main.MnuViewX[i].ToolTip.Get(), "View 4: 20/01/2018 17:42:09 UTC");
    EXPECT_EQ(main.CSaveView[10].ToolTip.Get(), "Keep what is shown as view 10");
    view.ViewLat = 1;
    main.CEnterView[i].Click();
    EXPECT_NE(view.ViewLat, 1);
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Restored View 4");
    view.ViewLat = 1;
    main.MnuViewX[i].Click();
    EXPECT_NE(view.ViewLat, 1);
}

}  // namespace
}  // namespace glintara::testing
