#include "engine/drawing/sphere_clip.h"

#include "engine/astro/trigonometry.h"

namespace glintara {

ViewAxes AxesOfView(double lat, double lon, double roll) {
    const Vector3 east{-std::sin(lon), std::cos(lon), 0};
    const Vector3 over{std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
    const double c = std::cos(roll);
    const double s = std::sin(roll);
    return {c * over + s * east, c * east - s * over, CrossProduct(over, east)};
}

MapVertex PlaceOf(const Vector3& unit) {
    return {std::atan2(unit.z, std::hypot(unit.x, unit.y)) / kDegToRad, std::atan2(unit.y, unit.x) / kDegToRad};
}

Vector3 LimbCrossing(const Vector3& a, const Vector3& b) {
    const double part = a.x / (a.x - b.x);
    const double y = a.y + part * (b.y - a.y);
    const double z = a.z + part * (b.z - a.z);
    const double length = std::hypot(y, z);
    // Ends on opposite sides of the globe have no way between them that would be shorter than another.
    return length > 0 ? Vector3{0, y / length, z / length} : Vector3{0, 1, 0};
}

double LimbContour::FromMark(const Vector3& limb) const { return WrapTwoPi(std::atan2(limb.z, limb.y) - mark_); }

void LimbContour::LookForMark(const GlobeLine& line, double doubt) {
    const Vector3 along = line.to - line.from;
    const double length = Length(along);
    const double reach = length + doubt;
    const Vector3 toMark = markPoint_ - line.from;
    if (Dot(toMark, toMark) > reach * reach) return;
    const double distance = length > 0 ? Length(CrossProduct(along, toMark)) / length : Length(toMark);
    passedNearMark_ = passedNearMark_ || distance <= doubt;
}

}  // namespace glintara
