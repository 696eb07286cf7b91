#include "orbit/element_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "orbit/element_sets.h"
#include "orbit/files.h"
#include "orbit/message_writer.h"

namespace glintara {
namespace {

using testing::FieldsOf;
using testing::JsonOf;
using testing::MessageFields;
using testing::NotationOf;
using testing::TableOf;
using testing::XmlOf;

// The space station on 20 September 2008, a set that many texts on the format print.
const std::string kIss1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
const std::string kIss2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
const std::string kIssText = "ISS (ZARYA)\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n";

MessageFields Iss() { return FieldsOf("ISS (ZARYA)", kIss1, kIss2); }

MessageFields With(MessageFields fields, const std::string& key, const std::string& value) {
    for (auto& [name, text] : fields)
        if (name == key) text = value;
    return fields;
}

std::string Replaced(std::string text, const std::string& part, const std::string& by) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + by.size()))
        text.replace(at, part.size(), by);
    return text;
}

void ExpectIss(const std::string& text, ElementForm form) {
    const ElementText read = ReadElementText(text);
    EXPECT_EQ(read.form, form) << text;
    EXPECT_EQ(read.text, kIssText) << text;
    EXPECT_EQ(read.sets, 1);
    EXPECT_EQ(LeftOutText(read), "");
}

