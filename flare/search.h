#pragma once

// The search for the next flare, or transit, near the observer: hour by hour, satellite by satellite, surface by
// surface.

#include <string>

#include "state/application.h"

namespace glintara {

/// The clock that a found flare is shown on.
class SearchClock {
  public:
    SearchClock() = default;
    SearchClock(const SearchClock&) = delete;
    SearchClock& operator=(const SearchClock&) = delete;
    virtual ~SearchClock() = default;

    /// Moves the displayed instant to Julian date `jd`.
    virtual void SetJDToTimeOffset(double jd) = 0;
};

/// Which flare is wanted.
enum class SearchStart {
    First,  ///< the earliest one from the displayed instant on
    Next,   ///< the one after the flare that the clock stands on
};

/// Looks forward from the displayed instant, in windows of one hour, for the earliest flare of the selected and enabled
/// satellites whose centre comes nearer to the observer than `maxDistanceMetres`; in transit mode for the earliest
/// transit. The search goes on as long as an hour begins within `intervalDays`, the end included, and ends with the
/// first hour that has one. Found: the clock moves there, and the satellite becomes the working one when `CAutoWSet` is
/// set. `LStatus` and `PB1` of the form tell how far it is and what came of it. Events are served once an hour of
/// search, and `SearchAbort` is read then. Returns whether a flare was found.
bool SearchFlares(Application& app, SearchClock& clock, double maxDistanceMetres, double intervalDays,
                  SearchStart start);

/// What the form says of a field whose text is no number.
std::string NotANumber(const TextBox& box);

/// The button `CFindFirst`. A field that holds no number is told in `LStatus`, and nothing is searched; a negative
/// number counts as 0.
void CFindFirst_click(Application& app, SearchClock& clock);

/// The button `CFindNext`.
void CFindNext_click(Application& app, SearchClock& clock);

/// The button `CAbort`.
void CAbort_click(Application& app);

}  // namespace glintara
