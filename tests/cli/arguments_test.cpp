#include "cli/arguments.h"

#include <gtest/gtest.h>

#include "engine/astro/constants.h"

namespace glintara::cli {
namespace {

TEST(Site, IsDegreesAndMetres) {
    const Geodetic site = ParseSite("-33.9,18.4,1085");
    EXPECT_NEAR(site.lat, -0.591666616, 1e-9);
    EXPECT_NEAR(site.lon, 0.321140582, 1e-9);
    EXPECT_EQ(site.height, 1085);
}

TEST(Site, WithoutAHeightIsAt150Metres) { EXPECT_EQ(ParseSite("0,0").height, 150); }

TEST(Site, RefusesWhatIsNoPlace) {
    for (const char* text : {"", "45", "45,7,240,1", "91,0", "-90.1,0", "0,361", "0,-181", "45;7", "45,seven", "45,7,",
                             "45 7", "nan,0", "1e400,0"})
        EXPECT_THROW(ParseSite(text), Failure) << text;
}

TEST(Instant, IsAJulianDate) {
    EXPECT_EQ(ParseInstant("2000-01-01T12:00:00Z"), 2451545.0);
    EXPECT_EQ(ParseInstant("2018-01-20"), 2458138.5);
    EXPECT_EQ(ParseInstant("2018-01-20T00:00"), 2458138.5);
    EXPECT_EQ(ParseInstant("1987-04-10 19:21:00"), 2446896.30625);  // Meeus, Astronomical Algorithms, example 12.b
    EXPECT_NEAR(ParseInstant("2018-01-20T00:00:43.2Z"), 2458138.5005, 1e-9);
}

TEST(Instant, KnowsTheLengthOfMonths) {
    EXPECT_EQ(ParseInstant("2016-02-29"), 2457447.5);
    EXPECT_THROW(ParseInstant("2018-02-29"), Failure);
    EXPECT_THROW(ParseInstant("2100-02-29"), Failure);
    EXPECT_THROW(ParseInstant("2018-04-31"), Failure);
}

TEST(Instant, RefusesWhatIsNone) {
    for (const char* text : {"", "now", "2018", "2018-1-2", "2018-13-01", "2018-00-01", "2018-01-00",
                             "2018-01-20T24:00", "2018-01-20T12:60", "2018-01-20T12:00:60", "2018-01-20T12:00:00+01:00",
                             "20180120", "1899-12-31", "2200-01-01", "2018-01-20 ", "2018-01-20T"})
        EXPECT_THROW(ParseInstant(text), Failure) << text;
}

TEST(Instant, FailureIsOneOfUsage) {
    try {
        ParseInstant("soon");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Code(), kBadUsage);
        EXPECT_NE(std::string(failure.what()).find("\"soon\""), std::string::npos);
    }
}

}  // namespace
}  // namespace glintara::cli
