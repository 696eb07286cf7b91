#pragma once

// Stars as ready-made pictures of light. A sky has tens of thousands of them in a few sizes, so each is added to the
// picture's memory straight from a small table of brightness.

#include <QImage>
#include <array>
#include <cstdint>
#include <vector>

#include "scene/surface/draw_surface.h"

namespace glintara::desktop {

class StarStamps {
  public:
    /// Greatest radius, device pixels; larger ones are drawn with this.
    static constexpr double kMostRadius = 24;

    /// Adds the light of a star to an image of format RGB32: centre and radius in device pixels, rounded to a quarter,
    /// `weight` from 0 to 1.
    void Add(QImage& image, double x, double y, double radius, Color color, double weight);

  private:
    static constexpr int kPhases = 4;     // places within a pixel, in each direction
    static constexpr int kSizeSteps = 4;  // radii in a pixel
    static constexpr std::size_t kSizes = static_cast<std::size_t>(kMostRadius * kSizeSteps) + 1;

    /// Brightness around a star, 0 to 255: a square of rows.
    struct Stamp {
        int side = 0;  // 0 while it is not made yet
        std::vector<std::uint8_t> light;
    };

    const Stamp& StampOf(int size, int phaseX, int phaseY);

    std::array<Stamp, kSizes * kPhases * kPhases> stamps_;
};

}  // namespace glintara::desktop
