#pragma once

// Which satellites of the list are selected: by a text of their names, by what is known of them, and the switches that
// are set for all of them at once. All of it works on the table; windows show it afterwards.

#include <cstddef>
#include <optional>
#include <string_view>

#include "state/application.h"

namespace glintara {

/// A filter by the text of a line of the list from its name on. The letters of the Latin, Greek and Cyrillic alphabets
/// are alike in both cases unless `matchCase` is set.
struct NameFilter {
    std::string_view with;     ///< what the text holds; empty for every text
    std::string_view without;  ///< what it does not hold; empty for nothing
    bool matchCase = false;
};

/// Sets the selection of the satellites that the filter finds to `select`; the others keep theirs.
void SelectByName(CommonData& data, const NameFilter& filter, bool select);

/// Sets the selection of all satellites.
void SelectEvery(CommonData& data, bool select);

/// Selects those that are not selected, and no others.
void InvertSelection(CommonData& data);

/// Selects those that are not disabled, and no others.
void SelectEnabled(CommonData& data);

/// Number of selected satellites.
int SelectedCount(const CommonData& data);

/// Puts "1" or "0" at `place` of the switches of every selected satellite, a place of `OptionFlags` counted from 0; the
/// other places stay.
void SwitchSelected(CommonData& data, std::size_t place, bool on);

/// Two limits, both included. A number that is none lies within no limit.
struct Limits {
    std::optional<double> least;
    std::optional<double> most;

    bool Any() const { return least || most; }
    bool Hold(double value) const { return (!least || value >= *least) && (!most || value <= *most); }
};

/// What is asked of a satellite. All that is asked must hold.
struct SelectionQuest {
    Limits inclination;  ///< degrees
    Limits perigee;      ///< height, kilometres; see `PerigeeHeight`
    Limits apogee;       ///< the same of the apogee
    Limits period;       ///< minutes
    Limits eccentricity;
    Limits age;                            ///< days from the epoch to the displayed instant
    std::optional<bool> model;             ///< whether it has a surface model
    bool lit = false;                      ///< outside the Earth's shadow at the displayed instant
    std::optional<double> leastElevation;  ///< stands higher than that in the observer's sky, degrees
};

/// Tells whether a satellite has a surface model. The rooms that know surfaces stand above this one.
using ModelTest = bool (*)(const SatRecord& satellite);

/// Height of the lowest and of the highest point of the orbit, by its elements, over the sphere through the observer,
/// kilometres. Not a finite number without a mean motion.
double PerigeeHeight(const CommonData& data, const SatRecord& satellite);
double ApogeeHeight(const CommonData& data, const SatRecord& satellite);

/// Whether all that is asked holds for the satellite. Places are those of the orbit
/// model that the user has chosen; one that has none is neither lit nor in the sky.
bool Matches(const Application& app, const SatRecord& satellite, const SelectionQuest& quest, ModelTest hasModel);

/// What becomes of the selection: what matches takes its place, comes to it, or leaves it.
enum class SelectionMode { Replace, Add, Take };

/// How many satellites match, are selected, and will be.
struct SelectionCount {
    int matching = 0;
    int before = 0;
    int after = 0;
};

/// Looks what `SelectMatching` would do, and does nothing.
SelectionCount CountMatching(const Application& app, const SelectionQuest& quest, SelectionMode mode,
                             ModelTest hasModel);

SelectionCount SelectMatching(Application& app, const SelectionQuest& quest, SelectionMode mode, ModelTest hasModel);

}  // namespace glintara
