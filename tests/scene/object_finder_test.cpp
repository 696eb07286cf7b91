#include "scene/object_finder.h"

#include <algorithm>
#include <string>

#include "engine/astro/sidereal.h"
#include "scene/marks.h"
#include "scene/mouse_place.h"
#include "scene/scene_fixture.h"
#include "scene/star_chart.h"
#include "scene/star_list.h"
#include "scene/star_places.h"

namespace glintara::testing {
namespace {

StarRecord StarAt(double ra, double dec, double magnitude = 2) {
    StarRecord star;
    star.Magnitude = magnitude;
    star.Designation = "HD 1";
    star.RightAscension = ra;
    star.Declination = dec;
    return star;
}

struct ObjectFinderTest : SceneFixture {
    MainControls& main = app.Main;
    StarTables& stars = app.Data.Stars;
    double greenwich = 0;

    void SetUp() override {
        app.Data.SetSimInstant({2018, 1, 20, 17, 42, 9}, 2458139.2376);
        greenwich = SiderealFromDate(app.Data.SimFields());
        app.Data.SunDir = {0, 0, 1};
        main.CDrawSky.Value = main.CSkyOnly.Value = true;
        main.CDrawFrontStars.Value = main.CDrawBackStars.Value = true;
        LookAt(0, 0);
        view.SkyScale = 1;
    }

    void Take(std::vector<StarRecord> catalogue) {
        catalogue.insert(catalogue.begin(), StarRecord());
        TakeStars(stars, std::move(catalogue));
        RebuildStarList(stars, 11);
    }

    void AddMark(double x, double y, int satellite) {
        app.Data.SatCount = std::max(app.Data.SatCount, satellite);
        app.Data.Satellite(satellite).OrbitNumber = static_cast<std::int16_t>(satellite);
        ASSERT_TRUE(app.Run.Finder.Add({x, y, satellite}));
    }

    /// The mouse at a place of the picture, scene units from its middle.
    void PutMouse(double x, double y) {
        app.Run.LastPictureWidth = 600;
        app.Run.LastPictureHeight = 400;
        const double unit = 200 * view.ZoomFactor / 64;
        app.Run.LastMouseX = 300 + x * unit;
        app.Run.LastMouseY = 200 - y * unit;
    }

    /// Where a star is drawn, by angles and by the way that satellites on the sky take; nothing where it is not.
    std::optional<ScenePoint> Drawn(const StarRecord& star) {
        const LatLonRadius direction{star.Declination, star.RightAscension - greenwich, 1};
        const ObserverSite& site = app.Data.Site;
        const double sine = std::sin(site.SiteLat) * std::sin(star.Declination) +
                            std::cos(site.SiteLat) * std::cos(star.Declination) *
                                std::cos(site.SiteLon + greenwich - star.RightAscension);
        if (!IsSkyShown(scene, direction, std::asin(sine))) return std::nullopt;
        TakeFramePan(view);
        PushSkyPan(scene);
        std::optional<ScenePoint> place = SeenOnSky(scene, direction);
        if (place) *place = {place->x + view.PanX, place->y + view.PanY};
        PopSkyPan(scene);
        return place;
    }

