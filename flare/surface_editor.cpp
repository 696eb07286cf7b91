#include "flare/surface_editor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/geometry/attitude_types.h"
#include "flare/surface_fits.h"
#include "flare/surface_models.h"
#include "flare/surface_text.h"
#include "orbit/output.h"
#include "orbit/satellite_table.h"

namespace glintara::surface_editor {

namespace {

constexpr std::string_view kNoAutoOrientation = "Auto orientation is not available for this orientation type";
constexpr std::string_view kNoOrientationFound = "No orientation of the surface does that at this moment";
constexpr std::string_view kTooFewMirrors = "To compute the axis at least 3 mirrors are needed";
constexpr std::string_view kNoAxis =
    "The first three surfaces have no common rotation axis: two of them look the same way";
constexpr std::string_view kNoneSelected = "No satellites are selected";

constexpr int kMirrorsOfAxis = 3;

/// Rounding that the way to radians and back leaves in degrees: 12.3 must not stand on the 122nd step of a slider.
constexpr double kDegreeRounding = 1e-9;

constexpr double kFullTurn = 360;
constexpr double kStepsPerDegree = 10;

/// The attitude type behind each of `OOrient`.
constexpr std::array<OrientationType, kOrientationOptions> kTypeOfOption{
    OrientationType::AlongTrack,  OrientationType::AlongTarget, OrientationType::Rotating,
    OrientationType::AlongTrack,  // `kNoOrientationOption`
    OrientationType::VerticalSun, OrientationType::Inertial,
};

/// The handlers of the controls are mute as long as one of these stands.
class Mute {
  public:
    explicit Mute(MirrorControls& form) : form_(form), before_(std::exchange(form.Muted, true)) {}
    Mute(const Mute&) = delete;
    Mute& operator=(const Mute&) = delete;
    ~Mute() { form_.Muted = before_; }

