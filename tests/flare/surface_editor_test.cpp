#include "flare/surface_editor.h"

#include "engine/astro/number_text.h"
#include "flare/live_flares.h"
#include "flare/observed_night.h"
#include "flare/surface_fits.h"
#include "orbit/satellite_table.h"

namespace glintara::observed_night {
namespace {

constexpr std::size_t kAlongTrack = 0;
constexpr std::size_t kAlongTarget = 1;
constexpr std::size_t kRotating = 2;
constexpr std::size_t kVerticalSun = 4;
constexpr std::size_t kInertial = 5;

/// The editor as it opens on IRIDIUM 32, in a list behind IRIDIUM 33 and IRIDIUM 35.
struct SurfaceEditorTest : ::testing::Test {
    SurfaceEditorTest() {
        for (const char* name : {"IRIDIUM 33 [-]", "IRIDIUM 35 [+]", "IRIDIUM 32 [+]"}) o.LoadOne("iridium.tle", name);
        o.SelectAll(false);
        surface_editor::Connect(app, clock);
        surface_editor::OpenWindow(app);
        o.windows.calls.clear();
    }

    SatRecord& Working() { return data.Satellite(data.WorkingSat()); }
    SurfaceModel& Model() { return Working().Surface; }

    bool AskedForAPicture() {
        const bool asked = std::ranges::count(o.windows.calls, "UpdateGraphicsLevel2") > 0;
        o.windows.calls.clear();
        return asked;
    }

    /// Types into a field and leaves it.
    void Type(TextBox& box, const std::string& text) {
        box.Text = text;
        surface_editor::LeaveField(app);
    }

    std::string LastWarning() {
        if (o.boxes.messages.empty()) return {};
        EXPECT_EQ(o.boxes.messages.back().icon, MessageIcon::Warning);
        return std::exchange(o.boxes.messages, {}).back().text;
    }

