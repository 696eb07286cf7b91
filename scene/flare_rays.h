#pragma once

// Lines in space that show how a satellite's surfaces stand to the light: the options by which surfaces are designed.

#include "flare/live_flares.h"
#include "scene/view_geometry.h"

namespace glintara {

/// Colours of the rays: those of the flares of Sun and Moon, dimmed, so that the marks stay the brightest.
inline constexpr Color kSunRayColor = 0x30A050;
inline constexpr Color kMoonRayColor = 0x508080;

/// Colours of the lines on the body: normals in a warm grey, the rotation axis in a quiet blue.
inline constexpr Color kMirrorNormalColor = 0x90A0B0;
inline constexpr Color kRotAxisColor = 0xC09070;

/// Lengths of a normal, and of the rotation axis to either side of the satellite: scene units at zoom 1. They keep
/// their size on the screen; a short side of the picture is 128.
inline constexpr double kMirrorNormalLength = 6;
inline constexpr double kRotAxisLength = 8;

/// A straight line through space between two points on world axes, scene units, of any length: on the globe without
/// the part that the Earth's disc hides, on the flat map the places below it. On the map nothing is drawn of a line
/// whose ends lie over one place, or over opposite ones.
void PlotStraightLine(const SceneContext& scene, const Vector3& from, const Vector3& to);

/// Draws the lines of `satellite`, which is at `motion` at the displayed instant:
/// - with `CShowSourceRay` the ray that comes from each source of `quest`. On the globe it runs in from beyond the
///   picture, or from the source when that is in it; on the flat map from the place below the source.
/// - with `CShowMirrorNormal` the normal of each surface, of a rotating body those of even phases.
/// - with `CShowRotAxis` the axis of a rotating body.
///
/// None of it for a satellite that no asked source reaches, or without a model. In transit mode, which asks for no
/// model, the rays alone. Allocates nothing.
void DrawFlareRays(const SceneContext& scene, const SatRecord& satellite, const WorldMotion& motion,
                   const LightPlaces& lights, const LiveFlareQuest& quest);

}  // namespace glintara
