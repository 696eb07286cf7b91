#include "scene/stars.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "engine/astro/sidereal.h"
#include "engine/astro/sun_moon.h"
#include "engine/astro/trigonometry.h"
#include "orbit/location.h"
#include "scene/globe.h"
#include "scene/mouse_place.h"
#include "scene/scene_fixture.h"
#include "scene/star_list.h"
#include "scene/star_places.h"

namespace glintara::testing {
namespace {

/// Noon of 1 January 2000, when places of date and of the catalogue are the same.
constexpr double kEpoch = 2451545;

/// A picture of 800 by 600 pixels from over (0, 0), 300 pixels to the scene unit, with the star sphere as large as the
/// Earth, which is not drawn.
struct StarsTest : SceneFixture {
    NameBoard names{400};
    std::vector<StarRecord> catalogue = std::vector<StarRecord>(1);

    void SetUp() override {
        surface.ScaleWidth = 12000;
        surface.ScaleHeight = 9000;
        LookAt(0, 0);
        view.SkyScale = 1;
        view.MaxStarMag = 11;
        MainControls& main = app.Main;
        main.CSkyOnly.Value = true;
        main.CDrawFrontStars.Value = true;
        main.CDrawBackStars.Value = false;
        for (CheckBox* box : {&main.CDrawSun, &main.CFlatSky, &main.CReverseSky, &main.CLocalSky, &main.CStarNames,
                              &main.CSkyCircle, &main.CAutoMag, &main.CPlaniSphere})
            box->Value = false;
        main.MnuAtmo.Checked = false;
        SetLocationDegrees(app.Data, 0, 0);
        SetInstant(kEpoch);
    }

    void SetInstant(double jd) { app.Data.SetSimInstant(JDToDate(jd), jd); }

    /// A star over a place of the Earth at `kEpoch`, degrees.
    void AddStar(double lat, double lon, double magnitude, const std::string& name = "", const std::string& hd = "") {
        StarRecord star;
        star.Magnitude = magnitude;
        star.Declination = star.DeclinationJ2000 = lat * kDegree;
        star.RightAscension = star.RightAscensionJ2000 = lon * kDegree + SiderealFromJD(kEpoch);
        star.ProperName = name;
        star.Designation = hd;
        catalogue.push_back(star);
    }

    void Plot() {
        TakeStars(app.Data.Stars, catalogue);
        RebuildStarList(app.Data.Stars, view.MaxStarMag);
        PlotAgain();
    }

    void PlotAgain() {
        surface.Forget();
        names.Clear();
        PlotStars(scene, names);
    }

    std::vector<RecordedOperation> Dots() const { return surface.OperationsOf(DrawOperation::StarDot); }
    std::vector<RecordedOperation> Circles() const { return surface.OperationsOf(DrawOperation::Circle); }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print)) texts.push_back(print.text);
        return texts;
    }

    void ExpectDotAt(double x, double y) const {
        ASSERT_EQ(Dots().size(), 1U);
        EXPECT_NEAR(Dots()[0].numbers[0], x, 0.01);
        EXPECT_NEAR(Dots()[0].numbers[1], y, 0.01);
    }
};

TEST_F(StarsTest, AStarIsADotOverItsPlace) {
    AddStar(0, 30, 1);
    Plot();
    ExpectDotAt(550, 300);
}

TEST_F(StarsTest, SeenFromBelowEastIsLeft) {
    app.Main.CFlatSky.Value = true;
    AddStar(0, 30, 1);
    Plot();
    ExpectDotAt(500, 300);
    app.Main.CReverseSky.Value = true;
    PlotAgain();
    ExpectDotAt(300, 300);
}

