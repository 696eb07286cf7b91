#include "engine/drawing/draw_earth.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/astro/constants.h"
#include "engine/drawing/country_ring.h"
#include "engine/drawing/plane_clip.h"
#include "engine/drawing/sphere_clip.h"

namespace glintara {
namespace {

/// How much farther than the picture's edge contours are followed, pixels: the pen's width stays inside.
constexpr double kMargin = 8;

/// A ring smaller than this in height and width, pixels, is left out.
constexpr double kLeastSize = 0.5;

/// Vertices of a ring that lie nearer than this to each other are one, pixels.
constexpr double kMergeOnEarth = 0.4;

/// The same for vertices as they come to lie on the picture, where the limb foreshortens.
constexpr double kMergeOnPicture = 0.25;

/// How far a drawn line may lie from the curve it stands for, pixels.
constexpr double kTolerance = 0.25;

/// A scale in pixels, a half size in pixels, a pan in Earth radii beyond which nothing is drawn.
constexpr double kMostScale = 1e7;
constexpr double kMostHalfSize = 1e6;
constexpr double kMostShift = 1e9;

bool IsWithin(double value, double most) { return std::abs(value) <= most; }
bool IsMeasure(double value, double most) { return value > 0 && value <= most; }

/// What both ways to draw the Earth share: the picture, and the memory for contours.
class Painter {
  public:
    Painter(const GlintDrawTarget& target, const EarthView& view, std::span<double> room)
        : target_(target),
          view_(view),
          room_(room),
          scale_(std::max(view.scaleX, view.scaleY)),
          picture_{-kMargin, -kMargin, 2 * view.halfW + kMargin, 2 * view.halfH + kMargin} {}

    std::size_t Used() const { return used_; }

  protected:
    bool Fills() const { return target_.fill != nullptr && !room_.empty(); }
    bool Outlines() const { return target_.line != nullptr; }

    PlanePoint ToPixel(double x, double y) const {
        return {view_.halfW + view_.scaleX * (x + view_.panX), view_.halfH - view_.scaleY * (y + view_.panY)};
    }

    double PixelsToDegrees(double pixels) const { return pixels / (scale_ * kDegToRad); }

    bool IsTooSmall(const RingExtent& extent) const {
        const double least = PixelsToDegrees(kLeastSize);
        return extent.north - extent.south < least && extent.east - extent.west < least;
    }

    void Fill(const ContourStore& contours) {
        used_ = std::max(used_, contours.Points().size());
        if (contours.ContourCount() > 0)
            target_.fill(target_.self, contours.Points().data(), contours.Ends(), contours.ContourCount());
    }

    /// Outlines a ring whose one contour is its border as well. False when there is no room to close it.
    bool OutlineContour(const ContourStore& contours) {
        const std::size_t size = contours.Points().size();
        if (contours.ContourCount() != 1 || size + 2 > room_.size()) return false;
        room_[size] = room_[0];
        room_[size + 1] = room_[1];
        used_ = std::max(used_, size + 2);
        target_.line(target_.self, room_.data(), static_cast<std::int32_t>(size / 2 + 1));
        return true;
    }

    const GlintDrawTarget& target_;
    const EarthView& view_;
    std::span<double> room_;
    double scale_;
    PlaneRectangle picture_;

  private:
    std::size_t used_ = 0;
};

/// A cap of the sphere.
struct Cap {
    Vector3 centre;
    double radius = 0;  ///< radians
};

/// A cap that holds a ring that goes round no pole. On the sphere no way is longer than on the plane of longitude and
/// latitude.
Cap CapAround(const RingExtent& extent) {
    const MapVertex middle{(extent.south + extent.north) / 2, (extent.west + extent.east) / 2};
    const double diagonal = std::hypot(extent.north - extent.south, extent.east - extent.west);
    return {UnitVectorOf(middle), diagonal / 2 * kDegToRad};
}

class GlobePainter : public Painter {
  public:
    GlobePainter(const GlintDrawTarget& target, const EarthView& view, std::span<double> room)
        : Painter(target, view, room),
          axes_(AxesOfView(view.lat, view.lon, view.roll)),
          tiltedAxes_(AxesOfView(view.lat + kTilt, view.lon, view.roll + kTilt)) {
        const double merge = PixelsToDegrees(kMergeOnEarth);
        for (std::size_t level = 0; level < kToleranceLevels.size(); ++level) {
            const double longest = std::min(kLongestLine, std::sqrt(8 * kToleranceLevels[level] / scale_));
            levels_[level] = {{merge, longest / kDegToRad}, kTwoPi / std::ceil(kTwoPi / longest)};
        }
        levels_.back() = {{merge, kFullTurn}, kTwoPi / kFewestLimbCorners};
    }

