#include "core/usage_record.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>

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
           "&v=" + VersionDigits();
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
