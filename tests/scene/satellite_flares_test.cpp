// The flares of the satellites in the picture: rays, points and circles where the light falls.

#include <algorithm>

#include "engine/astro/number_text.h"
#include "engine/geometry/attitude_types.h"
#include "orbit/location.h"
#include "orbit/propagation.h"
#include "support/satellites_fixture.h"

namespace glintara::testing {
namespace {

// Flares.
TEST_F(SatellitesTest, FlaresShowWhenTheirOptionsSaySo) {
    o.Load("iridium.tle");
    main.CPlotOrbit.Value = true;
    main.CSatOnly.Value = true;
    main.CSatNames.Value = false;
    main.CPlaniSphere.Value = true;
    LookAt(0, 0, 20);
    const auto inFlareColor = [&] {
        Draw();
        return std::ranges::count_if(surface.Operations(),
                                     [](const auto& op) { return op.state.ForeColor == 0x208040; });
    };
    EXPECT_GT(inFlareColor(), 100);
    main.CPlotOrbit.Value = false;
    EXPECT_EQ(inFlareColor(), 0);
    main.CPlotOrbit.Value = true;
    main.CSkyOnly.Value = true;
    EXPECT_EQ(inFlareColor(), 0);
    main.CSkyOnly.Value = false;
    main.CIridiumFlares.Value = false;
    EXPECT_EQ(inFlareColor(), 0);
}

TEST_F(SatellitesTest, RaysBelongToTheFlaresAndLieBelowTheMark) {
    SatRecord& meteosat = LoadMeteosat();
    meteosat.Surface.ModelFlags[0] = '1';
    meteosat.Surface.MirrorCount = 1;
    main.CSatOnly.Value = true;
    o.app.Mirror.CShowSourceRay.Value = true;
    o.app.Mirror.CForceIllumination.Value = true;
    LookAt(0, -90, 8);
    Draw();
    ASSERT_FALSE(surface.OperationsOf(DrawOperation::Line).empty());
    EXPECT_EQ(surface.Operations().front().operation, DrawOperation::Line);
    EXPECT_EQ(surface.Operations().back().operation, DrawOperation::Circle);
    main.CIridiumFlares.Value = false;
    Draw();
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Line).empty());
}

TEST_F(SatellitesTest, TheReadOutIsOfTheWorkingSatellite) {
    const auto giveMirror = [](SatRecord& satellite, double tilt) {
        satellite.Surface.ModelFlags[0] = '1';
        satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
        satellite.Surface.RotAxisDEC = 90 * kDegree;
        satellite.Surface.MirrorCount = 1;
        satellite.Surface.Mirror(1).Tilt = tilt;
    };
    giveMirror(LoadMeteosat(), 15.015);
    giveMirror(o.Append(data.Satellite(1)), 30.126);
    const MirrorControls& editor = o.app.Mirror;
    Draw();
    EXPECT_EQ(editor.LRotDEC.Caption.Get(), "DEC [°]: ");
    o.app.Mirror.CRotAng.Value = true;
    Draw();
    EXPECT_EQ(editor.LRotDEC.Caption.Get(), "DEC [°]: 30.12");
    EXPECT_EQ(editor.LRotRMA.Caption.Get(), "RMA [°]: 59.87");
    EXPECT_NE(editor.LRotAngle.Caption.Get(), "ANGLE [°]: ");
    data.Satellite(2).Surface.OrientationType = 0;
    Draw();
    EXPECT_EQ(editor.LRotDEC.Caption.Get(), "DEC [°]: ");
    EXPECT_EQ(editor.LRotAngle.Caption.Get(), "ANGLE [°]: ");
}

TEST_F(SatellitesTest, AFlareFarAwayIsACircleOfHalfADegree) {
    main.CPlotOrbit.Value = true;
    LookAt(0, 0, 64);
    SatRecord satellite;
    LiveFlares flares;
    LiveFlare flare;
    flare.centre = {1, 0, 0};
    flare.distance = 300000;
    flares.Add(flare);
    DrawMarks(satellite, flares);
    const auto lines = surface.OperationsOf(DrawOperation::Polyline);
    ASSERT_EQ(lines.size(), 1U);
    const auto& xy = lines[0].numbers;
    for (std::size_t i = 0; i + 1 < xy.size(); i += 2)
        EXPECT_NEAR(std::hypot(xy[i] * 15 - 300, xy[i + 1] * 15 - 200), 200 * std::sin(0.45 * kDegree), 1e-9);
    EXPECT_NEAR(xy[0], xy[xy.size() - 2], 1e-9);
    EXPECT_EQ(lines[0].state.ForeColor, 0x208040U);
    main.CPlotOrbit.Value = false;
    DrawMarks(satellite, flares);
    EXPECT_TRUE(surface.Operations().empty());
}

