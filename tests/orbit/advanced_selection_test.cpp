// The window that selects by what is known of satellites, without a window.

#include "orbit/advanced_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "state/recording_services.h"

namespace glintara {
namespace {

bool HasMirrors(const SatRecord& satellite) { return satellite.Surface.MirrorCount > 0; }

struct AdvancedSelection : ::testing::Test {
    AdvancedSelection() {
        // Inclinations 10, 20, ... 50 degrees; mean motions 11 to 15.
        for (int i = 1; i <= 5; ++i) {
            SatRecord& satellite = app.Data.Satellite(++app.Data.SatCount);
            satellite.Inclination = i * 10 * 3.14159265358979 / 180 + 1e-12;
            satellite.MeanMotion = 10 + i;
            satellite.Surface.MirrorCount = i == 3 ? 1 : 0;
        }
        advanced_selection::Connect(app, HasMirrors);
        form.Visible = true;
        advanced_selection::Refresh(app, HasMirrors);
    }

    std::string Selected() const {
        std::string text;
        for (int i = 1; i <= app.Data.SatCount; ++i)
            if (app.Data.Satellite(i).Selected) text += std::to_string(i);
        return text;
    }

    const std::string& Count() const { return form.LCount.Caption.Get(); }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    AdvSelControls& form = app.AdvSel;
};

TEST_F(AdvancedSelection, TheCountFollowsTheFieldsAndSelectsNothing) {
    EXPECT_EQ(Count(), "5 of 5 match. Selected: 0 now, 5 after \"Apply\"");
    form.Inclination.TFrom.Text = std::string("15");
    EXPECT_EQ(Count(), "4 of 5 match. Selected: 0 now, 4 after \"Apply\"");
    form.Inclination.TTo.Text = std::string(" 24.5 ");
    EXPECT_EQ(Count(), "1 of 5 matches. Selected: 0 now, 1 after \"Apply\"");
    EXPECT_EQ(Selected(), "");
    form.CApply.Click();
    EXPECT_EQ(Selected(), "2");
    EXPECT_EQ(windows.calls, (std::vector<std::string>{"UpDateAll"}));
    EXPECT_EQ(Count(), "1 of 5 matches. Selected: 1 now, 1 after \"Apply\"");
}

TEST_F(AdvancedSelection, TheSelectionIsReplacedAddedToOrTakenFrom) {
    app.Data.Satellite(1).Selected = app.Data.Satellite(4).Selected = true;
    form.Period.TTo.Text = std::string("105");  // 1440/14 = 102.9, 1440/15 = 96
    form.OTake.Value = true;
    EXPECT_FALSE(form.OReplace.Value);
    EXPECT_EQ(Count(), "2 of 5 match. Selected: 2 now, 1 after \"Apply\"");
    form.CApply.Click();
    EXPECT_EQ(Selected(), "1");
    form.OAdd.Value = true;
    EXPECT_FALSE(form.OTake.Value);
    form.CApply.Click();
    EXPECT_EQ(Selected(), "145");
    form.OReplace.Value = true;
    form.CApply.Click();
    EXPECT_EQ(Selected(), "45");
}

TEST_F(AdvancedSelection, OneOfSeveralIsAlwaysSet) {
    form.OReplace.Value = false;
    EXPECT_TRUE(form.OReplace.Value);
    form.OWithModel.Value = true;
    EXPECT_FALSE(form.OAnyModel.Value);
    form.OWithModel.Value = false;
    EXPECT_TRUE(form.OWithModel.Value);
}

TEST_F(AdvancedSelection, ModelsAreAskedFor) {
    form.OWithModel.Value = true;
    form.CApply.Click();
    EXPECT_EQ(Selected(), "3");
    form.OWithoutModel.Value = true;
    form.CApply.Click();
    EXPECT_EQ(Selected(), "1245");
    form.OAnyModel.Value = true;
    form.CApply.Click();
    EXPECT_EQ(Selected(), "12345");
}

TEST_F(AdvancedSelection, EachFieldAsksForItsOwn) {
    const auto limits = [this](RangeFields& fields) {
        fields.TFrom.Text = std::string("1.5");
        fields.TTo.Text = std::string("2");
        const SelectionQuest quest = advanced_selection::QuestOf(form).value();
        fields.TFrom.Text = std::string();
        fields.TTo.Text = std::string();
        return quest;
    };
    const auto expect = [](const Limits& asked, const SelectionQuest& quest) {
        EXPECT_EQ(asked.least, 1.5);
        EXPECT_EQ(asked.most, 2.0);
        int any = 0;
        for (const Limits* one :
             {&quest.inclination, &quest.perigee, &quest.apogee, &quest.period, &quest.eccentricity, &quest.age})
            any += one->Any() ? 1 : 0;
        EXPECT_EQ(any, 1);
    };
    SelectionQuest quest = limits(form.Inclination);
    expect(quest.inclination, quest);
    quest = limits(form.Perigee);
    expect(quest.perigee, quest);
    quest = limits(form.Apogee);
    expect(quest.apogee, quest);
    quest = limits(form.Period);
    expect(quest.period, quest);
    quest = limits(form.Eccentricity);
    expect(quest.eccentricity, quest);
    quest = limits(form.Age);
    expect(quest.age, quest);
}

TEST_F(AdvancedSelection, WhatIsNoNumberIsToldBesideItsFieldAndNothingIsApplied) {
    form.Perigee.TFrom.Text = std::string("abc");
    EXPECT_EQ(form.Perigee.LNote.Caption.Get(), "not a number");
    EXPECT_EQ(form.Apogee.LNote.Caption.Get(), "");
    EXPECT_EQ(Count(), "A field cannot be read: see beside it");
    EXPECT_FALSE(form.CApply.Enabled);
    advanced_selection::CApply_click(app, HasMirrors);
    EXPECT_EQ(Selected(), "");
    form.Perigee.TFrom.Text = std::string("");
    form.Perigee.TTo.Text = std::string("1,5");
    EXPECT_EQ(form.Perigee.LNote.Caption.Get(), "use \".\", not \",\"");
    form.Perigee.TTo.Text = std::string("100");
    form.Perigee.TFrom.Text = std::string("200");
    EXPECT_EQ(form.Perigee.LNote.Caption.Get(), "from is above to");
    EXPECT_FALSE(form.CApply.Enabled);
    form.Perigee.TFrom.Text = std::string("100");
    EXPECT_EQ(form.Perigee.LNote.Caption.Get(), "");
    EXPECT_TRUE(form.CApply.Enabled);
    for (const char* text : {"inf", "nan", "1e999", "12 km", "0x10"}) {
        form.Age.TTo.Text = std::string(text);
        EXPECT_EQ(form.Age.LNote.Caption.Get(), "not a number") << text;
    }
}

TEST_F(AdvancedSelection, TheElevationIsReadOnlyWhenItIsAskedFor) {
    EXPECT_FALSE(form.TMinElevation.Enabled);
    form.TMinElevation.Text = std::string("high");
    EXPECT_EQ(form.LElevationNote.Caption.Get(), "");
    EXPECT_FALSE(advanced_selection::QuestOf(form).value().leastElevation.has_value());
    form.CAbove.Value = true;
    EXPECT_TRUE(form.TMinElevation.Enabled);
    EXPECT_EQ(form.LElevationNote.Caption.Get(), "not a number");
    EXPECT_FALSE(form.CApply.Enabled);
    form.TMinElevation.Text = std::string("90.5");
    EXPECT_EQ(form.LElevationNote.Caption.Get(), "not from -90 to 90");
    EXPECT_FALSE(form.CApply.Enabled);
    form.TMinElevation.Text = std::string("-90");
    EXPECT_EQ(advanced_selection::QuestOf(form).value().leastElevation, -90.0);
    form.TMinElevation.Text = std::string("");
    EXPECT_EQ(advanced_selection::QuestOf(form).value().leastElevation, 0.0);
    EXPECT_FALSE(advanced_selection::QuestOf(form).value().lit);
    form.CLit.Value = true;
    EXPECT_TRUE(advanced_selection::QuestOf(form).value().lit);
}

TEST_F(AdvancedSelection, TheSkyIsCountedAgainAsItMovesOn) {
    EXPECT_FALSE(form.TimerCount.Armed());
    form.CLit.Value = true;
    EXPECT_TRUE(form.TimerCount.Armed());
    EXPECT_EQ(Count(), "0 of 5 match. Selected: 0 now, 0 after \"Apply\"") << "they have no place";
    form.CLit.Value = false;
    EXPECT_FALSE(form.TimerCount.Armed());
    form.CAbove.Value = true;
    EXPECT_TRUE(form.TimerCount.Armed());
    form.Period.TFrom.Text = std::string("bad");
    form.TimerCount.Fire();
    EXPECT_EQ(Count(), "A field cannot be read: see beside it");
}

TEST_F(AdvancedSelection, AgesAreCountedAgainAsTheClockIsSet) {
    app.Data.SetSimInstant(JDToDate(2458138.5), 2458138.5);
    for (int i = 1; i <= 5; ++i) app.Data.Satellite(i).EpochText = "18020.00000000";
    form.Age.TTo.Text = std::string("3");
    EXPECT_TRUE(form.TimerCount.Armed());
    EXPECT_EQ(Count(), "5 of 5 match. Selected: 0 now, 5 after \"Apply\"");
    app.Data.SetSimInstant(JDToDate(2458144.5), 2458144.5);
    form.TimerCount.Fire();
    EXPECT_EQ(Count(), "0 of 5 match. Selected: 0 now, 0 after \"Apply\"");
    form.Age.TTo.Text = std::string();
    EXPECT_FALSE(form.TimerCount.Armed());
    form.Age.TFrom.Text = std::string("1");
    EXPECT_TRUE(form.TimerCount.Armed());
    form.CClose.Click();
    form.TimerCount.Fire();
    EXPECT_FALSE(form.TimerCount.Armed()) << "nobody looks at it";
}

TEST_F(AdvancedSelection, AnotherSelectionIsCounted) {
    app.Data.Satellite(2).Selected = true;
    app.Satellites.LSat.Selection = app.Satellites.LSat.Selection + 1;
    EXPECT_EQ(Count(), "5 of 5 match. Selected: 1 now, 5 after \"Apply\"");
}

TEST_F(AdvancedSelection, FieldsAreClearedTogether) {
    form.Inclination.TFrom.Text = std::string("15");
    form.Age.TTo.Text = std::string("x");
    form.OWithModel.Value = true;
    form.CLit.Value = true;
    form.CAbove.Value = true;
    form.TMinElevation.Text = std::string("30");
    form.OAdd.Value = true;
    form.CClear.Click();
    EXPECT_EQ(Count(), "5 of 5 match. Selected: 0 now, 5 after \"Apply\"");
    EXPECT_EQ(form.Age.LNote.Caption.Get(), "");
    EXPECT_TRUE(form.OAnyModel.Value);
    EXPECT_FALSE(form.OWithModel.Value);
    EXPECT_EQ(form.TMinElevation.Text.Get(), "0");
    EXPECT_TRUE(form.OAdd.Value) << "what is to become of the selection is no limit";
}

TEST_F(AdvancedSelection, AnEmptyListAndAClosedWindow) {
    app.Data.SatCount = 0;
    advanced_selection::Refresh(app, HasMirrors);
    EXPECT_EQ(Count(), "The satellite list is empty");
    EXPECT_FALSE(form.CApply.Enabled);
    form.CClose.Click();
    EXPECT_FALSE(form.Visible);
    app.Data.SatCount = 5;
    form.Period.TFrom.Text = std::string("1");
    EXPECT_EQ(Count(), "The satellite list is empty") << "nobody sees it";
}

}  // namespace
}  // namespace glintara
