#include "scene/night_side.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "scene/scene_fixture.h"
#include "scene/surface/recording_surface.h"

namespace glintara {
namespace {

using testing::kDegree;

/// Whether (x, y) lies inside of a closed polygon, by the number of its edges to the right of the point.
bool Encloses(std::span<const double> xy, double x, double y) {
    bool inside = false;
    const std::size_t count = xy.size() / 2;
    for (std::size_t i = 0, j = count - 1; i < count; j = i++) {
        const double xi = xy[2 * i], yi = xy[2 * i + 1], xj = xy[2 * j], yj = xy[2 * j + 1];
        if ((yi > y) != (yj > y) && x < (xj - xi) * (y - yi) / (yj - yi) + xi) inside = !inside;
    }
    return inside;
}

struct NightSideTest : testing::SceneFixture {
    testing::Dice dice;

    NightSideTest() {
        surface.ScaleWidth = 12000;
        surface.ScaleHeight = 9000;
    }

    double Uniform(double from, double to) { return dice.Between(from, to); }

    void PutSunOver(double latDegrees, double lonDegrees) {
        app.Data.SunDir = LLRToSameXYZ(latDegrees * kDegree, lonDegrees * kDegree, 1);
    }

    /// The polygon that the night was painted with; empty when none was.
    std::vector<double> Night() {
        RefreshViewCache(view);
        surface.Forget();
        DrawNightSide(scene);
        const auto painted = surface.OperationsOf(DrawOperation::PolyPolygon);
        EXPECT_LE(painted.size(), 1U);
        EXPECT_EQ(surface.Operations().size(), painted.size());
        return painted.empty() ? std::vector<double>{} : painted.front().numbers;
    }

    /// Whether the flat map shows night at a place given in degrees.
    bool MapShowsNight(double lat, double lon) {
        const std::vector<double> night = Night();
        const ScenePoint at = FlatMapPosition(view, {lat * kDegree, lon * kDegree});
        const WindowScale window = GetWindowScale(view, surface);
        return Encloses(night, BoxFromSceneX(window, view, at.x) / surface.TwipsPerPixelX,
                        BoxFromSceneY(window, view, at.y) / surface.TwipsPerPixelY);
    }

    /// Compares painted and true night at `count` random places of the disc that are not too near to the terminator.
    void ExpectRightOnDisc(int count) {
        const std::vector<double> night = Night();
        const WindowScale window = GetWindowScale(view, surface);
        for (int i = 0; i < count; ++i) {
            const double y = Uniform(-1, 1);
            const double z = Uniform(-1, 1);
            const double depth = 1 - y * y - z * z;
            if (depth < 1e-6) continue;
            const double height = Dot(RotateViewToWorld(view, {std::sqrt(depth), y, z}), app.Data.SunDir);
            if (std::fabs(height) < 2e-3) continue;
            const bool dark = Encloses(night, BoxFromSceneX(window, view, y) / surface.TwipsPerPixelX,
                                       BoxFromSceneY(window, view, z) / surface.TwipsPerPixelY);
            ASSERT_EQ(dark, height < 0) << "at " << y << ", " << z << ", Sun at sine " << height;
        }
    }

