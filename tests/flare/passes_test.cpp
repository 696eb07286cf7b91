#include "flare/passes.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <thread>
#include <type_traits>

#include "engine/astro/sun_moon.h"
#include "engine/astro/vector.h"
#include "flare/observed_night.h"

namespace glintara::observed_night {
namespace {

constexpr double kStep = 0.1 * kSecond;
/// Rounding of a Julian date, and the millisecond to which beginnings and ends are told.
constexpr double kGrain = 1.2e-3 * kSecond;

struct PassesTest : ::testing::Test {
    Observatory o;
    PassQuest quest{kNight, 1, 150e3, false, false};

    std::vector<FlarePass> List() { return ListPasses(o.app.Data, quest); }

    Surface Asked(int satellite, int mirror) const {
        const SatRecord& record = o.app.Data.Satellite(satellite);
        const std::int32_t source = quest.moon ? GLINTCORE_MOON : GLINTCORE_SUN;
        Surface surface = quest.transit ? TransitOf(record, source) : SurfaceOf(record, mirror);
        surface.source = source;
        return surface;
    }

    /// The list must hold what the sweep sees of each surface, and nothing else.
    void ExpectAsSwept(const std::vector<FlarePass>& passes, const SweepSteps& steps = {}) {
        std::size_t swept = 0;
        for (int s = 1; s <= o.app.Data.SatCount; ++s) {
            const SatRecord& record = o.app.Data.Satellite(s);
            for (int i = 1; i <= (quest.transit ? 1 : record.Surface.MirrorCount); ++i) {
                std::vector<FlarePass> mine;
                std::copy_if(passes.begin(), passes.end(), std::back_inserter(mine),
                             [&](const FlarePass& pass) { return pass.satellite == s && pass.mirror == i; });
                Surface surface = Asked(s, i);
                const std::vector<SweptPass> theirs =
                    Sweep(surface, o.app.Data.Site, quest.start, quest.days, quest.maxDistance, steps);
                swept += theirs.size();
                ASSERT_EQ(mine.size(), theirs.size()) << record.Name << ", surface " << i;
                for (std::size_t k = 0; k < mine.size(); ++k) {
                    ExpectSame(mine[k], theirs[k], record.Name);
                    const double there = GlimpseAt(surface, o.app.Data.Site, mine[k].closest).distance;
                    EXPECT_NEAR(mine[k].distance, there, 1) << record.Name;
                }
            }
        }
        EXPECT_EQ(passes.size(), swept);
    }

    static void ExpectSame(const FlarePass& pass, const SweptPass& swept, const std::string& name) {
        EXPECT_LE(pass.begin, swept.begin + kGrain) << name;
        EXPECT_GT(pass.begin, swept.begin - kStep - kGrain) << name;
        EXPECT_GE(pass.end, swept.end - kGrain) << name;
        EXPECT_LT(pass.end, swept.end + kStep + kGrain) << name;
        EXPECT_NEAR(pass.closest, swept.closest, kStep) << name;
        EXPECT_LE(pass.distance, swept.distance + 1) << name;
    }
};

TEST_F(PassesTest, ADayOfAHandfulOfSatellitesIsWhatAFineSweepSees) {
    for (const char* name : {"IRIDIUM 32 [+]", "IRIDIUM 64 [+]", "IRIDIUM 28 [-]", "IRIDIUM 914 [-]"})
        o.LoadOne("iridium.tle", name);
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 4u);
    ExpectAsSwept(passes);
}

TEST_F(PassesTest, ANightOfAllSatellitesIsWhatASweepSees) {
    o.Load("iridium.tle");
    quest = {kNight + 12 * kHour, 7 * kHour, 100e3, false, false};
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 4u);
    ExpectAsSwept(passes, {100, 10});
}

TEST_F(PassesTest, FlaresOfTheMoonAreWhatASweepSees) {
    o.Load("iridium.tle");
    quest = {kNight + 11.6, 6 * kHour, 100e3, true, false};  // around the full Moon of 31 January
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 4u);
    ExpectAsSwept(passes, {100, 10});
}

TEST_F(PassesTest, TransitsAreWhatASweepSees) {
    o.Load("iridium.tle");
    quest = {kNight + 8 * kHour, 8 * kHour, 150e3, false, true};
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 3u);
    ExpectAsSwept(passes, {100, 10});
    for (const FlarePass& pass : passes) {
        EXPECT_EQ(pass.mirror, 1);
        EXPECT_EQ(pass.sunMirrorAngle, 0);
    }
}

