#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <string>

#include "engine/astro/angle_text.h"
#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/support.h"

namespace glintara {
namespace {

TEST(PlainNumberText, WritesNumbersAsPeopleDo) {
    EXPECT_EQ(PlainNumberText(0.5), "0.5");
    EXPECT_EQ(PlainNumberText(-0.25), "-0.25");
    EXPECT_EQ(PlainNumberText(42), "42");
    EXPECT_EQ(PlainNumberText(-100), "-100");
    EXPECT_EQ(PlainNumberText(0), "0");
    EXPECT_EQ(PlainNumberText(-0.0), "0");
    EXPECT_EQ(PlainNumberText(123456.789), "123456.789");
    EXPECT_EQ(PlainNumberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(PlainNumberText(1.0 / 3), "0.333333333333333");
}

TEST(PlainNumberText, UsesNoExponentInTheMiddleRange) {
    EXPECT_EQ(PlainNumberText(1e15), "1000000000000000");
    EXPECT_EQ(PlainNumberText(-1e15), "-1000000000000000");
    EXPECT_EQ(PlainNumberText(123456789012345), "123456789012345");
    EXPECT_EQ(PlainNumberText(999999999999999.9), "1000000000000000");
    EXPECT_EQ(PlainNumberText(1e-15), "0.000000000000001");
    EXPECT_EQ(PlainNumberText(0.000012345), "0.000012345");
    EXPECT_EQ(PlainNumberText(0.000999999999999999), "0.000999999999999999");
}

TEST(PlainNumberText, UsesAnExponentBeyondIt) {
    EXPECT_EQ(PlainNumberText(1e20), "1e+20");
    EXPECT_EQ(PlainNumberText(-2.5e-16), "-2.5e-16");
    EXPECT_EQ(PlainNumberText(1.5e15), "1.5e+15");
    EXPECT_EQ(PlainNumberText(std::numeric_limits<double>::max()), "1.79769313486232e+308");
    EXPECT_EQ(PlainNumberText(std::numeric_limits<double>::denorm_min()), "4.94065645841247e-324");
}

TEST(PlainNumberText, NamesWhatIsNoNumber) {
    EXPECT_EQ(PlainNumberText(test::kNotANumber), "nan");
    EXPECT_EQ(PlainNumberText(test::kInfinity), "inf");
    EXPECT_EQ(PlainNumberText(-test::kInfinity), "-inf");
}

TEST(PlainNumberText, ReadsBackToFifteenDigits) {
    test::Sampler sample(21);
    for (int i = 0; i < 3000; ++i) {
        const double value = sample.Between(-1, 1) * std::pow(10, sample.Between(-30, 30));
        EXPECT_NEAR(LeadingNumber(PlainNumberText(value)), value, std::abs(value) * 5e-15);
    }
}

TEST(CutNumberText, CutsDownwardsAndNeverRounds) {
    EXPECT_EQ(CutNumberText(2.999, 2), "2.99");
    EXPECT_EQ(CutNumberText(0.129, 1), "0.1");
    EXPECT_EQ(CutNumberText(7.9, 0), "7");
    EXPECT_EQ(CutNumberText(-1.21, 1), "-1.3");
    EXPECT_EQ(CutNumberText(5, 3), "5");
}

TEST(CutNumberText, BearsAnyNumber) {
    EXPECT_EQ(CutNumberText(1e300, 20), "1e+300");
    EXPECT_EQ(CutNumberText(1.5, 400), "1.5");
    EXPECT_EQ(CutNumberText(1.5, -400), "1.5");
    EXPECT_EQ(CutNumberText(test::kNotANumber, 2), "nan");
}

TEST(LeadingNumber, TakesTheNumberAtTheFront) {
    EXPECT_EQ(LeadingNumber("12.5 km"), 12.5);
    EXPECT_EQ(LeadingNumber("   -7"), -7);
    EXPECT_EQ(LeadingNumber("\t+3.25"), 3.25);
    EXPECT_EQ(LeadingNumber(".5"), 0.5);
    EXPECT_EQ(LeadingNumber("-.5"), -0.5);
    EXPECT_EQ(LeadingNumber("5."), 5);
    EXPECT_EQ(LeadingNumber("1e3x"), 1000);
    EXPECT_EQ(LeadingNumber("1E-2"), 0.01);
    EXPECT_EQ(LeadingNumber("1,5"), 1);
    EXPECT_EQ(LeadingNumber("12 34"), 12);
    EXPECT_EQ(LeadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, AnUnfinishedExponentIsNoneOfTheNumber) {
    EXPECT_EQ(LeadingNumber("4e"), 4);
    EXPECT_EQ(LeadingNumber("4e+"), 4);
    EXPECT_EQ(LeadingNumber("4ex"), 4);
}

TEST(LeadingNumber, TextWithoutANumberIsZero) {
    for (const char* text : {"", " ", "abc", "-", "+", ".", "-.", "+-5", "--5", "e5", ".e5", "inf", "nan", "-inf"})
        EXPECT_EQ(LeadingNumber(text), 0) << text;
    EXPECT_EQ(LeadingNumber("0x10"), 0);
}

TEST(LeadingNumber, IsAlwaysFinite) {
    EXPECT_EQ(LeadingNumber("1e999"), 0);
    EXPECT_EQ(LeadingNumber("-1e999"), 0);
    EXPECT_EQ(LeadingNumber("1e-999"), 0);
    EXPECT_EQ(LeadingNumber(std::string(5000, '9')), 0);
    EXPECT_EQ(LeadingNumber("0." + std::string(5000, '0') + "1"), 0);
    EXPECT_EQ(LeadingNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(LeadingNumber, ReadsNoFurtherThanItsView) {
    const std::string line = "123456789";
    EXPECT_EQ(LeadingNumber(std::string_view(line).substr(2, 3)), 345);
}

TEST(StrictNumber, TakesTheWholeTextOrNothing) {
    EXPECT_EQ(StrictNumber(" -12.5e1 "), -125);
    EXPECT_EQ(StrictNumber("+4"), 4);
    EXPECT_EQ(StrictNumber("0"), 0);
    for (const char* text : {"", "  ", "12 km", "1 2", "1,5", "nan", "inf", "1e999", "4e", "+-4", ".", "0x10"})
        EXPECT_FALSE(StrictNumber(text).has_value()) << text;
}

/// A locale in which numbers have a comma and grouped thousands.
class CommaLocale : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumberText, IsTheSameUnderEveryLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaLocale));
    const std::string text = PlainNumberText(12345.5);
    const double number = LeadingNumber("12345.5");
    std::locale::global(before);
    EXPECT_EQ(text, "12345.5");
    EXPECT_EQ(number, 12345.5);
}

TEST(HoursToText, CutsItsFields) {
    EXPECT_EQ(HoursToText(0), "00h00'00\"");
    // 8 h 5 min 9.7 s, 15 degrees an hour.
    EXPECT_EQ(HoursToText((8 + 5 / 60.0 + 9.7 / 3600) * 15 * test::kDegree), "08h05'09\"");
    EXPECT_EQ(HoursToText((23 + 59 / 60.0 + 59.999 / 3600) * 15 * test::kDegree), "23h59'59\"");
    // Right ascension of Sirius, 6 h 45 min 8.9 s, is 101.2871 degrees.
    EXPECT_EQ(HoursToText(101.2871 * test::kDegree), "06h45'08\"");
}

TEST(HoursToText, OfANegativeAngleFollowsTheFloors) {
    // -0.1 rad are -0.38197 h: hour -1, and 37 min 4.9 s after it.
    EXPECT_EQ(HoursToText(-0.1), "-1h37'04\"");
}

TEST(DegreesToText, CutsItsFields) {
    EXPECT_EQ(DegreesToText(0), "000°00'00\"");
    EXPECT_EQ(DegreesToText((45 + 30 / 60.0 + 9.5 / 3600) * test::kDegree), "045°30'09\"");
    EXPECT_EQ(DegreesToText(-(7 + 4 / 60.0 + 59.9 / 3600) * test::kDegree), "-007°04'59\"");
    EXPECT_EQ(DegreesToText(-0.5 * test::kDegree), "-000°30'00\"");
}

TEST(DegreesToText, OfMinusAnEighthOfATurnIsMinusFortyFive) {
    const std::string text = DegreesToText(-kPi / 4);
    EXPECT_TRUE(text == "-045°00'00\"" || text == "-044°59'59\"") << text;
}

TEST(AngleText, BearsWhatIsNoNumber) {
    for (const double x : test::kHostile) {
        EXPECT_EQ(HoursToText(x).back(), '"');
        EXPECT_EQ(DegreesToText(x).back(), '"');
    }
}

TEST(DateText, HasTheDayInFront) {
    EXPECT_EQ(DateText(2018, 1, 20), "20/01/2018");
    EXPECT_EQ(DateText(33, 12, 5), "05/12/0033");
    EXPECT_EQ(DateText(12018, 10, 9), "09/10/12018");
}

TEST(DateText, HasTheSignOfTheYearBeforeItsDigits) {
    EXPECT_EQ(DateText(0, 3, 9), "09/03/0000");
    EXPECT_EQ(DateText(-5, 3, 9), "09/03/-0005");
    EXPECT_EQ(DateText(-4712, 1, 1), "01/01/-4712");
    EXPECT_EQ(DateText(-12018, 10, 9), "09/10/-12018");
}

TEST(TimeText, KeepsFractionsAsTheyAre) {
    EXPECT_EQ(TimeText(5, 7, 9), "05:07:09");
    EXPECT_EQ(TimeText(23, 59, 5.25), "23:59:05.25");
    EXPECT_EQ(TimeText(10, 0, 12.5), "10:00:12.5");
}

TEST(JDToText, IsDateAndTimeOfDay) {
    EXPECT_EQ(JDToText(2458138.75), "20/01/2018 06h00'00\"");
    // 0.3 s into the second, so that the cut is no matter of rounding.
    EXPECT_EQ(JDToText(2458138.75 + 754.3 / 86400), "20/01/2018 06h12'34\"");
    EXPECT_EQ(JDToText(1842713.0), "27/01/0333 12h00'00\"");
}

TEST(JDToText, KeepsFourDigitsOfTheYear) {
    EXPECT_EQ(JDToText(DateToJD({12018, 1, 20, 6, 0, 0})), "20/01/2018 06h00'00\"");
}

}  // namespace
}  // namespace glintara
