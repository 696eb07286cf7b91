// The program as a user runs it: what it prints, and its exit codes.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Answer {
    int code = -1;
    std::string out;
    std::string err;
};

std::string Contents(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class Glint : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "glint_test_XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    Answer Call(const std::string& arguments) const {
        const std::string command = "cd " GLINTARA_SOURCE_DIR "/data/examples && " GLINT_PROGRAM " " + arguments +
                                    " >" + (folder_ / "out").string() + " 2>" + (folder_ / "err").string();
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), Contents(folder_ / "out"), Contents(folder_ / "err")};
    }

    std::string Write(const std::string& name, const std::string& text) const {
        const std::filesystem::path path = folder_ / name;
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }

    std::filesystem::path folder_;
};

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

const std::string kTurin = " --site 45.07,7.69,240 --from 2018-01-20T00:00:00Z";

TEST_F(Glint, ListsTheFlaresOfADayInOrderOfTime) {
    const Answer run = Call("flares --tle iridium.tle" + kTurin + " --hours 24 --within 30");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    const std::vector<std::string> lines = Lines(run.out);
    ASSERT_GE(lines.size(), 3U);  // two of heading
    EXPECT_EQ(lines[0].substr(0, 3), "UTC");
    for (std::size_t i = 2; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].substr(0, 10), "2018-01-20");
        EXPECT_NE(lines[i].find("IRIDIUM"), std::string::npos);
        if (i > 2) EXPECT_LT(lines[i - 1].substr(0, 21), lines[i].substr(0, 21));
    }
}

TEST_F(Glint, TellsTheSameInAllFormats) {
    const std::string question = "flares --tle iridium.tle" + kTurin + " --hours 24 --within 60 --format ";
    const auto text = Lines(Call(question + "text").out);
    const auto csv = Lines(Call(question + "csv").out);
    const auto json = nlohmann::json::parse(Call(question + "json").out);
    ASSERT_GT(json["flares"].size(), 2U);
    ASSERT_EQ(text.size(), json["flares"].size() + 2);
    ASSERT_EQ(csv.size(), json["flares"].size() + 1);
    EXPECT_EQ(csv[0].substr(0, 24), "utc,begin_utc,end_utc,jd");
    for (std::size_t i = 0; i < json["flares"].size(); ++i) {
        const auto& flare = json["flares"][i];
        const std::string utc = flare["utc"];
        EXPECT_EQ(csv[i + 1].substr(0, 24), utc);
        EXPECT_EQ(text[i + 2].substr(11, 5), utc.substr(11, 5));
        EXPECT_NE(csv[i + 1].find(flare["name"].get<std::string>()), std::string::npos);
        EXPECT_LT(flare["distance_km"].get<double>(), 60);
        EXPECT_LE(flare["begin_utc"], utc);
        EXPECT_LE(utc, flare["end_utc"]);
        EXPECT_GT(flare["satellite"]["elevation_deg"].get<double>(), 0);
    }
}

TEST_F(Glint, DistanceLimitsTheList) {
    const auto count = [&](const std::string& within) {
        return nlohmann::json::parse(
                   Call("flares --tle iridium.tle" + kTurin + " --format json --within " + within).out)["flares"]
            .size();
    };
    EXPECT_LT(count("5"), count("50"));
    EXPECT_LT(count("50"), count("500"));
}

TEST_F(Glint, NameTakesSatellitesInAnyCase) {
    const Answer run = Call("where --tle stations.tle" + kTurin + " --name hst --format csv");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Lines(run.out).size(), 2U);
    EXPECT_EQ(Call("where --tle stations.tle" + kTurin + " --name nobody").code, 1);
}

TEST_F(Glint, WhereTellsPlaces) {
    const Answer run = Call("where --tle geo.tle --site 0,0 --at 2018-01-20T12:00:00Z --format json");
    ASSERT_EQ(run.code, 0);
    const auto json = nlohmann::json::parse(run.out);
    ASSERT_GT(json["satellites"].size(), 10U);
    int high = 0;
    for (const auto& satellite : json["satellites"]) {
        const double height = satellite["height_km"];
        high += height > 35000 && height < 37000 ? 1 : 0;
    }
    EXPECT_GT(high, 10);  // the geosynchronous ring is 35786 km high
}

