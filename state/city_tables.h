#pragma once

// Places on the ground: the cities of a gazetteer, and behind them the observing sites of the user's own file.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace glintara {

/// Places that the table can hold.
inline constexpr std::int32_t kSiteCapacity = 200000;

/// Places that can be selected at a time.
inline constexpr std::size_t kMostSelectedCities = 32767;

/// Inhabitants from which a city is selected as long as no filter has been set.
inline constexpr double kFirstMinPopulation = 100000;

/// One place. Texts are UTF-8.
struct SiteRecord {
    std::string CityName;
    std::string CityCountry;  ///< country code
    std::string CityExtra;    ///< region or time zone of a city, whatever the user wrote of a site; shown only
    double Lat = 0;           ///< geodetic latitude, radians
    double GeoLat = 0;        ///< geocentric latitude, radians
    double Lon = 0;           ///< radians, east positive
    double Population = 0;    ///< 0 for a site
    double Altitude = 0;      ///< metres
    double X = 0;             ///< position on the unit sphere, Earth-fixed
    double Y = 0;
    double Z = 0;
    double FoundJD = 0;      ///< when the track that was scanned last came within reach; 0 for never
    bool FoundFlag = false;  ///< it did

    friend bool operator==(const SiteRecord&, const SiteRecord&) = default;
};

struct CityTables {
    std::vector<SiteRecord> SiteTable = std::vector<SiteRecord>(1);  ///< from index 1: cities, then sites
    std::int32_t FirstSiteIndex = 1;                                 ///< of the first entry that is a site

    // What the user wants to see of it.
    double MinPopulation = kFirstMinPopulation;
    std::string CountryFilter;                 ///< capitals
    std::string NameFilter;                    ///< capitals
    bool ShowAllCities = false;                ///< mark them on the map at any zoom
    std::vector<std::int32_t> SelectedCities;  ///< indices, at most `kMostSelectedCities`

    std::int32_t SiteCount() const { return static_cast<std::int32_t>(SiteTable.size()) - 1; }
    std::int32_t SelectedCityCount() const { return static_cast<std::int32_t>(SelectedCities.size()); }

    /// Place `index`, 1 to `SiteCount()`.
    SiteRecord& Site(std::int32_t index) { return SiteTable[static_cast<std::size_t>(index)]; }
    const SiteRecord& Site(std::int32_t index) const { return SiteTable[static_cast<std::size_t>(index)]; }

    bool IsSite(std::int32_t index) const { return index >= FirstSiteIndex; }
};

}  // namespace glintara
