#include "orbit/download_answer.h"

#include <gtest/gtest.h>

#include <string>

#include "orbit/download_fixture.h"
#include "orbit/message_writer.h"

namespace glintara {
namespace {

using testing::SetOf;

// The same satellite in the forms that the catalogue gives.
const std::string kTable =
    "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,MEAN_ANOMALY,"
    "EPHEMERIS_TYPE,CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,REV_AT_EPOCH,BSTAR,MEAN_MOTION_DOT,"
    "MEAN_MOTION_DDOT\n"
    "ISS (ZARYA),1998-067A,2008-09-20T12:25:40.104192,15.72125391,0.0006703,51.6416,247.4627,130.5360,325.0288,0,U,"
    "25544,292,56353,-0.11606E-4,-0.00002182,0\n";

TEST(DownloadAnswer, TwoLinesComeAsTheBoxTakesThem) {
    const DownloadAnswer answer = ReadAnswer("\xEF\xBB\xBF" + SetOf("CAF\xC3\x89", "25544"), 200);
    ASSERT_TRUE(answer.Usable());
    EXPECT_EQ(answer.elements.substr(0, 8), "CAF\xC3\x89\r\n1");
    EXPECT_EQ(answer.leftOut, "");
    EXPECT_FALSE(answer.damaged);
}

TEST(DownloadAnswer, ATableOfMeanElementsIsRead) {
    const DownloadAnswer answer = ReadAnswer(kTable, 200);
    ASSERT_TRUE(answer.Usable()) << answer.problem;
    EXPECT_NE(answer.elements.find("ISS (ZARYA)\r\n1 25544U 98067A   08264.51782528"), std::string::npos)
        << answer.elements;
}

TEST(DownloadAnswer, JsonIsReadAndWhatHasNoTwoLinesIsTold) {
    const std::string record =
        R"({"OBJECT_NAME":"A","OBJECT_ID":"1998-067A","EPOCH":"2026-11-20T12:25:40.104192","MEAN_MOTION":15.7,)"
        R"("ECCENTRICITY":0.0006703,"INCLINATION":51.6,"RA_OF_ASC_NODE":247.4,"ARG_OF_PERICENTER":130.5,)"
        R"("MEAN_ANOMALY":325.0,"BSTAR":0.0001,"NORAD_CAT_ID":)";
    const DownloadAnswer answer = ReadAnswer("[" + record + "100000}," + record + "340000}]", 200);
    ASSERT_TRUE(answer.Usable()) << answer.problem;
    EXPECT_NE(answer.elements.find("1 A0000"), std::string::npos);
    EXPECT_NE(answer.leftOut.find("1 of 2 records left out"), std::string::npos) << answer.leftOut;
    EXPECT_FALSE(answer.damaged);

    const DownloadAnswer none = ReadAnswer("[" + record + "340000}]", 200);
    EXPECT_FALSE(none.Usable());
    EXPECT_NE(none.problem.find("339999"), std::string::npos) << none.problem;
    const DownloadAnswer cut = ReadAnswer("[" + record + "100000}," + record.substr(0, 50), 200);
    EXPECT_TRUE(cut.Usable());
    EXPECT_TRUE(cut.damaged);
}

TEST(DownloadAnswer, XmlAndNotationAreRead) {
    const testing::MessageFields fields = testing::FieldsOf("ISS", testing::kStation1, testing::kStation2);
    const std::string lines = "ISS\r\n" + testing::kStation1 + "\r\n" + testing::kStation2 + "\r\n";
    for (const std::string& text : {testing::XmlOf({fields}), testing::NotationOf({fields})}) {
        const DownloadAnswer answer = ReadAnswer(text, 200);
        EXPECT_EQ(answer.elements, lines) << answer.problem;
        EXPECT_FALSE(answer.damaged);
    }
    const std::string two = testing::XmlOf({fields, fields});
    const DownloadAnswer cut = ReadAnswer(two.substr(0, two.rfind("<BSTAR>") + 10), 200);
    EXPECT_EQ(cut.elements, lines);
    EXPECT_TRUE(cut.damaged);
    EXPECT_NE(cut.leftOut, "");
}

TEST(DownloadAnswer, AnAnswerInUtf16IsRead) {
    std::string wide = "\xFF\xFE";
    for (const char c : kTable) wide.append({c, '\0'});
    EXPECT_EQ(ReadAnswer(wide, 200).elements, ReadAnswer(kTable, 200).elements);
    EXPECT_TRUE(ReadAnswer(wide, 200).Usable());
}

TEST(DownloadAnswer, WhatIsNoElementSetIsCalledWhatItIs) {
    EXPECT_EQ(ReadAnswer("", 200).problem, "the answer is empty");
    EXPECT_EQ(ReadAnswer(" \r\n\n", 200).problem, "the answer is empty");
    EXPECT_EQ(ReadAnswer("<!DOCTYPE html><p>Welcome", 200).problem, "the answer is a web page, not element sets");
    EXPECT_EQ(ReadAnswer("\n <HTML><pre>" + SetOf("X", "25544") + "</pre>", 200).problem,
              "the answer is a web page, not element sets");
    EXPECT_EQ(ReadAnswer("No GP data found\n", 200).problem,
              "the answer holds no element sets: it says \"No GP data found\"");
    EXPECT_EQ(ReadAnswer("<feed/>", 200).problem, "the answer holds no element sets: it says \"<feed/>\"");
    EXPECT_EQ(ReadAnswer(testing::kStation1 + "\n", 200).problem.substr(0, 32), "the answer holds no element sets");
    for (const char* text : {"", "<!DOCTYPE html>", "No GP data found"})
        EXPECT_FALSE(ReadAnswer(text, 200).Usable()) << text;
}

// Half of a number is another number.
TEST(DownloadAnswer, ATextThatBreaksOffInALineIsRefused) {
    const std::string whole = SetOf("A", "00001") + SetOf("B", "00002");
    EXPECT_TRUE(ReadAnswer(whole, 200).Usable());
    EXPECT_TRUE(ReadAnswer(whole.substr(0, whole.size() - 1), 200).Usable()) << "no line end behind the last line";
    for (std::size_t less = 2; less < 140; ++less) {
        const std::string cut = whole.substr(0, whole.size() - less);
        if (cut.ends_with('\n')) continue;
        EXPECT_FALSE(ReadAnswer(cut, 200).Usable()) << less;
    }
    EXPECT_EQ(ReadAnswer(whole.substr(0, whole.size() - 9), 200).problem,
              "the answer breaks off in the middle of a line");
    const std::size_t drag = kTable.find("-0.11606E-4");
    EXPECT_FALSE(ReadAnswer(kTable.substr(0, drag + 5), 200).Usable());
    EXPECT_TRUE(ReadAnswer(kTable.substr(0, kTable.size() - 1), 200).Usable());
}

TEST(DownloadAnswer, AnErrorIsNoAnswerWhateverItsText) {
    const DownloadAnswer gone = ReadAnswer(SetOf("X", "25544"), 404);
    EXPECT_FALSE(gone.Usable());
    EXPECT_EQ(gone.problem.substr(0, 34), "the server has no such file (404):");
    EXPECT_EQ(ReadAnswer("", 404).problem, "the server has no such file (404)");
    EXPECT_EQ(ReadAnswer("<html>Not found", 410).problem, "the server has no such file (410)");
    EXPECT_EQ(ReadAnswer("GP data has not updated", 403).problem,
              "the server refuses to give it (403): it says \"GP data has not updated\"");
    EXPECT_EQ(ReadAnswer("", 500).problem, "the server cannot give it (500)");
    EXPECT_TRUE(ReadAnswer(SetOf("X", "25544"), 399).Usable());
    EXPECT_FALSE(ReadAnswer(SetOf("X", "25544"), 400).Usable());
}

TEST(DownloadAnswer, TellsWhenFurtherQuestionsWouldBringNothing) {
    EXPECT_TRUE(ReadAnswer("Invalid query: \"GROUP=raduga\" (GROUP \"raduga\" not found)", 200).last);
    EXPECT_TRUE(ReadAnswer("GROUP \"raduga\" does not exist", 404).last);
    EXPECT_TRUE(ReadAnswer("", 429).last);
    EXPECT_TRUE(ReadAnswer("", 503).last);
    EXPECT_FALSE(ReadAnswer("No GP data found", 200).last);
    EXPECT_FALSE(ReadAnswer("ContentNotFound", 404).last);
    EXPECT_FALSE(ReadAnswer("<html>The page does not exist", 404).last);
    EXPECT_FALSE(ReadAnswer("", 500).last);
}

TEST(DownloadAnswer, TellsWhenTheServerHasNothingNewer) {
    const std::string words = "GP data has not updated since your last successful download of GROUP=geo.";
    EXPECT_TRUE(ReadAnswer(words, 403).unchanged);
    EXPECT_FALSE(ReadAnswer(words, 403).Usable());
    EXPECT_FALSE(ReadAnswer(words, 403).last) << "without a kept text another form is asked for";
    EXPECT_FALSE(ReadAnswer(words, 404).unchanged);
    EXPECT_FALSE(ReadAnswer("Forbidden", 403).unchanged);
    EXPECT_FALSE(ReadAnswer("<html>This page has not updated", 403).unchanged);
}

TEST(DownloadAnswer, WordsOfTheServerAreShownShortAndWithoutControlCharacters) {
    const std::string shown = ReadAnswer("a\x01\x1B[31mb", 200).problem;
    EXPECT_EQ(shown.find('\x01'), std::string::npos);
    EXPECT_EQ(shown.find('\x1B'), std::string::npos);
    std::string longText;
    for (int i = 0; i < 100; ++i) longText += "\xC3\xA9\xC3\xA8x";
    const std::string cut = ReadAnswer(longText, 200).problem;
    EXPECT_LT(cut.size(), 200U);
    EXPECT_EQ(cut.substr(cut.size() - 4), "...\"");
    // No character is cut through: what stands before the dots is a whole one.
    const std::string last = cut.substr(0, cut.size() - 4);
    EXPECT_TRUE(last.ends_with("x") || last.ends_with("\xC3\xA9") || last.ends_with("\xC3\xA8"));
}

}  // namespace
}  // namespace glintara
