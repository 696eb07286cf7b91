// The border tables that come with the program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "orbit/files.h"
#include "scene/map_files.h"
#include "scene/map_text.h"

namespace glintara {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;
constexpr double kTurn = 360;

const std::filesystem::path& DataFolder() {
    static const std::filesystem::path folder = std::filesystem::path(GLINTARA_SOURCE_DIR) / "data";
    return folder;
}

struct Vertex {
    double lat = 0;
    double lon = 0;

    friend bool operator==(const Vertex&, const Vertex&) = default;
    friend bool operator<(const Vertex& a, const Vertex& b) { return std::tie(a.lat, a.lon) < std::tie(b.lat, b.lon); }
};

using Ring = std::vector<Vertex>;

struct Place {
    const char* name;
    double lat;  // geodetic, degrees
    double lon;
};

/// Geodetic to geocentric latitude by the series of the ellipsoid's flattening (692.74" sin 2B - 1.16" sin 4B, WGS 84).
double GeocentricLat(double lat) {
    return lat - (692.74 * std::sin(2 * lat * kDegree) - 1.16 * std::sin(4 * lat * kDegree)) / 3600;
}

double ShortWay(double degrees) { return std::remainder(degrees, kTurn); }

/// How often a ring winds around a place, by the sum of the angles under which its edges are seen from there. The
/// ring's longitudes are followed without jumps from the first vertex on; `lon` lies in their range or not.
int WindingNumber(const Ring& ring, double lat, double lon) {
    double sum = 0;
    double x = ring.front().lon - lon;
    double y = ring.front().lat - lat;
    for (std::size_t i = 1; i < ring.size(); ++i) {
        const double nextX = x + ShortWay(ring[i].lon - ring[i - 1].lon);
        const double nextY = ring[i].lat - lat;
        sum += std::atan2(x * nextY - y * nextX, x * nextX + y * nextY);
        x = nextX;
        y = nextY;
    }
    return static_cast<int>(std::lround(sum / (kTurn * kDegree)));
}

bool Contains(const Ring& ring, const Place& place) {
    const double lat = GeocentricLat(place.lat);
    const auto [low, high] =
        std::minmax_element(ring.begin(), ring.end(), [](const Vertex& a, const Vertex& b) { return a.lat < b.lat; });
    if (lat < low->lat || lat > high->lat) return false;
    const auto windsAround = [&](double lon) { return WindingNumber(ring, lat, lon) != 0; };
    return windsAround(place.lon) || windsAround(place.lon - kTurn) || windsAround(place.lon + kTurn);
}

struct Table {
    BorderTable table;
    std::vector<Ring> rings;

    /// Numbers (from 0) of the polygons that a place lies in, in the order of the file.
    std::vector<std::size_t> RingsAt(const Place& place) const {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < rings.size(); ++i)
            if (Contains(rings[i], place)) found.push_back(i);
        return found;
    }
};

Table ReadTable(const char* file) {
    Table read;
    if (const auto bytes = ReadWholeFile(DataFolder() / file, 10000000))
        read.table = DecodeBorders(*bytes).value_or(BorderTable{});
    for (std::size_t i = 1; i < read.table.Id.size(); ++i) {
        if (i == 1 || read.table.Id[i] != read.table.Id[i - 1]) read.rings.emplace_back();
        read.rings.back().push_back({read.table.Lat[i], read.table.Lon[i]});
    }
    return read;
}

struct Case {
    const char* name;
    const char* file;
};

void PrintTo(const Case& table, std::ostream* stream) { *stream << table.file; }

class BorderData : public ::testing::TestWithParam<Case> {
  protected:
    const Table data = ReadTable(GetParam().file);

    void SetUp() override { ASSERT_GT(data.rings.size(), 0U) << GetParam().file; }
};

