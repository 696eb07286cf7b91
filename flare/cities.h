#pragma once

// Which places of the table are selected, which of them a track has passed, and the window that shows them.

#include <functional>
#include <string>
#include <vector>

#include "engine/astro/vector.h"
#include "flare/search.h"
#include "state/application.h"

namespace glintara {

/// A city counts as passed when the centre comes nearer than this, metres, straight through the sphere.
inline constexpr double kCityReach = 5000;

/// What `CheckCityProximity` gives when no city is selected, metres.
inline constexpr double kNoCity = 1e12;

/// Forgets which places a track has passed, and when.
void ClearAllCityFlag(CityTables& tables);

/// The selection that holds before anybody has chosen: cities of `kFirstMinPopulation` inhabitants and more.
void DeselectAllCities(CityTables& tables);

/// Looks which selected places the centre of a flare, a unit vector at `jd`, has come to. Those nearer than
/// `kCityReach` that have no flag yet get it, with the instant, and a line each is added to `lines`: date, time,
/// country and name. Returns the distance of the nearest selected place, metres. `siteRadius` is the unit of length.
double CheckCityProximity(CityTables& tables, double siteRadius, double jd, const Vector3& centre,
                          std::vector<std::string>& lines);

/// Selects the places that pass the filters of the window, by their texts: cities with enough inhabitants, in whose
/// country and name the texts stand at places that fit together; and with `CIncludeSites` all sites. The positions of
/// the two texts, counted from 1 and 1 for an empty one, must have a bit in common: with no country the name has to
/// begin with its text, or to hold it at another odd place. A selection that is too long is cut, with a warning.
void ApplyFilter(Application& app);

/// Fills both lists of the window, in the order of their lines in capitals, and tells how many cities are selected.
void RefreshCities(Application& app);

/// What a choice in the lists asks of other rooms. What is empty is not asked.
struct CityHooks {
    SearchClock* clock = nullptr;  ///< moves to the instant at which a track has passed a city
    std::function<void()> zenith;  ///< turns the globe to the observer
};

/// A line of the list of cities is chosen: the observer goes there to stay, and the clock to the instant of its flag.
/// Lines that are none change nothing.
void ChooseCity(Application& app, const CityHooks& hooks, int line);

/// The same in the list of sites; the globe always turns there.
void ChooseSite(Application& app, const CityHooks& hooks, int line);

/// What is told of the place of a line when the mouse rests on it: country, name, remark, altitude.
std::string PlaceToolTip(const CommonData& data, const PlaceListBox& list, int line);

/// Hangs the procedures on the controls of the window.
void ConnectCities(Application& app);

}  // namespace glintara
