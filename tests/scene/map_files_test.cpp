#include "scene/map_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>

#include "orbit/files.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

using testing::TemporaryFolder;

std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) bytes += static_cast<char>(value);
    return bytes;
}

BorderTable TwoVertices() {
    BorderTable table;
    table.Lat = {0, 1.5, -2};
    table.Lon = {0, -0.5, 180};
    table.Id = {0, 7, 300};
    return table;
}

/// `TwoVertices` as it lies in a file. The doubles are by hand from IEEE 754: 1.5 is 0x3FF8..., -2 is 0xC000..., -0.5
/// is 0xBFE0..., 180 (1.40625 x 2^7) is 0x40668...
const std::string& TwoVerticesFile() {
    static const std::string file = Bytes({2, 0, 0, 0,                          //
                                           0, 0, 0, 0, 0,    0,    0xF8, 0x3F,  //
                                           0, 0, 0, 0, 0,    0,    0,    0xC0,  //
                                           0, 0, 0, 0, 0,    0,    0xE0, 0xBF,  //
                                           0, 0, 0, 0, 0,    0x80, 0x66, 0x40,  //
                                           7, 0, 0, 0, 0x2C, 1,    0,    0});
    return file;
}

StarRecord Star(const std::string& name, const std::string& designation) {
    StarRecord star;
    star.ProperName = name;
    star.Designation = designation;
    return star;
}

StarRecord Sirius() {
    StarRecord star = Star("Sirius", "HIP32349");
    star.Magnitude = -1.44;
    star.Declination = -0.2918;
    star.RightAscension = 1.7677;
    star.DeclinationJ2000 = -0.2917;
    star.RightAscensionJ2000 = 1.7678;
    star.Spare = {1, 2, 3};
    star.ColorIndex = 0.009;
    star.SpectralType = "A1V";
    for (std::size_t i = 0; i < star.Tail.size(); ++i) star.Tail[i] = static_cast<std::byte>(200 + i);
    return star;
}

SiteRecord Turin() {
    SiteRecord city;
    city.CityName = "Turin";
    city.CityCountry = "IT";
    city.CityExtra = "Piedmont";
    city.X = 1;
    return city;
}

TEST(BorderFile, LiesInTheFileByteByByte) {
    EXPECT_EQ(EncodeBorders(TwoVertices()), TwoVerticesFile());
    const auto table = DecodeBorders(TwoVerticesFile());
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Count(), 2);
    EXPECT_EQ(table->Lat, TwoVertices().Lat);
    EXPECT_EQ(table->Lon, TwoVertices().Lon);
    EXPECT_EQ(table->Id, TwoVertices().Id);
}

TEST(BorderFile, WithoutVerticesIsAValidFile) {
    EXPECT_EQ(EncodeBorders(BorderTable{}), Bytes({0, 0, 0, 0}));
    const auto table = DecodeBorders(Bytes({0, 0, 0, 0}));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Count(), 0);
    EXPECT_EQ(table->Lon.size(), 1U);
}

TEST(BorderFile, ACountIsBelievedOnlyWhenTheFileIsLongEnough) {
    const std::string& file = TwoVerticesFile();
    for (std::size_t length = 0; length < file.size(); ++length)
        EXPECT_FALSE(DecodeBorders(file.substr(0, length))) << length;
    EXPECT_TRUE(DecodeBorders(file + "more"));
    EXPECT_FALSE(DecodeBorders(Bytes({0xFF, 0xFF, 0xFF, 0x7F}) + std::string(1000, '\0')));
    EXPECT_FALSE(DecodeBorders(Bytes({0xFF, 0xFF, 0xFF, 0xFF}) + std::string(1000, '\0')));
}

TEST(BorderFile, RefusesWhatIsNoPlace) {
    for (const double wrong :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e9}) {
        BorderTable table = TwoVertices();
        table.Lat[2] = wrong;
        EXPECT_FALSE(DecodeBorders(EncodeBorders(table)));
        table = TwoVertices();
        table.Lon[1] = wrong;
        EXPECT_FALSE(DecodeBorders(EncodeBorders(table)));
    }
}

