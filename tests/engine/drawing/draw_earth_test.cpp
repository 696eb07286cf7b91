// The drawn countries against what is known of them: which pixels are land, where the outlines run. Seen from hundreds
// of sides.

#include "engine/drawing/draw_earth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <span>
#include <vector>

#include "earth_canvas.h"
#include "earth_shapes.h"

namespace glintara::earth_tests {
namespace {

/// Farthest that a drawn line may lie from the true one, pixels: vertices are merged and curves are drawn by lines.
constexpr double kSlack = 1.2;

class Earth {
  public:
    Canvas canvas;
    std::size_t used = 0;

    void Draw(const GlintViewConfig& config, const Vertices& map) {
        Draw(config, map, GLINTCORE_DRAW_SCRATCH(map.lat.size()));
    }

    void Draw(const GlintViewConfig& config, const Vertices& map, std::size_t room) {
        canvas.Clear();
        memory_.resize(room);
        const auto view = EarthViewOf(config);
        ASSERT_TRUE(view.has_value());
        used = DrawEarth(canvas.Target(), *view, {map.lat, map.lon, map.polygon}, memory_);
    }

  private:
    std::vector<double> memory_;
};

class Dice {
  public:
    double From(double low, double high) { return std::uniform_real_distribution(low, high)(engine_); }
    template <class Choice>
    typename Choice::value_type OneOf(const Choice& choices) {
        return choices[std::uniform_int_distribution<std::size_t>(0, choices.size() - 1)(engine_)];
    }

