#include "scene/star_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "orbit/files.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

using testing::TemporaryFolder;

constexpr double kDegree = 3.14159265358979323846 / 180;

const std::string kHeader = "StarID,HIP,HD,HR,Gliese,Bayer,Name,RA,Dec,Distance,Mag,AbsMag,Spectrum,ColorIndex\n";
const std::string kSirius = "1,32349,HD 48915,2491,,9Alp CMa,Sirius,6.7525,-16.7161,2.64,-1.44,1.45,A0m,0.009\n";
const std::string kVega = "2,,HD 172167,,,,Vega,18.6156,38.7837,,0.03,,A0Va,-0.001\n";
const std::string kThird = "3,,HD 3,,,,,12,-90,,9.5,,,\n";

/// A line of a star with `column` (from 1) replaced.
std::string WithColumn(int column, const std::string& text) {
    std::string line;
    std::size_t at = 0;
    for (int i = 1; i <= 14; ++i) {
        const std::size_t end = std::min(kVega.find(',', at), kVega.find('\n', at));
        std::string own = i == 1 ? "1" : kVega.substr(at, end - at);
        line += (i == column ? text : own) + (i == 14 ? "\n" : ",");
        at = end + 1;
    }
    return line;
}

TEST(StarText, ColumnsAreTakenByTheirPlace) {
    const auto stars = ReadStars(kHeader + kSirius + kVega);
    ASSERT_TRUE(stars);
    ASSERT_EQ(stars->size(), 3U);
    const StarRecord& sirius = (*stars)[1];
    EXPECT_EQ(sirius.ProperName, "Sirius");
    EXPECT_EQ(sirius.Designation, "HD 48915");
    EXPECT_EQ(sirius.SpectralType, "A0m");
    EXPECT_EQ(sirius.Magnitude, -1.44);
    EXPECT_EQ(sirius.ColorIndex, 0.009);
    EXPECT_NEAR(sirius.RightAscensionJ2000, 101.2875 * kDegree, 1e-12);
    EXPECT_NEAR(sirius.DeclinationJ2000, -16.7161 * kDegree, 1e-12);
    EXPECT_EQ(sirius.RightAscension, sirius.RightAscensionJ2000);
    EXPECT_EQ(sirius.Declination, sirius.DeclinationJ2000);
    EXPECT_EQ((*stars)[2].ProperName, "Vega");
    EXPECT_EQ((*stars)[0], StarRecord{});
}

TEST(StarText, TheFirstLineIsSkippedWhateverItIs) {
    const auto stars = ReadStars(kSirius + kSirius);
    ASSERT_TRUE(stars);
    EXPECT_EQ(stars->size(), 2U);
    EXPECT_EQ(ReadStars("header")->size(), 1U);
    EXPECT_FALSE(ReadStars(""));
}

TEST(StarText, ANumberLeftOutIsAGap) {
    const std::string fifth = "5" + kThird.substr(1);
    const auto stars = ReadStars(kHeader + kSirius + fifth);
    ASSERT_TRUE(stars);
    ASSERT_EQ(stars->size(), 6U);
    for (const std::size_t gap : {2U, 3U, 4U}) EXPECT_TRUE((*stars)[gap].IsGap()) << gap;
    EXPECT_FALSE((*stars)[1].IsGap());
    EXPECT_EQ((*stars)[5].Designation, "HD 3");
}

TEST(StarText, NumbersThatDoNotRiseAreRefused) {
    EXPECT_TRUE(ReadStars(kHeader + kSirius + kVega + kThird));
    EXPECT_FALSE(ReadStars(kHeader + kVega + kSirius));
    EXPECT_FALSE(ReadStars(kHeader + kSirius + kSirius));
}

TEST(StarText, NoMoreThanTheCapacityIsTaken) {
    const auto full = ReadStars(kHeader + "100000" + kThird.substr(1));
    ASSERT_TRUE(full);
    EXPECT_EQ(full->size(), 100001U);
    EXPECT_FALSE(ReadStars(kHeader + "100001" + kThird.substr(1)));
    EXPECT_FALSE(ReadStars(kHeader + "9999999999" + kThird.substr(1)));
}

TEST(StarText, EndsOfLinesMayBeThoseOfWindows) {
    std::string text = kHeader + kSirius + kVega + "\n";
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.insert(at, "\r");
    const auto stars = ReadStars(text);
    ASSERT_TRUE(stars);
    ASSERT_EQ(stars->size(), 3U);
    EXPECT_EQ((*stars)[2].ColorIndex, -0.001);
    EXPECT_TRUE(ReadStars(kHeader + kSirius.substr(0, kSirius.size() - 1))) << "no end of the last line";
}