  private:
    MirrorControls& form_;
    const bool before_;
};

bool IsDefined(const SurfaceModel& model) { return model.ModelFlags.starts_with('1'); }

void SetDefined(SurfaceModel& model, bool defined) { model.ModelFlags.replace(0, 1, 1, defined ? '1' : '0'); }

bool IsOfType(const SurfaceModel& model, OrientationType type) {
    return IsDefined(model) && OrientationTypeOf(model.OrientationType) == type;
}

/// The option of the model; nothing when it is undefined or of a type that is none.
std::optional<std::size_t> OptionOf(const SurfaceModel& model) {
    if (!IsDefined(model)) return std::nullopt;
    for (std::size_t i = 0; i < kOrientationOptions; ++i)
        if (i != kNoOrientationOption && static_cast<int>(kTypeOfOption[i]) == model.OrientationType) return i;
    return std::nullopt;
}

bool HasCurrent(const MirrorControls& form) {
    return IsDefined(form.Satellite.Surface) && form.CurrentMirror >= 1 &&
           form.CurrentMirror <= form.Satellite.Surface.MirrorCount;
}

MirrorRecord& Current(MirrorControls& form) { return form.Satellite.Surface.Mirror(form.CurrentMirror); }

/// The satellite under edit in the list, as long as it is the one that works; otherwise null.
SatRecord* InList(Application& app) {
    CommonData& data = app.Data;
    if (data.SatCount < 1) return nullptr;
    SatRecord& working = data.Satellite(data.WorkingSat());
    const SatRecord& mine = app.Mirror.Satellite;
    const bool same = working.OrbitNumber == mine.OrbitNumber && working.SatNumber == mine.SatNumber;
    return same ? &working : nullptr;
}

// The boxes of numbers.

enum class Quantity { Angle, Scatter, Axis, Target };

std::optional<double> ReadNumber(std::string_view text, Quantity quantity) {
    std::optional<double> number = StrictNumber(text);
    if (quantity == Quantity::Target) {
        const double id = SatelliteNumberValue(text);
        if (!number && SatelliteNumberText(id) == TrimmedText(text)) number = id;
        if (number) number = std::floor(*number);
        return number && *number >= 0 ? number : std::nullopt;
    }
    const bool isAngle = quantity != Quantity::Scatter;
    return number && isAngle && std::abs(*number) > kLargestAngle ? std::nullopt : number;
}

struct BoundNumber {
    NumberBox& box;
    const Label& label;
    Quantity quantity;
    bool used;  // its number belongs to the model as it stands
};

std::array<BoundNumber, 6> NumbersOf(MirrorControls& form) {
    const SurfaceModel& model = form.Satellite.Surface;
    const bool current = HasCurrent(form);
    const bool rotating = IsOfType(model, OrientationType::Rotating);
    return {{
        {form.TAngle, form.LAngle, Quantity::Angle, current},
        {form.TTilt, form.LTilt, Quantity::Angle, current},
        {form.TMagnify, form.LMagnify, Quantity::Scatter, current},
        {form.TRotAxisRA, form.LRotAxisRA, Quantity::Axis, rotating},
        {form.TRotAxisDEC, form.LRotAxisDEC, Quantity::Axis, rotating},
        {form.TExtra1, form.LExtra1, Quantity::Target, IsOfType(model, OrientationType::AlongTarget)},
    }};
}

bool IsTyped(const NumberBox& box) { return box.Text.Get() != box.Shown; }

bool IsBad(const BoundNumber& number) {
    return number.used && IsTyped(number.box) && !ReadNumber(number.box.Text.Get(), number.quantity);
}

double& NumberIn(MirrorControls& form, const NumberBox& box) {
    SurfaceModel& model = form.Satellite.Surface;
    if (&box == &form.TRotAxisRA) return model.RotAxisRA;
    if (&box == &form.TRotAxisDEC) return model.RotAxisDEC;
    if (&box == &form.TExtra1) return model.TargetSatID;
    MirrorRecord& mirror = Current(form);
    if (&box == &form.TAngle) return mirror.Angle;
    if (&box == &form.TTilt) return mirror.Tilt;
    return mirror.ScatterFactor;
}

double FromBox(double number, Quantity quantity) {
    switch (quantity) {
        case Quantity::Axis:
            return number * kDegToRad;
        case Quantity::Scatter:
            return ClampScatterFactor(number);
        case Quantity::Angle:
        case Quantity::Target:
            return number;
    }
    return number;
}

std::string BoxText(double number, Quantity quantity) {
    switch (quantity) {
        case Quantity::Axis:
            return AxisText(number);
        case Quantity::Target:
            return PlainNumberText(std::floor(number));
        case Quantity::Angle:
        case Quantity::Scatter:
            return PlainNumberText(number);
    }
    return {};
}

/// Takes what is typed and can be read into the model under edit.
void TakeFields(MirrorControls& form) {
    if (HasCurrent(form)) Current(form).MirrorName = form.TName.Text;
    for (const BoundNumber& number : NumbersOf(form)) {
        if (!number.used || !IsTyped(number.box)) continue;
        const std::optional<double> typed = ReadNumber(number.box.Text.Get(), number.quantity);
        if (!typed) continue;
        NumberIn(form, number.box) = FromBox(*typed, number.quantity);
        number.box.Shown = number.box.Text;
    }
}

std::string WhatIsAsked(Quantity quantity) {
    switch (quantity) {
        case Quantity::Angle:
        case Quantity::Axis:
            return "a number of degrees";
        case Quantity::Scatter:
            return "a number from 1 to 50";
        case Quantity::Target:
            return "a catalogue number";
    }
    return {};
}

/// What is wrong with the first field that cannot be read; nothing when all can.
std::string FirstObjection(MirrorControls& form) {
    const auto numbers = NumbersOf(form);
    const auto bad = std::find_if(numbers.begin(), numbers.end(), IsBad);
    if (bad == numbers.end()) return {};
    return "\"" + bad->label.Caption.Get() + "\" holds \"" + ShownName(bad->box.Text.Get()) + "\", which is not " +
           WhatIsAsked(bad->quantity) + ".";
}

/// Takes the fields for a command, which is refused when one of them cannot be read.
bool MayGoOn(Application& app) {
    MirrorControls& form = app.Mirror;
    if (const std::string objection = FirstObjection(form); !objection.empty()) {
        app.Boxes.Tell(objection, MessageIcon::Warning);
        return false;
    }
    TakeFields(form);
    return true;
}

int SliderStep(double degrees) {
    double angle = std::isfinite(degrees) ? std::fmod(degrees, kFullTurn) : 0;
    if (angle < 0) angle += kFullTurn;
    return static_cast<int>(angle * kStepsPerDegree + kDegreeRounding) % (kLastTenthOfTurn + 1);
}

// Showing.

std::array<CheckBox*, 5> DrawOptionsOf(MirrorControls& form) {
    return {&form.CRotAng, &form.CShowSourceRay, &form.CShowRotAxis, &form.CShowMirrorNormal, &form.CForceIllumination};
}

/// Whether what is typed and cannot be read stays in its box.
enum class BadText { Stays, Goes };

void ShowNumbers(MirrorControls& form, BadText badText) {
    for (const BoundNumber& number : NumbersOf(form)) {
        if (badText == BadText::Stays && IsBad(number)) continue;
        number.box.Shown = number.used ? BoxText(NumberIn(form, number.box), number.quantity) : std::string();
        number.box.Text = number.box.Shown;
    }
}

void ShowTarget(Application& app) {
    MirrorControls& form = app.Mirror;
    const bool along = IsOfType(form.Satellite.Surface, OrientationType::AlongTarget);
    for (Label* label : {&form.LExtra1, &form.LExtraInfo1}) label->Visible = along;
    form.TExtra1.Enabled = along;
    if (!along) {
        form.LExtraInfo1.Caption = std::string();
        return;
    }
    const std::optional<double> id = ReadNumber(form.TExtra1.Text.Get(), Quantity::Target);
    const int index = id ? SearchSatID(app.Data, *id) : 0;
    form.LExtraInfo1.Caption =
        "Target Sat: " + (index >= 1 ? ShownName(TrimmedText(app.Data.Satellite(index).Name)) : "Invalid");
}

/// They are for bodies that rotate; but one that is set holds for every satellite, so it can always be cleared.
void ShowDrawOptions(MirrorControls& form) {
    const bool rotating = IsOfType(form.Satellite.Surface, OrientationType::Rotating);
    for (CheckBox* box : DrawOptionsOf(form)) box->Enabled = rotating || box->Value;
}

void ShowOrientation(MirrorControls& form) {
    const SurfaceModel& model = form.Satellite.Surface;
    const std::optional<std::size_t> chosen = OptionOf(model);
    for (std::size_t i = 0; i < kOrientationOptions; ++i) form.OOrient[i].Value = chosen == i;
    form.OUndefined.Value = !IsDefined(model);
    const bool rotating = IsOfType(model, OrientationType::Rotating);
    for (NumberBox* box : {&form.TRotAxisRA, &form.TRotAxisDEC}) box->Enabled = rotating;
    form.CRotation.Enabled = rotating;
    form.SRotTeta.Enabled = rotating;
    ShowDrawOptions(form);
}

void ShowMirror(MirrorControls& form) {
    const bool defined = IsDefined(form.Satellite.Surface);
    const bool current = HasCurrent(form);
    form.FMirrorData.Visible = defined;
    form.FMirror.Visible = defined;
    form.CAddMirror.Enabled = defined;
    for (Button* button :
         {&form.CDeleteMirror, &form.CMoveUp, &form.CUpTime, &form.CFlareSet, &form.CBeamSet, &form.CSynchMirror})
        button->Enabled = current;
    for (TextBox* box :
         std::initializer_list<TextBox*>{&form.TName, &form.TMID, &form.TAngle, &form.TTilt, &form.TMagnify})
        box->Enabled = current;
    for (Slider* slider : {&form.SAngle, &form.STilt}) slider->Enabled = current;
    form.TName.Text = current ? Current(form).MirrorName : std::string();
    form.TMID.Text = current ? Current(form).MirrorID : std::string();
    form.SAngle.MoveTo(current ? SliderStep(Current(form).Angle) : 0);
    form.STilt.MoveTo(current ? SliderStep(Current(form).Tilt) : 0);
}

void ShowList(MirrorControls& form) {
    const SurfaceModel& model = form.Satellite.Surface;
    std::vector<std::string> lines;
    for (int i = 1; i <= model.MirrorCount; ++i) lines.push_back(ShownName(MakeMirrorIDS(model, i)));
    form.LMirrors.Lines = std::move(lines);
    form.LMirrors.Current = form.CurrentMirror >= 1 ? form.CurrentMirror - 1 : kNoLine;
}

void Show(Application& app, BadText badText) {
    MirrorControls& form = app.Mirror;
    const SurfaceModel& model = form.Satellite.Surface;
    form.CurrentMirror = std::clamp(form.CurrentMirror, std::min(1, model.MirrorCount), model.MirrorCount);
    const Mute mute(form);
    form.LSatRef.Caption = ShownName(SatelliteIdentityText(form.Satellite));
    ShowList(form);
    ShowOrientation(form);
    ShowMirror(form);
    ShowNumbers(form, badText);
    ShowTarget(app);
}

// The copies.

/// Takes the satellite from the list as it is now.
void TakeCopy(Application& app) {
    MirrorControls& form = app.Mirror;
    form.TimerUpdate.Stop();
    form.Satellite = app.Data.Satellite(app.Data.WorkingSat());
    SurfaceModel& model = form.Satellite.Surface;
    form.InList = model;
    model.MirrorCount = std::clamp(model.MirrorCount, 0, kMirrorCapacity);
    if (model.ModelFlags.empty()) model.ModelFlags = SurfaceModel().ModelFlags;
}

void BeginWithWorkingSatellite(Application& app) {
    MirrorControls& form = app.Mirror;
    TakeCopy(app);
    form.Backup = form.InList;
    form.CurrentMirror = 1;
    form.LFitInfo.Caption = std::string();
    Show(app, BadText::Goes);
}

/// After other hands have changed the model in the list.
void Reload(Application& app) {
    TakeCopy(app);
    Show(app, BadText::Goes);
}

void Give(Application& app, const SurfaceModel& model) {
    SatRecord* const satellite = InList(app);
    if (satellite == nullptr) return;
    satellite->Surface = model;
    app.Mirror.InList = model;
    app.Windows.UpdateGraphicsLevel2();
}

/// After a command has changed the model under edit.
void ApplyModel(Application& app) {
    app.Mirror.TimerUpdate.Stop();
    Give(app, app.Mirror.Satellite.Surface);
    Show(app, BadText::Goes);
}

// The commands.

bool Confirmed(Application& app, std::string_view what) {
    return app.Boxes.AskYesNo(std::string(what) + "\nAre you sure?");
}

void Warn(Application& app, std::string_view text) { app.Boxes.Tell(text, MessageIcon::Warning); }

/// The same for what is done to the selected satellites, of which there must be some.
bool ConfirmedForSelected(Application& app, std::string_view what) {
    CommonData& data = app.Data;
    const auto first = data.SatTable.begin() + 1;
    if (std::none_of(first, first + data.SatCount, [](const SatRecord& satellite) { return satellite.Selected; })) {
        Warn(app, kNoneSelected);
        return false;
    }
    return Confirmed(app, what);
}

template <class Action>
void ForEachSelected(CommonData& data, Action act) {
    for (int s = 1; s <= data.SatCount; ++s)
        if (data.Satellite(s).Selected) act(data.Satellite(s));
}

void AfterSelected(Application& app) {
    Reload(app);
    app.Windows.UpdateGraphicsLevel2();
}

void ChooseOrientation(Application& app, std::size_t option) {
    MirrorControls& form = app.Mirror;
    TakeFields(form);
    SurfaceModel& model = form.Satellite.Surface;
    SetDefined(model, true);
    model.OrientationType = static_cast<int>(kTypeOfOption[option]);
    form.LFitInfo.Caption = std::string();
    ApplyModel(app);
}

void ChooseUndefined(Application& app) {
    MirrorControls& form = app.Mirror;
    TakeFields(form);
    SetDefined(form.Satellite.Surface, false);
    form.LFitInfo.Caption = std::string();
    ApplyModel(app);
}

void Fit(Application& app, FitAim aim) {
    MirrorControls& form = app.Mirror;
    if (!HasCurrent(form) || !MayGoOn(app)) return;
    if (!CanBeFitted(form.Satellite.Surface)) {
        Warn(app, kNoAutoOrientation);
        return;
    }
    const std::optional<SurfaceAngles> angles = FitSurface(app, form.Satellite, aim);
    if (!angles) {
        Warn(app, kNoOrientationFound);
        return;
    }
    Current(form).Angle = angles->angle;
    Current(form).Tilt = angles->tilt;
    form.LFitInfo.Caption = ObjectionToFit(app, form.Satellite, aim);
    ApplyModel(app);
}

void Trim(MirrorControls& form, const Slider& slider, NumberBox& box) {
    if (form.Muted) return;
    box.Text = PlainNumberText(slider.Value / kStepsPerDegree);
    form.TimerUpdate.Restart(kTrimmingDelay);
}

void FollowName(MirrorControls& form) {
    if (form.Muted || !HasCurrent(form)) return;
    Current(form).MirrorName = form.TName.Text;
    MakeMirrorID(form.Satellite, form.CurrentMirror);
    form.TMID.Text = Current(form).MirrorID;
}

void FollowListCursor(Application& app) {
    const MirrorControls& form = app.Mirror;
    if (!form.Muted && form.LMirrors.Current != kNoLine) SelectMirror(app, form.LMirrors.Current + 1);
}

std::string OrientationCaption(const MirrorControls& form, const SurfaceModel& model) {
    if (!IsDefined(model)) return form.OUndefined.Caption;
    const std::optional<std::size_t> option = OptionOf(model);
    return option ? form.OOrient[*option].Caption.Get() : "???";
}

void ConnectOrientation(Application& app) {
    MirrorControls& form = app.Mirror;
    const auto follow = [&app](const OptionButton& option, auto choose) {
        MirrorControls& controls = app.Mirror;
        if (controls.Muted) return;
        if (option.Value) {
            choose();
            return;
        }
        // One of several is left by another that is chosen, not by itself.
        const Mute mute(controls);
        ShowOrientation(controls);
    };
    for (std::size_t i = 0; i < kOrientationOptions; ++i) {
        if (i == kNoOrientationOption) continue;
        form.OOrient[i].Value.SetHandler(
            [&app, &form, follow, i] { follow(form.OOrient[i], [&app, i] { ChooseOrientation(app, i); }); });
    }
    form.OUndefined.Value.SetHandler(
        [&app, &form, follow] { follow(form.OUndefined, [&app] { ChooseUndefined(app); }); });
}

void ConnectDrawing(Application& app) {
    MirrorControls& form = app.Mirror;
    form.SRotTeta.Value.SetHandler([&app] { app.Windows.UpdateGraphicsLevel2(); });
    for (CheckBox* box : DrawOptionsOf(form))
        box->Value.SetHandler([&app] {
            ShowDrawOptions(app.Mirror);
            app.Windows.UpdateGraphicsLevel2();
        });
}

/// The buttons of the main window that change the list of satellites.
std::array<Button*, 4> ListButtonsOf(MainControls& main) {
    return {&main.CApplyTLEOrbit, &main.CChangeOrbit, &main.CUpdateTLE, &main.CClearOrbitList};
}

}  // namespace

void OpenWindow(Application& app) {
    if (app.Data.SatCount < 1 || app.Mirror.Visible) return;
    BeginWithWorkingSatellite(app);
    for (Button* button : ListButtonsOf(app.Main)) button->Enabled = false;
    app.Windows.SyncronizeMenuBar();
    app.Mirror.Visible = true;
}

void CloseWindow(Application& app) {
    app.Mirror.TimerUpdate.Stop();
    for (Button* button : ListButtonsOf(app.Main)) button->Enabled = true;
    app.Windows.SyncronizeMenuBar();
    app.Mirror.Visible = false;
}

void ChangeSatelliteSignal(Application& app) {
    if (app.Mirror.Visible) LeaveField(app);
}

void RefreshData(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!form.Visible) return;
    if (app.Data.SatCount < 1) {
        CloseWindow(app);
        return;
    }
    const SatRecord* const satellite = InList(app);
    if (satellite == nullptr) {
        // What cannot be read goes with the satellite before, but not without a word.
        if (const std::string objection = FirstObjection(form); !objection.empty())
            app.Main.LCommandOutput.Caption = "Not taken: " + objection;
        BeginWithWorkingSatellite(app);
        return;
    }
    if (satellite->Surface != form.InList) {
        Reload(app);
        return;
    }
    SurfaceModel edited = std::move(form.Satellite.Surface);
    form.Satellite = *satellite;
    form.Satellite.Surface = std::move(edited);
    const Mute mute(form);
    form.LSatRef.Caption = ShownName(SatelliteIdentityText(form.Satellite));
    ShowTarget(app);
}

