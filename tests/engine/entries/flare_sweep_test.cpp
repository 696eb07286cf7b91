// The judge of the search: a plain sweep at 0.1 seconds through the C calls. On thousands of random cases, weighted to
// near misses, short crossings and grazing light, both must agree.

#include <random>

#include "engine/astro/sun_moon.h"
#include "engine_calls.h"

namespace glintara::engine_calls {
namespace {

constexpr double kResolution = 0.1 / kSecondsPerDay;
constexpr double kStep = 0.1;

/// One question to the search.
struct Case {
    EngineBlock block{};
    Mirror mirror;
    Vector3 observer;
    double distance = 0;  // metres
    double start = 0;
    double seconds = 0;
    std::string about;
};

double JdAt(const Case& c, double seconds) { return c.start + seconds / kSecondsPerDay; }

/// A Julian date in a double places an instant to 20 microseconds, and a flare's centre on the ground to this, metres:
/// what is nearer to the limit than this may fall to either side.
constexpr double kGrain = 0.5;

/// The search promises to see all that lasts longer than this, and to be exact to this, seconds.
constexpr double kFinest = 1.1e-3;

/// Whether there is a flare within the distance, and `margin` metres more.
bool HitAt(Case& c, double seconds, double margin = 0) {
    const double jd = JdAt(c, seconds);
    const auto flare = FlareOf(c.mirror, jd, MotionAt(c.block, jd));
    return flare && Length(flare->centre - c.observer) * kSiteRadius < c.distance + margin;
}

/// For how long the flare at `seconds` lasts, up to twice `kFinest`.
double LengthAround(Case& c, double seconds) {
    constexpr double kTick = 5e-5;
    double begin = seconds;
    double end = seconds;
    while (end - begin < 2 * kFinest && HitAt(c, begin - kTick)) begin -= kTick;
    while (end - begin < 2 * kFinest && HitAt(c, end + kTick)) end += kTick;
    return end - begin;
}

/// Whether what the sweep sees at `seconds` is more than rounding: well inside the distance, and longer than the
/// search's finest step.
bool IsPlain(Case& c, double seconds) { return HitAt(c, seconds, -kGrain) && LengthAround(c, seconds) > kFinest; }

std::optional<double> Sweep(Case& c) {
    for (int k = 0; k * kStep < c.seconds; ++k)
        if (HitAt(c, k * kStep)) return k * kStep;
    return std::nullopt;
}

std::optional<double> Search(Case& c, int8_t skip = 0) {
    SetObserver(c.observer);
    double found = 0;
    const int32_t some =
        Satellite_FindFlare(c.start, c.seconds / kSecondsPerDay, c.mirror.source, kResolution, kSiteRadius, &c.block,
                            c.mirror.geometry, c.mirror.angle, c.mirror.tilt, c.distance, skip, &found);
    if (some == 0) return std::nullopt;
    return (found - c.start) * kSecondsPerDay;
}

/// What became of the cases, so that a run that tested nothing is seen.
struct Tally {
    int hits = 0;
    int misses = 0;
    int slips = 0;  // crossings between two samples of the sweep
};

void Judge(Case& c, Tally& tally) {
    SCOPED_TRACE(c.about);
    const auto swept = Sweep(c);
    const auto found = Search(c);
    if (!found) {
        ASSERT_FALSE(swept && IsPlain(c, *swept)) << "the sweep finds a flare at " << *swept << " s";
        ++(swept ? tally.slips : tally.misses);
        return;
    }
    // The instant lies in a flare, the sweep has none before it, and a sweep of milliseconds through the 0.1 s before
    // has none either.
    ASSERT_TRUE(HitAt(c, *found, kGrain)) << "nothing at " << *found << " s";
    if (swept && *swept < *found - kFinest) {
        ASSERT_FALSE(IsPlain(c, *swept)) << "found " << *found << ", but a flare at " << *swept;
        ++tally.slips;
        return;
    }
    for (double t = std::max(0.0, *found - kStep); t < *found - 2 * kFinest; t += kFinest) {
        ASSERT_FALSE(HitAt(c, t, -kGrain) && LengthAround(c, t) > kFinest)
            << "found " << *found << ", but a flare at " << t;
    }
    const bool agree = swept && *swept - *found <= kStep + kFinest;
    if (agree) {
        ++tally.hits;
        return;
    }
    // The sweep passed over this one: it must be over within its step.
    bool ends = false;
    for (double t = *found; t < *found + kStep && !ends; t += 0.0005) ends = !HitAt(c, t, -kGrain);
    ASSERT_TRUE(ends);
    ++tally.slips;
}

class RandomCases {
  public:
    explicit RandomCases(unsigned seed)
        : random_(seed), sets_(ExampleSets("all.tle")), iridium_(ExampleSets("iridium.tle")) {
        EXPECT_GT(sets_.size(), 900U);
        EXPECT_GT(iridium_.size(), 80U);
    }

