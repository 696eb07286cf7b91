#include "scene/orbits.h"

#include <algorithm>
#include <cstring>

#include "flare/observed_night.h"
#include "orbit/propagation.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

using observed_night::kNight;
using observed_night::Observatory;

/// Radius of the geostationary orbit, metres.
constexpr double kGeoRadius = 42164.2e3;

struct OrbitsTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;
    MainControls& main = o.app.Main;
    RecordingSurface surface{600, 400};
    PolygonBuffer polygon;
    SceneContext scene{o.app, surface, polygon};

    void SetUp() override {
        main.CPlotOrbit.Value = false;
        data.SunDir = {0, 0, 1};
    }

    const SatRecord& Load(const std::string& file, const std::string& name) {
        o.LoadOne(file, name);
        main.CPlotOrbit.Value = false;
        return data.Satellite(data.SatCount);
    }

    void LookAt(double lat, double lon, double zoom = 64) {
        data.View.ViewLat = lat * kDegree;
        data.View.ViewLon = lon * kDegree;
        data.View.ZoomFactor = zoom;
        RefreshViewCache(data.View);
    }

    std::vector<RecordedOperation> Draw() {
        surface.Forget();
        DrawOrbits(scene, data.Satellite(data.SatCount));
        return surface.OperationsOf(DrawOperation::Line);
    }

    double GeoRadius() const { return kGeoRadius / data.Site.SiteRadius; }
};

/// Ends of a line in scene units at zoom 64 on a picture of 600 by 400.
double StartX(const RecordedOperation& line) { return (line.numbers[0] - 300) / 200; }
double StartY(const RecordedOperation& line) { return (200 - line.numbers[1]) / 200; }
double EndX(const RecordedOperation& line) { return (line.numbers[2] - 300) / 200; }
double EndY(const RecordedOperation& line) { return (200 - line.numbers[3]) / 200; }

TEST_F(OrbitsTest, AGeostationaryOrbitIsARingOfItsRadius) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    main.CPlotOrbit.Value = true;
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 200U);
    for (const RecordedOperation& line : lines) {
        EXPECT_NEAR(std::hypot(EndX(line), EndY(line)), GeoRadius(), 0.005 * GeoRadius());
        EXPECT_EQ(line.state.DrawWidth, 2);
        EXPECT_EQ(line.state.ForeColor, 0x20C0E0U);
    }
    EXPECT_NEAR(EndX(lines.back()), StartX(lines.front()), 0.02);
    EXPECT_NEAR(EndY(lines.back()), StartY(lines.front()), 0.02);
}

// An orbit whose perigee lies far below the ground: there the engine calls the satellite decayed, and still has places.
TEST_F(OrbitsTest, ADecayedSatellitesOrbitIsDrawnWhereverItHasAPlace) {
    Load("stations.tle", "ISS (ZARYA)");
    SatRecord& satellite = data.Satellite(data.SatCount);
    main.CPlotOrbit.Value = true;
    const std::string low1 = "1 25544U 98067A   18020.50000000  .00000000  00000-0  00000-0 0  9996";
    const std::string low2 = "2 25544  51.6400   0.0000 2000000   0.0000   0.0000 15.54000000    05";
    ASSERT_EQ(SatelliteInit(low1.c_str(), low2.c_str(), 'i', &satellite.EngineBlock), 0);
    EngineBlock block = satellite.EngineBlock;
    satellite.Eccentricity = 0.2;
    satellite.MeanMotion = 15.54;
    int decayed = 0;
    for (int i = 0; i < 200; ++i)
        decayed +=
            PropagateSatellite(data, EarthRotation::Displayed, block, data.SimTime + i / 200.0 / 15.54).result == 6;
    ASSERT_GT(decayed, 20);
    // The map hides nothing.
    main.CPlaniSphere.Value = true;
    LookAt(0, 0);
    EXPECT_GE(Draw().size(), 200U);
}

TEST_F(OrbitsTest, AChainBeginsAtTheSatellite) {
    const SatRecord& satellite = Load("iridium.tle", "IRIDIUM 32 [+]");
    EngineBlock block = satellite.EngineBlock;
    const Vector3 place = PropagateSatellite(data, EarthRotation::Displayed, block, data.SimTime).position;
    const LatLonRadius under = XYZToLatLon(place);
    LookAt(under.lat / kDegree, under.lon / kDegree);
    main.CPlotOrbit.Value = true;
    const auto lines = Draw();
    ASSERT_FALSE(lines.empty());
    ExpectNumbers(lines.front(), {300, 200, lines.front().numbers[2], lines.front().numbers[3]}, 1e-6);
}

TEST_F(OrbitsTest, AsFlownAGeostationarySatelliteStaysWhereItIs) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    main.CPlotOrbit.Value = true;
    main.CPlotOrbitOverTime.Value = true;
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 400U);  // the ring, and the chain as flown
    // The two take turns. Seen from over the north pole with Greenwich down.
    for (std::size_t i = 1; i < lines.size(); i += 2) {
        EXPECT_NEAR(EndX(lines[i]), 0, 0.1);
        EXPECT_NEAR(EndY(lines[i]), -GeoRadius(), 0.1);
    }
}

