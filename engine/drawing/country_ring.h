#pragma once

// A country's border on the map: a closed ring of vertices joined by lines that are straight in latitude and longitude.
// Degrees, geocentric latitude.
//
// What a ring encloses: going along it, the longitude changes by less than half a turn from vertex to vertex and is
// followed without jumps. A ring that comes back to its first longitude encloses what it encloses on a plane of
// longitude and latitude. One that goes round a pole encloses the pole on whose side of the equator it mostly runs.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace glintara {

/// A place of a ring; the longitude is followed without jumps and so may leave the range of +-180.
struct MapVertex {
    double lat = 0;
    double lon = 0;
};

inline constexpr double kPoleLatitude = 90;
inline constexpr double kSeamLongitude = 180;
inline constexpr double kFullTurn = 360;

/// A run of vertices with one polygon number. Its last vertex is joined to the first if it is not the same place.
struct CountryRing {
    std::span<const double> lat;
    std::span<const double> lon;

    std::size_t Size() const { return lat.size(); }
    bool IsClosed() const { return lat.front() == lat.back() && lon.front() == lon.back(); }
};

/// Calls `visit(ring)` for each run of equal numbers in `id`; the three arrays are of one length.
template <class Visit>
void ForEachRing(std::span<const double> lat, std::span<const double> lon, std::span<const std::int32_t> id,
                 Visit&& visit) {
    for (std::size_t start = 0; start < id.size();) {
        std::size_t end = start + 1;
        while (end < id.size() && id[end] == id[start]) ++end;
        visit(CountryRing{lat.subspan(start, end - start), lon.subspan(start, end - start)});
        start = end;
    }
}

/// Whole turns, in degrees, by which the difference of two longitudes is more than the shorter way between them.
inline double WholeTurns(double from, double to) {
    const double step = to - from;
    return std::abs(step) <= kSeamLongitude ? 0 : kFullTurn * std::round(step / kFullTurn);
}

/// Where a ring lies. Longitudes are followed from the first vertex's.
struct RingExtent {
    double south = 0;
    double north = 0;
    double west = 0;
    double east = 0;
    double turn = 0;  ///< what one round adds to the longitude: 0, or a multiple of 360 for a ring round a pole
    double pole = 0;  ///< latitude of the pole that the ring encloses by going round it, +-90; 0 when it does not
    bool touchesSeam = false;  ///< whether a vertex lies on longitude +-180 or on a pole
};

/// Nothing for a ring of less than three vertices, or with one that is no place: not finite, latitude beyond +-90,
/// longitude beyond +-360.
std::optional<RingExtent> ExtentOf(const CountryRing& ring);

/// Whether a vertex lies on a line that closes the areas of the map without being a border: longitude +-180, a pole.
inline bool IsOnSeam(double lat, double lon) {
    return std::abs(lon) == kSeamLongitude || std::abs(lat) == kPoleLatitude;
}

/// Whether the line between two vertices of the map lies on the seam or on a pole, and so is no border.
inline bool IsSeamLine(double lat1, double lon1, double lat2, double lon2) {
    return (std::abs(lon1) == kSeamLongitude && std::abs(lon2) == kSeamLongitude) ||
           (std::abs(lat1) == kPoleLatitude && lat2 == lat1);
}

/// Goes once round the ring from its first vertex back to it, and calls `visit(vertex, isBorder)`, where `isBorder`
/// belongs to the line that ends at `vertex`; it is false for the first call, for lines on the seam or a pole, and for
/// the line that joins the ends of a ring that is not closed. A vertex nearer than `merge` degrees to the last one
/// visited is passed over, unless it is the last or lies on the seam.
template <class Visit>
void WalkRing(const CountryRing& ring, double merge, Visit&& visit) {
    double lat = ring.lat.front();  // of the last vertex visited, as the map has it
    double lon = ring.lon.front();
    double turns = 0;
    visit(MapVertex{lat, lon}, false);
    const std::size_t last = ring.Size() - 1;
    for (std::size_t i = 1; i <= last; ++i) {
        const double nextLat = ring.lat[i];
        const double nextLon = ring.lon[i];
        const double whole = WholeTurns(lon, nextLon);
        const double step = std::abs(nextLon - lon - whole) + std::abs(nextLat - lat);
        if (step < merge && i != last && !IsOnSeam(nextLat, nextLon)) continue;
        const bool isBorder = !IsSeamLine(lat, lon, nextLat, nextLon);
        lat = nextLat;
        lon = nextLon;
        turns -= whole;
        visit(MapVertex{lat, lon + turns}, isBorder);
    }
    if (!ring.IsClosed()) {
        turns -= WholeTurns(lon, ring.lon.front());
        visit(MapVertex{ring.lat.front(), ring.lon.front() + turns}, false);
    }
}

/// Tells whether a place lies within a ring from the lines of the ring, one after the other: their crossings of the
/// meridian between the place and the north pole are counted.
class RingContains {
  public:
    /// `place` has a longitude of -180 to 180.
    explicit RingContains(const MapVertex& place) : place_(place) {}

    /// The next line of the ring, between places less than a full turn of longitude apart.
    void AddLine(const MapVertex& from, const MapVertex& to) {
        const double before = TurnsPast(from.lon);
        const double after = TurnsPast(to.lon);
        if (before == after) return;
        const double meridian = place_.lon + kFullTurn * std::fmax(before, after);
        const double lat = from.lat + (to.lat - from.lat) * (meridian - from.lon) / (to.lon - from.lon);
        crossed_ = crossed_ != (lat > place_.lat);
    }

    /// The answer, once all lines are added.
    bool Result(const RingExtent& extent) const { return crossed_ != (extent.pole > 0); }

  private:
    /// How often a way from west of the place at -180 to `lon` has passed the meridian eastwards. Whole turns are split
    /// off first: the same meridian must give the same answer in each of them, to the last bit.
    double TurnsPast(double lon) const {
        const double turns = std::floor((lon + kSeamLongitude) / kFullTurn);
        return lon - turns * kFullTurn < place_.lon ? turns - 1 : turns;
    }

    MapVertex place_;
    bool crossed_ = false;
};

}  // namespace glintara
