#include "orbit/download.h"

#include <sys/stat.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "orbit/download_fixture.h"
#include "orbit/message_writer.h"
#include "support/ordinary_user.h"

namespace glintara::testing {
namespace {

using Texts = std::vector<std::string>;

constexpr double kMinute = 1 / 1440.0;

struct DownloadTest : DownloadFixture {};

TEST_F(DownloadTest, TheButtonsNeedACurrentLine) {
    EXPECT_EQ(form.LSiteTLE.Count(), 26);
    EXPECT_EQ(form.LSiteTLE.Current, kNoLine);
    for (const Button* button : {&form.CDownAdd, &form.CDownUp, &form.CDownOUP}) EXPECT_FALSE(button->Enabled);
    Choose({"GEO"});
    for (const Button* button : {&form.CDownAdd, &form.CDownUp, &form.CDownOUP}) EXPECT_TRUE(button->Enabled);
    Choose({});
    for (const Button* button : {&form.CDownAdd, &form.CDownUp, &form.CDownOUP}) EXPECT_FALSE(button->Enabled);
}

TEST_F(DownloadTest, AClickInTheListClearsWhatWasSaid) {
    form.LProg.Caption = std::string("Error");
    form.LTotal.Caption = std::string("2 of 3 sources");
    form.PB1.Value = 70.0;
    Choose({"GEO"});
    EXPECT_EQ(Progress(), "");
    EXPECT_EQ(form.LTotal.Caption.Get(), "");
    EXPECT_EQ(form.PB1.Value, 0.0);
}

TEST_F(DownloadTest, OneStrategyExcludesTheOther) {
    EXPECT_TRUE(form.OUpdateAlways[0].Value);
    form.OUpdateAlways[1].Value = true;
    EXPECT_FALSE(form.OUpdateAlways[0].Value);
    form.OUpdateAlways[0].Value = true;
    EXPECT_FALSE(form.OUpdateAlways[1].Value);
}

TEST_F(DownloadTest, AddAddsWhatIsThereAlready) {
    FillList();
    Answer(FileAt("geo"), SetOf("FRESH", "00001", "12001") + SetOf("NEW", "00003", "12001"));
    form.COnlySel.Value = true;
    form.OUpdateAlways[1].Value = true;
    Choose({"GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 4) << "neither strategy concerns additions";
    EXPECT_EQ(Progress(), "Added Satellites #2");
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "Added Satellites #2");
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(form.PB1.Value, 100.0);
    EXPECT_EQ(Box(), "");
}

TEST_F(DownloadTest, AddAndUpdateReplacesAndAdds) {
    FillList();
    Answer(FileAt("geo"), SetOf("FRESH", "00001", "12001") + SetOf("NEW", "00003", "12001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(app.Data.SatCount, 3);
    EXPECT_EQ(app.Data.Satellite(1).Name, "FRESH");
    EXPECT_EQ(Progress(), "Added Satellites #1 (1 updated)");
}

TEST_F(DownloadTest, UpdateAloneAddsNothing) {
    FillList();
    Answer(FileAt("geo"), SetOf("FRESH", "00001", "12001") + SetOf("NEW", "00003", "12001"));
    Choose({"GEO"});
    form.CDownOUP.Click();
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(app.Data.Satellite(1).Name, "FRESH");
    EXPECT_EQ(Progress(), "Added Satellites #0 (1 updated)");
}

TEST_F(DownloadTest, OnlyMoreRecentSetsUpdate) {
    FillList();
    Answer(FileAt("geo"), SetOf("OLD", "00001", "09001") + SetOf("FRESH", "00002", "12001"));
    form.OUpdateAlways[1].Value = true;
    Choose({"GEO"});
    form.CDownOUP.Click();
    EXPECT_EQ(app.Data.Satellite(1).Name, "ONE");
    EXPECT_EQ(app.Data.Satellite(2).Name, "FRESH");
    EXPECT_EQ(app.Data.SatCount, 2);
}

// What the user asked for is then no update of that satellite.
TEST_F(DownloadTest, ASetThatIsNotMoreRecentComesInAsASecondSatellite) {
    FillList();
    Answer(FileAt("geo"), SetOf("OLD", "00001", "09001"));
    form.OUpdateAlways[1].Value = true;
    Choose({"GEO"});
    form.CDownUp.Click();
    ASSERT_EQ(app.Data.SatCount, 3);
    EXPECT_EQ(app.Data.Satellite(1).Name, "ONE");
    EXPECT_EQ(app.Data.Satellite(3).Name, "OLD");
    EXPECT_EQ(app.Data.Satellite(3).SatNumber, "00001");
}

TEST_F(DownloadTest, OnlySelectedSatellitesAreUpdated) {
    FillList();
    Answer(FileAt("geo"), SetOf("FRESH 1", "00001", "12001") + SetOf("FRESH 2", "00002", "12001"));
    form.COnlySel.Value = true;
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(app.Data.Satellite(1).Name, "FRESH 1");
    EXPECT_EQ(app.Data.Satellite(2).Name, "TWO");
}

TEST_F(DownloadTest, TheEditorIsToldBeforeTheListChanges) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownAdd.Click();
    ASSERT_FALSE(windows.calls.empty());
    EXPECT_EQ(windows.calls.front(), "ChangeSatelliteSignal");
}

TEST_F(DownloadTest, SourcesComeInOneAfterTheOtherInTheOrderOfTheList) {
    Answer(FileAt("geo"), SetOf("G", "00001"));
    Answer(FileAt("iridium"), SetOf("I", "00002") + SetOf("J", "00003"));
    Answer(kPersonal + "/tle/classfd.tle", SetOf("C", "00004"));
    Choose({"CLASSFD", "GEO", "IRIDIUM"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("iridium"), FileAt("geo"), kPersonal + "/tle/classfd.tle"}));
    EXPECT_EQ(app.Data.SatCount, 4);
    EXPECT_EQ(app.Data.Satellite(4).Name, "C");
    EXPECT_TRUE(form.LSiteTLE.Selected.Get().empty());
    EXPECT_EQ(form.LSiteTLE.Current, 25);
    EXPECT_EQ(Progress(), "Added Satellites #1 (0 updated)");
    EXPECT_EQ(form.LTotal.Caption.Get(), "3 of 3 sources: 4 satellites added, 0 updated");
}

TEST_F(DownloadTest, AFailureStopsTheRestAndKeepsItsSelection) {
    Answer(FileAt("iridium"), SetOf("I", "00002"));
    network.answers[FileAt("gps-ops")] = {.text = "", .failure = "there is no host celestrak.org"};
    Answer(FileAt("geo"), SetOf("G", "00001"));
    Choose({"IRIDIUM", "GPS", "GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(network.asked, (Texts{FileAt("iridium"), FileAt("gps-ops")}))
        << "a network that fails is not asked in another form";
    EXPECT_EQ(form.LSiteTLE.Selected.Get(), (std::set<int>{LineOf("GPS"), LineOf("GEO")}));
    EXPECT_EQ(form.LSiteTLE.Current, LineOf("GPS"));
    EXPECT_EQ(Progress(), "Error");
    EXPECT_EQ(form.LTotal.Caption.Get(), "1 of 3 sources: 1 satellite added");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(Told(), "Download Error\n\nGPS (celestrak.org): there is no host celestrak.org.");
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
    EXPECT_TRUE(form.CDownAdd.Enabled);
    EXPECT_FALSE(form.Running);
}

TEST_F(DownloadTest, WhatOneLeftOutIsToldThoughAnotherFails) {
    MessageFields bare = FieldsOf("B", kStation1, kStation2);
    for (auto& [key, value] : bare)
        if (key == "MEAN_MOTION") value.clear();
    Answer(FileAt("iridium"), TableOf({FieldsOf("A", kStation1, kStation2), bare}));
    network.answers[FileAt("gps-ops")] = {.text = "", .failure = "there is no host celestrak.org"};
    Choose({"IRIDIUM", "GPS"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
    ASSERT_EQ(boxes.messages.size(), 2U);
    EXPECT_TRUE(boxes.messages[0].text.starts_with("Download Error\n\nGPS"));
    EXPECT_TRUE(Told().starts_with("Not all that came could be used.\n\nIRIDIUM: 1 of 2 records left out")) << Told();
}

TEST_F(DownloadTest, NothingSelectedIsTold) {
    Choose({"GEO"});
    form.LSiteTLE.Selected = std::set<int>();
    form.CDownAdd.Click();
    EXPECT_EQ(Progress(), "No source is selected");
    EXPECT_TRUE(network.asked.empty());
}

TEST_F(DownloadTest, EachFailureLeavesListAndBoxAsTheyWere) {
    FillList();
    const std::string list = List();
    app.Main.TTLE.Text = std::string("what the user typed");
    const std::vector<PlayedAnswer> failures = {
        {.text = "", .status = 404},
        {.text = SetOf("X", "00001"), .status = 500},
        {.text = SetOf("X", "00001"), .status = 403},
        {.text = SetOf("X", "00001"), .failure = "the connection broke off before the end"},
        {.text = ""},
        {.text = "<html><body>Hello</body></html>"},
        {.text = "No GP data found"},
        {.text = std::string("\0\1\2\xFF", 4)},
        {.text = "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION\n"},
        {.text = kStation1},
        {.text = std::string((std::size_t{1} << 20) + 1, ' ')},
    };
    for (const PlayedAnswer& failure : failures) {
        for (const std::string& address : {FileAt("geo"), QueryFor("geo", "tle"), QueryFor("geo", "csv")})
            network.answers[address] = failure;
        boxes.messages.clear();
        windows.calls.clear();
        Choose({"GEO"});
        form.CDownUp.Click();
        const std::string about = failure.text.substr(0, 30) + " / " + std::to_string(failure.status);
        EXPECT_EQ(Progress(), "Error") << about;
        ASSERT_EQ(boxes.messages.size(), 1U) << about;
        EXPECT_EQ(Told().substr(0, 41), "Download Error\n\nGEO (celestrak.org): the ") << Told();
        EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
        EXPECT_EQ(List(), list) << about;
        EXPECT_EQ(Box(), "what the user typed") << about;
        EXPECT_TRUE(windows.calls.empty()) << about;
        EXPECT_EQ(form.LSiteTLE.Selected.Get(), (std::set<int>{LineOf("GEO")})) << about;
        EXPECT_EQ(network.open, 0) << about;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "downloads")) << "nothing of this is kept";
}

TEST_F(DownloadTest, AnAnswerOverTheLimitIsRefused) {
    std::string text = SetOf("A", "00001");
    text.resize(std::size_t{1} << 20, '\n');
    Answer(FileAt("geo"), text);
    Choose({"GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
    Answer(FileAt("gps-ops"), text + "\n");
    Choose({"GPS"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Told(), "Download Error\n\nGPS (celestrak.org): the answer is larger than 1 MiB.");
}

// The box is overwritten once the text is there, whatever it held.
TEST_F(DownloadTest, ADownloadTakesTheBox) {
    app.Main.TTLE.Text = std::string("what the user typed");
    Answer(FileAt("geo"), SetOf("A", "00001") + "1 is no element set\n2\n");
    Choose({"GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(Box(), "1 is no element set\r\n2\r\n") << "what cannot be used stays there";
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Progress(), "ERROR: Invalid TLE Text (1 satellite added before that)");
    EXPECT_TRUE(form.LSiteTLE.Selected.Get().empty()) << "the download itself has succeeded";
}

TEST_F(DownloadTest, WhereTheOldFileIsGoneTheQueryFollows) {
    Answer(QueryFor("stations", "tle"), SetOf("ISS (ZARYA)", "25544"));
    Choose({"ISS"});
    form.CDownAdd.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("stations"), QueryFor("stations", "tle")}));
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(DownloadTest, WhereTheOldFileIsAPageOfWordsTheQueryFollows) {
    Answer(FileAt("stations"), "<!DOCTYPE html><html>This page has moved</html>");
    Answer(QueryFor("stations", "tle"), SetOf("ISS (ZARYA)", "25544"));
    Choose({"ISS"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
}

TEST_F(DownloadTest, WhereTwoLinesAreWithdrawnTheTableFollows) {
    network.answers[QueryFor("stations", "tle")] = {.text = "ContentNotFound", .status = 404};
    Answer(QueryFor("stations", "csv"),
           "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,"
           "MEAN_ANOMALY,EPHEMERIS_TYPE,CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,REV_AT_EPOCH,BSTAR,"
           "MEAN_MOTION_DOT,MEAN_MOTION_DDOT\n"
           "A,2026-001A,2026-11-20T12:25:40.104192,15.7,0.0006703,51.6,247.4,130.5,325.0,0,U,100001,292,5635,0,0,0\n"
           "B,2026-001B,2026-11-20T12:25:40.104192,15.7,0.0006703,51.6,247.4,130.5,325.0,0,U,340000,292,5635,0,0,0\n");
    Choose({"ISS"});
    form.CDownAdd.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("stations"), QueryFor("stations", "tle"), QueryFor("stations", "csv")}));
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(app.Data.Satellite(1).SatNumber, "A0001");
    EXPECT_EQ(Progress(), "Added Satellites #1");
    ASSERT_EQ(boxes.messages.size(), 1U) << "what has no two lines is told";
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Warning);
    EXPECT_NE(Told().find("ISS: 1 of 2 records left out"), std::string::npos) << Told();
}

TEST_F(DownloadTest, AGroupThatHasVanishedIsAskedForTwiceAndNoMore) {
    Answer(QueryFor("raduga", "tle"), "Invalid query: \"GROUP=raduga\"");
    Choose({"RADUGA"});
    form.CDownAdd.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("raduga"), QueryFor("raduga", "tle")}));
    EXPECT_EQ(Progress(), "Error");
    EXPECT_NE(Told().find("Invalid query"), std::string::npos) << Told();
}

TEST_F(DownloadTest, AServerThatWantsToBeLeftInPeaceIs) {
    network.answers[FileAt("geo")] = {.text = "slow down", .status = 429};
    Choose({"GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("geo")}));
    EXPECT_EQ(Progress(), "Error");
}

TEST_F(DownloadTest, TheLastSourceHasNoQuery) {
    Choose({"CLASSFD"});
    form.CDownAdd.Click();
    EXPECT_EQ(network.asked, (Texts{kPersonal + "/tle/classfd.tle"}));
    EXPECT_EQ(Told(), "Download Error\n\nCLASSFD (mmccants.org): the server has no such file (404).");
}

TEST_F(DownloadTest, TheBarGoesUpByOneAReadAndFallsBackFromItsEnd) {
    std::string text = SetOf("A", "00001");
    text.resize(150 * kReadBytes, '\n');
    Answer(FileAt("geo"), text);
    std::vector<double> bars;
    Texts said;
    form.PB1.Watch([&] { bars.push_back(form.PB1.Value); });
    form.LProg.Caption.SetWatcher([&] { said.push_back(Progress()); });
    Choose({"GEO"});
    bars.clear();
    said.clear();
    form.CDownAdd.Click();
    EXPECT_EQ(said, (Texts{"Connecting...", "Downloading...", "Done", "Added Satellites #1"}));
    // 1 to begin with, 100 after 99 reads, 70 after the next; the last of 151 finds the end.
    ASSERT_EQ(bars.size(), 153U);
    for (int read = 0; read < 100; ++read) EXPECT_EQ(bars[static_cast<std::size_t>(read)], read + 1);
    EXPECT_EQ(bars[100], 70);
    EXPECT_EQ(bars[130], 100);
    EXPECT_EQ(bars[131], 70);
    EXPECT_EQ(bars.back(), 100);
}

TEST_F(DownloadTest, EventsAreServedAtEachReadAndSleepUntilThereIsMore) {
    std::string text = SetOf("A", "00001");
    text.resize(3 * kReadBytes, '\n');
    network.answers[FileAt("geo")] = {.text = text, .waits = 5};
    Choose({"GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(events.waited, 4 * 5);
    EXPECT_GE(events.served, 3);
    EXPECT_EQ(app.Data.SatCount, 1);
}

TEST_F(DownloadTest, ASecondClickIsRefusedWhileADownloadRuns) {
    network.answers[FileAt("geo")] = {.text = SetOf("A", "00001"), .waits = 1};
    Choose({"GEO"});
    int looked = 0;
    events.hook = [&] {
        ++looked;
        EXPECT_TRUE(form.Running);
        for (Button* button : {&form.CDownAdd, &form.CDownUp, &form.CDownOUP}) {
            EXPECT_FALSE(button->Enabled);
            button->Click();
        }
        for (const OptionButton& option : form.OUpdateAlways) EXPECT_FALSE(option.Enabled);
        EXPECT_FALSE(form.COnlySel.Enabled);
        downloads.Run(TLEMode::Add);
        downloads.UpdateButtons();
        EXPECT_NE(Progress(), "");
        EXPECT_EQ(app.Run.LongLoops.Get(), 1);
    };
    form.CDownAdd.Click();
    EXPECT_GT(looked, 0);
    EXPECT_EQ(network.asked.size(), 1U);
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(app.Run.LongLoops.Get(), 0);
    EXPECT_FALSE(form.Running);
    EXPECT_TRUE(form.COnlySel.Enabled);
}

TEST_F(DownloadTest, ClosingTheWindowEndsItWithoutAWord) {
    network.answers[FileAt("geo")] = {.text = SetOf("A", "00001"), .waits = 1};
    Answer(FileAt("gps-ops"), SetOf("B", "00002"));
    Choose({"GPS", "GEO"});
    events.hook = [&] {
        if (network.asked.size() == 2) downloads.Form_Unload();
    };
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1) << "what was there already stays";
    EXPECT_EQ(Progress(), "Aborted");
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(network.open, 0);
    EXPECT_EQ(form.LSiteTLE.Selected.Get(), (std::set<int>{LineOf("GEO")}));
    EXPECT_FALSE(form.Running);
    events.hook = {};
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 2) << "the next download is another";
}

TEST_F(DownloadTest, AnEndBeforeTheFirstByteAsksNobody) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    events.hook = [&] { downloads.Abort(); };
    form.CDownAdd.Click();
    EXPECT_TRUE(network.asked.empty());
    EXPECT_EQ(app.Data.SatCount, 0);
}

TEST_F(DownloadTest, AnEndBeforeTheFirstByteTakesNoKeptTextEither) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownAdd.Click();
    ASSERT_EQ(app.Data.SatCount, 1);
    Choose({"GEO"});
    events.hook = [&] { downloads.Abort(); };
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Progress(), "Aborted");
    EXPECT_EQ(form.LSiteTLE.Selected.Get(), (std::set<int>{LineOf("GEO")}));
}

TEST_F(DownloadTest, TheEndOfTheProgramEndsIt) {
    network.answers[FileAt("geo")] = {.text = SetOf("A", "00001"), .waits = 3};
    Choose({"GEO"});
    events.hook = [&] { app.Run.Closing = true; };
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, 0);
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(app.Run.LongLoops.Get(), 0);
}

TEST_F(DownloadTest, AListThatIsEmptiedMeanwhileDoesNoHarm) {
    FillList();
    network.answers[FileAt("geo")] = {.text = SetOf("FRESH", "00001", "12001"), .waits = 1};
    Choose({"GEO"});
    events.hook = [&] { app.Data.SatCount = 0; };
    form.CDownUp.Click();
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(app.Data.Satellite(1).Name, "FRESH");
}

TEST_F(DownloadTest, ASourceThatIsSelectedNoMoreIsLeftOut) {
    network.answers[FileAt("gps-ops")] = {.text = SetOf("A", "00001"), .waits = 1};
    Answer(FileAt("geo"), SetOf("B", "00002"));
    Choose({"GPS", "GEO"});
    bool once = true;
    events.hook = [&] {
        if (once) downloads.Form_Load();
        once = false;
    };
    form.CDownAdd.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("gps-ops")}));
    EXPECT_EQ(app.Data.SatCount, 1);
}