    /// A case built backwards from a flare that is there: the observer stands at about the limiting distance from its
    /// track.
    Case NearMiss() {
        Case c = SomeSatellite();
        const bool grazing = Chance(0.2);
        for (int attempt = 0;; ++attempt) {
            if (attempt % 300 == 299) c = SomeSatellite();
            const double jd = c.start + Between(0, 1);
            const Motion motion = MotionAt(c.block, jd);
            const auto flare = FlareOf(c.mirror, jd, motion);
            const auto later = FlareOf(c.mirror, jd + kResolution, MotionAt(c.block, jd + kResolution));
            if (!flare || !later) continue;
            const Vector3 up = flare->centre;
            const double sine = Dot(up, Normalized(motion.r - up));
            if (grazing && sine > 0.06 && attempt < 3000) continue;
            c.distance = 500 * std::exp(Between(0, 6.4));  // 0.5 to 300 km
            const Vector3 track = Normalized(later->centre - up);
            const Vector3 aside = CrossProduct(up, track);
            const double kinds[] = {1, Between(0.9, 1.1), Between(0.995, 1.005), Between(0, 2)};
            double offset = kinds[Pick(4)] * c.distance / kSiteRadius;
            if (Chance(0.3)) offset *= 1 - std::pow(10, -Between(2, 6));  // within, but for an instant only
            const double bearing = Chance(0.7) ? kPi / 2 : Between(0, kTwoPi);
            const Vector3 away = std::cos(bearing) * track + std::sin(bearing) * aside;
            c.observer = Normalized(up + offset * away);
            c.seconds = Between(60, 600);
            c.start = jd - Between(-0.1, 1) * c.seconds / kSecondsPerDay;
            return c;
        }
    }

    /// A mirror that follows the Sun on a satellite that passes under it: there the Sun's azimuth, and the mirror with
    /// it, swings round within a minute. The observer stands at about the limiting distance from where the light falls.
    Case UnderTheSun() {
        for (;;) {
            if (passage_.uses == 0) passage_ = SomePassageUnderTheSun();
            --passage_.uses;
            Case c = passage_.satellite;
            for (int attempt = 0; attempt < 100; ++attempt) {
                c.mirror = {GLINTCORE_SUN, GLINTCORE_VERTICAL_SUN, Between(-kPi, kPi), std::asin(Between(-1, 1))};
                const double instant = passage_.jd + Between(-20, 20) / kSecondsPerDay;
                const auto flare = FlareOf(c.mirror, instant, MotionAt(c.block, instant));
                if (!flare) continue;
                c.distance = 500 * std::exp(Between(0, 6.4));
                const double bearing = Between(0, kTwoPi);
                const Vector3 east = Normalized(CrossProduct({0, 0, 1}, flare->centre));
                const Vector3 aside = std::cos(bearing) * east + std::sin(bearing) * CrossProduct(flare->centre, east);
                c.observer = Normalized(flare->centre + Between(0, 1.02) * c.distance / kSiteRadius * aside);
                c.seconds = 200;
                c.start = instant - Between(0.3, 0.9) * c.seconds / kSecondsPerDay;
                return c;
            }
        }
    }

    /// A satellite, an hour, a place and a distance that know nothing of each other.
    Case Anything() {
        Case c = SomeSatellite();
        c.observer = UnitAt(std::asin(Between(-1, 1)), Between(0, kTwoPi));
        c.distance = 1000 * std::exp(Between(2, 9));  // 7 to 8000 km
        c.start += Between(0, 1);
        c.seconds = 3600;
        return c;
    }

