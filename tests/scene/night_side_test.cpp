#include "scene/night_side.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "scene/scene_fixture.h"
#include "scene/surface/recording_surface.h"

namespace glintara {
namespace {

using testing::kDegree;

/// A picture of 800 by 600 pixels.
constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr double kTwips = 15;

/// What was covered, pixel by pixel.
class Cover {
  public:
    explicit Cover(const std::vector<RecordedOperation>& rows) : pixels_(std::size_t{kWidth} * kHeight, 0) {
        for (const RecordedOperation& row : rows) {
            const int x = static_cast<int>(row.numbers[0]);
            const int y = static_cast<int>(row.numbers[1]);
            const int count = static_cast<int>(row.numbers.size()) - 2;
            if (x < 0 || y < 0 || y >= kHeight || x + count > kWidth) {
                ADD_FAILURE() << "a row out of the picture: " << x << ", " << y << ", " << count;
                continue;
            }
            for (int i = 0; i < count; ++i) {
                double& pixel = pixels_[Index(x + i, y)];
                if (pixel != 0) ADD_FAILURE() << "covered twice: " << x + i << ", " << y;
                pixel = row.numbers[static_cast<std::size_t>(i) + 2] / 255;
            }
        }
    }

    /// 0 to 1.
    double At(int x, int y) const { return pixels_[Index(x, y)]; }

    bool IsClear() const {
        return std::ranges::all_of(
            pixels_, [](double share) { return share == 0; });
    }

  private:
    static std::size_t Index(int x, int y) {
        return static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x);
    }

    std::vector<double> pixels_;
};

struct NightSideTest : testing::SceneFixture {
    testing::Dice dice;
    CoverageRow row;

    NightSideTest() {
        surface.ScaleWidth = kWidth * kTwips;
        surface.ScaleHeight = kHeight * kTwips;
    }

    double Uniform(double from, double to) { return dice.Between(from, to); }

    void PutSunOver(double latDegrees, double lonDegrees) {
        app.Data.SunDir = LLRToSameXYZ(latDegrees * kDegree, lonDegrees * kDegree, 1);
    }

    Cover Night() {
        RefreshViewCache(view);
        surface.Forget();
        DrawNightSide(scene, row);
        EXPECT_EQ(surface.Operations().size(), surface.OperationsOf(DrawOperation::CoverRow).size());
        return Cover(surface.Operations());
    }

    Cover Glow() {
        RefreshViewCache(view);
        surface.Forget();
        DrawGlow(scene, row);
        return Cover(surface.OperationsOf(DrawOperation::CoverRow));
    }

    /// The middle of a pixel, scene units.
    ScenePoint Middle(int x, int y) const {
        const WindowScale window = GetWindowScale(view, surface);
        return {SceneFromBoxX(window, view, (x + 0.5) * kTwips), SceneFromBoxY(window, view, (y + 0.5) * kTwips)};
    }

    double PixelsPerUnit() const { return GetWindowScale(view, surface).scaleX / kTwips; }

    /// What the night has to be where the Sun stands so high: none by day, all of it three degrees below the horizon,
    /// in between the more the lower.
    static void ExpectNight(double share, double sine) {
        const double height = std::asin(sine) / kDegree;
        if (height > 0)
            ASSERT_EQ(share, 0) << height;
        else if (height < -3)
            ASSERT_EQ(share, 1) << height;
        else if (height > -1.5)
            ASSERT_LE(share, 0.51) << height;
        else
            ASSERT_GE(share, 0.49) << height;
    }

    /// Compares painted and true night at `count` random pixels of the disc.
    void ExpectRightOnDisc(int count) {
        const Cover night = Night();
        for (int i = 0; i < count; ++i) {
            const int x = static_cast<int>(Uniform(0, kWidth));
            const int y = static_cast<int>(Uniform(0, kHeight));
            const ScenePoint at = Middle(x, y);
            const double depth = 1 - at.x * at.x - at.y * at.y;
            if (std::hypot(at.x, at.y) > 1 - 1 / PixelsPerUnit()) continue;  // on the edge or beside the disc
            ExpectNight(night.At(x, y), Dot(RotateViewToWorld(view, {std::sqrt(depth), at.x, at.y}), app.Data.SunDir));
            if (HasFatalFailure()) FAIL() << "at " << x << ", " << y;
        }
    }

