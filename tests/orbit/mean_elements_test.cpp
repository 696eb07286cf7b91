#include "orbit/mean_elements.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/astro/element_fields.h"

namespace glintara {
namespace {

using enum MessageKey;

// Example of CCSDS 502.0-B, figures 4-1 and 4-2: GOES 9 as a message, and the two-line set that it was made from.
const std::vector<std::pair<MessageKey, std::string>> kGoes9 = {{ObjectName, "GOES 9"},
                                                                {ObjectId, "1995-025A"},
                                                                {CenterName, "EARTH"},
                                                                {TimeSystem, "UTC"},
                                                                {MeanElementTheory, "SGP/SGP4"},
                                                                {Epoch, "2007-064T10:34:41.4264"},
                                                                {MeanMotion, "1.00273272"},
                                                                {Eccentricity, "0.0005013"},
                                                                {Inclination, "3.0539"},
                                                                {RaOfAscNode, "81.7939"},
                                                                {ArgOfPericenter, "249.2363"},
                                                                {MeanAnomaly, "150.1602"},
                                                                {EphemerisType, "0"},
                                                                {ClassificationType, "U"},
                                                                {NoradCatId, "23581"},
                                                                {ElementSetNo, "0925"},
                                                                {RevAtEpoch, "4316"},
                                                                {BStar, "0.0001"},
                                                                {MeanMotionDot, "-0.00000113"},
                                                                {MeanMotionDDot, "0.0"}};
const std::string kGoes9Line1 = "1 23581U 95025A   07064.44075725 -.00000113  00000-0  10000-3 0  9250";
const std::string kGoes9Line2 = "2 23581   3.0539  81.7939 0005013 249.2363 150.1602  1.00273272 43169";

MessageRecord Goes9(const std::vector<std::pair<MessageKey, std::string>>& changes = {}) {
    MessageRecord record;
    for (const auto& [key, value] : kGoes9) record.Set(key, value);
    for (const auto& [key, value] : changes) record.Set(key, value);
    return record;
}

ElementLines LinesWith(const std::vector<std::pair<MessageKey, std::string>>& changes) {
    RecordFault fault;
    const std::optional<ElementLines> lines = LinesOfRecord(Goes9(changes), fault);
    EXPECT_TRUE(lines) << fault.reason;
    return lines.value_or(ElementLines());
}

std::string FieldWith(MessageKey key, const std::string& value, int line, ElementColumns columns) {
    const ElementLines lines = LinesWith({{key, value}});
    return std::string(ElementField(line == 1 ? lines.line1 : lines.line2, columns));
}

RecordFault FaultWith(const std::vector<std::pair<MessageKey, std::string>>& changes) {
    RecordFault fault;
    const std::optional<ElementLines> lines = LinesOfRecord(Goes9(changes), fault);
    EXPECT_FALSE(lines) << changes.at(0).second << ": " << lines->line1 << "|" << lines->line2;
    return fault;
}

TEST(LinesOfRecord, TheExampleOfTheStandard) {
    const ElementLines lines = LinesWith({});
    EXPECT_EQ(lines.name, "GOES 9");
    EXPECT_EQ(lines.line1, kGoes9Line1);
    EXPECT_EQ(lines.line2, kGoes9Line2);
}

// Vanguard 1 on 13 October 2020, as the public catalogue gave it in both forms.
TEST(LinesOfRecord, ASetThatTheCatalogueGaveInBothForms) {
    MessageRecord record;
    for (const auto& [key, value] :
         std::vector<std::pair<MessageKey, std::string>>{{ObjectName, "VANGUARD 1"},
                                                         {ObjectId, "1958-002B"},
                                                         {Epoch, "2020-10-13T04:52:48.472320"},
                                                         {MeanMotion, "10.84869164"},
                                                         {Eccentricity, ".1845686"},
                                                         {Inclination, "34.2443"},
                                                         {RaOfAscNode, "225.5254"},
                                                         {ArgOfPericenter, "162.2516"},
                                                         {MeanAnomaly, "205.2356"},
                                                         {EphemerisType, "0"},
                                                         {ClassificationType, "U"},
                                                         {NoradCatId, "5"},
                                                         {ElementSetNo, "999"},
                                                         {RevAtEpoch, "21814"},
                                                         {BStar, "-.22483E-4"},
                                                         {MeanMotionDot, "-1.6E-7"},
                                                         {MeanMotionDDot, "0"}})
        record.Set(key, value);
    RecordFault fault;
    const std::optional<ElementLines> lines = LinesOfRecord(record, fault);
    ASSERT_TRUE(lines) << fault.reason;
    EXPECT_EQ(lines->line1, "1 00005U 58002B   20287.20333880 -.00000016  00000-0 -22483-4 0  9998");
    EXPECT_EQ(lines->line2, "2 00005  34.2443 225.5254 1845686 162.2516 205.2356 10.84869164218149");
}

TEST(LinesOfRecord, EpochsRoundToTheNearestOfEightDigitsAndCarry) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"2018-01-20T10:54:52.602336", "18020.45477549"},
        {"2018-01-20T10:54:52.602336Z", "18020.45477549"},
        {" 2018-01-20 10:54:52.602336 ", "18020.45477549"},
        {"2018-01-20T12:00:00", "18020.50000000"},
        {"2018-01-20T00:00:00.000431999", "18020.00000000"},
        {"2018-01-20T00:00:00.000432", "18020.00000001"},
        {"2018-01-20T00:00:00.0004319999999999999999", "18020.00000000"},
        {"2018-01-31T23:59:59.9999", "18032.00000000"},
        {"2018-12-31T23:59:59.999568", "19001.00000000"},
        {"2018-12-31T23:59:59.999567", "18365.99999999"},
        {"2016-12-31T23:59:59.9999", "17001.00000000"},
        {"2016-12-31T23:59:60.500", "17001.00000579"},
        {"2016-02-29T00:00:00", "16060.00000000"},
        {"2016-03-01T00:00:00", "16061.00000000"},
        {"2017-03-01T00:00:00", "17060.00000000"},
        {"2000-12-31T00:00:00", "00366.00000000"},
        {"1957-10-04T19:26:24", "57277.81000000"},
        {"1951-01-01T00:00:00", "51001.00000000"},
        {"1999-365T12:00:00", "99365.50000000"},
        {"2050-12-31T00:00:00", "50365.00000000"},
    };
    for (const auto& [text, columns] : cases) EXPECT_EQ(FieldWith(Epoch, text, 1, kEpochText), columns) << text;
}

