#include "flare/surface_fits.h"

#include <algorithm>
#include <array>
#include <random>

#include "engine/astro/geodesy.h"
#include "flare/live_flares.h"
#include "flare/observed_night.h"
#include "orbit/sun_and_moon.h"

namespace glintara::observed_night {
namespace {

constexpr double kMeanRadius = 6371000;

/// The angle at the observer between the horizon and the satellite, degrees.
double Elevation(const Vector3& r, const Vector3& observer) {
    return std::asin(Dot(Normalized(r - observer), observer)) / kDegree;
}

double AngleBetween(const Vector3& a, const Vector3& b) { return std::atan2(Length(CrossProduct(a, b)), Dot(a, b)); }

struct SurfaceFitsTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;
    LiveFlares flares;
    int loaded = 0;
    std::mt19937 random{20180120};

    double Between(double least, double most) {
        return least + (most - least) * static_cast<double>(random()) / static_cast<double>(std::mt19937::max());
    }

    WorldMotion MotionOf(const SatRecord& satellite) const {
        EngineBlock block = satellite.EngineBlock;
        return PropagateSatellite(data, EarthRotation::Displayed, block, data.SimTime);
    }

    /// Puts the observer below the satellite, up to `reach` degrees away.
    void StandNear(const SatRecord& satellite, double reach) {
        const LatLonRadius below = SubSatellitePoint(MotionOf(satellite).position);
        const double lat = std::clamp(below.lat / kDegree + Between(-reach, reach), -89.0, 89.0);
        const double wide = reach / std::cos(lat * kDegree);
        const double lon = below.lon / kDegree + Between(-wide, wide);
        SetLocation(data, {lat * kDegree, std::remainder(lon, 360) * kDegree, Between(0, 3000)});
    }

    /// The live plot's centre of the satellite's first surface in sunlight, whatever the shadow.
    std::optional<LiveFlare> Centre(const SatRecord& satellite, std::optional<double> phase = {}) {
        LiveFlareQuest quest;
        quest.forceLight = true;
        quest.phase = phase;
        FindLiveFlares(o.app, satellite, MotionOf(satellite), LightPlacesAt(data), quest, flares);
        if (flares.All().empty()) return std::nullopt;
        return flares.All().front();
    }

    /// The same with the surface fitted to a flare under that attitude type; nothing when there is no fit.
    std::optional<LiveFlare> FittedFlare(SatRecord& satellite, int type) {
        satellite.Surface.OrientationType = type;
        const std::optional<SurfaceAngles> angles = FitSurface(o.app, satellite, FitAim::Flare);
        if (!angles) return std::nullopt;
        satellite.Surface.Mirror(1).Angle = angles->angle;
        satellite.Surface.Mirror(1).Tilt = angles->tilt;
        return Centre(satellite);
    }

    /// A random satellite at a random instant of two days, with one surface. Some of the list have come down.
    SatRecord& Draw() {
        do {
            SetInstant(data, kNight + Between(-1, 1));
            data.SatCount = 1 + static_cast<int>(Between(0, loaded - 0.001));
        } while (Length(MotionOf(data.Satellite(data.SatCount)).position) < 1.05);
        return OneSurface(0);
    }