TEST_F(StarsTest, TheCameraOfTheSkyAgreesWithTheEngine) {
    AddStar(40, 35, 1);
    AddStar(-70, -20, 1);
    AddStar(10, 170, 1);
    Dice dice;
    for (int i = 0; i < 100; ++i) {
        dice.Camera(view);
        view.ZoomFactor = 40;
        view.SkyScale = dice.Between(0.5, 3);
        app.Main.CFlatSky.Value = i % 2 == 0;
        app.Main.CReverseSky.Value = i % 3 == 0;
        app.Main.CDrawFrontStars.Value = i % 5 != 0;
        app.Main.CDrawBackStars.Value = i % 4 != 0;
        app.Main.CSkyOnly.Value = i % 7 != 0;
        Plot();
        const SkyCamera camera(scene);
        const WindowScale window = GetWindowScale(view, surface);
        std::vector<ScenePoint> expected;
        for (std::size_t star = 1; star < catalogue.size(); ++star) {
            const auto place = camera.Seen(app.Data.Stars.StarDirections[star]);
            if (!place) continue;
            const ScenePoint pixel{BoxFromSceneX(window, view, place->x) / 15,
                                   BoxFromSceneY(window, view, place->y) / 15};
            if (pixel.x > 0 && pixel.x < 800 && pixel.y > 0 && pixel.y < 600) expected.push_back(pixel);
        }
        std::vector<RecordedOperation> dots = Dots();
        std::erase_if(dots, [](const RecordedOperation& dot) {
            return dot.numbers[0] <= 0 || dot.numbers[0] >= 800 || dot.numbers[1] <= 0 || dot.numbers[1] >= 600;
        });
        ASSERT_EQ(dots.size(), expected.size()) << "camera " << i;
        for (std::size_t d = 0; d < dots.size(); ++d) {
            EXPECT_NEAR(dots[d].numbers[0], expected[d].x, 0.02) << "camera " << i;
            EXPECT_NEAR(dots[d].numbers[1], expected[d].y, 0.02) << "camera " << i;
        }
    }
}

TEST_F(StarsTest, WithoutStarsSunAndMoonStillAppear) {
    AddStar(0, 0, 1);
    view.MaxStarMag = -2;
    app.Main.CDrawSun.Value = true;
    app.Main.CDrawBackStars.Value = true;
    Plot();
    EXPECT_TRUE(Dots().empty());
    ASSERT_EQ(Circles().size(), 2U);
    EXPECT_EQ(Circles()[0].state.FillColor, kSkySunColor);
    EXPECT_EQ(Circles()[1].state.FillColor, kSkyMoonColor);
    app.Main.CDrawSun.Value = false;
    PlotAgain();
    EXPECT_TRUE(Circles().empty());
}

TEST_F(StarsTest, TheSunStandsAmongTheStars) {
    // Over (10, 20): on the sphere sin 20 cos 10 to the right.
    const double greenwich = SiderealFromJD(kEpoch);
    app.Data.SunDec = 10 * kDegree;
    app.Data.SunRA = 20 * kDegree + greenwich;
    app.Data.MoonTopoRA = 180 * kDegree + greenwich;
    app.Main.CDrawSun.Value = true;
    Plot();
    ASSERT_EQ(Circles().size(), 1U) << "the Moon is behind";
    const double right = std::sin(20 * kDegree) * std::cos(10 * kDegree);
    ExpectNumbers(Circles()[0], {6000 + 4500 * right, 4500 - 4500 * std::sin(10 * kDegree), 4500 / 64.0}, 0.01);
    app.Main.CLocalSky.Value = true;
    SetLocationDegrees(app.Data, 0, -75);
    PlotAgain();
    EXPECT_TRUE(Circles().empty()) << "it has set";
}

/// The angles of the Earth's rotation run the other way on such dates, and the sky must not follow them.
struct OldStarsTest : StarsTest {
    /// Looks at what stands at a place of the sky, a little to the side.
    void LookAtSky(const Equatorial& place) {
        LookAt(place.dec / kDegree - 5, (place.ra - SiderealFromDate(app.Data.SimFields())) / kDegree + 8);
    }

    /// The place of the sky that the mouse tells over a position of the picture, twips.
    Equatorial SkyUnder(double x, double y) {
        app.Main.CDrawSky.Value = true;
        app.Run.LastPictureWidth = 12000;
        app.Run.LastPictureHeight = 9000;
        app.Run.LastMouseX = x;
        app.Run.LastMouseY = y;
        const std::optional<Vector3> direction = SkyAt(app, *MouseOnPicture(app));
        EXPECT_TRUE(direction);
        const LatLonRadius place = XYZToLatLon(direction.value_or(Vector3{1, 0, 0}));
        return {place.lat, WrapTwoPi(place.lon)};
    }

    void ExpectCircleAt(Color color, double ra, double dec, double tolerance) {
        Plot();
        const auto circles = Circles();
        const auto circle =
            std::ranges::find_if(circles, [color](const auto& c) { return c.state.FillColor == color; });
        ASSERT_NE(circle, circles.end());
        const Equatorial place = SkyUnder(circle->numbers[0], circle->numbers[1]);
        EXPECT_NEAR(place.ra / kDegree, ra, tolerance);
        EXPECT_NEAR(place.dec / kDegree, dec, tolerance);
    }
};

