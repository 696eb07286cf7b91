#pragma once

// The window "Progress" of a long scan.

#include "state/application.h"

namespace glintara {

/// Shows `percent`, 0 to 100: cut to a whole number, 99.9 and more as 100. What is no number counts as 0.
void SetProgress(ProgressControls& form, double percent);

/// Hangs its procedure on the button of the window.
void ConnectProgress(ProgressControls& form);

/// The window as long as a scan goes on. When it closes after the scan has been aborted, a message says so.
class ProgressWindow {
  public:
    ProgressWindow(Application& app, const char* work);
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;
    ~ProgressWindow();

    /// Shows `percent`, lets the windows breathe, and tells whether the work may go on.
    bool GoesOn(double percent);

  private:
    Application& app_;
};

}  // namespace glintara
