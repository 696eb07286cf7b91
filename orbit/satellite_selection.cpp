#include "orbit/satellite_selection.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "engine/astro/constants.h"
#include "engine/astro/horizon.h"
#include "engine/geometry/reflection.h"
#include "orbit/satellite_motion.h"
#include "orbit/satellite_table.h"
#include "orbit/sgp1.h"
#include "orbit/upper_case.h"

namespace glintara {

namespace {

template <class Change>
void ForEach(CommonData& data, Change change) {
    for (int index = 1; index <= data.SatCount; ++index) change(data.Satellite(index));
}

bool Holds(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

/// Height over the sphere through the observer of a point `factor` semi-major axes from the centre of the Earth.
double HeightOf(const CommonData& data, const SatRecord& satellite, double factor) {
    return (factor * satellite.MeanRadiusA - 1) * data.Site.SiteRadius / 1000;
}

/// What takes no propagation is looked at first: most lists are much shorter then.
bool OrbitMatches(const CommonData& data, const SatRecord& satellite, const SelectionQuest& quest) {
    const auto holds = [](const Limits& limits, auto value) { return !limits.Any() || limits.Hold(value()); };
    return holds(quest.inclination, [&] { return satellite.Inclination / kDegToRad; }) &&
           holds(quest.perigee, [&] { return PerigeeHeight(data, satellite); }) &&
           holds(quest.apogee, [&] { return ApogeeHeight(data, satellite); }) &&
           holds(quest.period, [&] { return kMinutesPerDay / satellite.MeanMotion; }) &&
           holds(quest.eccentricity, [&] { return satellite.Eccentricity; }) &&
           holds(quest.age, [&] { return SatelliteTimeSinceEpoch(data, satellite); });
}

bool PlaceMatches(const Application& app, const SatRecord& satellite, const SelectionQuest& quest) {
    if (!quest.lit && !quest.leastElevation) return true;
    const CommonData& data = app.Data;
    const Vector3 position = MotionNow(app, satellite).position;
    if (!IsFinite(position) || position == Vector3{}) return false;
    if (quest.lit && InShadow(position, data.SunDir)) return false;
    if (!quest.leastElevation) return true;
    return WorldToHorizon(data.Site, position).altitude / kDegToRad > *quest.leastElevation;
}

bool Becomes(bool selected, bool matches, SelectionMode mode) {
    switch (mode) {
        case SelectionMode::Replace:
            return matches;
        case SelectionMode::Add:
            return selected || matches;
        case SelectionMode::Take:
            return selected && !matches;
    }
    return selected;
}

/// Calls `put` with the index of each satellite and whether it will be selected.
template <class Put>
SelectionCount GoThrough(const Application& app, const SelectionQuest& quest, SelectionMode mode, ModelTest hasModel,
                         Put put) {
    const CommonData& data = app.Data;
    SelectionCount count;
    for (int index = 1; index <= data.SatCount; ++index) {
        const SatRecord& satellite = data.Satellite(index);
        const bool selected = satellite.Selected;
        const bool matches = Matches(app, satellite, quest, hasModel);
        const bool becomes = Becomes(selected, matches, mode);
        count.matching += matches ? 1 : 0;
        count.before += selected ? 1 : 0;
        count.after += becomes ? 1 : 0;
        put(index, becomes);
    }
    return count;
}

}  // namespace

void SelectByName(CommonData& data, const NameFilter& filter, bool select) {
    const auto alike = [&filter](std::string_view text) {
        return filter.matchCase ? std::string(text) : UpperCase(text);
    };
    const std::string with = alike(filter.with);
    const std::string without = alike(filter.without);
    ForEach(data, [&](SatRecord& satellite) {
        const std::string line = SatelliteListLine(satellite);
        const std::string text = alike(std::string_view(line).substr(kListNameColumn));
        if (Holds(text, with) && (without.empty() || !Holds(text, without))) satellite.Selected = select;
    });
}

void SelectEvery(CommonData& data, bool select) {
    ForEach(
        data, [select](SatRecord& satellite) { satellite.Selected = select; });
}

void InvertSelection(CommonData& data) {
    ForEach(
        data, [](SatRecord& satellite) { satellite.Selected = !satellite.Selected; });
}

void SelectEnabled(CommonData& data) {
    ForEach(
        data, [](SatRecord& satellite) { satellite.Selected = !satellite.IsDisabled(); });
}

int SelectedCount(const CommonData& data) {
    const auto first = data.SatTable.begin() + 1;
    return static_cast<int>(
        std::count_if(first, first + data.SatCount, [](const SatRecord& satellite) { return satellite.Selected; }));
}

void SwitchSelected(CommonData& data, std::size_t place, bool on) {
    ForEach(
        data,
        [place, on](SatRecord& satellite) {
            if (!satellite.Selected) return;
            std::string& flags = satellite.OptionFlags;
            if (flags.size() <= place) flags.resize(place + 1, '0');
            flags[place] = on ? '1' : '0';
        });
}

double PerigeeHeight(const CommonData& data, const SatRecord& satellite) {
    return HeightOf(data, satellite, 1 - satellite.Eccentricity);
}

double ApogeeHeight(const CommonData& data, const SatRecord& satellite) {
    return HeightOf(data, satellite, 1 + satellite.Eccentricity);
}

bool Matches(const Application& app, const SatRecord& satellite, const SelectionQuest& quest, ModelTest hasModel) {
    if (!OrbitMatches(app.Data, satellite, quest)) return false;
    if (quest.model && (hasModel != nullptr && hasModel(satellite)) != *quest.model) return false;
    return PlaceMatches(app, satellite, quest);
}

SelectionCount CountMatching(const Application& app, const SelectionQuest& quest, SelectionMode mode,
                             ModelTest hasModel) {
    return GoThrough(
        app, quest, mode, hasModel, [](int, bool) {});
}

SelectionCount SelectMatching(Application& app, const SelectionQuest& quest, SelectionMode mode, ModelTest hasModel) {
    return GoThrough(
        app, quest, mode, hasModel,
        [&app](int index, bool selected) { app.Data.Satellite(index).Selected = selected; });
}

}  // namespace glintara
