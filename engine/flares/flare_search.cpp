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
constexpr double kMuKilometres = kMu * 1e-9;
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
/// Where no bound can be had one look a second is enough.
constexpr double kBlindStep = 1;
/// Steps through a stretch in error, seconds: each is twice the one before, from the first of these to the last.
constexpr double kFirstErrorStep = 1;
constexpr double kLastErrorStep = 600;
/// The longest of them while the orbit, decayed at its perigee, still leaves the Earth in between.
constexpr double kLastDecayedStep = 60;
/// Radius of the Earth below which the propagator calls a satellite decayed, kilometres (WGS 72).
constexpr double kDecayRadius = 6378.135;
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

/// Whether the orbit of a decayed satellite comes up from the Earth.
bool ComesUp(const Sgp4State& state) {
    const double radius = Length(state.position);
    const double energy = Dot(state.velocity, state.velocity) / 2 - kMuKilometres / radius;
    const double momentum = Length(CrossProduct(state.position, state.velocity));
    const double axis = -kMuKilometres / (2 * energy);
    const double eccentricity = std::sqrt(std::max(0.0, 1 - momentum * momentum / (kMuKilometres * axis)));
    return !(kApogeeMargin * axis * (1 + eccentricity) < kDecayRadius);
}

}  // namespace

Vector3 FlareSearch::Body::At(double fraction) const {
    const double a = (1 - fraction) * (1 - 2 * fraction);
    const double b = 4 * fraction * (1 - fraction);
    const double c = fraction * (2 * fraction - 1);
    return a * first + b * middle + c * last;
}

FlareSearch::FlareSearch(Sgp4Record& record, const FlareQuest& quest, double start)
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

Sgp4State FlareSearch::Propagated(double seconds) {
    ++propagations_;
    return Sgp4AtMinutes(record_, startMinutes_ + seconds / 60);
}

double FlareSearch::ErrorEnd(double from, double to) {
    double bad = from;
    double step = kFirstErrorStep;
    while (bad < to) {
        double good = std::min(bad + step, to);
        const Sgp4State state = Propagated(good);
        if (state.error == Sgp4Error::None) {
            while (good - bad > quest_.finestStep) {
                const double middle = (bad + good) / 2;
                (Propagated(middle).error == Sgp4Error::None ? good : bad) = middle;
            }
            return good;
        }
        bad = good;
        const bool maySurface = state.error == Sgp4Error::Decayed && ComesUp(state);
        step = std::min(2 * step, maySurface ? kLastDecayedStep : kLastErrorStep);
    }
    return to;
}

FlareSearch::Scene FlareSearch::SceneAt(double seconds, double to) {
    Scene scene;
    const Sgp4State state = Propagated(seconds);
    if (state.error != Sgp4Error::None) {
        scene.quiet = ErrorEnd(seconds, to) - seconds;
        ratesHold_ = false;
        return scene;
    }
    const double scale = 1000 / quest_.siteRadius;
    scene.r = scale * state.position;
    scene.v = scale * state.velocity;
    if (seconds >= pieceEnd_ || seconds < pieceStart_) {
        EnterPiece(seconds);
        ratesHold_ = false;
    }
    if (!ratesHold_) SetRates(scene.r, scene.v);
    ratesHold_ = true;
    scene.radius = Length(scene.r);
    if (!(scene.radius > 1) || !std::isfinite(rates_.speed)) {
        const double lasts = (1 - scene.radius) / rates_.speed;
        scene.quiet = std::isfinite(lasts) ? lasts : kBlindStep;
        return scene;
    }

    scene.site = TurnedAboutPole(quest_.site, SiderealFromJD(start_ + seconds / kSecondsPerDay));
    const double apart = ClampedArcCos(Dot(scene.r, scene.site) / scene.radius);
    scene.quiet = (apart - rates_.horizonAngle) / (rates_.orbit + kEarthRate);
    scene.open = !(scene.quiet > kFarBelow);
    if (scene.open) AddSurroundings(seconds, scene);
    return scene;
}

