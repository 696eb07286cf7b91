#pragma once

// The download of element sets: one source after the other, from the network or from what was kept, into the admission.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "orbit/download_answer.h"
#include "orbit/download_cache.h"
#include "orbit/download_sources.h"
#include "orbit/element_sets.h"
#include "orbit/fetcher.h"
#include "state/application.h"

namespace glintara {

/// What a download asks of others.
struct DownloadServices {
    Fetcher& fetcher;
    std::function<double()> now;                 ///< the present instant by the computer's clock, Julian date, UTC
    std::filesystem::path folder = "downloads";  ///< where fetched texts are kept
    DownloadHosts hosts{};
    std::size_t largest = kLargestDownload;  ///< an answer of more bytes is refused
};

class Downloads {
  public:
    Downloads(Application& app, DownloadServices services)
        : app_(app), form_(app.Download), services_(std::move(services)), cache_(services_.folder) {}

    /// Hangs the procedures on the controls of the window.
    void Connect();

    /// The window opens: the list of sources is filled, none of them current or selected.
    void Form_Load();

    /// The window is closed: a download that is under way ends, and a new picture shows what has come in.
    void Form_Unload();

    /// Enables the three buttons when the list has a current line, and disables them otherwise; clears `LProg`,
    /// `LTotal` and `PB1`. To be called after each click and key of the user's in the list. Nothing happens during a
    /// download.
    void UpdateButtons();

    /// Downloads the selected sources from the first to the last and admits each. One that fails ends the work; one
    /// that has come in is selected no more. At the end a message box tells what of them was left out. Refused while a
    /// download is under way.
    void Run(TLEMode mode);

    /// Ends the download that is under way at its next look.
    void Abort();

    /// One source, whole: `entry`, a line of the list, copied from it, for that may be filled anew meanwhile. `LProg`
    /// tells the way, and at the end what the admission has said. Without a text the list and `TTLE` stay as they are.
    /// What was admitted, or nothing when it failed.
    std::optional<AdmissionOutcome> DownloadEntry(const std::string& entry, TLEMode mode, bool onlyNewer,
                                                  bool onlySelected);

    /// The element sets at an address: fetched, or kept from less than two hours ago; from less than a day ago where
    /// the server says that it has none newer. Where it answers without element sets, the addresses of `AddressesToTry`
    /// follow. A failure is told in the message box "Download Error", which names `label` and the reason; one that the
    /// user has asked for is not. An empty address gives an empty text.
    std::optional<std::string> DownloadUrl(const std::string& address, const std::string& label);

    /// Takes other sites, from the next `Form_Load` on.
    void UseHosts(DownloadHosts hosts) { services_.hosts = std::move(hosts); }

  private:
    struct Fetched {
        std::string text;
        int status = 0;
        std::string failure;  // why there is no answer; empty when there is one
    };

    bool Ends() const { return form_.Aborted || app_.Run.Closing; }
    Fetched Fetch(const std::string& address);
    std::optional<std::string> TakeKept(const std::string& address, double days);
    void ShowTotal(int done, int wanted, const AdmissionOutcome& sum);

    Application& app_;
    DownloadControls& form_;
    DownloadServices services_;
    DownloadCache cache_;
    std::string remark_;   // what `LProg` tells of the last text beside the admission's own words
    std::string leftOut_;  // what of the last text could not be used, and why
};

}  // namespace glintara
