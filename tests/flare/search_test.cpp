#include "flare/search.h"

#include <algorithm>
#include <numeric>
#include <random>

#include "engine/geometry/attitude_types.h"
#include "flare/observed_night.h"
#include "flare/surface_models.h"

namespace glintara::observed_night {
namespace {

/// How far a search may be from the sweep's first instant: the sweep's step before it, and a rounded Julian date after.
constexpr double kStep = 0.1 * kSecond;
constexpr double kGrain = 1e-4 * kSecond;

/// The first flares of the night within 30 km of Turin: IRIDIUM 32 at 5:03 in the dark, IRIDIUM 18 at 11:04 and
/// IRIDIUM 64 at 12:17 by day, IRIDIUM 28 at 16:44 in the dusk.
constexpr double kBefore32 = kNight + 5 * kHour;
const char* const kIridium32 = "IRIDIUM 32 [+]";
const char* const kIridium18 = "IRIDIUM 18 [+]";
const char* const kIridium28 = "IRIDIUM 28 [-]";
const char* const kIridium45 = "IRIDIUM 45 [+]";
const char* const kIridium57 = "IRIDIUM 57 [-]";

/// An observatory with a clock and the form's text boxes.
struct FlareSearchTest : ::testing::Test {
    Observatory o;
    RecordingClock clock{o.app.Data};
    FindFlareControls& form = o.app.FindFlare;

    const std::string& Status() const { return form.LStatus.Caption.Get(); }

    void Ask(const std::string& hours, const std::string& kilometres) {
        form.TInterval.Text = hours;
        form.TMaxDistance.Text = kilometres;
    }

    void FindFirst() { CFindFirst_click(o.app, clock); }
    void FindNext() { CFindNext_click(o.app, clock); }

    /// The first pass of any surface of the list by the sweep, coarse where the centre is far away.
    std::vector<SweptPass> SweepAll(double from, double days, double limit) {
        std::vector<SweptPass> all;
        const CommonData& data = o.app.Data;
        for (int s = 1; s <= data.SatCount; ++s) {
            for (int i = 1; i <= data.Satellite(s).Surface.MirrorCount; ++i) {
                for (SweptPass& pass :
                     Sweep(SurfaceOf(data.Satellite(s), i), data.Site, from, days, limit, {100, 10})) {
                    pass.about = data.Satellite(s).Name;
                    all.push_back(pass);
                }
            }
        }
        std::sort(all.begin(), all.end(), [](const SweptPass& a, const SweptPass& b) { return a.begin < b.begin; });
        return all;
    }

    void ExpectIdle() const {
        EXPECT_FALSE(form.CAbort.Enabled);
        EXPECT_TRUE(form.CFindFirst.Enabled);
        EXPECT_TRUE(form.CFindNext.Enabled);
        EXPECT_TRUE(form.CExit.Enabled);
        EXPECT_TRUE(form.CSatList.Enabled);
        EXPECT_EQ(form.PB1.Value, 0.0);
    }

