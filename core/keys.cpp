#include "core/keys.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/camera_moves.h"
#include "core/opening.h"
#include "core/options.h"
#include "core/panels.h"
#include "core/turning.h"
#include "core/views.h"
#include "engine/astro/trigonometry.h"

namespace glintara {

namespace {

/// Zoom by the cursor keys with Shift.
constexpr double kZoomStep = 5;
constexpr double kMostKeyZoom = 500;

/// A key that presses one button, and another with Shift.
struct ButtonKey {
    char character;
    Button MainControls::*plain;
    Button MainControls::*shifted;
};

constexpr std::array kButtonKeys{
    ButtonKey{'H', &MainControls::CHourOffsetInc, &MainControls::CHourOffsetDec},
    ButtonKey{'M', &MainControls::CMinuteOffsetInc, &MainControls::CMinuteOffsetDec},
    ButtonKey{'S', &MainControls::CSecondOffsetInc, &MainControls::CSecondOffsetDec},
    ButtonKey{'D', &MainControls::CDayOffsetInc, &MainControls::CDayOffsetDec},
    ButtonKey{'Y', &MainControls::CYearOffsetInc, &MainControls::CYearOffsetDec},
    ButtonKey{'E', &MainControls::CMonthOffsetInc, &MainControls::CMonthOffsetDec},
    ButtonKey{'B', &MainControls::CMaxMagInc, &MainControls::CMaxMagDec},
    ButtonKey{'0', &MainControls::CClearTimeOffset, &MainControls::CClearTimeOffset},
    ButtonKey{'Q', &MainControls::CToggleSkyEarth, &MainControls::CToggleSkyEarth},
    ButtonKey{'W', &MainControls::CSkyChartSphere, &MainControls::CSkyChartSphere},
    ButtonKey{'+', &MainControls::COrbitTurnInc, &MainControls::COrbitTurnInc},
    ButtonKey{'-', &MainControls::COrbitTurnDec, &MainControls::COrbitTurnDec},
    ButtonKey{'/', &MainControls::CTurnOne, &MainControls::CTurnOne},
};

/// A key that turns one option over, and with Shift another one, or another one too.
struct OptionKey {
    char character;
    CheckBox MainControls::*plain;
    CheckBox MainControls::*shifted;
    bool both = false;  ///< with Shift the first one is turned over as well
};

constexpr std::array kOptionKeys{
    OptionKey{'Z', &MainControls::CMaximizeSky, nullptr},
    OptionKey{'C', &MainControls::CDrawConstallations, nullptr},
    OptionKey{'X', &MainControls::CReverseSky, nullptr},
    OptionKey{'I', &MainControls::CIridiumFlares, nullptr},
    OptionKey{'N', &MainControls::CMoonFlares, nullptr},
    OptionKey{'R', &MainControls::CRealTime, nullptr},
    OptionKey{'G', &MainControls::CSunLight, nullptr},
    OptionKey{'A', &MainControls::CDrawArea, &MainControls::CAutoRefine},
    OptionKey{'L', &MainControls::CLockSatellite, nullptr},
    OptionKey{'K', &MainControls::CLockSky, nullptr},
    OptionKey{'O', &MainControls::CPlotOrbit, &MainControls::CPlotOrbitOverTime, true},
    OptionKey{'J', &MainControls::CProjectOrbit, &MainControls::CProjectOverTime, true},
    OptionKey{'.', &MainControls::C2OrbitDetails, nullptr},
    OptionKey{',', &MainControls::CAstroDetails, nullptr},
    OptionKey{'P', &MainControls::CProjectOrbitOnSky, nullptr},
};

/// The function keys that press a button of the views.
struct ViewKey {
    SpecialKey key;
    Button MainControls::*button;
};

constexpr std::array kViewKeys{
    ViewKey{SpecialKey::F2, &MainControls::CNoon},        ViewKey{SpecialKey::F3, &MainControls::CNightOrientation},
    ViewKey{SpecialKey::F4, &MainControls::CZenith},      ViewKey{SpecialKey::F5, &MainControls::CZeroOrientation},
    ViewKey{SpecialKey::F6, &MainControls::COrbitOrient}, ViewKey{SpecialKey::F7, &MainControls::CUpOrientation},
    ViewKey{SpecialKey::F8, &MainControls::CRefreshDraw},
};

/// An entry that no option stands behind, and its key.
struct EntryKey {
    MenuEntry MainControls::*entry;
    std::string_view key;
};

constexpr std::array kEntryKeys{
    EntryKey{&MainControls::MnuOpenAs, "Ctrl+O"},
    EntryKey{&MainControls::MnuSave, "Ctrl+S"},
    EntryKey{&MainControls::MnuSaveAs, "Ctrl+Shift+S"},
    EntryKey{&MainControls::MnuExit, "Ctrl+Q"},
    EntryKey{&MainControls::MnuGoToDate, "Ctrl+G"},
    EntryKey{&MainControls::MnuHelp, "F1"},
    EntryKey{&MainControls::MnuNoon, "F2"},
    EntryKey{&MainControls::MnuMidnight, "F3"},
    EntryKey{&MainControls::MnuZenithOrient, "F4"},
    EntryKey{&MainControls::MnuZeroOrient, "F5"},
    EntryKey{&MainControls::MnuOrbitOrient, "F6"},
    EntryKey{&MainControls::MnuUpOrientation, "F7"},
    EntryKey{&MainControls::MnuFinePlot, "F8"},
    EntryKey{&MainControls::MnuFullScreen, "F11, Space"},
    EntryKey{&MainControls::MnuExportTrack, "T"},
    EntryKey{&MainControls::MnuToggleSkyEarth, "Q"},
};

/// Views that a digit enters.
constexpr std::size_t kViewDigits = 9;

/// The letters that move the displayed instant, and the one that lets it run.
constexpr std::string_view kTimeKeys = "HMSDYE0R";

void TurnOver(CheckBox& box) {
    if (box.Enabled && box.Acts) box.Value = !box.Value;
}

bool PressButton(MainControls& main, const KeyPress& key) {
    const auto letter = std::ranges::find(kButtonKeys, key.character, &ButtonKey::character);
    if (letter != kButtonKeys.end()) {
        (main.*(key.shift ? letter->shifted : letter->plain)).Click();
        return true;
    }
    const auto view = std::ranges::find(kViewKeys, key.special, &ViewKey::key);
    if (view != kViewKeys.end()) {
        (main.*view->button).Click();
        return true;
    }
    return false;
}

bool TurnOptionOver(MainControls& main, const KeyPress& key) {
    const auto entry = std::ranges::find(kOptionKeys, key.character, &OptionKey::character);
    if (entry == kOptionKeys.end()) return false;
    const bool other = key.shift && entry->shifted != nullptr;
    if (!other || entry->both) TurnOver(main.*entry->plain);
    if (other) TurnOver(main.*entry->shifted);
    return true;
}

void ZoomBy(Application& app, double step) {
    ViewState& view = app.Data.View;
    if (step > 0)
        view.ZoomFactor = std::max(view.ZoomFactor, std::min(view.ZoomFactor + step, kMostKeyZoom));
    else if (view.ZoomFactor > -step)
        view.ZoomFactor += step;
    CameraZoomed(app);
}

bool ZoomByKey(Application& app, SpecialKey key) {
    if (key != SpecialKey::Up && key != SpecialKey::Down) return false;
    ZoomBy(app, key == SpecialKey::Up ? kZoomStep : -kZoomStep);
    return true;
}

bool TurnByKey(Application& app, const KeyPress& key) {
    ViewState& view = app.Data.View;
    double& sideways = key.shift ? view.ViewRoll : view.ViewLon;
    switch (key.special) {
        case SpecialKey::Up:
            view.ViewLat = WrapTwoPi(view.ViewLat - kStartRotation);
            break;
        case SpecialKey::Down:
            view.ViewLat = WrapTwoPi(view.ViewLat + kStartRotation);
            break;
        case SpecialKey::Left:
            sideways += kStartRotation;
            break;
        case SpecialKey::Right:
            sideways -= kStartRotation;
            break;
        default:
            return false;
    }
    CameraMoved(app);
    return true;
}

bool MoveView(Application& app, const KeyPress& key) {
    return (key.shift && ZoomByKey(app, key.special)) || TurnByKey(app, key);
}

bool LeaveFullScreen(Application& app, const KeyPress& key) {
    if (key.special != SpecialKey::Escape || !app.Run.FullScreen) return false;
    SetFullScreen(app, false);
    return true;
}

}  // namespace

bool ActsInEveryWindow(const KeyPress& key) {
    if (key.character != '\0') return kTimeKeys.find(key.character) != std::string_view::npos;
    return key.special >= SpecialKey::F1 && key.special <= SpecialKey::F9;
}

bool Form_KeyDown(Application& app, RunLoop& loop, const KeyPress& key) {
    if (app.Run.KeyLock) return false;
    CutOpeningShort(app.Run);
    const bool stopped = loop.GlobeRotation().StopIdle();
    MainControls& main = app.Main;
    if (key.character >= '1' && key.character <= '9') {
        const int view = key.character - '0';
        if (key.shift)
            SaveUserView(app, view);
        else
            EnterView(app, loop.Time(), view);
        return true;
    }
    if (key.character == 'U') {
        if (!stopped) loop.GlobeRotation().Toggle();
        return true;
    }
    if (key.character == 'V') {
        main.TimerFastRefresh.Enabled = !main.TimerFastRefresh.Enabled;
        return true;
    }
    if (key.character == 'F') {
        main.TimerViewShow.Enabled = !main.TimerViewShow.Enabled;
        return true;
    }
    if (key.character == 'T') {
        main.MnuExportTrack.Click();
        return true;
    }
    if (key.character == ' ' || key.special == SpecialKey::F11) {
        main.MnuFullScreen.Click();
        return true;
    }
    if (key.special == SpecialKey::F1) {
        main.MnuHelp.Click();
        return true;
    }
    return PressButton(main, key) || TurnOptionOver(main, key) || MoveView(app, key) || LeaveFullScreen(app, key);
}

std::string KeyTextOf(MainControls& main, const MenuEntry& entry) {
    for (const EntryKey& key : kEntryKeys)
        if (&(main.*key.entry) == &entry) return std::string(key.key);
    for (std::size_t n = 1; n <= kViewDigits; ++n)
        if (&main.MnuViewX[n] == &entry) return std::to_string(n);
    const auto pairs = OptionPairs(main);
    const auto pair = std::ranges::find(pairs, &entry, &OptionPair::entry);
    if (pair == pairs.end()) return {};
    for (const OptionKey& key : kOptionKeys) {
        if (&(main.*key.plain) == pair->box) return {key.character};
        if (key.shifted != nullptr && &(main.*key.shifted) == pair->box) return std::string("Shift+") + key.character;
    }
    return {};
}

}  // namespace glintara
