#include "orbit/download.h"

#include <array>
#include <set>

#include "state/long_work.h"

namespace glintara {

namespace {

constexpr double kBarFull = 100;
constexpr double kBarFallsTo = 70;

/// Age up to which a kept text stands for that of a server that has none newer, days. Another program behind the same
/// connection may have fetched a newer one since, and it is that one which the server means.
constexpr double kStandsInDays = 1;

std::string SizeText(std::size_t bytes) {
    constexpr std::size_t kMebibyte = std::size_t{1} << 20;
    return bytes >= kMebibyte ? std::to_string(bytes / kMebibyte) + " MiB" : std::to_string(bytes) + " bytes";
}

/// `text` with a full stop, unless it ends as a sentence or as a question.
std::string Sentence(std::string text) {
    if (!text.ends_with('.') && !text.ends_with('?')) text += '.';
    return text;
}

/// The window as long as a download runs.
class RunningDownload {
  public:
    explicit RunningDownload(Application& app) : form_(app.Download), work_(app) {
        form_.Aborted = false;
        form_.Running = true;
        Enable(false);
    }
    RunningDownload(const RunningDownload&) = delete;
    RunningDownload& operator=(const RunningDownload&) = delete;
    ~RunningDownload() {
        Enable(true);
        form_.Running = false;
    }

  private:
    void Enable(bool enabled) {
        const bool usable = enabled && form_.LSiteTLE.Current >= 0;
        for (Button* button : {&form_.CDownAdd, &form_.CDownUp, &form_.CDownOUP}) button->Enabled = usable;
        for (OptionButton& option : form_.OUpdateAlways) option.Enabled = enabled;
        form_.COnlySel.Enabled = enabled;
    }

