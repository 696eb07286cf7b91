#pragma once

// The text forms of the map and the tools to make a reduced table by hand: for developers, never needed by a user.
//
//   countryborders.txt  a line that is skipped, then lines of polygon number, vertex number, longitude, latitude
//   countryzip.txt      the same
//   SeaSpot.txt         the number of spots, then latitude and longitude of each, radians
//
// Values are separated by commas or ends of lines. Latitudes and longitudes of borders are degrees; the vertex number
// is written, but means nothing. Text in which a value is missing or no number is refused as a whole.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scene/view_geometry.h"
#include "state/map_tables.h"

namespace glintara {

/// The data set that countryborders.txt was made for lies beside the true map by so much; these degrees are added to
/// each of its places.
inline constexpr double kBorderTextLatShift = 0.35;
inline constexpr double kBorderTextLonShift = -0.4;

/// A vertex of countryzip.txt nearer than this to the one before it, in degrees on the map, is left out.
inline constexpr double kReducedBorderStep = 0.5;

/// A fine table from countryborders.txt. A polygon with another number than 0 is closed by its first vertex when the
/// next one begins, unless it is closed already; the last one stays as it is.
std::optional<BorderTable> ReadCountryBorders(std::string_view text);

/// A reduced table from countryzip.txt, without its vertices nearer than `kReducedBorderStep` to the one before in
/// their polygon. Polygons are closed as in the fine table, here the last one too.
std::optional<BorderTable> ReadCountryZip(std::string_view text);

/// countryzip.txt of a table.
std::string CountryZipText(const BorderTable& table);

/// The spots of SeaSpot.txt, from index 1.
std::optional<std::vector<SeaSpot>> ReadSeaSpots(std::string_view text);

/// SeaSpot.txt of spots from index 1.
std::string SeaSpotText(const std::vector<SeaSpot>& spots);

inline constexpr const char* kCountryZipFile = "countryzip.txt";
inline constexpr const char* kSeaSpotFile = "SeaSpot.txt";

/// Reads SeaSpot.txt. False when it cannot be read or is no such text; the spots then stay as they were.
bool LoadSeaSpots(const std::filesystem::path& folder, MapTables& map);

/// Writes countryzip.txt of the reduced table. False when the file cannot be written.
bool CSavePolDbg(const std::filesystem::path& folder, const MapTables& map);

/// Writes SeaSpot.txt. False when the file cannot be written.
bool CSaveDbg(const std::filesystem::path& folder, const MapTables& map);

/// The next vertex added begins a polygon.
void CNewPolDbg(PolygonTool& tool);

/// Adds the selected fine vertex to the reduced table, and gives the line that tells it: "#", number of vertices, "/",
/// polygon number. Without a selection nothing is added and the line is empty.
std::string AddPolygonDbg(MapTables& map, PolygonTool& tool);

/// Moves the selection by `step` vertices of the fine table. False when that leads out of it; the selection then stays.
bool MoveBorderDbg(const MapTables& map, PolygonTool& tool, std::int32_t step);

/// Selects the fine vertex that is nearest to a place on the map (radians), by the difference of both angles; the first
/// of equally near ones. False when there is none.
bool CPolDbg(const MapTables& map, PolygonTool& tool, const LatLon& place);

/// Marks the selected vertex on the picture: a small circle, on the near side of the globe only.
void PlotPolygonMarker(const SceneContext& scene, const PolygonTool& tool);

}  // namespace glintara
