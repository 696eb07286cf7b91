#pragma once

// The line of text that tells what lies under the mouse.

#include <string>

#include "scene/view_geometry.h"

namespace glintara {

/// `value` rounded to four decimals, as plain text.
std::string FourDecimals(double value);

/// What lies at `place`, from the middle of the picture in scene units. On the Earth latitude and longitude, degrees,
/// and the declination and right ascension of date that stand over it; on a sky that is drawn its declination and right
/// ascension, in a local sky also azimuth and elevation, degrees; "SPACE" elsewhere. While the observer's place floats,
/// that place comes first, on a line of its own.
std::string MouseText(const Application& app, const ScenePoint& place);

/// Shows in `LStatus` what lies under the mouse. Before the mouse has been over the picture, nothing.
void ShowMouseText(Application& app);

}  // namespace glintara
