#pragma once

// Which stars are drawn, and how large.

#include "state/application.h"

namespace glintara {

/// Lists the stars of magnitude `limit` and brighter, in the order of their numbers. Numbers without a star are never
/// listed, whatever the limit; a limit that is no number lists nothing.
void RebuildStarList(StarTables& stars, double limit);

/// What the drawing of stars goes by in one picture. The engine gets all three.
struct StarLimits {
    double MaxStarMag = 0;    ///< faintest star wanted
    double AutoMagLimit = 0;  ///< faintest star that the picture has room for, or that the air lets through
    double StarSize = 0;      ///< how much larger a star's disc gets with each magnitude; 0 and up

    /// Faintest star that is drawn, of those listed.
    double Shown() const { return MaxStarMag < AutoMagLimit ? MaxStarMag : AutoMagLimit; }
};

/// The limits for camera and boxes as they stand. `sunElevation` is that of the Sun for the observer, radians. Without
/// `CAutoMag` only the air sets a limit besides `MaxStarMag`.
StarLimits StarLimitsOf(const ViewState& view, const MainControls& main, double sunElevation);

/// Whether the sky is seen through the air: `MnuAtmo`, unless the sky is a chart or mirrored.
bool HasAtmosphere(const MainControls& main);

/// What the background of a sky seen through the air goes by: from 1 on, with the Sun some 6 degrees below the horizon,
/// it is no longer night.
double TwilightValue(double sunElevation);

}  // namespace glintara