    /// The same on the map.
    void ExpectRightOnMap(int count) {
        const std::vector<double> night = Night();
        const WindowScale window = GetWindowScale(view, surface);
        for (int i = 0; i < count; ++i) {
            const double lat = Uniform(-89.9, 89.9) * kDegree;
            const double x = Uniform(-kPi, kPi);
            const double height = Dot(LLRToSameXYZ(lat, x + view.ViewLon, 1), app.Data.SunDir);
            if (std::fabs(height) < 2e-3) continue;
            const double equator = std::remainder(-view.ViewLat, 2 * kPi);
            const bool dark = Encloses(night, BoxFromSceneX(window, view, x) / surface.TwipsPerPixelX,
                                       BoxFromSceneY(window, view, lat + equator) / surface.TwipsPerPixelY);
            ASSERT_EQ(dark, height < 0) << "at latitude " << lat << ", X " << x << ", Sun at sine " << height;
        }
    }
};

TEST_F(NightSideTest, IsMaskedIntoThePictureInTheNightColour) {
    PutSunOver(20, 60);
    app.Data.ShadowColor = 0x403020;
    ASSERT_FALSE(Night().empty());
    const RecordedOperation painted = surface.Operations().front();
    EXPECT_EQ(painted.state.DrawMode, MixMode::Mask);
    EXPECT_EQ(painted.state.FillStyle, FillPattern::Solid);
    EXPECT_EQ(painted.state.DrawStyle, PenPattern::Solid);
    EXPECT_EQ(painted.state.FillColor, 0x403020U);
    EXPECT_EQ(painted.state.ForeColor, 0x403020U);
    EXPECT_EQ(surface.DrawMode, MixMode::Copy);
}

TEST_F(NightSideTest, RightOnTheDiscFromAnySide) {
    for (int i = 0; i < 300; ++i) {
        view.ViewLat = Uniform(-kPi, kPi);
        view.ViewLon = Uniform(0, 2 * kPi);
        view.ViewRoll = i % 3 == 0 ? Uniform(-kPi, kPi) : 0;
        view.ZoomFactor = std::exp(Uniform(1, 7));
        view.PanX = Uniform(-1, 1);
        view.PanY = Uniform(-1, 1);
        PutSunOver(Uniform(-23.44, 23.44), Uniform(-180, 180));
        ExpectRightOnDisc(200);
        if (HasFatalFailure()) return;
    }
}

TEST_F(NightSideTest, SunNearTheAxisOfTheView) {
    view.ViewLat = 10 * kDegree;
    view.ViewLon = 20 * kDegree;
    for (const double off : {1e-12, 1e-6, 1e-3, 0.5, 5.0}) {
        PutSunOver(10 + off, 20);
        ExpectRightOnDisc(500);
        PutSunOver(-10 - off, -160);
        ExpectRightOnDisc(500);
    }
}

TEST_F(NightSideTest, SunExactlyInFrontLeavesTheWholeDiscLight) {
    app.Data.SunDir = {1, 0, 0};
    EXPECT_TRUE(Night().empty());
}

TEST_F(NightSideTest, SunExactlyBehindDarkensTheWholeDisc) {
    app.Data.SunDir = {-1, 0, 0};
    const std::vector<double> night = Night();
    const WindowScale window = GetWindowScale(view, surface);
    ASSERT_GE(night.size(), 2U * 256U);
    for (std::size_t i = 0; i < night.size(); i += 2) {
        const double x = night[i] * surface.TwipsPerPixelX - window.halfW;
        const double y = night[i + 1] * surface.TwipsPerPixelY - window.halfH;
        EXPECT_GE(std::hypot(x, y), window.scaleX);
    }
    ExpectRightOnDisc(500);
}

TEST_F(NightSideTest, SunBesideTheGlobeGivesHalfADisc) {
    PutSunOver(0, 90);
    const std::vector<double> night = Night();
    const double centre = GetWindowScale(view, surface).halfW / surface.TwipsPerPixelX;
    for (std::size_t i = 0; i < night.size(); i += 2) EXPECT_LE(night[i], centre + 1e-6);
    ExpectRightOnDisc(500);
}

TEST_F(NightSideTest, ReachesALittleBeyondTheLimb) {
    PutSunOver(0, 90);
    const std::vector<double> night = Night();
    const WindowScale window = GetWindowScale(view, surface);
    double farthest = 0;
    for (std::size_t i = 0; i < night.size(); i += 2) {
        farthest = std::max(farthest, std::hypot(night[i] * surface.TwipsPerPixelX - window.halfW,
                                                 night[i + 1] * surface.TwipsPerPixelY - window.halfH));
    }
    EXPECT_NEAR((farthest - window.scaleX) / 15, kNightRim, 1e-6);
}

TEST_F(NightSideTest, StaysSmoothHoweverNear) {
    PutSunOver(0, 40);
    for (const double zoom : {29.0, 64.0, 500.0, 5000.0}) {
        view.ZoomFactor = zoom;
        const std::vector<double> night = Night();
        const WindowScale window = GetWindowScale(view, surface);
        const double axis = std::sin(40 * kDegree + kPi / 2 + kPi);
        // The terminator's chords against the half ellipse that it is, at the chords' middles.
        double worst = 0;
        for (std::size_t i = 0; i + 3 < night.size(); i += 2) {
            const double x = ((night[i] + night[i + 2]) / 2 * 15 - window.halfW) / window.scaleX;
            const double y = ((night[i + 1] + night[i + 3]) / 2 * 15 - window.halfH) / window.scaleX;
            if (std::hypot(x, y) > 0.99) continue;
            worst = std::max(worst, std::fabs(x - axis * std::sqrt(1 - y * y)) * window.scaleX / 15);
        }
        EXPECT_LT(worst, 0.35) << "at zoom " << zoom;
    }
}

TEST_F(NightSideTest, WithoutASunNothingIsDarkened) {
    app.Data.SunDir = {};
    EXPECT_TRUE(Night().empty());
    app.Main.CPlaniSphere.Value = true;
    EXPECT_TRUE(Night().empty());
    app.Data.SunDir = {std::nan(""), 0, 0};
    EXPECT_TRUE(Night().empty());
}

TEST_F(NightSideTest, RightOnTheMapAtAnyShift) {
    app.Main.CPlaniSphere.Value = true;
    for (int i = 0; i < 300; ++i) {
        // Near and at half a turn around 0, and the same a turn on or back.
        const double shift = i % 2 == 0 ? 0 : Uniform(-1.5, 1.5);
        view.ViewLat = shift + (i % 3 - 1) * kTwoPi;
        view.ViewLon = Uniform(-7, 7);
        view.ZoomFactor = std::exp(Uniform(1, 5));
        PutSunOver(Uniform(-23.44, 23.44), Uniform(-180, 180));
        ExpectRightOnMap(200);
        if (HasFatalFailure()) return;
    }
}

TEST_F(NightSideTest, RightOnTheMapWithTheSunNearTheEquator) {
    app.Main.CPlaniSphere.Value = true;
    for (const double lat : {1.0, 0.1, 1e-3, 1e-9, 1e-14, 0.0, -1e-14, -1e-9, -1e-3, -0.1, -1.0}) {
        for (const double seam : {-180.0, -90.0, -89.9999, 0.0, 37.0, 90.0, 90.0001, 179.0}) {
            view.ViewLon = 0;
            PutSunOver(lat, seam);
            ExpectRightOnMap(200);
            if (HasFatalFailure()) FAIL() << "Sun over " << lat << ", " << seam;
        }
    }
}

TEST_F(NightSideTest, NightOnTheMapStaysInItsFrame) {
    app.Main.CPlaniSphere.Value = true;
    view.ViewLat = 0.4;
    const WindowScale window = GetWindowScale(view, surface);
    for (int i = 0; i < 200; ++i) {
        PutSunOver(Uniform(-23.44, 23.44), Uniform(-180, 180));
        const std::vector<double> night = Night();
        for (std::size_t k = 0; k < night.size(); k += 2) {
            const double x = SceneFromBoxX(window, view, night[k] * 15);
            const double y = SceneFromBoxY(window, view, night[k + 1] * 15);
            ASSERT_LE(std::fabs(x), kPi + 1e-9);
            ASSERT_LE(std::fabs(y + 0.4), kPi / 2 + 1e-9);
        }
    }
}

TEST_F(NightSideTest, TurningTheMapByWholeTurnsChangesNothing) {
    app.Main.CPlaniSphere.Value = true;
    PutSunOver(15, 40);
    view.ViewLat = -0.3;
    const std::vector<double> before = Night();
    view.ViewLat = -0.3 + kTwoPi;
    const std::vector<double> after = Night();
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i) EXPECT_NEAR(before[i], after[i], 1e-6);
}

// At the June solstice of 2018 (21 June, 10:07 UTC) there is midnight sun in Longyearbyen and polar night at McMurdo.
TEST_F(NightSideTest, PolarNightLiesRoundTheSouthPoleInJune) {
    app.Main.CPlaniSphere.Value = true;
    const double jd = DateToJD({2018, 6, 21, 10, 7, 0});
    const Equatorial sun = SunPosition(jd);
    PutSunOver(sun.dec / kDegree, EastLongitudeOf(sun.ra, SiderealFromJD(jd)) / kDegree);
    EXPECT_FALSE(MapShowsNight(78.2, 15.6));
    EXPECT_TRUE(MapShowsNight(-77.8, 166.7));
    for (double lon = -179; lon < 180; lon += 10) {
        EXPECT_TRUE(MapShowsNight(-89, lon));
        EXPECT_FALSE(MapShowsNight(89, lon));
    }
    EXPECT_FALSE(MapShowsNight(45.07, 7.69));
    EXPECT_TRUE(MapShowsNight(37.8, -122.4));  // San Francisco, three in the morning
}

TEST_F(NightSideTest, PolarNightLiesRoundTheNorthPoleInDecember) {
    app.Main.CPlaniSphere.Value = true;
    PutSunOver(-23.43, 0);
    for (double lon = -179; lon < 180; lon += 10) {
        EXPECT_TRUE(MapShowsNight(89, lon));
        EXPECT_FALSE(MapShowsNight(-89, lon));
    }
}

TEST_F(NightSideTest, SunOverTheEquatorDarkensTheHalfBehind) {
    app.Main.CPlaniSphere.Value = true;
    PutSunOver(0, 0);
    for (const double lat : {-85.0, -40.0, 0.0, 40.0, 85.0}) {
        EXPECT_FALSE(MapShowsNight(lat, 89));
        EXPECT_FALSE(MapShowsNight(lat, -89));
        EXPECT_TRUE(MapShowsNight(lat, 91));
        EXPECT_TRUE(MapShowsNight(lat, -91));
        EXPECT_TRUE(MapShowsNight(lat, 179));
    }
}

}  // namespace
}  // namespace glintara
