#include "flare/search.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/glintcore.h"
#include "flare/attitude.h"
#include "flare/found_flare.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

/// Length of one search window, days. Each call of the engine covers no more, so that the window stays responsive.
constexpr double kWindow = 1.0 / 24;
/// Time resolution asked of the engine, days.
constexpr double kResolution = 0.1 / 24 / 60 / 60;
/// What a flare found may be off by, and the shortest one that is found, days.
constexpr double kFinest = 0.001 / 24 / 60 / 60;
/// Rounding left in a whole number of hours that has been through days.
constexpr double kHourRounding = 1e-6;
/// An interval longer than this many hours (some eleven years) is searched this far.
constexpr double kMostHours = 1e5;

struct Found {
    double jd = 0;
    int orbitNumber = 0;
    int mirror = 0;
    std::string name;
};

struct Settings {
    bool transit = false;
    int source = GLINTCORE_SUN;
    double maxDistance = 0;  // metres
    double siteRadius = 0;   // metres
    double start = 0;        // Julian date
    bool next = false;
};

/// One hour of the search.
struct Hour {
    int number = 0;
    double from = 0;    // Julian date
    double length = 0;  // days; once a flare is known, up to it
};

/// The earliest flare of the surfaces of one satellite in the hour.
struct SurfaceFlare {
    double jd = 0;
    int mirror = 0;
};

std::optional<SurfaceFlare> Ask(SatRecord& satellite, const Settings& settings, std::span<const GlintSurface> surfaces,
                                double from, double length) {
    double jd = 0;
    const int mirror = Satellite_FindFirstFlare(from, length, settings.source, kResolution, settings.siteRadius,
                                                &satellite.EngineBlock, surfaces.data(),
                                                static_cast<std::int32_t>(surfaces.size()), settings.maxDistance, &jd);
    return mirror != 0 ? std::optional(SurfaceFlare{jd, mirror}) : std::nullopt;
}

/// Whether `flare`, found in a later hour of "Find Next", is what is left of a pass that was passed over in the hour
/// before: nothing else can be in progress across the border, or it would have been found there.
bool LastsFromTheHourBefore(SatRecord& satellite, const Settings& settings, const GlintSurface& surface,
                            const SurfaceFlare& flare, const Hour& hour) {
    if (hour.number == 0 || flare.jd > hour.from + kFinest) return false;
    return Ask(satellite, settings, {&surface, 1}, hour.from, 0) &&
           Ask(satellite, settings, {&surface, 1}, hour.from - 2 * kFinest, 0);
}

/// The earliest flare of a satellite in an hour. Under "Find Next" the flare that the clock stands on is passed over,
/// and so is one of another surface at the same instant: else two that flare together would be found in turns for ever.
std::optional<SurfaceFlare> FlareOfSatellite(SatRecord& satellite, const Settings& settings,
                                             const FindFlareControls& form, const Hour& hour,
                                             std::span<GlintSurface> surfaces) {
    const bool onTheClock = settings.next && hour.number == 0;
    if (onTheClock && satellite.OrbitNumber == form.LastFoundSat && form.LastFoundMirror >= 1 &&
        form.LastFoundMirror <= static_cast<int>(surfaces.size()))
        surfaces[static_cast<std::size_t>(form.LastFoundMirror - 1)].Skip = 1;
    for (;;) {
        const std::optional<SurfaceFlare> flare = Ask(satellite, settings, surfaces, hour.from, hour.length);
        if (!flare || !settings.next) return flare;
        GlintSurface& surface = surfaces[static_cast<std::size_t>(flare->mirror - 1)];
        const bool again = (onTheClock && flare->jd <= settings.start + kResolution) ||
                           LastsFromTheHourBefore(satellite, settings, surface, *flare, hour);
        if (surface.Skip != 0 || !again) return flare;
        surface.Skip = 1;
    }
}

/// The earliest flare of all surfaces in an hour. Once one is known, the others are asked only for something earlier.
std::optional<Found> SearchHour(Application& app, const Settings& settings, Hour hour, bool& anyTried) {
    std::optional<Found> best;
    CommonData& data = app.Data;
    for (int s = 1; s <= data.SatCount; ++s) {
        SatRecord& satellite = data.Satellite(s);
        if (!satellite.Selected) continue;
        EngineSurfaces surfaces = SurfacesTakingPart(satellite, settings.transit);
        if (surfaces.All().empty()) continue;
        anyTried = true;
        const auto flare = FlareOfSatellite(satellite, settings, app.FindFlare, hour, surfaces.All());
        if (!flare || (best && flare->jd >= best->jd)) continue;
        hour.length = flare->jd - hour.from;
        best = Found{flare->jd, satellite.OrbitNumber, flare->mirror, satellite.Name};
    }
    return best;
}