    SatRecord& OneSurface(int type) {
        SatRecord& satellite = data.Satellite(data.SatCount);
        satellite.Surface.OrientationType = type;
        satellite.Surface.MirrorCount = 1;
        return satellite;
    }
};

/// The types of which a surface can be fitted.
constexpr std::array kFitted{0, 1, 4};

TEST_F(SurfaceFitsTest, AFittedFlareFallsOnTheObserver) {
    o.Load("iridium.tle");
    loaded = data.SatCount;
    double farthest = 0;
    for (int tried = 0; tried < 200; ++tried) {
        SatRecord& satellite = Draw();
        do {
            StandNear(satellite, 12);
        } while (Elevation(MotionOf(satellite).position, ObserverOnUnitSphere(data.Site)) < 30);
        for (const int type : kFitted) {
            const std::optional<LiveFlare> flare = FittedFlare(satellite, type);
            ASSERT_TRUE(flare) << type;
            EXPECT_LT(flare->distance, 10) << type << " " << satellite.Name;
            farthest = std::max(farthest, flare->distance);
        }
    }
    // Four decimals of a degree leave some metres; none at all would mean that they were not kept to.
    EXPECT_GT(farthest, 1);
}

TEST_F(SurfaceFitsTest, NearTheHorizonTheBeamStillPassesTheObserver) {
    o.Load("iridium.tle");
    loaded = data.SatCount;
    for (int tried = 0; tried < 100; ++tried) {
        SatRecord& satellite = Draw();
        do {
            StandNear(satellite, 27);
        } while (Elevation(MotionOf(satellite).position, ObserverOnUnitSphere(data.Site)) < 2);
        const double range =
            Length(MotionOf(satellite).position - ObserverOnUnitSphere(data.Site)) * data.Site.SiteRadius;
        for (const int type : kFitted) {
            const std::optional<LiveFlare> flare = FittedFlare(satellite, type);
            ASSERT_TRUE(flare) << type;
            EXPECT_LT(flare->offAxis * range, 10) << type << " " << satellite.Name;
        }
    }
}

TEST_F(SurfaceFitsTest, AFittedBeamLooksAtTheObserver) {
    o.Load("iridium.tle");
    loaded = data.SatCount;
    for (int tried = 0; tried < 200; ++tried) {
        SatRecord& satellite = Draw();
        StandNear(satellite, 25);
        const WorldMotion motion = MotionOf(satellite);
        for (const int type : kFitted) {
            satellite.Surface.OrientationType = type;
            const std::optional<SurfaceAngles> angles = FitSurface(o.app, satellite, FitAim::Beam);
            ASSERT_TRUE(angles) << type;
            satellite.Surface.Mirror(1).Angle = angles->angle;
            satellite.Surface.Mirror(1).Tilt = angles->tilt;
            const std::optional<BodyFrame> frame = LiveFlareFrame(o.app, satellite, motion);
            ASSERT_TRUE(frame);
            ForEachNormal(satellite.Surface, *frame, {}, [&](int, const Vector3& normal) {
                EXPECT_LT(AngleBetween(normal, ObserverOnUnitSphere(data.Site) - motion.position), 1e-4 * kDegree);
            });
        }
    }
}

TEST_F(SurfaceFitsTest, AnglesHaveFourDecimals) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    for (const int type : kFitted) {
        const std::optional<SurfaceAngles> angles = FitSurface(o.app, OneSurface(type), FitAim::Flare);
        ASSERT_TRUE(angles);
        for (const double degrees : {angles->angle, angles->tilt}) {
            EXPECT_EQ(degrees, std::round(degrees * 10000) / 10000);
            EXPECT_GE(degrees, -90);
            EXPECT_LE(degrees, 270);
        }
    }
}

// The Sun stands over longitude 0, the satellite and the observer over longitude 90 east: a quarter of a turn lies
// between, of which the plane takes the half.
TEST_F(SurfaceFitsTest, ThePlaneHalvesTheAngle) {
    const Vector3 satellite{0, 2, 0};
    const std::optional<Vector3> normal = FlareNormal(satellite, {1e12, 2, 0}, {0, 1, 0});
    ASSERT_TRUE(normal);
    EXPECT_NEAR(normal->x, std::sqrt(0.5), 1e-9);
    EXPECT_NEAR(normal->y, -std::sqrt(0.5), 1e-9);
    EXPECT_NEAR(normal->z, 0, 1e-9);
    EXPECT_FALSE(FlareNormal(satellite, {0, 20000, 0}, {0, 1, 0})) << "the satellite stands before the Sun";
    const std::optional<Vector3> back = FlareNormal(satellite, {0, -20000, 0}, {0, 1, 0});
    ASSERT_TRUE(back) << "the light goes back where it came from";
    EXPECT_NEAR(back->y, -1, 1e-12);
}

