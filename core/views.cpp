#include "core/views.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>

#include "core/option_text.h"
#include "core/options.h"
#include "core/satellite_panel.h"
#include "core/value_text.h"
#include "engine/astro/angle_text.h"
#include "engine/astro/number_text.h"
#include "scene/orientation.h"
#include "scene/star_list.h"
#include "scene/sundial.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

constexpr int kViews = static_cast<int>(kViewCount);

/// The slide show goes through these; 9 stands for the chart of the Sun.
constexpr int kLastOfShow = 8;

/// The last view with a key of its own.
constexpr int kLastKey = 9;

bool IsView(int n) { return n >= 1 && n <= kViews; }

SavedView& Slot(Application& app, int n) { return app.Data.SavedViews[static_cast<std::size_t>(n)]; }

/// The whole number at the start of `text`, within the range of its type.
template <class Whole>
Whole WholeNumber(const std::string& text) {
    const double least = std::numeric_limits<Whole>::min();
    const double most = std::numeric_limits<Whole>::max();
    return static_cast<Whole>(std::clamp(std::nearbyint(LeadingNumber(text)), least, most));
}

void WriteTimeTexts(const CommonData& data, SavedView& view) {
    const TimeOffset& offset = data.TimeOffset;
    const std::array<double, kTimeTextCount> numbers = {
        static_cast<double>(data.SimYear),        static_cast<double>(data.SimMonth),
        static_cast<double>(data.SimDay),         static_cast<double>(data.SimHour),
        static_cast<double>(data.SimMinute),      data.SimSecond,
        static_cast<double>(data.BaseYear),       static_cast<double>(data.BaseMonth),
        static_cast<double>(data.BaseDay),        static_cast<double>(data.BaseHour),
        static_cast<double>(data.BaseMinute),     data.BaseSecond,
        static_cast<double>(offset.MonthOffset),  static_cast<double>(offset.DayOffset),
        static_cast<double>(offset.MinuteOffset), static_cast<double>(offset.HourOffset),
        static_cast<double>(offset.SecondOffset), static_cast<double>(offset.YearOffset)};
    std::ranges::transform(numbers, view.TimeText.begin(), ValueToText);
}

void ReadTimeTexts(CommonData& data, const SavedView& view) {
    auto text = view.TimeText.begin();
    const auto read = [&text](auto& number) {
        number = WholeNumber<std::remove_reference_t<decltype(number)>>(*text++);
    };
    const auto readSecond = [&text](double& second) { second = LeadingNumber(*text++); };
    read(data.SimYear);
    read(data.SimMonth);
    read(data.SimDay);
    read(data.SimHour);
    read(data.SimMinute);
    readSecond(data.SimSecond);
    data.SimTime = DateToJD(data.SimFields());
    read(data.BaseYear);
    read(data.BaseMonth);
    read(data.BaseDay);
    read(data.BaseHour);
    read(data.BaseMinute);
    readSecond(data.BaseSecond);
    TimeOffset& offset = data.TimeOffset;
    read(offset.MonthOffset);
    read(offset.DayOffset);
    read(offset.MinuteOffset);
    read(offset.HourOffset);
    read(offset.SecondOffset);
    read(offset.YearOffset);
}

/// The key that stands for view `n`; the tenth has none.
std::string KeyOfView(int n, const char* held) {
    if (n > kLastKey) return "";
    return " (" + std::string(held) + std::to_string(n) + ")";
}

/// What a used slot shows, in a few words.
std::string Contents(const SavedView& view) {
    const auto number = [&view](std::size_t i) { return LeadingNumber(view.TimeText[i]); };
    return DateText(number(0), number(1), number(2)) + " " + TimeText(number(3), number(4), std::floor(number(5))) +
           " UTC";
}

/// The places of the stars may be those of a date up to two months away. When a view is kept and when it comes back they
/// are carried to its own instant, so that both pictures are one.
void CarryStarsAnew(Application& app) { app.Data.Stars.LastPrecession = 0; }

}  // namespace

void CaptureView(const Application& app, SavedView& view) {
    const ViewState& now = app.Data.View;
    view.Used = true;
    view.Options = OptionsToString(app.Main);
    view.ViewLat = now.ViewLat;
    view.ViewLon = now.ViewLon;
    view.ViewRoll = now.ViewRoll;
    view.ZoomFactor = now.ZoomFactor;
    view.PanX = now.PanX;
    view.PanY = now.PanY;
    view.MaxStarMag = now.MaxStarMag;
    view.LockedLat = now.LockedLat;
    view.LockedAngle = now.LockedAngle;
    view.LockedRoll = now.LockedRoll;
    view.SkyLocked = now.SkyLocked;
    view.OrbitTurns = static_cast<std::int16_t>(now.OrbitTurns);
    view.StarSizeScale = now.StarSizeScale;
    view.SkyScale = now.SkyScale;
    WriteTimeTexts(app.Data, view);
}

