#pragma once

// The short list of operations under everything that the scene draws. The program paints them on a picture; tests
// record them.
//
// Two measures. The box: twips (1/1440 inch of a screen at scale 1), origin at the top left, y downwards. Pixels: those
// of the picture's memory; a box position divided by the twips per pixel. Each operation tells which it takes.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace glintara {

/// 0xBBGGRR: red in the lowest byte.
using Color = std::uint32_t;

inline constexpr Color kBlack = 0x000000;
inline constexpr Color kWhite = 0xFFFFFF;

/// Colour of the outline of text.
inline constexpr Color kTextOutline = 0x0C0706;

/// Twips in a pixel of a screen of 96 pixels an inch at scale 1, the pixel that `DrawWidth` counts in.
inline constexpr double kTwipsPerScreenPixel = 15;

/// Value of one of the three channels, 0 to 255.
constexpr int RedOf(Color color) { return static_cast<int>(color & 0xFF); }
constexpr int GreenOf(Color color) { return static_cast<int>((color >> 8) & 0xFF); }
constexpr int BlueOf(Color color) { return static_cast<int>((color >> 16) & 0xFF); }

/// How closed shapes are filled.
enum class FillPattern { Solid = 0, Transparent = 1 };

/// How lines and outlines are drawn.
enum class PenPattern { Solid = 0, Dotted = 2, None = 5 };

/// How pen and fill meet what is on the picture already.
enum class MixMode {
    Mask = 9,   ///< each channel of the picture times the same channel of the colour, over 255: black and white act as
                ///< an AND, greys darken evenly, and antialiased edges stay clean
    Copy = 13,  ///< the colour replaces the picture
};

/// The region that a flood fill covers.
enum class FloodFillMode { Surface = 1 };  ///< all that has exactly the given colour and touches the seed

/// A vertex in whole pixels.
struct PixelVertex {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend bool operator==(const PixelVertex&, const PixelVertex&) = default;
};

/// A rectangle in whole pixels.
struct PixelRectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const PixelRectangle&, const PixelRectangle&) = default;
};

/// What is in force for the next operation. Plain values: whoever draws sets those that matter and puts back nothing.
struct DrawState {
    Color ForeColor = kWhite;  ///< lines, outlines, points and text
    Color FillColor = kBlack;
    Color BackColor = kBlack;  ///< what `Cls` clears to
    FillPattern FillStyle = FillPattern::Transparent;
    double DrawWidth = 1;  ///< of lines and points, pixels of a screen at scale 1, whatever the zoom; may be a fraction
    PenPattern DrawStyle = PenPattern::Solid;
    MixMode DrawMode = MixMode::Copy;
    std::string FontName;
    double FontSize = 8;  ///< points
    bool FontBold = false;
    bool FontItalic = false;
    bool FontOutlined = false;  ///< text wears an outline of one pixel in `kTextOutline`, to be read on any ground
    double CurrentX = 0;        ///< where the next text begins: its upper left corner, twips
    double CurrentY = 0;
    bool AutoRedraw = false;  ///< whether what is drawn also goes to the image that the box repaints itself from

    friend bool operator==(const DrawState&, const DrawState&) = default;
};

/// The surface. Coordinates must be finite; they may lie far outside, what is out of the picture is clipped.
/// No operation allocates in the long run, none throws, and only `Print` and `Cls` change the state.
class DrawSurface : public DrawState {
  public:
    DrawSurface() { FontName.reserve(kFontNameRoom); }
    DrawSurface(const DrawSurface&) = delete;
    DrawSurface& operator=(const DrawSurface&) = delete;
    virtual ~DrawSurface() = default;

    double ScaleWidth = 0;  ///< size of the box, twips
    double ScaleHeight = 0;
    double TwipsPerPixelX = kTwipsPerScreenPixel;
    double TwipsPerPixelY = kTwipsPerScreenPixel;

    /// Clears to `BackColor` and moves the text position to the upper left corner.
    virtual void Cls() = 0;

    /// A line with the pen. Twips.
    virtual void Line(double x1, double y1, double x2, double y2) = 0;

    /// A circle, outlined with the pen and filled by the fill style. Twips.
    virtual void Circle(double x, double y, double radius) = 0;

    /// A point in the foreground colour, `DrawWidth` across. Twips.
    virtual void PSet(double x, double y) = 0;

    /// Text of one line, UTF-8, in the foreground colour at the text position, which moves to the end of the text.
    virtual void Print(std::string_view text) = 0;

    /// Extent of a text of one line in the present font, twips.
    virtual double TextWidth(std::string_view text) const = 0;
    virtual double TextHeight(std::string_view text) const = 0;

    /// A closed polygon, outlined with the pen and filled by the fill style; where it crosses itself, by the odd-even
    /// rule. The last vertex is joined to the first. Pixels.
    virtual void Polygon(std::span<const PixelVertex> vertices) = 0;

    /// Fills the region of the seed with the fill colour; nothing when the seed lies outside or has another colour
    /// than `color`. Pixels.
    virtual void ExtFloodFill(std::int32_t x, std::int32_t y, Color color, FloodFillMode mode) = 0;

    /// Blends a part of another surface, stretched, over a part of this one, with one weight for all: 0 leaves this
    /// surface as it is, 255 replaces it. Pixels.
    virtual void AlphaBlend(const PixelRectangle& target, const DrawSurface& source, const PixelRectangle& part,
                            std::uint8_t weight) = 0;

    /// Closed contours filled as one shape by the odd-even rule, without an outline. `xy` holds x and y of all
    /// vertices in turn; `contourEnds` tells for each contour the number of vertices up to its end, those of the
    /// contours before it included. The fill style counts. Pixels and fractions of them.
    virtual void PolyPolygon(std::span<const double> xy, std::span<const std::int32_t> contourEnds) = 0;

    /// An open line through vertices, given as x and y in turn, with the pen. Pixels and fractions of them.
    virtual void Polyline(std::span<const double> xy) = 0;

    /// Lays the fill colour on pixels of one row, from (x, y) to the right, each as far as its own coverage tells: 0
    /// leaves it as it is, 255 gives what a solid fill gives. The mix mode counts. What soft edges and shades are made
    /// of: shapes that are laid beside each other would leave seams. Pixels.
    virtual void CoverRow(std::int32_t x, std::int32_t y, std::span<const std::uint8_t> coverage) = 0;

    /// A star: a soft round dot of light in `color`, which is added to what is on the picture, as much as `weight`
    /// tells: 0 to 1, with all of its light. The centre in pixels and fractions of them, the radius in pixels of a
    /// screen at scale 1, like `DrawWidth`. No pen, no fill.
    virtual void StarDot(double x, double y, double radius, Color color, double weight) = 0;

  private:
    /// Setting the font's name by assignment then needs no memory.
    static constexpr std::size_t kFontNameRoom = 63;
};

}  // namespace glintara
