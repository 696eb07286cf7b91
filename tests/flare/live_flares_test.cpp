#include "flare/live_flares.h"

#include <array>

#include "engine/geometry/attitude_types.h"
#include "flare/attitude.h"
#include "flare/observed_night.h"
#include "flare/surface_models.h"

namespace glintara::observed_night {
namespace {

struct LiveFlaresTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;
    LiveFlares flares;

    std::span<const LiveFlare> Find(const SatRecord& satellite, const WorldMotion& motion, const LightPlaces& lights,
                                    const LiveFlareQuest& quest = {}) {
        FindLiveFlares(o.app, satellite, motion, lights, quest, flares);
        return flares.All();
    }

    WorldMotion MotionOf(SatRecord& satellite) {
        return PropagateSatellite(data, EarthRotation::Displayed, satellite.EngineBlock, data.SimTime);
    }
};

// What the engine says of one mirror at the displayed instant.
std::optional<Vector3> EngineCentre(const CommonData& data, const WorldMotion& motion, int source, int geometry,
                                    const MirrorRecord& mirror) {
    std::array<double, 3> centre{};
    std::array<double, 5> result{};
    const Vector3& r = motion.position;
    const Vector3& v = motion.velocity;
    if (Satellite_CalcFlare(data.SimTime, source, geometry, r.x, r.y, r.z, v.x, v.y, v.z, mirror.Angle * kDegree,
                            mirror.Tilt * kDegree, centre.data(), result.data()) == 0)
        return std::nullopt;
    return Vector3{centre[0], centre[1], centre[2]};
}

const LiveFlare* Of(std::span<const LiveFlare> flares, int surface, bool moon) {
    for (const LiveFlare& flare : flares)
        if (flare.surface == surface && flare.moon == moon) return &flare;
    return nullptr;
}

TEST_F(LiveFlaresTest, TheCentresAreThoseOfTheEngine) {
    o.Load("iridium.tle");
    LiveFlareQuest quest;
    quest.moon = true;
    int bySun = 0;
    int byMoon = 0;
    for (int hour = 0; hour < 24; ++hour) {
        SetInstant(data, kNight + hour * kHour);
        const LightPlaces lights = LightPlacesAt(data);
        for (int s = 1; s <= data.SatCount; ++s) {
            SatRecord& satellite = data.Satellite(s);
            const WorldMotion motion = MotionOf(satellite);
            const auto found = Find(satellite, motion, lights, quest);
            for (int i = 1; i <= satellite.Surface.MirrorCount; ++i) {
                for (const bool moon : {false, true}) {
                    const auto expected = EngineCentre(data, motion, moon ? GLINTCORE_MOON : GLINTCORE_SUN,
                                                       GLINTCORE_ALONG_TRACK, satellite.Surface.Mirror(i));
                    const LiveFlare* flare = Of(found, i, moon);
                    ASSERT_EQ(flare != nullptr, expected.has_value()) << satellite.Name << " " << i;
                    if (flare == nullptr) continue;
                    EXPECT_LT(Length(flare->centre - *expected), 1e-9);
                    EXPECT_NEAR(Length(flare->centre), 1, 1e-9);
                    ++(moon ? byMoon : bySun);
                }
            }
        }
    }
    EXPECT_GT(bySun, 300);
    EXPECT_GT(byMoon, 300);
}

TEST_F(LiveFlaresTest, EveryFixedAttitudeTypeAgreesWithTheEngine) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SatRecord& satellite = data.Satellite(1);
    const std::array types{OrientationType::AlongTrack, OrientationType::Inertial, OrientationType::VerticalSun};
    for (const OrientationType type : types) {
        satellite.Surface.OrientationType = static_cast<std::int32_t>(type);
        int seen = 0;
        for (int minute = 0; minute < 1440; minute += 3) {
            SetInstant(data, kNight + minute * kHour / 60);
            const WorldMotion motion = MotionOf(satellite);
            const auto found = Find(satellite, motion, LightPlacesAt(data));
            for (int i = 1; i <= 3; ++i) {
                const auto expected =
                    EngineCentre(data, motion, GLINTCORE_SUN, static_cast<int>(type), satellite.Surface.Mirror(i));
                const LiveFlare* flare = Of(found, i, false);
                ASSERT_EQ(flare != nullptr, expected.has_value());
                if (flare == nullptr) continue;
                EXPECT_LT(Length(flare->centre - *expected), 1e-9);
                ++seen;
            }
        }
        EXPECT_GT(seen, 20) << static_cast<int>(type);
    }
}

