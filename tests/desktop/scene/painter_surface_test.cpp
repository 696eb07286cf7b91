#include "desktop/scene/painter_surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace glintara::desktop {
namespace {

QImage Picture(int width, int height, qreal ratio = 1) {
    QImage image(width, height, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::black);
    return image;
}

TEST(PainterSurface, ColoursHaveRedInTheLowestByte) {
    EXPECT_EQ(QtColor(0x0000FF), QColor(255, 0, 0));
    EXPECT_EQ(QtColor(0x6E3A10), QColor(0x10, 0x3A, 0x6E));
}

TEST(PainterSurface, BoxIsMeasuredInTwipsAtAnyRatio) {
    for (const int ratio : {1, 2}) {
        QImage image = Picture(600 * ratio, 400 * ratio, ratio);
        PainterSurface surface;
        surface.Begin(image);
        EXPECT_DOUBLE_EQ(surface.ScaleWidth, 9000);
        EXPECT_DOUBLE_EQ(surface.ScaleHeight, 6000);
        EXPECT_DOUBLE_EQ(surface.TwipsPerPixelX, 15.0 / ratio);
        surface.FillStyle = FillPattern::Solid;
        surface.FillColor = 0x00FF00;
        surface.DrawStyle = PenPattern::None;
        surface.Circle(4500, 3000, 1500);
        surface.End();
        EXPECT_EQ(image.pixelColor(300 * ratio, 200 * ratio), QColor(0, 255, 0));
        EXPECT_EQ(image.pixelColor(300 * ratio, 110 * ratio), QColor(0, 255, 0));
        EXPECT_EQ(image.pixelColor(300 * ratio, 90 * ratio), QColor(0, 0, 0));
    }
}

TEST(PainterSurface, MaskMultipliesEachChannel) {
    // A grey takes a shorter way than a colour; both multiply.
    for (const Color mask : {0x5A5A5AU, 0x3C5A78U, 0xFFFFFFU, 0x000000U}) {
        QImage image = Picture(20, 20);
        image.fill(QColor(200, 100, 50));
        PainterSurface surface;
        surface.Begin(image);
        surface.DrawMode = MixMode::Mask;
        surface.FillStyle = FillPattern::Solid;
        surface.ForeColor = mask;
        surface.FillColor = mask;
        const std::array<double, 8> square{5, 5, 15, 5, 15, 15, 5, 15};
        const std::array<std::int32_t, 1> ends{4};
        surface.PolyPolygon(square, ends);
        surface.End();
        const QColor inside = image.pixelColor(10, 10);
        EXPECT_NEAR(inside.red(), 200.0 * RedOf(mask) / 255, 1) << mask;
        EXPECT_NEAR(inside.green(), 100.0 * GreenOf(mask) / 255, 1) << mask;
        EXPECT_NEAR(inside.blue(), 50.0 * BlueOf(mask) / 255, 1) << mask;
        EXPECT_EQ(image.pixelColor(2, 2), QColor(200, 100, 50));
    }
}

TEST(PainterSurface, HairlinesAreNoWiderThanAPixelOfTheDisplay) {
    for (const double ratio : {1.0, 1.5, 2.0, 3.0}) {
        QImage image = Picture(60, 30, ratio);
        PainterSurface surface;
        surface.Begin(image);
        surface.ForeColor = kWhite;
        surface.DrawWidth = 0.7;
        surface.Polyline(std::array{0.0, 15.5, 60.0, 15.5});
        surface.End();
        double ink = 0;
        for (int y = 0; y < image.height(); ++y) ink += image.pixelColor(30, y).green() / 255.0;
        EXPECT_NEAR(ink, std::min(1.0, 0.7 * ratio), 0.05) << ratio;
    }
}

TEST(PainterSurface, ContoursFillByTheOddEvenRule) {
    QImage image = Picture(30, 30);
    PainterSurface surface;
    surface.Begin(image);
    surface.FillStyle = FillPattern::Solid;
    surface.FillColor = kWhite;
    const std::array<double, 16> rings{2, 2, 28, 2, 28, 28, 2, 28, 10, 10, 20, 10, 20, 20, 10, 20};
    const std::array<std::int32_t, 2> ends{4, 8};
    surface.PolyPolygon(rings, ends);
    surface.End();
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(15, 15), QColor(Qt::black));
}

TEST(PainterSurface, FloodFillTakesExactlyOneColour) {
    QImage image = Picture(20, 10);
    for (int y = 0; y < 10; ++y) image.setPixelColor(10, y, QColor(1, 1, 1));  // almost black, but a wall
    PainterSurface surface;
    surface.Begin(image);
    surface.FillColor = 0x0000FF;
    surface.ExtFloodFill(3, 3, kBlack, FloodFillMode::Surface);
    surface.ExtFloodFill(100, 3, kBlack, FloodFillMode::Surface);
    surface.End();
    EXPECT_EQ(image.pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(9, 9), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(10, 5), QColor(1, 1, 1));
    EXPECT_EQ(image.pixelColor(15, 5), QColor(0, 0, 0));
}

TEST(PainterSurface, FloodFillReachesRoundCorners) {
    QImage image = Picture(9, 9);
    for (int y = 0; y < 8; ++y) image.setPixelColor(4, y, QColor(9, 9, 9));
    PainterSurface surface;
    surface.Begin(image);
    surface.FillColor = kWhite;
    surface.ExtFloodFill(0, 0, kBlack, FloodFillMode::Surface);
    surface.End();
    EXPECT_EQ(image.pixelColor(8, 0), QColor(Qt::white));
}

TEST(PainterSurface, PrintMovesTheTextPosition) {
    QImage image = Picture(200, 50);
    PainterSurface surface;
    surface.Begin(image);
    surface.CurrentX = 150;
    surface.CurrentY = 150;
    surface.FontSize = 12;
    const double width = surface.TextWidth("IRIDIUM");
    surface.Print("IRIDIUM");
    EXPECT_GT(width, 0);
    EXPECT_DOUBLE_EQ(surface.CurrentX, 150 + width);
    EXPECT_DOUBLE_EQ(surface.CurrentY, 150);
    surface.End();
}

TEST(PainterSurface, ClsClearsAndGoesHome) {
    QImage image = Picture(10, 10);
    PainterSurface surface;
    surface.Begin(image);
    surface.CurrentX = 50;
    surface.BackColor = 0x112233;
    surface.Cls();
    EXPECT_EQ(surface.CurrentX, 0);
    surface.End();
    EXPECT_EQ(image.pixelColor(5, 5), QColor(0x33, 0x22, 0x11));
}

}  // namespace
}  // namespace glintara::desktop
