#pragma once

// The earliest flare of the mirrors of one satellite near one place.
//
// The search is exact by bounds, not by luck. At each instant it works out for how many seconds the answer "no flare
// here" must certainly last: every quantity that decides (the satellite's height above the observer's horizon, the
// angle between beam and observer, the side of the mirror that the light falls on, the shadow, the distance of the
// beam's foot) changes at a rate that is bounded by the orbit's greatest speed and angular speed, and the one that
// excludes a flare longest sets the step. Close to a flare the steps shrink to `kFinestFlareStep`; a flare shorter than
// that can be missed, nothing else can.
//
// All mirrors of a satellite are followed together: what is costly, the propagation, is the same for all.
//
// An instant at which the propagator reports an error holds no flare. Such a stretch is passed over in growing steps,
// and its end found by halving; only a sound stretch between two in error that is shorter than such a step (a minute
// while the orbit still leaves the Earth, ten at the most) can be passed over with them.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "engine/astro/vector.h"
#include "engine/flares/flare_evaluation.h"
#include "engine/sgp4/sgp4.h"

namespace glintara {

/// The finest step of the search, seconds: the precision of its answers.
inline constexpr double kFinestFlareStep = 1e-3;

/// Days that one search covers at the most.
inline constexpr double kLongestWindow = 366;

/// Seconds at the start of a window in which a pass in progress is left out under the skip flag: the program's clock
/// stands at the previous flare to 0.1 s and a millisecond.
inline constexpr double kSkipGuard = 0.101;

/// What is looked for.
struct FlareQuest {
    LightSource source = LightSource::Sun;
    Vector3 site{1, 0, 0};                 ///< the observer on the unit sphere, Earth-fixed
    double siteRadius = 0;                 ///< unit of length, metres
    double maxDistance = 0;                ///< chord, in units of `siteRadius`; the centre must be nearer
    double finestStep = kFinestFlareStep;  ///< seconds
};

/// A mirror that the search follows.
struct WatchedMirror {
    MirrorSetting mirror;
    double from = 0;    ///< seconds after the start before which this mirror is not asked
    bool skip = false;  ///< a pass in progress at any time in the first `kSkipGuard` of the window is left out
};

/// One window of the search: a satellite and an instant from which seconds are counted.
class FlareSearch {
  public:
    /// A flare found: when, in seconds after the start, and the index of its mirror.
    struct Hit {
        double seconds = 0;
        std::size_t mirror = 0;
    };

    /// `record` is propagated in place, and must outlive the search. `start` is a Julian date (UTC).
    FlareSearch(Sgp4Record& record, const FlareQuest& quest, double start);

    /// The first instant before `to` at which one of the mirrors has a flare within the distance, not before its
    /// `from`; of equal instants the first mirror. Each `from` moves on to an instant before which there is none.
    std::optional<Hit> FirstFlare(std::span<WatchedMirror> mirrors, double to);

    /// First instant from `from` on at which `mirror` has none; `to` when it lasts that long.
    double PassEnd(const MirrorSetting& mirror, double from, double to);

    /// Whether `mirror` has a flare within the distance at `seconds` after the start.
    bool FlareAt(const MirrorSetting& mirror, double seconds);

    /// How many times the satellite was propagated so far: what a search costs.
    std::int64_t Propagations() const { return propagations_; }

  private:
    /// The answer for one mirror at one instant, and for how many seconds it certainly stays the same.
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

    /// How a frame stands at one instant, and how fast it turns.
    struct FrameMotion {
        BodyFrame frame;
        double rate = 0;     ///< greatest, radians per second
        double trusted = 0;  ///< for how many seconds `rate` holds
    };

    /// A satellite and its surroundings at one instant, on inertial axes: what all mirrors share.
    struct Scene {
        double quiet = 0;   ///< for how many seconds no mirror can have a flare, whatever it is
        bool open = false;  ///< whether mirrors are to be asked at all; when not, nothing below is set
        Vector3 r;
        Vector3 v;
        Vector3 site;
        Vector3 source;
        Vector3 sun;
        double radius = 0;
        Vector3 ray;                       ///< from the source to the satellite, unit
        bool dark = false;                 ///< in the Earth's shadow
        double shadeLasts = 0;             ///< for how many seconds `dark` stays as it is
        Vector3 sight;                     ///< from the satellite to the observer, unit
        double range = 0;                  ///< the distance of the two
        std::optional<FrameMotion> frame;  ///< of the mirror asked last; the next one mostly has the same
        FlareGeometry frameGeometry = FlareGeometry::Transit;
    };

    /// A slowly moving body between three places: start, middle and end of a piece.
    struct Body {
        Vector3 first, middle, last;
        Vector3 At(double fraction) const;
    };

    Sgp4State Propagated(double seconds);
    double ErrorEnd(double from, double to);
    Scene SceneAt(double seconds, double to);
    void AddSurroundings(double seconds, Scene& scene) const;
    FrameMotion FrameIn(FlareGeometry geometry, const Scene& scene) const;
    Answer BeamAnswer(const MirrorSetting& mirror, Scene& scene) const;
    void EnterPiece(double seconds);
    void SetRates(const Vector3& r, const Vector3& v);
    Vector3 SunAt(double seconds) const;
    Vector3 SourceAt(double seconds) const;

    Sgp4Record& record_;
    FlareQuest quest_;
    double start_;
    double startMinutes_;
    double pieceStart_ = 0;
    double pieceEnd_ = -1;
    Body sun_;
    Body moon_;
    Rates rates_;
    bool ratesHold_ = false;
    double capAngle_;
    std::int64_t propagations_ = 0;
};

/// Mirrors that one call of `FindFlare` follows together.
inline constexpr std::size_t kMostWatched = 32;

/// A flare found: Julian date (UTC), and the index of its mirror.
struct FoundFlare {
    double jd = 0;
    std::size_t mirror = 0;
};

/// The search behind the C entries: the earliest flare of `mirrors` (as many as `kMostWatched`) in the window of
/// `length` days from Julian date `start` on; of equal instants that of the first mirror. `propagations`, when given,
/// is raised by what the search cost. Nothing is found in a window longer than `kLongestWindow`. The integrator in
/// `record` moves: the next window costs less then, years after the epoch, and nothing else changes.
std::optional<FoundFlare> FindFlare(Sgp4Record& record, const FlareQuest& quest, std::span<const WatchedMirror> mirrors,
                                    double start, double length, std::int64_t* propagations = nullptr);

}  // namespace glintara
