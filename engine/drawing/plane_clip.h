#pragma once

// Contours and lines of the plane, cut to a rectangle on their way to who draws them. Pixels, y downwards.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/glintcore.h"

namespace glintara {

struct PlanePoint {
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(const PlanePoint&, const PlanePoint&) = default;
};

/// A rectangle with its edges.
struct PlaneRectangle {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    constexpr bool Contains(const PlanePoint& p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
    constexpr bool IsEmpty() const { return !(left < right && top < bottom); }
};

/// What two rectangles have in common; may be empty.
PlaneRectangle Intersection(const PlaneRectangle& a, const PlaneRectangle& b);

/// Whether two rectangles have a point in common, be it of their edges.
bool Overlap(const PlaneRectangle& a, const PlaneRectangle& b);

/// Cuts the segment from `a` to `b` to the rectangle (Liang and Barsky, ACM Trans. Graph. 3, 1, 1984). False when
/// nothing of it lies inside; `a` and `b` then are left alone.
bool ClipSegment(const PlaneRectangle& window, PlanePoint& a, PlanePoint& b);

/// Closed contours, each cut to a rectangle (Sutherland and Hodgman, Comm. ACM 17, 32, 1974) and laid down as x and y
/// in turn in memory of the caller. By the odd-even rule they cover in the rectangle what the uncut ones cover there;
/// the stretches that run along its edges have no meaning.
class ContourStore {
  public:
    /// Most contours of one shape.
    static constexpr int kMostContours = 2;

    /// A vertex nearer than `merge` pixels to the one before is left out.
    ContourStore(const PlaneRectangle& window, double merge, std::span<double> room)
        : window_(window), merge_(merge), room_(room) {}

    /// The next vertex of the contour being laid down.
    void Add(const PlanePoint& vertex) {
        if (!window_.Contains(vertex)) cut_ = true;
        Pass(0, vertex);
    }

    /// Ends the contour. One with less than three vertices left is dropped.
    void EndContour();

    bool Overflowed() const { return overflowed_; }

    /// Whether a vertex lay outside the rectangle.
    bool WasCut() const { return cut_; }

    int ContourCount() const { return contours_; }

    /// Vertices of all contours, x and y in turn.
    std::span<const double> Points() const { return room_.first(used_); }

    /// Vertices up to the end of each contour.
    const std::int32_t* Ends() const { return ends_.data(); }

    /// Twice the area within the contours, positive for one that runs from +x to +y.
    double DoubledArea() const;

  private:
    /// One edge of the rectangle, as the contour passes it.
    struct Stage {
        PlanePoint first, previous;
        bool begun = false;
        bool firstInside = false;
        bool previousInside = false;
    };
    static constexpr std::size_t kSides = 4;

    double Inwards(std::size_t side, const PlanePoint& p) const;
    void Pass(std::size_t side, const PlanePoint& p);
    void PassCrossing(std::size_t side, const PlanePoint& a, const PlanePoint& b);
    void Lay(const PlanePoint& p);
    PlanePoint At(std::size_t index) const { return {room_[index], room_[index + 1]}; }

    PlaneRectangle window_;
    double merge_;
    std::span<double> room_;
    std::array<Stage, kSides> stages_{};
    std::size_t used_ = 0;
    std::size_t contourStart_ = 0;
    int contours_ = 0;
    std::array<std::int32_t, kMostContours> ends_{};
    bool overflowed_ = false;
    bool cut_ = false;
};

/// Joins segments to open lines, cut to a rectangle, and hands them to the target, in pieces when they are long.
class LineWriter {
  public:
    LineWriter(const GlintDrawTarget& target, const PlaneRectangle& window, double merge)
        : target_(target), window_(window), merge_(merge) {}
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;
    ~LineWriter() { Flush(); }

    /// Draws on from the last segment's end when `a` is that point, else begins a new line.
    void Segment(PlanePoint a, PlanePoint b);

    /// Ends the line.
    void Flush();

  private:
    void Begin(const PlanePoint& p);

    static constexpr std::size_t kPiece = 512;  // vertices

    const GlintDrawTarget& target_;
    PlaneRectangle window_;
    double merge_;
    std::array<double, 2 * kPiece> xy_;
    std::size_t used_ = 0;
    PlanePoint end_;          // where the line has come to
    bool endIsLaid_ = false;  // or it was too near to the last vertex laid down, and waits
};

}  // namespace glintara
