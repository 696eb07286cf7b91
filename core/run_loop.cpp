#include "core/run_loop.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/element_labels.h"
#include "core/views.h"
#include "flare/pending_track.h"
#include "scene/mouse_text.h"
#include "scene/object_finder.h"
#include "scene/sky_pointer.h"
#include "scene/sky_scale.h"

namespace glintara {

namespace {

constexpr int kCoarseMs = 10;
constexpr int kFineAskedMs = 10;

/// A shorter interval of `Timer3` says that somebody has asked for a fine picture.
constexpr int kFineAskedBelowMs = 50;

constexpr int kNearFineMs = 2500;
constexpr int kFarFineMs = 14500;

/// Longest time between two pictures of the running clock, milliseconds: a day.
constexpr double kMostStepMs = 86400e3;

/// The age of the elements is told in days; it is looked at anew when the instant has moved by this much of one.
constexpr double kAgeStep = 0.04;

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsInDay = 86400;

/// Sets a flag and clears it at the end, come what may.
class Raised {
  public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = false; }

  private:
    bool& flag_;
};

/// The real-time step in milliseconds. It never falls into the range that asks for a fine picture.
int StepMs(const CommonData& data) {
    const double ms = data.RealTimeStep * 1000;
    if (!(ms > kFineAskedBelowMs)) return kFineAskedBelowMs;
    return static_cast<int>(std::min(ms, kMostStepMs));
}

/// The whole seconds of the real-time step, 1 at least.
int StepSeconds(const CommonData& data) {
    if (!(data.RealTimeStep > 1)) return 1;
    return static_cast<int>(std::min(data.RealTimeStep, static_cast<double>(kSecondsInDay)));
}

}  // namespace

void UpdateGraphicsLevel2(MainControls& main) {
    if (!main.Timer2.Enabled) main.Timer2.Restart(kCoarseMs);
}

void RequestFinePicture(MainControls& main) { main.Timer3.Restart(kFineAskedMs); }

void RunLoop::Connect() {
    MainControls& main = app_.Main;
    main.Timer2.SetTickHandler([this] { CoarsePicture(); });
    main.Timer3.SetTickHandler([this] { FinePicture(); });
    main.Timer5.SetTickHandler([this] { ClockTick(); });
    main.Timer7.SetTickHandler([this] { ShowFrameRate(); });
    main.TimerFastRefresh.SetTickHandler([this] { FastRefresh(); });
    main.TimerHRot.SetTickHandler([this] { turning_.Tick(); });
    main.TimerResize.SetTickHandler([this] {
        app_.Main.TimerResize.Stop();
        if (app_.Main.CMaximizeSky.Value) FitSky(app_);
        app_.Windows.UpdateGraphicsLevel2();
    });
    main.TimerSkyFine.SetTickHandler([this] {
        app_.Main.TimerSkyFine.Stop();
        if (!app_.Main.CDrawSky.Value || !hooks_.drawFineStars || app_.Run.FrameBusy) return;
        const Raised busy(app_.Run.FrameBusy);
        hooks_.drawFineStars();
    });
    main.TimerViewShow.SetTickHandler([this] {
        if (app_.Run.LongLoops == 0) ShowNextView(app_, time_);
    });
    main.Timer_InfoHider.SetTickHandler([this] {
        app_.Main.Timer_InfoHider.Stop();
        app_.Main.LFInfo.Visible = false;
    });
    main.Timer_ObjectFinder.SetTickHandler([this] {
        app_.Main.Timer_ObjectFinder.Stop();
        FindObject(app_);
        infoBox_.ObjectSought();
        if (hooks_.findObject) hooks_.findObject();
    });
    main.CRefreshDraw.SetClickHandler([&main] { RequestFinePicture(main); });
    main.MnuFinePlot.SetClickHandler([&main] { RequestFinePicture(main); });
}

