#include "flare/passes.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <optional>
#include <span>
#include <system_error>
#include <thread>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/trigonometry.h"
#include "engine/glintcore.h"
#include "flare/attitude.h"

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
/// More threads than this are of no use to anybody.
constexpr int kMostThreads = 256;
/// Progress is told this often while the calling thread has nothing left to do but wait.
constexpr std::chrono::milliseconds kProgressPause{100};

/// The end of the span, as far as the engine goes.
double SpanEnd(const PassQuest& quest) { return std::min(quest.start + quest.days, GLINTCORE_LAST_JD); }

/// The flare at one instant.
struct Moment {
    double jd = 0;
    double distance = 0;  // metres
    Vector3 centre;
    Vector3 satellite;
    std::array<double, 5> result{};
};

/// The surfaces of one satellite followed through the span.
class SatellitePasses {
  public:
    SatellitePasses(const CommonData& data, const PassQuest& quest, int satellite)
        : data_(data),
          quest_(quest),
          satellite_(satellite),
          surfaces_(SurfacesTakingPart(data.Satellite(satellite), quest.transit)),
          block_(data.Satellite(satellite).EngineBlock),
          observer_(ObserverOnUnitSphere(data.Site)) {}

    /// Appends the passes that begin in the window, which begins where the one before ended.
    void AppendPasses(double from, double to, std::vector<FlarePass>& passes) {
        const std::span<GlintSurface> surfaces = surfaces_.All();
        while (from < to) {
            double begin = 0;
            const int found = Satellite_FindFirstFlare(
                from, to - from, Source(), kResolution, data_.Site.SiteRadius, &block_, surfaces.data(),
                static_cast<std::int32_t>(surfaces.size()), quest_.maxDistance, &begin);
            if (found == 0) return;
            // This surface is asked again behind the pass, the others from here on.
            surfaces[static_cast<std::size_t>(found - 1)].From = AppendPass(begin, found, passes);
            from = begin;
        }
    }

  private:
    int Source() const { return quest_.moon ? GLINTCORE_MOON : GLINTCORE_SUN; }

    std::optional<Moment> At(double jd, const GlintSurface& surface) {
        const WorldMotion motion = PropagateSatellite(data_, EarthRotation::GivenJd, block_, jd);
        if (motion.result != 0) return std::nullopt;
        Moment moment;
        std::array<double, 3> centre{};
        const Vector3& r = motion.position;
        const Vector3& v = motion.velocity;
        const int some = Satellite_CalcFlare(jd, Source(), surface.Geometry, r.x, r.y, r.z, v.x, v.y, v.z,
                                             surface.Angle, surface.Tilt, centre.data(), moment.result.data());
        if (some == 0) return std::nullopt;
        moment.jd = jd;
        moment.centre = {centre[0], centre[1], centre[2]};
        moment.satellite = r;
        moment.distance = Length(moment.centre - observer_) * data_.Site.SiteRadius;
        return moment;
    }

    std::optional<Moment> NearAt(double jd, const GlintSurface& surface) {
        std::optional<Moment> moment = At(jd, surface);
        return moment && moment->distance < quest_.maxDistance ? moment : std::nullopt;
    }

