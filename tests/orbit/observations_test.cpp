#include "orbit/observations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

#include "engine/astro/calendar.h"
#include "orbit/element_sets.h"
#include "orbit/iod_lines.h"
#include "orbit/output.h"
#include "state/recording_services.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

namespace fs = std::filesystem;

constexpr double kDegree = std::numbers::pi / 180;

constexpr const char* kFirst = "25544 98 067A   2701 G 20180120174233508 17 35 0546125-012345 27";
constexpr const char* kSecond = "00005 58 002B   0433 F 20180120180000000 57 35 1200000+450000 18";
constexpr const char* kThird = "12345 80 123AB  6226 t 20180121045901004 25 35 1859001+005959 84 S+045 05  12.345";
constexpr const char* kStays = ".\nThe list stays as it was.";

struct ObservationsTest : ::testing::Test {
    ObservationsTest() {
        observations::Connect(app);
        output::Connect(app);
    }

    using Lines = std::vector<std::string>;

    const Lines& List() const { return form.LIOD.Lines; }

    void Enter(std::initializer_list<const char*> lines) {
        std::string text;
        for (const char* line : lines) text += std::string(line) + "\n";
        ASSERT_TRUE(observations::EnterIODLines(app, text));
    }

    void Select(std::set<int> lines) {
        form.LIOD.Selected = lines;
        form.LIOD.Current = lines.empty() ? kNoLine : *lines.rbegin();
    }

    void AddSatellite(const char* number, const char* designator) {
        SatRecord& satellite = app.Data.Satellite(++app.Data.SatCount);
        satellite = {};
        satellite.SatNumber = number;
        satellite.Designator = designator;
        satellite.OrbitNumber = static_cast<std::int16_t>(app.Data.SatCount);
        observations::RefreshInfo(app);
    }

    /// The four fields of the object, joined.
    std::string Fields() const {
        return form.TSatNumber.Text.Get() + "|" + form.TLaunchYear.Text.Get() + "|" + form.TLaunchNumber.Text.Get() +
               "|" + form.TLaunchSuffix.Text.Get();
    }

    /// Number of the condition that is chosen, from 1; 0 for none, -1 for several.
    int Condition() const {
        int chosen = 0;
        for (std::size_t i = 0; i < form.Option1.size(); ++i)
            if (form.Option1[i].Value) chosen = chosen == 0 ? static_cast<int>(i) + 1 : -1;
        return chosen;
    }

    void SetInstant(const CalendarFields& fields) { app.Data.SetSimInstant(fields, DateToJD(fields)); }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    ObservationControls& form = app.Observations;
    glintara::testing::TemporaryFolder folder;
};

// Controls.

TEST_F(ObservationsTest, TheControlsBearTheirCaptions) {
    EXPECT_EQ(form.FrameObject.Caption.Get(), "Object Info");
    EXPECT_EQ(form.COInfo.Caption.Get(), "Take from Selected Satellite");
    EXPECT_EQ(form.LSatNumber.Caption.Get(), "Object Number:");
    EXPECT_EQ(form.LLaunchYear.Caption.Get(), "Launch Year:");
    EXPECT_EQ(form.LLaunchNumber.Caption.Get(), "Launch N.:");
    EXPECT_EQ(form.LLaunchSuffix.Caption.Get(), "Launch Suffix:");
    EXPECT_EQ(form.FObs1.Caption.Get(), "Conditions");
    EXPECT_EQ(form.LIODCaption.Caption.Get(), "Observations (IOD Format)");
    EXPECT_EQ(form.CApply.Caption.Get(), "Apply");
    EXPECT_EQ(form.CExport.Caption.Get(), "Export");
    EXPECT_EQ(form.CClearAllIOD.Caption.Get(), "Clear All");
    EXPECT_EQ(form.CEnDisPointer.Caption.Get(), "Enable/Disable Sky Pointer");
    const std::vector<std::string> conditions{"Excellent", "Good", "Fair", "Poor", "Bad", "Terrible"};
    for (std::size_t i = 0; i < conditions.size(); ++i) EXPECT_EQ(form.Option1[i].Caption.Get(), conditions[i]);
}