    Observatory o;
    Application& app = o.app;
    CommonData& data = app.Data;
    RecordingClock clock{data};
    MirrorControls& form = app.Mirror;
};

TEST_F(SurfaceEditorTest, OpensOnTheWorkingSatellite) {
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.LSatRef.Caption.Get(), SatelliteIdentityText(Working()));
    EXPECT_EQ(form.LMirrors.Lines.Get(), (std::vector<std::string>{"M#01 - F", "M#02 - L", "M#03 - R"}));
    EXPECT_EQ(form.LMirrors.Current, 0);
    EXPECT_EQ(form.TName.Text.Get(), "F");
    EXPECT_EQ(form.TMID.Text.Get(), "IRIDIUM_F");
    EXPECT_EQ(form.TAngle.Text.Get(), "0");
    EXPECT_EQ(form.TTilt.Text.Get(), "40");
    EXPECT_EQ(form.TMagnify.Text.Get(), "5");
    EXPECT_EQ(form.SAngle.Value, 0);
    EXPECT_EQ(form.STilt.Value, 400);
    EXPECT_TRUE(form.OOrient[kAlongTrack].Value);
    EXPECT_FALSE(form.OUndefined.Value);
}

TEST_F(SurfaceEditorTest, ElementSetsWaitWhileItIsOpen) {
    EXPECT_FALSE(app.Main.CApplyTLEOrbit.Enabled);
    EXPECT_FALSE(app.Main.CUpdateTLE.Enabled);
    surface_editor::CloseWindow(app);
    EXPECT_FALSE(form.Visible);
    EXPECT_TRUE(app.Main.CApplyTLEOrbit.Enabled);
    EXPECT_TRUE(app.Main.CUpdateTLE.Enabled);
}

TEST_F(SurfaceEditorTest, DoesNotOpenWithoutSatellites) {
    surface_editor::CloseWindow(app);
    data.SatCount = 0;
    app.Main.MnuModelSatSurfaces.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_TRUE(app.Main.CApplyTLEOrbit.Enabled);
}

TEST_F(SurfaceEditorTest, AFieldThatIsLeftIsApplied) {
    Type(form.TAngle, "12.5");
    EXPECT_EQ(Model().Mirror(1).Angle, 12.5);
    EXPECT_EQ(form.SAngle.Value, 125);
    EXPECT_TRUE(AskedForAPicture());
    Type(form.TTilt, "-40");
    EXPECT_EQ(Model().Mirror(1).Tilt, -40);
    EXPECT_EQ(form.STilt.Value, 3200);
    AskedForAPicture();
    surface_editor::LeaveField(app);
    EXPECT_FALSE(AskedForAPicture()) << "nothing was typed";
}

TEST_F(SurfaceEditorTest, TheScatteringFactorIsHeldInItsRange) {
    for (const auto& [typed, taken] : std::vector<std::pair<std::string, double>>{
             {"0.5", 1}, {"-3", 1}, {"1", 1}, {"7.25", 7.25}, {"50", 50}, {"1e9", 50}}) {
        Type(form.TMagnify, typed);
        EXPECT_EQ(Model().Mirror(1).ScatterFactor, taken);
        EXPECT_EQ(form.TMagnify.Text.Get(), PlainNumberText(taken));
    }
}

TEST_F(SurfaceEditorTest, ASliderWritesItsBoxAndAppliesWhenItRests) {
    form.SAngle.Value = 1234;
    EXPECT_EQ(form.TAngle.Text.Get(), "123.4");
    EXPECT_TRUE(form.TimerUpdate.Armed());
    EXPECT_EQ(form.TimerUpdate.Interval, 500);
    EXPECT_EQ(Model().Mirror(1).Angle, 0);
    form.STilt.Value = 3599;
    form.TimerUpdate.Fire();
    EXPECT_EQ(Model().Mirror(1).Angle, 123.4);
    EXPECT_EQ(Model().Mirror(1).Tilt, 359.9);
    EXPECT_FALSE(form.TimerUpdate.Armed());
    EXPECT_TRUE(AskedForAPicture());
}

TEST_F(SurfaceEditorTest, EveryStepOfASliderStandsWhereItWasPut) {
    for (int step = 0; step <= kLastTenthOfTurn; ++step) {
        form.SAngle.Value = step;
        surface_editor::Apply(app);
        ASSERT_EQ(form.SAngle.Value, step);
    }
}

TEST_F(SurfaceEditorTest, ASliderThatTheProgramSetsFiresNothing) {
    Type(form.TAngle, "123.4567");
    EXPECT_EQ(form.SAngle.Value, 1234);
    EXPECT_FALSE(form.TimerUpdate.Armed());
    EXPECT_EQ(form.TAngle.Text.Get(), "123.4567");
    Type(form.TAngle, "-0.1");
    EXPECT_EQ(form.SAngle.Value, 3599);
    Type(form.TAngle, "-725");
    EXPECT_EQ(form.SAngle.Value, 3550);
    Type(form.TAngle, "-1e-12");
    EXPECT_EQ(form.SAngle.Value, 0);
    EXPECT_FALSE(form.TimerUpdate.Armed());
}

TEST_F(SurfaceEditorTest, NoApplyWearsANumberDown) {
    surface_editor::CloseWindow(app);
    SurfaceModel& model = Model();
    model.OrientationType = 2;
    model.RotAxisDEC = 0.123456789012345678;
    model.RotAxisRA = -1.0 / 3;
    model.TargetSatID = 24946.75;
    model.Mirror(1).Angle = 100.0 / 3;
    model.Mirror(1).Tilt = -1.0 / 7;
    model.Mirror(1).ScatterFactor = 10.0 / 3;
    const SurfaceModel before = model;
    surface_editor::OpenWindow(app);
    EXPECT_EQ(form.TRotAxisDEC.Text.Get(), "7.073");
    EXPECT_EQ(form.TRotAxisRA.Text.Get(), "-19.099");
    for (int i = 0; i < 3; ++i) surface_editor::CApply_click(app);
    EXPECT_EQ(Model(), before);
    surface_editor::COk_click(app);
    EXPECT_EQ(Model(), before);
}

TEST_F(SurfaceEditorTest, AnAxisThatIsTypedIsTakenAndShownAsTyped) {
    form.OOrient[kRotating].Value = true;
    Type(form.TRotAxisDEC, "45.1");
    Type(form.TRotAxisRA, "-12.34567");
    EXPECT_NEAR(Model().RotAxisDEC, 45.1 * kDegree, 1e-14);
    EXPECT_NEAR(Model().RotAxisRA, -12.34567 * kDegree, 1e-14);
    EXPECT_EQ(form.TRotAxisDEC.Text.Get(), "45.1");
    EXPECT_EQ(form.TRotAxisRA.Text.Get(), "-12.346");
    const double before = Model().RotAxisRA;
    surface_editor::CApply_click(app);
    EXPECT_EQ(Model().RotAxisRA, before);
}

TEST_F(SurfaceEditorTest, AxisAndTargetAreReadUnderTheirTypesOnly) {
    const SurfaceModel before = Model();
    for (NumberBox* box : {&form.TRotAxisDEC, &form.TRotAxisRA, &form.TExtra1}) box->Text = std::string("33");
    surface_editor::CApply_click(app);
    EXPECT_EQ(Model(), before);
}

TEST_F(SurfaceEditorTest, WhatIsNoNumberIsAnsweredInWordsAndNotTaken) {
    const SurfaceModel before = Model();
    for (const std::string bad : {"", "abc", "12,5", "1e9", "nan", "3 4"}) {
        form.TAngle.Text = bad;
        EXPECT_FALSE(surface_editor::IsReadable(app, form.TAngle));
        surface_editor::LeaveField(app);
        EXPECT_TRUE(o.boxes.messages.empty()) << "a field that is left does not open a box";
        EXPECT_EQ(form.TAngle.Text.Get(), bad);
        for (Button* command :
             {&form.CApply, &form.COk, &form.CAddMirror, &form.CMoveUp, &form.CUpTime, &form.CFlareSet, &form.CBeamSet,
              &form.CCopyModel, &form.CSynchMirror, &form.CExportModel}) {
            command->Click();
            EXPECT_EQ(LastWarning(), "\"Angle / RA [deg]\" holds \"" + bad + "\", which is not a number of degrees.");
        }
        form.LMirrors.Current = 2;
        EXPECT_NE(LastWarning(), "");
        EXPECT_EQ(form.LMirrors.Current, 0);
        EXPECT_TRUE(form.Visible);
        EXPECT_EQ(form.TAngle.Text.Get(), bad);
    }
    EXPECT_EQ(Model(), before);
    EXPECT_TRUE(o.boxes.questions.empty());
    form.STilt.Value = 100;
    form.TimerUpdate.Fire();
    EXPECT_EQ(Model().Mirror(1).Tilt, 10) << "what can be read is taken";
    EXPECT_EQ(form.TAngle.Text.Get(), "3 4");
    form.TAngle.Text = std::string("3");
    EXPECT_TRUE(surface_editor::IsReadable(app, form.TAngle));
}

TEST_F(SurfaceEditorTest, CancelBringsBackTheModelOfTheOpening) {
    const SurfaceModel before = Model();
    Type(form.TAngle, "77");
    form.CApply.Click();
    form.CAddMirror.Click();
    form.OOrient[kInertial].Value = true;
    form.CApply.Click();
    EXPECT_NE(Model(), before);
    form.CCancel.Click();
    EXPECT_EQ(Model(), before);
    EXPECT_FALSE(form.Visible);
    EXPECT_TRUE(AskedForAPicture());
}

TEST_F(SurfaceEditorTest, OkKeepsWhatIsTyped) {
    form.TAngle.Text = std::string("77");
    form.COk.Click();
    EXPECT_EQ(Model().Mirror(1).Angle, 77);
    EXPECT_FALSE(form.Visible);
}

TEST_F(SurfaceEditorTest, ClosingByTheFrameLeavesWhatWasLastApplied) {
    Type(form.TAngle, "77");
    form.TAngle.Text = std::string("88");
    form.STilt.Value = 100;
    surface_editor::CloseWindow(app);
    EXPECT_FALSE(form.TimerUpdate.Armed());
    EXPECT_EQ(Model().Mirror(1).Angle, 77);
    EXPECT_EQ(Model().Mirror(1).Tilt, 40);
    surface_editor::OpenWindow(app);
    EXPECT_EQ(form.TAngle.Text.Get(), "77");
}

TEST_F(SurfaceEditorTest, TheListChoosesTheSurfaceAndTypedNumbersGoToTheOneBefore) {
    form.TAngle.Text = std::string("5");
    form.LMirrors.Current = 1;
    EXPECT_EQ(form.CurrentMirror, 2);
    EXPECT_EQ(form.TAngle.Text.Get(), "120");
    EXPECT_EQ(Model().Mirror(1).Angle, 5);
    EXPECT_EQ(Model().Mirror(2).Angle, 120);
    Type(form.TTilt, "41");
    EXPECT_EQ(Model().Mirror(2).Tilt, 41);
    EXPECT_EQ(Model().Mirror(1).Tilt, 40);
}

TEST_F(SurfaceEditorTest, ANameIsFollowedByTheIdentifier) {
    form.TName.Text = std::string("Fwd");
    EXPECT_EQ(form.TMID.Text.Get(), "IRIDIUM_Fwd");
    surface_editor::LeaveField(app);
    EXPECT_EQ(Model().Mirror(1).MirrorName, "Fwd");
    EXPECT_EQ(Model().Mirror(1).MirrorID, "IRIDIUM_Fwd");
    EXPECT_EQ(form.LMirrors.Lines.Get()[0], "M#01 - Fwd");
}

TEST_F(SurfaceEditorTest, AddsASurfaceThatBecomesTheCurrentOne) {
    data.UsageStats.MirrorAddCount = 4;
    form.CAddMirror.Click();
    EXPECT_EQ(Model().MirrorCount, 4);
    EXPECT_EQ(form.CurrentMirror, 4);
    EXPECT_EQ(form.TName.Text.Get(), "UM1");
    EXPECT_EQ(form.TMID.Text.Get(), std::string(TrimmedText(Working().SatNumber)) + "_UM1");
    EXPECT_EQ(Model().Mirror(4).MirrorJD, data.SimTime);
    EXPECT_EQ(form.LMirrors.Lines.Get()[3], "M#04 - " + JDToText(data.SimTime) + " - UM1");
    EXPECT_EQ(data.UsageStats.MirrorAddCount, 5);
}

TEST_F(SurfaceEditorTest, ATwentyFirstSurfaceIsRefused) {
    for (int i = 4; i <= 20; ++i) form.CAddMirror.Click();
    ASSERT_EQ(Model().MirrorCount, 20);
    form.LMirrors.Current = 6;
    const SurfaceModel before = Model();
    form.CAddMirror.Click();
    EXPECT_EQ(LastWarning(), "Already too many mirrors");
    EXPECT_EQ(Model(), before);
    EXPECT_EQ(form.CurrentMirror, 7);
}

TEST_F(SurfaceEditorTest, DeletesTheCurrentSurfaceAfterAQuestion) {
    form.LMirrors.Current = 1;
    o.boxes.answer = false;
    form.CDeleteMirror.Click();
    EXPECT_EQ(o.boxes.questions, (std::vector<std::string>{"The mirror will be deleted!\nAre you sure?"}));
    EXPECT_EQ(Model().MirrorCount, 3);
    o.boxes.answer = true;
    form.CDeleteMirror.Click();
    EXPECT_EQ(form.LMirrors.Lines.Get(), (std::vector<std::string>{"M#01 - F", "M#02 - R"}));
    EXPECT_EQ(form.CurrentMirror, 1);
    form.CDeleteMirror.Click();
    form.CDeleteMirror.Click();
    EXPECT_EQ(Model().MirrorCount, 0);
    EXPECT_EQ(form.CurrentMirror, 0);
    EXPECT_FALSE(form.CDeleteMirror.Enabled);
    EXPECT_FALSE(form.CFlareSet.Enabled);
    EXPECT_FALSE(form.TAngle.Enabled);
    EXPECT_TRUE(form.CAddMirror.Enabled);
    form.CAddMirror.Click();
    EXPECT_EQ(form.CurrentMirror, 1);
}

TEST_F(SurfaceEditorTest, DeletesTheTwentieth) {
    for (int i = 4; i <= 20; ++i) form.CAddMirror.Click();
    form.CDeleteMirror.Click();
    EXPECT_EQ(Model().MirrorCount, 19);
    EXPECT_EQ(Model().Mirror(19).MirrorName, "UM16");
}

TEST_F(SurfaceEditorTest, MoveUpMakesTheCurrentOneTheFirst) {
    form.CAddMirror.Click();
    form.LMirrors.Current = 2;
    form.CMoveUp.Click();
    std::vector<std::string> names;
    for (int i = 1; i <= 4; ++i) names.push_back(Model().Mirror(i).MirrorName);
    EXPECT_EQ(names, (std::vector<std::string>{"R", "F", "L", "UM1"}));
    EXPECT_EQ(form.CurrentMirror, 1);
    EXPECT_EQ(form.TName.Text.Get(), "R");
}

TEST_F(SurfaceEditorTest, UpdateTimeNotesTheDisplayedInstantAndADoubleClickGoesThere) {
    form.LMirrorsTwice.Click();
    EXPECT_TRUE(clock.instants.empty()) << "no instant was noted";
    SetInstant(data, kNight + 0.25);
    form.CUpTime.Click();
    EXPECT_EQ(Model().Mirror(1).MirrorJD, kNight + 0.25);
    EXPECT_EQ(form.LMirrors.Lines.Get()[0], "M#01 - " + JDToText(kNight + 0.25) + " - F");
    SetInstant(data, kNight + 3);
    AskedForAPicture();
    form.LMirrorsTwice.Click();
    EXPECT_EQ(clock.instants, (std::vector<double>{kNight + 0.25}));
    EXPECT_TRUE(AskedForAPicture());
}

TEST_F(SurfaceEditorTest, TheTypeDecidesWhatIsInUse) {
    struct Expected {
        std::size_t option;
        int type;
        bool rotating;
        bool target;
    };
    for (const auto& [option, type, rotating, target] :
         {Expected{kAlongTarget, 3, false, true}, Expected{kRotating, 2, true, false},
          Expected{kVerticalSun, 4, false, false}, Expected{kInertial, 1, false, false},
          Expected{kAlongTrack, 0, false, false}}) {
        form.OOrient[option].Value = true;
        EXPECT_EQ(Model().OrientationType, type);
        EXPECT_EQ(Model().ModelFlags[0], '1');
        for (std::size_t i = 0; i < kOrientationOptions; ++i) EXPECT_EQ(form.OOrient[i].Value, i == option);
        for (const NumberBox* box : {&form.TRotAxisDEC, &form.TRotAxisRA}) EXPECT_EQ(box->Enabled, rotating);
        EXPECT_EQ(form.TRotAxisDEC.Text.Get(), rotating ? "57.295" : "");
        EXPECT_EQ(form.SRotTeta.Enabled, rotating);
        EXPECT_EQ(form.CRotation.Enabled, rotating);
        for (const CheckBox* box : {&form.CRotAng, &form.CShowSourceRay, &form.CShowRotAxis, &form.CShowMirrorNormal,
                                    &form.CForceIllumination})
            EXPECT_EQ(box->Enabled, rotating);
        EXPECT_EQ(form.LExtra1.Visible, target);
        EXPECT_EQ(form.TExtra1.Enabled, target);
        EXPECT_EQ(form.TExtra1.Text.Get(), target ? "0" : "");
    }
}

TEST_F(SurfaceEditorTest, AChosenOptionIsNotLeftByItself) {
    form.OOrient[kAlongTrack].Value = false;
    EXPECT_TRUE(form.OOrient[kAlongTrack].Value);
    EXPECT_EQ(Model().ModelFlags[0], '1');
}

TEST_F(SurfaceEditorTest, UndefinedHidesTheSurfacesButKeepsThem) {
    form.OUndefined.Value = true;
    EXPECT_EQ(Model().ModelFlags[0], '0');
    EXPECT_EQ(Model().MirrorCount, 3);
    EXPECT_FALSE(HasFlareModel(Working()));
    EXPECT_FALSE(form.OOrient[kAlongTrack].Value);
    EXPECT_FALSE(form.FMirrorData.Visible);
    EXPECT_FALSE(form.FMirror.Visible);
    for (const Button* button : {&form.CAddMirror, &form.CDeleteMirror, &form.CMoveUp, &form.CUpTime, &form.CFlareSet,
                                 &form.CBeamSet, &form.CSynchMirror})
        EXPECT_FALSE(button->Enabled);
    const SurfaceModel before = Model();
    form.TName.Text = std::string("x");
    form.CApply.Click();
    EXPECT_EQ(Model(), before);
    form.OOrient[kAlongTrack].Value = true;
    EXPECT_TRUE(HasFlareModel(Working()));
    EXPECT_TRUE(form.FMirrorData.Visible);
    EXPECT_EQ(form.TName.Text.Get(), "F");
}

TEST_F(SurfaceEditorTest, ATypeThatIsNoneHasNoOption) {
    surface_editor::CloseWindow(app);
    Model().OrientationType = 7;
    surface_editor::OpenWindow(app);
    for (const OptionButton& option : form.OOrient) EXPECT_FALSE(option.Value);
    EXPECT_FALSE(form.OUndefined.Value);
    form.CFlareSet.Click();
    EXPECT_EQ(LastWarning(), "Auto orientation is not available for this orientation type");
    EXPECT_EQ(Model().OrientationType, 7);
    EXPECT_NE(surface_editor::SurfaceModelText(app, Working()).find("ORIENTATION TYPE #7: ???"), std::string::npos);
}

TEST_F(SurfaceEditorTest, TheTargetIsTold) {
    form.OOrient[kAlongTarget].Value = true;
    EXPECT_EQ(form.LExtraInfo1.Caption.Get(), "Target Sat: Invalid");
    form.TExtra1.Text = data.Satellite(1).SatNumber;
    EXPECT_EQ(form.LExtraInfo1.Caption.Get(), "Target Sat: IRIDIUM 33 [-]");
    EXPECT_EQ(Model().TargetSatID, 0) << "not yet applied";
    surface_editor::LeaveField(app);
    EXPECT_EQ(Model().TargetSatID, SatelliteNumberValue(data.Satellite(1).SatNumber));
    form.TExtra1.Text = std::string("12");
    EXPECT_EQ(form.LExtraInfo1.Caption.Get(), "Target Sat: Invalid");
    form.TExtra1.Text = std::string("x");
    form.CApply.Click();
    EXPECT_EQ(LastWarning(), "\"Target Satellite N.\" holds \"x\", which is not a catalogue number.");
    Type(form.TExtra1, "A0001");
    EXPECT_EQ(Model().TargetSatID, 100001);
    Type(form.TExtra1, "25544.9");
    EXPECT_EQ(Model().TargetSatID, 25544);
    form.OOrient[kAlongTrack].Value = true;
    EXPECT_EQ(form.LExtraInfo1.Caption.Get(), "");
}

TEST_F(SurfaceEditorTest, AFitTurnsTheSurfaceAndIsApplied) {
    data.SetSimInstant(data.SimFields(), kNight + 0.7);
    for (const std::size_t option : {kAlongTrack, kInertial, kVerticalSun}) {
        form.OOrient[option].Value = true;
        for (Button* fit : {&form.CFlareSet, &form.CBeamSet}) {
            const FitAim aim = fit == &form.CFlareSet ? FitAim::Flare : FitAim::Beam;
            const std::optional<SurfaceAngles> expected = FitSurface(app, Working(), aim);
            ASSERT_TRUE(expected);
            AskedForAPicture();
            fit->Click();
            EXPECT_EQ(Model().Mirror(1).Angle, expected->angle);
            EXPECT_EQ(Model().Mirror(1).Tilt, expected->tilt);
            EXPECT_EQ(form.TAngle.Text.Get(), PlainNumberText(expected->angle));
            EXPECT_EQ(form.TTilt.Text.Get(), PlainNumberText(expected->tilt));
            EXPECT_EQ(form.LFitInfo.Caption.Get(), ObjectionToFit(app, Working(), aim));
            EXPECT_TRUE(AskedForAPicture());
            const SurfaceModel once = Model();
            fit->Click();
            EXPECT_EQ(Model(), once) << "the same when it is repeated";
        }
    }
    EXPECT_TRUE(o.boxes.messages.empty());
}

TEST_F(SurfaceEditorTest, NoFitForBodiesThatRotateOrAreTurnedToATarget) {
    for (const std::size_t option : {kRotating, kAlongTarget}) {
        form.OOrient[option].Value = true;
        const SurfaceModel before = Model();
        for (Button* fit : {&form.CFlareSet, &form.CBeamSet}) {
            fit->Click();
            EXPECT_EQ(LastWarning(), "Auto orientation is not available for this orientation type");
            EXPECT_EQ(Model(), before);
        }
    }
}

TEST_F(SurfaceEditorTest, NoFitForASatelliteWithoutAPlace) {
    Working().EngineBlock = EngineBlock{};
    surface_editor::RefreshData(app);
    const SurfaceModel before = Model();
    for (Button* fit : {&form.CFlareSet, &form.CBeamSet}) {
        fit->Click();
        EXPECT_EQ(LastWarning(), "No orientation of the surface does that at this moment");
        EXPECT_EQ(Model(), before);
    }
}

TEST_F(SurfaceEditorTest, TheAxisComesFromTheFirstThreeSurfaces) {
    form.OOrient[kRotating].Value = true;
    form.CDeleteMirror.Click();
    form.CRotation.Click();
    EXPECT_EQ(LastWarning(), "To compute the axis at least 3 mirrors are needed");
    form.CAddMirror.Click();
    const auto turn = [&](int index, const char* angle, const char* tilt) {
        form.LMirrors.Current = index - 1;
        Type(form.TAngle, angle);
        Type(form.TTilt, tilt);
    };
    for (int i = 1; i <= 3; ++i) turn(i, "10", "20");
    const SurfaceModel before = Model();
    form.CRotation.Click();
    EXPECT_EQ(LastWarning(), "The first three surfaces have no common rotation axis: two of them look the same way");
    EXPECT_EQ(Model(), before);
    // All at a declination of 20 degrees: about the pole.
    turn(2, "100", "20");
    turn(3, "250", "20");
    form.CRotation.Click();
    EXPECT_NEAR(Model().RotAxisDEC, 90 * kDegree, 1e-7);
    // One on each axis of space: about the line between them, of right ascension 45 degrees and a declination of
    // asin(1 / sqrt 3) = 35.2644.
    turn(1, "0", "0");
    turn(2, "90", "0");
    turn(3, "0", "90");
    form.CRotation.Click();
    EXPECT_NEAR(Model().RotAxisDEC, std::asin(1 / std::sqrt(3.0)), 1e-12);
    EXPECT_NEAR(Model().RotAxisRA, 45 * kDegree, 1e-12);
    EXPECT_EQ(form.TRotAxisDEC.Text.Get(), "35.264");
    EXPECT_EQ(form.TRotAxisRA.Text.Get(), "45");
    EXPECT_TRUE(o.boxes.messages.empty());
}

TEST_F(SurfaceEditorTest, ClearsTheSurfacesOfTheSelected) {
    form.CClearAllMirrors.Click();
    EXPECT_EQ(LastWarning(), "No satellites are selected");
    data.Satellite(1).Selected = true;
    Working().Selected = true;
    o.boxes.answer = false;
    form.CClearAllMirrors.Click();
    EXPECT_EQ(o.boxes.questions.back(), "All the mirrors of the selected satellites will be deleted!\nAre you sure?");
    EXPECT_EQ(Model().MirrorCount, 3);
    o.boxes.answer = true;
    form.CClearAllMirrors.Click();
    EXPECT_EQ(data.Satellite(1).Surface.MirrorCount, 0);
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).MirrorID, "0");
    EXPECT_EQ(data.Satellite(2).Surface.MirrorCount, 3);
    EXPECT_EQ(Model().MirrorCount, 0);
    EXPECT_TRUE(form.LMirrors.Lines.Get().empty()) << "the form has the model of the list";
    EXPECT_EQ(form.CurrentMirror, 0);
}

