#pragma once

// The kinds of controls. A control is data with a handler; a window mirrors it, and no control knows of any window.
//
// Each kind has `Watch`, by which a window hangs one function on all of the control's values, to show any change.

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "state/observed.h"

namespace glintara {

/// The part of buttons and menu entries that is pressed.
class Clickable {
  public:
    /// Installs the one handler of presses.
    void SetClickHandler(std::function<void()> handler) { handler_ = std::move(handler); }

    /// A press by the user. Nothing happens while the control is disabled.
    void Click() const {
        if (Enabled && handler_) handler_();
    }

    /// Whether anything happens on a press. A window leaves out what has no handler.
    bool IsWired() const { return static_cast<bool>(handler_); }

    Observed<bool> Enabled{true};
    bool Acts = true;  ///< false while what it stands for is still to come: a window shows it greyed

  private:
    std::function<void()> handler_;
};

/// A box that is set or clear. The handler hangs on `Value`.
struct CheckBox {
    explicit CheckBox(std::string_view caption = "", std::string_view toolTip = "", bool value = false)
        : Value(value), Caption(std::string(caption)), ToolTip(std::string(toolTip)) {}

    Observed<bool> Value;
    Observed<bool> Enabled{true};
    Observed<std::string> Caption;
    Observed<std::string> ToolTip;
    bool Acts = true;  ///< false while what it stands for is still to come: a window shows it greyed, keys pass it over

    void Watch(const std::function<void()>& watcher) {
        Value.SetWatcher(watcher);
        Enabled.SetWatcher(watcher);
        Caption.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
    }
};

/// A check box that is one of several ways: who sets one clears the others.
struct OptionButton : CheckBox {
    using CheckBox::CheckBox;
};

/// An entry of the menu. `Checked` mirrors an option; a press is told to the click handler.
struct MenuEntry : Clickable {
    explicit MenuEntry(std::string_view caption = "", std::string_view toolTip = "")
        : Caption(std::string(caption)), ToolTip(std::string(toolTip)) {}

    Observed<bool> Checked;
    Observed<bool> Visible{true};
    Observed<std::string> Caption;
    Observed<std::string> ToolTip;

    void Watch(const std::function<void()>& watcher) {
        Enabled.SetWatcher(watcher);
        Checked.SetWatcher(watcher);
        Visible.SetWatcher(watcher);
        Caption.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
    }
};

struct Button : Clickable {
    explicit Button(std::string_view caption = "", std::string_view toolTip = "")
        : Caption(std::string(caption)), ToolTip(std::string(toolTip)) {}

    Observed<std::string> Caption;
    Observed<std::string> ToolTip;
    Observed<bool> Lit;  ///< stands out: there is something behind it

    void Watch(const std::function<void()>& watcher) {
        Enabled.SetWatcher(watcher);
        Caption.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
        Lit.SetWatcher(watcher);
    }
};

struct Label {
    explicit Label(std::string_view caption = "", std::string_view toolTip = "")
        : Caption(std::string(caption)), ToolTip(std::string(toolTip)) {}

    Observed<std::string> Caption;
    Observed<std::string> ToolTip;
    Observed<bool> Visible{true};

    void Watch(const std::function<void()>& watcher) {
        Caption.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
        Visible.SetWatcher(watcher);
    }
};

/// A frame round a group of controls. A press on its ground is told to the click handler.
struct Frame : Clickable {
    explicit Frame(std::string_view caption = "", std::string_view toolTip = "")
        : Caption(std::string(caption)), ToolTip(std::string(toolTip)) {}

    Observed<std::string> Caption;
    Observed<std::string> ToolTip;
    Observed<bool> Visible{true};

    void Watch(const std::function<void()>& watcher) {
        Enabled.SetWatcher(watcher);
        Caption.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
        Visible.SetWatcher(watcher);
    }
};

struct TextBox {
    explicit TextBox(std::string_view text = "", std::string_view toolTip = "")
        : Text(std::string(text)), ToolTip(std::string(toolTip)) {}

    Observed<std::string> Text;
    Observed<std::string> ToolTip;
    Observed<bool> Enabled{true};

    void Watch(const std::function<void()>& watcher) {
        Text.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
        Enabled.SetWatcher(watcher);
    }
};

/// A bar with a handle, of whole steps from `Least` to `Most`. The handler hangs on `Value`.
struct Slider {
    Slider(int least, int most, std::string_view toolTip = "")
        : Least(least), Most(most), Value(least), ToolTip(std::string(toolTip)) {}

    const int Least;
    const int Most;
    Observed<int> Value;  ///< within the range: set it by `MoveTo` when the number comes from outside
    Observed<bool> Enabled{true};
    Observed<std::string> ToolTip;

    /// Moves the handle to `value`, or to the end of the bar when that lies outside.
    void MoveTo(int value) { Value = std::clamp(value, Least, Most); }

    void Watch(const std::function<void()>& watcher) {
        Value.SetWatcher(watcher);
        Enabled.SetWatcher(watcher);
        ToolTip.SetWatcher(watcher);
    }
};

/// A bar that fills; `Value` is in percent, 0 to 100.
struct ProgressBar {
    Observed<double> Value;

    void Watch(const std::function<void()>& watcher) { Value.SetWatcher(watcher); }
};

/// A timer fires every `Interval` milliseconds while it is armed. Whoever owns the clock watches it: at each change the
/// wait begins anew, a timer that is armed no more is forgotten, and no timer fires inside its own handler. A test does
/// that by hand.
class Timer {
  public:
    explicit Timer(int intervalMs = 0, bool enabled = false) : Interval(intervalMs), Enabled(enabled) {}

    /// Installs the one handler of its ticks.
    void SetTickHandler(std::function<void()> handler) { handler_ = std::move(handler); }

    /// Whether it fires at all. An interval of 0, or a negative one, means never.
    bool Armed() const { return Enabled && Interval > 0; }

    /// One tick. Nothing happens while the timer is not armed: a tick may already be on its way when it is stopped.
    void Fire() const {
        if (Armed() && handler_) handler_();
    }

    void Stop() { Enabled = false; }

    /// Waits a whole interval of `intervalMs` from now on, whatever it has waited already.
    void Restart(int intervalMs) {
        Enabled = false;
        Interval = intervalMs;
        Enabled = true;
    }

    void Watch(const std::function<void()>& watcher) {
        Interval.SetWatcher(watcher);
        Enabled.SetWatcher(watcher);
    }

    Observed<int> Interval;
    Observed<bool> Enabled;

  private:
    std::function<void()> handler_;
};

}  // namespace glintara
