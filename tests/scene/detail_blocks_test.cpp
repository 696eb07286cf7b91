// The lists of orbit, Sun and Moon over the picture: where they stand, and that nothing else stands there.

#include "scene/detail_blocks.h"

#include <algorithm>

#include "orbit/orbit_details.h"
#include "scene/name_board.h"
#include "scene/overlays.h"
#include "support/globe_fixture.h"

namespace glintara::testing {
namespace {

struct DetailBlocksTest : GlobeTest {
    DetailBlocksTest() {
        stages.orbitDetails = PrintOrbitDetails;
        stages.astroDetails = PrintAstroDetails;
        SatRecord& satellite = app.Data.Satellite(app.Data.SatCount = 1);
        satellite.Name = "MOLNIYA 1-90";
        satellite.EpochText = "18019.50000000";
        satellite.MeanMotion = 2;
        app.Main.C2OrbitDetails.Value = app.Main.CAstroDetails.Value = true;
        app.Data.SetSimInstant({2018, 1, 20, 17, 42, 9}, 2458139.2376);
    }

    std::vector<RecordedOperation> PrintsIn(Color color) const {
        std::vector<RecordedOperation> found;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print))
            if (print.state.ForeColor == color && print.state.FontName == "Courier New") found.push_back(print);
        return found;
    }

    static BoxArea AreaOf(const RecordedOperation& print) {
        // 20 twips to the point; a character is 0.6 of the size wide, a line 1.25 of it high.
        const double size = print.state.FontSize * 20;
        const double x = print.state.CurrentX;
        const double y = print.state.CurrentY;
        const auto characters = std::ranges::count_if(print.text, [](char c) { return (c & 0xC0) != 0x80; });
        return {x, y, x + 0.6 * size * static_cast<double>(characters), y + 1.25 * size};
    }

    static bool Overlap(const BoxArea& a, const BoxArea& b) {
        return a.left < b.right - 1e-6 && b.left < a.right - 1e-6 && a.top < b.bottom - 1e-6 && b.top < a.bottom - 1e-6;
    }
};

TEST_F(DetailBlocksTest, TheOrbitStandsInTheUpperRightCorner) {
    Frame();
    const auto prints = PrintsIn(0x80FF80);
    ASSERT_EQ(prints.size(), 13U) << "the empty line is not written";
    EXPECT_EQ(prints.front().text, "ORBIT DETAILS");
    EXPECT_EQ(prints.back().text, "M0: 0 deg");
    const double line = 1.25 * 10 * 20;
    EXPECT_NEAR(prints[1].state.CurrentY - prints[0].state.CurrentY, 2 * line, 1e-6) << "an empty line between";
    EXPECT_NEAR(prints[2].state.CurrentY - prints[1].state.CurrentY, line, 1e-6);
    for (const RecordedOperation& print : prints) {
        EXPECT_EQ(print.state.FontSize, 10);
        EXPECT_TRUE(print.state.FontOutlined);
        EXPECT_GT(print.state.CurrentX, 6000);
        EXPECT_LT(AreaOf(print).right, 12000);
    }
    EXPECT_FALSE(surface.FontOutlined);
}

TEST_F(DetailBlocksTest, NothingOfTheOrbitWithoutItsBoxOrASatellite) {
    app.Main.C2OrbitDetails.Value = false;
    Frame();
    EXPECT_TRUE(PrintsIn(0x80FF80).empty());
    EXPECT_FALSE(OrbitDetailsArea(scene).has_value());
    app.Main.C2OrbitDetails.Value = true;
    app.Data.SatCount = 0;
    Frame();
    EXPECT_TRUE(PrintsIn(0x80FF80).empty());
    EXPECT_FALSE(OrbitDetailsArea(scene).has_value());
}

TEST_F(DetailBlocksTest, SunAndMoonStandAtTheLowerLeftOneLineBelowTheOther) {
    Frame();
    const auto prints = PrintsIn(0xD9D1C9);
    ASSERT_EQ(prints.size(), 7U);
    EXPECT_EQ(prints[0].text, "SUN POSITION ");
    EXPECT_EQ(prints[4].text, "MOON POSITION");
    const double line = 1.25 * 10 * 20;
    for (std::size_t i = 1; i < prints.size(); ++i)
        EXPECT_NEAR(prints[i].state.CurrentY - prints[i - 1].state.CurrentY, line, 1e-6);
    EXPECT_NEAR(prints[6].state.CurrentY + line, 9000 - 0.6 * 10 * 20 / 2, 1e-6) << "at the lower edge";
    EXPECT_NEAR(prints[0].state.CurrentX, 0.6 * 10 * 20, 1e-6);
    // The Moon stands beside its heading.
    const auto circles = surface.OperationsOf(DrawOperation::Circle);
    ASSERT_FALSE(circles.empty());
    const RecordedOperation& moon = circles.back();
    EXPECT_GT(moon.numbers[0] - moon.numbers[2], AreaOf(prints[4]).right);
    EXPECT_NEAR(moon.numbers[1], prints[4].state.CurrentY + line / 2, 1e-6);
    EXPECT_LT(moon.numbers[2], line / 2) << "it keeps to its line";
}

