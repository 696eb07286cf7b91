// The program as a user runs it: what it prints, and its exit codes.

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/temporary_folder.h"

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
    Answer Call(const std::string& arguments) const {
        const std::string command = "cd " GLINTARA_SOURCE_DIR "/data/examples && " GLINT_PROGRAM " " + arguments;
        return Shell("{ " + command + "; }");
    }

    Answer Shell(const std::string& command) const {
        const std::string out = (folder_.Path() / "out").string();
        const std::string err = (folder_.Path() / "err").string();
        const int status = std::system((command + " >" + out + " 2>" + err).c_str());
        return {WEXITSTATUS(status), Contents(out), Contents(err)};
    }

    std::string Write(const std::string& name, const std::string& text) const {
        const std::filesystem::path path = folder_.Path() / name;
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }

    glintara::testing::TemporaryFolder folder_;
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
    // The list has two that were about to decay when their elements were taken.
    EXPECT_EQ(run.err,
              "glint: warning: left out where the elements give no orbit: IRIDIUM 6 [-] (24794), IRIDIUM 34 [-] "
              "(24969)\n");
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
    const std::string folder = folder_.Path().string();
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
    const auto sets = Lines(text).size() / 3;
    EXPECT_EQ(run.err, "glint: " + file + ": ERROR: Invalid TLE Text (" + std::to_string(sets) +
                           " satellites added before that). Set " + std::to_string(sets + 1) +
                           " (SPUTNIK), line 1: it is too short\n");
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

TEST_F(Glint, WhereTellsTheRange) {
    // On the equator the vertical goes through the Earth's centre, so that range, elevation and the distances of
    // observer and satellite from the centre belong to one triangle.
    const Answer run = Call("where --tle all.tle --site 0,10,0 --at 2018-01-20T12:00:00Z --format json");
    const auto json = nlohmann::json::parse(run.out);
    ASSERT_GT(json["satellites"].size(), 900U);
    for (const auto& satellite : json["satellites"]) {
        if (satellite["range_km"].is_null()) continue;
        const auto p = satellite["inertial_position_km"].get<std::vector<double>>();
        const double r = std::hypot(p.at(0), p.at(1), p.at(2));
        constexpr double kRadius = 6378.137;
        const double elevation = satellite["elevation_deg"].get<double>() * 3.14159265358979 / 180;
        const double horizontal = kRadius * std::cos(elevation);
        const double range = std::sqrt(r * r - horizontal * horizontal) - kRadius * std::sin(elevation);
        EXPECT_NEAR(satellite["range_km"].get<double>(), range, 1e-3) << satellite["name"];
    }
}

TEST_F(Glint, JsonNamesTheSurface) {
    const auto json =
        nlohmann::json::parse(Call("flares --tle iridium.tle" + kTurin + " --within 60 --format json").out);
    ASSERT_GT(json["flares"].size(), 2U);
    const auto csv = Lines(Call("flares --tle iridium.tle" + kTurin + " --within 60 --format csv").out);
    std::set<std::string> surfaces;
    for (std::size_t i = 0; i < json["flares"].size(); ++i) {
        const std::string surface = json["flares"][i]["surface"];
        surfaces.insert(surface);
        EXPECT_NE(csv[i + 1].find("," + surface + ","), std::string::npos) << csv[i + 1];
    }
    for (const std::string& surface : surfaces)
        EXPECT_TRUE(surface == "F" || surface == "L" || surface == "R") << surface;
    EXPECT_GT(surfaces.size(), 1U);
}

TEST_F(Glint, AnyNumberOfThreadsFindsTheSameToTheByte) {
    const std::string question = "flares --tle iridium.tle" + kTurin + " --hours 48 --within 200 --format csv";
    const Answer one = Call(question + " --threads 1");
    EXPECT_GT(Lines(one.out).size(), 20U);
    EXPECT_EQ(Call(question + " --threads 3").out, one.out);
    EXPECT_EQ(Call(question).out, one.out);
    for (const std::string& wrong : std::vector<std::string>{"-1", "1.5", "1000", "many"})
        EXPECT_EQ(Call(question + " --threads " + wrong).code, 2) << wrong;
}