void Apply(Application& app) {
    MirrorControls& form = app.Mirror;
    form.TimerUpdate.Stop();
    TakeFields(form);
    Give(app, form.Satellite.Surface);
    Show(app, BadText::Stays);
}

void LeaveField(Application& app) {
    MirrorControls& form = app.Mirror;
    const bool named = HasCurrent(form) && form.InList.Mirror(form.CurrentMirror) != Current(form);
    const auto numbers = NumbersOf(form);
    const auto isNew = [](const BoundNumber& number) { return number.used && IsTyped(number.box) && !IsBad(number); };
    if (named || std::any_of(numbers.begin(), numbers.end(), isNew)) Apply(app);
}

void SelectMirror(Application& app, int index) {
    MirrorControls& form = app.Mirror;
    if (index < 1 || index > form.Satellite.Surface.MirrorCount || index == form.CurrentMirror) return;
    LeaveField(app);
    if (!MayGoOn(app)) {
        const Mute mute(form);
        form.LMirrors.Current = form.CurrentMirror - 1;
        return;
    }
    form.CurrentMirror = index;
    form.LFitInfo.Caption = std::string();
    Show(app, BadText::Goes);
}

bool IsReadable(Application& app, const NumberBox& box) {
    const auto numbers = NumbersOf(app.Mirror);
    const auto isIt = [&box](const BoundNumber& number) { return &number.box == &box; };
    const auto found = std::find_if(numbers.begin(), numbers.end(), isIt);
    return found == numbers.end() || !IsBad(*found);
}

