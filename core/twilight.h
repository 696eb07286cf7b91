#pragma once

// The window of the twilight: which elevation of the Sun parts day from night.

#include "state/application.h"

namespace glintara::twilight {

/// Brings the box into line with the elevation.
void WinDataUpdate(Application& app);

/// Opens the window with the present elevation in its box. One that is open stays as it is.
void Open(Application& app);

/// Takes the number in the box, held between -90 and 90, shows what was taken, and asks for a picture.
void CApply_Click(Application& app);

/// Hangs the procedures on the controls of the window.
void Connect(Application& app);

}  // namespace glintara::twilight