TEST_F(DownloadTest, ATextIsUsedAgainForTwoHoursWithoutAskingAnybody) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(Progress(), "Added Satellites #1 (0 updated)");
    network.asked.clear();
    now += 35.5 * kMinute;
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_TRUE(network.asked.empty());
    EXPECT_EQ(Progress(), "Added Satellites #0 (1 updated); kept text, fetched 35 minutes ago");
    EXPECT_TRUE(form.LSiteTLE.Selected.Get().empty());
    now += 85 * kMinute;
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("geo")}));
    EXPECT_EQ(Progress(), "Added Satellites #0 (1 updated)");
}

// The catalogue counts its two hours by its own clock, and its data may be older still.
TEST_F(DownloadTest, WhereTheServerHasNoneNewerTheKeptTextServes) {
    const PlayedAnswer refusal{.text = "GP data has not updated since your last successful download of GROUP=geo",
                               .status = 403};
    Answer(QueryFor("geo", "tle"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    network.asked.clear();
    network.answers[QueryFor("geo", "tle")] = refusal;
    Answer(QueryFor("geo", "csv"), SetOf("TABLE", "00001"));
    now += 125.5 * kMinute;
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("geo"), QueryFor("geo", "tle")}));
    EXPECT_EQ(
        Progress(),
        "Added Satellites #0 (1 updated); kept text, fetched 2 hours 5 minutes ago, and the server has none newer");
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(app.Data.Satellite(1).Name, "A");
    now += 1;
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(app.Data.Satellite(1).Name, "TABLE") << "a text of yesterday is not what the server means";
    EXPECT_EQ(Progress(), "Added Satellites #0 (1 updated)");
}