void FlareSearch::AddSurroundings(double seconds, Scene& scene) const {
    scene.source = SourceAt(seconds);
    scene.sun = quest_.source == LightSource::Moon ? SunAt(seconds) : scene.source;
    scene.ray = Normalized(scene.r - scene.source);
    const Vector3 u = Normalized(scene.source);
    const double along = Dot(scene.r, u);
    const double across = Length(CrossProduct(scene.r, u));
    const double shift = rates_.speed + scene.radius * rates_.source;
    scene.dark = InShadow(scene.r, u);
    scene.shadeLasts = scene.dark ? std::min(1 - across, -along) / shift : std::max(across - 1, along) / shift;
    const Vector3 sight = scene.site - scene.r;
    scene.range = Length(sight);
    scene.sight = sight / scene.range;
}

FlareSearch::FrameMotion FlareSearch::FrameIn(FlareGeometry geometry, const Scene& scene) const {
    constexpr double forever = std::numeric_limits<double>::infinity();
    FrameMotion motion;
    motion.frame = FrameOf(geometry, scene.r, scene.v, scene.sun, 0);
    motion.trusted = forever;
    switch (geometry) {
        case FlareGeometry::Transit:
        case FlareGeometry::Inertial:
            break;
        case FlareGeometry::AlongTrack:
            motion.rate = rates_.orbit + kPlaneRate;
            break;
        case FlareGeometry::VerticalSun: {
            // Near the sub-solar point the Sun's azimuth, and the body with it, turns fast: as 1 over the sine of its
            // zenith distance. Until that sine has halved, the rate is at most twice that.
            const double sine = Length(CrossProduct(scene.r / scene.radius, Normalized(scene.sun - scene.r)));
            const double swing = rates_.orbit + rates_.sunSight;
            motion.rate = 2 * swing / sine;
            motion.trusted = 0.5 * sine / swing;
            break;
        }
    }
    return motion;
}

