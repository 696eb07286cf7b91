#include "scene/sky_pointer.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include "orbit/observations.h"
#include "scene/mouse_place.h"
#include "scene/scene_fixture.h"
#include "scene/star_chart.h"

namespace glintara::testing {
namespace {

/// 2000 January 1, 12:00, Greenwich sidereal time 18h41m50.548s; the sky alone, of radius 1, is as high as the
/// picture.
struct SkyPointerTest : SceneFixture {
    MainControls& main = app.Main;

    void SetUp() override {
        app.Data.SetSimInstant({2000, 1, 1, 12, 0, 0}, 2451545);
        main.CDrawSky.Value = main.CSkyOnly.Value = true;
        main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
        main.CFlatSky.Value = true;
        LookAt(20.0001, 15);
        view.SkyScale = 1;
        PutMouse(300, 200);
    }

    void PutMouse(double x, double y) {
        app.Run.LastPictureWidth = 600;
        app.Run.LastPictureHeight = 400;
        app.Run.LastMouseX = x;
        app.Run.LastMouseY = y;
    }

    std::vector<RecordedOperation> Circles() {
        surface.Forget();
        DrawSkyPointer(scene);
        return surface.OperationsOf(DrawOperation::Circle);
    }

    std::vector<RecordedOperation> CirclesRound(double lat, double lon) {
        surface.Forget();
        DrawSkyCircle(scene, {lat * kDegree, lon * kDegree}, 0.1);
        return surface.OperationsOf(DrawOperation::Circle);
    }
};

TEST_F(SkyPointerTest, OnTheFlatMapACircleOverTheSeamIsSplit) {
    main.CPlaniSphere.Value = true;
    LookAt(0, 0);
    EXPECT_EQ(CirclesRound(0, 174).size(), 1U) << "0.1 radians are less than the 6 degrees to the seam";
    for (const double lon : {176.0, -176.0}) {
        EXPECT_TRUE(CirclesRound(10, lon).empty());
        const auto lines = surface.OperationsOf(DrawOperation::Line);
        ASSERT_GT(lines.size(), 90U);
        const WindowScale window = GetWindowScale(view, surface);
        const double pi = 180 * kDegree;
        double length = 0;
        bool sides[2] = {false, false};
        for (const RecordedOperation& line : lines) {
            const double x1 = SceneFromBoxX(window, view, line.numbers[0]);
            const double x2 = SceneFromBoxX(window, view, line.numbers[2]);
            const double y1 = SceneFromBoxY(window, view, line.numbers[1]);
            const double y2 = SceneFromBoxY(window, view, line.numbers[3]);
            EXPECT_EQ(x1 < 0, x2 < 0) << "no line goes over the map";
            EXPECT_LE(std::fabs(x1), 1.0051 * pi);
            // Each end lies on the circle, seen from one side of the seam or the other.
            for (const auto& [x, y] : {std::pair(x1, y1), std::pair(x2, y2)}) {
                const double away = std::remainder(x - lon * kDegree, 2 * pi);
                if (std::fabs(x) < pi) EXPECT_NEAR(std::hypot(away, y - 10 * kDegree), 0.1, 1e-9);
            }
            length += std::hypot(x2 - x1, y2 - y1);
            sides[x1 < 0 ? 1 : 0] = true;
            EXPECT_EQ(line.state.ForeColor, kPointerColor);
        }
        EXPECT_TRUE(sides[0] && sides[1]);
        EXPECT_NEAR(length, 2 * pi * 0.1, 0.07) << "the whole circle, and four times half a percent of the half map";
    }
}

TEST_F(SkyPointerTest, IsToggledEnabledAndDisabled) {
    EXPECT_FALSE(main.FSkyMouse.Visible);
    DisableSkyMouse(app);
    EXPECT_FALSE(main.FSkyMouse.Visible) << "disabling does not show it";
    ToggleSkyMouse(app);
    EXPECT_TRUE(main.FSkyMouse.Visible);
    EnableSkyMouse(app);
    EXPECT_TRUE(main.FSkyMouse.Visible) << "enabling does not hide it";
    DisableSkyMouse(app);
    EXPECT_FALSE(main.FSkyMouse.Visible);
    EnableSkyMouse(app);
    EXPECT_TRUE(main.FSkyMouse.Visible);
    EXPECT_EQ(windows.calls, std::vector<std::string>(3, "UpdateGraphicsLevel2"));
}

TEST_F(SkyPointerTest, ReadsOutPlaceFieldAndTime) {
    ToggleSkyMouse(app);
    EXPECT_EQ(main.LSkyMousePlace.Caption.Get(), "DEC: 020°00'00\"  RA: 19h41'50\"");
    EXPECT_EQ(main.LSkyMouseTAcc.Caption.Get(), "TACC: 0.5 s");
    SetPointerField(app, 1.50001 * kDegree);
    EXPECT_EQ(main.LSkyMouseFOV.Caption.Get(), "FOV: 001°30'00\" (deg 1.5)");
    SetPointerTime(app, 0.25);
    EXPECT_EQ(main.LSkyMouseTAcc.Caption.Get(), "TACC: 0.25 s");
}

TEST_F(SkyPointerTest, KeepsTheInstantAndThePlace) {
    RefreshSkyPointer(app);
    EXPECT_FALSE(app.Run.SkyPointer.HasPlace) << "hidden, it keeps nothing";
    ToggleSkyMouse(app);
    const SkyPointerState& pointer = app.Run.SkyPointer;
    EXPECT_TRUE(pointer.HasPlace);
    EXPECT_EQ(pointer.Instant.year, 2000);
    EXPECT_EQ(pointer.Instant.hour, 12);
    EXPECT_NEAR(pointer.Place.dec, 20.0001 * kDegree, 1e-9);
    EXPECT_NEAR(pointer.Place.ra, (18 + 41 / 60.0 + 50.548 / 3600 + 1) * 15 * kDegree, 1e-7);
    EXPECT_NEAR(pointer.HalfField, 0.25 * kDegree, 1e-12);
    PutMouse(599, 399);
    RefreshSkyPointer(app);
    main.CDrawSky.Value = false;
    const Equatorial before = pointer.Place;
    PutMouse(310, 200);
    RefreshSkyPointer(app);
    EXPECT_EQ(pointer.Place.ra, before.ra) << "off the sky the place before stays";
}

TEST_F(SkyPointerTest, HoldsFieldAndTimeWithinTheirLimits) {
    SetPointerField(app, -1);
    EXPECT_NEAR(app.Run.SkyPointer.FieldOfView, 1 / 206264.806, 1e-11) << "a second of arc";
    SetPointerField(app, 100);
    EXPECT_NEAR(app.Run.SkyPointer.FieldOfView, kPiExact, 1e-12);
    SetPointerField(app, std::nan(""));
    EXPECT_GT(app.Run.SkyPointer.FieldOfView, 0);
    SetPointerTime(app, -1);
    EXPECT_EQ(app.Run.SkyPointer.TimeUncertainty, 0.001);
    EXPECT_EQ(main.LSkyMouseTAcc.Caption.Get(), "TACC: 0.001 s");
    SetPointerTime(app, 1e300);
    EXPECT_EQ(app.Run.SkyPointer.TimeUncertainty, 86400);
}

TEST_F(SkyPointerTest, IsDrawnWhileItIsShownOverTheSky) {
    EXPECT_TRUE(Circles().empty());
    ToggleSkyMouse(app);
    EXPECT_EQ(Circles().size(), 2U);
    PutMouse(300, 2000);
    EXPECT_TRUE(Circles().empty()) << "beyond the chart";
    PutMouse(300, 200);
    main.CDrawSky.Value = false;
    EXPECT_TRUE(Circles().empty());
}

// Wherever the mouse is, spot and circle stand at it: mapping and its inverse, pan and sky pan fit together.
TEST_F(SkyPointerTest, SpotAndCircleStandAtTheMouse) {
    Dice dice;
    ToggleSkyMouse(app);
    int drawn = 0;
    for (int i = 0; i < 2000; ++i) {
        dice.Camera(view);
        view.ZoomFactor = dice.Between(30, 60);
        Pan(i % 3 == 0 ? 0 : dice.Between(-0.3, 0.3), i % 3 == 0 ? 0 : dice.Between(-0.9, 0));
        TakeFramePan(view);
        view.SkyScale = dice.Between(0.5, 2);
        main.CFlatSky.Value = (i & 1) != 0;
        main.CReverseSky.Value = (i & 2) != 0;
        main.CPlaniSphere.Value = i % 5 == 0;
        main.CSkyOnly.Value = (i & 8) != 0;
        main.CStarsOnGlobe.Value = i % 7 == 0;
        main.CLocalSky.Value = (i & 16) != 0;
        main.CDrawFrontStars.Value = i % 11 != 0;
        app.Data.Site.SiteLat = dice.Between(-1.5, 1.5);
        app.Data.Site.SiteLon = dice.Between(-3, 3);
        PutMouse(dice.Between(0, 600), dice.Between(0, 400));
        const std::vector<RecordedOperation> circles = Circles();
        if (circles.empty()) continue;
        ++drawn;
        ASSERT_EQ(circles.size(), 2U) << i;
        const double unit = 200 * view.ZoomFactor / 64;
        const double field = 0.5 * kDegree;
        const double round = main.CPlaniSphere.Value ? field / 2
                             : main.CFlatSky.Value   ? field / kPiExact * view.SkyScale
                                                     : field / 2 * view.SkyScale;
        ExpectNumbers(circles[0], {app.Run.LastMouseX, app.Run.LastMouseY, 0.3 / view.ZoomFactor * unit}, 1e-4);
        ExpectNumbers(circles[1], {app.Run.LastMouseX, app.Run.LastMouseY, round * unit}, 1e-4);
        EXPECT_EQ(circles[1].state.FillStyle, FillPattern::Transparent);
        EXPECT_EQ(circles[1].state.DrawMode, MixMode::Copy);
    }
    EXPECT_GT(drawn, 500);
}

TEST_F(SkyPointerTest, ACircleRoundWhatIsNotShownIsNotDrawn) {
    EXPECT_EQ(CirclesRound(20, 15).size(), 1U);
    EXPECT_EQ(CirclesRound(-20, 190).size(), 1U);
    main.CDrawFrontStars.Value = false;
    EXPECT_TRUE(CirclesRound(20, 15).empty());
    EXPECT_EQ(CirclesRound(-20, 190).size(), 1U);
    main.CDrawBackStars.Value = false;
    EXPECT_TRUE(CirclesRound(-20, 190).empty());
    main.CDrawFrontStars.Value = true;
    main.CLocalSky.Value = true;
    app.Data.Site.SiteLat = 20 * kDegree;
    app.Data.Site.SiteLon = 15 * kDegree;
    EXPECT_EQ(CirclesRound(20, 15).size(), 1U) << "in the zenith";
    EXPECT_EQ(CirclesRound(0, 104.9).size(), 1U) << "in the east, just above the horizon";
    EXPECT_TRUE(CirclesRound(0, 105.1).empty());
}

TEST_F(SkyPointerTest, InAShiftedPictureTheCircleStandsOneUnitHigher) {
    ExpectNumbers(CirclesRound(20.0001, 15)[0], {300, 200, 20});
    Pan(0, -0.5);
    ExpectNumbers(CirclesRound(20.0001, 15)[0], {300, 100, 20});
    Pan(0.25, 0);
    ExpectNumbers(CirclesRound(20.0001, 15)[0], {350, 0, 20});
    main.CStarsOnGlobe.Value = true;
    ExpectNumbers(CirclesRound(20.0001, 15)[0], {350, 200, 20});
}

TEST_F(SkyPointerTest, AMarkedDirectionHasASpotAndASmallCircle) {
    const Vector3 position{2 * std::cos(15 * kDegree), 2 * std::sin(15 * kDegree), 0};
    for (const double scale : {1.0, 55.0}) {
        view.SkyScale = scale;
        LookAt(0, 15);
        surface.Forget();
        DrawSkyLPointer(scene, position);
        const std::vector<RecordedOperation> circles = surface.OperationsOf(DrawOperation::Circle);
        ASSERT_EQ(circles.size(), 2U);
        ExpectNumbers(circles[0], {300, 200, 0.3 / 64 * 200});
        ExpectNumbers(circles[1], {300, 200, scale == 1 ? 0.00247 / kPiExact * 200 : 0.027 * 200});
    }
}

TEST_F(SkyPointerTest, DefinesAnObservationOfTheSkyUnderTheMouse) {
    SetPointerTime(app, 0.2);
    SetPointerField(app, 2.0 * kDegree);
    ASSERT_TRUE(DefinePointUnderMouse(app));
    const std::vector<std::string>& lines = app.Observations.LIOD.Lines.Get();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), lines[0]);
    // 19h41m50.548s is 19h41.842m; on 2000 January 1 the place of date is that of J2000.
    EXPECT_EQ(lines[0].substr(23, 17), "20000101120000000");
    EXPECT_EQ(lines[0].substr(47, 14), "1941842+200001");
    EXPECT_NEAR(app.Observations.Point.PositionAccuracy, kDegree, 1e-9);
    EXPECT_EQ(app.Observations.Point.TimeAccuracy, 0.2);
    PutMouse(300, 2000);
    EXPECT_FALSE(DefinePointUnderMouse(app)) << "off the sky";
    EXPECT_EQ(app.Observations.LIOD.Lines.Get().size(), 1U);
}

TEST_F(SkyPointerTest, TheDefinedPlaceStaysMarkedAmongTheStars) {
    DefinePointUnderMouse(app);
    EXPECT_TRUE(Circles().empty()) << "while the pointer is hidden";
    ToggleSkyMouse(app);
    PutMouse(300, 2000);
    ASSERT_EQ(Circles().size(), 2U);
    ExpectNumbers(Circles()[0], {300, 200, 0.3 / 64 * 200}, 1e-6);
    // An hour of sidereal time later the stars stand 15 degrees farther west.
    app.Data.SetSimInstant({2000, 1, 1, 12, 59, 50.1704}, 2451545 + 0.0415524);
    LookAt(20.0001, 0);
    ExpectNumbers(Circles()[0], {300, 200, 0.3 / 64 * 200}, 1e-3);
}

}  // namespace
}  // namespace glintara::testing
