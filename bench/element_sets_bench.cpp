// Admission of a full list: 3000 element sets, added, and replaced by newer ones. Messages with a whole catalogue.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "flare/surface_models.h"
#include "orbit/element_sets.h"
#include "state/application.h"

namespace glintara {
namespace {

class SilentBoxes : public MessageBoxes {
  public:
    void Tell(std::string_view, MessageIcon) override {}
    bool AskYesNo(std::string_view) override { return false; }
};

// `count` sets with names; every second one is an Iridium, which gets surfaces.
std::string ThreeLineSets(int count, std::string_view epoch) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        std::string line1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
        std::string line2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
        const std::string number = std::to_string(10000 + i);
        line1.replace(2, number.size(), number);
        line1.replace(18, epoch.size(), epoch);
        line2.replace(2, number.size(), number);
        text += (i % 2 == 0 ? "IRIDIUM " : "COSMOS ") + number + "\r\n" + line1 + "\r\n" + line2 + "\r\n";
    }
    return text;
}

struct Bench {
    SilentBoxes boxes;
    Events events;
    WindowSignals windows;
    Application app{boxes, events, windows, ApplyDefaultModel};
};

void AdmitSets(benchmark::State& state) {
    Bench bench;
    const std::string text = ThreeLineSets(kSatCapacity, "08264.51782528");
    for (auto _ : state) {
        bench.app.Data.SatCount = 0;
        bench.app.Main.TTLE.Text = text;
        CApplyTLEOrbitFnct(bench.app, TLEMode::Add, false, false);
    }
    if (bench.app.Data.SatCount != kSatCapacity) state.SkipWithError("not all sets were admitted");
    state.SetItemsProcessed(state.iterations() * kSatCapacity);
}
BENCHMARK(AdmitSets)->Unit(benchmark::kMillisecond);

// One satellite short of a full list: a full one takes no updates.
void UpdateSets(benchmark::State& state) {
    Bench bench;
    const int count = kSatCapacity - 1;
    bench.app.Main.TTLE.Text = ThreeLineSets(count, "08264.51782528");
    CApplyTLEOrbitFnct(bench.app, TLEMode::Add, false, false);
    const std::string newer = ThreeLineSets(count, "08265.51782528");
    for (auto _ : state) {
        bench.app.Main.TTLE.Text = newer;
        CApplyTLEOrbitFnct(bench.app, TLEMode::AddAndUpdate, false, false);
    }
    if (bench.app.Data.SatCount != count) state.SkipWithError("sets were added that should have replaced");
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(UpdateSets)->Unit(benchmark::kMillisecond);

// All objects of a catalogue as messages, in the order of keywords that the catalogue has.
std::string TableOfRecords(int count) {
    std::string text =
        "OBJECT_NAME,OBJECT_ID,EPOCH,MEAN_MOTION,ECCENTRICITY,INCLINATION,RA_OF_ASC_NODE,ARG_OF_PERICENTER,MEAN_"
        "ANOMALY,"
        "EPHEMERIS_TYPE,CLASSIFICATION_TYPE,NORAD_CAT_ID,ELEMENT_SET_NO,REV_AT_EPOCH,BSTAR,MEAN_MOTION_DOT,"
        "MEAN_MOTION_DDOT\r\n";
    for (int i = 0; i < count; ++i)
        text += "COSMOS " + std::to_string(i) +
                ",1998-067A,2008-09-20T12:25:40.104192,15.72125391,.0006703,51.6416,247.4627,130.5360,325.0288,0,U," +
                std::to_string(80000 + i) + ",292,56353,-.11606E-4,-.2182E-4,0\r\n";
    return text;
}

std::string JsonOfRecords(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::string(i == 0 ? "[" : ",") + R"({"OBJECT_NAME":"COSMOS )" + std::to_string(i) +
                R"(","OBJECT_ID":"1998-067A","EPOCH":"2008-09-20T12:25:40.104192","MEAN_MOTION":15.72125391,)"
                R"("ECCENTRICITY":0.0006703,"INCLINATION":51.6416,"RA_OF_ASC_NODE":247.4627,)"
                R"("ARG_OF_PERICENTER":130.536,"MEAN_ANOMALY":325.0288,"EPHEMERIS_TYPE":0,"CLASSIFICATION_TYPE":"U",)"
                R"("NORAD_CAT_ID":)" +
                std::to_string(80000 + i) +
                R"(,"ELEMENT_SET_NO":292,"REV_AT_EPOCH":56353,"BSTAR":-1.1606e-5,"MEAN_MOTION_DOT":-2.182e-5,)"
                R"("MEAN_MOTION_DDOT":0})";
    return text + "]";
}

constexpr int kCatalogue = 30000;

void ReadMessage(benchmark::State& state, const std::string& text) {
    for (auto _ : state)
        if (ReadElementText(text).sets != kCatalogue) state.SkipWithError("not all records were read");
    state.SetItemsProcessed(state.iterations() * kCatalogue);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void ReadTable(benchmark::State& state) { ReadMessage(state, TableOfRecords(kCatalogue)); }
BENCHMARK(ReadTable)->Unit(benchmark::kMillisecond);

void ReadJson(benchmark::State& state) { ReadMessage(state, JsonOfRecords(kCatalogue)); }
BENCHMARK(ReadJson)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace glintara