TEST_F(DownloadTest, ARefusalWithoutAKeptTextIsToldInTheWordsOfTheServer) {
    for (const char* format : {"tle", "csv"})
        network.answers[QueryFor("geo", format)] = {.text = "GP data has not updated since 12:00", .status = 403};
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(Told(),
              "Download Error\n\nGEO (celestrak.org): the server refuses to give it (403): it says \"GP data has "
              "not updated since 12:00\".");
}

TEST_F(DownloadTest, ATextThatCameByTheQueryIsUsedAgainToo) {
    Answer(QueryFor("geo", "tle"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    network.asked.clear();
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_TRUE(network.asked.empty()) << "not even the file that is gone is asked for";
    EXPECT_NE(Progress().find("kept text, fetched less than a minute ago"), std::string::npos) << Progress();
}

TEST_F(DownloadTest, AFileThatIsGoneIsAskedForAgain) {
    Choose({"GEO"});
    form.CDownUp.Click();
    network.asked.clear();
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked, (Texts{FileAt("geo")}));
    EXPECT_EQ(app.Data.SatCount, 1);
}

TEST_F(DownloadTest, AClockThatWasSetBackFetchesAnew) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    now -= 1;
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked.size(), 2U);
}

TEST_F(DownloadTest, AKeptFileThatIsDamagedIsFetchedAnew) {
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    const auto file = std::filesystem::directory_iterator(folder.Path() / "downloads")->path();
    std::filesystem::resize_file(file, 100);
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked.size(), 2U);
    EXPECT_EQ(Progress(), "Added Satellites #0 (1 updated)");
}

