#pragma once

// The deep-space chapters: what Sun and Moon do to an orbit, secularly and periodically, and the resonances with the
// rotating Earth.

#include "engine/sgp4/sgp4_model.h"

namespace glintara::sgp4 {

/// Fills the deep-space part of `record`, whose elements and near-earth rates are set.
void PrepareDeepSpace(Sgp4Record& record);

/// Fills the resonance part of `record`, whose rates by Sun and Moon are set, and puts the integrator on the epoch.
void PrepareResonance(Sgp4Record& record);

/// Changes of the elements by the periodic terms of Sun and Moon.
struct ThirdBodyPerturbation {
    double eccentricity;
    double inclination;
    double meanAnomaly;
    double perigee;  ///< of the argument of perigee plus cos i times the node
    double node;     ///< of the node times sin i
};

/// The changes `minutes` after the epoch.
ThirdBodyPerturbation ThirdBodyPerturbationAt(const Sgp4Record& record, double minutes);

/// Place on a resonant orbit.
struct ResonantMotion {
    double longitude;   ///< resonant longitude, radians
    double meanMotion;  ///< radians per minute
};

/// Integrates the resonance of `record` to `minutes` after the epoch. The integrator is left on the node before.
ResonantMotion ResonantMotionAt(Sgp4Record& record, double minutes);

/// Greenwich angle `minutes` after the epoch, radians, not wrapped.
double GreenwichAngleAt(const Sgp4Record& record, double minutes);

}  // namespace glintara::sgp4
