#pragma once

// The one application state, with the services that its procedures call.

#include "state/adv_sel_controls.h"
#include "state/cities_controls.h"
#include "state/common_data.h"
#include "state/date_entry_controls.h"
#include "state/download_controls.h"
#include "state/events.h"
#include "state/find_flare_controls.h"
#include "state/main_controls.h"
#include "state/message_boxes.h"
#include "state/mirror_controls.h"
#include "state/observation_controls.h"
#include "state/output_controls.h"
#include "state/progress_controls.h"
#include "state/run_state.h"
#include "state/sat_position_controls.h"
#include "state/satellites_controls.h"
#include "state/settings_controls.h"
#include "state/window_signals.h"

namespace glintara {

/// Gives a satellite that enters the list the surfaces it is known to have. The rooms that know surfaces stand above
/// those that read element sets, so whoever puts a program together hands it down.
using ModelGiver = void (*)(SatRecord& satellite);

/// Everything that a procedure of the program may read or write. There is one in the program; it travels by reference.
/// The services must outlive it.
struct Application {
    /// Without `giveDefaultModel` no satellite gets surfaces by itself.
    Application(MessageBoxes& boxes, Events& events, WindowSignals& windows, ModelGiver giveDefaultModel = nullptr)
        : Boxes(boxes), EventQueue(events), Windows(windows), GiveDefaultModel(giveDefaultModel) {}
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    CommonData Data;
    MainControls Main;
    FindFlareControls FindFlare;
    MirrorControls Mirror;
    ObservationControls Observations;
    OutputControls Output;
    SettingsControls Settings;
    DateEntryControls DateEntry;
    DownloadControls Download;
    ProgressControls Progress;
    CitiesControls Cities;
    SatPositionControls SatPosition;
    SatellitesControls Satellites;
    AdvSelControls AdvSel;
    RunState Run;

    MessageBoxes& Boxes;
    Events& EventQueue;
    WindowSignals& Windows;
    const ModelGiver GiveDefaultModel;
};

}  // namespace glintara
