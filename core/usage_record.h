#pragma once

// The counters that are kept between runs, and the news page that is opened from time to time in the user's browser.
// The program itself sends nothing; the page's address carries the counters.
//
// The file holds the record in binary form, little-endian, without gaps: three 32-bit counters, the random
// identifier (16-bit length, then its digits), and the date of the last check (64-bit float).

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/computer_clock.h"
#include "state/common_data.h"
#include "state/main_controls.h"

namespace glintara {

/// Name of the file beside the program.
inline constexpr std::string_view kUsageFile = "glt.ini";

/// Path of the news page: under a website's host, or in a folder of data files.
inline constexpr std::string_view kNewsPage = "/Glintara/update.html";

/// Where the news page stands, to be put before `kNewsPage`: `website` ("https://example.org"), or, when that is empty,
/// the first of `folders` that holds the page, as a "file:" address. Without any, the first of them.
std::string NewsHost(std::string_view website, const std::vector<std::filesystem::path>& folders);

/// Tells the address of a page that no browser has opened in `LCommandOutput`, behind what stands there.
void TellNewsAddress(MainControls& main, const std::string& address);

/// Opens pages for the user.
class Browser {
  public:
    Browser() = default;
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    virtual ~Browser() = default;

    /// Shows `address` in the default browser. Where that fails, at once or later, `failed` is called, once.
    virtual void Open(const std::string& address, std::function<void()> failed) = 0;
};

class UsageRecord {
  public:
    UsageRecord(UsageStats& stats, const ComputerClock& clock, Browser& browser, std::filesystem::path file)
        : stats_(stats), clock_(clock), browser_(browser), file_(std::move(file)) {}

    /// Where the news page stands; see `NewsHost`. Until it is told no page is opened.
    void SetNewsHost(std::string host) { host_ = std::move(host); }

    /// `tell` gets the address of a page that no browser has opened, without the counters, which are no use by hand.
    void SetAddressTeller(std::function<void(const std::string& address)> tell) { tell_ = std::move(tell); }

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
    std::string host_;
    std::function<void(const std::string&)> tell_;
};

}  // namespace glintara
