#include "desktop/main/keyboard.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <cstring>
#include <utility>

namespace glintara::desktop {

namespace {

/// The letters of a Latin keyboard, row by row, and the code that the keyboard itself sends for the first key of each.
struct LetterRow {
    quint32 firstCode;
    const char* letters;
};

constexpr LetterRow kLetterRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};

/// Keys of Qt's up to this one are those of Latin letters, digits and signs; from the next on, other letters.
constexpr int kLastLatinKey = 0x24F;
constexpr int kFirstKeyWithoutLetter = 0x01000000;

class PanelKeys : public QObject {
  public:
    PanelKeys(QWidget& panels, QWidget& picture) : QObject(&panels), picture_(picture) {
        for (auto* button : panels.findChildren<QAbstractButton*>()) {
            button->setFocusPolicy(Qt::TabFocus);
            button->installEventFilter(this);
        }
        for (auto* frame : panels.findChildren<QGroupBox*>()) frame->installEventFilter(this);
        for (auto* text : panels.findChildren<QPlainTextEdit*>()) text->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* const text = qobject_cast<QPlainTextEdit*>(watched);
        if (event->type() == QEvent::MouseButtonPress && text == nullptr) {
            picture_.setFocus(Qt::MouseFocusReason);
        } else if (event->type() == QEvent::KeyPress) {
            auto& key = static_cast<QKeyEvent&>(*event);
            if (key.key() == Qt::Key_Escape && IsPlain(key)) {
                picture_.setFocus();
                return true;
            }
            if (auto* const button = qobject_cast<QAbstractButton*>(watched)) return TakeFrom(*button, key);
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    /// A key that has come to a button. True when it is not the button's.
    static bool TakeFrom(QAbstractButton& button, QKeyEvent& key) {
        switch (key.key()) {
            case Qt::Key_Space:
            case Qt::Key_Tab:
            case Qt::Key_Backtab:
                return false;
            case Qt::Key_Return:
            case Qt::Key_Enter:
                if (IsPlain(key) && !key.isAutoRepeat()) button.click();
                return true;
            default:
                QCoreApplication::sendEvent(button.window(), &key);
                return true;
        }
    }

    QWidget& picture_;
};

class FormKeys : public QObject {
  public:
    FormKeys(QWidget& form, std::function<bool(int, bool)> keyPressed)
        : QObject(&form), keyPressed_(std::move(keyPressed)) {
        form.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) {
            const auto& key = static_cast<QKeyEvent&>(*event);
            if (IsPlain(key) && keyPressed_(KeyByPlace(key), key.modifiers().testFlag(Qt::ShiftModifier))) return true;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<bool(int, bool)> keyPressed_;
};

/// Scan codes of X11 and Wayland: evdev's number of the key plus 8. The number row goes from 1 to 9 and ends with 0.
constexpr quint32 kScanOfOne = 10;
constexpr quint32 kScanOfZero = 19;

struct KeypadDigit {
    quint32 scan;
    int key;
};

constexpr KeypadDigit kKeypad[] = {{79, Qt::Key_7}, {80, Qt::Key_8}, {81, Qt::Key_9}, {83, Qt::Key_4}, {84, Qt::Key_5},
                                   {85, Qt::Key_6}, {87, Qt::Key_1}, {88, Qt::Key_2}, {89, Qt::Key_3}, {90, Qt::Key_0}};

}  // namespace

bool IsPlain(const QKeyEvent& event) {
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier | Qt::GroupSwitchModifier));
}

int KeyByPlace(const QKeyEvent& event) {
    const quint32 scan = event.nativeScanCode();
    if (scan >= kScanOfOne && scan < kScanOfZero) return Qt::Key_1 + static_cast<int>(scan - kScanOfOne);
    if (scan == kScanOfZero) return Qt::Key_0;
    const bool digit = event.key() >= Qt::Key_0 && event.key() <= Qt::Key_9;
    // Shift turns a keypad of digits into one of cursor keys: what is meant are the digits.
    if (digit || event.modifiers().testFlag(Qt::ShiftModifier))
        for (const KeypadDigit& place : kKeypad)
            if (place.scan == scan) return place.key;
    const int key = event.key();
    if (key <= kLastLatinKey || key >= kFirstKeyWithoutLetter) return key;
    for (const LetterRow& row : kLetterRows) {
        const quint32 place = scan - row.firstCode;
        if (scan >= row.firstCode && place < std::strlen(row.letters)) return row.letters[place];
    }
    return key;
}

void KeepKeysWithPicture(QWidget& panels, QWidget& picture) { new PanelKeys(panels, picture); }

void HandKeysOn(QWidget& form, std::function<bool(int key, bool shift)> keyPressed) {
    new FormKeys(form, std::move(keyPressed));
}

}  // namespace glintara::desktop
