#pragma once

// The sky as the boxes have it: unrolled or not, and which part of it is drawn.

#include "engine/astro/sky_chart.h"
#include "scene/view_geometry.h"

namespace glintara {

/// How the star sphere of a picture is drawn. On the flat map the sky stands over the Earth, neither mirrored nor
/// unrolled.
SkyProjection SkyProjectionOf(const Application& app);
SkyProjection SkyProjectionOf(const SceneContext& scene);

/// What becomes of every place on the star sphere before it is drawn.
void FlattenSky(const SceneContext& scene, Vector3& view);

/// The way back: x is the depth on the star sphere.
void DeFlattenSky(const SceneContext& scene, Vector3& view);

/// Radius, scene units, of a circle that is `diameter` radians wide in the sky. A quarter turn is the radius of a
/// chart.
double SkyCircleRadius(const SceneContext& scene, double diameter);

/// The same for a body that must not get lost however small it is: at least one pixel or two.
double SkyDiscRadius(const SceneContext& scene, double diameter);

/// Width of the discs of the Sun and the Moon, radians.
inline constexpr double kSunDisc = 0.009298192371920824;
inline constexpr double kMoonDisc = 0.009144146809809347;

/// Which places of the sky are drawn: half of the sphere, both, or what stands above the observer's horizon.
struct SkySight {
    bool front = true;   ///< the half towards the viewer, its edge included
    bool back = true;    ///< the half behind
    bool local = false;  ///< only what is not below the observer's horizon
    Vector3 zenith;      ///< direction of date

    /// Whether something infinitely far is drawn: `direction` is that of date, `depth` is x on view axes.
    bool Shows(const Vector3& direction, double depth) const {
        return (depth < 0 ? back : front) && !(local && Dot(direction, zenith) < 0);
    }
};

/// The boxes' choice, for a picture with this Greenwich angle. The flat map has no front and no back.
SkySight SkySightOf(const Application& app, double greenwich);
SkySight SkySightOf(const SceneContext& scene, double greenwich);

}  // namespace glintara