std::vector<std::string> ExampleLines() {
    const std::optional<std::string> text =
        ReadWholeFile(GLINTARA_SOURCE_DIR "/data/examples/all.tle", kLargestTLEFile);
    const std::string box = BoxText(text.value_or(""));
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < box.size();) {
        const std::size_t end = box.find("\r\n", at);
        lines.push_back(box.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

// Some zeros bear a sign, and some numbers a zero in front; a message knows of neither.
bool IsCanonical(const std::string& line1, const std::string& line2) {
    const auto hasZeroInFront = [&line2](std::size_t at) { return line2[at] == '0' && line2[at + 1] != '.'; };
    const bool zeroInFront = std::ranges::any_of(std::array<std::size_t, 5>{8, 17, 34, 43, 63}, hasZeroInFront);
    const bool signedZero =
        line1.find(" 00000+0") != std::string::npos || line1.find("-.00000000") != std::string::npos;
    return !signedZero && !zeroInFront && line1.substr(62, 3) == "0  " && CheckTLELine(line1).checksumMatches &&
           CheckTLELine(line2).checksumMatches;
}

struct ExampleSets {
    std::vector<MessageFields> records;
    std::string text;  // of two lines
};

ExampleSets CanonicalExamples() {
    ExampleSets sets;
    const std::vector<std::string> lines = ExampleLines();
    for (std::size_t i = 0; i + 2 < lines.size(); i += 3) {
        if (!IsCanonical(lines[i + 1], lines[i + 2])) continue;
        sets.records.push_back(FieldsOf(lines[i], lines[i + 1], lines[i + 2]));
        sets.text += lines[i] + "\r\n" + lines[i + 1] + "\r\n" + lines[i + 2] + "\r\n";
    }
    return sets;
}

TEST(ElementText, RealSetsComeBackToTheByteFromEveryForm) {
    const ExampleSets sets = CanonicalExamples();
    ASSERT_GT(sets.records.size(), 920U);
    for (const auto& [text, form] : {std::pair(TableOf(sets.records), ElementForm::Table),
                                     {JsonOf(sets.records, false), ElementForm::Json},
                                     {JsonOf(sets.records, true), ElementForm::Json},
                                     {XmlOf(sets.records), ElementForm::Xml},
                                     {NotationOf(sets.records), ElementForm::Notation}}) {
        const ElementText read = ReadElementText(text);
        EXPECT_EQ(read.form, form);
        EXPECT_EQ(read.records, static_cast<int>(sets.records.size()));
        EXPECT_EQ(read.sets, read.records);
        EXPECT_EQ(LeftOutText(read), "");
        const auto [found, wanted] = std::ranges::mismatch(read.text, sets.text);
        EXPECT_TRUE(read.text == sets.text)
            << std::string(wanted - std::min<std::ptrdiff_t>(wanted - sets.text.begin(), 80), wanted) << "|";
    }
}

TEST(ElementText, TwoLineTextStaysAsItIs) {
    for (const std::string name : {"", "ISS\r\n", "[+] ISS\r\n", "{ISS}\r\n", "<ISS>\r\n", "EPOCH,MEAN_MOTION\r\n",
                                   "EPOCH = 1\r\n", "NAME, WITH, COMMAS\r\n", "\"ISS\"\r\n"}) {
        const std::string text = name + kIss1 + "\r\n" + kIss2 + "\r\n";
        const ElementText read = ReadElementText(text);
        EXPECT_FALSE(read.IsMessage()) << name;
        EXPECT_EQ(read.text, text);
        EXPECT_EQ(read.sets, 1);
    }
    EXPECT_EQ(ReadElementText("\xEF\xBB\xBFISS \n" + kIss1 + "\n" + kIss2).text, "ISS\r\n" + kIss1 + "\r\n" + kIss2);
}

TEST(ElementText, WhatIsNoElementSetHasNone) {
    for (const std::string text : {"", " ", "No GP data found", "{}", "[]", "[{}]", "{\"error\":\"not found\"}", "null",
                                   "<html><body>404</body></html>", "<!DOCTYPE html><html><title>EPOCH</title></html>",
                                   "<ndm></ndm>", "<", "{", "[", "\"", "EPOCH", "a,b,c\r\n1,2,3",
                                   "OBJECT_NAME,OBJECT_ID,EPOCH\r\n", "CCSDS_OEM_VERS = 2.0\nEPOCH = 1\n"}) {
        const ElementText read = ReadElementText(text);
        EXPECT_FALSE(read.IsMessage()) << text;
        EXPECT_EQ(read.sets, 0) << text;
        EXPECT_EQ(read.text, BoxText(text));
    }
}

// ---- Tables

TEST(ElementTable, LineEndsMarksAndSeparators) {
    const std::string table = TableOf({Iss()});
    ExpectIss(table, ElementForm::Table);
    ExpectIss(Replaced(table, "\r\n", "\n"), ElementForm::Table);
    ExpectIss(Replaced(table, "\r\n", "\r"), ElementForm::Table);
    ExpectIss("\xEF\xBB\xBF" + table, ElementForm::Table);
    ExpectIss("\r\n \n" + Replaced(table, "\r\n", "\r\n\r\n"), ElementForm::Table);
    ExpectIss(table.substr(0, table.size() - 2), ElementForm::Table);
    ExpectIss(Replaced(table, ",", ";"), ElementForm::Table);
    ExpectIss(Replaced(table, ",", "\t"), ElementForm::Table);
    ExpectIss(Replaced(table, ",", " , "), ElementForm::Table);
}

TEST(ElementTable, ColumnsStandInAnyOrderAmongOthers) {
    MessageFields fields = Iss();
    std::reverse(fields.begin(), fields.end());
    fields.insert(fields.begin() + 3, {"SEMIMAJOR_AXIS", "6730.96"});
    fields.insert(fields.begin(), {"COMMENT", "GENERATED"});
    fields.push_back({"", ""});
    fields.push_back({"EPOCH", "of the other kind"});  // the first of a name counts
    ExpectIss(TableOf({fields}), ElementForm::Table);
}

TEST(ElementTable, QuotedFieldsHoldSeparatorsAndQuotes) {
    std::string table = TableOf({With(Iss(), "OBJECT_NAME", "\"ISS, \"\"ZARYA\"\"\"")});
    EXPECT_EQ(ReadElementText(table).text, "ISS, \"ZARYA\"\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n");
    MessageFields fields = Iss();
    for (auto& [key, value] : fields) {
        key = "\"" + key + "\"";
        value = "\"" + value + "\"";
    }
    ExpectIss(TableOf({fields}), ElementForm::Table);
}

TEST(ElementTable, AShiftedLineIsToldAndTheOthersAreTaken) {
    const ElementText read = ReadElementText(
        TableOf({With(Iss(), "OBJECT_NAME", "ISS, ZARYA"), Iss(), With(Iss(), "OBJECT_NAME", "\"ISS"), Iss()}) +
        "CUT,1998-067A,2008-09-20T12:25");
    EXPECT_EQ(read.text, kIssText + kIssText);
    EXPECT_EQ(
        LeftOutText(read),
        "3 of 5 records left out: 3 cannot be used, the first is record 1 (ISS): the line has 18 fields, the first "
        "line 17");
}

TEST(ElementTable, FilesWrittenBehindOneAnother) {
    MessageFields other = Iss();
    std::reverse(other.begin(), other.end());
    EXPECT_EQ(ReadElementText(TableOf({Iss()}) + TableOf({other})).text, kIssText + kIssText);
}

// ---- JSON

TEST(ElementJson, ObjectsWhereverTheyStand) {
    const std::string object = JsonOf({Iss()}, false).substr(1, JsonOf({Iss()}, false).size() - 2);
    ExpectIss("[" + object + "]", ElementForm::Json);
    ExpectIss("\xEF\xBB\xBF\n " + object + "\n", ElementForm::Json);
    ExpectIss("{\"total\": 1, \"member\": [" + object + "]}", ElementForm::Json);
    ExpectIss("[[" + object + "]]", ElementForm::Json);
    EXPECT_EQ(ReadElementText("{\"a\":" + object + ",\"b\":" + object + "}").text, kIssText + kIssText);
    const std::string other = object.substr(0, object.size() - 1) + ",\"data\":0}";
    EXPECT_EQ(ReadElementText("{\"omm\":[" + other + "," + other + "," + other + "]}").sets, 3);
}

TEST(ElementJson, ARecordInItsParts) {
    const MessageFields fields = Iss();
    const auto part = [&fields](std::size_t first, std::size_t last) {
        std::string text;
        for (std::size_t i = first; i < last; ++i)
            text += (text.empty() ? "" : ",") + ("\"" + fields[i].first + "\":\"" + fields[i].second + "\"");
        return "{" + text + "}";
    };
    const std::string omm = "{\"header\":{\"ORIGINATOR\":\"x\"},\"body\":{\"segment\":{\"metadata\":" + part(0, 2) +
                            ",\"data\":{\"meanElements\":" + part(2, 9) + ",\"tleParameters\":" + part(9, 17) + "}}}}";
    ExpectIss("{\"ndm\":{\"omm\":" + omm + "}}", ElementForm::Json);
    EXPECT_EQ(ReadElementText("{\"ndm\":{\"omm\":[" + omm + "," + omm + "]}}").text, kIssText + kIssText);
}

TEST(ElementJson, ValuesOfOtherKindsCountAsMissing) {
    std::string json = Replaced(JsonOf({Iss()}, true), "\"51.6416\"", "null");
    EXPECT_EQ(LeftOutText(ReadElementText(json)),
              "1 of 1 record left out: 1 cannot be used, record 1 (ISS (ZARYA)): INCLINATION is missing");
    json = Replaced(JsonOf({Iss()}, true), "\"51.6416\"", "[51.6416]");
    EXPECT_EQ(ReadElementText(json).unusable, 1);
    json = Replaced(JsonOf({Iss()}, true), "\"51.6416\"", "true");
    EXPECT_NE(LeftOutText(ReadElementText(json)).find("INCLINATION is no number"), std::string::npos);
}

TEST(ElementJson, ATextThatBreaksOffGivesWhatWasWhole) {
    const std::string json = JsonOf({Iss(), Iss(), Iss()}, false);
    const std::string part = json.substr(0, json.find("\"BSTAR\"", json.size() / 2) + 12);
    const ElementText read = ReadElementText(part);
    EXPECT_EQ(read.text, kIssText);
    EXPECT_EQ(read.records, 2);
    EXPECT_EQ(read.unusable, 1);
    EXPECT_EQ(read.damage, "this is no JSON at character " + std::to_string(part.size() + 1));
    EXPECT_EQ(LeftOutText(read), "1 of 2 records left out: 1 cannot be used, record 2 (ISS (ZARYA)): " + read.damage);
    const std::string bad = JsonOf({With(Iss(), "BSTAR", "x")}, true);
    const ElementText two = ReadElementText(bad.substr(0, bad.size() - 1) + "," + part.substr(1));
    EXPECT_EQ(LeftOutText(two),
              "2 of 3 records left out: 2 cannot be used, the first is record 1 (ISS (ZARYA)): BSTAR is "
              "no number; " +
                  two.damage);
}

TEST(ElementJson, WhatIsNoJsonCostsItsObject) {
    const std::string json = JsonOf({Iss()}, false);
    const std::string object = json.substr(1, json.size() - 2);
    for (const std::string bad :
         {"1e400", "NaN", "nan", "0x33", "007", "-", "1.", "\"\\q\"", "\"\n\"", "\"\xC3\"", ""}) {
        const std::string damaged = Replaced(object, "\"REV_AT_EPOCH\":56353,", "\"REV_AT_EPOCH\":" + bad + ",");
        const ElementText read = ReadElementText("[" + object + "," + damaged + "," + object + "," + damaged + "]");
        EXPECT_EQ(read.text, kIssText + kIssText) << bad;
        EXPECT_EQ(read.unusable, 2) << bad;
        EXPECT_TRUE(read.firstUnusable.starts_with("record 2 (ISS (ZARYA)): this is no JSON at character ")) << bad;
    }
    const std::string late = "[" + object + "," + Replaced(object, "56353", "x") + "," + Replaced(object, "56353", "y");
    EXPECT_EQ(ReadElementText(late).damage, "this is no JSON at character " + std::to_string(late.rfind('y') + 1));
    EXPECT_EQ(ReadElementText(object + "\n" + object + "\n").text, kIssText + kIssText) << "one object to a line";
    EXPECT_EQ(ReadElementText("[" + object + "," + object).damage,
              "this is no JSON at character " + std::to_string(2 * object.size() + 3));
}

TEST(ElementJson, NestingHasAnEnd) {
    for (const std::string open : {"[", "{\"a\":", "[{\"a\":"}) {
        std::string text;
        while (text.size() < 8'000'000) text += open;
        EXPECT_FALSE(ReadElementText(text).IsMessage());
        const ElementText read = ReadElementText("[" + JsonOf({Iss()}, false).substr(1, 1'000'000).append(",") + text);
        EXPECT_EQ(read.sets, 1);
    }
    const ElementText read = ReadElementText(Replaced(JsonOf({Iss()}, false), "}]", "}," + std::string(100, '[')));
    EXPECT_EQ(LeftOutText(read), "the text breaks off behind record 1: it is nested too deeply");
}

// ---- XML

TEST(ElementXml, PrefixesEntitiesAndOtherElements) {
    const std::string xml = XmlOf({Iss()});
    ExpectIss(xml, ElementForm::Xml);
    ExpectIss("\xEF\xBB\xBF" + xml, ElementForm::Xml);
    ExpectIss(Replaced(Replaced(xml, "<omm", "<n:omm"), "</omm", "</n:omm"), ElementForm::Xml);
    ExpectIss(Replaced(Replaced(xml, "<EPOCH", "<x:EPOCH units=\"d\""), "</EPOCH", "</x:EPOCH"), ElementForm::Xml);
    ExpectIss(Replaced(xml, "<data>", "<data><COMMENT>EPOCH</COMMENT><!-- x --><userDefined>1</userDefined>"),
              ElementForm::Xml);
    EXPECT_TRUE(
        ReadElementText(Replaced(xml, "ISS (ZARYA)", "A &amp; B &#65; <![CDATA[<C>]]>")).text.starts_with("A & B A"));
    ExpectIss(xml.substr(xml.find("<omm"), xml.find("</ndm>") - xml.find("<omm")), ElementForm::Xml);
}

TEST(ElementXml, ATextThatBreaksOffGivesWhatWasWhole) {
    const std::string xml = XmlOf({Iss(), Iss()});
    const ElementText read = ReadElementText(xml.substr(0, xml.rfind("<BSTAR>") + 10));
    EXPECT_EQ(read.text, kIssText);
    EXPECT_EQ(read.records, 2);
    EXPECT_FALSE(read.damage.empty());
}

TEST(ElementXml, EntitiesOfItsOwnAreNotExpanded) {
    std::string bomb = "<!DOCTYPE ndm [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c <= 'z'; ++c) {
        bomb += std::string("<!ENTITY ") + c + " \"";
        for (int i = 0; i < 10; ++i) bomb += std::string("&") + static_cast<char>(c - 1) + ";";
        bomb += "\">";
    }
    const std::string xml = XmlOf({With(Iss(), "OBJECT_NAME", "&z;")});
    const ElementText read = ReadElementText(bomb + "]>" + xml.substr(xml.find("<ndm")));
    EXPECT_EQ(read.text, "&z;\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n");
}

TEST(ElementXml, NestingCostsItsBytesAlone) {
    std::string deep;
    while (deep.size() < 4'000'000) deep += "<omm>";
    const ElementText read = ReadElementText(deep);
    EXPECT_EQ(read.sets, 0);
    EXPECT_FALSE(read.damage.empty());
}

// ---- Notation

TEST(ElementNotation, CommentsUnitsAndBrackets) {
    const std::string notation = NotationOf({Iss()});
    ExpectIss(notation, ElementForm::Notation);
    ExpectIss("COMMENT one\r\nCOMMENT two\r\n" + Replaced(notation, "\n", "\r\n"), ElementForm::Notation);
    ExpectIss(Replaced(Replaced(notation, " = ", "="), "15.72125391", "15.72125391 [rev/day]"), ElementForm::Notation);
    EXPECT_TRUE(
        ReadElementText(Replaced(notation, "ISS (ZARYA)", "IRIDIUM 6 [-]")).text.starts_with("IRIDIUM 6 [-]\r\n"));
}

// ---- What is told

TEST(LeftOut, TellsNumbersAndReasons) {
    std::vector<MessageFields> records = {Iss(), With(Iss(), "NORAD_CAT_ID", "270000"),
                                          With(With(Iss(), "NORAD_CAT_ID", "340000"), "OBJECT_NAME", "FAR")};
    EXPECT_EQ(LeftOutText(ReadElementText(TableOf(records))),
              "1 of 3 records left out: 1 has a number above 339999, FAR (340000)");
    records.push_back(With(With(Iss(), "NORAD_CAT_ID", "350000"), "OBJECT_NAME", "FARTHER"));
    records.push_back(With(Iss(), "MEAN_MOTION", ""));
    for (const std::string& text : {TableOf(records), JsonOf(records, true), XmlOf(records), NotationOf(records)}) {
        const ElementText read = ReadElementText(text);
        EXPECT_EQ(read.sets, 2);
        EXPECT_EQ(read.records, 5);
        EXPECT_NE(read.text.find("\r\n1 T0000U 98067A "), std::string::npos);
        EXPECT_EQ(LeftOutText(read),
                  "3 of 5 records left out: 2 have numbers above 339999, the first is FAR (340000); 1 cannot be used, "
                  "record 5 (ISS (ZARYA)): MEAN_MOTION is missing");
    }
}

TEST(LeftOut, ShowsNamesAsTheyMayBeShown) {
    const std::string name = std::string("\x1B[2J") + std::string(200, 'x');
    const ElementText read = ReadElementText(TableOf({With(With(Iss(), "OBJECT_NAME", name), "NORAD_CAT_ID",
                                                           "9\x07"
                                                           "99999")}));
    EXPECT_EQ(LeftOutText(read), "1 of 1 record left out: 1 cannot be used, record 1 (?[2J" + std::string(36, 'x') +
                                     "): NORAD_CAT_ID is no number");
}

// ---- UTF-16

enum class ByteOrder { LittleEndian, BigEndian };

std::string Utf16Of(const std::u16string& text, ByteOrder order) {
    std::string bytes;
    for (const char16_t unit : u"\uFEFF" + text) {
        const std::array<char, 2> pair = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        if (order == ByteOrder::LittleEndian)
            bytes.append({pair[0], pair[1]});
        else
            bytes.append({pair[1], pair[0]});
    }
    return bytes;
}

std::u16string Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

TEST(ElementUtf16, TextsInEveryFormAreRead) {
    const std::string table = Replaced(TableOf({Iss()}), ",", "\t");  // as a spreadsheet saves it
    for (const ByteOrder order : {ByteOrder::LittleEndian, ByteOrder::BigEndian}) {
        ExpectIss(Utf16Of(Wide(table), order), ElementForm::Table);
        ExpectIss(Utf16Of(Wide(JsonOf({Iss()}, true)), order), ElementForm::Json);
        ExpectIss(Utf16Of(Wide(Replaced(XmlOf({Iss()}), "UTF-8", "UTF-16")), order), ElementForm::Xml);
        ExpectIss(Utf16Of(Wide(NotationOf({Iss()})), order), ElementForm::Notation);
        ExpectIss(Utf16Of(Wide(kIssText), order), ElementForm::TwoLine);
    }
}

TEST(ElementUtf16, CharactersOfEveryLengthComeThrough) {
    for (const ByteOrder order : {ByteOrder::LittleEndian, ByteOrder::BigEndian}) {
        EXPECT_EQ(TextOfUtf16(Utf16Of(u"a\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0001F6F0\U0010FFFF", order)),
                  "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF0\x9F\x9B\xB0\xF4\x8F\xBF\xBF");
        const std::u16string halves = {u'a', 0xD800, u'b', 0xDC00, 0xD83D, 0xD83D, 0xDEF0, 0xDBFF};
        EXPECT_EQ(TextOfUtf16(Utf16Of(halves, order)),
                  "a\xEF\xBF\xBD"
                  "b\xEF\xBF\xBD\xEF\xBF\xBD\xF0\x9F\x9B\xB0\xEF\xBF\xBD");
        EXPECT_EQ(TextOfUtf16(Utf16Of(u"ab", order) + "x"), "ab") << "half a unit at the end";
    }
}

TEST(ElementUtf16, OtherTextsAreLeftAlone) {
    for (const std::string text : {"", "a", "\xFF\xFE",
                                   "\xFF\xFE"
                                   "a",
                                   "\xFE\xFF",
                                   "\xFF\xFE"
                                   "AB",
                                   "\xFE\xFF"
                                   "AB",
                                   "\xEF\xBB\xBF"
                                   "ab"})
        EXPECT_FALSE(TextOfUtf16(text)) << text;
    EXPECT_FALSE(TextOfUtf16(std::string("\xFF\xFE\0\0", 4)));
    const std::string set = "\xFF\xFESAT\r\n" + kIss1 + "\r\n" + kIss2 + "\r\n";
    EXPECT_EQ(ReadElementText(set).text, set);
}

// ---- Any bytes

TEST(ElementText, BytesOfOtherEncodingsStayInTheirName) {
    for (const std::string name : {"CAF\xE9", "\xFF\xFE", "\xC3", "\xF0\x9F\x9B\xB0"}) {
        const std::vector<MessageFields> records = {With(Iss(), "OBJECT_NAME", name), Iss()};
        for (const std::string& text : {TableOf(records), JsonOf(records, false), XmlOf(records), NotationOf(records)})
            // JSON is UTF-8 by definition.
            EXPECT_EQ(ReadElementText(text).sets, text[0] == '[' && name[0] != '\xF0' ? 1 : 2) << text;
    }
}

TEST(ElementText, DamagedMessagesGiveSoundLinesAndNoHarm) {
    std::mt19937 random(20260722);
    const std::vector<MessageFields> records = {Iss(), With(Iss(), "NORAD_CAT_ID", "100001"), Iss()};
    const std::vector<std::string> good = {TableOf(records), JsonOf(records, false), JsonOf(records, true),
                                           XmlOf(records), NotationOf(records)};
    const std::string signs = "\"{}[]<>,:;=-+.eE019/&!\r\n\t \\";
    int taken = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string text = good[random() % good.size()];
        const int changes = static_cast<int>(random() % 8);
        for (int i = 0; i < changes; ++i) {
            const std::size_t at = random() % text.size();
            switch (random() % 4) {
                case 0:
                    text[at] = static_cast<char>(random() % 256);
                    break;
                case 1:
                    text[at] = signs[random() % signs.size()];
                    break;
                case 2:
                    text.erase(at, random() % 20);
                    break;
                default:
                    text.insert(at, text.substr(random() % text.size(), random() % 40));
            }
            if (text.empty()) text = "x";
        }
        if (random() % 4 == 0) text.resize(random() % (text.size() + 1));
        const ElementText read = ReadElementText(text);
        if (!read.IsMessage()) continue;
        EXPECT_EQ(read.sets + read.LeftOut(), read.records);
        taken += read.sets;
        // Every set stands in three lines, of which the program reads two as they were written.
        std::size_t at = 0;
        for (int set = 0; set < read.sets; ++set) {
            at = read.text.find("\r\n", at) + 2;
            const std::string line1 = read.text.substr(at, 69);
            const std::string line2 = read.text.substr(at + 71, 69);
            EXPECT_TRUE(CheckTLELine(line1).checksumMatches) << line1;
            EXPECT_TRUE(CheckTLELine(line2).checksumMatches) << line2;
            EXPECT_EQ(line1.substr(2, 5), line2.substr(2, 5));
            ElementLine1 read1;
            ElementLine2 read2;
            EXPECT_EQ(ReadElementLine1(line1, read1), ElementFault::None) << line1;
            EXPECT_EQ(ReadElementLine2(line2, read2), ElementFault::None) << line2;
            at += 142;
        }
        EXPECT_EQ(at, read.text.size());
    }
    EXPECT_GT(taken, 2000);
}

}  // namespace
}  // namespace glintara
