#include "flare/search.h"

#include <algorithm>
#include <numeric>
#include <random>

#include "engine/geometry/attitude_types.h"
#include "flare/surface_models.h"
#include "support/flare_search_fixture.h"

namespace glintara::observed_night {
namespace {

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

}  // namespace
}  // namespace glintara::observed_night