    void Draw(const CountryRing& ring) {
        const auto extent = ExtentOf(ring);
        if (!extent || IsTooSmall(*extent)) return;
        const Sight sight = SightOf(*extent);
        if (sight == Sight::None) return;
        if (!(Fills() && FillRing(ring, *extent, sight)) && Outlines()) OutlineRing(ring);
    }

  private:
    enum class Sight { None, WhollyNear, AcrossLimb };

    /// How finely a ring is drawn.
    struct Level {
        GlobeFineness fineness;
        double arcStep = 0;  ///< of the limb, radians
    };

    /// Longest line drawn undivided, and longest stretch of limb between corners, radians.
    static constexpr double kLongestLine = kPi / 8;

    /// Tolerances of the levels tried one after the other until the contour fits into the room. The last level, behind
    /// them, divides nothing: GLINTCORE_DRAW_SCRATCH is enough for it.
    static constexpr std::array kToleranceLevels{kTolerance, 16 * kTolerance};
    static constexpr double kFewestLimbCorners = 16;

    /// Marks on the limb: where the first lies, the angle to the next, and how many are tried. The angles have no
    /// relation to those at which poles, seams and borders along parallels come to stand; the step is the golden angle.
    static constexpr double kFirstMark = 2.2143;
    static constexpr double kMarkStep = 2.399963;
    static constexpr int kMarks = 8;

    /// A ring that runs along the limb itself comes near every mark, and rounding decides where it is seen. It is drawn
    /// as from a camera turned by this, radians: not to be seen at any scale.
    static constexpr double kTilt = 1e-6;

    Sight SightOf(const RingExtent& extent) const {
        const Cap cap = CapAround(extent);
        if (cap.radius >= kPi / 2) return Sight::AcrossLimb;
        const Vector3 centre = axes_.FromWorld(cap.centre);
        const double sine = std::sin(cap.radius);
        if (centre.x < -sine) return Sight::None;
        const PlanePoint pixel = ToPixel(centre.y, centre.z);
        const double reach = cap.radius * scale_;
        const PlaneRectangle around{pixel.x - reach, pixel.y - reach, pixel.x + reach, pixel.y + reach};
        if (!Overlap(picture_, around)) return Sight::None;
        return centre.x > sine ? Sight::WhollyNear : Sight::AcrossLimb;
    }

    PlanePoint PixelOf(const Vector3& v) const { return ToPixel(v.y, v.z); }

    /// True when the ring is outlined, too.
    bool FillRing(const CountryRing& ring, const RingExtent& extent, Sight sight) {
        for (const Level& level : levels_) {
            const Outcome outcome =
                sight == Sight::WhollyNear ? FillNear(ring, extent, level) : FillAcrossLimb(ring, extent, level);
            if (outcome != Outcome::NoRoom) return outcome == Outcome::FilledAndOutlined;
        }
        return false;
    }

    enum class Outcome { NoRoom, Filled, FilledAndOutlined };

    Outcome FillNear(const CountryRing& ring, const RingExtent& extent, const Level& level) {
        ContourStore contours(picture_, kMergeOnPicture, room_);
        WalkOnGlobe(axes_, ring, level.fineness,
                    [&](const MapVertex&, const MapVertex&, const GlobeLine& line) { contours.Add(PixelOf(line.to)); });
        return Finish(ring, extent, contours, false);
    }

    Outcome FillAcrossLimb(const CountryRing& ring, const RingExtent& extent, const Level& level) {
        for (int attempt = 1;; ++attempt) {
            const ViewAxes& axes = attempt <= kMarks ? axes_ : tiltedAxes_;
            ContourStore contours(picture_, kMergeOnPicture, room_);
            const auto vertex = [&](const Vector3& v) { contours.Add(PixelOf(v)); };
            LimbContour limb(kFirstMark + attempt * kMarkStep, level.arcStep);
            const Vector3& mark = limb.MarkPoint();
            RingContains markInRing(PlaceOf(mark.y * axes.right + mark.z * axes.up));
            WalkOnGlobe(axes, ring, level.fineness,
                        [&](const MapVertex& from, const MapVertex& to, const GlobeLine& line) {
                            markInRing.AddLine(from, to);
                            limb.Add(line, vertex);
                        });
            if (limb.PassedNearMark() && attempt < 2 * kMarks) continue;
            limb.Close(vertex);
            contours.EndContour();
            if (limb.NeedsWholeLimb(markInRing.Result(extent))) {
                // Against the ring's own sense, so that lines which both have along the limb cancel in a rasteriser
                // that adds up signed areas.
                limb.WholeLimb(contours.DoubledArea() < 0, vertex);
            }
            return Finish(ring, extent, contours, limb.SawFarSide());
        }
    }

