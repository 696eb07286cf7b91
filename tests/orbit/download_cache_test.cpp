#include "orbit/download_cache.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <fstream>
#include <string>

#include "orbit/files.h"
#include "support/ordinary_user.h"
#include "support/temporary_folder.h"

namespace glintara {
namespace {

constexpr double kNow = 2461367.5;
constexpr double kMinute = 1 / 1440.0;
const std::string kAddress = "https://celestrak.org/NORAD/elements/gp.php?GROUP=geo&FORMAT=csv";

struct DownloadCacheTest : ::testing::Test {
    std::string ReadFile() const { return ReadWholeFile(cache.FileOf(kAddress), 1 << 20).value_or("none"); }
    void WriteFile(const std::string& bytes) const { std::ofstream(cache.FileOf(kAddress), std::ios::binary) << bytes; }

    testing::TemporaryFolder folder;
    DownloadCache cache{folder.Path() / "downloads"};
};

TEST_F(DownloadCacheTest, ATextComesBackAsItWentInWithItsAge) {
    const std::string text("line\r\n\n\0caf\xC3\xA9 \xFF\n", 17);
    cache.Keep(kAddress, text, kNow);
    const auto kept = cache.Find(kAddress, kNow + 35 * kMinute);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->text, text);
    EXPECT_NEAR(kept->age, 35 * kMinute, 1e-8);
}

TEST_F(DownloadCacheTest, LastsForTwoHours) {
    cache.Keep(kAddress, "text", kNow);
    EXPECT_TRUE(cache.Find(kAddress, kNow));
    EXPECT_TRUE(cache.Find(kAddress, kNow + 119 * kMinute));
    EXPECT_FALSE(cache.Find(kAddress, kNow + 120 * kMinute));
    EXPECT_FALSE(cache.Find(kAddress, kNow + 400));
    cache.Keep(kAddress, "text", 0);  // from where two hours are the very number
    EXPECT_FALSE(cache.Find(kAddress, kKeptDays));
    EXPECT_TRUE(cache.Find(kAddress, std::nextafter(kKeptDays, 0)));
}

TEST_F(DownloadCacheTest, LastsLongerForWhoAsksForIt) {
    cache.Keep(kAddress, "text", kNow);
    const auto kept = cache.Find(kAddress, kNow + 0.9, 1);
    ASSERT_TRUE(kept);
    EXPECT_NEAR(kept->age, 0.9, 1e-8);
    EXPECT_FALSE(cache.Find(kAddress, kNow + 1, 1));
}

TEST_F(DownloadCacheTest, ATextOfTheFutureIsNotUsed) {
    cache.Keep(kAddress, "text", kNow);
    EXPECT_FALSE(cache.Find(kAddress, kNow - kMinute)) << "the clock was set back";
    cache.Keep(kAddress, "again", kNow - kMinute);
    EXPECT_EQ(cache.Find(kAddress, kNow - kMinute)->text, "again");
}

TEST_F(DownloadCacheTest, ANewTextTakesThePlaceOfTheOld) {
    cache.Keep(kAddress, "a long text of yesterday", kNow - 1);
    cache.Keep(kAddress, "today", kNow);
    EXPECT_EQ(cache.Find(kAddress, kNow)->text, "today");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path() / "downloads"), {}), 1);
}

TEST_F(DownloadCacheTest, EachAddressHasItsOwn) {
    const std::string other = "https://celestrak.org/NORAD/elements/gp.php?GROUP=geo&FORMAT=tle";
    cache.Keep(kAddress, "table", kNow);
    cache.Keep(other, "lines", kNow);
    EXPECT_EQ(cache.Find(kAddress, kNow)->text, "table");
    EXPECT_EQ(cache.Find(other, kNow)->text, "lines");
    EXPECT_FALSE(cache.Find(kAddress + "x", kNow));
}

// Two addresses that differ only in what a file's name cannot hold share a file, and none gets the other's text.
TEST_F(DownloadCacheTest, AFileOfAnotherAddressIsPassedOver) {
    const std::string other = "https://celestrak.org/NORAD/elements/gp.php_GROUP=geo&FORMAT=csv";
    ASSERT_EQ(cache.FileOf(other), cache.FileOf(kAddress));
    cache.Keep(other, "other", kNow);
    EXPECT_FALSE(cache.Find(kAddress, kNow));
    EXPECT_TRUE(cache.Find(other, kNow));
}

TEST_F(DownloadCacheTest, TheNameOfAFileStaysInItsFolderAndWithinItsLength) {
    const std::string wild = "https://h/../../" + std::string(1000, 'x') + "/\n\x01?a";
    EXPECT_EQ(cache.FileOf(wild).parent_path(), folder.Path() / "downloads");
    cache.Keep(wild, "text", kNow);
    EXPECT_LE(cache.FileOf(wild).filename().string().size(), 200U);
    EXPECT_EQ(cache.FileOf("https://h/..").filename().string().find('.'), 4U) << cache.FileOf("https://h/..");
}

TEST_F(DownloadCacheTest, DamageIsNoticedWhereverItIs) {
    cache.Keep(kAddress, "the text of the file", kNow);
    const std::string whole = ReadFile();
    ASSERT_TRUE(cache.Find(kAddress, kNow));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        WriteFile(damaged);
        const auto kept = cache.Find(kAddress, kNow);
        // A time that is another, within the two hours, does no harm; all else must show.
        if (kept) EXPECT_EQ(kept->text, "the text of the file");
        const bool inTime =
            at > whole.find(kAddress) + kAddress.size() && at < whole.find('\n', whole.find("\n24") + 1);
        EXPECT_FALSE(kept && !inTime) << at;
    }
    for (std::size_t size = 0; size < whole.size(); ++size) {
        WriteFile(whole.substr(0, size));
        EXPECT_FALSE(cache.Find(kAddress, kNow)) << size;
    }
    WriteFile(whole + "x");
    EXPECT_FALSE(cache.Find(kAddress, kNow));
    WriteFile(std::string(100000, '\n'));
    EXPECT_FALSE(cache.Find(kAddress, kNow));
}

TEST_F(DownloadCacheTest, AFolderThatCannotBeWrittenKeepsNothingAndHurtsNobody) {
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
    {
        const testing::OrdinaryUser user;
        cache.Keep(kAddress, "text", kNow);
        EXPECT_FALSE(cache.Find(kAddress, kNow));
    }
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    EXPECT_EQ(folder.FileCount(), 0);
}

TEST_F(DownloadCacheTest, AFolderInPlaceOfAFileIsPassedOver) {
    std::filesystem::create_directories(cache.FileOf(kAddress));
    cache.Keep(kAddress, "text", kNow);
    EXPECT_FALSE(cache.Find(kAddress, kNow));
}

TEST_F(DownloadCacheTest, AnAgeReadsAsItIsSpoken) {
    EXPECT_EQ(AgeText(0), "less than a minute");
    EXPECT_EQ(AgeText(0.99 * kMinute), "less than a minute");
    EXPECT_EQ(AgeText(1.01 * kMinute), "1 minute");
    EXPECT_EQ(AgeText(35.5 * kMinute), "35 minutes");
    EXPECT_EQ(AgeText(60.5 * kMinute), "1 hour");
    EXPECT_EQ(AgeText(80.5 * kMinute), "1 hour 20 minutes");
    EXPECT_EQ(AgeText(121.5 * kMinute), "2 hours 1 minute");
}

}  // namespace
}  // namespace glintara
