#include "orbit/download_sources.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace glintara {
namespace {

using Texts = std::vector<std::string>;

TEST(DownloadSources, AreTwentySixInTheirOrder) {
    const Texts labels = {"IRIDIUM", "ISS",      "GPS",      "VISUAL", "FENGYUN DEB", "NEW TLE", "GEO",
                          "WEATHER", "CUBESAT",  "NOAA",     "GOES",   "EARTH RES",   "SARSAT",  "DMC",
                          "TDRSS",   "INTELSAT", "GORIZONT", "RADUGA", "MOLNIYA",     "ORBCOMM", "GLOBALSTAR",
                          "AMATEUR", "X COMM",   "GLO OPS",  "NNSS",   "CLASSFD"};
    const Texts files = {"iridium", "stations", "gps-ops",  "visual", "1999-025", "tle-new", "geo",
                         "weather", "cubesat",  "noaa",     "goes",   "resource", "sarsat",  "dmc",
                         "tdrss",   "intelsat", "gorizont", "raduga", "molniya",  "orbcomm", "globalstar",
                         "amateur", "x-comm",   "glo-ops",  "nnss"};
    const Texts lines = SourceLines({});
    ASSERT_EQ(lines.size(), 26U);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(LabelOfLine(lines[i]), labels[i]);
        EXPECT_EQ(lines[i].find("- "), 13U) << lines[i];
        const std::string address = i < files.size() ? "https://celestrak.org/NORAD/elements/" + files[i] + ".txt"
                                                     : "https://mmccants.org/tle/classfd.tle";
        EXPECT_EQ(AddressOfLine(lines[i]), address);
    }
    EXPECT_EQ(lines[4], "FENGYUN DEB  - https://celestrak.org/NORAD/elements/1999-025.txt");
}

TEST(DownloadSources, StandOnOtherHostsWhenAsked) {
    const Texts lines = SourceLines({.catalogue = "http://127.0.0.1:8001", .personal = "http://127.0.0.1:8002"});
    EXPECT_EQ(lines.front(), "IRIDIUM      - http://127.0.0.1:8001/NORAD/elements/iridium.txt");
    EXPECT_EQ(lines.back(), "CLASSFD      - http://127.0.0.1:8002/tle/classfd.tle");
}

TEST(DownloadSources, TheAddressStandsBehindTheFirstDash) {
    EXPECT_EQ(AddressOfLine("A            - http://a-b.example/c-d.txt"), "http://a-b.example/c-d.txt");
    EXPECT_EQ(AddressOfLine("no address"), "");
    EXPECT_EQ(AddressOfLine("A-"), "");
    EXPECT_EQ(AddressOfLine("A- "), "");
    EXPECT_EQ(AddressOfLine(""), "");
    EXPECT_EQ(LabelOfLine("A B   - x"), "A B");
    EXPECT_EQ(LabelOfLine("   - x"), "");
}

TEST(DownloadSources, AFileOfTheCatalogueHasTwoFurtherAddresses) {
    EXPECT_EQ(AddressesToTry("https://celestrak.org/NORAD/elements/x-comm.txt"),
              (Texts{"https://celestrak.org/NORAD/elements/x-comm.txt",
                     "https://celestrak.org/NORAD/elements/gp.php?GROUP=x-comm&FORMAT=tle",
                     "https://celestrak.org/NORAD/elements/gp.php?GROUP=x-comm&FORMAT=csv"}));
    EXPECT_EQ(AddressesToTry("https://mmccants.org/tle/classfd.tle"), (Texts{"https://mmccants.org/tle/classfd.tle"}));
    EXPECT_EQ(AddressesToTry("https://celestrak.org/NORAD/elements/"),
              (Texts{"https://celestrak.org/NORAD/elements/"}));
}

// Two groups are called otherwise by the query than their old files were.
TEST(DownloadSources, RenamedGroupsAreAskedForByTheirNamesOfToday) {
    EXPECT_EQ(AddressesToTry("h/NORAD/elements/tle-new.txt")[1],
              "h/NORAD/elements/gp.php?GROUP=last-30-days&FORMAT=tle");
    EXPECT_EQ(AddressesToTry("h/NORAD/elements/1999-025.txt")[2],
              "h/NORAD/elements/gp.php?GROUP=fengyun-1c-debris&FORMAT=csv");
}

TEST(DownloadSources, TheHostIsWhatStandsBetweenTheSlashes) {
    EXPECT_EQ(HostOf("https://celestrak.org/NORAD/elements/geo.txt"), "celestrak.org");
    EXPECT_EQ(HostOf("http://127.0.0.1:80"), "127.0.0.1:80");
    EXPECT_EQ(HostOf("nowhere"), "nowhere");
}

}  // namespace
}  // namespace glintara
