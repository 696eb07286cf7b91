#include "core/option_text.h"

#include <array>

#include "core/options.h"

namespace glintara {

namespace {

constexpr std::size_t kBoxCount = 46;
constexpr std::size_t kCharactersPerOption = 2;

// The places after the boxes.
constexpr std::size_t kTransitPlace = kBoxCount;
constexpr std::size_t kFloatingPlace = kBoxCount + 1;
constexpr std::size_t kLib3DPlace = kBoxCount + 2;
constexpr std::size_t kFastRefreshPlace = kBoxCount + 3;

static_assert(kOptionTextLength == (kFastRefreshPlace + 1) * kCharactersPerOption);

/// The boxes in the order of the text. `Box` is `CheckBox`, or the same as `const`.
template <class Box, class Main>
std::array<Box*, kBoxCount> BoxesOfText(Main& main) {
    return {&main.CRealTime,
            &main.CSunLight,
            &main.CDrawSun,
            &main.CDrawArea,
            &main.CDrawAries,
            &main.CHideCountries,
            &main.CReverseSky,
            &main.CIridiumFlares,
            &main.CAntennaID,
            &main.CDrawSky,
            &main.CStarsOnGlobe,
            &main.CStarNames,
            &main.CDrawConstallations,
            &main.CDrawBackStars,
            &main.CSkyCircle,
            &main.CMoonFlares,
            &main.CSatNames,
            &main.CLockSatellite,
            &main.CLockSky,
            &main.C2OrbitDetails,
            &main.CAutoRefine,
            &main.CFlatSky,
            &main.CMaximizeSky,
            &main.CAstroDetails,
            &main.CThinLines,
            &main.CSkyOnly,
            &main.CPlotOrbit,
            &main.CPlotOrbitOverTime,
            &main.CProjectOrbit,
            &main.CProjectOverTime,
            &main.CProjectOrbitOnSky,
            &main.CSGP1,
            &main.CSatOnly,
            &main.CPlaniSphere,
            &main.CGlobeGrid,
            &main.CSolidGlobe,
            &main.CHCircle,
            &main.CDrawFrontStars,
            &main.CLocalSky,
            &main.CLocalTime,
            &main.CSGP4,
            &main.CNOSSFlare,
            &main.CFlareTrack,
            &main.CSatCircle,
            &main.CAutoMag,
            &main.CDayFlares};
}

char EnabledMark(bool enabled) { return enabled ? 'E' : 'D'; }
char ValueMark(bool value) { return value ? '1' : '0'; }

/// One option as a text tells it.
struct OptionMarks {
    bool held = false;  ///< the text reaches as far as its second character
    bool enabled = false;
    bool value = false;
};

OptionMarks MarksAt(std::string_view text, std::size_t place) {
    const std::size_t first = place * kCharactersPerOption;
    OptionMarks marks;
    marks.held = first + 1 < text.size();
    marks.enabled = first < text.size() && text[first] == 'E';
    marks.value = marks.held && text[first + 1] == '1';
    return marks;
}

void ReadEntry(MenuEntry& entry, const OptionMarks& marks) {
    entry.Enabled = marks.enabled;
    entry.Checked = marks.value;
}

/// The marks of each box.
class MarksOfBoxes {
  public:
    MarksOfBoxes(MainControls& main, std::string_view text) : boxes_(BoxesOfText<CheckBox>(main)), text_(text) {}

    OptionMarks Of(const CheckBox& box) const {
        for (std::size_t i = 0; i < kBoxCount; ++i)
            if (boxes_[i] == &box) return MarksAt(text_, i);
        return {};
    }

    bool IsOn(const CheckBox& box) const {
        const OptionMarks marks = Of(box);
        return marks.enabled && marks.value;
    }

  private:
    std::array<CheckBox*, kBoxCount> boxes_;
    std::string_view text_;
};

/// What decided the states that `text` tells, when it was written.
UsableInputs InputsOfText(MainControls& main, std::string_view text) {
    const MarksOfBoxes marks(main, text);
    UsableInputs inputs;
    inputs.known = true;
    for (const CheckBox* box : BoxesThatNeedSatellites(main)) inputs.satellites |= marks.Of(*box).enabled;
    inputs.orbit = marks.IsOn(main.CPlotOrbit);
    inputs.projection = marks.IsOn(main.CProjectOrbit);
    inputs.tracks = marks.IsOn(main.CFlareTrack);
    inputs.flares = inputs.tracks || marks.IsOn(main.CIridiumFlares);
    return inputs;
}

}  // namespace

std::string OptionsToString(const MainControls& main) {
    std::string text;
    text.reserve(kOptionTextLength);
    const auto add = [&text](bool enabled, bool value) {
        text += EnabledMark(enabled);
        text += ValueMark(value);
    };
    for (const CheckBox* box : BoxesOfText<const CheckBox>(main)) add(box->Enabled, box->Value);
    for (const MenuEntry* entry : {&main.MnuTransitMode[kTransitEntry], &main.MnuFloatingSite, &main.MnuLib3D})
        add(entry->Enabled, entry->Checked);
    add(main.TimerFastRefresh.Enabled, main.TimerFastRefresh.Enabled);
    return text;
}

void StringToOptions(Application& app, std::string_view text) {
    MainControls& main = app.Main;
    const std::array<CheckBox*, kBoxCount> boxes = BoxesOfText<CheckBox>(main);
    app.Run.OptionsFromText = true;
    for (std::size_t i = 0; i < kBoxCount; ++i) {
        const OptionMarks marks = MarksAt(text, i);
        boxes[i]->Enabled = marks.enabled;
        boxes[i]->Value = marks.value;
    }
    // The handlers of boxes have their own idea of which others can be used.
    for (std::size_t i = 0; i < kBoxCount; ++i) boxes[i]->Enabled = MarksAt(text, i).enabled;
    app.Run.OptionsFromText = false;

    ReadEntry(main.MnuTransitMode[kTransitEntry], MarksAt(text, kTransitPlace));
    ReadEntry(main.MnuFloatingSite, MarksAt(text, kFloatingPlace));
    ReadEntry(main.MnuLib3D, MarksAt(text, kLib3DPlace));
    main.MnuLib3D.Enabled = true;
    main.TimerFastRefresh.Enabled = MarksAt(text, kFastRefreshPlace).enabled;

    app.Run.UsableSeen = CurrentInputs(app);
    app.Windows.SyncronizeMenuBar();
    app.Windows.UpdateGraphicsLevel2();
}

void SettleOptions(Application& app, std::string_view text) {
    MainControls& main = app.Main;
    const MarksOfBoxes marks(main, text);
    if (!marks.Of(main.CSGP1).value && !marks.Of(main.CSGP4).value) main.CSGP4.Value = true;
    if (!main.CDrawSky.Value) main.CSkyOnly.Value = false;
    app.Run.UsableSeen = InputsOfText(main, text);
    RefreshEnabled(app);
    for (CheckBox* box : BoxesOfText<CheckBox>(main))
        if (!marks.Of(*box).held) box->Enabled = CanBeUsed(app, *box);
    if (!MarksAt(text, kTransitPlace).held) main.MnuTransitMode[kTransitEntry].Enabled = true;
    if (!MarksAt(text, kFloatingPlace).held) main.MnuFloatingSite.Enabled = true;
    app.Windows.SyncronizeMenuBar();
}

}  // namespace glintara
