#pragma once

// What the object finder and the sky pointer remember.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/astro/vector.h"

namespace glintara {

/// Marks that the finder knows of: of each satellite of a full list the one over the Earth, and the one in the sky.
inline constexpr std::size_t kFinderCapacity = 6000;

/// A satellite's mark as it was drawn: x to the right and y up from the middle of the picture, scene units. So the pan
/// that the mark was drawn with does not matter any more.
struct FinderEntry {
    double x = 0;
    double y = 0;
    int satellite = 0;  ///< index in the list

    friend bool operator==(const FinderEntry&, const FinderEntry&) = default;
};

enum class FoundKind : std::int16_t { None = 0, Satellite = 1, Star = 2 };

struct FinderState {
    FinderState() { FinderList.reserve(kFinderCapacity + 1); }

    std::vector<FinderEntry> FinderList = std::vector<FinderEntry>(1);  ///< from index 1; of the last picture
    std::int32_t FinderCount() const { return static_cast<std::int32_t>(FinderList.size()) - 1; }

    void ClearList() { FinderList.resize(1); }

    /// Whether there was room for `entry`.
    bool Add(const FinderEntry& entry) {
        if (FinderList.size() > kFinderCapacity) return false;
        FinderList.push_back(entry);
        return true;
    }

    // What the mouse rested on last.
    FoundKind Found = FoundKind::None;
    std::int32_t FoundIndex = 0;  ///< of the satellite in the list, or of the star in the catalogue
    double LastDistance = 0;      ///< from the mouse, scene units

    std::int32_t SelectedStar = 0;  ///< number of the star that the user has chosen; 0 for none
};

/// The marker that the observer moves over the sky with the mouse.
struct SkyPointerState {
    double FieldOfView = 0.5 * kDegToRad;  ///< width of its circle, radians
    double TimeUncertainty = 0.5;          ///< seconds

    // The place that it showed last, and when.
    bool HasPlace = false;
    CalendarFields Instant;  ///< UTC
    Equatorial Place;        ///< equator and equinox of date
    double HalfField = 0;    ///< radians

    // The place of the observation that was defined last.
    bool HasMark = false;
    Vector3 Mark;  ///< direction of date
};

}  // namespace glintara
