#include "core/usage_record.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>

#include "orbit/files.h"

namespace glintara {

namespace {

constexpr std::size_t kIdDigits = 10;
constexpr std::string_view kVersionNumber = "152";

constexpr std::size_t kCounterBytes = 4;
constexpr std::size_t kLengthBytes = 2;
constexpr std::size_t kDateBytes = 8;
constexpr std::size_t kRecordBytes = 3 * kCounterBytes + kLengthBytes + kIdDigits + kDateBytes;

void AppendLittleEndian(std::string& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

/// Takes `width` bytes off the front of `bytes`.
std::uint64_t TakeLittleEndian(std::string_view& bytes, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i)
        value |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    bytes.remove_prefix(width);
    return value;
}

std::int32_t TakeCounter(std::string_view& bytes) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(TakeLittleEndian(bytes, kCounterBytes)));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string Encode(const UsageStats& stats) {
    std::string bytes;
    for (const std::int32_t counter : {stats.StartCount, stats.MirrorAddCount, stats.TLECount})
        AppendLittleEndian(bytes, static_cast<std::uint32_t>(counter), kCounterBytes);
    AppendLittleEndian(bytes, stats.RandomID.size(), kLengthBytes);
    bytes += stats.RandomID;
    AppendLittleEndian(bytes, std::bit_cast<std::uint64_t>(stats.LastCheckJD), kDateBytes);
    return bytes;
}

/// The record of a file; nothing for a file that this program has not written. The identifier goes into an address, so
/// it must be digits.
std::optional<UsageStats> Decode(std::string_view bytes) {
    if (bytes.size() != kRecordBytes) return std::nullopt;
    UsageStats stats;
    stats.StartCount = TakeCounter(bytes);
    stats.MirrorAddCount = TakeCounter(bytes);
    stats.TLECount = TakeCounter(bytes);
    if (TakeLittleEndian(bytes, kLengthBytes) != kIdDigits) return std::nullopt;
    stats.RandomID = bytes.substr(0, kIdDigits);
    bytes.remove_prefix(kIdDigits);
    stats.LastCheckJD = std::bit_cast<double>(TakeLittleEndian(bytes, kDateBytes));
    const bool digits = std::all_of(stats.RandomID.begin(), stats.RandomID.end(), IsDigit);
    if (!digits || !std::isfinite(stats.LastCheckJD)) return std::nullopt;
    return stats;
}

/// The clock as whole seconds of local time, as a Julian date.
double LocalDate(const ComputerClock& clock) {
    CalendarFields now = clock.ReadLocal();
    now.second = std::floor(now.second);
    return DateToJD(now);
}

}  // namespace

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
           "&v=" + std::string(kVersionNumber);
}

void UsageRecord::ConnectStat() const { browser_.Open(std::string(kNewsPage) + MakeStatString()); }

void UsageRecord::CheckForUpdate(double days, bool force) {
    const double now = LocalDate(clock_);
    const double passed = now - stats_.LastCheckJD;
    if (passed >= 0 && passed <= days && !force) return;
    ConnectStat();
    stats_.LastCheckJD = now;
    SaveStat();
}

}  // namespace glintara
