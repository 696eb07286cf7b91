#include "core/keys.h"

#include <algorithm>

#include "core/options.h"
#include "core/program_fixture.h"
#include "core/views.h"
#include "scene/orientation.h"

namespace glintara::testing {
namespace {

/// A cursor key turns by pi / 72 at first: 2.5 degrees.
constexpr double kKeyTurn = 2.5 * kDegree;

struct KeysTest : ProgramTest {
    KeysTest() {
        app.Main.CRealTime.Value = false;
        RunAtOnce();
        AddSatellite();
        app.Main.CDrawSky.Value = true;
        for (const Timer* timer : {&main.TimerFastRefresh, &main.TimerViewShow}) EXPECT_FALSE(timer->Enabled);
    }

    bool Press(char character, bool shift = false) {
        return Form_KeyDown(app, program.Loop, {character, SpecialKey::None, shift});
    }
    bool Press(SpecialKey key, bool shift = false) { return Form_KeyDown(app, program.Loop, {'\0', key, shift}); }

    /// The key presses `button` once, and not at all while that is disabled.
    void ExpectPresses(Button& button, const KeyPress& key) {
        int presses = 0;
        button.Enabled = true;
        button.SetClickHandler([&presses] { ++presses; });
        EXPECT_TRUE(Form_KeyDown(app, program.Loop, key));
        EXPECT_EQ(presses, 1) << key.character << " " << button.ToolTip.Get();
        button.Enabled = false;
        Form_KeyDown(app, program.Loop, key);
        EXPECT_EQ(presses, 1) << key.character << " " << button.ToolTip.Get();
        button.Enabled = true;
        button.SetClickHandler({});
    }

    bool Turns() const { return main.TimerHRot.Enabled; }

