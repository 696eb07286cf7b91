#include "core/time_buttons.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "core/satellite_panel.h"
#include "engine/astro/constants.h"

namespace glintara {

namespace {

constexpr std::int32_t kMilliStep = 100;

struct StepButton {
    Button MainControls::*button;
    std::int32_t TimeOffset::*offset;
    std::int32_t step;
};

constexpr StepButton kStepButtons[] = {
    {&MainControls::CYearOffsetInc, &TimeOffset::YearOffset, 1},
    {&MainControls::CYearOffsetDec, &TimeOffset::YearOffset, -1},
    {&MainControls::CMonthOffsetInc, &TimeOffset::MonthOffset, 1},
    {&MainControls::CMonthOffsetDec, &TimeOffset::MonthOffset, -1},
    {&MainControls::CDayOffsetInc, &TimeOffset::DayOffset, 1},
    {&MainControls::CDayOffsetDec, &TimeOffset::DayOffset, -1},
    {&MainControls::CHourOffsetInc, &TimeOffset::HourOffset, 1},
    {&MainControls::CHourOffsetDec, &TimeOffset::HourOffset, -1},
    {&MainControls::CMinuteOffsetInc, &TimeOffset::MinuteOffset, 1},
    {&MainControls::CMinuteOffsetDec, &TimeOffset::MinuteOffset, -1},
    {&MainControls::CSecondOffsetInc, &TimeOffset::SecondOffset, 1},
    {&MainControls::CSecondOffsetDec, &TimeOffset::SecondOffset, -1},
    {&MainControls::CMilliInc, &TimeOffset::MilliOffset, kMilliStep},
    {&MainControls::Command3, &TimeOffset::MilliOffset, -kMilliStep},
};

/// Sets `offset` to `sum` rounded; false, and nothing is done, when it has no room.
bool SetOffset(std::int32_t& offset, double sum) {
    const double whole = std::nearbyint(sum);
    if (!(whole >= std::numeric_limits<std::int32_t>::min() && whole <= std::numeric_limits<std::int32_t>::max()))
        return false;
    offset = static_cast<std::int32_t>(whole);
    return true;
}

void ShowNewInstant(Application& app, SimulatedTime& time) {
    time.TimeSyncronize();
    app.Windows.UpdateGraphicsLevel2();
}

/// Moves by `revolutions` of the working satellite.
void MoveByOrbits(Application& app, SimulatedTime& time, double revolutions) {
    CommonData& data = app.Data;
    if (data.SatCount == 0) return;
    const double meanMotion = data.Satellite(data.WorkingSat()).MeanMotion;
    if (!(meanMotion > 0)) return;
    const double period = kSecondsPerDay / meanMotion;
    if (!SetOffset(data.TimeOffset.SecondOffset, data.TimeOffset.SecondOffset + revolutions * period)) return;
    ShowOrbitLabel(app);
    ShowNewInstant(app, time);
}

}  // namespace

void ConnectTimeButtons(Application& app, SimulatedTime& time) {
    for (const StepButton& entry : kStepButtons) {
        (app.Main.*entry.button).SetClickHandler([&app, &time, entry] {
            std::int32_t& offset = app.Data.TimeOffset.*entry.offset;
            if (SetOffset(offset, static_cast<double>(offset) + entry.step)) ShowNewInstant(app, time);
        });
    }
    app.Main.CTOrbInc.SetClickHandler([&app, &time] { MoveByOrbits(app, time, 1); });
    app.Main.CTOrbDec.SetClickHandler([&app, &time] { MoveByOrbits(app, time, -1); });
    app.Main.CClearTimeOffset.SetClickHandler([&app, &time] {
        app.Data.TimeOffset = {};
        ShowNewInstant(app, time);
    });
}

}  // namespace glintara
