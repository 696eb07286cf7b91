#include "core/box_numbers.h"

#include <gtest/gtest.h>

namespace glintara {
namespace {

double Lat(std::string_view text) { return ReadBoxAngle(text, 'N', 'S').value; }
double Lon(std::string_view text) { return ReadBoxAngle(text, 'E', 'W').value; }
bool IsWhole(std::string_view text) { return ReadBoxAngle(text, 'N', 'S').whole; }

TEST(BoxNumber, TakesEitherDecimalMark) {
    EXPECT_EQ(ReadBoxNumber("240.5").value, 240.5);
    EXPECT_EQ(ReadBoxNumber("240,5").value, 240.5);
    EXPECT_TRUE(ReadBoxNumber(" 240,5 ").whole);
    EXPECT_EQ(ReadBoxNumber("-6,5").value, -6.5);
    EXPECT_EQ(ReadBoxNumber("1e2").value, 100);
}

TEST(BoxNumber, TextWithoutANumberIsNought) {
    for (const char* text : {"", "   ", "abc", "nan", "inf", "-", "1e999", "-1e999", ",", "N"}) {
        EXPECT_EQ(ReadBoxNumber(text).value, 0) << text;
        EXPECT_FALSE(ReadBoxNumber(text).whole) << text;
        EXPECT_EQ(Lat(text), 0) << text;
        EXPECT_EQ(Lon(text), 0) << text;
    }
}

TEST(BoxNumber, WhatFollowsTheNumberIsPassedOverAndTold) {
    EXPECT_EQ(ReadBoxNumber("12abc").value, 12);
    EXPECT_FALSE(ReadBoxNumber("12abc").whole);
    EXPECT_EQ(Lat("12abc"), 12);
    EXPECT_FALSE(IsWhole("12abc"));
    EXPECT_EQ(ReadBoxNumber("1,234.5").value, 1) << "a comma among the thousands is no decimal mark";
    EXPECT_FALSE(ReadBoxNumber("1,234.5").whole);
}

TEST(BoxAngle, ReadsDegreesAsTheyAreAlwaysRead) {
    EXPECT_EQ(Lat("48.2082"), 48.2082);
    EXPECT_EQ(Lat("48,2082"), 48.2082);
    EXPECT_EQ(Lat("-33.9"), -33.9);
    EXPECT_EQ(Lat("+1e1"), 10);
    EXPECT_EQ(Lon("12e1"), 120) << "an exponent, not twelve degrees east";
    EXPECT_EQ(Lat("95"), 95) << "no range is looked at";
    EXPECT_TRUE(IsWhole("48.2082"));
}

TEST(BoxAngle, ReadsDegreesMinutesAndSeconds) {
    const double vienna = 48 + 12 / 60.0 + 30 / 3600.0;
    for (const char* text : {"48 12 30 N", "48 12 30", "N 48 12 30", "48:12:30", "48°12'30\"N", "48°12′30″ n",
                             "48 12.5", "48 12,5 N", "+48°12'30\"", "  48  12  30  "}) {
        EXPECT_NEAR(Lat(text), vienna, 1e-12) << text;
        EXPECT_TRUE(IsWhole(text)) << text;
    }
    EXPECT_NEAR(Lat("48 12 30 S"), -vienna, 1e-12);
    EXPECT_NEAR(Lat("-48 12 30"), -vienna, 1e-12);
    EXPECT_NEAR(Lat("\u221248 12 30"), -vienna, 1e-12);
    EXPECT_NEAR(Lat("-0 30"), -0.5, 1e-12) << "the sign of nought counts";
    EXPECT_NEAR(Lon("70.6 W"), -70.6, 1e-12);
    EXPECT_NEAR(Lon("w70 36"), -70.6, 1e-12);
    EXPECT_NEAR(Lon("12E"), 12, 1e-12);
}

TEST(BoxAngle, WhatIsNoSuchAngleIsReadAsFarAsItGoes) {
    EXPECT_EQ(Lat("48 75"), 48) << "there is no minute 75";
    EXPECT_FALSE(IsWhole("48 75"));
    EXPECT_EQ(Lat("48.5 30"), 48.5) << "only the last part has a fraction";
    EXPECT_FALSE(IsWhole("48.5 30"));
    EXPECT_EQ(Lat("48 E"), 48) << "the letter of the other circle";
    EXPECT_FALSE(IsWhole("48 E"));
    EXPECT_FALSE(IsWhole("48 12 30 15"));
}

TEST(BoxAngle, IsWrittenWithItsLetter) {
    EXPECT_EQ(AngleText(48 + 12 / 60.0 + 29.5 / 3600.0, 'N', 'S'), "48°12'29.5\" N");
    EXPECT_EQ(AngleText(-70.6, 'E', 'W'), "70°36'00.0\" W");
    EXPECT_EQ(AngleText(0, 'N', 'S'), "0°00'00.0\" N");
    EXPECT_EQ(AngleText(9.99999999, 'N', 'S'), "10°00'00.0\" N") << "rounding carries";
}

}  // namespace
}  // namespace glintara
