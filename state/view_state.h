#pragma once

// The camera, and what of the sky it shows. Scene units: the Earth is the unit sphere. Angles in radians.

#include <array>
#include <cstdint>

namespace glintara {

/// The one camera of the scene.
struct ViewState {
    double ViewRoll = 0;     ///< rotation about the screen's vertical axis, after latitude and longitude
    double ViewLat = 0;      ///< latitude at the centre of the view; on the flat map its shift
    double ViewLon = 0;      ///< longitude at the centre of the view; on the flat map its shift
    double ZoomFactor = 16;  ///< at 64 the unit sphere's radius is half the short side of the picture; 0.1 to 5000
    double PanX = 0;         ///< shift of the picture, scene units
    double PanY = 0;
    double FramePanX = 0;  ///< the pan as it stood when the frame began
    double FramePanY = 0;
    double SkyScale = 55;       ///< radius of the star sphere, scene units; 1 while the stars are on the globe
    double SkyScaleSaved = 55;  ///< the automatic radius last computed

    // Sine and cosine of the three angles as they stood when the frame began.
    double SinRoll = 0, CosRoll = 1;
    double SinLat = 0, CosLat = 1;
    double SinLon = 0, CosLon = 1;

    static constexpr int kPanStackCapacity = 16;
    std::array<double, kPanStackCapacity + 1> PanStackX{};  ///< from index 1
    std::array<double, kPanStackCapacity + 1> PanStackY{};
    std::int16_t PanStackDepth = 0;

    double OrbitTurns = 6;           ///< length of an orbit drawn, sixths of a revolution, 1 to 300
    double MaxStarMag = 11;          ///< faintest star shown, from -5 in steps of 0.25
    std::int16_t StarSizeScale = 8;  ///< size of star discs, 0 to 30

    bool SkyLocked = false;  ///< the view is locked to the stars
    double LockedLat = 0;    ///< the view as captured when the lock was taken;
    double LockedAngle = 0;  ///< a right ascension
    double LockedRoll = 0;
};

}  // namespace glintara
