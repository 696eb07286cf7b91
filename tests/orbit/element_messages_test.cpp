// Orbit Mean-Elements Messages on their way into the list: by file, by paste, typed into the box.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "engine/glintcore.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/files.h"
#include "orbit/message_writer.h"
#include "orbit/satellite_table.h"
#include "state/recording_services.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

using testing::FieldsOf;
using testing::JsonOf;
using testing::MessageFields;
using testing::NotationOf;
using testing::TableOf;
using testing::XmlOf;

const std::string kIss1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
const std::string kIss2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
const std::string kIssText = "ISS\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n";

MessageFields Iss(const std::string& number = "25544", const std::string& name = "ISS") {
    MessageFields fields = FieldsOf(name, kIss1, kIss2);
    for (auto& [key, value] : fields)
        if (key == "NORAD_CAT_ID") value = number;
    return fields;
}

const std::string kOneLeftOut = "1 of 2 records left out: 1 has a number above 339999, FAR (340000)";

std::vector<MessageFields> OneOfTwo() { return {Iss("340000", "FAR"), Iss()}; }

struct ElementMessages : ::testing::Test {
    void Write(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }
    std::string Box() const { return app.Main.TTLE.Text.Get(); }
    std::string Output() const { return app.Main.LCommandOutput.Caption.Get(); }

    testing::TemporaryFolder folder;
    std::filesystem::path path = folder.Path() / "sets.json";
    testing::RecordingBoxes boxes;
    Events events;
    testing::RecordingWindows windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
};

TEST_F(ElementMessages, AFileComesIntoTheBoxAsTwoLines) {
    for (const std::string& text : {TableOf({Iss()}), JsonOf({Iss()}, false), XmlOf({Iss()}), NotationOf({Iss()})}) {
        app.Main.TTLE.Text = std::string("old");
        Write(text);
        EXPECT_TRUE(LoadTLEFile(app, path));
        EXPECT_EQ(Box(), kIssText);
        EXPECT_EQ(Output(), "File loaded, press Add TLE or Update TLE");
        EXPECT_TRUE(boxes.messages.empty());
    }
}

TEST_F(ElementMessages, WhatAFileHoldsInVainIsTold) {
    Write(TableOf(OneOfTwo()));
    EXPECT_TRUE(LoadTLEFile(app, path));
    EXPECT_EQ(Box(), kIssText);
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, "sets.json: " + kOneLeftOut + ".");
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Warning);
}

TEST_F(ElementMessages, AFileOfNothingUsableLeavesTheBoxAsItWas) {
    app.Main.TTLE.Text = std::string("mine");
    Write(JsonOf({Iss("340000", "FAR")}, false));
    EXPECT_FALSE(LoadTLEFile(app, path));
    EXPECT_EQ(Box(), "mine");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text,
              "Error Loading File\n\nsets.json: 1 of 1 record left out: 1 has a number above 339999, FAR (340000).");
    EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
}

TEST_F(ElementMessages, APasteGoesBehindWhatWaits) {
    app.Main.TTLE.Text = kIssText;
    EXPECT_TRUE(PasteTLEText(app, JsonOf(OneOfTwo(), true)));
    EXPECT_EQ(Box(), kIssText + kIssText);
    EXPECT_EQ(Output(), "1 element set pasted, press Add TLE or Update TLE");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, kOneLeftOut + ".");

    EXPECT_FALSE(PasteTLEText(app, JsonOf({Iss("340000", "FAR")}, true)));
    EXPECT_EQ(Box(), kIssText + kIssText);
    EXPECT_EQ(Output(), "ERROR: There is no element set in the clipboard");
    ASSERT_EQ(boxes.messages.size(), 2U);
    EXPECT_EQ(boxes.messages[1].icon, MessageIcon::Critical);
}

TEST_F(ElementMessages, APasteIntoTheBoxItself) {
    EXPECT_EQ(TextPastedIntoBox(app.Main, "any words\n"), "any words\n");
    EXPECT_EQ(TextPastedIntoBox(app.Main, XmlOf({Iss()})), kIssText);
    EXPECT_EQ(Output(), "");
    EXPECT_EQ(TextPastedIntoBox(app.Main, XmlOf(OneOfTwo())), kIssText);
    EXPECT_EQ(Output(), kOneLeftOut);
    EXPECT_EQ(TextPastedIntoBox(app.Main, XmlOf({Iss("340000", "FAR")})), "");
    EXPECT_EQ(Output(), "ERROR: 1 of 1 record left out: 1 has a number above 339999, FAR (340000)");
}

TEST_F(ElementMessages, WhatIsTypedIntoTheBoxIsTakenByTheButton) {
    for (const std::string& text : {TableOf({Iss()}), JsonOf({Iss()}, false), XmlOf({Iss()}), NotationOf({Iss()})}) {
        app.Data.SatCount = 0;
        app.Main.TTLE.Text = text;
        const AdmissionOutcome outcome = CApplyTLEOrbit_click(app);
        EXPECT_EQ(outcome.end, AdmissionEnd::AllTaken) << text;
        EXPECT_EQ(outcome.sets, 1);
        ASSERT_EQ(app.Data.SatCount, 1) << text;
        EXPECT_EQ(app.Data.Satellite(1).Line1, kIss1);
        EXPECT_EQ(app.Data.Satellite(1).Name, "ISS");
        EXPECT_EQ(Box(), "");
        EXPECT_EQ(Output(), "Added Satellites #1");
        EXPECT_TRUE(boxes.messages.empty());
    }
}

