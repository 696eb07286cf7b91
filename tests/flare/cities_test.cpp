#include "flare/cities.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "flare/city_files.h"
#include "flare/observed_night.h"

namespace glintara::observed_night {
namespace {

SiteRecord City(const std::string& name, const std::string& country, double population, double lat = 0,
                double lon = 0) {
    SiteRecord city;
    city.CityName = name;
    city.CityCountry = country;
    city.Population = population;
    city.Altitude = 245;
    city.Lat = city.GeoLat = lat;
    city.Lon = lon;
    city.X = std::cos(lat) * std::cos(lon);
    city.Y = std::cos(lat) * std::sin(lon);
    city.Z = std::sin(lat);
    return city;
}

struct CitiesTest : ::testing::Test {
    CitiesTest() { ConnectCities(app); }

    void Fill(std::vector<SiteRecord> cities, std::vector<SiteRecord> sites = {}) {
        tables.SiteTable.resize(1);
        for (const SiteRecord& city : cities) tables.SiteTable.push_back(city);
        tables.FirstSiteIndex = tables.SiteCount() + 1;
        for (const SiteRecord& site : sites) tables.SiteTable.push_back(site);
        DeselectAllCities(tables);
    }

    void Filter(const std::string& population, const std::string& country, const std::string& name) {
        form.TMinPop.Text = population;
        form.TCountryFilter.Text = country;
        form.TNameFilter.Text = name;
        form.CApply.Click();
    }

    std::vector<std::string> Selected() const {
        std::vector<std::string> names;
        for (const std::int32_t index : tables.SelectedCities) names.push_back(tables.Site(index).CityName);
        return names;
    }

    using Names = std::vector<std::string>;

