#include "orbit/element_sets.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "flare/surface_models.h"
#include "state/recording_services.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

using glintara::testing::RecordingBoxes;
using glintara::testing::RecordingWindows;

constexpr double kDegrees = 57.29577951308232;

// The space station on 20 September 2008, a set that many texts on the format print.
const std::string kIss1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
const std::string kIss2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";

// Vanguard 1, from the verification set of the revised report on the orbit model.
const std::string kVanguard1 = "1 00005U 58002B   00179.78495062  .00000023  00000-0  28098-4 0  4753";
const std::string kVanguard2 = "2 00005  34.2682 348.7242 1859667 331.7664  19.3264 10.82419157413667";

// A line 1 with another satellite number and epoch. The checksum is left as it is, mostly wrong.
std::string Line1Of(const std::string& number, const std::string& epoch = "08264.51782528") {
    std::string line = kIss1;
    line.replace(2, 5, number);
    line.replace(18, 14, epoch);
    return line;
}

std::string Line2Of(const std::string& number) {
    std::string line = kIss2;
    line.replace(2, 5, number);
    return line;
}

std::string SetOf(const std::string& number, const std::string& epoch = "08264.51782528") {
    return Line1Of(number, epoch) + "\r\n" + Line2Of(number) + "\r\n";
}

// Satellite numbers of five digits.
std::string Number(int n) {
    const std::string digits = std::to_string(n);
    return std::string(5 - digits.size(), '0') + digits;
}

struct ElementSets : ::testing::Test {
    void Admit(const std::string& text, TLEMode mode = TLEMode::Add, bool onlyNewer = false,
               bool onlySelected = false) {
        app.Main.TTLE.Text = text;
        windows.calls.clear();
        boxes.messages.clear();
        CApplyTLEOrbitFnct(app, mode, onlyNewer, onlySelected);
    }

    SatRecord& Satellite(int index) { return app.Data.Satellite(index); }
    std::string Box() const { return app.Main.TTLE.Text.Get(); }
    std::string Output() const { return app.Main.LCommandOutput.Caption.Get(); }

    // The last admission was refused at a set, before which `added` satellites came in.
    void ExpectBadData(int satCount, int added = 0) {
        std::string before;
        if (added > 0)
            before = std::to_string(added) + (added > 1 ? " satellites" : " satellite") + " added before that";
        EXPECT_EQ(Output(), "ERROR: Invalid TLE Text" + (added > 0 ? " (" + before + ")" : ""));
        ASSERT_EQ(boxes.messages.size(), 1U);
        const std::string& box = boxes.messages[0].text;
        EXPECT_EQ(box.substr(0, 25), "ERROR: Bad TLE Data\n\nSet ");
        EXPECT_EQ(box.find(before + ".") != std::string::npos, true) << box;
        EXPECT_EQ(boxes.messages[0].icon, MessageIcon::Critical);
        EXPECT_EQ(app.Data.SatCount, satCount);
    }

    RecordingBoxes boxes;
    Events events;
    RecordingWindows windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
};

// ---- Fields

TEST_F(ElementSets, ThePublishedSetOfTheSpaceStationIsReadByColumns) {
    Admit("ISS (ZARYA)\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n");
    ASSERT_EQ(app.Data.SatCount, 1);
    const SatRecord& s = Satellite(1);
    EXPECT_EQ(s.Name, "ISS (ZARYA)");
    EXPECT_EQ(s.TitleLine, "ISS (ZARYA)");
    EXPECT_EQ(s.Line1, kIss1);
    EXPECT_EQ(s.Line2, kIss2);
    EXPECT_EQ(s.SatNumber, "25544");
    EXPECT_EQ(s.Designator, "98067A  ");
    EXPECT_EQ(s.EpochText, "08264.51782528");
    EXPECT_DOUBLE_EQ(s.MeanMotionDot, -2.182e-5);
    EXPECT_EQ(s.MeanMotionDDot, 0);
    EXPECT_DOUBLE_EQ(s.BStar, -1.1606e-5);
    EXPECT_EQ(s.ElementSetNumber, 292);
    EXPECT_NEAR(s.Inclination * kDegrees, 51.6416, 1e-9);
    EXPECT_NEAR(s.RaanAngle * kDegrees, 247.4627, 1e-9);
    EXPECT_DOUBLE_EQ(s.Eccentricity, 0.0006703);
    EXPECT_NEAR(s.ArgPerigee * kDegrees, 130.5360, 1e-9);
    EXPECT_NEAR(s.MeanAnomaly * kDegrees, 325.0288, 1e-9);
    EXPECT_DOUBLE_EQ(s.MeanMotion, 15.72125391);
    EXPECT_EQ(s.OrbitNumber, 1);
    EXPECT_EQ(s.OptionFlags, "1000000000000000");
    EXPECT_FALSE(s.Selected);
    EXPECT_EQ(s.Surface.MirrorCount, 0);
    EXPECT_TRUE(app.Data.SatTable[0].Name.empty());
}