void CApply_click(Application& app) {
    if (MayGoOn(app)) Apply(app);
}

void COk_click(Application& app) {
    if (!MayGoOn(app)) return;
    Apply(app);
    CloseWindow(app);
}

void CCancel_click(Application& app) {
    Give(app, app.Mirror.Backup);
    CloseWindow(app);
}

void CAddMirror_click(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!MayGoOn(app)) return;
    const int added = CAddMirror(form.Satellite, app.Data.SimTime, app.Boxes, app.Data.UsageStats);
    if (added == 0) return;
    app.Windows.SaveStat();
    form.CurrentMirror = added;
    ApplyModel(app);
}

void CDeleteMirror_click(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!HasCurrent(form) || !Confirmed(app, "The mirror will be deleted!")) return;
    TakeFields(form);
    SurfaceModel& model = form.Satellite.Surface;
    const auto first = model.Mirrors.begin();
    std::move(first + form.CurrentMirror + 1, first + model.MirrorCount + 1, first + form.CurrentMirror);
    --model.MirrorCount;
    form.CurrentMirror = 1;
    ApplyModel(app);
}

void CMoveUp_click(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!HasCurrent(form) || !MayGoOn(app)) return;
    const auto first = form.Satellite.Surface.Mirrors.begin();
    std::rotate(first + 1, first + form.CurrentMirror, first + form.CurrentMirror + 1);
    form.CurrentMirror = 1;
    ApplyModel(app);
}

