#pragma once

// Tracks: the line on the ground that the centre of a flare sweeps while the satellite moves on, and in transit mode the
// line from which the satellite is seen to cross the disc of the Sun. Each point stands where it falls on the Earth of
// its own instant.

#include <cstdint>
#include <optional>

#include "engine/astro/geodesy.h"
#include "engine/astro/vector.h"
#include "engine/glintcore.h"
#include "flare/attitude.h"
#include "orbit/propagation.h"
#include "state/application.h"

namespace glintara {

/// Instants at which a track is looked at in one revolution, and in fine pictures.
inline constexpr int kTrackSteps = 200;
inline constexpr int kTrackStepsFine = 1000;

/// Height above the ellipsoid at which flares are taken to fall, metres: that of much of the land.
inline constexpr double kTrackHeight = 100;

/// Which track is wanted.
struct TrackQuest {
    double start = 0;                ///< Julian date (UTC) of its first instant
    double turns = 1;                ///< revolutions that it goes on
    int stepsPerTurn = kTrackSteps;  ///< instants in a revolution
    bool moon = false;               ///< the Moon is the light source instead of the Sun
    bool transit = false;            ///< passages in front of the source instead of reflections
    bool day = false;                ///< points by day too
    double twilightSine = 0;         ///< sine of the Sun's elevation above which it is day
};

/// What the program's options ask from the displayed instant on: `OrbitTurns`, `FinePass`, `CMoonFlares`,
/// `MnuTransitMode`, `CDayFlares`, `TwilightSine`.
TrackQuest TrackQuestOf(const Application& app);

/// One point of a track.
struct TrackPoint {
    double jd = 0;         ///< Julian date (UTC)
    int mirror = 0;        ///< index of the surface; 1 in transit mode
    Vector3 centre;        ///< direction of the place, a unit vector, Earth-fixed
    double radius = 0;     ///< of the ground there, metres: the ellipsoid's, `kTrackHeight` above it
    double incidence = 0;  ///< cosine of the angle between light and surface, 0 to 1; 1 in transit mode
};

/// Where a point lies: geodetic, longitude from -pi to pi. Its height is near `kTrackHeight`; at grazing light it may
/// be tens of metres off.
Geodetic GroundPlaceOf(const TrackPoint& point);

/// The track of one satellite, which is copied: nothing that happens to the list later is of consequence. The place of
/// the observer sets the unit of length and is read at each point; it leaves no trace in the results.
///
/// The flare is found twice: on a sphere through the observer, and then on one that is as large as the ellipsoid is
/// where the first has fallen.
class FlareTrack {
  public:
    FlareTrack(const CommonData& data, const SatRecord& satellite, const TrackQuest& quest);

    /// Whether there is a track at all: the satellite is not disabled, has a revolution, and in flare mode surfaces to
    /// flare with.
    bool Exists() const { return mirrors_ > 0; }

    /// Surfaces, which are counted from 1; in transit mode one.
    int MirrorCount() const { return mirrors_; }

    /// Steps from the first instant to the last: `turns` times `stepsPerTurn`.
    std::int32_t StepCount() const { return steps_; }

    /// Instant of a step, 0 to `StepCount()`, and of the last.
    double InstantOf(std::int32_t step) const { return quest_.start + step * step_; }
    double End() const { return end_; }

    const TrackQuest& Quest() const { return quest_; }

    /// The point of surface `mirror` at an instant. Nothing when there is no flare, when it falls by day and that is not
    /// asked for, and where the elements give no orbit. With the Sun in transit mode it is always day, and not asked.
    std::optional<TrackPoint> At(int mirror, double jd);

  private:
    struct Flare {
        Vector3 centre;
        double sunSine = 0;
        double incidence = 0;
    };

    std::optional<Flare> Evaluate(const GlintSurface& surface, double jd, const Vector3& r, const Vector3& v) const;
    bool FallsByDay(const Flare& flare) const;

    const CommonData& data_;
    TrackQuest quest_;
    EngineSurfaces surfaces_;
    EngineBlock block_;
    int mirrors_ = 0;
    std::int32_t steps_ = 0;
    double step_ = 0;  // days
    double end_ = 0;   // Julian date
};

/// Calls `take(step, point)` for each point of `track`, surface by surface, and `takeGap(step, mirror)` for each step without
/// one.
template <class Take, class TakeGap>
void WalkTrack(FlareTrack& track, Take take, TakeGap takeGap) {
    for (int mirror = 1; mirror <= track.MirrorCount(); ++mirror) {
        for (std::int32_t step = 0; step <= track.StepCount(); ++step)
            if (const std::optional<TrackPoint> point = track.At(mirror, track.InstantOf(step)))
                take(step, *point);
            else
                takeGap(step, mirror);
    }
}

}  // namespace glintara
