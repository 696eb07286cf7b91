#pragma once

// The two numberings of how mirrors are carried around an orbit, side by side: the attitude types that a surface model
// knows, and the geometries that the engine follows. Whoever decides by one of them does so in a `switch` without a
// default, so that a new one does not build before all have taken a stand.

#include <optional>

namespace glintara {

/// How the mirrors of a satellite are carried around its orbit.
enum class OrientationType : int {
    AlongTrack = 0,   ///< vertical, and ahead along the horizontal part of the velocity
    Inertial = 1,     ///< fixed in space
    Rotating = 2,     ///< spinning about an axis fixed in space
    AlongTarget = 3,  ///< vertical, and ahead towards another satellite
    VerticalSun = 4,  ///< vertical, and ahead towards the Sun
};

/// How the engine carries a mirror, as its C interface numbers it (`GLINTCORE_TRANSIT` and so on).
enum class FlareGeometry : int {
    Transit = -1,  ///< no mirror: the light runs on past the satellite
    AlongTrack = static_cast<int>(OrientationType::AlongTrack),
    Inertial = static_cast<int>(OrientationType::Inertial),
    VerticalSun = static_cast<int>(OrientationType::VerticalSun),
};

/// What a flare's light comes from, as the C interface numbers it (`GLINTCORE_SUN`, `GLINTCORE_MOON`).
enum class LightSource : int { Sun = 0, Moon = 1 };

/// The attitude type of a number; nothing for a number that is none.
constexpr std::optional<OrientationType> OrientationTypeOf(int number) {
    const auto type = static_cast<OrientationType>(number);
    switch (type) {
        case OrientationType::AlongTrack:
        case OrientationType::Inertial:
        case OrientationType::Rotating:
        case OrientationType::AlongTarget:
        case OrientationType::VerticalSun:
            return type;
    }
    return std::nullopt;
}

/// The geometry of a code; nothing for a number that is none.
constexpr std::optional<FlareGeometry> FlareGeometryOf(int code) {
    const auto geometry = static_cast<FlareGeometry>(code);
    switch (geometry) {
        case FlareGeometry::Transit:
        case FlareGeometry::AlongTrack:
        case FlareGeometry::Inertial:
        case FlareGeometry::VerticalSun:
            return geometry;
    }
    return std::nullopt;
}

/// The geometry under which tracks and search follow the mirrors of an attitude type. Rotating bodies and those along a
/// target are followed as if fixed in space; only the live plot knows them fully.
constexpr FlareGeometry GeometryOf(OrientationType type) {
    switch (type) {
        case OrientationType::AlongTrack:
            return FlareGeometry::AlongTrack;
        case OrientationType::Inertial:
        case OrientationType::Rotating:
        case OrientationType::AlongTarget:
            return FlareGeometry::Inertial;
        case OrientationType::VerticalSun:
            return FlareGeometry::VerticalSun;
    }
    return FlareGeometry::Inertial;
}

}  // namespace glintara