bool RunLoop::MakePicture() {
    if (app_.Run.FrameBusy) return false;
    {
        const Raised busy(app_.Run.FrameBusy);
        ShowElementAgeOfInstant();
        if (hooks_.makePicture) hooks_.makePicture();
        ShowMouseText(app_);
        RefreshSkyPointer(app_);
        if (app_.Progress.Visible && hooks_.raiseProgress) hooks_.raiseProgress();
        infoBox_.PictureMade();
        ++picturesMade_;
        app_.Windows.RefreshSatPosition();
        if (hooks_.updateSatPosition) hooks_.updateSatPosition();
    }
    FinishPendingTrack(app_);
    return true;
}

void RunLoop::ShowElementAgeOfInstant() {
    const double now = app_.Data.SimTime;
    if (std::abs(now - ageShownAt_) < kAgeStep) return;
    ageShownAt_ = now;
    ShowElementAge(app_);
}

void RunLoop::CoarsePicture() {
    MainControls& main = app_.Main;
    if (app_.Run.FrameBusy) {
        main.Timer2.Interval = kCoarseMs;  // stays armed: the picture follows the one under way
        return;
    }
    main.Timer2.Stop();
    main.Timer3.Stop();
    if (app_.Data.View.ZoomFactor >= kNearZoom)
        main.Timer3.Interval = kNearFineMs;
    else if (main.CRealTime.Value)
        main.Timer3.Interval = kFarFineMs;
    main.Timer3.Enabled = true;
    MakePicture();
    ++app_.Run.FrameCounter;
}

void RunLoop::FinePicture() {
    MainControls& main = app_.Main;
    if (app_.Run.FrameBusy) return;  // stays armed, like the coarse picture
    main.Timer3.Stop();
    const bool asked = main.Timer3.Interval < kFineAskedBelowMs;
    if ((main.CAutoRefine.Value || asked) && !app_.Run.FinePass) {
        if (hooks_.showPlottingNotice) hooks_.showPlottingNotice();
        app_.EventQueue.ServeEvents();
        const Raised fine(app_.Run.FinePass);
        MakePicture();
    }
    if (main.Timer3.Interval < kFineAskedBelowMs) main.Timer3.Interval = StepMs(app_.Data);
    if (main.CRealTime.Value) main.Timer3.Restart(StepMs(app_.Data));
}

void RunLoop::ClockTick() {
    if (app_.Run.LongLoops == 0) time_.TimeSyncronize();
    const CommonData& data = app_.Data;
    const int second = static_cast<int>(data.SimSecond);
    if (app_.Main.CRealTime.Value && !app_.Main.CAutoRefine.Value) {
        const int step = StepSeconds(data);
        if (second % step == 0) {
            if (app_.Run.LastTickSecond != second) RequestPictureOfSecond();
            app_.Run.LastTickSecond = static_cast<std::int16_t>(second);
        } else {
            if (SkippedMultiple(second, step)) RequestPictureOfSecond();
            app_.Run.LastTickSecond = kNoTickSecond;
        }
    }
    lastSecondOfDay_ = (data.SimHour * kSecondsPerMinute + data.SimMinute) * kSecondsPerMinute + second;
}

void RunLoop::RequestPictureOfSecond() { app_.Main.Timer2.Restart(kCoarseMs); }

bool RunLoop::SkippedMultiple(int second, int step) const {
    if (lastSecondOfDay_ < 0) return false;
    const CommonData& data = app_.Data;
    const int now = (data.SimHour * kSecondsPerMinute + data.SimMinute) * kSecondsPerMinute + second;
    const int passed = (now - lastSecondOfDay_ + kSecondsInDay) % kSecondsInDay;
    if (passed > kSecondsPerMinute) return false;  // the instant has been moved, which asks for a picture of its own
    for (int before = 1; before < passed; ++before)
        if ((second - before + kSecondsPerMinute) % kSecondsPerMinute % step == 0) return true;
    return false;
}

void RunLoop::FastRefresh() {
    if (app_.Run.LongLoops > 0) return;
    if (!app_.Main.CRealTime.Value) app_.Main.TimerFastRefresh.Stop();
    time_.TimeSyncronize();
    app_.Windows.UpdateGraphicsLevel2();
}

void RunLoop::ShowFrameRate() {
    app_.Main.LFPS.Caption = "FPS= " + std::to_string(app_.Run.FrameCounter);
    app_.Run.FrameCounter = 0;
}

}  // namespace glintara