TEST_F(SurfaceEditorTest, CopiesTheModelToTheSelected) {
    data.Satellite(1).Selected = true;
    form.TAngle.Text = std::string("33");
    o.boxes.answer = false;
    form.CCopyModel.Click();
    EXPECT_EQ(o.boxes.questions.back(), "The surface models for all the selected sats will be changed\nAre you sure?");
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Angle, 0);
    o.boxes.answer = true;
    form.CCopyModel.Click();
    EXPECT_EQ(data.Satellite(1).Surface, Model());
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Angle, 33);
    EXPECT_EQ(data.Satellite(2).Surface.Mirror(1).Angle, 0);
    EXPECT_EQ(form.TAngle.Text.Get(), "33");
}

TEST_F(SurfaceEditorTest, UpdatesTheSurfaceOfThatIdentifierOnTheSelected) {
    for (int s = 1; s <= 2; ++s) {
        data.Satellite(s).Selected = true;
        std::swap(data.Satellite(s).Surface.Mirror(1), data.Satellite(s).Surface.Mirror(3));
    }
    data.Satellite(2).Surface.Mirror(3).MirrorID = "other";
    form.TTilt.Text = std::string("39.5");
    o.boxes.answer = false;
    form.CSynchMirror.Click();
    EXPECT_EQ(o.boxes.questions.back(), "All the selected Sats with this mirror ID will be updated\nAre you sure?");
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(3).Tilt, 40);
    o.boxes.answer = true;
    form.CSynchMirror.Click();
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(3), Model().Mirror(1));
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(3).Tilt, 39.5);
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Tilt, 40);
    EXPECT_EQ(data.Satellite(2).Surface.Mirror(3).Tilt, 40);
}

