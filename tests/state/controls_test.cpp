#include "state/controls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "state/find_flare_controls.h"
#include "state/main_controls.h"
#include "state/mirror_controls.h"

namespace glintara {
namespace {

TEST(Observed, SettingAnotherValueFiresTheHandlerOnce) {
    CheckBox box;
    int fired = 0;
    box.Value.SetHandler([&] { ++fired; });
    box.Value = true;
    EXPECT_EQ(fired, 1);
    EXPECT_TRUE(box.Value);
}

TEST(Observed, SettingTheSameValueDoesNothing) {
    TextBox box("24");
    int fired = 0;
    box.Text.SetHandler([&] { ++fired; });
    box.Watch([&] { ++fired; });
    box.Text = std::string("24");
    EXPECT_EQ(fired, 0);
}

TEST(Observed, TheHandlerSeesTheNewValue) {
    TextBox box("30");
    std::string seen;
    box.Text.SetHandler([&] { seen = box.Text.Get(); });
    box.Text = std::string("150");
    EXPECT_EQ(seen, "150");
}

TEST(Observed, TheWindowShowsAValueBeforeTheProgramActsOnIt) {
    CheckBox box;
    std::vector<std::string> order;
    box.Value.SetHandler([&] { order.emplace_back("program"); });
    box.Watch([&] { order.emplace_back("window"); });
    box.Value = true;
    EXPECT_EQ(order, (std::vector<std::string>{"window", "program"}));
}

TEST(Observed, AHandlerMaySetItsOwnValueBack) {
    CheckBox box;
    int fired = 0;
    box.Value.SetHandler([&] {
        ++fired;
        box.Value = false;
    });
    box.Value = true;
    EXPECT_FALSE(box.Value);
    EXPECT_EQ(fired, 2);
}

TEST(Observed, BoxesThatClearEachOtherComeToRest) {
    CheckBox sky;
    CheckBox satellite;
    int fired = 0;
    sky.Value.SetHandler([&] {
        ++fired;
        if (sky.Value) satellite.Value = false;
    });
    satellite.Value.SetHandler([&] {
        ++fired;
        if (satellite.Value) sky.Value = false;
    });
    sky.Value = true;
    satellite.Value = true;
    EXPECT_FALSE(sky.Value);
    EXPECT_TRUE(satellite.Value);
    EXPECT_EQ(fired, 3);
}

TEST(Observed, AssigningOneToAnotherCopiesTheValueAndKeepsTheListeners) {
    TextBox source("7");
    TextBox target("8");
    int sourceFired = 0;
    int targetFired = 0;
    source.Text.SetHandler([&] { ++sourceFired; });
    target.Text.SetHandler([&] { ++targetFired; });
    target.Text = source.Text;
    EXPECT_EQ(target.Text.Get(), "7");
    EXPECT_EQ(sourceFired, 0);
    EXPECT_EQ(targetFired, 1);
    target.Text = std::string("9");
    EXPECT_EQ(targetFired, 2);
    EXPECT_EQ(source.Text.Get(), "7");
}

TEST(CheckBox, EnablingIsShownButIsNoClick) {
    CheckBox box;
    int clicks = 0;
    int shown = 0;
    box.Value.SetHandler([&] { ++clicks; });
    box.Watch([&] { ++shown; });
    box.Enabled = false;
    box.Caption = std::string("Sky");
    box.ToolTip = std::string("draws the sky");
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(shown, 3);
}

TEST(Slider, StandsAtItsLeastAndStaysOnItsBar) {
    Slider slider(5, 20);
    EXPECT_EQ(slider.Value.Get(), 5);
    slider.MoveTo(12);
    EXPECT_EQ(slider.Value.Get(), 12);
    slider.MoveTo(21);
    EXPECT_EQ(slider.Value.Get(), 20);
    slider.MoveTo(-7);
    EXPECT_EQ(slider.Value.Get(), 5);
}

TEST(Slider, EachMoveIsToldOnceWhoeverMovesIt) {
    Slider slider(0, 3599);
    int moves = 0;
    int shown = 0;
    slider.Value.SetHandler([&] { ++moves; });
    slider.Watch([&] { ++shown; });
    slider.MoveTo(900);
    slider.MoveTo(900);
    slider.Value = 901;
    EXPECT_EQ(moves, 2);
    slider.Enabled = false;
    EXPECT_EQ(moves, 2);
    EXPECT_EQ(shown, 3);
}

TEST(Clickable, ADisabledButtonIsDead) {
    Button button("Find First");
    int clicks = 0;
    button.SetClickHandler([&] { ++clicks; });
    button.Enabled = false;
    button.Click();
    EXPECT_EQ(clicks, 0);
    button.Enabled = true;
    button.Click();
    button.Click();
    EXPECT_EQ(clicks, 2);
}

TEST(Clickable, APressWithoutAHandlerIsHarmless) {
    const MenuEntry entry("About");
    EXPECT_NO_THROW(entry.Click());
}

TEST(MenuEntry, CheckingAnEntryIsNoPress) {
    MenuEntry entry;
    int presses = 0;
    int shown = 0;
    entry.SetClickHandler([&] { ++presses; });
    entry.Watch([&] { ++shown; });
    entry.Checked = true;
    entry.Visible = false;
    EXPECT_EQ(presses, 0);
    EXPECT_EQ(shown, 2);
}

TEST(Timer, ATickThatComesAfterTheStopIsLost) {
    Timer timer(1000, true);
    int ticks = 0;
    timer.SetTickHandler([&] {
        ++ticks;
        timer.Enabled = false;
    });
    timer.Fire();
    timer.Fire();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(timer.Interval.Get(), 1000);
}

TEST(Timer, TheClockIsToldOfANewInterval) {
    Timer timer(15000);
    int told = 0;
    timer.Watch([&] { ++told; });
    timer.Interval = 2500;
    timer.Enabled = true;
    EXPECT_EQ(told, 2);
}

TEST(MainControls, StartsWithTheFullOrbitModelAndFlaresOnARunningClock) {
    const MainControls controls;
    EXPECT_TRUE(controls.CSGP4.Value);
    EXPECT_FALSE(controls.CSGP1.Value);
    EXPECT_TRUE(controls.CRealTime.Value);
    EXPECT_TRUE(controls.CIridiumFlares.Value);
    EXPECT_FALSE(controls.CMoonFlares.Value);
    EXPECT_FALSE(controls.CDayFlares.Value);
    EXPECT_FALSE(controls.CPlotOrbit.Value);
    EXPECT_FALSE(controls.MnuTransitMode[kTransitEntry].Checked);
    EXPECT_EQ(controls.MnuTransitMode[kTransitEntry].Caption.Get(), "Transit Mode");
    EXPECT_TRUE(controls.TTLE.Text.Get().empty());
}

TEST(MirrorControls, ShowsNothingUnlessAskedAndTurnsInTenthsOfADegree) {
    const MirrorControls form;
    EXPECT_FALSE(form.CRotAng.Value);
    EXPECT_FALSE(form.CShowSourceRay.Value);
    EXPECT_FALSE(form.CShowRotAxis.Value);
    EXPECT_FALSE(form.CShowMirrorNormal.Value);
    EXPECT_FALSE(form.CForceIllumination.Value);
    EXPECT_EQ(form.CShowSourceRay.Caption.Get(), "Source Ray");
    EXPECT_EQ(form.CShowRotAxis.Caption.Get(), "Rotation Axis");
    EXPECT_EQ(form.CShowMirrorNormal.Caption.Get(), "Mirror Normal");
    EXPECT_EQ(form.CForceIllumination.Caption.Get(), "Force Light");
    EXPECT_EQ(form.LRotTeta.Caption.Get(), "Rot. Angle");
    EXPECT_EQ(form.SRotTeta.Least, 0);
    EXPECT_EQ(form.SRotTeta.Most, 3599);
    EXPECT_EQ(form.LRotTilt.Caption.Get(), "TILT  [°]: ");
}

TEST(FindFlareControls, OpensOnADayAndThirtyKilometresWithNothingToAbort) {
    const FindFlareControls form;
    EXPECT_EQ(form.TInterval.Text.Get(), "24");
    EXPECT_EQ(form.TMaxDistance.Text.Get(), "30");
    EXPECT_FALSE(form.CAbort.Enabled);
    EXPECT_TRUE(form.CFindFirst.Enabled);
    EXPECT_EQ(form.LStatus.Caption.Get(), "Warning: search will involve only selected satellites");
    EXPECT_EQ(form.LastFoundSat, -1);
    EXPECT_EQ(form.LastFoundMirror, -1);
    EXPECT_FALSE(form.SearchAbort);
}

}  // namespace
}  // namespace glintara
