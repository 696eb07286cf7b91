// The cities that the program brings along.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>

#include "flare/cities.h"
#include "flare/city_files.h"
#include "orbit/files.h"

namespace glintara {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;
const std::filesystem::path kData = GLINTARA_SOURCE_DIR "/data";

TEST(CityData, TheCompiledTableIsTheText) {
    const auto bytes = ReadWholeFile(kData / kCityFile, 1u << 26);
    const auto text = ReadWholeFile(kData / kCityTextFile, 1u << 26);
    ASSERT_TRUE(bytes && text);
    const auto compiled = DecodeCities(*bytes);
    ASSERT_TRUE(compiled);
    const std::vector<SiteRecord> read = ReadCityText(*text);
    ASSERT_EQ(compiled->size(), read.size());
    ASSERT_EQ(read.size(), 49026U) << "all lines are cities of 5000 and more";
    EXPECT_EQ(std::ranges::count(*text, '\n'), 49025);
    for (std::size_t i = 1; i < read.size(); ++i) {
        const SiteRecord& a = (*compiled)[i];
        const SiteRecord& b = read[i];
        ASSERT_EQ(a.CityName, b.CityName);
        ASSERT_EQ(a.CityCountry, b.CityCountry);
        ASSERT_EQ(a.CityExtra, b.CityExtra);
        ASSERT_EQ(a.Population, b.Population);
        ASSERT_EQ(a.Altitude, b.Altitude);
        for (const auto number :
             {&SiteRecord::Lat, &SiteRecord::Lon, &SiteRecord::GeoLat, &SiteRecord::X, &SiteRecord::Y, &SiteRecord::Z})
            ASSERT_NEAR(a.*number, b.*number, 1e-12) << a.CityName;
    }
    EXPECT_EQ(EncodeCities(*compiled), *bytes);
}

TEST(CityData, CitiesAreWhereTheyAre) {
    CityTables tables;
    const std::filesystem::path folders[] = {kData};
    ASSERT_TRUE(LoadCities(folders, tables));
    LoadSites(folders, tables);
    DeselectAllCities(tables);
    EXPECT_EQ(tables.SelectedCityCount(), 4442);
    EXPECT_EQ(tables.SiteCount() - tables.FirstSiteIndex + 1, 10);

    struct Known {
        const char* name;
        const char* country;
        double lat;
        double lon;
        double population;  // in the city itself, not far off
    };
    const Known known[] = {{"Turin", "IT", 45.07, 7.69, 870e3},          {"Sydney", "AU", -33.87, 151.21, 4.6e6},
                           {"Buenos Aires", "AR", -34.61, -58.38, 13e6}, {"Tokyo", "JP", 35.69, 139.69, 8.3e6},
                           {"Reykjavik", "IS", 64.14, -21.9, 118e3},     {"Nairobi", "KE", -1.28, 36.82, 2.75e6}};
    for (const Known& city : known) {
        const auto found = std::ranges::find_if(tables.SiteTable, [&city](const SiteRecord& record) {
            return record.CityName == city.name && record.CityCountry == city.country;
        });
        ASSERT_NE(found, tables.SiteTable.end()) << city.name;
        EXPECT_NEAR(found->Lat / kDegree, city.lat, 0.05) << city.name;
        EXPECT_NEAR(found->Lon / kDegree, city.lon, 0.05) << city.name;
        EXPECT_NEAR(found->Population, city.population, 0.1 * city.population) << city.name;
    }
    const SiteRecord& greenwich =
        *std::ranges::find(tables.SiteTable, "Royal Observatory Greenwich", &SiteRecord::CityName);
    EXPECT_NEAR(greenwich.Lat / kDegree, 51.4779, 1e-4);
    EXPECT_NEAR(greenwich.Lon / kDegree, -0.0015, 1e-4);
}

}  // namespace
}  // namespace glintara
