#pragma once

// What the panels say of the working satellite and its orbit, and the buttons for the length of the orbit drawn.

#include "state/application.h"

namespace glintara {

/// Shortest and longest orbit drawn, sixths of a revolution.
inline constexpr double kLeastOrbitTurns = 1;
inline constexpr double kMostOrbitTurns = 300;

/// Sixths of a revolution in a whole one.
inline constexpr double kTurnsPerRevolution = 6;

/// Writes `LOrbit`: the revolutions drawn and the working satellite's period in minutes, both cut to two decimals.
void ShowOrbitLabel(Application& app);

/// Brings everything that depends on the list into line with it: orbit label, `LSatDetail` (which the next picture
/// fills again), which controls are enabled, and the menu.
void RefreshSatellitePanel(Application& app);

/// Wires `COrbitTurnInc`, `COrbitTurnDec`, `CTurnOne` and the two buttons that admit element sets.
void ConnectSatellitePanel(Application& app);

}  // namespace glintara