TEST_F(PassesTest, TransitsOfTheMoonAreWhatASweepSees) {
    o.Load("iridium.tle");
    quest = {kNight + 11.7, 7 * kHour, 100e3, true, true};
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 3u);
    ExpectAsSwept(passes, {100, 10});
}

TEST_F(PassesTest, LongPassesOfSurfacesFixedInSpaceAreWhatASweepSees) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SurfaceModel& surface = o.app.Data.Satellite(1).Surface;
    surface.OrientationType = 1;
    surface.MirrorCount = 1;
    surface.Mirror(1).Angle = 120;
    surface.Mirror(1).Tilt = -20;
    quest.maxDistance = 185e3;
    quest.days = 3;
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 1u);
    ExpectAsSwept(passes);
}

TEST_F(PassesTest, TwoPassesInShortSuccessionAreTwo) {
    // Far from the observer the centre may leave over the limb of the Earth and come back half a minute later.
    o.LoadOne("iridium.tle", "IRIDIUM 29 [-]");
    SurfaceModel& surface = o.app.Data.Satellite(1).Surface;
    surface.MirrorCount = 1;
    surface.Mirror(1).Angle = 220.941;
    surface.Mirror(1).Tilt = 50.8327;
    quest = {kNight + 15000 * kSecond, 1300 * kSecond, 3000e3, false, false};
    const std::vector<FlarePass> passes = List();
    ASSERT_EQ(passes.size(), 2u);
    Surface asked = Asked(1, 1);
    asked.lowest = -1;
    const std::vector<SweptPass> swept =
        Sweep(asked, o.app.Data.Site, quest.start, quest.days, quest.maxDistance, {1, 1});
    ASSERT_EQ(swept.size(), 2u);
    EXPECT_LT(swept[1].begin - swept[0].end, 30 * kSecond);
    for (std::size_t k = 0; k < 2; ++k) ExpectSame(passes[k], swept[k], "IRIDIUM 29 [-]");
}

TEST_F(PassesTest, PassesAreCutAtTheEndsOfTheSpan) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    const std::vector<FlarePass> whole = List();
    ASSERT_GE(whole.size(), 1u);
    const FlarePass& pass = whole[0];
    ASSERT_GT(pass.end - pass.begin, 20 * kSecond);

    // From five seconds after the beginning to five before the end.
    quest.start = pass.begin + 5 * kSecond;
    quest.days = pass.end - pass.begin - 10 * kSecond;
    const std::vector<FlarePass> inside = List();
    ASSERT_EQ(inside.size(), 1u);
    EXPECT_NEAR(inside[0].begin, quest.start, kGrain);
    EXPECT_NEAR(inside[0].end, quest.start + quest.days, kGrain);
    EXPECT_LE(inside[0].end, quest.start + quest.days);
    EXPECT_NEAR(inside[0].closest, pass.closest, 0.05 * kSecond);
    EXPECT_NEAR(inside[0].distance, pass.distance, 1);

    // Only its last five seconds: the nearest approach lies before.
    quest.start = pass.end - 5 * kSecond;
    quest.days = kHour;
    const std::vector<FlarePass> tail = List();
    ASSERT_EQ(tail.size(), 1u);
    EXPECT_NEAR(tail[0].begin, quest.start, kGrain);
    EXPECT_NEAR(tail[0].closest, quest.start, kGrain);
    EXPECT_NEAR(tail[0].end, pass.end, kGrain);

    // Only its first five: the nearest approach lies behind.
    quest.start = pass.begin - kHour;
    quest.days = kHour + 5 * kSecond;
    const std::vector<FlarePass> head = List();
    ASSERT_EQ(head.size(), 1u);
    EXPECT_NEAR(head[0].begin, pass.begin, kGrain);
    EXPECT_NEAR(head[0].end, pass.begin + 5 * kSecond, kGrain);
    EXPECT_NEAR(head[0].closest, head[0].end, kGrain);
}