TEST_F(ObservationsTest, BeginsWithTheDefaults) {
    EXPECT_EQ(Fields(), "00000|00|000|");
    EXPECT_EQ(Condition(), 2);
    EXPECT_FALSE(form.COInfo.Enabled);
    EXPECT_TRUE(List().empty());
    EXPECT_FALSE(form.Visible);
}

TEST_F(ObservationsTest, ConditionsAreLookedUpWithoutRegardToCapitals) {
    const std::string letters = "EGFPBT";
    for (int index = 1; index <= 6; ++index) {
        const char letter = letters[static_cast<std::size_t>(index) - 1];
        EXPECT_EQ(observations::ConditionIndex(letter), index);
        EXPECT_EQ(observations::ConditionIndex(static_cast<char>(letter - 'A' + 'a')), index);
    }
    for (const char other : {'X', ' ', '?', '0', '\0', '\xFF'}) EXPECT_EQ(observations::ConditionIndex(other), 6);
}

TEST_F(ObservationsTest, OneConditionIsChosenAtATime) {
    form.Option1[4].Value = true;
    EXPECT_EQ(Condition(), 5);
    form.Option1[0].Value = true;
    EXPECT_EQ(Condition(), 1);
}

TEST_F(ObservationsTest, WithoutAChoiceTheConditionIsTerrible) {
    Enter({kFirst});
    form.Option1[1].Value = false;
    EXPECT_EQ(Condition(), 0);
    form.CApply.Click();
    EXPECT_EQ(form.Point.Condition, 'T');
    EXPECT_EQ(Condition(), 6);
    EXPECT_EQ(List()[0].substr(21, 1), "T");
}

// Object info.

TEST_F(ObservationsTest, TakesTheObjectFromTheWorkingSatelliteAndLocksTheFields) {
    AddSatellite("25544", "98067A  ");
    EXPECT_TRUE(form.COInfo.Enabled);
    EXPECT_EQ(Fields(), "00000|00|000|");
    form.COInfo.Value = true;
    EXPECT_EQ(Fields(), "25544|98|067|A");
    EXPECT_FALSE(form.TSatNumber.Enabled);
    EXPECT_FALSE(form.TLaunchYear.Enabled);
    EXPECT_FALSE(form.TLaunchNumber.Enabled);
    EXPECT_FALSE(form.TLaunchSuffix.Enabled);
    // Another one begins to work.
    AddSatellite("5", "58002ABC");
    EXPECT_EQ(Fields(), "00005|58|002|ABC");
    form.COInfo.Value = false;
    EXPECT_EQ(Fields(), "00000|00|000|");
    EXPECT_TRUE(form.TSatNumber.Enabled);
    EXPECT_TRUE(form.TLaunchSuffix.Enabled);
}

TEST_F(ObservationsTest, ASatelliteWithoutADesignatorLeavesTheLaunchBlank) {
    AddSatellite("T0001", "");
    form.COInfo.Value = true;
    EXPECT_EQ(Fields(), "T0001|||");
    form.CApply.Click();
    EXPECT_EQ(form.Point.ObjectNumber, 270001);
    EXPECT_EQ(form.Point.LaunchNumber, 0);
}

TEST_F(ObservationsTest, WithTheLastSatelliteTheFieldsAreFreeAgain) {
    AddSatellite("25544", "98067A  ");
    form.COInfo.Value = true;
    app.Data.SatCount = 0;
    observations::RefreshInfo(app);
    EXPECT_FALSE(form.COInfo.Enabled);
    EXPECT_TRUE(form.TSatNumber.Enabled);
    EXPECT_EQ(Fields(), "00000|00|000|");
}

TEST_F(ObservationsTest, TheFieldsShowThePointWithItsZeros) {
    Enter({kSecond});
    EXPECT_EQ(Fields(), "00005|58|002|B");
    EXPECT_EQ(Condition(), 3);
}

