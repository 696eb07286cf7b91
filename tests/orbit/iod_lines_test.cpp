#include "orbit/iod_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <numbers>
#include <string>
#include <vector>

namespace glintara {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kHourAngle = std::numbers::pi / 12;

// Figures of the columns, by hand.
constexpr const char* kLine = "25544 98 067A   2701 G 20180120174233508 17 35 0546125-012345 27";

std::string Columns(const std::string& line, std::size_t first, std::size_t last) {
    return line.substr(first - 1, last - first + 1);
}

std::string WithColumns(std::string line, std::size_t first, const std::string& text) {
    return line.replace(first - 1, text.size(), text);
}

IODPoint Read(const std::string& line) {
    IODPoint point;
    EXPECT_TRUE(IODTextToPoint(line, point)) << line << ": " << IODLineFault(line);
    return point;
}

IODPoint StationPoint() {
    IODPoint point;
    point.ObjectNumber = 25544;
    point.LaunchYear = 98;
    point.LaunchNumber = 67;
    point.LaunchSuffix = {'A', ' ', ' '};
    point.StationCode = 2701;
    point.Condition = 'G';
    point.Year = 2018;
    point.Month = 1;
    point.Day = 20;
    point.Hour = 17;
    point.Minute = 42;
    point.Second = 33.5081;
    point.TimeAccuracy = 0.1;
    point.PositionAccuracy = 0.25 * kDegree;
    point.RightAscension = (5 + 46.1251 / 60) * kHourAngle;
    point.Declination = -1.23449 * kDegree;
    return point;
}

/// A point whose time is known that well, and the two digits of its line.
std::string TimeDigits(double seconds) {
    IODPoint point = StationPoint();
    point.TimeAccuracy = seconds;
    return Columns(IODPointToText(point), 42, 43);
}

std::string PlaceDigits(double degrees) {
    IODPoint point = StationPoint();
    point.PositionAccuracy = degrees * kDegree;
    return Columns(IODPointToText(point), 63, 64);
}

std::string SecondDigits(double second) {
    IODPoint point = StationPoint();
    point.Second = second;
    return Columns(IODPointToText(point), 36, 40);
}

std::string RightAscensionDigits(double hours) {
    IODPoint point = StationPoint();
    point.RightAscension = hours * kHourAngle;
    return Columns(IODPointToText(point), 48, 54);
}

std::string DeclinationDigits(double degrees) {
    IODPoint point = StationPoint();
    point.Declination = degrees * kDegree;
    return Columns(IODPointToText(point), 55, 61);
}

// Writing.

TEST(IODPointToText, PutsEveryFieldIntoItsColumns) { EXPECT_EQ(IODPointToText(StationPoint()), kLine); }

TEST(IODPointToText, ANewPointHasTheDefaults) {
    EXPECT_EQ(IODPointToText(IODPoint()), "00000 00 000    0000 G 00000000000000000 17 35 0000000+000000 27");
}

TEST(IODPointToText, NumbersArePaddedWithZeros) {
    IODPoint point = StationPoint();
    point.ObjectNumber = 5;
    point.LaunchYear = 8;
    point.LaunchNumber = 2;
    point.LaunchSuffix = {'B', 'C', 'D'};
    point.StationCode = 70;
    point.Month = 3;
    point.Second = 4.25;
    const std::string line = IODPointToText(point);
    EXPECT_EQ(Columns(line, 1, 20), "00005 08 002BCD 0070");
    EXPECT_EQ(Columns(line, 24, 40), "20180320174204250");
    EXPECT_EQ(line.size(), 64U);
}

TEST(IODPointToText, ANumberTooWideKeepsItsLastDigits) {
    IODPoint point = StationPoint();
    point.LaunchYear = 1998;
    point.StationCode = 12345;
    EXPECT_EQ(Columns(IODPointToText(point), 7, 20), "98 067A   2345");
}

// Cut to five digits, 125544 would be another satellite. Values of the Alpha-5 table published with the catalogue.
TEST(IODPointToText, CatalogueNumbersOfSixDigitsAreAlpha5) {
    IODPoint point = StationPoint();
    point.ObjectNumber = 148493;
    EXPECT_EQ(Columns(IODPointToText(point), 1, 6), "E8493 ");
    EXPECT_EQ(Read(IODPointToText(point)).ObjectNumber, 148493);
    point.ObjectNumber = 270001;
    EXPECT_EQ(Columns(IODPointToText(point), 1, 6), "T0001 ");
}

TEST(IODPointToText, ThousandthsOfTheSecondAreCut) {
    EXPECT_EQ(SecondDigits(33.5089999), "33508");
    EXPECT_EQ(SecondDigits(0.0009999), "00000");
    EXPECT_EQ(SecondDigits(59.9999), "59999");
    EXPECT_EQ(SecondDigits(59.9999999999999), "59999");
    EXPECT_EQ(SecondDigits(60.25), "60250");  // a leap second
}

TEST(IODPointToText, ThousandthsOfTheMinuteAreRoundedAndDoNotCarry) {
    EXPECT_EQ(RightAscensionDigits(5 + 46.1254 / 60), "0546125");
    EXPECT_EQ(RightAscensionDigits(5 + 46.1256 / 60), "0546126");
    EXPECT_EQ(RightAscensionDigits(5 + 46.9994 / 60), "0546999");
    EXPECT_EQ(RightAscensionDigits(5 + 46.9996 / 60), "0546000");
}

TEST(IODPointToText, TenThousandthsOfTheDegreeAreRoundedAndDoNotCarry) {
    EXPECT_EQ(DeclinationDigits(12.34564), "+123456");
    EXPECT_EQ(DeclinationDigits(12.34566), "+123457");
    EXPECT_EQ(DeclinationDigits(-12.34566), "-123457");
    EXPECT_EQ(DeclinationDigits(12.99996), "+120000");
    EXPECT_EQ(DeclinationDigits(90), "+900000");
    EXPECT_EQ(DeclinationDigits(-0.00001), "-000000");
}

TEST(IODPointToText, ANegativeRightAscensionIsRaisedByATurn) {
    EXPECT_EQ(RightAscensionDigits(-1), "2300000");
    EXPECT_EQ(RightAscensionDigits(-0.25), "2345000");
}

TEST(IODPointToText, AWholeTurnIsNoTwentyFourthHour) {
    EXPECT_EQ(RightAscensionDigits(24 - 1e-14), "0000000");
    EXPECT_EQ(RightAscensionDigits(-1e-15), "0000000");
    EXPECT_EQ(RightAscensionDigits(26), "0200000");
}

// The published rule: M times ten to the power of X - 8.
TEST(IODPointToText, AccuracyOfTheTimeIsRoundedToItsDigit) {
    EXPECT_EQ(TimeDigits(0.1), "17");
    EXPECT_EQ(TimeDigits(0.5), "57");
    EXPECT_EQ(TimeDigits(1), "18");
    EXPECT_EQ(TimeDigits(0.25), "37");
    EXPECT_EQ(TimeDigits(0.96), "18");
    EXPECT_EQ(TimeDigits(0.001), "15");
    EXPECT_EQ(TimeDigits(45), "59");
    EXPECT_EQ(TimeDigits(84), "89");
    EXPECT_EQ(TimeDigits(3e-9), "30");  // finer than there are digits for
}

TEST(IODPointToText, AccuracyOfThePlaceIsCutToItsDigit) {
    EXPECT_EQ(PlaceDigits(0.25), "27");
    EXPECT_EQ(PlaceDigits(0.05), "56");
    EXPECT_EQ(PlaceDigits(0.0999), "96");
    EXPECT_EQ(PlaceDigits(1), "18");
    EXPECT_EQ(PlaceDigits(1 / 3600.0), "24");
    EXPECT_EQ(PlaceDigits(89.9), "89");
    EXPECT_EQ(PlaceDigits(0.1 * (1 - 1e-14)), "17");  // 0.1, but for the wear of its radians
}

TEST(IODPointToText, NinetyOrMoreIsNotKnown) {
    EXPECT_EQ(TimeDigits(90), "99");
    EXPECT_EQ(TimeDigits(89.999), "99");  // rounds to 90
    EXPECT_EQ(TimeDigits(1e9), "99");
    EXPECT_EQ(PlaceDigits(90), "99");
    EXPECT_EQ(PlaceDigits(180), "99");
    EXPECT_EQ(TimeDigits(std::numeric_limits<double>::quiet_NaN()), "99");
    EXPECT_EQ(PlaceDigits(-1), "99");
    EXPECT_EQ(TimeDigits(0), "00");
}

TEST(IODPointToText, IsHarmlessWithNumbersThatAreNone) {
    IODPoint point = StationPoint();
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300, -1e300}) {
        point.Second = point.RightAscension = point.Declination = point.PositionAccuracy = point.TimeAccuracy = value;
        EXPECT_EQ(IODPointToText(point).size(), 64U);
    }
}

