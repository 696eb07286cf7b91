#pragma once

// Searches over the night of the example list.

#include <algorithm>
#include <string>
#include <vector>

#include "flare/observed_night.h"
#include "flare/search.h"

namespace glintara::observed_night {

/// How far a search may be from the sweep's first instant: the sweep's step before it, and a rounded Julian date after.
inline constexpr double kStep = 0.1 * kSecond;
inline constexpr double kGrain = 1e-4 * kSecond;

/// The first flares of the night within 30 km of Turin: IRIDIUM 32 at 5:03 in the dark, IRIDIUM 18 at 11:04 and
/// IRIDIUM 64 at 12:17 by day, IRIDIUM 28 at 16:44 in the dusk.
inline constexpr double kBefore32 = kNight + 5 * kHour;
inline constexpr const char* kIridium32 = "IRIDIUM 32 [+]";
inline constexpr const char* kIridium18 = "IRIDIUM 18 [+]";
inline constexpr const char* kIridium28 = "IRIDIUM 28 [-]";
inline constexpr const char* kIridium45 = "IRIDIUM 45 [+]";
inline constexpr const char* kIridium57 = "IRIDIUM 57 [-]";

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

}  // namespace glintara::observed_night