// Meeus, Astronomical Algorithms, examples 25.b and 47.a.
TEST_F(OldStarsTest, SunAndMoonStandInTheSkyWhereThePublishedPlacesAre) {
    app.Main.CDrawSun.Value = true;
    SetInstant(2448908.5);  // 1992 October 13
    const Equatorial sun = SunPosition(2448908.5);
    app.Data.SunRA = sun.ra;
    app.Data.SunDec = sun.dec;
    LookAtSky(sun);
    ExpectCircleAt(kSkySunColor, 198.378178, -7.783871, 0.03);
    SetInstant(2448724.5);  // 1992 April 12
    const MoonPlace moon = MoonPosition(2448724.5);
    // Whoever has it in the zenith sees it where the centre of the Earth would.
    app.Data.MoonRA = app.Data.MoonTopoRA = moon.ra;
    app.Data.MoonDec = app.Data.MoonTopoDec = moon.dec;
    LookAtSky({moon.dec, moon.ra});
    ExpectCircleAt(kSkyMoonColor, 134.688470, 13.768368, 0.15);
}

// Meeus, exercise after example 21.b: Polaris, 2 h 31 min 48.704 s and +89 15' 50.72" in 2000, stood at 1 h 22 min
// 33.90 s and +88 46' 26.18" at the beginning of 1900; it moves by +0.19877 s and -0.0152" a year.
TEST_F(OldStarsTest, PolarisStoodFartherFromThePole) {
    constexpr double k1900 = 2415020.3135;
    StarRecord polaris;
    polaris.Magnitude = 2;
    polaris.RightAscensionJ2000 = (2 + 31 / 60.0 + (48.704 - 100 * 0.19877) / 3600) * 15 * kDegree;
    polaris.DeclinationJ2000 = (89 + 15 / 60.0 + (50.72 + 100 * 0.0152) / 3600) * kDegree;
    polaris.RightAscension = polaris.RightAscensionJ2000;
    polaris.Declination = polaris.DeclinationJ2000;
    catalogue.push_back(polaris);
    SetInstant(k1900);
    LookAt(60, 0);
    Plot();
    ASSERT_EQ(Dots().size(), 1U);
    const Equatorial place = SkyUnder(Dots()[0].numbers[0] * 15, Dots()[0].numbers[1] * 15);
    EXPECT_NEAR(place.dec / kDegree, 88 + 46 / 60.0 + 26.18 / 3600, 0.005);
    EXPECT_NEAR(place.ra / kDegree, (1 + 22 / 60.0 + 33.90 / 3600) * 15, 0.3) << "near the pole, hours are narrow";
}

TEST_F(StarsTest, PrecessionRunsOnceInSixtyDays) {
    AddStar(0, 0, 1);
    Plot();
    EXPECT_EQ(app.Data.Stars.LastPrecession, kEpoch);
    SetInstant(kEpoch + 59.9);
    PlotAgain();
    EXPECT_EQ(app.Data.Stars.LastPrecession, kEpoch);
    SetInstant(kEpoch + 60);
    PlotAgain();
    EXPECT_EQ(app.Data.Stars.LastPrecession, kEpoch + 60);
}

TEST_F(StarsTest, TheFaintestWaitForTheEndOfADrag) {
    AddStar(0, 0, 3);
    AddStar(0, 20, 9);
    Plot();
    EXPECT_EQ(Dots().size(), 2U);
    app.Run.DragActive = true;
    PlotAgain();
    ASSERT_EQ(Dots().size(), 1U);
    EXPECT_NEAR(Dots()[0].numbers[0], 400, 0.01);
    app.Run.DragActive = false;
    PlotAgain();
    EXPECT_EQ(Dots().size(), 2U);
}

TEST_F(StarsTest, TheEdgeOfTheSkyIsACircle) {
    view.SkyScale = 1.5;
    Plot();
    EXPECT_TRUE(Circles().empty());
    app.Main.CSkyCircle.Value = true;
    PlotAgain();
    ASSERT_EQ(Circles().size(), 1U);
    ExpectNumbers(Circles()[0], {6000, 4500, 6750});
    EXPECT_EQ(Circles()[0].state.ForeColor, 0xFFFFFFU);
    EXPECT_EQ(Circles()[0].state.FillStyle, FillPattern::Transparent);
    app.Main.CPlaniSphere.Value = true;
    PlotAgain();
    EXPECT_TRUE(Circles().empty());
    EXPECT_EQ(Lines().size(), 4U);
}