TEST_F(ElementSets, AMantissaWithABlankSignIsPositive) {
    Admit(kVanguard1 + "\r\n" + kVanguard2 + "\r\n");
    EXPECT_DOUBLE_EQ(Satellite(1).BStar, 0.000028098);
    EXPECT_DOUBLE_EQ(Satellite(1).MeanMotionDot, 2.3e-7);
    EXPECT_DOUBLE_EQ(Satellite(1).Eccentricity, 0.1859667);
}

TEST_F(ElementSets, TheListShowsTheElementsThatThePropagatorFlies) {
    // Blanks in front of implied digits are zeros, here as there.
    std::string line1 = kVanguard1;
    std::string line2 = kVanguard2;
    line1.replace(53, 8, "   123-3");
    line2.replace(26, 7, "    546");
    Admit(line1 + "\r\n" + line2 + "\r\n");
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_DOUBLE_EQ(Satellite(1).BStar, 0.00123e-3);
    EXPECT_DOUBLE_EQ(Satellite(1).Eccentricity, 0.0000546);
}

TEST_F(ElementSets, TheSecondDerivativeHasAnExponent) {
    std::string line = kIss1;
    line.replace(44, 8, "-12345-6");
    Admit(line + "\r\n" + kIss2 + "\r\n");
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_DOUBLE_EQ(Satellite(1).MeanMotionDDot, -1.2345e-7);
}

TEST_F(ElementSets, TheSemiMajorAxisIsInUnitsOfTheSite) {
    // One turn a sidereal day: the geosynchronous radius, 42164 km. The parameter used here makes it 0.6 km larger.
    std::string line2 = kIss2;
    line2.replace(52, 11, " 1.00273791");
    app.Data.Site.SiteRadius = 6378137;
    Admit(kIss1 + "\r\n" + line2 + "\r\n");
    EXPECT_NEAR(Satellite(1).MeanRadiusA * 6378.137, 42164.8, 0.3);
    app.Data.Site.SiteRadius = 1000000;
    Admit(kIss1 + "\r\n" + line2 + "\r\n");
    EXPECT_NEAR(Satellite(2).MeanRadiusA * 1000, 42164.8, 0.3);
}

TEST_F(ElementSets, TheEngineCanPropagateWhatWasAdmitted) {
    Admit(kIss1 + "\r\n" + kIss2 + "\r\n");
    double position[3] = {};
    double velocity[3] = {};
    ASSERT_EQ(Satellite_SGP4(&Satellite(1).EngineBlock, EpochToJD(Satellite(1)), position, velocity), 0);
    // The station flew some 350 km high, at 7.7 km/s.
    EXPECT_NEAR(std::hypot(position[0], position[1], position[2]), 6378 + 350, 20);
    EXPECT_NEAR(std::hypot(velocity[0], velocity[1], velocity[2]), 7.7, 0.05);
}

TEST(Epoch, TwoDigitsRunFrom1951To2050) {
    SatRecord s;
    s.EpochText = "50001.00000000";
    EXPECT_DOUBLE_EQ(EpochToJD(s), 2469807.5);  // 1 January 2050
    s.EpochText = "51001.00000000";
    EXPECT_DOUBLE_EQ(EpochToJD(s), 2433647.5);  // 1 January 1951
    s.EpochText = "08264.51782528";
    EXPECT_NEAR(EpochToJD(s), 2454730.01782528, 1e-8);  // 20 September 2008
}

TEST(LineCheck, TheChecksumIsWorkedOutAndRefusesNothing) {
    EXPECT_TRUE(CheckTLELine(kIss1).checksumMatches);
    EXPECT_TRUE(CheckTLELine(kIss2).checksumMatches);
    EXPECT_TRUE(CheckTLELine(kVanguard1).checksumMatches);
    EXPECT_TRUE(CheckTLELine(kVanguard2).checksumMatches);
    std::string damaged = kIss1;
    damaged[68] = '8';
    EXPECT_FALSE(CheckTLELine(damaged).checksumMatches);
    EXPECT_FALSE(CheckTLELine(kIss1.substr(0, 68)).checksumMatches);
    EXPECT_FALSE(CheckTLELine("").checksumMatches);
    for (const std::string& line : {kIss1, damaged, kIss1.substr(0, 68), std::string()})
        EXPECT_TRUE(CheckTLELine(line).ok);
}

TEST_F(ElementSets, AWrongChecksumIsAdmitted) {
    std::string line1 = kIss1;
    std::string line2 = kIss2;
    line1[68] = '0';
    line2[68] = 'x';
    Admit(line1 + "\r\n" + line2 + "\r\n");
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Satellite(1).Line1, line1);
}