  private:
    std::mt19937 engine_{20180120};
};

/// Cameras from all sides: every second one stands straight over poles, equator and seams, as the presets do.
GlintViewConfig AnyGlobeCamera(Dice& dice, bool straight) {
    constexpr std::array kScales{30.0, 130.0, 290.0, 290.0, 900.0, 6000.0};
    constexpr std::array kQuarters{-2.0, -1.0, 0.0, 1.0, 2.0};
    constexpr double kPi = std::numbers::pi;
    GlintViewConfig config;
    if (straight) {
        config = Camera(dice.OneOf(kQuarters) * kPi / 4, dice.OneOf(kQuarters) * kPi / 2,
                        dice.OneOf(kQuarters) * kPi / 2, dice.OneOf(kScales));
    } else {
        config = Camera(dice.From(-kPi / 2, kPi / 2), dice.From(-7, 7), dice.From(-kPi, kPi), dice.OneOf(kScales));
        config.PanX = dice.From(-0.7, 0.7);
        config.PanY = dice.From(-0.7, 0.7);
    }
    return config;
}

constexpr std::array<Pixel, 8> kAround{
    {{1, 0}, {0.7, 0.7}, {0, 1}, {-0.7, 0.7}, {-1, 0}, {-0.7, -0.7}, {0, -1}, {0.7, -0.7}}};

/// What a pixel and its neighbours show: land or not, or nothing when they differ.
template <class PlaceAt>
std::optional<bool> LandAt(const Shape& shape, const Pixel& p, PlaceAt&& placeAt) {
    const auto place = placeAt(p);
    if (!place) return std::nullopt;
    const bool land = shape.contains(*place);
    for (const Pixel& step : kAround) {
        for (const double distance : {kSlack, kSlack / 2}) {
            const auto near = placeAt(Pixel{p.x + distance * step.x, p.y + distance * step.y});
            if (!near || shape.contains(*near) != land) return std::nullopt;
        }
    }
    return land;
}

/// Compares the filled pixels with the shape at random places of the picture. Returns the number of pixels compared.
template <class PlaceAt>
int ExpectFillIs(const Shape& shape, const Canvas& canvas, const GlintViewConfig& config, Dice& dice, int samples,
                 PlaceAt&& placeAt) {
    int compared = 0;
    for (int i = 0; i < samples; ++i) {
        const Pixel p{dice.From(0, 2 * config.HalfWidth), dice.From(0, 2 * config.HalfHeight)};
        const auto land = LandAt(shape, p, placeAt);
        if (!land) continue;
        ++compared;
        EXPECT_EQ(canvas.Covers(p), *land) << shape.name << " lat " << config.ViewLat << " lon " << config.ViewLon
                                           << " roll " << config.ViewRoll << " scale " << config.ScaleX << " pan "
                                           << config.PanX << ' ' << config.PanY << " pixel " << p.x << ' ' << p.y;
    }
    return compared;
}

TEST(GlobeLand, IsFilledWhereItIsFromAllSides) {
    Dice dice;
    Earth earth;
    int compared = 0;
    for (const Shape& shape : AllShapes()) {
        for (int view = 0; view < 300; ++view) {
            const GlintViewConfig config = AnyGlobeCamera(dice, view % 2 == 0);
            earth.Draw(config, shape.vertices);
            compared += ExpectFillIs(shape, earth.canvas, config, dice, 60,
                                     [&](const Pixel& p) { return PlaceOnGlobe(config, p); });
            if (::testing::Test::HasFailure()) return;
        }
    }
    EXPECT_GT(compared, 100000);
}

TEST(GlobeLand, StaysOnTheDisc) {
    Dice dice;
    Earth earth;
    for (const Shape& shape : AllShapes()) {
        for (int view = 0; view < 100; ++view) {
            GlintViewConfig config = AnyGlobeCamera(dice, view % 2 == 0);
            config.ScaleX = config.ScaleY = 250;
            config.PanX = config.PanY = 0;
            earth.Draw(config, shape.vertices);
            for (const auto& fill : earth.canvas.fills) {
                for (const Contour& contour : fill)
                    for (const Pixel& p : contour)
                        EXPECT_LE(std::hypot(p.x - 400, p.y - 300), 250 + 1e-9) << shape.name;
            }
            for (const Contour& line : earth.canvas.lines)
                for (const Pixel& p : line) EXPECT_LE(std::hypot(p.x - 400, p.y - 300), 250 + 1e-9) << shape.name;
        }
    }
}

TEST(GlobeLand, FollowsTheLimbToAQuarterPixel) {
    // From over the north pole, land down to 1 degree north ends at the limb everywhere.
    Earth earth;
    for (const double scale : {20.0, 250.0, 290.0}) {
        earth.Draw(Camera(std::numbers::pi / 2, 0.3, 0, scale), CapShape({90, 0}, 89).vertices);
        const double inner = scale * std::sin(89 * kDegree);
        for (int i = 0; i < 1000; ++i) {
            const double angle = i * 0.0127;
            const double radius = inner - 0.8;
            EXPECT_TRUE(earth.canvas.Covers({400 + radius * std::cos(angle), 300 + radius * std::sin(angle)}));
        }
    }
    // A band round the equator seen from over it: its ends at the limb are arcs, not chords.
    const Shape band = BoxShape(-40, 40, -100, 100, 40);
    earth.Draw(Camera(0, 0, 0, 290), band.vertices);
    for (double lat = -39; lat < 39; lat += 0.37) {
        const double radius = 290 - 0.3;
        for (const double side : {-1.0, 1.0}) {
            EXPECT_TRUE(earth.canvas.Covers(
                {400 + side * radius * std::cos(lat * kDegree), 300 - radius * std::sin(lat * kDegree)}))
                << lat;
        }
    }
}

TEST(GlobeLand, BehindTheGlobeIsNotDrawn) {
    Earth earth;
    earth.Draw(Camera(std::numbers::pi / 2, 0, 0, 290), PolarLandShape(1).vertices);
    EXPECT_TRUE(earth.canvas.lines.empty());
    for (int x = 110; x < 690; x += 7)
        for (int y = 10; y < 590; y += 7)
            EXPECT_FALSE(earth.canvas.Covers({static_cast<double>(x), static_cast<double>(y)}));
    earth.Draw(Camera(0, std::numbers::pi, 0, 290), BoxShape(-20, 30, -40, 60).vertices);
    EXPECT_TRUE(earth.canvas.lines.empty());
    EXPECT_TRUE(earth.canvas.fills.empty());
}

TEST(GlobeLand, CoversTheDiscWhereTwoHalvesOfTheEarthMeet) {
    Shape halves = BoxShape(-90, 90, -180, 0, 9, 1);
    const Shape other = BoxShape(-90, 90, 0, 180, 9, 2);
    for (std::size_t i = 0; i < other.vertices.lat.size(); ++i)
        halves.vertices.Add(other.vertices.lat[i], other.vertices.lon[i], 2);
    halves.contains = [first = halves.contains, second = other.contains](const Place& p) {
        return first(p) || second(p);
    };
    Earth earth;
    Dice dice;
    for (int view = 0; view < 100; ++view) {
        const GlintViewConfig config = AnyGlobeCamera(dice, view % 2 == 0);
        earth.Draw(config, halves.vertices);
        ExpectFillIs(halves, earth.canvas, config, dice, 50, [&](const Pixel& p) { return PlaceOnGlobe(config, p); });
        // Neither the seam nor the edges at the poles are borders; the meridian of 0 is one.
        for (const Contour& line : earth.canvas.lines) {
            for (const Pixel& p : line) {
                const auto place = PlaceOnGlobe(config, p);
                ASSERT_TRUE(!place || std::abs(place->lon) < 10 || std::abs(place->lat) > 85)
                    << place->lat << ' ' << place->lon;
            }
        }
    }
}

TEST(GlobeLand, DoesNotFlashWhenTurning) {
    // A whole turn in steps of an eighth of a degree, past countries that leave and come back at the limb all the
    // time: a fill that is inside out for one picture shows at the middle of the disc.
    std::vector<Shape> shapes{StarShape({5, 40}, 60, 23), BoxShape(40, 49, -130, -20), CapShape({10, -60}, 75, 300),
                              PolarLandShape(1)};
    Earth earth;
    int compared = 0;
    for (const Shape& shape : shapes) {
        for (int step = 0; step < 2880; ++step) {
            const GlintViewConfig config = Camera(0.4, step / 8.0 * kDegree, 0, 40);
            earth.Draw(config, shape.vertices);
            for (const Pixel& p : {Pixel{400, 300}, Pixel{390, 310}, Pixel{415, 290}}) {
                const auto land = LandAt(shape, p, [&](const Pixel& at) { return PlaceOnGlobe(config, at); });
                if (!land) continue;
                ++compared;
                ASSERT_EQ(earth.canvas.Covers(p), *land) << shape.name << ' ' << step;
            }
        }
    }
    EXPECT_GT(compared, 20000);
}

/// Distance of a pixel from a line, pixels.
double DistanceFrom(const Contour& line, const Pixel& p) {
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < line.size(); ++i) {
        const Pixel d{line[i].x - line[i - 1].x, line[i].y - line[i - 1].y};
        const double square = d.x * d.x + d.y * d.y;
        const double along = (p.x - line[i - 1].x) * d.x + (p.y - line[i - 1].y) * d.y;
        const double part = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
        least = std::min(least, std::hypot(p.x - line[i - 1].x - part * d.x, p.y - line[i - 1].y - part * d.y));
    }
    return least;
}

double DistanceFrom(const std::vector<Contour>& lines, const Pixel& p) {
    double least = std::numeric_limits<double>::infinity();
    for (const Contour& line : lines) least = std::min(least, DistanceFrom(line, p));
    return least;
}

TEST(GlobeOutline, RunsAlongTheBorderOnTheNearSide) {
    Dice dice;
    Earth earth;
    const Place centre{20, 100};
    const Shape cap = CapShape(centre, 40);
    int seen = 0;
    for (int view = 0; view < 200; ++view) {
        GlintViewConfig config = AnyGlobeCamera(dice, view % 2 == 0);
        config.ScaleX = config.ScaleY = 280;
        earth.Draw(config, cap.vertices);
        // No line leads elsewhere: points along each lie 40 degrees from the centre, counted on the near side.
        for (const Contour& line : earth.canvas.lines) {
            ASSERT_GE(line.size(), 2U);
            for (std::size_t i = 1; i < line.size(); ++i) {
                const Pixel middle{(line[i].x + line[i - 1].x) / 2, (line[i].y + line[i - 1].y) / 2};
                const Pixel scene = SceneOf(config, middle);
                const double depth = std::sqrt(std::max(0.0, 1 - scene.x * scene.x - scene.y * scene.y));
                const auto place = PlaceOnGlobe(config, middle);
                ASSERT_TRUE(place.has_value());
                // Half a pixel is many degrees at the limb.
                if (depth > 0.2) EXPECT_NEAR(Separation(*place, centre), 40, 0.5 / 280 / depth / kDegree);
                ++seen;
            }
        }
        // And none is missing.
        for (std::size_t i = 0; i < cap.vertices.lat.size(); i += 5) {
            const Seen at = SeenOnGlobe(config, {cap.vertices.lat[i], cap.vertices.lon[i]});
            const bool inPicture = at.pixel.x > 0 && at.pixel.x < 800 && at.pixel.y > 0 && at.pixel.y < 600;
            if (at.depth > 0.001 && inPicture) EXPECT_LT(DistanceFrom(earth.canvas.lines, at.pixel), 0.8);
        }
    }
    EXPECT_GT(seen, 3000);
}

TEST(GlobeOutline, EndsExactlyAtTheLimb) {
    // A meridian strip seen from the side: the equator's border runs into the limb at the right.
    Earth earth;
    earth.Draw(Camera(0, 0, 0, 250), BoxShape(0, 20, 40, 140).vertices);
    std::vector<Pixel> ends;
    for (const Contour& line : earth.canvas.lines) {
        for (const Pixel& end : {line.front(), line.back()})
            if (std::hypot(end.x - 400, end.y - 300) > 249) ends.push_back(end);
    }
    // They are at longitude 90, latitudes 0 and 20.
    ASSERT_EQ(ends.size(), 2U);
    const auto [high, low] = std::minmax(ends[0], ends[1], [](const Pixel& a, const Pixel& b) { return a.y < b.y; });
    EXPECT_NEAR(std::hypot(high.x - 400, high.y - 300), 250, 1e-9);
    EXPECT_NEAR(low.x, 650, 1e-9);
    EXPECT_NEAR(low.y, 300, 1e-9);
    EXPECT_NEAR(high.y, 300 - 250 * std::sin(20 * kDegree), 0.3);
}

TEST(GlobeOutline, LeavesOutTheSeamAndThePole) {
    Dice dice;
    Earth earth;
    for (const int poleParts : {1, 8}) {
        const Shape land = PolarLandShape(poleParts);
        for (int view = 0; view < 60; ++view) {
            GlintViewConfig config = AnyGlobeCamera(dice, false);
            config.ScaleX = config.ScaleY = 280;
            earth.Draw(config, land.vertices);
            for (const Contour& line : earth.canvas.lines) {
                for (const Pixel& p : line) {
                    const auto place = PlaceOnGlobe(config, p);
                    // The coast's southernmost point; everything beyond would be the seam.
                    if (place) EXPECT_GT(place->lat, -82) << view;
                }
            }
        }
    }
    // Neighbours that meet at the seam: no line at longitude 180.
    earth.Draw(Camera(0.5, std::numbers::pi, 0, 280), SeamNeighbours().vertices);
    ASSERT_FALSE(earth.canvas.lines.empty());
    for (double lat = 21; lat < 50; lat += 1) {
        const Seen at = SeenOnGlobe(Camera(0.5, std::numbers::pi, 0, 280), {lat, 180});
        const double nearestBorder = std::min({lat - 20, 50 - lat}) * kDegree * 280;
        if (nearestBorder > 12) EXPECT_GT(DistanceFrom(earth.canvas.lines, at.pixel), 5) << lat;
    }
}

TEST(GlobeOutline, FollowsAParallelAndNotTheGreatCircle) {
    // Seen from over the pole, the border along 49 degrees north keeps its distance from the pole. A great circle
    // between its ends would pass the pole 27 degrees nearer.
    Earth earth;
    earth.Draw(Camera(std::numbers::pi / 2, 0, 0, 290), BoxShape(40, 49, -130, -20).vertices);
    const double radius = 290 * std::cos(49 * kDegree);
    int onParallel = 0;
    for (const Contour& line : earth.canvas.lines) {
        for (const Pixel& p : line) {
            EXPECT_GT(std::hypot(p.x - 400, p.y - 300), radius - 0.3);
            onParallel += std::hypot(p.x - 400, p.y - 300) < radius + 0.3 ? 1 : 0;
        }
    }
    EXPECT_GT(onParallel, 20);
}

TEST(MapLand, IsFilledWhereItIsForAnyShift) {
    Dice dice;
    Earth earth;
    int compared = 0;
    for (const Shape& shape : AllShapes()) {
        for (int view = 0; view < 150; ++view) {
            constexpr std::array kScales{60.0, 127.0, 250.0, 2000.0};
            constexpr std::array kEighths{-4.0, -3.0, -2.0, -1.0, 0.0, 1.0, 2.0, 3.0, 4.0};
            const bool straight = view % 2 == 0;
            GlintViewConfig config = FlatCamera(
                straight ? 0 : dice.From(-1.2, 1.2),
                straight ? dice.OneOf(kEighths) * std::numbers::pi / 4 : dice.From(-7, 7), dice.OneOf(kScales));
            config.PanX = straight ? 0 : dice.From(-1, 1);
            config.PanY = straight ? 0 : dice.From(-1, 1);
            earth.Draw(config, shape.vertices);
            compared += ExpectFillIs(shape, earth.canvas, config, dice, 60,
                                     [&](const Pixel& p) { return PlaceOnMap(config, p); });
            if (::testing::Test::HasFailure()) return;
        }
    }
    EXPECT_GT(compared, 100000);
}

TEST(MapLand, StaysInTheFrame) {
    Dice dice;
    Earth earth;
    for (const Shape& shape : AllShapes()) {
        for (int view = 0; view < 50; ++view) {
            const double scale = 100;
            const GlintViewConfig config = FlatCamera(dice.From(-1, 1), dice.From(-7, 7), scale);
            const double left = 400 - scale * std::numbers::pi;
            const double right = 400 + scale * std::numbers::pi;
            const double top = 300 - scale * (std::numbers::pi / 2 - config.ViewLat);
            const double bottom = 300 + scale * (std::numbers::pi / 2 + config.ViewLat);
            const auto expectInside = [&](const Contour& contour) {
                for (const Pixel& p : contour) {
                    EXPECT_GE(p.x, left - 1e-9) << shape.name;
                    EXPECT_LE(p.x, right + 1e-9) << shape.name;
                    EXPECT_GE(p.y, top - 1e-9) << shape.name;
                    EXPECT_LE(p.y, bottom + 1e-9) << shape.name;
                }
            };
            earth.Draw(config, shape.vertices);
            for (const auto& fill : earth.canvas.fills) std::for_each(fill.begin(), fill.end(), expectInside);
            std::for_each(earth.canvas.lines.begin(), earth.canvas.lines.end(), expectInside);
        }
    }
}

TEST(MapLand, ReachesTheEdgeRoundThePole) {
    Earth earth;
    for (const double lon : {0.0, 1.0, std::numbers::pi, -2.5}) {
        for (const int poleParts : {1, 8}) {
            const GlintViewConfig config = FlatCamera(0, lon, 100);
            earth.Draw(config, PolarLandShape(poleParts).vertices);
            for (double x = 400 - 313.9; x < 400 + 314; x += 1.7)
                EXPECT_TRUE(earth.canvas.Covers({x, 300 + 156.9})) << lon << ' ' << x;
        }
    }
}

TEST(MapOutline, ComesBackOnTheOtherSideOfTheSeam) {
    // From longitude 179 to -179 along the equator, and back 10 degrees north of it.
    Earth earth;
    const double scale = 100;
    earth.Draw(FlatCamera(0, 0, scale), BoxShape(0, 10, 179, 181).vertices);
    const double edge = scale * std::numbers::pi;
    const double degree = scale * kDegree;
    for (const double side : {-1.0, 1.0}) {
        std::vector<double> heights;  // where lines end at the frame
        double innermost = side * edge;
        for (const Contour& line : earth.canvas.lines) {
            ASSERT_EQ(line.front().x > 400, line.back().x > 400);
            if ((line.front().x - 400) * side < 0) continue;
            for (const Pixel& end : {line.front(), line.back()}) {
                if (std::abs(end.x - 400 - side * edge) < 0.01) {
                    EXPECT_NEAR(end.x, 400 + side * edge, 1e-9);
                    heights.push_back(300 - end.y);
                }
            }
            for (const Pixel& p : line) innermost = side * std::min(side * innermost, side * (p.x - 400));
        }
        std::sort(heights.begin(), heights.end());
        ASSERT_EQ(heights.size(), 2U);
        EXPECT_NEAR(heights[0], 0, 1e-9);
        EXPECT_NEAR(heights[1], 10 * degree, 1e-9);
        EXPECT_NEAR(innermost, side * (edge - degree), 1e-9);
    }
}

TEST(MapOutline, LeavesOutTheSeamAndThePole) {
    Earth earth;
    for (const int poleParts : {1, 8}) {
        // Longitude 180 lies in the middle of the picture.
        const GlintViewConfig config = FlatCamera(0, std::numbers::pi, 100);
        earth.Draw(config, PolarLandShape(poleParts).vertices);
        for (const Contour& line : earth.canvas.lines)
            for (const Pixel& p : line) EXPECT_LT(p.y, 300 + 100 * 82 * kDegree);
        // The coast is there, through the middle too.
        for (double lon = -179; lon < 180; lon += 1.3) {
            const double x = 400 + 100 * std::remainder(lon - 180, 360) * kDegree;
            EXPECT_LT(DistanceFrom(earth.canvas.lines, {x, 300 - 100 * CoastAt(lon) * kDegree}), 0.8) << lon;
        }
    }
}

TEST(MapOutline, EndsAtThePlaceOfItsVertices) {
    Earth earth;
    GlintViewConfig config = FlatCamera(0.2, -1.1, 120);
    config.PanX = 0.3;
    config.PanY = -0.1;
    const Shape star = StarShape({5, 40}, 60, 23);
    earth.Draw(config, star.vertices);
    for (std::size_t i = 0; i < star.vertices.lat.size(); i += 7) {
        const double x = std::remainder(star.vertices.lon[i] * kDegree + 1.1, 2 * std::numbers::pi);
        const Pixel p{400 + 120 * (x + 0.3), 300 - 120 * (star.vertices.lat[i] * kDegree - 0.2 - 0.1)};
        const bool inPicture = p.x > 0 && p.x < 800 && p.y > 0 && p.y < 600;
        if (inPicture) EXPECT_LT(DistanceFrom(earth.canvas.lines, p), 0.8);
    }
}

/// A ring that leaps from side to side of the globe.
Vertices Scribble(Dice& dice, int corners) {
    Vertices ring;
    for (int i = 0; i < corners; ++i) ring.Add(dice.From(-90, 90), dice.From(-89, 89), 1);
    ring.Add(ring.lat[0], ring.lon[0], 1);
    return ring;
}

TEST(Scratch, IsEnoughForTheWorstOfRings) {
    Dice dice;
    Earth earth;
    for (int i = 0; i < 200; ++i) {
        const Vertices ring = Scribble(dice, 5 + 3 * i);
        const double lat = dice.From(-0.5, 0.5);
        const double lon = dice.From(-1.3, 1.3);
        const GlintViewConfig config =
            i % 2 == 0 ? FlatCamera(lat, lon, 290) : Camera(lat, lon, dice.From(-0.2, 0.2), 290);
        earth.Draw(config, ring);
        EXPECT_FALSE(earth.canvas.fills.empty()) << i;
        EXPECT_LE(earth.used, GLINTCORE_DRAW_SCRATCH(ring.lat.size()));
    }
}

TEST(Scratch, TooLittleLeavesTheOutline) {
    Earth earth;
    const Shape star = StarShape({5, 40}, 60, 23);
    for (const GlintViewConfig& config : {Camera(0, 0, 0, 290), Camera(0, 2, 0, 290), FlatCamera(0, 0, 120)}) {
        earth.Draw(config, star.vertices);
        ASSERT_FALSE(earth.canvas.fills.empty());
        const std::size_t needed = earth.used;
        EXPECT_GT(needed, 500U);
        for (const std::size_t room : {std::size_t{0}, std::size_t{2}, std::size_t{100}}) {
            earth.Draw(config, star.vertices, room);
            EXPECT_TRUE(earth.canvas.fills.empty());
            EXPECT_FALSE(earth.canvas.lines.empty());
            EXPECT_EQ(earth.used, 0U);
        }
        earth.Draw(config, star.vertices, needed);
        EXPECT_FALSE(earth.canvas.fills.empty());
    }
}

TEST(Scratch, ABorderWhoseClosingVertexFindsNoRoomIsOutlinedAllTheSame) {
    // The filled contour is the border as well, and is closed by its first vertex again: two numbers more.
    Earth earth;
    const Shape star = StarShape({5, 40}, 20, 23);
    const GlintViewConfig config = Camera(0.1, 0.7, 0, 290);
    earth.Draw(config, star.vertices);
    const std::size_t needed = earth.used;
    ASSERT_EQ(earth.canvas.lines.size(), 1U);
    const Contour border = earth.canvas.lines[0];
    ASSERT_EQ(2 * border.size(), needed);
    const auto view = EarthViewOf(config);
    ASSERT_TRUE(view.has_value());
    for (const std::size_t missing : {1U, 2U}) {
        constexpr double kUntouched = -12345;
        std::vector<double> memory(needed + 2, kUntouched);
        const std::size_t room = needed - missing;
        earth.canvas.Clear();
        const std::size_t used =
            DrawEarth(earth.canvas.Target(), *view, {star.vertices.lat, star.vertices.lon, star.vertices.polygon},
                      std::span(memory).first(room));
        EXPECT_EQ(used, needed - 2);
        for (std::size_t i = room; i < memory.size(); ++i) EXPECT_EQ(memory[i], kUntouched) << i;
        EXPECT_EQ(earth.canvas.fills.size(), 1U);
        // In one piece or several, the line goes round and comes back to where it began.
        ASSERT_FALSE(earth.canvas.lines.empty());
        const Pixel first = earth.canvas.lines.front().front();
        const Pixel last = earth.canvas.lines.back().back();
        EXPECT_NEAR(first.x, last.x, 1e-9);
        EXPECT_NEAR(first.y, last.y, 1e-9);
        std::size_t vertices = 0;
        for (const Contour& line : earth.canvas.lines) vertices += line.size();
        EXPECT_GE(vertices, border.size());
    }
}

TEST(Scratch, LittleIsMadeUpForByCoarserLines) {
    // A country whose long borders along parallels are many lines when drawn finely.
    Earth earth;
    const Shape box = BoxShape(40, 49, -130, -20);
    const GlintViewConfig config = Camera(0.8, -1.2, 0, 290);
    earth.Draw(config, box.vertices);
    const std::size_t needed = earth.used;
    earth.Draw(config, box.vertices, needed / 2);
    EXPECT_EQ(earth.canvas.fills.size(), 1U);
    EXPECT_LE(earth.used, needed / 2);
}

TEST(Sizes, SpecksAreLeftOutAndIslandsAreNot) {
    Earth earth;
    const Vertices island = CapShape({10, 10}, 0.1).vertices;
    earth.Draw(Camera(0, 0, 0, 100), island);  // a third of a pixel across
    EXPECT_TRUE(earth.canvas.fills.empty());
    EXPECT_TRUE(earth.canvas.lines.empty());
    earth.Draw(Camera(0, 0, 0, 1000), island);  // 3.5 pixels
    ASSERT_EQ(earth.canvas.fills.size(), 1U);
    ASSERT_EQ(earth.canvas.lines.size(), 1U);
    const Seen centre = SeenOnGlobe(Camera(0, 0, 0, 1000), {10, 10});
    EXPECT_TRUE(earth.canvas.Covers(centre.pixel));
    earth.Draw(FlatCamera(0, 0, 100), island);
    EXPECT_TRUE(earth.canvas.fills.empty());
}

TEST(Sizes, FarGlobesAreDrawnWithFewVertices) {
    Earth earth;
    const Vertices cap = CapShape({5, 40}, 40, 3000).vertices;
    earth.Draw(Camera(0, 0.7, 0, 20), cap);
    ASSERT_EQ(earth.canvas.fills.size(), 1U);
    std::size_t vertices = 0;
    for (const Contour& contour : earth.canvas.fills.front()) vertices += contour.size();
    EXPECT_GT(vertices, 50U);
    EXPECT_LT(vertices, 300U);  // its edge is 80 pixels long
}

TEST(Sizes, BesideThePictureNothingIsDrawn) {
    Earth earth;
    const Vertices island = CapShape({10, 10}, 2).vertices;
    GlintViewConfig config = Camera(10 * kDegree, 10 * kDegree, 0, 300);
    earth.Draw(config, island);
    EXPECT_EQ(earth.canvas.fills.size(), 1U);
    config.PanX = 1.5;  // 450 pixels to the right
    earth.Draw(config, island);
    EXPECT_TRUE(earth.canvas.fills.empty());
    EXPECT_TRUE(earth.canvas.lines.empty());
    config.PanX = 0;
    config.PanY = -1.1;
    config.CPlaniSphere = 1;
    earth.Draw(config, island);
    EXPECT_TRUE(earth.canvas.fills.empty());
}

TEST(Sizes, CloseViewsStayNearThePicture) {
    Dice dice;
    Earth earth;
    // Those whose borders are known to a few metres.
    for (const Shape& shape : {BoxShape(-20, 30, 10, 60), BoxShape(40, 49, -130, -20), BoxShape(-30, 20, 160, 215),
                               BoxShape(60, 90, 0, 90), BoxShape(-80, 80, -110, 110, 40), SeamNeighbours()}) {
        for (int view = 0; view < 30; ++view) {
            GlintViewConfig config = Camera(0, 0, 0, 150000);
            // Over a vertex of the shape, so that there is something to see.
            const auto i = static_cast<std::size_t>(dice.From(0, static_cast<double>(shape.vertices.lat.size())));
            config.ViewLat = shape.vertices.lat[i] * kDegree;
            config.ViewLon = shape.vertices.lon[i] * kDegree;
            earth.Draw(config, shape.vertices);
            for (const auto& fill : earth.canvas.fills) {
                for (const Contour& contour : fill) {
                    for (const Pixel& p : contour) {
                        EXPECT_LE(std::abs(p.x - 400), 420) << shape.name;
                        EXPECT_LE(std::abs(p.y - 300), 320) << shape.name;
                    }
                }
            }
            ExpectFillIs(shape, earth.canvas, config, dice, 30,
                         [&](const Pixel& p) { return PlaceOnGlobe(config, p); });
        }
    }
}

TEST(BadInput, DrawsNothing) {
    Earth earth;
    const Vertices good = BoxShape(0, 20, 0, 30).vertices;
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double bad : {kNan, kInfinity, -kInfinity, 90.001, 1e300}) {
        Vertices map = good;
        map.lat[1] = bad;
        for (const Shape& other : {BoxShape(30, 40, 0, 30, 1, 2)})
            for (std::size_t i = 0; i < other.vertices.lat.size(); ++i)
                map.Add(other.vertices.lat[i], other.vertices.lon[i], 2);
        for (const GlintViewConfig& config : {Camera(0.3, 0.3, 0, 290), FlatCamera(0, 0, 100)}) {
            earth.Draw(config, map);
            EXPECT_EQ(earth.canvas.fills.size(), 1U) << bad;  // the other one
        }
    }
    Vertices map = good;
    map.lon[2] = 361;
    earth.Draw(Camera(0.3, 0.3, 0, 290), map);
    EXPECT_TRUE(earth.canvas.fills.empty());
}