TEST_F(LiveFlaresTest, ARotatingBodyBeginsItsTurnAsTheMirrorFixedInSpace) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SatRecord& satellite = data.Satellite(1);
    satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
    satellite.Surface.RotAxisDEC = 0.4;
    satellite.Surface.RotAxisRA = 2.1;
    int seen = 0;
    for (int minute = 0; minute < 1440; minute += 2) {
        SetInstant(data, kNight + minute * kHour / 60);
        satellite.Surface.Mirror(1).Angle = minute % 360;
        const WorldMotion motion = MotionOf(satellite);
        const auto found = Find(satellite, motion, LightPlacesAt(data));
        const auto expected =
            EngineCentre(data, motion, GLINTCORE_SUN, GLINTCORE_INERTIAL, satellite.Surface.Mirror(1));
        const LiveFlare* flare = Of(found, 0, false);
        ASSERT_EQ(flare != nullptr, expected.has_value());
        if (flare == nullptr) continue;
        EXPECT_LT(Length(flare->centre - *expected), 1e-9);
        EXPECT_TRUE(flare->rotating);
        ++seen;
    }
    EXPECT_GT(seen, 20);
}

// A satellite at (2, 0, 0) that flies to the east, and a surface of type 0 that a test turns.
struct MirrorTest : LiveFlaresTest {
    SatRecord satellite;
    WorldMotion motion{{2, 0, 0}, {0, 7, 0}, 0};

    void SetUp() override {
        SetLocation(data, {0, 90 * kDegree, 0});
        ResetModelHeader(satellite);
        satellite.Surface.ModelFlags[0] = '1';
        satellite.Surface.MirrorCount = 1;
        satellite.Surface.Mirror(1).MirrorName = "Panel";
    }

    void Turn(double angle, double tilt) {
        satellite.Surface.Mirror(1).Angle = angle;
        satellite.Surface.Mirror(1).Tilt = tilt;
    }
};

TEST_F(MirrorTest, LightAlongTheSurfaceRunsOnUnbent) {
    const LightPlaces above{{1e4, 0, 0}, {}};
    Turn(0, 0);  // faces the flight, edge on to the light from the zenith
    ASSERT_EQ(Find(satellite, motion, above).size(), 1U);
    EXPECT_NEAR(Length(flares.All()[0].centre - Vector3{1, 0, 0}), 0, 1e-12);
}

TEST_F(MirrorTest, ASurfaceThatIsTurnedAwayGivesNoBeam) {
    const LightPlaces above{{1e4, 0, 0}, {}};
    Turn(0, 1);  // a little down, away from the light
    EXPECT_TRUE(Find(satellite, motion, above).empty());
    Turn(0, -1);  // a little up: the beam leaves downwards by twice that
    ASSERT_EQ(Find(satellite, motion, above).size(), 1U);
    const Vector3 beam = Normalized(flares.All()[0].centre - motion.position);
    EXPECT_NEAR(std::acos(-beam.x) / kDegree, 2, 1e-9);
    EXPECT_GT(beam.y, 0);
}

TEST_F(MirrorTest, DistanceAndAngleToTheObserver) {
    Turn(0, 0);
    ASSERT_EQ(Find(satellite, motion, {{1e4, 0, 0}, {}}).size(), 1U);
    // The centre lies a quarter of the equator from the observer; from two radii out the angle is atan(1/2).
    EXPECT_NEAR(flares.All()[0].distance, std::sqrt(2.0) * 6378137.0, 1e-3);
    EXPECT_NEAR(flares.All()[0].offAxis / kDegree, 26.565051177, 1e-8);
}

