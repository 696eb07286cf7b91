#include "orbit/advanced_selection.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "engine/astro/number_text.h"

namespace glintara::advanced_selection {

namespace {

constexpr double kHighestElevation = 90;

std::array<RangeFields*, 6> RangesOf(AdvSelControls& form) {
    return {&form.Inclination, &form.Perigee, &form.Apogee, &form.Period, &form.Eccentricity, &form.Age};
}

/// What a field holds.
struct Reading {
    std::optional<double> number;  ///< none when the field is empty, or cannot be read
    std::string wrong;             ///< why it cannot be read
};

Reading Read(const TextBox& field) {
    const std::string_view text = TrimmedText(field.Text.Get(), " \t");
    if (text.empty()) return {};
    const std::optional<double> number = StrictNumber(text);
    if (number) return {number, {}};
    const bool comma = text.find(',') != std::string_view::npos && text.find('.') == std::string_view::npos;
    return {{}, comma ? "use \".\", not \",\"" : "not a number"};
}

struct RangeReading {
    Limits limits;
    std::string wrong;
};

RangeReading Read(const RangeFields& fields) {
    const Reading from = Read(fields.TFrom);
    if (!from.wrong.empty()) return {{}, from.wrong};
    const Reading to = Read(fields.TTo);
    if (!to.wrong.empty()) return {{}, to.wrong};
    if (from.number && to.number && *from.number > *to.number) return {{}, "from is above to"};
    return {{from.number, to.number}, {}};
}

Reading ReadElevation(const TextBox& field) {
    Reading elevation = Read(field);
    if (elevation.number && std::abs(*elevation.number) > kHighestElevation) return {{}, "not from -90 to 90"};
    return elevation;
}

std::string CountText(const SelectionCount& count, int all) {
    if (all == 0) return "The satellite list is empty";
    return std::to_string(count.matching) + " of " + std::to_string(all) +
           (count.matching == 1 ? " matches" : " match") + ". Selected: " + std::to_string(count.before) + " now, " +
           std::to_string(count.after) + " after \"Apply\"";
}

/// The sky moves on by itself, and the clock, which makes elements older or younger, may be set at any time.
void FollowClock(AdvSelControls& form) {
    const bool aged = !form.Age.TFrom.Text.Get().empty() || !form.Age.TTo.Text.Get().empty();
    form.TimerCount.Enabled = form.Visible && (form.CLit.Value || form.CAbove.Value || aged);
}

void ConnectOneOf(Application& app, ModelTest hasModel, std::array<OptionButton*, 3> options) {
    for (OptionButton* const option : options)
        option->Value.SetHandler([&app, hasModel, option, options] {
            AdvSelControls& form = app.AdvSel;
            if (form.Muted) return;
            form.Muted = true;
            // One of several is left by another that is chosen, not by itself.
            for (OptionButton* const other : options)
                if (other != option) other->Value = option->Value ? false : other->Value.Get();
            bool any = false;
            for (const OptionButton* const other : options) any = any || other->Value;
            if (!any) option->Value = true;
            form.Muted = false;
            Refresh(app, hasModel);
        });
}

}  // namespace

std::optional<SelectionQuest> QuestOf(const AdvSelControls& form) {
    SelectionQuest quest;
    const std::array<std::pair<const RangeFields*, Limits*>, 6> ranges{{
        {&form.Inclination, &quest.inclination},
        {&form.Perigee, &quest.perigee},
        {&form.Apogee, &quest.apogee},
        {&form.Period, &quest.period},
        {&form.Eccentricity, &quest.eccentricity},
        {&form.Age, &quest.age},
    }};
    for (const auto& [fields, limits] : ranges) {
        const RangeReading range = Read(*fields);
        if (!range.wrong.empty()) return std::nullopt;
        *limits = range.limits;
    }
    if (!form.OAnyModel.Value) quest.model = form.OWithModel.Value.Get();
    quest.lit = form.CLit.Value;
    if (form.CAbove.Value) {
        const Reading elevation = ReadElevation(form.TMinElevation);
        if (!elevation.wrong.empty()) return std::nullopt;
        quest.leastElevation = elevation.number.value_or(0);
    }
    return quest;
}

SelectionMode ModeOf(const AdvSelControls& form) {
    if (form.OAdd.Value) return SelectionMode::Add;
    return form.OTake.Value ? SelectionMode::Take : SelectionMode::Replace;
}

void Refresh(Application& app, ModelTest hasModel) {
    AdvSelControls& form = app.AdvSel;
    if (form.Muted) return;
    FollowClock(form);
    if (!form.Visible) return;
    for (RangeFields* const fields : RangesOf(form)) fields->LNote.Caption = Read(*fields).wrong;
    form.TMinElevation.Enabled = form.CAbove.Value;
    form.LElevationNote.Caption = form.CAbove.Value ? ReadElevation(form.TMinElevation).wrong : std::string();
    const std::optional<SelectionQuest> quest = QuestOf(form);
    form.CApply.Enabled = quest.has_value() && app.Data.SatCount > 0;
    form.LCount.Caption = quest ? CountText(CountMatching(app, *quest, ModeOf(form), hasModel), app.Data.SatCount)
                                : "A field cannot be read: see beside it";
}

void CApply_click(Application& app, ModelTest hasModel) {
    const std::optional<SelectionQuest> quest = QuestOf(app.AdvSel);
    if (!quest) return;
    SelectMatching(app, *quest, ModeOf(app.AdvSel), hasModel);
    app.Windows.UpDateAll();
    Refresh(app, hasModel);
}

void CClear_click(Application& app, ModelTest hasModel) {
    AdvSelControls& form = app.AdvSel;
    form.Muted = true;
    for (RangeFields* const fields : RangesOf(form))
        for (TextBox* const field : {&fields->TFrom, &fields->TTo}) field->Text = std::string();
    form.OAnyModel.Value = true;
    for (OptionButton* const option : {&form.OWithModel, &form.OWithoutModel}) option->Value = false;
    for (CheckBox* const box : {&form.CLit, &form.CAbove}) box->Value = false;
    form.TMinElevation.Text = std::string("0");
    form.Muted = false;
    Refresh(app, hasModel);
}

void Connect(Application& app, ModelTest hasModel) {
    AdvSelControls& form = app.AdvSel;
    const auto refresh = [&app, hasModel] { Refresh(app, hasModel); };
    for (RangeFields* const fields : RangesOf(form))
        for (TextBox* const field : {&fields->TFrom, &fields->TTo}) field->Text.SetHandler(refresh);
    form.TMinElevation.Text.SetHandler(refresh);
    for (CheckBox* const box : {&form.CLit, &form.CAbove}) box->Value.SetHandler(refresh);
    ConnectOneOf(app, hasModel, {&form.OAnyModel, &form.OWithModel, &form.OWithoutModel});
    ConnectOneOf(app, hasModel, {&form.OReplace, &form.OAdd, &form.OTake});
    form.CApply.SetClickHandler([&app, hasModel] { CApply_click(app, hasModel); });
    form.CClear.SetClickHandler([&app, hasModel] { CClear_click(app, hasModel); });
    form.CClose.SetClickHandler([&form] { form.Visible = false; });
    app.Satellites.LSat.Selection.SetHandler(refresh);
    form.TimerCount.Stop();
    form.TimerCount.SetTickHandler(refresh);
}

}  // namespace glintara::advanced_selection