TEST_F(SatellitesTest, ANearFlareIsAPointWithItsLabelOnTheNearSide) {
    SatRecord satellite;
    satellite.Surface.Mirror(2).MirrorName = "L";
    LiveFlares flares;
    LiveFlare flare;
    flare.centre = {0, 1, 0};
    flare.distance = 34120;
    flare.surface = 2;
    flares.Add(flare);
    flare.moon = true;
    flare.centre = {0, std::cos(0.5), std::sin(0.5)};
    flare.distance = 299000;
    flares.Add(flare);
    surface.ScaleWidth = 12000;
    surface.ScaleHeight = 9000;
    LookAt(0, 90, 64);
    main.CAntennaID.Value = true;
    DrawMarks(satellite, flares);
    const auto labels = surface.OperationsOf(DrawOperation::Print);
    ASSERT_EQ(labels.size(), 2U);
    EXPECT_EQ(labels[0].text, " L - 34.12 km (0°)");
    EXPECT_NEAR(labels[0].state.CurrentX, 6000, 1e-9);
    EXPECT_NEAR(labels[0].state.CurrentY, 4500, 1e-9);
    EXPECT_EQ(labels[1].text, " L");
    EXPECT_NEAR(labels[1].state.CurrentY, 4500 - 4500 * std::sin(0.5), 1e-9);
    EXPECT_EQ(labels[0].state.ForeColor, 0x00FF00U);
    EXPECT_EQ(labels[1].state.ForeColor, 0x80FFFFU);
    EXPECT_EQ(surface.OperationsOf(DrawOperation::PSet).size(), 2U);
    LookAt(0, -90, 64);
    DrawMarks(satellite, flares);
    EXPECT_TRUE(surface.Operations().empty());
}

// Part of the circle lies on the far side; what is seen of it ends at the limb, and none of it is drawn as one line.
TEST_F(SatellitesTest, TheLimbCutsTheCircleOfAFlare) {
    main.CPlotOrbit.Value = true;
    Enlarge();
    LookAt(0, 0, 640);
    const double unit = 45000;
    SatRecord satellite;
    LiveFlares flares;
    LiveFlare flare;
    const double off = 89.8 * kDegree;  // from the middle of the disc
    flare.centre = {std::cos(off), std::sin(off), 0};
    flare.distance = 400000;
    flares.Add(flare);
    DrawMarks(satellite, flares);
    EXPECT_TRUE(surface.OperationsOf(DrawOperation::Polyline).empty());
    const auto lines = surface.OperationsOf(DrawOperation::Line);
    ASSERT_GT(lines.size(), 10U);
    double least = 1;
    double highest = 0;
    for (const RecordedOperation& line : lines) {
        EXPECT_EQ(line.state.ForeColor, 0x208040U);
        EXPECT_EQ(line.state.DrawWidth, 1);
        for (const std::size_t i : {0U, 2U}) {
            const double y = (line.numbers[i] - 6000) / unit;
            const double z = (4500 - line.numbers[i + 1]) / unit;
            const double x = std::sqrt(std::max(0.0, 1 - y * y - z * z));
            // On the Earth, 0.45 degrees from the centre of the light.
            EXPECT_LE(std::hypot(y, z), 1 + 1e-9);
            const double along = Dot(Vector3{x, y, z}, flare.centre);
            EXPECT_NEAR(std::acos(std::min(1.0, along)) / kDegree, 0.45, 1e-3);
            least = std::min(least, y);
            highest = std::max(highest, std::fabs(z));
        }
    }
    EXPECT_NEAR(least, std::sin(off - 0.45 * kDegree), 1e-6);
    // The circle meets the limb 0.2 degrees beyond its centre: sqrt(0.45^2 - 0.2^2) degrees up; its widest place is
    // seen.
    EXPECT_NEAR(highest / kDegree, 0.45, 0.01);
}

TEST_F(SatellitesTest, TheCircleOfAFlareOnTheFlatMap) {
    main.CPlotOrbit.Value = true;
    main.CPlaniSphere.Value = true;
    Enlarge();
    LookAt(0, 0, 16);
    const double unit = 4500 * 16.0 / 64;
    SatRecord satellite;
    LiveFlare flare;
    flare.distance = 400000;
    const auto draw = [&](double lat, double lon) {
        flare.centre = LLRToSameXYZ(lat * kDegree, lon * kDegree, 1);
        LiveFlares flares;
        flares.Add(flare);
        DrawMarks(satellite, flares);
        EXPECT_TRUE(surface.OperationsOf(DrawOperation::Polyline).empty());
        return surface.OperationsOf(DrawOperation::Line);
    };
    // At 60 degrees of latitude it is twice as wide as high; a circle behind the globe is drawn as any other.
    for (const double lon : {0.0, 150.0}) {
        const auto lines = draw(60, lon);
        ASSERT_GE(lines.size(), 12U);
        double wide = 0;
        double high = 0;
        for (const RecordedOperation& line : lines) {
            EXPECT_EQ(line.state.ForeColor, 0x208040U);
            wide = std::max(wide, std::fabs((line.numbers[0] - 6000) / unit / kDegree - lon));
            high = std::max(high, std::fabs((4500 - line.numbers[1]) / unit / kDegree - 60));
        }
        EXPECT_NEAR(wide, 0.9, 0.05);
        EXPECT_NEAR(high, 0.45, 0.03);
    }
    // Across the seam it comes in two parts, neither of which crosses the map.
    const auto parts = draw(0, 180);
    int atLeft = 0;
    int atRight = 0;
    for (const RecordedOperation& line : parts) {
        EXPECT_LT(std::fabs(line.numbers[0] - line.numbers[2]), 2 * unit * kDegree);  // half a percent beyond the seam
        (line.numbers[0] < 6000 ? atLeft : atRight) += 1;
    }
    EXPECT_GE(atLeft, 6);
    EXPECT_GE(atRight, 6);
}

}  // namespace
}  // namespace glintara::testing
