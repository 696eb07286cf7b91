#include "scene/flare_rays.h"

#include <array>

#include "engine/geometry/attitude_types.h"
#include "orbit/location.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

/// Noon of the first of January 2000, when the Greenwich sidereal angle was 280.46 degrees (Explanatory Supplement).
constexpr double kJ2000 = 2451545;
constexpr double kGreenwichAtJ2000 = 280.46062;

/// 20 January 2018, 0 h UTC: declination of the Sun and equation of time from the almanac, -20.2 degrees and -11
/// minutes, so that it stands over the longitude of -177.25 degrees.
constexpr double kNight = 2458138.5;

// A satellite to the right of the globe as seen from over (0, 0), flying north: on the picture 50 twips to the unit,
// the satellite at (400, 200), ahead of it up and the Earth at its left.
struct FlareRaysTest : SceneFixture {
    SatRecord satellite;
    WorldMotion motion{{0, 2, 0}, {0, 0, 7}, 0};
    LightPlaces lights{{0, 0, 1e4}, {0, 2, 3}};
    LiveFlareQuest quest;
    MirrorControls& options = app.Mirror;

    void SetUp() override {
        app.Data.SimTime = kJ2000;
        Look(0, 0, 16);
        satellite.Surface.ModelFlags[0] = '1';
        satellite.Surface.MirrorCount = 1;
    }

    void Look(double lat, double lon, double zoom) {
        LookAt(lat, lon);
        view.ZoomFactor = zoom;
    }

    void RotateAboutThePole(double angle, double tilt) {
        satellite.Surface.OrientationType = static_cast<std::int32_t>(OrientationType::Rotating);
        satellite.Surface.RotAxisDEC = 90 * kDegree;
        satellite.Surface.RotAxisRA = 0;
        satellite.Surface.Mirror(1).Angle = angle;
        satellite.Surface.Mirror(1).Tilt = tilt;
    }

    std::vector<RecordedOperation> Draw() {
        surface.Forget();
        DrawFlareRays(scene, satellite, motion, lights, quest);
        EXPECT_EQ(surface.Operations().size(), Lines().size());
        return Lines();
    }
};

// Direction of a line on the picture, from its end to its start, degrees counter-clockwise from the right.
double DirectionToStart(const RecordedOperation& line) {
    return std::atan2(line.numbers[3] - line.numbers[1], line.numbers[0] - line.numbers[2]) / kDegree;
}

double LengthOf(const RecordedOperation& line) {
    return std::hypot(line.numbers[2] - line.numbers[0], line.numbers[3] - line.numbers[1]);
}

TEST_F(FlareRaysTest, NothingIsDrawnUnasked) { EXPECT_TRUE(Draw().empty()); }

TEST_F(FlareRaysTest, TheRayRunsInFromBeyondThePicture) {
    options.CShowSourceRay.Value = true;
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 1U);
    const auto& n = lines[0].numbers;
    EXPECT_NEAR(n[2], 400, 1e-9);
    EXPECT_NEAR(n[3], 200, 1e-9);
    EXPECT_LT(n[1], 0);
    EXPECT_GT(n[1], -1000) << "the Sun itself is half a million twips away";
    EXPECT_NEAR((400 - n[0]) / (200 - n[1]), 2e-4, 1e-9) << "a little towards the middle, below the Sun";
    EXPECT_EQ(lines[0].state.ForeColor, 0x30A050U);
}

TEST_F(FlareRaysTest, ARayCrossesThePictureFromOneEndToTheOther) {
    // The satellite is far out to the right, the picture between it and the light.
    options.CShowSourceRay.Value = true;
    motion.position = {2, 40, 2};
    lights.sun = {2, -1e4, 2};
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_LT(lines[0].numbers[0], 0);
    EXPECT_NEAR(lines[0].numbers[1], 100, 1e-9);
    // The same in a picture that is shifted.
    Pan(-20, 1);
    TakeFramePan(view);
    const auto shifted = Draw();
    ASSERT_EQ(shifted.size(), 1U);
    EXPECT_LT(shifted[0].numbers[0], 0);
    EXPECT_NEAR(shifted[0].numbers[1], 50, 1e-9);
}

TEST_F(FlareRaysTest, TheRayPointsToTheSunOfTheAlmanac) {
    options.CShowSourceRay.Value = true;
    SetLocation(app.Data, {0, 0, 0});
    app.Data.SimTime = kNight;
    lights = LightPlacesAt(app.Data);
    // From over the north pole longitude 0 is below and longitude 90 to the right.
    motion.position = {0, -3, 0};
    Look(90, 0, 16);
    auto lines = Draw();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NEAR(DirectionToStart(lines[0]), 92.75, 0.1);
    // With the Sun at the left edge of the Earth the declination shows.
    motion.position = {0, -3, 5};
    Look(0, -87.25, 16);
    lines = Draw();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NEAR(DirectionToStart(lines[0]), -180 + 20.2, 0.1);
}