TEST_F(Glint, UnknownWordsAreNamed) {
    const std::string seeHelp = "\nRun with --help for more information.\n";
    EXPECT_EQ(Call("bogus").err, "glint: no such command: bogus" + seeHelp);
    EXPECT_EQ(Call("").err, "glint: tell what to do: flares, track, cities or where" + seeHelp);
    EXPECT_EQ(Call("--quick flares").err, "glint: no such option: --quick" + seeHelp);
    EXPECT_EQ(Call("where --tle geo.tle --site 1,2 --fast").err, "glint: no such option: --fast" + seeHelp);
    EXPECT_EQ(Call("where there").err, "glint: no such argument: there" + seeHelp);
    EXPECT_EQ(Call("where").err, "glint: --tle is required" + seeHelp);
}

TEST_F(Glint, WrongChoicesAndNumbersAreToldInWords) {
    const std::string iridium = "flares --tle iridium.tle --site 1,2 ";
    EXPECT_EQ(Call(iridium + "--format xml").err, "glint: --format \"xml\": choose text, csv or json\n");
    EXPECT_EQ(Call(iridium + "--hours soon").err, "glint: --hours \"soon\": not a number\n");
    EXPECT_EQ(Call(iridium + "--within 1,5").err, "glint: --within \"1,5\": not a number\n");
    EXPECT_EQ(Call("where --tle geo.tle --site 1,2 --at 2018-01-20 --format CSV").code, 0);
}

TEST_F(Glint, AnEmptyInstantIsNotNow) {
    for (const std::string& arguments : std::vector<std::string>{"flares --tle iridium.tle --site 1,2 --from ''",
                                                                 "where --tle geo.tle --site 1,2 --at ''"}) {
        const Answer run = Call(arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err.substr(0, 26), "glint: \"\" is no instant; w") << run.err;
    }
    EXPECT_EQ(Call("where --tle geo.tle --site 1,2 --at=").code, 2);
}

// The space station of September 2008 in the forms that element sets come in: the answer is the same to the last digit.
TEST_F(Glint, ReadsElementSetsInEveryForm) {
    const std::string call = " --site 48,11 --at 2008-09-20T13:00:00Z --format json";
    const std::string lines = Write("sets.tle",
                                    "ISS\n1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927\n"
                                    "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537\n");
    const Answer expected = Call("where --tle " + lines + call);
    ASSERT_EQ(expected.code, 0) << expected.err;
    const std::string head =
        "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,"
        "MEAN_ANOMALY,NORAD_CAT_ID,BSTAR\n";
    const std::string row =
        ",1998-067A,2008-09-20T12:25:40.104192,15.72125391,.0006703,51.6416,247.4627,130.5360,325.0288,";
    const std::string table = Write("sets.csv", head + "ISS" + row + "25544,-.11606E-4\n");
    const Answer answer = Call("where --tle " + table + call);
    EXPECT_EQ(answer.err, expected.err);
    EXPECT_EQ(answer.out, expected.out);
    const Answer piped = Call("where --tle - " + call + " < " + table);
    EXPECT_EQ(piped.out, expected.out);

    const std::string more = Write("more.csv", head + "FAR" + row + "400000,0\nISS" + row + "25544,-.11606E-4\n");
    const Answer warned = Call("where --tle " + more + call);
    EXPECT_EQ(warned.code, 0);
    EXPECT_EQ(warned.out, expected.out);
    EXPECT_EQ(warned.err, "glint: warning: " + more +
                              ": 1 of 2 records left out: 1 has a number above 339999, FAR (400000)\n" + expected.err);

    const std::string vain = Write("vain.csv", head + "ISS" + row + "25544,\n");
    const Answer refused = Call("where --tle " + vain + call);
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err,
              "glint: " + vain + ": 1 of 1 record left out: 1 cannot be used, record 1 (ISS): BSTAR is missing\n");
}

TEST_F(Glint, StandardInputIsLimitedLikeAFile) {
    const Answer endless = Call("where --tle - --site 1,2 < /dev/zero");
    EXPECT_EQ(endless.code, 1);
    EXPECT_EQ(endless.err, "glint: standard input: it is larger than 32 MiB\n");
    const Answer pipe = Call("where --tle <(cat geo.tle) --site 1,2");
    EXPECT_NE(pipe.code, 0);
}

TEST_F(Glint, FilesThatCannotBeReadSayWhy) {
    EXPECT_EQ(Call("where --tle missing.tle --site 1,2").err, "glint: missing.tle: there is no such file\n");
    EXPECT_EQ(Call("where --tle . --site 1,2").err, "glint: .: it is a folder\n");
    EXPECT_EQ(Call("where --tle /dev/zero --site 1,2").err, "glint: /dev/zero: it is no plain file\n");
}

