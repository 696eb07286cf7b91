#include "flare/pending_track.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "flare/cities.h"
#include "flare/observed_night.h"
#include "flare/passes.h"
#include "orbit/progress.h"
#include "support/working_folder.h"

namespace glintara::observed_night {
namespace {

std::string BytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", from)) {
        lines.push_back(text.substr(from, end - from));
        from = end + 2;
    }
    EXPECT_EQ(from, text.size()) << "the last line ends too";
    return lines;
}

struct PendingTrackTest : ::testing::Test {
    PendingTrackTest() {
        ConnectProgress(o.app.Progress);
        o.LoadOne("iridium.tle", "IRIDIUM 32 [+]");
        o.app.Main.CFlareTrack.Value = true;
        SetInstant(o.app.Data, kNight + 5 * kHour);
    }

    SatRecord& Working() { return o.app.Data.Satellite(o.app.Data.SatCount > 0 ? o.app.Data.SatCount : 1); }

    /// A city at a geodetic place, selected.
    void AddCity(const std::string& name, const Geodetic& place) {
        CityTables& tables = o.app.Data.Cities;
        SiteRecord city;
        city.CityName = name;
        city.CityCountry = "XX";
        city.Lat = place.lat;
        city.Lon = place.lon;
        city.GeoLat = GeodeticToGeocentric({place.lat, place.lon, 0}).lat;
        const Vector3 position = LLRToSameXYZ(city.GeoLat, city.Lon, 1);
        city.X = position.x;
        city.Y = position.y;
        city.Z = position.z;
        tables.SiteTable.push_back(city);
        tables.SelectedCities.push_back(tables.SiteCount());
        tables.FirstSiteIndex = tables.SiteCount() + 1;
    }

    std::vector<std::string> Output() const { return LinesOf(o.app.Output.TOutput.Text.Get()); }

    testing::WorkingFolder folder;
    Observatory o;
    RunState& run = o.app.Run;
};

TEST_F(PendingTrackTest, ACommandAsksForAPicture) {
    MnuExportTrack_Click(o.app);
    EXPECT_TRUE(run.ExportPending);
    EXPECT_FALSE(run.CityScanPending);
    EXPECT_EQ(o.windows.calls.back(), "UpdateGraphicsLevel2");
    mnuFindCityTrack_Click(o.app);
    EXPECT_TRUE(run.CityScanPending);
}

// By day and by night alone: where a point is missing a stretch ends.
TEST_F(PendingTrackTest, TheFilesHoldThePointsOfTheTrack) {
    for (const bool day : {true, false}) {
        o.app.Main.CDayFlares.Value = day;

        MnuExportTrack_Click(o.app);
        FinishPendingTrack(o.app);
        EXPECT_FALSE(run.ExportPending);
        ASSERT_FALSE(o.boxes.messages.empty());
        EXPECT_EQ(o.boxes.messages.back().text, "Flare Track Exported");
        EXPECT_EQ(o.boxes.messages.back().icon, MessageIcon::Information);

        std::vector<TrackPoint> points;
        int stretches = 0;
        bool open = false;
        FlareTrack track(o.app.Data, Working(), TrackQuestOf(o.app));
        for (int mirror = 1; mirror <= 3; ++mirror) {
            open = false;
            for (int step = 0; step <= 200; ++step) {
                const auto point = track.At(mirror, kNight + 5 * kHour + step / Working().MeanMotion / 200);
                if (point) points.push_back(*point);
                stretches += point && !open ? 1 : 0;
                open = point.has_value();
            }
        }
        ASSERT_GT(points.size(), 20U);
        const std::vector<std::string> table = LinesOf(BytesOf("Track.txt"));
        ASSERT_EQ(table.size(), points.size() + 4);
        const std::string kml = BytesOf("Track.kml");
        std::size_t at = kml.find("<Placemark>");
        int placemarks = 0;
        for (std::size_t p = at; p != std::string::npos; p = kml.find("<Placemark>", p + 1)) ++placemarks;
        EXPECT_EQ(placemarks, stretches);
        at = kml.find("<coordinates>\r\n") + 15;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Geodetic place = GroundPlaceOf(points[i]);
            EXPECT_EQ(std::stod(table[i + 4]), points[i].jd);
            const std::string columns = table[i + 4].substr(table[i + 4].find('"') + 1);
            std::size_t used = 0;
            const double lon = std::stod(columns, &used);
            const double lat = std::stod(columns.substr(used + 1));
            EXPECT_NEAR(lon + 0.005, place.lon / kDegree, 0.005 + 1e-9);
            EXPECT_NEAR(lat + 0.0005, place.lat / kDegree, 0.0005 + 1e-9);
            if (kml.compare(at, 2, "</") == 0) at = kml.find("<coordinates>\r\n", at) + 15;
            const std::string line = kml.substr(at, kml.find("\r\n", at) - at);
            EXPECT_NEAR(std::stod(line) + 0.00005, place.lon / kDegree, 0.00005 + 1e-9) << line;
            EXPECT_NEAR(std::stod(line.substr(line.find(',') + 1)) + 0.00005, place.lat / kDegree, 0.00005 + 1e-9);
            at += line.size() + 2;
        }
    }
}

