#include "scene/circles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "engine/astro/constants.h"
#include "orbit/location.h"
#include "scene/scene_fixture.h"

namespace glintara {
namespace {

using testing::kDegree;

/// Kilometres in the radius of the sphere that published coverage figures take for the Earth.
constexpr double kEarthRadius = 6378.137;
constexpr double kGeostationary = 42164 / kEarthRadius;

struct CirclesTest : testing::SceneFixture {
    CirclesTest() {
        LookAt(0, 0);
        SetLocationDegrees(app.Data, 45.07, 7.69);
    }

    Vector3 Site() const { return ObserverOnUnitSphere(app.Data.Site); }

    /// Both ends of all lines, as points of the near half of the unit sphere, on world axes.
    std::vector<Vector3> DrawnOnGround() const {
        std::vector<Vector3> points;
        const WindowScale window = GetWindowScale(view, surface);
        for (const RecordedOperation& line : Lines()) {
            for (std::size_t i = 0; i < 4; i += 2) {
                const double y = SceneFromBoxX(window, view, line.numbers[i]);
                const double z = SceneFromBoxY(window, view, line.numbers[i + 1]);
                points.push_back(RotateViewToWorld(view, {std::sqrt(std::max(0.0, 1 - y * y - z * z)), y, z}));
            }
        }
        return points;
    }
};

// Wertz and Larson, Space Mission Analysis and Design: a geostationary satellite is seen out to 81.3 degrees, and to
// 76.3 degrees at an elevation of 5 degrees.
TEST_F(CirclesTest, CoverageOfAGeostationarySatellite) {
    EXPECT_NEAR(VisibilityAngle(kGeostationary, 0) / kDegree, 81.3, 0.05);
    EXPECT_NEAR(VisibilityAngle(kGeostationary, kVisibilityElevation) / kDegree, 76.3, 0.05);
}

TEST_F(CirclesTest, NoCoverageFromTheGroundOrBelow) {
    EXPECT_EQ(VisibilityAngle(1, kVisibilityElevation), 0);
    EXPECT_EQ(VisibilityAngle(0.5, kVisibilityElevation), 0);
    EXPECT_EQ(VisibilityAngle(0, kVisibilityElevation), 0);
    EXPECT_EQ(VisibilityAngle(std::nan(""), kVisibilityElevation), 0);
    EXPECT_GE(VisibilityAngle(1 + 1e-15, kVisibilityElevation), 0);
    DrawSatCircle(scene, {0, 0, 0.9});
    DrawSatCircle(scene, {std::nan(""), 0, 0});
    DrawVisibilityArea(scene, 1);
    EXPECT_TRUE(Lines().empty());
}

TEST_F(CirclesTest, SatelliteStandsFiveDegreesHighAllAlongItsCircle) {
    for (const double distance : {1 + 400 / kEarthRadius, 1 + 780 / kEarthRadius, kGeostationary}) {
        surface.Forget();
        const Vector3 satellite = LLRToSameXYZ(0.4, -0.2, distance);
        LookAt(0.4 / kDegree, -0.2 / kDegree);
        DrawSatCircle(scene, satellite);
        const std::vector<Vector3> points = DrawnOnGround();
        ASSERT_EQ(points.size(), 200U);
        for (const Vector3& point : points) {
            const Vector3 sight = satellite - point;
            EXPECT_NEAR(std::asin(Dot(sight, point) / Length(sight)) / kDegree, 5, 1e-6);
        }
        EXPECT_EQ(Lines().front().state.ForeColor, kSatCircleColor);
    }
}

TEST_F(CirclesTest, AreaOfTheObserverMirrorsTheCircleOfTheSatellite) {
    LookAt(app.Data.Site.SiteGeoLat / kDegree, 7.69);
    const double distance = 1 + 780 / kEarthRadius;
    DrawVisibilityArea(scene, distance);
    const std::vector<Vector3> points = DrawnOnGround();
    ASSERT_EQ(points.size(), 200U);
    for (const Vector3& point : points) {
        const Vector3 sight = distance * point - Site();
        EXPECT_NEAR(std::asin(Dot(sight, Site()) / Length(sight)) / kDegree, 5, 1e-6);
    }
    EXPECT_EQ(Lines().front().state.ForeColor, 0x208030U);
}

TEST_F(CirclesTest, HorizonCircleLiesNinetyDegreesFromTheObserver) {
    app.Main.CHCircle.Value = true;
    LookAt(0, 60);
    DrawHorizonCircles(scene);
    const std::vector<Vector3> points = DrawnOnGround();
    ASSERT_GE(points.size(), 2U * 48U);
    for (const Vector3& point : points) EXPECT_NEAR(Dot(point, Site()), 0, 1e-5);
}

TEST_F(CirclesTest, HorizonCircleIsWholeWhenItIsTheLimb) {
    app.Main.CHCircle.Value = true;
    LookAt(app.Data.Site.SiteGeoLat / kDegree, 7.69);
    DrawHorizonCircles(scene);
    EXPECT_EQ(Lines().size(), 100U);
    // It joins up: each segment begins where the one before ended, and the last ends at the first.
    const std::vector<RecordedOperation> lines = Lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const RecordedOperation& next = lines[(i + 1) % lines.size()];
        EXPECT_NEAR(lines[i].numbers[2], next.numbers[0], 1e-6);
        EXPECT_NEAR(lines[i].numbers[3], next.numbers[1], 1e-6);
    }
}

TEST_F(CirclesTest, HorizonCirclesFollowTheirBoxes) {
    DrawHorizonCircles(scene);
    EXPECT_TRUE(Lines().empty());

    app.Main.CHCircle.Value = true;
    app.Main.CDrawBackStars.Value = true;
    view.SkyScale = 55;
    DrawHorizonCircles(scene);
    const std::size_t onEarth = Lines().size();
    surface.Forget();
    app.Main.CDrawSky.Value = true;
    DrawHorizonCircles(scene);
    const std::size_t onBoth = Lines().size();
    surface.Forget();
    app.Main.CSkyOnly.Value = true;
    DrawHorizonCircles(scene);
    const std::size_t onSky = Lines().size();
    EXPECT_GT(onEarth, 0U);
    EXPECT_EQ(onSky, 100U);
    EXPECT_GT(onBoth, onEarth);
}

TEST_F(CirclesTest, HorizonOnTheSkyIsAtTheSkysRadius) {
    app.Main.CHCircle.Value = true;
    app.Main.CDrawSky.Value = true;
    app.Main.CSkyOnly.Value = true;
    app.Main.CDrawBackStars.Value = true;
    view.SkyScale = 2.5;
    LookAt(45.07, 7.69);
    DrawHorizonCircles(scene);
    const WindowScale window = GetWindowScale(view, surface);
    ASSERT_EQ(Lines().size(), 100U);
    for (const RecordedOperation& line : Lines()) {
        const double x = SceneFromBoxX(window, view, line.numbers[0]);
        const double y = SceneFromBoxY(window, view, line.numbers[1]);
        EXPECT_NEAR(std::hypot(x, y), 2.5, 1e-5);
    }
}

TEST_F(CirclesTest, HorizonOnTheSkyStandsOverTheShiftedObserver) {
    app.Main.CHCircle.Value = true;
    app.Main.CDrawSky.Value = true;
    app.Main.CSkyOnly.Value = true;
    app.Main.CDrawBackStars.Value = true;
    view.SkyScale = 1.5;
    LookAt(45.07, 7.69);
    Pan(0, -1.3);
    TakeFramePan(view);
    DrawHorizonCircles(scene);
    EXPECT_EQ(view.PanY, -1.3);
    const WindowScale window = GetWindowScale(view, surface);
    for (const RecordedOperation& line : Lines()) {
        const double x = SceneFromBoxX(window, view, line.numbers[0]);
        // The circle's centre is one Earth radius above the Earth's, so that its shift is taken off.
        const double y = SceneFromBoxY(window, view, line.numbers[1]) - 1;
        EXPECT_NEAR(std::hypot(x, y), 1.5, 1e-5);
    }
}

TEST_F(CirclesTest, InAHorizonViewTheHorizonOfTheSkyIsOneLine) {
    app.Main.CHCircle.Value = true;
    app.Main.CDrawSky.Value = true;
    app.Main.CSkyOnly.Value = true;
    app.Main.CDrawBackStars.Value = true;
    view.SkyScale = 1.5;
    LookAt(app.Data.Site.SiteGeoLat / kDegree - 90, 7.69);
    Pan(0, -1.3);
    TakeFramePan(view);
    DrawHorizonCircles(scene);
    EXPECT_NEAR(static_cast<double>(Lines().size()), 50, 1) << "the half in front has no stars";
    const WindowScale window = GetWindowScale(view, surface);
    for (const RecordedOperation& line : Lines()) {
        // The plane below the true vertical dips towards the north by 0.19 degrees.
        const double y = SceneFromBoxY(window, view, line.numbers[1]) - 1;
        EXPECT_LE(y, 1e-9);
        EXPECT_GE(y, -1.5 * 0.2 * kDegree);
    }
    surface.Forget();
    app.Main.CDrawFrontStars.Value = true;
    DrawHorizonCircles(scene);
    EXPECT_EQ(Lines().size(), 100U);
}

TEST_F(CirclesTest, CircleOnTheMapIsClosedThroughTheSeam) {
    app.Main.CPlaniSphere.Value = true;
    PlotSphereCircle(scene, {0, 175 * kDegree}, 20 * kDegree, 1, kWhite);
    // Two segments cross the seam and are drawn in two parts each.
    EXPECT_EQ(Lines().size(), 102U);
    const WindowScale window = GetWindowScale(view, surface);
    for (const RecordedOperation& line : Lines()) {
        EXPECT_LE(std::fabs(SceneFromBoxX(window, view, line.numbers[0])), kPi * 1.0051);
        EXPECT_LT(std::fabs(line.numbers[0] - line.numbers[2]), 30);
    }
}

TEST_F(CirclesTest, NumbersThatAreNoneDrawNothing) {
    PlotSphereCircle(scene, {std::nan(""), 0}, 1, 1, kWhite);
    PlotSphereCircle(scene, {0, 0}, INFINITY, 1, kWhite);
    PlotSkyCircle(scene, {0, 0}, 1, std::nan(""), kWhite);
    EXPECT_TRUE(Lines().empty());
}

}  // namespace
}  // namespace glintara