TEST_F(OrbitsTest, TheGroundTrackOfTheStationMovesWestByTheEarthsTurn) {
    const SatRecord& station = Load("stations.tle", "ISS (ZARYA)");
    main.CPlaniSphere.Value = true;
    LookAt(0, 0);
    main.CProjectOrbit.Value = true;
    main.CProjectOverTime.Value = true;
    const auto lines = Draw();
    ASSERT_GE(lines.size(), 400U);
    // The Earth turns 360.9856 degrees a day, and the orbital plane goes back by 5 degrees a day.
    const double days = 1 / station.MeanMotion;
    const double expected = (360.9856 + 5) * days;
    double shift = (StartX(lines[1]) - EndX(lines.back())) / kDegree;
    if (shift < 0) shift += 360;
    EXPECT_NEAR(shift, expected, 0.6);
    // At the displayed instant alone the track closes, but for the plane's motion.
    double gap = std::fabs(StartX(lines[0]) - EndX(lines[lines.size() - 2])) / kDegree;
    if (gap > 180) gap = 360 - gap;
    EXPECT_LT(gap, 0.6);
    // No place lies farther from the equator than the inclination, 51.64 degrees (geocentric, as on the map).
    for (const RecordedOperation& line : lines) EXPECT_LT(std::fabs(EndY(line)) / kDegree, 51.9);
}

TEST_F(OrbitsTest, OnTheGroundTheFarHalfIsHidden) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(0, 0);
    main.CProjectOrbit.Value = true;
    const auto lines = Draw();
    EXPECT_NEAR(static_cast<double>(lines.size()), 100, 2);
    for (const RecordedOperation& line : lines) EXPECT_LE(std::fabs(EndX(line)), 1 + 1e-9);
}

TEST_F(OrbitsTest, AChainEndsWhereTheEarthHidesIt) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    // From 5 degrees north the far part of the ring passes behind the northern half of the disc.
    LookAt(5, 180);
    const auto endsAtLimb = [&] {
        int ends = 0;
        for (const RecordedOperation& line : Draw()) {
            for (const double off : {std::hypot(StartX(line), StartY(line)), std::hypot(EndX(line), EndY(line))})
                if (off >= 1 && off < 1 + 1e-4) ++ends;
        }
        return ends;
    };
    main.CPlotOrbit.Value = true;
    EXPECT_EQ(endsAtLimb(), 2);
    main.CPlotOrbitOverTime.Value = true;  // it stays behind the disc all the time
    EXPECT_EQ(endsAtLimb(), 2);
}

TEST_F(OrbitsTest, LengthAndFineness) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    main.CPlotOrbit.Value = true;
    data.View.OrbitTurns = 3;
    EXPECT_EQ(Draw().size(), 100U);
    data.View.OrbitTurns = 12;
    EXPECT_EQ(Draw().size(), 400U);
    data.View.OrbitTurns = 1;
    EXPECT_EQ(Draw().size(), 33U);
    data.View.OrbitTurns = 6;
    o.app.Run.FinePass = true;
    EXPECT_EQ(Draw().size(), 1000U);
}

TEST_F(OrbitsTest, ThinLines) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    main.CPlotOrbit.Value = true;
    main.CThinLines.Value = true;
    for (const RecordedOperation& line : Draw()) EXPECT_EQ(line.state.DrawWidth, 1);
}

TEST_F(OrbitsTest, TheStretchInTheShadowIsBrown) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    main.CPlotOrbit.Value = true;
    data.SunDir = {1, 0, 0};
    const auto dark = [&] {
        return std::ranges::count_if(Draw(), [](const auto& line) { return line.state.ForeColor == 0x204060; });
    };
    // A shadow as wide as the Earth covers 2 asin(1 / 6.62) = 17.4 degrees of the ring: some ten of 200 pieces.
    EXPECT_NEAR(static_cast<double>(dark()), 9.7, 1.5);
    main.CSunLight.Value = false;
    EXPECT_EQ(dark(), 0);
}

TEST_F(OrbitsTest, WhatHidesThem) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    EXPECT_TRUE(Draw().empty());
    EXPECT_FALSE(AreOrbitsShown(main));
    main.CPlotOrbitOverTime.Value = true;  // belongs to an option that is clear
    EXPECT_TRUE(Draw().empty());
    main.CPlotOrbit.Value = true;
    EXPECT_TRUE(AreOrbitsShown(main));
    main.CSatOnly.Value = true;
    EXPECT_TRUE(Draw().empty());
    main.CSatOnly.Value = false;
    main.CSkyOnly.Value = true;
    EXPECT_TRUE(Draw().empty());
    main.CSkyOnly.Value = false;
    EXPECT_FALSE(Draw().empty());
}