TEST_F(ObservationsTest, ElementSetsThatComeInLeaveWhatIsBeingTyped) {
    form.TSatNumber.Text = "255";
    form.Option1[3].Value = true;
    AddSatellite("25544", "98067A  ");
    EXPECT_EQ(Fields(), "255|00|000|");
    EXPECT_EQ(Condition(), 4);
    form.COInfo.Value = true;
    form.Option1[4].Value = true;
    AddSatellite("00005", "58002B  ");
    EXPECT_EQ(Fields(), "00005|58|002|B");
    EXPECT_EQ(Condition(), 5);
    EXPECT_EQ(form.Point.Condition, 'G') << "a choice that was not applied is none of the point's";
}

// Apply.

TEST_F(ObservationsTest, ApplyTakesTheFieldsIntoThePointAndTheSelectedLine) {
    Enter({kFirst, kSecond});
    Select({0});
    form.TSatNumber.Text = "20580";
    form.TLaunchYear.Text = "90";
    form.TLaunchNumber.Text = "37";
    form.TLaunchSuffix.Text = "B";
    form.Option1[0].Value = true;
    form.CApply.Click();
    EXPECT_EQ(List(), (Lines{"20580 90 037B   2701 E 20180120174233508 17 35 0546125-012345 27", kSecond}));
    EXPECT_EQ(form.Point.ObjectNumber, 20580);
    EXPECT_EQ(form.Point.LaunchYear, 90);
    EXPECT_EQ(form.Point.LaunchNumber, 37);
    EXPECT_EQ(form.Point.LaunchSuffix, (std::array<char, 3>{'B', ' ', ' '}));
    EXPECT_EQ(form.Point.Condition, 'E');
    EXPECT_EQ(Fields(), "20580|90|037|B");
    EXPECT_EQ(form.LIOD.Selected.Get(), (std::set<int>{0}));
}

TEST_F(ObservationsTest, ApplyKeepsWhatStandsBehindTheColumns) {
    Enter({kThird});
    form.TSatNumber.Text = "20580";
    form.CApply.Click();
    EXPECT_EQ(List()[0], "20580 80 123AB  6226 T 20180121045901004 25 35 1859001+005959 84 S+045 05  12.345");
}

TEST_F(ObservationsTest, WithoutASelectedLineApplyChangesThePointAlone) {
    Enter({kFirst});
    Select({});
    form.TSatNumber.Text = "20580";
    form.CApply.Click();
    EXPECT_EQ(form.Point.ObjectNumber, 20580);
    EXPECT_EQ(List(), (Lines{kFirst}));
}

TEST_F(ObservationsTest, SeveralLinesTakeWhatWasChangedAndKeepTheRest) {
    Enter({kFirst, kSecond, kThird});
    Select({0, 1});
    form.Option1[4].Value = true;
    form.CApply.Click();
    EXPECT_EQ(List()[0], std::string(kFirst).replace(21, 1, "B"));
    EXPECT_EQ(List()[1], std::string(kSecond).replace(21, 1, "B"));
    EXPECT_EQ(List()[2], kThird);
}

TEST_F(ObservationsTest, SeveralLinesTakeTheWholeObjectOfTheSatellite) {
    AddSatellite("25544", "98067A  ");
    Enter({kSecond, kFirst});
    form.COInfo.Value = true;
    Select({0, 1});
    form.CApply.Click();
    EXPECT_EQ(List()[0].substr(0, 16), "25544 98 067A   ");
    EXPECT_EQ(List()[0].substr(16), std::string(kSecond).substr(16));
    EXPECT_EQ(List()[1], kFirst);
}

TEST_F(ObservationsTest, ApplyReadsNumbersAsTheProgramDoesEverywhere) {
    form.TSatNumber.Text = "T0001";
    form.TLaunchYear.Text = "1998";
    form.TLaunchNumber.Text = "67 or so";
    form.TLaunchSuffix.Text = "ABCDE";
    form.CApply.Click();
    EXPECT_EQ(form.Point.ObjectNumber, 270001);
    EXPECT_EQ(Fields(), "T0001|98|067|ABC");
    form.TSatNumber.Text = "";
    form.TLaunchSuffix.Text = "\xC3\x84";
    form.CApply.Click();
    EXPECT_EQ(Fields(), "00000|98|067|");
}

