// The window of the satellite list with 979 and with 3000 satellites: loading the element sets, opening, filtering,
// selecting and switching. None of them should be a wait: each less than 300 ms with 3000.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <memory>
#include <string>

#include "bench/example_list.h"
#include "desktop/orbit/form_satellites.h"
#include "orbit/satellite_manager.h"
#include "orbit/satellite_table.h"

namespace glintara::desktop {
namespace {

constexpr int kAll = 979;

/// Tells the window, as the program does.
class ListTeller : public WindowSignals {
  public:
    void UpDateAll() override {
        if (app != nullptr) satellite_manager::UpDateAll(*app);
    }
    void ShowWorkingSatellite() override {
        if (app != nullptr) satellite_manager::ShowWorkingSatellite(*app);
    }

    Application* app = nullptr;
};

/// The example sets as text, with copies under new numbers up to `count`.
std::string ElementText(int count) {
    ExampleList list(count);
    std::string text;
    for (int i = 1; i <= count; ++i) {
        const SatRecord& satellite = list.app.Data.Satellite(i);
        const std::string number = i <= kAll ? satellite.SatNumber : std::to_string(60000 + i);
        text += satellite.Name + "\r\n" + std::string(satellite.Line1).replace(2, 5, number) + "\r\n" +
                std::string(satellite.Line2).replace(2, 5, number) + "\r\n";
    }
    return text;
}

/// The program's list with its window, which may be open.
struct OpenList {
    explicit OpenList(int count) {
        windows.app = &app;
        satellite_manager::Connect(app);
        EnterTLEText(app, ElementText(count));
    }

    void Load() { CApplyTLEOrbitFnct(app, TLEMode::Add, false, false); }

    void Show() {
        form.show();
        QApplication::processEvents();
    }

    SilentBoxes boxes;
    Events events;
    ListTeller windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
    FormSatellites form{app, nullptr};
};

void LoadSets(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto list = std::make_unique<OpenList>(static_cast<int>(state.range(0)));
        list->Show();
        state.ResumeTiming();
        list->Load();
        QApplication::processEvents();
        state.PauseTiming();
        list.reset();
        state.ResumeTiming();
    }
}

void OpenWindow(benchmark::State& state) {
    OpenList list(static_cast<int>(state.range(0)));
    list.Load();
    for (auto _ : state) {
        list.Show();
        state.PauseTiming();
        list.form.hide();
        state.ResumeTiming();
    }
}

/// Does `act` in an open window, pictures of it included.
template <class Act>
void InWindow(benchmark::State& state, Act act) {
    OpenList list(static_cast<int>(state.range(0)));
    list.Load();
    list.Show();
    for (auto _ : state) {
        act(list.app);
        list.form.repaint();
        QApplication::processEvents();
    }
}

void Filter(benchmark::State& state) {
    InWindow(
        state,
        [](Application& app) {
            app.Satellites.TWith.Text = std::string("a");
            app.Satellites.TWithout.Text = std::string("[-]");
            app.Satellites.CFindOr.Click();
            app.Satellites.CFindAnd.Click();
        });
}

/// Every other one: as many runs of lines as there can be.
void SelectEveryOther(benchmark::State& state) {
    InWindow(
        state,
        [](Application& app) {
            for (int i = 1; i <= app.Data.SatCount; ++i) app.Data.Satellite(i).Selected = i % 2 == 0;
            app.Satellites.CInvertSel.Click();
        });
}

void SwitchAll(benchmark::State& state) {
    InWindow(
        state,
        [](Application& app) {
            app.Satellites.CSelectAll.Click();
            app.Satellites.CDisable.Click();
            app.Satellites.CEnable.Click();
        });
}

void ChangeWorking(benchmark::State& state) {
    InWindow(
        state, [](Application& app) { ChangeWorkingSatellite(app, 1); });
}

#define WITH_BOTH_LISTS(name) BENCHMARK(name)->Arg(kAll)->Arg(kSatCapacity)->Unit(benchmark::kMillisecond)

WITH_BOTH_LISTS(LoadSets);
WITH_BOTH_LISTS(OpenWindow);
WITH_BOTH_LISTS(Filter);
WITH_BOTH_LISTS(SelectEveryOther);
WITH_BOTH_LISTS(SwitchAll);
WITH_BOTH_LISTS(ChangeWorking);

/// The sky of all satellites is counted while fields are typed.
void CountLitAndAbove(benchmark::State& state) {
    ExampleList list(static_cast<int>(state.range(0)));
    list.SetInstant(kBenchStart);
    list.app.Data.SunDir = {1, 0, 0};
    SelectionQuest quest;
    quest.lit = true;
    quest.leastElevation = 0;
    for (auto _ : state) benchmark::DoNotOptimize(CountMatching(list.app, quest, SelectionMode::Add, HasFlareModel));
}
WITH_BOTH_LISTS(CountLitAndAbove);

}  // namespace
}  // namespace glintara::desktop
