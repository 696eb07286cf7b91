#pragma once

// Small discs and rings as ready-made pictures. A full list has 3000 marks of a few looks; Qt fills each ellipse as a
// path of its own, which takes ten times as long as laying a picture of it on.

#include <QColor>
#include <QImage>
#include <array>
#include <vector>

#include "desktop/scene/clean_painter.h"

namespace glintara::desktop {

/// What a small disc looks like. Lengths in pixels of the layout.
struct DiscLook {
    double radius = 0;
    QRgb fill = 0;        ///< 0: not filled
    QRgb outline = 0;     ///< 0: not outlined
    double penWidth = 0;  ///< of the outline, half of it outside of the radius
    double ratio = 1;     ///< device pixels in a pixel of the layout

    friend bool operator==(const DiscLook&, const DiscLook&) = default;
};

class DiscStamps {
  public:
    /// Discs with a greater radius, outline included, are not kept: device pixels.
    static constexpr double kMostRadius = 24;

    static bool Takes(const DiscLook& look);

    /// Draws a disc round `centre` (pixels of the layout) with `painter`, whose device has the look's ratio. The centre
    /// is rounded to a quarter of a device pixel.
    void Draw(CleanPainter& painter, const DiscLook& look, const QPointF& centre);

  private:
    /// Places within a device pixel, in each direction.
    static constexpr std::size_t kPhases = 4;

    /// Looks kept at once. A picture has fewer: in sunlight, in shadow, and the ring, on two grounds.
    static constexpr std::size_t kMostLooks = 16;

    struct Sheet {
        DiscLook look;
        std::array<QImage, kPhases * kPhases> pictures;  ///< by phase; a null picture is not made yet
    };

    Sheet& SheetOf(const DiscLook& look);

    std::vector<Sheet> sheets_;
    std::size_t oldest_ = 0;
};

}  // namespace glintara::desktop
