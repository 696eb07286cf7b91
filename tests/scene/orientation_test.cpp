#include "scene/orientation.h"

#include "flare/observed_night.h"
#include "orbit/propagation.h"
#include "scene/view_geometry.h"

namespace glintara::observed_night {
namespace {

/// 20 March 2018, 12 h UTC. The equinox was at 16:15; the Sun crosses the equator at 0.9126 degrees of right ascension
/// a day and goes north by 0.3954 (Astronomical Almanac 2018).
constexpr double kEquinoxNoon = 2458198.0;
constexpr double kEquinoxRA = (360 - 0.9126 * 4.25 / 24) * kDegree;
constexpr double kEquinoxDec = -0.3954 * 4.25 / 24 * kDegree;

/// Where the Sun stood overhead then: the equation of time was -7 min 27 s.
constexpr double kEquinoxLon = (7 + 27 / 60.0) / 4 * kDegree;

/// A hundredth of a degree; it covers the rounding of those figures.
constexpr double kFine = 0.01 * kDegree;

struct OrientationTest : ::testing::Test {
    Observatory o;
    Application& app = o.app;
    CommonData& data = o.app.Data;
    ViewState& view = o.app.Data.View;

    void SetUp() override {
        view.ViewRoll = 0.5;
        view.ViewLat = 0.6;
        view.ViewLon = 0.7;
        view.ZoomFactor = 40;
        view.PanX = 0.1;
        view.PanY = -0.2;
    }

    void AtTheEquinox() {
        SetInstant(data, kEquinoxNoon);
        data.SunRA = kEquinoxRA;
        data.SunDec = kEquinoxDec;
    }

    void ExpectPressed(const std::string& text) const {
        EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), text);
        EXPECT_EQ(o.windows.calls, std::vector<std::string>{"UpdateGraphicsLevel2"});
        EXPECT_EQ(view.ViewRoll, 0);
        EXPECT_EQ(view.ZoomFactor, 40);
    }

    void ExpectPanKept() const {
        EXPECT_EQ(view.PanX, 0.1);
        EXPECT_EQ(view.PanY, -0.2);
    }

    void ExpectLockedAsSeen() const {
        EXPECT_EQ(view.LockedLat, view.ViewLat);
        EXPECT_EQ(view.LockedRoll, view.ViewRoll);
    }
};

/// Angle between two directions on the circle.
double Apart(double a, double b) { return std::fabs(std::remainder(a - b, 360 * kDegree)); }

TEST_F(OrientationTest, Zero) {
    CZeroOrientation_Click(app);
    ExpectPressed("Zero Angle Orientation");
    EXPECT_EQ(view.ViewLat, 0);
    EXPECT_EQ(view.ViewLon, 0);
    EXPECT_EQ(view.PanX, 0);
    EXPECT_EQ(view.PanY, 0);
    ExpectLockedAsSeen();
}

TEST_F(OrientationTest, ZenithLooksDownOnTheObserver) {
    CZenith_Click(app);
    ExpectPressed("Local Zenith Orientation");
    ExpectPanKept();
    ExpectLockedAsSeen();
    const Vector3 observer = RotateWorldToView(view, ObserverOnUnitSphere(data.Site));
    EXPECT_NEAR(observer.x, 1, 1e-12) << "the observer stands on the unit sphere by the geocentric latitude";
}

TEST_F(OrientationTest, UpPutsTheObserverOnTop) {
    CUpOrientation_Click(app);
    ExpectPressed("Up Orientation");
    ExpectPanKept();
    ExpectLockedAsSeen();
    EXPECT_NEAR(RotateWorldToView(view, ObserverOnUnitSphere(data.Site)).z, 1, 1e-12);
    // East of the observer is to the right, and the north pole behind.
    const HorizonAxes axes = HorizonAxesAt(data.Site);
    EXPECT_NEAR(RotateWorldToView(view, axes.east).y, 1, 1e-12);
    EXPECT_LT(RotateWorldToView(view, {0, 0, 1}).x, 0);
}

TEST_F(OrientationTest, NoonLooksFromTheSun) {
    AtTheEquinox();
    CNoon_Click(app);
    ExpectPressed("Noon Orientation");
    ExpectPanKept();
    ExpectLockedAsSeen();
    EXPECT_LT(Apart(view.ViewLon, kEquinoxLon), kFine);
    EXPECT_EQ(view.ViewLat, kEquinoxDec);
    EXPECT_LT(Apart(view.LockedAngle, kEquinoxRA), 1e-9) << "the lock holds the Sun's right ascension";
}

