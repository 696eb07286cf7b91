// The C entries of libglintcore: checks of what comes in, and nothing of the theory.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/element_fields.h"
#include "engine/astro/horizon.h"
#include "engine/astro/precession.h"
#include "engine/astro/processor.h"
#include "engine/astro/sidereal.h"
#include "engine/drawing/draw_earth.h"
#include "engine/drawing/draw_stars.h"
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

/// Results of SatelliteInit that the reader of the lines does not give.
constexpr int32_t kNullPointer = 1;
constexpr int32_t kNotFiniteElements = 6;

/// Result of Satellite_SGP4 for a block that holds no satellite, or an instant that is not answered.
constexpr int32_t kNoSatellite = -1;

/// A Julian date in a double cannot tell instants apart that are nearer than this, seconds.
constexpr double kJulianDateGrain = 1e-4;

/// The two things that the library remembers between calls.
struct {
    Vector3 unit{1, 0, 0};
    double radius = kDefaultSiteRadius;
} observer;

RotationMatrix precession{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

std::string_view LineAt(const char* text) { return {text, strnlen(text, kElementLineLength)}; }

LightSource SourceOfCode(int32_t code) { return code == GLINTCORE_MOON ? LightSource::Moon : LightSource::Sun; }

void Put(double* out, const Vector3& v) {
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

void PutIfAny(double* out, const Vector3& v) {
    if (out != nullptr) Put(out, v);
}

/// Whether `jd` is one of the Julian dates that the library answers.
bool IsJulianDate(double jd) { return jd >= GLINTCORE_FIRST_JD && jd <= GLINTCORE_LAST_JD; }

/// Whether an observer can be at this distance from the Earth's centre, metres.
bool IsNearEarth(double distance) {
    return distance >= GLINTCORE_LEAST_SITE_RADIUS && distance <= GLINTCORE_GREATEST_SITE_RADIUS;
}

/// A Julian year that precession is asked for.
bool IsEpoch(double year) { return year >= GLINTCORE_FIRST_EPOCH && year <= GLINTCORE_LAST_EPOCH; }

/// A surface as the search follows it from `start` on; nothing for one that is none.
std::optional<WatchedMirror> MirrorOf(const GlintSurface& surface, double start) {
    const auto geometry = FlareGeometryOf(surface.Geometry);
    if (!geometry || !std::isfinite(surface.From)) return std::nullopt;
    WatchedMirror watched;
    watched.mirror = MakeMirrorSetting(*geometry, surface.Angle, surface.Tilt);
    // A transit reads no angles.
    if (geometry == FlareGeometry::Transit)
        watched.mirror.components = {};
    else if (!IsFinite(watched.mirror.components))
        return std::nullopt;
    watched.from = std::max(0.0, (surface.From - start) * kSecondsPerDay);
    watched.skip = surface.Skip != 0;
    return watched;
}

/// What a search is asked, as it comes in.
struct Asked {
    double start = 0;
    double length = 0;
    int32_t source = 0;
    double resolution = 0;
    double siteRadius = 0;
    double maxDistance = 0;
};

/// The number of the surface that flares first, and when; 0 when none does, or the question is none.
int32_t FirstFlare(const Asked& asked, Sgp4Record& record, std::span<const GlintSurface> surfaces, double* found) {
    if (!IsJulianDate(asked.start) || !IsJulianDate(asked.start + asked.length) || !IsNearEarth(asked.siteRadius))
        return 0;
    ClearUpperHalves();
    FlareQuest quest;
    quest.source = SourceOfCode(asked.source);
    quest.site = observer.unit;
    quest.siteRadius = asked.siteRadius;
    quest.maxDistance = asked.maxDistance / asked.siteRadius;
    const double step = asked.resolution * kSecondsPerDay;
    quest.finestStep = step > 0 ? std::clamp(step, kJulianDateGrain, kFinestFlareStep) : kFinestFlareStep;

    int32_t first = 0;
    double length = asked.length;
    for (std::size_t next = 0; next < surfaces.size();) {
        std::array<WatchedMirror, kMostWatched> mirrors;
        std::array<std::size_t, kMostWatched> places{};
        std::size_t watched = 0;
        for (; next < surfaces.size() && watched < kMostWatched; ++next) {
            const std::optional<WatchedMirror> mirror = MirrorOf(surfaces[next], asked.start);
            if (!mirror) continue;
            mirrors[watched] = *mirror;
            places[watched++] = next;
        }
        // Once one is known, the others are asked only for something earlier.
        const auto flare = FindFlare(record, quest, {mirrors.data(), watched}, asked.start, length);
        if (!flare || (first != 0 && !(flare->jd < asked.start + length))) continue;
        first = static_cast<int32_t>(places[flare->mirror] + 1);
        length = flare->jd - asked.start;
        if (found != nullptr) *found = flare->jd;
    }
    return first;
}

/// The block as one that holds no satellite.
void ClearBlock(void* block) { std::memset(block, 0, sizeof(EngineBlock)); }

}  // namespace
}  // namespace glintara

using namespace glintara;

