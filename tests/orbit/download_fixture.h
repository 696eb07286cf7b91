#pragma once

// Downloads whose network a test plays: each address has its answer, and what is asked for is written down.

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orbit/download.h"
#include "state/recording_services.h"
#include "support/temporary_folder.h"

namespace glintara::testing {

/// What a server does with a request.
struct PlayedAnswer {
    std::string text;
    int status = 200;
    std::string failure{};  ///< when not empty, the connection fails so behind the text
    int waits = 0;          ///< times that nothing is there yet before each part
};

class PlayedTransfer : public Transfer {
  public:
    PlayedTransfer(PlayedAnswer answer, int& open) : answer_(std::move(answer)), waits_(answer_.waits), open_(open) {
        ++open_;
    }
    ~PlayedTransfer() override { --open_; }

    ReadStep Read(std::string& part) override {
        if (waits_-- > 0) return ReadStep::Waiting;
        waits_ = answer_.waits;
        if (at_ < answer_.text.size()) {
            part = answer_.text.substr(at_, kReadBytes);
            at_ += part.size();
            return ReadStep::Data;
        }
        return answer_.failure.empty() ? ReadStep::End : ReadStep::Failed;
    }
    int Status() const override { return answer_.status; }
    std::string Failure() const override { return answer_.failure; }

  private:
    PlayedAnswer answer_;
    std::size_t at_ = 0;
    int waits_;
    int& open_;
};

/// A network without a computer behind it: an address that no test has put there is not found.
class PlayedNetwork : public Fetcher {
  public:
    std::unique_ptr<Transfer> Open(const std::string& address) override {
        asked.push_back(address);
        const auto found = answers.find(address);
        PlayedAnswer answer;
        if (found == answers.end())
            answer.status = 404;
        else
            answer = found->second;
        return std::make_unique<PlayedTransfer>(std::move(answer), open);
    }

    std::map<std::string, PlayedAnswer> answers;
    std::vector<std::string> asked;
    int open = 0;  ///< transfers that have not ended
};

/// Counts the turns, and lets a test do something in them.
class HookedEvents : public Events {
  public:
    void ServeEvents() override {
        ++served;
        if (hook) hook();
    }
    void WaitForEvents() override {
        ++waited;
        if (hook) hook();
    }

    int served = 0;
    int waited = 0;
    std::function<void()> hook;
};

// The space station on 20 September 2008, a set that many texts on the format print.
inline const std::string kStation1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
inline const std::string kStation2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";

/// A set of satellite `number`, five characters, whose epoch begins with `epoch`.
inline std::string SetOf(const std::string& name, const std::string& number, const std::string& epoch = "08264") {
    std::string line1 = kStation1;
    std::string line2 = kStation2;
    line1.replace(2, 5, number).replace(18, 5, epoch);
    line2.replace(2, 5, number);
    return name + "\n" + line1 + "\n" + line2 + "\n";
}

inline const std::string kCatalogue = "https://celestrak.org";
inline const std::string kPersonal = "https://mmccants.org";

struct DownloadFixture : ::testing::Test {
    DownloadFixture() {
        downloads.Connect();
        downloads.Form_Load();
    }

    /// The number of the line with that label.
    int LineOf(const std::string& label) const {
        for (int line = 0; line < form.LSiteTLE.Count(); ++line)
            if (LabelOfLine(form.LSiteTLE.Lines.Get()[static_cast<std::size_t>(line)]) == label) return line;
        ADD_FAILURE() << "no source " << label;
        return 0;
    }

    /// The user clicks on these sources.
    void Choose(const std::vector<std::string>& labels) {
        std::set<int> lines;
        for (const std::string& label : labels) lines.insert(LineOf(label));
        form.LSiteTLE.Current = lines.empty() ? kNoLine : *lines.begin();
        form.LSiteTLE.Selected = std::move(lines);
        downloads.UpdateButtons();
    }

    static std::string FileAt(const std::string& name) { return kCatalogue + "/NORAD/elements/" + name + ".txt"; }
    static std::string QueryFor(const std::string& group, const std::string& format) {
        return kCatalogue + "/NORAD/elements/gp.php?GROUP=" + group + "&FORMAT=" + format;
    }

    void Answer(const std::string& address, const std::string& text) { network.answers[address] = {.text = text}; }

    /// Two satellites are in the list, the first of them selected.
    void FillList() {
        app.Main.TTLE.Text = BoxText(SetOf("ONE", "00001", "10001") + SetOf("TWO", "00002", "10001"));
        CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
        app.Data.Satellite(1).Selected = true;
        app.Data.Satellite(2).Selected = false;
        windows.calls.clear();
    }

    std::string Told() const { return boxes.messages.empty() ? "" : boxes.messages.back().text; }
    std::string Progress() const { return form.LProg.Caption.Get(); }
    std::string Box() const { return app.Main.TTLE.Text.Get(); }

    /// The list of satellites as text, for comparisons.
    std::string List() const {
        std::string all;
        for (int index = 1; index <= app.Data.SatCount; ++index) {
            const SatRecord& satellite = app.Data.Satellite(index);
            all += satellite.Name + "|" + satellite.Line1 + "|" + satellite.Line2 + "\n";
        }
        return all;
    }

    TemporaryFolder folder;
    RecordingBoxes boxes;
    HookedEvents events;
    RecordingWindows windows;
    Application app{boxes, events, windows};
    DownloadControls& form = app.Download;
    PlayedNetwork network;
    double now = 2461367.5;  // 22 November 2026
    Downloads downloads{app,
                        {.fetcher = network,
                         .now = [this] { return now; },
                         .folder = folder.Path() / "downloads",
                         .hosts = {},
                         .largest = std::size_t{1} << 20}};
};

}  // namespace glintara::testing
