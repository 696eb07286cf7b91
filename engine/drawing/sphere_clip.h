#pragma once

// Rings of the map on the globe, seen from far away: what of them lies on the near side, and how the area that they
// enclose ends at the limb.
//
// View axes: x towards the viewer, y to the right, z up; the Earth is the unit sphere, the limb is x = 0.

#include <algorithm>
#include <cmath>

#include "engine/astro/constants.h"
#include "engine/astro/vector.h"
#include "engine/drawing/country_ring.h"

namespace glintara {

/// The axes of a view in the world frame (x to longitude 0, z to the north pole).
struct ViewAxes {
    Vector3 towards;
    Vector3 right;
    Vector3 up;

    Vector3 FromWorld(const Vector3& v) const { return {Dot(towards, v), Dot(right, v), Dot(up, v)}; }
};

/// Axes of a camera over (`lat`, `lon`), then turned by `roll` about the screen's vertical axis. Radians.
ViewAxes AxesOfView(double lat, double lon, double roll);

/// The unit vector to a place.
inline Vector3 UnitVectorOf(const MapVertex& place) {
    const double lat = place.lat * kDegToRad;
    const double lon = place.lon * kDegToRad;
    const double cosLat = std::cos(lat);
    return {cosLat * std::cos(lon), cosLat * std::sin(lon), std::sin(lat)};
}

/// The place that a unit vector points to.
MapVertex PlaceOf(const Vector3& unit);

/// A short piece of a ring on the sphere, view axes.
struct GlobeLine {
    Vector3 from;
    Vector3 to;
    bool isBorder = false;
    double bend = 0;  ///< how far the ring's true course may lie from the straight line, at most
};

/// Where a line between the near and the far side passes the limb; a unit vector with x = 0.
Vector3 LimbCrossing(const Vector3& a, const Vector3& b);

/// Whether a point given on view axes lies on the near side; the limb itself does.
inline bool IsNear(const Vector3& v) { return v.x >= 0; }

/// How finely a ring is followed on the globe. Degrees.
struct GlobeFineness {
    double merge = 0;        ///< vertices nearer than this are one
    double longestLine = 0;  ///< longer lines are divided
};

/// How far a line straight in latitude and longitude, `span` degrees long in the larger of the two, departs from the
/// straight line between its ends, at most, in radii of the Earth: the sagitta of an arc.
inline double BendOf(double span) {
    const double angle = span * kDegToRad;
    return angle * angle / 8;
}

/// Goes once round a ring on the globe, and calls `line(from, to, globeLine)` for each piece, with the places of its
/// ends on the map.
template <class Line>
void WalkOnGlobe(const ViewAxes& axes, const CountryRing& ring, const GlobeFineness& fineness, Line&& line) {
    MapVertex at;
    Vector3 atView;
    bool begun = false;
    WalkRing(ring, fineness.merge, [&](const MapVertex& end, bool isBorder) {
        if (begun) {
            const MapVertex start = at;
            const bool onPole = std::abs(start.lat) == kPoleLatitude && end.lat == start.lat;
            const double span = onPole ? 0 : std::max(std::abs(end.lat - start.lat), std::abs(end.lon - start.lon));
            const double pieces = span <= fineness.longestLine ? 1 : std::ceil(span / fineness.longestLine);
            const double bend = BendOf(span / pieces);
            for (double i = 1; i <= pieces; ++i) {
                const double part = i / pieces;
                const MapVertex next = i == pieces ? end
                                                   : MapVertex{start.lat + part * (end.lat - start.lat),
                                                               start.lon + part * (end.lon - start.lon)};
                const Vector3 nextView = axes.FromWorld(UnitVectorOf(next));
                line(at, next, GlobeLine{atView, nextView, isBorder, bend});
                at = next;
                atView = nextView;
            }
            return;
        }
        begun = true;
        at = end;
        atView = axes.FromWorld(UnitVectorOf(end));
    });
}

/// The near side's part of the area that a ring encloses, as a contour: stretches on the far side are replaced by the
/// limb between the places where they leave and come back.
///
/// Which way round the limb does not matter by the odd-even rule but for one bit, since the two ways differ by the
/// whole limb: so the shorter is taken, and `NeedsWholeLimb` tells whether the limb must be added as a contour of its
/// own. The bit is found at one place of the limb, the mark: near it the area must be inside or outside as the place
/// itself is in or out of the ring. The answer is safe unless the ring passes the mark nearer than the drawn lines
/// follow it; `PassedNearMark` then asks for another mark.
class LimbContour {
  public:
    /// The mark lies at `mark` radians, counted from the right towards the top; arcs have corners every `arcStep`
    /// radians, a whole number of which makes a turn.
    LimbContour(double mark, double arcStep) : mark_(mark), arcStep_(arcStep), markPoint_(OnLimb(mark)) {}