    /// The same on the map.
    void ExpectRightOnMap(int count) {
        const Cover night = Night();
        const double equator = std::remainder(-view.ViewLat, 2 * kPi);
        for (int i = 0; i < count; ++i) {
            const int x = static_cast<int>(Uniform(0, kWidth));
            const int y = static_cast<int>(Uniform(0, kHeight));
            const ScenePoint at = Middle(x, y);
            const double lat = at.y - equator;
            if (std::fabs(lat) > kPi / 2 || std::fabs(at.x) > kPi) {
                ASSERT_EQ(night.At(x, y), 0) << "beside the map";
                continue;
            }
            ExpectNight(night.At(x, y), Dot(LLRToSameXYZ(lat, at.x + view.ViewLon, 1), app.Data.SunDir));
            if (HasFatalFailure()) FAIL() << "at " << x << ", " << y;
        }
    }

    /// Whether the flat map shows full night at a place given in degrees.
    bool MapShowsNight(double lat, double lon) {
        const Cover night = Night();
        const ScenePoint at = FlatMapPosition(view, {lat * kDegree, lon * kDegree});
        const WindowScale window = GetWindowScale(view, surface);
        return night.At(static_cast<int>(BoxFromSceneX(window, view, at.x) / kTwips),
                        static_cast<int>(BoxFromSceneY(window, view, at.y) / kTwips)) == 1;
    }

    void ShowWholeMap() {
        app.Main.CPlaniSphere.Value = true;
        view.ZoomFactor = 26;
    }
};

TEST_F(NightSideTest, IsMaskedIntoThePictureInTheNightColour) {
    PutSunOver(20, 60);
    app.Data.ShadowColor = 0x403020;
    ASSERT_FALSE(Night().IsClear());
    for (const RecordedOperation& painted : surface.Operations()) {
        EXPECT_EQ(painted.state.DrawMode, MixMode::Mask);
        EXPECT_EQ(painted.state.FillColor, 0x403020U);
    }
    EXPECT_EQ(surface.DrawMode, MixMode::Copy);
}

TEST_F(NightSideTest, RightOnTheDiscFromAnySide) {
    for (int i = 0; i < 100; ++i) {
        view.ViewLat = Uniform(-kPi, kPi);
        view.ViewLon = Uniform(0, 2 * kPi);
        view.ViewRoll = i % 3 == 0 ? Uniform(-kPi, kPi) : 0;
        view.ZoomFactor = std::exp(Uniform(1, 8.5));
        view.PanX = Uniform(-1, 1);
        view.PanY = Uniform(-1, 1);
        PutSunOver(Uniform(-23.44, 23.44), Uniform(-180, 180));
        ExpectRightOnDisc(2000);
        if (HasFatalFailure()) return;
    }
}

TEST_F(NightSideTest, SunNearTheAxisOfTheView) {
    view.ViewLat = 10 * kDegree;
    view.ViewLon = 20 * kDegree;
    for (const double off : {1e-12, 1e-6, 1e-3, 0.5, 5.0}) {
        PutSunOver(10 + off, 20);
        ExpectRightOnDisc(2000);
        PutSunOver(-10 - off, -160);
        ExpectRightOnDisc(2000);
    }
}

TEST_F(NightSideTest, SunExactlyInFrontLeavesTheWholeDiscLight) {
    app.Data.SunDir = {1, 0, 0};
    EXPECT_TRUE(Night().IsClear());
}

TEST_F(NightSideTest, SunExactlyBehindDarkensTheMiddleWhole) {
    app.Data.SunDir = {-1, 0, 0};
    const Cover night = Night();
    for (const double share : {0.0, 0.3, 0.6, 0.9, 0.99}) {
        const int off = static_cast<int>(share * PixelsPerUnit());
        EXPECT_EQ(night.At(kWidth / 2 + off, kHeight / 2), 1);
        EXPECT_EQ(night.At(kWidth / 2, kHeight / 2 - off), 1);
    }
}

// The mask has to take the antialiased edge of the disc along, and must leave space beyond the glow as it is, also
// round a globe of a few pixels.
TEST_F(NightSideTest, TakesTheLimbAlongAndNothingBeyondTheGlow) {
    for (const double zoom : {0.5, 2.0, 8.0, 29.0, 55.0, 63.0, 300.0}) {
        view.ZoomFactor = zoom;
        view.PanX = zoom > 64 ? 0.9 : 0;
        view.PanY = 0.01;
        app.Data.SunDir = {-0.8, 0.6, 0};
        const Cover night = Night();
        const double unit = PixelsPerUnit();
        const double glow = std::min(5.0, 0.05 * unit);
        bool seen = false;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const ScenePoint at = Middle(x, y);
                const double off = (std::hypot(at.x, at.y) - 1) * unit;
                if (off > std::max(glow, 0.5)) ASSERT_EQ(night.At(x, y), 0) << zoom << ": " << off;
                if (unit > 35 && at.x < -0.1 && off > -3 && off < 0.5) {
                    ASSERT_EQ(night.At(x, y), 1) << zoom << ": " << off;
                    seen = true;
                }
            }
        }
        EXPECT_TRUE(seen || unit <= 35) << zoom;
    }
}