TEST_F(ObservationsTest, ANumberWithoutRoomIsRefused) {
    Enter({kFirst});
    const IODPoint before = form.Point;
    const auto refused = [&](TextBox& field, const char* text, const char* message) {
        const std::string held = field.Text;
        field.Text = text;
        form.CApply.Click();
        ASSERT_FALSE(boxes.messages.empty());
        EXPECT_EQ(boxes.messages.back().text, message);
        EXPECT_EQ(form.Point, before);
        EXPECT_EQ(List(), (Lines{kFirst}));
        field.Text = held;
    };
    refused(form.TSatNumber, "340000", "ERROR: The object number must be 0 to 339999");
    refused(form.TSatNumber, "-5", "ERROR: The object number must be 0 to 339999");
    refused(form.TLaunchYear, "20180", "ERROR: The launch year must be two digits");
    refused(form.TLaunchNumber, "1000", "ERROR: The launch number must be 0 to 999");
    EXPECT_EQ(boxes.messages.size(), 4U);
}

// The list.

TEST_F(ObservationsTest, SelectingALineLoadsIt) {
    Enter({kFirst, kSecond});
    EXPECT_EQ(Fields(), "00005|58|002|B");
    Select({0});
    EXPECT_EQ(Fields(), "25544|98|067|A");
    EXPECT_EQ(Condition(), 2);
    EXPECT_EQ(form.Point.StationCode, 2701);
    EXPECT_EQ(form.Point.Second, 33.508);
}

TEST_F(ObservationsTest, LinesOfAnyLineEndAreTaken) {
    const std::string text = std::string(kFirst) + "\r\n\r\n" + kSecond + "\r   \n" + kThird;
    ASSERT_TRUE(observations::EnterIODLines(app, text));
    std::string third = kThird;
    third[21] = 't';
    EXPECT_EQ(List(), (Lines{kFirst, kSecond, third}));
    EXPECT_EQ(form.LIOD.Selected.Get(), (std::set<int>{0, 1, 2}));
    EXPECT_EQ(form.LIOD.Current.Get(), 2);
    Enter({kFirst});
    EXPECT_EQ(List().size(), 4U);
    EXPECT_EQ(form.LIOD.Selected.Get(), (std::set<int>{3}));
}

TEST_F(ObservationsTest, OneWrongLineRefusesTheTextAndTheListStays) {
    Enter({kFirst});
    const IODPoint before = form.Point;
    const std::string text = std::string(kSecond) + "\r\n\r\nGlintara\r\n" + kThird;
    EXPECT_FALSE(observations::EnterIODLines(app, text));
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(
        boxes.messages[0].text,
        std::string("Line 3 of the text cannot be read as an observation in the IOD format: it has 8 columns, not 64") +
            kStays);
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Warning);
    EXPECT_EQ(List(), (Lines{kFirst}));
    EXPECT_EQ(form.Point, before);
}

TEST_F(ObservationsTest, TextsWithoutObservationsAreRefused) {
    for (const char* text : {"", "\n\n", "   "}) EXPECT_FALSE(observations::EnterIODLines(app, text));
    EXPECT_EQ(boxes.messages.back().text,
              std::string("The text cannot be read as an observation in the IOD format: it has no lines") + kStays);
    EXPECT_FALSE(observations::EnterIODLines(app, "one line"));
    EXPECT_EQ(
        boxes.messages.back().text,
        std::string("The line cannot be read as an observation in the IOD format: it has 8 columns, not 64") + kStays);
    EXPECT_FALSE(observations::EnterIODLines(app, std::string(100000, '\0')));
    EXPECT_TRUE(List().empty());
}

TEST_F(ObservationsTest, ATypedLineIsAddedAndAWrongOneStaysInItsField) {
    form.TIODLine.Text = kFirst;
    form.CAddLine.Click();
    EXPECT_EQ(List(), (Lines{kFirst}));
    EXPECT_EQ(form.TIODLine.Text.Get(), "");
    form.TIODLine.Text = "25544";
    form.CAddLine.Click();
    EXPECT_EQ(List().size(), 1U);
    EXPECT_EQ(form.TIODLine.Text.Get(), "25544");
    EXPECT_EQ(boxes.messages.size(), 1U);
}

