// Where the program draws the Sun, the Moon and the stars on the chart of an observer's sky, against the places that the
// ERFA library computes: from the clock over the ephemerides, the observer's parallax and the camera to the picture.

#include <erfa.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "core/manual_clock.h"
#include "core/simulated_time.h"
#include "flare/surface_models.h"
#include "orbit/location.h"
#include "scene/orientation.h"
#include "scene/star_list.h"
#include "scene/star_places.h"
#include "scene/stars.h"
#include "scene/surface/recording_surface.h"
#include "state/recording_services.h"

namespace glintara::testing {
namespace {

constexpr double kPlain = 3.14159265358979323846;
constexpr double kDegree = kPlain / 180;
constexpr double kAstronomicalUnit = 149597870700.0;
constexpr double kLightTimePerUnit = 499.004784 / 86400;  // days

struct Watch {
    const char* name;
    double lat;  ///< geodetic, degrees
    double lon;
    double height;  ///< metres
    CalendarFields utc;
};

/// Far apart in place, season, hour and phase of the Moon. None lies before 2000, when the Greenwich angle of the whole
/// program turns the other way.
const std::array kWatches{Watch{"Turin", 45.07, 7.69, 240, {2010, 1, 15, 20, 0, 0}},
                          Watch{"Sydney", -33.87, 151.21, 50, {2018, 6, 21, 10, 30, 0}},
                          Watch{"Quito", -0.18, -78.47, 2850, {2026, 11, 1, 3, 15, 0}},
                          Watch{"Tromso", 69.65, 18.96, 10, {2026, 6, 25, 23, 5, 30}},
                          Watch{"Honolulu", 21.31, -157.86, 5, {2002, 3, 28, 22, 40, 17}}};

using Direction = std::array<double, 3>;

Direction Unit(const Direction& v) {
    const double length = std::hypot(v[0], v[1], v[2]);
    return {v[0] / length, v[1] / length, v[2] / length};
}

double AngleBetween(const Direction& a, const Direction& b) {
    return std::atan2(std::hypot(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]),
                      a[0] * b[0] + a[1] * b[1] + a[2] * b[2]);
}

/// From the celestial frame to Earth-fixed axes: precession, nutation and the turn of the Earth.
Direction EarthFixed(double jd, const Direction& celestial) {
    constexpr double kDynamicalAhead = 67 / 86400.0;
    double matrix[3][3];
    eraC2t06a(jd, kDynamicalAhead, jd, 0, 0, 0, matrix);
    double in[3] = {celestial[0], celestial[1], celestial[2]};
    double out[3];
    eraRxp(matrix, in, out);
    return {out[0], out[1], out[2]};
}

Direction LibraryPlace(const Watch& watch) {
    double place[3];
    EXPECT_EQ(eraGd2gc(1, watch.lon * kDegree, watch.lat * kDegree, watch.height, place), 0);
    return {place[0], place[1], place[2]};
}

Direction LibrarySun(double jd) {
    double heliocentric[2][3];
    double barycentric[2][3];
    EXPECT_GE(eraEpv00(jd, 0, heliocentric, barycentric), 0);
    const double length = std::hypot(heliocentric[0][0], heliocentric[0][1], heliocentric[0][2]);
    Direction sun{};
    for (std::size_t i = 0; i < 3; ++i)
        sun[i] = -heliocentric[0][i] / length + barycentric[1][i] * kLightTimePerUnit;  // with its aberration
    return Unit(EarthFixed(jd, sun));
}

/// From the observer's place, not from the Earth's centre.
Direction LibraryMoon(double jd, const Watch& watch) {
    double pv[2][3];
    eraMoon98(jd, 0, pv);
    Direction moon =
        EarthFixed(jd, {pv[0][0] * kAstronomicalUnit, pv[0][1] * kAstronomicalUnit, pv[0][2] * kAstronomicalUnit});
    const Direction place = LibraryPlace(watch);
    for (std::size_t i = 0; i < 3; ++i) moon[i] -= place[i];
    return Unit(moon);
}

struct AltAz {
    double altitude;
    double azimuth;
};

AltAz Horizontal(const Direction& fixed, const Watch& watch) {
    const double lat = watch.lat * kDegree;
    const double lon = watch.lon * kDegree;
    const double outwards = fixed[0] * std::cos(lon) + fixed[1] * std::sin(lon);
    const double east = -fixed[0] * std::sin(lon) + fixed[1] * std::cos(lon);
    const double north = -outwards * std::sin(lat) + fixed[2] * std::cos(lat);
    const double up = outwards * std::cos(lat) + fixed[2] * std::sin(lat);
    return {std::atan2(up, std::hypot(north, east)), std::atan2(east, north)};
}

/// A chart round the observer's zenith that shows all the sky, 10,000 twips a quarter turn.
struct SkyAlmanacTest : ::testing::Test {
    static constexpr double kQuarter = 10000;

