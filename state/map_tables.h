#pragma once

// The map in memory. All tables count from 1; element 0 is unused.

#include <cstdint>
#include <vector>

namespace glintara {

/// Border vertices in one run; a change of the polygon number begins a new polygon.
struct BorderTable {
    std::vector<double> Lat = {0};       ///< geocentric latitude, degrees
    std::vector<double> Lon = {0};       ///< longitude, degrees, positive east
    std::vector<std::int32_t> Id = {0};  ///< number of the polygon

    std::int32_t Count() const { return static_cast<std::int32_t>(Lat.size()) - 1; }
};

/// A seed point of a sea, radians.
struct SeaSpot {
    double lat = 0;
    double lon = 0;
};

struct MapTables {
    BorderTable Border;                    ///< fine
    BorderTable Zip;                       ///< reduced: what ordinary frames draw
    std::vector<SeaSpot> SeaSpots = {{}};  ///< seeds, from index 1
};

/// What the making of a reduced table by hand remembers.
struct PolygonTool {
    std::int32_t Selected = 0;  ///< vertex of the fine table; 0 for none
    bool NewPolygon = false;    ///< whether the next vertex added begins a polygon
};

}  // namespace glintara