TEST_F(ObservationsTest, ALineIsEditedInItsPlace) {
    Enter({kFirst, kSecond, kThird});
    Select({1});
    EXPECT_TRUE(observations::ReplaceIODLine(app, 1, kFirst));
    EXPECT_EQ(List()[1], kFirst);
    EXPECT_EQ(Fields(), "25544|98|067|A");
    EXPECT_FALSE(observations::ReplaceIODLine(app, 1, "wrong"));
    EXPECT_EQ(List()[1], kFirst);
    EXPECT_EQ(boxes.messages.size(), 1U);
    EXPECT_FALSE(observations::ReplaceIODLine(app, 3, kFirst));
    EXPECT_FALSE(observations::ReplaceIODLine(app, -1, kFirst));
}

TEST_F(ObservationsTest, DeletesTheSelectedLinesAfterAQuestion) {
    Enter({kFirst, kSecond, kThird});
    Select({0, 2});
    boxes.answer = false;
    form.CDeleteIOD.Click();
    EXPECT_EQ(List().size(), 3U);
    boxes.answer = true;
    form.CDeleteIOD.Click();
    EXPECT_EQ(List(), (Lines{kSecond}));
    EXPECT_EQ(boxes.questions.back(), "The selected observations will be deleted!\nAre you sure?");
    EXPECT_TRUE(form.LIOD.Selected.Get().empty());
    EXPECT_FALSE(form.CDeleteIOD.Enabled);
}

TEST_F(ObservationsTest, ClearsAllAfterAQuestion) {
    Enter({kFirst, kSecond});
    boxes.answer = false;
    form.CClearAllIOD.Click();
    EXPECT_EQ(List().size(), 2U);
    boxes.answer = true;
    form.CClearAllIOD.Click();
    EXPECT_TRUE(List().empty());
    EXPECT_EQ(boxes.questions.back(), "All the observations of the list will be deleted!\nAre you sure?");
}

TEST_F(ObservationsTest, CommandsWithoutLinesAreGreyed) {
    const auto enabled = [this] {
        return std::vector<bool>{form.CExport.Enabled, form.CClearAllIOD.Enabled, form.CSaveIOD.Enabled,
                                 form.CDeleteIOD.Enabled, form.CCopyIOD.Enabled};
    };
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false, false, false}));
    Enter({kFirst});
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true, true}));
    Select({});
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, false, false}));
}

TEST_F(ObservationsTest, RefreshingAnyNumberOfTimesLeavesTheLines) {
    Enter({kFirst, kSecond, kThird});
    const Lines before = List();
    for (int i = 0; i < 100; ++i) observations::RefreshInfo(app);
    EXPECT_EQ(List(), before);
    EXPECT_FALSE(form.Visible);
}

TEST_F(ObservationsTest, AdmissionOfElementSetsTellsTheWindow) {
    app.Main.TTLE.Text = "nothing";
    CApplyTLEOrbit_click(app);
    EXPECT_NE(std::find(windows.calls.begin(), windows.calls.end(), "RefreshInfo"), windows.calls.end());
}

// Defining a point.

TEST_F(ObservationsTest, DefinesAPointFromInstantPlaceAndAccuracies) {
    app.Data.StationNumber = 2701;
    SetInstant({2028, 11, 13, 4, 33, 36.5});
    // Theta Persei at the equinox of that date and at J2000: Meeus, Astronomical Algorithms, example 21.b.
    const Equatorial ofDate{49.348483 * kDegree, 41.547214 * kDegree};
    const std::string line = observations::DefineIODPoint(app, ofDate, 0.47, 0.5 * kDegree);
    EXPECT_EQ(line.substr(0, 46), "00000 00 000    2701 G 20281113043336500 57 35");
    EXPECT_EQ(line.substr(62), "27");
    EXPECT_NEAR(form.Point.RightAscension / kDegree, 41.054063, 0.00013);  // half of the last digit, 0.001 minutes
    EXPECT_NEAR(form.Point.Declination / kDegree, 49.227750, 0.00006);
    EXPECT_EQ(List(), (Lines{line}));
    EXPECT_EQ(form.LIOD.Selected.Get(), (std::set<int>{0}));
    EXPECT_TRUE(form.Visible);
}

