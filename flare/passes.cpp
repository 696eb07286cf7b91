#include "flare/passes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"
#include "engine/glintcore.h"
#include "flare/attitude.h"
#include "flare/surface_models.h"

namespace glintara {

namespace {

constexpr double kSecond = 1 / kSecondsPerDay;
/// Precision asked for of beginnings, ends and nearest approaches.
constexpr double kResolution = 0.001 * kSecond;
/// Longest window of one engine call: progress is told and asked between two.
constexpr double kWindow = 0.25;
/// First step through a pass. Steps grow with the time that it has lasted, so that an hour of a slow one is not ten
/// thousand steps.
constexpr double kFirstStep = 0.1 * kSecond;
constexpr double kStepGrowth = 0.002;

/// The flare at one instant.
struct Moment {
    double jd = 0;
    double distance = 0;  // metres
    Vector3 centre;
    Vector3 satellite;
    std::array<double, 5> result{};
};

/// One surface of one satellite followed through the span.
class SurfacePasses {
  public:
    SurfacePasses(const CommonData& data, const PassQuest& quest, int satellite, int mirror)
        : data_(data),
          quest_(quest),
          satellite_(satellite),
          mirror_(mirror),
          block_(data.Satellite(satellite).EngineBlock),
          observer_(ObserverOnUnitSphere(data.Site)) {
        const SurfaceModel& surface = data.Satellite(satellite).Surface;
        geometry_ = GeometryCodeOf(surface.OrientationType, quest.transit);
        if (!quest.transit) {
            angle_ = surface.Mirror(mirror).Angle * kDegToRad;
            tilt_ = surface.Mirror(mirror).Tilt * kDegToRad;
        }
    }

    /// Appends the passes that begin in the window. Returns where the next window starts: behind the last pass.
    double AppendPasses(double from, double to, std::vector<FlarePass>& passes) {
        while (from < to) {
            double begin = 0;
            if (Satellite_FindFlare(from, to - from, Source(), kResolution, data_.Site.SiteRadius, &block_, geometry_,
                                    angle_, tilt_, quest_.maxDistance, 0, &begin) == 0)
                return to;
            from = AppendPass(begin, passes);
        }
        return from;
    }

  private:
    int Source() const { return quest_.moon ? GLINTCORE_MOON : GLINTCORE_SUN; }

    std::optional<Moment> At(double jd) {
        const WorldMotion motion = PropagateSatellite(data_, EarthRotation::GivenJd, block_, jd);
        Moment moment;
        std::array<double, 3> centre{};
        const Vector3& r = motion.position;
        const Vector3& v = motion.velocity;
        const int some = Satellite_CalcFlare(jd, Source(), geometry_, r.x, r.y, r.z, v.x, v.y, v.z, angle_, tilt_,
                                             centre.data(), moment.result.data());
        if (some == 0) return std::nullopt;
        moment.jd = jd;
        moment.centre = {centre[0], centre[1], centre[2]};
        moment.satellite = r;
        moment.distance = Length(moment.centre - observer_) * data_.Site.SiteRadius;
        return moment;
    }

    std::optional<Moment> NearAt(double jd) {
        std::optional<Moment> moment = At(jd);
        return moment && moment->distance < quest_.maxDistance ? moment : std::nullopt;
    }

    /// Follows the pass that begins at `begin`, appends it, and returns an instant behind it.
    double AppendPass(double begin, std::vector<FlarePass>& passes) {
        const double spanEnd = quest_.start + quest_.days;
        std::optional<Moment> best = NearAt(begin);
        if (!best) return begin + kResolution;  // shorter than a Julian date can tell
        double before = begin;                  // neighbours of the best moment
        double after = begin;
        double last = begin;
        double step = kFirstStep;
        double outside = spanEnd;
        for (double jd = begin + step; jd < spanEnd; jd += step) {
            const std::optional<Moment> moment = NearAt(jd);
            if (!moment) {
                outside = jd;
                break;
            }
            if (moment->distance < best->distance) {
                best = moment;
                before = last;
                after = jd;
            } else if (after == best->jd) {
                after = jd;
            }
            last = jd;
            step = std::max(kFirstStep, kStepGrowth * (jd - begin));
        }
        const double end = PassEnd(last, outside);
        if (after == best->jd) after = end;
        passes.push_back(Described(begin, Closest(before, after, *best), end));
        return end + kResolution;
    }

