#include "scene/star_places.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "engine/astro/calendar.h"
#include "engine/astro/sidereal.h"
#include "scene/scene_fixture.h"

namespace glintara::testing {
namespace {

constexpr double kHour = 15 * kDegree;
constexpr double kJanuary2020 = 2458849.5;

StarRecord Star(const std::string& name, const std::string& designation) {
    StarRecord star;
    star.Magnitude = 1;
    star.ProperName = name;
    star.Designation = designation;
    return star;
}

StarRecord StarAt(double ra, double dec) {
    StarRecord star = Star("", "HD 1");
    star.RightAscensionJ2000 = star.RightAscension = ra;
    star.DeclinationJ2000 = star.Declination = dec;
    return star;
}

std::string PlotName(const StarRecord& star) { return MakeStarPlotTable({StarRecord{}, star})[1].Name.data(); }

TEST(StarPlotTable, TakesTheProperName) {
    StarRecord vega = Star("Vega", "HD 172167");
    vega.Magnitude = 0.03;
    vega.Declination = 0.6769;
    vega.RightAscension = 4.8736;
    vega.ColorIndex = -0.001;
    const StarPlotRecord record = MakeStarPlotTable({StarRecord{}, vega})[1];
    EXPECT_STREQ(record.Name.data(), "Vega");
    EXPECT_EQ(record.Magnitude, 0.03);
    EXPECT_EQ(record.Declination, 0.6769);
    EXPECT_EQ(record.RightAscension, 4.8736);
    EXPECT_EQ(record.ColorIndex, -0.001);
}

TEST(StarPlotTable, ANameOfOneCharacterIsSkippedForTheDesignation) {
    EXPECT_EQ(PlotName(Star("x", "HD 172167")), "HD 172167");
    EXPECT_EQ(PlotName(Star("", "HD 172167")), "HD 172167");
    EXPECT_EQ(PlotName(Star("x", "")), "");
    EXPECT_EQ(PlotName(Star("", "")), "");
}

TEST(StarPlotTable, ALongNameIsCutAtFourteenAndClosedByAZero) {
    const StarPlotRecord record = MakeStarPlotTable({StarRecord{}, Star("Zubeneschamali Borealis", "")})[1];
    EXPECT_STREQ(record.Name.data(), "Zubeneschamali");
    EXPECT_EQ(record.Name[14], '\0');
    EXPECT_EQ(record.Name[15], '\0');
    EXPECT_EQ(PlotName(Star("Zubenelgenubi", "")), "Zubenelgenubi");
}

TEST(TakeStars, FillsAllTablesThatGoWithTheCatalogue) {
    StarTables stars;
    stars.LastPrecession = kJanuary2020;
    TakeStars(stars, {{}, StarAt(0, 0), StarAt(6 * kHour, 0), {}, StarAt(1, 90 * kDegree)});
    EXPECT_EQ(stars.StarCount(), 4);
    EXPECT_EQ(stars.StarPlotTable.size(), 5U);
    ASSERT_EQ(stars.StarDirections.size(), 5U);
    ExpectVector(stars.StarDirections[1], {1, 0, 0});
    ExpectVector(stars.StarDirections[2], {0, 1, 0});
    EXPECT_EQ(stars.StarDirections[3], Vector3{}) << "a gap";
    ExpectVector(stars.StarDirections[4], {0, 0, 1});
    EXPECT_EQ(stars.LastPrecession, 0) << "the places of date are those of any date";
}

/// Meeus, Astronomical Algorithms, example 21.b: theta Persei on 2028 November 13.19, its own motion up to then added
/// to the place of 2000.
TEST(PrecessStars, CarriesThetaPerseiToItsPublishedPlace) {
    StarTables stars;
    TakeStars(stars, {{}, StarAt(41.054063 * kDegree, 49.227750 * kDegree)});
    ASSERT_TRUE(PrecessStars(stars, 2462088.69));
    const StarRecord& star = stars.StarCatalogue[1];
    EXPECT_NEAR(star.RightAscension / kDegree, 41.547214, 1e-6);
    EXPECT_NEAR(star.Declination / kDegree, 49.348483, 1e-6);
    EXPECT_EQ(star.RightAscensionJ2000, 41.054063 * kDegree);
    EXPECT_EQ(stars.StarPlotTable[1].RightAscension, star.RightAscension);
    EXPECT_EQ(stars.StarPlotTable[1].Declination, star.Declination);
    const double ra = 41.547214 * kDegree;
    const double dec = 49.348483 * kDegree;
    const Vector3 expected{std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)};
    ExpectVector(stars.StarDirections[1], expected, 3e-8);
}

TEST(PrecessStars, RunsOnceInSixtyDays) {
    StarTables stars;
    TakeStars(stars, {{}, StarAt(1, 0.5)});
    ASSERT_TRUE(PrecessStars(stars, kJanuary2020));
    const double before = stars.StarCatalogue[1].RightAscension;
    for (const double days : {0.0, 59.999, -59.999, 30.0})
        EXPECT_FALSE(PrecessStars(stars, kJanuary2020 + days)) << days;
    EXPECT_EQ(stars.StarCatalogue[1].RightAscension, before);
    EXPECT_EQ(stars.LastPrecession, kJanuary2020);
    EXPECT_TRUE(PrecessStars(stars, kJanuary2020 + 60));
    EXPECT_GT(stars.StarCatalogue[1].RightAscension, before);
    EXPECT_TRUE(PrecessStars(stars, kJanuary2020));
    EXPECT_EQ(stars.StarCatalogue[1].RightAscension, before) << "it starts from 2000 each time";
}

TEST(PrecessStars, AGapStaysEmpty) {
    StarTables stars;
    TakeStars(stars, {{}, {}, StarAt(1, 0.5)});
    ASSERT_TRUE(PrecessStars(stars, kJanuary2020));
    EXPECT_EQ(stars.StarCatalogue[1], StarRecord{});
    EXPECT_EQ(stars.StarDirections[1], Vector3{});
}

TEST(PrecessStars, NoInstantMovesNothing) {
    StarTables stars;
    TakeStars(stars, {{}, StarAt(1, 0.5)});
    EXPECT_FALSE(PrecessStars(stars, std::nan("")));
    EXPECT_EQ(stars.StarCatalogue[1].RightAscension, 1);
    EXPECT_FALSE(PrecessStars(stars, INFINITY));
}

struct SkyPlacesTest : SceneFixture {};

TEST_F(SkyPlacesTest, AMatrixTurnsAsTheAnglesDo) {
    Dice dice;
    for (int i = 0; i < 200; ++i) {
        dice.Camera(view);
        const double greenwich = dice.Between(-7, 7);
        const double ra = dice.Between(0, 7);
        const double dec = dice.Between(-1.5, 1.5);
        const Vector3 direction{std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)};
        const Vector3 found = 55 * (SkyToView(view, greenwich) * direction);
        ExpectVector(found, LatLonRadiusToView(view, {dec, ra - greenwich, 55}), 1e-10);
    }
}

