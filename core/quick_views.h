#pragma once

// The quick views: each sets a typical picture up in one press, whatever was shown before.

#include "core/simulated_time.h"
#include "state/application.h"

namespace glintara {

/// `MnuDrawSkyMap` and `MnuQSkyChart`: the sky over the observer as a chart held overhead, the zenith in the middle and
/// the horizon round it, fitted into the picture.
void DrawSkyMap(Application& app);

/// `CSkyChartSphere`: from the sphere to the chart, which shows the present orientation and leaves the Earth, or back
/// to the sphere around the Earth.
void SwitchSkyChart(Application& app);

/// `MnuQHorizontView`: the observer stands on the curve of the Earth, low in the picture, under the northern sky.
void ShowHorizon(Application& app);

/// `MnuQLHView`: the same from farther off, at the time of the clock.
void ShowHorizonNow(Application& app, SimulatedTime& time);

/// `CToggleSkyEarth`, `MnuToggleSkyEarth`: hides the Earth, with a sky to be seen instead, or shows it again.
void ToggleSkyEarth(Application& app);

/// Wires the above and `MnuQResetView`.
void ConnectQuickViews(Application& app, SimulatedTime& time);

}  // namespace glintara
