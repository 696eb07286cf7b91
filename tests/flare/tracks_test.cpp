#include "flare/tracks.h"

#include <array>
#include <cmath>
#include <vector>

#include "engine/astro/horizon.h"
#include "flare/observed_night.h"
#include "flare/passes.h"
#include "orbit/sun_and_moon.h"

namespace glintara::observed_night {
namespace {

constexpr double kMinute = 60 * kSecond;

Vector3 MetresOf(const TrackPoint& point) { return point.radius * point.centre; }

/// WGS 84 by its defining formulas, metres.
Vector3 EllipsoidPlace(double lat, double lon, double height) {
    const double a = 6378137.0;
    const double f = 1 / 298.257223563;
    const double e2 = f * (2 - f);
    const double n = a / std::sqrt(1 - e2 * std::sin(lat) * std::sin(lat));
    return {(n + height) * std::cos(lat) * std::cos(lon), (n + height) * std::cos(lat) * std::sin(lon),
            (n * (1 - e2) + height) * std::sin(lat)};
}

/// Satellite and velocity on the Earth of the instant, metres, straight from the engine.
struct Flight {
    Vector3 place;
    Vector3 velocity;
};

Flight FlightAt(const SatRecord& satellite, double jd) {
    EngineBlock block = satellite.EngineBlock;
    std::array<double, 3> p{};
    std::array<double, 3> v{};
    EXPECT_EQ(Satellite_SGP4(&block, jd, p.data(), v.data()), 0);
    const double theta = SiderealFromJD(jd);
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    return {{1000 * (c * p[0] + s * p[1]), 1000 * (c * p[1] - s * p[0]), 1000 * p[2]},
            {c * v[0] + s * v[1], c * v[1] - s * v[0], v[2]}};
}

struct TracksTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;

    SatRecord& LoadOne(const std::string& file, const std::string& name) {
        o.LoadOne(file, name);
        return data.Satellite(data.SatCount);
    }

    TrackQuest Quest(double start) const {
        TrackQuest quest;
        quest.start = start;
        quest.day = true;
        return quest;
    }