TEST_F(StarsTest, TheSelectedStarWearsARingAndItsName) {
    AddStar(0, 0, 1, "Vega", "HD 172167");
    AddStar(0, 30, 1);
    catalogue.emplace_back();
    app.Run.Finder.SelectedStar = 1;
    Plot();
    ASSERT_EQ(Circles().size(), 1U);
    ExpectNumbers(Circles()[0], {6000, 4500, kSelectionRing * 15}, 0.01);
    EXPECT_EQ(Circles()[0].state.FillStyle, FillPattern::Transparent);
    EXPECT_EQ(Texts(), (std::vector<std::string>{" SELECTED Vega"}));
    app.Run.Finder.SelectedStar = 2;
    PlotAgain();
    EXPECT_EQ(Circles().size(), 1U);
    EXPECT_TRUE(Texts().empty()) << "it has no name";
    for (const int none : {0, 3, 4, -1, 1000000}) {
        app.Run.Finder.SelectedStar = none;
        PlotAgain();
        EXPECT_TRUE(Circles().empty()) << none;
    }
    app.Run.Finder.SelectedStar = 1;
    app.Main.CDrawFrontStars.Value = false;
    PlotAgain();
    EXPECT_TRUE(Circles().empty()) << "that part of the sky is not shown";
}

TEST_F(StarsTest, OfTwoNamesThatCollideTheFainterGoes) {
    AddStar(0, 0, 1.5, "Faint");
    AddStar(0.2, 0.2, 0.5, "Bright");
    AddStar(30, 30, 1.2, "Apart");
    Plot();
    EXPECT_TRUE(Texts().empty()) << "without CStarNames";
    app.Main.CStarNames.Value = true;
    PlotAgain();
    EXPECT_EQ(Texts(), (std::vector<std::string>{" Bright", " Apart"}));
}

TEST_F(StarsTest, TheQuartersOfTheSkyStandOnTheHorizonCircle) {
    LookAt(0, 0);  // down on the observer
    AddStar(10, 10, 1);
    Plot();
    EXPECT_TRUE(Texts().empty());
    app.Main.CHCircle.Value = true;
    PlotAgain();
    const auto placeOf = [this](const std::string& letter) {
        for (const RecordedOperation& print : surface.OperationsOf(DrawOperation::Print))
            if (print.text == " " + letter) return print.state;
        ADD_FAILURE() << letter;
        return DrawState{};
    };
    // From outside east is on the right, 300 pixels from the middle less a few.
    EXPECT_LT(placeOf("N").CurrentY, 400);
    EXPECT_GT(placeOf("S").CurrentY, 8400);
    EXPECT_GT(placeOf("E").CurrentX, 10000);
    EXPECT_LT(placeOf("W").CurrentX, 1800);
    app.Main.CReverseSky.Value = true;
    PlotAgain();
    EXPECT_LT(placeOf("E").CurrentX, 1800) << "overhead it is on the left";
    EXPECT_LT(placeOf("N").CurrentY, 400);
    app.Main.CStarsOnGlobe.Value = true;
    PlotAgain();
    EXPECT_TRUE(Texts().empty()) << "the stars of a globe have no horizon of one's own";
}

TEST_F(StarsTest, NamesAreWrittenInFull) {
    AddStar(0, 0, 1, "Alula Australis");
    app.Main.CStarNames.Value = true;
    Plot();
    EXPECT_EQ(Texts(), std::vector<std::string>{" Alula Australis"});
}

TEST_F(StarsTest, NamesKeepClearOfWhatIsWrittenAlready) {
    AddStar(0, 0, 1, "Vega");
    app.Main.CStarNames.Value = true;
    Plot();
    ASSERT_EQ(Texts().size(), 1U);
    surface.Forget();
    names.Clear();
    names.Add({.x = 6000, .y = 4500, .gap = 30, .name = "STARLINK-1234"});
    names.Draw(scene);
    ASSERT_EQ(Texts().size(), 1U);
    PlotStars(scene, names);
    EXPECT_EQ(Texts().size(), 1U) << "no room for Vega";
}