// Reading.

TEST(IODTextToPoint, ReadsEveryField) {
    const IODPoint point = Read(kLine);
    EXPECT_EQ(point.ObjectNumber, 25544);
    EXPECT_EQ(point.LaunchYear, 98);
    EXPECT_EQ(point.LaunchNumber, 67);
    EXPECT_EQ(point.LaunchSuffix, (std::array<char, 3>{'A', ' ', ' '}));
    EXPECT_EQ(point.StationCode, 2701);
    EXPECT_EQ(point.Condition, 'G');
    EXPECT_EQ(point.Year, 2018);
    EXPECT_EQ(point.Month, 1);
    EXPECT_EQ(point.Day, 20);
    EXPECT_EQ(point.Hour, 17);
    EXPECT_EQ(point.Minute, 42);
    EXPECT_EQ(point.Second, 33.508);
    EXPECT_DOUBLE_EQ(point.TimeAccuracy, 0.1);
    EXPECT_NEAR(point.PositionAccuracy, 0.2 * kDegree, 1e-14);
    EXPECT_NEAR(point.RightAscension, (5 + 46.125 / 60) * kHourAngle, 1e-13);
    EXPECT_NEAR(point.Declination, -1.2345 * kDegree, 1e-13);
}

// In the layout of the format's published description, each kind of entry that it knows with these angles.
TEST(IODTextToPoint, LinesOfTheFormatAreWrittenBackTheSame) {
    for (const char* line : {
             "23794 96 010A   2701 G 20040506012614270 17 35 1100114-184298 38",
             "28888 05 042A   2420 E 20110124193146520 16 35 0516437+384213 37",
             "00005 58 002B   0433 F 20031231235959999 57 35 2359999-900000 18",
             "A0001 24 101ABC 9999 P 20240229000000000 18 35 0000000+900000 15",
             "00000 00 000    0001 B 19990101120000000 99 35 1200500-000000 99",
             "12345 80 123AB  6226 T 20180120045901004 25 35 1859001+005959 84",
             "12345 80 123AB  6226 f 20180120045960500 00 35 1859001-005959 00",
         })
        EXPECT_EQ(IODPointToText(Read(line)), line);
}