TEST_F(SurfaceEditorTest, GoesOverToAnotherSatelliteWithWhatIsTypedApplied) {
    const std::string before = Working().Name;
    form.TAngle.Text = std::string("33");
    form.STilt.Value = 5;
    surface_editor::ChangeSatelliteSignal(app);
    std::swap(data.Satellite(1), data.Satellite(3));
    surface_editor::RefreshData(app);
    EXPECT_EQ(data.Satellite(1).Name, before);
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Angle, 33);
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Tilt, 0.5);
    EXPECT_EQ(form.LSatRef.Caption.Get(), SatelliteIdentityText(Working()));
    EXPECT_EQ(form.TAngle.Text.Get(), "0");
    const SurfaceModel other = Model();
    Type(form.TAngle, "11");
    form.CCancel.Click();
    EXPECT_EQ(Model(), other) << "the model that this one had";
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Angle, 33);
}

TEST_F(SurfaceEditorTest, WhatCannotBeReadDoesNotGoWithoutAWord) {
    const double tilt = Model().Mirror(1).Tilt;
    form.TAngle.Text = std::string("33");
    form.TTilt.Text = std::string("12,7");
    surface_editor::ChangeSatelliteSignal(app);
    std::swap(data.Satellite(1), data.Satellite(3));
    surface_editor::RefreshData(app);
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Angle, 33);
    EXPECT_EQ(data.Satellite(1).Surface.Mirror(1).Tilt, tilt);
    EXPECT_EQ(form.TTilt.Text.Get(), "40");
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(),
              "Not taken: \"Tilt / DEC [deg]\" holds \"12,7\", which is not a number of degrees.");
    app.Main.LCommandOutput.Caption = std::string();
    form.TTilt.Text = std::string("12.7");
    surface_editor::ChangeSatelliteSignal(app);
    std::swap(data.Satellite(1), data.Satellite(3));
    surface_editor::RefreshData(app);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "") << "nothing is lost";
}