TEST_F(Glint, ReadsStandardInput) {
    const Answer run = Call("where --tle -" + kTurin + " --format csv < stations.tle");
    EXPECT_EQ(run.code, 0);
    EXPECT_GT(Lines(run.out).size(), 1U);
}

TEST_F(Glint, SouthernAndWesternPlacesAreNoOptions) {
    EXPECT_EQ(Call("where --tle stations.tle --site -33.9,-70.6 --at 2018-01-20").code, 0);
}

TEST_F(Glint, NoFlareIsNoError) {
    const Answer run = Call("flares --tle iridium.tle" + kTurin + " --hours 0.01 --within 1");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.substr(0, 20), "No flare within 1 km");
}

TEST_F(Glint, BadCommandLinesAreToldApart) {
    for (const std::string& arguments : std::vector<std::string>{
             "", "flares", "dance", "flares --tle iridium.tle", "flares --tle iridium.tle --site here",
             "flares --tle iridium.tle --site 1,2 --hours 0", "flares --tle iridium.tle --site 1,2 --hours nan",
             "flares --tle iridium.tle --site 1,2 --within -3", "flares --tle iridium.tle --site 1,2 --format xml",
             "where --tle iridium.tle --site 1,2 --at 2018-02-30"}) {
        const Answer run = Call(arguments);
        EXPECT_EQ(run.code, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err, "") << arguments;
    }
}

TEST_F(Glint, BadFilesAreToldApart) {
    const std::string noise = Write("noise.tle", std::string("\0\xff\r\n1\r\n2 \x80\r\n", 12));
    const std::string folder = folder_.string();
    for (const std::string& file : {noise, folder, std::string("missing.tle"), Write("empty.tle", "")}) {
        const Answer run = Call("flares --tle " + file + " --site 1,2 --from 2018-01-20");
        EXPECT_EQ(run.code, 1) << file;
        EXPECT_EQ(run.out, "") << file;
        EXPECT_EQ(run.err.substr(0, 7), "glint: ") << file;
    }
}

TEST_F(Glint, TellsWhereAFileGoesWrong) {
    std::string text = Contents(GLINTARA_SOURCE_DIR "/data/examples/stations.tle");
    const std::string file = Write("broken.tle", text + "SPUTNIK\n1 00002U 57001B   broken\n2 00002\n");
    const Answer run = Call("where --tle " + file + " --site 1,2 --at 2018-01-20");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("ERROR: Bad TLE Data"), std::string::npos);
    EXPECT_NE(run.err.find("SPUTNIK"), std::string::npos);
}

TEST_F(Glint, SaysThatSatellitesWithoutSurfacesDoNotFlare) {
    const Answer run = Call("flares --tle gps.tle --site 1,2 --from 2018-01-20");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("no satellite has surfaces"), std::string::npos);
}

TEST_F(Glint, WarnsOfOldElementsAndOldDates) {
    EXPECT_NE(Call("where --tle stations.tle --site 1,2 --at 2019-01-20").err.find("days away"), std::string::npos);
    EXPECT_NE(Call("where --tle stations.tle --site 1,2 --at 1999-01-20").err.find("2000"), std::string::npos);
}

TEST_F(Glint, TransitsNeedNoSurfaces) {
    const Answer run = Call("flares --transit --tle all.tle" + kTurin + " --within 20 --format json");
    EXPECT_EQ(run.code, 0);
    const auto json = nlohmann::json::parse(run.out);
    ASSERT_GT(json["flares"].size(), 0U);
    EXPECT_FALSE(json["flares"][0].contains("surface"));
    EXPECT_EQ(json["kind"], "transit");
}

TEST_F(Glint, HelpAndVersionSucceed) {
    EXPECT_EQ(Call("--help").code, 0);
    EXPECT_NE(Call("flares --help").out.find("--within"), std::string::npos);
    EXPECT_EQ(Call("--version").out.substr(0, 6), "glint ");
}

}  // namespace