TEST_F(ElementSets, AnElementSetNumberThatDoesNotFitIsHeldInRange) {
    std::string line = kIss1;
    line.replace(64, 4, "9e99");
    Admit(line + "\r\n" + kIss2 + "\r\n");
    line.replace(64, 4, "-9e9");
    Admit(line + "\r\n" + kIss2 + "\r\n");
    line.replace(64, 4, "9999");
    Admit(line + "\r\n" + kIss2 + "\r\n");
    ASSERT_EQ(app.Data.SatCount, 3);
    EXPECT_EQ(Satellite(1).ElementSetNumber, 32767);
    EXPECT_EQ(Satellite(2).ElementSetNumber, -32768);
    EXPECT_EQ(Satellite(3).ElementSetNumber, 9999);
}

TEST_F(ElementSets, TheElementSetNumberBeginsBehindTheEphemerisType) {
    std::string line = kIss1;
    line.replace(62, 6, "07 123");
    Admit(line + "\r\n" + kIss2 + "\r\n");
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Satellite(1).ElementSetNumber, 123);
}

TEST_F(ElementSets, Alpha5NumbersStayText) {
    Admit(SetOf("A0000"));
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Satellite(1).SatNumber, "A0000");
}

// ---- The text

TEST_F(ElementSets, ASingleSetWithoutAFinalLineEndIsAdmittedAndEmptiesTheBox) {
    Admit("ISS\r\n" + kIss1 + "\r\n" + kIss2);
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Box(), "");
    EXPECT_EQ(Output(), "Added Satellites #1");
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(ElementSets, ASetWithoutANameBearsTheNameOfTheOneBefore) {
    Admit("ISS\r\n" + SetOf("00001") + SetOf("00002") + "OTHER\r\n" + SetOf("00003"));
    ASSERT_EQ(app.Data.SatCount, 3);
    EXPECT_EQ(Satellite(2).Name, "ISS");
    EXPECT_EQ(Satellite(2).TitleLine, "ISS");
    EXPECT_EQ(Satellite(2).SatNumber, "00002");
    EXPECT_EQ(Satellite(3).Name, "OTHER");
    EXPECT_EQ(Output(), "Added Satellites #3");
}

TEST_F(ElementSets, WithoutAnyNameTheNameIsEmptyAndABatchForgetsTheNamesOfTheLast) {
    Admit("ISS\r\n" + SetOf("00001"));
    Admit(SetOf("00002"));
    EXPECT_EQ(Satellite(2).Name, "");
    EXPECT_EQ(Satellite(2).TitleLine, "");
}

TEST_F(ElementSets, TextWithoutALineEndIsRefusedByTheLabelAlone) {
    for (const char* text : {"", "ISS", "1", "no line end here\nnor here"}) {
        Admit(text);
        EXPECT_EQ(Output(), "ERROR: Invalid TLE Text");
        EXPECT_TRUE(boxes.messages.empty());
        EXPECT_EQ(app.Data.SatCount, 0);
        EXPECT_EQ(Box(), text);
    }
}

TEST_F(ElementSets, AFailingSetStaysInTheBoxWithItsNameAndAllBehindIt) {
    const std::string bad = "BROKEN\r\n" + Line1Of("00002") + "\r\nnot line 2\r\n";
    Admit("FINE\r\n" + SetOf("00001") + bad + SetOf("00003"));
    ExpectBadData(1, 1);
    EXPECT_EQ(Box(), bad + SetOf("00003"));
    EXPECT_EQ(Satellite(1).Name, "FINE");
}

TEST_F(ElementSets, ASetThatTheEngineRefusesIsBadData) {
    std::string line2 = kIss2;
    line2.replace(52, 11, " 0.00000000");
    const std::string bad = "STILL\r\n" + kIss1 + "\r\n" + line2 + "\r\n";
    Admit(SetOf("00001") + bad);
    ExpectBadData(1, 1);
    EXPECT_EQ(Box(), bad);
    EXPECT_EQ(app.Data.UsageStats.TLECount, 1);
}

// ---- Which set and why