    RecordingBoxes boxes;
    Events events;
    RecordingWindows windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
    RecordingSurface surface{20000, 20000};
    PolygonBuffer polygon;
    SceneContext scene{app, surface, polygon};

    void SetUp() override {
        MainControls& main = app.Main;
        for (CheckBox* box : {&main.CDrawSky, &main.CFlatSky, &main.CReverseSky, &main.CSkyOnly, &main.CDrawFrontStars,
                              &main.CDrawBackStars, &main.CDrawSun})
            box->Value = true;
        for (CheckBox* box : {&main.CLocalSky, &main.CStarsOnGlobe, &main.CSkyCircle, &main.CPlaniSphere,
                              &main.CAutoMag, &main.CStarNames})
            box->Value = false;
        app.Main.CRealTime.Value = true;
    }

    void Set(const Watch& watch) {
        const ManualClock clock{watch.utc};
        SimulatedTime time{app, clock};
        SetLocation(app.Data, {watch.lat * kDegree, watch.lon * kDegree, watch.height});
        time.TimeSyncronize();
        ViewState& view = app.Data.View;
        view.ViewLat = app.Data.Site.SiteLat;
        view.ViewLon = app.Data.Site.SiteLon;
        view.ViewRoll = 0;
        view.PanX = view.PanY = view.FramePanX = view.FramePanY = 0;
        view.ZoomFactor = 64;
        view.SkyScale = 1;
        RefreshViewCache(view);
        surface.Forget();
    }

    /// What is drawn at (x, y) twips. The chart is one seen from below: north is up and east is to the left.
    static AltAz Drawn(double x, double y) {
        const double right = (x - kQuarter) / kQuarter;
        const double up = (kQuarter - y) / kQuarter;
        return {(1 - std::hypot(right, up)) * kPlain / 2, std::atan2(-right, up)};
    }