TEST_F(MirrorTest, TheEdgeOfTheShadowIsLit) {
    const LightPlaces behind{{-1e5, 0, 0}, {}};
    motion.velocity = {-1, 2, 0};
    Turn(0, 76.72);  // throws light from the far side down to the place below
    motion.position = {2, 1, 0};
    EXPECT_EQ(Find(satellite, motion, behind).size(), 1U);
    motion.position = {2, 0.9999, 0};
    EXPECT_TRUE(Find(satellite, motion, behind).empty());
    LiveFlareQuest forced;
    forced.forceLight = true;
    EXPECT_EQ(Find(satellite, motion, behind, forced).size(), 1U);
}

TEST_F(MirrorTest, ATangentRayMeetsTheEarth) {
    LiveFlareQuest transit;
    transit.transit = true;
    motion.position = {1, 3, 0};
    ASSERT_EQ(Find(satellite, motion, {{1, 1e4, 0}, {}}, transit).size(), 1U);
    EXPECT_EQ(flares.All()[0].centre, (Vector3{1, 0, 0}));
    motion.position = {1.0001, 3, 0};
    EXPECT_TRUE(Find(satellite, motion, {{1.0001, 1e4, 0}, {}}, transit).empty());
}

TEST_F(MirrorTest, TransitsAskForNoModelAndFlaresDo) {
    const LightPlaces above{{1e4, 0, 0}, {0, 60, 0}};
    LiveFlareQuest transit;
    transit.transit = true;
    Turn(0, 0);
    satellite.Surface.ModelFlags[0] = '0';
    EXPECT_TRUE(Find(satellite, motion, above).empty());
    ASSERT_EQ(Find(satellite, motion, above, transit).size(), 1U);
    EXPECT_EQ(LiveFlareLabel(satellite, flares.All()[0], true), "");
    satellite.Surface.ModelFlags[0] = '1';
    satellite.Surface.OrientationType = 5;
    EXPECT_TRUE(Find(satellite, motion, above).empty());
    satellite.Surface.OrientationType = 0;
    satellite.Surface.MirrorCount = 0;
    EXPECT_TRUE(Find(satellite, motion, above).empty());
}

TEST_F(MirrorTest, AVelocityAlongTheVerticalGivesNoFlare) {
    Turn(0, 0);
    motion.velocity = {3, 0, 0};
    EXPECT_TRUE(Find(satellite, motion, {{1e4, 0, 0}, {}}).empty());
}

TEST_F(MirrorTest, TheSimplePropagatorLeavesOutBodiesAlongATarget) {
    o.LoadOne("geo.tle", "METEOSAT-10 (MSG-3)");
    SetInstant(data, kNight);
    satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::AlongTarget);
    satellite.Surface.TargetSatID = 38552;
    motion.position = {0, 2, 0};
    Turn(0, -1);  // a little up
    const LightPlaces above{{0, 1e4, 0}, {}};
    ASSERT_EQ(Find(satellite, motion, above).size(), 1U);
    // The target stands over Greenwich, so the light is bent that way.
    EXPECT_NEAR(flares.All()[0].centre.x, std::sin(2 * kDegree), 1e-3);
    o.app.Main.CSGP4.Value = false;
    EXPECT_TRUE(Find(satellite, motion, above).empty());
}

