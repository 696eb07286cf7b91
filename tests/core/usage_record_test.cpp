#include "core/usage_record.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>

#include "core/program_fixture.h"

namespace glintara::testing {
namespace {

struct UsageRecordTest : ::testing::Test {
    std::string Bytes() const {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void Write(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }

    static bool AreTenDigits(const std::string& text) {
        return text.size() == 10 && std::all_of(
                                        text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    }

    TemporaryFolder folder;
    std::filesystem::path path = folder.Path() / "glt.ini";
    ManualClock clock{{2018, 1, 20, 17, 42, 9.31}};
    RecordingBrowser browser;
    UsageStats stats;
    UsageRecord record{stats, clock, browser, path};

    void SetUp() override { record.SetNewsHost("https://news.example"); }
};

TEST_F(UsageRecordTest, AFirstRun) {
    record.CountStart();
    EXPECT_EQ(stats.StartCount, 1);
    EXPECT_EQ(stats.MirrorAddCount, 0);
    EXPECT_EQ(stats.TLECount, 0);
    EXPECT_EQ(stats.LastCheckJD, 0);
    EXPECT_TRUE(AreTenDigits(stats.RandomID)) << stats.RandomID;
    record.CheckForUpdate(3, false);
    EXPECT_EQ(browser.opened.size(), 1U);
}

TEST_F(UsageRecordTest, TheFileByteByByte) {
    stats = {0x01020304, -2, 300, "0123456789", 2458139.5};
    record.SaveStat();
    const std::string expected(
        "\x04\x03\x02\x01\xFE\xFF\xFF\xFF\x2C\x01\x00\x00\x0A\x00"
        "0123456789"
        "\x00\x00\x00\xC0\x0D\xC1\x42\x41",
        32);
    EXPECT_EQ(Bytes(), expected);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1) << "nothing is left beside it";
}

TEST_F(UsageRecordTest, WhatWasWrittenIsReadBack) {
    stats = {7, 8, 9, "9876543210", 2458139.23761};
    record.SaveStat();
    stats = {};
    record.LoadStat();
    EXPECT_EQ(stats.StartCount, 7);
    EXPECT_EQ(stats.MirrorAddCount, 8);
    EXPECT_EQ(stats.TLECount, 9);
    EXPECT_EQ(stats.RandomID, "9876543210");
    EXPECT_EQ(stats.LastCheckJD, 2458139.23761);
    record.CountStart();
    EXPECT_EQ(stats.StartCount, 8);
    EXPECT_EQ(stats.RandomID, "9876543210") << "made once";
}

TEST_F(UsageRecordTest, AFileThatIsNoRecordMeansAFirstRun) {
    stats = {7, 8, 9, "9876543210", 2458139.5};
    record.SaveStat();
    const std::string good = Bytes();
    std::string query = good;
    query.replace(14, 10, "&x=12345&y");
    std::string longId = good;
    longId[12] = '\x0B';
    std::string never = good;
    never.replace(24, 8, std::string(6, '\0') + "\xF8\x7F");  // not a number
    for (const std::string& bad :
         {std::string(), good.substr(0, 31), good + "x", query, longId, never, std::string(100000, 'x')}) {
        Write(bad);
        stats.StartCount = 99;
        record.LoadStat();
        EXPECT_EQ(stats.StartCount, 0) << bad.size();
        EXPECT_EQ(stats.LastCheckJD, 0);
        EXPECT_TRUE(AreTenDigits(stats.RandomID));
        EXPECT_NE(stats.RandomID, "9876543210");
    }
}

TEST_F(UsageRecordTest, AFullCounterStays) {
    stats = {std::numeric_limits<std::int32_t>::max(), 0, 0, "9876543210", 0};
    record.SaveStat();
    record.CountStart();
    EXPECT_EQ(stats.StartCount, std::numeric_limits<std::int32_t>::max());
}

TEST_F(UsageRecordTest, AFolderThatCannotBeWrittenIsNoFault) {
    UsageRecord lost{stats, clock, browser, folder.Path() / "not there" / "glt.ini"};
    lost.CountStart();
    EXPECT_EQ(stats.StartCount, 1);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(UsageRecordTest, IdentifiersDiffer) {
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) {
        clock.Stall(37);
        seen.insert(record.MakeRNDID());
    }
    EXPECT_GT(seen.size(), 195U);
    for (const std::string& id : seen) EXPECT_TRUE(AreTenDigits(id)) << id;
}

TEST_F(UsageRecordTest, TheQuery) {
    stats = {12, 34, 5678, "0123456789", 0};
    EXPECT_EQ(record.MakeStatString(), "?r=0123456789&c=12&t=5678&m=34&v=152");
    record.ConnectStat();
    ASSERT_EQ(browser.opened.size(), 1U);
    EXPECT_EQ(browser.opened[0], "https://news.example/Glintara/update.html?r=0123456789&c=12&t=5678&m=34&v=152");
}

TEST_F(UsageRecordTest, WithoutAHostNothingIsOpened) {
    record.SetNewsHost("");
    record.ConnectStat();
    EXPECT_TRUE(browser.opened.empty());
}

TEST_F(UsageRecordTest, TheHostIsAPackagersWebsite) {
    EXPECT_EQ(NewsHost("https://example.org", {folder.Path()}), "https://example.org");
    EXPECT_EQ(NewsHost("https://example.org/", {}), "https://example.org");
    EXPECT_EQ(NewsHost("", {}), "");
}

TEST_F(UsageRecordTest, OrTheFolderThatHoldsThePage) {
    const std::filesystem::path odd = folder.Path() / "S\xC3\xA3o 100%?#";
    std::filesystem::create_directories(odd / "Glintara");
    EXPECT_EQ(NewsHost("", {folder.Path(), odd}), "file://" + folder.Path().string()) << "none has it: the first";
    std::ofstream(odd / "Glintara" / "update.html") << "news";
    EXPECT_EQ(NewsHost("", {folder.Path(), odd}), "file://" + folder.Path().string() + "/S%C3%A3o%20100%25%3F%23");
    EXPECT_EQ(NewsHost("", {odd / ""}), "file://" + folder.Path().string() + "/S%C3%A3o%20100%25%3F%23");
    EXPECT_EQ(NewsHost("", {"/"}), "file://");
}

TEST_F(UsageRecordTest, WhoeverSetsItIsToldWhatNoBrowserOpened) {
    std::vector<std::string> told;
    record.SetAddressTeller([&told](const std::string& address) { told.push_back(address); });
    record.ConnectStat();
    EXPECT_TRUE(told.empty());
    browser.fails = true;
    record.ConnectStat();
    ASSERT_EQ(browser.opened.size(), 2U);
    EXPECT_EQ(told, std::vector<std::string>{"https://news.example/Glintara/update.html"});
}

TEST_F(UsageRecordTest, ThePageIsOpenedAgainAfterTheInterval) {
    record.CountStart();
    record.CheckForUpdate(3, false);
    EXPECT_EQ(browser.opened.size(), 1U);
    EXPECT_NEAR(stats.LastCheckJD, 2458139.2376042, 1e-6) << "17:42:09, whole seconds";
    clock.Stall(std::int64_t{3} * 86400 * 1000);
    record.CheckForUpdate(3, false);
    EXPECT_EQ(browser.opened.size(), 1U) << "exactly three days are not more than three";
    clock.Stall(2000);
    record.CheckForUpdate(3, false);
    EXPECT_EQ(browser.opened.size(), 2U);
    stats.LastCheckJD = 0;
    record.LoadStat();
    EXPECT_NEAR(stats.LastCheckJD, 2458142.2376, 1e-3) << "the date is kept in the file";
}

TEST_F(UsageRecordTest, AnIntervalOfZeroOpensItAtEachStart) {
    record.CheckForUpdate(0, false);
    clock.Stall(1000);
    record.CheckForUpdate(0, false);
    EXPECT_EQ(browser.opened.size(), 2U);
}

TEST_F(UsageRecordTest, ACheckInTheFutureHasElapsed) {
    record.CheckForUpdate(3, false);
    UsageRecord earlier{stats, clock, browser, path};
    earlier.SetNewsHost("https://news.example");
    clock.Stall(-std::int64_t{86400} * 1000);
    earlier.CheckForUpdate(3, false);
    EXPECT_EQ(browser.opened.size(), 2U);
}

TEST_F(UsageRecordTest, ForceOpensItAlways) {
    record.CheckForUpdate(3, false);
    record.CheckForUpdate(3, true);
    EXPECT_EQ(browser.opened.size(), 2U);
}

TEST_F(UsageRecordTest, TheDateIsThatOfLocalTime) {
    clock.zoneHours = -18;
    record.CheckForUpdate(3, false);
    EXPECT_NEAR(stats.LastCheckJD, 2458139.2376042 - 0.75, 1e-6);
}

}  // namespace
}  // namespace glintara::testing
