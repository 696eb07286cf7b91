#include "core/opening.h"

#include <cstddef>
#include <string>
#include <vector>

#include "core/shut_down.h"
#include "core/views.h"
#include "engine/astro/constants.h"
#include "scene/orientation.h"

namespace glintara {

namespace {

constexpr int kWaitMs = 1;

/// The splash stands this long with its last line.
constexpr int kLastSplashMs = 500;

// The Earth comes near from afar, then goes back to where it can be seen as a whole.
constexpr double kFirstZoom = 1;
constexpr double kNearestZoom = 64;
constexpr double kZoomStepIn = 10;
constexpr double kFirstZoomOut = 63;
constexpr double kLastZoomOut = 32;
constexpr double kZoomStepOut = -6;

/// Pictures from one step of the zoom to the next, so that it glides.
constexpr int kPicturesPerStep = 6;

/// Seconds for all steps. A computer that is slower leaves pictures between the steps out.
constexpr double kPatience = 1.4;

std::vector<double> ZoomSteps() {
    std::vector<double> steps;
    for (double zoom = kFirstZoom; zoom <= kNearestZoom; zoom += kZoomStepIn) steps.push_back(zoom);
    for (double zoom = kFirstZoomOut; zoom >= kLastZoomOut; zoom += kZoomStepOut) steps.push_back(zoom);
    return steps;
}

/// Without a place nothing that the program tells is right for the user, and no start knows it by itself.
void TellFirstSteps(MainControls& main) {
    main.LCommandOutput.Caption =
        std::string("Set your place: Settings, Local Settings. A start-up workspace (File) keeps it.");
}

}  // namespace

void CutOpeningShort(RunState& run) {
    if (run.Opening) run.OpeningCut = true;
}

void Opening::Connect() {
    app_.Main.Timer1.SetTickHandler([this] { Run(); });
    app_.Main.Timer4.SetTickHandler([this] { app_.Main.Timer4.Stop(); });
}

void Opening::Run() {
    app_.Main.Timer1.Stop();
    const LongWork work(app_);
    app_.Run.Opening = true;
    app_.Run.OpeningCut = false;
    app_.Run.SplashShown = Splash::Title;
    const int fineInterval = app_.Main.Timer3.Interval;
    ApplyCamera(app_.Data.View, kStartCamera);
    ZoomThrough();
    if (!app_.Run.Closing) ComeToRest(fineInterval);
    app_.Run.SplashShown = Splash::None;
    app_.Run.Opening = false;
}

void Opening::ZoomThrough() {
    const std::vector<double> steps = ZoomSteps();
    const double start = DateToJD(clock_.ReadUtc());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (!Show(steps[i])) return;
        const double next = i + 1 < steps.size() ? steps[i + 1] : kStartCamera.ZoomFactor;
        for (int k = 1; k < kPicturesPerStep; ++k) {
            const double done = static_cast<double>(k) / kPicturesPerStep;
            const double due = kPatience * (static_cast<double>(i) + done) / static_cast<double>(steps.size());
            const double passed = (DateToJD(clock_.ReadUtc()) - start) * kSecondsPerDay;
            if (passed > due) continue;
            if (!Show(steps[i] + done * (next - steps[i]))) return;
        }
    }
}

bool Opening::Show(double zoom) {
    MainControls& main = app_.Main;
    app_.Data.View.ZoomFactor = zoom;
    const std::int64_t before = loop_.PicturesMade();
    app_.Windows.UpdateGraphicsLevel2();
    main.Timer4.Restart(kWaitMs);
    while (!Ended() && (main.Timer4.Enabled || loop_.PicturesMade() == before)) app_.EventQueue.WaitForEvents();
    return !Ended();
}

void Opening::ShowLastSplash() {
    Timer& wait = app_.Main.Timer4;
    app_.Run.SplashShown = Splash::Final;
    loop_.MakePicture();
    wait.Restart(kLastSplashMs);
    while (!Ended() && wait.Enabled) app_.EventQueue.WaitForEvents();
    wait.Stop();
}

void Opening::ComeToRest(int fineInterval) {
    MainControls& main = app_.Main;
    RunState& run = app_.Run;
    app_.EventQueue.ServeEvents();
    if (run.Closing) return;
    main.Timer4.Stop();
    ApplyCamera(app_.Data.View, kStartCamera);
    ShowLastSplash();
    if (run.Closing) return;
    main.Timer2.Stop();
    main.Timer3.Stop();
    main.Timer3.Interval = fineInterval;  // the near pictures have set it to theirs
    run.LastTickSecond = kNoTickSecond;
    main.Timer5.Enabled = true;
    CaptureView(app_, run.StartView);

    const bool loaded = hooks_.loadStartUpWorkspace && hooks_.loadStartUpWorkspace();
    if (!loaded && app_.Data.UsageStats.StartCount == 1) TellFirstSteps(app_.Main);
    if (hooks_.checkForUpdate) hooks_.checkForUpdate();
    run.AutoTurn = 0;
    if (loaded)
        run.AutoTurn = 1;
    else
        loop_.GlobeRotation().Start(Turning::Lasting);
    app_.Windows.UpdateGraphicsLevel2();
}

}  // namespace glintara