    DownloadControls& form_;
    LongWork work_;
};

}  // namespace

void Downloads::Connect() {
    form_.CDownAdd.SetClickHandler([this] { Run(TLEMode::Add); });
    form_.CDownUp.SetClickHandler([this] { Run(TLEMode::AddAndUpdate); });
    form_.CDownOUP.SetClickHandler([this] { Run(TLEMode::UpdateExisting); });
    form_.CExit.SetClickHandler([this] { form_.Visible = false; });
    const auto exclude = [](OptionButton& box, OptionButton& other) {
        box.Value.SetHandler([&box, &other] { other.Value = !box.Value; });
    };
    exclude(form_.OUpdateAlways[0], form_.OUpdateAlways[kOnlyMoreRecent]);
    exclude(form_.OUpdateAlways[kOnlyMoreRecent], form_.OUpdateAlways[0]);
}

void Downloads::Form_Load() {
    form_.LSiteTLE.SetLines(SourceLines(services_.hosts), {});
    UpdateButtons();
}

void Downloads::Form_Unload() {
    Abort();
    app_.Windows.UpdateGraphicsLevel2();
}

void Downloads::UpdateButtons() {
    if (form_.Running) return;
    for (Button* button : {&form_.CDownAdd, &form_.CDownUp, &form_.CDownOUP})
        button->Enabled = form_.LSiteTLE.Current >= 0;
    form_.LProg.Caption = std::string();
    form_.LTotal.Caption = std::string();
    form_.PB1.Value = 0.0;
}

void Downloads::Abort() {
    if (form_.Running) form_.Aborted = true;
}

void Downloads::Run(TLEMode mode) {
    if (form_.Running) return;
    const bool updates = mode != TLEMode::Add;
    const bool onlyNewer = updates && form_.OUpdateAlways[kOnlyMoreRecent].Value;
    const bool onlySelected = updates && form_.COnlySel.Value;
    const int wanted = static_cast<int>(form_.LSiteTLE.Selected.Get().size());
    form_.LTotal.Caption = std::string();
    if (wanted == 0) {
        form_.LProg.Caption = std::string("No source is selected");
        return;
    }

    const RunningDownload running(app_);
    AdmissionOutcome sum;
    sum.mode = mode;
    int done = 0;
    std::string leftOut;
    for (int line = 0; line < form_.LSiteTLE.Count(); ++line) {
        if (!form_.LSiteTLE.Selected.Get().contains(line)) continue;
        form_.LSiteTLE.Current = line;
        const std::string entry = form_.LSiteTLE.Lines.Get()[static_cast<std::size_t>(line)];
        const std::optional<AdmissionOutcome> outcome = DownloadEntry(entry, mode, onlyNewer, onlySelected);
        if (!outcome) break;
        std::set<int> left = form_.LSiteTLE.Selected;
        left.erase(line);
        form_.LSiteTLE.Selected = std::move(left);
        if (!leftOut_.empty())
            leftOut.append("\n").append(LabelOfLine(entry)).append(": ").append(leftOut_).append(".");
        sum.added += outcome->added;
        sum.updated += outcome->updated;
        ++done;
        if (wanted > 1) ShowTotal(done, wanted, sum);
        if (Ends()) break;
    }
    if (!leftOut.empty() && !Ends())
        app_.Boxes.Tell("Not all that came could be used.\n" + leftOut, MessageIcon::Warning);
}

std::optional<AdmissionOutcome> Downloads::DownloadEntry(const std::string& entry, TLEMode mode, bool onlyNewer,
                                                         bool onlySelected) {
    form_.LProg.Caption = std::string("Connecting...");
    form_.PB1.Value = 1.0;
    app_.EventQueue.ServeEvents();
    const std::optional<std::string> text = DownloadUrl(AddressOfLine(entry), LabelOfLine(entry));
    if (!text) {
        form_.LProg.Caption = std::string(Ends() ? "Aborted" : "Error");
        return std::nullopt;
    }
    form_.LProg.Caption = std::string("Done");
    form_.PB1.Value = kBarFull;
    app_.Windows.ChangeSatelliteSignal();
    app_.Main.TTLE.Text = *text;
    const AdmissionOutcome outcome = CApplyTLEOrbitFnct(app_, mode, onlyNewer, onlySelected);
    form_.LProg.Caption = app_.Main.LCommandOutput.Caption.Get() + remark_;
    return outcome;
}

std::optional<std::string> Downloads::DownloadUrl(const std::string& address, const std::string& label) {
    remark_.clear();
    leftOut_.clear();
    if (address.empty()) return std::string();
    if (Ends()) return std::nullopt;
    const std::vector<std::string> addresses = AddressesToTry(address);
    for (const std::string& next : addresses)
        if (std::optional<std::string> kept = TakeKept(next, kKeptDays)) return kept;

    std::string problem;
    for (const std::string& next : addresses) {
        const Fetched fetched = Fetch(next);
        if (Ends()) return std::nullopt;
        if (!fetched.failure.empty()) {
            problem = fetched.failure;
            break;
        }
        DownloadAnswer answer = ReadAnswer(fetched.text, fetched.status);
        if (answer.Usable()) {
            if (!answer.damaged) cache_.Keep(next, fetched.text, services_.now());
            leftOut_ = std::move(answer.leftOut);
            return std::move(answer.elements);
        }
        if (answer.unchanged) {
            if (std::optional<std::string> kept = TakeKept(next, kStandsInDays)) {
                remark_ += ", and the server has none newer";
                return kept;
            }
        }
        problem = std::move(answer.problem);
        if (answer.last) break;
    }
    const std::string name = label.empty() ? HostOf(address) : label + " (" + HostOf(address) + ")";
    app_.Boxes.Tell("Download Error\n\n" + name + ": " + Sentence(problem), MessageIcon::Critical);
    return std::nullopt;
}

std::optional<std::string> Downloads::TakeKept(const std::string& address, double days) {
    constexpr int kOk = 200;
    const std::optional<KeptText> kept = cache_.Find(address, services_.now(), days);
    if (!kept) return std::nullopt;
    DownloadAnswer answer = ReadAnswer(kept->text, kOk);
    if (!answer.Usable()) return std::nullopt;
    remark_ = "; kept text, fetched " + AgeText(kept->age) + " ago";
    leftOut_ = std::move(answer.leftOut);
    return std::move(answer.elements);
}

Downloads::Fetched Downloads::Fetch(const std::string& address) {
    form_.LProg.Caption = std::string("Connecting...");
    form_.PB1.Value = 1.0;
    Fetched fetched;
    if (Ends()) return fetched;
    const std::unique_ptr<Transfer> transfer = services_.fetcher.Open(address);
    std::string part;
    bool answered = false;
    while (!Ends()) {
        const ReadStep step = transfer->Read(part);
        if (step == ReadStep::Waiting) {
            app_.EventQueue.WaitForEvents();
            continue;
        }
        if (step == ReadStep::Failed) {
            fetched.failure = transfer->Failure();
            break;
        }
        if (!answered) {
            answered = true;
            form_.LProg.Caption = std::string("Downloading...");
            form_.PB1.Value = 1.0;
            app_.EventQueue.ServeEvents();
        }
        form_.PB1.Value = form_.PB1.Value < kBarFull ? form_.PB1.Value + 1 : kBarFallsTo;
        if (step == ReadStep::End) {
            fetched.status = transfer->Status();
            break;
        }
        fetched.text += part;
        if (fetched.text.size() > services_.largest) {
            fetched.failure = "the answer is larger than " + SizeText(services_.largest);
            break;
        }
        app_.EventQueue.ServeEvents();
    }
    return fetched;
}

void Downloads::ShowTotal(int done, int wanted, const AdmissionOutcome& sum) {
    std::string text = std::to_string(done) + " of " + std::to_string(wanted) +
                       " sources: " + std::to_string(sum.added) + (sum.added == 1 ? " satellite" : " satellites") +
                       " added";
    if (sum.mode != TLEMode::Add) text += ", " + std::to_string(sum.updated) + " updated";
    form_.LTotal.Caption = std::move(text);
}

}  // namespace glintara
