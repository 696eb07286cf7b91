#include "engine/drawing/plane_clip.h"

#include <algorithm>

namespace glintara {
namespace {

double SquaredDistance(const PlanePoint& a, const PlanePoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return dx * dx + dy * dy;
}

/// Narrows the part [`enter`, `leave`] of a segment to where it is inside one edge: `inwards` is its start's distance
/// from the edge, positive inside, and `gain` what it gains up to its end. False when nothing remains.
bool Narrow(double inwards, double gain, double& enter, double& leave) {
    if (gain == 0) return inwards >= 0;
    const double crossing = -inwards / gain;
    if (gain > 0)
        enter = std::max(enter, crossing);
    else
        leave = std::min(leave, crossing);
    return enter <= leave;
}

}  // namespace

PlaneRectangle Intersection(const PlaneRectangle& a, const PlaneRectangle& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

bool Overlap(const PlaneRectangle& a, const PlaneRectangle& b) {
    return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

bool ClipSegment(const PlaneRectangle& window, PlanePoint& a, PlanePoint& b) {
    if (window.Contains(a) && window.Contains(b)) return true;
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    double enter = 0;
    double leave = 1;
    if (!Narrow(a.x - window.left, dx, enter, leave) || !Narrow(window.right - a.x, -dx, enter, leave) ||
        !Narrow(a.y - window.top, dy, enter, leave) || !Narrow(window.bottom - a.y, -dy, enter, leave))
        return false;
    const PlanePoint start = a;
    if (enter > 0) a = {start.x + enter * dx, start.y + enter * dy};
    if (leave < 1) b = {start.x + leave * dx, start.y + leave * dy};
    return true;
}

double ContourStore::Inwards(std::size_t side, const PlanePoint& p) const {
    switch (side) {
        case 0:
            return p.x - window_.left;
        case 1:
            return window_.right - p.x;
        case 2:
            return p.y - window_.top;
        default:
            return window_.bottom - p.y;
    }
}

void ContourStore::Pass(std::size_t side, const PlanePoint& p) {
    if (side == kSides) {
        Lay(p);
        return;
    }
    Stage& stage = stages_[side];
    const bool inside = Inwards(side, p) >= 0;
    if (!stage.begun) {
        stage.begun = true;
        stage.first = p;
        stage.firstInside = inside;
    } else if (inside != stage.previousInside) {
        PassCrossing(side, stage.previous, p);
    }
    stage.previous = p;
    stage.previousInside = inside;
    if (inside) Pass(side + 1, p);
}

void ContourStore::PassCrossing(std::size_t side, const PlanePoint& a, const PlanePoint& b) {
    const double atA = Inwards(side, a);
    const double part = atA / (atA - Inwards(side, b));
    PlanePoint crossing{a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
    // Rounding must not carry it out of the rectangle.
    switch (side) {
        case 0:
            crossing.x = window_.left;
            break;
        case 1:
            crossing.x = window_.right;
            break;
        case 2:
            crossing.y = window_.top;
            break;
        default:
            crossing.y = window_.bottom;
            break;
    }
    Pass(side + 1, crossing);
}

void ContourStore::Lay(const PlanePoint& p) {
    if (used_ > contourStart_ && SquaredDistance(At(used_ - 2), p) < merge_ * merge_) return;
    if (used_ + 2 > room_.size()) {
        overflowed_ = true;
        return;
    }
    room_[used_++] = p.x;
    room_[used_++] = p.y;
}

void ContourStore::EndContour() {
    // Each edge's own closing may still send a vertex on to the edges behind it.
    for (std::size_t side = 0; side < kSides; ++side) {
        const Stage stage = stages_[side];
        if (stage.begun && stage.firstInside != stage.previousInside) PassCrossing(side, stage.previous, stage.first);
        stages_[side] = {};
    }
    while (used_ > contourStart_ + 2 && SquaredDistance(At(contourStart_), At(used_ - 2)) < merge_ * merge_) used_ -= 2;
    if (used_ < contourStart_ + 6 || contours_ == kMostContours) {
        used_ = contourStart_;
        return;
    }
    ends_[static_cast<std::size_t>(contours_++)] = static_cast<std::int32_t>(used_ / 2);
    contourStart_ = used_;
}

double ContourStore::DoubledArea() const {
    double area = 0;
    std::size_t start = 0;
    for (int c = 0; c < contours_; ++c) {
        const std::size_t end = 2 * static_cast<std::size_t>(ends_[static_cast<std::size_t>(c)]);
        PlanePoint previous = At(end - 2);
        for (std::size_t i = start; i < end; i += 2) {
            const PlanePoint p = At(i);
            area += previous.x * p.y - p.x * previous.y;
            previous = p;
        }
        start = end;
    }
    return area;
}

void LineWriter::Begin(const PlanePoint& p) {
    xy_[0] = p.x;
    xy_[1] = p.y;
    used_ = 2;
    end_ = p;
    endIsLaid_ = true;
}

void LineWriter::Segment(PlanePoint a, PlanePoint b) {
    if (!ClipSegment(window_, a, b)) return;
    if (used_ == 0 || !(a == end_)) {
        Flush();
        Begin(a);
    }
    end_ = b;
    endIsLaid_ = SquaredDistance({xy_[used_ - 2], xy_[used_ - 1]}, b) >= merge_ * merge_;
    if (!endIsLaid_) return;
    xy_[used_++] = b.x;
    xy_[used_++] = b.y;
    if (used_ == xy_.size()) {
        Flush();
        Begin(b);
    }
}

void LineWriter::Flush() {
    if (used_ > 0 && !endIsLaid_ && !(end_ == PlanePoint{xy_[used_ - 2], xy_[used_ - 1]})) {
        xy_[used_++] = end_.x;
        xy_[used_++] = end_.y;
    }
    if (used_ >= 4) target_.line(target_.self, xy_.data(), static_cast<std::int32_t>(used_ / 2));
    used_ = 0;
}

}  // namespace glintara
