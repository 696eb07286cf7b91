// The search as its window shows it: what is refused, what can be pressed meanwhile, how it is ended.

#include <algorithm>

#include "engine/geometry/attitude_types.h"
#include "flare/surface_models.h"
#include "support/flare_search_fixture.h"

namespace glintara::observed_night {
namespace {

TEST_F(FlareSearchTest, TextThatIsNoNumberIsToldAndNothingIsSearched) {
    o.Load("iridium.tle");
    Ask("24", "near");
    FindFirst();
    ExpectNothingFound("Not a number: near");
    Ask("", "30");
    FindFirst();
    ExpectNothingFound("Not a number: ");
    EXPECT_EQ(o.events.served, 0);
}

TEST_F(FlareSearchTest, AnIntervalTooLongToCountStillStopsAtAbort) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("1e300", "0");
    o.events.hook = [&] {
        if (o.events.served == 4) CAbort_click(o.app);
    };
    FindFirst();
    EXPECT_EQ(o.events.served, 4);
    ExpectNothingFound("Searching... (2 hour)");
}

// What takes part.
TEST_F(FlareSearchTest, AnEmptyListIsToldAsAWarning) {
    Ask("3", "30");
    FindFirst();
    ExpectNothingFound("Warning: No Satellite Selected / No Mirror Found");
}

TEST_F(FlareSearchTest, NoSatelliteSelectedIsToldAsAWarning) {
    o.Load("iridium.tle");
    o.SelectAll(false);
    FindFirst();
    ExpectNothingFound("Warning: No Satellite Selected / No Mirror Found");
}

TEST_F(FlareSearchTest, SatellitesWithoutSurfacesAreToldAsAWarning) {
    o.LoadOne("iridium.tle", kIridium32);
    SurfaceModel& surface = o.app.Data.Satellite(1).Surface;
    const SurfaceModel whole = surface;

    surface.MirrorCount = 0;
    FindFirst();
    ExpectNothingFound("Warning: No Satellite Selected / No Mirror Found");

    surface = whole;
    surface.ModelFlags[0] = '0';
    FindFirst();
    ExpectNothingFound("Warning: No Satellite Selected / No Mirror Found");

    surface = whole;
    surface.OrientationType = 5;
    FindFirst();
    ExpectNothingFound("Warning: No Satellite Selected / No Mirror Found");
}

TEST_F(FlareSearchTest, OnlySelectedSatellitesAreSearched) {
    o.Load("iridium.tle");
    Ask("24", "30");
    for (int s = 1; s <= o.app.Data.SatCount; ++s)
        o.app.Data.Satellite(s).Selected = o.app.Data.Satellite(s).Name != kIridium32;
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 18 [+])");
}

TEST_F(FlareSearchTest, DisabledSatellitesAreNotSearched) {
    o.Load("iridium.tle");
    Ask("24", "30");
    for (int s = 1; s <= o.app.Data.SatCount; ++s) {
        SatRecord& satellite = o.app.Data.Satellite(s);
        if (satellite.Name == kIridium32) satellite.OptionFlags = "0100000000000000";
        if (satellite.Name == kIridium18) satellite.OptionFlags = "1000000000000000";  // its orbit is hidden, no more
    }
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 18 [+])");

    o.app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    for (int s = 1; s <= o.app.Data.SatCount; ++s) o.app.Data.Satellite(s).OptionFlags = "0100000000000000";
    SetInstant(o.app.Data, kNight);
    FindFirst();
    EXPECT_EQ(Status(), "Warning: No Satellite Selected / No Mirror Found");
}