TEST(BadInput, IsRefusedAsACamera) {
    const GlintViewConfig good = Camera(0, 0, 0, 290);
    EXPECT_TRUE(EarthViewOf(good).has_value());
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double bad : {kNan, kInfinity, 1e30}) {
        for (const std::size_t field : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U}) {
            GlintViewConfig config = good;
            std::copy_n(reinterpret_cast<const unsigned char*>(&bad), sizeof bad,
                        reinterpret_cast<unsigned char*>(&config) + field * sizeof bad);
            EXPECT_FALSE(EarthViewOf(config).has_value()) << field;
        }
    }
    GlintViewConfig config = good;
    config.ScaleY = 0;
    EXPECT_FALSE(EarthViewOf(config).has_value());
    config.ScaleY = -3;
    EXPECT_FALSE(EarthViewOf(config).has_value());
}

TEST(Rings, ShortOnesAndOpenOnes) {
    Earth earth;
    const GlintViewConfig config = Camera(0, 0, 0, 290);
    Vertices map;
    map.Add(0, 0, 1);
    map.Add(10, 10, 1);
    earth.Draw(config, map);
    EXPECT_TRUE(earth.canvas.fills.empty());
    map.Add(10, 0, 1);
    earth.Draw(config, map);
    ASSERT_EQ(earth.canvas.fills.size(), 1U);
    // An open ring is filled as if closed, but no border is drawn where none is given.
    EXPECT_TRUE(earth.canvas.Covers(SeenOnGlobe(config, {7, 2}).pixel));
    EXPECT_GT(DistanceFrom(earth.canvas.lines, SeenOnGlobe(config, {5, 0}).pixel), 10);
    EXPECT_LT(DistanceFrom(earth.canvas.lines, SeenOnGlobe(config, {5, 5}).pixel), 1);
}

}  // namespace
}  // namespace glintara::earth_tests
