// What the choice of the orbit model does to the picture.

#include <limits>
#include <string>

#include "engine/astro/number_text.h"
#include "flare/surface_fits.h"
#include "orbit/satellite_motion.h"
#include "scene/object_finder.h"
#include "scene/orbits.h"
#include "support/satellites_fixture.h"

namespace glintara::testing {
namespace {

struct OrbitModelsTest : SatellitesTest {
    SatRecord& LoadStation() {
        o.LoadOne("stations.tle", "ISS (ZARYA)");
        main.CPlotOrbit.Value = false;
        main.CSatNames.Value = false;
        return data.Satellite(data.SatCount);
    }

    /// The place below a satellite is the middle of the picture.
    Vector3 LookDownOn(const SatRecord& satellite) {
        const Vector3 position = MotionNow(o.app, satellite).position;
        const LatLonRadius below = XYZToLatLon(position);
        LookAt(below.lat / kDegree, below.lon / kDegree, 64);
        return position;
    }
};

TEST_F(OrbitModelsTest, TheMarkStandsWhereTheModelHasTheSatellite) {
    const SatRecord& station = LoadStation();
    main.CSGP4.Value = true;
    const Vector3 full = LookDownOn(station);
    main.CSGP4.Value = false;
    const Vector3 simple = LookDownOn(station);
    ASSERT_GT(Length(simple - full), 1e-4);
    const auto marks = Circles();
    ASSERT_GE(marks.size(), 1U);
    EXPECT_NEAR(marks[0].numbers[0], 300, 1e-6);
    EXPECT_NEAR(marks[0].numbers[1], 200, 1e-6);
    main.CSGP4.Value = true;
    const double away = std::hypot(Circles()[0].numbers[0] - 300, Circles()[0].numbers[1] - 200);
    EXPECT_NEAR(away, 200 * Length(CrossProduct(full, Normalized(simple))), 1e-3);
}

TEST_F(OrbitModelsTest, TheWorkingSatelliteIsToldOfByTheModel) {
    const SatRecord& station = LoadStation();
    main.CSGP4.Value = false;
    const Vector3 position = LookDownOn(station);
    Draw();
    // The model's own unit of length is taken for the observer's distance from the Earth's centre.
    const double height = (Length(position) - 1) * data.Site.SiteRadius / 1000;
    EXPECT_EQ(main.LSatDetail.Caption.Get(),
              "Satellite height: " + PlainNumberText(std::round(height * 10) / 10) + " km");
    EXPECT_TRUE(o.app.Run.Working.IsOf(station));
    const HorizonAngles horizon = WorldToHorizon(data.Site, position);
    EXPECT_EQ(o.app.Run.Working.LastAzimuth, horizon.azimuth);
    EXPECT_EQ(o.app.Run.Working.LastElevation, horizon.altitude);
    const std::string info = SatelliteInfo(o.app, 1);
    EXPECT_NE(info.find("HEIGHT: " + CutNumberText(height, 3) + " km"), std::string::npos) << info;
    main.CSGP4.Value = true;
    EXPECT_NE(SatelliteInfo(o.app, 1), info);
}

TEST_F(OrbitModelsTest, WithoutAPlaceNothingIsToldOfTheWorkingSatellite) {
    SatRecord& station = LoadStation();
    main.CSGP4.Value = false;
    LookDownOn(station);
    Draw();
    ASSERT_NE(main.LSatDetail.Caption.Get(), "");
    station.MeanMotionDot = std::numeric_limits<double>::quiet_NaN();
    main.CPlotOrbit.Value = true;
    Draw();
    EXPECT_TRUE(surface.Operations().empty());
    EXPECT_EQ(main.LSatDetail.Caption.Get(), "");
    EXPECT_FALSE(o.app.Run.Working.IsOf(station));
}

TEST_F(OrbitModelsTest, TheChainBeginsAtTheSatelliteAndClosesAfterATurn) {
    const SatRecord& station = LoadStation();
    main.CSGP4.Value = false;
    main.CPlotOrbit.Value = true;
    data.View.OrbitTurns = 6;
    for (const bool flat : {false, true}) {
        main.CPlaniSphere.Value = flat;
        if (flat)
            LookAt(0, 0, 64);
        else
            LookDownOn(station);
        surface.Forget();
        DrawOrbits(scene, station);
        const auto lines = surface.OperationsOf(DrawOperation::Line);
        ASSERT_GT(lines.size(), 80U);
        const auto& first = lines.front().numbers;
        if (!flat) ExpectNumbers(lines.front(), {300, 200, first[2], first[3]}, 1e-6);
        EXPECT_NEAR(lines.back().numbers[2], first[0], 1e-6) << "by SGP4 the orbit has turned by then";
        EXPECT_NEAR(lines.back().numbers[3], first[1], 1e-6);
    }
}

TEST_F(OrbitModelsTest, TheOrbitsOfBothModelsLieTogether) {
    LoadMeteosat();
    main.CPlotOrbit.Value = main.CProjectOrbit.Value = true;
    main.CPlotOrbitOverTime.Value = main.CProjectOverTime.Value = true;
    LookAt(90, 0, 8);
    const auto drawn = [&](bool full) {
        main.CSGP4.Value = full;
        surface.Forget();
        DrawOrbits(scene, data.Satellite(data.SatCount));
        return surface.OperationsOf(DrawOperation::Line);
    };
    const auto byFull = drawn(true);
    const auto bySimple = drawn(false);
    ASSERT_EQ(byFull.size(), bySimple.size());
    ASSERT_GT(byFull.size(), 400U);
    // Within a hundredth of the orbit's radius, which is 6.6 units of 25 twips.
    for (std::size_t i = 0; i < byFull.size(); ++i) ExpectNumbers(bySimple[i], byFull[i].numbers, 0.01 * 6.6 * 25);
}

TEST_F(OrbitModelsTest, OnTheSkyAndAsCircleOfVisibilityTheyShowToo) {
    SatRecord& meteosat = LoadMeteosat();
    main.CSGP4.Value = false;
    LookAt(0, 0, 8);
    main.CSatCircle.Value = true;
    Draw();
    EXPECT_EQ(surface.OperationsOf(DrawOperation::Line).size(), 100U);
    main.CSatCircle.Value = false;
    main.CDrawSky.Value = main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
    data.View.SkyScale = 2;
    Draw();
    EXPECT_EQ(o.app.Run.Finder.FinderCount(), 2) << "on the Earth and on the sky";
    EXPECT_TRUE(o.app.Run.Working.IsOf(meteosat));
}

// Both models have the antennas within a degree of each other, so their light falls in the same regions.
TEST_F(OrbitModelsTest, LiveFlaresAreThoseOfTheModel) {
    o.Load("iridium.tle");
    int compared = 0;
    for (int s = 1; s <= data.SatCount; ++s) {
        const SatRecord& satellite = data.Satellite(s);
        const auto flaresOf = [&](bool full) {
            main.CSGP4.Value = full;
            LiveFlares flares;
            FindLiveFlares(o.app, satellite, MotionNow(o.app, satellite), LightPlacesAt(data), {}, flares);
            return flares;
        };
        const LiveFlares byFull = flaresOf(true);
        const LiveFlares bySimple = flaresOf(false);
        if (byFull.All().size() != bySimple.All().size()) continue;  // one of them passes the limb
        for (std::size_t i = 0; i < byFull.All().size(); ++i) {
            const Vector3& there = byFull.All()[i].centre;
            const Vector3& here = bySimple.All()[i].centre;
            EXPECT_NE(here, there);
            if (byFull.All()[i].surface == bySimple.All()[i].surface && Length(here - there) < 0.2) ++compared;
        }
    }
    EXPECT_GT(compared, 40);
}

TEST_F(OrbitModelsTest, ASurfaceIsFittedWhereTheModelHasTheSatellite) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SatRecord& satellite = data.Satellite(data.SatCount);
    main.CSGP4.Value = false;
    const Geodetic below = EcefToGeodetic(data.Site.SiteRadius * MotionNow(o.app, satellite).position);
    SetLocation(data, {below.lat, below.lon, 0});
    const auto angles = FitSurface(o.app, satellite, FitAim::Beam);
    ASSERT_TRUE(angles);
    EXPECT_NEAR(angles->tilt, 90, 0.3) << "straight down, where the picture shows it";
    main.CSGP4.Value = true;
    const auto elsewhere = FitSurface(o.app, satellite, FitAim::Beam);
    ASSERT_TRUE(elsewhere);
    EXPECT_LT(elsewhere->tilt, 89.3);
}

// Whatever a file holds, a picture comes of it.
TEST_F(OrbitModelsTest, ExtremesAreDrawnOrLeftOut) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    main.CSGP4.Value = false;
    main.CPlotOrbit.Value = main.CPlotOrbitOverTime.Value = true;
    main.CProjectOrbit.Value = main.CProjectOverTime.Value = true;
    main.CProjectOrbitOnSky.Value = main.CDrawSky.Value = main.CDrawFrontStars.Value = true;
    main.CSatCircle.Value = main.CDrawArea.Value = true;
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    SatRecord& satellite = data.Satellite(data.SatCount);
    const SatRecord good = satellite;
    int drawn = 0;
    for (const bool flat : {false, true})
        for (const double dot : {0.0, 0.9, -0.9, -0.0123, 1e300, -1e300, kInfinite, -kInfinite, std::nan("")})
            for (const double ddot : {0.0, 9.9e8, -9.9e8, kInfinite, std::nan("")})
                for (const double years : {-30.0, 0.0, 8.0}) {
                    satellite = good;
                    satellite.MeanMotionDot = dot;
                    satellite.MeanMotionDDot = ddot;
                    main.CPlaniSphere.Value = flat;
                    observed_night::SetInstant(data, observed_night::kNight + years * 365.25);
                    LookAt(30, 10, 16);
                    Draw();
                    if (!surface.Operations().empty()) ++drawn;
                    for (const RecordedOperation& operation : surface.Operations())
                        for (const double number : operation.numbers) ASSERT_TRUE(std::isfinite(number));
                }
    EXPECT_GT(drawn, 20);
}

}  // namespace
}  // namespace glintara::testing
