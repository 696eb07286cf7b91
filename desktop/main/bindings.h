#pragma once

// One binding a kind: the widgets of a window mirror the program's controls, in both directions. A widget that is bound
// shows what its control holds, and tells it what the user does; it decides nothing.
//
// A control has one widget that watches it. The widget must not outlive the control.

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSlider>
#include <QTimer>
#include <functional>

#include "desktop/main/text_portions.h"
#include "state/controls.h"

namespace glintara::desktop {

QString ToQt(const std::string& text);
std::string FromQt(const QString& text);

/// A button, pressed by Alt and the letter `mnemonic` too, unless that is null.
void Bind(QAbstractButton& widget, CheckBox& control, QChar mnemonic = {});
void Bind(QAbstractButton& widget, Button& control, QChar mnemonic = {});
void Bind(QLineEdit& widget, TextBox& control);

/// With `wording` the text is shown as that gives it, so that it breaks well.
void Bind(QLabel& widget, Label& control, const std::function<QString(QString)>& wording = {});

/// The box for long texts; what it gives takes pastes. It belongs to the widget.
TextPortions& Bind(QPlainTextEdit& widget, TextBox& control);
void Bind(QProgressBar& widget, ProgressBar& control);
void Bind(QSlider& widget, Slider& control);

/// An entry of a menu, chosen by the letter `mnemonic` unless that is null. One without a handler is greyed: nothing
/// would happen. `keys` is shown beside it, and no more: the keys are the picture's, and as shortcuts of the window they
/// would be taken from whoever types.
void Bind(QAction& action, MenuEntry& control, QChar mnemonic = {}, const QString& keys = {});

/// A button that stands in a menu. One without a handler is greyed.
void Bind(QAction& action, Button& control);

/// Drives `control` by `timer`: it fires every interval while it is armed, and not inside its own handler.
void Bind(QTimer& timer, Timer& control);

}  // namespace glintara::desktop
