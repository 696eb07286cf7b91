#include "scene/surface/recording_surface.h"

#include <gtest/gtest.h>

#include <array>

namespace glintara {
namespace {

struct RecordingSurfaceTest : ::testing::Test {
    RecordingSurface surface{600, 400};

    RecordingSurfaceTest() {
        surface.ForeColor = 0x0000FF;
        surface.FillColor = 0x3C6E3C;
        surface.FontName = "Liberation Mono";
    }
};

TEST_F(RecordingSurfaceTest, RedIsTheLowestByte) {
    EXPECT_EQ(RedOf(0x6E3A10), 0x10);
    EXPECT_EQ(GreenOf(0x6E3A10), 0x3A);
    EXPECT_EQ(BlueOf(0x6E3A10), 0x6E);
}

TEST_F(RecordingSurfaceTest, CodesOfTheDrawingStates) {
    EXPECT_EQ(static_cast<int>(FillPattern::Solid), 0);
    EXPECT_EQ(static_cast<int>(FillPattern::Transparent), 1);
    EXPECT_EQ(static_cast<int>(PenPattern::Solid), 0);
    EXPECT_EQ(static_cast<int>(PenPattern::Dotted), 2);
    EXPECT_EQ(static_cast<int>(PenPattern::None), 5);
    EXPECT_EQ(static_cast<int>(MixMode::Mask), 9);
    EXPECT_EQ(static_cast<int>(MixMode::Copy), 13);
    EXPECT_EQ(static_cast<int>(FloodFillMode::Surface), 1);
}

TEST_F(RecordingSurfaceTest, EachOperationKeepsTheStateOfItsMoment) {
    surface.Line(0, 0, 100, 50);
    surface.ForeColor = 0x202020;
    surface.DrawStyle = PenPattern::Dotted;
    surface.DrawWidth = 0.7;
    surface.Line(0, 0, 100, 50);
    ASSERT_EQ(surface.Operations().size(), 2U);
    EXPECT_EQ(surface.Operations()[0].state.ForeColor, 0x0000FFU);
    EXPECT_EQ(surface.Operations()[1].state.ForeColor, 0x202020U);
    EXPECT_NE(surface.Operations()[0], surface.Operations()[1]);
    surface.Line(0, 0, 100, 50);
    EXPECT_EQ(surface.Operations()[1], surface.Operations()[2]);
    surface.Line(0, 0, 100, 51);
    EXPECT_NE(surface.Operations()[2], surface.Operations()[3]);
}

TEST_F(RecordingSurfaceTest, OperationsAsText) {
    surface.BackColor = 0x1C1714;
    surface.Cls();
    surface.Line(0, -7.5, 100, 50);
    surface.DrawStyle = PenPattern::Dotted;
    surface.DrawWidth = 0.7;
    surface.PSet(1, 2);
    surface.DrawStyle = PenPattern::None;
    surface.FillStyle = FillPattern::Solid;
    surface.DrawMode = MixMode::Mask;
    surface.Circle(300, 200, 64);
    surface.Polygon(std::array<PixelVertex, 3>{PixelVertex{0, 0}, {4, 0}, {0, -3}});
    surface.PolyPolygon(std::array{0.0, 0.0, 4.5, 0.0, 0.0, 3.0}, std::array<std::int32_t, 1>{3});
    surface.DrawMode = MixMode::Copy;
    surface.FillStyle = FillPattern::Transparent;
    surface.ExtFloodFill(20, 30, 0xFF00, FloodFillMode::Surface);
    surface.DrawStyle = PenPattern::Solid;
    surface.Polyline(std::array{0.5, 1.0, 2.0, 3.0});
    surface.FontBold = true;
    surface.FontItalic = true;
    surface.Print("Glintara");
    surface.AlphaBlend({1, 2, 3, 4}, surface, {5, 6, 7, 8}, 128);
    EXPECT_EQ(surface.Text(),
              "Cls color 0x1C1714\n"
              "Line 0 -7.5 100 50 pen 0x0000FF width 1\n"
              "PSet 1 2 pen 0x0000FF dotted width 0.7\n"
              "Circle 300 200 64 pen none fill 0x3C6E3C mask\n"
              "Polygon 0 0 4 0 0 -3 pen none fill 0x3C6E3C mask\n"
              "PolyPolygon 0 0 4.5 0 0 3 ends 3 fill 0x3C6E3C mask\n"
              "ExtFloodFill 20 30 65280 1 fill none\n"
              "Polyline 0.5 1 2 3 pen 0x0000FF width 0.7\n"
              "Print \"Glintara\" at 0 0 color 0x0000FF font \"Liberation Mono\" 8 bold italic\n"
              "AlphaBlend 1 2 3 4 5 6 7 8 128\n");
    EXPECT_EQ(::testing::PrintToString(surface.Operations()[1]), "Line 0 -7.5 100 50 pen 0x0000FF width 1");
}

TEST_F(RecordingSurfaceTest, AStarHasItsColourAmongTheNumbers) {
    surface.StarDot(1, 2.5, 3, 0x0000FF, 0.5);
    EXPECT_EQ(surface.Text(), "StarDot 1 2.5 3 255 0.5\n");
}

TEST_F(RecordingSurfaceTest, PrintMovesTheTextPositionAndClsPutsItBack) {
    surface.CurrentX = 100;
    surface.CurrentY = 50;
    surface.Print("abc");
    EXPECT_DOUBLE_EQ(surface.CurrentX, 100 + surface.TextWidth("abc"));
    EXPECT_EQ(surface.CurrentY, 50);
    surface.Print("d");
    EXPECT_DOUBLE_EQ(surface.Operations()[1].state.CurrentX, 100 + surface.TextWidth("abc"));
    surface.Line(0, 0, 1, 1);
    surface.Circle(0, 0, 1);
    EXPECT_DOUBLE_EQ(surface.CurrentX, 100 + surface.TextWidth("abcd"));
    surface.Cls();
    EXPECT_EQ(surface.CurrentX, 0);
    EXPECT_EQ(surface.CurrentY, 0);
}

TEST_F(RecordingSurfaceTest, TextIsMeasuredByCharactersAndFontSize) {
    surface.FontSize = 10;
    EXPECT_DOUBLE_EQ(surface.TextWidth("12345"), 600);
    EXPECT_DOUBLE_EQ(surface.TextWidth("12\u00B0"), 360) << "a degree sign is one character";
    EXPECT_EQ(surface.TextWidth(""), 0);
    EXPECT_DOUBLE_EQ(surface.TextHeight("x"), 250);
    surface.FontSize = 20;
    EXPECT_DOUBLE_EQ(surface.TextWidth("12345"), 1200);
}

TEST_F(RecordingSurfaceTest, ContoursAreKeptApart) {
    const std::array xy{0.0, 0.0, 9.0, 0.0, 0.0, 9.0, 1.0, 1.0, 2.0, 1.0, 1.0, 2.0};
    surface.PolyPolygon(xy, std::array<std::int32_t, 2>{3, 6});
    surface.PolyPolygon(xy, std::array<std::int32_t, 1>{6});
    EXPECT_EQ(surface.Operations()[0].numbers.size(), 12U);
    EXPECT_EQ(surface.Operations()[0].contourEnds, (std::vector<std::int32_t>{3, 6}));
    EXPECT_NE(surface.Operations()[0], surface.Operations()[1]);
}

TEST_F(RecordingSurfaceTest, OneKindOfOperation) {
    surface.Line(0, 0, 1, 1);
    surface.Circle(5, 6, 7);
    surface.Line(2, 2, 3, 3);
    const auto lines = surface.OperationsOf(DrawOperation::Line);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1].numbers, (std::vector<double>{2, 2, 3, 3}));
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Print).empty());
    surface.Forget();
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_EQ(surface.ForeColor, 0x0000FFU);
}

TEST_F(RecordingSurfaceTest, AFreshSurfaceDrawsSolidThinLinesAndFillsNothing) {
    const RecordingSurface fresh(10, 20);
    EXPECT_EQ(fresh.ScaleWidth, 10);
    EXPECT_EQ(fresh.ScaleHeight, 20);
    EXPECT_EQ(fresh.TwipsPerPixelX, 15);
    EXPECT_EQ(fresh.DrawStyle, PenPattern::Solid);
    EXPECT_EQ(fresh.FillStyle, FillPattern::Transparent);
    EXPECT_EQ(fresh.DrawMode, MixMode::Copy);
    EXPECT_EQ(fresh.DrawWidth, 1);
}

TEST_F(RecordingSurfaceTest, AFontNameNeedsNoNewMemory) {
    const char* room = surface.FontName.data();
    surface.FontName = "TeX Gyre Pagella";
    EXPECT_EQ(surface.FontName.data(), room);
}

}  // namespace
}  // namespace glintara
