#pragma once

// Countries of simple shape, of which it is known by other means what they contain.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "earth_canvas.h"

namespace glintara::earth_tests {

/// Vertices of a map, as the engine takes them.
struct Vertices {
    std::vector<double> lat;
    std::vector<double> lon;
    std::vector<std::int32_t> polygon;

    std::int32_t Count() const { return static_cast<std::int32_t>(lat.size()); }
    void Add(double latitude, double longitude, std::int32_t id) {
        lat.push_back(latitude);
        lon.push_back(std::abs(longitude) <= 180 ? longitude : std::remainder(longitude, 360));
        polygon.push_back(id);
    }
};

struct Shape {
    std::string name;
    Vertices vertices;
    std::function<bool(const Place&)> contains;
};

/// Angle between two places, degrees.
inline double Separation(const Place& a, const Place& b) {
    const double sinLat = std::sin((a.lat - b.lat) * kDegree / 2);
    const double sinLon = std::sin((a.lon - b.lon) * kDegree / 2);
    const double h = sinLat * sinLat + std::cos(a.lat * kDegree) * std::cos(b.lat * kDegree) * sinLon * sinLon;
    return 2 * std::asin(std::fmin(1, std::sqrt(h))) / kDegree;
}

/// All places within `radius` degrees of one, bordered by `corners` places.
inline Shape CapShape(const Place& centre, double radius, int corners = 720, std::int32_t id = 1) {
    Shape shape;
    shape.name = "cap " + std::to_string(radius) + " round " + std::to_string(centre.lat);
    const double sinRadius = std::sin(radius * kDegree);
    const double cosRadius = std::cos(radius * kDegree);
    const double sinLat = std::sin(centre.lat * kDegree);
    const double cosLat = std::cos(centre.lat * kDegree);
    for (int i = 0; i <= corners; ++i) {
        const double azimuth = 2 * std::numbers::pi * (i % corners) / corners;
        const double z = sinLat * cosRadius + cosLat * sinRadius * std::cos(azimuth);
        const double east = sinRadius * std::sin(azimuth);
        const double out = cosRadius * cosLat - sinLat * sinRadius * std::cos(azimuth);
        shape.vertices.Add(std::asin(z) / kDegree, centre.lon + std::atan2(east, out) / kDegree, id);
    }
    shape.contains = [=](const Place& p) { return Separation(p, centre) < radius; };
    return shape;
}

/// All places between two latitudes and two longitudes, `east` being up to 360 more than `west`; its lines from corner
/// to corner have `parts` parts.
inline Shape BoxShape(double south, double north, double west, double east, int parts = 1, std::int32_t id = 1) {
    Shape shape;
    shape.name = "box " + std::to_string(south) + " " + std::to_string(west);
    const auto side = [&](double lat1, double lon1, double lat2, double lon2) {
        for (int i = 0; i < parts; ++i) {
            const double part = static_cast<double>(i) / parts;
            shape.vertices.Add(lat1 + part * (lat2 - lat1), lon1 + part * (lon2 - lon1), id);
        }
    };
    side(south, west, south, east);
    side(south, east, north, east);
    side(north, east, north, west);
    side(north, west, south, west);
    shape.vertices.Add(south, west, id);
    shape.contains = [=](const Place& p) {
        const double middle = (west + east) / 2;
        return p.lat > south && p.lat < north && std::abs(std::remainder(p.lon - middle, 360)) < (east - west) / 2;
    };
    return shape;
}

/// Latitude of the coast of an Antarctica of our own.
inline double CoastAt(double lon) { return -72 + 6 * std::sin(3 * lon * kDegree) + 3 * std::cos(11 * lon * kDegree); }

/// Land round the south pole as maps give it: the coast from longitude -180 to 180, then along the seam to the pole and
/// along the pole back, in `poleParts` parts.
inline Shape PolarLandShape(int poleParts, std::int32_t id = 1) {
    Shape shape;
    shape.name = "polar land " + std::to_string(poleParts);
    for (int i = 0; i <= 720; ++i) shape.vertices.Add(CoastAt(-180 + i / 2.0), -180 + i / 2.0, id);
    for (int i = 0; i <= poleParts; ++i) shape.vertices.Add(-90, 180 - 360.0 * i / poleParts, id);
    shape.vertices.Add(CoastAt(-180), -180, id);
    shape.contains = [](const Place& p) { return p.lat < CoastAt(p.lon); };
    return shape;
}

/// A country of `arms` arms round a place of low latitude: polar coordinates on the map, wide enough to cross the limb
/// many times.
inline Shape StarShape(const Place& centre, double size, int arms, std::int32_t id = 1) {
    Shape shape;
    shape.name = "star";
    const auto reach = [=](double angle) { return size * (1 + 0.45 * std::cos(arms * angle)); };
    constexpr int kCorners = 3000;
    for (int i = 0; i <= kCorners; ++i) {
        const double angle = 2 * std::numbers::pi * (i % kCorners) / kCorners;
        shape.vertices.Add(centre.lat + 0.5 * reach(angle) * std::sin(angle),
                           centre.lon + reach(angle) * std::cos(angle), id);
    }
    shape.contains = [=](const Place& p) {
        const double x = std::remainder(p.lon - centre.lon, 360);
        const double y = 2 * (p.lat - centre.lat);
        return std::hypot(x, y) < reach(std::atan2(y, x));
    };
    return shape;
}

/// Two countries that meet at the seam, each closed along it.
inline Shape SeamNeighbours() {
    Shape shape = BoxShape(10, 50, 140, 180, 5, 1);
    const Shape other = BoxShape(20, 60, -180, -120, 5, 2);
    for (std::size_t i = 0; i < other.vertices.lat.size(); ++i)
        shape.vertices.Add(other.vertices.lat[i], other.vertices.lon[i], 2);
    shape.name = "neighbours at the seam";
    shape.contains = [first = shape.contains, second = other.contains](const Place& p) {
        return first(p) || second(p);
    };
    return shape;
}

inline std::vector<Shape> AllShapes() {
    std::vector<Shape> shapes{
        CapShape({0, 0}, 5),
        CapShape({20, 100}, 40),
        CapShape({-35, 179}, 30),
        CapShape({10, -60}, 75),
        CapShape({90, 0}, 35),
        CapShape({-90, 0}, 60),
        CapShape({55, 20}, 50),    // round the north pole, not centred on it
        CapShape({-10, 170}, 85),  // nearly a hemisphere, round the south pole
        CapShape({90, 0}, 80, 8),
        BoxShape(-20, 30, 10, 60),
        BoxShape(40, 49, -130, -20),  // a long border along a parallel
        BoxShape(-30, 20, 160, 215),
        BoxShape(60, 90, 0, 90),
        BoxShape(-90, -50, -170, -60, 3),
        BoxShape(-80, 80, -110, 110, 2),  // more than half of the Earth
        PolarLandShape(1),
        PolarLandShape(8),
        StarShape({5, 40}, 60, 23),
        SeamNeighbours(),
    };
    // The same ring in the other sense covers the same land.
    Shape reversed = StarShape({-10, -150}, 50, 7);
    std::reverse(reversed.vertices.lat.begin(), reversed.vertices.lat.end());
    std::reverse(reversed.vertices.lon.begin(), reversed.vertices.lon.end());
    reversed.name = "star in the other sense";
    shapes.push_back(reversed);
    return shapes;
}

}  // namespace glintara::earth_tests