TEST_F(SurfaceFitsTest, AnglesAreTheOtherWayOfTheNormal) {
    const BodyFrame frame = VerticalFrame({1, 2, 3}, {0.3, -0.4, 0.5});
    for (const bool inertial : {false, true}) {
        for (int angle = -85; angle < 270; angle += 25) {
            for (int tilt = -85; tilt <= 85; tilt += 17) {
                const Vector3 normal = MirrorNormal(inertial, angle * kDegree, tilt * kDegree, frame);
                const SurfaceAngles found = AnglesOfNormal(inertial, normal, frame);
                EXPECT_NEAR(found.angle, angle, 1e-9);
                EXPECT_NEAR(found.tilt, tilt, 1e-9);
            }
        }
    }
    const SurfaceAngles down = AnglesOfNormal(false, -frame.BodyUp, frame);
    EXPECT_EQ(down.angle, 0);
    EXPECT_NEAR(down.tilt, 90, 1e-6);
}

TEST_F(SurfaceFitsTest, ThereIsNoneForBodiesThatRotateOrAreTurnedToATarget) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    for (const int type : {2, 3, 5, -1})
        for (const FitAim aim : {FitAim::Flare, FitAim::Beam})
            EXPECT_FALSE(FitSurface(o.app, OneSurface(type), aim)) << type;
}

TEST_F(SurfaceFitsTest, ThereIsNoneForASatelliteThatHasComeDown) {
    o.LoadOne("iridium.tle", "IRIDIUM 6 [-]");
    SatRecord& satellite = OneSurface(0);
    SetInstant(data, kNight + 0.5);
    ASSERT_LT(Length(MotionOf(satellite).position), 1);
    for (const FitAim aim : {FitAim::Flare, FitAim::Beam}) EXPECT_FALSE(FitSurface(o.app, satellite, aim));
}

TEST_F(SurfaceFitsTest, WhatSpeaksAgainstItIsTold) {
    o.LoadOne("stations.tle", "ISS (ZARYA)");
    const SatRecord& satellite = OneSurface(0);
    int dark = 0;
    int bright = 0;
    for (int minute = 0; minute < 100; minute += 5) {
        SetInstant(data, kNight + minute * kHour / 60);
        StandNear(satellite, 0);
        const Vector3 r = MotionOf(satellite).position;
        const Vector3 sun = Normalized(SunPlace(data, data.SimTime));
        const bool shadow = Dot(r, sun) < 0 && Length(CrossProduct(r, sun)) < 1;
        EXPECT_EQ(ObjectionToFit(o.app, satellite, FitAim::Flare),
                  shadow ? "At that moment the satellite is in the shadow of the Earth" : "");
        EXPECT_EQ(ObjectionToFit(o.app, satellite, FitAim::Beam), "");
        ++(shadow ? dark : bright);
        const LatLonRadius below = SubSatellitePoint(r);
        SetLocation(data, {-below.lat, below.lon + 180 * kDegree, 0});
        for (const FitAim aim : {FitAim::Flare, FitAim::Beam})
            EXPECT_EQ(ObjectionToFit(o.app, satellite, aim), "At that moment the satellite is below your horizon");
    }
    EXPECT_GT(dark, 0);
    EXPECT_GT(bright, 0);
}

