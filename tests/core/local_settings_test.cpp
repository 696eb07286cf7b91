#include "core/local_settings.h"

#include <gtest/gtest.h>

#include <fstream>

#include "core/colors.h"
#include "core/program_fixture.h"
#include "core/twilight.h"
#include "orbit/location.h"

namespace glintara {
namespace {

using testing::kDegree;

struct LocalSettingsTest : testing::ProgramTest {
    LocalSettingsTest() { RunAtOnce(); }

    LocalSettingsControls& form = app.Settings.Local;
    CommonData& data = app.Data;
    MainControls& main = app.Main;

    void OpenForm() { local_settings::Open(app, program.Time); }
};

TEST_F(LocalSettingsTest, OpensWithTheValuesInPlainText) {
    SetLocation(data, {45.07 * kDegToRad, -70.6 * kDegToRad, 240.5});
    SetStationCode(data, "2701");
    OpenForm();
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(form.TLAT.Text.Get(), "45.07");
    EXPECT_EQ(form.TLON.Text.Get(), "-70.6");
    EXPECT_EQ(form.TALT.Text.Get(), "240.5");
    EXPECT_EQ(form.TUTC.Text.Get(), "0");
    EXPECT_EQ(form.TStationCode.Text.Get(), "2701");
    EXPECT_EQ(form.LPlace.Caption.Get(), "45°04'12.0\" N   70°36'00.0\" W   240.5 m");
}

TEST_F(LocalSettingsTest, OkTakesAllAndCloses) {
    OpenForm();
    form.TLAT.Text = std::string("48 12 30 N");
    form.TLON.Text = std::string("16,3738");
    form.TALT.Text = std::string("171");
    form.TUTC.Text = std::string("2");
    form.TStationCode.Text = std::string("0042");
    pictures.clear();
    form.COk.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_NEAR(data.Site.SiteLat, (48 + 12.5 / 60) * kDegree, 1e-12);
    EXPECT_NEAR(data.Site.SiteLon, 16.3738 * kDegree, 1e-12);
    EXPECT_EQ(data.Site.SiteAlt, 171);
    // What follows from the place: the geocentric latitude is 0.19 degrees less here.
    EXPECT_NEAR(data.Site.SiteGeoLat, (48.2083 - 0.1915) * kDegree, 1e-4);
    EXPECT_NE(main.LJD.Caption.Get().find("LAT: 048°12'30\" LON: 016°22'25\""), std::string::npos)
        << main.LJD.Caption.Get();
    EXPECT_EQ(data.UTCOffsetHours, 2);
    EXPECT_EQ(data.StationCode, "42") << "leading zeros are lost";
    EXPECT_EQ(data.StationNumber, 42);
    EXPECT_EQ(keptCode, "42") << "for the next start";
    clock.Advance(20);
    EXPECT_EQ(pictures.size(), 1U);
}

TEST_F(LocalSettingsTest, CancelChangesNothing) {
    SetLocation(data, {45.07 * kDegree, 7.69 * kDegree, 240});
    const ObserverSite before = data.Site;
    OpenForm();
    form.TLAT.Text = std::string("10");
    form.TUTC.Text = std::string("5");
    form.TStationCode.Text = std::string("7");
    form.CCancel.Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(data.Site.SiteLat, before.SiteLat);
    EXPECT_EQ(data.UTCOffsetHours, 0);
    EXPECT_EQ(data.StationCode, "0000");
    OpenForm();
    EXPECT_EQ(form.TLAT.Text.Get(), "45.07") << "what was typed is gone";
    EXPECT_EQ(form.TUTC.Text.Get(), "0");
}

TEST_F(LocalSettingsTest, TimeZonesFromMinusToPlusTwentyFourPass) {
    const std::pair<const char*, int> cases[] = {{"24", 24},     {"-24", -24}, {"5.9", 5}, {"-5.9", -5}, {"24.9", 24},
                                                 {"-24.9", -24}, {"abc", 0},   {"", 0},    {"3,5", 3},   {"1e999", 0}};
    for (const auto& [text, hours] : cases) {
        OpenForm();
        form.TUTC.Text = std::string(text);
        form.COk.Click();
        EXPECT_TRUE(boxes.messages.empty()) << text;
        EXPECT_EQ(data.UTCOffsetHours, hours) << text;
        EXPECT_FALSE(form.Visible) << text;
    }
}

TEST_F(LocalSettingsTest, OthersAreRefusedAndNothingIsTaken) {
    for (const char* text : {"25", "-25", "40000", "-70000", "1e300", "65536"}) {
        OpenForm();
        form.TLAT.Text = std::string("10");
        form.TStationCode.Text = std::string("7");
        form.TUTC.Text = std::string(text);
        boxes.messages.clear();
        form.COk.Click();
        ASSERT_EQ(boxes.messages.size(), 1U) << text;
        EXPECT_EQ(boxes.messages[0].text, "Invalid Time Zone");
        EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
        EXPECT_TRUE(form.Visible) << "to be mended";
        EXPECT_EQ(form.TUTC.Text.Get(), text);
        EXPECT_EQ(data.Site.SiteLat, 0);
        EXPECT_EQ(data.UTCOffsetHours, 0);
        EXPECT_EQ(data.StationCode, "0000");
        form.CCancel.Click();
    }
}

TEST_F(LocalSettingsTest, JunkReadsAsNoughtAndIsShownBefore) {
    SetLocation(data, {45.07 * kDegree, 7.69 * kDegree, 240});
    OpenForm();
    for (TextBox* box : {&form.TLAT, &form.TLON, &form.TALT, &form.TStationCode}) box->Text = std::string("junk");
    EXPECT_EQ(form.LPlace.Caption.Get(), "0°00'00.0\" N (?)   0°00'00.0\" E (?)   0 m (?)");
    form.COk.Click();
    EXPECT_EQ(data.Site.SiteLat, 0);
    EXPECT_EQ(data.Site.SiteLon, 0);
    EXPECT_EQ(data.Site.SiteAlt, 0);
    EXPECT_EQ(data.StationCode, "0");
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(LocalSettingsTest, OddNumbersLeaveAStateThatCanBeUsed) {
    for (const char* text : {"1e308", "-1e308", "1e-308", "123456789012345678901234567890", "95", "-1000"}) {
        OpenForm();
        for (TextBox* box : {&form.TLAT, &form.TLON, &form.TStationCode}) box->Text = std::string(text);
        form.COk.Click();
        EXPECT_TRUE(std::isfinite(data.Site.SiteGeoLat)) << text;
        EXPECT_GE(data.StationNumber, 0) << text;
    }
}

TEST_F(LocalSettingsTest, WhatIsNotTypedKeepsItsLastBit) {
    const Geodetic place{1.0 / 3, 2.0 / 7, 100.0 / 3};
    SetLocation(data, place);
    OpenForm();
    form.COk.Click();
    EXPECT_EQ(data.Site.SiteLat, place.lat);
    EXPECT_EQ(data.Site.SiteLon, place.lon);
    EXPECT_EQ(data.Site.SiteAlt, place.height);
}

TEST_F(LocalSettingsTest, AWindowThatIsOpenKeepsWhatIsTyped) {
    OpenForm();
    form.TLAT.Text = std::string("12");
    OpenForm();
    EXPECT_EQ(form.TLAT.Text.Get(), "12");
}

// Else an OK would bring the old place back.
TEST_F(LocalSettingsTest, AWorkspaceThatIsLoadedMeanwhileFillsTheBoxes) {
    OpenForm();
    SetLocation(data, {45.07 * kDegree, 7.69 * kDegree, 240});
    data.SetTwilightAngle(-6);
    data.RealTimeStep = 90;
    data.SoilColor = kSoilPalette[0].color;
    twilight::Open(app);
    app.Settings.RealTime.Visible = true;
    app.Settings.Twilight.TTwilight.Text = std::string("3");
    signals.RefreshSettings();
    EXPECT_EQ(form.TLAT.Text.Get(), "45.07");
    EXPECT_EQ(app.Settings.Twilight.TTwilight.Text.Get(), "-6");
    EXPECT_EQ(app.Settings.RealTime.STime.Value, 60);
    EXPECT_EQ(app.Settings.Colors.LSoilColor.Current, 0);
    form.COk.Click();
    EXPECT_NEAR(data.Site.SiteLat, 45.07 * kDegree, 1e-15);
}

TEST_F(LocalSettingsTest, ATypedPlaceStaysThoughTheSiteHasFloated) {
    main.MnuFloatingSite.Checked = true;
    OpenForm();
    form.TStationCode.Text = std::string("12");
    form.COk.Click();
    EXPECT_TRUE(main.MnuFloatingSite.Checked) << "no place was typed";
    OpenForm();
    form.TLAT.Text = std::string("12");
    form.COk.Click();
    EXPECT_FALSE(main.MnuFloatingSite.Checked);
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Floating Site is off: your place is the one that you typed.");
}

TEST_F(LocalSettingsTest, TheTimeZoneFillsInItsPlaceAsAGuess) {
    TimeZoneSources sources;
    sources.variable = "Europe/Rome";
    sources.database = folder.Path();
    std::ofstream(folder.Path() / "zone1970.tab") << "IT\t+4154-01229\tEurope/Rome\n";
    OpenForm();
    form.TALT.Text = std::string("77");
    local_settings::CFromTimeZone_Click(app, sources);
    EXPECT_EQ(form.TLAT.Text.Get(), "41.9");
    EXPECT_EQ(form.TLON.Text.Get(), "-12.4833");
    EXPECT_EQ(form.TALT.Text.Get(), "77") << "the table has no heights";
    EXPECT_EQ(form.LTimeZone.Caption.Get().find("Rome"), 0U);
    EXPECT_EQ(data.Site.SiteLat, 0) << "not before OK";

    sources.variable = "Etc/UTC";
    local_settings::CFromTimeZone_Click(app, sources);
    EXPECT_EQ(form.TLAT.Text.Get(), "41.9");
    EXPECT_EQ(form.LTimeZone.Caption.Get(), "The time zone of this computer, Etc/UTC, tells no place.");
}

TEST(StationCode, GoesThroughANumber) {
    CommonData data;
    const std::pair<const char*, const char*> cases[] = {{"0042", "42"},
                                                         {"2701", "2701"},
                                                         {"7.9", "7"},
                                                         {"-5", "0"},
                                                         {"abc", "0"},
                                                         {" 12 ", "12"},
                                                         {"99999999999", "2147483647"}};
    for (const auto& [text, code] : cases) {
        SetStationCode(data, text);
        EXPECT_EQ(data.StationCode, code);
        EXPECT_EQ(std::to_string(data.StationNumber), code);
    }
}

/// A computer whose zone is an hour ahead of UTC in winter, two from April to October.
struct ComputerZoneTest : LocalSettingsTest {
    ComputerZoneTest() {
        clock.zoneAt = [](double jd) {
            const double month = JDToDate(jd).month;
            return month >= 4 && month <= 10 ? 120 : 60;
        };
        program.Time.TimeSyncronize();
    }

    std::string Shown() const { return app.Main.LDateTime.Caption; }
};

TEST_F(ComputerZoneTest, LocalTimeIsTheComputersUntilOneIsSet) {
    main.CLocalTime.Value = true;
    EXPECT_EQ(Shown(), "DATE 20/01/2018 18:42:09.3 UTC+1");
    EXPECT_EQ(data.UTCOffsetHours, 1);
    data.TimeOffset.MonthOffset = 6;
    program.Time.TimeSyncronize();
    EXPECT_EQ(Shown(), "DATE 20/07/2018 19:42:09.3 UTC+2 (+)") << "summer time of the displayed date";

    OpenForm();
    EXPECT_EQ(form.TUTC.Text.Get(), "2");
    EXPECT_TRUE(form.CComputerZone.Value);
    EXPECT_EQ(form.CComputerZone.Caption.Get(), "As this computer: UTC+2");
    form.TUTC.Text = std::string("-4");
    EXPECT_FALSE(form.CComputerZone.Value) << "typing is choosing";
    form.COk.Click();
    EXPECT_EQ(Shown(), "DATE 20/07/2018 13:42:09.3 UTC-4 (+)");
    data.TimeOffset.MonthOffset = 0;
    program.Time.TimeSyncronize();
    EXPECT_EQ(Shown(), "DATE 20/01/2018 13:42:09.3 UTC-4") << "the user's stays";

    OpenForm();
    EXPECT_FALSE(form.CComputerZone.Value);
    form.CComputerZone.Value = true;
    EXPECT_EQ(form.TUTC.Text.Get(), "1");
    form.COk.Click();
    EXPECT_EQ(Shown(), "DATE 20/01/2018 18:42:09.3 UTC+1");
}

TEST_F(ComputerZoneTest, AnOkThatTouchesOnlyThePlaceSetsNone) {
    OpenForm();
    form.TLAT.Text = std::string("45");
    form.COk.Click();
    EXPECT_FALSE(app.Run.Zone.chosen);
    data.TimeOffset.MonthOffset = 6;
    program.Time.TimeSyncronize();
    EXPECT_EQ(data.UTCOffsetHours, 2);
}

TEST_F(ComputerZoneTest, ASetNoughtIsNought) {
    OpenForm();
    form.TUTC.Text = std::string("0");
    form.COk.Click();
    main.CLocalTime.Value = true;
    EXPECT_EQ(Shown(), "DATE 20/01/2018 17:42:09.3 UTC") << "no number after UTC";
}

TEST_F(ComputerZoneTest, HalfHoursCount) {
    clock.zoneAt = [](double) { return 330; };
    main.CLocalTime.Value = true;
    EXPECT_EQ(Shown(), "DATE 20/01/2018 23:12:09.3 UTC+5:30");
    EXPECT_EQ(data.UTCOffsetHours, 5);
    OpenForm();
    EXPECT_EQ(form.CComputerZone.Caption.Get(), "As this computer: UTC+5:30");
    EXPECT_NE(form.CComputerZone.ToolTip.Get().find("The 30 minutes count"), std::string::npos);
    form.CCancel.Click();
    clock.zoneAt = [](double) { return -210; };
    program.Time.TimeSyncronize();
    EXPECT_EQ(Shown(), "DATE 20/01/2018 14:12:09.3 UTC-3:30");
    EXPECT_EQ(data.UTCOffsetHours, -3);
}

// A workspace brings its offset and its instant; the clock may then run on in another season.
TEST_F(ComputerZoneTest, AnOffsetFromAWorkspaceIsTheComputersWhenItWasWhenItWasSaved) {
    data.SetSimInstant({2017, 7, 1, 12, 0, 0}, 0);
    data.UTCOffsetHours = 2;
    program.Time.TimeSyncronize();
    EXPECT_EQ(data.UTCOffsetHours, 1) << "saved in summer, loaded in winter";
    EXPECT_FALSE(app.Run.Zone.chosen);

    data.SetSimInstant({2017, 7, 1, 12, 0, 0}, 0);
    data.UTCOffsetHours = 9;
    program.Time.TimeSyncronize();
    EXPECT_EQ(data.UTCOffsetHours, 9) << "somebody's choice";
    EXPECT_TRUE(app.Run.Zone.chosen);
}

}  // namespace
}  // namespace glintara