    static void ExpectAt(const AltAz& drawn, const AltAz& wanted, double degrees, const std::string& what) {
        EXPECT_NEAR(drawn.altitude / kDegree, wanted.altitude / kDegree, degrees) << what;
        const double turn = std::remainder(drawn.azimuth - wanted.azimuth, 2 * kPlain);
        EXPECT_NEAR(turn * std::cos(wanted.altitude) / kDegree, 0, degrees) << what;
    }
};

TEST_F(SkyAlmanacTest, SunAndMoonAreDrawnWhereTheyStand) {
    double farthestParallax = 0;
    for (const Watch& watch : kWatches) {
        Set(watch);
        const double jd = app.Data.SimTime;
        PlotSunAndMoonOnSky(scene);
        const std::vector<RecordedOperation> discs = surface.OperationsOf(DrawOperation::Circle);
        ASSERT_EQ(discs.size(), 2U) << watch.name;
        ExpectAt(Drawn(discs[0].numbers[0], discs[0].numbers[1]), Horizontal(LibrarySun(jd), watch), 0.02,
                 std::string("Sun, ") + watch.name);
        const Direction moon = LibraryMoon(jd, watch);
        ExpectAt(Drawn(discs[1].numbers[0], discs[1].numbers[1]), Horizontal(moon, watch), 0.15,
                 std::string("Moon, ") + watch.name);
        Direction fromCentre = moon;
        const Direction place = LibraryPlace(watch);
        for (std::size_t i = 0; i < 3; ++i) fromCentre[i] += place[i] / 3.844e8;
        farthestParallax = std::max(farthestParallax, AngleBetween(moon, Unit(fromCentre)));
    }
    EXPECT_GT(farthestParallax, 0.5 * kDegree) << "none of these would tell the observer's Moon from the Earth's";
}

TEST_F(SkyAlmanacTest, OnTheEarthTheMoonStandsOverThePlaceBelowIt) {
    app.Main.CStarsOnGlobe.Value = true;
    app.Main.CFlatSky.Value = false;
    app.Main.CReverseSky.Value = false;
    for (const Watch& watch : kWatches) {
        Set(watch);
        double pv[2][3];
        eraMoon98(app.Data.SimTime, 0, pv);
        const Direction below = Unit(EarthFixed(app.Data.SimTime, {pv[0][0], pv[0][1], pv[0][2]}));
        app.Data.View.ViewLat = std::asin(below[2]);
        app.Data.View.ViewLon = std::atan2(below[1], below[0]);
        RefreshViewCache(app.Data.View);
        PlotSunAndMoonOnSky(scene);
        const std::vector<RecordedOperation> discs = surface.OperationsOf(DrawOperation::Circle);
        ASSERT_FALSE(discs.empty()) << watch.name;
        EXPECT_NEAR(discs.back().numbers[0], kQuarter, 0.15 * kDegree * kQuarter) << watch.name;
        EXPECT_NEAR(discs.back().numbers[1], kQuarter, 0.15 * kDegree * kQuarter) << watch.name;
    }
}

struct Bright {
    const char* name;
    double hours;
    double degrees;
};

/// Places of 2000.
constexpr std::array kStars{Bright{"Sirius", 6.752481, -16.716116},   Bright{"Vega", 18.615649, 38.783689},
                            Bright{"Polaris", 2.530301, 89.264109},   Bright{"Rigel", 5.242298, -8.201638},
                            Bright{"Deneb", 20.690532, 45.280339},    Bright{"Canopus", 6.399197, -52.695661},
                            Bright{"Antares", 16.490128, -26.432003}, Bright{"Spica", 13.419883, -11.161319},
                            Bright{"Regulus", 10.139531, 11.967209},  Bright{"Fomalhaut", 22.960846, -29.622237}};

TEST_F(SkyAlmanacTest, StarsAreDrawnWhereTheyStand) {
    std::vector<StarRecord> catalogue(1);
    for (const Bright& star : kStars) {
        StarRecord record;
        record.Magnitude = 1;
        record.RightAscensionJ2000 = record.RightAscension = star.hours * 15 * kDegree;
        record.DeclinationJ2000 = record.Declination = star.degrees * kDegree;
        catalogue.push_back(record);
    }
    TakeStars(app.Data.Stars, catalogue);
    RebuildStarList(app.Data.Stars, 2);
    app.Main.CDrawSun.Value = false;
    for (const Watch& watch : kWatches) {
        Set(watch);
        NameBoard names{10};
        PlotStars(scene, names);
        const std::vector<RecordedOperation> dots = surface.OperationsOf(DrawOperation::StarDot);
        std::size_t drawn = 0;
        for (std::size_t i = 0; i < kStars.size(); ++i) {
            double azimuth = 0, zenith = 0, hourAngle = 0, dec = 0, ra = 0, origins = 0;
            ASSERT_EQ(eraAtco13(kStars[i].hours * 15 * kDegree, kStars[i].degrees * kDegree, 0, 0, 0, 0,
                                app.Data.SimTime, 0, 0, watch.lon * kDegree, watch.lat * kDegree, watch.height, 0, 0, 0,
                                0, 0, 0.55, &azimuth, &zenith, &hourAngle, &dec, &ra, &origins),
                      0);
            // A place below the horizon lies outside of this picture.
            if (zenith > kPlain / 2) continue;
            bool found = false;
            for (const RecordedOperation& dot : dots) {
                const double pixels = 15;
                const AltAz place = Drawn(dot.numbers[0] * pixels, dot.numbers[1] * pixels);
                const double across =
                    std::remainder(place.azimuth - azimuth, 2 * kPlain) * std::cos(place.altitude) / kDegree;
                found = found ||
                        (std::abs(place.altitude - (kPlain / 2 - zenith)) < 0.02 * kDegree && std::abs(across) < 0.02);
            }
            EXPECT_TRUE(found) << kStars[i].name << ", " << watch.name;
            ++drawn;
        }
        EXPECT_GE(drawn, 3U) << watch.name;
    }
}

}  // namespace
}  // namespace glintara::testing