TEST_F(ElementSets, TheOutcomeSaysWhichLineOfWhichSetAndWhy) {
    struct Case {
        int line;
        std::string reason;
        std::string line1, line2;
    };
    const auto with = [](std::string line, std::size_t column, const std::string& text) {
        return line.replace(column - 1, text.size(), text);
    };
    const std::vector<Case> cases = {
        {1, "it does not begin with \"1\"", "x" + kIss1, kIss2},
        {1, "it is too short", kIss1.substr(0, 60), kIss2},
        {1, "the epoch is no number", with(kIss1, 25, "x"), kIss2},
        {1, "the first derivative of the mean motion is no number", with(kIss1, 36, "x"), kIss2},
        {1, "the second derivative of the mean motion is no number", with(kIss1, 47, "x"), kIss2},
        {1, "the drag term is no number", with(kIss1, 56, "x"), kIss2},
        {2, "it does not begin with \"2\"", kIss1, "3" + kIss2.substr(1)},
        {2, "it is too short", kIss1, kIss2.substr(0, 54)},
        {2, "the inclination is no number", kIss1, with(kIss2, 10, "x")},
        {2, "the right ascension of the node is no number", kIss1, with(kIss2, 19, "x")},
        {2, "the eccentricity is no number", kIss1, with(kIss2, 30, " ")},  // a blank between two digits
        {2, "the argument of perigee is no number", kIss1, with(kIss2, 37, "x")},
        {2, "the mean anomaly is no number", kIss1, with(kIss2, 46, "x")},
        {2, "the mean motion is no number", kIss1, with(kIss2, 54, "x")},
        {2, "the mean motion is not above 0", kIss1, with(kIss2, 53, " 0.00000000")},
        {2, "the eccentricity is negative", kIss1, with(kIss2, 27, "-000001")},
        {2, "there is none", kIss1, ""},
        {0, "a zero byte cuts a line off", with(kIss1, 12, std::string(1, '\0')), kIss2},
    };
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.reason);
        app.Data.SatCount = 0;
        app.Main.TTLE.Text = SetOf("00001") + SetOf("00002") + "SPUTNIK\r\n" + bad.line1 + "\r\n" + bad.line2 + "\r\n";
        boxes.messages.clear();
        const AdmissionOutcome outcome = CApplyTLEOrbit_click(app);
        EXPECT_EQ(outcome.end, AdmissionEnd::BadData);
        EXPECT_TRUE(outcome.Failed());
        EXPECT_EQ(outcome.sets, 2);
        EXPECT_EQ(outcome.added, 2);
        EXPECT_EQ(outcome.refusedName, "SPUTNIK");
        EXPECT_EQ(outcome.refusedLine, bad.line);
        EXPECT_EQ(outcome.reason, bad.reason);
        const std::string where = bad.line == 0 ? "" : ", line " + std::to_string(bad.line);
        ASSERT_EQ(boxes.messages.size(), 1U);
        EXPECT_EQ(boxes.messages[0].text, "ERROR: Bad TLE Data\n\nSet 3 (SPUTNIK)" + where + ": " + bad.reason +
                                              ".\n2 satellites added before that.");
        EXPECT_EQ(Output(), "ERROR: Invalid TLE Text (2 satellites added before that)");
    }
}

TEST_F(ElementSets, TheOutcomeCountsWhatWasAddedAndUpdated) {
    app.Main.TTLE.Text = SetOf("00001") + SetOf("00002");
    AdmissionOutcome outcome = CApplyTLEOrbit_click(app);
    EXPECT_FALSE(outcome.Failed());
    EXPECT_EQ(outcome.added, 2);
    EXPECT_EQ(outcome.updated, 0);
    EXPECT_EQ(RefusalText(outcome), "");

    app.Main.TTLE.Text = SetOf("00002") + SetOf("00003") + "no more of 1";
    outcome = CUpdateTLE_click(app);
    EXPECT_EQ(outcome.end, AdmissionEnd::NoLineEnd);
    EXPECT_EQ(outcome.added, 1);
    EXPECT_EQ(outcome.updated, 1);
    EXPECT_EQ(Output(), "ERROR: Invalid TLE Text (1 satellite added and 1 updated before that)");
    EXPECT_TRUE(boxes.messages.empty());

    app.Main.TTLE.Text = SetOf("00001") + SetOf("00009");
    outcome = CApplyTLEOrbitFnct(app, TLEMode::UpdateExisting, false, false);
    EXPECT_EQ(outcome.sets, 2);
    EXPECT_EQ(outcome.added, 0);
    EXPECT_EQ(outcome.updated, 1);
}

TEST_F(ElementSets, ANameOfControlCharactersIsToldWithoutThem) {
    Admit("\x1b[31mRED\r\nnonsense\r\nnonsense\r\n");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages[0].text, "ERROR: Bad TLE Data\n\nSet 1 (?[31mRED), line 1: it does not begin with \"1\".");
}

TEST_F(ElementSets, BadDataOfManyKinds) {
    for (const std::string& text : {
             "NAME\r\n" + kIss1,
             "NAME\r\n" + kIss1 + "\r\n",
             "NAME\r\nNAME\r\n" + SetOf("00001"),
             std::string("NAME\r\n"),
             std::string("\r\n"),
             kIss1 + "\r\n" + kIss1 + "\r\n",
             kIss2 + "\r\n" + kIss1 + "\r\n",
             std::string("1 \r\n2 \r\n"),
             "\r\n\r\n" + SetOf("00001"),
         }) {
        Admit(text);
        ExpectBadData(0);
        EXPECT_EQ(Box(), text);
    }
}