TEST_F(FlareRaysTest, TheDiscHidesTheMiddleOfARay) {
    options.CShowSourceRay.Value = true;
    motion.position = {-0.5, 2, 0};
    lights.sun = {-0.5, -1e4, 0};
    EXPECT_TRUE(Draw().empty()) << "it is in the shadow";
    quest.forceLight = true;
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_LT(lines[0].numbers[0], 0);
    EXPECT_NEAR(lines[0].numbers[2], 250, 1e-3);
    EXPECT_NEAR(lines[1].numbers[0], 350, 1e-3);
    EXPECT_NEAR(lines[1].numbers[2], 400, 1e-3);
}

TEST_F(FlareRaysTest, OfAnyLineWhatTheDiscLeavesIsDrawn) {
    // What is left is counted in small steps. Nothing is drawn behind the disc, and nothing is left out.
    constexpr int kSteps = 4000;
    Dice dice;
    int cut = 0;
    for (int n = 0; n < 300; ++n) {
        dice.Camera(view);
        view.ZoomFactor = 64;
        TakeFramePan(view);
        const Vector3 from = dice.Point();
        const Vector3 to = dice.Point();
        const auto isSeen = [&](double part) {
            const Vector3 p = RotateWorldToView(view, from + part * (to - from));
            return p.x >= 0 || p.y * p.y + p.z * p.z >= 1;
        };
        int seen = 0;
        for (int i = 0; i < kSteps; ++i) seen += isSeen((i + 0.5) / kSteps) ? 1 : 0;
        const Vector3 a = RotateWorldToView(view, from);
        const Vector3 b = RotateWorldToView(view, to);
        const double whole = 200 * std::hypot(b.y - a.y, b.z - a.z);
        surface.Forget();
        PlotStraightLine(scene, from, to);
        double drawn = 0;
        for (const RecordedOperation& line : Lines()) drawn += LengthOf(line);
        EXPECT_NEAR(drawn / whole, double{1} * seen / kSteps, 1e-3) << n;
        if (seen > 0 && seen < kSteps) ++cut;
    }
    EXPECT_GT(cut, 50);
}

TEST_F(FlareRaysTest, EachSourceHasItsRayAndTheMoonMayBeInThePicture) {
    options.CShowSourceRay.Value = true;
    quest.moon = true;
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1].state.ForeColor, 0x508080U);
    ExpectNumbers(lines[1], {400, 50, 400, 200});
    quest.moon = false;
    EXPECT_EQ(Draw().size(), 1U);
}

TEST_F(FlareRaysTest, NormalsLookWhereTheSurfacesDo) {
    options.CShowMirrorNormal.Value = true;
    options.CShowRotAxis.Value = true;  // it has none
    satellite.Surface.MirrorCount = 2;
    satellite.Surface.Mirror(2).Tilt = 40;  // down, towards the Earth
    for (const double zoom : {16.0, 32.0}) {
        Look(0, 0, zoom);
        const double x = 300 + 2 * 200 * zoom / 64;
        const double length = 6 * 400 / 128.0;
        const auto lines = Draw();
        ASSERT_EQ(lines.size(), 2U);
        ExpectNumbers(lines[0], {x, 200, x, 200 - length});
        ExpectNumbers(lines[1], {x, 200, x - length * std::sin(40 * kDegree), 200 - length * std::cos(40 * kDegree)});
        EXPECT_EQ(lines[0].state.ForeColor, 0x90A0B0U);
    }
}

TEST_F(FlareRaysTest, OfATurnEverySecondNormalIsDrawn) {
    options.CShowMirrorNormal.Value = true;
    RotateAboutThePole(10, 30);
    motion.position = {0, 3, 0};
    Look(90, 0, 16);
    const auto lines = Draw();
    ASSERT_EQ(lines.size(), 18U);
    const double length = 6 * 400 / 128.0;
    for (std::size_t k = 0; k < lines.size(); ++k) {
        // A right ascension of 10 counts from the y axis; the body turns eastwards by 10 degrees with each phase.
        const double lon = (90 - 10 + 20.0 * static_cast<double>(k) - kGreenwichAtJ2000) * kDegree;
        const double across = length * std::cos(30 * kDegree);
        ExpectNumbers(lines[k], {450, 200, 450 + across * std::sin(lon), 200 + across * std::cos(lon)}, 1e-3);
    }
    quest.fine = true;
    EXPECT_EQ(Draw().size(), 36U);
    quest.phase = 90 * kDegree;
    const auto one = Draw();
    ASSERT_EQ(one.size(), 1U);
    const double lon = (90 - 10 + 90 - kGreenwichAtJ2000) * kDegree;
    EXPECT_NEAR(std::tan(lon), (one[0].numbers[2] - 450) / (one[0].numbers[3] - 200), 1e-4);
}