TEST(LinesOfRecord, WhatIsNoInstantIsTold) {
    for (const std::string text : {"yesterday",
                                   "2018-01-20",
                                   "2018-01-20T10:54",
                                   "2018-1-20T10:54:52",
                                   "2018-13-01T00:00:00",
                                   "2018-00-01T00:00:00",
                                   "2018-02-29T00:00:00",
                                   "1900-02-29T00:00:00",
                                   "2018-04-31T00:00:00",
                                   "2018-01-00T00:00:00",
                                   "2018-366T00:00:00",
                                   "2018-000T00:00:00",
                                   "2018-01-20T24:00:00",
                                   "2018-01-20T10:60:00",
                                   "2018-01-20T10:54:61",
                                   "2018-01-20T10:54:52+01:00",
                                   "2018-01-20T10:54:52.5x",
                                   "18020.45477549",
                                   "2018",
                                   "2018-",
                                   "-018-01-20T10:54:52",
                                   "2018-01-20T10:54:5\xC2\xB2"})
        EXPECT_EQ(FaultWith({{Epoch, text}}).reason, "EPOCH is no date and time") << text;
    // Two digits of a year mean 1951 to 2050 here.
    for (const std::string text :
         {"1950-12-31T00:00:00", "2051-01-01T00:00:00", "2050-12-31T23:59:59.9999", "0018-01-20T00:00:00"})
        EXPECT_EQ(FaultWith({{Epoch, text}}).reason, "EPOCH is not of the years 1951 to 2050") << text;
    EXPECT_EQ(FieldWith(Epoch, "1950-12-31T23:59:59.9999", 1, kEpochText), "51001.00000000");
}

