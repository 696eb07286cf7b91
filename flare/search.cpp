#include "flare/search.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/glintcore.h"
#include "flare/attitude.h"
#include "flare/surface_models.h"
#include "orbit/satellite_table.h"

namespace glintara {

namespace {

/// Length of one search window, days. Each call of the engine covers no more, so that the window stays responsive.
constexpr double kWindow = 1.0 / 24;
/// Time resolution asked of the engine, days.
constexpr double kResolution = 0.1 / 24 / 60 / 60;
/// Rounding left in a whole number of hours that has been through days.
constexpr double kHourRounding = 1e-6;
/// An interval longer than this many hours (some eleven years) is searched this far.
constexpr double kMostHours = 1e5;

/// A surface of a satellite, taken from the list when the search starts an hour: events served in between may change
/// the list.
struct Candidate {
    int orbitNumber = 0;
    int mirror = 0;
    int geometry = 0;
    double angle = 0;  // radians
    double tilt = 0;   // radians
    const SatRecord* satellite = nullptr;
};

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

/// Calls `visit` for each surface that takes part, in the order of the list.
template <class Visit>
void ForEachCandidate(const CommonData& data, bool transit, const Visit& visit) {
    for (int s = 1; s <= data.SatCount; ++s) {
        const SatRecord& satellite = data.Satellite(s);
        if (!satellite.Selected || satellite.IsDisabled() || (!transit && !HasFlareModel(satellite))) continue;
        const SurfaceModel& surface = satellite.Surface;
        const int count = transit ? 1 : surface.MirrorCount;
        for (int i = 1; i <= count; ++i) {
            Candidate candidate;
            candidate.orbitNumber = satellite.OrbitNumber;
            candidate.mirror = i;
            candidate.geometry = GeometryCodeOf(surface.OrientationType, transit);
            candidate.angle = transit ? 0 : surface.Mirror(i).Angle * kDegToRad;
            candidate.tilt = transit ? 0 : surface.Mirror(i).Tilt * kDegToRad;
            candidate.satellite = &satellite;
            visit(candidate);
        }
    }
}

std::optional<double> Ask(const Candidate& candidate, const Settings& settings, double from, double length, bool skip) {
    EngineBlock block = candidate.satellite->EngineBlock;
    double jd = 0;
    const int some =
        Satellite_FindFlare(from, length, settings.source, kResolution, settings.siteRadius, &block, candidate.geometry,
                            candidate.angle, candidate.tilt, settings.maxDistance, skip ? 1 : 0, &jd);
    return some != 0 ? std::optional(jd) : std::nullopt;
}

/// The flare of one candidate in a window. Under "Find Next" the flare that the clock stands on is passed over, and so
/// is one of another satellite at the same instant: else two satellites that flare together would be found in turns for
/// ever.
std::optional<double> AskAgainOnTheClock(const Candidate& candidate, const Settings& settings,
                                         const FindFlareControls& form, double from, double length) {
    const bool skip =
        settings.next && candidate.orbitNumber == form.LastFoundSat && candidate.mirror == form.LastFoundMirror;
    const std::optional<double> jd = Ask(candidate, settings, from, length, skip);
    if (settings.next && !skip && jd && *jd <= settings.start + kResolution)
        return Ask(candidate, settings, from, length, true);
    return jd;
}

/// The earliest flare of all candidates in the hour from `from` on. Once one is known, the others are asked only for
/// something earlier.
std::optional<Found> SearchHour(const Application& app, const Settings& settings, double from, bool& anyTried) {
    std::optional<Found> best;
    double length = kWindow;
    ForEachCandidate(app.Data, settings.transit, [&](const Candidate& candidate) {
        anyTried = true;
        const std::optional<double> jd = AskAgainOnTheClock(candidate, settings, app.FindFlare, from, length);
        if (!jd || (best && *jd >= best->jd)) return;
        length = *jd - from;
        best = Found{*jd, candidate.orbitNumber, candidate.mirror, candidate.satellite->Name};
    });
    return best;
}

/// A text box of the form as a number that is not negative; what is no number counts as 0.
double NotNegative(const TextBox& box) {
    const double value = LeadingNumber(box.Text.Get());
    return value > 0 ? value : 0;
}

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
        best = SearchHour(app, settings, settings.start + k * kWindow, anyTried);
    }
    if (!best) {
        form.LStatus.Caption = anyTried ? "Flare Not Found" : "Warning: No Satellite Selected / No Mirror Found";
        return false;
    }
    form.LastFoundSat = best->orbitNumber;
    form.LastFoundMirror = best->mirror;
    clock.SetJDToTimeOffset(best->jd);
    form.LStatus.Caption = "Flare Found! (" + best->name + ")";
    if (form.CAutoWSet.Value) ChangeWorkingSatellite(app, best->orbitNumber);
    return true;
}

void CFindFirst_click(Application& app, SearchClock& clock) {
    app.FindFlare.LastFoundSat = -1;
    app.FindFlare.LastFoundMirror = -1;
    RunSearch(app, clock, SearchStart::First);
}

void CFindNext_click(Application& app, SearchClock& clock) { RunSearch(app, clock, SearchStart::Next); }

void CAbort_click(Application& app) { app.FindFlare.SearchAbort = true; }

}  // namespace glintara
