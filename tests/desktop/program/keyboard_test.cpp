// Whom the keyboard belongs to: every key of the table, pressed after a click on each kind of control.

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextBrowser>
#include <string>

#include "desktop/program/window_fixture.h"
#include "desktop/window_checks.h"

namespace glintara::desktop {
namespace {

using testing::Named;

struct ButtonOfKey {
    Qt::Key key;
    Button& plain;
    Button& shifted;
};

struct BoxOfKey {
    Qt::Key key;
    CheckBox& plain;
    CheckBox* shifted = nullptr;  ///< turned over with Shift; besides `plain` when that says so
    bool both = false;
};

class KeyboardTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        Settle();
        LoadIridium();
        main_.CDrawSky.Value = true;
    }

    void Key(Qt::Key key, bool shift = false) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key, shift ? Qt::ShiftModifier : Qt::NoModifier);
        ExpectMenusAndBoxesAgree("key " + std::to_string(key));
    }

    /// A key with what the keyboard itself sends for it.
    void PressNative(int key, quint32 scanCode, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, text);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &press);
    }

    template <class Widget>
    Widget& WithText(const char* text) {
        for (Widget* widget : window_.findChildren<Widget*>())
            if (widget->text() == text && widget->isVisible()) return *widget;
        ADD_FAILURE() << "no " << text;
        std::abort();
    }

    /// A click as a hand makes it.
    static void ClickOn(QWidget& widget) {
        ASSERT_TRUE(widget.isEnabled());
        const bool box =
            qobject_cast<QCheckBox*>(&widget) != nullptr || qobject_cast<QRadioButton*>(&widget) != nullptr;
        QTest::mouseClick(&widget, Qt::LeftButton, {}, box ? QPoint(8, widget.height() / 2) : widget.rect().center());
    }

    void ExpectPresses(const ButtonOfKey& entry, bool shift) {
        Button& button = shift ? entry.shifted : entry.plain;
        int presses = 0;
        button.Enabled = true;
        button.SetClickHandler([&presses] { ++presses; });
        Key(entry.key, shift);
        EXPECT_EQ(presses, 1) << "key " << entry.key << (shift ? " with Shift" : "");
        button.SetClickHandler({});
    }

    void ExpectTurnsOver(const BoxOfKey& entry, bool shift) {
        for (CheckBox* box : {&entry.plain, entry.shifted})
            if (box != nullptr) box->Enabled = box->Acts = true;
        const bool plain = entry.plain.Value;
        const bool shifted = entry.shifted != nullptr && entry.shifted->Value;
        const bool other = shift && entry.shifted != nullptr;
        Key(entry.key, shift);
        EXPECT_EQ(entry.plain.Value, other && !entry.both ? plain : !plain) << "key " << entry.key;
        if (entry.shifted != nullptr)
            EXPECT_EQ(entry.shifted->Value, other ? !shifted : shifted) << "key " << entry.key;
        if (entry.plain.Value != plain) entry.plain.Value = plain;
        if (other) entry.shifted->Value = shifted;
    }

    void ExpectEveryKeyActs() {
        const ButtonOfKey buttons[] = {{Qt::Key_F2, main_.CNoon, main_.CNoon},
                                       {Qt::Key_F3, main_.CNightOrientation, main_.CNightOrientation},
                                       {Qt::Key_F4, main_.CZenith, main_.CZenith},
                                       {Qt::Key_F5, main_.CZeroOrientation, main_.CZeroOrientation},
                                       {Qt::Key_F6, main_.COrbitOrient, main_.COrbitOrient},
                                       {Qt::Key_F7, main_.CUpOrientation, main_.CUpOrientation},
                                       {Qt::Key_F8, main_.CRefreshDraw, main_.CRefreshDraw},
                                       {Qt::Key_Q, main_.CToggleSkyEarth, main_.CToggleSkyEarth},
                                       {Qt::Key_W, main_.CSkyChartSphere, main_.CSkyChartSphere},
                                       {Qt::Key_Plus, main_.COrbitTurnInc, main_.COrbitTurnInc},
                                       {Qt::Key_Minus, main_.COrbitTurnDec, main_.COrbitTurnDec},
                                       {Qt::Key_Slash, main_.CTurnOne, main_.CTurnOne},
                                       {Qt::Key_H, main_.CHourOffsetInc, main_.CHourOffsetDec},
                                       {Qt::Key_M, main_.CMinuteOffsetInc, main_.CMinuteOffsetDec},
                                       {Qt::Key_S, main_.CSecondOffsetInc, main_.CSecondOffsetDec},
                                       {Qt::Key_D, main_.CDayOffsetInc, main_.CDayOffsetDec},
                                       {Qt::Key_Y, main_.CYearOffsetInc, main_.CYearOffsetDec},
                                       {Qt::Key_E, main_.CMonthOffsetInc, main_.CMonthOffsetDec},
                                       {Qt::Key_B, main_.CMaxMagInc, main_.CMaxMagDec},
                                       {Qt::Key_0, main_.CClearTimeOffset, main_.CClearTimeOffset}};
        for (const ButtonOfKey& entry : buttons)
            for (const bool shift : {false, true}) ExpectPresses(entry, shift);
        const BoxOfKey boxes[] = {{Qt::Key_Z, main_.CMaximizeSky},
                                  {Qt::Key_C, main_.CDrawConstallations},
                                  {Qt::Key_X, main_.CReverseSky},
                                  {Qt::Key_I, main_.CIridiumFlares},
                                  {Qt::Key_N, main_.CMoonFlares},
                                  {Qt::Key_R, main_.CRealTime},
                                  {Qt::Key_G, main_.CSunLight},
                                  {Qt::Key_A, main_.CDrawArea, &main_.CAutoRefine},
                                  {Qt::Key_L, main_.CLockSatellite},
                                  {Qt::Key_K, main_.CLockSky},
                                  {Qt::Key_O, main_.CPlotOrbit, &main_.CPlotOrbitOverTime, true},
                                  {Qt::Key_J, main_.CProjectOrbit, &main_.CProjectOverTime, true},
                                  {Qt::Key_Period, main_.C2OrbitDetails},
                                  {Qt::Key_Comma, main_.CAstroDetails},
                                  {Qt::Key_P, main_.CProjectOrbitOnSky}};
        for (const BoxOfKey& entry : boxes)
            for (const bool shift : {false, true})
                // What Shift turns over may hang on what the key itself does.
                if (!entry.both || !shift) ExpectTurnsOver(entry, shift);
        ExpectTimerKeys();
        ExpectDigitKeys();
        ExpectCursorKeys();
        ExpectFullScreenKeys();
    }

    void ExpectTimerKeys() {
        for (const auto& [key, timer] : {std::pair(Qt::Key_U, &main_.TimerHRot), {Qt::Key_F, &main_.TimerViewShow}}) {
            timer->Stop();
            Key(key);
            EXPECT_TRUE(timer->Enabled) << "key " << key;
            Key(key);
            EXPECT_FALSE(timer->Enabled) << "key " << key;
        }
        main_.TimerFastRefresh.Stop();
        Key(Qt::Key_V);
        EXPECT_TRUE(main_.TimerFastRefresh.Enabled);
        main_.TimerFastRefresh.Stop();
        int exports = 0;
        main_.MnuExportTrack.Enabled = true;
        main_.MnuExportTrack.SetClickHandler([&exports] { ++exports; });
        Key(Qt::Key_T);
        EXPECT_EQ(exports, 1);
        main_.MnuExportTrack.SetClickHandler({});
    }

    /// A digit on the number row or the keypad, as a keyboard with this layout sends it.
    static void KeyAt(quint32 scanCode, int key, Qt::KeyboardModifiers held) {
        QKeyEvent press(QEvent::KeyPress, key, held, scanCode, 0, 0);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &press);
    }

    void ExpectDigitKeys() {
        for (int n = 1; n <= 9; ++n) {
            const auto key = static_cast<Qt::Key>(Qt::Key_0 + n);
            Key(key, true);
            EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "Saved View " + std::to_string(n));
            Key(key);
            EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "Restored View " + std::to_string(n));
            EXPECT_TRUE(main_.MnuViewX[static_cast<std::size_t>(n)].Checked);
        }
    }

    void ExpectCursorKeys() {
        const struct {
            Qt::Key key;
            bool shift;
            double ViewState::*moved;
        } keys[] = {{Qt::Key_Up, false, &ViewState::ViewLat},   {Qt::Key_Down, false, &ViewState::ViewLat},
                    {Qt::Key_Left, false, &ViewState::ViewLon}, {Qt::Key_Right, false, &ViewState::ViewLon},
                    {Qt::Key_Up, true, &ViewState::ZoomFactor}, {Qt::Key_Down, true, &ViewState::ZoomFactor},
                    {Qt::Key_Left, true, &ViewState::ViewRoll}, {Qt::Key_Right, true, &ViewState::ViewRoll}};
        for (const auto& entry : keys) {
            const double before = view_.*entry.moved;
            Key(entry.key, entry.shift);
            EXPECT_NE(view_.*entry.moved, before) << "key " << entry.key;
        }
    }

    void ExpectFullScreenKeys() {
        Key(Qt::Key_F11);
        EXPECT_TRUE(app_.Run.FullScreen);
        Key(Qt::Key_F11);
        EXPECT_FALSE(app_.Run.FullScreen);
        Key(Qt::Key_Space);
        EXPECT_TRUE(app_.Run.FullScreen);
        Key(Qt::Key_Space);
        EXPECT_FALSE(app_.Run.FullScreen);
        Key(Qt::Key_Space);
        Key(Qt::Key_Escape);
        EXPECT_FALSE(app_.Run.FullScreen);
    }

    QWidget& TextField() { return *window_.findChild<QPlainTextEdit*>(); }
};