TEST_F(PassesTest, ThePassIsTheSameWhereverTheSpanBegins) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    const std::vector<FlarePass> whole = List();
    ASSERT_EQ(whole.size(), 1u);
    // Beginnings of the span such that the pass lies across any border of its inner windows.
    for (double before = 0.05; before < 0.6; before += 0.01) {
        quest.start = whole[0].closest - before;
        const std::vector<FlarePass> passes = List();
        ASSERT_GE(passes.size(), 1u);
        EXPECT_NEAR(passes[0].begin, whole[0].begin, kGrain);
        EXPECT_NEAR(passes[0].end, whole[0].end, kGrain);
        EXPECT_NEAR(passes[0].distance, whole[0].distance, 1);
    }
    for (const double window : {0.25, 0.5}) {
        quest.start = whole[0].closest - window;
        const std::vector<FlarePass> passes = List();
        ASSERT_GE(passes.size(), 1u);
        EXPECT_NEAR(passes[0].begin, whole[0].begin, kGrain);
        EXPECT_NEAR(passes[0].end, whole[0].end, kGrain);
    }
}

TEST_F(PassesTest, TheyComeInOrderOfTheNearestApproach) {
    o.Load("iridium.tle");
    const std::vector<FlarePass> passes = List();
    ASSERT_GE(passes.size(), 10u);
    for (std::size_t k = 1; k < passes.size(); ++k) EXPECT_LE(passes[k - 1].closest, passes[k].closest);

    CommonData& data = o.app.Data;
    std::reverse(data.SatTable.begin() + 1, data.SatTable.begin() + 1 + data.SatCount);
    const std::vector<FlarePass> turned = List();
    ASSERT_EQ(turned.size(), passes.size());
    for (std::size_t k = 0; k < passes.size(); ++k) {
        EXPECT_EQ(turned[k].closest, passes[k].closest);
        EXPECT_EQ(turned[k].satellite, data.SatCount + 1 - passes[k].satellite);
    }
}

TEST_F(PassesTest, WhatIsToldOfAPassFitsTheInstantOfItsNearestApproach) {
    o.Load("iridium.tle");
    const std::vector<FlarePass> passes = List();
    ASSERT_GE(passes.size(), 10u);
    const ObserverSite& site = o.app.Data.Site;
    const Vector3 up{std::cos(kTurin.lat) * std::cos(kTurin.lon), std::cos(kTurin.lat) * std::sin(kTurin.lon),
                     std::sin(kTurin.lat)};
    const Vector3 east{-std::sin(kTurin.lon), std::cos(kTurin.lon), 0};
    const Vector3 north = CrossProduct(up, east);
    const Vector3 observer{site.SiteRadius * std::cos(site.SiteGeoLat) * std::cos(site.SiteLon),
                           site.SiteRadius * std::cos(site.SiteGeoLat) * std::sin(site.SiteLon),
                           site.SiteRadius * std::sin(site.SiteGeoLat)};
    for (const FlarePass& pass : passes) {
        EngineBlock block = o.app.Data.Satellite(pass.satellite).EngineBlock;
        std::array<double, 3> p{};
        std::array<double, 3> v{};
        ASSERT_EQ(Satellite_SGP4(&block, pass.closest, p.data(), v.data()), 0);
        const double greenwich = SiderealFromJD(pass.closest);
        const Vector3 satellite = TurnedAboutPole({p[0] * 1000, p[1] * 1000, p[2] * 1000}, -greenwich);
        const Vector3 line = satellite - observer;
        EXPECT_NEAR(pass.range, Length(line), 5);
        EXPECT_NEAR(std::tan(pass.sky.azimuth), Dot(line, east) / Dot(line, north), 1e-5);
        EXPECT_GT(std::cos(pass.sky.azimuth) * Dot(line, north), 0);
        EXPECT_NEAR(std::sin(pass.sky.altitude), Dot(line, up) / Length(line), 1e-7);

        const Equatorial sun = SunPosition(pass.closest);
        const double hour = sun.ra - greenwich;
        const Vector3 toSun{std::cos(sun.dec) * std::cos(hour), std::cos(sun.dec) * std::sin(hour), std::sin(sun.dec)};
        EXPECT_LE(pass.distance, quest.maxDistance);
        EXPECT_GT(pass.sunMirrorAngle, 0);
        EXPECT_LT(pass.sunMirrorAngle, 90 * kDegree);
        // The normal halves the angle between the directions to the Sun and to the centre, which is as far from Turin
        // as told.
        const double between = std::acos(-Dot(line, toSun) / Length(line));
        EXPECT_NEAR(2 * pass.sunMirrorAngle, between, std::atan(pass.distance / pass.range));
        EXPECT_NEAR(pass.sunElevation, std::asin(Dot(toSun, observer) / Length(observer)),
                    1.1 * pass.distance / site.SiteRadius);
        // Place of the centre: on the ground, as far from Turin as told.
        const double lat = (pass.centre.lat - kTurin.lat) * site.SiteRadius;
        const double lon =
            (pass.centre.lon - kTurin.lon) * std::cos((kTurin.lat + pass.centre.lat) / 2) * site.SiteRadius;
        EXPECT_NEAR(std::hypot(lat, lon), pass.distance, 0.01 * pass.distance + 100);
    }
}