    Outcome Finish(const CountryRing& ring, const RingExtent& extent, ContourStore& contours, bool crossesLimb) {
        contours.EndContour();
        if (contours.Overflowed()) return Outcome::NoRoom;
        Fill(contours);
        const bool isBorder = !crossesLimb && !contours.WasCut() && !extent.touchesSeam && ring.IsClosed();
        return isBorder && Outlines() && OutlineContour(contours) ? Outcome::FilledAndOutlined : Outcome::Filled;
    }

    void OutlineRing(const CountryRing& ring) {
        LineWriter line(target_, picture_, kMergeOnPicture);
        WalkOnGlobe(axes_, ring, levels_.front().fineness,
                    [&](const MapVertex&, const MapVertex&, const GlobeLine& piece) {
                        const bool fromNear = IsNear(piece.from);
                        const bool toNear = IsNear(piece.to);
                        if (!piece.isBorder || (!fromNear && !toNear)) return;
                        const Vector3 from = fromNear ? piece.from : LimbCrossing(piece.from, piece.to);
                        const Vector3 to = toNear ? piece.to : LimbCrossing(piece.from, piece.to);
                        line.Segment(PixelOf(from), PixelOf(to));
                    });
    }

    ViewAxes axes_;
    ViewAxes tiltedAxes_;
    std::array<Level, kToleranceLevels.size() + 1> levels_{};
};

class FlatMapPainter : public Painter {
  public:
    FlatMapPainter(const GlintDrawTarget& target, const EarthView& view, std::span<double> room)
        : Painter(target, view, room),
          viewLat_(std::remainder(view.lat, kTwoPi) / kDegToRad),
          viewLon_(std::remainder(view.lon, kTwoPi) / kDegToRad),
          merge_(PixelsToDegrees(kMergeOnEarth)) {
        const PlanePoint leftTop = MapPixel(-kSeamLongitude, kPoleLatitude);
        const PlanePoint rightBottom = MapPixel(kSeamLongitude, -kPoleLatitude);
        window_ = Intersection(picture_, {leftTop.x, leftTop.y, rightBottom.x, rightBottom.y});
    }

    void Draw(const CountryRing& ring) {
        const auto extent = ExtentOf(ring);
        if (window_.IsEmpty() || !extent || IsTooSmall(*extent)) return;
        // The ring's first vertex comes to lie within half a turn of the map's middle.
        const double first = ring.lon.front();
        const double shift = std::remainder(first - viewLon_, kFullTurn) - first;
        if (extent->pole != 0) {
            DrawRoundPole(ring, *extent, shift);
            return;
        }
        const int leftmost = static_cast<int>(std::ceil((-kSeamLongitude - shift - extent->east) / kFullTurn));
        const int rightmost = static_cast<int>(std::floor((kSeamLongitude - shift - extent->west) / kFullTurn));
        for (int copy = std::max(leftmost, -kMostCopies); copy <= std::min(rightmost, kMostCopies); ++copy)
            DrawCopy(ring, *extent, shift + copy * kFullTurn);
    }

  private:
    /// Copies of a ring, to either side, that are looked at: enough for any that goes round a pole once.
    static constexpr int kMostCopies = 3;

    /// Pixel of a place by its longitude from the map's middle, degrees.
    PlanePoint MapPixel(double lon, double lat) const { return ToPixel(lon * kDegToRad, (lat - viewLat_) * kDegToRad); }

    void DrawCopy(const CountryRing& ring, const RingExtent& extent, double shift) {
        const PlanePoint leftTop = MapPixel(extent.west + shift, extent.north);
        const PlanePoint rightBottom = MapPixel(extent.east + shift, extent.south);
        if (!Overlap(window_, {leftTop.x, leftTop.y, rightBottom.x, rightBottom.y})) return;
        if (!(Fills() && FillCopy(ring, extent, shift)) && Outlines()) OutlineCopy(ring, shift);
    }

