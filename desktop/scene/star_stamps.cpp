#include "desktop/scene/star_stamps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace glintara::desktop {

namespace {

/// Width of a dot's soft edge, device pixels: from this much inside of the radius to as much beyond it.
constexpr double kSoftEdge = 0.65;

/// Bright stars have a glow: its brightness beside the disc, its radius in radii of the disc, and the radius from which
/// on there is one, device pixels.
constexpr double kGlow = 0.16;
constexpr double kGlowRadius = 3;
constexpr double kLeastGlowing = 1.5;

constexpr double kFull = 255;

bool Glows(double radius) { return radius >= kLeastGlowing; }

double ReachOf(double radius) { return Glows(radius) ? kGlowRadius * radius : radius + kSoftEdge; }

/// Brightness at a distance from the middle, 0 to 1.
double LightAt(double distance, double radius) {
    const double edge = std::clamp((radius + kSoftEdge - distance) / (2 * kSoftEdge), 0.0, 1.0);
    const double disc = edge * edge * (3 - 2 * edge);
    const double outward = 1 - distance / (kGlowRadius * radius);
    const double glow = Glows(radius) && outward > 0 ? kGlow * outward * outward : 0;
    return std::max(disc, glow);
}

/// One channel with light added, which never wraps round.
unsigned Lit(unsigned channel, unsigned light) { return std::min(channel + light, 255U); }

}  // namespace

const StarStamps::Stamp& StarStamps::StampOf(int size, int phaseX, int phaseY) {
    const int index = (size * kPhases + phaseY) * kPhases + phaseX;
    Stamp& stamp = stamps_[static_cast<std::size_t>(index)];
    if (stamp.side > 0) return stamp;
    const double radius = static_cast<double>(size) / kSizeSteps;
    const int margin = static_cast<int>(std::ceil(ReachOf(radius)));
    stamp.side = 2 * margin + 1;
    stamp.light.reserve(static_cast<std::size_t>(stamp.side) * static_cast<std::size_t>(stamp.side));
    for (int row = -margin; row <= margin; ++row) {
        for (int column = -margin; column <= margin; ++column) {
            const double dx = column + 0.5 - static_cast<double>(phaseX) / kPhases;
            const double dy = row + 0.5 - static_cast<double>(phaseY) / kPhases;
            stamp.light.push_back(static_cast<std::uint8_t>(std::lround(kFull * LightAt(std::hypot(dx, dy), radius))));
        }
    }
    return stamp;
}

void StarStamps::Add(QImage& image, double x, double y, double radius, Color color, double weight) {
    const int size = static_cast<int>(std::lround(std::clamp(radius, 0.0, kMostRadius) * kSizeSteps));
    const double stepX = std::floor(x * kPhases + 0.5);
    const double stepY = std::floor(y * kPhases + 0.5);
    const double farthest = 1e6;
    if (!(std::abs(x) < farthest && std::abs(y) < farthest) || !(weight > 0)) return;
    const int pixelX = static_cast<int>(std::floor(stepX / kPhases));
    const int pixelY = static_cast<int>(std::floor(stepY / kPhases));
    const Stamp& stamp =
        StampOf(size, static_cast<int>(stepX) - pixelX * kPhases, static_cast<int>(stepY) - pixelY * kPhases);
    const int left = pixelX - stamp.side / 2;
    const int top = pixelY - stamp.side / 2;
    const int firstColumn = std::max(0, -left);
    const int endColumn = std::min(stamp.side, image.width() - left);
    const int firstRow = std::max(0, -top);
    const int endRow = std::min(stamp.side, image.height() - top);
    if (firstColumn >= endColumn || firstRow >= endRow) return;

    // In 65536ths of a channel for each of the stamp's steps.
    constexpr unsigned kHalf = 32768;
    const double scale = std::min(weight, 1.0) * 65536 / kFull;
    const auto red = static_cast<unsigned>(std::lround(RedOf(color) * scale));
    const auto green = static_cast<unsigned>(std::lround(GreenOf(color) * scale));
    const auto blue = static_cast<unsigned>(std::lround(BlueOf(color) * scale));
    const auto bytesPerLine = static_cast<std::ptrdiff_t>(image.bytesPerLine());
    unsigned char* line = image.scanLine(top + firstRow);
    for (int row = firstRow; row < endRow; ++row, line += bytesPerLine) {
        QRgb* const pixels = reinterpret_cast<QRgb*>(line);
        const std::uint8_t* const light = stamp.light.data() + static_cast<std::ptrdiff_t>(row) * stamp.side;
        for (int column = firstColumn; column < endColumn; ++column) {
            const unsigned part = light[column];
            if (part == 0) continue;
            QRgb& pixel = pixels[left + column];
            const unsigned lit = Lit((pixel >> 16) & 0xFF, (part * red + kHalf) >> 16) << 16 |
                                 Lit((pixel >> 8) & 0xFF, (part * green + kHalf) >> 16) << 8 |
                                 Lit(pixel & 0xFF, (part * blue + kHalf) >> 16);
            pixel = (pixel & 0xFF000000) | lit;
        }
    }
}

}  // namespace glintara::desktop
