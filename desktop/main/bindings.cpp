#include "desktop/main/bindings.h"

#include <QSignalBlocker>
#include <QStyle>
#include <cmath>

#include "desktop/main/mnemonics.h"

namespace glintara::desktop {

namespace {

/// Captions of no more characters than this are signs, not words.
constexpr qsizetype kLongestSign = 2;

/// The property of a button that stands out, as the style sheet asks for it.
constexpr auto kLit = "lit";

}  // namespace

QString ToQt(const std::string& text) { return QString::fromStdString(text); }

std::string FromQt(const QString& text) { return text.toStdString(); }

void Bind(QAbstractButton& widget, CheckBox& control, QChar mnemonic) {
    widget.setCheckable(true);
    const auto show = [&widget, &control, mnemonic] {
        const QSignalBlocker quiet(widget);
        widget.setChecked(control.Value);
        widget.setEnabled(control.Enabled && control.Acts);
        const QString caption = ToQt(control.Caption);
        widget.setText(WithMnemonic(caption, mnemonic));
        widget.setToolTip(ToQt(control.ToolTip));
        widget.setAccessibleName(caption.isEmpty() ? widget.toolTip() : caption);
    };
    control.Watch(show);
    show();
    QObject::connect(&widget, &QAbstractButton::toggled, &widget, [&control](bool value) { control.Value = value; });
}

void Bind(QAbstractButton& widget, Button& control, QChar mnemonic) {
    const auto show = [&widget, &control, mnemonic] {
        widget.setEnabled(control.Enabled);
        const QString caption = ToQt(control.Caption);
        widget.setText(WithMnemonic(caption, mnemonic));
        widget.setToolTip(ToQt(control.ToolTip));
        // A sign such as "+" says nothing to who hears it.
        const bool isSign = caption.size() <= kLongestSign && !widget.toolTip().isEmpty();
        widget.setAccessibleName(isSign ? widget.toolTip() : caption);
        widget.setAccessibleDescription(widget.toolTip());
        if (widget.property(kLit).toBool() != control.Lit) {
            widget.setProperty(kLit, control.Lit.Get());
            widget.style()->polish(&widget);  // a style sheet looks at a property once
        }
    };
    control.Watch(show);
    show();
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [&control] { control.Click(); });
}

void Bind(QLabel& widget, Label& control, const std::function<QString(QString)>& wording) {
    const auto show = [&widget, &control, wording] {
        const QString text = ToQt(control.Caption);
        widget.setText(wording ? wording(text) : text);
        widget.setToolTip(ToQt(control.ToolTip));
        // A label that has no parent yet would become a window of its own.
        if (widget.parentWidget() != nullptr || !control.Visible) widget.setVisible(control.Visible);
    };
    widget.setTextFormat(Qt::PlainText);
    control.Watch(show);
    show();
}

void Bind(QLineEdit& widget, TextBox& control) {
    const auto show = [&widget, &control] {
        if (FromQt(widget.text()) != control.Text.Get()) {
            const QSignalBlocker quiet(widget);
            widget.setText(ToQt(control.Text));
        }
        widget.setEnabled(control.Enabled);
        widget.setToolTip(ToQt(control.ToolTip));
    };
    control.Watch(show);
    show();
    QObject::connect(&widget, &QLineEdit::textChanged, &widget,
                     [&control](const QString& text) { control.Text = FromQt(text); });
}

TextPortions& Bind(QPlainTextEdit& widget, TextBox& control) { return *new TextPortions(widget, control); }

void Bind(QProgressBar& widget, ProgressBar& control) {
    widget.setRange(0, 100);
    const auto show = [&widget, &control] { widget.setValue(static_cast<int>(std::lround(control.Value.Get()))); };
    control.Watch(show);
    show();
}

void Bind(QSlider& widget, Slider& control) {
    const auto show = [&widget, &control] {
        const QSignalBlocker quiet(widget);
        widget.setRange(control.Least, control.Most);
        widget.setValue(control.Value);
        widget.setEnabled(control.Enabled);
        widget.setToolTip(ToQt(control.ToolTip));
        widget.setAccessibleDescription(widget.toolTip());
    };
    control.Watch(show);
    show();
    QObject::connect(&widget, &QSlider::valueChanged, &widget, [&control](int value) { control.MoveTo(value); });
}

void Bind(QAction& action, MenuEntry& control, QChar mnemonic, const QString& keys) {
    const auto show = [&action, &control, mnemonic, keys] {
        const QSignalBlocker quiet(action);
        // A menu sets what follows a tab where it shows shortcuts.
        action.setText(WithMnemonic(ToQt(control.Caption), mnemonic) + (keys.isEmpty() ? QString() : '\t' + keys));
        action.setEnabled(control.Enabled && control.Acts && control.IsWired());
        action.setVisible(control.Visible);
        action.setToolTip(ToQt(control.ToolTip));
        action.setCheckable(control.Checked || action.isCheckable());
        action.setChecked(control.Checked);
        Q_EMIT action.changed();
    };
    control.Watch(show);
    show();
    QObject::connect(&action, &QAction::triggered, &action, [&action, &control] {
        // Qt has toggled its own mark; what holds is the control's.
        const QSignalBlocker quiet(action);
        action.setChecked(control.Checked);
        control.Click();
        action.setChecked(control.Checked);
    });
}

void Bind(QAction& action, Button& control) {
    const auto show = [&action, &control] {
        action.setText(ToQt(control.Caption));
        action.setToolTip(ToQt(control.ToolTip));
        action.setEnabled(control.Enabled && control.IsWired());
    };
    control.Watch(show);
    show();
    QObject::connect(&action, &QAction::triggered, &action, [&control] { control.Click(); });
}

void Bind(QTimer& timer, Timer& control) {
    timer.setTimerType(Qt::PreciseTimer);
    const auto obey = [&timer, &control] {
        if (control.Armed())
            timer.start(control.Interval);
        else
            timer.stop();
    };
    control.Watch(obey);
    obey();
    QObject::connect(&timer, &QTimer::timeout, &timer, [&control, firing = false]() mutable {
        if (firing) return;
        firing = true;
        control.Fire();
        firing = false;
    });
}

}  // namespace glintara::desktop
