#pragma once

// The window of cities and observing sites.

#include <cstdint>
#include <vector>

#include "state/controls.h"
#include "state/list_box.h"

namespace glintara {

/// A list of places: each line keeps the index of its place.
struct PlaceListBox : ListBox {
    std::vector<std::int32_t> Places;  ///< index in `SiteTable` of each line
};

/// State of the window "Cities".
struct CitiesControls {
    Label LMinPop{"Min. Population:"};
    TextBox TMinPop{"100000", "Leave out cities with fewer inhabitants"};
    Label LCountryFilter{"Country:"};
    TextBox TCountryFilter{"", "Letters that the country's code contains; empty for all"};
    Label LNameFilter{"Name:"};
    TextBox TNameFilter{"", "With no country: how the name begins; empty for all"};
    CheckBox CIncludeSites{"Include Observing Sites",
                           "Sites of sites.txt come into the list too, whatever the filters"};
    Button CApply{"Apply", "Select the cities that pass the filters"};

    Label FrameSort{"Sort Cities"};
    OptionButton OptionCity{"By City Name", "", true};
    OptionButton OptionCountry{"By Country / Code"};

    Button CGetSites{"Get Only Observing Sites", "Select the sites of sites.txt and nothing else"};
    Button CGetTracked{"Keep only Cities Found on Track", "Select the cities that the last scan of a track has found"};
    CheckBox CMoveZenith{"Move at zenith position", "Turn the globe to a city that is chosen"};
    CheckBox CShowAllCities{"Show all cities on the map regardless their size",
                            "With Mark Cities: mark the selected cities at any zoom"};

    Label FrameCities{"Cities"};
    PlaceListBox CityListBox;
    Label LTotal{"Total Cities: 0"};
    Label FrameSites{"Observing Sites"};
    PlaceListBox SiteListBox;
    Button CClose{"CLOSE", "Close this window"};

    Observed<bool> Visible;  ///< whether the window is open; setting it opens and closes it
};

}  // namespace glintara