/// A text box of the form as a number that is not negative.
double NotNegative(const TextBox& box) { return std::max(0.0, StrictNumber(box.Text.Get()).value_or(0)); }

void SetSearching(FindFlareControls& form, bool searching) {
    form.CAbort.Enabled = searching;
    form.CFindFirst.Enabled = !searching;
    form.CFindNext.Enabled = !searching;
    form.CExit.Enabled = !searching;
    form.CSatList.Enabled = !searching;
}

void RunSearch(Application& app, SearchClock& clock, SearchStart start) {
    if (!app.Main.CSGP4.Value) {
        app.Boxes.Tell(
            "Flare Search can be performed only with the SDP4/SGP4 propagation model\r\n"
            "Please switch to the right model.",
            MessageIcon::Warning);
        return;
    }
    FindFlareControls& form = app.FindFlare;
    for (const TextBox* box : {&form.TInterval, &form.TMaxDistance}) {
        if (StrictNumber(box->Text.Get())) continue;
        form.LStatus.Caption = NotANumber(*box);
        return;
    }
    const double hours = NotNegative(form.TInterval);
    const double kilometres = NotNegative(form.TMaxDistance);
    SetSearching(form, true);
    form.SearchAbort = false;
    SearchFlares(app, clock, kilometres * 1000.0, hours / 24.0, start);
    form.PB1.Value = 0.0;
    SetSearching(form, false);
}

}  // namespace

bool SearchFlares(Application& app, SearchClock& clock, double maxDistanceMetres, double intervalDays,
                  SearchStart start) {
    FindFlareControls& form = app.FindFlare;
    Settings settings;
    settings.maxDistance = maxDistanceMetres;
    settings.start = app.Data.SimTime;
    settings.next = start == SearchStart::Next;
    form.LStatus.Caption = "Searching...";
    TellFoundFlare(app, std::nullopt);
    app.EventQueue.ServeEvents();
    settings.transit = app.Main.MnuTransitMode[kTransitEntry].Checked;
    settings.source = app.Main.CMoonFlares.Value ? GLINTCORE_MOON : GLINTCORE_SUN;

    const double hours = std::min(intervalDays * kHoursPerDay, kMostHours);
    const int lastHour = static_cast<int>(std::floor(hours + kHourRounding));
    bool anyTried = false;
    std::optional<Found> best;
    for (int k = 0; k <= lastHour && !best; ++k) {
        form.PB1.Value = hours > 0 ? std::min(100.0, 100.0 * k / hours) : 0.0;
        form.LStatus.Caption = "Searching... (" + std::to_string(k) + " hour)";
        app.EventQueue.ServeEvents();
        if (form.SearchAbort) return false;
        settings.siteRadius = app.Data.Site.SiteRadius;  // events may have moved the observer, and the engine knows
        best = SearchHour(app, settings, {k, settings.start + k * kWindow, kWindow}, anyTried);
    }
    if (!best) {
        form.LStatus.Caption = anyTried ? "Flare Not Found" : "Warning: No Satellite Selected / No Mirror Found";
        return false;
    }
    form.LastFoundSat = best->orbitNumber;
    form.LastFoundMirror = best->mirror;
    clock.SetJDToTimeOffset(best->jd);
    form.LStatus.Caption = "Flare Found! (" + best->name + ")";
    TellFoundFlare(app, PassOfFoundFlare(app, best->orbitNumber, best->mirror, best->jd, maxDistanceMetres));
    if (form.CAutoWSet.Value) ChangeWorkingSatellite(app, best->orbitNumber);
    return true;
}

std::string NotANumber(const TextBox& box) { return "Not a number: " + box.Text.Get(); }

void CFindFirst_click(Application& app, SearchClock& clock) {
    app.FindFlare.LastFoundSat = -1;
    app.FindFlare.LastFoundMirror = -1;
    RunSearch(app, clock, SearchStart::First);
}

void CFindNext_click(Application& app, SearchClock& clock) { RunSearch(app, clock, SearchStart::Next); }

void CAbort_click(Application& app) { app.FindFlare.SearchAbort = true; }

}  // namespace glintara
