#include "orbit/element_sets.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/glintcore.h"
#include "orbit/files.h"
#include "orbit/mean_elements.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Gravitational parameter of the Earth that the semi-major axis is worked out with, cubic metres per second squared.
constexpr double kOrbitMu = 398618327999999.94;

// Takes lines off the front of a text.
class LineCursor {
  public:
    explicit LineCursor(std::string_view text) : rest_(text) {}

    std::string_view Rest() const { return rest_; }

    // The next line without its end. Text without a line end is taken whole.
    std::string_view TakeLine() {
        const std::size_t end = rest_.find(kLineEnd);
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + kLineEnd.size());
        return line;
    }

  private:
    std::string_view rest_;
};

bool BeginsLine1(std::string_view line) { return line.substr(0, 2) == "1 "; }

// A line that does not begin with "1" is a name. So is one like "1KUNS-PF", which the line behind it tells from a
// damaged line 1.
bool BeginsWithName(std::string_view text) {
    if (text.empty() || text.front() != kLine1Digit) return true;
    LineCursor cursor(text);
    const std::string_view first = cursor.TakeLine();
    const bool blankBehindDigit = first.size() > 1 && first[1] == ' ';
    return !blankBehindDigit && BeginsLine1(cursor.Rest());
}

// Some catalogues number all three lines of a set; the name line then begins with "0 ".
std::string_view WithoutLineNumber(std::string_view name) {
    constexpr std::string_view kNameLineNumber = "0 ";
    if (name.substr(0, kNameLineNumber.size()) == kNameLineNumber) name.remove_prefix(kNameLineNumber.size());
    return name;
}

// One element set as it stands in the box.
struct ElementSetText {
    std::optional<std::string_view> name;
    std::string_view line1;
    std::string_view line2;
    std::string_view rest;  // what stands behind it
};

// The set at the front of `text`, whatever its lines hold.
ElementSetText CutElementSet(std::string_view text) {
    ElementSetText set;
    LineCursor cursor(text);
    if (BeginsWithName(text)) set.name = WithoutLineNumber(cursor.TakeLine());
    set.line1 = cursor.TakeLine().substr(0, kElementLineLength);
    set.line2 = cursor.TakeLine().substr(0, kElementLineLength);
    set.rest = cursor.Rest();
    return set;
}

// What is wrong with a set.
struct Refusal {
    int line = 0;  // 1 or 2; 0 for the two together
    std::string reason;
};

std::optional<Refusal> RefusalOfLine(int number, std::string_view line, char digit, ElementFault fault) {
    if (CheckTLELine(line).ok && fault == ElementFault::None) return std::nullopt;
    return Refusal{number, line.empty() ? "there is none" : FaultText(fault, digit)};
}

void TakeLine1(SatRecord& satellite, std::string_view line, const ElementLine1& read) {
    satellite.Line1 = line;
    satellite.SatNumber = read.satNumber;
    satellite.Designator = read.designator;
    satellite.EpochText = read.epochText;
    satellite.MeanMotionDot = read.meanMotionDot;
    satellite.MeanMotionDDot = read.meanMotionDDot;
    satellite.BStar = read.bstar;
    satellite.ElementSetNumber = read.elementSetNumber;
}

void TakeLine2(SatRecord& satellite, std::string_view line, const ElementLine2& read) {
    satellite.Line2 = line;
    satellite.Inclination = read.inclination * kDegToRad;
    satellite.RaanAngle = read.raanAngle * kDegToRad;
    satellite.Eccentricity = read.eccentricity;
    satellite.ArgPerigee = read.argPerigee * kDegToRad;
    satellite.MeanAnomaly = read.meanAnomaly * kDegToRad;
    satellite.MeanMotion = read.meanMotion;
}

// The elements of a set, ready to be propagated. Nothing when it cannot be used: `refusal` then says why.
std::optional<SatRecord> ReadElements(const ElementSetText& set, Refusal& refusal) {
    ElementLine1 read1;
    ElementLine2 read2;
    std::optional<Refusal> refused = RefusalOfLine(1, set.line1, kLine1Digit, ReadElementLine1(set.line1, read1));
    if (!refused) refused = RefusalOfLine(2, set.line2, kLine2Digit, ReadElementLine2(set.line2, read2));
    if (refused) {
        refusal = std::move(*refused);
        return std::nullopt;
    }
    std::optional<SatRecord> satellite(std::in_place);
    TakeLine1(*satellite, set.line1, read1);
    TakeLine2(*satellite, set.line2, read2);
    const int error = SatelliteInit(satellite->Line1.c_str(), satellite->Line2.c_str(), 'i', &satellite->EngineBlock);
    if (error == 0) return satellite;
    // The lines have been read already; but the engine takes a zero byte in them for their end.
    constexpr int kNotFiniteElements = 6;
    refusal.reason =
        error == kNotFiniteElements ? "no orbit follows from these elements" : "a zero byte cuts a line off";
    return std::nullopt;
}