TEST_F(Glint, NamesShowNoControlCharacters) {
    std::string sets = Contents(GLINTARA_SOURCE_DIR "/data/examples/iridium.tle");
    sets.replace(0, sets.find('\n'), "\x1b[2JIRIDIUM\tX\x7f");
    const std::string file = Write("control.tle", sets);
    for (const std::string& format : std::vector<std::string>{"text", "csv", "json"}) {
        const std::string common = " --tle " + file + " --name x --format " + format + kTurin;
        for (const std::string& command : std::vector<std::string>{"where", "flares --hours 72 --within 500"}) {
            const Answer run = Call(command + common);
            EXPECT_EQ(run.code, 0) << run.err;
            EXPECT_NE(run.out.find("?[2JIRIDIUM?X?"), std::string::npos) << run.out;
            EXPECT_TRUE(std::none_of(run.out.begin(), run.out.end(),
                                     [](unsigned char c) { return (c < ' ' && c != '\n') || c == 0x7F; }));
        }
    }
}

TEST_F(Glint, WhereAPropagationFailsThereAreNoNumbers) {
    const std::string question = "where --tle iridium.tle --site 1,2 --at 2100-01-01 --format ";
    const auto json = nlohmann::json::parse(Call(question + "json").out);
    const auto text = Lines(Call(question + "text").out);
    const auto csv = Lines(Call(question + "csv").out);
    int failed = 0;
    int good = 0;
    for (std::size_t i = 0; i < json["satellites"].size(); ++i) {
        const auto& satellite = json["satellites"][i];
        const std::string light = satellite["light"];
        const bool fails = light == "no orbit" || light == "decayed";
        (fails ? failed : good) += 1;
        for (const char* quantity : {"azimuth_deg", "elevation_deg", "range_km", "latitude_deg", "longitude_deg",
                                     "height_km", "inertial_position_km", "inertial_velocity_km_s"})
            EXPECT_EQ(satellite[quantity].is_null(), fails) << quantity;
        EXPECT_EQ(csv[i + 1].find(",,,,,,," + light + ",,,,,,") != std::string::npos, fails) << csv[i + 1];
        EXPECT_EQ(text[i + 4].find(" -  ") != std::string::npos, fails) << text[i + 4];
        if (fails)
            EXPECT_EQ(std::count(text[i + 4].begin(), text[i + 4].end(), '-'),
                      9 + (text[i + 4].find("[-]") != std::string::npos));
    }
    EXPECT_GT(failed, 5);
    EXPECT_GT(good, 5);
}

