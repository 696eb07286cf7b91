#include "engine/drawing/country_ring.h"

#include <algorithm>

namespace glintara {
namespace {

constexpr std::size_t kFewestVertices = 3;

bool IsPlace(double lat, double lon) {
    // Written so that a NaN fails.
    return std::abs(lat) <= kPoleLatitude && std::abs(lon) <= kFullTurn;
}

}  // namespace

std::optional<RingExtent> ExtentOf(const CountryRing& ring) {
    if (ring.Size() < kFewestVertices) return std::nullopt;
    RingExtent extent{ring.lat[0], ring.lat[0], ring.lon[0], ring.lon[0]};
    double lat = ring.lat[0];
    double lon = ring.lon[0];
    double turns = 0;
    double latitudeSum = 0;  // the integral of latitude over longitude, doubled
    const auto go = [&](double nextLat, double nextLon) {
        const double whole = WholeTurns(lon, nextLon);
        latitudeSum += (nextLon - lon - whole) * (lat + nextLat);
        turns -= whole;
        lat = nextLat;
        lon = nextLon;
        extent.west = std::min(extent.west, lon + turns);
        extent.east = std::max(extent.east, lon + turns);
    };
    for (std::size_t i = 0; i < ring.Size(); ++i) {
        if (!IsPlace(ring.lat[i], ring.lon[i])) return std::nullopt;
        go(ring.lat[i], ring.lon[i]);
        extent.south = std::min(extent.south, lat);
        extent.north = std::max(extent.north, lat);
        extent.touchesSeam = extent.touchesSeam || IsOnSeam(lat, lon);
    }
    go(ring.lat[0], ring.lon[0]);
    extent.turn = turns;
    const bool goesRound = std::remainder(extent.turn, 2 * kFullTurn) != 0;
    if (goesRound) extent.pole = latitudeSum * extent.turn >= 0 ? kPoleLatitude : -kPoleLatitude;
    return extent;
}

}  // namespace glintara
