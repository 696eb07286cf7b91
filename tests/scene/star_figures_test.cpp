#include "scene/star_figures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace glintara {
namespace {

StarRecord Star(const std::string& name, const std::string& designation) {
    StarRecord star;
    star.Magnitude = 3;
    star.ProperName = name;
    star.Designation = designation;
    return star;
}

TEST(FindStar, LooksIntoBothNamesWithoutRegardToCase) {
    const std::vector<StarRecord> stars = {{}, Star("", "HD 1"), Star("Vega", "HD 172167"), Star("Rigel", "HD 34085")};
    EXPECT_EQ(FindStar(stars, "vega"), 2);
    EXPECT_EQ(FindStar(stars, "RIGEL"), 3);
    EXPECT_EQ(FindStar(stars, "hd 172167"), 2);
    EXPECT_EQ(FindStar(stars, "HD 1"), 1);
}

TEST(FindStar, ANameIsTheWholeName) {
    const std::vector<StarRecord> stars = {{}, Star("Denebola", ""), Star("Deneb", "")};
    EXPECT_EQ(FindStar(stars, "Deneb"), 2);
    EXPECT_EQ(FindStar(stars, "Dene"), 0);
    EXPECT_EQ(FindStar(stars, "Altair"), 0);
}

TEST(FindStar, TheFirstOfTwoCounts) {
    EXPECT_EQ(FindStar({{}, Star("A", "x"), Star("a", "x")}, "A"), 1);
    EXPECT_EQ(FindStar({{}, Star("A", "x"), Star("a", "x")}, "X"), 1);
}

TEST(FindStar, NoNameIsNobodysName) {
    EXPECT_EQ(FindStar({{}, {}, Star("", "HD 1")}, ""), 0);
    EXPECT_EQ(FindStar({{}}, "Vega"), 0);
}

TEST(TwelveFigures, AreChainsOfNamesAndNumbers) {
    std::vector<StarRecord> stars(85000, Star("", "HD 9"));
    stars[0] = {};
    stars[66000] = Star("Vega", "HD 172167");
    stars[73000] = Star("DENEB", "");
    const std::vector<ConstellationLine> lines = TwelveFigures(stars);
    const auto chainAt = [&lines](std::int32_t first) {
        const auto begin =
            std::find_if(lines.begin(), lines.end(), [=](const auto& line) { return line.Star == first; });
        std::vector<std::int32_t> chain;
        for (auto line = begin; line != lines.end() && line->Group == begin->Group; ++line) chain.push_back(line->Star);
        return chain;
    };
    EXPECT_EQ(chainAt(6182), (std::vector<std::int32_t>{6182, 4667, 3084, 2243, 544}));
    EXPECT_EQ(chainAt(66000), (std::vector<std::int32_t>{66000, 66340, 66965, 67277, 66674}));
    EXPECT_EQ(chainAt(73000), (std::vector<std::int32_t>{73000, 72847, 71041, 69948, 69376}));
    EXPECT_EQ(chainAt(74382), (std::vector<std::int32_t>{74382, 70319})) << "the chain breaks inside of Cygnus";
}

TEST(TwelveFigures, AStarThatIsNotThereBreaksItsChain) {
    std::vector<StarRecord> stars(85000, Star("", "HD 9"));
    stars[0] = {};
    stars[4667] = {};
    std::int32_t before = -1;
    std::int32_t behind = -1;
    for (const ConstellationLine& line : TwelveFigures(stars)) {
        EXPECT_NE(line.Star, 4667);
        if (line.Star == 6182) before = line.Group;
        if (line.Star == 3084) behind = line.Group;
    }
    EXPECT_GE(before, 0);
    EXPECT_GT(behind, before);
    EXPECT_EQ(TwelveFigures({{}}).size(), 1U) << "without any stars";
}

TEST(JoinsPrevious, TwoStarsOfOneChain) {
    StarTables stars;
    stars.StarCatalogue = {{}, Star("A", ""), Star("B", ""), {}, Star("C", "")};
    stars.Constellations = {{0, 1}, {1, 1}, {2, 1}, {4, 2},  {0, 2}, {1, 2}, {3, 3},
                            {2, 3}, {5, 4}, {1, 4}, {-7, 4}, {4, 5}, {4, 5}};
    std::vector<std::size_t> joined;
    for (std::size_t i = 0; i < 20; ++i)
        if (JoinsPrevious(stars, i)) joined.push_back(i);
    EXPECT_EQ(joined, (std::vector<std::size_t>{2, 12}));
}

}  // namespace
}  // namespace glintara
