#pragma once

// What the tests of search and passes share: an observer in Turin with element sets of January 2018, a clock that is
// written down, and a judge: a plain sweep in steps of 0.1 seconds through the calls of the engine.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "engine/astro/sidereal.h"
#include "engine/glintcore.h"
#include "flare/search.h"
#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "state/application.h"
#include "state/recording_services.h"

namespace glintara::observed_night {

constexpr double kSecond = 1 / 86400.0;
constexpr double kHour = 1 / 24.0;
constexpr double kDegree = 3.14159265358979323846 / 180;

/// 20 January 2018, 0 h UTC.
constexpr double kNight = 2458138.5;

constexpr Geodetic kTurin{45.07 * kDegree, 7.69 * kDegree, 240};

/// Events that a test hangs its own doings on.
class HookedEvents : public Events {
  public:
    void ServeEvents() override {
        ++served;
        if (hook) hook();
    }

    int served = 0;
    std::function<void()> hook;
};

inline void SetInstant(CommonData& data, double jd) { data.SetSimInstant(JDToDate(jd), jd); }

/// The program in the night of 20 January 2018.
struct Observatory {
    Observatory() {
        SetLocation(app.Data, kTurin);
        SetInstant(app.Data, kNight);
    }

    /// Admits an example file and selects all of its satellites.
    void Load(const std::string& file) {
        ASSERT_TRUE(LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/" + file));
        CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
        ASSERT_TRUE(boxes.messages.empty());
        SelectAll(true);
    }

    /// Admits one element set, by its name in an example file, and selects it.
    void LoadOne(const std::string& file, const std::string& name) {
        Observatory whole;
        whole.Load(file);
        for (int s = 1; s <= whole.app.Data.SatCount; ++s) {
            const SatRecord& satellite = whole.app.Data.Satellite(s);
            if (satellite.Name == name) {
                Append(satellite);
                return;
            }
        }
        FAIL() << "no " << name << " in " << file;
    }

    /// Puts a copy of `satellite` at the end of the list, as one of its own.
    SatRecord& Append(const SatRecord& satellite) {
        CommonData& data = app.Data;
        SatRecord& copy = data.Satellite(++data.SatCount);
        copy = satellite;
        copy.OrbitNumber = static_cast<std::int16_t>(data.SatCount);
        return copy;
    }

    void SelectAll(bool selected) {
        for (int s = 1; s <= app.Data.SatCount; ++s) app.Data.Satellite(s).Selected = selected;
    }

    testing::RecordingBoxes boxes;
    HookedEvents events;
    testing::RecordingWindows windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
};

/// The program's clock, which keeps whole milliseconds.
class RecordingClock : public SearchClock {
  public:
    explicit RecordingClock(CommonData& data) : data_(data) {}

    void SetJDToTimeOffset(double jd) override {
        instants.push_back(jd);
        CalendarFields fields = JDToDate(jd);
        fields.second = std::round(fields.second * 1000) / 1000;
        SetInstant(data_, DateToJD(fields));
    }

    std::vector<double> instants;