TEST(LinesOfRecord, AnglesHaveFourDecimals) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"0", "  0.0000"},         {"-0", "  0.0000"},        {"-0.0", "  0.0000"},
        {"359.99994", "359.9999"}, {"359.99996", "  0.0000"}, {"360", "  0.0000"},
        {"-10.5", "349.5000"},     {"-0.00001", "  0.0000"},  {"-360", "  0.0000"},
        {"1e2", "100.0000"},       {"+7.25", "  7.2500"},     {" 99.99996 ", "100.0000"},
        {"9.99996", " 10.0000"},   {"5e-324", "  0.0000"},    {"116.67610000000002", "116.6761"}};
    for (const auto& [text, columns] : cases)
        for (const auto& [key, place] :
             {std::pair(RaOfAscNode, kRaanAngle), {ArgOfPericenter, kArgPerigee}, {MeanAnomaly, kMeanAnomaly}})
            EXPECT_EQ(FieldWith(key, text, 2, place), columns) << text;
    EXPECT_EQ(FieldWith(Inclination, "180", 2, kInclination), "180.0000");
    EXPECT_EQ(FieldWith(Inclination, "-0.0", 2, kInclination), "  0.0000");
    EXPECT_EQ(FieldWith(Inclination, "98.12346", 2, kInclination), " 98.1235");
}

TEST(LinesOfRecord, EccentricityAndMeanMotionRoundWithinTheirColumns) {
    EXPECT_EQ(FieldWith(Eccentricity, "0", 2, kEccentricity), "0000000");
    EXPECT_EQ(FieldWith(Eccentricity, "-0", 2, kEccentricity), "0000000");
    EXPECT_EQ(FieldWith(Eccentricity, "6.703e-4", 2, kEccentricity), "0006703");
    EXPECT_EQ(FieldWith(Eccentricity, "0.00000005001", 2, kEccentricity), "0000001");
    EXPECT_EQ(FieldWith(Eccentricity, "0.09999999", 2, kEccentricity), "1000000");
    EXPECT_EQ(LinesWith({{Eccentricity, "0.99999999"}, {MeanMotion, "0.05"}}).line2.substr(26, 7), "9999999");
    EXPECT_EQ(FieldWith(MeanMotion, "1.002732720", 2, kMeanMotion), " 1.00273272");
    EXPECT_EQ(FieldWith(MeanMotion, "9.999999996", 2, kMeanMotion), "10.00000000");
    EXPECT_EQ(FieldWith(MeanMotion, "15.721253915", 2, kMeanMotion).substr(0, 10), "15.7212539");
    EXPECT_EQ(FieldWith(MeanMotion, "0.05", 2, kMeanMotion), " 0.05000000");
}

TEST(LinesOfRecord, DragTermAndSecondDerivativeInAssumedDecimals) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"0", " 00000-0"},           {"-0", " 00000-0"},          {"0.0", " 00000-0"},
        {"0.0001", " 10000-3"},      {"-.11606E-4", "-11606-4"},  {"1.3161000000000002e-05", " 13161-4"},
        {"0.12345", " 12345+0"},     {"-0.5", "-50000+0"},        {"1.2345", " 12345+1"},
        {"0.0999994", " 99999-1"},   {"0.0999996", " 10000+0"},   {"0.99999999", " 10000+1"},
        {"0.000123454", " 12345-3"}, {"0.000123456", " 12346-3"}, {"123450000", " 12345+9"},
        {"999990000", " 99999+9"},   {"1e-9", " 10000-8"},        {"9.99996e-10", " 10000-8"},
        {"1e-10", " 10000-9"},       {"1e-11", " 01000-9"},       {"-1.26e-13", "-00013-9"},
        {"1e-14", " 00001-9"},       {"6e-15", " 00001-9"},       {"4e-15", " 00000-0"},
        {"-4e-15", " 00000-0"},      {"5e-324", " 00000-0"}};
    for (const auto& [text, columns] : cases) {
        EXPECT_EQ(FieldWith(MeanMotionDDot, text, 1, kMeanMotionDDot), columns) << text;
        if (text != "123450000" && text != "999990000") EXPECT_EQ(FieldWith(BStar, text, 1, kBStar), columns) << text;
    }
}

TEST(LinesOfRecord, FirstDerivativeHasEightDecimalsAsLongAsItIsBelowOne) {
    const std::vector<std::pair<std::string, std::string>> cases = {{"", " .00000000"},
                                                                    {"0", " .00000000"},
                                                                    {"-0.00000000001", " .00000000"},
                                                                    {"-1.6E-7", "-.00000016"},
                                                                    {"0.99999999", " .99999999"},
                                                                    {"0.999999999", " 1.0000000"},
                                                                    {"-1.234567891", "-1.2345679"},
                                                                    {"123.456", " 123.45600"}};
    for (const auto& [text, columns] : cases)
        EXPECT_EQ(FieldWith(MeanMotionDot, text, 1, kMeanMotionDot), columns) << text;
}

