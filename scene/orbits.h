#pragma once

// Orbits: in space, over the ground, on the observer's sky, as they lie at the displayed instant or as they are flown
// over the turning Earth.

#include <array>

#include "orbit/sgp1.h"
#include "scene/view_geometry.h"
#include "state/application.h"

namespace glintara {

/// Colours of satellites and their orbits in sunlight and, with `CSunLight`, in the Earth's shadow.
inline constexpr Color kSunlitColor = 0x20C0E0;
inline constexpr Color kShadowedColor = 0x204060;

/// The colour at a world position at the displayed instant.
Color LightColor(const Application& app, const Vector3& position);

/// Steps in which one revolution is drawn, and while the fine picture is made.
inline constexpr int kOrbitSteps = 200;
inline constexpr int kOrbitStepsFine = 1000;

/// Width of the chains, and with `CThinLines`.
inline constexpr double kOrbitWidth = 2;
inline constexpr double kThinOrbitWidth = 1;

/// When a satellite passes equal steps of its true anomaly, from the displayed instant on. Kepler's ellipse tells the
/// instants only; the places are those of the orbit model.
class OrbitSteps {
  public:
    /// For a satellite that is at `meanAnomaly` of `ellipse` at the displayed instant.
    OrbitSteps(const KeplerElements& ellipse, double meanAnomaly, int stepsPerTurn);

    /// Whether there is an orbit: a mean motion above 0 and an eccentricity from 0 to below 1.
    bool IsOrbit() const { return isOrbit_; }

    /// Days from the displayed instant to the next step; 0 at the first call.
    double Next();

    /// True anomaly at the step that `Next` told last, radians, not reduced.
    double TrueAnomaly() const { return trueAnomaly_; }

  private:
    bool isOrbit_ = false;
    double eccentricity_ = 0;
    double period_ = 0;  // days
    double start_ = 0;   // true anomaly, radians
    double trueAnomaly_ = 0;
    double step_ = 0;
    int next_ = 0;
    double startMean_ = 0;  // revolutions
    double lastMean_ = 0;
    int turns_ = 0;
};

/// Draws the chains of one satellite that the options ask for, over `OrbitTurns` sixths of a revolution:
///   `CPlotOrbit`            the orbit at its height, at the displayed instant
///   `CPlotOrbitOverTime`    with it, the same as flown: the Earth turns by the time that passes
///   `CProjectOrbit`         on the ground, at the displayed instant
///   `CProjectOverTime`      with it, the ground track as flown
///   `CProjectOrbitOnSky`    on the star sphere, as the observer sees it, at the displayed instant; needs `CDrawSky`
/// With `CSkyOnly` only the last. The record and its engine block stay as they are. By SGP4 each place is the engine's at
/// its own time; by SGP1 the chain is the ellipse of the displayed instant. A chain breaks where the model has no place
/// (`HasPlace`), and ends at the limb where the Earth hides it.
void DrawOrbits(const SceneContext& scene, const SatRecord& satellite);

/// Whether the options ask for any chain.
bool AreOrbitsShown(const MainControls& main);

}  // namespace glintara
