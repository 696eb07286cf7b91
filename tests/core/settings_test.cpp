// The real-time step, the colours and the twilight.

#include <gtest/gtest.h>

#include <limits>

#include "core/colors.h"
#include "core/program_fixture.h"
#include "core/real_time_step.h"
#include "core/twilight.h"

namespace glintara {
namespace {

struct RealTimeStepTest : testing::ProgramTest {
    RealTimeStepTest() { RunAtOnce(); }

    RealTimeControls& form = app.Settings.RealTime;
    double& step = app.Data.RealTimeStep;
};

TEST_F(RealTimeStepTest, TheSliderHasTheStepAndSetsItAtOnce) {
    step = 5;
    real_time_step::Open(app);
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.STime.Value, 5);
    EXPECT_EQ(form.LTStep.Caption.Get(), "5 s");
    form.STime.Value = 10;
    EXPECT_EQ(step, 10);
    EXPECT_EQ(form.LTStep.Caption.Get(), "10 s");
    form.CExit.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(step, 10);
}

TEST_F(RealTimeStepTest, TheTickFollowsTheNewStep) {
    clock.Advance(20000);
    real_time_step::Open(app);
    form.STime.Value = 30;
    clock.Advance(200);
    pictures.clear();
    clock.Advance(60000);
    std::vector<int> seconds;
    for (const testing::Picture& picture : pictures) {
        EXPECT_FALSE(picture.fine);
        seconds.push_back(static_cast<int>(picture.simSecond));
    }
    EXPECT_EQ(seconds, (std::vector<int>{30, 0}));
}

TEST_F(RealTimeStepTest, AStepBeyondTheSliderGoesToItsEnd) {
    EXPECT_EQ(form.STime.Least, 1);
    EXPECT_EQ(form.STime.Most, 60);
    for (const auto& [given, taken] : {std::pair(0.2, 1.0), std::pair(-3.0, 1.0), std::pair(90.0, 60.0),
                                       std::pair(std::numeric_limits<double>::quiet_NaN(), 1.0)}) {
        step = given;
        real_time_step::Open(app);
        EXPECT_EQ(step, taken);
        EXPECT_EQ(form.STime.Value, static_cast<int>(taken));
    }
}

TEST_F(RealTimeStepTest, AFractionStaysUntilTheSliderIsMoved) {
    step = 7.5;
    real_time_step::Open(app);
    EXPECT_EQ(step, 7.5);
    EXPECT_EQ(form.LTStep.Caption.Get(), "7.5 s");
    EXPECT_EQ(form.STime.Value, 7);
    form.STime.Value = 8;
    EXPECT_EQ(step, 8);
}

struct ColorsTest : testing::ProgramTest {
    ColorsTest() { RunAtOnce(); }

    void ExpectOnePicture() {
        pictures.clear();
        clock.Advance(20);
        EXPECT_EQ(pictures.size(), 1U);
    }