TEST_F(DownloadTest, AFolderThatCannotBeWrittenCostsTheDownloadNothing) {
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
    {
        const OrdinaryUser user;
        Answer(FileAt("geo"), SetOf("A", "00001"));
        Choose({"GEO"});
        form.CDownUp.Click();
        EXPECT_EQ(app.Data.SatCount, 1);
        EXPECT_TRUE(boxes.messages.empty());
    }
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
}

TEST_F(DownloadTest, AMessageThatBreaksOffIsUsedAsFarAsItGoesAndNotKept) {
    const std::string record =
        R"({"OBJECT_NAME":"A","OBJECT_ID":"1998-067A","EPOCH":"2026-11-20T12:25:40.104192","MEAN_MOTION":15.7,)"
        R"("ECCENTRICITY":0.0006703,"INCLINATION":51.6,"RA_OF_ASC_NODE":247.4,"ARG_OF_PERICENTER":130.5,)"
        R"("MEAN_ANOMALY":325.0,"BSTAR":0.0001,"NORAD_CAT_ID":25544})";
    Answer(FileAt("geo"), "[" + record + "," + record.substr(0, 60));
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(boxes.messages.size(), 1U);
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(network.asked.size(), 2U);
}

TEST_F(DownloadTest, AnEmptyAddressGivesAnEmptyText) {
    EXPECT_EQ(downloads.DownloadUrl("", "X"), "");
    EXPECT_TRUE(network.asked.empty());
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(DownloadTest, NamesInOtherLettersArriveAsTheyWereSent) {
    Answer(FileAt("geo"), SetOf("\xD0\xA1\xD0\xBF\xD1\x83\xD1\x82\xD0\xBD\xD0\xB8\xD0\xBA", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(app.Data.Satellite(1).Name, "\xD0\xA1\xD0\xBF\xD1\x83\xD1\x82\xD0\xBD\xD0\xB8\xD0\xBA");
}

TEST_F(DownloadTest, AFullListIsTold) {
    app.Data.SatCount = kSatCapacity;
    Answer(FileAt("geo"), SetOf("A", "00001"));
    Choose({"GEO"});
    form.CDownUp.Click();
    EXPECT_EQ(Progress(), "ERROR: Already too many satellites");
    EXPECT_NE(Box(), "") << "the sets wait there";
}

TEST_F(DownloadTest, WhatAFullListHasNoRoomForWaitsInTheBox) {
    app.Data.SatCount = kSatCapacity - 2;
    const std::vector<MessageFields> records(5, FieldsOf("A", kStation1, kStation2));
    Answer(FileAt("geo"), TableOf(records));
    Choose({"GEO"});
    form.CDownAdd.Click();
    EXPECT_EQ(app.Data.SatCount, kSatCapacity);
    EXPECT_EQ(Progress(), "ERROR: Already too many satellites (2 satellites added before that)");
    EXPECT_EQ(ReadElementText(Box()).sets, 3);
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(DownloadTest, EveryFormGivesTheSameSatellite) {
    const MessageFields station = FieldsOf("ISS", kStation1, kStation2);
    for (const std::string& text :
         {TableOf({station}), JsonOf({station}, false), XmlOf({station}), NotationOf({station})}) {
        app.Data.SatCount = 0;
        Answer(FileAt("geo"), text);
        Choose({"GEO"});
        form.CDownAdd.Click();
        EXPECT_EQ(List(), "ISS|" + kStation1 + "|" + kStation2 + "\n") << text;
        EXPECT_EQ(app.Data.Satellite(1).TitleLine, "ISS");
        EXPECT_TRUE(boxes.messages.empty());
        now += 1;
    }
}

TEST_F(DownloadTest, ClosingAsksForAPicture) {
    downloads.Form_Unload();
    EXPECT_EQ(windows.calls, (Texts{"UpdateGraphicsLevel2"}));
}

TEST_F(DownloadTest, OpeningForgetsWhatWasSelected) {
    Choose({"GEO", "GPS"});
    downloads.Form_Load();
    EXPECT_EQ(form.LSiteTLE.Current, kNoLine);
    EXPECT_TRUE(form.LSiteTLE.Selected.Get().empty());
    EXPECT_FALSE(form.CDownUp.Enabled);
}

}  // namespace
}  // namespace glintara::testing