    /// All points, surface by surface.
    std::vector<TrackPoint> PointsOf(const SatRecord& satellite, const TrackQuest& quest) {
        FlareTrack track(data, satellite, quest);
        std::vector<TrackPoint> points;
        WalkTrack(
            track, [&](std::int32_t, const TrackPoint& point) { points.push_back(point); }, [](std::int32_t, int) {});
        return points;
    }
};

// The search measures on the sphere through the observer, the track on the ellipsoid. So the observer stands where the
// flare falls, at the height of the track, and both speak of the same ground.
TEST_F(TracksTest, AFlareThatTheSearchFindsLiesOnTheTrackFromTenMinutesBefore) {
    o.Load("iridium.tle");
    PassQuest passes;
    passes.start = kNight;
    passes.maxDistance = 300e3;
    const std::vector<FlarePass> listed = ListPasses(data, passes);
    ASSERT_GT(listed.size(), 10U);
    RecordingClock clock(data);
    int compared = 0;
    for (const FlarePass& pass : listed) {
        SetLocation(data, {pass.centre.lat, pass.centre.lon, kTrackHeight});
        const Vector3 site = EllipsoidPlace(pass.centre.lat, pass.centre.lon, kTrackHeight);
        SetInstant(data, pass.closest - 0.2 * kHour);
        o.SelectAll(false);
        const SatRecord& satellite = data.Satellite(pass.satellite);
        data.Satellite(pass.satellite).Selected = true;
        constexpr double kNear = 5000;
        if (!SearchFlares(o.app, clock, kNear, 1 * kHour / 24, SearchStart::First)) continue;
        const double found = clock.instants.back();
        const int mirror = o.app.FindFlare.LastFoundMirror;

        // A track whose twentieth step, some ten minutes on, is that instant.
        const double step = 1 / satellite.MeanMotion / kTrackSteps;
        FlareTrack track(data, satellite, Quest(found - 20 * step));
        ASSERT_NEAR(track.InstantOf(20), found, 0.001 * kSecond);
        const std::optional<TrackPoint> point = track.At(mirror, track.InstantOf(20));
        ASSERT_TRUE(point) << satellite.Name;
        EXPECT_NEAR(Length(MetresOf(*point) - site), kNear, 100) << satellite.Name;

        // On the sphere of the search, the place of the flare at that instant.
        Surface surface = SurfaceOf(satellite, mirror);
        const Glimpse glimpse = GlimpseAt(surface, data.Site, found);
        EXPECT_NEAR(Length(MetresOf(*point) - site), glimpse.distance, 100) << satellite.Name;

        // When the track itself comes that near.
        double before = found - 2 * kSecond;
        double after = found + 0.3 * kSecond;
        const auto isNear = [&](double jd) {
            const std::optional<TrackPoint> at = track.At(mirror, jd);
            return at && Length(MetresOf(*at) - site) < kNear;
        };
        if (isNear(before) || !isNear(after)) continue;  // a pass that only just touches the distance
        while (after - before > 0.001 * kSecond) {
            const double middle = (before + after) / 2;
            (isNear(middle) ? after : before) = middle;
        }
        EXPECT_NEAR((after - found) / kSecond, 0, 0.1) << satellite.Name;
        ++compared;
    }
    EXPECT_GT(compared, 8);
}

// The law of reflection, on the ellipsoid: at the satellite the bisector of the directions to the Sun and to the place of
// the flare is the normal of the antenna, 40 degrees below the horizon.
TEST_F(TracksTest, TheMirrorThrowsTheLightOfTheSunThere) {
    const SatRecord& satellite = LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    const std::vector<TrackPoint> points = PointsOf(satellite, Quest(kNight));
    ASSERT_GT(points.size(), 50U);
    const std::array<double, 3> azimuths{0, 120 * kDegree, -120 * kDegree};
    for (const TrackPoint& point : points) {
        const Flight flight = FlightAt(satellite, point.jd);
        const Vector3 up = Normalized(flight.place);
        const Vector3 ahead = Normalized(flight.velocity - Dot(flight.velocity, up) * up);
        const Vector3 left = CrossProduct(up, ahead);
        const double a = azimuths.at(static_cast<std::size_t>(point.mirror - 1));
        const Vector3 normal =
            std::cos(40 * kDegree) * (std::cos(a) * ahead + std::sin(a) * left) - std::sin(40 * kDegree) * up;

        const Geodetic ground = GroundPlaceOf(point);
        EXPECT_NEAR(ground.height, kTrackHeight, 60) << "most at grazing light";
        const Vector3 place = EllipsoidPlace(ground.lat, ground.lon, ground.height);
        const Vector3 sun = data.Site.SiteRadius * SunPlace(data, point.jd);
        const Vector3 bisector = Normalized(Normalized(sun - flight.place) + Normalized(place - flight.place));
        EXPECT_LT(Length(CrossProduct(bisector, normal)), 2e-7) << "a metre on the ground";
        EXPECT_GT(Dot(bisector, normal), 0);
        EXPECT_NEAR(point.incidence, Dot(bisector, Normalized(sun - flight.place)), 1e-6);
    }
}

TEST_F(TracksTest, InTransitModeTheSatelliteStandsBeforeTheSun) {
    SatRecord& satellite = LoadOne("stations.tle", "ISS (ZARYA)");
    ASSERT_EQ(satellite.Surface.MirrorCount, 0);
    TrackQuest quest = Quest(kNight);
    quest.transit = true;
    quest.day = false;  // it always is day there
    const std::vector<TrackPoint> points = PointsOf(satellite, quest);
    ASSERT_GT(points.size(), 50U) << "no surfaces are needed";
    for (const TrackPoint& point : points) {
        const Geodetic ground = GroundPlaceOf(point);
        const Vector3 place = EllipsoidPlace(ground.lat, ground.lon, ground.height);
        const Vector3 toSatellite = Normalized(FlightAt(satellite, point.jd).place - place);
        const Vector3 toSun = Normalized(data.Site.SiteRadius * SunPlace(data, point.jd) - place);
        EXPECT_LT(Length(CrossProduct(toSatellite, toSun)), 1e-6) << "a fifth of a second of arc";
        EXPECT_EQ(point.mirror, 1);
    }
    quest.transit = false;
    EXPECT_TRUE(PointsOf(satellite, quest).empty());
}

// With the Moon as source the day test stands in transit mode too.
TEST_F(TracksTest, MoonTransitsAreAskedWhetherItIsDay) {
    const SatRecord& satellite = LoadOne("stations.tle", "ISS (ZARYA)");
    TrackQuest quest = Quest(kNight);
    quest.transit = quest.moon = true;
    quest.turns = 4;
    const std::vector<TrackPoint> all = PointsOf(satellite, quest);
    quest.day = false;
    const std::vector<TrackPoint> dark = PointsOf(satellite, quest);
    ASSERT_GT(dark.size(), 10U);
    ASSERT_GT(all.size(), dark.size());
    for (const TrackPoint& point : dark) {
        EXPECT_LT(Dot(point.centre, Normalized(SunPlace(data, point.jd))), 5e-3);
        const Geodetic ground = GroundPlaceOf(point);
        const Vector3 place = EllipsoidPlace(ground.lat, ground.lon, ground.height);
        const Vector3 toMoon = Normalized(data.Site.SiteRadius * MoonPlaceInWorld(data, point.jd) - place);
        // Under the Moon's parallax the size of the sphere tells: five seconds of arc.
        EXPECT_LT(Length(CrossProduct(Normalized(FlightAt(satellite, point.jd).place - place), toMoon)), 3e-5);
    }
}

TEST_F(TracksTest, ByDayThereAreNoPointsUnlessTheyAreAskedFor) {
    const SatRecord& satellite = LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    TrackQuest quest = Quest(kNight);
    const std::vector<TrackPoint> all = PointsOf(satellite, quest);
    quest.day = false;
    const std::vector<TrackPoint> night = PointsOf(satellite, quest);
    quest.twilightSine = std::sin(-18 * kDegree);
    const std::vector<TrackPoint> dark = PointsOf(satellite, quest);
    ASSERT_GT(all.size(), night.size());
    ASSERT_GT(night.size(), dark.size());

    std::size_t expected = 0;
    std::size_t expectedDark = 0;
    for (const TrackPoint& point : all) {
        const double sine = Dot(point.centre, Normalized(SunPlace(data, point.jd)));
        expected += sine <= 0 ? 1 : 0;
        expectedDark += sine <= std::sin(-18 * kDegree) ? 1 : 0;
    }
    EXPECT_NEAR(static_cast<double>(night.size()), static_cast<double>(expected), 1);
    EXPECT_NEAR(static_cast<double>(dark.size()), static_cast<double>(expectedDark), 1);

    // The points that are left are the same ones.
    std::size_t k = 0;
    for (const TrackPoint& point : night) {
        while (k < all.size() && (all[k].jd != point.jd || all[k].mirror != point.mirror)) ++k;
        ASSERT_LT(k, all.size());
        EXPECT_EQ(Length(all[k].centre - point.centre), 0);
    }
}

TEST_F(TracksTest, TheOptionsAskForIt) {
    LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SetInstant(data, kNight + 0.25);
    data.View.OrbitTurns = 9;
    data.SetTwilightAngle(-6);
    TrackQuest quest = TrackQuestOf(o.app);
    EXPECT_EQ(quest.start, kNight + 0.25);
    EXPECT_EQ(quest.turns, 1.5);
    EXPECT_EQ(quest.stepsPerTurn, 200);
    EXPECT_NEAR(quest.twilightSine, -0.10452846326765347, 1e-14);
    EXPECT_FALSE(quest.moon || quest.transit || quest.day);

    o.app.Run.FinePass = true;
    o.app.Main.CMoonFlares.Value = true;
    o.app.Main.CDayFlares.Value = true;
    o.app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    data.View.OrbitTurns = 0;
    quest = TrackQuestOf(o.app);
    EXPECT_EQ(quest.stepsPerTurn, 1000);
    EXPECT_TRUE(quest.moon && quest.transit && quest.day);
    EXPECT_EQ(quest.turns, 1 / 6.0) << "a sixth of a revolution at least";
}

// IRIDIUM 32 goes round 14.34... times a day; its mean motion stands in columns 53 to 63 of line 2.
TEST_F(TracksTest, StepsArePartsOfARevolutionWhateverTheLength) {
    const SatRecord& satellite = LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    const double meanMotion = std::stod(satellite.Line2.substr(52, 11));
    TrackQuest quest = Quest(kNight);
    for (const double turns : {1.0, 1.5, 50.0}) {
        quest.turns = turns;
        for (const int steps : {200, 1000}) {
            quest.stepsPerTurn = steps;
            const FlareTrack track(data, satellite, quest);
            EXPECT_EQ(track.StepCount(), static_cast<int>(turns * steps));
            EXPECT_NEAR((track.InstantOf(1) - kNight) / kSecond, 86400 / meanMotion / steps, 1e-4);
            EXPECT_NEAR(track.InstantOf(track.StepCount()), kNight + turns / meanMotion, 1e-9)
                << "the span is the same";
            EXPECT_NEAR(track.End(), kNight + turns / meanMotion, 1e-9);
        }
    }
    quest.turns = 7 / 6.0;
    quest.stepsPerTurn = 200;
    EXPECT_EQ(FlareTrack(data, satellite, quest).StepCount(), 233);
}

TEST_F(TracksTest, ASatelliteWithoutATrackIsLeftOut) {
    SatRecord satellite = LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    EXPECT_TRUE(FlareTrack(data, satellite, Quest(kNight)).Exists());
    EXPECT_EQ(FlareTrack(data, satellite, Quest(kNight)).MirrorCount(), 3);

    SatRecord still = satellite;
    still.MeanMotion = 0;
    EXPECT_FALSE(FlareTrack(data, still, Quest(kNight)).Exists());
    still.MeanMotion = std::nan("");
    EXPECT_FALSE(FlareTrack(data, still, Quest(kNight)).Exists());
    still.MeanMotion = 1e-310;
    EXPECT_FALSE(FlareTrack(data, still, Quest(kNight)).Exists());

    SatRecord disabled = satellite;
    disabled.OptionFlags[1] = '1';
    EXPECT_FALSE(FlareTrack(data, disabled, Quest(kNight)).Exists());

    SatRecord undefined = satellite;
    undefined.Surface.ModelFlags[0] = '0';
    EXPECT_FALSE(FlareTrack(data, undefined, Quest(kNight)).Exists());

    SatRecord empty;
    EXPECT_FALSE(FlareTrack(data, empty, Quest(kNight)).Exists());
    empty.MeanMotion = 15;
    TrackQuest transit = Quest(kNight);
    transit.transit = true;
    FlareTrack nowhere(data, empty, transit);
    EXPECT_TRUE(nowhere.Exists());
    EXPECT_FALSE(nowhere.At(1, kNight)) << "no elements, no place";
    EXPECT_TRUE(PointsOf(satellite, Quest(1e6)).empty()) << "far outside what elements can tell";
}

// Rotating bodies and those along a target are followed as fixed in space, whatever their axis or their target; so a
// satellite that is its own target has a track as well.
TEST_F(TracksTest, OtherAttitudesAreFollowedAsFixedInSpace) {
    SatRecord& satellite = LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    satellite.Surface.OrientationType = 1;
    const std::vector<TrackPoint> fixed = PointsOf(satellite, Quest(kNight));
    ASSERT_GT(fixed.size(), 20U);
    satellite.Surface.TargetSatID = 24945;
    satellite.Surface.RotAxisDEC = 0.3;
    for (const int type : {2, 3}) {
        satellite.Surface.OrientationType = type;
        const std::vector<TrackPoint> points = PointsOf(satellite, Quest(kNight));
        ASSERT_EQ(points.size(), fixed.size()) << type;
        for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(Length(points[i].centre - fixed[i].centre), 0);
    }
    satellite.Surface.OrientationType = 0;
    EXPECT_NE(PointsOf(satellite, Quest(kNight)).size(), fixed.size());
}

// The observer sets the unit of length and nothing else.
TEST_F(TracksTest, TheTrackIsTheSameForEveryObserver) {
    const SatRecord& satellite = LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    const std::vector<TrackPoint> inTurin = PointsOf(satellite, Quest(kNight));
    SetLocation(data, {-78 * kDegree, 2, 3000});
    const std::vector<TrackPoint> atThePole = PointsOf(satellite, Quest(kNight));
    ASSERT_NEAR(static_cast<double>(atThePole.size()), static_cast<double>(inTurin.size()), 2);
    std::size_t same = 0;
    for (const TrackPoint& a : inTurin)
        for (const TrackPoint& b : atThePole)
            same += a.jd == b.jd && a.mirror == b.mirror && Length(MetresOf(a) - MetresOf(b)) < 500 ? 1 : 0;
    EXPECT_GE(same + 4, inTurin.size());
}

}  // namespace
}  // namespace glintara::observed_night
