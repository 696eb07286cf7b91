#include "engine/astro/star_color.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "engine/astro/support.h"

namespace glintara {
namespace {

using Channels = std::array<int, 3>;

Channels ChannelsOf(std::uint32_t color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF), static_cast<int>(color >> 16 & 0xFF)};
}

/// A bell with two widths.
double Bell(double at, double middle, double below, double above) {
    const double t = (at - middle) / (at < middle ? below : above);
    return std::exp(-t * t / 2);
}

/// Colour of a glowing body by the long way: Planck's law, nanometre by nanometre, as seen through the colour matching
/// functions of the standard observer of 1931 (fit of Wyman, Sloan and Shirley, JCGT 2, 2013).
Channels IntegratedColor(double kelvins) {
    double x = 0;
    double y = 0;
    double z = 0;
    for (double nm = 380; nm <= 780; nm += 1) {
        const double power = std::pow(nm / 560, -5) / (std::exp(1.438777e7 / (nm * kelvins)) - 1);
        x += power * (1.056 * Bell(nm, 599.8, 37.9, 31.0) + 0.362 * Bell(nm, 442.0, 16.0, 26.7) -
                      0.065 * Bell(nm, 501.1, 20.4, 26.2));
        y += power * (0.821 * Bell(nm, 568.8, 46.9, 40.5) + 0.286 * Bell(nm, 530.9, 16.3, 31.1));
        z += power * (1.217 * Bell(nm, 437.0, 11.8, 36.0) + 0.681 * Bell(nm, 459.0, 26.0, 13.8));
    }
    const std::array light{3.2404542 * x - 1.5371385 * y - 0.4985314 * z,
                           -0.9692660 * x + 1.8760108 * y + 0.0415560 * z,
                           0.0556434 * x - 0.2040259 * y + 1.0572252 * z};
    const double most = *std::max_element(light.begin(), light.end());
    Channels channels{};
    for (std::size_t i = 0; i < light.size(); ++i) {
        const double share = std::max(light[i] / most, 0.0);
        const double shown = share < 0.0031308 ? 12.92 * share : 1.055 * std::pow(share, 1 / 2.4) - 0.055;
        channels[i] = static_cast<int>(std::lround(255 * shown));
    }
    return channels;
}

TEST(StarColor, TemperaturesAreThoseOfKnownStars) {
    EXPECT_NEAR(StarTemperature(0.653), 5772, 100) << "the Sun";
    EXPECT_NEAR(StarTemperature(0.0), 9790, 500) << "a star of type A0";
    EXPECT_NEAR(StarTemperature(1.54), 3850, 200) << "Aldebaran, K5 III";
    EXPECT_NEAR(StarTemperature(0.43), 6650, 200) << "a star of type F5";
}

TEST(StarColor, IsThatOfAGlowingBody) {
    for (const double kelvins : {2000.0, 2500.0, 3500.0, 4500.0, 5800.0, 6500.0, 8000.0, 10000.0, 15000.0, 24000.0}) {
        const Channels found = ChannelsOf(BlackBodyColor(kelvins));
        const Channels expected = IntegratedColor(kelvins);
        for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], 6) << kelvins << ' ' << i;
    }
}

TEST(StarColor, PaletteGoesFromBlueOverWhiteToOrange) {
    const Channels rigel = ChannelsOf(StarPalette()[static_cast<std::size_t>(StarColorStep(-0.03))]);
    const Channels procyon = ChannelsOf(StarPalette()[static_cast<std::size_t>(StarColorStep(0.43))]);
    const Channels betelgeuse = ChannelsOf(StarPalette()[static_cast<std::size_t>(StarColorStep(1.50))]);
    EXPECT_EQ(rigel[2], 255);
    EXPECT_LT(rigel[0], 230);
    EXPECT_GT(*std::min_element(procyon.begin(), procyon.end()), 235);
    EXPECT_EQ(betelgeuse[0], 255);
    EXPECT_LT(betelgeuse[2], 200);
    EXPECT_GT(betelgeuse[2], 120) << "pale all the same";
    for (std::size_t i = 1; i < StarPalette().size(); ++i) {
        EXPECT_GE(ChannelsOf(StarPalette()[i])[0], ChannelsOf(StarPalette()[i - 1])[0]) << i;
        EXPECT_LE(ChannelsOf(StarPalette()[i])[2], ChannelsOf(StarPalette()[i - 1])[2]) << i;
    }
}

TEST(StarColor, AnyNumberHasAPlaceInThePalette) {
    EXPECT_EQ(StarColorStep(-0.4), 0);
    EXPECT_EQ(StarColorStep(0), 4);
    EXPECT_EQ(StarColorStep(2), kStarColors - 1);
    for (const double index : test::kHostile) {
        EXPECT_GE(StarColorStep(index), 0) << index;
        EXPECT_LT(StarColorStep(index), kStarColors) << index;
    }
}

}  // namespace
}  // namespace glintara
