#pragma once

// The surface that the program shows: drawing operations painted by Qt on an image, antialiased, at the display's pixel
// ratio.

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainterPath>
#include <QStaticText>
#include <map>
#include <memory>
#include <vector>

#include "desktop/scene/clean_painter.h"
#include "desktop/scene/disc_stamps.h"
#include "desktop/scene/star_stamps.h"
#include "scene/surface/draw_surface.h"

namespace glintara::desktop {

/// 0xBBGGRR as Qt's colour: the one place where colours are turned.
QColor QtColor(Color color);

/// Paints on an image of format RGB32 that the caller owns. Operations count only between `Begin` and `End`.
class PainterSurface : public DrawSurface {
  public:
    PainterSurface() = default;
    ~PainterSurface() override { End(); }

    /// Begins to paint on `image`, whose device pixel ratio tells how fine it is. The size of the box follows from it.
    void Begin(QImage& image);
    void End();

    /// Sets the size of the box from an image without painting, for whoever asks between frames.
    void TakeScale(const QImage& image);

    void Cls() override;
    void Line(double x1, double y1, double x2, double y2) override;
    void Circle(double x, double y, double radius) override;
    void PSet(double x, double y) override;
    void Print(std::string_view text) override;
    double TextWidth(std::string_view text) const override;
    double TextHeight(std::string_view text) const override;
    void Polygon(std::span<const PixelVertex> vertices) override;
    void ExtFloodFill(std::int32_t x, std::int32_t y, Color color, FloodFillMode mode) override;
    void AlphaBlend(const PixelRectangle& target, const DrawSurface& source, const PixelRectangle& part,
                    std::uint8_t weight) override;
    void PolyPolygon(std::span<const double> xy, std::span<const std::int32_t> contourEnds) override;
    void Polyline(std::span<const double> xy) override;
    void CoverRow(std::int32_t x, std::int32_t y, std::span<const std::uint8_t> coverage) override;
    void StarDot(double x, double y, double radius, Color color, double weight) override;

  private:
    /// A text laid out once: the same names are written in every picture.
    struct Words {
        QStaticText layout;
        double advance = 0;  ///< pixels of the layout
        QImage stamp;        ///< the outlined text as a ready-made picture; null until it is printed
        Color stampColor = 0;
        double stampRatio = 0;
    };

    /// A font with its measures, and what has been written in it.
    struct Face {
        std::string name;
        double size = 0;
        bool bold = false;
        bool italic = false;
        QFont font;
        QFontMetricsF metrics{QFont()};
        std::map<std::string, Words, std::less<>> words;
    };

    Face& CurrentFace() const;
    Words& WordsOf(std::string_view text) const;
    void StampWords(Words& words);
    bool StampDisc(const QPointF& centre, double radius);
    void TakePoints(std::span<const double> xy);
    bool MasksByBlack() const;
    QColor Ink(Color color) const;
    void SetPen();
    void SetBrush();
    void SetMode();
    QPointF FromPixels(double x, double y) const { return {x / ratio_, y / ratio_}; }

    QImage* image_ = nullptr;
    CleanPainter painter_;
    double ratio_ = 1;
    mutable std::vector<std::unique_ptr<Face>> faces_;
    DiscStamps stamps_;
    StarStamps starStamps_;
    std::size_t wordStamps_ = 0;  // made since they were last thrown away
    QPainterPath path_;
    std::vector<QPointF> points_;
    std::vector<std::pair<int, int>> floodStack_;
};

}  // namespace glintara::desktop
