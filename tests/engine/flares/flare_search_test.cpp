// The search by its inner room: what it costs, several mirrors at once, stretches in error, and the bounds that rest on
// the motion of Sun and Moon. That it finds what is there, a sweep judges beside the C entries.

#include "engine/flares/flare_search.h"

#include <algorithm>
#include <optional>

#include "engine/astro/sun_moon.h"
#include "followed_satellite.h"

namespace glintara::followed_satellite {
namespace {

constexpr double kNight = 2458138.5;  // 20 January 2018, when the example sets were made
constexpr double kLater = 2461365.5;  // 20 November 2026
constexpr double kHour = 1 / 24.0;
const Vector3 kTurin = UnitAt(44.9 * kDegToRad, 7.69 * kDegToRad);

/// Propagations of a day's search, hour by hour as the program asks for it.
std::int64_t CostOfADay(Sgp4Record& record, const FlareQuest& quest, std::span<const WatchedMirror> mirrors,
                        double start) {
    std::int64_t cost = 0;
    for (int hour = 0; hour < 24; ++hour) FindFlare(record, quest, mirrors, start + hour * kHour, kHour, &cost);
    return cost;
}

// Right answers may come slowly: with two arguments of a bound exchanged the search once found all there is in six
// times the steps. These are the steps it needs, and a quarter more.

TEST(SearchCost, ADayOfAnIridiumsThreeAntennasTakesAFewHundredPropagations) {
    Satellite iridium = ExampleSatellite("iridium.tle", "IRIDIUM 32 [+]");
    const FlareQuest quest = QuestFrom(kTurin, 30e3);
    EXPECT_LT(CostOfADay(iridium.record, quest, ThreeAntennas(), kNight), 450);
    std::int64_t inOne = 0;
    FindFlare(iridium.record, quest, ThreeAntennas(), kNight, 5 * kHour, &inOne);
    EXPECT_LT(inOne, 60);
}

TEST(SearchCost, TheThreeTogetherTakeLittleMoreThanHalfOfThreeSearches) {
    std::int64_t together = 0;
    std::int64_t apart = 0;
    const FlareQuest quest = QuestFrom(kTurin, 30e3);
    const std::vector<WatchedMirror> mirrors = ThreeAntennas();
    for (Satellite& satellite : ExampleSatellites("iridium.tle")) {
        together += CostOfADay(satellite.record, quest, mirrors, kNight);
        for (const WatchedMirror& mirror : mirrors) apart += CostOfADay(satellite.record, quest, {&mirror, 1}, kNight);
    }
    EXPECT_LT(static_cast<double>(together), 0.62 * static_cast<double>(apart));
}

TEST(SearchCost, OtherGeometriesToo) {
    Satellite iridium = ExampleSatellite("iridium.tle", "IRIDIUM 32 [+]");
    const auto costOf = [&](FlareGeometry geometry, LightSource source) {
        WatchedMirror mirror;
        mirror.mirror = MakeMirrorSetting(geometry, 0.7, 0.7);
        FlareQuest quest = QuestFrom(kTurin, 30e3);
        quest.source = source;
        return CostOfADay(iridium.record, quest, {&mirror, 1}, kNight);
    };
    EXPECT_LT(costOf(FlareGeometry::Inertial, LightSource::Sun), 180);
    EXPECT_LT(costOf(FlareGeometry::VerticalSun, LightSource::Sun), 330);
    EXPECT_LT(costOf(FlareGeometry::Transit, LightSource::Sun), 235);
    EXPECT_LT(costOf(FlareGeometry::Inertial, LightSource::Moon), 230);
}

TEST(SearchCost, OldElementsCostNoMoreThanFreshOnes) {
    const FlareQuest quest = QuestFrom(kTurin, 30e3);
    std::int64_t fresh = 0;
    std::int64_t old = 0;
    int inError = 0;
    for (Satellite& satellite : ExampleSatellites("all.tle")) {
        fresh += CostOfADay(satellite.record, quest, ThreeAntennas(), kNight);
        const std::int64_t cost = CostOfADay(satellite.record, quest, ThreeAntennas(), kLater);
        old += cost;
        const bool failed = StateAt(satellite.record, kLater).error != Sgp4Error::None;
        inError += failed ? 1 : 0;
        // A look every second would be 86400 of them.
        if (failed) EXPECT_LT(cost, 2000) << satellite.name;
    }
    EXPECT_GT(inError, 100);
    EXPECT_LT(static_cast<double>(old), 1.25 * static_cast<double>(fresh));
}

TEST(SearchTogether, FindsTheEarliestOfWhatEachMirrorHas) {
    const FlareQuest quest = QuestFrom(kTurin, 800e3);
    const std::vector<WatchedMirror> mirrors = ThreeAntennas();
    int found = 0;
    for (Satellite& satellite : ExampleSatellites("iridium.tle")) {
        for (int hour = 0; hour < 24; hour += 3) {
            const double start = kNight + hour * kHour;
            std::optional<FoundFlare> earliest;
            for (std::size_t k = 0; k < mirrors.size(); ++k) {
                const auto flare = FindFlare(satellite.record, quest, {&mirrors[k], 1}, start, 3 * kHour);
                if (flare && (!earliest || flare->jd < earliest->jd)) earliest = FoundFlare{flare->jd, k};
            }
            const auto together = FindFlare(satellite.record, quest, mirrors, start, 3 * kHour);
            ASSERT_EQ(together.has_value(), earliest.has_value()) << satellite.name << ", hour " << hour;
            if (!earliest) continue;
            ++found;
            EXPECT_NEAR(together->jd, earliest->jd, 1.1e-3 * kSecond) << satellite.name << ", hour " << hour;
            EXPECT_EQ(together->mirror, earliest->mirror) << satellite.name << ", hour " << hour;
        }
    }
    EXPECT_GT(found, 60);
}

TEST(SearchTogether, OfEqualMirrorsTheFirstIsNamed) {
    Satellite iridium = ExampleSatellite("iridium.tle", "IRIDIUM 32 [+]");
    const FlareQuest quest = QuestFrom(kTurin, 800e3);
    std::vector<WatchedMirror> mirrors = ThreeAntennas();
    const auto flare = FindFlare(iridium.record, quest, mirrors, kNight, 1);
    ASSERT_TRUE(flare);
    mirrors = {mirrors[flare->mirror], mirrors[flare->mirror], mirrors[flare->mirror]};
    EXPECT_EQ(FindFlare(iridium.record, quest, mirrors, kNight, 1)->mirror, 0u);
    // One that is asked later only finds what is left of the pass, and the others come before it.
    mirrors[0].from = (flare->jd - kNight) * kSecondsPerDay + 1;
    EXPECT_EQ(FindFlare(iridium.record, quest, mirrors, kNight, 1)->mirror, 1u);
    mirrors[1].from = mirrors[2].from = mirrors[0].from;
    const auto rest = FindFlare(iridium.record, quest, mirrors, kNight, 1);
    ASSERT_TRUE(rest);
    EXPECT_EQ(rest->mirror, 0u);
    EXPECT_NEAR(rest->jd, flare->jd + kSecond, 1e-4 * kSecond);
}

TEST(SearchTogether, EachHasItsOwnSkipFlag) {
    Satellite iridium = ExampleSatellite("iridium.tle", "IRIDIUM 32 [+]");
    const FlareQuest quest = QuestFrom(kTurin, 800e3);
    const std::vector<WatchedMirror> antennas = ThreeAntennas();
    const auto flare = FindFlare(iridium.record, quest, antennas, kNight, 1);
    ASSERT_TRUE(flare);
    std::vector<WatchedMirror> mirrors{antennas[flare->mirror], antennas[flare->mirror]};
    mirrors[0].skip = true;
    auto found = FindFlare(iridium.record, quest, mirrors, flare->jd, 60 * kSecond);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->mirror, 1u);
    EXPECT_NEAR(found->jd, flare->jd, 1e-4 * kSecond);
    mirrors[1].skip = true;
    found = FindFlare(iridium.record, quest, mirrors, flare->jd, 60 * kSecond);
    EXPECT_TRUE(!found || found->jd > flare->jd + 1 * kSecond);
}

TEST(SearchTogether, NothingIsFoundOfNoMirrorOrTooMany) {
    Satellite iridium = ExampleSatellite("iridium.tle", "IRIDIUM 32 [+]");
    const FlareQuest quest = QuestFrom(kTurin, 800e3);
    EXPECT_FALSE(FindFlare(iridium.record, quest, {}, kNight, 1));
    const std::vector<WatchedMirror> antennas = ThreeAntennas();
    const auto flare = FindFlare(iridium.record, quest, antennas, kNight, 1);
    ASSERT_TRUE(flare);
    const std::vector<WatchedMirror> most(kMostWatched, antennas[flare->mirror]);
    EXPECT_TRUE(FindFlare(iridium.record, quest, most, kNight, 1));
    const std::vector<WatchedMirror> more(kMostWatched + 1, antennas[flare->mirror]);
    EXPECT_FALSE(FindFlare(iridium.record, quest, more, kNight, 1));
}

TEST(SearchTogether, AMirrorAskedLaterIsAskedThenAcrossTheChangeOfTheSiderealAngle) {
    // At noon of 1 January 2000 the Greenwich angle changes its sign, and the search goes in two windows.
    Satellite iridium = ExampleSatellite("iridium.tle", "IRIDIUM 32 [+]");
    const double noon = 2451545.0;
    const FlareQuest quest = QuestFrom(kTurin, 20e6);
    WatchedMirror transit;
    transit.mirror = MakeMirrorSetting(FlareGeometry::Transit, 0, 0);
    const auto behind = [&](double seconds) {
        transit.from = seconds;
        return FindFlare(iridium.record, quest, {&transit, 1}, noon, 0.5);
    };
    const auto across = [&](double seconds) {
        transit.from = 3600 + seconds;
        return FindFlare(iridium.record, quest, {&transit, 1}, noon - 3600 * kSecond, 0.5 + 3600 * kSecond);
    };
    int found = 0;
    for (double seconds = 100; seconds < 36000; seconds += 500) {
        const auto expected = behind(seconds);
        const auto flare = across(seconds);
        ASSERT_EQ(flare.has_value(), expected.has_value()) << seconds;
        if (!flare) continue;
        ++found;
        EXPECT_NEAR(flare->jd, expected->jd, 1.1e-3 * kSecond) << seconds;
    }
    EXPECT_GT(found, 20);
}

/// Orbits that dip below the ground around each perigee: the propagator calls the satellite decayed there.
const char* const kDippingLine1 = "1 25544U 98067A   18020.50000000  .00000000  00000-0  00000-0 0  9990";
const char* const kDipping[] = {
    "2 25544  51.6436 147.2345 0600000 310.9234 150.4321 16.00000000 95234",
    "2 25544  51.6436 147.2345 0800000  30.9234 150.4321 15.60000000 95234",
    "2 25544  97.6436  47.2345 0400000 210.9234  50.4321 16.20000000 95234",
    // Up for eight minutes of each turn.
    "2 25544  97.6436 302.2345 0020000 160.9234  50.4321 17.12000000 95234",
};

/// The first flare from `start` on by looking every tenth of a second.
std::optional<double> Swept(Sgp4Record& record, const FlareQuest& quest, const MirrorSetting& mirror, double start,
                            double days) {
    const int ticks = static_cast<int>(days * kSecondsPerDay * 10);
    for (int k = 0; k < ticks; ++k) {
        const double jd = start + k * 0.1 * kSecond;
        if (HitAt(record, quest, mirror, jd)) return jd;
    }
    return std::nullopt;
}

TEST(SearchInError, AnInstantInErrorHasNoFlareAndTheOnesBesideItAreFound) {
    int atTheEdge = 0;
    int found = 0;
    for (const char* line2 : kDipping) {
        Sgp4Record record = RecordOf(kDippingLine1, line2);
        // A transit has the light go on past the satellite: by day there is one wherever the satellite is not in error.
        for (const FlareGeometry geometry : {FlareGeometry::Transit, FlareGeometry::AlongTrack}) {
            WatchedMirror mirror;
            mirror.mirror = MakeMirrorSetting(geometry, 0.3, 0.2);
            for (int place = 0; place < 5; ++place) {
                const FlareQuest quest = QuestFrom(UnitAt(-0.5 + 0.2 * place, place), 9000e3);
                for (double start = kNight + 1; start < kNight + 1.4; start += 0.04) {
                    SCOPED_TRACE(std::string(line2) + " place " + std::to_string(place) + " " + std::to_string(start));
                    const auto swept = Swept(record, quest, mirror.mirror, start, 0.04);
                    const auto flare = FindFlare(record, quest, {&mirror, 1}, start, 0.04);
                    ASSERT_EQ(flare.has_value(), swept.has_value());
                    if (!flare) continue;
                    ++found;
                    ASSERT_LE(flare->jd, *swept + 1e-3 * kSecond);
                    ASSERT_GT(flare->jd, *swept - 0.1 * kSecond - 1e-3 * kSecond);
                    ASSERT_TRUE(HitAt(record, quest, mirror.mirror, flare->jd));
                    if (StateAt(record, flare->jd - 2e-3 * kSecond).error != Sgp4Error::None) ++atTheEdge;
                }
            }
        }
    }
    EXPECT_GT(found, 50);
    EXPECT_GT(atTheEdge, 4);
}

TEST(SearchInError, APassThatAnErrorEndsIsOverThere) {
    Sgp4Record record = RecordOf(kDippingLine1, kDipping[0]);
    // Wide enough for the light to be within the distance as long as the satellite is up.
    const MirrorSetting mirror = MakeMirrorSetting(FlareGeometry::Transit, 0, 0);
    int ended = 0;
    for (double jd = kNight + 1; jd < kNight + 3; jd += 5 * 60 * kSecond) {
        const Vector3 below = TurnedAboutPole(Normalized(StateAt(record, jd).position), -SiderealFromJD(jd));
        const FlareQuest quest = QuestFrom(below, 12000e3);
        if (!HitAt(record, quest, mirror, jd)) continue;
        FlareSearch search(record, quest, jd);
        const double end = search.PassEnd(mirror, 0, 3600);
        if (StateAt(record, jd + (end + 0.2) * kSecond).error == Sgp4Error::None || end >= 3600) continue;
        ++ended;
        // It did not go on into the error by more than a step, nor stop before it.
        ASSERT_TRUE(HitAt(record, quest, mirror, jd + (end - 60) * kSecond) || end < 60) << jd;
        ASSERT_FALSE(HitAt(record, quest, mirror, jd + end * kSecond)) << jd;
    }
    EXPECT_GT(ended, 3);
}

/// Light that falls just so: the satellite stands before the source as seen from the observer, and a mirror fixed in
/// space lies edge-on to the light and is turned into it by nothing but the motion of source and satellite.
struct EdgeOn {
    double jd = 0;
    Vector3 site;
    WatchedMirror mirror;
};

Vector3 RayAt(Sgp4Record& record, LightSource source, double jd) {
    const Lights lights = LightsAt(jd, source, 0, kSiteRadius);
    return Normalized((1000 / kSiteRadius) * StateAt(record, jd).position - SourceOf(lights, source));
}

/// The edge-on situations of a satellite from `start` on, one a day at the most.
std::vector<EdgeOn> EdgeOnSituations(Sgp4Record& record, LightSource source, double start, int days) {
    std::vector<EdgeOn> situations;
    for (int day = 0; day < days; ++day) {
        for (double jd = start + day; jd < start + day + 1; jd += 1.0 / 1440) {
            const Lights lights = LightsAt(jd, source, 0, kSiteRadius);
            const auto spot =
                TransitPoint((1000 / kSiteRadius) * StateAt(record, jd).position, SourceOf(lights, source));
            if (!spot) continue;
            EdgeOn situation;
            situation.jd = jd;
            situation.site = TurnedAboutPole(spot->centre, -SiderealFromJD(jd));
            const double step = 60 * kSecond;
            const Vector3 turning = RayAt(record, source, jd + step) - RayAt(record, source, jd - step);
            const Vector3 ray = RayAt(record, source, jd);
            const Vector3 normal = -1.0 * Normalized(turning - Dot(turning, ray) * ray);
            situation.mirror.mirror = {FlareGeometry::Inertial, {normal.y, normal.x, normal.z}};
            situations.push_back(situation);
            break;
        }
    }
    return situations;
}

/// From an hour before, the mirror faces away, and how long that lasts is bounded by the motion of the source.
void ExpectFoundAtTheEdge(Sgp4Record record, LightSource source, double start, int days) {
    const std::vector<EdgeOn> situations = EdgeOnSituations(record, source, start, days);
    ASSERT_GE(situations.size(), 3u);
    for (const EdgeOn& situation : situations) {
        FlareQuest quest = QuestFrom(situation.site, 20e3);
        quest.source = source;
        for (const double hours : {0.5, 1.0, 1.5}) {
            const auto flare =
                FindFlare(record, quest, {&situation.mirror, 1}, situation.jd - hours * kHour, 2 * kHour);
            ASSERT_TRUE(flare) << situation.jd << ", " << hours;
            EXPECT_NEAR(flare->jd, situation.jd, 5 * kSecond);
        }
    }
}

TEST(SearchBounds, TheSunsMotionTurnsTheLightOnAMirrorFixedInSpace) {
    // A geostationary satellite before the Sun, around the equinox.
    const Sgp4Record record = RecordOf("1 40000U 14000A   18075.50000000  .00000000  00000-0  00000-0 0  9990",
                                       "2 40000   0.0500  80.0000 0002000  10.0000  20.0000  1.00270000 10000");
    ExpectFoundAtTheEdge(record, LightSource::Sun, 2458197.5, 8);
}

TEST(SearchBounds, TheMoonsMotionToo) {
    // The same against the Earth's rotation, so that Moon and satellite move in opposite directions.
    const Sgp4Record record = RecordOf("1 40001U 14000A   18075.50000000  .00000000  00000-0  00000-0 0  9990",
                                       "2 40001 170.0000  80.0000 0002000  10.0000  20.0000  1.00270000 10000");
    ExpectFoundAtTheEdge(record, LightSource::Moon, 2458197.5, 60);
}

}  // namespace
}  // namespace glintara::followed_satellite