    FoundObject BySearchingAll(const ScenePoint& at, double within) {
        FoundObject best;
        for (std::int32_t i = 1; i <= stars.StarCount(); ++i) {
            const std::optional<ScenePoint> place = Drawn(stars.StarCatalogue[static_cast<std::size_t>(i)]);
            if (!place) continue;
            const double distance = std::hypot(place->x - at.x, place->y - at.y);
            if (distance < within) {
                within = distance;
                best = {FoundKind::Star, i, distance};
            }
        }
        return best;
    }
};

TEST_F(ObjectFinderTest, WithoutObjectsNothingIsShown) {
    PutMouse(0, 0);
    FindObject(app);
    EXPECT_FALSE(main.LFInfo.Visible);
    EXPECT_EQ(app.Run.Finder.Found, FoundKind::None);
    EXPECT_EQ(main.LFInfo.Caption.Get(), "");
    SelectStar(app);
    EXPECT_EQ(app.Run.Finder.SelectedStar, 0);
    EXPECT_FALSE(SelectSatellite(app));
}

TEST_F(ObjectFinderTest, BeforeTheMouseHasBeenOverThePictureNothingIsFound) {
    Take({StarAt(greenwich, 0)});
    AddMark(0, 0, 1);
    FindObject(app);
    EXPECT_FALSE(main.LFInfo.Visible);
    EXPECT_FALSE(SelectSatellite(app));
}

// At zoom 64 the catch reaches 1.5 / 64 units, at twice the zoom half as far.
TEST_F(ObjectFinderTest, TheCatchShrinksAsTheZoomGrows) {
    const double reach = 1.5 / 64;
    AddMark(0.1, 0.2, 1);
    EXPECT_EQ(ObjectAt(app, {0.1, 0.2 + reach * 0.999}).kind, FoundKind::Satellite);
    EXPECT_EQ(ObjectAt(app, {0.1, 0.2 + reach * 1.001}).kind, FoundKind::None);
    EXPECT_EQ(ObjectAt(app, {0.1 + reach * 0.7, 0.2 + reach * 0.7}).kind, FoundKind::Satellite);
    EXPECT_EQ(ObjectAt(app, {0.1 + reach * 0.72, 0.2 + reach * 0.72}).kind, FoundKind::None) << "the true distance";
    view.ZoomFactor = 128;
    EXPECT_EQ(ObjectAt(app, {0.1, 0.2 + reach * 0.501}).kind, FoundKind::None);
    EXPECT_EQ(ObjectAt(app, {0.1, 0.2 + reach * 0.499}).kind, FoundKind::Satellite);
}

TEST_F(ObjectFinderTest, TheCatchOfStarsIsTheSame) {
    Take({StarAt(greenwich, 0)});
    for (const bool chart : {false, true}) {
        main.CFlatSky.Value = chart;
        view.ZoomFactor = 64;
        EXPECT_EQ(ObjectAt(app, {1.5 / 64 * 0.999, 0}).kind, FoundKind::Star);
        EXPECT_EQ(ObjectAt(app, {1.5 / 64 * 1.001, 0}).kind, FoundKind::None);
        view.ZoomFactor = 640;
        EXPECT_EQ(ObjectAt(app, {1.5 / 640 * 0.999, 0}).kind, FoundKind::Star);
        EXPECT_EQ(ObjectAt(app, {1.5 / 640 * 1.001, 0}).kind, FoundKind::None);
    }
}

TEST_F(ObjectFinderTest, TheNearestIsFound) {
    AddMark(0.010, 0, 1);
    AddMark(0.004, 0, 2);
    AddMark(-0.006, 0, 3);
    EXPECT_EQ(ObjectAt(app, {0, 0}).index, 2);
    Take({StarAt(greenwich + 0.003, 0), StarAt(greenwich - 0.005, 0)});
    const FoundObject found = ObjectAt(app, {0, 0});
    EXPECT_EQ(found.kind, FoundKind::Star);
    EXPECT_EQ(found.index, 1);
    EXPECT_NEAR(found.distance, 0.003, 1e-7);
    EXPECT_EQ(ObjectAt(app, {0.0045, 0}).kind, FoundKind::Satellite);
}

TEST_F(ObjectFinderTest, AMarkOfASatelliteThatIsGoneIsPassedOver) {
    AddMark(0, 0, 2);
    app.Data.SatCount = 1;
    EXPECT_EQ(ObjectAt(app, {0, 0}).kind, FoundKind::None);
}

TEST_F(ObjectFinderTest, OnlyStarsThatAreDrawnAreFound) {
    Take({StarAt(greenwich, 0, 6), StarRecord(), StarAt(greenwich + 0.01, 0, 1)});
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).index, 1);
    view.MaxStarMag = 5;
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).index, 3) << "the nearer one is too faint";
    main.CDrawSky.Value = false;
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).kind, FoundKind::None);
    main.CDrawSky.Value = true;
    main.CDrawFrontStars.Value = false;
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).kind, FoundKind::None);
    RebuildStarList(stars, -2);
    main.CDrawFrontStars.Value = true;
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).kind, FoundKind::None) << "none is listed";
}