    ColorControls& form = app.Settings.Colors;
    CommonData& data = app.Data;
};

TEST_F(ColorsTest, TheFirstLandColoursAreGiven) {
    EXPECT_EQ(kSoilPalette[0].color, 28416U);
    EXPECT_EQ(kSoilPalette[1].color, 13107U);
    EXPECT_EQ(kSoilPalette[2].color, 25443U);
    EXPECT_EQ(kSoilPalette[3].color, 2565935U);
    EXPECT_EQ(form.LSoilColor.Count(), 8);
    EXPECT_EQ(form.LSealColor.Count(), 8);
}

TEST_F(ColorsTest, EachEntrySetsItsColourAndAsksForAPicture) {
    form_colors::Open(app);
    for (int i = 7; i >= 0; --i) {
        form.LSoilColor.Current = i;
        EXPECT_EQ(data.SoilColor, kSoilPalette[static_cast<std::size_t>(i)].color);
        ExpectOnePicture();
        form.LSealColor.Current = i;
        EXPECT_EQ(data.SeaColor, kSeaPalette[static_cast<std::size_t>(i)].color);
        ExpectOnePicture();
    }
}

TEST_F(ColorsTest, NoTwoEntriesAreAlike) {
    for (const auto* palette : {&kSoilPalette, &kSeaPalette})
        for (std::size_t i = 0; i < palette->size(); ++i)
            for (std::size_t k = 0; k < i; ++k) {
                EXPECT_NE((*palette)[i].color, (*palette)[k].color);
                EXPECT_NE((*palette)[i].name, (*palette)[k].name);
            }
}

TEST_F(ColorsTest, TheShadowIsAGreyOfTheSlidersLevel) {
    form_colors::Open(app);
    form.SShadow.Value = 255;
    EXPECT_EQ(data.ShadowColor, 16777215U) << "white";
    ExpectOnePicture();
    form.SShadow.Value = 0;
    EXPECT_EQ(data.ShadowColor, 0U);
    form.SShadow.Value = 90;
    EXPECT_EQ(data.ShadowColor, 90U * 65793);
    EXPECT_EQ(form.LShadowLevel.Caption.Get(), "90");
}

TEST_F(ColorsTest, TheIntervalIsOneOfFour) {
    form_colors::Open(app);
    const std::pair<OptionButton*, double> buttons[] = {
        {&form.CKI0, 0}, {&form.CKI1, 1}, {&form.CKI7, 7}, {&form.CKI3, 3}};
    for (const auto& [button, days] : buttons) {
        button->Value = true;
        EXPECT_EQ(data.UpdateCheckDays, days);
        int set = 0;
        for (const auto& [other, otherDays] : buttons) set += other->Value ? 1 : 0;
        EXPECT_EQ(set, 1);
        EXPECT_TRUE(button->Value);
        button->Value = false;
        EXPECT_TRUE(button->Value) << "one is always set";
        EXPECT_EQ(data.UpdateCheckDays, days);
    }
    EXPECT_EQ(form.LCheckInt.Caption.Get(), "Days: 3");
}

TEST_F(ColorsTest, ValuesThatAreInNoListShowAsTheyAreAndStay) {
    data.SoilColor = 0x123456;
    data.SeaColor = 0x654321;
    data.ShadowColor = 0x403020;
    data.UpdateCheckDays = 2.5;
    form_colors::Open(app);
    EXPECT_EQ(form.LSoilColor.Current, kNoLine);
    EXPECT_EQ(form.LSealColor.Current, kNoLine);
    EXPECT_TRUE(form.LSoilColor.Selected.Get().empty());
    EXPECT_EQ(form.SShadow.Value, 0x30);
    for (const OptionButton* button : {&form.CKI0, &form.CKI1, &form.CKI3, &form.CKI7}) EXPECT_FALSE(button->Value);
    EXPECT_EQ(form.LCheckInt.Caption.Get(), "Days: 2.5");
    EXPECT_EQ(data.SoilColor, 0x123456U);
    EXPECT_EQ(data.SeaColor, 0x654321U);
    EXPECT_EQ(data.ShadowColor, 0x403020U);
    EXPECT_EQ(data.UpdateCheckDays, 2.5);
}

TEST_F(ColorsTest, DefaultIsWhatTheProgramStartsWith) {
    const CommonData fresh;
    data.SoilColor = data.SeaColor = data.ShadowColor = 1;
    data.UpdateCheckDays = 7;
    form_colors::Open(app);
    form.CDefault.Click();
    EXPECT_EQ(form.SShadow.Value, 90);
    EXPECT_EQ(form.LSoilColor.Current, 4) << "the fifth";
    EXPECT_EQ(form.LSealColor.Current, 3) << "the fourth";
    EXPECT_EQ(data.SoilColor, fresh.SoilColor);
    EXPECT_EQ(data.SeaColor, fresh.SeaColor);
    EXPECT_EQ(data.ShadowColor, fresh.ShadowColor);
    EXPECT_EQ(data.UpdateCheckDays, 3);
    EXPECT_TRUE(form.CKI3.Value);
    EXPECT_EQ(form.LCheckInt.Caption.Get(), "Days: 3");
    ExpectOnePicture();
    form.CClose.Click();
    EXPECT_FALSE(form.Visible);
}

TEST_F(ColorsTest, TheStartAppliesTheDefaults) {
    data.SoilColor = data.SeaColor = data.ShadowColor = 1;
    program.Start({});
    EXPECT_EQ(data.SoilColor, kSoilPalette[kDefaultSoil].color);
    EXPECT_EQ(data.SeaColor, kSeaPalette[kDefaultSea].color);
    EXPECT_EQ(data.ShadowColor, 90U * 65793);
}

struct TwilightTest : testing::ProgramTest {
    TwilightTest() {
        RunAtOnce();
        twilight::Open(app);
    }

