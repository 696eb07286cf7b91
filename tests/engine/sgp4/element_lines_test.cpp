#include "engine/sgp4/element_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <string_view>

#include "engine/sgp4/verification_set.h"

namespace glintara {
namespace {

// NOAA 14, the example of the format's description (T. S. Kelso, celestrak.org).
const std::string kLine1 = "1 23455U 94089A   97320.90946019  .00000140  00000-0  10191-3 0  2621";
const std::string kLine2 = "2 23455  99.0090 272.6745 0008546 223.1686 136.8816 14.11711747148495";

constexpr double kDegree = std::numbers::pi / 180;

ElementLinesError Read(std::string_view line1, std::string_view line2) {
    MeanElements elements;
    return ReadElementLines(line1, line2, elements);
}

// `line` with `text` from column `column` on, counted from 1.
std::string With(std::string line, std::size_t column, std::string_view text) {
    return line.replace(column - 1, text.size(), text);
}

MeanElements ElementsOf(const std::string& line1, const std::string& line2) {
    MeanElements elements;
    EXPECT_EQ(ReadElementLines(line1, line2, elements), ElementLinesError::None) << line1 << '\n' << line2;
    return elements;
}

double BstarOf(std::string_view field) { return ElementsOf(With(kLine1, 54, field), kLine2).bstar; }

TEST(ElementLines, ReadsTheFieldsByColumn) {
    const MeanElements elements = ElementsOf(kLine1, kLine2);
    EXPECT_EQ(elements.epochDay, 2450768.5);  // 16 November 1997
    EXPECT_NEAR(elements.epochFraction, 0.90946019, 1e-12);
    EXPECT_DOUBLE_EQ(elements.bstar, 0.00010191);
    EXPECT_DOUBLE_EQ(elements.inclination, 99.0090 * kDegree);
    EXPECT_DOUBLE_EQ(elements.node, 272.6745 * kDegree);
    EXPECT_EQ(elements.eccentricity, 0.0008546);
    EXPECT_DOUBLE_EQ(elements.argPerigee, 223.1686 * kDegree);
    EXPECT_DOUBLE_EQ(elements.meanAnomaly, 136.8816 * kDegree);
    // 102.0039 minutes a turn.
    EXPECT_NEAR(2 * std::numbers::pi / elements.meanMotion, 1440 / 14.11711747, 1e-9);
}

TEST(ElementLines, EpochYearTurnsAt51) {
    const auto epochDay = [](std::string_view epoch) { return ElementsOf(With(kLine1, 19, epoch), kLine2).epochDay; };
    EXPECT_EQ(epochDay("51001.00000000"), 2433647.5);  // 1 January 1951
    EXPECT_EQ(epochDay("99365.00000000"), 2451543.5);  // 31 December 1999
    EXPECT_EQ(epochDay("00001.00000000"), 2451544.5);  // 1 January 2000
    EXPECT_EQ(epochDay("00366.99999999"), 2451909.5);  // 31 December 2000
    EXPECT_EQ(epochDay("50001.00000000"), 2469807.5);  // 1 January 2050
    EXPECT_EQ(epochDay(" 6176.33215444"), 2453911.5);  // 25 June 2006
    EXPECT_EQ(epochDay("06  1.50000000"), 2453736.5);  // 1 January 2006
}

TEST(ElementLines, VerificationSetPasses) {
    std::size_t passed = 0;
    for (const VerificationCase& set : ReadVerificationSet()) {
        ElementsOf(set.line1, set.line2);
        ++passed;
    }
    EXPECT_EQ(passed, 33u);
}

TEST(ElementLines, ExampleSetsPassAndPropagate) {
    const std::vector<std::string> lines = FileLines(std::string(GLINTARA_SOURCE_DIR) + "/data/examples/all.tle");
    std::size_t passed = 0;
    for (std::size_t i = 0; i + 2 < lines.size(); i += 3) {
        const MeanElements elements = ElementsOf(lines[i + 1], lines[i + 2]);
        Sgp4Record record;
        ASSERT_TRUE(Sgp4Prepare(elements, record)) << lines[i];
        const Sgp4State state = Sgp4AtMinutes(record, 0);
        EXPECT_EQ(state.error, Sgp4Error::None) << lines[i];
        EXPECT_GT(Length(state.position), 6378) << lines[i];
        ++passed;
    }
    EXPECT_EQ(passed, 979u);
}

TEST(ElementLines, DragTermInEveryForm) {
    EXPECT_DOUBLE_EQ(BstarOf(" 28098-4"), 0.28098e-4);
    EXPECT_DOUBLE_EQ(BstarOf("+28098-4"), 0.28098e-4);
    EXPECT_DOUBLE_EQ(BstarOf("-11606-4"), -0.11606e-4);
    EXPECT_DOUBLE_EQ(BstarOf(" 13519-0"), 0.13519);
    EXPECT_DOUBLE_EQ(BstarOf(" 13519+1"), 1.3519);
    EXPECT_DOUBLE_EQ(BstarOf(" 13519 1"), 1.3519);
    EXPECT_DOUBLE_EQ(BstarOf(" 13519  "), 0.13519);
    EXPECT_DOUBLE_EQ(BstarOf("   123-3"), 0.00123e-3);
    EXPECT_EQ(BstarOf(" 00000+0"), 0);
    EXPECT_EQ(BstarOf("+00000+0"), 0);
    EXPECT_EQ(BstarOf("        "), 0);
}

TEST(ElementLines, DerivativesMayBeBlank) {
    const MeanElements expected = ElementsOf(kLine1, kLine2);
    for (const std::string_view field : {"          ", " -.00017190", "+.00017190"})
        EXPECT_EQ(ElementsOf(With(kLine1, 34, field.substr(0, 10)), kLine2).bstar, expected.bstar);
    EXPECT_EQ(ElementsOf(With(kLine1, 45, "        "), kLine2).bstar, expected.bstar);
}

TEST(ElementLines, SatelliteNumbersAreText) {
    for (const std::string_view number : {"A0000", "Z9999", "    5", "     ", "?????"})
        EXPECT_EQ(Read(With(kLine1, 3, number), With(kLine2, 3, number)), ElementLinesError::None) << number;
    EXPECT_EQ(Read(With(kLine1, 69, "x"), With(kLine2, 69, "x")), ElementLinesError::None);
}

TEST(ElementLines, BlanksAroundANumberDoNotMatter) {
    EXPECT_DOUBLE_EQ(ElementsOf(kLine1, With(kLine2, 9, "  5.25  ")).inclination, 5.25 * kDegree);
    EXPECT_DOUBLE_EQ(ElementsOf(kLine1, With(kLine2, 18, "7       ")).node, 7 * kDegree);
    EXPECT_EQ(ElementsOf(kLine1, With(kLine2, 27, "    546")).eccentricity, 0.0000546);
    EXPECT_EQ(ElementsOf(kLine1, With(kLine2, 27, "1859   ")).eccentricity, 0.1859);
}

TEST(ElementLines, AbsurdAnglesAreLegal) {
    for (const std::size_t column : {9u, 18u, 35u, 44u}) {
        EXPECT_EQ(Read(kLine1, With(kLine2, column, "99999999")), ElementLinesError::None) << column;
        EXPECT_EQ(Read(kLine1, With(kLine2, column, "-9999.99")), ElementLinesError::None) << column;
    }
}

TEST(ElementLines, OtherLinesAreRefused) {
    EXPECT_EQ(Read("", ""), ElementLinesError::NotTwoLines);
    EXPECT_EQ(Read({}, {}), ElementLinesError::NotTwoLines);
    EXPECT_EQ(Read(kLine2, kLine1), ElementLinesError::NotTwoLines);
    EXPECT_EQ(Read(kLine1, kLine1), ElementLinesError::NotTwoLines);
    EXPECT_EQ(Read(" " + kLine1, kLine2), ElementLinesError::NotTwoLines);
    EXPECT_EQ(Read("1\n" + kLine1, kLine2), ElementLinesError::NotTwoLines);
}

TEST(ElementLines, LinesMayBeAsShortAsTheirLastField) {
    const MeanElements expected = ElementsOf(kLine1, kLine2);
    for (std::size_t length = 0; length <= 69; ++length) {
        const ElementLinesError error = Read(kLine1.substr(0, length), kLine2);
        EXPECT_EQ(error, length < 61 ? ElementLinesError::NotTwoLines : ElementLinesError::None) << length;
    }
    EXPECT_EQ(ElementsOf(kLine1.substr(0, 61), kLine2.substr(0, 63)).meanMotion, expected.meanMotion);

    // "14.1" is the shortest that shows that it was meant to end.
    for (std::size_t length = 0; length <= 69; ++length) {
        const ElementLinesError error = Read(kLine1, kLine2.substr(0, length));
        EXPECT_EQ(error, length < 56 ? ElementLinesError::NotTwoLines : ElementLinesError::None) << length;
    }
    EXPECT_EQ(Read(kLine1, kLine2.substr(0, 52) + "1411"), ElementLinesError::NotTwoLines);
    EXPECT_EQ(Read(kLine1, kLine2.substr(0, 52) + "14.      "), ElementLinesError::NotTwoLines);
    EXPECT_DOUBLE_EQ(ElementsOf(kLine1, kLine2.substr(0, 52) + "15.5").meanMotion, 15.5 * 2 * std::numbers::pi / 1440);
}

TEST(ElementLines, LineEndsAndLongerLinesAreNotRead) {
    const MeanElements expected = ElementsOf(kLine1, kLine2);
    for (const std::string_view end : {"\r\n", "\n", "\r", "   trailing words"}) {
        const MeanElements elements = ElementsOf(kLine1 + std::string(end), kLine2 + std::string(end));
        EXPECT_EQ(elements.bstar, expected.bstar);
        EXPECT_EQ(elements.meanMotion, expected.meanMotion);
    }
}

// Columns that hold numbers; blanks between fields and what the propagator does not need are no part of them.
bool IsNumberColumn(int line, std::size_t column) {
    const auto within = [column](std::size_t first, std::size_t last) { return column >= first && column <= last; };
    if (line == 1) return within(19, 32) || within(34, 43) || within(45, 52) || within(54, 61);
    return within(9, 16) || within(18, 25) || within(27, 33) || within(35, 42) || within(44, 51) || within(53, 63);
}

TEST(ElementLines, EveryNumberColumnMustHoldItsNumber) {
    for (const char junk : {'x', ':', '/', ',', '\t', '\0', '\x80', 'e', '*'}) {
        for (std::size_t column = 2; column <= 69; ++column) {
            const std::string text(1, junk);
            const ElementLinesError in1 = Read(With(kLine1, column, text), kLine2);
            const ElementLinesError in2 = Read(kLine1, With(kLine2, column, text));
            EXPECT_EQ(in1, IsNumberColumn(1, column) ? ElementLinesError::NotNumbers : ElementLinesError::None)
                << column << ' ' << static_cast<int>(junk);
            EXPECT_EQ(in2, IsNumberColumn(2, column) ? ElementLinesError::NotNumbers : ElementLinesError::None)
                << column << ' ' << static_cast<int>(junk);
        }
    }
}

TEST(ElementLines, WordsAndBlanksAreNoNumbers) {
    for (const std::string_view word : {"nan     ", "inf     ", "infinity", "0x1p3   ", "        ", ".       ",
                                        "-       ", "1.2.3   ", "--1.5   ", "+-1.5   ", "1 2.5   ", "1.5-    "}) {
        for (const std::size_t column : {9u, 18u, 35u, 44u, 53u}) {
            EXPECT_EQ(Read(kLine1, With(kLine2, column, std::string(word) + (column == 53 ? "   " : ""))),
                      ElementLinesError::NotNumbers)
                << word << column;
        }
    }
    for (const std::string_view field : {"       ", "00 8546", "0.08546", "+008546"})
        EXPECT_EQ(Read(kLine1, With(kLine2, 27, field)), ElementLinesError::NotNumbers) << field;
    for (const std::string_view field :
         {"110191-3", " 10191--", " 10191 -", " 10191.3", "      -3", " 10 91-3", "- 101-93"})
        EXPECT_EQ(Read(With(kLine1, 54, field), kLine2), ElementLinesError::NotNumbers) << field;
    for (const std::string_view field : {"  320.90946019", "9 320.90946019", "-7320.90946019", "97            "})
        EXPECT_EQ(Read(With(kLine1, 19, field), kLine2), ElementLinesError::NotNumbers) << field;
}

TEST(ElementLines, MeanMotionMustBeAboveZero) {
    EXPECT_EQ(Read(kLine1, With(kLine2, 53, " 0.00000000")), ElementLinesError::MeanMotion);
    EXPECT_EQ(Read(kLine1, With(kLine2, 53, "-1.00000000")), ElementLinesError::MeanMotion);
    EXPECT_EQ(Read(kLine1, With(kLine2, 53, "-0.00000000")), ElementLinesError::MeanMotion);
    EXPECT_EQ(Read(kLine1, With(kLine2, 53, " 0.00000001")), ElementLinesError::None);
}

TEST(ElementLines, EccentricityFromZeroToBelowOne) {
    EXPECT_EQ(ElementsOf(kLine1, With(kLine2, 27, "0000000")).eccentricity, 0);
    EXPECT_EQ(ElementsOf(kLine1, With(kLine2, 27, "9999999")).eccentricity, 0.9999999);
    EXPECT_EQ(Read(kLine1, With(kLine2, 27, "-000001")), ElementLinesError::Eccentricity);
}

TEST(ElementLines, RefusedLinesLeaveTheElementsAlone) {
    MeanElements elements;
    elements.bstar = 42;
    EXPECT_EQ(ReadElementLines(kLine1, With(kLine2, 27, "-000001"), elements), ElementLinesError::Eccentricity);
    EXPECT_EQ(elements.bstar, 42);
    EXPECT_EQ(elements.meanMotion, 0);
}

TEST(ElementLines, AnyBytesAreSafe) {
    constexpr std::string_view kAlphabet = "0123456789 .+-eEnaif\r\n\0x\xff";
    std::mt19937 random(42);
    int accepted = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string line1 = kLine1;
        std::string line2 = kLine2;
        for (int change = static_cast<int>(random() % 4); change >= 0; --change) {
            std::string& line = random() % 2 == 0 ? line1 : line2;
            line[random() % line.size()] = kAlphabet[random() % kAlphabet.size()];
        }
        line1.resize(line1.size() - (random() % 10 == 0 ? random() % line1.size() : 0));
        MeanElements elements;
        if (ReadElementLines(line1, line2, elements) != ElementLinesError::None) continue;
        ++accepted;
        for (const double value : {elements.epochDay, elements.epochFraction, elements.bstar, elements.inclination,
                                   elements.node, elements.argPerigee, elements.meanAnomaly, elements.meanMotion})
            ASSERT_TRUE(std::isfinite(value)) << line1 << '\n' << line2;
        ASSERT_GE(elements.eccentricity, 0) << line2;
        ASSERT_LT(elements.eccentricity, 1) << line2;
        ASSERT_GT(elements.meanMotion, 0) << line2;
    }
    EXPECT_GT(accepted, 1000);
}

}  // namespace
}  // namespace glintara