TEST_F(OrientationTest, NightLooksAtTheOtherSide) {
    AtTheEquinox();
    CNightOrientation_Click(app);
    ExpectPressed("MidNight Orientation");
    ExpectPanKept();
    ExpectLockedAsSeen();
    EXPECT_LT(Apart(view.ViewLon, kEquinoxLon + 180 * kDegree), kFine);
    EXPECT_EQ(view.ViewLat, -kEquinoxDec);
    EXPECT_LT(Apart(view.LockedAngle, kEquinoxRA + 180 * kDegree), 1e-9);
}

TEST_F(OrientationTest, InTheAfternoonTheSunStandsInTheWest) {
    AtTheEquinox();
    SetInstant(data, kEquinoxNoon + 3 * kHour);
    ASSERT_TRUE(Orient(data, Orientation::Noon));
    EXPECT_LT(Apart(view.ViewLon, kEquinoxLon - 45 * kDegree), 0.15 * kDegree) << "the Sun goes its own way meanwhile";
}

TEST_F(OrientationTest, OrbitLooksAlongTheNormal) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    COrbitOrient_Click(app);
    ExpectPressed("Orbit Orientation");
    ExpectPanKept();
    ExpectLockedAsSeen();
    Vector3 before;
    for (int minute = 0; minute <= 100; ++minute) {
        const double jd = kNight + minute * 60 * kSecond;
        EngineBlock& block = data.Satellite(1).EngineBlock;
        const WorldMotion motion = PropagateSatellite(data, EarthRotation::Displayed, block, jd);
        ASSERT_EQ(motion.result, 0);
        const Vector3 seen = RotateWorldToView(view, Normalized(motion.position));
        // The node drifts by 0.4 degrees a day; the elements are hours old.
        EXPECT_NEAR(seen.x, 0, 0.01) << "the orbit lies in the plane of the screen";
        if (minute > 0) EXPECT_GT(CrossProduct(before, seen).x, 0) << "and runs counter-clockwise";
        before = seen;
    }
}

TEST_F(OrientationTest, OrbitNeedsASatellite) {
    COrbitOrient_Click(app);
    EXPECT_EQ(view.ViewLat, 0.6);
    EXPECT_EQ(view.ViewRoll, 0.5);
    EXPECT_EQ(app.Main.LCommandOutput.Caption.Get(), "");
    EXPECT_TRUE(o.windows.calls.empty());
}

TEST_F(OrientationTest, TheCacheIsFresh) {
    ASSERT_TRUE(Orient(data, Orientation::Zero));
    EXPECT_EQ(RotateWorldToView(view, {1, 0, 0}), (Vector3{1, 0, 0}));
}

TEST_F(OrientationTest, ALockedSkyStandsStill) {
    view.ViewLat = 20 * kDegree;
    TakeSkyLock(data);
    const double lon = view.ViewLon;
    const double locked = view.LockedAngle;
    EXPECT_GE(locked, 0);
    EXPECT_LT(locked, 360 * kDegree);
    EXPECT_EQ(view.LockedLat, 20 * kDegree);
    EXPECT_EQ(view.LockedRoll, 0.5);
    // An hour later the same stars stand over a place 15.041 degrees farther west.
    SetInstant(data, kNight + kHour);
    view.ViewLon = lon - 15.041067 * kDegree;
    TakeSkyLock(data);
    EXPECT_LT(Apart(view.LockedAngle, locked), 1e-6);
}

TEST_F(OrientationTest, TheStartCamera) {
    EXPECT_EQ(kStartCamera.ViewRoll, 0);
    EXPECT_EQ(kStartCamera.ViewLat, 0);
    EXPECT_EQ(kStartCamera.ViewLon, 0.0857908);
    EXPECT_EQ(kStartCamera.ZoomFactor, 29);
    EXPECT_EQ(kStartCamera.PanX, 0);
    EXPECT_EQ(kStartCamera.PanY, 0);
}

TEST_F(OrientationTest, ACameraIsKeptAndPutBack) {
    const CameraView kept = CaptureCamera(view);
    ASSERT_TRUE(Orient(data, Orientation::Zero));
    view.ZoomFactor = 3;
    EXPECT_NE(CaptureCamera(view), kept);
    ApplyCamera(view, kept);
    EXPECT_EQ(view.ViewRoll, 0.5);
    EXPECT_EQ(view.ViewLat, 0.6);
    EXPECT_EQ(view.ViewLon, 0.7);
    EXPECT_EQ(view.ZoomFactor, 40);
    EXPECT_EQ(view.PanX, 0.1);
    EXPECT_EQ(view.PanY, -0.2);
}

TEST_F(OrientationTest, ABadCameraIsHeld) {
    ApplyCamera(view, {.ViewRoll = 0, .ViewLat = 0, .ViewLon = 0, .ZoomFactor = 1e12, .PanX = 0, .PanY = 0});
    EXPECT_EQ(view.ZoomFactor, 5000);
}

}  // namespace
}  // namespace glintara::observed_night