TEST(LinesOfRecord, NumbersBeyondFiveDigitsAreAlpha5) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"0", "00000"},      {"5", "00005"},      {"00005", "00005"},  {"25544.0", "25544"}, {"99999", "99999"},
        {"100000", "A0000"}, {"148493", "E8493"}, {"182931", "J2931"}, {"234018", "P4018"},  {"301928", "W1928"},
        {"339999", "Z9999"}, {"A0000", "A0000"},  {"A0001", "A0001"},  {" 270000 ", "T0000"}};
    for (const auto& [text, columns] : cases) {
        const ElementLines lines = LinesWith({{NoradCatId, text}});
        EXPECT_EQ(lines.line1.substr(2, 5), columns) << text;
        EXPECT_EQ(lines.line2.substr(2, 5), columns) << text;
    }
}

TEST(LinesOfRecord, HigherNumbersAreToldApart) {
    for (const std::string text : {"340000", "799500123", "1e300"}) {
        const RecordFault fault = FaultWith({{NoradCatId, text}});
        EXPECT_TRUE(fault.numberTooHigh) << text;
        EXPECT_EQ(fault.reason, "NORAD_CAT_ID is above 339999");
    }
    for (const std::string text : {"-1", "25544.5", "I0000", "A00001", "UNKNOWN", "0x10", "nan", "1e400", "a0000"})
        EXPECT_FALSE(FaultWith({{NoradCatId, text}}).numberTooHigh) << text;
}

TEST(LinesOfRecord, WhatAPositionNeedsMustBeThere) {
    for (const MessageKey key :
         {Epoch, MeanMotion, Eccentricity, Inclination, RaOfAscNode, ArgOfPericenter, MeanAnomaly, NoradCatId, BStar})
        for (const std::string nothing : {"", "  "})
            EXPECT_EQ(FaultWith({{key, nothing}}).reason, std::string(MessageKeyText(key)) + " is missing");
}

TEST(LinesOfRecord, WhatIsNoNumberIsTold) {
    for (const MessageKey key : {MeanMotion, Eccentricity, Inclination, RaOfAscNode, ArgOfPericenter, MeanAnomaly,
                                 BStar, MeanMotionDot, MeanMotionDDot})
        for (const std::string text : {"x", "1e400", "-1e400", "nan", "inf", "-inf", "0x1p3", "0,5", "1 2", "--1",
                                       "+-1", ".", "1e", "\xFF", "1.2.3"})
            EXPECT_EQ(FaultWith({{key, text}}).reason, std::string(MessageKeyText(key)) + " is no number") << text;
}

TEST(LinesOfRecord, WhatIsOutOfRangeIsTold) {
    const std::vector<std::tuple<MessageKey, std::string, std::string>> cases = {
        {MeanMotion, "0", "MEAN_MOTION is not above 0 and below 100"},
        {MeanMotion, "-1", "MEAN_MOTION is not above 0 and below 100"},
        {MeanMotion, "1e-9", "MEAN_MOTION is not above 0 and below 100"},
        {MeanMotion, "99.999999996", "MEAN_MOTION is not above 0 and below 100"},
        {MeanMotion, "1e300", "MEAN_MOTION is not above 0 and below 100"},
        {Eccentricity, "1.2", "ECCENTRICITY is not from 0 to below 1"},
        {Eccentricity, "1", "ECCENTRICITY is not from 0 to below 1"},
        {Eccentricity, "-0.1", "ECCENTRICITY is not from 0 to below 1"},
        {Inclination, "-1", "INCLINATION is not from 0 to 180 degrees"},
        {Inclination, "180.1", "INCLINATION is not from 0 to 180 degrees"},
        {RaOfAscNode, "361", "RA_OF_ASC_NODE is not from 0 to 360 degrees"},
        {ArgOfPericenter, "-361", "ARG_OF_PERICENTER is not from 0 to 360 degrees"},
        {MeanAnomaly, "1e300", "MEAN_ANOMALY is not from 0 to 360 degrees"},
        {BStar, "1e10", "BSTAR is too large"},
        {MeanMotionDDot, "-1e300", "MEAN_MOTION_DDOT is too large"},
        {MeanMotionDot, "1e10", "MEAN_MOTION_DOT is too large"}};
    for (const auto& [key, text, reason] : cases) EXPECT_EQ(FaultWith({{key, text}}).reason, reason) << text;
}

