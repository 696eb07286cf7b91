// The C entries of libglintcore: checks of what comes in, and nothing of the theory.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/astro/precession.h"
#include "engine/astro/sidereal.h"
#include "engine/drawing/draw_earth.h"
#include "engine/flares/flare_evaluation.h"
#include "engine/flares/flare_search.h"
#include "engine/glintcore.h"
#include "engine/sgp4/block.h"
#include "engine/sgp4/element_lines.h"
#include "engine/sgp4/sgp4.h"

static_assert(sizeof(GlintViewConfig) == 204);
static_assert(offsetof(GlintViewConfig, PanX) == 32 && offsetof(GlintViewConfig, HalfHeight) == 72 &&
              offsetof(GlintViewConfig, StarSizeScale) == 120 && offsetof(GlintViewConfig, SiteLat) == 176 &&
              offsetof(GlintViewConfig, StarCount) == 192 && offsetof(GlintViewConfig, CPlaniSphere) == 199);

namespace glintara {
namespace {

/// Columns of an element line; nothing behind them is read.
constexpr std::size_t kElementLineColumns = 69;

/// Results of SatelliteInit that the reader of the lines does not give.
constexpr int32_t kNullPointer = 1;
constexpr int32_t kNotFiniteElements = 6;

/// Result of Satellite_SGP4 for a block that holds no satellite, or an instant that is no number.
constexpr int32_t kNoSatellite = -1;

/// A Julian date in a double cannot tell instants apart that are nearer than this, seconds.
constexpr double kJulianDateGrain = 1e-4;

/// The two things that the library remembers between calls.
struct {
    Vector3 unit{1, 0, 0};
    double radius = kDefaultSiteRadius;
} observer;

RotationMatrix precession{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

std::string_view LineAt(const char* text) { return {text, strnlen(text, kElementLineColumns)}; }

LightSource SourceOfCode(int32_t code) { return code == GLINTCORE_MOON ? LightSource::Moon : LightSource::Sun; }

void Put(double* out, const Vector3& v) {
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

/// The block as one that holds no satellite.
void ClearBlock(void* block) { std::memset(block, 0, sizeof(EngineBlock)); }

}  // namespace
}  // namespace glintara

using namespace glintara;

extern "C" {

int32_t SatelliteInit(const char* line1, const char* line2, char /*mode*/, void* block) {
    if (block == nullptr) return kNullPointer;
    ClearBlock(block);
    if (line1 == nullptr || line2 == nullptr) return kNullPointer;
    MeanElements elements;
    const ElementLinesError error = ReadElementLines(LineAt(line1), LineAt(line2), elements);
    if (error != ElementLinesError::None) return static_cast<int32_t>(error);
    Sgp4Record record;
    if (!Sgp4Prepare(elements, record)) return kNotFiniteElements;
    StoreRecord(block, record);
    return 0;
}

int32_t Satellite_SGP4(void* block, double jd, double* position, double* velocity) {
    Put(position, {});
    Put(velocity, {});
    Sgp4Record record;
    if (block == nullptr || !std::isfinite(jd) || !LoadRecord(block, record)) return kNoSatellite;
    const Sgp4State state = Sgp4AtMinutes(record, MinutesSinceEpoch(record, jd));
    StoreIntegrator(block, record);
    Put(position, state.position);
    Put(velocity, state.velocity);
    return static_cast<int32_t>(state.error);
}

void Satellite_SetSiteGeoPosition(double x, double y, double z, double radius) {
    const Vector3 place{x, y, z};
    const double length = Length(place);
    if (!(length > 0) || !std::isfinite(length) || !(radius > 0) || !std::isfinite(radius)) return;
    observer.unit = place / length;
    observer.radius = radius;
}

void Satellite_SetPrecession(double toEpoch, double fromEpoch) {
    if (std::isfinite(toEpoch) && std::isfinite(fromEpoch)) precession = PrecessionMatrix(toEpoch, fromEpoch);
}

void Satellite_PrecessRADEC(double* out, const double* in, int32_t* /*flag*/) {
    const Equatorial place = Precess(precession, {in[1], in[0]});
    out[0] = place.ra;
    out[1] = place.dec;
}

int32_t Satellite_CalcFlare(double jd, int32_t source, int32_t geometry, double x, double y, double z, double vx,
                            double vy, double vz, double angle, double tilt, double* centre, double* result) {
    const auto code = FlareGeometryOf(geometry);
    if (!code || !std::isfinite(jd)) return 0;
    const LightSource light = SourceOfCode(source);
    const double greenwich = SiderealFromJD(jd);
    const Lights lights = LightsAt(jd, light, greenwich, observer.radius);
    const auto flare =
        EvaluateFlare(MakeMirrorSetting(*code, angle, tilt), light, lights, {x, y, z}, {vx, vy, vz}, greenwich);
    if (!flare) return 0;
    Put(centre, flare->centre);
    std::fill_n(result, 5, 0.0);
    result[1] = Dot(Normalized(flare->centre), Normalized(lights.sun));
    result[2] = flare->incidence;
    return 1;
}

int32_t Satellite_FindFlare(double start, double length, int32_t source, double resolution, double siteRadius,
                            void* block, int32_t geometry, double angle, double tilt, double maxDistance, int8_t skip,
                            double* found) {
    const auto code = FlareGeometryOf(geometry);
    Sgp4Record record;
    if (!code || block == nullptr || !LoadRecord(block, record)) return 0;
    FlareQuest quest;
    quest.mirror = MakeMirrorSetting(*code, angle, tilt);
    quest.source = SourceOfCode(source);
    quest.site = observer.unit;
    quest.siteRadius = siteRadius;
    quest.maxDistance = maxDistance / siteRadius;
    const double asked = resolution * kSecondsPerDay;
    quest.finestStep = asked > 0 ? std::clamp(asked, kJulianDateGrain, kFinestFlareStep) : kFinestFlareStep;
    const auto instant = FindFlare(record, quest, start, length, skip != 0);
    if (!instant) return 0;
    *found = *instant;
    return 1;
}

void Satellite_DrawEarth(const GlintDrawTarget* target, const GlintViewConfig* config, int32_t n, const double* lat,
                         const double* lon, const int32_t* polygon, int32_t* bufferCount, void* buffer) {
    int32_t capacity = 0;
    if (bufferCount != nullptr) std::swap(capacity, *bufferCount);
    if (target == nullptr || config == nullptr || n <= 0 || lat == nullptr || lon == nullptr || polygon == nullptr)
        return;
    const auto view = EarthViewOf(*config);
    if (!view) return;
    const auto count = static_cast<std::size_t>(n);
    const bool hasRoom = buffer != nullptr && capacity > 0;
    const std::span<double> room(static_cast<double*>(buffer), hasRoom ? static_cast<std::size_t>(capacity) : 0);
    const std::size_t used = DrawEarth(*target, *view, {{lat, count}, {lon, count}, {polygon, count}}, room);
    if (bufferCount != nullptr) *bufferCount = static_cast<int32_t>(used);
}

}  // extern "C"
