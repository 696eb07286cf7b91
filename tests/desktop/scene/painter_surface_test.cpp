#include "desktop/scene/painter_surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>

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

TEST(PainterSurface, RowsAreCoveredPixelByPixel) {
    QImage image = Picture(40, 3);
    PainterSurface surface;
    surface.Begin(image);
    // Runs of one coverage, longer and shorter than what is worked on at once, and single pixels.
    std::array<std::uint8_t, 40> coverage{};
    for (std::size_t i = 0; i < coverage.size(); ++i)
        coverage[i] = i < 11 ? 255 : i < 16 ? 0 : i < 19 ? 90 : static_cast<std::uint8_t>(i * 6);
    for (const MixMode mode : {MixMode::Copy, MixMode::Mask}) {
        for (const Color color : {0x5A5A5AU, 0x3C5A78U, 0xFFFFFFU, 0x000000U}) {
            image.fill(QColor(200, 100, 50));
            surface.DrawMode = mode;
            surface.FillColor = color;
            surface.CoverRow(0, 1, coverage);
            const std::array<int, 3> ground{200, 100, 50};
            const std::array<int, 3> ink{RedOf(color), GreenOf(color), BlueOf(color)};
            for (int x = 0; x < 40; ++x) {
                const double share = coverage[static_cast<std::size_t>(x)] / 255.0;
                const QColor found = image.pixelColor(x, 1);
                const std::array<int, 3> channels{found.red(), found.green(), found.blue()};
                for (std::size_t c = 0; c < 3; ++c) {
                    const double full = mode == MixMode::Copy ? ink[c] : ground[c] * ink[c] / 255.0;
                    // A coverage of all or nothing is exact.
                    const double tolerance = share == 0 || share == 1 ? 0.5 : 1;
                    EXPECT_NEAR(channels[c], ground[c] + share * (full - ground[c]), tolerance) << color << " at " << x;
                }
                EXPECT_EQ(qAlpha(image.pixel(x, 1)), 255);
                EXPECT_EQ(image.pixelColor(x, 0), QColor(200, 100, 50));
                EXPECT_EQ(image.pixelColor(x, 2), QColor(200, 100, 50));
            }
        }
    }
    surface.End();
}

TEST(PainterSurface, RowsAreCutAtTheEdges) {
    QImage image = Picture(10, 2);
    PainterSurface surface;
    surface.Begin(image);
    surface.FillColor = kWhite;
    const std::array<std::uint8_t, 6> ramp{51, 102, 153, 204, 255, 255};
    surface.CoverRow(-2, 0, ramp);
    surface.CoverRow(7, 0, ramp);
    surface.CoverRow(0, -1, ramp);
    surface.CoverRow(0, 2, ramp);
    surface.CoverRow(-9, 1, ramp);
    surface.CoverRow(10, 1, ramp);
    surface.End();
    EXPECT_EQ(image.pixelColor(0, 0).green(), 153);
    EXPECT_EQ(image.pixelColor(3, 0).green(), 255);
    EXPECT_EQ(image.pixelColor(4, 0).green(), 0);
    EXPECT_EQ(image.pixelColor(7, 0).green(), 51);
    EXPECT_EQ(image.pixelColor(9, 0).green(), 153);
    for (int x = 0; x < 10; ++x) EXPECT_EQ(image.pixelColor(x, 1), QColor(0, 0, 0));
}

TEST(PainterSurface, StarsAreRoundSoftAndOfTheirColour) {
    for (const int ratio : {1, 2}) {
        QImage image = Picture(40 * ratio, 40 * ratio, ratio);
        PainterSurface surface;
        surface.Begin(image);
        surface.StarDot(20 * ratio + 0.5, 20 * ratio + 0.5, 4, 0x80FF40, 1);
        surface.End();
        const auto green = [&](int dx, int dy) {
            return image.pixelColor(20 * ratio + dx * ratio, 20 * ratio + dy * ratio).green();
        };
        EXPECT_EQ(image.pixelColor(20 * ratio, 20 * ratio), QColor(0x40, 0xFF, 0x80));
        EXPECT_EQ(green(3, 0), 255);
        EXPECT_LT(green(5, 0), 128);
        EXPECT_GT(green(5, 0), green(8, 0));
        EXPECT_EQ(green(13, 0), 0);
        for (int reach = 1; reach < 12; ++reach) {
            EXPECT_EQ(green(reach, 0), green(-reach, 0)) << reach;
            EXPECT_EQ(green(reach, 0), green(0, reach)) << reach;
        }
        EXPECT_LT(green(4, 4), green(4, 0)) << "it has no corners";
    }
}

