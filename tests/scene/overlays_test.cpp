// The words in the picture: title, splash, what the panels would tell, the notice of a fine picture.

#include "scene/overlays.h"

#include <algorithm>
#include <string>
#include <vector>

#include "support/globe_fixture.h"

namespace glintara {
namespace {

struct OverlaysTest : GlobeTest {
    /// What stands in the picture beside the title.
    std::vector<RecordedOperation> Texts() const {
        std::vector<RecordedOperation> texts;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print))
            if (print.state.FontName != "Palatino Linotype") texts.push_back(print);
        return texts;
    }
};

TEST_F(OverlaysTest, TitleStandsInEveryFrameOnOneLine) {
    Frame();
    EXPECT_EQ(Words(), "Glintara|- |By Ostelvane |");
    const auto prints = surface.OperationsOf(DrawOperation::Print);
    for (const RecordedOperation& print : prints) {
        EXPECT_EQ(print.state.FontName, "Palatino Linotype");
        EXPECT_TRUE(print.state.FontItalic);
        EXPECT_TRUE(print.state.FontOutlined);
    }
    EXPECT_TRUE(prints.front().state.FontBold);
    EXPECT_LT(prints.front().state.CurrentY, 600);
    EXPECT_GT(prints.back().state.CurrentX, prints.front().state.CurrentX);
    EXPECT_EQ(surface.FontName, "Courier New");
    EXPECT_FALSE(surface.FontBold);
    EXPECT_FALSE(surface.FontItalic);
    EXPECT_FALSE(surface.FontOutlined);
}

TEST_F(OverlaysTest, TitleTakesTwoLinesInANarrowBox) {
    surface.ScaleWidth = 1500;
    Frame();
    EXPECT_EQ(Words(), "Glintara|By Ostelvane |");
    const auto prints = surface.OperationsOf(DrawOperation::Print);
    EXPECT_GT(prints.back().state.CurrentY, prints.front().state.CurrentY);
    EXPECT_EQ(prints.back().state.CurrentX, prints.front().state.CurrentX);
}

TEST_F(OverlaysTest, SplashOnlyInTheOpening) {
    app.Run.SplashShown = Splash::Title;
    Frame();
    EXPECT_NE(Words().find("v.1.5.2"), std::string::npos);
    EXPECT_EQ(Words().find("3 January 2010"), std::string::npos);
    app.Run.SplashShown = Splash::Final;
    Frame();
    EXPECT_NE(Words().find("v.1.5.2|3 January 2010"), std::string::npos);
    app.Run.SplashShown = Splash::None;
    Frame();
    EXPECT_EQ(Words().find("v.1.5.2"), std::string::npos);
}

TEST_F(OverlaysTest, SplashStandsInTheMiddleOfThePicture) {
    for (const double width : {12000.0, 19200.0}) {
        surface.ScaleWidth = width;
        app.Run.SplashShown = Splash::Final;
        Frame();
        double below = 0;
        for (const auto& [line, size] :
             std::vector<std::pair<std::string, double>>{{"Glintara", 44}, {"v.1.5.2", 14}, {"3 January 2010", 14}}) {
            const auto prints = surface.OperationsOf(DrawOperation::Print);
            const auto print = std::find_if(prints.begin(), prints.end(), [&line, size](const RecordedOperation& p) {
                return p.text == line && p.state.FontSize == size;
            });
            ASSERT_NE(print, prints.end()) << line;
            // 20 twips to the point; a character is 0.6 of the size wide, a line 1.25 of it high.
            const double length = static_cast<double>(line.size()) * 0.6 * size * 20;
            EXPECT_NEAR(print->state.CurrentX + length / 2, width / 2, 1e-6) << line;
            const double height = 1.25 * size * 20;
            // The title's foot is on the middle; the other lines follow.
            EXPECT_NEAR(print->state.CurrentY, below == 0 ? 4500 - height : below, 1e-6) << line;
            below = print->state.CurrentY + height;
        }
    }
}

TEST_F(OverlaysTest, DateStandsInThePictureWhileThePanelsAreHidden) {
    app.Main.LDateTime.Caption = "DATE 20/01/2018 17:42:09.31 UTC (N)";
    app.Main.LCommandOutput.Caption = "Flare Found! (IRIDIUM 20)";
    Frame();
    EXPECT_EQ(Words().find("DATE"), std::string::npos);
    for (bool RunState::*hidden : {&RunState::FullScreen, &RunState::PanelsHidden}) {
        app.Run.FullScreen = app.Run.PanelsHidden = false;
        app.Run.*hidden = true;
        Frame();
        const auto prints = Texts();
        ASSERT_EQ(prints.front().text, "DATE 20/01/2018 17:42:09.31 UTC (N)");
        const double size = prints.front().state.FontSize * 20;  // twips
        EXPECT_NEAR(prints.front().state.CurrentX, 12000 - 36 * 0.6 * size, 1e-6) << "a character from the edge";
        EXPECT_NEAR(prints.front().state.CurrentY, 9000 - 1.5 * 1.25 * size, 1e-6);
        EXPECT_EQ(prints.at(1).text, "Flare Found! (IRIDIUM 20)");
        EXPECT_NEAR(prints.at(1).state.CurrentX, 0.6 * size, 1e-6);
        EXPECT_EQ(prints.at(1).state.CurrentY, prints.at(0).state.CurrentY);
    }
}