TEST_F(StarsTest, DesignationsWaitForANearView) {
    AddStar(0, 0, 1, "", "HD 1");
    AddStar(0, 0.5, 1, "Vega", "HD 2");
    app.Main.CStarNames.Value = true;
    Plot();
    EXPECT_EQ(Texts(), (std::vector<std::string>{" Vega"}));
    view.ZoomFactor = 1000;
    PlotAgain();
    EXPECT_EQ(Texts().size(), 2U);
}

TEST_F(StarsTest, OnTheFlatMapAStarStandsOverItsPlaceBothHalvesAlike) {
    app.Main.CPlaniSphere.Value = true;
    app.Main.CDrawFrontStars.Value = false;
    app.Main.CReverseSky.Value = true;
    app.Main.CSkyOnly.Value = false;
    view.ZoomFactor = 20;
    AddStar(30, 120, 1);
    AddStar(-30, -60, 1);
    AddStar(10, 10, 6);
    app.Main.CAutoMag.Value = true;  // the map has room for magnitude 5
    view.SkyScale = 55;
    Plot();
    ASSERT_EQ(Dots().size(), 2U);
    const double degree = 300 * 20 / 64.0 * kDegree;  // pixels
    EXPECT_NEAR(Dots()[0].numbers[0], 400 + 120 * degree, 0.01);
    EXPECT_NEAR(Dots()[0].numbers[1], 300 - 30 * degree, 0.01);
    EXPECT_NEAR(Dots()[1].numbers[0], 400 - 60 * degree, 0.01);
    app.Main.CLocalSky.Value = true;  // for an observer at (0, 0)
    PlotAgain();
    ASSERT_EQ(Dots().size(), 1U);
    EXPECT_NEAR(Dots()[0].numbers[0], 400 - 60 * degree, 0.01);
}

TEST_F(StarsTest, BrighterIsLargerOnTheFlatMapToo) {
    app.Main.CPlaniSphere.Value = true;
    view.MaxStarMag = 5;
    AddStar(0, 0, 0.5);
    AddStar(0, 10, 2);
    AddStar(0, 20, 4.9);
    Plot();
    ASSERT_EQ(Dots().size(), 3U);
    EXPECT_GT(Dots()[0].numbers[2], Dots()[1].numbers[2]);
    EXPECT_GT(Dots()[1].numbers[2], Dots()[2].numbers[2]);
    EXPECT_EQ(Dots()[0].numbers[4], 1);
    EXPECT_LT(Dots()[2].numbers[4], 1);
}

TEST(SkyColor, GoesFromNightOverABlueTwilightToDay) {
    EXPECT_EQ(SkyColor(-30 * kDegree), kSpaceColor);
    EXPECT_EQ(SkyColor(-19 * kDegree), kSpaceColor);
    EXPECT_EQ(SkyColor(60 * kDegree), SkyColor(20 * kDegree));
    Color before = SkyColor(-90 * kDegree);
    for (double elevation = -90; elevation <= 90; elevation += 0.1) {
        const Color color = SkyColor(elevation * kDegree);
        EXPECT_GE(BlueOf(color), BlueOf(before)) << elevation;
        EXPECT_LE(BlueOf(color) - BlueOf(before), 3) << elevation;
        EXPECT_LE(std::abs(RedOf(color) - RedOf(before)), 3) << elevation;
        EXPECT_GT(BlueOf(color), RedOf(color)) << elevation;
        before = color;
    }
    EXPECT_GT(BlueOf(before), 180);
}

TEST_F(StarsTest, OnlyTheAirLightsTheBackground) {
    app.Data.SunDir = {1, 0, 0};  // in the zenith of (0, 0)
    DrawSkyBackground(scene);
    EXPECT_TRUE(surface.Operations().empty());
    app.Main.MnuAtmo.Checked = true;
    DrawSkyBackground(scene);
    ASSERT_EQ(surface.OperationsOf(DrawOperation::Cls).size(), 1U);
    EXPECT_EQ(surface.Operations().back().state.BackColor, SkyColor(kPiExact / 2));
    surface.Forget();
    app.Main.CFlatSky.Value = true;
    DrawSkyBackground(scene);
    EXPECT_TRUE(surface.Operations().empty());
}

}  // namespace
}  // namespace glintara::testing
