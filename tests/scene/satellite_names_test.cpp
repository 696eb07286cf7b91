// Which names and labels are written beside the marks of satellites and flares, and where.

#include <algorithm>

#include "engine/astro/number_text.h"
#include "orbit/location.h"
#include "orbit/propagation.h"
#include "scene/overlays.h"
#include "support/satellites_fixture.h"

namespace glintara::testing {
namespace {

// Names.
TEST_F(SatellitesTest, TheNameStandsBesideTheMark) {
    LoadMeteosat();
    Enlarge();
    LookAt(0, -90, 8);
    EXPECT_TRUE(Names().empty());
    main.CSatNames.Value = true;
    const auto names = Names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].text, " METEOSAT-10 (MSG-3)");
    EXPECT_EQ(names[0].state.ForeColor, 0xFFFFFFU);
    EXPECT_TRUE(names[0].state.FontOutlined);
    EXPECT_FALSE(surface.FontOutlined);
    const auto circles = surface.OperationsOf(DrawOperation::Circle);
    EXPECT_NEAR(names[0].state.CurrentX, circles[0].numbers[0] + circles[1].numbers[2], 1e-9);
    const double size = names[0].state.FontSize;
    main.CThinLines.Value = true;
    EXPECT_LT(Names()[0].state.FontSize, size);
}

TEST_F(SatellitesTest, OfNamesAtOnePlaceTheWorkingSatellitesIsWritten) {
    SatRecord& meteosat = LoadMeteosat();
    Enlarge();
    main.CSatNames.Value = true;
    o.Append(meteosat).Name = "WORKS";
    LookAt(0, -90, 8);
    const auto names = Names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].text, " WORKS");
}

TEST_F(SatellitesTest, NamesNeverCoverEachOther) {
    o.Load("all.tle");
    o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
    surface.ScaleWidth = 28800;  // 1920 by 1080 pixels
    surface.ScaleHeight = 16200;
    main.CPlotOrbit.Value = false;
    LookAt(0, 10, 29);
    const auto names = Names();
    EXPECT_GT(names.size(), 100U);
    EXPECT_LE(names.size(), kMostNames);
    EXPECT_EQ(names[0].text, " METEOSAT-10 (MSG-3)");
    const double height = surface.TextHeight("X");
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(names[i].state.ForeColor, i == 0 ? 0xFFFFFFU : 0x9E948BU);
        for (std::size_t k = 0; k < i; ++k) {
            const bool apartX = std::fabs(names[i].state.CurrentX - names[k].state.CurrentX) >=
                                std::min(surface.TextWidth(names[i].text), surface.TextWidth(names[k].text));
            const bool apartY = std::fabs(names[i].state.CurrentY - names[k].state.CurrentY) >= height;
            EXPECT_TRUE(apartX || apartY) << names[i].text << names[k].text;
        }
    }
}

TEST_F(SatellitesTest, TheNearerNameComesFirst) {
    surface.ScaleWidth = 28800;
    surface.ScaleHeight = 16200;
    NameBoard board(8);
    board.Add(Wish(3000, 2000, 5, "far"));
    board.Add(Wish(3010, 2010, 1, "near"));
    board.Add(Wish(3000, 9000, 9, "else"));
    board.Draw(scene);
    const auto names = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0].text, " near");
    EXPECT_EQ(names[1].text, " else");
}

TEST_F(SatellitesTest, NamesOfMarksOutOfThePictureAreLeftOut) {
    Enlarge();
    NameBoard board(8);
    board.Add(Wish(12100, 4000, 1, "right"));
    board.Add(Wish(-10, 4000, 1, "left"));
    board.Add(Wish(6000, -10, 1, "above"));
    board.Add(Wish(6000, 9010, 1, "below"));
    board.Add(Wish(6000, 4000, 1, ""));
    EXPECT_TRUE(Written(board).empty());
    // In a picture that is smaller than a name there is room for none.
    surface.ScaleWidth = 500;
    surface.ScaleHeight = 9000;
    board.Add(Wish(250, 4000, 1, "LONGER THAN THAT"));
    EXPECT_TRUE(Written(board).empty());
    surface.ScaleWidth = 12000;
    surface.ScaleHeight = 100;
    board.Add(Wish(6000, 50, 1, "higher"));
    EXPECT_TRUE(Written(board).empty());
}

// Five characters and a blank of 108 twips each are 648 twips wide, and 225 high.
TEST_F(SatellitesTest, NamesThatTheEdgeWouldCutStandToTheLeft) {
    Enlarge();
    NameBoard board(8);
    const auto wish = [](double x, double y) {
        NameWish made = Wish(x, y, 1, "NAMED");
        made.gap = 50;
        return made;
    };
    const auto placed = [&](double x, double y) {
        board.Clear();
        board.Add(wish(x, y));
        const auto names = Written(board);
        EXPECT_EQ(names.size(), 1U);
        return AreaOf(names.at(0));
    };
    EXPECT_NEAR(placed(6000, 4000).left, 6050, 1e-9);
    EXPECT_NEAR(placed(6000, 4000).top, 4000 - 0.7 * 225, 1e-9);
    EXPECT_NEAR(placed(11302, 4000).right, 12000, 1e-9);
    // With a blank between the name and its mark.
    EXPECT_NEAR(placed(11303, 4000).right, 11303 - 50 - 108, 1e-9);
    EXPECT_NEAR(placed(12000, 4000).right, 12000 - 50 - 108, 1e-9);
    // Up and down the name moves as far as it has to.
    EXPECT_NEAR(placed(6000, 10).top, 0, 1e-9);
    EXPECT_NEAR(placed(6000, 8990).bottom, 9000, 1e-9);
}

