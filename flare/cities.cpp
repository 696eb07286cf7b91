#include "flare/cities.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <tuple>
#include <utility>

#include "engine/astro/number_text.h"
#include "flare/track_export.h"
#include "orbit/floating_site.h"
#include "orbit/location.h"
#include "orbit/upper_case.h"

namespace glintara {

namespace {

constexpr const char* kOfAll = " of ";

bool Select(CityTables& tables, std::int32_t index) {
    if (tables.SelectedCities.size() >= kMostSelectedCities) return false;
    tables.SelectedCities.push_back(index);
    return true;
}

/// Place of `part` in `text`, in characters from 1; 0 when it is not there, 1 when it is empty.
std::uint32_t PositionOf(std::string_view part, std::string_view text) {
    const std::size_t at = text.find(part);
    if (at == std::string_view::npos) return 0;
    std::uint32_t position = 1;
    for (const char c : text.substr(0, at))
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++position;
    return position;
}

std::string PopulationText(double population) { return population == 0 ? "" : PlainNumberText(population); }

std::string CityLine(const SiteRecord& city, bool byCountry) {
    if (byCountry) return city.CityCountry + " - " + city.CityName + " " + PopulationText(city.Population);
    return city.CityName + " (" + city.CityCountry + ") " + PopulationText(city.Population);
}

/// A line that waits to be sorted.
struct Line {
    std::string key;
    std::string text;
    std::int32_t place = 0;
};

void Fill(PlaceListBox& list, std::vector<Line> lines) {
    std::ranges::sort(lines,
                      [](const Line& a, const Line& b) { return std::tie(a.key, a.place) < std::tie(b.key, b.place); });
    std::vector<std::string> texts;
    list.Places.clear();
    texts.reserve(lines.size());
    list.Places.reserve(lines.size());
    for (Line& line : lines) {
        texts.push_back(std::move(line.text));
        list.Places.push_back(line.place);
    }
    list.Lines = std::move(texts);
    list.Current = kNoLine;
}

Line LineOf(std::string text, std::int32_t place) {
    std::string key = UpperCase(text);
    return {std::move(key), std::move(text), place};
}

/// How many places are selected, and of how many when not all that have passed the filters find room.
std::string TotalText(const CityTables& tables, std::int32_t passed) {
    std::string text = "Total Cities: " + std::to_string(tables.SelectedCityCount());
    if (passed > tables.SelectedCityCount()) text.append(kOfAll).append(std::to_string(passed));
    return text;
}

template <class Passes>
std::int32_t SelectThose(CityTables& tables, std::int32_t first, std::int32_t last, Passes passes) {
    tables.SelectedCities.clear();
    std::int32_t passed = 0;
    for (std::int32_t i = first; i <= last; ++i) {
        if (!passes(i)) continue;
        ++passed;
        Select(tables, i);
    }
    return passed;
}

void ShowSelection(Application& app, std::int32_t passed) {
    RefreshCities(app);
    app.Cities.LTotal.Caption = TotalText(app.Data.Cities, passed);
    app.Windows.UpdateGraphicsLevel2();
}

const SiteRecord* PlaceOf(const CommonData& data, const PlaceListBox& list, int line) {
    if (line < 0 || static_cast<std::size_t>(line) >= list.Places.size()) return nullptr;
    const std::int32_t index = list.Places[static_cast<std::size_t>(line)];
    return index >= 1 && index <= data.Cities.SiteCount() ? &data.Cities.Site(index) : nullptr;
}

void MoveTo(Application& app, const SiteRecord& place) {
    SetLocation(app.Data, {place.Lat, place.Lon, kDefaultSiteHeight});
}

}  // namespace

void ClearAllCityFlag(CityTables& tables) {
    for (SiteRecord& place : tables.SiteTable) {
        place.FoundFlag = false;
        place.FoundJD = 0;
    }
}

void DeselectAllCities(CityTables& tables) {
    tables.MinPopulation = kFirstMinPopulation;
    SelectThose(tables, 1, tables.SiteCount(),
                [&tables](std::int32_t i) { return tables.Site(i).Population >= tables.MinPopulation; });
}

double CheckCityProximity(CityTables& tables, double siteRadius, double jd, const Vector3& centre,
                          std::vector<std::string>& lines) {
    double nearest = kNoCity;
    for (const std::int32_t index : tables.SelectedCities) {
        SiteRecord& place = tables.Site(index);
        const double distance = siteRadius * Length(centre - Vector3{place.X, place.Y, place.Z});
        if (distance < kCityReach && !place.FoundFlag) {
            lines.push_back(TrackDateText(jd) + " " + TrackTimeText(jd) + "  " + place.CityCountry + " - " +
                            place.CityName);
            place.FoundFlag = true;
            place.FoundJD = jd;
        }
        nearest = std::min(nearest, distance);
    }
    return nearest;
}

void ApplyFilter(Application& app) {
    const CitiesControls& form = app.Cities;
    CityTables& tables = app.Data.Cities;
    tables.MinPopulation = LeadingNumber(form.TMinPop.Text.Get());
    tables.CountryFilter = UpperCase(TrimmedText(form.TCountryFilter.Text.Get()));
    tables.NameFilter = UpperCase(TrimmedText(form.TNameFilter.Text.Get()));
    const std::int32_t last = form.CIncludeSites.Value ? tables.SiteCount() : tables.FirstSiteIndex - 1;
    const std::int32_t passed = SelectThose(tables, 1, last, [&tables](std::int32_t i) {
        if (tables.IsSite(i)) return true;
        const SiteRecord& city = tables.Site(i);
        if (city.Population < tables.MinPopulation) return false;
        const std::uint32_t country = PositionOf(tables.CountryFilter, UpperCase(city.CityCountry));
        return (country & PositionOf(tables.NameFilter, UpperCase(city.CityName))) != 0;
    });
    ShowSelection(app, passed);
    if (passed > tables.SelectedCityCount())
        app.Boxes.Tell("Too Many Selected Cities. The list has been truncated", MessageIcon::Warning);
}

void RefreshCities(Application& app) {
    CitiesControls& form = app.Cities;
    const CityTables& tables = app.Data.Cities;
    std::vector<Line> cities;
    cities.reserve(tables.SelectedCities.size());
    for (const std::int32_t index : tables.SelectedCities)
        cities.push_back(LineOf(CityLine(tables.Site(index), form.OptionCountry.Value), index));
    Fill(form.CityListBox, std::move(cities));
    std::vector<Line> sites;
    for (std::int32_t i = tables.FirstSiteIndex; i <= tables.SiteCount(); ++i)
        sites.push_back(LineOf(tables.Site(i).CityCountry + " - " + tables.Site(i).CityName + " ", i));
    Fill(form.SiteListBox, std::move(sites));
    const std::string total = TotalText(tables, 0);
    // Of how many a selection was cut holds until there is another one.
    if (!form.LTotal.Caption.Get().starts_with(total + kOfAll)) form.LTotal.Caption = total;
}

void ChooseCity(Application& app, const CityHooks& hooks, int line) {
    const SiteRecord* const place = PlaceOf(app.Data, app.Cities.CityListBox, line);
    if (place == nullptr) return;
    MoveTo(app, *place);
    if (place->FoundJD != 0 && place->FoundFlag && hooks.clock != nullptr)
        hooks.clock->SetJDToTimeOffset(place->FoundJD);
    if (app.Cities.CMoveZenith.Value && hooks.zenith)
        hooks.zenith();
    else
        app.Windows.UpdateGraphicsLevel2();
    EndFloatingSite(app, "that you chose");
}

void ChooseSite(Application& app, const CityHooks& hooks, int line) {
    const SiteRecord* const place = PlaceOf(app.Data, app.Cities.SiteListBox, line);
    if (place == nullptr) return;
    MoveTo(app, *place);
    if (hooks.zenith) hooks.zenith();
    app.Windows.UpdateGraphicsLevel2();
    EndFloatingSite(app, "that you chose");
}

std::string PlaceToolTip(const CommonData& data, const PlaceListBox& list, int line) {
    const SiteRecord* const place = PlaceOf(data, list, line);
    if (place == nullptr) return {};
    std::string text = place->CityName;
    for (const std::string& part : {place->CityExtra, place->CityCountry})
        if (!part.empty()) text += ", " + part;
    text += ", " + PlainNumberText(place->Altitude) + " m";
    if (place->FoundFlag)
        text += "\nOn the track " + TrackDateText(place->FoundJD) + " " + TrackTimeText(place->FoundJD);
    return text;
}

void ConnectCities(Application& app) {
    CitiesControls& form = app.Cities;
    form.CApply.SetClickHandler([&app] { ApplyFilter(app); });
    form.CGetSites.SetClickHandler([&app] {
        CityTables& tables = app.Data.Cities;
        const auto all = [](std::int32_t) { return true; };
        ShowSelection(app, SelectThose(tables, tables.FirstSiteIndex, tables.SiteCount(), all));
    });
    form.CGetTracked.SetClickHandler([&app] {
        CityTables& tables = app.Data.Cities;
        const auto found = [&tables](std::int32_t i) { return tables.Site(i).FoundFlag; };
        ShowSelection(app, SelectThose(tables, 1, tables.SiteCount(), found));
    });
    const auto connectSort = [&app](OptionButton& box, OptionButton& other) {
        box.Value.SetHandler([&app, &box, &other] {
            if (box.Value == other.Value) {
                other.Value = !box.Value;
                return;
            }
            RefreshCities(app);
        });
    };
    connectSort(form.OptionCity, form.OptionCountry);
    connectSort(form.OptionCountry, form.OptionCity);
    form.CShowAllCities.Value.SetHandler([&app] {
        app.Data.Cities.ShowAllCities = app.Cities.CShowAllCities.Value;
        app.Windows.UpdateGraphicsLevel2();
    });
    form.CClose.SetClickHandler([&app] { app.Cities.Visible = false; });
}

}  // namespace glintara
