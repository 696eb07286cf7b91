#pragma once

// How far the element sets are from an instant: orbits change, and far from its epoch a set tells a wrong place.

#include <string>

#include "state/common_data.h"

namespace glintara {

/// Elements farther than this from an instant still give an orbit, but positions are off by more than a flare is wide,
/// days.
inline constexpr double kFreshDays = 14;

/// Farther than this no list of flares should go without a warning, days.
inline constexpr double kUsefulDays = 30;

/// How the elements of the satellites that are not disabled stand to an instant.
struct ElementAge {
    int count = 0;        ///< of the satellites
    int old = 0;          ///< of those whose elements are farther than `kFreshDays`
    double farthest = 0;  ///< days from the farthest epoch to the instant, positive when the epoch lies before
};

/// The same at Julian date `jd` (UTC).
ElementAge ElementAgeAt(const CommonData& data, double jd);

/// The warning that predictions will be off, in whole days; empty when all elements are fresh.
std::string ElementAgeWarning(const ElementAge& age);

}  // namespace glintara