TEST_F(KeyboardTest, EveryKeyActsAfterAClickOnThePicture) {
    ClickOn(window_.Picture());
    ExpectEveryKeyActs();
}

TEST_F(KeyboardTest, DigitsGoByTheirPlaceOnTheKeyboard) {
    ClickOn(window_.Picture());
    const std::string& said = main_.LCommandOutput.Caption;
    KeyAt(10, Qt::Key_Exclam, Qt::ShiftModifier);  // American: "1" and Shift
    EXPECT_EQ(said, "Saved View 1");
    KeyAt(12, Qt::Key_QuoteDbl, Qt::NoModifier);  // French: the key of 3
    EXPECT_EQ(said, "Enter View 3");
    KeyAt(12, Qt::Key_3, Qt::ShiftModifier);
    EXPECT_EQ(said, "Saved View 3");
    KeyAt(16, Qt::Key_Slash, Qt::ShiftModifier);  // German: "7" and Shift
    EXPECT_EQ(said, "Saved View 7");
    KeyAt(87, Qt::Key_1, Qt::KeypadModifier);
    EXPECT_EQ(said, "Restored View 1");
    KeyAt(81, Qt::Key_PageUp, Qt::KeypadModifier | Qt::ShiftModifier);  // Shift takes the number lock away
    EXPECT_EQ(said, "Saved View 9");
    const double lon = view_.ViewLon;
    KeyAt(83, Qt::Key_Left, Qt::KeypadModifier);  // without number lock
    EXPECT_NE(view_.ViewLon, lon);
    EXPECT_EQ(said, "Saved View 9");
    KeyAt(19, Qt::Key_ParenRight, Qt::ShiftModifier);
    EXPECT_EQ(app_.Data.TimeOffset, TimeOffset{}) << "the offsets are cleared";
    main_.LCommandOutput.Caption = "";
    for (const Qt::KeyboardModifier held : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        KeyAt(10, Qt::Key_1, held);
        EXPECT_EQ(said, "");
    }
}

