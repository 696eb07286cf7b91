#include "flare/city_files.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace glintara {
namespace {

using testing::TemporaryFolder;

constexpr double kDegree = 3.14159265358979323846 / 180;

std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) bytes += static_cast<char>(value);
    return bytes;
}

/// A line of cities1000.txt with what the program reads of it.
std::string CityLine(const std::string& name, const std::string& population, const std::string& date = "2020-01-01",
                     const std::string& lat = "45.07049", const std::string& lon = "7.68682") {
    return "3165524\tascii\t" + name + "\tother names\t" + lat + "\t" + lon + "\tP\tPPLA\tIT\t\t\t12\tTO\t001272\t\t" +
           population + "\t239\t245\tEurope/Rome\t" + date + "\tPiedmont\n";
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

TEST(CityText, IsReadByItsColumns) {
    const auto cities = ReadCityText(CityLine("Torino", "870456"));
    ASSERT_EQ(cities.size(), 2U);
    EXPECT_EQ(cities[0], SiteRecord{});
    const SiteRecord& city = cities[1];
    EXPECT_EQ(city.CityName, "Torino");
    EXPECT_EQ(city.CityCountry, "IT");
    EXPECT_EQ(city.CityExtra, "Piedmont");
    EXPECT_NEAR(city.Lat, 45.07049 * kDegree, 1e-14);
    EXPECT_NEAR(city.Lon, 7.68682 * kDegree, 1e-14);
    EXPECT_EQ(city.Population, 870456);
    EXPECT_EQ(city.Altitude, 245);
    EXPECT_EQ(city.FoundJD, 0);
    EXPECT_FALSE(city.FoundFlag);
    // On the ellipsoid, tan(geocentric) = (1 - e2) tan(geodetic).
    const double geocentric = std::atan((1 - 0.00669437999014) * std::tan(45.07049 * kDegree));
    EXPECT_NEAR(city.GeoLat, geocentric, 1e-12);
    EXPECT_NEAR(city.X, std::cos(geocentric) * std::cos(7.68682 * kDegree), 1e-12);
    EXPECT_NEAR(city.Y, std::cos(geocentric) * std::sin(7.68682 * kDegree), 1e-12);
    EXPECT_NEAR(city.Z, std::sin(geocentric), 1e-12);
}

TEST(CityText, ATownOf4999IsDroppedAndOneOf5000IsNot) {
    const auto cities = ReadCityText(CityLine("A", "4999") + CityLine("B", "5000") + CityLine("C", "") +
                                     CityLine("D", "many") + CityLine("E", "5001"));
    ASSERT_EQ(cities.size(), 3U);
    EXPECT_EQ(cities[1].CityName, "B") << "the next one takes the place of what is dropped";
    EXPECT_EQ(cities[2].CityName, "E");
}

TEST(CityText, ALineWithoutADateIsDropped) {
    const auto cities = ReadCityText(CityLine("A", "6000", "") + CityLine("B", "6000"));
    ASSERT_EQ(cities.size(), 2U);
    EXPECT_EQ(cities[1].CityName, "B");
}

TEST(CityText, DamagedLinesAreNoPlaces) {
    EXPECT_EQ(ReadCityText("").size(), 1U);
    EXPECT_EQ(ReadCityText("\n\n\t\t\t\n" + std::string(100000, '\t')).size(), 1U);
    EXPECT_EQ(ReadCityText(CityLine("A", "6000", "x", "91")).size(), 1U) << "beyond the pole";
    EXPECT_EQ(ReadCityText(CityLine("A", "6000", "x", "1e999")).size(), 2U) << "no number counts as 0";
    EXPECT_EQ(ReadCityText(CityLine("A", "inf")).size(), 1U);
    std::string windows = CityLine("A", "6000");
    windows.insert(windows.size() - 1, "\r");
    ASSERT_EQ(ReadCityText("\xEF\xBB\xBF" + windows).size(), 2U);
    EXPECT_EQ(ReadCityText(windows)[1].CityExtra, "Piedmont");
}

TEST(SiteText, IsReadByItsFields) {
    const auto sites = ReadSiteText(
        "# name, latitude, longitude, altitude, remark, country\n"
        "Pic du Midi, 42.9365N, 0.1426E, 2877, 1.06 m, FR\n"
        "\n"
        "Kitt Peak,31.9584, 111.5967W,2096,Mayall,US\r\n"
        "Cerro Tololo,30.169S,-70.8065\n");
    ASSERT_EQ(sites.size(), 3U);
    EXPECT_EQ(sites[0].CityName, "Pic du Midi");
    EXPECT_EQ(sites[0].CityExtra, "1.06 m");
    EXPECT_EQ(sites[0].CityCountry, "FR");
    EXPECT_EQ(sites[0].Altitude, 2877);
    EXPECT_EQ(sites[0].Population, 0);
    EXPECT_NEAR(sites[0].Lat, 42.9365 * kDegree, 1e-14);
    EXPECT_NEAR(sites[0].Lon, 0.1426 * kDegree, 1e-14);
    EXPECT_NEAR(sites[1].Lon, -111.5967 * kDegree, 1e-14);
    EXPECT_EQ(sites[1].CityCountry, "US");
    EXPECT_NEAR(sites[2].Lat, -30.169 * kDegree, 1e-14);
    EXPECT_NEAR(sites[2].Lon, -70.8065 * kDegree, 1e-14);
    EXPECT_EQ(sites[2].CityCountry, "");
}

TEST(Tokens, AreTakenFromTheFront) {
    std::string_view line = "a\t\tb";
    std::string_view token;
    SplitTab(line, line, token);
    EXPECT_EQ(token, "a");
    SplitTab(line, line, token);
    EXPECT_EQ(token, "");
    EXPECT_EQ(line, "b");
    SplitTab(line, line, token);
    EXPECT_EQ(token, "b") << "without a delimiter the whole line";
    EXPECT_EQ(line, "");
    SplitComma("1,2", line, token);
    EXPECT_EQ(token, "1");
    EXPECT_EQ(line, "2");
}

TEST(Tokens, ALetterBehindANumberTellsItsSide) {
    EXPECT_EQ(TokenToValue("12.5W"), -12.5);
    EXPECT_EQ(TokenToValue("12.5w"), -12.5);
    EXPECT_EQ(TokenToValue("12.5 S"), -12.5);
    EXPECT_EQ(TokenToValue("12.5E"), 12.5);
    EXPECT_EQ(TokenToValue("12.5N"), 12.5);
    EXPECT_EQ(TokenToValue("-12.5"), -12.5);
    EXPECT_EQ(TokenToValue("word"), 0);
    EXPECT_EQ(TokenToValue(""), 0);
}

std::vector<SiteRecord> TwoCities() {
    auto cities =
        ReadCityText(CityLine("Torino", "870456") + CityLine("\xC3\x81vila", "58358", "x", "40.65724", "-4.6995"));
    EXPECT_EQ(cities.size(), 3U);
    return cities;
}

TEST(CityFile, LiesInTheFileByteByByte) {
    std::vector<SiteRecord> cities(2);
    cities[1].CityName = "\xC3\x81vila";
    cities[1].CityCountry = "ES";
    cities[1].Lat = 0.5;
    cities[1].Population = 2;
    cities[1].Z = -1;
    cities[1].FoundJD = 2458138.5;
    cities[1].FoundFlag = true;
    const std::string file = EncodeCities(cities);
    ASSERT_EQ(file.size(), 4U + (2 + 6) + (2 + 2) + 2 + 82);
    EXPECT_EQ(file.substr(0, 4), Bytes({1, 0, 0, 0}));
    EXPECT_EQ(file.substr(4, 14), Bytes({6, 0}) + "\xC3\x81vila" + Bytes({2, 0}) + "ES" + Bytes({0, 0}));
    EXPECT_EQ(file.substr(18, 8), Bytes({0, 0, 0, 0, 0, 0, 0xE0, 0x3F})) << "Lat 0.5";
    EXPECT_EQ(file.substr(18 + 24, 8), Bytes({0, 0, 0, 0, 0, 0, 0, 0x40})) << "Population 2";
    EXPECT_EQ(file.substr(18 + 56, 8), Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0xBF})) << "Z -1";
    EXPECT_EQ(file.substr(18 + 64), std::string(18, '\0')) << "what a track has found is of the moment";
    const auto read = DecodeCities(file);
    ASSERT_TRUE(read);
    cities[1].FoundJD = 0;
    cities[1].FoundFlag = false;
    EXPECT_EQ(*read, cities);
}

