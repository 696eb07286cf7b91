#pragma once

// What the tests of the C interface share: element sets of the example files, and a satellite followed through the C
// calls alone.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/vector.h"
#include "engine/glintcore.h"

namespace glintara::engine_calls {

struct ElementSet {
    std::string name;
    std::string line1;
    std::string line2;
};

inline std::vector<ElementSet> ExampleSets(const std::string& file) {
    std::ifstream in(std::string(GLINTARA_SOURCE_DIR) + "/data/examples/" + file);
    std::vector<ElementSet> sets;
    ElementSet set;
    while (std::getline(in, set.name) && std::getline(in, set.line1) && std::getline(in, set.line2))
        sets.push_back(set);
    return sets;
}

inline EngineBlock BlockOf(const ElementSet& set) {
    EngineBlock block;
    EXPECT_EQ(SatelliteInit(set.line1.c_str(), set.line2.c_str(), 'i', &block), 0) << set.name;
    return block;
}

/// The set as if its epoch were in another year: columns 19 and 20 of line 1.
inline ElementSet InYear(ElementSet set, const std::string& twoDigits) {
    set.line1.replace(18, 2, twoDigits);
    return set;
}

constexpr double kSiteRadius = 6371000;

inline Vector3 UnitAt(double lat, double lon) {
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

inline void SetObserver(const Vector3& unit) {
    Satellite_SetSiteGeoPosition(unit.x * kSiteRadius, unit.y * kSiteRadius, unit.z * kSiteRadius, kSiteRadius);
}

/// The library starts with a place of its own; all tests here count in `kSiteRadius`.
inline const bool kObserverIsSet = (SetObserver({1, 0, 0}), true);

/// Position (units of `kSiteRadius`) and velocity on Earth-fixed axes.
struct Motion {
    Vector3 r;
    Vector3 v;
};

inline Motion MotionAt(EngineBlock& block, double jd) {
    std::array<double, 3> p{};
    std::array<double, 3> v{};
    Satellite_SGP4(&block, jd, p.data(), v.data());
    const double greenwich = SiderealFromJD(jd);
    const double scale = 1000 / kSiteRadius;
    return {scale * TurnedAboutPole({p[0], p[1], p[2]}, -greenwich), TurnedAboutPole({v[0], v[1], v[2]}, -greenwich)};
}

/// A mirror (or a transit) as the C interface takes it.
struct Mirror {
    int32_t source = GLINTCORE_SUN;
    int32_t geometry = GLINTCORE_ALONG_TRACK;
    double angle = 0;
    double tilt = 0;
};

struct Flare {
    Vector3 centre;
    std::array<double, 5> result{};
};

inline std::optional<Flare> FlareOf(const Mirror& mirror, double jd, const Motion& motion) {
    std::array<double, 3> centre{};
    Flare flare;
    const int32_t some =
        Satellite_CalcFlare(jd, mirror.source, mirror.geometry, motion.r.x, motion.r.y, motion.r.z, motion.v.x,
                            motion.v.y, motion.v.z, mirror.angle, mirror.tilt, centre.data(), flare.result.data());
    if (some == 0) return std::nullopt;
    flare.centre = {centre[0], centre[1], centre[2]};
    return flare;
}

}  // namespace glintara::engine_calls
