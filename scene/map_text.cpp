#include "scene/map_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/files.h"

namespace glintara {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr double kFarthest = 1e16;
constexpr double kMarkerRadius = 1.0 / 1000;
constexpr Color kMarkerColor = 0x8080FF;

/// A text of sea spots is some kilobytes; more than this is another file, bytes.
constexpr std::size_t kMostSeaSpotText = 1 << 20;

/// Values of a text, one after the other.
class ValueList {
  public:
    explicit ValueList(std::string_view text) : text_(text) { SkipBlanks(); }

    void SkipLine() {
        text_.remove_prefix(std::min(text_.find('\n'), text_.size()));
        SkipBlanks();
    }

    bool AtEnd() const { return text_.empty(); }

    /// The next value; nothing when there is none or it is no number.
    std::optional<double> Number() {
        if (AtEnd()) return std::nullopt;
        const std::size_t length = std::min(text_.find_first_of(",\r\n"), text_.size());
        const std::optional<double> number = StrictNumber(text_.substr(0, length));
        text_.remove_prefix(length);
        if (!AtEnd() && text_.front() == ',') text_.remove_prefix(1);
        SkipBlanks();
        return number;
    }

    /// The next value as a 32-bit whole number.
    std::optional<std::int32_t> Integer() {
        const std::optional<double> number = Number();
        using Limits = std::numeric_limits<std::int32_t>;
        if (!number || *number != std::floor(*number)) return std::nullopt;
        if (*number < Limits::min() || *number > Limits::max()) return std::nullopt;
        return static_cast<std::int32_t>(*number);
    }

  private:
    void SkipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(kBlanks), text_.size())); }

    std::string_view text_;
};

struct BorderVertex {
    std::int32_t polygon = 0;
    double lat = 0;
    double lon = 0;
};

std::optional<BorderVertex> ReadVertex(ValueList& values) {
    const std::optional<std::int32_t> polygon = values.Integer();
    const std::optional<double> number = values.Number();
    const std::optional<double> lon = values.Number();
    const std::optional<double> lat = values.Number();
    if (!polygon || !number || !lon || !lat) return std::nullopt;
    return BorderVertex{*polygon, *lat, *lon};
}

void Append(BorderTable& table, const BorderVertex& vertex) {
    table.Lat.push_back(vertex.lat);
    table.Lon.push_back(vertex.lon);
    table.Id.push_back(vertex.polygon);
}

/// Distance on the map of a vertex of `table` from a place, all in degrees.
double DistanceOnMap(const BorderTable& table, std::size_t index, double lat, double lon) {
    return std::sqrt((table.Lat[index] - lat) * (table.Lat[index] - lat) +
                     (table.Lon[index] - lon) * (table.Lon[index] - lon));
}

/// Makes a table vertex by vertex.
class BorderBuilder {
  public:
    /// Vertices nearer than `leastStep` degrees to the one before in their polygon are left out.
    explicit BorderBuilder(double leastStep) : leastStep_(leastStep) {}

    void Add(const BorderVertex& vertex) {
        if (first_ == 0 || vertex.polygon != table_.Id.back()) {
            ClosePolygon();
            Append(table_, vertex);
            first_ = table_.Id.size() - 1;
            return;
        }
        const std::size_t last = table_.Id.size() - 1;
        if (DistanceOnMap(table_, last, vertex.lat, vertex.lon) >= leastStep_) Append(table_, vertex);
    }

    void ClosePolygon() {
        if (first_ == 0 || table_.Id[first_] == 0) return;
        const BorderVertex start{table_.Id[first_], table_.Lat[first_], table_.Lon[first_]};
        const std::size_t last = table_.Id.size() - 1;
        const bool isClosed = last > first_ && table_.Lat[last] == start.lat && table_.Lon[last] == start.lon;
        if (!isClosed) Append(table_, start);
    }

    BorderTable Take() { return std::move(table_); }

  private:
    BorderTable table_;
    double leastStep_;
    std::size_t first_ = 0;  // first vertex of the polygon under way; 0 before any
};

bool IsVertex(const BorderTable& table, std::int64_t index) { return index >= 1 && index <= table.Count(); }

}  // namespace

std::optional<BorderTable> ReadCountryBorders(std::string_view text) {
    ValueList values(text);
    values.SkipLine();
    BorderBuilder builder(0);
    while (!values.AtEnd()) {
        const std::optional<BorderVertex> vertex = ReadVertex(values);
        if (!vertex) return std::nullopt;
        builder.Add({vertex->polygon, vertex->lat + kBorderTextLatShift, vertex->lon + kBorderTextLonShift});
    }
    return builder.Take();
}

std::optional<BorderTable> ReadCountryZip(std::string_view text) {
    ValueList values(text);
    values.SkipLine();
    BorderBuilder builder(kReducedBorderStep);
    while (!values.AtEnd()) {
        const std::optional<BorderVertex> vertex = ReadVertex(values);
        if (!vertex) return std::nullopt;
        builder.Add(*vertex);
    }
    builder.ClosePolygon();
    return builder.Take();
}