TEST_F(SurfaceEditorTest, NeverWritesIntoAnotherSatellite) {
    std::swap(data.Satellite(1), data.Satellite(3));
    const SurfaceModel other = Model();
    Type(form.TAngle, "33");
    form.CCancel.Click();
    EXPECT_EQ(Model(), other);
}

TEST_F(SurfaceEditorTest, TakesWhatOthersHaveChangedAndKeepsWhatIsTypedOtherwise) {
    form.TAngle.Text = std::string("33");
    Working().OptionFlags[0] = '0';
    surface_editor::RefreshData(app);
    EXPECT_EQ(form.TAngle.Text.Get(), "33");
    EXPECT_EQ(form.LSatRef.Caption.Get(), SatelliteIdentityText(Working()));
    Model().Mirror(1).Angle = 99;
    surface_editor::RefreshData(app);
    EXPECT_EQ(form.TAngle.Text.Get(), "99");
}

TEST_F(SurfaceEditorTest, ClosesWhenTheListIsEmptied) {
    data.SatCount = 0;
    surface_editor::RefreshData(app);
    EXPECT_FALSE(form.Visible);
    EXPECT_TRUE(app.Main.CApplyTLEOrbit.Enabled);
}

TEST_F(SurfaceEditorTest, DrawOptionsRedrawAtOnceAndCanAlwaysBeCleared) {
    form.OOrient[kRotating].Value = true;
    for (CheckBox* box :
         {&form.CRotAng, &form.CShowSourceRay, &form.CShowRotAxis, &form.CShowMirrorNormal, &form.CForceIllumination}) {
        AskedForAPicture();
        box->Value = true;
        EXPECT_TRUE(AskedForAPicture());
    }
    form.SRotTeta.Value = 450;
    EXPECT_TRUE(AskedForAPicture());
    form.OOrient[kAlongTrack].Value = true;
    EXPECT_FALSE(form.SRotTeta.Enabled);
    EXPECT_TRUE(form.CShowSourceRay.Enabled);
    form.CShowSourceRay.Value = false;
    EXPECT_FALSE(form.CShowSourceRay.Enabled);
    EXPECT_EQ(form.SRotTeta.Value, 450);
}