TEST(IODTextToPoint, WhatStandsBehindTheColumnsIsNoPartOfThePoint) {
    EXPECT_EQ(Read(std::string(kLine) + " S+045 05  12.345"), Read(kLine));
}

TEST(IODTextToPoint, DigitsStandAtTheirPlaces) {
    EXPECT_EQ(Read(WithColumns(kLine, 36, "334  ")).Second, 33.4);
    EXPECT_EQ(Read(WithColumns(kLine, 36, "33   ")).Second, 33);
    EXPECT_EQ(Read(WithColumns(kLine, 36, "     ")).Second, 0);
    EXPECT_NEAR(Read(WithColumns(kLine, 48, "05461  ")).RightAscension, (5 + 46.1 / 60) * kHourAngle, 1e-13);
    EXPECT_NEAR(Read(WithColumns(kLine, 55, "-012   ")).Declination, -1.2 * kDegree, 1e-13);
    EXPECT_EQ(IODPointToText(Read(WithColumns(kLine, 36, "334  "))), WithColumns(kLine, 36, "33400"));
}

TEST(IODTextToPoint, BlankNumbersAreUnknown) {
    const std::string line = WithColumns(WithColumns(WithColumns(kLine, 1, "               "), 42, "  "), 63, "  ");
    const IODPoint point = Read(line);
    EXPECT_EQ(point.ObjectNumber, 0);
    EXPECT_EQ(point.LaunchYear, 0);
    EXPECT_EQ(point.LaunchNumber, 0);
    EXPECT_GE(point.TimeAccuracy, 90);
    EXPECT_EQ(Columns(IODPointToText(point), 42, 64), "99 35 0546125-012345 99");
    EXPECT_EQ(Read(WithColumns(kLine, 1, " 5560")).ObjectNumber, 5560);
    EXPECT_EQ(Read(WithColumns(kLine, 1, "5560 ")).ObjectNumber, 5560);
}

