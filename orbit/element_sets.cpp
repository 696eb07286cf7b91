#include "orbit/element_sets.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/astro/calendar.h"
#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/glintcore.h"
#include "orbit/files.h"

namespace glintara {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kLine1Digit = '1';
constexpr char kLine2Digit = '2';

// Gravitational parameter of the Earth that the semi-major axis is worked out with, cubic metres per second squared.
constexpr double kOrbitMu = 398618327999999.94;

// Columns of an element set's lines, counted from 1, both ends included (NORAD two-line format).
struct Columns {
    std::size_t first;
    std::size_t last;
};

constexpr Columns kSatNumber{3, 7};
constexpr Columns kDesignator{10, 17};
constexpr Columns kEpochText{19, 32};
constexpr Columns kMeanMotionDot{34, 43};
constexpr Columns kMeanMotionDDot{45, 50};
constexpr Columns kMeanMotionDDotExponent{51, 52};
constexpr Columns kBStar{54, 59};
constexpr Columns kBStarExponent{60, 61};
constexpr Columns kElementSetNumber{65, 68};

constexpr Columns kInclination{9, 16};
constexpr Columns kRaanAngle{18, 25};
constexpr Columns kEccentricity{27, 33};
constexpr Columns kArgPerigee{35, 42};
constexpr Columns kMeanAnomaly{44, 51};
constexpr Columns kMeanMotion{53, 63};

std::string_view Field(std::string_view line, Columns columns) {
    if (line.size() < columns.first) return {};
    return line.substr(columns.first - 1, columns.last - columns.first + 1);
}

double NumberField(std::string_view line, Columns columns) { return LeadingNumber(Field(line, columns)); }

double RadiansField(std::string_view line, Columns columns) { return NumberField(line, columns) * kDegToRad; }

// A mantissa with its sign column and without its decimal point, times a power of ten in the two columns behind it.
double ExponentField(std::string_view line, Columns mantissa, Columns exponent) {
    const std::string_view digits = Field(line, mantissa);
    if (digits.empty()) return 0;
    std::string text(digits.substr(0, 1));
    text += '.';
    text += digits.substr(1);
    return LeadingNumber(text) * std::pow(10.0, NumberField(line, exponent));
}

double FractionField(std::string_view line, Columns columns) {
    std::string text = "0.";
    text += Field(line, columns);
    return LeadingNumber(text);
}

// The columns can hold numbers like "9e99"; what does not fit becomes the nearest that does.
std::int16_t ShortIntegerField(std::string_view line, Columns columns) {
    using Limits = std::numeric_limits<std::int16_t>;
    const double value = NumberField(line, columns);
    if (std::isnan(value)) return 0;
    return static_cast<std::int16_t>(
        std::clamp(std::nearbyint(value), static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

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

bool IsElementLine(std::string_view line, char digit) {
    return CheckTLELine(line).ok && !line.empty() && line.front() == digit;
}

// The set at the front of `text`; nothing when its lines are not those of an element set.
std::optional<ElementSetText> CutElementSet(std::string_view text) {
    ElementSetText set;
    LineCursor cursor(text);
    if (BeginsWithName(text)) set.name = WithoutLineNumber(cursor.TakeLine());
    set.line1 = cursor.TakeLine().substr(0, kElementLineLength);
    set.line2 = cursor.TakeLine().substr(0, kElementLineLength);
    if (!IsElementLine(set.line1, kLine1Digit) || !IsElementLine(set.line2, kLine2Digit)) return std::nullopt;
    set.rest = cursor.Rest();
    return set;
}

void ReadLine1(SatRecord& satellite, std::string_view line) {
    satellite.Line1 = line;
    satellite.SatNumber = Field(line, kSatNumber);
    satellite.Designator = Field(line, kDesignator);
    satellite.EpochText = Field(line, kEpochText);
    satellite.MeanMotionDot = NumberField(line, kMeanMotionDot);
    satellite.MeanMotionDDot = ExponentField(line, kMeanMotionDDot, kMeanMotionDDotExponent);
    satellite.BStar = ExponentField(line, kBStar, kBStarExponent);
    satellite.ElementSetNumber = ShortIntegerField(line, kElementSetNumber);
}

void ReadLine2(SatRecord& satellite, std::string_view line) {
    satellite.Line2 = line;
    satellite.Inclination = RadiansField(line, kInclination);
    satellite.RaanAngle = RadiansField(line, kRaanAngle);
    satellite.Eccentricity = FractionField(line, kEccentricity);
    satellite.ArgPerigee = RadiansField(line, kArgPerigee);
    satellite.MeanAnomaly = RadiansField(line, kMeanAnomaly);
    satellite.MeanMotion = NumberField(line, kMeanMotion);
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

// One run of admission over the text of the box.
class Admission {
  public:
    Admission(Application& app, TLEMode mode, bool onlyNewer, bool onlySelected)
        : app_(app),
          data_(app.Data),
          mode_(mode),
          onlyNewer_(onlyNewer),
          onlySelected_(onlySelected),
          startCount_(app.Data.SatCount),
          text_(app.Main.TTLE.Text.Get()),
          rest_(text_) {
        if (mode_ != TLEMode::Add) known_.emplace(data_);
    }

    void Run() {
        while (AdmitNext()) {
        }
        Finish();
    }

  private:
    // Admits the set at the front of the rest; false ends the run.
    bool AdmitNext() {
        if (rest_.find(kLineEnd) == std::string_view::npos) return Stop("ERROR: Invalid TLE Text");
        if (data_.SatCount >= kSatCapacity) return Stop("ERROR: Already too many satellites");

        const std::optional<ElementSetText> set = CutElementSet(rest_);
        if (!set) return StopAtBadData();
        std::optional<SatRecord> satellite = ReadSatellite(*set);
        if (!satellite) return StopAtBadData();

        if (set->name) carriedName_ = *set->name;
        TakeIn(std::move(*satellite));
        rest_ = set->rest;
        return rest_.find(kLine1Digit) != std::string_view::npos;
    }

    bool Stop(std::string_view label) {
        label_ = label;
        return false;
    }

    bool StopAtBadData() {
        badData_ = true;
        return Stop("ERROR: Invalid TLE Text");
    }

    // The set as a record of its own, ready to be propagated; nothing when the engine refuses it. A set without a name
    // line bears the name of the one before it.
    std::optional<SatRecord> ReadSatellite(const ElementSetText& set) const {
        std::optional<SatRecord> satellite(std::in_place);
        satellite->Name = set.name.value_or(carriedName_);
        satellite->TitleLine = satellite->Name;
        ReadLine1(*satellite, set.line1);
        ReadLine2(*satellite, set.line2);
        satellite->MeanRadiusA = MeanRadiusOf(satellite->MeanMotion, data_.Site.SiteRadius);
        const int refused =
            SatelliteInit(satellite->Line1.c_str(), satellite->Line2.c_str(), 'i', &satellite->EngineBlock);
        if (refused != 0) return std::nullopt;
        if (app_.GiveDefaultModel != nullptr) app_.GiveDefaultModel(*satellite);
        return satellite;
    }

    // Replaces what the set replaces, and appends it unless it has found its satellite or is not to be added.
    void TakeIn(SatRecord satellite) {
        anyAdmitted_ = true;
        ++data_.UsageStats.TLECount;

        const int index = data_.SatCount + 1;
        satellite.OrbitNumber = static_cast<std::int16_t>(index);
        const bool found = UpdateKnown(satellite);
        if (!found && mode_ != TLEMode::UpdateExisting) {
            if (known_) known_->Add(satellite, index);
            data_.Satellite(index) = std::move(satellite);
            data_.SatCount = index;
        }
        label_ = "Added Satellites #" + std::to_string(data_.SatCount - startCount_);
        if (mode_ != TLEMode::Add) label_ += " (" + std::to_string(updated_) + " updated)";
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
            ++updated_;
        }
        return found;
    }

    void Finish() {
        app_.Main.TTLE.Text = std::string(rest_);
        if (anyAdmitted_) {
            app_.Main.CPlotOrbit.Value = true;
            app_.Windows.SyncronizeMenuBar();
        }
        app_.Main.LCommandOutput.Caption = label_;
        if (badData_) app_.Boxes.Tell("ERROR: Bad TLE Data", MessageIcon::Critical);

        app_.Windows.UpDateAll();
        app_.Windows.RefreshInfo();
        if (!anyAdmitted_) return;
        app_.Windows.UpdateGraphicsLevel2();
        app_.Windows.SaveStat();
    }

    Application& app_;
    CommonData& data_;
    const TLEMode mode_;
    const bool onlyNewer_;
    const bool onlySelected_;
    const int startCount_;

    const std::string text_;  // a copy, since handlers that run meanwhile may write the box
    std::string_view rest_;
    std::optional<SatNumberIndex> known_;  // only when sets may replace
    std::string_view carriedName_;
    std::string label_;
    int updated_ = 0;
    bool anyAdmitted_ = false;
    bool badData_ = false;
};

}  // namespace

TLELineCheck CheckTLELine(std::string_view line) {
    TLELineCheck check;
    if (line.size() != kElementLineLength) return check;
    int sum = 0;
    for (const char c : line.substr(0, kElementLineLength - 1)) {
        if (c >= '0' && c <= '9') sum += c - '0';
        if (c == '-') ++sum;
    }
    check.checksumMatches = line.back() - '0' == sum % 10;
    return check;
}

double MeanRadiusOf(double meanMotion, double siteRadius) {
    const double period = kSecondsPerDay / meanMotion;
    return std::cbrt(period * period * kOrbitMu / (kPi * kPi * 4)) / siteRadius;
}

double EpochToJD(const SatRecord& satellite) { return EpochTextToJD(satellite.EpochText); }

void CApplyTLEOrbitFnct(Application& app, TLEMode mode, bool onlyNewer, bool onlySelected) {
    Admission(app, mode, onlyNewer, onlySelected).Run();
}

void CApplyTLEOrbit_click(Application& app) {
    app.Windows.ChangeSatelliteSignal();
    CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
}

void CUpdateTLE_click(Application& app) {
    app.Windows.ChangeSatelliteSignal();
    CApplyTLEOrbitFnct(app, TLEMode::AddAndUpdate, false, false);
}

std::string BoxText(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) text.remove_prefix(kByteOrderMark.size());

    std::string result;
    result.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\r' && c != '\n') {
            result += c;
            continue;
        }
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        while (!result.empty() && (result.back() == ' ' || result.back() == '\t')) result.pop_back();
        result += kLineEnd;
    }
    return result;
}

void EnterTLEText(Application& app, std::string_view text) { app.Main.TTLE.Text = BoxText(text); }

bool LoadTLEFile(Application& app, const std::filesystem::path& path) {
    const std::optional<std::string> content = ReadWholeFile(path, kLargestTLEFile);
    if (!content) {
        app.Boxes.Tell("Error Loading File", MessageIcon::Critical);
        return false;
    }
    EnterTLEText(app, *content);
    app.Main.LCommandOutput.Caption =
        "File loaded, press " + app.Main.CApplyTLEOrbit.Caption.Get() + " or " + app.Main.CUpdateTLE.Caption.Get();
    return true;
}

}  // namespace glintara