TEST_F(PendingTrackTest, DaylightLeavesPointsOut) {
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    const std::size_t dark = LinesOf(BytesOf("Track.txt")).size();
    o.app.Main.CDayFlares.Value = true;
    o.app.Main.TTLE.Text = std::string(":all day:");
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_GT(LinesOf(BytesOf("all day_8138.txt")).size(), dark);
    EXPECT_GT(dark, 4U);
}

TEST_F(PendingTrackTest, AFinePictureHasFiveTimesThePoints) {
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    const auto coarse = static_cast<double>(LinesOf(BytesOf("Track.txt")).size() - 4);
    run.FinePass = true;
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_NEAR(static_cast<double>(LinesOf(BytesOf("Track.txt")).size() - 4), 5 * coarse, 15);
}

TEST_F(PendingTrackTest, WithoutATrackTheCommandsWait) {
    const auto expectWaiting = [this](const char* why) {
        FinishPendingTrack(o.app);
        EXPECT_TRUE(run.ExportPending) << why;
        EXPECT_TRUE(run.CityScanPending) << why;
        EXPECT_TRUE(o.boxes.messages.empty()) << why;
        EXPECT_FALSE(o.app.Output.Visible) << why;
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << why;
    };
    MnuExportTrack_Click(o.app);
    mnuFindCityTrack_Click(o.app);
    o.app.Main.CFlareTrack.Value = false;
    expectWaiting("tracks are not shown");
    o.app.Main.CFlareTrack.Value = true;
    o.app.Main.CSGP4.Value = false;
    expectWaiting("the simple propagator");
    o.app.Main.CSGP4.Value = true;
    Working().Surface.ModelFlags[0] = '0';
    expectWaiting("no surfaces");
    Working().Surface.ModelFlags[0] = '1';
    Working().OptionFlags[1] = '1';
    expectWaiting("disabled");
    Working().OptionFlags[1] = '0';
    const int count = o.app.Data.SatCount;
    o.app.Data.SatCount = 0;
    expectWaiting("no satellite");
    o.app.Data.SatCount = count;
    FinishPendingTrack(o.app);
    EXPECT_FALSE(run.ExportPending);
    EXPECT_FALSE(run.CityScanPending);
}

TEST_F(PendingTrackTest, ACommandThatCannotBeginSaysWhatItWaitsFor) {
    const std::string& said = o.app.Main.LCommandOutput.Caption;
    const auto expectSaid = [&](const std::string& missing) {
        MnuExportTrack_Click(o.app);
        EXPECT_EQ(said, "Track export waits for " + missing);
        mnuFindCityTrack_Click(o.app);
        EXPECT_EQ(said, "Search for cities waits for " + missing);
        o.app.Main.LCommandOutput.Caption = "";
        FinishPendingTrack(o.app);
        EXPECT_EQ(said, "") << "once is enough";
        EXPECT_TRUE(run.ExportPending && run.CityScanPending);
    };
    SatRecord& satellite = Working();
    satellite.Surface.ModelFlags[0] = '0';
    expectSaid("a satellite with surfaces: IRIDIUM 32 [+] has none");
    satellite.Name = "A\nB ";
    expectSaid("a satellite with surfaces: A?B has none");
    satellite.MeanMotion = 0;
    expectSaid("a satellite with an orbit: A?B has none");
    satellite.OptionFlags[1] = '1';
    expectSaid("an enabled satellite: A?B is disabled");
    o.app.Main.CSGP4.Value = false;
    expectSaid("SGP4/SDP4");
    o.app.Main.CFlareTrack.Value = false;
    expectSaid("Flare/Tr Track");
    o.app.Data.SatCount = 0;
    expectSaid("a satellite");
}

