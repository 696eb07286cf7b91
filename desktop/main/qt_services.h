#pragma once

// What the program asks of the desktop: message boxes, pending events, the drivers of the timers.

#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>
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

/// The news page has no website yet: an address that leads nowhere is not put before the user.
class NoWebsite : public Browser {
  public:
    void Open(const std::string& /*address*/) override {}
};

/// One Qt timer for each timer of the main window.
class TimerDrivers {
  public:
    explicit TimerDrivers(MainControls& main);

  private:
    std::array<std::unique_ptr<QTimer>, MainControls::kTimerCount> timers_;
};

}  // namespace glintara::desktop
