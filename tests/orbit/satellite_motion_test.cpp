#include "orbit/satellite_motion.h"

#include <gtest/gtest.h>

#include <cstring>

#include "engine/astro/kepler.h"
#include "flare/observed_night.h"

namespace glintara::observed_night {
namespace {

struct SatelliteMotionTest : ::testing::Test {
    SatelliteMotionTest() {
        o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
        SetInstant(o.app.Data, kNight + 0.4);
        before = satellite.EngineBlock;
    }

    Observatory o;
    Application& app = o.app;
    SatRecord& satellite = o.app.Data.Satellite(1);
    EngineBlock before{};

    bool BlockIsUntouched() const { return std::memcmp(&before, &satellite.EngineBlock, sizeof before) == 0; }
};

TEST_F(SatelliteMotionTest, TheOptionChoosesTheModel) {
    EXPECT_EQ(OrbitModelOf(app.Main), OrbitModel::SGP4);
    const Vector3 full = MotionNow(app, satellite).position;
    EngineBlock block = before;
    EXPECT_EQ(full, PropagateSatellite(app.Data, EarthRotation::Displayed, block, app.Data.SimTime).position);
    app.Main.CSGP4.Value = false;
    EXPECT_EQ(OrbitModelOf(app.Main), OrbitModel::SGP1);
    const WorldMotion simple = MotionNow(app, satellite);
    EXPECT_NE(simple.position, full);
    EXPECT_LT(Length(simple.position - full), 0.01);
    EXPECT_NEAR(Length(simple.velocity), 1, 1e-12);
    EXPECT_EQ(simple.result, 0);
}

TEST_F(SatelliteMotionTest, OnlySGP4WritesTheBlockAndOnlyWhenAskedTo) {
    MotionNow(app, satellite);
    EXPECT_TRUE(BlockIsUntouched());
    app.Main.CSGP4.Value = false;
    EXPECT_EQ(MoveToNow(app, satellite).position, MotionNow(app, satellite).position);
    EXPECT_TRUE(BlockIsUntouched());
    SatellitePath(app, satellite).At(0.1, 1);
    app.Main.CSGP4.Value = true;
    SatellitePath(app, satellite).At(0.1, 1);
    EXPECT_TRUE(BlockIsUntouched());
    const WorldMotion motion = MoveToNow(app, satellite);
    EXPECT_EQ(static_cast<double>(satellite.EngineBlock.WorldPosition[2]), motion.position.z);
    EXPECT_FALSE(BlockIsUntouched());
}

TEST_F(SatelliteMotionTest, SGP1NeedsNoEngine) {
    app.Main.CSGP4.Value = false;
    const WorldMotion motion = MotionNow(app, satellite);
    satellite.EngineBlock = {};
    EXPECT_EQ(MotionNow(app, satellite).position, motion.position);
}

TEST_F(SatelliteMotionTest, APathBeginsAtTheSatellite) {
    for (const bool full : {true, false}) {
        app.Main.CSGP4.Value = full;
        SatellitePath path(app, satellite);
        const double start = TrueFromMean(path.MeanAnomaly(), path.Ellipse().Eccentricity, kKeplerTolerance);
        EXPECT_LT(Length(path.At(0, start).position - MotionNow(app, satellite).position), 1e-12);
    }
}

// A revolution later SGP1 has the satellite in the same place over the same Earth; SGP4 where its orbit has turned to.
TEST_F(SatelliteMotionTest, APathBySGP1IsTheEllipseOfTheInstant) {
    app.Main.CSGP4.Value = false;
    SatellitePath path(app, satellite);
    const KeplerElements& ellipse = path.Ellipse();
    EXPECT_NE(ellipse.RaanAngle, satellite.RaanAngle) << "as it has turned since the epoch";
    const Vector3 start = MotionNow(app, satellite).position;
    const double anomaly = TrueFromMean(path.MeanAnomaly(), ellipse.Eccentricity, kKeplerTolerance);
    EXPECT_LT(Length(path.At(1 / ellipse.MeanMotion, anomaly + kTwoPi).position - start), 1e-9);
    const Vector3 perigee = path.At(0, 0).position;
    const Vector3 apogee = path.At(0, kPi).position;
    EXPECT_NEAR(Length(perigee), ellipse.MeanRadiusA * (1 - ellipse.Eccentricity), 1e-12);
    EXPECT_NEAR(Length(apogee), ellipse.MeanRadiusA * (1 + ellipse.Eccentricity), 1e-12);
}

TEST_F(SatelliteMotionTest, APathBySGP4IsWhereTheEngineHasIt) {
    SatellitePath path(app, satellite);
    EngineBlock block = before;
    for (const double days : {0.01, 0.3, 2.0}) {
        const Vector3 expected =
            PropagateSatellite(app.Data, EarthRotation::Displayed, block, app.Data.SimTime + days).position;
        EXPECT_EQ(path.At(days, 4).position, expected) << "whatever the anomaly";
    }
}

}  // namespace
}  // namespace glintara::observed_night