TEST_F(ObjectFinderTest, TheEarthHidesWhatIsBehindIt) {
    Take({StarAt(greenwich + kPiExact, 0)});
    view.SkyScale = 55;
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).index, 1);
    main.CSkyOnly.Value = false;
    EXPECT_EQ(NearestStar(app, {0, 0}, 1).kind, FoundKind::None);
}

// The sieve must never pass over the star that a search of all, each placed by angles, finds.
TEST_F(ObjectFinderTest, FindsWhatASearchOfAllStarsFinds) {
    Dice dice;
    std::vector<StarRecord> catalogue;
    for (int i = 0; i < 400; ++i)
        catalogue.push_back(StarAt(dice.Between(0, 2 * kPiExact), std::asin(dice.Between(-1, 1))));
    Take(std::move(catalogue));
    scene.FlattenSky = FlattenSky;
    int found = 0;
    int missed = 0;
    for (int i = 0; i < 4000; ++i) {
        dice.Camera(view);
        if (i % 3 == 0) Pan(0, 0);
        view.SkyScale = std::exp(dice.Between(-1, 4));
        main.CFlatSky.Value = (i & 1) != 0;
        main.CReverseSky.Value = (i & 2) != 0;
        main.CPlaniSphere.Value = i % 5 == 0;
        main.CSkyOnly.Value = (i & 8) != 0;
        main.CStarsOnGlobe.Value = i % 7 == 0;
        main.CLocalSky.Value = (i & 16) != 0;
        main.CDrawFrontStars.Value = i % 11 != 0;
        main.CDrawBackStars.Value = i % 13 != 0;
        app.Data.Site.SiteLat = dice.Between(-1.5, 1.5);
        app.Data.Site.SiteLon = dice.Between(-3, 3);
        const double reach = main.CPlaniSphere.Value ? 3.5 : 2.5 * view.SkyScale;
        const ScenePoint centre = SkyCentre(app);
        const ScenePoint at{centre.x + dice.Between(-reach, reach), centre.y + dice.Between(-reach, reach)};
        const double within = i % 4 == 0 ? 1e300 : reach * dice.Between(0, 0.3);
        const FoundObject expected = BySearchingAll(at, within);
        const FoundObject result = NearestStar(app, at, within);
        ASSERT_EQ(result.kind, expected.kind) << "picture " << i;
        ASSERT_EQ(result.index, expected.index) << "picture " << i;
        ASSERT_NEAR(result.distance, expected.distance, 1e-9 * std::max(1.0, reach)) << "picture " << i;
        ++(expected.kind == FoundKind::Star ? found : missed);
    }
    EXPECT_GT(found, 1000);
    EXPECT_GT(missed, 300);
}

TEST_F(ObjectFinderTest, TellsOfAStar) {
    StarRecord vega = StarAt(279.2346 * kDegree, 38.7838 * kDegree, 0.03);
    vega.ProperName = "Vega";
    vega.Designation = "HD 172167";
    StarRecord plain = StarAt(0.001, -0.001, 2.01);
    Take({vega, plain});
    EXPECT_EQ(StarInfo(stars, 1), "SELECTED STAR #1\n (Vega)\nDEC: 038°47'01\"\nRA : 18h36'56\"\nMAG: 0.03");
    EXPECT_EQ(StarInfo(stars, 2), "SELECTED STAR #2\n (HD 1)\nDEC: -000°03'26\"\nRA : 00h00'13\"\nMAG: 2.01");
}