TEST_F(FlareRaysTest, TheAxisPassesThroughTheSatellite) {
    options.CShowRotAxis.Value = true;
    RotateAboutThePole(10, 30);
    auto lines = Draw();
    ASSERT_EQ(lines.size(), 1U);
    ExpectNumbers(lines[0], {400, 225, 400, 175});
    EXPECT_EQ(lines[0].state.ForeColor, 0xC09070U);
    // All normals stand at one angle to the axis, wherever it points.
    satellite.Surface.RotAxisDEC = -25 * kDegree;
    satellite.Surface.RotAxisRA = 130 * kDegree;
    options.CShowMirrorNormal.Value = true;
    motion.position = {5, 0, 0};
    // Three views at right angles give the three components of each line.
    std::array<std::vector<RecordedOperation>, 2> pictures;
    Look(0, 0, 16);
    pictures[0] = Draw();
    Look(90, 0, 16);
    pictures[1] = Draw();
    ASSERT_EQ(pictures[0].size(), 19U);
    ASSERT_EQ(pictures[1].size(), 19U);
    const auto vectorOf = [&](std::size_t i) {
        const auto& front = pictures[0][i].numbers;
        const auto& top = pictures[1][i].numbers;
        return Normalized(Vector3{top[3] - top[1], front[2] - front[0], front[1] - front[3]});
    };
    const Vector3 axis = vectorOf(18);
    EXPECT_NEAR(axis.z, std::sin(-25 * kDegree), 1e-9);
    for (std::size_t i = 1; i < 18; ++i) EXPECT_NEAR(Dot(vectorOf(i), axis), Dot(vectorOf(0), axis), 1e-9);
}

TEST_F(FlareRaysTest, InTheShadowNothingUnlessLightIsForced) {
    options.CShowSourceRay.Value = true;
    options.CShowMirrorNormal.Value = true;
    options.CShowRotAxis.Value = true;
    RotateAboutThePole(0, 0);
    lights.sun = {0, -1e4, 0};
    EXPECT_TRUE(Draw().empty());
    quest.moon = true;  // the Moon still shines on it
    EXPECT_EQ(Draw().size(), 1U + 18U + 1U);
    quest.moon = false;
    quest.forceLight = true;
    EXPECT_EQ(Draw().size(), 1U + 18U + 1U);
}

TEST_F(FlareRaysTest, OnlySatellitesWithAModelButInTransitAll) {
    options.CShowSourceRay.Value = true;
    options.CShowMirrorNormal.Value = true;
    EXPECT_EQ(Draw().size(), 2U);
    quest.transit = true;
    EXPECT_EQ(Draw().size(), 1U);
    satellite.Surface.ModelFlags[0] = '0';
    EXPECT_EQ(Draw().size(), 1U);
    quest.transit = false;
    EXPECT_TRUE(Draw().empty());
}

TEST_F(FlareRaysTest, OnTheMapTheRayLeadsFromThePlaceBelowTheSource) {
    app.Main.CPlaniSphere.Value = true;
    options.CShowSourceRay.Value = true;
    Look(0, 0, 20);
    const double radian = 200 * 20 / 64.0;
    motion.position = {2, 0, 0};
    lights.sun = {0, 1e4, 0};
    auto lines = Draw();
    ASSERT_GE(lines.size(), 45U);
    EXPECT_NEAR(lines.front().numbers[0], 300 + radian * 90 * kDegree, 1e-6);
    EXPECT_NEAR(lines.back().numbers[2], 300, 1e-6);
    double whole = 0;
    for (const RecordedOperation& line : lines) {
        EXPECT_NEAR(line.numbers[1], 200, 1e-6);
        whole += LengthOf(line);
    }
    EXPECT_NEAR(whole, radian * 90 * kDegree, 1e-6);
    // The way from 170 degrees east to 120 west leads over the seam.
    motion.position = 2 * Vector3{std::cos(170 * kDegree), std::sin(170 * kDegree), 0};
    lights.sun = 1e4 * Vector3{std::cos(-120 * kDegree), std::sin(-120 * kDegree), 0};
    lines = Draw();
    ASSERT_GE(lines.size(), 35U);
    for (const RecordedOperation& line : lines) {
        EXPECT_LT(LengthOf(line), radian * 3 * kDegree);
        EXPECT_GT(std::fabs(line.numbers[0] - 300), radian * 119 * kDegree);
    }
    // Over one place, and over opposite ones, there is no way.
    motion.position = {2, 0, 0};
    lights.sun = {1e4, 0, 0};
    EXPECT_TRUE(Draw().empty());
    lights.sun = {-1e4, 0, 0};
    quest.forceLight = true;
    EXPECT_TRUE(Draw().empty());
}

}  // namespace
}  // namespace glintara::testing