struct WrongLine {
    std::string line;
    std::string fault;
};

TEST(IODTextToPoint, OtherLinesAreRefusedAndThePointStays) {
    const std::vector<WrongLine> wrong = {
        {"", "it has 0 columns, not 64"},
        {std::string(kLine).substr(0, 63), "it has 63 columns, not 64"},
        {"1 25544U 98067A   18020.50000000  .00000000  00000-0  00000-0 0  9999", "column 6 must be blank"},
        {WithColumns(kLine, 45, "2"),
         "the angle format in column 45 must be 3: right ascension and declination as HHMMmmm+DDdddd"},
        {WithColumns(kLine, 45, "7"),
         "the angle format in column 45 must be 3: right ascension and declination as HHMMmmm+DDdddd"},
        {WithColumns(kLine, 46, "0"), "the equinox in column 46 must be 5: J2000"},
        {WithColumns(kLine, 46, " "), "the equinox in column 46 must be 5: J2000"},
        {WithColumns(kLine, 10, "\t"), "it holds signs other than plain letters, digits and blanks"},
        {WithColumns(kLine, 13, "\xC3\x84"), "it holds signs other than plain letters, digits and blanks"},
        {WithColumns(kLine, 1, "2x544"), "the object number in columns 1 to 5 must be a number"},
        {WithColumns(kLine, 1, "I0001"), "the object number in columns 1 to 5 must be a number"},
        {WithColumns(kLine, 7, "a8"), "the launch year in columns 7 to 8 must be a number"},
        {WithColumns(kLine, 10, "6-7"), "the launch number in columns 10 to 12 must be a number"},
        {WithColumns(kLine, 17, "27 1"), "the station in columns 17 to 20 must be a number"},
        {WithColumns(kLine, 24, "201 "), "the year in columns 24 to 27 must be 0 to 9999"},
        {WithColumns(kLine, 28, "13"), "the month in columns 28 to 29 must be 1 to 12"},
        {WithColumns(kLine, 28, "00"), "the month in columns 28 to 29 must be 1 to 12"},
        {WithColumns(kLine, 28, "0230"), "the day in columns 30 to 31 must be 1 to 28"},
        {WithColumns(kLine, 32, "24"), "the hour in columns 32 to 33 must be 0 to 23"},
        {WithColumns(kLine, 34, "60"), "the minute in columns 34 to 35 must be 0 to 59"},
        {WithColumns(kLine, 36, "61"), "the second in columns 36 to 40 must be less than 61"},
        {WithColumns(kLine, 36, "3 508"), "the second in columns 36 to 40 must be digits"},
        {WithColumns(kLine, 42, "1 "), "the accuracy of the time in columns 42 to 43 must be two digits"},
        {WithColumns(kLine, 42, "0-"), "the accuracy of the time in columns 42 to 43 must be two digits"},
        {WithColumns(kLine, 48, "24"), "the right ascension in columns 48 to 54 must be less than 24 hours"},
        {WithColumns(kLine, 50, "60"), "the right ascension in columns 48 to 54 must be less than 24 hours"},
        {WithColumns(kLine, 48, "       "), "the right ascension in columns 48 to 54 must be digits"},
        {WithColumns(kLine, 55, " "), "the sign of the declination in column 55 must be + or -"},
        {WithColumns(kLine, 56, "900001"), "the declination in columns 56 to 61 must be 90 degrees or less"},
        {WithColumns(kLine, 56, "1     "), "the declination in columns 56 to 61 must be digits"},
        {WithColumns(kLine, 63, "x7"), "the accuracy of the place in columns 63 to 64 must be two digits"},
        {std::string(kLine) + "S", "column 65 must be blank"},
    };
    for (const WrongLine& entry : wrong) {
        IODPoint point = StationPoint();
        EXPECT_FALSE(IODTextToPoint(entry.line, point)) << entry.line;
        EXPECT_EQ(point, StationPoint()) << entry.line;
        EXPECT_EQ(IODLineFault(entry.line), entry.fault) << entry.line;
    }
    EXPECT_EQ(IODLineFault(kLine), "");
}