struct Bright {
    const char* name;
    double hours;
    double degrees;
};

/// Places of 2000.
constexpr Bright kStars[] = {{"Sirius", 6.752481, -16.716116},   {"Vega", 18.615649, 38.783689},
                             {"Polaris", 2.530301, 89.264109},   {"Rigel", 5.242298, -8.201638},
                             {"Deneb", 20.690532, 45.280339},    {"Canopus", 6.399197, -52.695661},
                             {"Antares", 16.490128, -26.432003}, {"Spica", 13.419883, -11.161319},
                             {"Regulus", 10.139531, 11.967209},  {"Fomalhaut", 22.960846, -29.622237}};

struct Watch {
    const char* place;
    double lat;
    double lon;
    double jd;  // UTC
};

constexpr Watch kWatches[] = {{"Turin, 15 January 2010, 20:00", 45.07, 7.69, 2455212.3333333335},
                              {"Sydney, 21 June 2018, 10:30", -33.87, 151.21, 2458290.9375},
                              {"Quito, 1 November 2026, 3:15", -0.18, -78.47, 2461345.6354166665}};

/// By the library: from the place of 2000 over precession, nutation and aberration to the horizon, without refraction.
TEST_F(SkyPlacesTest, StarsStandAboveTheHorizonWhereTheAlmanacHasThem) {
    for (const Watch& watch : kWatches) {
        const ObserverSite site = MakeObserverSite({watch.lat * kDegree, watch.lon * kDegree, 0});
        const double greenwich = SiderealFromJD(watch.jd);
        StarTables stars;
        std::vector<StarRecord> catalogue(1);
        for (const Bright& star : kStars) catalogue.push_back(StarAt(star.hours * kHour, star.degrees * kDegree));
        TakeStars(stars, catalogue);
        ASSERT_TRUE(PrecessStars(stars, watch.jd));
        for (std::size_t i = 1; i < catalogue.size(); ++i) {
            double azimuth = 0;
            double zenith = 0;
            double hourAngle = 0;
            double dec = 0;
            double ra = 0;
            double origins = 0;
            ASSERT_EQ(eraAtco13(catalogue[i].RightAscensionJ2000, catalogue[i].DeclinationJ2000, 0, 0, 0, 0, watch.jd,
                                0, 0, site.SiteLon, site.SiteLat, 0, 0, 0, 0, 0, 0, 0.55, &azimuth, &zenith, &hourAngle,
                                &dec, &ra, &origins),
                      0);
            const HorizonAngles found = SkyToHorizon(site, greenwich, stars.StarDirections[i]);
            const double altitude = kPiExact / 2 - zenith;
            EXPECT_NEAR(found.altitude, altitude, 0.02 * kDegree) << kStars[i - 1].name << ", " << watch.place;
            EXPECT_NEAR(std::remainder(found.azimuth - azimuth, 2 * kPiExact) * std::cos(altitude), 0, 0.02 * kDegree)
                << kStars[i - 1].name << ", " << watch.place;
            EXPECT_NEAR(std::asin(Dot(ZenithInSky(site, greenwich), stars.StarDirections[i])), altitude, 0.02 * kDegree)
                << kStars[i - 1].name << ", " << watch.place;
        }
    }
}

}  // namespace
}  // namespace glintara::testing