std::string CountryZipText(const BorderTable& table) {
    std::string text = "Header\n";
    for (std::size_t i = 1; i < table.Id.size(); ++i) {
        text += std::to_string(table.Id[i]) + ',' + std::to_string(i) + ',';
        text += PlainNumberText(table.Lon[i]) + ',' + PlainNumberText(table.Lat[i]) + '\n';
    }
    return text;
}

std::optional<std::vector<SeaSpot>> ReadSeaSpots(std::string_view text) {
    ValueList values(text);
    const std::optional<std::int32_t> count = values.Integer();
    if (!count || *count < 0) return std::nullopt;
    std::vector<SeaSpot> spots(1);
    for (std::int32_t i = 1; i <= *count; ++i) {
        const std::optional<double> lat = values.Number();
        const std::optional<double> lon = values.Number();
        if (!lat || !lon) return std::nullopt;
        spots.push_back({*lat, *lon});
    }
    return spots;
}

std::string SeaSpotText(const std::vector<SeaSpot>& spots) {
    std::string text = std::to_string(spots.size() - 1) + '\n';
    for (std::size_t i = 1; i < spots.size(); ++i)
        text += PlainNumberText(spots[i].lat) + '\n' + PlainNumberText(spots[i].lon) + '\n';
    return text;
}

bool LoadSeaSpots(const std::filesystem::path& folder, MapTables& map) {
    const std::optional<std::string> text = ReadWholeFile(folder / kSeaSpotFile, kMostSeaSpotText);
    if (!text) return false;
    std::optional<std::vector<SeaSpot>> spots = ReadSeaSpots(*text);
    if (!spots) return false;
    map.SeaSpots = std::move(*spots);
    return true;
}

bool CSavePolDbg(const std::filesystem::path& folder, const MapTables& map) {
    return ReplaceFile(folder / kCountryZipFile, CountryZipText(map.Zip));
}

bool CSaveDbg(const std::filesystem::path& folder, const MapTables& map) {
    return ReplaceFile(folder / kSeaSpotFile, SeaSpotText(map.SeaSpots));
}

void CNewPolDbg(PolygonTool& tool) { tool.NewPolygon = true; }

std::string AddPolygonDbg(MapTables& map, PolygonTool& tool) {
    if (!IsVertex(map.Border, tool.Selected)) return {};
    const auto selected = static_cast<std::size_t>(tool.Selected);
    std::int32_t polygon = map.Zip.Id.back();
    if (tool.NewPolygon && polygon < std::numeric_limits<std::int32_t>::max()) ++polygon;
    tool.NewPolygon = false;
    Append(map.Zip, {polygon, map.Border.Lat[selected], map.Border.Lon[selected]});
    return '#' + std::to_string(map.Zip.Count()) + '/' + std::to_string(polygon);
}

bool MoveBorderDbg(const MapTables& map, PolygonTool& tool, std::int32_t step) {
    const std::int64_t target = std::int64_t{tool.Selected} + step;
    if (!IsVertex(map.Border, target)) return false;
    tool.Selected = static_cast<std::int32_t>(target);
    return true;
}

bool CPolDbg(const MapTables& map, PolygonTool& tool, const LatLon& place) {
    double nearest = kFarthest;
    std::int32_t found = 0;
    for (std::int32_t i = 1; i <= map.Border.Count(); ++i) {
        const double distance =
            DistanceOnMap(map.Border, static_cast<std::size_t>(i), place.lat / kDegToRad, place.lon / kDegToRad);
        if (distance < nearest) {
            nearest = distance;
            found = i;
        }
    }
    if (found == 0) return false;
    tool.Selected = found;
    return true;
}

void PlotPolygonMarker(const SceneContext& scene, const PolygonTool& tool) {
    const BorderTable& fine = scene.App.Data.Map.Border;
    if (!IsVertex(fine, tool.Selected)) return;
    const auto selected = static_cast<std::size_t>(tool.Selected);
    const LatLon place{fine.Lat[selected] * kDegToRad, fine.Lon[selected] * kDegToRad};
    scene.Surface.DrawMode = MixMode::Copy;
    scene.Surface.DrawStyle = PenPattern::Solid;
    scene.Surface.DrawWidth = 1;
    scene.Surface.FillStyle = FillPattern::Transparent;
    if (scene.IsFlatMap()) {
        SceneCircle(scene, FlatMapPosition(scene.View(), place), kMarkerRadius, kMarkerColor);
        return;
    }
    const Vector3 view = LatLonRadiusToView(scene.View(), {place.lat, place.lon, 1});
    if (view.x >= 0) SceneCircle(scene, {view.y, view.z}, kMarkerRadius, kMarkerColor);
}

}  // namespace glintara