// Finds the satellites of the list by their number text. Replacing a satellite leaves its number text as it was, so
// only additions are told to it.
class SatNumberIndex {
  public:
    explicit SatNumberIndex(const CommonData& data) {
        for (int index = 1; index <= data.SatCount; ++index) Add(data.Satellite(index), index);
    }

    void Add(const SatRecord& satellite, int index) { indices_[satellite.SatNumber].push_back(index); }

    const std::vector<int>& IndicesOf(const SatRecord& satellite) const {
        static const std::vector<int> none;
        const auto found = indices_.find(satellite.SatNumber);
        return found == indices_.end() ? none : found->second;
    }

  private:
    std::unordered_map<std::string, std::vector<int>> indices_;
};

// All of `fresh` goes over `old`, but for what belongs to the user and to the place in the list.
void ReplaceElements(SatRecord& old, const SatRecord& fresh) {
    const bool selected = old.Selected;
    const std::int16_t orbitNumber = old.OrbitNumber;
    std::string flags = std::move(old.OptionFlags);
    SurfaceModel surface = std::move(old.Surface);
    old = fresh;
    old.Selected = selected;
    old.OrbitNumber = orbitNumber;
    old.OptionFlags = std::move(flags);
    old.Surface = std::move(surface);
}

std::string BadDataText(const AdmissionOutcome& outcome) {
    std::string text = "ERROR: Bad TLE Data\n\n" + RefusalText(outcome) + ".";
    if (const std::string before = DoneBeforeText(outcome); !before.empty()) text += "\n" + before + ".";
    if (outcome.end == AdmissionEnd::BadData && !outcome.leftOut.empty()) text += "\n\n" + outcome.leftOut + ".";
    return text;
}

bool IsRefusal(AdmissionEnd end) { return end == AdmissionEnd::BadData || end == AdmissionEnd::BadMessage; }

// One run of admission over the text of the box.
class Admission {
  public:
    Admission(Application& app, TLEMode mode, bool onlyNewer, bool onlySelected)
        : app_(app),
          data_(app.Data),
          mode_(mode),
          onlyNewer_(onlyNewer),
          onlySelected_(onlySelected),
          text_(app.Main.TTLE.Text.Get()),
          rest_(text_) {
        outcome_.mode = mode;
        if (mode_ != TLEMode::Add) known_.emplace(data_);
    }

    AdmissionOutcome Run() {
        while (AdmitNext()) {
        }
        Finish();
        return outcome_;
    }

  private:
    // Admits the set at the front of the rest; false ends the run.
    bool AdmitNext() {
        if (rest_.find(kLineEnd) == std::string_view::npos) return TakeMessage() || Stop(AdmissionEnd::NoLineEnd);
        if (data_.SatCount >= kSatCapacity) return Stop(AdmissionEnd::ListFull);

        const ElementSetText set = CutElementSet(rest_);
        Refusal refusal;
        std::optional<SatRecord> satellite = ReadElements(set, refusal);
        if (!satellite) return TakeMessage() || StopAt(set, std::move(refusal));

        // A set without a name line bears the name of the one before it.
        if (set.name) carriedName_ = *set.name;
        satellite->Name = carriedName_;
        satellite->TitleLine = satellite->Name;
        satellite->MeanRadiusA = MeanRadiusOf(satellite->MeanMotion, data_.Site.SiteRadius);
        if (app_.GiveDefaultModel != nullptr) app_.GiveDefaultModel(*satellite);
        TakeIn(std::move(*satellite));
        rest_ = set.rest;
        return rest_.find(kLine1Digit) != std::string_view::npos;
    }

    // What cannot be read as two lines may be a message that was put into the box by hand. Its sets take the place of
    // its text; false when there are none.
    bool TakeMessage() {
        ElementText read = ReadElementText(rest_);
        if (!read.IsMessage()) return false;
        outcome_.leftOut = LeftOutText(read);
        if (read.sets == 0) return Stop(AdmissionEnd::BadMessage);
        outcome_.fromMessage = true;
        text_ = std::move(read.text);
        rest_ = text_;
        carriedName_ = {};
        return true;
    }

