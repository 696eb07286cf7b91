#include "flare/found_flare.h"

#include "flare/observed_night.h"

namespace glintara::observed_night {
namespace {

struct FoundFlareTest : ::testing::Test {
    std::string Time() const { return o.app.FindFlare.LFlareTime.Caption; }
    std::string Sky() const { return o.app.FindFlare.LFlareSky.Caption; }

    Observatory o;
    RecordingClock clock{o.app.Data};
};

// What `glint flares` lists for this night. Its Sun stands over the sphere at the centre, here it stands over the
// horizon: at this latitude that makes up to 0.2 degrees, most at noon.
TEST_F(FoundFlareTest, TheNearestMomentIsTold) {
    o.Load("iridium.tle");
    CFindFirst_click(o.app, clock);
    EXPECT_EQ(o.app.FindFlare.LStatus.Caption.Get(), "Flare Found! (IRIDIUM 32 [+])");
    EXPECT_EQ(Time(), "Nearest 20/01/2018 05:03:23.6 UTC, 2.54 km away");
    EXPECT_EQ(Sky(), "Azimuth 350.6\u00B0, elevation 37.4\u00B0, Sun at -20.5\u00B0");
    CFindNext_click(o.app, clock);
    EXPECT_EQ(Time(), "Nearest 20/01/2018 11:04:26.2 UTC, 3.9 km away");
    EXPECT_EQ(Sky(), "Azimuth 178.3\u00B0, elevation 33.5\u00B0, Sun at 24.3\u00B0");
}

TEST_F(FoundFlareTest, EachFlareIsTheOneOfTheList) {
    o.Load("iridium.tle");
    PassQuest quest;
    quest.start = kNight;
    quest.days = 1;
    quest.maxDistance = 30e3;
    const std::vector<FlarePass> listed = ListPasses(o.app.Data, quest);
    ASSERT_GE(listed.size(), 4U);
    for (const FlarePass& pass : listed) {
        const int number = o.app.Data.Satellite(pass.satellite).OrbitNumber;
        const std::optional<FlarePass> told = PassOfFoundFlare(o.app, number, pass.mirror, pass.begin, 30e3);
        ASSERT_TRUE(told);
        EXPECT_EQ(told->satellite, pass.satellite);
        EXPECT_EQ(told->mirror, pass.mirror);
        EXPECT_NEAR(told->closest, pass.closest, 0.005 * kSecond);
        EXPECT_NEAR(told->distance, pass.distance, 1);
        EXPECT_NEAR(told->sky.azimuth, pass.sky.azimuth, 1e-5);
        EXPECT_NEAR(told->sky.altitude, pass.sky.altitude, 1e-5);
    }
}

TEST_F(FoundFlareTest, WithoutAFlareNothingIsTold) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    CFindFirst_click(o.app, clock);
    ASSERT_NE(Time(), "");
    SetInstant(o.app.Data, kNight);
    o.app.FindFlare.TInterval.Text = std::string("1");
    CFindFirst_click(o.app, clock);
    EXPECT_EQ(o.app.FindFlare.LStatus.Caption.Get(), "Flare Not Found");
    EXPECT_EQ(Time(), "");
    EXPECT_EQ(Sky(), "");
}

TEST_F(FoundFlareTest, ASatelliteThatIsGoneHasNoFlare) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    EXPECT_FALSE(PassOfFoundFlare(o.app, 99, 1, kNight, 30e3));
    EXPECT_FALSE(PassOfFoundFlare(o.app, o.app.Data.Satellite(1).OrbitNumber, 1, kNight, 30e3)) << "none begins then";
}

TEST_F(FoundFlareTest, WhatIsNoNumberIsNotSearchedFor) {
    o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
    o.app.FindFlare.TInterval.Text = std::string("1,5");
    CFindFirst_click(o.app, clock);
    EXPECT_EQ(o.app.FindFlare.LStatus.Caption.Get(), "Not a number: 1,5");
    o.app.FindFlare.TInterval.Text = std::string("24");
    o.app.FindFlare.TMaxDistance.Text = std::string("near");
    CFindNext_click(o.app, clock);
    EXPECT_EQ(o.app.FindFlare.LStatus.Caption.Get(), "Not a number: near");
    EXPECT_TRUE(clock.instants.empty());
    EXPECT_FALSE(o.app.FindFlare.CAbort.Enabled);
    o.app.FindFlare.TMaxDistance.Text = std::string("-30");
    CFindFirst_click(o.app, clock);
    EXPECT_EQ(o.app.FindFlare.LStatus.Caption.Get(), "Flare Not Found") << "a negative distance is none";
}

}  // namespace
}  // namespace glintara::observed_night