TEST_F(SatellitesTest, NoNameStandsOverTheTitle) {
    Enlarge();
    NameBoard board(400);
    const BoxArea title = TitleArea(surface);
    EXPECT_GT(title.right, 3000);
    EXPECT_GT(title.bottom, 500);
    for (int x = 0; x < 20; ++x)
        for (int y = 0; y < 8; ++y) board.Add(Wish(300 * x, 150 * y, 1, "A NAME"));
    const auto names = Written(board);
    ASSERT_GT(names.size(), 3U);
    for (const RecordedOperation& name : names) {
        const BoxArea area = AreaOf(name);
        EXPECT_TRUE(area.left >= title.right || area.top >= title.bottom) << OperationText(name);
    }
    // One whose mark is right of the title still finds its place to the right, one just at its end too.
    board.Clear();
    board.Add(Wish(title.right + 10, 200, 1, "BESIDE"));
    EXPECT_EQ(Written(board).size(), 1U);
    // What the title covers is where the title is written.
    DrawTitleBlock(scene);
    for (const RecordedOperation& word : surface.OperationsOf(DrawOperation::Print)) {
        if (word.state.FontName != kTitleFont) continue;
        EXPECT_LT(word.state.CurrentX, title.right);
        EXPECT_LT(word.state.CurrentY, title.bottom);
    }
}

TEST_F(SatellitesTest, TheLabelOfAFlareStandsBesideTheObserversMark) {
    Enlarge();
    SetLocationDegrees(data, 0, 0);
    LookAt(0, 0, 64);
    const double radius = 4500 * 0.002 > 37.5 ? 4500 * 0.002 : 37.5;
    const auto leftOf = [&](double x, double y) {
        NameBoard board(1);
        NameWish label = Wish(x, y, 1, "- 3 km", NameRank::Flare);
        label.rise = 0;
        board.AddLabel(label);
        const auto words = Written(board);
        EXPECT_EQ(words.size(), 1U);
        return words.at(0).state.CurrentX;
    };
    EXPECT_NEAR(leftOf(6000, 4500), 6000 + radius, 1e-9);
    EXPECT_NEAR(leftOf(5980, 4520), 6000 + radius, 1e-9);
    EXPECT_NEAR(leftOf(6000, 4500 + radius), 6000, 1e-9);
    EXPECT_NEAR(leftOf(6000 + radius, 4500), 6000 + radius, 1e-9);
    main.CSkyOnly.Value = true;  // no mark, nothing to be beside
    EXPECT_NEAR(leftOf(6000, 4500), 6000, 1e-9);
}

TEST_F(SatellitesTest, OfFlareLabelsAtOnePlaceTheNearestIsWritten) {
    SatRecord satellite;
    LiveFlares flares;
    LiveFlare flare;
    flare.centre = {1, 0, 0};
    for (const double distance : {120000.0, 34120.0, 90000.0}) {
        flare.distance = distance;
        flares.Add(flare);
    }
    Enlarge();
    LookAt(0, 0, 64);
    DrawMarks(satellite, flares);
    const auto labels = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].text, " - 34.12 km (0°)");
    EXPECT_EQ(surface.OperationsOf(DrawOperation::PSet).size(), 3U) << "but all points are there";
}

TEST_F(SatellitesTest, LabelsComeFirstThenTheWorkingSatellite) {
    Enlarge();
    NameBoard board(8);
    board.Add(Wish(6000, 4000, 1, "other"));
    board.Add(Wish(6000, 4000, 1, "working", NameRank::Working));
    std::string text = "label";
    board.AddLabel(Wish(6000, 4000, 9, text, NameRank::Flare));
    text = "XXXXX";  // the board has its own
    board.Draw(scene);
    auto words = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].text, " label");
    board.Clear();
    surface.Forget();
    board.Add(Wish(6000, 4000, 1, "other"));
    board.Add(Wish(6000, 4000, 5, "working", NameRank::Working));
    board.Draw(scene);
    words = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].text, " working");
}

TEST_F(SatellitesTest, AFullBoardStillTakesNames) {
    Enlarge();
    NameBoard board(1);
    for (std::size_t i = 0; i < 2 * kMostLabels; ++i) board.AddLabel(Wish(-5000, 0, 1, "far out"));
    board.AddLabel(Wish(-5000, 0, 1, std::string(kLabelRoom, 'x')));
    board.Add(Wish(6000, 4000, 1, "name"));
    board.Add(Wish(6000, 6000, 1, "one too many"));
    board.Draw(scene);
    const auto words = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].text, " name");
}

}  // namespace
}  // namespace glintara::testing