TEST(StarFile, ARecordHasItsFieldsInOrder) {
    const std::string file = EncodeStars({StarRecord{}, Sirius()});
    // Count, nine doubles, three texts with their lengths, tail.
    ASSERT_EQ(file.size(), 4U + 72 + (2 + 6) + (2 + 8) + (2 + 3) + 18);
    EXPECT_EQ(file.substr(0, 4), Bytes({1, 0, 0, 0}));
    EXPECT_EQ(file.substr(4 + 5 * 8, 8), Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F})) << "the first spare double is 1";
    EXPECT_EQ(file.substr(76, 8), Bytes({6, 0}) + "Sirius");
    EXPECT_EQ(file.substr(84, 10), Bytes({8, 0}) + "HIP32349");
    EXPECT_EQ(file.substr(94, 5), Bytes({3, 0}) + "A1V");
    EXPECT_EQ(file.substr(99, 2), Bytes({200, 201}));

    const auto stars = DecodeStars(file);
    ASSERT_TRUE(stars);
    ASSERT_EQ(stars->size(), 2U);
    EXPECT_EQ((*stars)[1], Sirius());
}

TEST(StarFile, AnyMissingByteIsSeen) {
    const std::string file = EncodeStars({StarRecord{}, Sirius(), Star("", "HIP1")});
    for (std::size_t length = 0; length < file.size(); ++length)
        EXPECT_FALSE(DecodeStars(file.substr(0, length))) << length;
}

TEST(StarFile, RefusesNumbersThatAreNoStar) {
    StarRecord star = Sirius();
    star.RightAscension = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(DecodeStars(EncodeStars({StarRecord{}, star})));
}

TEST(StarFile, HoldsNoMoreThanTheCatalogue) {
    std::vector<StarRecord> stars(kStarCapacity + 1);
    EXPECT_TRUE(DecodeStars(EncodeStars(stars)));
    stars.emplace_back();
    EXPECT_FALSE(DecodeStars(EncodeStars(stars)));
}

TEST(StarFile, ATextIsCutToWhatItsLengthCanTell) {
    const auto stars = DecodeStars(EncodeStars({StarRecord{}, Star(std::string(70000, 'x'), "HIP1")}));
    ASSERT_TRUE(stars);
    EXPECT_EQ((*stars)[1].ProperName, std::string(65535, 'x'));
    EXPECT_EQ((*stars)[1].Designation, "HIP1");
}

TEST(ConstellationFile, PairsAreInterleaved) {
    const std::vector<ConstellationLine> lines = {{}, {5, 1}, {258, 2}};
    const std::string file = Bytes({2, 0, 0, 0, 5, 0, 0, 0, 1, 0, 0, 0, 2, 1, 0, 0, 2, 0, 0, 0});
    EXPECT_EQ(EncodeConstellations(lines), file);
    EXPECT_EQ(DecodeConstellations(file), lines);
    EXPECT_FALSE(DecodeConstellations(file.substr(0, file.size() - 1)));
}

TEST(MapFiles, RandomBytesAreRefusedOrMirrored) {
    std::mt19937 dice(1957);
    int read = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string bytes(dice() % 400, '\0');
        for (char& c : bytes) c = static_cast<char>(dice() % 3 == 0 ? dice() % 256 : 0);
        if (bytes.size() >= 4) bytes.replace(0, 4, Bytes({static_cast<int>(dice() % 4), 0, 0, 0}));
        const auto mirrors = [&](const auto& table, auto encode) {
            if (!table) return;
            ++read;
            const std::string again = encode(*table);
            EXPECT_EQ(again, bytes.substr(0, again.size()));
        };
        mirrors(DecodeBorders(bytes), EncodeBorders);
        mirrors(DecodeStars(bytes), EncodeStars);
        mirrors(DecodeConstellations(bytes), EncodeConstellations);
    }
    EXPECT_GT(read, 1000);
}

struct AllTables {
    MapTables map;
    StarTables stars;
    CityTables cities;

    std::vector<std::string> Load(const std::filesystem::path& folder) {
        return LoadMapFiles(folder, map, stars, cities);
    }
    std::vector<std::string> Save(const std::filesystem::path& folder) const {
        return SaveMapFiles(folder, map, stars, cities);
    }
};

AllTables FilledTables() {
    AllTables tables;
    tables.map.Border = TwoVertices();
    tables.map.Zip = TwoVertices();
    tables.map.Zip.Id = {0, 1, 1};
    tables.stars.StarCatalogue.push_back(Sirius());
    tables.stars.Constellations.push_back({1, 1});
    tables.cities.SiteTable.push_back(Turin());
    tables.cities.FirstSiteIndex = 2;
    return tables;
}