    MainControls& main = app.Main;
    ViewState& view = app.Data.View;
};

TEST_F(KeysTest, LettersAndSignsPressTheirButtons) {
    const struct {
        char character;
        Button& plain;
        Button& shifted;
    } keys[] = {
        {'H', main.CHourOffsetInc, main.CHourOffsetDec},
        {'M', main.CMinuteOffsetInc, main.CMinuteOffsetDec},
        {'S', main.CSecondOffsetInc, main.CSecondOffsetDec},
        {'D', main.CDayOffsetInc, main.CDayOffsetDec},
        {'Y', main.CYearOffsetInc, main.CYearOffsetDec},
        {'E', main.CMonthOffsetInc, main.CMonthOffsetDec},
        {'B', main.CMaxMagInc, main.CMaxMagDec},
    };
    for (const auto& key : keys) {
        ExpectPresses(key.plain, {key.character, SpecialKey::None, false});
        ExpectPresses(key.shifted, {key.character, SpecialKey::None, true});
    }
    ExpectPresses(main.CClearTimeOffset, {'0'});
    ExpectPresses(main.CToggleSkyEarth, {'Q'});
    ExpectPresses(main.CSkyChartSphere, {'W'});
    ExpectPresses(main.COrbitTurnInc, {'+', SpecialKey::None, true});  // where the sign needs Shift
    ExpectPresses(main.COrbitTurnInc, {'+'});
    ExpectPresses(main.COrbitTurnDec, {'-'});
    ExpectPresses(main.CTurnOne, {'/'});
}

TEST_F(KeysTest, FunctionKeysPressTheButtonsOfTheViews) {
    const std::pair<SpecialKey, Button*> keys[] = {
        {SpecialKey::F2, &main.CNoon},        {SpecialKey::F3, &main.CNightOrientation},
        {SpecialKey::F4, &main.CZenith},      {SpecialKey::F5, &main.CZeroOrientation},
        {SpecialKey::F6, &main.COrbitOrient}, {SpecialKey::F7, &main.CUpOrientation},
        {SpecialKey::F8, &main.CRefreshDraw},
    };
    for (const auto& [key, button] : keys) ExpectPresses(*button, {'\0', key, false});
    EXPECT_FALSE(Press(SpecialKey::F9));
}

TEST_F(KeysTest, F1OpensTheHelp) {
    int opened = 0;
    main.MnuHelp.SetClickHandler([&opened] { ++opened; });
    EXPECT_TRUE(Press(SpecialKey::F1));
    EXPECT_EQ(opened, 1);
}

TEST_F(KeysTest, TheMenuShowsTheKeyThatDoesTheSame) {
    const std::pair<const char*, const MenuEntry*> keys[] = {
        {"G", &main.MnuSunLight},
        {"Z", &main.MnuMaximizeSky},
        {".", &main.MnuOrbitDetails},
        {",", &main.MnuAstroDetails},
        {"A", &main.MnuVisibilityArea},
        {"Shift+A", &main.MnuAutoRefine},
        {"O", &main.MnuPlotOrbit},
        {"Shift+O", &main.MnuPlotOrbitOverTime},
        {"Shift+J", &main.MnuProjectOverTime},
        {"F2", &main.MnuNoon},
        {"F8", &main.MnuFinePlot},
        {"F11, Space", &main.MnuFullScreen},
        {"T", &main.MnuExportTrack},
        {"Q", &main.MnuToggleSkyEarth},
        {"F1", &main.MnuHelp},
        {"1", &main.MnuViewX[1]},
        {"9", &main.MnuViewX[9]},
        {"", &main.MnuViewX[10]},
        {"", &main.Mnu2D},
        {"", &main.MnuAbout},
    };
    for (const auto& [key, entry] : keys) EXPECT_EQ(KeyTextOf(main, *entry), key) << entry->Caption.Get();
}

TEST_F(KeysTest, EachKeyOfAnOptionsEntryTurnsItsBoxOver) {
    main.CFlareTrack.Value = true;
    int shown = 0;
    for (const OptionPair& pair : OptionPairs(main)) {
        const std::string key = KeyTextOf(main, *pair.entry);
        if (key.empty()) continue;
        ++shown;
        pair.box->Enabled = pair.box->Acts = true;
        const bool before = pair.box->Value;
        const bool needsOrbit = key == "Shift+O" || key == "Shift+J";
        if (needsOrbit) main.CPlotOrbit.Value = main.CProjectOrbit.Value = false;
        Press(key.back(), key.starts_with("Shift+"));
        EXPECT_EQ(pair.box->Value, !before) << key << " " << pair.entry->Caption.Get();
        EXPECT_EQ(pair.entry->Checked, !before) << key;
    }
    EXPECT_EQ(shown, 18) << "each letter of an option stands in the menus";
}

TEST_F(KeysTest, WhatIsStillToComeIsPassedOver) {
    main.CAstroDetails.Enabled = true;
    main.CAstroDetails.Acts = false;
    const bool before = main.CAstroDetails.Value;
    EXPECT_TRUE(Press(','));
    EXPECT_EQ(main.CAstroDetails.Value, before);
}

TEST_F(KeysTest, FunctionAndTimeKeysActInEveryWindow) {
    for (const char character : {'H', 'M', 'S', 'D', 'Y', 'E', '0', 'R'})
        EXPECT_TRUE(ActsInEveryWindow({character})) << character;
    for (const SpecialKey key : {SpecialKey::F1, SpecialKey::F2, SpecialKey::F8, SpecialKey::F9})
        EXPECT_TRUE(ActsInEveryWindow({'\0', key}));
    for (const char character : {'G', 'O', '1', ' ', '+'}) EXPECT_FALSE(ActsInEveryWindow({character})) << character;
    for (const SpecialKey key : {SpecialKey::Up, SpecialKey::Escape, SpecialKey::None})
        EXPECT_FALSE(ActsInEveryWindow({'\0', key}));
}

TEST_F(KeysTest, F8AsksForOneFinePictureNow) {
    clock.Advance(20);
    pictures.clear();
    Press(SpecialKey::F8);
    EXPECT_TRUE(pictures.empty()) << "no handler draws";
    clock.Advance(20);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_TRUE(pictures[0].fine);
}

TEST_F(KeysTest, LettersTurnTheirOptionsOver) {
    main.CPlotOrbit.Value = main.CProjectOrbit.Value = false;
    const std::pair<char, CheckBox*> keys[] = {
        {'Z', &main.CMaximizeSky},   {'C', &main.CDrawConstallations}, {'X', &main.CReverseSky},
        {'I', &main.CIridiumFlares}, {'N', &main.CMoonFlares},         {'R', &main.CRealTime},
        {'G', &main.CSunLight},      {'A', &main.CDrawArea},           {'L', &main.CLockSatellite},
        {'K', &main.CLockSky},       {'O', &main.CPlotOrbit},          {'J', &main.CProjectOrbit},
        {'.', &main.C2OrbitDetails}, {',', &main.CAstroDetails},       {'P', &main.CProjectOrbitOnSky},
    };
    for (const auto& [character, box] : keys) {
        box->Enabled = box->Acts = true;
        const bool before = box->Value;
        EXPECT_TRUE(Press(character)) << character;
        EXPECT_EQ(box->Value, !before) << character;
        Press(character);
        EXPECT_EQ(box->Value, before) << character;
        box->Enabled = false;
        Press(character);
        EXPECT_EQ(box->Value, before) << character << " while it is disabled";
        box->Enabled = true;
    }
}

TEST_F(KeysTest, ShiftATurnsTheFinePlotOverAndNotTheCircle) {
    Press('A', true);
    EXPECT_TRUE(main.CAutoRefine.Value);
    EXPECT_FALSE(main.CDrawArea.Value);
    Press('A', true);
    EXPECT_FALSE(main.CAutoRefine.Value);
}

TEST_F(KeysTest, ShiftWithTheKeysOfOrbitsTurnsTheirWayOverTimeOverToo) {
    const struct {
        char character;
        CheckBox& box;
        CheckBox& overTime;
    } keys[] = {{'O', main.CPlotOrbit, main.CPlotOrbitOverTime}, {'J', main.CProjectOrbit, main.CProjectOverTime}};
    for (const auto& key : keys) {
        key.box.Value = false;
        Press(key.character, true);
        EXPECT_TRUE(key.box.Value);
        EXPECT_TRUE(key.overTime.Value);
        Press(key.character, true);
        EXPECT_FALSE(key.box.Value);
        EXPECT_TRUE(key.overTime.Value) << "without an orbit it is disabled";
    }
}

TEST_F(KeysTest, WithoutSatellitesTheKeysOfSatellitesDoNothing) {
    app.Data.SatCount = 0;
    signals.UpDateAll();
    const std::vector<CheckBox*> boxes = {&main.CPlotOrbit,    &main.CProjectOrbit,  &main.CProjectOrbitOnSky,
                                          &main.CDrawArea,     &main.CLockSatellite, &main.C2OrbitDetails,
                                          &main.CIridiumFlares};
    std::vector<bool> before;
    for (const CheckBox* box : boxes) before.push_back(box->Value);
    const CameraView camera = CaptureCamera(view);
    for (const char character : {'O', 'J', 'P', 'A', 'L', '.', 'I'}) Press(character);
    Press(SpecialKey::F6);
    for (std::size_t i = 0; i < boxes.size(); ++i) EXPECT_EQ(boxes[i]->Value, before[i]) << boxes[i]->Caption.Get();
    EXPECT_EQ(CaptureCamera(view), camera);
}

TEST_F(KeysTest, KeysOfTheClockMoveIt) {
    Press('D');
    Press('H', true);
    Press('S');
    Press('S');
    EXPECT_EQ(main.LDateTime.Caption.Get(), "DATE 21/01/2018 16:42:11.31 UTC (+)");
    Press('0');
    EXPECT_EQ(main.LDateTime.Caption.Get(), "DATE 20/01/2018 17:42:09.31 UTC (N)");
}

TEST_F(KeysTest, CursorKeysTurnTheView) {
    view.ViewLat = view.ViewLon = view.ViewRoll = 1;
    Press(SpecialKey::Up);
    EXPECT_NEAR(view.ViewLat, 1 - kKeyTurn, 1e-12);
    Press(SpecialKey::Down);
    Press(SpecialKey::Down);
    EXPECT_NEAR(view.ViewLat, 1 + kKeyTurn, 1e-12);
    Press(SpecialKey::Left);
    EXPECT_NEAR(view.ViewLon, 1 + kKeyTurn, 1e-12);
    EXPECT_NEAR(view.SinLon, std::sin(1 + kKeyTurn), 1e-12) << "the next transform knows of it";
    Press(SpecialKey::Right);
    Press(SpecialKey::Right);
    EXPECT_NEAR(view.ViewLon, 1 - kKeyTurn, 1e-12);
    Press(SpecialKey::Left, true);
    EXPECT_NEAR(view.ViewRoll, 1 + kKeyTurn, 1e-12);
    Press(SpecialKey::Right, true);
    Press(SpecialKey::Right, true);
    EXPECT_NEAR(view.ViewRoll, 1 - kKeyTurn, 1e-12);
    EXPECT_TRUE(main.Timer2.Enabled);
}

TEST_F(KeysTest, TheLatitudeIsWrapped) {
    view.ViewLat = 0;
    Press(SpecialKey::Up);
    EXPECT_NEAR(view.ViewLat, 357.5 * kDegree, 1e-9);
    Press(SpecialKey::Down);
    Press(SpecialKey::Down);
    EXPECT_NEAR(view.ViewLat, kKeyTurn, 1e-9);
}

TEST_F(KeysTest, TheStepDoesNotHangOnHowTheGlobeTurnedLast) {
    for (const double last : {0.0, -0.25, 1e-6}) {
        view.ViewLat = view.ViewLon = view.ViewRoll = 1;
        app.Run.RotIncLat = app.Run.RotIncLon = app.Run.RotIncRoll = last;
        Press(SpecialKey::Up);
        Press(SpecialKey::Left);
        Press(SpecialKey::Left, true);
        EXPECT_NEAR(view.ViewLat, 1 - kKeyTurn, 1e-12);
        EXPECT_NEAR(view.ViewLon, 1 + kKeyTurn, 1e-12);
        EXPECT_NEAR(view.ViewRoll, 1 + kKeyTurn, 1e-12);
        EXPECT_EQ(app.Run.RotIncLon, last) << "and the turning keeps its speed";
    }
}

TEST_F(KeysTest, CursorKeysWithShiftZoom) {
    view.ZoomFactor = 16;
    Press(SpecialKey::Up, true);
    EXPECT_EQ(view.ZoomFactor, 21);
    Press(SpecialKey::Down, true);
    Press(SpecialKey::Down, true);
    Press(SpecialKey::Down, true);
    EXPECT_EQ(view.ZoomFactor, 6);
    Press(SpecialKey::Down, true);
    EXPECT_EQ(view.ZoomFactor, 1);
    Press(SpecialKey::Down, true);
    EXPECT_EQ(view.ZoomFactor, 1);
    view.ZoomFactor = 5;
    Press(SpecialKey::Down, true);
    EXPECT_EQ(view.ZoomFactor, 5);
    view.ZoomFactor = 497;
    Press(SpecialKey::Up, true);
    EXPECT_EQ(view.ZoomFactor, 500);
    view.ZoomFactor = 800;
    Press(SpecialKey::Up, true);
    EXPECT_EQ(view.ZoomFactor, 800) << "the mouse may go nearer";
}

TEST_F(KeysTest, AMaximizedSkyFollowsTheZoomOfTheKeys) {
    view.ZoomFactor = 27;
    main.CMaximizeSky.Value = true;
    Press(SpecialKey::Up, true);
    EXPECT_EQ(view.SkyScale, 2);
    Press(SpecialKey::Down, true);
    EXPECT_NEAR(view.SkyScale, 64 / 27.0, 1e-12);
}

TEST_F(KeysTest, UStartsTheTurningAndStopsIt) {
    app.Run.AutoTurn = 1;
    EXPECT_TRUE(Press('U'));
    EXPECT_TRUE(Turns());
    Press('G');
    EXPECT_TRUE(Turns()) << "only U stops what U has started";
    Press('U');
    EXPECT_FALSE(Turns());
}

TEST_F(KeysTest, AnyKeyStopsTheIdleTurningAndDoesNotStartItAgain) {
    for (const KeyPress& key : {KeyPress{'U'}, KeyPress{'G'}, KeyPress{'?'}, KeyPress{'\0', SpecialKey::Left, false}}) {
        app.Run.AutoTurn = 0;
        program.Loop.GlobeRotation().Start(Turning::Lasting);
        Form_KeyDown(app, program.Loop, key);
        EXPECT_FALSE(Turns()) << key.character;
    }
    Press('U');
    EXPECT_TRUE(Turns()) << "the next U starts it";
}

TEST_F(KeysTest, AnyKeyCutsTheOpeningShort) {
    app.Run.Opening = true;
    Press('?');
    EXPECT_TRUE(app.Run.OpeningCut);
    app.Run.Opening = app.Run.OpeningCut = false;
    Press('?');
    EXPECT_FALSE(app.Run.OpeningCut);
}

TEST_F(KeysTest, ADigitEntersAViewAndWithShiftKeepsIt) {
    for (char digit = '1'; digit <= '9'; ++digit) {
        const int n = digit - '0';
        const SavedView& slot = app.Data.SavedViews[static_cast<std::size_t>(n)];
        const CameraView camera = CaptureCamera(view);
        EXPECT_TRUE(Press(digit));
        EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Enter View " + std::to_string(n));
        EXPECT_EQ(CaptureCamera(view), camera) << "there is nothing to go to";
        EXPECT_FALSE(slot.Used);
        EXPECT_EQ(app.Run.PendingView, n);

        view.ViewLat = 0.1 * n;
        EXPECT_TRUE(Press(digit, true));
        EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Saved View " + std::to_string(n));
        EXPECT_TRUE(slot.Used);
        view.ViewLat = -1;
        EXPECT_TRUE(Press(digit));
        EXPECT_EQ(main.LCommandOutput.Caption.Get(), "Restored View " + std::to_string(n));
        EXPECT_EQ(view.ViewLat, 0.1 * n);
    }
    EXPECT_FALSE(app.Data.SavedViews[10].Used);
    app.Run.KeyLock = true;
    view.ViewLat = -1;
    EXPECT_FALSE(Press('3'));
    EXPECT_EQ(view.ViewLat, -1) << "a text takes its digits";
}

TEST_F(KeysTest, FunctionKeysEnterNoView) {
    for (const SpecialKey key : {SpecialKey::F2, SpecialKey::F3, SpecialKey::F9}) {
        Press(key);
        Press(key, true);
    }
    EXPECT_EQ(app.Run.PendingView, 0);
    for (const SavedView& slot : app.Data.SavedViews) EXPECT_FALSE(slot.Used);
}

TEST_F(KeysTest, VAndFTurnTheirTimersOver) {
    main.CRealTime.Value = true;
    EXPECT_TRUE(Press('V'));
    EXPECT_TRUE(main.TimerFastRefresh.Enabled);
    Press('V');
    EXPECT_FALSE(main.TimerFastRefresh.Enabled);
    EXPECT_TRUE(Press('F'));
    EXPECT_TRUE(main.TimerViewShow.Enabled);
    for (const int n : {2, 5}) SaveUserView(app, n);
    clock.Advance(4999);
    EXPECT_EQ(app.Run.PendingView, 5);
    clock.Advance(1);
    EXPECT_EQ(app.Run.PendingView, 2) << "every five seconds";
    clock.Advance(5000);
    EXPECT_EQ(app.Run.PendingView, 5);
    Press('F');
    EXPECT_FALSE(main.TimerViewShow.Enabled);
}

TEST_F(KeysTest, TExportsTheTrackWhenThereIsOne) {
    int exports = 0;
    main.MnuExportTrack.SetClickHandler([&exports] { ++exports; });
    ASSERT_FALSE(main.MnuExportTrack.Enabled);
    Press('T');
    EXPECT_EQ(exports, 0);
    main.CFlareTrack.Value = true;
    Press('T');
    EXPECT_EQ(exports, 1);
}

TEST_F(KeysTest, F11TurnsFullScreenOver) {
    EXPECT_TRUE(Press(SpecialKey::F11));
    EXPECT_TRUE(app.Run.FullScreen);
    Press(SpecialKey::F11);
    EXPECT_FALSE(app.Run.FullScreen);
}

TEST_F(KeysTest, SpaceTurnsFullScreenOverAndEscapeLeavesIt) {
    Press(' ');
    EXPECT_TRUE(app.Run.FullScreen);
    Press(' ');
    EXPECT_FALSE(app.Run.FullScreen);
    EXPECT_FALSE(Press(SpecialKey::Escape)) << "in a window it means nothing";
    EXPECT_FALSE(app.Run.FullScreen);
    Press(' ');
    EXPECT_TRUE(Press(SpecialKey::Escape));
    EXPECT_FALSE(app.Run.FullScreen);
    EXPECT_TRUE(main.MnuFile.Visible);
    EXPECT_EQ(signals.fullScreens, (std::vector<bool>{true, false, true, false}));
}

TEST_F(KeysTest, WhileATextIsTypedNoKeyActs) {
    app.Run.KeyLock = true;
    app.Run.AutoTurn = 0;
    program.Loop.GlobeRotation().Start(Turning::Lasting);
    const CameraView camera = CaptureCamera(view);
    const bool light = main.CSunLight.Value;
    EXPECT_FALSE(Press('G'));
    EXPECT_FALSE(Press('D'));
    EXPECT_FALSE(Press(' '));
    EXPECT_FALSE(Press(SpecialKey::Left));
    EXPECT_EQ(main.CSunLight.Value, light);
    EXPECT_EQ(app.Data.TimeOffset, TimeOffset{});
    EXPECT_FALSE(app.Run.FullScreen);
    EXPECT_EQ(CaptureCamera(view), camera);
    EXPECT_TRUE(Turns()) << "the globe turns on";
    app.Run.KeyLock = false;
    EXPECT_TRUE(Press('G'));
    EXPECT_NE(main.CSunLight.Value, light);
}

TEST_F(KeysTest, OtherKeysMeanNothing) {
    const CameraView camera = CaptureCamera(view);
    clock.Advance(20);
    pictures.clear();
    for (const char character : {'?', '*', '(', '\0'}) EXPECT_FALSE(Press(character)) << character;
    clock.Advance(100);
    EXPECT_TRUE(pictures.empty());
    EXPECT_EQ(CaptureCamera(view), camera);
}

TEST_F(KeysTest, ALockedSkyIsLockedWhereTheKeysHaveTurnedIt) {
    view.ViewLon = 1;
    main.CLockSky.Value = true;
    Press(SpecialKey::Left);
    clock.Advance(2000);
    EXPECT_NEAR(view.ViewLon, 1 + kKeyTurn, 1e-6);
}

}  // namespace
}  // namespace glintara::testing
