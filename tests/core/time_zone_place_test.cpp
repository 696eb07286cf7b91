#include "core/time_zone_place.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/temporary_folder.h"

namespace glintara {
namespace {

namespace fs = std::filesystem;

/// A computer with a small time zone database of its own.
struct TimeZonePlaceTest : ::testing::Test {
    TimeZonePlaceTest() {
        sources.database = folder.Path() / "zoneinfo";
        sources.localTime = folder.Path() / "localtime";
        sources.zoneName = folder.Path() / "timezone";
        Write("zoneinfo/zone1970.tab",
              "# comment\n"
              "IT,SM,VA\t+4154+01229\tEurope/Rome\n"
              "AT\t+4813+01620\tEurope/Vienna\n"
              "US\t+404251-0740023\tAmerica/New_York\tEastern (most areas)\n"
              "AR\t-3436-05827\tAmerica/Argentina/Buenos_Aires\n"
              "CI,IS\t+0519-00402\tAfrica/Abidjan\n"
              "XX\tbroken\tBroken/Zone\n"
              "short line\n");
        Write("zoneinfo/zone.tab",
              "IS\t+6409-02151\tAtlantic/Reykjavik\n"
              "NO\t+5955+01045\tEurope/Oslo\n");
        Write("zoneinfo/iso3166.tab", "# comment\nIS\tIceland\nNO\tNorway\n");
        Write("zoneinfo/tzdata.zi",
              "# version made-up\nL America/New_York US/Eastern\nL Africa/Abidjan Iceland\nL US/Eastern US/Old\n"
              "L Loop/B Loop/A\nL Loop/A Loop/B\n");
    }