    void Apply(const std::string& text) {
        form.TTwilight.Text = text;
        form.CApply.Click();
    }

    TwilightControls& form = app.Settings.Twilight;
};

TEST_F(TwilightTest, ApplyTakesTheAngleAndItsSine) {
    EXPECT_EQ(form.TTwilight.Text.Get(), "0");
    Apply("-6");
    EXPECT_EQ(app.Data.TwilightAngle, -6);
    EXPECT_NEAR(app.Data.TwilightSine, -0.10452846326765347, 1e-12);
    EXPECT_TRUE(form.Visible);
    Apply("30");
    EXPECT_NEAR(app.Data.TwilightSine, 0.5, 1e-12);
    pictures.clear();
    clock.Advance(20);
    EXPECT_EQ(pictures.size(), 1U);
}

TEST_F(TwilightTest, WhatNobodyTypedOverKeepsAllItsDigits) {
    app.Data.SetTwilightAngle(-6.1234567890123456);
    twilight::WinDataUpdate(app);
    form.CApply.Click();
    EXPECT_EQ(app.Data.TwilightAngle, -6.1234567890123456);
    Apply("-6.5");
    EXPECT_EQ(app.Data.TwilightAngle, -6.5);
}

TEST_F(TwilightTest, TheAngleIsHeldBetweenTheZenithAndTheNadir) {
    Apply("120");
    EXPECT_EQ(form.TTwilight.Text.Get(), "90");
    EXPECT_EQ(app.Data.TwilightAngle, 90);
    EXPECT_NEAR(app.Data.TwilightSine, 1, 1e-12);
    Apply("-1e300");
    EXPECT_EQ(form.TTwilight.Text.Get(), "-90");
    EXPECT_EQ(app.Data.TwilightAngle, -90);
}

TEST_F(TwilightTest, JunkIsNoughtAndACommaIsADecimalMark) {
    Apply("-6,5");
    EXPECT_EQ(form.TTwilight.Text.Get(), "-6.5");
    Apply("dusk");
    EXPECT_EQ(form.TTwilight.Text.Get(), "0");
    EXPECT_EQ(app.Data.TwilightAngle, 0);
    EXPECT_EQ(app.Data.TwilightSine, 0);
}

TEST_F(TwilightTest, OkAppliesAndClosesCloseLeavesWhatWasApplied) {
    form.TTwilight.Text = std::string("-12");
    form.COk.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(app.Data.TwilightAngle, -12);
    twilight::Open(app);
    Apply("-18");
    form.TTwilight.Text = std::string("5");
    form.CClose.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(app.Data.TwilightAngle, -18);
    twilight::Open(app);
    EXPECT_EQ(form.TTwilight.Text.Get(), "-18");
}

TEST(TwilightAngle, IsNeverAnythingButANumber) {
    CommonData data;
    data.SetTwilightAngle(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(data.TwilightAngle, 0);
    data.SetTwilightAngle(std::numeric_limits<double>::infinity());
    EXPECT_EQ(data.TwilightAngle, 90);
}

}  // namespace
}  // namespace glintara
