// The selection of the list: by name, by what is known of the satellites, and the switches of many at once.

#include "orbit/satellite_selection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <set>
#include <string>

#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "state/recording_services.h"

namespace glintara {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool HasMirrors(const SatRecord& satellite) { return satellite.Surface.MirrorCount > 0; }

struct SatelliteSelection : ::testing::Test {
    SatRecord& Add(const std::string& name) {
        SatRecord& satellite = data.Satellite(++data.SatCount);
        satellite = {};
        satellite.Name = name;
        satellite.SatNumber = "25544";
        satellite.OrbitNumber = static_cast<std::int16_t>(data.SatCount);
        return satellite;
    }

    void AddNames() {
        for (const char* name : {"IRIDIUM 7 [+]", "Iridium 33 DEB", "ISS (ZARYA)", "iridium 33 deb [-]"}) Add(name);
    }

    std::set<int> Selected() const {
        std::set<int> indices;
        for (int i = 1; i <= data.SatCount; ++i)
            if (data.Satellite(i).Selected) indices.insert(i);
        return indices;
    }

    std::set<int> Matching(const SelectionQuest& quest) {
        SelectMatching(app, quest, SelectionMode::Replace, HasMirrors);
        return Selected();
    }

    glintara::testing::RecordingBoxes boxes;
    Events events;
    glintara::testing::RecordingWindows windows;
    Application app{boxes, events, windows};
    CommonData& data = app.Data;
};

// By name.

TEST_F(SatelliteSelection, AnEmptyFilterFindsEveryLine) {
    AddNames();
    Add("");
    SelectByName(data, {}, true);
    EXPECT_EQ(Selected(), (std::set<int>{1, 2, 3, 4, 5}));
    SelectByName(data, {}, false);
    EXPECT_EQ(Selected(), (std::set<int>{}));
}

TEST_F(SatelliteSelection, AWordAndAnotherThatMustNotStandThere) {
    AddNames();
    SelectByName(data, {"iridium", "DEB", false}, true);
    EXPECT_EQ(Selected(), (std::set<int>{1}));
}

TEST_F(SatelliteSelection, WithMatchCaseLettersMustBeTheSame) {
    AddNames();
    SelectByName(data, {"iridium", "", true}, true);
    EXPECT_EQ(Selected(), (std::set<int>{4}));
    SelectByName(data, {"", "DEB", true}, true);
    EXPECT_EQ(Selected(), (std::set<int>{1, 3, 4})) << "and what was selected stays";
}

TEST_F(SatelliteSelection, TheOthersKeepTheirs) {
    AddNames();
    data.Satellite(3).Selected = true;
    SelectByName(data, {"deb", "", false}, true);
    EXPECT_EQ(Selected(), (std::set<int>{2, 3, 4}));
    SelectByName(data, {"deb", "[-]", false}, false);
    EXPECT_EQ(Selected(), (std::set<int>{3, 4}));
}

TEST_F(SatelliteSelection, NumberAndSwitchesInFrontOfTheNameAreNotLookedAt) {
    AddNames();
    for (const char* text : {"25544", "XOO", "0001", "[X"}) SelectByName(data, {text, "", false}, true);
    EXPECT_EQ(Selected(), (std::set<int>{}));
    SelectByName(data, {"", "25544", false}, true);
    EXPECT_EQ(Selected().size(), 4u);
}

TEST_F(SatelliteSelection, ANameThatNobodyBearsIsFoundAllTheSame) {
    Add("cnsjkfjwiruriwowpqpeoridjslakc8293040");
    SelectByName(data, {}, true);
    EXPECT_EQ(Selected(), (std::set<int>{1}));
}

TEST_F(SatelliteSelection, LettersBeyondTheLatinOnesAreLetters) {
    Add("\xD0\x9C\xD0\x98\xD0\xA0 1");  // MIR in Cyrillic capitals
    Add("\xC3\x89TOILE");
    SelectByName(data, {"\xD0\xBC\xD0\xB8\xD1\x80", "", false}, true);
    EXPECT_EQ(Selected(), (std::set<int>{1}));
    SelectByName(data, {"\xC3\xA9toile", "", false}, true);
    EXPECT_EQ(Selected(), (std::set<int>{1, 2}));
}

TEST_F(SatelliteSelection, AnEmptyListHasNothingToSelect) {
    data.Satellite(1).Selected = true;  // not in the list
    SelectByName(data, {}, true);
    SelectEvery(data, true);
    InvertSelection(data);
    SelectEnabled(data);
    SwitchSelected(data, kDisabledPlace, true);
    EXPECT_EQ(SelectedCount(data), 0);
    EXPECT_FALSE(data.Satellite(1).IsDisabled());
}

// Simple ways.

TEST_F(SatelliteSelection, AllNoneAndTheOthers) {
    AddNames();
    SelectEvery(data, true);
    EXPECT_EQ(SelectedCount(data), 4);
    data.Satellite(2).Selected = false;
    InvertSelection(data);
    EXPECT_EQ(Selected(), (std::set<int>{2}));
    EXPECT_EQ(SelectedCount(data), 1);
    SelectEvery(data, false);
    EXPECT_EQ(SelectedCount(data), 0);
}

TEST_F(SatelliteSelection, EnabledOnesAreSelectedAndNoOthers) {
    AddNames();
    data.Satellite(1).OptionFlags = "0100000000000000";
    data.Satellite(2).OptionFlags = "1000000000000000";
    data.Satellite(3).OptionFlags = "0010000000000000";
    data.Satellite(4).OptionFlags = "1100000000000000";
    data.Satellite(4).Selected = true;
    SelectEnabled(data);
    EXPECT_EQ(Selected(), (std::set<int>{2, 3}));
}

// Switches.

TEST_F(SatelliteSelection, ASwitchChangesItsPlaceAlone) {
    AddNames();
    for (int i = 1; i <= 4; ++i) data.Satellite(i).OptionFlags = "1010000000000001";
    data.Satellite(2).Selected = data.Satellite(4).Selected = true;
    SwitchSelected(data, kDisabledPlace, true);
    EXPECT_EQ(data.Satellite(2).OptionFlags, "1110000000000001");
    EXPECT_EQ(data.Satellite(1).OptionFlags, "1010000000000001");
    SwitchSelected(data, kOrbitHiddenPlace, false);
    EXPECT_EQ(data.Satellite(4).OptionFlags, "0110000000000001");
    SwitchSelected(data, kDisabledPlace, false);
    SwitchSelected(data, kOrbitHiddenPlace, true);
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(data.Satellite(i).OptionFlags, "1010000000000001") << i;
}

TEST_F(SatelliteSelection, SwitchesThatAreTooFewGetTheirPlaces) {
    Add("A").Selected = true;
    data.Satellite(1).OptionFlags = "";
    SwitchSelected(data, kDisabledPlace, true);
    EXPECT_EQ(data.Satellite(1).OptionFlags, "01");
}

// By what is known of them. The station and a Molniya, with numbers worked out by hand from their lines.

struct KnownSatellites : SatelliteSelection {
    KnownSatellites() {
        EnterTLEText(app,
                     "ISS (ZARYA)\n"
                     "1 25544U 98067A   18020.18752315  .00002190  00000-0  40207-4 0  9990\n"
                     "2 25544  51.6424 359.5566 0003417  12.8193  58.3498 15.54262859 95452\n"
                     "MOLNIYA 1-91\n"
                     "1 25485U 98054A   18019.50000000  .00000000  00000-0  00000-0 0  9990\n"
                     "2 25485  64.1000 100.0000 6800000 250.0000  10.0000  2.00600000100004\n");
        CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
        SetInstant(2458138.5);  // 20 January 2018, 0 h UTC: day 20.0 of the year
        for (int i = 1; i <= data.SatCount; ++i) data.Satellite(i).Selected = false;
    }