TEST(MapFiles, WhatIsSavedIsLoaded) {
    const TemporaryFolder folder;
    ASSERT_TRUE(FilledTables().Save(folder.Path()).empty());
    ASSERT_TRUE(FilledTables().Save(folder.Path()).empty()) << "over the files that are there";
    EXPECT_EQ(folder.FileCount(), 5) << "nothing is left beside them";

    AllTables tables;
    EXPECT_TRUE(tables.Load(folder.Path()).empty());
    EXPECT_EQ(tables.map.Border.Lon, TwoVertices().Lon);
    EXPECT_EQ(tables.map.Zip.Id, (std::vector<std::int32_t>{0, 1, 1}));
    EXPECT_EQ(tables.stars.StarCatalogue.at(1), Sirius());
    EXPECT_STREQ(tables.stars.StarPlotTable.at(1).Name.data(), "Sirius");
    EXPECT_EQ(tables.stars.Constellations.at(1), (ConstellationLine{1, 1}));
    EXPECT_EQ(tables.cities.SiteTable.at(1), Turin());
}

TEST(MapFiles, ABadFileIsNamedAndTheOthersAreRead) {
    const TemporaryFolder folder;
    ASSERT_TRUE(FilledTables().Save(folder.Path()).empty());
    std::filesystem::resize_file(folder.Path() / "DB001.VDB", 43);
    std::filesystem::remove(folder.Path() / "DB003.VDB");
    std::filesystem::remove(folder.Path() / "DB005.VDB");
    std::filesystem::create_directory(folder.Path() / "DB005.VDB");

    AllTables tables;
    tables.map.Border.Lat = {0, 5};
    tables.map.Border.Lon = {0, 6};
    tables.map.Border.Id = {0, 7};
    EXPECT_EQ(tables.Load(folder.Path()), (std::vector<std::string>{"DB001.VDB", "DB003.VDB", "DB005.VDB"}));
    EXPECT_EQ(tables.map.Border.Count(), 1) << "a table stays as it was";
    EXPECT_EQ(tables.map.Border.Lat[1], 5);
    EXPECT_EQ(tables.map.Zip.Count(), 2);
    EXPECT_EQ(tables.stars.StarCatalogue.size(), 1U);
    EXPECT_EQ(tables.stars.Constellations.size(), 2U);
}

TEST(MapFiles, EachFileIsReadInTheFirstFolderThatHasAGoodOne) {
    const TemporaryFolder first;
    const TemporaryFolder second;
    AllTables tables = FilledTables();
    ASSERT_TRUE(tables.Save(second.Path()).empty());
    tables.map.Zip.Id = {0, 7, 7};
    ASSERT_TRUE(tables.Save(first.Path()).empty());
    std::filesystem::resize_file(first.Path() / "DB001.VDB", 43);  // cut off
    std::filesystem::remove(first.Path() / "DB003.VDB");
    std::filesystem::remove(first.Path() / "DB004.VDB");
    ASSERT_EQ(mkfifo((first.Path() / "DB004.VDB").c_str(), 0600), 0);
    std::filesystem::remove(second.Path() / "DB005.VDB");

    AllTables read;
    const std::vector<std::filesystem::path> folders = {first.Path() / "none", first.Path(), second.Path()};
    EXPECT_TRUE(LoadMapFiles(folders, read.map, read.stars, read.cities).empty());
    EXPECT_EQ(read.map.Border.Lon, TwoVertices().Lon);
    EXPECT_EQ(read.map.Zip.Id, (std::vector<std::int32_t>{0, 7, 7}));
    EXPECT_EQ(read.stars.StarCatalogue.at(1), Sirius());
    EXPECT_EQ(read.stars.Constellations.size(), 2U);
    EXPECT_EQ(read.cities.SiteTable.at(1), Turin());
}

TEST(MapFiles, AMissingFolderFailsForAll) {
    const TemporaryFolder folder;
    AllTables tables = FilledTables();
    EXPECT_EQ(tables.Load(folder.Path() / "none").size(), 5U);
    EXPECT_EQ(tables.map.Border.Count(), 2);
    EXPECT_EQ(tables.Save(folder.Path() / "none").size(), 5U);
}

}  // namespace
}  // namespace glintara