TEST(PainterSurface, AStarAddsItsLight) {
    QImage image = Picture(9, 9);
    image.fill(QColor(200, 10, 0));
    PainterSurface surface;
    surface.Begin(image);
    surface.StarDot(4.5, 4.5, 2, 0x404040, 1);
    surface.StarDot(4.5, 4.5, 2, 0x404040, 0.5);
    surface.End();
    EXPECT_EQ(image.pixelColor(4, 4).red(), 255) << "never more than full";
    EXPECT_NEAR(image.pixelColor(4, 4).green(), 10 + 64 + 32, 1);
    EXPECT_NEAR(image.pixelColor(4, 4).blue(), 64 + 32, 1);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(200, 10, 0));
}

TEST(PainterSurface, AFaintStarIsBarelyThereWhereverItStands) {
    for (const double at : {4.0, 4.25, 4.5, 4.75}) {
        QImage image = Picture(9, 9);
        PainterSurface surface;
        surface.Begin(image);
        surface.StarDot(at, at, 0.75, kWhite, 0.2);
        surface.End();
        int light = 0;
        int most = 0;
        for (int y = 0; y < 9; ++y) {
            for (int x = 0; x < 9; ++x) {
                light += image.pixelColor(x, y).red();
                most = std::max(most, image.pixelColor(x, y).red());
            }
        }
        EXPECT_LE(most, 51);
        EXPECT_NEAR(light, 0.2 * 255 * 2.2, 0.2 * 255 * 0.6) << at;  // of the pixels that a disc with this edge covers
    }
}

TEST(PainterSurface, StarsAreCutAtTheEdges) {
    QImage image = Picture(10, 10);
    PainterSurface surface;
    surface.StarDot(5, 5, 3, kWhite, 1);  // before there is a picture
    surface.Begin(image);
    surface.StarDot(-1, 5, 3, kWhite, 1);
    surface.StarDot(5, 10.5, 3, kWhite, 1);
    surface.StarDot(-50, 5, 3, kWhite, 1);
    surface.StarDot(5, 5e9, 3, kWhite, 1);
    surface.StarDot(5, 5, 1e9, kWhite, 0);
    surface.End();
    EXPECT_EQ(image.pixelColor(0, 5), QColor(255, 255, 255));
    EXPECT_EQ(image.pixelColor(5, 9), QColor(255, 255, 255));
    EXPECT_EQ(image.pixelColor(9, 1), QColor(0, 0, 0));
}

// What an outline is for: on a light ground the text is still surrounded by dark pixels, one wide.
TEST(PainterSurface, OutlinedTextIsReadOnAnyGround) {
    for (const double ratio : {1.0, 2.0}) {
        const auto paint = [&](bool outlined) {
            QImage image = Picture(static_cast<int>(80 * ratio), static_cast<int>(40 * ratio), ratio);
            image.fill(QColor(0xB0, 0xD0, 0xB0));
            PainterSurface surface;
            surface.Begin(image);
            surface.ForeColor = kWhite;
            surface.FontSize = 9;
            surface.FontOutlined = outlined;
            surface.CurrentX = surface.CurrentY = 150;
            surface.Print("IIII");
            EXPECT_DOUBLE_EQ(surface.CurrentX, 150 + surface.TextWidth("IIII"));
            surface.End();
            return image;
        };
        const QImage plain = paint(false);
        const QImage outlined = paint(true);
        int dark = 0;
        int light = 0;
        int lightBefore = 0;
        for (int y = 0; y < plain.height(); ++y) {
            for (int x = 0; x < plain.width(); ++x) {
                dark += qGreen(outlined.pixel(x, y)) < 0x40 ? 1 : 0;
                light += qGreen(outlined.pixel(x, y)) > 0xE8 ? 1 : 0;
                lightBefore += qGreen(plain.pixel(x, y)) > 0xE8 ? 1 : 0;
            }
        }
        EXPECT_GT(lightBefore, 10) << ratio;
        EXPECT_GT(light, lightBefore / 2) << ratio;  // the letters stand where they stood
        EXPECT_GT(dark, light) << ratio;
        // No dark pixel is farther from a letter than the outline is wide.
        const int reach = static_cast<int>(2 * ratio);
        for (int y = 0; y < plain.height(); ++y) {
            for (int x = 0; x < plain.width(); ++x) {
                if (qGreen(outlined.pixel(x, y)) >= 0x40) continue;
                bool near = false;
                for (int dy = -reach; dy <= reach; ++dy)
                    for (int dx = -reach; dx <= reach; ++dx)
                        near =
                            near || (plain.valid(x + dx, y + dy) && plain.pixel(x + dx, y + dy) != plain.pixel(0, 0));
                EXPECT_TRUE(near) << x << ", " << y;
            }
        }
    }
}

