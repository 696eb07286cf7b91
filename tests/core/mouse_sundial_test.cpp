// The mouse over the sundial of view 9: it moves the chart and knows nothing of the globe that the chart stands for.

#include "core/views.h"
#include "scene/object_finder.h"
#include "scene/star_list.h"
#include "scene/star_places.h"
#include "scene/sundial.h"
#include "support/mouse_fixture.h"

namespace glintara::testing {
namespace {

struct MouseSundialTest : MouseTest {
    MouseSundialTest() {
        EnterView(app, program.Time, 9);
        view.PanX = view.PanY = 0;
    }
};

TEST_F(MouseSundialTest, DragsShiftTheChartAndLeaveTheGlobeAlone) {
    const CameraView before = Camera();
    Drag(kLeft, 500, 250);
    EXPECT_NEAR(view.PanX, 500 / 100.0 / 50, 1e-12);
    EXPECT_NEAR(view.PanY, -250 / 100.0 / 50, 1e-12);
    mouse.Released();
    Drag(kRight, 500, 250);
    mouse.Released();
    EXPECT_EQ(view.ViewLon, before.ViewLon);
    EXPECT_EQ(view.ViewLat, before.ViewLat);
    EXPECT_EQ(view.ViewRoll, before.ViewRoll);
    EXPECT_FALSE(Turns());
}

// With the sky alone a first shift moves the centre of the sky; the chart has none.
TEST_F(MouseSundialTest, TheSkyBehindItChangesNothing) {
    main.CDrawSky.Value = main.CSkyOnly.Value = main.CMaximizeSky.Value = true;
    view.PanX = view.PanY = 0;
    Drag(kLeft, 500, 250);
    EXPECT_NEAR(view.PanY, -250 / 100.0 / 50, 1e-12);
    mouse.Released();
    const double panX = view.PanX;
    const double panY = view.PanY;
    Drag(kBoth, 0, -250);
    EXPECT_NEAR(view.ZoomFactor, 110, 1e-9);
    EXPECT_EQ(view.PanX, panX);
    EXPECT_EQ(view.PanY, panY);
}

TEST_F(MouseSundialTest, TheWheelKeepsWhatIsUnderTheMouse) {
    main.CDrawSky.Value = main.CSkyOnly.Value = main.CMaximizeSky.Value = true;
    view.PanX = view.PanY = 0;
    view.ZoomFactor = 40;
    MoveTo(6600, 3700);
    const std::string before = main.LStatus.Caption;
    EXPECT_EQ(before.substr(0, 15), "SUNDIAL: shadow");
    Wheel(120, 6600, 3700);
    EXPECT_NEAR(view.ZoomFactor, 44, 1e-9);
    MoveTo(6600, 3700);
    EXPECT_EQ(main.LStatus.Caption.Get(), before);
}

TEST_F(MouseSundialTest, NothingOfTheGlobeOrTheSkyLiesUnderTheMouse) {
    main.CDrawSky.Value = true;
    MoveTo(6000, 4000);
    EXPECT_EQ(main.LStatus.Caption.Get().substr(0, 8), "SUNDIAL:");
    main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
    StarRecord star;
    star.ProperName = "Vega";
    star.Magnitude = 0.03;
    TakeStars(app.Data.Stars, {{}, star});
    RebuildStarList(app.Data.Stars, 11);
    mouse.DoubleClicked({.control = true});
    EXPECT_FALSE(app.Run.SkyPointer.HasMark) << "no observation of a chart";
    FindObject(app);
    EXPECT_FALSE(main.LFInfo.Visible);
    SelectStar(app);
    EXPECT_EQ(app.Run.Finder.SelectedStar, 0);
}

TEST_F(MouseSundialTest, AnotherViewBringsTheGlobeBack) {
    EXPECT_TRUE(ShowsSundial(app.Run));
    EXPECT_TRUE(main.MnuViewX[9].Checked);
    EnterView(app, program.Time, 4);
    EXPECT_FALSE(ShowsSundial(app.Run));
    MoveTo(6000, 4010);
    EXPECT_EQ(main.LStatus.Caption.Get().substr(0, 5), "EARTH");
    EnterView(app, program.Time, 9);
    ResetView(app, program.Time);
    EXPECT_FALSE(ShowsSundial(app.Run));
    SaveUserView(app, 9);
    EXPECT_TRUE(ShowsSundial(app.Run)) << "the view that a key acted on last";
}

TEST_F(MouseSundialTest, TheGlobeStopsTurningAndTheSatelliteDoesNotAimTheChart) {
    EnterView(app, program.Time, 1);
    main.TimerHRot.Restart(20);
    EnterView(app, program.Time, 9);
    EXPECT_FALSE(main.TimerHRot.Enabled);
    AddSatellite();
    app.Run.Working.Keep(app.Data.Satellite(app.Data.SatCount), {1, 0.5});
    main.CDrawSky.Value = main.CFlatSky.Value = true;
    main.CLockSatellite.Enabled = main.CLockSatellite.Value = true;
    view.PanX = 0.25;
    view.PanY = 0.5;
    program.Time.TimeSyncronize();
    EXPECT_EQ(view.PanX, 0.25);
    EXPECT_EQ(view.PanY, 0.5);
}

}  // namespace
}  // namespace glintara::testing