    /// Follows the pass of surface `mirror` that begins at `begin`, appends it, and returns an instant behind it.
    double AppendPass(double begin, int mirror, std::vector<FlarePass>& passes) {
        const GlintSurface& surface = surfaces_.All()[static_cast<std::size_t>(mirror - 1)];
        const double spanEnd = SpanEnd(quest_);
        std::optional<Moment> best = NearAt(begin, surface);
        if (!best) return begin + kResolution;  // shorter than a Julian date can tell
        double before = begin;                  // neighbours of the best moment
        double after = begin;
        double last = begin;
        double step = kFirstStep;
        double outside = spanEnd;
        for (double jd = begin + step; jd < spanEnd; jd += step) {
            const std::optional<Moment> moment = NearAt(jd, surface);
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
        const double end = PassEnd(last, outside, surface);
        if (after == best->jd) after = end;
        passes.push_back(Described(mirror, begin, Closest(before, after, *best, surface), end));
        return end + kResolution;
    }

    /// The last instant of the pass between `inside` and `outside`.
    double PassEnd(double inside, double outside, const GlintSurface& surface) {
        while (outside - inside > kResolution) {
            const double middle = (inside + outside) / 2;
            (NearAt(middle, surface) ? inside : outside) = middle;
        }
        return inside;
    }

    /// The nearest moment between two instants around the nearest sample, by sections of three.
    Moment Closest(double before, double after, Moment best, const GlintSurface& surface) {
        while (after - before > kResolution) {
            const double third = (after - before) / 3;
            const std::optional<Moment> left = NearAt(before + third, surface);
            const std::optional<Moment> right = NearAt(after - third, surface);
            for (const std::optional<Moment>& moment : {left, right})
                if (moment && moment->distance < best.distance) best = *moment;
            if (right && (!left || right->distance < left->distance))
                before += third;
            else
                after -= third;
        }
        return best;
    }

    FlarePass Described(int mirror, double begin, const Moment& closest, double end) const {
        FlarePass pass;
        pass.satellite = satellite_;
        pass.mirror = mirror;
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
    EngineSurfaces surfaces_;
    EngineBlock block_;
    Vector3 observer_;
};

bool TakesPart(const SatRecord& satellite, bool transit) {
    return !SurfacesTakingPart(satellite, transit).Empty();
}

/// The passes of the whole list, found by several threads. Each takes the next satellite that nobody has, and lays what
/// it finds in that satellite's own place, so that the number of threads leaves no trace in the result.
class PassList {
  public:
    PassList(const CommonData& data, const PassQuest& quest) : data_(data), quest_(quest) {
        for (int s = 1; s <= data.SatCount; ++s)
            if (TakesPart(data.Satellite(s), quest.transit)) satellites_.push_back(s);
        found_.resize(satellites_.size());
    }

    std::vector<FlarePass> Made(const std::function<bool(double)>& progress) {
        if (const int helperCount = HelperCount(); helperCount == 0) {
            Work([&](double part) { return Tell(progress, part); });
        } else {
            const Helpers helpers(*this, helperCount);
            Work([&](double part) { return Tell(progress, part); });
            while (!WaitForTheOthers()) Tell(progress, 0);
            if (!stop_) Tell(progress, 0);
        }
        if (failure_) std::rethrow_exception(failure_);
        std::vector<FlarePass> passes;
        for (const std::vector<FlarePass>& some : found_) passes.insert(passes.end(), some.begin(), some.end());
        std::stable_sort(passes.begin(), passes.end(), ComesBefore);
        return passes;
    }

  private:
    /// Threads beside the calling one. They are told to stop and waited for however the calling one leaves.
    class Helpers {
      public:
        Helpers(PassList& list, int count) : list_(list) {
            try {
                for (int i = 0; i < count; ++i) threads_.emplace_back([&list] { list.Help(); });
            } catch (const std::system_error&) {
                // No more threads to be had: those that there are do the work.
            }
        }
        Helpers(const Helpers&) = delete;
        Helpers& operator=(const Helpers&) = delete;
        ~Helpers() {
            list_.stop_ = true;
            for (std::thread& thread : threads_) thread.join();
        }

      private:
        PassList& list_;
        std::vector<std::thread> threads_;
    };

    int HelperCount() const {
        const int cores = static_cast<int>(std::thread::hardware_concurrency());
        const int wanted = quest_.threads > 0 ? std::min(quest_.threads, kMostThreads) : cores;
        return std::clamp(wanted, 1, std::max(1, static_cast<int>(satellites_.size()))) - 1;
    }

    /// Searches satellites until none is left. `goesOn` is told the part done of the one at work, and asked, after each
    /// window.
    template <class GoesOn>
    void Work(const GoesOn& goesOn) {
        for (std::size_t k = next_++; k < satellites_.size() && !stop_; k = next_++) {
            AppendPasses(satellites_[k], goesOn, found_[k]);
            const std::lock_guard lock(mutex_);
            ++finished_;
            changed_.notify_one();
        }
    }

    template <class GoesOn>
    void AppendPasses(int satellite, const GoesOn& goesOn, std::vector<FlarePass>& passes) {
        if (!(quest_.start >= GLINTCORE_FIRST_JD)) return;
        const double spanEnd = SpanEnd(quest_);
        SatellitePasses surfaces(data_, quest_, satellite);
        for (double from = quest_.start; from < spanEnd;) {
            const double to = std::min(from + kWindow, spanEnd);
            surfaces.AppendPasses(from, to, passes);
            from = to;
            const double done = (from - quest_.start) / quest_.days;
            if (stop_ || !goesOn(std::min(done, 1.0))) return;
        }
    }

    void Help() {
        try {
            Work([](double) { return true; });
        } catch (...) {
            const std::lock_guard lock(mutex_);
            if (!failure_) failure_ = std::current_exception();
            stop_ = true;
            changed_.notify_one();
        }
    }

    /// Hands on what is done when the calling thread has done `part` of its satellite.
    bool Tell(const std::function<bool(double)>& progress, double part) {
        if (!progress) return true;
        double done = part;
        {
            const std::lock_guard lock(mutex_);
            done += static_cast<double>(finished_);
        }
        if (!progress(done / static_cast<double>(satellites_.size()))) stop_ = true;
        return !stop_;
    }

    /// Whether all is done; waits a moment for it.
    bool WaitForTheOthers() {
        std::unique_lock lock(mutex_);
        const auto over = [&] { return stop_ || finished_ == satellites_.size(); };
        return changed_.wait_for(lock, kProgressPause, over);
    }

    static bool ComesBefore(const FlarePass& a, const FlarePass& b) {
        if (a.closest != b.closest) return a.closest < b.closest;
        return std::pair(a.satellite, a.mirror) < std::pair(b.satellite, b.mirror);
    }

    const CommonData& data_;
    const PassQuest& quest_;
    std::vector<int> satellites_;                ///< indices of those that take part
    std::vector<std::vector<FlarePass>> found_;  ///< of each of them
    std::atomic<std::size_t> next_ = 0;          ///< the first that nobody has taken yet
    std::atomic<bool> stop_ = false;
    std::mutex mutex_;                 ///< guards what follows
    std::condition_variable changed_;  ///< a satellite is finished, or a thread failed
    std::size_t finished_ = 0;
    std::exception_ptr failure_;
};

}  // namespace

bool HasCandidates(const CommonData& data, bool transit) {
    for (int s = 1; s <= data.SatCount; ++s)
        if (TakesPart(data.Satellite(s), transit)) return true;
    return false;
}

std::vector<FlarePass> ListPasses(const CommonData& data, const PassQuest& quest,
                                  const std::function<bool(double)>& progress) {
    return PassList(data, quest).Made(progress);
}

}  // namespace glintara
