#include "orbit/download_cache.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <system_error>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "orbit/files.h"

namespace glintara {

namespace {

constexpr std::string_view kFirstLine = "Glintara download 1";
constexpr std::size_t kHeadLines = 4;
constexpr std::size_t kTimeLine = 2;
constexpr std::size_t kLargestHead = 8192;
constexpr std::size_t kLongestName = 120;

/// Fowler, Noll and Vo's sum of 64 bits, form 1a.
std::uint64_t SumOf(std::string_view text) {
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return sum;
}

/// What stands before the text: the address, when it was fetched, and how long it is with its sum.
std::string HeadOf(std::string_view address, std::string_view jdText, std::string_view text) {
    std::string head(kFirstLine);
    for (const std::string_view line : {address, jdText}) head.append("\n").append(line);
    head += "\n" + std::to_string(text.size()) + " " + std::to_string(SumOf(text)) + "\n";
    return head;
}

bool StandsInName(char c) { return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-'; }

}  // namespace

std::optional<KeptText> DownloadCache::Find(std::string_view address, double jd, double days) const {
    const std::optional<std::string> file = ReadWholeFile(FileOf(address), kLargestDownload + kLargestHead);
    if (!file) return std::nullopt;
    std::string_view text(*file);
    std::array<std::string_view, kHeadLines> head;
    for (std::string_view& line : head) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) return std::nullopt;
        line = text.substr(0, end);
        text.remove_prefix(end + 1);
    }
    const std::string_view jdText = head[kTimeLine];
    if (!file->starts_with(HeadOf(address, jdText, text))) return std::nullopt;
    const std::optional<double> fetched = StrictNumber(jdText);
    if (!fetched) return std::nullopt;
    const double age = jd - *fetched;
    if (!(age >= 0 && age < days)) return std::nullopt;
    return KeptText{std::string(text), age};
}

void DownloadCache::Keep(std::string_view address, std::string_view text, double jd) const {
    std::error_code failed;
    std::filesystem::create_directory(folder_, failed);
    ReplaceFile(FileOf(address), HeadOf(address, ExactNumberText(jd), text) + std::string(text));
}

std::filesystem::path DownloadCache::FileOf(std::string_view address) const {
    constexpr std::string_view kBehindScheme = "://";
    const std::size_t scheme = address.find(kBehindScheme);
    std::string name(scheme == std::string_view::npos ? address : address.substr(scheme + kBehindScheme.size()));
    // The end tells more than the host, which all have in common.
    if (name.size() > kLongestName) name.erase(0, name.size() - kLongestName);
    for (char& c : name)
        if (!StandsInName(c)) c = '_';
    return folder_ / (name + ".kept");
}

std::string AgeText(double age) {
    constexpr int kMinutesPerHour = 60;
    const int minutes = static_cast<int>(std::clamp(age * kMinutesPerDay, 0.0, 1e6));
    const auto counted = [](int count, const char* unit) {
        return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
    };
    if (minutes == 0) return "less than a minute";
    const int hours = minutes / kMinutesPerHour;
    const int rest = minutes % kMinutesPerHour;
    if (hours == 0) return counted(minutes, "minute");
    return counted(hours, "hour") + (rest == 0 ? "" : " " + counted(rest, "minute"));
}

}  // namespace glintara