TEST(IODTextToPoint, NoDamagedLineIsTakenForAnother) {
    // Whatever stands in one column, the line is refused, or comes back with the same columns elsewhere.
    const std::string line = kLine;
    for (std::size_t column = 0; column < line.size(); ++column)
        for (int c = 0; c < 256; ++c) {
            std::string damaged = line;
            damaged[column] = static_cast<char>(c);
            IODPoint point;
            if (!IODTextToPoint(damaged, point)) continue;
            IODPoint again;
            const std::string written = IODPointToText(point);
            ASSERT_TRUE(IODTextToPoint(written, again)) << damaged;
            EXPECT_EQ(IODPointToText(again), written) << damaged;
        }
}

// Read and written again.

void ExpectStays(const std::string& line) {
    const std::string again = IODPointToText(Read(line));
    ASSERT_EQ(again, line);
}

std::string Padded(int number, std::size_t width) {
    std::string text = std::to_string(number);
    return std::string(width - text.size(), '0') + text;
}

TEST(IODLines, EverySecondOfADayStays) {
    for (int second = 0; second < 86400; ++second) {
        const std::string time = Padded(second / 3600, 2) + Padded(second / 60 % 60, 2) + Padded(second % 60, 2);
        ASSERT_NO_FATAL_FAILURE(ExpectStays(WithColumns(kLine, 32, time + "000")));
        ASSERT_NO_FATAL_FAILURE(ExpectStays(WithColumns(kLine, 32, time + Padded(second * 7 % 1000, 3))));
    }
}

TEST(IODLines, EveryThousandthOfAMinuteStays) {
    for (int thousandths = 0; thousandths < 61000; ++thousandths)
        ASSERT_NO_FATAL_FAILURE(ExpectStays(WithColumns(kLine, 36, Padded(thousandths, 5))));
}

TEST(IODLines, EveryMinuteOfRightAscensionStays) {
    for (int minute = 0; minute < 1440; ++minute)
        for (const int thousandths : {0, 1, 2, 499, 500, 501, 998, 999})
            ASSERT_NO_FATAL_FAILURE(ExpectStays(
                WithColumns(kLine, 48, Padded(minute / 60, 2) + Padded(minute % 60, 2) + Padded(thousandths, 3))));
}

TEST(IODLines, EveryDegreeOfDeclinationStays) {
    for (int degree = 0; degree < 90; ++degree)
        for (const int parts : {0, 1, 2, 4999, 5000, 5001, 9998, 9999})
            for (const char* sign : {"+", "-"})
                ASSERT_NO_FATAL_FAILURE(
                    ExpectStays(WithColumns(kLine, 55, sign + Padded(degree, 2) + Padded(parts, 4))));
}

