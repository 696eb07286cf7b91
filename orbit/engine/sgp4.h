#pragma once

// SGP4/SDP4: the analytic propagator of the published two-line element sets.
//
// Sources: F. R. Hoots and R. L. Roehrich, Spacetrack Report No. 3 (1980); D. A. Vallado, P. Crawford, R. Hujsak and
// T. S. Kelso, "Revisiting Spacetrack Report #3", AIAA 2006-6753. Improved operation mode, gravity constants WGS 72.

#include "orbit/astro/vector.h"

namespace glintara {

/// Mean elements of a two-line element set, in the units of the theory.
struct MeanElements {
    double epochDay = 0;       ///< epoch, whole part: Julian date ending in .5 (UTC)
    double epochFraction = 0;  ///< epoch, fraction of the day, 0 to below 1
    double bstar = 0;          ///< drag term, per Earth radius
    double inclination = 0;    ///< radians
    double node = 0;           ///< right ascension of the ascending node, radians
    double eccentricity = 0;   ///< 0 to below 1
    double argPerigee = 0;     ///< radians
    double meanAnomaly = 0;    ///< radians
    double meanMotion = 0;     ///< Kozai mean motion, radians per minute
};

/// A satellite prepared for propagation: plain numbers, no pointers; it fits into the private bytes of an EngineBlock.
struct Sgp4Record;

/// Error numbers of the theory, as the 2006 revision counts them.
enum class Sgp4Error {
    None = 0,
    MeanElements = 1,
    MeanMotion = 2,
    PerturbedElements = 3,
    SemiLatusRectum = 4,
    Decayed = 6,
};

struct Sgp4State {
    Vector3 position;  ///< kilometres, true equator and mean equinox of date (TEME)
    Vector3 velocity;  ///< kilometres per second
    Sgp4Error error = Sgp4Error::None;
};

}  // namespace glintara