    /// True when the ring is outlined, too.
    bool FillCopy(const CountryRing& ring, const RingExtent& extent, double shift) {
        ContourStore contours(window_, kMergeOnPicture, room_);
        WalkRing(ring, merge_, [&](const MapVertex& v, bool) { contours.Add(MapPixel(v.lon + shift, v.lat)); });
        contours.EndContour();
        if (contours.Overflowed()) return false;
        Fill(contours);
        const bool isBorder = !contours.WasCut() && !extent.touchesSeam && ring.IsClosed();
        return isBorder && Outlines() && OutlineContour(contours);
    }

    void OutlineCopy(const CountryRing& ring, double shift) {
        LineWriter line(target_, window_, kMergeOnPicture);
        PlanePoint at;
        WalkRing(ring, merge_, [&](const MapVertex& v, bool isBorder) {
            const PlanePoint pixel = MapPixel(v.lon + shift, v.lat);
            if (isBorder) line.Segment(at, pixel);
            at = pixel;
        });
    }

    /// A ring round a pole is, on the map, a line without end; so many rounds of it are taken as it needs to pass from
    /// one side of the map to the other, and closed along the pole.
    void DrawRoundPole(const CountryRing& ring, const RingExtent& extent, double shift) {
        const double period = std::abs(extent.turn);
        const int leftmost = static_cast<int>(std::floor((-kSeamLongitude - shift - extent.east) / period));
        const int rightmost = static_cast<int>(std::ceil((kSeamLongitude - shift - extent.west) / period));
        const int first = std::max(leftmost, -kMostCopies);
        const int last = std::min(rightmost, kMostCopies);
        const int rounds = last - first + 1;
        // In the order in which the ring runs, so that each round goes on where the one before has ended.
        const double start = shift + (extent.turn > 0 ? first : last) * period;
        if (Fills()) FillRoundPole(ring, extent, start, rounds);
        for (int round = 0; Outlines() && round < rounds; ++round) OutlineCopy(ring, start + round * extent.turn);
    }

    void FillRoundPole(const CountryRing& ring, const RingExtent& extent, double start, int rounds) {
        ContourStore contours(window_, kMergeOnPicture, room_);
        for (int round = 0; round < rounds; ++round) {
            const double shift = start + round * extent.turn;
            WalkRing(ring, merge_, [&](const MapVertex& v, bool) { contours.Add(MapPixel(v.lon + shift, v.lat)); });
        }
        const double firstLon = ring.lon.front() + start;
        contours.Add(MapPixel(firstLon + rounds * extent.turn, extent.pole));
        contours.Add(MapPixel(firstLon, extent.pole));
        contours.EndContour();
        if (!contours.Overflowed()) Fill(contours);
    }

    double viewLat_;  // degrees
    double viewLon_;
    double merge_;  // degrees
    PlaneRectangle window_;
};

template <class AnyPainter>
std::size_t DrawWith(AnyPainter&& painter, const EarthMap& map) {
    ForEachRing(map.lat, map.lon, map.polygon, [&](const CountryRing& ring) { painter.Draw(ring); });
    return painter.Used();
}

}  // namespace

std::optional<EarthView> EarthViewOf(const GlintViewConfig& config) {
    const EarthView view{.flatMap = config.CPlaniSphere != 0,
                         .lat = config.ViewLat,
                         .lon = config.ViewLon,
                         .roll = config.ViewRoll,
                         .panX = config.PanX,
                         .panY = config.PanY,
                         .scaleX = config.ScaleX,
                         .scaleY = config.ScaleY,
                         .halfW = config.HalfWidth,
                         .halfH = config.HalfHeight};
    const bool isUsable = IsMeasure(view.scaleX, kMostScale) && IsMeasure(view.scaleY, kMostScale) &&
                          IsMeasure(view.halfW, kMostHalfSize) && IsMeasure(view.halfH, kMostHalfSize) &&
                          IsWithin(view.panX, kMostShift) && IsWithin(view.panY, kMostShift) &&
                          IsWithin(view.lat, kMostShift) && IsWithin(view.lon, kMostShift) &&
                          IsWithin(view.roll, kMostShift);
    return isUsable ? std::optional(view) : std::nullopt;
}

std::size_t DrawEarth(const GlintDrawTarget& target, const EarthView& view, const EarthMap& map,
                      std::span<double> room) {
    return view.flatMap ? DrawWith(FlatMapPainter(target, view, room), map)
                        : DrawWith(GlobePainter(target, view, room), map);
}

}  // namespace glintara