TEST_F(ElementSets, RestWithoutADigit1StaysInTheBoxQuietly) {
    Admit(SetOf("00001") + "\r\n(end of list)\r\n");
    EXPECT_EQ(Output(), "Added Satellites #1");
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(Box(), "\r\n(end of list)\r\n");
}

TEST_F(ElementSets, LongLinesAreCutAt69AndShortOnesEndAtTheirEnd) {
    Admit(Line1Of("00001") + " and a remark\r\n" + Line2Of("00001") + "   \r\n" + SetOf("00002"));
    ASSERT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Satellite(1).Line1.size(), 69U);
    EXPECT_EQ(Satellite(1).Line2, Line2Of("00001"));

    const std::string short1 = kIss1.substr(0, 68);
    const std::string short2 = kIss2.substr(0, 68);
    Admit(short1 + "\r\n" + short2 + "\r\n" + SetOf("00003"));
    ASSERT_EQ(app.Data.SatCount, 4);
    EXPECT_EQ(Satellite(3).Line1, short1);
    EXPECT_EQ(Satellite(3).Line2, short2);
    EXPECT_EQ(Satellite(4).SatNumber, "00003");
}

TEST_F(ElementSets, ANumberedNameLineLosesItsZero) {
    Admit("0 VANGUARD 1\r\n" + kVanguard1 + "\r\n" + kVanguard2 + "\r\n0UTPOST\r\n" + SetOf("00001"));
    ASSERT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Satellite(1).Name, "VANGUARD 1");
    EXPECT_EQ(Satellite(1).TitleLine, "VANGUARD 1");
    EXPECT_EQ(Satellite(2).Name, "0UTPOST");
}

TEST_F(ElementSets, ANameMayBeginWithADigit1) {
    Admit("1KUNS-PF\r\n" + SetOf("43466") + "1998-067XX\r\n" + SetOf("00002"));
    ASSERT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Satellite(1).Name, "1KUNS-PF");
    EXPECT_EQ(Satellite(2).Name, "1998-067XX");
    EXPECT_TRUE(boxes.messages.empty());
    // So it does not when what follows is no line 1.
    std::string glued = Line1Of("43466");
    glued[1] = 'x';
    Admit("1KUNS-PF\r\n" + glued + "\r\n" + Line2Of("43466") + "\r\n");
    ExpectBadData(2);
    // A blank behind the digit makes it a line 1, and a bad one.
    Admit("1 KUNS-PF\r\n" + SetOf("43466"));
    ExpectBadData(2);
}

TEST_F(ElementSets, AnIridiumGetsItsAntennasAndTheNextSatelliteDoesNot) {
    Admit("iridium 5\r\n" + SetOf("00001") + "IRIDIUM 7\r\n" + SetOf("00002") + "Iridium 8\r\n" + SetOf("00003") +
          "IRIDI\r\n" + SetOf("00004"));
    ASSERT_EQ(app.Data.SatCount, 4);
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(Satellite(i).Surface.MirrorCount, 3);
        EXPECT_TRUE(HasFlareModel(Satellite(i)));
    }
    EXPECT_EQ(Satellite(4).Surface.MirrorCount, 0);
    EXPECT_EQ(Satellite(4).Surface.ModelFlags, std::string(29, '0'));
    EXPECT_TRUE(Satellite(4).Surface.Mirror(1).MirrorName.empty()) << "nothing of the set before is left";
}

// ---- The windows

TEST_F(ElementSets, WindowsAreToldOnceABatch) {
    Admit(SetOf("00001") + SetOf("00002"));
    EXPECT_EQ(windows.calls, (std::vector<std::string>{"SyncronizeMenuBar", "UpDateAll", "RefreshInfo",
                                                       "UpdateGraphicsLevel2", "SaveStat"}));
    EXPECT_TRUE(app.Main.CPlotOrbit.Value);
    EXPECT_EQ(app.Data.UsageStats.TLECount, 2);
}

TEST_F(ElementSets, WithoutAnAdmissionNoPictureIsAskedFor) {
    Admit("nothing");
    EXPECT_EQ(windows.calls, (std::vector<std::string>{"UpDateAll", "RefreshInfo"}));
    EXPECT_FALSE(app.Main.CPlotOrbit.Value);
}