INSTANTIATE_TEST_SUITE_P(Tables, BorderData, ::testing::Values(Case{"Fine", "DB001.VDB"}, Case{"Reduced", "DB002.VDB"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(BorderData, EachNumberIsOneClosedRing) {
    std::set<std::int32_t> numbers;
    std::size_t start = 1;
    for (const Ring& ring : data.rings) {
        EXPECT_GE(ring.size(), 4U);
        EXPECT_EQ(ring.front(), ring.back());
        EXPECT_TRUE(numbers.insert(data.table.Id[start]).second) << "number " << data.table.Id[start] << " comes again";
        double turned = 0;
        for (std::size_t i = 1; i < ring.size(); ++i) turned += ShortWay(ring[i].lon - ring[i - 1].lon);
        EXPECT_NEAR(turned, 0, 1e-6) << "the ring at " << ring.front().lat << ", " << ring.front().lon;
        start += ring.size();
    }
}

TEST_P(BorderData, AllVerticesAreOnTheEarth) {
    for (const Ring& ring : data.rings) {
        for (const Vertex& vertex : ring) {
            EXPECT_LE(std::abs(vertex.lat), 90);
            EXPECT_LE(std::abs(vertex.lon), 180);
        }
    }
}

TEST_P(BorderData, TownsLieOnLand) {
    for (const Place& town :
         std::initializer_list<Place>{{"Turin", 45.07, 7.69},         {"Madrid", 40.42, -3.70},
                                      {"Warsaw", 52.23, 21.01},       {"Moscow", 55.75, 37.62},
                                      {"Novosibirsk", 55.03, 82.92},  {"Delhi", 28.61, 77.21},
                                      {"Xi'an", 34.27, 108.95},       {"Ulan Bator", 47.92, 106.92},
                                      {"Tehran", 35.69, 51.42},       {"Cairo", 30.04, 31.24},
                                      {"Nairobi", -1.29, 36.82},      {"Kinshasa", -4.6, 15.6},
                                      {"Johannesburg", -26.2, 28.05}, {"Alice Springs", -23.70, 133.88},
                                      {"Denver", 39.74, -104.98},     {"Mexico City", 19.43, -99.13},
                                      {"Winnipeg", 49.90, -97.14},    {"Fairbanks", 64.84, -147.72},
                                      {"Brasilia", -15.79, -47.88},   {"La Paz", -16.5, -68.15},
                                      {"Quito", -0.18, -78.47},       {"Vostok Station", -78.46, 106.84}})
        EXPECT_EQ(data.RingsAt(town).size(), 1U) << town.name;
}

TEST_P(BorderData, SeasAreOpenWater) {
    for (const Place& sea : std::initializer_list<Place>{{"North Atlantic", 40, -40},
                                                         {"Gulf of Guinea", 0, 0},
                                                         {"Pacific at the seam", 30, 180},
                                                         {"Pacific at the seam", -45, -180},
                                                         {"South Pacific", -40, -110},
                                                         {"Indian Ocean", -10, 75},
                                                         {"North Pole", 90, 0},
                                                         {"Beaufort Sea", 74, -140},
                                                         {"Drake Passage", -59, -65},
                                                         {"Ross Sea", -75, -175},
                                                         {"Weddell Sea", -72, -45},
                                                         {"Tyrrhenian Sea", 40, 12.3},
                                                         {"Black Sea", 43.2, 34},
                                                         {"northern Caspian", 44.5, 49},
                                                         {"middle Caspian", 42, 50.3},
                                                         {"southern Caspian", 38.5, 51.2},
                                                         {"Gulf of Bothnia", 62, 19.5},
                                                         {"Hudson Bay", 59, -86},
                                                         {"Red Sea", 20, 38.6},
                                                         {"Persian Gulf", 27, 51.2},
                                                         {"Bering Strait side", 62, -177}})
        EXPECT_TRUE(data.RingsAt(sea).empty()) << sea.name << " " << sea.lat << ", " << sea.lon;
}

TEST_P(BorderData, CountriesAreTakenApart) {
    const auto turin = data.RingsAt({"Turin", 45.07, 7.69});
    EXPECT_EQ(turin, data.RingsAt({"Florence", 43.77, 11.26}));
    EXPECT_NE(turin, data.RingsAt({"Lyon", 45.76, 4.84}));
    EXPECT_NE(turin, data.RingsAt({"Berne", 46.95, 7.45}));
    EXPECT_NE(data.RingsAt({"Denver", 39.74, -104.98}), data.RingsAt({"Winnipeg", 49.90, -97.14}));
}

TEST_P(BorderData, RussiaIsWholeAcrossTheSeam) {
    const auto moscow = data.RingsAt({"Moscow", 55.75, 37.62});
    for (const Place& place : std::initializer_list<Place>{{"Bilibino", 68.06, 166.45},
                                                           {"Chukotka west of 180", 67, 179.9},
                                                           {"Chukotka on 180", 67, 180},
                                                           {"Chukotka on -180", 67, -180},
                                                           {"Chukotka east of 180", 67, -179.9},
                                                           {"Chukotka", 66.5, -175}})
        EXPECT_EQ(data.RingsAt(place), moscow) << place.name;
}

TEST_P(BorderData, AntarcticaReachesThePoleAllAround) {
    const auto vostok = data.RingsAt({"Vostok Station", -78.46, 106.84});
    for (double lon = -179.99; lon < 180; lon += 10) {
        EXPECT_EQ(data.RingsAt({"the plateau", -89.99, lon}), vostok) << lon;
        EXPECT_EQ(data.RingsAt({"the plateau", -86.5, lon}), vostok) << lon;
    }
}

TEST_P(BorderData, NoCoastRunsAlongTheSeam) {
    // Two edges along 180 lead Antarctica to the pole; nothing else does, and all that lies at a pole is at exactly 90.
    int seamEdges = 0;
    for (const Ring& ring : data.rings) {
        for (std::size_t i = 1; i < ring.size(); ++i) {
            const Vertex& from = ring[i - 1];
            const Vertex& to = ring[i];
            if (std::abs(from.lon) == 180 && std::abs(to.lon) == 180) {
                ++seamEdges;
                EXPECT_EQ(from.lon, to.lon) << "one place of the seam on both its sides";
                EXPECT_EQ(std::min(from.lat, to.lat), -90);
            }
            EXPECT_TRUE(to.lat > -86 || to.lat == -90) << to.lat << ", " << to.lon;
        }
    }
    EXPECT_EQ(seamEdges, 2);
}

TEST_P(BorderData, AnEnclaveComesAfterTheCountryRoundIt) {
    const auto johannesburg = data.RingsAt({"Johannesburg", -26.2, 28.05});
    const auto lesotho = data.RingsAt({"Lesotho", -29.5, 28.3});
    ASSERT_EQ(johannesburg.size(), 1U);
    ASSERT_EQ(lesotho.size(), 2U);
    EXPECT_EQ(lesotho[0], johannesburg[0]);
}

TEST_P(BorderData, LandlockedCountriesShareAllTheirBorder) {
    std::set<std::pair<Vertex, Vertex>> edges;
    for (const Ring& ring : data.rings)
        for (std::size_t i = 1; i < ring.size(); ++i) edges.insert({ring[i - 1], ring[i]});
    for (const Place& place : std::initializer_list<Place>{{"Switzerland", 46.95, 7.45},
                                                           {"Mongolia", 47.92, 106.92},
                                                           {"Chad", 15, 19},
                                                           {"Bolivia", -16.5, -68.15},
                                                           {"Laos", 20, 102}}) {
        const auto found = data.RingsAt(place);
        ASSERT_EQ(found.size(), 1U) << place.name;
        const Ring& ring = data.rings[found[0]];
        for (std::size_t i = 1; i < ring.size(); ++i)
            EXPECT_TRUE(edges.contains({ring[i], ring[i - 1]})) << place.name << ", edge " << i;
    }
}

TEST_P(BorderData, LatitudesAreGeocentric) {
    // From the Lake of the Woods to the Pacific, Canada begins at 49 degrees north.
    const auto winnipeg = data.RingsAt({"Winnipeg", 49.90, -97.14});
    ASSERT_EQ(winnipeg.size(), 1U);
    const Ring& canada = data.rings[winnipeg[0]];
    double south = 90;
    for (std::size_t i = 1; i < canada.size(); ++i) {
        const Vertex& from = canada[i - 1];
        const Vertex& to = canada[i];
        if ((from.lon < -110) == (to.lon < -110)) continue;
        south = std::min(south, from.lat + (to.lat - from.lat) * (-110 - from.lon) / (to.lon - from.lon));
    }
    // A fifth of a degree less from the Earth's centre; the source draws the line to a hundredth.
    EXPECT_NEAR(south, 48.8094, 0.01);
}

TEST(FineBorders, SmallIslandsAreThere) {
    const Table data = ReadTable("DB001.VDB");
    for (const Place& island : std::initializer_list<Place>{{"Oahu", 21.5, -158.0},
                                                            {"Malta", 35.88, 14.42},
                                                            {"Mauritius", -20.3, 57.57},
                                                            {"Taveuni west of 180", -16.87, 179.98},
                                                            {"Taveuni on 180", -16.87, 180},
                                                            {"Taveuni east of 180", -16.87, -179.98}})
        EXPECT_EQ(data.RingsAt(island).size(), 1U) << island.name;
    EXPECT_GT(data.table.Count(), 90000);
}

TEST(ReducedBorders, NoVertexIsNearerThanHalfADegreeToTheOneBefore) {
    const Table data = ReadTable("DB002.VDB");
    for (const Ring& ring : data.rings) {
        for (std::size_t i = 1; i < ring.size(); ++i) {
            const double step = std::hypot(ring[i].lat - ring[i - 1].lat, ring[i].lon - ring[i - 1].lon);
            EXPECT_GE(step, 0.5 - 1e-9) << ring[i].lat << ", " << ring[i].lon;
        }
    }
    EXPECT_LT(data.table.Count(), 8400);
}

TEST(ReducedBorders, TextOfTheTableReadsBackAsTheTable) {
    const BorderTable table = ReadTable("DB002.VDB").table;
    const auto again = ReadCountryZip(CountryZipText(table));
    ASSERT_TRUE(again);
    ASSERT_EQ(again->Id, table.Id);
    for (std::size_t i = 1; i < table.Id.size(); ++i) {
        EXPECT_NEAR(again->Lat[i], table.Lat[i], 1e-12);
        EXPECT_NEAR(again->Lon[i], table.Lon[i], 1e-12);
    }
}

TEST(MapData, AllFilesLoad) {
    MapTables map;
    StarTables stars;
    CityTables cities;
    EXPECT_EQ(LoadMapFiles(DataFolder(), map, stars, cities), std::vector<std::string>{});
    EXPECT_GT(map.Border.Count(), map.Zip.Count());
    EXPECT_EQ(stars.StarPlotTable.size(), stars.StarCatalogue.size());
}

TEST(MapData, SeaSpotsLieInTheSea) {
    const Table data = ReadTable("DB001.VDB");
    const auto text = ReadWholeFile(DataFolder() / "SeaSpot.txt", 100000);
    ASSERT_TRUE(text);
    const auto spots = ReadSeaSpots(*text);
    ASSERT_TRUE(spots);
    EXPECT_GT(spots->size(), 24U);
    for (std::size_t i = 1; i < spots->size(); ++i) {
        const SeaSpot& spot = (*spots)[i];
        // As if geodetic: a spot is far from any shore, twelve minutes of arc do not matter.
        EXPECT_TRUE(data.RingsAt({"spot", spot.lat / kDegree, spot.lon / kDegree}).empty()) << i;
    }
}

}  // namespace
}  // namespace glintara