TEST_F(PendingTrackTest, WhereTheFilesAreIsSaidBeforeTheMessage) {
    const std::string& said = o.app.Main.LCommandOutput.Caption;
    MnuExportTrack_Click(o.app);
    EXPECT_EQ(said, "") << "nothing to wait for";
    FinishPendingTrack(o.app);
    const std::string here = std::filesystem::canonical(folder.Path()).string();
    EXPECT_EQ(said, "Track.txt and .kml are in " + here);
    EXPECT_TRUE(std::filesystem::exists(here + "/Track.kml"));

    o.app.Main.TTLE.Text = std::string(":night:");
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_EQ(said, "night_8138.txt and .kml are in " + here);

    o.app.Main.LCommandOutput.Caption = "";
    o.app.Main.TTLE.Text = std::string();
    std::filesystem::remove("Track.kml");
    std::filesystem::create_directories("Track.kml/inside");
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_EQ(o.boxes.messages.back().text,
              "Cannot write Track.kml: it is a folder\r\nin " + std::filesystem::current_path().string());
    EXPECT_EQ(said, "") << "not what could not be done";
}

TEST_F(PendingTrackTest, AFileThatCannotBeWrittenIsToldAndOver) {
    std::filesystem::create_directories("Track.txt/inside");
    MnuExportTrack_Click(o.app);
    FinishPendingTrack(o.app);
    ASSERT_EQ(o.boxes.messages.size(), 1U);
    EXPECT_EQ(o.boxes.messages[0].text,
              "Cannot write Track.txt: it is a folder\r\nin " + std::filesystem::current_path().string());
    EXPECT_EQ(o.boxes.messages[0].icon, MessageIcon::Critical);
    EXPECT_FALSE(run.ExportPending);
    EXPECT_EQ(run.LongLoops.Get(), 0);
}

TEST_F(PendingTrackTest, CitiesUnderTheTrackAreFoundAtTheirInstant) {
    o.app.Main.CDayFlares.Value = true;
    FlareTrack track(o.app.Data, Working(), TrackQuestOf(o.app));
    constexpr int kRight = 3;
    std::vector<double> under;
    for (int step = 20; step < 200 && under.size() < 4; step += 9) {
        const double jd = track.InstantOf(step);
        const auto point = track.At(kRight, jd);
        if (!point || !track.At(kRight, jd - 0.5 * kSecond * 60) || !track.At(kRight, jd + 0.5 * kSecond * 60))
            continue;
        const Geodetic place = GroundPlaceOf(*point);
        AddCity("Under " + std::to_string(under.size()), place);
        AddCity("Aside " + std::to_string(under.size()), {place.lat + 0.2, place.lon, 0});
        under.push_back(jd);
    }
    ASSERT_EQ(under.size(), 4U);
    CityTables& tables = o.app.Data.Cities;
    tables.Site(2).FoundFlag = true;
    tables.Site(2).FoundJD = 1;
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_FALSE(run.CityScanPending);
    EXPECT_FALSE(o.app.Progress.Visible);
    EXPECT_TRUE(o.boxes.messages.empty()) << "nothing was exported";
    const std::vector<std::string> output = Output();
    const auto heading = std::ranges::find(output, "List of cities along the track (less than 5 km from the track)");
    ASSERT_NE(heading, output.end());
    EXPECT_EQ(*(heading + 1), "");
    ASSERT_EQ(output.end() - heading, 6);
    for (std::size_t i = 0; i < under.size(); ++i) {
        const SiteRecord& city = tables.Site(static_cast<int>(2 * i + 1));
        EXPECT_TRUE(city.FoundFlag);
        EXPECT_FALSE(tables.Site(static_cast<int>(2 * i + 2)).FoundFlag)
            << "of a scan before, or a thousand kilometres";
        // The centre comes that near some 5 km before; the scan then steps by a third of a second and by the city's 5 km
        // at its own speed, another third.
        double first = under[i];
        while (Length(track.At(kRight, first)->centre - Vector3{city.X, city.Y, city.Z}) * o.app.Data.Site.SiteRadius <
               5000)
            first -= 0.02 * kSecond;
        EXPECT_GE(city.FoundJD, first - 0.01 * kSecond);
        EXPECT_LE(city.FoundJD, first + 0.7 * kSecond);
        const std::string& line = *(heading + 2 + static_cast<int>(i));
        EXPECT_TRUE(line.ends_with("  XX - Under " + std::to_string(i))) << line;
        EXPECT_TRUE(line.starts_with("20/01/2018 0")) << line;
    }
}