TEST(StarText, AStarWithoutAColorCountsAsZero) {
    const auto stars = ReadStars(kHeader + "1" + kThird.substr(1));
    ASSERT_TRUE(stars);
    EXPECT_EQ((*stars)[1].ColorIndex, 0);
}

TEST(StarText, LinesOfAnotherShapeAreRefused) {
    ASSERT_TRUE(ReadStars(kHeader + WithColumn(2, "")));
    EXPECT_FALSE(ReadStars(kHeader + WithColumn(7, "Vega,Lyra"))) << "fifteen columns";
    EXPECT_FALSE(ReadStars(kHeader + "1,,HD 3,,,,,12,-90,,9.5,,\n")) << "thirteen columns";
    EXPECT_FALSE(ReadStars(kHeader + "some text\n"));
}

TEST(StarText, NumbersThatCanBeNoStarAreRefused) {
    for (const char* number : {"", "x", "0", "-1", "1.5", "nan", "1 2"})
        EXPECT_FALSE(ReadStars(kHeader + WithColumn(1, number))) << number;
    for (const char* hours : {"", "x", "-0.1", "24.1", "nan", "1e400"})
        EXPECT_FALSE(ReadStars(kHeader + WithColumn(8, hours))) << hours;
    for (const char* degrees : {"", "north", "-90.1", "90.1", "inf"})
        EXPECT_FALSE(ReadStars(kHeader + WithColumn(9, degrees))) << degrees;
    for (const char* magnitude : {"", "faint", "nan"})
        EXPECT_FALSE(ReadStars(kHeader + WithColumn(11, magnitude))) << magnitude;
    for (const char* color : {"red", "nan", "1,2"}) EXPECT_FALSE(ReadStars(kHeader + WithColumn(14, color))) << color;
}

TEST(StarText, IsReadAgainAsItWasWritten) {
    const auto stars = ReadStars(kHeader + kSirius + "4" + kThird.substr(1));
    ASSERT_TRUE(stars);
    const std::string text = StarsText(*stars);
    const auto again = ReadStars(text);
    ASSERT_TRUE(again);
    ASSERT_EQ(again->size(), stars->size());
    EXPECT_EQ(StarsText(*again), text);
    for (std::size_t i = 1; i < stars->size(); ++i) {
        EXPECT_EQ((*again)[i].ProperName, (*stars)[i].ProperName);
        EXPECT_EQ((*again)[i].Designation, (*stars)[i].Designation);
        EXPECT_EQ((*again)[i].SpectralType, (*stars)[i].SpectralType);
        EXPECT_EQ((*again)[i].Magnitude, (*stars)[i].Magnitude);
        EXPECT_EQ((*again)[i].ColorIndex, (*stars)[i].ColorIndex);
        EXPECT_NEAR((*again)[i].RightAscensionJ2000, (*stars)[i].RightAscensionJ2000, 1e-13);
        EXPECT_NEAR((*again)[i].DeclinationJ2000, (*stars)[i].DeclinationJ2000, 1e-13);
    }
}

TEST(StarText, NamesCannotBreakALine) {
    StarRecord star;
    star.ProperName = "a,b";
    star.Designation = "c\nd";
    star.Magnitude = 1;
    const auto again = ReadStars(StarsText({StarRecord{}, star}));
    ASSERT_TRUE(again);
    EXPECT_EQ((*again)[1].ProperName, "a b");
    EXPECT_EQ((*again)[1].Designation, "c d");
}

TEST(ConstellationText, ANewGroupBeginsWithEachMark) {
    const auto lines = ReadConstellations("#UMA\n7\n9\n#ORI\n258\n");
    ASSERT_TRUE(lines);
    EXPECT_EQ(*lines, (std::vector<ConstellationLine>{{}, {7, 1}, {9, 1}, {258, 2}}));
}

TEST(ConstellationText, AValueOfZeroClosesTheGroupToo) {
    const auto lines = ReadConstellations("5\n0\n6\n\n7\nsome words\n8\n#\n#\n9");
    ASSERT_TRUE(lines);
    EXPECT_EQ(*lines, (std::vector<ConstellationLine>{{}, {5, 0}, {6, 1}, {7, 2}, {8, 3}, {9, 5}}));
}

