#include "scene/flare_tracks.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "engine/astro/calendar.h"
#include "flare/footprint.h"
#include "flare/tracks.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "scene/flare_marks.h"
#include "scene/satellites.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

/// 20 January 2018, 5 h UTC: IRIDIUM 32 flares on the Mediterranean, and three minutes later over Turin.
constexpr double kMorning = 2458138.5 + 5 / 24.0;

struct FlareTracksTest : SceneFixture {
    FlareTracksTest() {
        SetLocationDegrees(app.Data, 45.07, 7.69);
        app.Data.SetSimInstant(JDToDate(kMorning), kMorning);
        EXPECT_TRUE(LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/iridium.tle"));
        CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
        // Two are enough: the working one last.
        CommonData& data = app.Data;
        const SatRecord other = data.Satellite(1);
        for (int i = 1; i <= data.SatCount; ++i)
            if (data.Satellite(i).Name == "IRIDIUM 32 [+]") data.Satellite(2) = data.Satellite(i);
        data.Satellite(1) = other;
        data.SatCount = 2;
        app.Main.CFlareTrack.Value = true;
        app.Main.CIridiumFlares.Value = false;
        app.Main.CSatNames.Value = false;
        app.Main.CDayFlares.Value = true;
        view.OrbitTurns = 6;
        LookAt(20, 5);
    }

    SatRecord& Working() { return app.Data.Satellite(2); }

    std::vector<TrackPoint> PointsOf(const SatRecord& satellite) {
        FlareTrack track(app.Data, satellite, TrackQuestOf(app));
        std::vector<TrackPoint> points;
        WalkTrack(
            track, [&](std::int32_t, const TrackPoint& point) { points.push_back(point); }, [](std::int32_t, int) {});
        return points;
    }

    /// Dots of tracks in the picture.
    std::vector<RecordedOperation> Dots() const {
        std::vector<RecordedOperation> dots;
        for (const RecordedOperation& circle : surface.OperationsOf(DrawOperation::Circle))
            if (circle.state.FillColor == kTrackColor) dots.push_back(circle);
        return dots;
    }

    std::size_t DotsOfPicture() {
        surface.Forget();
        DrawSatellites(scene, work);
        return Dots().size();
    }

    SatelliteWorkspace work;
};

TEST_F(FlareTracksTest, EveryPointOfTheFlatMapIsADot) {
    app.Main.CPlaniSphere.Value = true;
    DrawFlareTrack(scene, Working());
    const std::vector<TrackPoint> points = PointsOf(Working());
    const std::vector<RecordedOperation> dots = Dots();
    ASSERT_EQ(dots.size(), points.size());
    ASSERT_GT(dots.size(), 100U);
    for (std::size_t i = 0; i < dots.size(); ++i) {
        // On the map an angle is 200 twips long, 64 of the zoom; the middle of the picture is (5 east, 20 north).
        double east = std::atan2(points[i].centre.y, points[i].centre.x) - 5 * kDegree;
        if (east > kPiExact) east -= 2 * kPiExact;
        if (east < -kPiExact) east += 2 * kPiExact;
        const double north = std::asin(points[i].centre.z) - 20 * kDegree;
        EXPECT_NEAR(dots[i].numbers[0], 300 + 200 * east, 0.01);
        EXPECT_NEAR(dots[i].numbers[1], 200 - 200 * north, 0.01);
    }
}

TEST_F(FlareTracksTest, OnTheGlobeTheNearSideIsDrawn) {
    DrawFlareTrack(scene, Working());
    std::size_t near = 0;
    const Vector3 viewer = LLRToSameXYZ(20 * kDegree, 5 * kDegree, 1);
    for (const TrackPoint& point : PointsOf(Working())) near += Dot(point.centre, viewer) >= 0 ? 1 : 0;
    EXPECT_EQ(Dots().size(), near);
    EXPECT_GT(near, 50U);
    EXPECT_LT(near, PointsOf(Working()).size());
}

TEST_F(FlareTracksTest, DotsKeepASizeThatCanBeSeen) {
    DrawFlareTrack(scene, Working());
    ASSERT_FALSE(Dots().empty());
    const double pixel = surface.TwipsPerPixelX;
    EXPECT_NEAR(Dots()[0].numbers[2], std::clamp(0.005 * 200, 1.0 * pixel, 3.5 * pixel), 1e-9);
    view.ZoomFactor = 5000;
    surface.Forget();
    DrawFlareTrack(scene, Working());
    for (const RecordedOperation& dot : Dots()) EXPECT_NEAR(dot.numbers[2], 3.5 * pixel, 1e-9);
}

TEST_F(FlareTracksTest, AFlareOfTheMomentIsToldByItsPlace) {
    DrawFlareTrack(scene, Working());
    FlareTrack track(app.Data, Working(), TrackQuestOf(app));
    const auto point = track.At(3, kMorning);
    ASSERT_TRUE(point);
    const Geodetic place = GroundPlaceOf(*point);
    const std::string told = app.Main.LCommandOutput.Caption;
    const std::size_t gap = told.find("   ");
    ASSERT_NE(gap, std::string::npos) << told;
    EXPECT_NEAR(std::stod(told), std::floor(place.lat / kDegree * 1e4) / 1e4, 1e-9);
    EXPECT_NEAR(std::stod(told.substr(gap)), std::floor(place.lon / kDegree * 1e4) / 1e4, 1e-9);

    app.Main.LCommandOutput.Caption = std::string("before");
    app.Main.CDayFlares.Value = false;
    app.Data.SetTwilightAngle(-90);
    DrawFlareTrack(scene, Working());
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "before") << "none falls at that moment";
}