    /// The last instant of the pass between `inside` and `outside`.
    double PassEnd(double inside, double outside) {
        while (outside - inside > kResolution) {
            const double middle = (inside + outside) / 2;
            (NearAt(middle) ? inside : outside) = middle;
        }
        return inside;
    }

    /// The nearest moment between two instants around the nearest sample, by sections of three.
    Moment Closest(double before, double after, Moment best) {
        while (after - before > kResolution) {
            const double third = (after - before) / 3;
            const std::optional<Moment> left = NearAt(before + third);
            const std::optional<Moment> right = NearAt(after - third);
            for (const std::optional<Moment>& moment : {left, right})
                if (moment && moment->distance < best.distance) best = *moment;
            if (right && (!left || right->distance < left->distance))
                before += third;
            else
                after -= third;
        }
        return best;
    }

    FlarePass Described(double begin, const Moment& closest, double end) const {
        FlarePass pass;
        pass.satellite = satellite_;
        pass.mirror = mirror_;
        pass.begin = begin;
        pass.closest = closest.jd;
        pass.end = end;
        pass.distance = closest.distance;
        pass.centre = EcefToGeodetic(data_.Site.SiteRadius * closest.centre);
        pass.centre.lon = FoldLongitude(pass.centre.lon);
        pass.sunElevation = ArcSin(closest.result[1]);
        pass.sunMirrorAngle = quest_.transit ? 0 : ArcCos(std::abs(closest.result[2]));
        pass.sky = WorldToHorizon(data_.Site, closest.satellite);
        pass.range = Length(closest.satellite - observer_) * data_.Site.SiteRadius;
        return pass;
    }

    const CommonData& data_;
    const PassQuest& quest_;
    int satellite_;
    int mirror_;
    int geometry_ = 0;
    double angle_ = 0;  // radians
    double tilt_ = 0;   // radians
    EngineBlock block_;
    Vector3 observer_;
};

bool TakesPart(const SatRecord& satellite, bool transit) {
    return !satellite.IsDisabled() && (transit || HasFlareModel(satellite));
}

}  // namespace

bool HasCandidates(const CommonData& data, bool transit) {
    for (int s = 1; s <= data.SatCount; ++s)
        if (TakesPart(data.Satellite(s), transit)) return true;
    return false;
}

std::vector<FlarePass> ListPasses(const CommonData& data, const PassQuest& quest,
                                  const std::function<bool(double)>& progress) {
    std::vector<FlarePass> passes;
    const double spanEnd = quest.start + quest.days;
    bool goesOn = true;
    for (int s = 1; s <= data.SatCount && goesOn; ++s) {
        if (!TakesPart(data.Satellite(s), quest.transit)) continue;
        const int count = quest.transit ? 1 : data.Satellite(s).Surface.MirrorCount;
        for (int i = 1; i <= count && goesOn; ++i) {
            SurfacePasses surface(data, quest, s, i);
            for (double from = quest.start; from < spanEnd && goesOn;) {
                from = surface.AppendPasses(from, std::min(from + kWindow, spanEnd), passes);
                const double done = (i - 1 + (from - quest.start) / quest.days) / count;
                goesOn = !progress || progress((s - 1 + std::min(done, 1.0)) / data.SatCount);
            }
        }
    }
    std::stable_sort(passes.begin(), passes.end(),
                     [](const FlarePass& a, const FlarePass& b) { return a.closest < b.closest; });
    return passes;
}

}  // namespace glintara