// A waxing Moon: in the north its right side is lit, in the south its left one.
TEST_F(DetailBlocksTest, TheMoonIsLitAsItIsSeenFromThePlace) {
    app.Data.SunRA = 1;
    app.Data.MoonRA = 1.5;
    for (const double lat : {45.0, -34.0}) {
        app.Data.Site = MakeObserverSite({lat * kDegree, 0, 0});
        Frame();
        const RecordedOperation moon = surface.OperationsOf(DrawOperation::Circle).back();
        const RecordedOperation lit = surface.OperationsOf(DrawOperation::PolyPolygon).back();
        double middle = 0;
        for (std::size_t i = 0; i + 1 < lit.numbers.size(); i += 2) middle += lit.numbers[i] * 15;
        middle = middle / static_cast<double>(lit.numbers.size() / 2) - moon.numbers[0];
        EXPECT_GT(lat > 0 ? middle : -middle, 0.3 * moon.numbers[2]) << lat;
    }
}

// Every size of the picture that the window allows, with and without panels: no word covers another.
TEST_F(DetailBlocksTest, WordsNeverCoverEachOther) {
    app.Main.LDateTime.Caption = "DATE 20/01/2018 17:42:09.31 UTC (N)";
    app.Main.LCommandOutput.Caption = "Flare Found! (IRIDIUM 20)";
    app.Main.LSatDetail.Caption = "Satellite height: 776.4 km";
    app.Main.LStatus.Caption = "FLOATING: FLOATING SITE\nSPACE";
    app.Main.LJD.Caption = "JD: 2458139.237610 LST: 01h00'00\" LAT: 045°04'12\" LON: 007°41'24\"";
    for (const auto& [width, height] : {std::pair{960, 300}, {1024, 400}, {1366, 768}, {1366, 430}, {1920, 1080}}) {
        for (const bool hidden : {false, true}) {
            surface.ScaleWidth = width * 15;
            surface.ScaleHeight = height * 15;
            app.Run.PanelsHidden = hidden;
            if (hidden && height < 400) continue;  // without panels a picture is higher
            Frame();
            const auto prints = surface.OperationsOf(DrawOperation::Print);
            for (std::size_t i = 0; i < prints.size(); ++i) {
                const BoxArea area = AreaOf(prints[i]);
                EXPECT_GE(area.top, 0) << prints[i].text << width << "x" << height;
                EXPECT_LE(area.bottom, surface.ScaleHeight) << prints[i].text << width << "x" << height;
                for (std::size_t k = 0; k < i; ++k)
                    EXPECT_FALSE(Overlap(area, AreaOf(prints[k])))
                        << prints[i].text << " over " << prints[k].text << width << "x" << height << hidden;
            }
        }
    }
}

TEST_F(DetailBlocksTest, InALowPictureTheOrbitIsWrittenSmaller) {
    surface.ScaleHeight = 220 * 15;
    Frame();
    const auto prints = PrintsIn(0x80FF80);
    EXPECT_LT(prints.front().state.FontSize, 10);
    EXPECT_GE(prints.front().state.FontSize, 7);
    EXPECT_LE(AreaOf(prints.back()).bottom, surface.ScaleHeight);
}

TEST_F(DetailBlocksTest, InANarrowPictureTheOrbitStandsBelowTheTitle) {
    surface.ScaleWidth = 360 * 15;
    Frame();
    EXPECT_GE(PrintsIn(0x80FF80).front().state.CurrentY, TitleArea(surface).bottom);
}

TEST_F(DetailBlocksTest, NamesKeepClearOfBothLists) {
    NameBoard board(10);
    for (const std::optional<BoxArea>& area : {OrbitDetailsArea(scene), AstroDetailsArea(scene)}) {
        ASSERT_TRUE(area);
        NameWish wish;
        wish.x = (area->left + area->right) / 2;
        wish.y = (area->top + area->bottom) / 2;
        wish.name = "CUBESAT";
        board.Clear();
        board.Add(wish);
        surface.Forget();
        board.Draw(scene);
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print))
            EXPECT_FALSE(Overlap(AreaOf(print), *area));
    }
}