// What is skipped over holds no city: a look at every step finds the same ones.
TEST_F(PendingTrackTest, TheSkipsLoseNoCity) {
    o.app.Main.CDayFlares.Value = true;
    TrackQuest quest = TrackQuestOf(o.app);
    quest.turns = 0.25;
    FlareTrack track(o.app.Data, Working(), quest);
    unsigned dice = 7;
    const auto roll = [&dice] {
        dice = dice * 1664525u + 1013904223u;
        return static_cast<double>(dice >> 8) / (1u << 24);
    };
    for (int i = 0; i < 400; ++i) {
        const int mirror = 1 + static_cast<int>(3 * roll());
        const auto point = track.At(mirror, quest.start + roll() * (track.End() - quest.start));
        if (!point) continue;
        const Geodetic place = GroundPlaceOf(*point);
        AddCity("City " + std::to_string(i),
                {place.lat + 0.003 * (roll() - 0.5), place.lon + 0.003 * (roll() - 0.5), 0});
    }
    CityTables& tables = o.app.Data.Cities;
    ASSERT_GT(tables.SiteCount(), 50);
    const double radius = o.app.Data.Site.SiteRadius;
    std::vector<std::string> every;
    for (int mirror = 1; mirror <= 3; ++mirror)
        for (double jd = quest.start; jd <= track.End(); jd += kSecond / 3)
            if (const auto point = track.At(mirror, jd)) CheckCityProximity(tables, radius, jd, point->centre, every);
    ClearAllCityFlag(tables);
    std::size_t told = 0;
    ScanListener listener;
    listener.tell = [&told](const std::vector<std::string>& lines) { told += lines.size(); };
    EXPECT_TRUE(ScanCities(tables, radius, track, listener));
    EXPECT_GT(told, 40U);
    // A city that is missed by a hair more or less than 5 km may count in one and not in the other.
    EXPECT_NEAR(static_cast<double>(told), static_cast<double>(every.size()), 1);
}

TEST_F(PendingTrackTest, AScanThatFindsNothingSaysSo) {
    AddCity("Far off", {-1.4, 2, 0});
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_EQ(Output().back(), "None of the cities lies along it");
}

TEST_F(PendingTrackTest, WithoutASelectedCityItIsToldWhereTheyAreChosen) {
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_EQ(o.events.served, 0);
    const std::vector<std::string> output = Output();
    ASSERT_GE(output.size(), 3U);
    EXPECT_EQ(output[output.size() - 3], "List of cities along the track (less than 5 km from the track)");
    EXPECT_EQ(output[output.size() - 2], "");
    EXPECT_EQ(output.back(), "There are no cities to look at: Settings, Cities chooses them");
    EXPECT_FALSE(run.CityScanPending);
    EXPECT_TRUE(o.boxes.messages.empty());
}