TEST_F(Glint, FlaresOfFailingPropagationsAreLeftOutAndTold) {
    const Answer run =
        Call("flares --tle iridium.tle --site 45,7 --from 2100-01-01 --hours 6 --within 20000 --format csv");
    EXPECT_EQ(run.code, 0);
    const auto at = run.err.find("left out where the elements give no orbit: ");
    ASSERT_NE(at, std::string::npos) << run.err;
    EXPECT_NE(run.err.find("IRIDIUM 6 [-] (24794)"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find(" more\n"), std::string::npos) << run.err;
    EXPECT_GT(Lines(run.out).size(), 1U);
    EXPECT_EQ(run.out.find(",24794,"), std::string::npos);
    EXPECT_EQ(Call("flares --tle iridium.tle --name 7" + kTurin).err, "") << "what takes no part is not told of";
}

TEST_F(Glint, OutputThatDoesNotArriveIsNoSuccess) {
    for (const std::string& arguments : std::vector<std::string>{"--help", "--version", "where --help",
                                                                 "where --tle geo.tle --site 1,2 --at 2018-01-20"}) {
        for (const char* sink : {">/dev/full", ">&-"}) {
            const Answer run = Call(arguments + " " + sink);
            EXPECT_EQ(run.code, 1) << arguments << sink;
            EXPECT_EQ(run.err, "glint: the output could not be written\n") << arguments << sink;
        }
    }
}

// The address sanitizer takes terabytes of address space by itself, and cannot run where there is so little.
#ifndef __SANITIZE_ADDRESS__
TEST_F(Glint, RunningOutOfMemoryEndsWithASentence) {
    std::string sets;
    const std::string example = Contents(GLINTARA_SOURCE_DIR "/data/examples/all.tle");
    while (sets.size() + example.size() < (std::size_t{16} << 20)) sets += example;
    const std::string file = Write("large.tle", sets);
    const Answer run = Call("where --tle geo.tle --tle " + file + " --site 1,2");
    EXPECT_EQ(run.err.find("memory"), std::string::npos);
    const Answer poor = Shell("( ulimit -v 60000; exec " GLINT_PROGRAM " where --tle " + file + " --site 1,2 )");
    EXPECT_EQ(poor.code, 1);
    EXPECT_EQ(poor.err, "glint: out of memory\n");
}
#endif

TEST_F(Glint, AnInterruptPrintsWhatWasFoundSoFar) {
    // On a terminal the search tells how far it is; once it does, it is interrupted. A year takes minutes.
    const std::string out = (folder_.Path() / "out").string();
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (freopen(out.c_str(), "w", stdout) == nullptr) _exit(99);
        execl(GLINT_PROGRAM, "glint", "flares", "--transit", "--tle", GLINTARA_SOURCE_DIR "/data/examples/all.tle",
              "--site", "45,7", "--from", "2018-01-20", "--hours", "8784", "--within", "2000", "--format", "json",
              nullptr);
        _exit(98);
    }
    std::string seen;
    std::array<char, 256> part;
    while (seen.find(" %") == std::string::npos) {
        const ssize_t count = read(terminal, part.data(), part.size());
        if (count <= 0) break;
        seen.append(part.data(), static_cast<std::size_t>(count));
    }
    kill(child, SIGINT);
    while (read(terminal, part.data(), part.size()) > 0) {
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    close(terminal);
    EXPECT_NE(seen.find("Searching... "), std::string::npos) << seen;
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    const auto json = nlohmann::json::parse(Contents(out));
    EXPECT_EQ(json["interrupted"], true);
    EXPECT_GT(json["flares"].size(), 0U);
}

const std::string kIridium32 = " --tle iridium.tle --name 'iridium 32' --from 2018-01-20T05:00:00Z";

// What `glint flares` finds over Turin at 05:03:23.6 that day, at 45.070 north and 7.657 east.
TEST_F(Glint, FollowsAFlareOverTheGround) {
    const Answer run = Call("track" + kIridium32 + " --orbits 0.1");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    const auto lines = Lines(run.out);
    ASSERT_GT(lines.size(), 12U);
    EXPECT_EQ(lines[0], "Generated by Glintara - By Ostelvane");
    EXPECT_EQ(lines[1], "");
    EXPECT_EQ(lines[2], "JD, Date, Time, Longitude E [deg], Geodetic Latitude N [deg], Sun-Mirror Angle [deg]");
    EXPECT_EQ(lines[3], "");
    EXPECT_EQ(lines[4].substr(0, 43), " 2458138.7083333335 20/01/2018  05h00'00\" 7");
    // Between two steps of half a minute the latitude passes that of Turin, in proportion.
    const auto latitudeOf = [](const std::string& line) {
        std::istringstream in(line.substr(line.find('"') + 1));
        double lon = 0;
        double lat = 0;
        in >> lon >> lat;
        return lat;
    };
    const double wanted = 2458138.5 + (5 * 3600 + 3 * 60 + 23.6) / 86400;
    for (std::size_t i = 5; i < lines.size(); ++i) {
        const double before = std::stod(lines[i - 1]);
        const double after = std::stod(lines[i]);
        if (before > wanted || after < wanted) continue;
        const double part = (wanted - before) / (after - before);
        const double lat = latitudeOf(lines[i - 1]) * (1 - part) + latitudeOf(lines[i]) * part;
        EXPECT_NEAR(lat, 45.070, 0.005);
        return;
    }
    FAIL() << "no line about that time";
}

// A reader that knows nothing of this program finds the line where the table has it.
TEST_F(Glint, MapReadersTakeTheTrack) {
    const std::string kml = (folder_.Path() / "track.kml").string();
    const std::string table = (folder_.Path() / "track.txt").string();
    const Answer run = Call("track" + kIridium32 + " --day --kml " + kml + " --table " + table);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "") << "all of it is in the files";
    EXPECT_EQ(Shell("xmllint --noout " + kml).code, 0);
    const Answer read = Shell("ogrinfo -ro -al -q " + kml);
    ASSERT_EQ(read.code, 0) << read.err;
    std::vector<std::pair<double, double>> places;
    for (const std::string& line : Lines(read.out)) {
        std::size_t at = line.find("LINESTRING");
        if (at == std::string::npos) continue;
        std::istringstream in(line.substr(line.find('(', at) + 1));
        double lon = 0;
        double lat = 0;
        double height = 0;
        char comma = 0;
        while (in >> lon >> lat >> height) {
            places.emplace_back(lon, lat);
            in >> comma;
        }
    }
    const std::vector<std::string> lines = Lines(Contents(table));
    ASSERT_EQ(places.size() + 4, lines.size());
    ASSERT_GT(places.size(), 100U);
    for (std::size_t i = 0; i < places.size(); ++i) {
        std::istringstream in(lines[i + 4].substr(lines[i + 4].find('"') + 1));
        double lon = 0;
        double lat = 0;
        in >> lon >> lat;
        EXPECT_NEAR(places[i].first, lon + 0.005, 0.00501) << lines[i + 4];
        EXPECT_NEAR(places[i].second, lat + 0.0005, 0.00051) << lines[i + 4];
    }
    EXPECT_NE(read.out.find("Flare Track (20/01/2018 05h00'00\")"), std::string::npos);
}