void ApplyView(Application& app, const SavedView& view) {
    StringToOptions(app, view.Options);
    SettleOptions(app, view.Options);
    ViewState& now = app.Data.View;
    now.ViewLat = view.ViewLat;
    now.ViewLon = view.ViewLon;
    now.ViewRoll = view.ViewRoll;
    now.ZoomFactor = view.ZoomFactor;
    now.PanX = view.PanX;
    now.PanY = view.PanY;
    now.MaxStarMag = view.MaxStarMag;
    now.LockedLat = view.LockedLat;
    now.LockedAngle = view.LockedAngle;
    now.LockedRoll = view.LockedRoll;
    now.SkyLocked = view.SkyLocked;
    now.OrbitTurns = std::clamp<double>(view.OrbitTurns, kLeastOrbitTurns, kMostOrbitTurns);
    now.StarSizeScale = StarSize(view.StarSizeScale);
    now.SkyScale = view.SkyScale;
    HoldView(now);
    if (!app.Main.CStarsOnGlobe.Value) now.SkyScaleSaved = now.SkyScale;
    RefreshViewCache(now);
    RebuildStarList(app.Data.Stars, now.MaxStarMag);
    ShowStarLimits(app);
    ShowOrbitLabel(app);
    app.Windows.UpdateGraphicsLevel2();
}

void SaveUserView(Application& app, int n) {
    if (!IsView(n)) return;
    CaptureView(app, Slot(app, n));
    CarryStarsAnew(app);
    SetPendingView(app, n);
    ShowSavedViews(app);
    app.Windows.UpdateGraphicsLevel2();
    app.Main.LCommandOutput.Caption = "Saved View " + std::to_string(n);
}

void RestoreUserView(Application& app, int n) {
    if (!IsView(n) || !Slot(app, n).Used) return;
    const SavedView& view = Slot(app, n);
    ApplyView(app, view);
    ReadTimeTexts(app.Data, view);
    SettleMilliOffset(app);
    // The satellites will stand elsewhere: the camera is not to turn to where the working one stood before.
    app.Run.Working.Forget();
    CarryStarsAnew(app);
    app.Main.LCommandOutput.Caption = "Restored View " + std::to_string(n);
}

void EnterView(Application& app, SimulatedTime& time, int n) {
    if (!IsView(n)) return;
    if (n == kSundialView) app.Main.TimerHRot.Stop();  // nothing turns there
    if (Slot(app, n).Used) {
        app.Main.TimerHRot.Stop();
        RestoreUserView(app, n);
        time.TimeSyncronize();
    } else {
        app.Main.LCommandOutput.Caption = "Enter View " + std::to_string(n);
    }
    SetPendingView(app, n);
    app.Windows.UpdateGraphicsLevel2();
}

void ClearViews(Application& app) {
    for (SavedView& view : app.Data.SavedViews) view = {};
    ShowSavedViews(app);
}

void SetPendingView(Application& app, int n) {
    app.Run.PendingView = static_cast<std::int16_t>(n);
    for (int i = 1; i <= kViews; ++i) app.Main.MnuViewX[static_cast<std::size_t>(i)].Checked = i == n;
}

void ShowSavedViews(Application& app) {
    MainControls& main = app.Main;
    for (int n = 1; n <= kViews; ++n) {
        const SavedView& view = Slot(app, n);
        const std::string about = "View " + std::to_string(n) + (view.Used ? ": " + Contents(view) : " is empty");
        const auto i = static_cast<std::size_t>(n);
        main.CEnterView[i].Lit = view.Used;
        main.CEnterView[i].ToolTip = about + KeyOfView(n, "");
        main.CSaveView[i].ToolTip =
            (view.Used ? "Replace view " : "Keep what is shown as view ") + std::to_string(n) + KeyOfView(n, "Shift+");
        main.MnuViewX[i].ToolTip = about;
    }
}

void ConnectSavedViews(Application& app, SimulatedTime& time) {
    for (int n = 1; n <= kViews; ++n) {
        const auto i = static_cast<std::size_t>(n);
        const auto enter = [&app, &time, n] { EnterView(app, time, n); };
        app.Main.CEnterView[i].SetClickHandler(enter);
        app.Main.MnuViewX[i].SetClickHandler(enter);
        app.Main.CSaveView[i].SetClickHandler([&app, n] { SaveUserView(app, n); });
    }
    ShowSavedViews(app);
}

void ShowNextView(Application& app, SimulatedTime& time) {
    const int last = app.Run.PendingView > kLastOfShow ? 0 : app.Run.PendingView;
    for (int step = 1; step <= kLastOfShow; ++step) {
        const int n = (last + step - 1) % kLastOfShow + 1;
        if (!Slot(app, n).Used) continue;
        EnterView(app, time, n);
        return;
    }
}

void ResetView(Application& app, SimulatedTime& time) {
    app.Main.TimerHRot.Stop();
    SetPendingView(app, 0);
    if (app.Run.StartView.Used)
        ApplyView(app, app.Run.StartView);
    else
        ApplyCamera(app.Data.View, kStartCamera);
    TakeSkyLock(app.Data);
    app.Data.TimeOffset = {};
    time.TimeSyncronize();
    app.Main.LCommandOutput.Caption = app.Main.MnuQResetView.Caption.Get();
    app.Windows.UpdateGraphicsLevel2();
}

}  // namespace glintara
