#pragma once

// Where the light of a satellite's surfaces falls at the displayed instant: what every picture shows. Pure geometry on
// arrays of fixed size; it is drawn by scene/flare_marks.

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "core/state/application.h"
#include "flare/geometry/rotating_mirror.h"
#include "orbit/astro/vector.h"
#include "orbit/propagation.h"

namespace glintara {

/// Where Sun and Moon stand at the displayed instant: Earth-fixed, in `SiteRadius`.
struct LightPlaces {
    Vector3 sun;
    Vector3 moon;
};

LightPlaces LightPlacesAt(const CommonData& data);

/// What is asked of the live plot.
struct LiveFlareQuest {
    bool moon = false;            ///< moonlight too
    bool transit = false;         ///< places from which the satellite stands before the source, instead of flares
    bool fine = false;            ///< twice as many phases of rotating bodies
    bool forceLight = false;      ///< the Earth's shadow is ignored
    std::optional<double> phase;  ///< the one phase, radians, in which rotating bodies are shown; none for a full turn
};

/// What the program's options ask: `CMoonFlares`, `MnuTransitMode`, `FinePass`.
LiveFlareQuest LiveFlareQuestOf(const Application& app);

/// The centre of the light of one surface.
struct LiveFlare {
    Vector3 centre;       ///< on the unit sphere, Earth-fixed
    double distance = 0;  ///< from the observer, metres, straight through the sphere
    double offAxis = 0;   ///< between the beam and the line to the observer, seen from the satellite, radians
    int surface = 0;      ///< index of the surface; of a rotating body the number of its phase, from 0; 0 in transit
    bool rotating = false;
    bool moon = false;  ///< the light is the Moon's
};

/// The centres of one satellite.
class LiveFlares {
  public:
    /// As many as one satellite can have: both sources on every phase.
    static constexpr std::size_t kCapacity = 2 * static_cast<std::size_t>(kRotationPhasesFine);
    static_assert(kRotationPhasesFine >= kMirrorCapacity);

    void Clear() { count_ = 0; }

    /// One more; left out when there is no room.
    void Add(const LiveFlare& flare) {
        if (count_ < kCapacity) flares_[count_++] = flare;
    }

    std::span<const LiveFlare> All() const { return {flares_.data(), count_}; }

  private:
    std::array<LiveFlare, kCapacity> flares_;
    std::size_t count_ = 0;
};

/// Puts the centres of `satellite`, which is at `motion` at the displayed instant, into `flares` in place of what was
/// there: the Sun's first, the surfaces in their order. Satellites without a model have none, except in transit mode,
/// which asks for no model. A satellite in the Earth's shadow reflects nothing of that source. Allocates nothing.
void FindLiveFlares(const Application& app, const SatRecord& satellite, const WorldMotion& motion,
                    const LightPlaces& lights, const LiveFlareQuest& quest, LiveFlares& flares);

/// A centre that is nearer than this, metres, is told by its label instead of a circle.
inline constexpr double kLabelledDistance = 300000;

/// A label tells a distance below this, metres.
inline constexpr double kToldDistance = 150000;

/// Appends the label of a centre to `text`: with `withName` the surface's name, or the number of the phase; when it is
/// near, its distance in kilometres, and of surfaces that do not rotate the angle off the beam in degrees. May be
/// empty. Allocates nothing when the text has room.
void AppendLiveFlareLabel(const SatRecord& satellite, const LiveFlare& flare, bool withName, std::string& text);

/// The label as a text of its own.
std::string LiveFlareLabel(const SatRecord& satellite, const LiveFlare& flare, bool withName);

}  // namespace glintara