TEST(PainterSurface, OutlinedTextTakesTheColourOfTheMoment) {
    QImage image = Picture(80, 40);
    PainterSurface surface;
    surface.Begin(image);
    const auto reddest = [&](Color color) {
        image.fill(Qt::black);
        surface.FontOutlined = true;
        surface.FontSize = 9;
        surface.ForeColor = color;
        surface.CurrentX = surface.CurrentY = 150;
        surface.Print("IIII");
        int red = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) red = std::max(red, qRed(image.pixel(x, y)));
        return red;
    };
    EXPECT_LT(reddest(0x00FF00), 20);
    EXPECT_GT(reddest(0x0000FF), 200);
    EXPECT_LT(reddest(0x00FF00), 20);
    surface.End();
}

#if defined(__x86_64__) && defined(__GNUC__)

// The upper halves of the sixteen vector registers. In assembler, because the compiler would clear them by itself.
void DirtyUpperHalves() {
    asm volatile(
        "vcmpeqps %%ymm0, %%ymm0, %%ymm0\n vmovaps %%ymm0, %%ymm1\n vmovaps %%ymm0, %%ymm7\n"
        "vmovaps %%ymm0, %%ymm15\n" ::
            : "xmm0", "xmm1", "xmm7", "xmm15");
}

bool AreUpperHalvesClear() {
    alignas(16) std::array<std::array<std::uint64_t, 2>, 4> upper{};
    asm volatile(
        "vextractf128 $1, %%ymm0, (%0)\n vextractf128 $1, %%ymm1, 16(%0)\n vextractf128 $1, %%ymm7, 32(%0)\n"
        "vextractf128 $1, %%ymm15, 48(%0)\n"
        :
        : "r"(upper.data())
        : "memory");
    return std::ranges::all_of(upper, [](const auto& half) { return half[0] == 0 && half[1] == 0; });
}

TEST(PainterSurface, LeavesTheUpperHalvesOfTheRegistersClear) {
    if (__builtin_cpu_supports("avx") == 0) return;  // a processor without them
    QImage image = Picture(60, 40);
    PainterSurface surface;
    surface.Begin(image);
    surface.FillStyle = FillPattern::Solid;
    const std::array<double, 6> triangle{1, 1, 20, 1, 10, 20};
    const std::array<std::int32_t, 1> end{3};
    const std::array<PixelVertex, 3> corners{PixelVertex{1, 1}, {20, 1}, {10, 20}};
    DirtyUpperHalves();
    ASSERT_FALSE(AreUpperHalvesClear());
    const auto expectClean = [&](const char* what, auto&& call) {
        for (int again = 0; again < 2; ++again) {  // the second time from what was kept
            DirtyUpperHalves();
            call();
            EXPECT_TRUE(AreUpperHalvesClear()) << what;
        }
    };
    expectClean(
        "Cls", [&] { surface.Cls(); });
    expectClean(
        "Line", [&] { surface.Line(0, 0, 100, 100); });
    expectClean(
        "Circle", [&] { surface.Circle(300, 300, 100); });
    expectClean(
        "large Circle", [&] { surface.Circle(300, 300, 3000); });
    expectClean(
        "PSet", [&] { surface.PSet(300, 300); });
    expectClean(
        "Polygon", [&] { surface.Polygon(corners); });
    expectClean(
        "PolyPolygon", [&] { surface.PolyPolygon(triangle, end); });
    expectClean(
        "Polyline", [&] { surface.Polyline(triangle); });
    expectClean("Print", [&] { surface.Print("clean"); });
    surface.FontOutlined = true;
    expectClean(
        "outlined Print", [&] { surface.Print("clean"); });
    expectClean("Begin", [&] { surface.Begin(image); });
    expectClean("End", [&] {
        surface.Begin(image);
        surface.End();
    });
}

#endif

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
