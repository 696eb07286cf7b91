#pragma once

// Cities as the map files hold them. The table counts from 1; element 0 is unused.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace glintara {

/// Places that the table can hold.
inline constexpr std::int32_t kCityCapacity = 200000;

/// A city of the file: texts in Windows-1252, a byte a character, and its numbers as they lie in the file.
struct CityRecord {
    std::string CityName;
    std::string CityCountry;
    std::string CityExtra;
    std::array<std::byte, 82> Block{};

    friend bool operator==(const CityRecord&, const CityRecord&) = default;
};

struct CityTables {
    std::vector<CityRecord> Cities = std::vector<CityRecord>(1);
};

}  // namespace glintara