TEST(IODLines, EveryAccuracyStaysAndIsThatOfThePublishedRule) {
    for (int mantissa = 1; mantissa <= 9; ++mantissa)
        for (int exponent = 0; exponent <= 9; ++exponent) {
            const std::string digits = std::to_string(mantissa) + std::to_string(exponent);
            const std::string line = WithColumns(WithColumns(kLine, 42, digits), 63, digits);
            ASSERT_NO_FATAL_FAILURE(ExpectStays(line));
            const double expected = mantissa * std::pow(10.0, exponent - 8);
            EXPECT_NEAR(Read(line).TimeAccuracy / expected, 1, 1e-12);
            EXPECT_NEAR(Read(line).PositionAccuracy / (expected * kDegree), 1, 1e-12);
        }
}

TEST(IODLines, APointThatIsWrittenReadsTheSameWithinItsLastDigit) {
    for (int i = 0; i < 20000; ++i) {
        IODPoint point = StationPoint();
        point.Second = std::fmod(i * 7.7654321, 60);
        point.RightAscension = std::fmod(i * 0.0123456789, 2 * std::numbers::pi);
        point.Declination = std::asin(std::fmod(i * 0.000312345, 2) - 1);
        // Where the fraction rounds up to a whole one, the line has no carry.
        const double minutes = point.RightAscension / kHourAngle * 60;
        if (minutes - std::floor(minutes) > 0.9995) continue;
        const double degrees = std::fabs(point.Declination) / kDegree;
        if (degrees - std::floor(degrees) > 0.99995) continue;
        const IODPoint read = Read(IODPointToText(point));
        ASSERT_NEAR(read.Second, point.Second - 0.0005, 0.00051);
        ASSERT_NEAR(read.RightAscension, point.RightAscension, 0.00051 / 60 * kHourAngle);
        ASSERT_NEAR(read.Declination, point.Declination, 0.000051 * kDegree);
    }
}

// The rounding.

TEST(RoundSignificant, RoundsToOneDigitWithAScaleOfOne) {
    EXPECT_EQ(RoundSignificant(0.5, 1), 0.5);
    EXPECT_EQ(RoundSignificant(250, 1), 300);
    EXPECT_EQ(RoundSignificant(249, 1), 200);
    EXPECT_EQ(RoundSignificant(0.0123, 1), 0.01);
    EXPECT_EQ(RoundSignificant(0.96, 1), 1);
    EXPECT_EQ(RoundSignificant(1000, 1), 1000);
    EXPECT_EQ(RoundSignificant(0.001, 1), 0.001);
    EXPECT_EQ(RoundSignificant(7, 1), 7);
}

TEST(RoundSignificant, TakesMoreDigitsWithASmallerScale) {
    EXPECT_EQ(RoundSignificant(123.456, 0.1), 120);
    EXPECT_EQ(RoundSignificant(123.456, 0.01), 123);
    EXPECT_EQ(RoundSignificant(123.456, 0.001), 123.5);
}

TEST(RoundSignificant, LeavesZeroAndWhatIsNoNumberAlone) {
    EXPECT_EQ(RoundSignificant(0, 1), 0);
    EXPECT_EQ(RoundSignificant(5, 0), 5);
    EXPECT_TRUE(std::isnan(RoundSignificant(std::numeric_limits<double>::quiet_NaN(), 1)));
    EXPECT_TRUE(std::isinf(RoundSignificant(std::numeric_limits<double>::infinity(), 1)));
}

/// A locale in which numbers have a comma and grouped thousands.
class CommaLocale : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(IODLines, AreTheSameUnderEveryLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaLocale));
    const std::string line = IODPointToText(StationPoint());
    const std::string again = IODPointToText(Read(line));
    std::locale::global(before);
    EXPECT_EQ(line, kLine);
    EXPECT_EQ(again, kLine);
}

}  // namespace
}  // namespace glintara