TEST_F(NightSideTest, GrowsWithoutSteps) {
    EXPECT_EQ(NightShare(0.1), 0);
    EXPECT_EQ(NightShare(0), 0);
    EXPECT_NEAR(NightShare(-std::sin(1.5 * kDegree)), 0.5, 1e-3);
    EXPECT_EQ(NightShare(-std::sin(3.0001 * kDegree)), 1);
    EXPECT_EQ(NightShare(-1), 1);
    double before = 0;
    for (double depth = 0; depth < 3.5; depth += 0.01) {
        const double share = NightShare(-std::sin(depth * kDegree));
        EXPECT_GE(share, before);
        EXPECT_LT(share - before, 0.006);
        before = share;
    }
}

TEST_F(NightSideTest, TheGlowFadesWithTheSunAlongTheLimb) {
    EXPECT_EQ(GlowShare(1), 1);
    EXPECT_EQ(GlowShare(std::sin(5 * kDegree)), 1);
    EXPECT_NEAR(GlowShare(std::sin(-13 * kDegree)), 0.2, 1e-12);
    double before = 0;
    for (double height = -14; height < 6; height += 0.5) {
        EXPECT_GE(GlowShare(std::sin(height * kDegree)), before);
        before = GlowShare(std::sin(height * kDegree));
    }

    // The Sun stands to the right, so the glow is bright there and faint at the left.
    view.ZoomFactor = 40;
    app.Data.SunDir = {0, 1, 0};
    const Cover glow = Glow();
    const int edge = static_cast<int>(PixelsPerUnit());
    const double right = glow.At(kWidth / 2 + edge + 1, kHeight / 2);
    const double left = glow.At(kWidth / 2 - edge - 2, kHeight / 2);
    EXPECT_GT(right, 0.2);
    EXPECT_NEAR(left / right, 0.2, 0.05);
    const double top = glow.At(kWidth / 2, kHeight / 2 - edge - 2);
    EXPECT_GT(top, 1.5 * left);
    EXPECT_LT(top, right);
    EXPECT_EQ(surface.Operations().front().state.FillColor, kLimbColor);
    EXPECT_EQ(surface.Operations().front().state.DrawMode, MixMode::Copy);

    app.Main.CSunLight.Value = false;
    EXPECT_NEAR(Glow().At(kWidth / 2 - edge - 2, kHeight / 2), right, 0.01);
}

TEST_F(NightSideTest, TheGlowLiesAroundTheDiscAndFadesOutwards) {
    app.Main.CSunLight.Value = false;
    for (const double zoom : {2.0, 8.0, 29.0, 55.0, 300.0}) {
        view.ZoomFactor = zoom;
        view.PanX = zoom > 64 ? -0.9 : 0;
        const Cover glow = Glow();
        const double unit = PixelsPerUnit();
        const double width = std::min(5.0, 0.05 * unit);
        std::map<int, double> byDistance;  // in quarters of a pixel
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const ScenePoint at = Middle(x, y);
                const double off = (std::hypot(at.x, at.y) - 1) * unit;
                if (off > width || off < -1.5)
                    ASSERT_EQ(glow.At(x, y), 0) << zoom << ": " << off;
                else if (off >= 0)
                    byDistance[static_cast<int>(off * 4)] = glow.At(x, y);
                else if (off > -0.9)
                    ASSERT_GT(glow.At(x, y), 0.85) << zoom << ": " << off;
            }
        }
        double before = 1;
        for (const auto& [distance, share] : byDistance) {
            EXPECT_LE(share, before + 0.15) << zoom << ": " << distance / 4.0;
            before = share;
        }
        EXPECT_LT(before, 0.1) << zoom;
    }
}