TEST_F(ElementSets, TheButtonsTellTheSurfaceEditorFirst) {
    app.Main.TTLE.Text = SetOf("00001");
    CApplyTLEOrbit_click(app);
    EXPECT_EQ(windows.calls.front(), "ChangeSatelliteSignal");
    EXPECT_EQ(Output(), "Added Satellites #1");
    windows.calls.clear();
    app.Main.TTLE.Text = SetOf("00001") + SetOf("00002");
    CUpdateTLE_click(app);
    EXPECT_EQ(windows.calls.front(), "ChangeSatelliteSignal");
    EXPECT_EQ(Output(), "Added Satellites #1 (1 updated)");
    EXPECT_EQ(app.Data.SatCount, 2);
    app.Main.TTLE.Text = SetOf("00001");
    CApplyTLEOrbit_click(app);
    EXPECT_EQ(app.Data.SatCount, 3) << "adding does not ask what is there";
}

// ---- Updates

TEST_F(ElementSets, AnUpdateKeepsWhatIsTheUsersAndTakesAllElseFromTheSet) {
    Admit("FIRST\r\n" + SetOf("00005") + "OLD\r\n" + SetOf("00007"));
    SatRecord& old = Satellite(1);
    old.OptionFlags = "0110000000000000";
    old.Selected = true;
    old.Surface.MirrorCount = 1;
    old.Surface.Mirror(1).MirrorName = "panel";

    Admit("NEW IRIDIUM\r\n" + kVanguard1 + "\r\n" + kVanguard2 + "\r\n", TLEMode::AddAndUpdate);
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Output(), "Added Satellites #0 (1 updated)");
    EXPECT_EQ(old.OptionFlags, "0110000000000000");
    EXPECT_EQ(old.OrbitNumber, 1);
    EXPECT_TRUE(old.Selected);
    EXPECT_EQ(old.Surface.MirrorCount, 1);
    EXPECT_EQ(old.Surface.Mirror(1).MirrorName, "panel");
    EXPECT_EQ(old.Name, "NEW IRIDIUM");
    EXPECT_EQ(old.TitleLine, "NEW IRIDIUM");
    EXPECT_EQ(old.Line1, kVanguard1);
    EXPECT_EQ(old.Line2, kVanguard2);
    EXPECT_EQ(old.EpochText, "00179.78495062");
    EXPECT_DOUBLE_EQ(old.MeanMotion, 10.82419157);
    double position[3] = {};
    double velocity[3] = {};
    ASSERT_EQ(Satellite_SGP4(&old.EngineBlock, EpochToJD(old), position, velocity), 0);
    EXPECT_NEAR(position[0], 7022.465, 1) << "first line of the verification listing";
    EXPECT_EQ(Satellite(2).Name, "OLD");
    EXPECT_EQ(app.Data.UsageStats.TLECount, 3);
    EXPECT_TRUE(app.Main.CPlotOrbit.Value);
}

TEST_F(ElementSets, AllRecordsOfTheNumberAreReplacedInAnyMode) {
    Admit(SetOf("00001") + SetOf("00002") + SetOf("00001"));
    Admit(SetOf("00001", "09001.00000000"), TLEMode::UpdateExisting);
    EXPECT_EQ(Output(), "Added Satellites #0 (2 updated)");
    EXPECT_EQ(Satellite(1).EpochText, "09001.00000000");
    EXPECT_EQ(Satellite(2).EpochText, "08264.51782528");
    EXPECT_EQ(Satellite(3).EpochText, "09001.00000000");
    EXPECT_EQ(Satellite(3).OrbitNumber, 3);
}

TEST_F(ElementSets, ASetFindsTheSatelliteThatTheSameBatchHasAdded) {
    Admit(SetOf("00001") + SetOf("00001", "09001.00000000"), TLEMode::AddAndUpdate);
    EXPECT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Output(), "Added Satellites #1 (1 updated)");
    EXPECT_EQ(Satellite(1).EpochText, "09001.00000000");
}

TEST_F(ElementSets, UnknownSatellitesAreDroppedWhenOnlyUpdating) {
    Admit("ISS\r\n" + SetOf("00009"), TLEMode::UpdateExisting);
    EXPECT_EQ(app.Data.SatCount, 0);
    EXPECT_EQ(Output(), "Added Satellites #0 (0 updated)");
    EXPECT_EQ(Box(), "");
    EXPECT_EQ(windows.calls.back(), "SaveStat");
}