// A satellite spins about a made-up axis. Three times it throws a flare to the ground, where an observer stands and fits
// a surface that is fixed in space: those three tell the axis.
TEST_F(SurfaceFitsTest, ThreeFlaresTellTheAxisOfASpinningSatellite) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    SatRecord& satellite = OneSurface(2);
    for (const auto& [dec, ra, angle, tilt] : std::vector<std::array<double, 4>>{
             {35, 110, 60, -20}, {62, 250, 200, 10}, {5, -60, 10, 40}, {20, 150, 190, -10}, {88, 30, 0, 20}}) {
        SurfaceModel& model = satellite.Surface;
        model.RotAxisDEC = dec * kDegree;
        model.RotAxisRA = ra * kDegree;
        std::vector<SurfaceAngles> fitted;
        std::vector<Vector3> looks;
        for (int minute = 0; minute < 3000 && fitted.size() < 3; ++minute) {
            SetInstant(data, kNight + minute * kHour / 60);
            const double phase = Between(0, 360) * kDegree;
            model.OrientationType = 2;
            model.Mirror(1).Angle = angle;
            model.Mirror(1).Tilt = tilt;
            std::optional<LiveFlare> flare = Centre(satellite, phase);
            if (!flare) continue;
            // The unit of length is the observer's distance from the centre of the Earth, so the first step moves it.
            for (int step = 0; step < 2 && flare; ++step) {
                SetLocation(data, EcefToGeodetic(flare->centre * kMeanRadius));
                flare = Centre(satellite, phase);
            }
            if (!flare || Elevation(MotionOf(satellite).position, ObserverOnUnitSphere(data.Site)) < 15) continue;
            ASSERT_LT(flare->distance, 0.1);
            model.OrientationType = 1;
            const std::optional<SurfaceAngles> angles = FitSurface(o.app, satellite, FitAim::Flare);
            ASSERT_TRUE(angles);
            const Vector3 look = LLRToSameXYZ(angles->tilt * kDegree, angles->angle * kDegree, 1);
            // Flares from nearly the same side of the body say little of its axis.
            if (std::ranges::any_of(looks, [&](const Vector3& other) { return AngleBetween(look, other) < 0.25; }))
                continue;
            looks.push_back(look);
            fitted.push_back(*angles);
        }
        ASSERT_EQ(fitted.size(), 3U) << dec << " " << ra;
        const std::optional<RotationAxis> axis = RotationAxisOf(fitted[0], fitted[1], fitted[2]);
        ASSERT_TRUE(axis);
        EXPECT_LT(AngleBetween(LLRToSameXYZ(axis->declination, axis->rightAscension, 1),
                               LLRToSameXYZ(dec * kDegree, ra * kDegree, 1)),
                  0.01 * kDegree)
            << dec << " " << ra;
    }
}

TEST_F(SurfaceFitsTest, AnAxisOnTheEquatorIsFound) {
    // On a cone of 40 degrees about the direction of right ascension 0, declination 0.
    const auto onCone = [](double phase) {
        const double c = std::cos(40 * kDegree);
        const double s = std::sin(40 * kDegree);
        const LatLonRadius place = XYZToLatLon({c, s * std::cos(phase), s * std::sin(phase)});
        return SurfaceAngles{place.lon / kDegree, place.lat / kDegree};
    };
    const std::optional<RotationAxis> axis = RotationAxisOf(onCone(0.1), onCone(1.9), onCone(4.4));
    ASSERT_TRUE(axis);
    EXPECT_LT(AngleBetween(LLRToSameXYZ(axis->declination, axis->rightAscension, 1), {1, 0, 0}), 1e-9);
}

TEST_F(SurfaceFitsTest, SurfacesThatLookTheSameWayTellNoAxis) {
    const SurfaceAngles one{30, 10};
    const SurfaceAngles same{30.0001, 10};
    const SurfaceAngles turned{390, 10};
    const SurfaceAngles other{80, -20};
    EXPECT_FALSE(RotationAxisOf(one, one, one));
    EXPECT_FALSE(RotationAxisOf(one, other, same));
    EXPECT_FALSE(RotationAxisOf(one, turned, other));
    EXPECT_FALSE(RotationAxisOf(other, one, turned));
    EXPECT_TRUE(RotationAxisOf(one, other, {100, 60}));
}

}  // namespace
}  // namespace glintara::observed_night