TEST_F(FlareSearchTest, TransitsNeedNoSurfaces) {
    o.Load("iridium.tle");
    for (int s = 1; s <= o.app.Data.SatCount; ++s) o.app.Data.Satellite(s).Surface = SurfaceModel{};
    o.app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    SetInstant(o.app.Data, kNight + 9 * kHour);
    std::optional<SweptPass> first;
    for (int s = 1; s <= o.app.Data.SatCount; ++s) {
        const SatRecord& satellite = o.app.Data.Satellite(s);
        const auto passes =
            Sweep(TransitOf(satellite, GLINTCORE_SUN), o.app.Data.Site, o.app.Data.SimTime, kHour, 100e3, {100, 10});
        if (!passes.empty() && (!first || passes[0].begin < first->begin)) {
            first = passes[0];
            first->about = satellite.Name;
        }
    }
    ASSERT_TRUE(first);
    Ask("24", "100");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    EXPECT_NEAR(clock.instants[0], first->begin - kStep / 2, kStep / 2 + kGrain);
    EXPECT_EQ(Status(), "Flare Found! (" + first->about + ")");
    EXPECT_EQ(form.LastFoundMirror, 1);
}

TEST_F(FlareSearchTest, ATransitIsOneWhateverTheSurfacesAre) {
    o.Load("iridium.tle");
    o.app.Main.MnuTransitMode[kTransitEntry].Checked = true;
    SetInstant(o.app.Data, kNight + 9 * kHour);
    Ask("24", "100");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    EXPECT_EQ(form.LastFoundMirror, 1);
    const int satellite = form.LastFoundSat;
    // With three surfaces it would be found once for each.
    FindNext();
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_NE(form.LastFoundSat, satellite);
}

TEST_F(FlareSearchTest, ASatelliteThatTheEngineCannotPropagateIsPassedOver) {
    o.Load("iridium.tle");
    SatRecord& broken = o.app.Data.Satellite(1);
    broken.EngineBlock = EngineBlock{};
    Ask("24", "30");
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
}

// What the form shows, and what it lets the user do.
TEST_F(FlareSearchTest, TheSimplePropagatorIsRefused) {
    o.Load("iridium.tle");
    o.app.Main.CSGP4.Value = false;
    o.app.Main.CSGP1.Value = true;
    form.LastFoundSat = 7;
    form.LastFoundMirror = 2;
    FindNext();
    EXPECT_EQ(form.LastFoundSat, 7);
    FindFirst();
    EXPECT_EQ(form.LastFoundSat, -1);
    EXPECT_EQ(form.LastFoundMirror, -1);
    ASSERT_EQ(o.boxes.messages.size(), 2u);
    EXPECT_EQ(o.boxes.messages[0].text,
              "Flare Search can be performed only with the SDP4/SGP4 propagation model\r\n"
              "Please switch to the right model.");
    EXPECT_EQ(o.boxes.messages[0].icon, MessageIcon::Warning);
    EXPECT_EQ(o.events.served, 0);
    ExpectNothingFound("Warning: search will involve only selected satellites");
}

TEST_F(FlareSearchTest, OnlyAbortCanBePressedWhileItSearches) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("3", "0");
    int looks = 0;
    o.events.hook = [&] {
        ++looks;
        EXPECT_TRUE(form.CAbort.Enabled);
        EXPECT_FALSE(form.CFindFirst.Enabled);
        EXPECT_FALSE(form.CFindNext.Enabled);
        EXPECT_FALSE(form.CExit.Enabled);
        EXPECT_FALSE(form.CSatList.Enabled);
    };
    ExpectIdle();
    FindFirst();
    EXPECT_EQ(looks, 5);
    ExpectIdle();
}

TEST_F(FlareSearchTest, HoursAndPercentAreShownWhileItSearches) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("4", "0");
    std::vector<std::string> captions;
    std::vector<double> percents;
    o.events.hook = [&] {
        captions.push_back(Status());
        percents.push_back(form.PB1.Value);
    };
    FindFirst();
    EXPECT_EQ(captions,
              (std::vector<std::string>{"Searching...", "Searching... (0 hour)", "Searching... (1 hour)",
                                        "Searching... (2 hour)", "Searching... (3 hour)", "Searching... (4 hour)"}));
    ASSERT_EQ(percents.size(), 6u);
    for (std::size_t k = 1; k < 6; ++k) EXPECT_NEAR(percents[k], 25.0 * static_cast<double>(k - 1), 1e-9);
    EXPECT_EQ(form.PB1.Value, 0.0);
}