  private:
    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random_); }
    bool Chance(double p) { return Between(0, 1) < p; }
    std::size_t Pick(std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random_); }

    /// A satellite that comes within two degrees of standing under the Sun, the instant, and for how many cases it is
    /// still good.
    struct Passage {
        Case satellite;
        double jd = 0;
        int uses = 0;
    };

    Passage SomePassageUnderTheSun() {
        for (;;) {
            Passage passage{SomeSatellite(), 0, 8};
            double nearest = 0.15;
            const auto look = [&](double jd) {
                const double sine = SineToTheSun(passage.satellite, jd);
                if (sine >= nearest) return;
                nearest = sine;
                passage.jd = jd;
            };
            for (double t = 0; t < kSecondsPerDay; t += 60) look(JdAt(passage.satellite, t));
            const double coarse = passage.jd;
            for (double t = -60; coarse > 0 && t < 60; t += 1) look(coarse + t / kSecondsPerDay);
            if (nearest < 0.04) return passage;
        }
    }

    /// Sine of the Sun's zenith distance at the satellite; 1 on the night side.
    static double SineToTheSun(Case& c, double jd) {
        const Vector3 up = Normalized(MotionAt(c.block, jd).r);
        const Equatorial sun = SunPosition(jd);
        const Vector3 toSun = UnitAt(sun.dec, sun.ra - SiderealFromJD(jd));
        return Dot(up, toSun) > 0 ? Length(CrossProduct(up, toSun)) : 1;
    }

    Case SomeSatellite() {
        Case c;
        const bool iridium = Chance(0.4);
        ElementSet set = iridium ? iridium_[Pick(iridium_.size())] : sets_[Pick(sets_.size())];
        // 2018, or the years before 2000, when the sidereal angle has the other sign.
        const bool old = Chance(0.1);
        if (old) set = InYear(set, "98");
        c.start = old ? 2450833.5 : 2458138.5;  // 20 January
        c.block = BlockOf(set);
        if (iridium && Chance(0.8)) {
            const double angles[] = {0, 120, -120};
            c.mirror = {GLINTCORE_SUN, GLINTCORE_ALONG_TRACK, angles[Pick(3)] * kDegToRad, 40 * kDegToRad};
        } else {
            const int32_t codes[] = {GLINTCORE_ALONG_TRACK, GLINTCORE_INERTIAL, GLINTCORE_VERTICAL_SUN,
                                     GLINTCORE_TRANSIT};
            c.mirror = {Chance(0.25) ? GLINTCORE_MOON : GLINTCORE_SUN, codes[Pick(4)], Between(-kPi, kPi),
                        std::asin(Between(-1, 1))};
        }
        c.about = set.name + ", geometry " + std::to_string(c.mirror.geometry) + ", source " +
                  std::to_string(c.mirror.source);
        return c;
    }

    Passage passage_;
    std::mt19937 random_;
    std::vector<ElementSet> sets_;
    std::vector<ElementSet> iridium_;
};

class FlareSweep : public testing::TestWithParam<unsigned> {};

TEST_P(FlareSweep, SearchAgreesOnNearMissesAndShortCrossings) {
    RandomCases cases(GetParam());
    Tally tally;
    for (int i = 0; i < 640; ++i) {
        Case c = cases.NearMiss();
        Judge(c, tally);
        if (HasFatalFailure()) return;
    }
    RecordProperty("hits", tally.hits);
    RecordProperty("misses", tally.misses);
    RecordProperty("slips", tally.slips);
    EXPECT_GT(tally.hits, 150);
    EXPECT_GT(tally.misses, 100);
}

TEST_P(FlareSweep, SearchAgreesOnWholeHours) {
    RandomCases cases(GetParam() + 1000);
    Tally tally;
    for (int i = 0; i < 130; ++i) {
        Case c = cases.Anything();
        Judge(c, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.hits, 0);
    EXPECT_GT(tally.misses, 60);
}

TEST_P(FlareSweep, SearchAgreesUnderTheSunOnMirrorsThatFollowIt) {
    RandomCases cases(GetParam() + 2000);
    Tally tally;
    for (int i = 0; i < 160; ++i) {
        Case c = cases.UnderTheSun();
        Judge(c, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.hits, 100);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FlareSweep, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace glintara::engine_calls