TEST(CityFile, WhatIsNoCityFileIsRefused) {
    const std::string file = EncodeCities(TwoCities());
    EXPECT_EQ(DecodeCities(file), TwoCities());
    EXPECT_TRUE(DecodeCities(file + "more"));
    for (std::size_t length = 0; length < file.size(); ++length) EXPECT_FALSE(DecodeCities(file.substr(0, length)));
    EXPECT_FALSE(DecodeCities(Bytes({0xFF, 0xFF, 0xFF, 0xFF}))) << "a negative count";
    EXPECT_FALSE(DecodeCities(Bytes({0x41, 0x0D, 0x03, 0}) + std::string(30'000'000, '\0'))) << "200,001 places";
    std::vector<SiteRecord> cities = TwoCities();
    cities[2].Lat = std::nan("");
    EXPECT_FALSE(DecodeCities(EncodeCities(cities)));
    cities = TwoCities();
    cities[2].X = 3;
    EXPECT_FALSE(DecodeCities(EncodeCities(cities))) << "not on the unit sphere";
    std::mt19937 dice(11);
    for (int round = 0; round < 2000; ++round) {
        std::string broken = file;
        for (int i = 0; i < 4; ++i) broken[dice() % broken.size()] = static_cast<char>(dice());
        const auto read = DecodeCities(broken);
        if (read) EXPECT_LE(read->size(), 3U);
    }
}