TEST_F(ObservationsTest, APointOfTheYear2000IsNotPrecessed) {
    SetInstant({2000, 1, 1, 12, 0, 0});
    const std::string line =
        observations::DefineIODPoint(app, {-10.5 * kDegree, (6 + 30 / 60.0) * 15 * kDegree}, 0.1, 1 * kDegree);
    EXPECT_EQ(line, "00000 00 000    0000 G 20000101120000000 17 35 0630000-105000 57");
}

TEST_F(ObservationsTest, APointTakesTheObjectOfTheSatelliteOrThatOfThePointBefore) {
    SetInstant({2000, 1, 1, 12, 0, 0});
    AddSatellite("25544", "98067A  ");
    const Equatorial place{0.1, 0.2};
    EXPECT_EQ(observations::DefineIODPoint(app, place, 0.1, 0.01).substr(0, 16), "00000 00 000    ");
    form.COInfo.Value = true;
    EXPECT_EQ(observations::DefineIODPoint(app, place, 0.1, 0.01).substr(0, 16), "25544 98 067A   ");
    form.COInfo.Value = false;
    EXPECT_EQ(observations::DefineIODPoint(app, place, 0.1, 0.01).substr(0, 16), "25544 98 067A   ");
    EXPECT_EQ(List().size(), 3U);
    EXPECT_EQ(List()[0].substr(0, 5), "00000");
}

TEST_F(ObservationsTest, ApplyWritesTheLineThatWasJustDefined) {
    SetInstant({2000, 1, 1, 12, 0, 0});
    observations::DefineIODPoint(app, {0, 0}, 0.1, 0.01);
    form.TSatNumber.Text = "25544";
    form.CApply.Click();
    EXPECT_EQ(List()[0].substr(0, 46), "25544 00 000    0000 G 20000101120000000 17 35");
}

// Out of the window.

TEST_F(ObservationsTest, ExportPrintsAllLinesOnAnEmptyPage) {
    Enter({kFirst, kSecond});
    output::Init(app);
    output::PrintLine(app, "of an earlier export");
    form.CExport.Click();
    EXPECT_TRUE(app.Output.Visible);
    EXPECT_EQ(app.Output.TOutput.Text.Get(), "Output generated by Glintara - v1.5.2\r\nBy Ostelvane\r\n" +
                                                 std::string(kFirst) + "\r\n" + kSecond + "\r\n");
}

TEST_F(ObservationsTest, CopiesTheSelectedLines) {
    Enter({kFirst, kSecond, kThird});
    Select({0, 2});
    EXPECT_EQ(observations::SelectedLinesText(app), std::string(kFirst) + "\n" + kThird + "\n");
    EXPECT_EQ(observations::AllLinesText(app), std::string(kFirst) + "\n" + kSecond + "\n" + kThird + "\n");
}

TEST_F(ObservationsTest, WhatIsSavedIsLoadedAgain) {
    Enter({kFirst, kSecond, kThird});
    const Lines before = List();
    const fs::path file = folder.Path() / "night.iod";
    ASSERT_TRUE(observations::SaveIODFile(app, file));
    form.LIOD.SetLines({}, {});
    ASSERT_TRUE(observations::LoadIODFile(app, file));
    EXPECT_EQ(List(), before);
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(ObservationsTest, FilesThatCannotBeReadOrWrittenAreTold) {
    Enter({kFirst});
    EXPECT_FALSE(observations::LoadIODFile(app, folder.Path() / "none"));
    EXPECT_EQ(boxes.messages.back().text, "Error Loading File");
    EXPECT_FALSE(observations::LoadIODFile(app, folder.Path()));
    EXPECT_FALSE(observations::SaveIODFile(app, folder.Path() / "none" / "night.iod"));
    EXPECT_EQ(boxes.messages.back().text, "Error Saving File");
    std::ofstream(folder.Path() / "large") << std::string(observations::kLargestIODFile + 1, '\n');
    EXPECT_FALSE(observations::LoadIODFile(app, folder.Path() / "large"));
    EXPECT_EQ(boxes.messages.back().text, "Error Loading File");
    EXPECT_EQ(List(), (Lines{kFirst}));
}

}  // namespace
}  // namespace glintara