TEST_F(OrbitsTest, OnTheSky) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    data.View.SkyScale = 0.9;
    main.CProjectOrbitOnSky.Value = true;
    EXPECT_TRUE(Draw().empty());  // there is no sky
    main.CDrawSky.Value = true;
    main.CSkyOnly.Value = true;
    main.CDrawFrontStars.Value = true;
    const auto all = Draw();
    EXPECT_EQ(all.size(), 200U);
    // From Turin the ring stands some 38 degrees high in the south at most; less than half of it is up.
    main.CLocalSky.Value = true;
    const auto up = Draw();
    EXPECT_GT(up.size(), 70U);
    EXPECT_LT(up.size(), 100U);
    // From 45 degrees north all of the ring lies south of the sky's equator: behind, seen from over the north pole.
    main.CLocalSky.Value = false;
    main.CDrawFrontStars.Value = false;
    EXPECT_EQ(Draw().size(), 200U);
    main.CDrawBackStars.Value = false;
    EXPECT_TRUE(Draw().empty());
}

TEST_F(OrbitsTest, AnOrbitOverTheObserverIsSmoothOnTheSky) {
    const SatRecord& station = Load("stations.tle", "ISS (ZARYA)");
    EngineBlock block = station.EngineBlock;
    // Right above the observer now; a two-hundredth of its turn takes it some 28 degrees across the sky.
    const Vector3 above = PropagateSatellite(data, EarthRotation::Displayed, block, data.SimTime).position;
    const LatLonRadius under = XYZToLatLon(above);
    SetLocation(data, {under.lat, under.lon, 0});
    LookAt(under.lat / kDegree, under.lon / kDegree);
    data.View.SkyScale = 1;
    main.CDrawSky.Value = true;
    main.CSkyOnly.Value = true;
    main.CDrawFrontStars.Value = true;
    main.CProjectOrbitOnSky.Value = true;
    const auto lines = Draw();
    EXPECT_GT(lines.size(), 220U);
    EXPECT_LT(lines.size(), 500U);
    // The sky's radius is 200 twips; nowhere is a line much longer than 2.5 degrees of it.
    for (const RecordedOperation& line : lines)
        EXPECT_LT(std::hypot(EndX(line) - StartX(line), EndY(line) - StartY(line)), 3.5 * kDegree);
    main.CLocalSky.Value = true;
    EXPECT_GT(Draw().size(), 50U);
}

TEST_F(OrbitsTest, TheRecordStaysAsItIs) {
    const SatRecord& satellite = Load("iridium.tle", "IRIDIUM 32 [+]");
    const EngineBlock before = satellite.EngineBlock;
    main.CPlotOrbit.Value = true;
    LookAt(0, 0);
    ASSERT_FALSE(Draw().empty());
    EXPECT_EQ(std::memcmp(&before, &satellite.EngineBlock, sizeof before), 0);
}

TEST_F(OrbitsTest, ElementsThatAreNoOrbitDrawNothing) {
    Load("geo.tle", "METEOSAT-10 (MSG-3)");
    LookAt(90, 0);
    main.CPlotOrbit.Value = true;
    SatRecord& satellite = data.Satellite(data.SatCount);
    const SatRecord good = satellite;
    satellite.MeanMotion = 0;
    EXPECT_TRUE(Draw().empty());
    satellite = good;
    satellite.Eccentricity = 1;
    EXPECT_TRUE(Draw().empty());
    satellite = good;
    satellite.EngineBlock = {};
    EXPECT_TRUE(Draw().empty());
}

// The steps in time, by the law of areas: the time from perigee is the area that the radius has swept.
TEST(OrbitStepsTest, EqualStepsOfTheTrueAnomalyTakeTheTimeOfTheirAreas) {
    constexpr double e = 0.7;
    constexpr int kSteps = 200;
    KeplerElements ellipse;
    ellipse.MeanMotion = 2;
    ellipse.Eccentricity = e;
    const auto area = [](double to) {
        constexpr int kPieces = 100000;
        double sum = 0;
        for (int i = 0; i < kPieces; ++i) {
            const double r = 1 / (1 + e * std::cos((i + 0.5) * to / kPieces));
            sum += r * r * to / kPieces;
        }
        return sum;
    };
    const double whole = area(2 * kPiExact);
    OrbitSteps steps(ellipse, 0, kSteps);
    ASSERT_TRUE(steps.IsOrbit());
    for (int i = 0; i <= 2 * kSteps; ++i) {
        const double days = steps.Next();
        if (i % 50 != 0) continue;
        EXPECT_NEAR(days, area(i * 2 * kPiExact / kSteps) / whole / 2, 1e-6) << i;
    }
}

TEST(OrbitStepsTest, TimeRunsOnOverManyTurnsFromAnyStart) {
    Dice dice;
    for (int round = 0; round < 200; ++round) {
        KeplerElements ellipse;
        ellipse.MeanMotion = dice.Between(0.5, 16);
        ellipse.Eccentricity = dice.Between(0, 0.95);
        OrbitSteps steps(ellipse, dice.Between(0, 4 * kPiExact), 200);
        double last = steps.Next();
        EXPECT_EQ(last, 0);
        for (int i = 1; i <= 600; ++i) {
            const double now = steps.Next();
            ASSERT_GT(now, last);
            last = now;
        }
        EXPECT_NEAR(last * ellipse.MeanMotion, 3, 1e-6);
    }
}

}  // namespace
}  // namespace glintara::testing
