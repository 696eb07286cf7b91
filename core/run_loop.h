#pragma once

// The timers of the main window, and how a change anywhere becomes a new picture.
//
// No handler draws. It changes the state and asks for a picture by `UpdateGraphicsLevel2`, which arms `Timer2`; so any
// number of requests within 10 ms end in one picture. One thread runs everything. Whoever serves events must not
// assume that the state is still what it was.

#include <cstdint>
#include <functional>
#include <utility>

#include "core/info_box.h"
#include "core/simulated_time.h"
#include "core/turning.h"
#include "state/application.h"

namespace glintara {

/// From this zoom on the fine picture comes soon.
inline constexpr double kNearZoom = 13;

/// What the timers ask of the rooms that draw. What is empty is not there.
struct PictureHooks {
    /// Makes one picture of the state as it stands, fine when `FinePass` is set. It need not look at `FrameBusy`.
    std::function<void()> makePicture;
    std::function<void()> showPlottingNotice;  ///< writes that a fine picture is on its way into the picture on show
    std::function<void()> drawFineStars;       ///< shows the stars at full detail
    std::function<void()> findObject;          ///< the finder has looked what the mouse rests on
    std::function<void()> raiseProgress;       ///< brings the window "Progress", which is open, to the front
    std::function<void()> updateSatPosition;   ///< another program that wants to know of each picture
};

/// Arms `Timer2` for a picture in 10 ms. One that is armed already is left alone.
void UpdateGraphicsLevel2(MainControls& main);

/// Asks for one fine picture now (`CRefreshDraw`, `MnuFinePlot`).
void RequestFinePicture(MainControls& main);

/// The handlers of the timers, all but that of `Timer1` and `Timer4`, which belong to the opening.
class RunLoop {
  public:
    RunLoop(Application& app, SimulatedTime& time, PictureHooks hooks)
        : app_(app), time_(time), turning_(app), infoBox_(app), hooks_(std::move(hooks)) {}

    /// Hangs the handlers on the timers and on the controls that ask for a fine picture.
    void Connect();

    /// Makes a picture, unless one is being made: false then.
    bool MakePicture();

    /// Pictures made so far.
    std::int64_t PicturesMade() const { return picturesMade_; }

    /// What happens each second: the clock moves on, and while it runs a picture is asked for whenever a second of the
    /// minute is a multiple of `RealTimeStep`.
    void ClockTick();

    GlobeTurning& GlobeRotation() { return turning_; }

    SimulatedTime& Time() { return time_; }

  private:
    void ShowElementAgeOfInstant();
    void CoarsePicture();
    void FinePicture();
    void FastRefresh();
    void ShowFrameRate();
    void RequestPictureOfSecond();
    bool SkippedMultiple(int second, int step) const;

    Application& app_;
    SimulatedTime& time_;
    GlobeTurning turning_;
    InfoBoxWatch infoBox_;
    PictureHooks hooks_;
    std::int64_t picturesMade_ = 0;
    double ageShownAt_ = 0;     // the instant for which the age of the elements was worked out last
    int lastSecondOfDay_ = -1;  // at the last tick; -1 for none
};

}  // namespace glintara
