#include "orbit/observations.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "engine/astro/number_text.h"
#include "engine/astro/precession.h"
#include "orbit/files.h"
#include "orbit/iod_lines.h"
#include "orbit/output.h"
#include "orbit/satellite_table.h"

namespace glintara::observations {

namespace {

constexpr double kJ2000Epoch = 2000;
constexpr double kDaysPerJulianYear = 365.25;

constexpr std::size_t kLaunchYearWidth = 2;
constexpr std::size_t kLaunchNumberWidth = 3;
constexpr double kLargestLaunchYear = 9999;
constexpr double kLargestLaunchNumber = 999;

constexpr std::string_view kWindowsLineEnd = "\r\n";

using Lines = std::vector<std::string>;

bool TakesFromSatellite(const Application& app) { return app.Observations.COInfo.Value && app.Data.SatCount > 0; }

/// `text` with zeros ahead, its last `width` characters.
std::string Padded(std::string_view text, std::size_t width) {
    const std::string padded = std::string(width, '0') + std::string(text);
    return padded.substr(padded.size() - width);
}

std::string_view WithoutBlanksBehind(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

/// Up to `count` characters of `text` from its character `first` on, counted from 1; less where it is shorter.
std::string_view Middle(std::string_view text, std::size_t first, std::size_t count = std::string_view::npos) {
    return first <= text.size() ? text.substr(first - 1, count) : std::string_view();
}

/// What the four fields of the object hold.
struct ObjectTexts {
    std::string number;
    std::string year;
    std::string launch;
    std::string suffix;
};

ObjectTexts TextsOf(const SatRecord& satellite) {
    const std::string_view designator = satellite.Designator;
    return {Padded(TrimmedText(satellite.SatNumber), 5), std::string(TrimmedText(Middle(designator, 1, 2))),
            std::string(TrimmedText(Middle(designator, 3, 3))), std::string(TrimmedText(Middle(designator, 6)))};
}

ObjectTexts TextsOf(const IODPoint& point) {
    const std::string_view suffix(point.LaunchSuffix.data(), point.LaunchSuffix.size());
    return {SatelliteNumberText(point.ObjectNumber), Padded(PlainNumberText(point.LaunchYear), kLaunchYearWidth),
            Padded(PlainNumberText(point.LaunchNumber), kLaunchNumberWidth), std::string(WithoutBlanksBehind(suffix))};
}

/// Why the fields cannot be taken; empty when they can.
std::string FaultOf(const ObjectTexts& texts) {
    const auto outside = [](double value, double most) { return value < 0 || value > most; };
    if (outside(SatelliteNumberValue(texts.number), kLargestSatelliteNumber))
        return "The object number must be 0 to " + PlainNumberText(kLargestSatelliteNumber);
    if (outside(LeadingNumber(texts.year), kLargestLaunchYear)) return "The launch year must be two digits";
    if (outside(LeadingNumber(texts.launch), kLargestLaunchNumber)) return "The launch number must be 0 to 999";
    return "";
}

void TakeObject(const ObjectTexts& texts, IODPoint& point) {
    constexpr int kCentury = 100;
    point.ObjectNumber = static_cast<std::int32_t>(SatelliteNumberValue(texts.number));
    point.LaunchYear = static_cast<std::int16_t>(static_cast<int>(LeadingNumber(texts.year)) % kCentury);
    point.LaunchNumber = static_cast<std::int16_t>(LeadingNumber(texts.launch));
    const std::string suffix = texts.suffix + "   ";
    for (std::size_t i = 0; i < point.LaunchSuffix.size(); ++i) {
        const bool isPlain = suffix[i] >= ' ' && suffix[i] <= '~';
        point.LaunchSuffix[i] = isPlain ? suffix[i] : ' ';  // a line is plain text
    }
}

char ChosenCondition(const ObservationControls& form) {
    for (std::size_t i = 0; i < form.Option1.size(); ++i)
        if (form.Option1[i].Value) return kConditionLetters[i];
    return kConditionLetters.back();
}

/// The line with `point` in its columns; what stands behind them is kept.
std::string Rewritten(std::string_view line, const IODPoint& point) {
    return IODPointToText(point) + std::string(WithoutBlanksBehind(Middle(line, kIODLineLength + 1)));
}

/// What an Apply changes: the fields in which `now` differs from `before`.
class AppliedFields {
  public:
    AppliedFields(const IODPoint& before, const IODPoint& now) : before_(before), now_(now) {}

    /// The whole object, changed or not: it is that of the satellite.
    void WholeObject() { wholeObject_ = true; }

    void WriteInto(IODPoint& point) const {
        Write(&IODPoint::ObjectNumber, point, wholeObject_);
        Write(&IODPoint::LaunchYear, point, wholeObject_);
        Write(&IODPoint::LaunchNumber, point, wholeObject_);
        Write(&IODPoint::LaunchSuffix, point, wholeObject_);
        Write(&IODPoint::Condition, point, false);
    }

  private:
    template <class Field>
    void Write(Field IODPoint::*field, IODPoint& point, bool always) const {
        if (always || before_.*field != now_.*field) point.*field = now_.*field;
    }

    const IODPoint& before_;
    const IODPoint& now_;
    bool wholeObject_ = false;
};

/// The point of the current line becomes the one under edit.
void LoadCurrentLine(Application& app) {
    ObservationControls& form = app.Observations;
    const int current = form.LIOD.Current;
    if (current < 0 || current >= form.LIOD.Count()) return;
    if (IODTextToPoint(form.LIOD.Lines.Get()[static_cast<std::size_t>(current)], form.Point)) ShowPoint(app);
}

void ChooseCondition(ObservationControls& form, std::size_t chosen) {
    for (std::size_t i = 0; i < form.Option1.size(); ++i) form.Option1[i].Value = i == chosen;
}

/// Commands that would have nothing to act on are greyed.
void FollowList(Application& app) {
    ObservationControls& form = app.Observations;
    const bool any = form.LIOD.Count() > 0;
    for (Button* button : {&form.CExport, &form.CClearAllIOD, &form.CSaveIOD}) button->Enabled = any;
    const bool anySelected = any && !form.LIOD.Selected.Get().empty();
    for (Button* button : {&form.CDeleteIOD, &form.CCopyIOD}) button->Enabled = anySelected;
}

/// A line of a text that holds something, and which one of the text it is.
struct TextLine {
    std::size_t number;
    std::string_view text;
};

std::vector<TextLine> LinesOf(std::string_view text) {
    std::vector<TextLine> lines;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::size_t behind = text.substr(end, 2) == kWindowsLineEnd ? end + 2 : std::min(end + 1, text.size());
        const std::string_view line = text.substr(0, end);
        if (!TrimmedText(line).empty()) lines.push_back({number, line});
        text.remove_prefix(behind);
    }
    return lines;
}

void Refuse(Application& app, std::string_view subject, std::string_view fault) {
    app.Boxes.Tell(std::string(subject) + " cannot be read as an observation in the IOD format: " + std::string(fault) +
                       ".\nThe list stays as it was.",
                   MessageIcon::Warning);
}

std::string Joined(const Lines& lines, std::string_view end) {
    std::string text;
    for (const std::string& line : lines) text.append(line).append(end);
    return text;
}

Lines SelectedLines(const ListBox& list) {
    Lines lines;
    for (const int index : list.Selected.Get())
        if (index < list.Count()) lines.push_back(list.Lines.Get()[static_cast<std::size_t>(index)]);
    return lines;
}

bool Confirmed(Application& app, std::string_view what) {
    return app.Boxes.AskYesNo(std::string(what) + "\nAre you sure?");
}

}  // namespace

int ConditionIndex(char condition) {
    const char letter = condition >= 'a' && condition <= 'z' ? static_cast<char>(condition - 'a' + 'A') : condition;
    return static_cast<int>(std::min(kConditionLetters.find(letter), kConditionLetters.size() - 1)) + 1;
}

void ShowPoint(Application& app) {
    ObservationControls& form = app.Observations;
    const bool fromSatellite = TakesFromSatellite(app);
    const ObjectTexts texts = fromSatellite ? TextsOf(app.Data.Satellite(app.Data.WorkingSat())) : TextsOf(form.Point);
    form.TSatNumber.Text = texts.number;
    form.TLaunchYear.Text = texts.year;
    form.TLaunchNumber.Text = texts.launch;
    form.TLaunchSuffix.Text = texts.suffix;
    for (TextBox* field : {&form.TSatNumber, &form.TLaunchYear, &form.TLaunchNumber, &form.TLaunchSuffix})
        field->Enabled = !fromSatellite;
    ChooseCondition(form, static_cast<std::size_t>(ConditionIndex(form.Point.Condition) - 1));
}

void RefreshInfo(Application& app, RefreshMode mode, const IODPoint& point) {
    ObservationControls& form = app.Observations;
    form.COInfo.Enabled = app.Data.SatCount > 0;
    Lines lines = form.LIOD.Lines;
    for (std::string& line : lines) {
        IODPoint read;
        if (IODTextToPoint(line, read)) line = Rewritten(line, read);
    }
    if (mode == RefreshMode::AddPoint) {
        form.Point = point;
        lines.push_back(IODPointToText(point));
        const int last = static_cast<int>(lines.size()) - 1;
        form.LIOD.SetLines(std::move(lines), {last});
        ShowPoint(app);
        form.Visible = true;
        return;
    }
    form.LIOD.Lines = std::move(lines);
    const bool wasLocked = !form.TSatNumber.Enabled;
    if (wasLocked || TakesFromSatellite(app)) {
        const char condition = std::exchange(form.Point.Condition, ChosenCondition(form));
        ShowPoint(app);
        form.Point.Condition = condition;
    }
}

std::string DefineIODPoint(Application& app, const Equatorial& ofDate, double timeStep, double pointerSize) {
    const CommonData& data = app.Data;
    IODPoint point = app.Observations.Point;
    if (TakesFromSatellite(app)) TakeObject(TextsOf(data.Satellite(data.WorkingSat())), point);
    point.StationCode = data.StationNumber;
    point.Year = data.SimYear;
    point.Month = data.SimMonth;
    point.Day = data.SimDay;
    point.Hour = data.SimHour;
    point.Minute = data.SimMinute;
    point.Second = data.SimSecond;
    const double epoch = kJ2000Epoch + (data.SimTime - kJ2000) / kDaysPerJulianYear;
    const Equatorial place = Precess(PrecessionMatrix(kJ2000Epoch, epoch), ofDate);
    point.Declination = place.dec;
    point.RightAscension = place.ra;
    point.TimeAccuracy = RoundSignificant(timeStep, 1);
    point.PositionAccuracy = pointerSize / 2;
    RefreshInfo(app, RefreshMode::AddPoint, point);
    return app.Observations.LIOD.Lines.Get().back();
}

void CApply_click(Application& app) {
    ObservationControls& form = app.Observations;
    const ObjectTexts texts{form.TSatNumber.Text, form.TLaunchYear.Text, form.TLaunchNumber.Text,
                            form.TLaunchSuffix.Text};
    const std::string fault = FaultOf(texts);
    if (!fault.empty()) {
        app.Boxes.Tell("ERROR: " + fault, MessageIcon::Warning);
        return;
    }
    const IODPoint before = form.Point;
    TakeObject(texts, form.Point);
    form.Point.Condition = ChosenCondition(form);
    AppliedFields applied(before, form.Point);
    if (TakesFromSatellite(app)) applied.WholeObject();
    Lines lines = form.LIOD.Lines;
    for (const int index : form.LIOD.Selected.Get()) {
        if (index >= form.LIOD.Count()) continue;
        std::string& line = lines[static_cast<std::size_t>(index)];
        IODPoint point;
        if (!IODTextToPoint(line, point)) continue;
        applied.WriteInto(point);
        line = Rewritten(line, point);
    }
    form.LIOD.Lines = std::move(lines);
    ShowPoint(app);
}

void CClearAllIOD_click(Application& app) {
    if (Confirmed(app, "All the observations of the list will be deleted!")) app.Observations.LIOD.SetLines({}, {});
}

void CDeleteIOD_click(Application& app) {
    ListBox& list = app.Observations.LIOD;
    if (list.Selected.Get().empty() || !Confirmed(app, "The selected observations will be deleted!")) return;
    const std::set<int> selected = list.Selected;
    Lines kept;
    for (int index = 0; index < list.Count(); ++index)
        if (!selected.contains(index)) kept.push_back(list.Lines.Get()[static_cast<std::size_t>(index)]);
    list.SetLines(std::move(kept), {});
}

void CExport_click(Application& app) {
    output::Init(app);
    output::ClearAll(app);
    const Lines& lines = app.Observations.LIOD.Lines;
    if (lines.empty()) return;
    const std::string all = Joined(lines, kWindowsLineEnd);
    output::PrintLine(app, std::string_view(all).substr(0, all.size() - kWindowsLineEnd.size()));
}

void CAddLine_click(Application& app) {
    ObservationControls& form = app.Observations;
    if (EnterIODLines(app, form.TIODLine.Text.Get())) form.TIODLine.Text = std::string();
}

bool EnterIODLines(Application& app, std::string_view text) {
    const std::vector<TextLine> entered = LinesOf(text);
    if (entered.empty()) {
        Refuse(app, "The text", "it has no lines");
        return false;
    }
    ListBox& list = app.Observations.LIOD;
    Lines lines = list.Lines;
    std::set<int> added;
    for (const auto& [number, line] : entered) {
        IODPoint point;
        if (!IODTextToPoint(line, point)) {
            const bool alone = entered.size() == 1;
            Refuse(app, alone ? "The line" : "Line " + std::to_string(number) + " of the text", IODLineFault(line));
            return false;
        }
        added.insert(added.end(), static_cast<int>(lines.size()));
        lines.push_back(Rewritten(line, point));
    }
    list.SetLines(std::move(lines), std::move(added));
    return true;
}

bool ReplaceIODLine(Application& app, int index, std::string_view text) {
    ListBox& list = app.Observations.LIOD;
    if (index < 0 || index >= list.Count()) return false;
    IODPoint point;
    if (!IODTextToPoint(text, point)) {
        Refuse(app, "The line", IODLineFault(text));
        return false;
    }
    Lines lines = list.Lines;
    lines[static_cast<std::size_t>(index)] = Rewritten(text, point);
    list.Lines = std::move(lines);
    if (list.Current == index) LoadCurrentLine(app);
    return true;
}

std::string AllLinesText(const Application& app) { return Joined(app.Observations.LIOD.Lines, "\n"); }

std::string SelectedLinesText(const Application& app) { return Joined(SelectedLines(app.Observations.LIOD), "\n"); }

bool LoadIODFile(Application& app, const std::filesystem::path& path) {
    const std::optional<std::string> text = ReadWholeFile(path, kLargestIODFile);
    if (!text) {
        app.Boxes.Tell("Error Loading File", MessageIcon::Critical);
        return false;
    }
    return EnterIODLines(app, *text);
}

bool SaveIODFile(Application& app, const std::filesystem::path& path) {
    if (ReplaceFile(path, AllLinesText(app))) return true;
    app.Boxes.Tell("Error Saving File", MessageIcon::Critical);
    return false;
}

void Connect(Application& app) {
    ObservationControls& form = app.Observations;
    form.CApply.SetClickHandler([&app] { CApply_click(app); });
    form.CExport.SetClickHandler([&app] { CExport_click(app); });
    form.CClearAllIOD.SetClickHandler([&app] { CClearAllIOD_click(app); });
    form.CDeleteIOD.SetClickHandler([&app] { CDeleteIOD_click(app); });
    form.CAddLine.SetClickHandler([&app] { CAddLine_click(app); });
    form.CClose.SetClickHandler([&app] { app.Observations.Visible = false; });
    form.COInfo.Value.SetHandler([&app] { ShowPoint(app); });
    form.LIOD.Lines.SetHandler([&app] { FollowList(app); });
    form.LIOD.Selected.SetHandler([&app] { FollowList(app); });
    form.LIOD.Current.SetHandler([&app] { LoadCurrentLine(app); });
    for (std::size_t i = 0; i < form.Option1.size(); ++i) {
        form.Option1[i].Value.SetHandler([&form, i] {
            if (form.Option1[i].Value) ChooseCondition(form, i);
        });
    }
    FollowList(app);
    form.COInfo.Enabled = app.Data.SatCount > 0;
    ShowPoint(app);
}

}  // namespace glintara::observations
