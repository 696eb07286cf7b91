#include "flare/tracks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/astro/constants.h"

namespace glintara {

namespace {

constexpr double kSixthsOfATurn = 6;

/// The shortest track, revolutions.
constexpr double kLeastTurns = 1 / kSixthsOfATurn;

/// A number of steps that rounding has left just below a whole one is that whole one.
constexpr double kStepRounding = 1e-9;

}  // namespace

TrackQuest TrackQuestOf(const Application& app) {
    TrackQuest quest;
    quest.start = app.Data.SimTime;
    quest.turns = std::max(app.Data.View.OrbitTurns / kSixthsOfATurn, kLeastTurns);
    quest.stepsPerTurn = app.Run.FinePass ? kTrackStepsFine : kTrackSteps;
    quest.moon = app.Main.CMoonFlares.Value;
    quest.transit = app.Main.MnuTransitMode[kTransitEntry].Checked;
    quest.day = app.Main.CDayFlares.Value;
    quest.twilightSine = app.Data.TwilightSine;
    return quest;
}

Geodetic GroundPlaceOf(const TrackPoint& point) {
    Geodetic place = EcefToGeodetic(point.radius * point.centre);
    place.lon = FoldLongitude(place.lon);
    return place;
}

FlareTrack::FlareTrack(const CommonData& data, const SatRecord& satellite, const TrackQuest& quest)
    : data_(data),
      quest_(quest),
      surfaces_(SurfacesTakingPart(satellite, quest.transit)),
      block_(satellite.EngineBlock) {
    if (!(satellite.MeanMotion > 0) || surfaces_.Empty()) return;
    const double period = 1 / satellite.MeanMotion;
    end_ = quest.start + period * quest.turns;
    step_ = period / quest.stepsPerTurn;
    if (!std::isfinite(end_)) return;
    steps_ = static_cast<std::int32_t>(std::floor(quest.turns * quest.stepsPerTurn + kStepRounding));
    mirrors_ = static_cast<int>(surfaces_.All().size());
}

std::optional<TrackPoint> FlareTrack::At(int mirror, double jd) {
    const GlintSurface& surface = surfaces_.All()[static_cast<std::size_t>(mirror - 1)];
    const WorldMotion motion = PropagateSatellite(data_, EarthRotation::GivenJd, block_, jd);
    if (motion.result != 0) return std::nullopt;
    const std::optional<Flare> first = Evaluate(surface, jd, motion.position, motion.velocity);
    if (!first || FallsByDay(*first)) return std::nullopt;
    const double siteRadius = data_.Site.SiteRadius;
    const Geodetic ground = EcefToGeodetic(siteRadius * first->centre);
    const double radius = GeodeticToGeocentric({ground.lat, ground.lon, kTrackHeight}).radius;
    const std::optional<Flare> second = Evaluate(surface, jd, siteRadius / radius * motion.position, motion.velocity);
    if (!second) return std::nullopt;
    return TrackPoint{jd, mirror, second->centre, radius, second->incidence};
}

std::optional<FlareTrack::Flare> FlareTrack::Evaluate(const GlintSurface& surface, double jd, const Vector3& r,
                                                      const Vector3& v) const {
    std::array<double, 3> centre{};
    std::array<double, 5> result{};
    const int source = quest_.moon ? GLINTCORE_MOON : GLINTCORE_SUN;
    if (Satellite_CalcFlare(jd, source, surface.Geometry, r.x, r.y, r.z, v.x, v.y, v.z, surface.Angle, surface.Tilt,
                            centre.data(), result.data()) == 0)
        return std::nullopt;
    return Flare{{centre[0], centre[1], centre[2]}, result[1], std::abs(result[2])};
}

bool FlareTrack::FallsByDay(const Flare& flare) const {
    if (quest_.day || (quest_.transit && !quest_.moon)) return false;
    return flare.sunSine > quest_.twilightSine;
}

}  // namespace glintara
