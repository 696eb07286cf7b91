#pragma once

// What the program asks of the desktop: message boxes, pending events, the drivers of the timers.

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/usage_record.h"
#include "state/events.h"
#include "state/main_controls.h"
#include "state/message_boxes.h"

namespace glintara::desktop {

/// Message boxes over the window that the user works in.
class QtMessageBoxes : public MessageBoxes {
  public:
    void SetParent(QWidget* parent) { parent_ = parent; }
    void Tell(std::string_view text, MessageIcon icon) override;
    bool AskYesNo(std::string_view text) override;
    ChangesAnswer AskAboutChanges(std::string_view text, bool& dontAskAgain) override;

  private:
    QWidget* Parent() const;

    QWidget* parent_ = nullptr;
};

/// Serves the events of the application.
class QtEvents : public Events {
  public:
    void ServeEvents() override;
    void WaitForEvents() override;
};

/// The desktop's browser.
class QtBrowser : public Browser {
  public:
    void Open(const std::string& address, std::function<void()> failed) override;

  private:
    QObject alive_;  // whom answers that come later are for
};

/// Opens nothing: for programs that are only tried.
class NoBrowser : public Browser {
  public:
    void Open(const std::string& /*address*/, std::function<void()> /*failed*/) override {}
};

/// One Qt timer for each timer of the main window.
class TimerDrivers {
  public:
    explicit TimerDrivers(MainControls& main);

  private:
    std::array<std::unique_ptr<QTimer>, MainControls::kTimerCount> timers_;
};

}  // namespace glintara::desktop