TEST_F(OverlaysTest, WhatThePanelsTellStaysInThePicture) {
    app.Run.FullScreen = true;
    app.Main.LDateTime.Caption = "DATE 20/01/2018 17:42:09.31 UTC (N)";
    app.Main.LCommandOutput.Caption = "";
    app.Main.LJD.Caption = "JD: 2458139.237610";
    app.Main.LSatDetail.Caption = "Satellite height: 776.4 km";
    app.Main.LStatus.Caption = "EARTH";
    Frame();
    double below = 9000;
    for (const char* text :
         {"DATE 20/01/2018 17:42:09.31 UTC (N)", "Satellite height: 776.4 km", "EARTH", "JD: 2458139.237610"}) {
        const auto prints = surface.OperationsOf(DrawOperation::Print);
        const auto print = std::ranges::find_if(prints, [text](const auto& p) { return p.text == text; });
        ASSERT_NE(print, prints.end()) << text;
        EXPECT_LE(print->state.CurrentY + 1.25 * 20 * print->state.FontSize, below + 1e-6) << text;
        EXPECT_LT(print->state.CurrentY, below) << text;
        below = print->state.CurrentY;
    }
    app.Run.FullScreen = false;
    Frame();
    EXPECT_EQ(Words().find("EARTH"), std::string::npos);
}

TEST_F(OverlaysTest, ATextOfTwoLinesStaysOneBelowTheOther) {
    app.Run.FullScreen = true;
    app.Main.LDateTime.Caption = "DATE";
    app.Main.LStatus.Caption = "FLOATING\nSPACE";
    Frame();
    const auto prints = surface.OperationsOf(DrawOperation::Print);
    const auto at = [&](const char* text) {
        const auto print = std::ranges::find_if(prints, [text](const auto& p) { return p.text == text; });
        EXPECT_NE(print, prints.end()) << text;
        return print == prints.end() ? 0 : print->state.CurrentY;
    };
    EXPECT_LT(at("FLOATING"), at("SPACE"));
    EXPECT_LT(at("SPACE"), at("DATE"));
}

TEST_F(OverlaysTest, WordsOfTheOverlayNeverCoverEachOther) {
    app.Run.FullScreen = true;
    surface.ScaleWidth = 6000;
    app.Main.LDateTime.Caption = "DATE 20/01/2018 17:42:09.31 UTC (N)";
    app.Main.LCommandOutput.Caption = "Flare Found! (IRIDIUM 20)";
    Frame();
    const auto prints = Texts();
    EXPECT_LT(prints.at(1).state.CurrentY, prints.at(0).state.CurrentY);
}

TEST_F(OverlaysTest, WhoKnowsThePictureWithoutTheTextsCanWriteThemAnew) {
    app.Run.PanelsHidden = true;
    app.Main.LDateTime.Caption = "DATE 20/01/2018 17:42:09.31 UTC (N)";
    app.Main.LStatus.Caption = "FLOATING\nSPACE";
    app.Main.LJD.Caption = "JD: 2458139.237610";
    std::size_t before = 0;
    stages.skyPointer = Notes("pointer");
    stages.beforeLabels = [&](const SceneContext& over) {
        called.emplace_back("labels");
        before = surface.Operations().size();
        // The strip holds every text.
        DrawLabelOverlay(over);
        for (const RecordedOperation& text : Texts())
            EXPECT_GT(text.state.CurrentY, 9000 - LabelOverlayHeight(over)) << text.text;
    };
    Frame();
    EXPECT_EQ(called, (std::vector<std::string>{"pointer", "labels"}));
    const std::size_t texts = (surface.Operations().size() - before) / 2;
    EXPECT_EQ(texts, 5U) << "nothing else comes after them";
    EXPECT_TRUE(ShowsLabels(app.Run));
    app.Run.PanelsHidden = false;
    EXPECT_FALSE(ShowsLabels(app.Run));
}

TEST_F(OverlaysTest, NoticeOfAFinePicture) {
    ShowPlottingNotice(scene);
    const auto prints = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(prints.size(), 1U);
    EXPECT_EQ(prints[0].text, "Finely Plotting - Please Wait ");
    EXPECT_EQ(prints[0].state.ForeColor, 0x5050C0U);
    EXPECT_EQ(prints[0].state.FontSize, 12);
    const double size = 12 * 20;  // twips
    EXPECT_NEAR(prints[0].state.CurrentX, 12000 - 30 * 0.6 * size, 1e-6);
    EXPECT_NEAR(prints[0].state.CurrentY, 9000 - 2.5 * 1.25 * size, 1e-6);
}

TEST_F(OverlaysTest, TheNoticeOfALoadStandsAloneInTheMiddle) {
    ShowLoadingNotice(scene);
    ASSERT_EQ(surface.Operations().size(), 3U);
    EXPECT_EQ(surface.Operations().front().operation, DrawOperation::Cls);
    const auto prints = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(prints.size(), 2U);
    EXPECT_EQ(prints[0].text, "Loading Data");
    EXPECT_EQ(prints[1].text, "Please Wait...");
    EXPECT_EQ(prints[0].state.ForeColor, 0xFFFFFFU);
    EXPECT_EQ(prints[0].state.FontSize, 16);
    EXPECT_NEAR(prints[0].state.CurrentX, (surface.ScaleWidth - 12 * 0.6 * 16 * 20) / 2, 1e-6);
    EXPECT_NEAR(prints[1].state.CurrentY, surface.ScaleHeight / 2, 1e-6);
}

}  // namespace
}  // namespace glintara
