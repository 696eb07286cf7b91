#pragma once

// The earliest flare of one mirror near one place.
//
// The search is exact by bounds, not by luck. At each instant it works out for how many seconds the answer "no flare
// here" must certainly last: every quantity that decides (the satellite's height above the observer's horizon, the
// angle between beam and observer, the side of the mirror that the light falls on, the shadow, the distance of the
// beam's foot) changes at a rate that is bounded by the orbit's greatest speed and angular speed, and the one that
// excludes a flare longest sets the step. Close to a flare the steps shrink to `kFinestFlareStep`; a flare shorter than
// that can be missed, nothing else can.

#include <optional>

#include "engine/astro/vector.h"
#include "engine/flares/flare_evaluation.h"
#include "engine/sgp4/sgp4.h"

namespace glintara {

/// The finest step of the search, seconds: the precision of its answers.
inline constexpr double kFinestFlareStep = 1e-3;

/// What is looked for.
struct FlareQuest {
    MirrorSetting mirror;
    LightSource source = LightSource::Sun;
    Vector3 site{1, 0, 0};                 ///< the observer on the unit sphere, Earth-fixed
    double siteRadius = 0;                 ///< unit of length, metres
    double maxDistance = 0;                ///< chord, in units of `siteRadius`; the centre must be nearer
    double finestStep = kFinestFlareStep;  ///< seconds
};

/// One window of the search: a satellite and an instant from which seconds are counted.
class FlareSearch {
  public:
    /// `record` is copied. `start` is a Julian date (UTC).
    FlareSearch(const Sgp4Record& record, const FlareQuest& quest, double start);

    /// First instant from `from` on and before `to`, seconds after the start, at which there is a flare within the
    /// distance.
    std::optional<double> FirstFlare(double from, double to);

    /// First instant from `from` on at which there is none; `to` when it lasts that long.
    double PassEnd(double from, double to);

    /// Whether there is a flare within the distance at `seconds` after the start.
    bool FlareAt(double seconds) { return At(seconds).flare; }

  private:
    /// The answer at one instant, and for how many seconds it certainly stays the same.
    struct Answer {
        bool flare = false;
        double lasts = 0;
    };

    /// Greatest rates of motion for a while, per second, inertial; lengths in units of the site's radius.
    struct Rates {
        double speed = 0;         ///< of the satellite
        double orbit = 0;         ///< angular, of its direction from the Earth's centre
        double source = 0;        ///< angular, of the source's direction from the Earth's centre
        double incident = 0;      ///< angular, of the ray from source to satellite
        double sunSight = 0;      ///< angular, of the ray from satellite to Sun
        double horizonAngle = 0;  ///< angle between observer and satellite at the Earth's centre beyond which no flare
                                  ///< is within the distance
    };

    /// A satellite and its surroundings at one instant, on inertial axes.
    struct Scene;

    Answer At(double seconds);
    void EnterPiece(double seconds);
    void SetRates(const Vector3& r, const Vector3& v);
    Vector3 SunAt(double seconds) const;
    Vector3 SourceAt(double seconds) const;
    Answer BeamAnswer(const Scene& scene) const;

    /// A slowly moving body between three places: start, middle and end of a piece.
    struct Body {
        Vector3 first, middle, last;
        Vector3 At(double fraction) const;
    };

    Sgp4Record record_;
    FlareQuest quest_;
    double start_;
    double startMinutes_;
    double pieceStart_ = 0;
    double pieceEnd_ = -1;
    Body sun_;
    Body moon_;
    Rates rates_;
    double capAngle_;
};

/// The entry `Satellite_FindFlare` on a record: the Julian date found. `length` in days; more than `kLongestWindow` is
/// cut.
std::optional<double> FindFlare(const Sgp4Record& record, const FlareQuest& quest, double start, double length,
                                bool skip);

/// Days that one search covers at the most.
inline constexpr double kLongestWindow = 366;

/// Seconds at the start of a window in which a pass in progress is left out under the skip flag: the program's clock
/// stands at the previous flare to 0.1 s and a millisecond.
inline constexpr double kSkipGuard = 0.101;

}  // namespace glintara