TEST_F(ObjectFinderTest, TheBoxShowsWhatTheMouseRestsOn) {
    Take({StarAt(greenwich, 0)});
    PutMouse(0.003, 0.004);
    FindObject(app);
    EXPECT_TRUE(main.LFInfo.Visible);
    EXPECT_EQ(main.LFInfo.Caption.Get(), StarInfo(stars, 1));
    EXPECT_EQ(app.Run.Finder.Found, FoundKind::Star);
    EXPECT_EQ(app.Run.Finder.FoundIndex, 1);
    EXPECT_NEAR(app.Run.Finder.LastDistance, 0.005, 1e-6);
    EXPECT_EQ(app.Run.Finder.SelectedStar, 0) << "found, not chosen";
}

TEST_F(ObjectFinderTest, TheBoxStandsALetterFromTheMouse) {
    RunState& run = app.Run;
    run.LastPictureWidth = 6000;
    run.LastPictureHeight = 4000;
    run.LastMouseX = 1000;
    run.LastMouseY = 500;
    const InfoLetters letters{.xWidth = 100, .xHeight = 120, .lineHeight = 200, .textWidth = 2000};
    run.Finder.Found = FoundKind::Satellite;
    BoxArea box = InfoBoxArea(run, letters);
    EXPECT_EQ(box.left, 1100);
    EXPECT_EQ(box.top, 620);
    EXPECT_EQ(box.right - box.left, 2200);
    EXPECT_EQ(box.bottom - box.top, 700);
    run.Finder.Found = FoundKind::Star;
    box = InfoBoxArea(run, letters);
    EXPECT_EQ(box.bottom - box.top, 1300);
    run.LastMouseX = 5000;
    run.LastMouseY = 3500;
    box = InfoBoxArea(run, letters);
    EXPECT_EQ(box.right, 4900);
    EXPECT_EQ(box.bottom, 3380);
    run.LastPictureWidth = 1000;
    run.LastMouseX = 900;
    EXPECT_EQ(InfoBoxArea(run, letters).left, 0) << "a picture narrower than the box";
}

TEST_F(ObjectFinderTest, AStarIsChosenHoweverFar) {
    StarRecord vega = StarAt(greenwich + 0.5, 0.3);
    vega.ProperName = "Vega";
    Take({StarAt(greenwich - 0.9, 0), vega});
    PutMouse(0.1, 0);
    main.TimerHRot.Restart(20);
    SelectStar(app);
    EXPECT_EQ(app.Run.Finder.SelectedStar, 2);
    EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Vega");
    EXPECT_FALSE(main.TimerHRot.Enabled);
    EXPECT_EQ(windows.calls, std::vector<std::string>{"UpdateGraphicsLevel2"});
    windows.calls.clear();
    main.CDrawSky.Value = false;
    PutMouse(-0.7, 0);
    SelectStar(app);
    EXPECT_EQ(app.Run.Finder.SelectedStar, 2);
    EXPECT_TRUE(windows.calls.empty());
}

TEST_F(ObjectFinderTest, TheSatelliteUnderTheMouseBeginsToWork) {
    AddMark(0.2, 0, 1);
    AddMark(0.4, 0, 2);
    PutMouse(0.21, 0);
    EXPECT_TRUE(SelectSatellite(app));
    EXPECT_EQ(app.Data.Satellite(app.Data.WorkingSat()).OrbitNumber, 1);
    PutMouse(0.3, 0);
    EXPECT_FALSE(SelectSatellite(app));
}

TEST(FinderList, AtItsCapacityRefusesTheNextEntry) {
    FinderState finder;
    EXPECT_EQ(finder.FinderCount(), 0);
    for (int i = 1; i <= 6000; ++i) ASSERT_TRUE(finder.Add({0, 0, i}));
    EXPECT_FALSE(finder.Add({0, 0, 6001}));
    EXPECT_EQ(finder.FinderCount(), 6000);
    EXPECT_EQ(finder.FinderList[0], FinderEntry());
    EXPECT_EQ(finder.FinderList[1].satellite, 1);
    finder.ClearList();
    EXPECT_EQ(finder.FinderCount(), 0);
}

}  // namespace
}  // namespace glintara::testing
