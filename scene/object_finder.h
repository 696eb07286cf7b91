#pragma once

// The object finder: which satellite or star lies next to the mouse, and the box that tells of it.
//
// Places of the picture are given from its middle, x to the right and y up, in scene units, whatever the pan.

#include <string>

#include "scene/view_geometry.h"
#include "state/finder.h"

namespace glintara {

/// An object is caught when its distance from the mouse, scene units, times the zoom is less.
inline constexpr double kCatch = 1.5;

/// What is nearest to a place.
struct FoundObject {
    FoundKind kind = FoundKind::None;
    std::int32_t index = 0;  ///< of the satellite in the list, or of the star in the catalogue
    double distance = 0;     ///< scene units

    friend bool operator==(const FoundObject&, const FoundObject&) = default;
};

/// The nearest satellite with a mark in the last picture that is nearer than `within`, scene units.
FoundObject NearestSatellite(const Application& app, const ScenePoint& place, double within);

/// The nearest star on the picture that is nearer than `within`: of the listed ones those that are drawn, with the sky
/// on, bright enough, on a half of the sky that is shown and not behind the Earth.
FoundObject NearestStar(const Application& app, const ScenePoint& place, double within);

/// The nearer of both within the catch; a satellite before a star at the same distance.
FoundObject ObjectAt(const Application& app, const ScenePoint& place);

/// What the box tells of a satellite: its number and name, height and range, kilometres, azimuth and elevation,
/// degrees.
std::string SatelliteInfo(const Application& app, int satellite);

/// What the box tells of a star: its number, name, place of date and magnitude.
std::string StarInfo(const StarTables& stars, std::int32_t star);

/// The mouse has come to rest: the box `LFInfo` shows what it lies on. It stays until `Timer_InfoHider`, which the next
/// move of the mouse or its leaving the picture starts, hides it.
void FindObject(Application& app);

/// Size of letters in the box, twips.
struct InfoLetters {
    double xWidth = 0;      ///< of a letter x
    double xHeight = 0;     ///< of a letter x
    double lineHeight = 0;  ///< of a line of text
    double textWidth = 0;   ///< of the longest line
};

/// Where the box stands for the object that was found last: a letter away from the mouse, below it and to the right, or
/// on the other side where the picture ends; never beyond the left and upper edges.
BoxArea InfoBoxArea(const RunState& run, const InfoLetters& letters);

/// The mouse has been clicked with Control held: with `CDrawSky`, the star nearest to it is chosen, however far it is.
/// `LCommandOutput` shows its name, a picture is asked for, and the globe stops turning.
void SelectStar(Application& app);

/// Makes the satellite under the mouse the working one: whether there is one.
bool SelectSatellite(Application& app);

}  // namespace glintara