TEST_F(MirrorTest, ATurnHas36PhasesAndFine72) {
    // Spinning about the axis that its face looks along, a mirror shows the same face in every phase. It looks north
    // from below the south pole; the light comes over the Earth, which is left out of the way.
    satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
    satellite.Surface.RotAxisDEC = kDegree * 90;
    satellite.Surface.RotAxisRA = 0;
    Turn(0, 90);
    motion.position = {0.3, 0, -2};
    const LightPlaces over{motion.position + Vector3{3000, 0, 20000}, {}};
    LiveFlareQuest quest;
    quest.forceLight = true;
    ASSERT_EQ(Find(satellite, motion, over, quest).size(), 36U);
    // Up came down at that slope, so down goes up: through the Earth's centre.
    for (std::size_t k = 0; k < 36; ++k) {
        const LiveFlare& flare = flares.All()[k];
        EXPECT_EQ(flare.surface, static_cast<int>(k));
        EXPECT_NEAR(flare.centre.z / flare.centre.x, -2 / 0.3, 1e-6);
        EXPECT_LT(flare.centre.z, 0);
    }
    quest.fine = true;
    EXPECT_EQ(Find(satellite, motion, over, quest).size(), 72U);
    quest.phase = 1.25;
    EXPECT_EQ(Find(satellite, motion, over, quest).size(), 1U);
    quest.phase.reset();
    quest.moon = true;
    EXPECT_EQ(Find(satellite, motion, {over.sun, over.sun}, quest).size(), 144U);
}

TEST_F(MirrorTest, ThePhasesGoRoundTheAxis) {
    // A face at right angles to the polar axis sees the zenith of a place on the equator once in a turn, and a quarter
    // of a turn before and after it stands edge on to the light from there.
    satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
    satellite.Surface.RotAxisDEC = kDegree * 90;
    Turn(0, 0);
    int lit = 0;
    for (int k = 0; k < 36; ++k) {
        LiveFlareQuest quest;
        quest.phase = k * 10 * kDegree + 1e-3;
        const LightPlaces above{{1e4, 0, 0}, {}};
        // Beams within 30 degrees of straight down meet the Earth from two radii out; the face then stands within
        // 15 degrees of edge on, and on one side of that it is turned away.
        if (!Find(satellite, motion, above, quest).empty()) ++lit;
    }
    EXPECT_GE(lit, 2);
    EXPECT_LE(lit, 4);
}

TEST_F(MirrorTest, LabelsTellTheDistanceOfNearCentresOnly) {
    LiveFlare flare;
    flare.surface = 1;
    flare.offAxis = 1.2049 * kDegree;
    flare.distance = 34127.9;
    EXPECT_EQ(LiveFlareLabel(satellite, flare, false), " - 34.12 km (1.204°)");
    EXPECT_EQ(LiveFlareLabel(satellite, flare, true), " Panel - 34.12 km (1.204°)");
    flare.distance = 149000;
    EXPECT_EQ(LiveFlareLabel(satellite, flare, false), " - 149 km (1.204°)");
    flare.distance = 150000;
    EXPECT_EQ(LiveFlareLabel(satellite, flare, false), "");
    flare.distance = 299000;
    EXPECT_EQ(LiveFlareLabel(satellite, flare, false), "");
    EXPECT_EQ(LiveFlareLabel(satellite, flare, true), " Panel");
}

TEST_F(MirrorTest, LabelsOfRotatingBodiesTellThePhase) {
    LiveFlare flare;
    flare.rotating = true;
    flare.surface = 0;
    flare.distance = 34187.9;
    EXPECT_EQ(LiveFlareLabel(satellite, flare, false), " - 34.1 km");
    EXPECT_EQ(LiveFlareLabel(satellite, flare, true), " 0 - 34.1 km");
    flare.surface = 71;
    flare.distance = 200000;
    EXPECT_EQ(LiveFlareLabel(satellite, flare, true), " 71");
}

TEST_F(MirrorTest, TheOptionsOfTheProgramAreTheQuest) {
    LiveFlareQuest quest = LiveFlareQuestOf(o.app);
    EXPECT_FALSE(quest.moon || quest.transit || quest.fine || quest.forceLight || quest.phase);
    o.app.Main.CMoonFlares.Value = true;
    o.app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    o.app.Run.FinePass = true;
    quest = LiveFlareQuestOf(o.app);
    EXPECT_TRUE(quest.moon && quest.transit && quest.fine);
}

