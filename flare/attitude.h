#pragma once

// How a satellite of the list stands in space: the body frame of its attitude type, and what the engine is told of it.

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "engine/astro/vector.h"
#include "engine/geometry/attitude_types.h"
#include "engine/geometry/body_frame.h"
#include "engine/glintcore.h"
#include "state/application.h"

namespace glintara {

/// The frame of a satellite at `r` with velocity `v`, Earth-fixed at `jd`, for the attitude type of `satellite`. Under
/// `AlongTarget` the target is propagated to the same instant. Nothing when there is no frame: an attitude type that is
/// none, a target that is not in the list or is the satellite itself, the simple propagator with a target, a reference
/// along the vertical.
std::optional<BodyFrame> BuildBodyFrame(const Application& app, const SatRecord& satellite, const Vector3& r,
                                        const Vector3& v, double jd);

/// Surfaces of one satellite as the engine takes them: `All()[k]` is surface k + 1 of the model. Each is asked over the
/// whole window, without the skip flag; whoever wants it otherwise writes it there.
class EngineSurfaces {
  public:
    std::span<GlintSurface> All() & { return {surfaces_.data(), count_}; }
    std::span<const GlintSurface> All() const& { return {surfaces_.data(), count_}; }
    std::span<const GlintSurface> All() && = delete;  // it would outlive the surfaces
    bool Empty() const { return count_ == 0; }

    /// One more; a model has room for no more than fit here.
    void Add(const GlintSurface& surface) { surfaces_[count_++] = surface; }

  private:
    std::array<GlintSurface, kMirrorCapacity> surfaces_;
    std::size_t count_ = 0;
};

/// The surfaces of `satellite` that take part in tracks, search and passes. None when it is disabled or has no model to
/// flare with; in transit mode one, which is no mirror, whatever the model.
EngineSurfaces SurfacesTakingPart(const SatRecord& satellite, bool transit);

}  // namespace glintara