TEST_F(FlareSearchTest, AbortEndsTheSearchAtTheNextHourAndLeavesTheText) {
    o.Load("iridium.tle");
    Ask("24", "30");
    form.LastFoundSat = 12;
    form.LastFoundMirror = 1;
    o.events.hook = [&] {
        if (Status() == "Searching... (3 hour)") CAbort_click(o.app);
    };
    FindNext();
    ExpectNothingFound("Searching... (3 hour)");
    EXPECT_EQ(o.events.served, 5);
    EXPECT_EQ(form.LastFoundSat, 12);
    EXPECT_EQ(form.LastFoundMirror, 1);
    EXPECT_EQ(o.app.Data.SimTime, kNight);

    o.events.hook = nullptr;
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
}

TEST_F(FlareSearchTest, SearchFlaresTellsWhetherItFoundOne) {
    o.LoadOne("iridium.tle", kIridium32);
    EXPECT_TRUE(SearchFlares(o.app, clock, 30e3, 1.0, SearchStart::First));
    SetInstant(o.app.Data, kNight);
    EXPECT_FALSE(SearchFlares(o.app, clock, 30e3, 0.1, SearchStart::First));
    EXPECT_EQ(clock.instants.size(), 1u);
}

TEST_F(FlareSearchTest, EventsThatMoveTheClockDoNotMoveTheSearch) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("24", "30");
    FindFirst();
    SetInstant(o.app.Data, kNight);
    o.events.hook = [&] { SetInstant(o.app.Data, o.app.Data.SimTime + 0.7); };
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_EQ(clock.instants[1], clock.instants[0]);
}

TEST_F(FlareSearchTest, EventsThatChangeTheListDoNotDisturb) {
    o.Load("iridium.tle");
    Ask("24", "30");
    o.events.hook = [&] {
        if (Status() == "Searching... (2 hour)") {
            for (int s = 1; s <= o.app.Data.SatCount; ++s) o.app.Data.Satellite(s) = SatRecord{};
            o.app.Data.SatCount = 0;
        }
    };
    FindFirst();
    ExpectNothingFound("Flare Not Found");
}

TEST_F(FlareSearchTest, AnObserverWhoMovesMeanwhileIsFollowed) {
    constexpr Geodetic kReykjavik{64.15 * kDegree, -21.94 * kDegree, 30};
    o.Load("iridium.tle");
    SetLocation(o.app.Data, kReykjavik);
    SetInstant(o.app.Data, kNight);
    Ask("48", "150");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);

    SetLocation(o.app.Data, kTurin);
    SetInstant(o.app.Data, kNight);
    o.events.hook = [&] {
        if (Status() == "Searching... (0 hour)") SetLocation(o.app.Data, kReykjavik);
    };
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_EQ(clock.instants[1], clock.instants[0]);
}

// What becomes of a flare that is found.
TEST_F(FlareSearchTest, TheFoundSatelliteBecomesTheWorkingOneWhenAsked) {
    o.Load("iridium.tle");
    Ask("24", "30");
    form.CAutoWSet.Value = true;
    ASSERT_NE(o.app.Data.Satellite(o.app.Data.WorkingSat()).Name, kIridium32);
    FindFirst();
    EXPECT_EQ(o.app.Data.Satellite(o.app.Data.WorkingSat()).Name, kIridium32);
    EXPECT_EQ(o.app.Data.Satellite(o.app.Data.WorkingSat()).OrbitNumber, form.LastFoundSat);
    // It is known by its number, so the list may turn.
    FindNext();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 18 [+])");
    EXPECT_EQ(o.app.Data.Satellite(o.app.Data.WorkingSat()).Name, kIridium18);
}

TEST_F(FlareSearchTest, TheWorkingSatelliteIsLeftAloneOtherwise) {
    o.Load("iridium.tle");
    Ask("24", "30");
    form.CAutoWSet.Value = false;
    const std::string working = o.app.Data.Satellite(o.app.Data.WorkingSat()).Name;
    o.windows.calls.clear();
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    EXPECT_EQ(o.app.Data.Satellite(o.app.Data.WorkingSat()).Name, working);
    EXPECT_TRUE(o.windows.calls.empty());
}

}  // namespace
}  // namespace glintara::observed_night