TEST_F(ElementMessages, BehindOtherSetsOfTheBoxToo) {
    app.Main.TTLE.Text = kIssText + TableOf(OneOfTwo());
    const AdmissionOutcome outcome = CApplyTLEOrbit_click(app);
    EXPECT_EQ(outcome.sets, 2);
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Box(), "");
    EXPECT_EQ(Output(), "Added Satellites #2");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, kOneLeftOut + ".");
    EXPECT_EQ(outcome.leftOut, kOneLeftOut);
}

TEST_F(ElementMessages, AMessageOfNothingUsableStaysInTheBox) {
    for (const std::string& text : {TableOf({Iss("340000", "FAR")}), JsonOf({Iss("340000", "FAR")}, false)}) {
        boxes.messages.clear();
        app.Main.TTLE.Text = text;
        const AdmissionOutcome outcome = CApplyTLEOrbit_click(app);
        EXPECT_EQ(outcome.end, AdmissionEnd::BadMessage);
        EXPECT_EQ(app.Data.SatCount, 0);
        EXPECT_EQ(Box(), text);
        EXPECT_EQ(Output(), "ERROR: Invalid TLE Text");
        ASSERT_EQ(boxes.messages.size(), 1U);
        EXPECT_EQ(boxes.messages[0].text,
                  "ERROR: Bad TLE Data\n\n1 of 1 record left out: 1 has a number above 339999, FAR (340000).");
    }
}

// What a list cannot take stays, and what was left out of it is told nevertheless.
TEST_F(ElementMessages, AFullListKeepsTheRestInTheBox) {
    std::vector<MessageFields> records = {Iss("340000", "FAR")};
    for (int i = 0; i < kSatCapacity + 2; ++i) records.push_back(Iss(std::to_string(10000 + i)));
    app.Main.TTLE.Text = JsonOf(records, false);
    const AdmissionOutcome outcome = CApplyTLEOrbit_click(app);
    EXPECT_EQ(outcome.end, AdmissionEnd::ListFull);
    EXPECT_EQ(app.Data.SatCount, kSatCapacity);
    EXPECT_EQ(ReadElementText(Box()).sets, 2);
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_TRUE(boxes.messages[0].text.starts_with("1 of 3003 records left out: ")) << boxes.messages[0].text;
}

TEST_F(ElementMessages, UpdatesFindTheSatelliteOfALongList) {
    app.Main.TTLE.Text = kIssText;
    CApplyTLEOrbit_click(app);
    std::vector<MessageFields> records;
    for (int i = 0; i < 5000; ++i) records.push_back(Iss(std::to_string(100000 + i)));
    MessageFields newer = Iss();
    newer[2].second = "2008-09-21T12:00:00";
    records.push_back(newer);
    Write(TableOf(records));
    ASSERT_TRUE(LoadTLEFile(app, path));
    const AdmissionOutcome outcome = CApplyTLEOrbitFnct(app, TLEMode::UpdateExisting, true, false);
    EXPECT_EQ(outcome.updated, 1);
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(app.Data.Satellite(1).EpochText, "08265.50000000");
}

TEST_F(ElementMessages, NumbersOfSixDigitsFindTheirSatellite) {
    app.Main.TTLE.Text = TableOf({Iss("270001", "TODAY")});
    CApplyTLEOrbit_click(app);
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(app.Data.Satellite(1).SatNumber, "T0001");
    EXPECT_EQ(SearchSatID(app.Data, 270001), 1);
    app.Main.TTLE.Text = JsonOf({Iss("270001", "TODAY")}, false);
    EXPECT_EQ(CUpdateTLE_click(app).updated, 1);
    EXPECT_EQ(app.Data.SatCount, 1);
}

// Nothing of a position may depend on the form in which its elements came.
TEST_F(ElementMessages, PositionsAreThoseOfTheSetsInTwoLines) {
    const std::string twoLines =
        BoxText(ReadWholeFile(GLINTARA_SOURCE_DIR "/data/examples/all.tle", kLargestTLEFile).value_or(""));
    EnterTLEText(app, twoLines);
    CApplyTLEOrbit_click(app);
    const int count = app.Data.SatCount;
    ASSERT_EQ(count, 979);
    std::vector<SatRecord> expected;
    std::vector<MessageFields> records;
    for (int i = 1; i <= count; ++i) {
        const SatRecord& satellite = app.Data.Satellite(i);
        expected.push_back(satellite);
        records.push_back(FieldsOf(satellite.Name, satellite.Line1, satellite.Line2));
    }
    for (const std::string& text : {TableOf(records), JsonOf(records, false), XmlOf(records), NotationOf(records)}) {
        app.Data.SatCount = 0;
        EnterTLEText(app, text);
        CApplyTLEOrbit_click(app);
        ASSERT_EQ(app.Data.SatCount, count);
        for (int i = 1; i <= count; ++i) {
            SatRecord& satellite = app.Data.Satellite(i);
            SatRecord& same = expected[static_cast<std::size_t>(i) - 1];
            EXPECT_EQ(satellite.Name, same.Name);
            EXPECT_EQ(satellite.SatNumber, same.SatNumber);
            EXPECT_EQ(satellite.EpochText, same.EpochText);
            for (const double jd : {2458138.5, 2458140.25, 2458170.125}) {
                std::array<double, 3> place{}, placeOfSame{}, speed{}, speedOfSame{};
                const int error = Satellite_SGP4(&satellite.EngineBlock, jd, place.data(), speed.data());
                EXPECT_EQ(Satellite_SGP4(&same.EngineBlock, jd, placeOfSame.data(), speedOfSame.data()), error);
                EXPECT_EQ(place, placeOfSame) << satellite.Line1 << '\n' << same.Line1;
                EXPECT_EQ(speed, speedOfSame) << satellite.Name;
            }
        }
    }
}

}  // namespace
}  // namespace glintara
