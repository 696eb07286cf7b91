#pragma once

// Where satellites are by the orbit model that the user has chosen. Whoever needs the place of a satellite of the list
// asks here; only what is done with SGP4/SDP4 under either choice goes to the engine by itself.

#include "orbit/propagation.h"
#include "orbit/sgp1.h"
#include "state/application.h"

namespace glintara {

/// Farther than this from the Earth's centre, in `SiteRadius`, there is no satellite of it: elements with extreme drag
/// terms have their ellipses anywhere. It is 43 astronomical units.
inline constexpr double kFarthestPlace = 1e6;

/// What `WorldMotion::result` is when the simple model has no place for a satellite.
inline constexpr int kNoPlace = -1;

/// The two models.
enum class OrbitModel {
    SGP1,  ///< the simplified one
    SGP4,  ///< SGP4, and SDP4 for deep space
};

/// The one that `CSGP4` chooses. It is read whenever it is needed, and kept nowhere.
OrbitModel OrbitModelOf(const MainControls& main);

/// Where `satellite` is at the displayed instant, and where it moves to. By SGP1 the position is in units of
/// `kSGP1Radius` and taken for `SiteRadius`, the velocity is the direction of motion, of length 1, and without a place
/// both are zero. Allocates nothing.
WorldMotion MotionNow(const Application& app, const SatRecord& satellite);

/// The same. By SGP4 the satellite's engine block keeps what the engine gave.
WorldMotion MoveToNow(const Application& app, SatRecord& satellite);

/// A satellite followed along its orbit from the displayed instant on. By SGP1 that is the ellipse of the displayed
/// instant; by SGP4 the engine gives each place.
class SatellitePath {
  public:
    SatellitePath(const Application& app, const SatRecord& satellite);

    /// The ellipse on which Kepler's laws tell when the satellite is where.
    const KeplerElements& Ellipse() const { return ellipse_; }

    /// Mean anomaly at the displayed instant, radians.
    double MeanAnomaly() const { return meanAnomaly_; }

    /// Where it is `days` after the displayed instant; Kepler has it at `trueAnomaly` then. The Earth stands as at the
    /// displayed instant.
    WorldMotion At(double days, double trueAnomaly);

  private:
    const CommonData& data_;
    OrbitModel model_;
    KeplerElements ellipse_;
    double meanAnomaly_ = 0;
    EngineBlock block_;
};

}  // namespace glintara
