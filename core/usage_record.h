#pragma once

// The counters that are kept between runs, and the news page that is opened from time to time in the user's browser.
// The program itself sends nothing; the page's address carries the counters.
//
// The file holds the record in binary form, little-endian, without gaps: three 32-bit counters, the random
// identifier (16-bit length, then its digits), and the date of the last check (64-bit float).

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "core/computer_clock.h"
#include "state/common_data.h"

namespace glintara {

/// Name of the file beside the program.
inline constexpr std::string_view kUsageFile = "glt.ini";

/// Address of the news page, without the counters.
inline constexpr std::string_view kNewsPage = "https://www.glintara.example/Glintara/update.html";

/// Opens pages for the user.
class Browser {
  public:
    Browser() = default;
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    virtual ~Browser() = default;

    /// Shows `address` in the default browser. A computer without one does nothing.
    virtual void Open(const std::string& address) = 0;
};

class UsageRecord {
  public:
    UsageRecord(UsageStats& stats, const ComputerClock& clock, Browser& browser, std::filesystem::path file)
        : stats_(stats), clock_(clock), browser_(browser), file_(std::move(file)) {}

    /// Reads the record. A file that is missing, or is not such a record, means a first run, without a word.
    void LoadStat();

    /// Writes the record. What cannot be written is lost, without a word.
    void SaveStat() const;

    /// A fresh record: counters 0, another identifier, never checked.
    void ClearStat();

    /// Raises the counter of program starts in the kept record.
    void CountStart();

    /// Ten random decimal digits.
    std::string MakeRNDID() const;

    /// The counters as the query of an address.
    std::string MakeStatString() const;

    /// Opens the news page.
    void ConnectStat() const;

    /// Opens the news page when `force` is set, when the last check lies more than `days` back, or when it lies in the
    /// future, and keeps the date.
    void CheckForUpdate(double days, bool force);

  private:
    UsageStats& stats_;
    const ComputerClock& clock_;
    Browser& browser_;
    std::filesystem::path file_;
};

}  // namespace glintara