TEST_F(PassesTest, LongitudesOfCentresReadFromMinusToPlusHalfATurn) {
    o.Load("iridium.tle");
    SetLocation(o.app.Data, {20 * kDegree, -156 * kDegree, 3000});
    const std::vector<FlarePass> passes = List();
    ASSERT_GE(passes.size(), 1u);
    for (const FlarePass& pass : passes) EXPECT_NEAR(pass.centre.lon, -156 * kDegree, 2 * kDegree);
}

TEST_F(PassesTest, DisabledSatellitesAreLeftOutAndSelectionPlaysNoPart) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    o.SelectAll(false);
    EXPECT_EQ(List().size(), 1u);
    o.app.Data.Satellite(1).OptionFlags = "1100000000000000";
    EXPECT_TRUE(List().empty());
    quest.transit = true;
    quest.maxDistance = 5000e3;
    EXPECT_TRUE(List().empty());
}

TEST_F(PassesTest, ItIsKnownBeforeWhetherAnySatelliteTakesPart) {
    EXPECT_FALSE(HasCandidates(o.app.Data, false));
    EXPECT_FALSE(HasCandidates(o.app.Data, true));
    o.LoadOne("stations.tle", "ISS (ZARYA)");
    EXPECT_FALSE(HasCandidates(o.app.Data, false));
    EXPECT_TRUE(HasCandidates(o.app.Data, true));
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    EXPECT_TRUE(HasCandidates(o.app.Data, false));
    o.app.Data.Satellite(2).OptionFlags = "0100000000000000";
    EXPECT_FALSE(HasCandidates(o.app.Data, false));
    EXPECT_TRUE(HasCandidates(o.app.Data, true));
}

TEST_F(PassesTest, ProgressGrowsToTheWhole) {
    for (const char* name : {"IRIDIUM 32 [+]", "IRIDIUM 64 [+]", "IRIDIUM 28 [-]"}) o.LoadOne("iridium.tle", name);
    std::vector<double> told;
    const std::vector<FlarePass> passes = ListPasses(o.app.Data, quest, [&](double part) {
        told.push_back(part);
        return true;
    });
    EXPECT_EQ(passes.size(), List().size());
    ASSERT_GE(told.size(), 9u);
    EXPECT_GT(told.front(), 0);
    EXPECT_NEAR(told.back(), 1, 1e-9);
    EXPECT_LE(*std::max_element(told.begin(), told.end()), 1);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
}

TEST_F(PassesTest, AnEndAskedForReturnsWhatWasFoundSoFar) {
    for (const char* name : {"IRIDIUM 64 [+]", "IRIDIUM 32 [+]", "IRIDIUM 28 [-]"}) o.LoadOne("iridium.tle", name);
    const std::vector<FlarePass> all = List();
    ASSERT_EQ(all.size(), 3u);
    ASSERT_EQ(all[0].satellite, 2);
    // Two thirds of the work are the first two satellites; the last one is not reached.
    int calls = 0;
    const std::vector<FlarePass> some = ListPasses(o.app.Data, quest, [&](double part) {
        ++calls;
        return part < 0.666;
    });
    ASSERT_EQ(some.size(), 2u);
    EXPECT_EQ(some[0].satellite, 2);
    EXPECT_EQ(some[1].satellite, 1);

    int asked = 0;
    const std::vector<FlarePass> none = ListPasses(o.app.Data, quest, [&](double) {
        ++asked;
        return false;
    });
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(none.empty());
}

