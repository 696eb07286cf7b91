#include "core/keys.h"

#include <algorithm>
#include <array>

#include "core/options.h"
#include "orbit/astro/trigonometry.h"
#include "scene/view_geometry.h"

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

void TurnOver(CheckBox& box) {
    if (box.Enabled) {
        box.Value = !box.Value;
    }
}

bool PressButton(MainControls& main, const KeyPress& key) {
    for (const ButtonKey& entry : kButtonKeys) {
        if (entry.character == key.character) {
            (main.*(key.shift ? entry.shifted : entry.plain)).Click();
            return true;
        }
    }
    for (const ViewKey& entry : kViewKeys) {
        if (entry.key == key.special) {
            (main.*entry.button).Click();
            return true;
        }
    }
    return false;
}

bool TurnOptionOver(MainControls& main, const KeyPress& key) {
    for (const OptionKey& entry : kOptionKeys) {
        if (entry.character != key.character) {
            continue;
        }
        const bool other = key.shift && entry.shifted != nullptr;
        if (!other || entry.both) {
            TurnOver(main.*entry.plain);
        }
        if (other) {
            TurnOver(main.*entry.shifted);
        }
        return true;
    }
    return false;
}

void ZoomBy(Application& app, double step) {
    ViewState& view = app.Data.View;
    if (step > 0) {
        view.ZoomFactor = std::max(view.ZoomFactor, std::min(view.ZoomFactor + step, kMostKeyZoom));
    } else if (view.ZoomFactor > kZoomStep) {
        view.ZoomFactor += step;
    }
    if (app.Main.CMaximizeSky.Value) {
        FitSky(app);
    }
}

bool MoveView(Application& app, const KeyPress& key) {
    ViewState& view = app.Data.View;
    const RunState& run = app.Run;
    switch (key.special) {
        case SpecialKey::Up:
            key.shift ? ZoomBy(app, kZoomStep) : void(view.ViewLat = WrapTwoPi(view.ViewLat - run.RotIncLat));
            break;
        case SpecialKey::Down:
            key.shift ? ZoomBy(app, -kZoomStep) : void(view.ViewLat = WrapTwoPi(view.ViewLat + run.RotIncLat));
            break;
        case SpecialKey::Left:
            (key.shift ? view.ViewRoll : view.ViewLon) += key.shift ? run.RotIncRoll : run.RotIncLon;
            break;
        case SpecialKey::Right:
            (key.shift ? view.ViewRoll : view.ViewLon) -= key.shift ? run.RotIncRoll : run.RotIncLon;
            break;
        default:
            return false;
    }
    HoldView(view);
    RefreshViewCache(view);
    UpdateGraphicsLevel2(app.Main);
    return true;
}

}  // namespace

bool Form_KeyDown(Application& app, RunLoop& loop, const KeyPress& key) {
    const bool stopped = loop.GlobeRotation().StopIdle();
    MainControls& main = app.Main;
    if (key.character == 'U') {
        if (!stopped) {
            loop.GlobeRotation().Toggle();
        }
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
    if (key.character == ' ') {
        main.MnuFullScreen.Click();
        return true;
    }
    return PressButton(main, key) || TurnOptionOver(main, key) || MoveView(app, key);
}

}  // namespace glintara
