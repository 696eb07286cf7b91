#pragma once

// The opening: the Earth comes near, goes back a little, and begins to turn.

#include <functional>
#include <utility>

#include "core/computer_clock.h"
#include "core/run_loop.h"
#include "state/application.h"

namespace glintara {

/// What follows the pictures of the opening. What is empty is left out.
struct OpeningHooks {
    std::function<bool()> loadStartUpWorkspace;  ///< loads "startup.cst" without a word; whether it did
    std::function<void()> checkForUpdate;
};

/// A key or a click: an opening that is under way goes straight to its end.
void CutOpeningShort(RunState& run);

/// The opening sequence. It lasts about two seconds and serves events meanwhile; `CutOpeningShort` ends its pictures.
class Opening {
  public:
    Opening(Application& app, const ComputerClock& clock, RunLoop& loop, OpeningHooks hooks)
        : app_(app), clock_(clock), loop_(loop), hooks_(std::move(hooks)) {}

    /// Hangs the opening on `Timer1`, and its waits on `Timer4`.
    void Connect();

  private:
    void Run();
    void ZoomThrough();
    bool Show(double zoom);
    void ShowLastSplash();
    void ComeToRest(int fineInterval);
    bool Ended() const { return app_.Run.OpeningCut || app_.Run.Closing; }

    Application& app_;
    const ComputerClock& clock_;
    RunLoop& loop_;
    OpeningHooks hooks_;
};

}  // namespace glintara