/// The same to the last bit.
void ExpectIdentical(const std::vector<FlarePass>& passes, const std::vector<FlarePass>& expected) {
    static_assert(std::is_trivially_copyable_v<FlarePass>);
    ASSERT_EQ(passes.size(), expected.size());
    for (std::size_t k = 0; k < passes.size(); ++k)
        EXPECT_EQ(std::memcmp(&passes[k], &expected[k], sizeof(FlarePass)), 0) << "pass " << k;
}

TEST_F(PassesTest, TheListIsTheSameToTheLastBitWhateverTheNumberOfThreads) {
    o.Load("iridium.tle");
    const std::vector<FlarePass> alone = List();
    ASSERT_GE(alone.size(), 10u);
    for (const int threads : {2, 3, 8, 1000, 0}) {
        SCOPED_TRACE(threads);
        quest.threads = threads;
        ExpectIdentical(List(), alone);
    }
}

TEST_F(PassesTest, ProgressOfSeveralThreadsIsToldByTheCallingOneAndGrowsToTheWhole) {
    o.Load("iridium.tle");
    quest.threads = 4;
    const std::thread::id caller = std::this_thread::get_id();
    std::vector<double> told;
    ListPasses(o.app.Data, quest, [&](double part) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        told.push_back(part);
        return true;
    });
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.back(), 1);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
}

TEST_F(PassesTest, SeveralThreadsEndWhenAskedTo) {
    o.Load("iridium.tle");
    const std::vector<FlarePass> all = List();
    quest.threads = 3;
    int asked = 0;
    const std::vector<FlarePass> some = ListPasses(o.app.Data, quest, [&](double) {
        ++asked;
        return false;
    });
    EXPECT_EQ(asked, 1);
    EXPECT_LE(some.size(), all.size());
}

TEST_F(PassesTest, WhatProgressThrowsEndsAllThreadsAndReachesTheCaller) {
    o.Load("iridium.tle");
    quest.threads = 3;
    const auto refuse = [](double) -> bool { throw std::bad_alloc(); };
    EXPECT_THROW(ListPasses(o.app.Data, quest, refuse), std::bad_alloc);
}

TEST_F(PassesTest, AnInstantInErrorHasNoFlareAndThoseBesideItDo) {
    // An orbit that dips below the ground around each perigee, where the engine calls the satellite decayed.
    o.LoadOne("stations.tle", "ISS (ZARYA)");
    EngineBlock& block = o.app.Data.Satellite(1).EngineBlock;
    ASSERT_EQ(SatelliteInit("1 25544U 98067A   18020.50000000  .00000000  00000-0  00000-0 0  9990",
                            "2 25544  51.6436 266.0000 0800000  50.0000 150.4321 15.60000000 95234", 'i', &block),
              0);
    quest = {kNight, 1, 9000e3, false, true};
    const std::vector<FlarePass> passes = List();
    EXPECT_GE(passes.size(), 8u);
    Surface asked = Asked(1, 1);
    asked.lowest = -1;
    int errors = 0;
    int flares = 0;
    for (int k = 0; k < 86400; ++k) {
        const double jd = quest.start + k * kSecond;
        const bool failed = Satellite_SGP4(&asked.block, jd, nullptr, nullptr) != 0;
        const bool flare = GlimpseAt(asked, o.app.Data.Site, jd).distance < quest.maxDistance;
        const bool told = std::any_of(passes.begin(), passes.end(),
                                      [&](const FlarePass& pass) { return pass.begin <= jd && jd <= pass.end; });
        ASSERT_EQ(told, flare && !failed) << k;
        errors += flare && failed ? 1 : 0;
        flares += told ? 1 : 0;
    }
    EXPECT_GT(errors, 20);
    EXPECT_GT(flares, 1000);
}

TEST_F(PassesTest, QuestsForNothingGiveNothing) {
    EXPECT_TRUE(List().empty());
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    ASSERT_EQ(List().size(), 1u);
    quest.maxDistance = 0;
    EXPECT_TRUE(List().empty());
    quest = {kNight, 0, 150e3, false, false};
    EXPECT_TRUE(List().empty());
    quest.days = -1;
    EXPECT_TRUE(List().empty());
    quest.days = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(List().empty());
}

}  // namespace
}  // namespace glintara::observed_night