TEST_F(FlareTracksTest, TheWorkingSatelliteAndThoseWithAShownOrbitHaveTracks) {
    const std::size_t own = DotsOfPicture();
    EXPECT_GT(own, 50U);
    app.Data.Satellite(1).OptionFlags[0] = '0';
    const std::size_t both = DotsOfPicture();
    EXPECT_GT(both, own);
    app.Data.Satellite(1).OptionFlags[1] = '1';
    EXPECT_EQ(DotsOfPicture(), own) << "disabled";
    Working().OptionFlags[0] = '0';
    EXPECT_EQ(DotsOfPicture(), own);
    app.Main.CFlareTrack.Value = false;
    EXPECT_EQ(DotsOfPicture(), 0U);
    app.Main.CFlareTrack.Value = true;
    app.Main.CSkyOnly.Value = true;
    EXPECT_EQ(DotsOfPicture(), 0U) << "there is no Earth to draw on";
    app.Main.CSkyOnly.Value = false;
    app.Main.CSGP4.Value = false;
    EXPECT_EQ(DotsOfPicture(), 0U);
}

TEST_F(FlareTracksTest, ASatelliteWithAFaultLeavesTheOthersTheirs) {
    app.Data.Satellite(1).OptionFlags[0] = '0';
    app.Data.Satellite(1).MeanMotion = 0;
    EXPECT_GT(DotsOfPicture(), 50U);
}

TEST_F(FlareTracksTest, TransitsNeedNoSurfaces) {
    // The orbit of the working satellite runs along the terminator; that of the space telescope does not.
    ASSERT_TRUE(LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/stations.tle"));
    CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
    ASSERT_EQ(app.Data.Satellite(app.Data.SatCount).Surface.MirrorCount, 0);
    app.Main.CPlaniSphere.Value = true;
    EXPECT_EQ(DotsOfPicture(), 0U);
    app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    EXPECT_GT(DotsOfPicture(), 10U);
}

TEST_F(FlareTracksTest, TheOutlineStandsRoundALiveFlare) {
    app.Main.CFlareTrack.Value = false;
    app.Main.CIridiumFlares.Value = true;
    const auto ringLines = [this] {
        surface.Forget();
        DrawSatellites(scene, work);
        std::vector<RecordedOperation> lines;
        for (const RecordedOperation& line : Lines())
            if (line.state.ForeColor == kSunFlareColor) lines.push_back(line);
        return lines;
    };
    EXPECT_TRUE(ringLines().empty()) << "so far away it would be no larger than the mark";
    LookAt(34, 7.2);
    view.ZoomFactor = 5000;
    const std::vector<RecordedOperation> lines = ringLines();
    ASSERT_EQ(lines.size(), 40U) << "one flare in the picture, closed";
    // Its middle is the flare, which falls at 34 degrees north.
    double x = 0;
    double y = 0;
    for (const RecordedOperation& line : lines) {
        x += line.numbers[0] / 40;
        y += line.numbers[1] / 40;
    }
    FlareTrack track(app.Data, Working(), TrackQuestOf(app));
    const Vector3 seen = RotateWorldToView(view, track.At(3, kMorning)->centre);
    const double scale = 200.0 / 64 * 5000;
    EXPECT_NEAR(x, 300 + scale * seen.y, 15);
    EXPECT_NEAR(y, 200 - scale * seen.z, 15);

    app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    EXPECT_TRUE(ringLines().empty());
    app.Main.MnuTransitMode[kTransitEntry].Checked = false;
    Working().Surface.OrientationType = 1;
    EXPECT_TRUE(ringLines().empty());
}

}  // namespace
}  // namespace glintara::testing