    // The first reason holds.
    bool Stop(AdmissionEnd end) {
        if (outcome_.end == AdmissionEnd::AllTaken) outcome_.end = end;
        return false;
    }

    bool StopAt(const ElementSetText& set, Refusal refusal) {
        if (outcome_.end == AdmissionEnd::BadMessage) return false;
        outcome_.refusedName = set.name.value_or(std::string_view());
        outcome_.refusedLine = refusal.line;
        outcome_.reason = std::move(refusal.reason);
        return Stop(AdmissionEnd::BadData);
    }

    // Replaces what the set replaces, and appends it unless it has found its satellite or is not to be added.
    void TakeIn(SatRecord satellite) {
        ++outcome_.sets;
        ++data_.UsageStats.TLECount;

        const int index = data_.SatCount + 1;
        satellite.OrbitNumber = static_cast<std::int16_t>(index);
        const bool found = UpdateKnown(satellite);
        if (!found && mode_ != TLEMode::UpdateExisting) {
            if (known_) known_->Add(satellite, index);
            data_.Satellite(index) = std::move(satellite);
            data_.SatCount = index;
            ++outcome_.added;
        }
    }

    // Whether the set has found its satellite in the list.
    bool UpdateKnown(const SatRecord& satellite) {
        if (!known_) return false;
        bool found = false;
        for (const int index : known_->IndicesOf(satellite)) {
            SatRecord& old = data_.Satellite(index);
            if (onlySelected_ && !old.Selected) {
                found = true;
                continue;
            }
            if (onlyNewer_ && !(EpochToJD(satellite) > EpochToJD(old))) continue;
            ReplaceElements(old, satellite);
            found = true;
            ++outcome_.updated;
        }
        return found;
    }

    void Finish() {
        app_.Main.TTLE.Text = std::string(rest_);
        const bool anyAdmitted = outcome_.sets > 0;
        if (anyAdmitted) {
            app_.Main.CPlotOrbit.Value = true;
            app_.Windows.SyncronizeMenuBar();
        }
        app_.Main.LCommandOutput.Caption = AdmissionLabel(outcome_);
        if (IsRefusal(outcome_.end))
            app_.Boxes.Tell(BadDataText(outcome_), MessageIcon::Critical);
        else if (!outcome_.leftOut.empty())
            app_.Boxes.Tell(outcome_.leftOut + ".", MessageIcon::Warning);

        app_.Windows.UpDateAll();
        app_.Windows.RefreshInfo();
        if (!anyAdmitted) return;
        app_.Windows.UpdateGraphicsLevel2();
        app_.Windows.SaveStat();
    }

    Application& app_;
    CommonData& data_;
    const TLEMode mode_;
    const bool onlyNewer_;
    const bool onlySelected_;

    std::string text_;  // a copy, since handlers that run meanwhile may write the box
    std::string_view rest_;
    std::optional<SatNumberIndex> known_;  // only when sets may replace
    std::string_view carriedName_;
    AdmissionOutcome outcome_;
};

std::string WhatToPress(const MainControls& main) {
    return "press " + main.CApplyTLEOrbit.Caption.Get() + " or " + main.CUpdateTLE.Caption.Get();
}

}  // namespace

TLELineCheck CheckTLELine(std::string_view line) {
    TLELineCheck check;
    if (line.size() != kElementLineLength) return check;
    check.checksumMatches = line.back() == ElementLineChecksum(line);
    return check;
}

double MeanRadiusOf(double meanMotion, double siteRadius) {
    const double period = kSecondsPerDay / meanMotion;
    return std::cbrt(period * period * kOrbitMu / (kPi * kPi * 4)) / siteRadius;
}

double EpochToJD(const SatRecord& satellite) { return EpochTextToJD(satellite.EpochText); }

std::string AdmissionLabel(const AdmissionOutcome& outcome) {
    std::string label = "ERROR: Invalid TLE Text";
    if (outcome.end == AdmissionEnd::ListFull) label = "ERROR: Already too many satellites";
    if (outcome.Failed()) {
        const std::string before = DoneBeforeText(outcome);
        return before.empty() ? label : label + " (" + before + ")";
    }
    label = "Added Satellites #" + std::to_string(outcome.added);
    if (outcome.mode != TLEMode::Add) label += " (" + std::to_string(outcome.updated) + " updated)";
    return label;
}

