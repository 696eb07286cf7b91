#include "core/usage_record.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <system_error>

#include "engine/astro/number_text.h"
#include "orbit/files.h"
#include "orbit/little_endian.h"
#include "state/version.h"

namespace glintara {

namespace {

constexpr std::size_t kIdDigits = 10;

constexpr std::size_t kRecordBytes = 3 * kIntegerBytes + kLengthBytes + kIdDigits + kRealBytes;

std::string Encode(const UsageStats& stats) {
    ByteWriter writer;
    writer.Integer(stats.StartCount);
    writer.Integer(stats.MirrorAddCount);
    writer.Integer(stats.TLECount);
    writer.Text(stats.RandomID);
    writer.Real(stats.LastCheckJD);
    return writer.Take();
}

/// The record of a file; nothing for a file that this program has not written. The identifier goes into an address, so
/// it must be digits.
std::optional<UsageStats> Decode(std::string_view bytes) {
    if (bytes.size() != kRecordBytes) return std::nullopt;
    ByteReader reader(bytes);
    UsageStats stats;
    stats.StartCount = reader.Integer();
    stats.MirrorAddCount = reader.Integer();
    stats.TLECount = reader.Integer();
    stats.RandomID = reader.Text();
    stats.LastCheckJD = reader.Real();
    const bool digits = std::all_of(stats.RandomID.begin(), stats.RandomID.end(), IsDigit);
    if (stats.RandomID.size() != kIdDigits || !digits || !std::isfinite(stats.LastCheckJD)) return std::nullopt;
    return stats;
}

/// The digits of the version alone, as the news page reads it.
std::string VersionDigits() {
    std::string digits(kVersion);
    std::erase(digits, '.');
    return digits;
}

/// The clock as whole seconds of local time, as a Julian date.
double LocalDate(const ComputerClock& clock) {
    CalendarFields now = clock.ReadLocal();
    now.second = std::floor(now.second);
    return DateToJD(now);
}

/// Whether a byte of a path stands in an address as it is (RFC 3986, unreserved characters and the slash).
bool StandsInAddress(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || IsDigit(c) ||
           std::string_view("-._~/").find(c) != std::string_view::npos;
}

std::string FileAddress(std::string_view path) {
    constexpr std::string_view kHexDigits = "0123456789ABCDEF";
    std::string address = "file://";
    for (const char c : path) {
        if (StandsInAddress(c)) {
            address += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        address += '%';
        address += kHexDigits[byte >> 4];
        address += kHexDigits[byte & 0xF];
    }
    return address;
}

}  // namespace

std::string NewsHost(std::string_view website, const std::vector<std::filesystem::path>& folders) {
    if (!website.empty()) return std::string(website.substr(0, website.find_last_not_of('/') + 1));
    if (folders.empty()) return "";
    const auto holdsPage = [](const std::filesystem::path& folder) {
        std::error_code failed;
        return std::filesystem::is_regular_file(folder / kNewsPage.substr(1), failed);
    };
    const auto found = std::find_if(folders.begin(), folders.end(), holdsPage);
    std::error_code failed;
    const std::filesystem::path folder =
        std::filesystem::absolute(found == folders.end() ? folders.front() : *found, failed).lexically_normal();
    // The page's path begins with a slash of its own.
    const std::string path = folder.string();
    return FileAddress(path.substr(0, path.find_last_not_of('/') + 1));
}

void TellNewsAddress(MainControls& main, const std::string& address) {
    const std::string before = main.LCommandOutput.Caption.Get();
    if (before.find(address) != std::string::npos) return;
    const std::string news = "No browser has opened the news page: " + address;
    main.LCommandOutput.Caption = before.empty() ? news : before + "\r\n" + news;
}

void UsageRecord::LoadStat() {
    ClearStat();
    const std::optional<std::string> bytes = ReadWholeFile(file_, kRecordBytes);
    if (!bytes) return;
    if (std::optional<UsageStats> stats = Decode(*bytes)) stats_ = std::move(*stats);
}

void UsageRecord::SaveStat() const { ReplaceFile(file_, Encode(stats_)); }

void UsageRecord::ClearStat() {
    stats_ = {};
    stats_.RandomID = MakeRNDID();
}

void UsageRecord::CountStart() {
    LoadStat();
    if (stats_.StartCount < std::numeric_limits<std::int32_t>::max()) ++stats_.StartCount;
    SaveStat();
}

std::string UsageRecord::MakeRNDID() const {
    const auto seed = std::bit_cast<std::uint64_t>(DateToJD(clock_.ReadUtc()));
    std::seed_seq words{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32)};
    std::mt19937 random(words);
    std::uniform_int_distribution<int> digit(0, 9);
    std::string text;
    for (std::size_t i = 0; i < kIdDigits; ++i) text += static_cast<char>('0' + digit(random));
    return text;
}

std::string UsageRecord::MakeStatString() const {
    return "?r=" + stats_.RandomID + "&c=" + std::to_string(stats_.StartCount) +
           "&t=" + std::to_string(stats_.TLECount) + "&m=" + std::to_string(stats_.MirrorAddCount) +
           "&v=" + VersionDigits();
}

void UsageRecord::ConnectStat() const {
    if (host_.empty()) return;
    const std::string page = host_ + std::string(kNewsPage);
    browser_.Open(page + MakeStatString(), [tell = tell_, page] {
        if (tell) tell(page);
    });
}

void UsageRecord::CheckForUpdate(double days, bool force) {
    const double now = LocalDate(clock_);
    const double passed = now - stats_.LastCheckJD;
    if (passed >= 0 && passed <= days && !force) return;
    ConnectStat();
    stats_.LastCheckJD = now;
    SaveStat();
}

}  // namespace glintara