TEST_F(Glint, TracksAreOneSatellites) {
    const Answer many = Call("track --tle iridium.tle --from 2018-01-20");
    EXPECT_EQ(many.code, 2);
    EXPECT_NE(many.err.find("a track is one satellite's; tell by --name which: "), std::string::npos) << many.err;
    EXPECT_NE(many.err.find(" or one of 81 more"), std::string::npos) << many.err;
    EXPECT_EQ(Call("track --tle iridium.tle --name 'IRIDIUM 9' --from 2018-01-20").code, 2);
    EXPECT_EQ(Call("track --tle iridium.tle --name 'iridium 91 [+]' --from 2018-01-20").code, 0) << "the whole name";
    EXPECT_EQ(Call("track --tle iridium.tle --name Sputnik --from 2018-01-20").code, 1);
    const Answer station = Call("track --tle stations.tle --name zarya --from 2018-01-20");
    EXPECT_EQ(station.code, 1);
    EXPECT_NE(station.err.find("ISS (ZARYA) has no surfaces to flare"), std::string::npos) << station.err;
    EXPECT_GT(Lines(Call("track --tle stations.tle --name zarya --from 2018-01-20 --transit").out).size(), 50U);
}

TEST_F(Glint, WhatATrackCannotBeIsTold) {
    for (const char* orbits : {"0", "-1", "51", "many"})
        EXPECT_EQ(Call("track" + kIridium32 + " --orbits " + orbits).code, 2) << orbits;
    EXPECT_EQ(Call("cities" + kIridium32 + " --population -1").code, 2);
    const Answer nowhere = Call("track" + kIridium32 + " --kml " + (folder_.Path() / "none" / "a.kml").string());
    EXPECT_EQ(nowhere.code, 1);
    EXPECT_NE(nowhere.err.find("a.kml: there is no such folder"), std::string::npos) << nowhere.err;
    const std::string one = (folder_.Path() / "one").string();
    const Answer same = Call("track" + kIridium32 + " --kml " + one + " --table " + one);
    EXPECT_EQ(same.code, 2);
    EXPECT_NE(same.err.find("--kml and --table name the same file"), std::string::npos) << same.err;
    EXPECT_FALSE(std::filesystem::exists(one));
    const Answer noCities = Call("cities" + kIridium32 + " --data " + folder_.Path().string());
    EXPECT_EQ(noCities.code, 1);
    EXPECT_NE(noCities.err.find("DB005.VDB"), std::string::npos) << noCities.err;
}

TEST_F(Glint, ListsTheCitiesUnderATrack) {
    const Answer run = Call("cities" + kIridium32 + " --data ..");
    EXPECT_EQ(run.code, 0);
    const auto lines = Lines(run.out);
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[0], "List of cities along the track (less than 5 km from the track)");
    EXPECT_EQ(lines[1], "");
    EXPECT_EQ(lines[2], "20/01/2018 05h03'23\"  IT - Turin");
    const auto small = Lines(Call("cities" + kIridium32 + " --data .. --population 5000").out);
    EXPECT_GT(small.size(), lines.size());
    EXPECT_NE(std::ranges::find(small, lines[2]), small.end());

    // From the text, when it is the only one.
    std::filesystem::create_directory(folder_.Path() / "data");
    std::filesystem::copy(GLINTARA_SOURCE_DIR "/data/cities1000.txt", folder_.Path() / "data");
    const Answer fromText = Call("cities" + kIridium32 + " --data " + (folder_.Path() / "data").string());
    EXPECT_EQ(fromText.out, run.out);
}

TEST_F(Glint, HelpAndVersionSucceed) {
    EXPECT_EQ(Call("--help").code, 0);
    EXPECT_NE(Call("flares --help").out.find("--within"), std::string::npos);
    EXPECT_EQ(Call("--version").out.substr(0, 6), "glint ");
}

}  // namespace
