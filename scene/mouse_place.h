#pragma once

// What of the Earth and of the sky lies at a place of the picture.
//
// Places of the picture are given from its middle, x to the right and y up, in scene units, whatever the pan.

#include <optional>

#include "scene/view_geometry.h"

namespace glintara {

/// Where the mouse was last seen over the picture; nothing before that.
std::optional<ScenePoint> MouseOnPicture(const Application& app);

/// The middle of the Earth on the picture.
ScenePoint EarthCentre(const ViewState& view);

/// The middle of the sky on the picture. In a shifted picture it belongs to the observer, who stands on top of the
/// Earth's disc, unless the stars are on the globe.
ScenePoint SkyCentre(const Application& app);

/// Whether the Earth stands before something of the sky: it is drawn as a globe, and the place on the star sphere, on
/// view axes, lies behind its disc.
bool IsBehindEarth(const Application& app, const Vector3& view);

/// The place of the Earth at `place`, longitude from -pi to pi. Nothing off the Earth or while it is not drawn.
std::optional<LatLon> EarthAt(const Application& app, const ScenePoint& place);

/// The direction of date, a unit vector, of the sky at `place`. Nothing where no sky is drawn: off its sphere or its
/// chart, on a half that is left out, below the horizon of a local sky, behind the Earth.
std::optional<Vector3> SkyAt(const Application& app, const ScenePoint& place);

/// The Greenwich angle of the picture, radians.
double GreenwichOfPicture(const CommonData& data);

}  // namespace glintara
