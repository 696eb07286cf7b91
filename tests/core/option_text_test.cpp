#include "core/option_text.h"

#include <cstdint>
#include <random>
#include <string>

#include "core/options.h"
#include "core/program_fixture.h"

namespace glintara::testing {
namespace {

/// The place of an option in the text, counted from 0; two characters each.
constexpr std::size_t kReverseSky = 6;
constexpr std::size_t kDrawSky = 9;
constexpr std::size_t kStarsOnGlobe = 10;
constexpr std::size_t kLockSatellite = 17;
constexpr std::size_t kLockSky = 18;
constexpr std::size_t kMaximizeSky = 22;
constexpr std::size_t kSkyOnly = 25;
constexpr std::size_t kPlotOrbit = 26;
constexpr std::size_t kSGP1 = 31;
constexpr std::size_t kSGP4 = 40;
constexpr std::size_t kDayFlares = 45;
constexpr std::size_t kTransit = 46;
constexpr std::size_t kFloating = 47;
constexpr std::size_t kLib3D = 48;
constexpr std::size_t kFastRefresh = 49;

struct OptionTextTest : ProgramTest {
    OptionTextTest() { RunAtOnce(); }

    std::string Text() const { return OptionsToString(main); }
    std::string At(std::size_t place) const { return Text().substr(place * 2, 2); }

    /// What a view or a workspace does.
    void Read(const std::string& text) {
        StringToOptions(app, text);
        SettleOptions(app, text);
    }

    static std::string With(std::string text, std::size_t place, const std::string& marks) {
        return text.replace(place * 2, 2, marks);
    }

    MainControls& main = app.Main;
};

TEST_F(OptionTextTest, TheTextOfTheStartIsTheListOfTheBoxes) {
    // Without satellites and without the sky, as the program comes up before its boxes were looked through.
    const std::string boxes =
        "E1E1E1E0E0E0E0E1E0E0"  // Run Time, Sun Light, Sun and Moon; live flares
        "E0E0E1E1E0E0E1E0E0E0"  // constellations, back stars, names of satellites
        "E0E0E0E0E0E0E0E0E0E0"  //
        "E0E0E0E0E1E1E0E0E0E0"  // Globe Grid, Solid Globe
        "E1E0E0E0E0E0"          // SGP4
        "E0E0D0D0";             // transits, floating site, OpenGL, fast pictures
    RecordingBoxes unasked;
    Application fresh(unasked, clock, signals);
    EXPECT_EQ(OptionsToString(fresh.Main), boxes);
    EXPECT_EQ(boxes.size(), kOptionTextLength);
}

TEST_F(OptionTextTest, EachOptionHasItsPlace) {
    AddSatellite();
    main.CDrawSky.Value = true;
    const struct {
        CheckBox& box;
        std::size_t place;
    } boxes[] = {{main.CRealTime, 0},       {main.CReverseSky, kReverseSky},
                 {main.CDrawSky, kDrawSky}, {main.CLockSatellite, kLockSatellite},
                 {main.CLockSky, kLockSky}, {main.CMaximizeSky, kMaximizeSky},
                 {main.CSkyOnly, kSkyOnly}, {main.CPlotOrbit, kPlotOrbit},
                 {main.CHCircle, 36},       {main.CLocalTime, 39},
                 {main.CAutoMag, 44},       {main.CDayFlares, kDayFlares}};
    for (const auto& [box, place] : boxes) {
        box.Enabled = true;
        box.Value = true;
        EXPECT_EQ(At(place)[1], '1') << place;
        box.Value = false;
        EXPECT_EQ(At(place)[1], '0') << place;
        box.Enabled = false;
        EXPECT_EQ(At(place)[0], 'D') << place;
    }
    main.MnuTransitMode[kTransitEntry].Checked = true;
    main.MnuFloatingSite.Checked = true;
    main.MnuLib3D.Enabled = false;
    main.MnuLib3D.Checked = true;
    main.TimerFastRefresh.Enabled = true;
    EXPECT_EQ(Text().substr(kTransit * 2), "E1E1D1E1");
}

TEST_F(OptionTextTest, AnythingReachableComesBack) {
    AddSatellite();
    std::mt19937 random(20180120);
    const auto coin = [&random] { return (random() & 1U) != 0; };
    const auto click = [&] {
        for (const OptionPair& pair : OptionPairs(main))
            if (pair.box->Enabled && coin()) pair.box->Value = !pair.box->Value;
    };
    for (int round = 0; round < 300; ++round) {
        click();
        main.CHCircle.Value = coin();
        main.CNOSSFlare.Value = coin();
        main.CLocalTime.Value = coin();
        main.MnuFloatingSite.Checked = coin();
        main.MnuTransitMode[kTransitEntry].Checked = coin();
        main.MnuLib3D.Enabled = true;
        main.MnuLib3D.Checked = coin();
        main.TimerFastRefresh.Enabled = coin();
        const std::string kept = Text();
        click();
        Read(kept);
        ASSERT_EQ(Text(), kept) << round;
        for (const OptionPair& pair : OptionPairs(main)) {
            ASSERT_EQ(pair.entry->Checked, pair.box->Value) << pair.entry->Caption.Get();
            ASSERT_EQ(pair.entry->Enabled, pair.box->Enabled) << pair.entry->Caption.Get();
        }
        ASSERT_EQ(main.MnuNoUTC.Checked, !main.CLocalTime.Value);
    }
}

TEST_F(OptionTextTest, AnyTextLeavesOptionsThatCanBeWrittenAndFitTogether) {
    std::mt19937 random(7);
    const std::string alphabet = "ED10ED10e1 ,\n";
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 120, ' ');
        for (char& c : text) c = alphabet[random() % alphabet.size()];
        Read(text);
        ASSERT_EQ(Text().size(), kOptionTextLength);
        ASSERT_NE(main.CSGP1.Value, main.CSGP4.Value) << text;
        ASSERT_FALSE(main.CLockSky.Value && main.CLockSatellite.Value) << text;
        ASSERT_FALSE(main.CMaximizeSky.Value && main.CStarsOnGlobe.Value) << text;
        ASSERT_FALSE(main.CSkyOnly.Value && !main.CDrawSky.Value) << text;
    }
}

