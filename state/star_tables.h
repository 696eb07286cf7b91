#pragma once

// The stars and constellations in memory. All tables count from 1; element 0 is unused.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/astro/vector.h"

namespace glintara {

/// Stars that the catalogue can hold.
inline constexpr std::int32_t kStarCapacity = 100000;

/// A star of the catalogue. Texts are Windows-1252, a byte a character, as the file has them.
struct StarRecord {
    double Magnitude = 0;       ///< visual
    double Declination = 0;     ///< of date, radians
    double RightAscension = 0;  ///< of date, radians
    double DeclinationJ2000 = 0;
    double RightAscensionJ2000 = 0;
    std::array<double, 3> Spare{};  ///< kept with the record, no meaning
    double ColorIndex = 0;          ///< B-V, magnitudes
    std::string ProperName;
    std::string Designation;
    std::string SpectralType;
    std::array<std::byte, 18> Tail{};  ///< kept with the record, no meaning

    /// Whether this number has no star: a gap in the numbering.
    bool IsGap() const { return Magnitude == 0 && ProperName.empty() && Designation.empty(); }

    friend bool operator==(const StarRecord&, const StarRecord&) = default;
};

/// What the engine's drawing gets to know of a star, in its layout.
struct StarPlotRecord {
    std::array<char, 16> Name{};  ///< 14 characters at most, closed by a zero
    double Magnitude = 0;
    double Declination = 0;     ///< of date, radians
    double RightAscension = 0;  ///< of date, radians
    double ColorIndex = 0;
    std::array<std::byte, 24> Rest{};

    friend bool operator==(const StarPlotRecord&, const StarPlotRecord&) = default;
};
static_assert(sizeof(StarPlotRecord) == 72);
static_assert(offsetof(StarPlotRecord, Magnitude) == 16 && offsetof(StarPlotRecord, Rest) == 48);

/// An end of a constellation line: two neighbours of one group are joined.
struct ConstellationLine {
    std::int32_t Star = 0;   ///< index in the catalogue
    std::int32_t Group = 0;  ///< chain that it belongs to

    friend bool operator==(const ConstellationLine&, const ConstellationLine&) = default;
};

struct StarTables {
    std::vector<StarRecord> StarCatalogue = std::vector<StarRecord>(1);
    std::vector<StarPlotRecord> StarPlotTable = std::vector<StarPlotRecord>(1);  ///< same index as the catalogue

    /// Unit vectors to the stars, same index: x towards the equinox of date, z towards the celestial north pole of
    /// date. A gap has (0, 0, 0).
    std::vector<Vector3> StarDirections = std::vector<Vector3>(1);

    double LastPrecession = 0;  ///< Julian date of the places of date; 0 when nobody knows it

    std::vector<std::int32_t> VisibleStarList = std::vector<std::int32_t>(1);  ///< numbers of the stars to be drawn
    std::vector<std::int16_t> VisibleFlags = std::vector<std::int16_t>(1);  ///< on the catalogue's index: -1 for those

    std::vector<ConstellationLine> Constellations = std::vector<ConstellationLine>(1);

    std::int32_t StarCount() const { return static_cast<std::int32_t>(StarCatalogue.size()) - 1; }
    std::int32_t VisibleStarCount() const { return static_cast<std::int32_t>(VisibleStarList.size()) - 1; }

    /// Whether a number is that of a star.
    bool HasStar(std::int32_t number) const {
        return number >= 1 && number <= StarCount() && !StarCatalogue[static_cast<std::size_t>(number)].IsGap();
    }
};

}  // namespace glintara
