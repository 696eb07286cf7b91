#pragma once

// Texts that were downloaded, kept beside the program with their time. The sites ask their users not to fetch the same
// file more than once in two hours: within that time the kept text is used again.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace glintara {

/// Largest text that is downloaded and kept, bytes.
inline constexpr std::size_t kLargestDownload = std::size_t{32} << 20;

/// How long a kept text is used again, days.
inline constexpr double kKeptDays = 2 / 24.0;

struct KeptText {
    std::string text;
    double age = 0;  ///< days since it was fetched
};

/// A folder with one file a text. The file tells its address, its time, and its length and sum, by which one that is
/// damaged, or belongs to another address, is known and passed over. Files are written beside and renamed, so programs
/// that run side by side may share the folder.
class DownloadCache {
  public:
    explicit DownloadCache(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// The text of `address` when it was fetched less than `days` before `jd` (UTC). A text from the future, after the
    /// computer's clock was set back, is not used.
    std::optional<KeptText> Find(std::string_view address, double jd, double days = kKeptDays) const;

    /// Keeps `text`, fetched from `address` at `jd`. What cannot be written is not kept, without a word.
    void Keep(std::string_view address, std::string_view text, double jd) const;

    /// The file of an address.
    std::filesystem::path FileOf(std::string_view address) const;

  private:
    std::filesystem::path folder_;
};

/// An age in words: "less than a minute", "35 minutes", "1 hour 20 minutes". `age` in days, not negative.
std::string AgeText(double age);

}  // namespace glintara
