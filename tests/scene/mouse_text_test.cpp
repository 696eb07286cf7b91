#include "scene/mouse_text.h"

#include <erfa.h>

#include <cstdlib>
#include <string>

#include "engine/astro/sidereal.h"
#include "scene/mouse_place.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

/// 2000 January 1, 12:00: the Greenwich sidereal time is 18h41m50.548s (Astronomical Almanac).
struct MouseTextTest : SceneFixture {
    MainControls& main = app.Main;

    void SetUp() override {
        app.Data.SetSimInstant({2000, 1, 1, 12, 0, 0}, 2451545);
        LookAt(0, 0);
    }

    std::string At(double x, double y) const { return MouseText(app, {x, y}); }

    /// Both halves of the sky alone, round the middle of the picture.
    void ShowSky(bool chart, double radius) {
        main.CDrawSky.Value = main.CSkyOnly.Value = true;
        main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
        main.CFlatSky.Value = chart;
        view.SkyScale = radius;
    }

    /// The number behind `label` in `text`.
    static double NumberBehind(const std::string& text, const std::string& label) {
        const std::size_t at = text.find(label);
        EXPECT_NE(at, std::string::npos) << text;
        return at == std::string::npos ? 1e9 : std::strtod(text.c_str() + at + label.size(), nullptr);
    }
};

TEST_F(MouseTextTest, TellsThePlaceOfTheEarthAndTheSkyOverIt) {
    LookAt(10.50004, 15.00001);
    EXPECT_EQ(At(0, 0), "EARTH: Latitude= 10.5° N,  N,  Longitude= 15° E, RA= 19h41'50\": DEC= 010°30'00\"");
    LookAt(-10.50004, -15.00001);
    EXPECT_EQ(At(0, 0), "EARTH: Latitude= -10.5° N,  N,  Longitude= -15° E, RA= 17h41'50\": DEC= -010°30'00\"");
}

TEST_F(MouseTextTest, APlaceBesideTheMiddleLiesRoundTheGlobe) {
    EXPECT_NEAR(NumberBehind(At(0.5, 0), "Longitude= "), 30, 1e-4);
    EXPECT_NEAR(NumberBehind(At(0, -0.5), "Latitude= "), -30, 1e-4);
    LookAt(0, 170);
    EXPECT_NEAR(NumberBehind(At(0.5, 0), "Longitude= "), -160, 1e-4) << "from -180 to 180";
    LookAt(0, -170);
    EXPECT_NEAR(NumberBehind(At(-0.5, 0), "Longitude= "), 160, 1e-4);
}

TEST_F(MouseTextTest, NoMinusStandsBeforeAZero) {
    EXPECT_EQ(FourDecimals(-0.00004), "0");
    EXPECT_EQ(FourDecimals(-0.00006), "-0.0001");
    EXPECT_EQ(FourDecimals(45.12345678), "45.1235");
}

TEST_F(MouseTextTest, OffTheEarthIsSpace) {
    EXPECT_EQ(At(0.99999, 0).substr(0, 6), "EARTH:");
    EXPECT_EQ(At(1, 0), "SPACE");
    EXPECT_EQ(At(0.8, 0.8), "SPACE");
    main.CSkyOnly.Value = true;
    EXPECT_EQ(At(0, 0), "SPACE") << "neither Earth nor sky is drawn";
}

TEST_F(MouseTextTest, FollowsTheShiftOfThePicture) {
    Pan(3, -2);
    EXPECT_EQ(At(0, 0), "SPACE");
    EXPECT_NEAR(NumberBehind(At(3.5, -2), "Longitude= "), 30, 1e-4);
}

TEST_F(MouseTextTest, TheFlatMapIsReadOffDirectly) {
    main.CPlaniSphere.Value = true;
    LookAt(0, 100);
    const std::string text = At(1, 0.25);
    EXPECT_NEAR(NumberBehind(text, "Longitude= "), 100 + 57.29578, 1e-4);
    EXPECT_NEAR(NumberBehind(text, "Latitude= "), 14.32394, 1e-4);
    EXPECT_NEAR(NumberBehind(At(2, 0), "Longitude= "), 100 + 114.59156 - 360, 1e-4);
    EXPECT_EQ(At(0, 1.58), "SPACE") << "beyond the pole";
    EXPECT_EQ(At(3.15, 0), "SPACE");
}

TEST_F(MouseTextTest, AFloatingPlaceComesFirst) {
    main.MnuFloatingSite.Checked = true;
    app.Data.Site.SiteLat = 45.12345678 * kDegree;
    app.Data.Site.SiteLon = -9.1 * kDegree;
    EXPECT_EQ(At(2, 0), "FLOATING: FLOATING SITE: Latitude= 45.1235° N,  N,  Longitude= -9.1° E, \nSPACE");
}

// On the chart a third of its radius is 30 degrees.
TEST_F(MouseTextTest, TellsThePlaceOfTheChart) {
    LookAt(20.0001, 15);
    ShowSky(true, 3);
    EXPECT_EQ(At(0, 1), "SKY: DEC= 50.0001° (050°00'00\")  RA= 19h41'50\"");
    LookAt(0, 15);
    EXPECT_NE(At(1, 0).find("RA= 21h41'50\""), std::string::npos) << At(1, 0);
    main.CReverseSky.Value = true;
    EXPECT_NE(At(1, 0).find("RA= 17h41'50\""), std::string::npos) << At(1, 0);
}

TEST_F(MouseTextTest, TheChartsMiddleIsTheFarSideWithoutTheFrontStars) {
    LookAt(20, 15);
    ShowSky(true, 3);
    main.CDrawFrontStars.Value = false;
    const std::string text = At(0, 0);
    EXPECT_NEAR(NumberBehind(text, "DEC= "), -20, 1e-4);
    EXPECT_NE(text.find("RA= 07h41'50\""), std::string::npos) << text;
}