  private:
    CommonData& data_;
};

/// A ray to a place within 190 km of the observer comes from a satellite with more than this for
/// `Glimpse::overHorizon`.
constexpr double kLowest = 0.97;

/// A surface of a satellite as the engine's calls take it. Flares of a satellite lower than `lowest` are not looked at.
struct Surface {
    EngineBlock block{};
    std::int32_t source = GLINTCORE_SUN;
    std::int32_t geometry = GLINTCORE_ALONG_TRACK;
    double angle = 0;  // radians
    double tilt = 0;   // radians
    double lowest = kLowest;
};

inline Surface SurfaceOf(const SatRecord& satellite, int mirror) {
    Surface surface;
    surface.block = satellite.EngineBlock;
    surface.geometry = satellite.Surface.OrientationType;
    surface.angle = satellite.Surface.Mirror(mirror).Angle * kDegree;
    surface.tilt = satellite.Surface.Mirror(mirror).Tilt * kDegree;
    return surface;
}

inline Surface TransitOf(const SatRecord& satellite, std::int32_t source) {
    Surface surface;
    surface.block = satellite.EngineBlock;
    surface.source = source;
    surface.geometry = GLINTCORE_TRANSIT;
    return surface;
}

/// One instant as the sweep sees it.
struct Glimpse {
    double overHorizon = 0;  ///< cosine of the angle observer - Earth's centre - satellite, times the latter's distance
    double distance = std::numeric_limits<double>::infinity();  ///< of the centre from the observer, metres
};

inline Glimpse GlimpseAt(Surface& surface, const ObserverSite& site, double jd) {
    std::array<double, 3> p{};
    std::array<double, 3> v{};
    Satellite_SGP4(&surface.block, jd, p.data(), v.data());
    const double theta = SiderealFromJD(jd);
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    const double unit = site.SiteRadius / 1000;
    const std::array<double, 3> r{(c * p[0] + s * p[1]) / unit, (c * p[1] - s * p[0]) / unit, p[2] / unit};
    const std::array<double, 3> w{c * v[0] + s * v[1], c * v[1] - s * v[0], v[2]};
    const std::array<double, 3> o{std::cos(site.SiteGeoLat) * std::cos(site.SiteLon),
                                  std::cos(site.SiteGeoLat) * std::sin(site.SiteLon), std::sin(site.SiteGeoLat)};
    Glimpse glimpse;
    glimpse.overHorizon = r[0] * o[0] + r[1] * o[1] + r[2] * o[2];
    std::array<double, 3> centre{};
    std::array<double, 5> result{};
    if (glimpse.overHorizon > surface.lowest &&
        Satellite_CalcFlare(jd, surface.source, surface.geometry, r[0], r[1], r[2], w[0], w[1], w[2], surface.angle,
                            surface.tilt, centre.data(), result.data()) != 0)
        glimpse.distance = std::hypot(centre[0] - o[0], centre[1] - o[1], centre[2] - o[2]) * site.SiteRadius;
    return glimpse;
}

/// A run of neighbouring instants of the sweep with the centre within the distance.
struct SweptPass {
    double begin = 0;    ///< first of them
    double closest = 0;  ///< the one with the centre nearest
    double end = 0;      ///< last of them
    double distance = 0;
    std::string about;
};

/// Steps of the sweep, tenths of a second.
struct SweepSteps {
    int belowHorizon = 100;  ///< while the satellite is that low that it cannot rise in ten seconds
    int farAway = 1;         ///< while the centre is more than `kFarAway` outside the distance, or there is none
};

/// The centre of a flare moves by far less than this in a second.
constexpr double kFarAway = 200e3;

/// All passes in the span, by looking every 0.1 seconds; where `steps.farAway` allows larger steps, back to the last
/// instant seen far away when one is near.
inline std::vector<SweptPass> Sweep(Surface surface, const ObserverSite& site, double from, double days, double limit,
                                    const SweepSteps& steps = {}) {
    constexpr double kWellBelow = 0.9;
    const auto ticks = static_cast<int>(std::ceil(days / (0.1 * kSecond)));
    std::vector<SweptPass> passes;
    bool inPass = false;
    int fineUntil = 0;
    int step = 1;
    for (int k = 0; k < ticks; k += step) {
        const double jd = from + k * 0.1 * kSecond;
        const Glimpse glimpse = GlimpseAt(surface, site, jd);
        if (glimpse.distance < limit + kFarAway && step > 1) {
            fineUntil = k;
            k -= step;
            step = 1;
            continue;
        }
        if (glimpse.distance < limit) {
            if (!inPass) passes.push_back({jd, jd, jd, glimpse.distance, {}});
            SweptPass& pass = passes.back();
            pass.end = jd;
            if (glimpse.distance < pass.distance) {
                pass.distance = glimpse.distance;
                pass.closest = jd;
            }
        }
        inPass = glimpse.distance < limit;
        if (k < fineUntil || glimpse.distance < limit + kFarAway)
            step = 1;
        else
            step = glimpse.overHorizon < kWellBelow ? steps.belowHorizon : steps.farAway;
    }
    return passes;
}

}  // namespace glintara::observed_night