TEST_F(ElementSets, ASetThatIsNotNewerIsAddedAsASecondSatellite) {
    Admit(SetOf("00001", "08264.50000000"));
    Admit(SetOf("00001", "08264.50000000"), TLEMode::AddAndUpdate, true);
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Output(), "Added Satellites #1 (0 updated)");
    EXPECT_EQ(Satellite(2).OrbitNumber, 2);
    Admit(SetOf("00001", "08264.49999999"), TLEMode::UpdateExisting, true);
    EXPECT_EQ(app.Data.SatCount, 2) << "an update of known satellites adds none";
    Admit(SetOf("00001", "08264.50000001"), TLEMode::AddAndUpdate, true);
    EXPECT_EQ(app.Data.SatCount, 2);
    EXPECT_EQ(Output(), "Added Satellites #0 (2 updated)");
    // 1999 is before 2008, whatever the digits say.
    Admit(SetOf("00001", "99001.00000000"), TLEMode::UpdateExisting, true);
    EXPECT_EQ(Output(), "Added Satellites #0 (0 updated)");
}

TEST_F(ElementSets, OnlySelectedSatellitesAreReplacedAndTheOthersAreNotAddedAgain) {
    Admit(SetOf("00001") + SetOf("00002"));
    Satellite(2).Selected = true;
    const std::string sets = SetOf("00001", "09001.00000000") + SetOf("00002", "09001.00000000") + SetOf("00003");
    Admit(sets, TLEMode::AddAndUpdate, false, true);
    EXPECT_EQ(app.Data.SatCount, 3);
    EXPECT_EQ(Output(), "Added Satellites #1 (1 updated)");
    EXPECT_EQ(Satellite(1).EpochText, "08264.51782528");
    EXPECT_EQ(Satellite(2).EpochText, "09001.00000000");
    EXPECT_TRUE(Satellite(2).Selected);
    Admit(SetOf("00002", "09002.00000000"), TLEMode::AddAndUpdate, false, true);
    EXPECT_EQ(Satellite(2).EpochText, "09002.00000000") << "a second source still finds it selected";
}

// ---- The limit

TEST_F(ElementSets, AFullListTakesNothingMoreNotEvenUpdates) {
    std::string text;
    for (int i = 1; i <= 3001; ++i) text += SetOf(Number(i));
    Admit(text);
    EXPECT_EQ(app.Data.SatCount, 3000);
    EXPECT_EQ(Output(), "ERROR: Already too many satellites (3000 satellites added before that)");
    EXPECT_TRUE(boxes.messages.empty());
    EXPECT_EQ(Box(), SetOf("03001"));
    EXPECT_EQ(Satellite(3000).OrbitNumber, 3000);
    EXPECT_EQ(app.Data.WorkingSat(), 3000);
    EXPECT_TRUE(app.Data.SatTable[0].Line1.empty());

    for (const TLEMode mode : {TLEMode::Add, TLEMode::AddAndUpdate, TLEMode::UpdateExisting}) {
        const std::string update = "NAME\r\n" + SetOf("00001", "09001.00000000");
        Admit(update, mode);
        EXPECT_EQ(app.Data.SatCount, 3000);
        EXPECT_EQ(Output(), "ERROR: Already too many satellites");
        EXPECT_EQ(Box(), update);
        EXPECT_EQ(Satellite(1).EpochText, "08264.51782528");
    }
}

// ---- Files and pastes

TEST(BoxText, EveryLineEndBecomesCarriageReturnAndLineFeed) {
    EXPECT_EQ(BoxText("a\nb\r\nc\rd"), "a\r\nb\r\nc\r\nd");
    EXPECT_EQ(BoxText("a \t \nb  \r\n  c  "), "a\r\nb\r\n  c  ");
    EXPECT_EQ(BoxText("\n\n"), "\r\n\r\n");
    EXPECT_EQ(BoxText("   \n"), "\r\n");
    EXPECT_EQ(BoxText("\xEF\xBB\xBFISS\n"), "ISS\r\n");
    EXPECT_EQ(BoxText(""), "");
}

TEST(BoxText, AFileThatWasWrittenThroughTwoConversionsHasTwoCarriageReturns) {
    EXPECT_EQ(BoxText("a \r\r\nb\r\r\n"), "a\r\nb\r\n");
    EXPECT_EQ(BoxText("a\r\rb\r"), "a\r\n\r\nb\r\n") << "without a line feed each is a line end";
    EXPECT_EQ(BoxText("\r\r\n\r\r\n"), "\r\n\r\n");
}

TEST_F(ElementSets, APasteWithBareLineFeedsIsAdmitted) {
    EnterTLEText(app, "0 ISS (ZARYA)         \n" + kIss1 + "\n" + kIss2 + "\n");
    CApplyTLEOrbit_click(app);
    ASSERT_EQ(app.Data.SatCount, 1);
    EXPECT_EQ(Satellite(1).Name, "ISS (ZARYA)");
    EXPECT_EQ(Box(), "");
}