void CClearAllMirrors_click(Application& app) {
    if (!ConfirmedForSelected(app, "All the mirrors of the selected satellites will be deleted!")) return;
    if (app.Mirror.Visible) LeaveField(app);
    ForEachSelected(app.Data, ResetMirrors);
    app.Windows.UpDateAll();
    RefreshData(app);
    app.Windows.UpdateGraphicsLevel2();
}

void CUpTime_click(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!HasCurrent(form) || !MayGoOn(app)) return;
    Current(form).MirrorJD = app.Data.SimTime;
    ApplyModel(app);
}

void CFlareSet_click(Application& app) { Fit(app, FitAim::Flare); }

void CBeamSet_click(Application& app) { Fit(app, FitAim::Beam); }

void CRotation_click(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!MayGoOn(app)) return;
    SurfaceModel& model = form.Satellite.Surface;
    if (model.MirrorCount < kMirrorsOfAxis) {
        Warn(app, kTooFewMirrors);
        return;
    }
    const auto anglesOf = [&model](int index) {
        return SurfaceAngles{model.Mirror(index).Angle, model.Mirror(index).Tilt};
    };
    const std::optional<RotationAxis> axis = RotationAxisOf(anglesOf(1), anglesOf(2), anglesOf(3));
    if (!axis) {
        Warn(app, kNoAxis);
        return;
    }
    model.RotAxisDEC = axis->declination;
    model.RotAxisRA = axis->rightAscension;
    ApplyModel(app);
}