    const Vector3& MarkPoint() const { return markPoint_; }

    /// The next line of the ring. Calls `vertex(v)` for the vertices of the contour that it gives.
    template <class Vertex>
    void Add(const GlobeLine& line, Vertex&& vertex) {
        const bool fromNear = IsNear(line.from);
        const bool toNear = IsNear(line.to);
        sawFarSide_ = sawFarSide_ || !fromNear || !toNear;
        const double doubt = DoubtOf(line);
        if (std::min(line.from.x, line.to.x) <= doubt && std::max(line.from.x, line.to.x) >= -doubt)
            LookForMark(line, doubt);
        last_ = line.to;
        if (!begun_) {
            begun_ = true;
            first_ = line.from;
            if (fromNear) vertex(line.from);
        }
        if (fromNear != toNear) {
            const Vector3 crossing = LimbCrossing(line.from, line.to);
            if (toNear) {
                ComeBack(crossing, vertex);
            } else {
                hasLeft_ = true;
                leftAt_ = FromMark(crossing);
            }
            vertex(crossing);
        }
        if (toNear) vertex(line.to);
    }

    /// Ends the ring: closes the stretch on the far side in which the ring began.
    template <class Vertex>
    void Close(Vertex&& vertex) {
        // First and last vertex are one place, but given as 180 and -180 degrees they may be rounded to different
        // sides.
        if (begun_ && IsNear(first_) != IsNear(last_)) Add(GlobeLine{last_, first_}, vertex);
        if (hasEntered_ && hasLeft_) Arc(leftAt_, enteredAt_, vertex);
    }

    /// Calls `vertex(v)` for the whole limb, towards the top from the right, or the other way round.
    template <class Vertex>
    void WholeLimb(bool reversed, Vertex&& vertex) const {
        const double corners = std::round(kTwoPi / arcStep_);
        for (double i = 0; i < corners; ++i) vertex(OnLimb(mark_ + (reversed ? -i : i) * arcStep_));
    }

    /// Whether the limb is to be added, given whether the mark lies within the ring. After `Close`.
    bool NeedsWholeLimb(bool markIsInside) const { return markIsInside != arcsOverMark_; }

    bool PassedNearMark() const { return passedNearMark_; }

    /// Whether any part of the ring lies on the far side.
    bool SawFarSide() const { return sawFarSide_; }

  private:
    static Vector3 OnLimb(double angle) { return {0, std::cos(angle), std::sin(angle)}; }

    /// Angle of a place on the limb, counted from the mark, 0 to 2 pi.
    double FromMark(const Vector3& limb) const;

    /// How far the ring's true course may lie from the line drawn for it: half of it because the course is no great
    /// circle, half because the line is a chord; both as much as doubled where it runs aslant.
    static double DoubtOf(const GlobeLine& line) { return 4 * line.bend + kRounding; }

    /// Notes a line that passes the mark within `doubt`.
    void LookForMark(const GlobeLine& line, double doubt);

    template <class Vertex>
    void ComeBack(const Vector3& crossing, Vertex&& vertex) {
        const double angle = FromMark(crossing);
        if (hasLeft_) {
            Arc(leftAt_, angle, vertex);
            hasLeft_ = false;
        } else {
            hasEntered_ = true;
            enteredAt_ = angle;
        }
    }

    /// The corners of the shorter way from `start` to `end`, both counted from the mark. They stand at fixed places, so
    /// that arcs over the same stretch of limb are the same line and cancel.
    template <class Vertex>
    void Arc(double start, double end, Vertex&& vertex) {
        double goal = end;
        if (std::abs(end - start) > kPi) {
            arcsOverMark_ = !arcsOverMark_;
            goal += end < start ? kTwoPi : -kTwoPi;
        }
        if (goal > start)
            for (double i = std::floor(start / arcStep_) + 1; i * arcStep_ < goal; ++i)
                vertex(OnLimb(mark_ + i * arcStep_));
        else
            for (double i = std::ceil(start / arcStep_) - 1; i * arcStep_ > goal; --i)
                vertex(OnLimb(mark_ + i * arcStep_));
    }

    /// Rounding of places on the unit sphere, with a wide margin.
    static constexpr double kRounding = 1e-11;

    double mark_;
    double arcStep_;
    Vector3 markPoint_;
    bool begun_ = false;
    Vector3 first_;
    Vector3 last_;
    bool hasLeft_ = false;     // leftAt_ holds, and the ring is on the far side
    bool hasEntered_ = false;  // enteredAt_ holds: the ring began on the far side
    double leftAt_ = 0;
    double enteredAt_ = 0;
    bool arcsOverMark_ = false;  // an odd number of arcs lies over the mark
    bool sawFarSide_ = false;
    bool passedNearMark_ = false;
};

}  // namespace glintara