TEST_F(OptionTextTest, WhatAShortTextLacksComesOutDisabledAndUnset) {
    AddSatellite();
    main.CAutoMag.Value = main.CThinLines.Value = main.MnuFloatingSite.Checked = true;
    main.TimerFastRefresh.Enabled = true;
    StringToOptions(app, "E1E1E1");
    EXPECT_EQ(Text().substr(0, 6), "E1E1E1");
    for (std::size_t place = 3; place < kTransit; ++place)
        if (place != kSGP4) EXPECT_EQ(At(place), "D0") << place;
    EXPECT_EQ(At(kSGP4), "D1") << "one of the two models is always set";
    EXPECT_EQ(Text().substr(kTransit * 2), "D0D0E0D0") << "the reader enables OpenGL";
    EXPECT_FALSE(main.MnuAutoMag.Enabled);
    EXPECT_FALSE(main.MnuAutoMag.Checked);
}

TEST_F(OptionTextTest, TheRulesDecideWhatAShortTextLacks) {
    AddSatellite();
    Read("E1E1E1");
    EXPECT_EQ(At(3), "E0") << "there is a satellite";
    EXPECT_EQ(At(kPlotOrbit), "E0");
    EXPECT_EQ(At(kPlotOrbit + 1), "D0") << "no orbit is drawn";
    EXPECT_EQ(At(kSkyOnly), "D0") << "no sky is drawn";
    EXPECT_EQ(At(kSGP4), "E1");
    EXPECT_EQ(At(44), "E0");
    EXPECT_EQ(Text().substr(kTransit * 2), "E0E0E0D0");
    EXPECT_TRUE(main.MnuAutoMag.Enabled);
}

TEST_F(OptionTextTest, HalfAPairTellsWhetherItIsEnabled) {
    StringToOptions(app, "E1E1E");
    EXPECT_EQ(At(2), "E0");
}

TEST_F(OptionTextTest, MoreThanTheLastOptionIsPassedOver) {
    const std::string kept = Text();
    StringToOptions(app, With(kept, 1, "E0") + "E1E1E1");
    EXPECT_EQ(Text(), With(With(kept, 1, "E0"), kLib3D, "E0"));
}