void CCopyModel_click(Application& app) {
    if (!MayGoOn(app)) return;
    if (!ConfirmedForSelected(app, "The surface models for all the selected sats will be changed")) return;
    Apply(app);
    const SurfaceModel& model = app.Mirror.Satellite.Surface;
    ForEachSelected(app.Data, [&model](SatRecord& satellite) { satellite.Surface = model; });
    AfterSelected(app);
}

void CSynchMirror_click(Application& app) {
    MirrorControls& form = app.Mirror;
    if (!HasCurrent(form) || !MayGoOn(app)) return;
    if (!ConfirmedForSelected(app, "All the selected Sats with this mirror ID will be updated")) return;
    Apply(app);
    const MirrorRecord mirror = Current(form);
    ForEachSelected(app.Data, [&mirror](SatRecord& satellite) {
        SurfaceModel& model = satellite.Surface;
        for (int i = 1; i <= std::min(model.MirrorCount, kMirrorCapacity); ++i)
            if (model.Mirror(i).MirrorID == mirror.MirrorID) model.Mirror(i) = mirror;
    });
    AfterSelected(app);
}

void CExportModel_click(Application& app) {
    if (!MayGoOn(app)) return;
    LeaveField(app);
    output::Init(app);
    output::ClearAll(app);
    output::PrintLine(app, SurfaceModelText(app, app.Mirror.Satellite));
}