struct LoadTest : ::testing::Test {
    void SetTime(const char* file, int secondsAgo) {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(folder.Path() / file, now - std::chrono::seconds(secondsAgo));
    }
    bool Load() {
        const std::vector<std::filesystem::path> folders = {folder.Path() / "none", folder.Path()};
        const bool loaded = LoadCities(folders, tables);
        LoadSites(folders, tables);
        return loaded;
    }

    TemporaryFolder folder;
    CityTables tables;
};

TEST_F(LoadTest, TheTextIsReadWhenItIsNewer) {
    WriteFile(folder.Path() / kCityFile, EncodeCities(TwoCities()));
    WriteFile(folder.Path() / kCityTextFile, CityLine("Asti", "75000"));
    SetTime(kCityFile, 10);
    SetTime(kCityTextFile, 20);
    EXPECT_TRUE(Load());
    EXPECT_EQ(tables.SiteCount(), 2);
    SetTime(kCityTextFile, 5);
    EXPECT_TRUE(Load());
    ASSERT_EQ(tables.SiteCount(), 1);
    EXPECT_EQ(tables.Site(1).CityName, "Asti");
}

TEST_F(LoadTest, TheTextAloneWillDo) {
    WriteFile(folder.Path() / kCityTextFile, CityLine("Asti", "75000"));
    EXPECT_TRUE(Load());
    EXPECT_EQ(tables.SiteCount(), 1);
    WriteFile(folder.Path() / kCityFile, "damaged");
    SetTime(kCityTextFile, 100);
    EXPECT_TRUE(Load());
    EXPECT_EQ(tables.SiteCount(), 1);
}

TEST_F(LoadTest, WithoutAFileTheTableStays) {
    EXPECT_FALSE(Load());
    EXPECT_EQ(tables.SiteCount(), 0);
    EXPECT_EQ(tables.FirstSiteIndex, 1);
    tables.SiteTable = TwoCities();
    WriteFile(folder.Path() / kCityFile, "damaged");
    EXPECT_FALSE(Load());
    EXPECT_EQ(tables.SiteCount(), 2);
}

TEST_F(LoadTest, SitesStandBehindTheCities) {
    WriteFile(folder.Path() / kCityFile, EncodeCities(TwoCities()));
    EXPECT_TRUE(Load());
    EXPECT_EQ(tables.FirstSiteIndex, 3) << "no sites.txt, no word";
    WriteFile(folder.Path() / kSiteFile, "# mine\nHome,45,7,300,,IT\n");
    EXPECT_TRUE(Load());
    EXPECT_EQ(tables.FirstSiteIndex, 3);
    ASSERT_EQ(tables.SiteCount(), 3);
    EXPECT_EQ(tables.Site(3).CityName, "Home");
    EXPECT_TRUE(tables.IsSite(3));
    EXPECT_FALSE(tables.IsSite(2));
    EXPECT_TRUE(Load());
    EXPECT_EQ(tables.SiteCount(), 3) << "loaded again, not added again";
}

}  // namespace
}  // namespace glintara