// Such elements, propagated by SGP4, give a wrong place without any sign of it.
TEST(LinesOfRecord, ElementsOfAnotherTheoryAreLeftOut) {
    EXPECT_EQ(FaultWith({{MeanElementTheory, "SGP4-XP"}}).reason, "MEAN_ELEMENT_THEORY is not SGP4");
    EXPECT_EQ(FaultWith({{MeanElementTheory, "DSST"}}).reason, "MEAN_ELEMENT_THEORY is not SGP4");
    EXPECT_EQ(FaultWith({{EphemerisType, "4"}}).reason, "EPHEMERIS_TYPE is not that of SGP4");
    EXPECT_EQ(FaultWith({{TimeSystem, "TAI"}}).reason, "TIME_SYSTEM is not UTC");
    EXPECT_EQ(FaultWith({{CenterName, "MARS BARYCENTER"}}).reason, "CENTER_NAME is not EARTH");
    for (const MessageKey key : {MeanElementTheory, EphemerisType, TimeSystem, CenterName})
        EXPECT_EQ(LinesWith({{key, ""}}).line1, kGoes9Line1);
    EXPECT_EQ(LinesWith({{EphemerisType, "2"}}).line1.substr(62, 1), "2");
}

TEST(LinesOfRecord, CountersAndMarksAreNoReasonToLeaveOut) {
    const ElementLines bare = LinesWith({{ElementSetNo, ""}, {RevAtEpoch, "-1"}, {ClassificationType, "xx"}});
    EXPECT_EQ(bare.line1.substr(7, 1), "U");
    EXPECT_EQ(bare.line1.substr(64, 4), "   0");
    EXPECT_EQ(bare.line2.substr(63, 5), "    0");
    const ElementLines full = LinesWith({{ElementSetNo, "12345"}, {RevAtEpoch, "100007"}, {ClassificationType, "S"}});
    EXPECT_EQ(full.line1.substr(7, 1), "S");
    EXPECT_EQ(full.line1.substr(64, 4), "2345");
    EXPECT_EQ(full.line2.substr(63, 5), "    7");
}

TEST(LinesOfRecord, DesignatorsAreThoseOfTheLines) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"1998-067A", "98067A  "},  {"1998-067ABC", "98067ABC"},
        {"2026-001AB", "26001AB "}, {"98067A", "98067A  "},
        {"", "        "},           {"UNKNOWN", "        "},
        {"1998-067", "        "},   {"1998-067ABCD", "        "},
        {"1998-067a", "        "},  {"19980-67A", "        "}};
    for (const auto& [text, columns] : cases) EXPECT_EQ(FieldWith(ObjectId, text, 1, kDesignator), columns) << text;
}

TEST(LinesOfRecord, NamesStayInTheirLineAndAreNotTakenForAnother) {
    const std::vector<std::pair<std::string, std::string>> cases = {{" ISS (ZARYA) ", "ISS (ZARYA)"},
                                                                    {"A\r\nB\tC", "A  B C"},
                                                                    {std::string("A\0B", 3), "A B"},
                                                                    {"1 ABC", "0 1 ABC"},
                                                                    {"0 ABC", "0 0 ABC"},
                                                                    {"1KUNS-PF", "1KUNS-PF"},
                                                                    {"", "1995-025A"},
                                                                    {"\x01\x02", "1995-025A"},
                                                                    {"\xC3\x89TOILE", "\xC3\x89TOILE"}};
    for (const auto& [text, name] : cases) EXPECT_EQ(LinesWith({{ObjectName, text}}).name, name) << text;
    EXPECT_EQ(LinesWith({{ObjectName, ""}, {ObjectId, ""}}).name, "OBJECT 23581");
}

TEST(LinesOfRecord, TheFaultOfARecordComesFirst) {
    MessageRecord record = Goes9({{NoradCatId, "400000"}});
    record.fault = "a quote is not closed";
    RecordFault fault;
    EXPECT_FALSE(LinesOfRecord(record, fault));
    EXPECT_EQ(fault.reason, "a quote is not closed");
    EXPECT_FALSE(fault.numberTooHigh);
}

TEST(MessageKeys, AreFoundByTheirSpelling) {
    for (std::size_t i = 0; i < kMessageKeys; ++i) {
        const auto key = static_cast<MessageKey>(i);
        EXPECT_EQ(FindMessageKey(MessageKeyText(key)), key);
    }
    for (const std::string text : {"", "epoch", "EPOCH ", "SEMIMAJOR_AXIS"}) EXPECT_FALSE(FindMessageKey(text)) << text;
}

}  // namespace
}  // namespace glintara