void LMirrors_DblClick(Application& app, SearchClock& clock) {
    MirrorControls& form = app.Mirror;
    if (!HasCurrent(form) || Current(form).MirrorJD == 0) return;
    clock.SetJDToTimeOffset(Current(form).MirrorJD);
    app.Windows.UpdateGraphicsLevel2();
}

std::string SurfaceModelText(const Application& app, const SatRecord& satellite) {
    return glintara::SurfaceModelText(satellite, OrientationCaption(app.Mirror, satellite.Surface));
}

void Connect(Application& app, SearchClock& clock) {
    MirrorControls& form = app.Mirror;
    form.CApply.SetClickHandler([&app] { CApply_click(app); });
    form.COk.SetClickHandler([&app] { COk_click(app); });
    form.CCancel.SetClickHandler([&app] { CCancel_click(app); });
    form.CAddMirror.SetClickHandler([&app] { CAddMirror_click(app); });
    form.CDeleteMirror.SetClickHandler([&app] { CDeleteMirror_click(app); });
    form.CMoveUp.SetClickHandler([&app] { CMoveUp_click(app); });
    for (Button* button : {&form.CClearAllMirrors, &app.Satellites.CClearAllMirrors})
        button->SetClickHandler([&app] { CClearAllMirrors_click(app); });
    form.CUpTime.SetClickHandler([&app] { CUpTime_click(app); });
    form.CFlareSet.SetClickHandler([&app] { CFlareSet_click(app); });
    form.CBeamSet.SetClickHandler([&app] { CBeamSet_click(app); });
    form.CRotation.SetClickHandler([&app] { CRotation_click(app); });
    form.CCopyModel.SetClickHandler([&app] { CCopyModel_click(app); });
    form.CSynchMirror.SetClickHandler([&app] { CSynchMirror_click(app); });
    form.CExportModel.SetClickHandler([&app] { CExportModel_click(app); });
    form.LMirrorsTwice.SetClickHandler([&app, &clock] { LMirrors_DblClick(app, clock); });
    form.LMirrors.Current.SetHandler([&app] { FollowListCursor(app); });
    form.TName.Text.SetHandler([&form] { FollowName(form); });
    form.TExtra1.Text.SetHandler([&app] {
        if (!app.Mirror.Muted) ShowTarget(app);
    });
    form.SAngle.Value.SetHandler([&form] { Trim(form, form.SAngle, form.TAngle); });
    form.STilt.Value.SetHandler([&form] { Trim(form, form.STilt, form.TTilt); });
    form.TimerUpdate.SetTickHandler([&app] { Apply(app); });
    ConnectOrientation(app);
    ConnectDrawing(app);
    app.Main.MnuModelSatSurfaces.SetClickHandler([&app] { OpenWindow(app); });
}

}  // namespace glintara::surface_editor
