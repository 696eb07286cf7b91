#pragma once

// Where the light of a satellite's surfaces falls at the displayed instant: what every picture shows. Pure geometry on
// arrays of fixed size; it is drawn by scene/flare_marks.

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "engine/astro/constants.h"
#include "engine/astro/vector.h"
#include "engine/geometry/attitude_types.h"
#include "engine/geometry/body_frame.h"
#include "engine/geometry/rotating_mirror.h"
#include "orbit/propagation.h"
#include "state/application.h"

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

/// What the program's options ask: `CMoonFlares`, `MnuTransitMode`, `FinePass`; of the surface editor
/// `CForceIllumination`, and the phase of `SRotTeta` while `CRotAng` is set.
LiveFlareQuest LiveFlareQuestOf(const Application& app);

/// Whether the live plot sees a satellite at `r` in the light of a source at `source`.
bool IsLit(const Vector3& r, const Vector3& source, const LiveFlareQuest& quest);

/// Whether the surfaces turn with the body about an axis fixed in space.
bool IsRotating(const SurfaceModel& model);

/// The cone of a rotating body's first surface, which stands for all of it.
RotatingMirror RotatingMirrorOf(const SurfaceModel& model);

/// The frame in which the live plot takes the surfaces of `satellite`, at `motion` at the displayed instant; nothing
/// when it has no model or no frame.
std::optional<BodyFrame> LiveFlareFrame(const Application& app, const SatRecord& satellite, const WorldMotion& motion);

/// The phases that the live plot shows of a rotating body.
inline int PhaseCount(const LiveFlareQuest& quest) {
    if (quest.phase) return 1;
    return quest.fine ? kRotationPhasesFine : kRotationPhases;
}

/// Calls `take(index, normal)` for each unit normal of a body in `frame`, on the world axes: those of its surfaces, in
/// their order from index 1, or of a rotating body those of its phases, from 0.
template <class Take>
void ForEachNormal(const SurfaceModel& model, const BodyFrame& frame, const LiveFlareQuest& quest, Take take) {
    if (IsRotating(model)) {
        const RotatingMirror cone = RotatingMirrorOf(model);
        const int count = PhaseCount(quest);
        for (int k = 0; k < count; ++k) {
            const double phase = quest.phase ? *quest.phase : RotationPhase(k, count);
            take(k, OnAxes(NormalComponentsAt(cone, phase), frame));
        }
        return;
    }
    const bool inertial = OrientationTypeOf(model.OrientationType) == OrientationType::Inertial;
    for (int i = 1; i <= model.MirrorCount; ++i) {
        const MirrorRecord& mirror = model.Mirror(i);
        take(i, MirrorNormal(inertial, mirror.Angle * kDegToRad, mirror.Tilt * kDegToRad, frame));
    }
}

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

/// Where the normal of `satellite`, at `motion`, looks in the one phase of `quest`. Nothing when no one phase is asked
/// for, when the satellite does not rotate or has no model, or when it flies along the vertical.
std::optional<RotatingReadOut> ReadOutOfPhase(const Application& app, const SatRecord& satellite,
                                              const WorldMotion& motion, const LiveFlareQuest& quest);

/// Writes a read-out behind the words of its five labels, in degrees cut to two decimals; the words alone when there
/// is none.
void TellReadOut(MirrorControls& controls, const std::optional<RotatingReadOut>& readOut);

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