TEST_F(SurfaceEditorTest, TheModelIsPrintedInPlaceOfWhatTheOutputHeld) {
    form.OOrient[kRotating].Value = true;
    Type(form.TRotAxisDEC, "-12.3456");
    Type(form.TRotAxisRA, "45.1");
    Type(form.TAngle, "12.25");
    SetInstant(data, kNight + 0.5);
    form.CUpTime.Click();
    app.Output.TOutput.Text = std::string("old");
    form.CExportModel.Click();
    EXPECT_TRUE(app.Output.Visible);
    const std::string& page = app.Output.TOutput.Text.Get();
    EXPECT_TRUE(page.starts_with("Output generated by Glintara"));
    EXPECT_EQ(page.find("old"), std::string::npos);
    const std::string expected =
        "SATELLITE SURFACE MODEL\r\n"
        "---------------------------------------------------\r\n"
        "SAT ID #24945 (97051B) IRIDIUM 32 [+]\r\n"
        "\r\n"
        "ORIENTATION TYPE #2: Rotating\r\n"
        "ROTAX-DEC: -12.346\r\n"
        "ROTAX-RA: 45.1\r\n"
        "NUMBER OF SURFACES: 3\r\n"
        "\r\n"
        "M#01 - " +
        JDToText(kNight + 0.5) +
        " - F >>> 12.25;40;5\r\n"
        "M#02 - L >>> 120;40;5\r\n"
        "M#03 - R >>> -120;40;5\r\n";
    EXPECT_NE(page.find(expected), std::string::npos) << page;
    form.OUndefined.Value = true;
    form.CExportModel.Click();
    EXPECT_NE(app.Output.TOutput.Text.Get().find("ORIENTATION TYPE #2: Undefined\r\n"), std::string::npos);
}

}  // namespace
}  // namespace glintara::observed_night