TEST_F(DetailBlocksTest, NamesKeepClearOfTheTextsOfHiddenPanels) {
    app.Main.LDateTime.Caption = "DATE 20/01/2018 17:42:09.31 UTC (N)";
    app.Main.LStatus.Caption = "SHORT\nEARTH: Latitude= 10.5 N";
    EXPECT_FALSE(LabelTextAreas(scene).has_value()) << "while the panels tell it";
    app.Run.FullScreen = true;
    Frame();
    const auto areas = LabelTextAreas(scene);
    ASSERT_TRUE(areas);
    int held = 0;
    for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print)) {
        if (print.text.empty()) continue;
        const BoxArea area = AreaOf(print);
        for (const BoxArea& taken : *areas)
            held += area.left >= taken.left - 1e-6 && area.right <= taken.right + 1e-6 &&
                    area.top >= taken.top - 1e-6 && area.bottom <= taken.bottom + 1e-6;
    }
    EXPECT_EQ(held, 3) << "each of the three texts stands in its corner";
    NameBoard board(10);
    NameWish wish;
    wish.x = (areas->at(1).left + areas->at(1).right) / 2;
    wish.y = areas->at(1).top + 100;
    wish.name = "CUBESAT";
    board.Add(wish);
    surface.Forget();
    board.Draw(scene);
    for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print))
        EXPECT_FALSE(Overlap(AreaOf(print), areas->at(1)));
}

struct MoonDiscTest : SceneFixture {
    /// The lit part of a disc of radius 300 twips (20 pixels) round (3000, 3000), as its area over the disc's and how far
    /// it reaches to either side, in radii.
    struct Lit {
        double part;
        double left;
        double right;
    };

    Lit At(double phase, bool southern = false) {
        surface.Forget();
        DrawMoonDisc(scene, 3000, 3000, 300, phase, southern);
        const auto shapes = surface.OperationsOf(DrawOperation::PolyPolygon);
        EXPECT_EQ(shapes.size(), 1U);
        const auto& xy = shapes.at(0).numbers;
        Lit lit{0, 1, -1};
        const std::size_t count = xy.size() / 2;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t k = (i + 1) % count;
            lit.part += (xy[2 * i] * xy[2 * k + 1] - xy[2 * k] * xy[2 * i + 1]) / 2;
            lit.left = std::min(lit.left, (xy[2 * i] - 200) / 20);
            lit.right = std::max(lit.right, (xy[2 * i] - 200) / 20);
        }
        lit.part = std::abs(lit.part) / (kPiExact * 400);
        return lit;
    }
};

// The lit part of the disc's area is (1 - cos(elongation)) / 2.
TEST_F(MoonDiscTest, TheLitPartGrowsAndShrinks) {
    for (const auto& [phase, part] : {std::pair{0.0, 0.0},
                                      {0.125, 0.146447},
                                      {0.25, 0.5},
                                      {0.375, 0.853553},
                                      {0.5, 1.0},
                                      {0.625, 0.853553},
                                      {0.75, 0.5},
                                      {0.9, 0.095492}})
        EXPECT_NEAR(At(phase).part, part, 0.01) << phase;
}

TEST_F(MoonDiscTest, InTheNorthTheWaxingMoonIsLitOnTheRight) {
    EXPECT_NEAR(At(0.25).right, 1, 1e-6);
    EXPECT_NEAR(At(0.25).left, 0, 1e-6);
    EXPECT_NEAR(At(0.75).left, -1, 1e-6);
    EXPECT_NEAR(At(0.75).right, 0, 1e-6);
    EXPECT_NEAR(At(0.1).right, 1, 1e-6);
    EXPECT_NEAR(At(0.4).left, -0.809, 1e-3) << "gibbous: the terminator lies on the other side";
}

TEST_F(MoonDiscTest, InTheSouthItIsTheOtherWayRound) {
    EXPECT_NEAR(At(0.25, true).left, -1, 1e-6);
    EXPECT_NEAR(At(0.25, true).right, 0, 1e-6);
    EXPECT_NEAR(At(0.75, true).right, 1, 1e-6);
    EXPECT_NEAR(At(0.375, true).part, 0.853553, 0.01);
}

}  // namespace
}  // namespace glintara::testing
