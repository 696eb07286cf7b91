#include "orbit/progress.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace glintara {

void SetProgress(ProgressControls& form, double percent) {
    // So little below a whole number is that number.
    constexpr double kLift = 0.1;
    form.ProgressBar1.Value = std::isnan(percent) ? 0.0 : std::clamp(std::trunc(percent + kLift), 0.0, 100.0);
}

void ConnectProgress(ProgressControls& form) {
    form.CAbort.SetClickHandler([&form] { form.Aborted = true; });
}

ProgressWindow::ProgressWindow(Application& app, const char* work) : app_(app) {
    app.Progress.Aborted = false;
    app.Progress.LWork.Caption = std::string(work);
    SetProgress(app.Progress, 0);
    app.Progress.Visible = true;
}

ProgressWindow::~ProgressWindow() {
    app_.Progress.Visible = false;
    if (app_.Progress.Aborted && !app_.Run.Closing) app_.Boxes.Tell("Operation Aborted", MessageIcon::Warning);
}

bool ProgressWindow::GoesOn(double percent) {
    SetProgress(app_.Progress, percent);
    app_.EventQueue.ServeEvents();
    return !app_.Progress.Aborted && !app_.Run.Closing;
}

}  // namespace glintara
