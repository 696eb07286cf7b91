#include "orbit/location.h"

#include "flare/observed_night.h"

namespace glintara::observed_night {
namespace {

struct LocationTest : ::testing::Test {
    Observatory o;
    CommonData& data = o.app.Data;

    /// Whether the engine sees IRIDIUM 32 flare within 30 km of its observer at 5:03, when it does so in Turin.
    bool EngineStandsInTurin() {
        EngineBlock block = iridium_.app.Data.Satellite(1).EngineBlock;
        double jd = 0;
        return Satellite_FindFlare(kNight + 5 * kHour, 6 * 60 * kSecond, GLINTCORE_SUN, 0.1 * kSecond,
                                   data.Site.SiteRadius, &block, GLINTCORE_ALONG_TRACK, -120 * kDegree, 40 * kDegree,
                                   30e3, 0, &jd) != 0;
    }

    void SetUp() override { iridium_.LoadOne("iridium.tle", "IRIDIUM 32 [+]"); }

  private:
    Observatory iridium_;
};

TEST_F(LocationTest, ThePlaceAndWhatFollowsFromIt) {
    // Geocentric places by the closed formula of the ellipsoid WGS 84, worked out apart.
    SetLocation(data, {45.07 * kDegree, 7.69 * kDegree, 240});
    EXPECT_EQ(data.Site.SiteLat, 45.07 * kDegree);
    EXPECT_EQ(data.Site.SiteLon, 7.69 * kDegree);
    EXPECT_EQ(data.Site.SiteAlt, 240);
    EXPECT_NEAR(data.Site.SiteGeoLat / kDegree, 44.877583031880874, 1e-9);
    EXPECT_NEAR(data.Site.SiteRadius, 6367703.416424568, 1e-3);

    SetLocation(data, {-33.9 * kDegree, 151.2 * kDegree, 50});
    EXPECT_NEAR(data.Site.SiteGeoLat / kDegree, -33.72206809259116, 1e-9);
    EXPECT_NEAR(data.Site.SiteRadius, 6371573.075306271, 1e-3);
}

TEST_F(LocationTest, DegreesComeWithTheHeightOfAHundredAndFiftyMetres) {
    SetLocationDegrees(data, 45, -12.5);
    EXPECT_NEAR(data.Site.SiteLat, 0.785398163397448, 1e-12);
    EXPECT_NEAR(data.Site.SiteLon, -0.218166156499291, 1e-12);
    EXPECT_EQ(data.Site.SiteAlt, 150);
    EXPECT_NEAR(data.Site.SiteRadius, 6367489.543863465 + 149.9992, 1e-3);
}

TEST_F(LocationTest, TheEngineIsTold) {
    SetLocation(data, kTurin);
    EXPECT_TRUE(EngineStandsInTurin());
    SetLocation(data, {kTurin.lat, kTurin.lon + 10 * kDegree, 240});
    EXPECT_FALSE(EngineStandsInTurin());
    SetLocationDegrees(data, 45.07, 7.69);
    EXPECT_TRUE(EngineStandsInTurin());
    SetLocationDegrees(data, -45.07, 7.69);
    EXPECT_FALSE(EngineStandsInTurin());
}

TEST_F(LocationTest, RefreshTellsTheEngineAnewAndWorksOutWhatFollows) {
    SetLocation(data, kTurin);
    const ObserverSite site = data.Site;
    Satellite_SetSiteGeoPosition(6378137, 0, 0, 6378137);
    data.Site.SiteRadius = 1;
    data.Site.SiteGeoLat = 0;
    RefreshLocation(data);
    EXPECT_EQ(data.Site.SiteLat, site.SiteLat);
    EXPECT_EQ(data.Site.SiteLon, site.SiteLon);
    EXPECT_EQ(data.Site.SiteAlt, site.SiteAlt);
    EXPECT_EQ(data.Site.SiteRadius, site.SiteRadius);
    EXPECT_EQ(data.Site.SiteGeoLat, site.SiteGeoLat);
    EXPECT_TRUE(EngineStandsInTurin());
}

TEST_F(LocationTest, OrbitsKeepTheirSizeInKilometresWhenTheObserverMoves) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    o.LoadOne("geo.tle", "GOES 16");
    SatRecord& still = o.Append(data.Satellite(1));
    still.MeanMotion = 0;
    still.MeanRadiusA = 0.25;
    for (const Geodetic& place : {Geodetic{0, 0, 0}, Geodetic{90 * kDegree, 0, 0}, kTurin}) {
        SetLocation(data, place);
        // The first Iridium ring flew 780 km above the equator's radius; a day by the stars takes 42164 km.
        EXPECT_NEAR(data.Satellite(1).MeanRadiusA * data.Site.SiteRadius, 7158e3, 10e3);
        EXPECT_NEAR(data.Satellite(2).MeanRadiusA * data.Site.SiteRadius, 42164e3, 5e3);
        EXPECT_EQ(still.MeanRadiusA, 0.25);
    }
}

}  // namespace
}  // namespace glintara::observed_night
