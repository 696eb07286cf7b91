#pragma once

#include <ostream>

#include "cli/arguments.h"

namespace glintara::cli {

/// `glint track`: the track of one satellite's flares, or transits, as a table, and into files. Throws `Failure`.
void RunTrack(const TrackOptions& options, std::ostream& out);

/// `glint cities`: the cities that such a track passes. Throws `Failure`.
void RunCities(const TrackOptions& options, std::ostream& out);

}  // namespace glintara::cli
