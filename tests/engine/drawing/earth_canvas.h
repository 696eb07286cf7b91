#pragma once

// What the tests of the drawn Earth share: who records the calls of the engine, and a camera of their own that tells
// which place of the Earth is seen at a pixel.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <optional>
#include <vector>

#include "engine/glintcore.h"

namespace glintara::earth_tests {

inline constexpr double kDegree = std::numbers::pi / 180;

struct Pixel {
    double x = 0;
    double y = 0;
};

struct Place {
    double lat = 0;  ///< degrees
    double lon = 0;
};

using Contour = std::vector<Pixel>;

/// Remembers all that was drawn, in order.
class Canvas {
  public:
    std::vector<std::vector<Contour>> fills;
    std::vector<Contour> lines;

    GlintDrawTarget Target() { return {this, &Canvas::Fill, &Canvas::Line, nullptr}; }

    void Clear() {
        fills.clear();
        lines.clear();
    }

    /// Whether any of the filled shapes covers a pixel, by the odd-even rule within each.
    bool Covers(const Pixel& p) const {
        for (const auto& shape : fills) {
            bool inside = false;
            for (const Contour& contour : shape) inside = inside != IsInside(contour, p);
            if (inside) return true;
        }
        return false;
    }

  private:
    static bool IsInside(const Contour& contour, const Pixel& p) {
        bool inside = false;
        for (std::size_t i = 0, j = contour.size() - 1; i < contour.size(); j = i++) {
            const Pixel& a = contour[i];
            const Pixel& b = contour[j];
            if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y)) inside = !inside;
        }
        return inside;
    }

    static Contour Points(const double* xy, std::ptrdiff_t begin, std::ptrdiff_t end) {
        Contour contour;
        for (std::ptrdiff_t i = begin; i < end; ++i) contour.push_back({xy[2 * i], xy[2 * i + 1]});
        return contour;
    }

    static void Fill(void* self, const double* xy, const std::int32_t* ends, std::int32_t contours) {
        std::vector<Contour> shape;
        for (std::int32_t c = 0, begin = 0; c < contours; begin = ends[c++])
            shape.push_back(Points(xy, begin, ends[c]));
        static_cast<Canvas*>(self)->fills.push_back(shape);
    }

    static void Line(void* self, const double* xy, std::int32_t points) {
        static_cast<Canvas*>(self)->lines.push_back(Points(xy, 0, points));
    }
};

/// A picture of 800 x 600 pixels.
inline GlintViewConfig Camera(double lat, double lon, double roll, double scale) {
    GlintViewConfig config{};
    config.ViewLat = lat;
    config.ViewLon = lon;
    config.ViewRoll = roll;
    config.ScaleX = scale;
    config.ScaleY = scale;
    config.HalfWidth = 400;
    config.HalfHeight = 300;
    return config;
}

inline GlintViewConfig FlatCamera(double lat, double lon, double scale) {
    GlintViewConfig config = Camera(lat, lon, 0, scale);
    config.CPlaniSphere = 255;
    return config;
}

/// Scene position of a pixel.
inline Pixel SceneOf(const GlintViewConfig& c, const Pixel& p) {
    return {(p.x - c.HalfWidth) / c.ScaleX - c.PanX, (c.HalfHeight - p.y) / c.ScaleY - c.PanY};
}

/// The place seen at a pixel of the globe; nothing beside the disc. `side` -1 looks at the far side.
inline std::optional<Place> PlaceOnGlobe(const GlintViewConfig& c, const Pixel& p, double side = 1) {
    const Pixel scene = SceneOf(c, p);
    const double square = 1 - scene.x * scene.x - scene.y * scene.y;
    if (square < 0) return std::nullopt;
    // The camera's three turns, undone one by one.
    const double depth = side * std::sqrt(square);
    const double a = scene.x * std::cos(c.ViewRoll) + depth * std::sin(c.ViewRoll);
    const double b = depth * std::cos(c.ViewRoll) - scene.x * std::sin(c.ViewRoll);
    const double out = std::cos(c.ViewLat) * b - scene.y * std::sin(c.ViewLat);
    const double z = scene.y * std::cos(c.ViewLat) + std::sin(c.ViewLat) * b;
    const double x = std::cos(c.ViewLon) * out - std::sin(c.ViewLon) * a;
    const double y = std::sin(c.ViewLon) * out + std::cos(c.ViewLon) * a;
    return Place{std::asin(std::fmin(1, std::fmax(-1, z))) / kDegree, std::atan2(y, x) / kDegree};
}

/// Place on the globe as (depth, right, up), by the camera's turns one after the other.
struct Seen {
    double depth = 0;
    Pixel pixel;
};
inline Seen SeenOnGlobe(const GlintViewConfig& c, const Place& place) {
    const double out = std::cos(place.lat * kDegree) * std::cos(place.lon * kDegree - c.ViewLon);
    const double aside = std::cos(place.lat * kDegree) * std::sin(place.lon * kDegree - c.ViewLon);
    const double z = std::sin(place.lat * kDegree);
    const double u = std::cos(c.ViewLat) * out + std::sin(c.ViewLat) * z;
    const double up = -std::sin(c.ViewLat) * out + std::cos(c.ViewLat) * z;
    const double right = std::cos(c.ViewRoll) * aside - std::sin(c.ViewRoll) * u;
    const double depth = std::cos(c.ViewRoll) * u + std::sin(c.ViewRoll) * aside;
    return {depth, {c.HalfWidth + c.ScaleX * (right + c.PanX), c.HalfHeight - c.ScaleY * (up + c.PanY)}};
}

/// The place shown at a pixel of the flat map; nothing beside the map. Longitudes are -180 to 180.
inline std::optional<Place> PlaceOnMap(const GlintViewConfig& c, const Pixel& p) {
    const Pixel scene = SceneOf(c, p);
    const double lat = (scene.y + c.ViewLat) / kDegree;
    if (std::abs(scene.x) > std::numbers::pi || std::abs(lat) > 90) return std::nullopt;
    return Place{lat, std::remainder((scene.x + c.ViewLon) / kDegree, 360)};
}

}  // namespace glintara::earth_tests
