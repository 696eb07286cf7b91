#pragma once

// The one step through which every propagation by the engine goes, and what follows from its result. Which model a
// satellite of the list is placed by, `satellite_motion.h` decides.

#include "engine/astro/geodesy.h"
#include "engine/astro/horizon.h"
#include "engine/astro/vector.h"
#include "engine/glintcore.h"
#include "state/common_data.h"

namespace glintara {

/// A satellite in the world frame: Earth-fixed axes, positions in `SiteRadius`.
struct WorldMotion {
    Vector3 position;  ///< `SiteRadius`
    Vector3 velocity;  ///< kilometres per second; not corrected for the rotation of the axes
    int result = 0;    ///< what Satellite_SGP4 returned, 0 for success; the numbers are finite in any case
};

/// Which instant tells how far the Earth has turned.
enum class EarthRotation {
    Displayed,  ///< the displayed date, whatever instant is propagated to: all callers of the program
    GivenJd,    ///< the instant propagated to
};

/// Propagates the satellite of `block` to Julian date `jd`, keeps what the engine gave in the tail of the block, and
/// turns it to the world frame.
WorldMotion PropagateSatellite(const CommonData& data, EarthRotation rotation, EngineBlock& block, double jd);

/// A motion that was propagated to `jd` under the displayed instant's rotation, on the axes as they stand at `jd`:
/// turned about the pole by minus the Earth's rotation between the two instants.
WorldMotion OnAxesOfInstant(const CommonData& data, const WorldMotion& motion, double jd);

/// The point under a world position: geocentric latitude, longitude, distance in `SiteRadius`.
LatLonRadius SubSatellitePoint(const Vector3& position);

/// Height of a world position over the sphere through the observer, kilometres.
double HeightOverSphere(const ObserverSite& site, const Vector3& position);

/// A satellite in the observer's sky.
struct SkyPlace {
    LatLonRadius direction;  ///< on the world axes; the radius is the range, in `SiteRadius`
    HorizonAngles horizon;
    double rightAscension = 0;  ///< for the displayed instant, radians, 0 to 2 pi
};

SkyPlace SkyPlaceOf(const CommonData& data, const Vector3& position);

}  // namespace glintara