extern "C" {

int32_t GlintcoreVersion(void) { return GLINTCORE_VERSION; }

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
    PutIfAny(position, {});
    PutIfAny(velocity, {});
    Sgp4Record record;
    if (block == nullptr || !IsJulianDate(jd) || !LoadRecord(block, record)) return kNoSatellite;
    const Sgp4State state = Sgp4AtMinutes(record, MinutesSinceEpoch(record, jd));
    StoreIntegrator(block, record);
    PutIfAny(position, state.position);
    PutIfAny(velocity, state.velocity);
    return static_cast<int32_t>(state.error);
}

void Satellite_SetSiteGeoPosition(double x, double y, double z, double radius) {
    const Vector3 place{x, y, z};
    const double length = Length(place);
    if (!IsNearEarth(length) || !IsNearEarth(radius)) return;
    observer.unit = place / length;
    observer.radius = radius;
}

void Satellite_SetPrecession(double toEpoch, double fromEpoch) {
    if (IsEpoch(toEpoch) && IsEpoch(fromEpoch)) precession = PrecessionMatrix(toEpoch, fromEpoch);
}

void Satellite_PrecessRADEC(double* out, const double* in, int32_t* /*flag*/) {
    if (out == nullptr) return;
    Equatorial place;
    if (in != nullptr && std::isfinite(in[0]) && std::isfinite(in[1])) place = Precess(precession, {in[1], in[0]});
    out[0] = place.ra;
    out[1] = place.dec;
}

int32_t Satellite_CalcFlare(double jd, int32_t source, int32_t geometry, double x, double y, double z, double vx,
                            double vy, double vz, double angle, double tilt, double* centre, double* result) {
    const auto code = FlareGeometryOf(geometry);
    if (!code || !IsJulianDate(jd)) return 0;
    const LightSource light = SourceOfCode(source);
    const double greenwich = SiderealFromJD(jd);
    const Lights lights = LightsAt(jd, light, greenwich, observer.radius);
    const auto flare =
        EvaluateFlare(MakeMirrorSetting(*code, angle, tilt), light, lights, {x, y, z}, {vx, vy, vz}, greenwich);
    if (!flare) return 0;
    PutIfAny(centre, flare->centre);
    if (result == nullptr) return 1;
    std::fill_n(result, 5, 0.0);
    result[1] = Dot(Normalized(flare->centre), Normalized(lights.sun));
    result[2] = flare->incidence;
    return 1;
}

int32_t Satellite_FindFlare(double start, double length, int32_t source, double resolution, double siteRadius,
                            void* block, int32_t geometry, double angle, double tilt, double maxDistance, int8_t skip,
                            double* found) {
    Sgp4Record record;
    if (block == nullptr || !LoadRecord(block, record)) return 0;
    const GlintSurface surface{angle, tilt, 0, geometry, skip};
    return FirstFlare({start, length, source, resolution, siteRadius, maxDistance}, record, {&surface, 1}, found);
}

int32_t Satellite_FindFirstFlare(double start, double length, int32_t source, double resolution, double siteRadius,
                                 void* block, const GlintSurface* surfaces, int32_t count, double maxDistance,
                                 double* found) {
    Sgp4Record record;
    if (block == nullptr || surfaces == nullptr || count <= 0 || !LoadRecord(block, record)) return 0;
    const int32_t surface = FirstFlare({start, length, source, resolution, siteRadius, maxDistance}, record,
                                       {surfaces, static_cast<std::size_t>(count)}, found);
    StoreIntegrator(block, record);
    return surface;
}

void Satellite_DrawEarth(const GlintDrawTarget* target, const GlintViewConfig* config, int32_t n, const double* lat,
                         const double* lon, const int32_t* polygon, int32_t* bufferCount, void* buffer) {
    int32_t capacity = 0;
    if (bufferCount != nullptr) std::swap(capacity, *bufferCount);
    if (target == nullptr || config == nullptr || n <= 0 || lat == nullptr || lon == nullptr || polygon == nullptr)
        return;
    const auto view = EarthViewOf(*config);
    if (!view) return;
    ClearUpperHalves();
    const auto count = static_cast<std::size_t>(n);
    const bool hasRoom = buffer != nullptr && capacity > 0;
    const std::span<double> room(static_cast<double*>(buffer), hasRoom ? static_cast<std::size_t>(capacity) : 0);
    const std::size_t used = DrawEarth(*target, *view, {{lat, count}, {lon, count}, {polygon, count}}, room);
    if (bufferCount != nullptr) *bufferCount = static_cast<int32_t>(used);
}

void Satellite_DrawStars(const GlintDrawTarget* target, const GlintViewConfig* config, const int32_t* visible,
                         void* stars) {
    if (target == nullptr || target->dot == nullptr || config == nullptr || visible == nullptr || stars == nullptr)
        return;
    const int32_t count = config->StarCount;
    const auto view = StarViewOf(*config);
    if (!view || count <= 0) return;
    ClearUpperHalves();
    DrawStars(*target, *view, {visible, static_cast<std::size_t>(count)}, static_cast<unsigned char*>(stars));
}

}  // extern "C"
