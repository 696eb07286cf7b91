#include "orbit/satellite_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "state/recording_services.h"

namespace glintara {
namespace {

struct SatelliteTable : ::testing::Test {
    void AddSatellite(const std::string& number, const std::string& name) {
        SatRecord satellite;
        satellite.SatNumber = number;
        satellite.Name = name;
        satellite.OrbitNumber = static_cast<std::int16_t>(++app.Data.SatCount);
        app.Data.Satellite(app.Data.SatCount) = satellite;
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int i = 1; i <= app.Data.SatCount; ++i) names.push_back(app.Data.Satellite(i).Name);
        return names;
    }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
};

TEST(ShownName, ControlCharactersAreQuestionMarks) {
    EXPECT_EQ(ShownName("ISS (ZARYA)"), "ISS (ZARYA)");
    EXPECT_EQ(ShownName("\x1b[2JA\tB\x7f"), "?[2JA?B?");
    EXPECT_EQ(ShownName(std::string("a\0b", 3)), "a?b");
    EXPECT_EQ(ShownName("\xC2\x9B"
                        "1mA"),
              "?1mA")
        << "the upper half of the control characters, in UTF-8";
    EXPECT_EQ(ShownName("\xC3\x9C"
                        "BER \xC2\xB0"),
              "\xC3\x9C"
              "BER \xC2\xB0")
        << "letters and signs are not";
    EXPECT_EQ(ShownName("\xC2"), "\xC2");
}

// Values of the Alpha-5 table published with the public catalogue.
TEST(SatelliteNumber, Alpha5LettersLeaveOutIAndO) {
    EXPECT_EQ(SatelliteNumberValue("A0000"), 100000);
    EXPECT_EQ(SatelliteNumberValue("E8493"), 148493);
    EXPECT_EQ(SatelliteNumberValue("H9999"), 179999);
    EXPECT_EQ(SatelliteNumberValue("J2931"), 182931);
    EXPECT_EQ(SatelliteNumberValue("N0000"), 220000);
    EXPECT_EQ(SatelliteNumberValue("P4018"), 234018);
    EXPECT_EQ(SatelliteNumberValue("T0001"), 270001);
    EXPECT_EQ(SatelliteNumberValue("W1928"), 301928);
    EXPECT_EQ(SatelliteNumberValue("Z9999"), 339999);
}

TEST(SatelliteNumber, PlainNumbersAndBlanks) {
    EXPECT_EQ(SatelliteNumberValue("00005"), 5);
    EXPECT_EQ(SatelliteNumberValue("25544"), 25544);
    EXPECT_EQ(SatelliteNumberValue("    5"), 5);
    EXPECT_EQ(SatelliteNumberValue("5    "), 5);
    EXPECT_EQ(SatelliteNumberValue(""), 0);
    EXPECT_EQ(SatelliteNumberValue("     "), 0);
}

TEST(SatelliteNumber, TextThatIsNoNumberIsZero) {
    EXPECT_EQ(SatelliteNumberValue("I0001"), 0);
    EXPECT_EQ(SatelliteNumberValue("O0001"), 0);
    EXPECT_EQ(SatelliteNumberValue("a0000"), 0);
    EXPECT_EQ(SatelliteNumberValue("A000"), 0);
    EXPECT_EQ(SatelliteNumberValue("A00X0"), 0);
    EXPECT_EQ(SatelliteNumberValue("AAAAA"), 0);
}

TEST_F(SatelliteTable, ASearchInAnEmptyListFindsNothing) {
    EXPECT_EQ(SearchOrbitNumber(app.Data, 1), 0);
    EXPECT_EQ(SearchOrbitNumber(app.Data, 0), 0);
    EXPECT_EQ(SearchSatID(app.Data, 0), 0);
}

TEST_F(SatelliteTable, SearchesGiveTheLastMatch) {
    AddSatellite("00005", "VANGUARD 1");
    AddSatellite("25544", "ISS");
    AddSatellite("    5", "VANGUARD 1 again");
    AddSatellite("T0001", "NEW");
    EXPECT_EQ(SearchSatID(app.Data, 5), 3);
    EXPECT_EQ(SearchSatID(app.Data, 25544), 2);
    EXPECT_EQ(SearchSatID(app.Data, 270001), 4);
    EXPECT_EQ(SearchSatID(app.Data, 7), 0);
    EXPECT_EQ(SearchOrbitNumber(app.Data, 2), 2);
    app.Data.Satellite(4).OrbitNumber = 2;
    EXPECT_EQ(SearchOrbitNumber(app.Data, 2), 4);
    EXPECT_EQ(SearchOrbitNumber(app.Data, 9), 0);
}

TEST_F(SatelliteTable, SearchesDoNotReadBehindTheCount) {
    AddSatellite("00005", "VANGUARD 1");
    AddSatellite("25544", "ISS");
    app.Data.SatCount = 1;
    EXPECT_EQ(SearchSatID(app.Data, 25544), 0);
    EXPECT_EQ(SearchOrbitNumber(app.Data, 2), 0);
}

TEST_F(SatelliteTable, TheWorkingSatelliteMovesToTheEndAndTheOthersMoveDown) {
    for (const char* name : {"A", "B", "C", "D"}) AddSatellite("00001", name);
    ChangeWorkingSatellite(app, 1);
    EXPECT_EQ(Names(), (std::vector<std::string>{"B", "C", "D", "A"}));
    EXPECT_EQ(app.Data.Satellite(app.Data.WorkingSat()).OrbitNumber, 1);
    ChangeWorkingSatellite(app, 3);
    EXPECT_EQ(Names(), (std::vector<std::string>{"B", "D", "A", "C"}));
    ChangeWorkingSatellite(app, 3);
    EXPECT_EQ(Names(), (std::vector<std::string>{"B", "D", "A", "C"}));
    EXPECT_EQ(app.Data.SatCount, 4);
    EXPECT_TRUE(app.Data.SatTable[0].Name.empty());
}

TEST_F(SatelliteTable, TheWindowsAreToldOfTheWorkingSatellite) {
    AddSatellite("00005", "VANGUARD 1");
    AddSatellite("25544", "ISS");
    ChangeWorkingSatellite(app, 1);
    EXPECT_EQ(windows.calls, (std::vector<std::string>{"ChangeSatelliteSignal", "ShowWorkingSatellite",
                                                       "UpdateGraphicsLevel2", "RefreshData", "RefreshSatPosition"}));
}

TEST_F(SatelliteTable, ASatelliteThatIsNotThereCannotWork) {
    ChangeWorkingSatellite(app, 1);
    AddSatellite("00005", "VANGUARD 1");
    ChangeWorkingSatellite(app, 2);
    EXPECT_EQ(Names(), (std::vector<std::string>{"VANGUARD 1"}));
    EXPECT_TRUE(windows.calls.empty());
}

TEST_F(SatelliteTable, TheListLineShowsSwitchesNumbersAndName) {
    AddSatellite("25544", "ISS (ZARYA)");
    SatRecord& satellite = app.Data.Satellite(1);
    EXPECT_EQ(SatelliteListLine(satellite), "[XOO] 0001 (25544)   ISS (ZARYA)");
    satellite.OptionFlags = "1100000000000000";
    satellite.OrbitNumber = 2999;
    EXPECT_EQ(SatelliteListLine(satellite), "[XXO] 2999 (25544)   ISS (ZARYA)");
    satellite.OptionFlags = "0010000000000000";
    satellite.SatNumber = "5";
    EXPECT_EQ(SatelliteListLine(satellite), "[OOX] 2999 (5)       ISS (ZARYA)");
}

TEST_F(SatelliteTable, AnOverlongSatelliteNumberPushesTheNameOn) {
    AddSatellite("123456789", "X");
    app.Data.Satellite(1).OptionFlags = "";
    EXPECT_EQ(SatelliteListLine(app.Data.Satellite(1)), "[OOO] 0001 (123456789)X");
}

}  // namespace
}  // namespace glintara