TEST_F(MirrorTest, TheSurfaceEditorAsksForLightAndPhase) {
    MirrorControls& options = o.app.Mirror;
    options.CForceIllumination.Value = true;
    options.SRotTeta.Value = 1234;
    LiveFlareQuest quest = LiveFlareQuestOf(o.app);
    EXPECT_TRUE(quest.forceLight);
    EXPECT_FALSE(quest.phase) << "the slider alone asks for nothing";
    options.CRotAng.Value = true;
    quest = LiveFlareQuestOf(o.app);
    ASSERT_TRUE(quest.phase);
    EXPECT_NEAR(*quest.phase, 123.4 * kDegree, 1e-12);
}

// A body that spins about the pole and flies east over the equator, at a right ascension of 100 degrees. Its normal
// stands at declination 30.126; at right ascension 79.997 in phase 0 (10.003 counted from the y axis), and 62.5 degrees
// farther east in the phase asked for.
struct ReadOutTest : MirrorTest {
    LiveFlareQuest quest;

    void SetUp() override {
        MirrorTest::SetUp();
        satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
        satellite.Surface.RotAxisDEC = 90 * kDegree;
        satellite.Surface.RotAxisRA = 0;
        Turn(10.003, 30.126);
        const double lon = 100 * kDegree - SiderealFromJD(data.SimTime);
        motion.position = {1.2 * std::cos(lon), 1.2 * std::sin(lon), 0};
        motion.velocity = {-7 * std::sin(lon), 7 * std::cos(lon), 0};
        quest.phase = 62.5 * kDegree;
    }
};

TEST_F(ReadOutTest, TellsWhereTheNormalLooks) {
    const auto readOut = ReadOutOfPhase(o.app, satellite, motion, quest);
    ASSERT_TRUE(readOut);
    // By spherical trigonometry from 42.497 degrees of right ascension between zenith and normal.
    EXPECT_NEAR(readOut->angle, -40.66196, 1e-5);
    EXPECT_NEAR(readOut->tilt, -39.62196, 1e-5);
    EXPECT_NEAR(readOut->axisDistance, 59.874, 1e-9);
    EXPECT_NEAR(readOut->rightAscension, 142.497, 1e-9);
    EXPECT_NEAR(readOut->declination, 30.126, 1e-9);
}

TEST_F(ReadOutTest, IsOfOnePhaseOfARotatingBodyOnly) {
    EXPECT_FALSE(ReadOutOfPhase(o.app, satellite, motion, {}));
    satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Inertial);
    EXPECT_FALSE(ReadOutOfPhase(o.app, satellite, motion, quest));
    satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
    satellite.Surface.ModelFlags[0] = '0';
    EXPECT_FALSE(ReadOutOfPhase(o.app, satellite, motion, quest));
    satellite.Surface.ModelFlags[0] = '1';
    motion.velocity = {};
    EXPECT_FALSE(ReadOutOfPhase(o.app, satellite, motion, quest));
}

TEST_F(ReadOutTest, ItsNumbersAreCutToTwoDecimals) {
    MirrorControls& options = o.app.Mirror;
    RotatingReadOut readOut;
    readOut.angle = -40.6638;  // cut downwards
    readOut.tilt = 39.629;
    readOut.axisDistance = 90;
    readOut.rightAscension = 142.497;
    readOut.declination = -0.5;
    TellReadOut(options, readOut);
    EXPECT_EQ(options.LRotAngle.Caption.Get(), "ANGLE [°]: -40.67");
    EXPECT_EQ(options.LRotTilt.Caption.Get(), "TILT  [°]: 39.62");
    EXPECT_EQ(options.LRotRMA.Caption.Get(), "RMA [°]: 90");
    EXPECT_EQ(options.LRotRA.Caption.Get(), "RA [°]: 142.49");
    EXPECT_EQ(options.LRotDEC.Caption.Get(), "DEC [°]: -0.5");
    TellReadOut(options, std::nullopt);
    EXPECT_EQ(options.LRotAngle.Caption.Get(), "ANGLE [°]: ");
    EXPECT_EQ(options.LRotDEC.Caption.Get(), "DEC [°]: ");
}

}  // namespace
}  // namespace glintara::observed_night