    void Write(const std::string& name, const std::string& text) const {
        const fs::path file = folder.Path() / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    void Link(const std::string& zone) const {
        fs::remove(sources.localTime);
        fs::create_symlink(sources.database / zone, sources.localTime);
    }

    void ExpectRome(const TimeZonePlace& place) {
        EXPECT_TRUE(place.found) << place.words;
        EXPECT_NEAR(place.lat, 41.9, 1e-9);
        EXPECT_NEAR(place.lon, 12 + 29 / 60.0, 1e-9);
    }

    glintara::testing::TemporaryFolder folder;
    TimeZoneSources sources;
};

TEST_F(TimeZonePlaceTest, TheVariableGoesFirst) {
    Link("Europe/Vienna");
    for (const char* zone : {"Europe/Rome", ":Europe/Rome", "posix/Europe/Rome", "right/Europe/Rome"}) {
        sources.variable = zone;
        ExpectRome(FindTimeZonePlace(sources));
    }
    sources.variable = (sources.database / "Europe/Rome").string();
    ExpectRome(FindTimeZonePlace(sources));
    EXPECT_EQ(FindTimeZonePlace(sources).words, "Rome, by the time zone Europe/Rome: a first guess, to be mended.");
}

TEST_F(TimeZonePlaceTest, ThenTheLinkThenTheNameThenTheCopiedRules) {
    Write("zoneinfo/Europe/Rome", "TZif rules of Rome");
    Write("zoneinfo/Europe/Vienna", "TZif rules of Vienna");
    Link("Europe/Rome");
    Write("timezone", "Europe/Vienna\n");
    ExpectRome(FindTimeZonePlace(sources));

    fs::remove(sources.localTime);
    Write("localtime", "TZif rules of Rome");
    EXPECT_NEAR(FindTimeZonePlace(sources).lat, 48 + 13 / 60.0, 1e-9);

    fs::remove(sources.zoneName);
    ExpectRome(FindTimeZonePlace(sources));
}

TEST_F(TimeZonePlaceTest, ALinkMayLeadOverOthersAndBeRelative) {
    fs::create_symlink("zoneinfo/Europe/Rome", folder.Path() / "own");
    fs::create_symlink("own", sources.localTime);
    ExpectRome(FindTimeZonePlace(sources));
    fs::remove(sources.localTime);
    fs::create_symlink("/somewhere/else/zoneinfo/Europe/Rome", sources.localTime);
    ExpectRome(FindTimeZonePlace(sources));
}

TEST_F(TimeZonePlaceTest, SecondsAndSouthAndWestAreRead) {
    sources.variable = "America/New_York";
    EXPECT_NEAR(FindTimeZonePlace(sources).lat, 40 + 42 / 60.0 + 51 / 3600.0, 1e-9);
    EXPECT_NEAR(FindTimeZonePlace(sources).lon, -(74 + 23 / 3600.0), 1e-9);
    sources.variable = "America/Argentina/Buenos_Aires";
    EXPECT_NEAR(FindTimeZonePlace(sources).lat, -34.6, 1e-9);
    EXPECT_EQ(FindTimeZonePlace(sources).words.find("Buenos Aires, "), 0U);
}

// Where clocks go alike, the database joins countries: Oslo's zone links to another town, Iceland's to Africa.
TEST_F(TimeZonePlaceTest, NobodyIsPutIntoAnotherCountry) {
    sources.variable = "Europe/Oslo";
    EXPECT_NEAR(FindTimeZonePlace(sources).lat, 59 + 55 / 60.0, 1e-9);
    for (const char* zone : {"Atlantic/Reykjavik", "Iceland"}) {
        sources.variable = zone;
        EXPECT_NEAR(FindTimeZonePlace(sources).lat, 64.15, 1e-9) << zone;
    }
    // The file of that zone is a link itself, which is not followed.
    sources.variable.reset();
    fs::create_directories(sources.database / "Atlantic");
    fs::create_symlink("../Africa/Abidjan", sources.database / "Atlantic/Reykjavik");
    Link("Atlantic/Reykjavik");
    EXPECT_NEAR(FindTimeZonePlace(sources).lat, 64.15, 1e-9);
}

TEST_F(TimeZonePlaceTest, OldNamesLeadToTheNewOnes) {
    for (const char* zone : {"US/Eastern", "US/Old"}) {
        sources.variable = zone;
        EXPECT_NEAR(FindTimeZonePlace(sources).lon, -(74 + 23 / 3600.0), 1e-9) << zone;
        EXPECT_NE(FindTimeZonePlace(sources).words.find(zone), std::string::npos);
    }
    // Without that table, by a link among the files.
    fs::remove(sources.database / "tzdata.zi");
    fs::create_directories(sources.database / "US");
    fs::create_symlink("../America/New_York", sources.database / "US/Eastern");
    sources.variable = "US/Eastern";
    EXPECT_TRUE(FindTimeZonePlace(sources).found);
}

TEST_F(TimeZonePlaceTest, AZoneWithoutAPlaceIsTold) {
    for (const char* zone : {"Etc/UTC", "CET-1CEST,M3.5.0,M10.5.0/3", "Loop/A", "Broken/Zone"}) {
        sources.variable = zone;
        const TimeZonePlace place = FindTimeZonePlace(sources);
        EXPECT_FALSE(place.found) << zone;
        EXPECT_EQ(place.words, "The time zone of this computer, " + std::string(zone) + ", tells no place.");
    }
    sources.variable = "";
    EXPECT_EQ(FindTimeZonePlace(sources).words, "The time zone of this computer, UTC, tells no place.");
}

TEST_F(TimeZonePlaceTest, AComputerThatTellsNothingIsTold) {
    EXPECT_EQ(FindTimeZonePlace(sources).words, "This computer does not tell its time zone.");
    Write("localtime", "rules that nobody knows");
    EXPECT_EQ(FindTimeZonePlace(sources).words, "This computer does not tell its time zone.");
    sources.database = folder.Path() / "nowhere";
    sources.variable = "Europe/Rome";
    EXPECT_EQ(FindTimeZonePlace(sources).words,
              "This computer has no table of the places of time zones (zone1970.tab).");
}

}  // namespace
}  // namespace glintara