TEST_F(ElementSets, APasteGoesBehindWhatWaits) {
    const std::string set = kIss1 + "\n" + kIss2;
    EXPECT_TRUE(PasteTLEText(app, "\xEF\xBB\xBFISS\n" + set));
    EXPECT_EQ(Box(), "ISS\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n");
    EXPECT_EQ(Output(), "1 element set pasted, press Add TLE or Update TLE");
    app.Main.TTLE.Text = std::string("mine");
    EXPECT_TRUE(PasteTLEText(app, "words about it\n" + set + "\n\n" + set + "\n"));
    EXPECT_TRUE(Box().starts_with("mine\r\nwords about it\r\n1 "));
    EXPECT_EQ(Output(), "2 element sets pasted, press Add TLE or Update TLE");
}

TEST_F(ElementSets, WhatIsNoElementSetIsNotPasted) {
    app.Main.TTLE.Text = std::string("mine");
    for (const std::string& text : {std::string(), std::string("hello"), kIss1, kIss2 + "\n" + kIss1,
                                    kIss1 + "\nwords\n" + kIss2, std::string(1, '\0')}) {
        EXPECT_FALSE(PasteTLEText(app, text));
        EXPECT_EQ(Box(), "mine");
        EXPECT_EQ(Output(), "ERROR: There is no element set in the clipboard");
    }
    EXPECT_FALSE(PasteTLEText(app, kIss1 + "\n" + kIss2 + std::string(kLargestTLEFile, ' ')));
    EXPECT_EQ(Box(), "mine");
    EXPECT_EQ(Output(), "ERROR: The text in the clipboard is too long");
}

struct ElementSetFiles : ElementSets {
    void Write(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }

    testing::TemporaryFolder folder;
    std::filesystem::path path = folder.Path() / "sets.tle";
};

TEST_F(ElementSetFiles, AFileFillsTheBoxAndWaitsForTheButton) {
    Write("ISS\n" + kIss1 + "\n" + kIss2 + "\n");
    EXPECT_TRUE(LoadTLEFile(app, path));
    EXPECT_EQ(Box(), "ISS\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n");
    EXPECT_EQ(app.Data.SatCount, 0);
    EXPECT_NE(Output().find(app.Main.CApplyTLEOrbit.Caption.Get()), std::string::npos) << Output();
}

TEST_F(ElementSetFiles, AFileThatCannotBeReadLeavesTheBoxAsItWas) {
    app.Main.TTLE.Text = std::string("mine");
    std::filesystem::create_directory(folder.Path() / "folder.tle");
    ASSERT_EQ(mkfifo((folder.Path() / "pipe.tle").c_str(), 0600), 0);
    Write(std::string(kLargestTLEFile + 1, ' '));
    const std::vector<std::pair<std::filesystem::path, std::string>> bad = {
        {folder.Path() / "missing.tle", "missing.tle: there is no such file."},
        {folder.Path() / "folder.tle", "folder.tle: it is a folder."},
        {folder.Path() / "pipe.tle", "pipe.tle: it is no plain file."},
        {"/dev/zero", "zero: it is no plain file."},
        {path, "sets.tle: it is larger than 32 MiB."}};
    for (const auto& [file, reason] : bad) {
        boxes.messages.clear();
        EXPECT_FALSE(LoadTLEFile(app, file));
        ASSERT_EQ(boxes.messages.size(), 1U);
        EXPECT_EQ(boxes.messages[0].text, "Error Loading File\n\n" + reason);
        EXPECT_EQ(Box(), "mine");
    }
}

TEST_F(ElementSetFiles, TheLargestFileIsStillRead) {
    Write(std::string(kLargestTLEFile, 'x'));
    EXPECT_TRUE(LoadTLEFile(app, path));
    EXPECT_EQ(Box().size(), std::size_t{32} * 1024 * 1024);
}

TEST_F(ElementSetFiles, AnyBytesGiveAMessageOrSatellitesAndNoHarm) {
    std::mt19937 random(20180120);
    const std::string good = "0 ISS\n" + kIss1 + "\n" + kIss2 + "\n";
    for (int round = 0; round < 300; ++round) {
        std::string bytes = good + good;
        const int changes = 1 + static_cast<int>(random() % 12);
        for (int i = 0; i < changes; ++i) bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
        bytes.resize(random() % (bytes.size() + 1));
        Write(bytes);
        ASSERT_TRUE(LoadTLEFile(app, path));
        app.Data.SatCount = 0;
        CApplyTLEOrbit_click(app);
        EXPECT_FALSE(Output().empty());
        EXPECT_TRUE(app.Data.SatCount <= 2 && app.Data.SatCount >= 0);
        for (int i = 1; i <= app.Data.SatCount; ++i) {
            EXPECT_LE(Satellite(i).Line1.size(), 69U);
            EXPECT_EQ(Satellite(i).Line1.front(), '1');
            EXPECT_EQ(Satellite(i).Line2.front(), '2');
        }
    }
}

}  // namespace
}  // namespace glintara