TEST_F(PendingTrackTest, AScanIsBrokenOffByItsButton) {
    AddCity("Torino", kTurin);
    o.events.hook = [this] {
        EXPECT_TRUE(o.app.Progress.Visible);
        EXPECT_EQ(run.LongLoops.Get(), 1);
        EXPECT_TRUE(run.TrackBusy);
        FinishPendingTrack(o.app);  // a picture that is made meanwhile
        o.app.Progress.CAbort.Click();
    };
    MnuExportTrack_Click(o.app);
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_EQ(o.events.served, 1);
    EXPECT_FALSE(o.app.Progress.Visible);
    EXPECT_EQ(run.LongLoops.Get(), 0);
    EXPECT_FALSE(run.CityScanPending || run.ExportPending || run.TrackBusy);
    ASSERT_EQ(o.boxes.messages.size(), 2U);
    EXPECT_EQ(o.boxes.messages[0].text, "Operation Aborted");
    EXPECT_EQ(o.boxes.messages[0].icon, MessageIcon::Warning);
    EXPECT_EQ(o.boxes.messages[1].text, "Flare Track Exported") << "the files are closed all the same";
    EXPECT_TRUE(BytesOf("Track.kml").ends_with("</Document>\r\n</kml>\r\n"));

    o.events.hook = nullptr;
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_FALSE(o.app.Progress.Aborted) << "the next scan begins afresh";
}

// Both at once: the export takes the steps of the scan, a third of a second and the way to the city at 15 km/s.
TEST_F(PendingTrackTest, AnExportDuringAScanHasItsPoints) {
    AddCity("Torino", kTurin);
    o.app.Data.View.OrbitTurns = 1;
    o.app.Main.CDayFlares.Value = true;
    const SiteRecord& city = o.app.Data.Cities.Site(1);
    const double start = o.app.Data.SimTime;
    FlareTrack track(o.app.Data, Working(), TrackQuestOf(o.app));
    std::vector<double> expected;
    for (int mirror = 1; mirror <= 3; ++mirror)
        for (double second = 0; second <= 86400 / Working().MeanMotion / 6; second += 1 / 3.0) {
            const auto point = track.At(mirror, start + second * kSecond);
            if (!point) continue;
            expected.push_back(start + second * kSecond);
            second += o.app.Data.Site.SiteRadius * Length(point->centre - Vector3{city.X, city.Y, city.Z}) / 15000;
        }
    ASSERT_GT(expected.size(), 6U);
    MnuExportTrack_Click(o.app);
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    const std::vector<std::string> table = LinesOf(BytesOf("Track.txt"));
    ASSERT_EQ(table.size(), expected.size() + 4);
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(std::stod(table[i + 4]), expected[i], 0.01 * kSecond);
    EXPECT_EQ(o.boxes.messages.back().text, "Flare Track Exported");
}

// The satellite is the scan's own: whatever becomes of the list.
TEST_F(PendingTrackTest, AScanOutlivesItsSatellite) {
    AddCity("Torino", kTurin);
    o.events.hook = [this] {
        Working() = SatRecord();
        o.app.Data.SatCount = 0;
    };
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_GE(o.events.served, 1);
    EXPECT_FALSE(run.CityScanPending);
}

TEST_F(PendingTrackTest, AClosingProgramBreaksAScanOffWithoutAWord) {
    AddCity("Torino", kTurin);
    o.events.hook = [this] { run.Closing = true; };
    mnuFindCityTrack_Click(o.app);
    FinishPendingTrack(o.app);
    EXPECT_EQ(o.events.served, 1);
    EXPECT_TRUE(o.boxes.messages.empty());
}

TEST(Progress, IsShownInWholePercent) {
    ProgressControls form;
    SetProgress(form, 99.95);
    EXPECT_EQ(form.ProgressBar1.Value.Get(), 100);
    SetProgress(form, 41.89);
    EXPECT_EQ(form.ProgressBar1.Value.Get(), 41);
    SetProgress(form, 41.95);
    EXPECT_EQ(form.ProgressBar1.Value.Get(), 42);
    SetProgress(form, 1e9);
    EXPECT_EQ(form.ProgressBar1.Value.Get(), 100);
    SetProgress(form, -5);
    EXPECT_EQ(form.ProgressBar1.Value.Get(), 0);
    SetProgress(form, std::nan(""));
    EXPECT_EQ(form.ProgressBar1.Value.Get(), 0);
}

}  // namespace
}  // namespace glintara::observed_night
