#pragma once

// A surface that draws nothing and remembers everything, for tests.

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "scene/surface/draw_surface.h"

namespace glintara {

enum class DrawOperation {
    Cls,
    Line,
    Circle,
    PSet,
    Print,
    Polygon,
    ExtFloodFill,
    AlphaBlend,
    PolyPolygon,
    Polyline,
    CoverRow,
    StarDot,
};

/// One operation, with the state that was in force when it came.
struct RecordedOperation {
    DrawOperation operation = DrawOperation::Cls;
    DrawState state;

    /// The arguments in their order, in their own measure. Polygons: x and y of each vertex; a flood fill: seed, colour
    /// and mode; a blend: left, top, width and height of the target, the same of the part, and the weight; a covered
    /// row: x and y of its first pixel, then the coverages; a star's dot: x, y, radius, colour and weight.
    std::vector<double> numbers;

    std::vector<std::int32_t> contourEnds;  ///< of a `PolyPolygon`
    std::string text;                       ///< of a `Print`

    friend bool operator==(const RecordedOperation&, const RecordedOperation&) = default;
};

/// One line for people: the operation, its arguments, and what of the state it depends on, as in
/// "Line 0 0 100 50 pen 0x0000FF width 1". Numbers are given in full.
std::string OperationText(const RecordedOperation& operation);

/// How GoogleTest shows an operation.
void PrintTo(const RecordedOperation& operation, std::ostream* stream);

/// The recording surface. Its font is a plain one: each character is 0.6 of the font size wide, a line 1.25 high.
class RecordingSurface : public DrawSurface {
  public:
    /// A box of a size in twips, with 15 twips to the pixel.
    RecordingSurface(double width, double height);

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

    /// All operations since the start or since `Forget`, the oldest first.
    const std::vector<RecordedOperation>& Operations() const { return operations_; }

    /// Those of one kind, in their order.
    std::vector<RecordedOperation> OperationsOf(DrawOperation kind) const;

    /// All operations as text, a line each.
    std::string Text() const;

    /// Forgets the operations; the state stays.
    void Forget() { operations_.clear(); }

  private:
    RecordedOperation& Record(DrawOperation kind, std::vector<double> numbers);

    std::vector<RecordedOperation> operations_;
};

}  // namespace glintara