std::string RefusalText(const AdmissionOutcome& outcome) {
    if (outcome.end == AdmissionEnd::BadMessage) return outcome.leftOut;
    if (outcome.end != AdmissionEnd::BadData) return {};
    constexpr std::size_t kMostOfName = 40;
    std::string text = "Set " + std::to_string(outcome.sets + 1);
    const std::string name = ShownName(TrimmedText(outcome.refusedName).substr(0, kMostOfName));
    if (!name.empty()) text += " (" + name + ")";
    if (outcome.refusedLine != 0) text += ", line " + std::to_string(outcome.refusedLine);
    return text + ": " + outcome.reason;
}

std::string DoneBeforeText(const AdmissionOutcome& outcome) {
    if (outcome.sets == 0) return {};
    std::string text = std::to_string(outcome.added) + (outcome.added == 1 ? " satellite" : " satellites") + " added";
    if (outcome.mode != TLEMode::Add) text += " and " + std::to_string(outcome.updated) + " updated";
    return text + " before that";
}

AdmissionOutcome CApplyTLEOrbitFnct(Application& app, TLEMode mode, bool onlyNewer, bool onlySelected) {
    return Admission(app, mode, onlyNewer, onlySelected).Run();
}

AdmissionOutcome CApplyTLEOrbit_click(Application& app) {
    app.Windows.ChangeSatelliteSignal();
    return CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
}

AdmissionOutcome CUpdateTLE_click(Application& app) {
    app.Windows.ChangeSatelliteSignal();
    return CApplyTLEOrbitFnct(app, TLEMode::AddAndUpdate, false, false);
}

ElementText EnterTLEText(Application& app, std::string_view text) {
    ElementText read = ReadElementText(text);
    if (!read.IsMessage() || read.sets > 0) app.Main.TTLE.Text = std::move(read.text);
    read.text.clear();
    return read;
}

bool LoadTLEFile(Application& app, const std::filesystem::path& path) {
    const std::string name = ShownName(path.filename().string());
    const auto fail = [&](const std::string& why) {
        app.Boxes.Tell("Error Loading File\n\n" + name + ": " + why + ".", MessageIcon::Critical);
        return false;
    };
    std::string why;
    const std::optional<std::string> content = ReadWholeFile(path, kLargestTLEFile, &why);
    if (!content) return fail(why);
    const ElementText read = EnterTLEText(app, *content);
    const std::string leftOut = LeftOutText(read);
    if (read.IsMessage() && read.sets == 0) return fail(leftOut);
    app.Main.LCommandOutput.Caption = "File loaded, " + WhatToPress(app.Main);
    if (!leftOut.empty()) app.Boxes.Tell(name + ": " + leftOut + ".", MessageIcon::Warning);
    return true;
}

bool PasteTLEText(Application& app, std::string_view text) {
    Observed<std::string>& said = app.Main.LCommandOutput.Caption;
    if (text.size() > kLargestTLEFile) {
        said = std::string("ERROR: The text in the clipboard is too long");
        return false;
    }
    ElementText read = ReadElementText(text);
    const std::string leftOut = LeftOutText(read);
    if (read.sets == 0) {
        said = std::string("ERROR: There is no element set in the clipboard");
        if (!leftOut.empty()) app.Boxes.Tell(leftOut + ".", MessageIcon::Critical);
        return false;
    }
    if (!read.text.ends_with(kLineEnd)) read.text += kLineEnd;
    std::string box = app.Main.TTLE.Text.Get();
    if (!box.empty() && !box.ends_with(kLineEnd)) box += kLineEnd;
    app.Main.TTLE.Text = box + read.text;
    said = std::to_string(read.sets) + (read.sets == 1 ? " element set" : " element sets") + " pasted, " +
           WhatToPress(app.Main);
    if (!leftOut.empty()) app.Boxes.Tell(leftOut + ".", MessageIcon::Warning);
    return true;
}

std::string TextPastedIntoBox(MainControls& main, std::string_view text) {
    ElementText read = ReadElementText(text);
    if (!read.IsMessage()) return std::string(text);
    const std::string leftOut = LeftOutText(read);
    if (!leftOut.empty()) main.LCommandOutput.Caption = (read.sets == 0 ? "ERROR: " : "") + leftOut;
    return std::move(read.text);
}

}  // namespace glintara