    void ExpectNothingFound(const std::string& text) {
        EXPECT_EQ(Status(), text);
        EXPECT_TRUE(clock.instants.empty());
        ExpectIdle();
    }
};

// What is found.

TEST_F(FlareSearchTest, FindFirstAndFindNextGoThroughAllFlaresThatASweepSees) {
    constexpr double kLimit = 150e3;
    constexpr double kSpan = 9 * kHour;
    o.Load("iridium.tle");
    SetInstant(o.app.Data, kNight + 4.5 * kHour);
    const double from = o.app.Data.SimTime;
    const std::vector<SweptPass> passes = SweepAll(from, kSpan, kLimit);
    ASSERT_GE(passes.size(), 5u);

    Ask("24", "150");
    FindFirst();
    for (const SweptPass& pass : passes) {
        ASSERT_FALSE(clock.instants.empty());
        const double found = clock.instants.back();
        EXPECT_LE(found, pass.begin + kGrain) << pass.about;
        EXPECT_GT(found, pass.begin - kStep - kGrain) << pass.about;
        EXPECT_EQ(Status(), "Flare Found! (" + pass.about + ")");
        FindNext();
    }
    EXPECT_EQ(clock.instants.size(), passes.size() + 1);
    EXPECT_GT(clock.instants.back(), from + kSpan - kStep);
}

TEST_F(FlareSearchTest, TheNightsFirstFlareWithinThirtyKilometres) {
    o.Load("iridium.tle");
    Ask("24", "30");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    EXPECT_EQ(o.app.Data.Satellite(form.LastFoundSat).Name, kIridium32);
    EXPECT_EQ(form.LastFoundMirror, 3);
    const CalendarFields at = JDToDate(clock.instants[0]);
    EXPECT_EQ(at.hour, 5);
    EXPECT_EQ(at.minute, 3);
    ExpectIdle();
}

TEST_F(FlareSearchTest, TheCentreComesWithinTheDistanceAtTheFoundInstant) {
    o.Load("iridium.tle");
    Ask("24", "30");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    Surface surface = SurfaceOf(o.app.Data.Satellite(form.LastFoundSat), form.LastFoundMirror);
    EXPECT_LT(GlimpseAt(surface, o.app.Data.Site, clock.instants[0]).distance, 30e3);
    EXPECT_GT(GlimpseAt(surface, o.app.Data.Site, clock.instants[0] - 0.1 * kSecond).distance, 30e3);
}

TEST_F(FlareSearchTest, FlaresByDayAreFound) {
    o.LoadOne("iridium.tle", kIridium18);
    Ask("24", "30");
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 18 [+])");
    ASSERT_EQ(clock.instants.size(), 1u);
    const CalendarFields at = JDToDate(clock.instants[0]);
    EXPECT_EQ(at.hour, 11);  // an hour before noon in Turin
    EXPECT_FALSE(o.app.Main.CDayFlares.Value);
}

TEST_F(FlareSearchTest, TheMoonIsTheSourceWhenItsBoxIsTicked) {
    o.Load("iridium.tle");
    SetInstant(o.app.Data, kNight + 9 * kHour);
    o.app.Main.CMoonFlares.Value = true;
    Ask("24", "30");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    Surface surface = SurfaceOf(o.app.Data.Satellite(form.LastFoundSat), form.LastFoundMirror);
    surface.source = GLINTCORE_MOON;
    EXPECT_LT(GlimpseAt(surface, o.app.Data.Site, clock.instants[0]).distance, 30e3);
    surface.source = GLINTCORE_SUN;
    EXPECT_GT(GlimpseAt(surface, o.app.Data.Site, clock.instants[0]).distance, 30e3);
}

TEST_F(FlareSearchTest, TheEarliestFlareWinsInWhateverOrderTheListIs) {
    const std::vector<std::string> names{kIridium28, kIridium45, kIridium57};
    std::vector<SatRecord> records;
    o.Load("iridium.tle");
    for (const std::string& name : names) {
        for (int s = 1; s <= o.app.Data.SatCount; ++s)
            if (o.app.Data.Satellite(s).Name == name) records.push_back(o.app.Data.Satellite(s));
    }
    ASSERT_EQ(records.size(), names.size());

    // Two of the three flare in the hour from 16 h on, 16 seconds apart.
    std::vector<std::size_t> order{0, 1, 2};
    do {
        o.app.Data.SatCount = 0;
        for (const std::size_t k : order) o.Append(records[k]);
        SetInstant(o.app.Data, kNight + 16 * kHour);
        const std::vector<SweptPass> passes = SweepAll(o.app.Data.SimTime, kHour, 150e3);
        ASSERT_EQ(passes.size(), 2u);
        Ask("24", "150");
        FindFirst();
        EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 28 [-])");
        EXPECT_NEAR(clock.instants.back(), passes[0].begin - kStep / 2, kStep / 2 + kGrain);
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_EQ(clock.instants.size(), 6u);
}

TEST_F(FlareSearchTest, TheEarliestSurfaceWinsInWhateverOrderTheyAre) {
    o.LoadOne("iridium.tle", kIridium28);
    SatRecord& satellite = o.app.Data.Satellite(1);
    SurfaceModel& surface = satellite.Surface;
    // The antenna that flares at 16:44, and one that is bent from it by half a degree.
    surface.Mirror(1) = surface.Mirror(3);
    surface.Mirror(2) = surface.Mirror(3);
    surface.Mirror(2).Angle += 0.5;
    surface.MirrorCount = 2;
    SetInstant(o.app.Data, kNight + 16 * kHour);
    const auto beginOf = [&](int mirror) {
        const auto passes = Sweep(SurfaceOf(satellite, mirror), o.app.Data.Site, o.app.Data.SimTime, kHour, 150e3);
        return passes.size() == 1 ? passes[0].begin : 0;
    };
    const double first = beginOf(1);
    const double second = beginOf(2);
    ASSERT_GT(first, 0);
    ASSERT_GT(second, 0);
    ASSERT_GT(std::abs(first - second), kStep);
    const double earliest = std::min(first, second);
    const int winner = first < second ? 1 : 2;

    Ask("1", "150");
    FindFirst();
    EXPECT_EQ(form.LastFoundMirror, winner);
    EXPECT_NEAR(clock.instants.at(0), earliest - kStep / 2, kStep / 2 + kGrain);

    std::swap(surface.Mirror(1), surface.Mirror(2));
    SetInstant(o.app.Data, kNight + 16 * kHour);
    FindFirst();
    EXPECT_EQ(form.LastFoundMirror, 3 - winner);
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_EQ(clock.instants[1], clock.instants[0]);
}

TEST_F(FlareSearchTest, OfEqualInstantsTheFirstInTheListStays) {
    o.LoadOne("iridium.tle", kIridium32);
    o.Append(o.app.Data.Satellite(1)).Name = "THE SAME AGAIN";
    Ask("24", "30");
    FindFirst();
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
    EXPECT_EQ(form.LastFoundSat, 1);
}

TEST_F(FlareSearchTest, RotatingAndTargetSurfacesAreSearchedAsIfFixedInSpace) {
    o.LoadOne("iridium.tle", kIridium32);
    SurfaceModel& surface = o.app.Data.Satellite(1).Surface;
    surface.MirrorCount = 1;
    surface.TargetSatID = 0;
    surface.OrientationType = 1;
    surface.Mirror(1).Angle = 120;
    surface.Mirror(1).Tilt = -20;
    Ask("72", "180");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    Surface asked = SurfaceOf(o.app.Data.Satellite(1), 1);
    ASSERT_EQ(asked.geometry, GLINTCORE_INERTIAL);
    EXPECT_LT(GlimpseAt(asked, o.app.Data.Site, clock.instants[0]).distance, 180e3);
    for (const int type : {2, 3}) {
        surface.OrientationType = type;
        SetInstant(o.app.Data, kNight);
        FindFirst();
        EXPECT_EQ(clock.instants.back(), clock.instants.front()) << type;
    }
    EXPECT_EQ(clock.instants.size(), 3u);
}

// Find Next.

TEST_F(FlareSearchTest, FindNextDoesNotReturnTheFlareOfTheSecondMirrorAgain) {
    o.Load("iridium.tle");
    SetInstant(o.app.Data, kNight + 11.5);  // the night of the full Moon of 31 January, a left antenna is first
    o.app.Main.CMoonFlares.Value = true;
    Ask("24", "30");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    ASSERT_EQ(form.LastFoundMirror, 2);
    Surface surface = SurfaceOf(o.app.Data.Satellite(form.LastFoundSat), 2);
    surface.source = GLINTCORE_MOON;
    const auto passes = Sweep(surface, o.app.Data.Site, clock.instants[0] - kSecond, 60 * kSecond, 30e3);
    ASSERT_EQ(passes.size(), 1u);
    FindNext();
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_GT(clock.instants[1], passes[0].end);
}

TEST_F(FlareSearchTest, FindNextFromTheMiddleOfTheFlarePassesOverTheRestOfIt) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("6", "30");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    SetInstant(o.app.Data, clock.instants[0] + 5 * kSecond);  // it lasts ten
    FindNext();
    EXPECT_EQ(clock.instants.size(), 1u);
    EXPECT_EQ(Status(), "Flare Not Found");

