#include "engine/astro/star_color.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace glintara {

namespace {

constexpr double kBluest = -0.4;
constexpr double kReddest = 2;
constexpr double kStep = 0.1;

/// About that of a white star.
constexpr double kWhiteIndex = 0.3;

/// Share of the glowing body's colour; the rest is white.
constexpr double kColorShare = 0.75;

constexpr double kCoolest = 1667;
constexpr double kHottest = 25000;

/// Value of a polynomial, the coefficient of the highest power first.
double Cubic(const std::array<double, 4>& c, double x) { return ((c[0] * x + c[1]) * x + c[2]) * x + c[3]; }

struct Chromaticity {
    double x = 0;
    double y = 0;
};

Chromaticity PlanckianLocus(double kelvins) {
    constexpr std::array kWarmX{-0.2661239e9, -0.2343589e6, 0.8776956e3, 0.179910};
    constexpr std::array kColdX{-3.0258469e9, 2.1070379e6, 0.2226347e3, 0.240390};
    constexpr std::array kLowY{-1.1063814, -1.34811020, 2.18555832, -0.20219683};
    constexpr std::array kMiddleY{-0.9549476, -1.37418593, 2.09137015, -0.16748867};
    constexpr std::array kHighY{3.0817580, -5.87338670, 3.75112997, -0.37001483};
    const double x = Cubic(kelvins < 4000 ? kWarmX : kColdX, 1 / kelvins);
    return {x, Cubic(kelvins < 2222 ? kLowY : kelvins < 4000 ? kMiddleY : kHighY, x)};
}

/// The channel value, 0 to 1, that a screen shows as this share of its light.
double Encoded(double light) { return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055; }

/// Channels red, green, blue, 0 to 1, the strongest 1.
std::array<double, 3> GlowChannels(double kelvins) {
    const Chromaticity c = PlanckianLocus(std::clamp(kelvins, kCoolest, kHottest));
    const double x = c.x / c.y;
    const double z = (1 - c.x - c.y) / c.y;
    std::array channels{3.2406 * x - 1.5372 - 0.4986 * z, -0.9689 * x + 1.8758 + 0.0415 * z,
                        0.0557 * x - 0.2040 + 1.0570 * z};
    const double most = *std::max_element(channels.begin(), channels.end());
    for (double& channel : channels) channel = Encoded(std::max(channel, 0.0) / most);
    return channels;
}

std::uint32_t Packed(const std::array<double, 3>& channels, double share) {
    std::uint32_t color = 0;
    for (std::size_t i = channels.size(); i-- > 0;) {
        const double value = 1 + share * (channels[i] - 1);
        color = color << 8 | static_cast<std::uint32_t>(std::lround(255 * value));
    }
    return color;
}

}  // namespace

double StarTemperature(double colorIndex) {
    const double scaled = 0.92 * std::clamp(colorIndex, kBluest, kReddest);
    return 4600 * (1 / (scaled + 1.7) + 1 / (scaled + 0.62));
}

std::uint32_t BlackBodyColor(double kelvins) { return Packed(GlowChannels(kelvins), 1); }

const std::array<std::uint32_t, kStarColors>& StarPalette() {
    static const auto palette = [] {
        std::array<std::uint32_t, kStarColors> colors{};
        for (std::size_t i = 0; i < colors.size(); ++i) {
            const double index = kBluest + kStep * static_cast<double>(i);
            colors[i] = Packed(GlowChannels(StarTemperature(index)), kColorShare);
        }
        return colors;
    }();
    return palette;
}

int StarColorStep(double colorIndex) {
    const double index = std::isnan(colorIndex) ? kWhiteIndex : std::clamp(colorIndex, kBluest, kReddest);
    return static_cast<int>(std::lround((index - kBluest) / kStep));
}

}  // namespace glintara