    Observatory o;
    Application& app = o.app;
    CityTables& tables = app.Data.Cities;
    CitiesControls& form = app.Cities;
    RecordingClock clock{app.Data};
    int zeniths = 0;
    CityHooks hooks{&clock, [this] { ++zeniths; }};
};

TEST_F(CitiesTest, LargeCitiesAreSelectedToBeginWith) {
    Fill({City("A", "IT", 99999), City("B", "IT", 100000), City("C", "IT", 2e6)}, {City("S", "IT", 0)});
    EXPECT_EQ(Selected(), (Names{"B", "C"}));
    tables.MinPopulation = 3;
    DeselectAllCities(tables);
    EXPECT_EQ(tables.MinPopulation, 100000);
}

TEST_F(CitiesTest, FiltersGoByPopulationCountryAndName) {
    Fill({City("Torino", "IT", 870456), City("Toulouse", "FR", 433055), City("Tortona", "IT", 25000)});
    Filter("100000", "", "");
    EXPECT_EQ(Selected(), (Names{"Torino", "Toulouse"}));
    Filter(" 0 ", " it ", "");
    EXPECT_EQ(Selected(), (Names{"Torino", "Tortona"}));
    Filter("0", "", "tor");
    EXPECT_EQ(Selected(), (Names{"Torino", "Tortona"}));
    Filter("0", "FR", "to");
    EXPECT_EQ(Selected(), (Names{"Toulouse"}));
    Filter("none", "", "");
    EXPECT_EQ(tables.SelectedCityCount(), 3) << "what is no number is 0";
    EXPECT_EQ(tables.CountryFilter, "");
    EXPECT_GT(std::ranges::count(o.windows.calls, "UpdateGraphicsLevel2"), 0);
}

// The positions at which both texts stand have to have a bit in common.
TEST_F(CitiesTest, WithoutACountryANameIsFoundByHowItBegins) {
    Fill({City("Roma", "IT", 5e4), City("Aroma", "IT", 5e4), City("XXRoma", "IT", 5e4), City("Paroma", "IT", 5e4)});
    Filter("0", "", "rom");
    EXPECT_EQ(Selected(), (Names{"Roma", "XXRoma", "Paroma"})) << "1, 3 and 3 have the bit of 1, 2 has not";
    Filter("0", "t", "rom");
    EXPECT_EQ(Selected(), (Names{"Aroma", "XXRoma", "Paroma"})) << "the country stands at 2";
    Filter("0", "x", "rom");
    EXPECT_EQ(Selected(), Names{}) << "a miss is 0";
}

TEST_F(CitiesTest, LettersOfAllAlphabetsAreFoundInEitherCase) {
    Fill({City("\xC3\x81vila", "ES", 5e4), City("S\xC3\xA3o Paulo", "BR", 5e6),
          City("\xD0\x9C\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0", "RU", 1e7)});
    Filter("0", "", "\xC3\xA1VI");
    EXPECT_EQ(Selected(), (Names{"\xC3\x81vila"}));
    Filter("0", "", "s\xC3\x83o");
    EXPECT_EQ(Selected(), (Names{"S\xC3\xA3o Paulo"}));
    Filter("0", "", "\xD0\xBC\xD0\x9E");
    EXPECT_EQ(tables.SelectedCityCount(), 1);
    Filter("0", "", "VILA");
    EXPECT_EQ(Selected(), Names{}) << "at the second character, whatever bytes it takes";
}

TEST_F(CitiesTest, SitesComeOnlyWhenTheyAreAskedForAndThenAll) {
    Fill({City("Torino", "IT", 870456)}, {City("Home", "IT", 0), City("Away", "US", 0)});
    Filter("100000", "FR", "x");
    EXPECT_EQ(Selected(), Names{});
    form.CIncludeSites.Value = true;
    Filter("100000", "FR", "x");
    EXPECT_EQ(Selected(), (Names{"Home", "Away"}));
    form.CIncludeSites.Value = false;
    form.CGetSites.Click();
    EXPECT_EQ(Selected(), (Names{"Home", "Away"}));
    EXPECT_EQ(form.LTotal.Caption.Get(), "Total Cities: 2");
}

TEST_F(CitiesTest, FoundOnesCanBeKeptAlone) {
    Fill({City("A", "IT", 1e6), City("B", "IT", 1e6), City("C", "IT", 1e4)}, {City("S", "IT", 0)});
    tables.Site(2).FoundFlag = tables.Site(3).FoundFlag = tables.Site(4).FoundFlag = true;
    form.CGetTracked.Click();
    EXPECT_EQ(Selected(), (Names{"B", "C", "S"}));
}

TEST_F(CitiesTest, TheListsAreSorted) {
    Fill({City("torino", "IT", 870456), City("Asti", "IT", 0), City("Lyon", "FR", 522250)},
         {City("Pic du Midi", "FR", 0), City("Calar Alto", "ES", 0)});
    form.CIncludeSites.Value = true;
    Filter("0", "", "");
    EXPECT_EQ(form.CityListBox.Lines.Get(),
              (Names{"Asti (IT) ", "Calar Alto (ES) ", "Lyon (FR) 522250", "Pic du Midi (FR) ", "torino (IT) 870456"}));
    EXPECT_EQ(form.CityListBox.Places, (std::vector<std::int32_t>{2, 5, 3, 4, 1}));
    EXPECT_EQ(form.SiteListBox.Lines.Get(), (Names{"ES - Calar Alto ", "FR - Pic du Midi "}));
    EXPECT_EQ(form.SiteListBox.Places, (std::vector<std::int32_t>{5, 4}));
    EXPECT_EQ(form.LTotal.Caption.Get(), "Total Cities: 5");

    form.OptionCountry.Value = true;
    EXPECT_FALSE(form.OptionCity.Value);
    EXPECT_EQ(form.CityListBox.Lines.Get(),
              (Names{"ES - Calar Alto ", "FR - Lyon 522250", "FR - Pic du Midi ", "IT - Asti ", "IT - torino 870456"}));
    form.OptionCity.Value = true;
    EXPECT_FALSE(form.OptionCountry.Value);
    EXPECT_EQ(form.CityListBox.Lines.Get().front(), "Asti (IT) ");
    form.OptionCity.Value = false;
    EXPECT_TRUE(form.OptionCountry.Value) << "one of the two holds";
}

TEST_F(CitiesTest, ATooLongSelectionIsCut) {
    std::vector<SiteRecord> cities(32767, City("A", "IT", 1e6));
    Fill(cities);
    Filter("0", "", "");
    EXPECT_TRUE(o.boxes.messages.empty());
    EXPECT_EQ(form.LTotal.Caption.Get(), "Total Cities: 32767");
    cities.resize(32770, City("Z", "IT", 1e6));
    Fill(cities);
    EXPECT_EQ(tables.SelectedCityCount(), 32767) << "without a word";
    Filter("0", "", "");
    EXPECT_EQ(tables.SelectedCityCount(), 32767);
    EXPECT_EQ(form.CityListBox.Count(), 32767);
    EXPECT_EQ(form.LTotal.Caption.Get(), "Total Cities: 32767 of 32770");
    ASSERT_EQ(o.boxes.messages.size(), 1U);
    EXPECT_EQ(o.boxes.messages[0].text, "Too Many Selected Cities. The list has been truncated");
    EXPECT_EQ(o.boxes.messages[0].icon, MessageIcon::Warning);

    form.OptionCountry.Value = true;
    RefreshCities(app);
    EXPECT_EQ(form.LTotal.Caption.Get(), "Total Cities: 32767 of 32770") << "sorted or opened anew it is still cut";
    tables.SelectedCities.resize(3);
    RefreshCities(app);
    EXPECT_EQ(form.LTotal.Caption.Get(), "Total Cities: 3");
}

// Chords, straight through the sphere: 5000 m on one of 6,400 km is an angle of 2 asin(2500 / 6400000).
TEST_F(CitiesTest, ACityCountsWhenTheChordIsBelowFiveKilometres) {
    constexpr double kRadius = 6.4e6;
    const auto angleOf = [](double chord) { return 2 * std::asin(chord / 2 / kRadius); };
    Fill({City("Near", "IT", 1e6, 0, angleOf(4999.9)), City("Far", "FR", 1e6, 0, -angleOf(5000.1)),
          City("Small", "IT", 10)});
    std::vector<std::string> lines;
    const double nearest = CheckCityProximity(tables, kRadius, 2458139.25, {1, 0, 0}, lines);
    EXPECT_NEAR(nearest, 4999.9, 0.001);
    EXPECT_EQ(lines, (Names{"20/01/2018 18h00'00\"  IT - Near"}));
    EXPECT_TRUE(tables.Site(1).FoundFlag);
    EXPECT_EQ(tables.Site(1).FoundJD, 2458139.25);
    EXPECT_FALSE(tables.Site(2).FoundFlag);
    EXPECT_FALSE(tables.Site(3).FoundFlag) << "it is not selected";

    lines.clear();
    CheckCityProximity(tables, kRadius, 2458139.5, {1, 0, 0}, lines);
    EXPECT_TRUE(lines.empty()) << "it is told once, with the first instant";
    EXPECT_EQ(tables.Site(1).FoundJD, 2458139.25);

    ClearAllCityFlag(tables);
    EXPECT_FALSE(tables.Site(1).FoundFlag);
    EXPECT_EQ(tables.Site(1).FoundJD, 0);
    tables.SelectedCities.clear();
    EXPECT_EQ(CheckCityProximity(tables, kRadius, 2458139.5, {1, 0, 0}, lines), 1e12);
}

// A chord whose length is a double: 5000 m, where the unit is 5000 m and the places are one unit apart.
TEST_F(CitiesTest, ExactlyFiveKilometresIsTooFar) {
    Fill({City("Edge", "IT", 1e6)});
    std::vector<std::string> lines;
    EXPECT_EQ(CheckCityProximity(tables, 5000, 2458139.25, {2, 0, 0}, lines), 5000);
    EXPECT_TRUE(lines.empty());
    EXPECT_LT(CheckCityProximity(tables, std::nextafter(5000, 0), 2458139.25, {2, 0, 0}, lines), 5000);
    EXPECT_EQ(lines.size(), 1U);
}

TEST_F(CitiesTest, AChosenCityIsWhereTheObserverStands) {
    Fill({City("Asti", "IT", 1e6, 0.78, 0.14), City("Lyon", "FR", 1e6, 0.8, 0.08)},
         {City("Pic", "FR", 0, 0.75, 0.002)});
    Filter("0", "", "");
    ChooseCity(app, hooks, 1);
    EXPECT_NEAR(app.Data.Site.SiteLat, 0.8, 1e-15);
    EXPECT_NEAR(app.Data.Site.SiteLon, 0.08, 1e-15);
    EXPECT_EQ(app.Data.Site.SiteAlt, 150);
    EXPECT_TRUE(clock.instants.empty()) << "no track has found it";
    EXPECT_EQ(zeniths, 0);

    form.CMoveZenith.Value = true;
    tables.Site(1).FoundFlag = true;
    tables.Site(1).FoundJD = 2458139.25;
    ChooseCity(app, hooks, 0);
    EXPECT_EQ(clock.instants, (std::vector<double>{2458139.25}));
    EXPECT_EQ(zeniths, 1);
    tables.Site(1).FoundFlag = false;
    ChooseCity(app, hooks, 0);
    EXPECT_EQ(clock.instants.size(), 1U);

    form.CMoveZenith.Value = false;
    ChooseSite(app, hooks, 0);
    EXPECT_NEAR(app.Data.Site.SiteLat, 0.75, 1e-15);
    EXPECT_EQ(app.Data.Site.SiteAlt, 150) << "its own altitude is shown, not taken";
    EXPECT_EQ(zeniths, 3);
    for (const int line : {-1, 2, 1000}) {
        ChooseCity(app, hooks, line);
        ChooseSite(app, hooks, line + 1 == 0 ? line : 1);
    }
    EXPECT_NEAR(app.Data.Site.SiteLat, 0.75, 1e-15) << "lines that are none";
}

// A site that floats would leave the chosen place with the next turn of the globe.
TEST_F(CitiesTest, AChosenPlaceStaysThoughTheSiteHasFloated) {
    Fill({City("Asti", "IT", 1e6, 0.78, 0.14)}, {City("Pic", "FR", 0, 0.75, 0.002)});
    Filter("0", "", "");
    hooks.zenith = [this] { app.Main.LCommandOutput.Caption = "Local Zenith Orientation"; };
    MenuEntry& floating = app.Main.MnuFloatingSite;
    const std::string& said = app.Main.LCommandOutput.Caption;
    floating.Checked = true;
    ChooseCity(app, hooks, 7);
    EXPECT_TRUE(floating.Checked) << "no line";
    for (const auto choose : {ChooseCity, ChooseSite}) {
        floating.Checked = true;
        choose(app, hooks, 0);
        EXPECT_FALSE(floating.Checked);
        EXPECT_EQ(said, "Floating Site is off: your place is the one that you chose.");
        choose(app, hooks, 0);
        EXPECT_EQ(said == "Local Zenith Orientation", choose == ChooseSite) << "once is enough";
    }
}

TEST_F(CitiesTest, ThePlaceIsToldWhenTheMouseRestsOnIt) {
    Fill({City("Asti", "IT", 1e6)});
    tables.Site(1).CityExtra = "Piedmont";
    Filter("0", "", "");
    EXPECT_EQ(PlaceToolTip(app.Data, form.CityListBox, 0), "Asti, Piedmont, IT, 245 m");
    tables.Site(1).FoundFlag = true;
    tables.Site(1).FoundJD = 2458139.25;
    EXPECT_EQ(PlaceToolTip(app.Data, form.CityListBox, 0),
              "Asti, Piedmont, IT, 245 m\nOn the track 20/01/2018 18h00'00\"");
    EXPECT_EQ(PlaceToolTip(app.Data, form.CityListBox, 5), "");
}

TEST_F(CitiesTest, AllCanBeMarkedAtAnyZoom) {
    form.CShowAllCities.Value = true;
    EXPECT_TRUE(tables.ShowAllCities);
    form.CShowAllCities.Value = false;
    EXPECT_FALSE(tables.ShowAllCities);
}

}  // namespace
}  // namespace glintara::observed_night