TEST_F(OptionTextTest, FastPicturesGoByTheFirstCharacter) {
    const std::string kept = Text();
    StringToOptions(app, With(kept, kFastRefresh, "E0"));
    EXPECT_TRUE(main.TimerFastRefresh.Enabled);
    StringToOptions(app, With(kept, kFastRefresh, "D1"));
    EXPECT_FALSE(main.TimerFastRefresh.Enabled);
}

TEST_F(OptionTextTest, ABoxThatChangesFiresItsHandler) {
    app.Data.View.SkyScale = app.Data.View.SkyScaleSaved = 55;
    const std::string kept = Text();
    StringToOptions(app, With(kept, kStarsOnGlobe, "E1"));
    EXPECT_EQ(app.Data.View.SkyScale, 1);
    StringToOptions(app, With(kept, kLockSky, "E1"));
    EXPECT_TRUE(app.Data.View.SkyLocked);
    EXPECT_EQ(app.Data.View.SkyScale, 55);
    main.Timer2.Stop();
    StringToOptions(app, kept);
    EXPECT_TRUE(main.Timer2.Enabled) << "a picture is asked for";
}

TEST_F(OptionTextTest, TheTickOfALockWaits) {
    AddSatellite();
    const std::string shown = main.LDateTime.Caption;
    clock.Stall(3000);
    StringToOptions(app, With(Text(), kLockSatellite, "E1"));
    EXPECT_TRUE(main.CLockSatellite.Value);
    EXPECT_EQ(main.LDateTime.Caption.Get(), shown);
}

TEST_F(OptionTextTest, AHeldStateStandsUntilWhatDecidesItChanges) {
    AddSatellite();
    const std::string text = With(Text(), kPlotOrbit, "D0");
    Read(text);
    EXPECT_FALSE(main.CPlotOrbit.Enabled);
    main.CGlobeGrid.Value = !main.CGlobeGrid.Value;
    EXPECT_FALSE(main.CPlotOrbit.Enabled) << "another option is none of its business";
    app.Data.SatCount = 0;
    signals.UpDateAll();
    AddSatellite();
    EXPECT_TRUE(main.CPlotOrbit.Enabled);
}

TEST_F(OptionTextTest, ATextWithoutSatellitesDoesNotTakeTheBoxesFromThoseThatCameSince) {
    signals.UpDateAll();
    const std::string text = Text();
    ASSERT_EQ(text.substr(kPlotOrbit * 2, 2), "D0");
    AddSatellite();
    Read(text);
    EXPECT_TRUE(main.CPlotOrbit.Enabled);
    EXPECT_TRUE(main.CIridiumFlares.Enabled);
    EXPECT_TRUE(main.CAntennaID.Enabled);
    app.Data.SatCount = 0;
    signals.UpDateAll();
    Read(With(text, kPlotOrbit, "E1"));
    EXPECT_FALSE(main.CPlotOrbit.Enabled) << "nor does one with satellites give them back";
}

TEST_F(OptionTextTest, WithoutAModelTheFullOneIsTaken) {
    main.CSGP1.Value = true;
    Read(With(With(Text(), kSGP1, "E0"), kSGP4, "E0"));
    EXPECT_TRUE(main.CSGP4.Value);
    EXPECT_FALSE(main.CSGP1.Value);
    Read(With(With(Text(), kSGP1, "E1"), kSGP4, "E0"));
    EXPECT_TRUE(main.CSGP1.Value);
    EXPECT_FALSE(main.CSGP4.Value);
}

TEST_F(OptionTextTest, TheSimpleModelComesBack) {
    main.CSGP1.Value = true;
    const std::string text = Text();
    main.CSGP4.Value = true;
    EXPECT_NE(Text(), text);
    Read(text);
    EXPECT_TRUE(main.CSGP1.Value);
    EXPECT_FALSE(main.CSGP4.Value);
    EXPECT_TRUE(main.MnuSGP1.Checked);
    EXPECT_TRUE(main.MnuSGP1.Acts && main.CSGP1.Acts);
    EXPECT_EQ(At(kSGP1), "E1");
    EXPECT_EQ(At(kSGP4), "E0");
}

}  // namespace
}  // namespace glintara::testing
