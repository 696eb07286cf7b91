#pragma once

// How large and how bright a star is drawn.
//
// A dot grows with each magnitude, as stars do on printed charts. A star too faint for a disc keeps the smallest one
// and loses light instead, so that the faintest are barely there and thousands of them look like the glow that they
// are.

#include <cmath>

#include "engine/astro/constants.h"

namespace glintara {

/// A soft round dot: radius in pixels of a screen at scale 1, and how much of its light it has, above 0 to 1.
struct StarDot {
    double radius = 0;
    double weight = 0;
};

/// The dots of one picture.
class StarDots {
  public:
    static constexpr double kLeastRadius = 0.75;
    static constexpr double kMostRadius = 5.5;

    /// The faintest magnitude to which catalogues of the whole sky are full. Beyond it no star is there to be smaller
    /// than the others, and counting from a deeper limit would only swell those that are.
    static constexpr double kFaintest = 9;

    /// Stars fainter than `limit` are crowded; `growth` is what a radius gains with each magnitude, pixels.
    StarDots(double limit, double growth) : limit_(limit < kFaintest ? limit : kFaintest), growth_(growth) {}

    StarDot Of(double magnitude) const {
        const double size = (limit_ + 1 - magnitude) * growth_;
        if (size >= kFullLight) {
            const double radius = size < kPlainRadius ? size : kPlainRadius + kSlower * (size - kPlainRadius);
            return {radius < kMostRadius ? radius : kMostRadius, 1};
        }
        const double dimmed = 1 + kDimming * (kFullLight - size);
        return {size > kLeastRadius ? size : kLeastRadius, 1 / (dimmed * dimmed * dimmed)};
    }

  private:
    /// Radius from which a dot has all its light, pixels; and how fast it loses light below.
    static constexpr double kFullLight = 1.4;
    static constexpr double kDimming = 0.95;

    /// Radius beyond which a dot grows slower, pixels, so that the brightest stay stars and do not become balls; and by
    /// which share of the growth.
    static constexpr double kPlainRadius = 2.5;
    static constexpr double kSlower = 0.5;

    double limit_;
    double growth_;
};

/// The faintest magnitude that a sky has room for when a quarter of it lies along `pixels` pixels of a screen.
inline double CrowdedMagnitude(double pixels) {
    constexpr double kUsualPixels = 540;
    constexpr double kUsualLimit = 5.7;
    constexpr double kPerUnit =
        1.8;  // three times as many stars with each magnitude, four times the room with each turn
    return kUsualLimit + kPerUnit * std::log(pixels / kUsualPixels);
}

}  // namespace glintara
