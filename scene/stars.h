#pragma once

// The stars, the Sun and the Moon on the star sphere, on a chart of it, or on the flat map.

#include <optional>

#include "engine/astro/precession.h"
#include "engine/glintcore.h"
#include "scene/name_board.h"
#include "scene/star_chart.h"
#include "scene/view_geometry.h"

namespace glintara {

inline constexpr Color kSkyCircleColor = kWhite;
inline constexpr Color kSelectedStarColor = kWhite;
inline constexpr Color kStarNameColor = 0xA8907C;

/// Discs of the Sun and the Moon on the sky.
inline constexpr Color kSkySunColor = 0x0080FF;
inline constexpr Color kSkyMoonColor = 0x00FFFF;

/// Radius of the ring round the selected star, pixels of a screen at scale 1.
inline constexpr double kSelectionRing = 9;

/// How the sky of one picture is seen: taken once, for places by the thousand. To be made between `PushSkyPan` and
/// `PopSkyPan`.
class SkyCamera {
  public:
    explicit SkyCamera(const SceneContext& scene);
    explicit SkyCamera(SceneContext&&) = delete;  // it is looked at later

    /// A direction of date on the star sphere as it is drawn, mirrored and unrolled if it has to be: on view axes, on
    /// the flat map as (0, X, Y). Nothing when its part of the sky is not shown.
    std::optional<Vector3> Mapped(const Vector3& direction) const;

    /// The same on the plane of the screen; nothing also when the Earth hides it.
    std::optional<ScenePoint> Seen(const Vector3& direction) const;

    /// The direction of date of one on world axes.
    Vector3 FromWorld(const Vector3& direction) const;

  private:
    const SceneContext& scene_;
    double greenwich_;
    RotationMatrix matrix_;
    SkyProjection projection_;
    SkySight sight_;
};

/// The stars of the list, but the faintest only when no drag is under way; the one that is selected, names with
/// `CStarNames`, the edge of the sky with `CSkyCircle`, and with `CDrawSun` the Sun and the Moon as they are seen among
/// the stars. Brings the stars' places to the displayed date when they are not of about that date. To be called between
/// `PushSkyPan` and `PopSkyPan`; names keep clear of what `names` has written in this picture.
void PlotStars(const SceneContext& scene, NameBoard& names);

/// The Sun and the Moon alone.
void PlotSunAndMoonOnSky(const SceneContext& scene);

/// With `MnuAtmo` the ground of a sky seen through the air: from night over a blue twilight to day, as the Sun stands
/// for the observer. Otherwise nothing.
void DrawSkyBackground(const SceneContext& scene);

/// Colour of that sky, for an elevation of the Sun, radians.
Color SkyColor(double sunElevation);

}  // namespace glintara
