#include "engine/flares/flare_search.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"

namespace glintara {

namespace {

/// Gravitational parameter of the propagator, m^3/s^2 (WGS 72).
constexpr double kMu = 398600.8e9;
/// Greatest angular speed of the Earth's surface, radians per second, rounded up.
constexpr double kEarthRate = 7.30e-5;
/// Greatest angular speeds of Sun and Moon among the stars, radians per second, rounded up: the Sun makes 1.02 degrees
/// a day at perihelion, the Moon 15.4 at its nearest.
constexpr double kSunRate = 2.2e-7;
constexpr double kMoonRate = 3.5e-6;
/// The bounds come from the Kepler orbit of one instant; perturbations move speeds by less than one in a hundred.
constexpr double kRateMargin = 1.04;
/// Apogee of that orbit, likewise.
constexpr double kApogeeMargin = 1.02;
/// Orbital planes turn by perturbations at up to this, radians per second.
constexpr double kPlaneRate = 1e-5;
/// Perigee below which rates are not raised further: a satellite inside the Earth throws no flares.
constexpr double kDeepestPerigee = 0.5;
/// Seconds of a piece within which Sun and Moon are interpolated: the Moon moves half a degree, and a parabola follows
/// it to 1e-8 radians.
constexpr double kPieceLength = 3600;
/// A satellite this far below the horizon is not looked at closer, seconds.
constexpr double kFarBelow = 30;
/// Where the propagator reports an error its numbers may jump, or race: no bound holds, and one look a second is
/// enough.
constexpr double kErrorStep = 1;
/// A mirror whose frame is undefined, with its reference along the vertical, is looked at again after this, seconds.
constexpr double kNoFrameStep = 0.1;

double ClampedArcCos(double x) { return std::acos(std::clamp(x, -1.0, 1.0)); }
double ClampedArcSin(double x) { return std::asin(std::clamp(x, -1.0, 1.0)); }

/// For how long the angle between a beam and a target stays too wide: the target, a ball of radius `ball` at distance
/// `range`, shifts sideways by at most `speed`, the beam turns by at most `turn` per second, and `angle` lies between
/// beam and target now.
double AimLasts(double angle, double range, double ball, double speed, double turn) {
    const double longest = (range - ball) / speed;
    const double now = ClampedArcSin(ball / range);
    if (!(longest > 0) || angle <= now) return 0;
    // The reach of beam and target, asin((ball + speed t) / range) + turn t, is convex in t: its tangent gives an
    // instant that is not too early, and the chord up to there one that is not too late.
    const double sine = ball / range;
    const double slope = speed / (range * std::sqrt(std::max(1 - sine * sine, 1e-12))) + turn;
    const double end = std::min(longest, (angle - now) / slope);
    const double atEnd = ClampedArcSin((ball + speed * end) / range) + turn * end;
    return atEnd <= angle ? end : end * (angle - now) / (atEnd - now);
}

}  // namespace

struct FlareSearch::Scene {
    Vector3 r;
    Vector3 v;
    Vector3 site;
    Vector3 source;
    Vector3 sun;
    double radius = 0;
};

Vector3 FlareSearch::Body::At(double fraction) const {
    const double a = (1 - fraction) * (1 - 2 * fraction);
    const double b = 4 * fraction * (1 - fraction);
    const double c = fraction * (2 * fraction - 1);
    return a * first + b * middle + c * last;
}

FlareSearch::FlareSearch(const Sgp4Record& record, const FlareQuest& quest, double start)
    : record_(record),
      quest_(quest),
      start_(start),
      startMinutes_(MinutesSinceEpoch(record, start)),
      capAngle_(2 * ClampedArcSin(quest.maxDistance / 2)) {}

void FlareSearch::SetRates(const Vector3& r, const Vector3& v) {
    const double unit = quest_.siteRadius;
    const double mu = kMu / (unit * unit * unit);
    const double radius = Length(r);
    const double momentum = Length(CrossProduct(r, v));
    const double energy = Dot(v, v) / 2 - mu / radius;
    const double eccentricity = std::sqrt(std::max(0.0, 1 + 2 * energy * momentum * momentum / (mu * mu)));
    const double parameter = momentum * momentum / mu;
    const double perigee = std::max(parameter / (1 + eccentricity), kDeepestPerigee);

    rates_.speed = kRateMargin * std::max(Length(v), std::sqrt(2 * (std::max(energy, 0.0) + mu / perigee)));
    rates_.orbit = kRateMargin * rates_.speed / perigee;
    double farthest = std::numeric_limits<double>::infinity();
    if (energy < 0 && eccentricity < 1) {
        farthest = std::max(radius, kApogeeMargin * parameter / (1 - eccentricity));
        rates_.speed = kRateMargin * std::max(Length(v), momentum / perigee);
        rates_.orbit = rates_.speed / perigee;
    }
    rates_.horizonAngle = ClampedArcCos(1 / farthest) + capAngle_;

    const double sunRange = kSunDistance / unit;
    rates_.sunSight = kSunRate + rates_.speed / std::max(sunRange - farthest, 1.0);
    if (quest_.source == LightSource::Moon) {
        rates_.source = kMoonRate;
        rates_.incident = kMoonRate + rates_.speed / std::max(0.9 * Length(moon_.middle) - farthest, 1.0);
    } else {
        rates_.source = kSunRate;
        rates_.incident = rates_.sunSight;
    }
}

void FlareSearch::EnterPiece(double seconds) {
    pieceStart_ = kPieceLength * std::floor(seconds / kPieceLength);
    pieceEnd_ = pieceStart_ + kPieceLength;
    const auto lightsAt = [&](double s) {
        return LightsAt(start_ + s / kSecondsPerDay, quest_.source, 0, quest_.siteRadius);
    };
    const Lights first = lightsAt(pieceStart_);
    const Lights middle = lightsAt(pieceStart_ + kPieceLength / 2);
    const Lights last = lightsAt(pieceEnd_);
    sun_ = {first.sun, middle.sun, last.sun};
    moon_ = {first.moon, middle.moon, last.moon};
}

Vector3 FlareSearch::SunAt(double seconds) const { return sun_.At((seconds - pieceStart_) / kPieceLength); }

Vector3 FlareSearch::SourceAt(double seconds) const {
    return quest_.source == LightSource::Moon ? moon_.At((seconds - pieceStart_) / kPieceLength) : SunAt(seconds);
}

FlareSearch::Answer FlareSearch::At(double seconds) {
    const Sgp4State state = Sgp4AtMinutes(record_, startMinutes_ + seconds / 60);
    const double scale = 1000 / quest_.siteRadius;
    Scene scene;
    scene.r = scale * state.position;
    scene.v = scale * state.velocity;
    if (seconds >= pieceEnd_ || seconds < pieceStart_) {
        EnterPiece(seconds);
        SetRates(scene.r, scene.v);
    }
    scene.radius = Length(scene.r);
    const bool failed = state.error != Sgp4Error::None;
    if (!(scene.radius > 1) || !std::isfinite(rates_.speed)) {
        const double lasts = (1 - scene.radius) / rates_.speed;
        const double least = failed ? kErrorStep : 0;
        return {false, std::isfinite(lasts) ? std::max(lasts, least) : kErrorStep};
    }

    scene.site = TurnedAboutPole(quest_.site, SiderealFromJD(start_ + seconds / kSecondsPerDay));
    const double apart = ClampedArcCos(Dot(scene.r, scene.site) / scene.radius);
    const double below = (apart - rates_.horizonAngle) / (rates_.orbit + kEarthRate);
    if (below > kFarBelow && !failed) return {false, below};
    scene.source = SourceAt(seconds);
    scene.sun = quest_.source == LightSource::Moon ? SunAt(seconds) : scene.source;
    Answer answer = BeamAnswer(scene);
    if (!answer.flare) answer.lasts = std::max(answer.lasts, below);
    if (failed || !std::isfinite(answer.lasts)) answer.lasts = kErrorStep;
    return answer;
}

FlareSearch::Answer FlareSearch::BeamAnswer(const Scene& scene) const {
    constexpr double forever = std::numeric_limits<double>::infinity();
    const Vector3& r = scene.r;
    const Vector3 ray = Normalized(r - scene.source);

    // The beam, and how fast the mirror's normal turns.
    Vector3 beam = ray;
    double onNormal = -1;
    double normalRate = 0;
    double trusted = forever;  // for how long `normalRate` holds
    bool dark = false;
    double shadeLasts = forever;
    if (quest_.mirror.geometry != FlareGeometry::Transit) {
        const Vector3 normal = NormalOf(quest_.mirror, r, scene.v, scene.sun, 0);
        if (!IsFinite(normal)) return {false, kNoFrameStep};
        onNormal = Dot(ray, normal);
        beam = ray - 2 * onNormal * normal;
        if (quest_.mirror.geometry == FlareGeometry::AlongTrack) {
            normalRate = rates_.orbit + kPlaneRate;
        } else if (quest_.mirror.geometry == FlareGeometry::VerticalSun) {
            // Near the sub-solar point the Sun's azimuth, and the body with it, turns fast: as 1 over the sine of its
            // zenith distance. Until that sine has halved, the rate is at most twice that.
            const double sine = Length(CrossProduct(r / scene.radius, Normalized(scene.sun - r)));
            const double swing = rates_.orbit + rates_.sunSight;
            normalRate = 2 * swing / sine;
            trusted = 0.5 * sine / swing;
        }

        const Vector3 u = Normalized(scene.source);
        const double along = Dot(r, u);
        const double across = Length(CrossProduct(r, u));
        const double shift = rates_.speed + scene.radius * rates_.source;
        dark = InShadow(r, u);
        shadeLasts = dark ? std::min(1 - across, -along) / shift : std::max(across - 1, along) / shift;
    }
    const bool lit = onNormal <= 0;
    const double litLasts = ClampedArcSin(std::abs(onNormal)) / (normalRate + rates_.incident);
    const double beamRate = 2 * normalRate + rates_.incident;

    // How far the beam's line passes from the Earth's centre, and how fast that can change.
    const double nearness = Length(CrossProduct(r, beam));
    const double drift = rates_.speed + scene.radius * beamRate;
    const double away = Dot(r, beam);

    const std::optional<Vector3> foot = IntersectEarth(r, beam);
    const double distance = foot ? Length(*foot - scene.site) : forever;
    const bool inside = distance < quest_.maxDistance;
    double footLasts = 0;
    if (foot) {
        // The foot moves with the beam (`carry`), and where the light comes in low it runs ahead along its line as the
        // sine of its elevation changes. Each may use half of the room up to the border of the distance.
        const double half = std::abs(distance - quest_.maxDistance) / 2;
        const double carry = drift + std::numbers::sqrt2 * beamRate + kEarthRate;
        footLasts = half / carry;
        const double sine = std::sqrt(std::max(0.0, 1 - nearness * nearness));
        double shift = half * (2 * sine + half) / (2 * nearness);  // raises the sine by `half` at the most
        if (half < sine) {
            // Lowering it by `half` takes less, and the beam has not yet left the limb then.
            const double left = sine * sine - (sine - half) * (sine - half);
            shift = left / (nearness + std::sqrt(nearness * nearness + left));
        }
        footLasts = std::min(footLasts, shift / drift);
    }

    if (inside && lit && !dark) {
        const double stays = std::min(footLasts, (1 - nearness) / drift);
        return {true, std::min({stays, litLasts, shadeLasts, trusted})};
    }
    double lasts = footLasts;
    if (!foot)
        lasts = std::max(nearness - 1, away) / drift;
    else if (inside)
        lasts = 0;
    if (!lit) lasts = std::max(lasts, litLasts);
    const Vector3 sight = scene.site - r;
    const double range = Length(sight);
    lasts = std::max(lasts, AimLasts(ClampedArcCos(Dot(beam, sight) / range), range, quest_.maxDistance,
                                     rates_.speed + kEarthRate, beamRate));
    lasts = std::min(lasts, trusted);
    if (dark) lasts = std::max(lasts, shadeLasts);
    return {false, lasts};
}

std::optional<double> FlareSearch::FirstFlare(double from, double to) {
    for (double t = from; t < to;) {
        const Answer answer = At(t);
        if (answer.flare) return t;
        t += std::max(answer.lasts, quest_.finestStep);
    }
    return std::nullopt;
}

double FlareSearch::PassEnd(double from, double to) {
    for (double t = from; t < to;) {
        const Answer answer = At(t);
        if (!answer.flare) return t;
        t += std::max(answer.lasts, quest_.finestStep);
    }
    return to;
}

namespace {

/// The search in a window across which the sidereal angle is continuous.
std::optional<double> FindInWindow(const Sgp4Record& record, const FlareQuest& quest, double start, double seconds,
                                   bool skip) {
    FlareSearch search(record, quest, start);
    double from = 0;
    std::optional<double> found = search.FirstFlare(from, seconds);
    if (!found && seconds <= 0 && search.FlareAt(0)) found = 0;
    while (skip && found && *found <= kSkipGuard) {
        from = search.PassEnd(*found, seconds);
        found = search.FirstFlare(from, seconds);
    }
    if (!found) return std::nullopt;
    // A Julian date in a double is good to 40 microseconds; the one handed out shall itself lie in the flare.
    double jd = start + *found / kSecondsPerDay;
    constexpr int kRoundingSteps = 4;
    for (int i = 0; i < kRoundingSteps && !search.FlareAt((jd - start) * kSecondsPerDay); ++i)
        jd = std::nextafter(jd, std::numeric_limits<double>::infinity());
    return jd;
}

}  // namespace

std::optional<double> FindFlare(const Sgp4Record& record, const FlareQuest& quest, double start, double length,
                                bool skip) {
    const bool sane = std::isfinite(start) && length >= 0 && quest.maxDistance > 0 && quest.siteRadius > 0 &&
                      std::isfinite(quest.siteRadius) && IsFinite(quest.site) && IsFinite(quest.mirror.components);
    if (!sane) return std::nullopt;
    const double window = std::min(length, kLongestWindow);
    // The Greenwich angle changes its sign at noon of 1 January 2000: no rate bounds the observer's motion across that
    // instant.
    if (start < kJ2000 && start + window > kJ2000) {
        const double before = (kJ2000 - start) * kSecondsPerDay;
        if (const auto found = FindInWindow(record, quest, start, before, skip)) return found;
        const bool guarded = skip && before <= kSkipGuard;
        return FindInWindow(record, quest, kJ2000, (window - (kJ2000 - start)) * kSecondsPerDay, guarded);
    }
    return FindInWindow(record, quest, start, window * kSecondsPerDay, skip);
}

}  // namespace glintara