TEST(ConstellationText, EndsOfLinesMayBeThoseOfWindows) {
    EXPECT_EQ(ReadConstellations("#A\r\n7\r\n8\r\n"), ReadConstellations("#A\n7\n8\n"));
}

TEST(ConstellationText, NumbersThatCanBeNoStarAreRefused) {
    EXPECT_TRUE(ReadConstellations("#A\n100000\n"));
    for (const char* number : {"100001", "-7", "1.5", "7 stars", "99999999999999999999"})
        EXPECT_FALSE(ReadConstellations(std::string("#A\n") + number + "\n")) << number;
}

TEST(ConstellationText, IsWrittenWithAMarkBeforeEachGroup) {
    EXPECT_EQ(ConstellationsText({{}, {7, 1}, {9, 1}, {258, 2}}), "#\n7\n9\n#\n258\n");
    EXPECT_EQ(ConstellationsText({{}, {7, 0}, {258, 4}}), "7\n#\n258\n");
    EXPECT_EQ(ConstellationsText({{}}), "");
}

TEST(ConstellationText, IsReadAgainAsItWasWritten) {
    const std::vector<ConstellationLine> lines = {{}, {7, 1}, {9, 1}, {258, 2}, {7, 3}};
    EXPECT_EQ(ReadConstellations(ConstellationsText(lines)), lines);
}

TEST(StarTextFiles, WhatIsSavedIsLoaded) {
    const TemporaryFolder folder;
    StarTables stars;
    stars.StarCatalogue = *ReadStars(kHeader + kSirius + kVega);
    stars.Constellations = {{}, {1, 1}, {2, 1}};
    ASSERT_TRUE(SaveStarText(folder.Path(), stars));
    ASSERT_TRUE(SaveConstellationText(folder.Path(), stars));

    StarTables read;
    ASSERT_TRUE(LoadStarText(folder.Path(), read));
    ASSERT_TRUE(LoadConstellationText(folder.Path(), read));
    EXPECT_EQ(read.StarCount(), 2);
    EXPECT_STREQ(read.StarPlotTable.at(2).Name.data(), "Vega");
    EXPECT_NEAR(read.StarDirections.at(2).z, 0.62639, 1e-5) << "the sine of its declination";
    EXPECT_EQ(read.Constellations, stars.Constellations);
}

TEST(StarTextFiles, ABadFileLeavesTheTablesAsTheyWere) {
    const TemporaryFolder folder;
    StarTables stars;
    stars.StarCatalogue = *ReadStars(kHeader + kSirius);
    stars.Constellations = {{}, {1, 1}};
    EXPECT_FALSE(LoadStarText(folder.Path(), stars)) << "no file";
    EXPECT_FALSE(LoadConstellationText(folder.Path(), stars)) << "no file";
    ASSERT_TRUE(ReplaceFile(folder.Path() / "stars2.txt", kHeader + kSirius + "2,and so on\n"));
    ASSERT_TRUE(ReplaceFile(folder.Path() / "const.txt", "#A\n5\n-1\n"));
    EXPECT_FALSE(LoadStarText(folder.Path(), stars));
    EXPECT_FALSE(LoadConstellationText(folder.Path(), stars));
    EXPECT_EQ(stars.StarCount(), 1);
    EXPECT_EQ(stars.Constellations.size(), 2U);
    EXPECT_FALSE(SaveStarText(folder.Path() / "none", stars));
}

TEST(StarTextFiles, RandomTextIsRefusedOrWrittenBack) {
    std::mt19937 dice(1989);
    int read = 0;
    for (int round = 0; round < 4000; ++round) {
        std::string text = kHeader + kSirius + kVega + kThird;
        const auto changes = dice() % 3;
        for (unsigned i = 0; i < changes; ++i)
            text[kHeader.size() + dice() % (text.size() - kHeader.size())] = "0123456789,.-#\n\r xe"[dice() % 20];
        if (const auto stars = ReadStars(text)) {
            ++read;
            const auto again = ReadStars(StarsText(*stars));
            ASSERT_TRUE(again) << text;
            EXPECT_EQ(again->size(), stars->size()) << text;
        }
        if (const auto lines = ReadConstellations(text.substr(kHeader.size()))) EXPECT_LE(lines->size(), 8U) << text;
    }
    EXPECT_GT(read, 1000);
    EXPECT_LT(read, 4000);
}

}  // namespace
}  // namespace glintara
