// The satellites of a picture of 1920 by 1080 pixels, without the painting: what the program itself adds to the
// painter's work. Counters tell how many operations the painter then gets.

#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "core/state/application.h"
#include "orbit/astro/calendar.h"
#include "orbit/element_sets.h"
#include "orbit/location.h"
#include "scene/satellites.h"

namespace glintara {
namespace {

constexpr double kStart = 2458138.5;            // 20 January 2018, 0 h UTC
constexpr double kFrame = 60 / kSecondsPerDay;  // from one picture to the next
constexpr int kFrames = 1440;                   // pictures before the day begins again

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

/// Counts what it is asked for.
class CountingSurface : public DrawSurface {
  public:
    CountingSurface() {
        ScaleWidth = 1920 * TwipsPerPixelX;
        ScaleHeight = 1080 * TwipsPerPixelY;
    }
    void Cls() override {}
    void Line(double, double, double, double) override { ++lines; }
    void Circle(double, double, double) override { ++circles; }
    void PSet(double, double) override {}
    void Print(std::string_view) override { ++texts; }
    double TextWidth(std::string_view text) const override { return 105 * static_cast<double>(text.size()); }
    double TextHeight(std::string_view) const override { return 210; }
    void Polygon(std::span<const PixelVertex>) override {}
    void ExtFloodFill(std::int32_t, std::int32_t, Color, FloodFillMode) override {}
    void AlphaBlend(const PixelRectangle&, const DrawSurface&, const PixelRectangle&, std::uint8_t) override {}
    void PolyPolygon(std::span<const double>, std::span<const std::int32_t>) override {}
    void Polyline(std::span<const double>) override { ++polylines; }

    double lines = 0;
    double circles = 0;
    double texts = 0;
    double polylines = 0;
};

void SetInstant(CommonData& data, double jd) {
    const CalendarFields fields = JDToDate(jd);
    data.SimTime = jd;
    data.SimYear = static_cast<std::int32_t>(fields.year);
    data.SimMonth = static_cast<std::int16_t>(fields.month);
    data.SimDay = static_cast<std::int16_t>(fields.day);
    data.SimHour = static_cast<std::int16_t>(fields.hour);
    data.SimMinute = static_cast<std::int16_t>(fields.minute);
    data.SimSecond = fields.second;
}

// Marks and names of `count` satellites; with `all` also an orbit and the live flares.
void SatellitesOfAPicture(benchmark::State& state, int count, bool all) {
    SilentBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app(boxes, events, windows);
    CommonData& data = app.Data;
    SetLocationDegrees(data, 45.07, 7.69);
    if (!LoadTLEFile(app, std::string(GLINTARA_SOURCE_DIR) + "/data/examples/all.tle")) {
        throw std::runtime_error("all.tle");
    }
    CApplyTLEOrbitFnct(app, TLEMode::Add, false, false);
    const int loaded = data.SatCount;
    for (int next = 1; data.SatCount < count; next = next % loaded + 1) {
        data.Satellite(data.SatCount + 1) = data.Satellite(next);
        // Copies are for their marks; flares come from the originals.
        data.Satellite(data.SatCount + 1).Surface.ModelFlags[0] = '0';
        ++data.SatCount;
    }
    app.Main.CSatOnly.Value = !all;
    app.Main.CIridiumFlares.Value = all;
    data.SunDir = {0, 1, 0};
    data.View.ZoomFactor = 29;
    RefreshViewCache(data.View);

    CountingSurface surface;
    PolygonBuffer polygon;
    const SceneContext scene{app, surface, polygon};
    SatelliteWorkspace work;
    int frame = 0;
    for (auto _ : state) {
        SetInstant(data, kStart + frame * kFrame);
        frame = (frame + 1) % kFrames;
        DrawSatellites(scene, work);
    }
    state.SetItemsProcessed(state.iterations() * data.SatCount);
    constexpr auto kPerFrame = benchmark::Counter::kAvgIterations;
    state.counters["lines"] = benchmark::Counter(surface.lines, kPerFrame);
    state.counters["circles"] = benchmark::Counter(surface.circles, kPerFrame);
    state.counters["texts"] = benchmark::Counter(surface.texts, kPerFrame);
    state.counters["polylines"] = benchmark::Counter(surface.polylines, kPerFrame);
}
BENCHMARK_CAPTURE(SatellitesOfAPicture, marks_of_examples, 0, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SatellitesOfAPicture, marks_of_a_full_list, kSatCapacity, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SatellitesOfAPicture, all_of_a_full_list, kSatCapacity, true)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace glintara