FlareSearch::Answer FlareSearch::BeamAnswer(const MirrorSetting& mirror, Scene& scene) const {
    constexpr double forever = std::numeric_limits<double>::infinity();
    const Vector3& r = scene.r;

    // The beam, and how fast the mirror's normal turns.
    Vector3 beam = scene.ray;
    double onNormal = -1;
    double normalRate = 0;
    double trusted = forever;  // for how long `normalRate` holds
    bool dark = false;
    double shadeLasts = forever;
    if (mirror.geometry != FlareGeometry::Transit) {
        if (!scene.frame || scene.frameGeometry != mirror.geometry) {
            scene.frame = FrameIn(mirror.geometry, scene);
            scene.frameGeometry = mirror.geometry;
        }
        const FrameMotion& body = *scene.frame;
        const Vector3 normal = OnFrame(mirror.components, body.frame);
        if (!IsFinite(normal)) return {false, kNoFrameStep};
        onNormal = Dot(scene.ray, normal);
        beam = scene.ray - 2 * onNormal * normal;
        normalRate = body.rate;
        trusted = body.trusted;
        dark = scene.dark;
        shadeLasts = scene.shadeLasts;
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
    lasts = std::max(lasts, AimLasts(ClampedArcCos(Dot(beam, scene.sight)), scene.range, quest_.maxDistance,
                                     rates_.speed + kEarthRate, beamRate));
    lasts = std::min(lasts, trusted);
    if (dark) lasts = std::max(lasts, shadeLasts);
    return {false, lasts};
}

std::optional<FlareSearch::Hit> FlareSearch::FirstFlare(std::span<WatchedMirror> mirrors, double to) {
    constexpr double never = std::numeric_limits<double>::infinity();
    for (;;) {
        double t = never;
        for (const WatchedMirror& watched : mirrors) t = std::min(t, watched.from);
        if (!(t < to)) return std::nullopt;
        Scene scene = SceneAt(t, to);
        const double quietUntil = t + std::max(scene.quiet, quest_.finestStep);
        for (std::size_t i = 0; i < mirrors.size(); ++i) {
            WatchedMirror& watched = mirrors[i];
            if (!scene.open) {
                watched.from = std::max(watched.from, quietUntil);
                continue;
            }
            if (watched.from > t) continue;
            const Answer answer = BeamAnswer(watched.mirror, scene);
            if (answer.flare) return Hit{t, i};
            const double lasts = std::isfinite(answer.lasts) ? answer.lasts : kBlindStep;
            watched.from = t + std::max({lasts, scene.quiet, quest_.finestStep});
        }
    }
}

double FlareSearch::PassEnd(const MirrorSetting& mirror, double from, double to) {
    for (double t = from; t < to;) {
        Scene scene = SceneAt(t, to);
        if (!scene.open) return t;
        const Answer answer = BeamAnswer(mirror, scene);
        if (!answer.flare) return t;
        t += std::max(answer.lasts, quest_.finestStep);
    }
    return to;
}

bool FlareSearch::FlareAt(const MirrorSetting& mirror, double seconds) {
    Scene scene = SceneAt(seconds, seconds);
    return scene.open && BeamAnswer(mirror, scene).flare;
}

namespace {

/// The mirrors of one call, in a place of their own: nothing here allocates.
using Watched = std::array<WatchedMirror, kMostWatched>;

/// The search in a window across which the sidereal angle is continuous. `mirrors` count from its start.
std::optional<FoundFlare> FindInWindow(Sgp4Record& record, const FlareQuest& quest, std::span<WatchedMirror> mirrors,
                                       double start, double seconds, std::int64_t& propagations) {
    FlareSearch search(record, quest, start);
    std::optional<FlareSearch::Hit> hit;
    while ((hit = search.FirstFlare(mirrors, seconds))) {
        WatchedMirror& watched = mirrors[hit->mirror];
        if (!watched.skip || hit->seconds > kSkipGuard) break;
        watched.from = search.PassEnd(watched.mirror, hit->seconds, seconds);
    }
    // A window without length is one instant.
    for (std::size_t i = 0; i < mirrors.size() && !hit && seconds <= 0; ++i)
        if (!mirrors[i].skip && mirrors[i].from <= 0 && search.FlareAt(mirrors[i].mirror, 0))
            hit = FlareSearch::Hit{0, i};
    std::optional<FoundFlare> found;
    if (hit) {
        // A Julian date in a double is good to 40 microseconds; the one handed out shall itself lie in the flare.
        const MirrorSetting& mirror = mirrors[hit->mirror].mirror;
        double jd = start + hit->seconds / kSecondsPerDay;
        constexpr int kRoundingSteps = 4;
        for (int i = 0; i < kRoundingSteps && !search.FlareAt(mirror, (jd - start) * kSecondsPerDay); ++i)
            jd = std::nextafter(jd, std::numeric_limits<double>::infinity());
        found = FoundFlare{jd, hit->mirror};
    }
    propagations += search.Propagations();
    return found;
}

}  // namespace

std::optional<FoundFlare> FindFlare(Sgp4Record& record, const FlareQuest& quest, std::span<const WatchedMirror> mirrors,
                                    double start, double length, std::int64_t* propagations) {
    const bool sane = std::isfinite(start) && length >= 0 && length <= kLongestWindow && quest.maxDistance > 0 &&
                      quest.siteRadius > 0 && std::isfinite(quest.siteRadius) && IsFinite(quest.site) &&
                      mirrors.size() <= kMostWatched;
    if (!sane) return std::nullopt;
    Watched room;
    const std::span<WatchedMirror> watched(room.data(), mirrors.size());
    std::int64_t cost = 0;
    std::optional<FoundFlare> found;
    double seconds = length * kSecondsPerDay;
    std::ranges::copy(mirrors, watched.begin());
    if (start < kJ2000 && start + length > kJ2000) {
        // The Greenwich angle changes its sign at noon of 1 January 2000: no rate bounds the observer's motion across
        // that instant.
        const double before = (kJ2000 - start) * kSecondsPerDay;
        found = FindInWindow(record, quest, watched, start, before, cost);
        for (std::size_t i = 0; i < watched.size(); ++i) {
            watched[i].from = std::max(mirrors[i].from - before, 0.0);
            watched[i].skip = mirrors[i].skip && before <= kSkipGuard;
        }
        start = kJ2000;
        seconds -= before;
    }
    if (!found) found = FindInWindow(record, quest, watched, start, seconds, cost);
    if (propagations != nullptr) *propagations += cost;
    return found;
}

}  // namespace glintara
