#pragma once

// The windows of the observations and of the output, which the controls open and close.

#include <QSettings>
#include <functional>
#include <memory>
#include <string_view>

#include "core/computer_clock.h"
#include "desktop/core/form_output.h"
#include "desktop/main/main_scope.h"
#include "desktop/orbit/form_observations.h"
#include "state/application.h"

namespace glintara::desktop {

/// Makes each window when it is first wanted. What is handed in must outlive it.
class ObservationWindows {
  public:
    /// `keyPressed` gets the keys that no control of the windows takes.
    ObservationWindows(Application& app, MainScope& window, QSettings& places, const ComputerClock& clock,
                       std::function<bool(int key, bool shift)> keyPressed);
    ObservationWindows(const ObservationWindows&) = delete;
    ObservationWindows& operator=(const ObservationWindows&) = delete;
    ~ObservationWindows();

    /// Opens the window "Observations", or brings it to the front.
    void ShowObservations();

    /// What the observations show has changed: another satellite works, element sets came in.
    void RefreshInfo();

    /// Closes the window of that name, if it is one of these.
    void Unload(std::string_view name);

  private:
    void FollowObservations();
    void FollowOutput();

    Application& app_;
    MainScope& window_;
    QSettings& places_;
    std::function<bool(int, bool)> keyPressed_;
    std::unique_ptr<FormObservations> observations_;
    std::unique_ptr<FormOutput> output_;
};

}  // namespace glintara::desktop