    const double middle = clock.instants[0] + 5 * kSecond;
    SetInstant(o.app.Data, middle);
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_EQ(clock.instants[1], middle);
}

TEST_F(FlareSearchTest, FindNextFindsWhatBeginsWithAnHourOfTheSearch) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("240", "150");
    FindFirst();
    const int mirror = form.LastFoundMirror;
    for (int i = 0; i < 8 && (clock.instants.size() < 2 || form.LastFoundMirror != mirror); ++i) FindNext();
    ASSERT_GE(clock.instants.size(), 2u);
    ASSERT_EQ(form.LastFoundMirror, mirror);
    const double flare = clock.instants.back();
    for (const int hour : {1, 3}) {
        for (const double ahead : {0.0, 0.02, 0.05, 0.09, 0.11, 0.5}) {
            SetInstant(o.app.Data, flare - hour * kHour - ahead * kSecond);
            FindNext();
            ASSERT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
            EXPECT_NEAR(clock.instants.back(), flare, 1.2e-3 * kSecond) << hour << ", " << ahead;
        }
    }
}

TEST_F(FlareSearchTest, FindNextPassesOverAFlareThatLastsForHours) {
    // High up on its orbit it hardly turns under the Sun, and its light lies on Europe for nine hours.
    o.LoadOne("all.tle", "MOLNIYA 3-8");
    SurfaceModel& model = o.app.Data.Satellite(1).Surface;
    model.ModelFlags[0] = '1';
    model.OrientationType = static_cast<std::int32_t>(OrientationType::VerticalSun);
    model.MirrorCount = 1;
    model.Mirror(1).Angle = 0;
    model.Mirror(1).Tilt = 40;
    SetInstant(o.app.Data, kNight + 23 * kHour);
    Ask("72", "12000");
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 1u);
    Surface surface = SurfaceOf(o.app.Data.Satellite(1), 1);
    surface.lowest = -1;
    double end = clock.instants[0];
    while (GlimpseAt(surface, o.app.Data.Site, end).distance < 12000e3) end += 10 * kSecond;
    ASSERT_GT(end - clock.instants[0], 2 * kHour);
    FindNext();
    ASSERT_EQ(clock.instants.size(), 2u);
    EXPECT_GT(clock.instants[1], end);
    // Two that last as long side by side are not found in turns either.
    o.Append(o.app.Data.Satellite(1)).Name = "THE SAME AGAIN";
    SetInstant(o.app.Data, clock.instants[0]);
    FindFirst();
    FindNext();
    EXPECT_GT(clock.instants.back(), end);
}