    void SetInstant(double jd) { data.SetSimInstant(JDToDate(jd), jd); }

    SatRecord& Station() { return data.Satellite(1); }
    SatRecord& Molniya() { return data.Satellite(2); }

    const std::set<int> kNone;
    const std::set<int> kStation{1};
    const std::set<int> kMolniya{2};
    const std::set<int> kBoth{1, 2};
};

TEST_F(KnownSatellites, BothAreThere) {
    ASSERT_EQ(data.SatCount, 2);
    EXPECT_EQ(Matching({}), kBoth) << "who asks for nothing gets all";
}

// Height from the mean motion by Kepler's third law, with a slide rule's way: a^3 = mu (P / 2 pi)^2, mu = 398600.8 km3/s2.
double HandAxis(double meanMotion) {
    const double period = 86400 / meanMotion;
    return std::pow(398600.8 * std::pow(period / (2 * std::numbers::pi), 2), 1.0 / 3);
}

TEST_F(KnownSatellites, HeightsFollowFromTheElements) {
    const double radius = data.Site.SiteRadius / 1000;
    // Mean motion 15.54262859: 6782.7 km; the Molniya: 26560 km less and plus 68 percent.
    EXPECT_NEAR(PerigeeHeight(data, Station()), HandAxis(15.54262859) * (1 - 0.0003417) - radius, 0.3);
    EXPECT_NEAR(ApogeeHeight(data, Station()), HandAxis(15.54262859) * (1 + 0.0003417) - radius, 0.3);
    EXPECT_NEAR(PerigeeHeight(data, Molniya()), HandAxis(2.006) * 0.32 - radius, 0.5);
    EXPECT_NEAR(ApogeeHeight(data, Molniya()), HandAxis(2.006) * 1.68 - radius, 1.5);
    EXPECT_NEAR(HandAxis(15.54262859), 6782.7, 0.5);
    EXPECT_NEAR(HandAxis(2.006), 26560, 10);
}

TEST_F(KnownSatellites, LimitsIncludeTheirEnds) {
    const Limits limits{1.5, 2.5};
    EXPECT_TRUE(limits.Hold(1.5));
    EXPECT_TRUE(limits.Hold(2.5));
    EXPECT_FALSE(limits.Hold(1.499));
    EXPECT_FALSE(limits.Hold(2.501));
    EXPECT_TRUE((Limits{{}, 2.5}.Hold(-1e300)));
    EXPECT_TRUE((Limits{1.5, {}}.Hold(kInfinity)));
    EXPECT_FALSE((Limits{1.5, {}}.Hold(std::nan(""))));
    EXPECT_FALSE((Limits{{}, 1.5}.Hold(std::nan(""))));
    EXPECT_FALSE(Limits{}.Any());
}

TEST_F(KnownSatellites, EachQuantityHasItsUnit) {
    SelectionQuest quest;
    quest.inclination = {51.6, 51.7};
    EXPECT_EQ(Matching(quest), kStation);
    quest = {};
    quest.inclination = {64, {}};
    EXPECT_EQ(Matching(quest), kMolniya);
    quest = {};
    quest.perigee = {300, 500};
    EXPECT_EQ(Matching(quest), kStation);
    quest = {};
    quest.perigee = {1000, 3000};
    EXPECT_EQ(Matching(quest), kMolniya);
    quest = {};
    quest.apogee = {38000, 39000};
    EXPECT_EQ(Matching(quest), kMolniya);
    quest = {};
    quest.apogee = {{}, 450};
    EXPECT_EQ(Matching(quest), kStation);
    quest = {};
    quest.period = {92.6, 92.7};  // 1440 / 15.5426 = 92.648
    EXPECT_EQ(Matching(quest), kStation);
    quest = {};
    quest.period = {717, 718};  // 1440 / 2.006 = 717.85
    EXPECT_EQ(Matching(quest), kMolniya);
    quest = {};
    quest.eccentricity = {0.68, 0.68};
    EXPECT_EQ(Matching(quest), kMolniya);
    quest = {};
    quest.eccentricity = {{}, 0.01};
    EXPECT_EQ(Matching(quest), kStation);
}

TEST_F(KnownSatellites, AgeCountsFromTheEpochToTheDisplayedMoment) {
    SelectionQuest quest;
    quest.age = {0.49, 0.51};  // epoch at day 19.5, displayed 20.0
    EXPECT_EQ(Matching(quest), kMolniya);
    quest.age = {-0.19, -0.18};  // the station's epoch is day 20.1875
    EXPECT_EQ(Matching(quest), kStation);
    SetInstant(2458138.5 + 8 * 365.25);
    quest.age = {2900, {}};
    EXPECT_EQ(Matching(quest), kBoth);
    quest.age = {{}, 30};
    EXPECT_EQ(Matching(quest), kNone);
}

TEST_F(KnownSatellites, ASurfaceModelIsAskedOfTheRoomThatKnows) {
    Molniya().Surface.MirrorCount = 1;
    SelectionQuest quest;
    quest.model = true;
    EXPECT_EQ(Matching(quest), kMolniya);
    quest.model = false;
    EXPECT_EQ(Matching(quest), kStation);
    SelectMatching(app, quest, SelectionMode::Replace, nullptr);
    EXPECT_EQ(Selected(), kBoth) << "nobody knows of models";
}

TEST_F(KnownSatellites, AllThatIsAskedMustHold) {
    SelectionQuest quest;
    quest.inclination = {50, 70};
    EXPECT_EQ(Matching(quest), kBoth);
    quest.eccentricity = {0.5, {}};
    EXPECT_EQ(Matching(quest), kMolniya);
    quest.perigee = {{}, 500};
    EXPECT_EQ(Matching(quest), kNone);
}

// Where the satellite stands as the engine itself says, turned and looked at by hand: kilometres, Greenwich's angle from
// its rate since the year 2000.
TEST_F(KnownSatellites, LitAndAboveTheHorizonAgreeWithTheEnginesOwnPositions) {
    // Turin and the antipodes, through a day in steps of 20 minutes.
    int lit = 0;
    int dark = 0;
    int up = 0;
    for (const double side : {1.0, -1.0}) {
        SetLocationDegrees(data, side * 45.07, side > 0 ? 7.69 : -172.31);
        for (int k = 0; k < 72; ++k) {
            const double jd = 2458138.5 + k / 72.0;
            SetInstant(jd);
            // The Sun's direction is the clock's business: here it stands anywhere, at 23 degrees south.
            const double sunLon = 0.7 * k;
            data.SunDir = {std::cos(-23 * kDegree) * std::cos(sunLon), std::cos(-23 * kDegree) * std::sin(sunLon),
                           std::sin(-23 * kDegree)};
            for (int i = 1; i <= 2; ++i) {
                EngineBlock block = data.Satellite(i).EngineBlock;
                double r[3];
                double v[3];
                ASSERT_EQ(Satellite_SGP4(&block, jd, r, v), 0);
                const double t = jd - 2451545.0;
                const double gmst = std::fmod(280.46061837 + 360.98564736629 * t, 360) * kDegree;
                const double x = r[0] * std::cos(gmst) + r[1] * std::sin(gmst);
                const double y = -r[0] * std::sin(gmst) + r[1] * std::cos(gmst);
                const double z = r[2];
                const double radius = data.Site.SiteRadius / 1000;
                const double along = x * data.SunDir.x + y * data.SunDir.y + z * data.SunDir.z;
                const double across = std::sqrt(x * x + y * y + z * z - along * along);
                const bool inSunlight = along >= 0 || across >= radius;
                const double lat = data.Site.SiteGeoLat;
                const double lon = data.Site.SiteLon;
                const double dx = x - radius * std::cos(lat) * std::cos(lon);
                const double dy = y - radius * std::cos(lat) * std::sin(lon);
                const double dz = z - radius * std::sin(lat);
                const double geodetic = data.Site.SiteLat;
                const double upward = dx * std::cos(geodetic) * std::cos(lon) +
                                      dy * std::cos(geodetic) * std::sin(lon) + dz * std::sin(geodetic);
                const double elevation = std::asin(upward / std::sqrt(dx * dx + dy * dy + dz * dz)) / kDegree;

                SelectionQuest quest;
                if (std::abs(across - radius) > 1) {
                    quest.lit = true;
                    EXPECT_EQ(Matches(app, data.Satellite(i), quest, HasMirrors), inSunlight) << i << " at " << k;
                    ++(inSunlight ? lit : dark);
                    quest.lit = false;
                }
                for (const double least : {0.0, 10.0, -20.0}) {
                    if (std::abs(elevation - least) < 0.05) continue;
                    quest.leastElevation = least;
                    EXPECT_EQ(Matches(app, data.Satellite(i), quest, HasMirrors), elevation > least)
                        << i << " at " << k << ": " << elevation;
                    up += least == 0 && elevation > 0;
                }
            }
        }
    }
    EXPECT_GT(lit, 100);
    EXPECT_GT(dark, 20);
    EXPECT_GT(up, 40);
}

TEST_F(KnownSatellites, WhatTheLastPictureHasLeftStays) {
    const EngineBlock before = Station().EngineBlock;
    SelectionQuest quest;
    quest.lit = true;
    SelectMatching(app, quest, SelectionMode::Add, HasMirrors);
    for (int i = 0; i < 3; ++i) {
        // The block is packed: its numbers are copied before they are compared.
        const double now = Station().EngineBlock.WorldPosition[i];
        const double then = before.WorldPosition[i];
        EXPECT_EQ(now, then);
    }
}

TEST_F(KnownSatellites, WhatCannotBePropagatedIsNeitherLitNorInTheSky) {
    Station().EngineBlock = {};
    data.SunDir = {1, 0, 0};
    SelectionQuest quest;
    quest.lit = true;
    EXPECT_FALSE(Matches(app, Station(), quest, HasMirrors));
    quest = {};
    quest.leastElevation = -90;
    EXPECT_FALSE(Matches(app, Station(), quest, HasMirrors));
    EXPECT_TRUE(Matches(app, Station(), {}, HasMirrors));
}

TEST_F(KnownSatellites, TheOrbitModelIsTheOneThatIsChosen) {
    // The simple model needs no more than the elements.
    Station().EngineBlock = {};
    SelectionQuest quest;
    quest.leastElevation = -90;
    EXPECT_FALSE(Matches(app, Station(), quest, HasMirrors));
    app.Main.CSGP4.Value = false;
    app.Main.CSGP1.Value = true;
    EXPECT_TRUE(Matches(app, Station(), quest, HasMirrors));
}

TEST_F(KnownSatellites, WithoutAMeanMotionThereIsNoHeightWithinALimit) {
    Station().MeanMotion = 0;
    Station().MeanRadiusA = MeanRadiusOf(0, data.Site.SiteRadius);
    SelectionQuest quest;
    quest.period = {{}, 1e6};
    EXPECT_EQ(Matching(quest), kMolniya);
    quest = {};
    quest.perigee = {{}, 1e6};
    EXPECT_EQ(Matching(quest), kMolniya);
}

TEST_F(KnownSatellites, WhatMatchesReplacesComesOrGoes) {
    SelectionQuest quest;
    quest.eccentricity = {0.5, {}};
    Station().Selected = true;
    SelectionCount count = CountMatching(app, quest, SelectionMode::Add, HasMirrors);
    EXPECT_EQ(count.matching, 1);
    EXPECT_EQ(count.before, 1);
    EXPECT_EQ(count.after, 2);
    EXPECT_EQ(Selected(), kStation) << "counting selects nothing";

    EXPECT_EQ(SelectMatching(app, quest, SelectionMode::Add, HasMirrors).after, 2);
    EXPECT_EQ(Selected(), kBoth);
    count = SelectMatching(app, quest, SelectionMode::Take, HasMirrors);
    EXPECT_EQ(count.before, 2);
    EXPECT_EQ(count.after, 1);
    EXPECT_EQ(Selected(), kStation);
    EXPECT_EQ(SelectMatching(app, quest, SelectionMode::Replace, HasMirrors).after, 1);
    EXPECT_EQ(Selected(), kMolniya);
}

}  // namespace
}  // namespace glintara
