#pragma once

// How the program ends, while long work is under way too.

#include <array>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "core/my_threads.h"
#include "state/application.h"
#include "state/long_work.h"

namespace glintara {

/// The windows in the order in which they are unloaded.
inline constexpr std::array<std::string_view, 16> kUnloadOrder = {
    "FormSatellites", "FormLocalSettings", "FormRealTime", "FormDownloadTLE", "FormMirror", "FormSatPosition",
    "FormFindFlare",  "FormColors",        "FormTwilight", "FormIOD",         "FormOutput", "FormCities",
    "FormProgress",   "FormAdvSel",        "FormAbout",    "FormDate"};

/// What the end of the program asks of the windows. What is empty is not there.
struct ShutDownHooks {
    std::function<void(std::string_view)> unloadForm;  ///< closes that window, if it is open, without a question

    /// Long work has ended and the window may close. Called from deep inside: the close is to be posted, not done.
    std::function<void()> closeWindow;
};

class ShutDown {
  public:
    ShutDown(Application& app, ShutDownHooks hooks) : app_(app), hooks_(std::move(hooks)) {}

    /// Hangs itself on the end of long work.
    void Connect();

    /// `abort` is called when the window is to close while long work is under way, to end it at its next look.
    void AddAbort(std::function<void()> abort) { aborts_.push_back(std::move(abort)); }

    /// The window wants to close. With long work under way, that is told to end, and the answer is false: `closeWindow`
    /// follows. Otherwise timers stop, the windows are unloaded in their order, then the worker is stopped, and the
    /// answer is true. Nothing is written to disk.
    bool Form_Unload();

    /// A thread beside the window's own, if there is one.
    std::unique_ptr<MyThreads> Worker;

  private:
    Application& app_;
    ShutDownHooks hooks_;
    std::vector<std::function<void()>> aborts_;
    bool unloaded_ = false;
};

}  // namespace glintara