TEST_F(MouseTextTest, TheChartEndsWhereItsStarsEnd) {
    ShowSky(true, 3);
    EXPECT_EQ(At(5.99, 0).substr(0, 4), "SKY:") << "almost opposite of the middle";
    EXPECT_EQ(At(6.01, 0), "SPACE");
    main.CDrawBackStars.Value = false;
    EXPECT_EQ(At(2.99, 0).substr(0, 4), "SKY:");
    EXPECT_EQ(At(3.01, 0), "SPACE");
    main.CDrawSky.Value = false;
    EXPECT_EQ(At(1, 0), "SPACE");
}

TEST_F(MouseTextTest, TheSphereIsSeenFromOutside) {
    ShowSky(false, 10);
    const double aside = std::asin(0.5) / kDegree;
    const auto hours = [&](double lon) { return (18.697374 + lon / 15); };
    EXPECT_NEAR(NumberBehind(At(5, 0), "RA= "), std::floor(hours(aside)), 0.5) << At(5, 0);
    main.CDrawFrontStars.Value = false;
    EXPECT_NEAR(NumberBehind(At(5, 0), "RA= "), std::floor(hours(180 - aside) - 24), 0.5) << At(5, 0);
    EXPECT_EQ(At(10.01, 0), "SPACE");
    main.CSkyOnly.Value = false;
    EXPECT_EQ(At(0.5, 0).substr(0, 6), "EARTH:");
    EXPECT_EQ(At(1.5, 0).substr(0, 4), "SKY:");
}

// Azimuth and elevation by the IAU's routine, from hour angle, declination and the geodetic latitude.
TEST_F(MouseTextTest, TheLocalSkyHasAzimuthAndElevationByDirectionAlone) {
    Dice dice;
    int seen = 0;
    for (int i = 0; i < 400; ++i) {
        LookAt(dice.Between(-90, 90), dice.Between(-180, 180), dice.Between(-180, 180));
        app.Data.Site.SiteLat = dice.Between(-89, 89) * kDegree;
        app.Data.Site.SiteLon = dice.Between(-180, 180) * kDegree;
        app.Data.Site.SiteGeoLat = app.Data.Site.SiteLat - 0.003;
        ShowSky(i % 2 == 0, i % 4 < 2 ? 55 : 1.4);
        main.CReverseSky.Value = i % 3 == 0;
        main.CLocalSky.Value = false;
        const ScenePoint place{dice.Between(-0.7, 0.7) * view.SkyScale, dice.Between(-0.7, 0.7) * view.SkyScale};
        const std::optional<Vector3> direction = SkyAt(app, place);
        ASSERT_TRUE(direction);
        EXPECT_EQ(At(place.x, place.y).find("Az:"), std::string::npos);

        const double ra = std::atan2(direction->y, direction->x);
        const double dec = std::asin(direction->z);
        const double hourAngle = SiderealFromDate(app.Data.SimFields()) + app.Data.Site.SiteLon - ra;
        double azimuth = 0;
        double elevation = 0;
        eraHd2ae(hourAngle, dec, app.Data.Site.SiteLat, &azimuth, &elevation);
        main.CLocalSky.Value = true;
        const std::string text = At(place.x, place.y);
        if (elevation < -1e-6 && main.CFlatSky.Value) EXPECT_EQ(text, "SPACE");
        if (elevation < 1e-6) continue;
        ++seen;
        EXPECT_NEAR(NumberBehind(text, ", Az:"), azimuth / kDegree, 1e-4) << text;
        EXPECT_NEAR(NumberBehind(text, "°, El:"), elevation / kDegree, 1e-4) << text;
    }
    EXPECT_GT(seen, 100);
}

TEST_F(MouseTextTest, InAShiftedPictureTheSkyBelongsToTheTopOfTheEarth) {
    ShowSky(true, 3);
    LookAt(20.0001, 15);
    Pan(0.5, -1);
    EXPECT_EQ(At(0.5, 1), "SKY: DEC= 50.0001° (050°00'00\")  RA= 19h41'50\"");
    main.CStarsOnGlobe.Value = true;
    EXPECT_EQ(At(0.5, 0), "SKY: DEC= 50.0001° (050°00'00\")  RA= 19h41'50\"");
}

TEST_F(MouseTextTest, OnTheFlatMapAStarStandsOverItsPlace) {
    ShowSky(true, 3);
    main.CReverseSky.Value = true;
    main.CPlaniSphere.Value = true;
    LookAt(0, 15);
    EXPECT_EQ(At(0, 50.0001 * kDegree), "SKY: DEC= 50.0001° (050°00'00\")  RA= 19h41'50\"");
    EXPECT_NE(At(30 * kDegree, 0).find("RA= 21h41'50\""), std::string::npos) << "nothing is mirrored";
}

TEST_F(MouseTextTest, IsShownOnceTheMouseHasBeenOverThePicture) {
    main.LStatus.Caption = "as before";
    ShowMouseText(app);
    EXPECT_EQ(main.LStatus.Caption.Get(), "as before");
    app.Run.LastPictureWidth = 600;
    app.Run.LastPictureHeight = 400;
    app.Run.LastMouseX = 400;
    app.Run.LastMouseY = 200;  // half a unit to the right of the middle
    ShowMouseText(app);
    EXPECT_NEAR(NumberBehind(main.LStatus.Caption, "Longitude= "), 30, 1e-4);
    Pan(0.5, 0);
    ShowMouseText(app);
    EXPECT_NEAR(NumberBehind(main.LStatus.Caption, "Longitude= "), 0, 1e-4);
}

}  // namespace
}  // namespace glintara::testing