TEST_F(KeyboardTest, TheKeypadHasItsSignsToo) {
    ClickOn(window_.Picture());
    KeyAt(106, Qt::Key_Slash, Qt::KeypadModifier);
    EXPECT_EQ(view_.OrbitTurns, 6);
    KeyAt(86, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(view_.OrbitTurns, 7);
    KeyAt(82, Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(view_.OrbitTurns, 6);
    KeyAt(21, Qt::Key_Plus, Qt::ShiftModifier);
    EXPECT_EQ(view_.OrbitTurns, 7);
}

TEST_F(KeyboardTest, EveryKeyActsAfterAClickOnACheckBox) {
    TextField().setFocus();
    const bool before = main_.CDrawSun.Value;
    ClickOn(WithText<QCheckBox>("Sun and Moon"));
    EXPECT_EQ(main_.CDrawSun.Value, !before);
    ExpectEveryKeyActs();
    EXPECT_EQ(main_.CDrawSun.Value, !before) << "Space is the picture's";
}

TEST_F(KeyboardTest, EveryKeyActsAfterAClickOnAButton) {
    for (const char* text : {"Clear", "Orbit +", "+"}) {
        TextField().setFocus();
        ClickOn(WithText<QPushButton>(text));
        ExpectEveryKeyActs();
    }
}

TEST_F(KeyboardTest, EveryKeyActsAfterAClickOnAPanelAndOnItsWords) {
    TextField().setFocus();
    for (QGroupBox* frame : window_.findChildren<QGroupBox*>())
        if (frame->title() == "Time") QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(4, frame->height() - 4));
    ExpectEveryKeyActs();
    TextField().setFocus();
    for (QLabel* label : window_.findChildren<QLabel*>())
        if (label->text() == "ms") QTest::mouseClick(label, Qt::LeftButton);
    ExpectEveryKeyActs();
}

TEST_F(KeyboardTest, EveryKeyActsAfterAClickOnTheModelsButton) {
    main_.FrameInfo.Click();
    ClickOn(WithText<QRadioButton>("SGP4/SDP4"));
    EXPECT_TRUE(main_.CSGP4.Value) << "the model that is set stays set";
    EXPECT_TRUE(WithText<QRadioButton>("SGP4/SDP4").isChecked());
    ExpectEveryKeyActs();
}

TEST_F(KeyboardTest, EveryKeyActsAfterAnAddition) {
    TextField().setFocus();
    QTest::keyClicks(&TextField(), "gh");
    EXPECT_EQ(main_.TTLE.Text.Get(), "gh");
    main_.TTLE.Text = std::string();
    ASSERT_TRUE(LoadTLEFile(app_, GLINTARA_SOURCE_DIR "/data/examples/stations.tle"));
    const int before = app_.Data.SatCount;
    ClickOn(WithText<QPushButton>("Add TLE"));
    EXPECT_GT(app_.Data.SatCount, before);
    ExpectEveryKeyActs();
}

TEST_F(KeyboardTest, TheTextFieldIsLeftByEscapeAndByAClickOnThePicture) {
    for (const bool escape : {true, false}) {
        ClickOn(*window_.findChild<QPlainTextEdit*>()->viewport());
        ASSERT_EQ(QApplication::focusWidget(), &TextField());
        const bool before = main_.CSunLight.Value;
        Key(Qt::Key_G);
        EXPECT_EQ(main_.CSunLight.Value, before) << "a letter of the text";
        if (escape)
            Key(Qt::Key_Escape);
        else
            ClickOn(window_.Picture());
        EXPECT_EQ(QApplication::focusWidget(), &window_.Picture());
        EXPECT_FALSE(app_.Run.KeyLock);
        Key(Qt::Key_G);
        EXPECT_EQ(main_.CSunLight.Value, !before);
    }
}

TEST_F(KeyboardTest, AControlReachedByTabHasSpaceAndReturnAndEscapeLeavesIt) {
    QCheckBox& box = WithText<QCheckBox>("Sun and Moon");
    for (int i = 0; i < 100 && QApplication::focusWidget() != &box; ++i) Key(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &box);
    const bool before = main_.CDrawSun.Value;
    Key(Qt::Key_Space);
    EXPECT_EQ(main_.CDrawSun.Value, !before);
    EXPECT_FALSE(app_.Run.FullScreen);
    Key(Qt::Key_Return);
    EXPECT_EQ(main_.CDrawSun.Value, before);
    const bool light = main_.CSunLight.Value;
    Key(Qt::Key_G);
    EXPECT_EQ(main_.CSunLight.Value, !light) << "other keys are the picture's";
    const double lon = view_.ViewLon;
    Key(Qt::Key_Left);
    EXPECT_NE(view_.ViewLon, lon);
    EXPECT_EQ(QApplication::focusWidget(), &box);
    Key(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &window_.Picture());
    Key(Qt::Key_Space);
    EXPECT_TRUE(app_.Run.FullScreen);
}

TEST_F(KeyboardTest, FunctionAndTimeKeysActInTheOtherWindowsToo) {
    for (const char* name : {"Search Flares/Transits...", "Manage Satellite List..."}) {
        EntryNamed(name)->trigger();
        ASSERT_TRUE(WaitFor([&] { return QApplication::activeWindow() != &window_ && QApplication::focusWidget(); }));
        QWidget* const form = QApplication::activeWindow();
        view_.ViewLat = 1;
        Key(Qt::Key_F5);
        EXPECT_EQ(view_.ViewLat, 0) << name;
        QPushButton& button = *form->findChild<QPushButton*>();
        button.setFocus();
        const int hours = app_.Data.TimeOffset.HourOffset;
        Key(Qt::Key_H);
        EXPECT_EQ(app_.Data.TimeOffset.HourOffset, hours + 1) << name;
        Key(Qt::Key_H, true);
        EXPECT_EQ(app_.Data.TimeOffset.HourOffset, hours) << name;
        const bool light = main_.CSunLight.Value;
        Key(Qt::Key_G);
        EXPECT_EQ(main_.CSunLight.Value, light) << "not a key of the time";
        if (auto* const field = form->findChild<QLineEdit*>()) {
            field->setFocus();
            field->selectAll();
            Key(Qt::Key_0);
            EXPECT_EQ(field->text(), "0") << "a digit of the text";
        }
        form->close();
    }
}

TEST_F(KeyboardTest, F1OpensTheManual) {
    ClickOn(window_.Picture());
    Key(Qt::Key_F1);
    auto* const form = window_.findChild<QDialog*>("FormHelp");
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->isVisible());
    auto& page = Named<QTextBrowser>(*form, "TManual");
    EXPECT_TRUE(page.toPlainText().startsWith("Glintara: the manual"));
    EXPECT_TRUE(page.toPlainText().contains("Shift+"));
    EXPECT_FALSE(page.openExternalLinks()) << "no other program is started";
    const QImage picture =
        page.loadResource(QTextDocument::ImageResource, QUrl("qrc:/manual/globe.png")).value<QImage>();
    EXPECT_FALSE(picture.isNull());
    EXPECT_LE(picture.width(), 680) << "it fits the page";
    QTest::keyClick(form, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(KeyboardTest, WithAnotherKeyThanShiftNoLetterActs) {
    ClickOn(window_.Picture());
    const bool before = main_.CSunLight.Value;
    for (const Qt::KeyboardModifier modifier :
         {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier, Qt::GroupSwitchModifier}) {
        QTest::keyClick(&window_.Picture(), Qt::Key_G, modifier);
        if (QWidget* const menu = QApplication::activePopupWidget()) menu->close();
        EXPECT_EQ(main_.CSunLight.Value, before) << modifier;
    }
    PressNative(Qt::Key_G, 42, Qt::ShiftModifier, "G");
    EXPECT_EQ(main_.CSunLight.Value, !before) << "a capital letter is a letter, by Shift or Caps Lock";
    PressNative(Qt::Key_G, 42, {}, "G");
    EXPECT_EQ(main_.CSunLight.Value, before);
}

TEST_F(KeyboardTest, OnAKeyboardOfAnotherScriptTheKeysAreWhereTheyAre) {
    ClickOn(window_.Picture());
    const bool light = main_.CSunLight.Value;
    PressNative(0x041F, 42, {}, QString(QChar(0x043F)));  // Cyrillic pe, where G is
    EXPECT_EQ(main_.CSunLight.Value, !light);
    PressNative(0x0393, 42, {}, QString(QChar(0x03B3)));  // Greek gamma
    EXPECT_EQ(main_.CSunLight.Value, light);
    const bool constellations = main_.CDrawConstallations.Value;
    PressNative(0x00C7, 54, {}, QString(QChar(0x00E7)));  // a cedilla is no C
    EXPECT_EQ(main_.CDrawConstallations.Value, constellations);
    PressNative(0x041F, 10, {}, {});
    EXPECT_EQ(main_.CSunLight.Value, light) << "the place of a digit";
}

TEST_F(KeyboardTest, APasteOnThePictureFillsTheTextBox) {
    const std::string set =
        "1 25544U 98067A   18020.17613426  .00001994  00000-0  37299-4 0  9990\n"
        "2 25544  51.6434  71.6211 0003517  22.1480  83.1352 15.54200563 95469";
    ClickOn(window_.Picture());
    main_.TTLE.Text = std::string();
    QGuiApplication::clipboard()->setText(QString::fromStdString("ISS (ZARYA)\n" + set));
    QTest::keyClick(&window_.Picture(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(main_.TTLE.Text.Get().starts_with("ISS (ZARYA)\r\n1 25544U"));
    EXPECT_TRUE(main_.TTLE.Text.Get().ends_with("95469\r\n")) << "its last line can be read";
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "1 element set pasted, press Add TLE or Update TLE");
    EXPECT_FALSE(main_.TimerFastRefresh.Enabled) << "not the key V";
    EXPECT_EQ(QApplication::focusWidget(), &window_.Picture());
    QGuiApplication::clipboard()->setText("no set");
    const std::string before = main_.TTLE.Text.Get();
    QTest::keyClick(&window_.Picture(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(main_.TTLE.Text.Get(), before) << "what was there stays";
    EXPECT_EQ(main_.LCommandOutput.Caption.Get(), "ERROR: There is no element set in the clipboard");
    ClickOn(WithText<QPushButton>("Add TLE"));
    EXPECT_EQ(main_.TTLE.Text.Get(), "");
    QGuiApplication::clipboard()->clear();
}

TEST_F(KeyboardTest, MenusOpenByTheirLetters) {
    QTest::keyClick(&window_, Qt::Key_F, Qt::AltModifier);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "&File");
    EXPECT_EQ(main_.MnuFile.Caption.Get(), "File");
    menu->close();
    EXPECT_FALSE(main_.TimerViewShow.Enabled) << "not the key F";
}

TEST_F(KeyboardTest, AButtonOfTheTimePanelRepeatsWhileItIsHeld) {
    int presses = 0;
    main_.CYearOffsetInc.SetClickHandler([&presses] { ++presses; });
    QPushButton& button = WithText<QPushButton>("+");  // the first is the year's
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_TRUE(WaitFor([&] { return presses >= 3; }));
    QTest::mouseRelease(&button, Qt::LeftButton);
    const int held = presses;
    QCoreApplication::processEvents();
    EXPECT_LE(presses, held + 1);
}

}  // namespace
}  // namespace glintara::desktop
