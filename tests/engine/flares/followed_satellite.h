#pragma once

// What the tests of the search share: satellites of the example files, and how their light falls by the evaluation of
// single instants.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/flares/flare_search.h"
#include "engine/sgp4/element_lines.h"

namespace glintara::followed_satellite {

constexpr double kSiteRadius = 6371000;
constexpr double kSecond = 1 / kSecondsPerDay;

struct Satellite {
    std::string name;
    Sgp4Record record{};
};

inline Sgp4Record RecordOf(std::string_view line1, std::string_view line2) {
    MeanElements elements;
    Sgp4Record record{};
    EXPECT_EQ(ReadElementLines(line1, line2, elements), ElementLinesError::None);
    EXPECT_TRUE(Sgp4Prepare(elements, record));
    return record;
}

inline std::vector<Satellite> ExampleSatellites(const std::string& file) {
    std::ifstream in(std::string(GLINTARA_SOURCE_DIR) + "/data/examples/" + file);
    std::vector<Satellite> satellites;
    std::string name;
    std::string line1;
    std::string line2;
    while (std::getline(in, name) && std::getline(in, line1) && std::getline(in, line2))
        satellites.push_back({name, RecordOf(line1, line2)});
    return satellites;
}

inline Satellite ExampleSatellite(const std::string& file, const std::string& name) {
    for (const Satellite& satellite : ExampleSatellites(file))
        if (satellite.name.starts_with(name)) return satellite;
    ADD_FAILURE() << "no " << name << " in " << file;
    return {};
}

inline Vector3 UnitAt(double lat, double lon) {
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

/// The three antennas of an Iridium.
inline std::vector<WatchedMirror> ThreeAntennas() {
    std::vector<WatchedMirror> mirrors(3);
    const double angles[] = {0, 120, -120};
    for (std::size_t k = 0; k < 3; ++k)
        mirrors[k].mirror = MakeMirrorSetting(FlareGeometry::AlongTrack, angles[k] * kDegToRad, 40 * kDegToRad);
    return mirrors;
}

inline FlareQuest QuestFrom(const Vector3& site, double maxDistance) {
    FlareQuest quest;
    quest.site = site;
    quest.siteRadius = kSiteRadius;
    quest.maxDistance = maxDistance / kSiteRadius;
    return quest;
}

/// A satellite at one instant, on inertial axes.
inline Sgp4State StateAt(Sgp4Record& record, double jd) { return Sgp4AtMinutes(record, MinutesSinceEpoch(record, jd)); }

/// Whether there is a flare within the distance, by the evaluation of the instant on inertial axes.
inline bool HitAt(Sgp4Record& record, const FlareQuest& quest, const MirrorSetting& mirror, double jd) {
    const Sgp4State state = StateAt(record, jd);
    if (state.error != Sgp4Error::None) return false;
    const double scale = 1000 / quest.siteRadius;
    const Lights lights = LightsAt(jd, quest.source, 0, quest.siteRadius);
    const auto flare = EvaluateFlare(mirror, quest.source, lights, scale * state.position, scale * state.velocity, 0);
    return flare && Length(flare->centre - TurnedAboutPole(quest.site, SiderealFromJD(jd))) < quest.maxDistance;
}

}  // namespace glintara::followed_satellite
