// Whole pictures of 1920 by 1080 pixels, painted by Qt as in the window: what a redraw costs. At zoom 55 it should be
// less than 12 ms with 3000 marks and a hundred names (as many as find room stand here, up to two hundred), 14 ms with
// all, and 30 ms with all in the fine picture.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFontDatabase>
#include <QImage>
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/example_list.h"
#include "desktop/scene/painter_surface.h"
#include "engine/astro/sun_moon.h"
#include "scene/map_files.h"
#include "scene/stages.h"
#include "scene/star_list.h"

namespace glintara::desktop {
namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kPicturesBefore = 30;

/// What of the picture is drawn.
struct Contents {
    int satellites = 0;  ///< marks in the list; 0 leaves the stage out
    bool names = false;
    bool full = false;  ///< also the working satellite's orbit, grid, night and live flares
    bool fine = false;
    bool earth = true;
    int ratio = 1;  ///< device pixels in a pixel of the layout
};

void Picture(benchmark::State& state, Contents contents) {
    ExampleList list(contents.satellites);
    Application& app = list.app;
    CommonData& data = app.Data;
    MainControls& main = app.Main;
    if (!LoadMapFiles(std::string(GLINTARA_SOURCE_DIR) + "/data", data.Map, data.Stars, data.Cities).empty())
        throw std::runtime_error("map files");
    main.CSGP4.Value = true;
    main.CSolidGlobe.Value = true;
    main.CHideCountries.Value = !contents.earth;
    main.CSatNames.Value = contents.names;
    main.CSatOnly.Value = false;
    main.CPlotOrbit.Value = contents.full;
    main.CGlobeGrid.Value = contents.full;
    main.CSunLight.Value = contents.full;
    main.CIridiumFlares.Value = contents.full;
    main.CDrawSun.Value = contents.full;
    for (int s = 1; s < data.SatCount; ++s) data.Satellite(s).OptionFlags[0] = '1';
    app.Run.FinePass = contents.fine;
    data.SunDir = {0, 1, 0};
    data.View.ZoomFactor = static_cast<double>(state.range(0));
    data.View.ViewLat = 0.7;

    QImage image(kWidth * contents.ratio, kHeight * contents.ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(contents.ratio);
    PainterSurface surface;
    FrameMemory memory;
    SatelliteWorkspace work;
    FrameStages stages = StagesOfProgram(work);
    if (contents.satellites == 0) stages.satellites = nullptr;
    int frame = 0;
    const auto paint = [&] {
        list.SetInstant(kBenchStart + frame * kBenchFrame);
        data.View.ViewLon = kTwoPi * frame / kBenchFrames;
        frame = (frame + 1) % kBenchFrames;
        surface.Begin(image);
        GlobeFrame(app, surface, memory, stages);
        surface.End();
    };
    // A program that runs has painted before: most names have been laid out.
    for (int i = 0; i < kPicturesBefore; ++i) paint();
    for (auto _ : state) paint();
}

/// What of the sky is drawn.
struct SkyContents {
    double limit = 11;   ///< faintest star
    bool chart = false;  ///< unrolled and mirrored, else the sphere with both of its halves
    bool names = false;
};

/// The sky without the Earth, fitted into the picture: all stars to a magnitude, and the figures.
void SkyPicture(benchmark::State& state, SkyContents contents) {
    ExampleList list(0);
    Application& app = list.app;
    CommonData& data = app.Data;
    MainControls& main = app.Main;
    if (!LoadMapFiles(std::string(GLINTARA_SOURCE_DIR) + "/data", data.Map, data.Stars, data.Cities).empty())
        throw std::runtime_error("map files");
    data.SatCount = 0;
    main.CDrawSky.Value = true;
    main.CSkyOnly.Value = true;
    main.CDrawConstallations.Value = true;
    main.CStarNames.Value = contents.names;
    main.CDrawFrontStars.Value = true;
    main.CDrawBackStars.Value = !contents.chart;
    main.CFlatSky.Value = main.CReverseSky.Value = contents.chart;
    data.View.MaxStarMag = contents.limit;
    RebuildStarList(data.Stars, contents.limit);
    data.View.ZoomFactor = 60;
    data.View.SkyScale = kFullZoom / data.View.ZoomFactor;
    data.View.ViewLat = 0.7;

    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    PainterSurface surface;
    FrameMemory memory;
    SatelliteWorkspace work;
    const FrameStages stages = StagesOfProgram(work);
    int frame = 0;
    const auto paint = [&] {
        list.SetInstant(kBenchStart + frame * kBenchFrame);
        frame = (frame + 1) % kBenchFrames;
        surface.Begin(image);
        GlobeFrame(app, surface, memory, stages);
        surface.End();
    };
    for (int i = 0; i < kPicturesBefore; ++i) paint();
    for (auto _ : state) paint();
    state.counters["stars"] = data.Stars.VisibleStarCount();
}

double Least(const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); }

// The argument is the zoom: 29 shows the whole globe, 55 fills the height. On a busy machine the least of several runs
// tells the most.
#define PICTURE_AT(zoom1, zoom2, name, ...)                 \
    BENCHMARK_CAPTURE(Picture, name, Contents{__VA_ARGS__}) \
        ->Arg(zoom1)                                        \
        ->Arg(zoom2)                                        \
        ->Unit(benchmark::kMillisecond)                     \
        ->Repetitions(7)                                    \
        ->ReportAggregatesOnly()                            \
        ->ComputeStatistics("least", Least)

#define PICTURE(name, ...) PICTURE_AT(29, 55, name, __VA_ARGS__)

PICTURE(coarse_earth_alone, .satellites = 0);
PICTURE(coarse_3000_marks, .satellites = kSatCapacity);
PICTURE(coarse_3000_marks_and_names, .satellites = kSatCapacity, .names = true);
PICTURE(coarse_with_all, .satellites = kSatCapacity, .names = true, .full = true);
PICTURE(coarse_with_all_at_two_pixels_a_point, .satellites = kSatCapacity, .names = true, .full = true, .ratio = 2);
PICTURE(fine_with_all, .satellites = kSatCapacity, .names = true, .full = true, .fine = true);

// With the reduced borders, and from `kFineBordersZoom` on with the fine ones.
PICTURE_AT(119, 120, near_with_all, .satellites = kSatCapacity, .names = true, .full = true);

// At 1920 by 1080 pixels the sky to magnitude 6.5 should take less than 8 ms, all of it less than 30 ms.
#define SKY_PICTURE(name, ...)                                    \
    BENCHMARK_CAPTURE(SkyPicture, name, SkyContents{__VA_ARGS__}) \
        ->Unit(benchmark::kMillisecond)                           \
        ->Repetitions(7)                                          \
        ->ReportAggregatesOnly()                                  \
        ->ComputeStatistics("least", Least)

SKY_PICTURE(sphere_to_magnitude_6_5, .limit = 6.5);
SKY_PICTURE(chart_to_magnitude_6_5, .limit = 6.5, .chart = true, .names = true);
SKY_PICTURE(sphere_with_all_stars, .limit = 99);
SKY_PICTURE(chart_with_all_stars, .limit = 99, .chart = true, .names = true);

}  // namespace
}  // namespace glintara::desktop

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication qt(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
