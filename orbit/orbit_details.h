#pragma once

// The facts of the working satellite's orbit, and of Sun and Moon, in words. They hold nothing: the lines tell what the
// state is when they are asked for.

#include <string>
#include <vector>

#include "state/common_data.h"

namespace glintara {

/// The lines about the elements of the working satellite, as its record holds them; none while the list is empty. The
/// second line is empty. Numbers are cut, not rounded; what an element set does not give (the period of a satellite
/// without a mean motion, an epoch that is none) is "n.a.".
std::vector<std::string> OrbitDetails(const CommonData& data);

/// The lines about the Sun and the Moon at the displayed instant.
struct AstroLines {
    std::vector<std::string> Sun;   ///< heading, declination and right ascension, and its elevation at the place
    std::vector<std::string> Moon;  ///< heading, declination and right ascension as seen from the place
};

AstroLines AstroDetails(const CommonData& data);

/// How far the Moon has come from one new moon (0) over full (0.5) to the next: the difference of right ascensions, in
/// turns, 0 to under 1.
double MoonPhase(const CommonData& data);

}  // namespace glintara