TEST_F(NightSideTest, WithoutASunNothingIsDarkened) {
    app.Data.SunDir = {};
    EXPECT_TRUE(Night().IsClear());
    EXPECT_FALSE(Glow().IsClear());
    app.Main.CPlaniSphere.Value = true;
    EXPECT_TRUE(Night().IsClear());
    app.Data.SunDir = {std::nan(""), 0, 0};
    EXPECT_TRUE(Night().IsClear());
    EXPECT_FALSE(Glow().IsClear());
}

TEST_F(NightSideTest, RightOnTheMapAtAnyShift) {
    app.Main.CPlaniSphere.Value = true;
    for (int i = 0; i < 100; ++i) {
        // Near and at half a turn around 0, and the same a turn on or back.
        const double shift = i % 2 == 0 ? 0 : Uniform(-1.5, 1.5);
        view.ViewLat = shift + (i % 3 - 1) * kTwoPi;
        view.ViewLon = Uniform(-7, 7);
        view.ZoomFactor = std::exp(Uniform(1, 5));
        PutSunOver(Uniform(-23.44, 23.44), Uniform(-180, 180));
        ExpectRightOnMap(2000);
        if (HasFatalFailure()) return;
    }
}

TEST_F(NightSideTest, RightOnTheMapWithTheSunNearTheEquator) {
    app.Main.CPlaniSphere.Value = true;
    view.ZoomFactor = 26;
    for (const double lat : {1.0, 1e-3, 1e-9, 0.0, -1e-14, -1e-3, -1.0}) {
        for (const double seam : {-180.0, -90.0, -89.9999, 0.0, 37.0, 90.0, 90.0001, 179.0}) {
            view.ViewLon = 0;
            PutSunOver(lat, seam);
            ExpectRightOnMap(1000);
            if (HasFatalFailure()) FAIL() << "Sun over " << lat << ", " << seam;
        }
    }
}

// At the June solstice of 2018 (21 June, 10:07 UTC) there is midnight sun in Longyearbyen and polar night at McMurdo.
TEST_F(NightSideTest, PolarNightLiesRoundTheSouthPoleInJune) {
    ShowWholeMap();
    const double jd = DateToJD({2018, 6, 21, 10, 7, 0});
    const Equatorial sun = SunPosition(jd);
    PutSunOver(sun.dec / kDegree, EastLongitudeOf(sun.ra, SiderealFromJD(jd)) / kDegree);
    EXPECT_FALSE(MapShowsNight(78.2, 15.6));
    EXPECT_TRUE(MapShowsNight(-77.8, 166.7));
    for (double lon = -179; lon < 180; lon += 30) {
        EXPECT_TRUE(MapShowsNight(-89, lon));
        EXPECT_FALSE(MapShowsNight(89, lon));
    }
    EXPECT_FALSE(MapShowsNight(45.07, 7.69));
    EXPECT_TRUE(MapShowsNight(37.8, -122.4));  // San Francisco, three in the morning
}

TEST_F(NightSideTest, PolarNightLiesRoundTheNorthPoleInDecember) {
    ShowWholeMap();
    PutSunOver(-23.43, 0);
    for (double lon = -179; lon < 180; lon += 30) {
        EXPECT_TRUE(MapShowsNight(89, lon));
        EXPECT_FALSE(MapShowsNight(-89, lon));
    }
}

TEST_F(NightSideTest, SunOverTheEquatorDarkensTheHalfBehind) {
    ShowWholeMap();
    PutSunOver(0, 0);
    for (const double lat : {-70.0, -40.0, 0.0, 40.0, 70.0}) {
        EXPECT_FALSE(MapShowsNight(lat, 89));
        EXPECT_FALSE(MapShowsNight(lat, -89));
        EXPECT_TRUE(MapShowsNight(lat, 101));
        EXPECT_TRUE(MapShowsNight(lat, -101));
        EXPECT_TRUE(MapShowsNight(lat, 179));
    }
}

// On a fine display the rows are those of its pixels.
TEST_F(NightSideTest, CountsInPixelsOfTheDisplay) {
    view.ZoomFactor = 64;
    surface.ScaleWidth /= 2;
    surface.ScaleHeight /= 2;
    surface.TwipsPerPixelX = surface.TwipsPerPixelY = kTwips / 2;
    app.Data.SunDir = {0, 1, 0};
    const Cover night = Night();
    EXPECT_EQ(night.At(kWidth / 2 - 100, kHeight / 2), 1);
    EXPECT_EQ(night.At(kWidth / 2 - 100, kHeight - 20), 1);
    EXPECT_EQ(night.At(kWidth / 2 + 100, kHeight / 2), 0);
}

}  // namespace
}  // namespace glintara