TEST_F(FlareSearchTest, SatellitesThatFlareTogetherAreNotFoundInTurnsForEver) {
    o.LoadOne("iridium.tle", kIridium32);
    o.Append(o.app.Data.Satellite(1)).Name = "THE SAME AGAIN";
    o.Append(o.app.Data.Satellite(1)).Name = "AND ONCE MORE";
    Ask("240", "150");
    FindFirst();
    for (int i = 0; i < 6; ++i) FindNext();
    ASSERT_EQ(clock.instants.size(), 7u);
    for (std::size_t i = 1; i < clock.instants.size(); ++i) EXPECT_GT(clock.instants[i], clock.instants[i - 1] + kStep);
}

TEST_F(FlareSearchTest, FindFirstForgetsTheLastFlareAndFindsItAgain) {
    o.Load("iridium.tle");
    Ask("24", "30");
    FindFirst();
    FindFirst();
    ASSERT_EQ(clock.instants.size(), 2u);
    // The clock had been set to whole milliseconds.
    EXPECT_NEAR(clock.instants[1], clock.instants[0], 0.6e-3 * kSecond);
}

// How far it searches.

TEST_F(FlareSearchTest, AnIntervalOfNothingStillSearchesOneHour) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("0", "30");
    int served = 0;
    o.events.hook = [&] { ++served; };
    SetInstant(o.app.Data, kBefore32);  // it flares three minutes later
    FindFirst();
    EXPECT_EQ(clock.instants.size(), 1u);
    EXPECT_EQ(served, 2);

    SetInstant(o.app.Data, kBefore32 - kHour);
    FindFirst();
    EXPECT_EQ(clock.instants.size(), 1u);
    EXPECT_EQ(Status(), "Flare Not Found");
    EXPECT_EQ(served, 4);
    ExpectIdle();
}

TEST_F(FlareSearchTest, AnHourThatBeginsAtTheEndOfTheIntervalIsSearched) {
    o.LoadOne("iridium.tle", kIridium32);
    const double justBefore = kBefore32 - 5 * kHour;
    SetInstant(o.app.Data, justBefore);
    Ask("4.99", "30");
    FindFirst();
    EXPECT_TRUE(clock.instants.empty());
    Ask("5", "30");
    FindFirst();
    EXPECT_EQ(clock.instants.size(), 1u);
}

TEST_F(FlareSearchTest, EveryWholeNumberOfHoursGetsItsLastHour) {
    // Hours pass through days, and must come back whole: one round of events an hour, one before, and the last hour.
    o.LoadOne("iridium.tle", kIridium32);
    for (int hours = 0; hours <= 60; ++hours) {
        Ask(std::to_string(hours), "0");
        o.events.served = 0;
        FindFirst();
        EXPECT_EQ(o.events.served, hours + 2) << hours;
    }
    // What rounding leaves of a whole number counts as one.
    Ask("4.9999999", "0");
    o.events.served = 0;
    FindFirst();
    EXPECT_EQ(o.events.served, 7);
}

TEST_F(FlareSearchTest, HoursAfterTheFirstFlareAreNotSearched) {
    o.LoadOne("iridium.tle", kIridium32);
    Ask("24", "30");
    FindFirst();
    EXPECT_EQ(o.events.served, 7);  // before, and for the hours 0 to 5
}

TEST_F(FlareSearchTest, ADistanceOfNothingFindsNothing) {
    o.Load("iridium.tle");
    Ask("24", "0");
    FindFirst();
    ExpectNothingFound("Flare Not Found");
}

TEST_F(FlareSearchTest, NegativeNumbersCountAsNothing) {
    o.Load("iridium.tle");
    Ask("24", "-30");
    FindFirst();
    ExpectNothingFound("Flare Not Found");

    SetInstant(o.app.Data, kBefore32);
    Ask("-24", "30");
    o.events.served = 0;
    FindFirst();
    EXPECT_EQ(o.events.served, 2);
    EXPECT_EQ(Status(), "Flare Found! (IRIDIUM 32 [+])");
}

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
