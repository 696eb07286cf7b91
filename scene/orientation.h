#pragma once

// Where the camera can be sent with one press. Angles in radians.

#include "state/application.h"

namespace glintara {

/// The camera that the opening ends on and that `MnuQResetView` goes back to: a globe of some 0.45 of the picture's
/// height, with Africa and Europe in front.
inline constexpr CameraView kStartCamera = {
    .ViewRoll = 0, .ViewLat = 0, .ViewLon = 0.0857908, .ZoomFactor = 29, .PanX = 0, .PanY = 0};

/// The camera as it stands.
CameraView CaptureCamera(const ViewState& view);

/// Puts a kept camera back, within what can be drawn.
void ApplyCamera(ViewState& view, const CameraView& camera);

/// Locks the sky as it is seen now: keeps the camera's angles, the longitude as the right ascension at the centre of
/// the view, 0 to 2 pi.
void TakeSkyLock(CommonData& data);

/// The orientations.
enum class Orientation {
    Zero,    ///< latitude and longitude 0, without pan
    Zenith,  ///< down on the observer
    Up,      ///< the observer on top of the disc
    Noon,    ///< from the Sun
    Night,   ///< on the middle of the night side
    Orbit,   ///< along the normal of the working satellite's orbit, for the displayed instant
};

/// Turns the camera and takes the sky lock anew from it; the zoom stays, and the pan too but for `Zero`. Returns
/// whether it was done: `Orbit` needs a satellite.
bool Orient(CommonData& data, Orientation orientation);

// The buttons: they turn the camera, tell so in `LCommandOutput` and ask for a picture. `COrbitOrient` does nothing
// without a satellite.

void CZeroOrientation_Click(Application& app);
void CZenith_Click(Application& app);
void CUpOrientation_Click(Application& app);
void CNoon_Click(Application& app);
void CNightOrientation_Click(Application& app);
void COrbitOrient_Click(Application& app);

}  // namespace glintara
