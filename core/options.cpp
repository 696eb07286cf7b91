#include "core/options.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/astro/number_text.h"
#include "scene/orientation.h"
#include "scene/sky_scale.h"
#include "scene/view_geometry.h"

namespace glintara {

namespace {

/// What `CAutoMag` takes care of: stars down to this magnitude, of this size.
constexpr double kAutoStarMag = 11;
constexpr std::int16_t kAutoStarSize = 8;

constexpr double kStarMagStep = 0.25;
constexpr double kBrightestStarMag = -5;
constexpr double kFaintestStarMag = 15;

struct ButtonEntry {
    Button MainControls::*button;
    MenuEntry MainControls::*entry;
};

constexpr ButtonEntry kButtonEntries[] = {
    {&MainControls::CZenith, &MainControls::MnuZenithOrient},
    {&MainControls::CUpOrientation, &MainControls::MnuUpOrientation},
    {&MainControls::CNoon, &MainControls::MnuNoon},
    {&MainControls::CNightOrientation, &MainControls::MnuMidnight},
    {&MainControls::CZeroOrientation, &MainControls::MnuZeroOrient},
    {&MainControls::COrbitOrient, &MainControls::MnuOrbitOrient},
    {&MainControls::CChangeOrbit, &MainControls::MnuChangeOrbit},
    {&MainControls::CClearOrbitList, &MainControls::MnuClearOrbitList},
};

bool IsOn(const CheckBox& box) { return box.Enabled && box.Value; }

/// The boxes of the sky, and those of the stars' sides, which a flat map has not.
constexpr CheckBox MainControls::*kSkyBoxes[] = {
    &MainControls::CStarsOnGlobe, &MainControls::CStarNames, &MainControls::CDrawConstallations,
    &MainControls::CSkyCircle,    &MainControls::CFlatSky,   &MainControls::CMaximizeSky,
    &MainControls::CReverseSky,   &MainControls::CSkyOnly};
constexpr CheckBox MainControls::*kSkySides[] = {&MainControls::CLocalSky, &MainControls::CDrawFrontStars,
                                                 &MainControls::CDrawBackStars};

/// What every option does when it changes. An option string shows once at its end.
void ShowOption(Application& app) {
    if (app.Run.OptionsFromText) return;
    RefreshEnabled(app);
    app.Windows.SyncronizeMenuBar();
    app.Windows.UpdateGraphicsLevel2();
}

void SetStarLimit(Application& app, const OptionHooks& hooks, double magnitude) {
    app.Data.View.MaxStarMag = std::clamp(magnitude, kBrightestStarMag, kFaintestStarMag);
    ShowStarLimits(app);
    if (hooks.rebuildStarList) hooks.rebuildStarList();
}

void SetStarSize(Application& app, int size) {
    app.Data.View.StarSizeScale = StarSize(size);
    ShowStarLimits(app);
    app.Windows.UpdateGraphicsLevel2();
}

/// Installs `before` as what a box does besides showing the option.
void Connect(Application& app, CheckBox& box, std::function<void()> before) {
    box.Value.SetHandler([&app, before = std::move(before)] {
        before();
        ShowOption(app);
    });
}

void ConnectSkyBoxes(Application& app, const OptionHooks& hooks) {
    MainControls& main = app.Main;
    Connect(
        app, main.CDrawSky,
        [&app] {
            SetSkyOptions(app, app.Main.CDrawSky.Value);
            // Without either the picture would be empty.
            if (!app.Main.CDrawSky.Value) app.Main.CSkyOnly.Value = false;
        });
    Connect(app, main.CPlaniSphere, [&app] { SetSkyOptions(app, app.Main.CDrawSky.Value); });
    Connect(app, main.CMaximizeSky, [&app] {
        if (!app.Main.CMaximizeSky.Value) return;
        app.Main.CStarsOnGlobe.Value = false;
        FitSky(app);
    });
    Connect(app, main.CStarsOnGlobe, [&app] {
        if (!app.Main.CStarsOnGlobe.Value) {
            app.Data.View.SkyScale = app.Data.View.SkyScaleSaved;
            return;
        }
        app.Main.CMaximizeSky.Value = false;
        app.Data.View.SkyScale = 1;
    });
    Connect(app, main.CAutoMag, [&app, hooks] {
        if (!app.Main.CAutoMag.Value) return;
        app.Data.View.StarSizeScale = kAutoStarSize;
        SetStarLimit(app, hooks, std::max(app.Data.View.MaxStarMag, kAutoStarMag));
    });
    const auto step = [&app, hooks](double magnitudes) {
        SetStarLimit(app, hooks, app.Data.View.MaxStarMag + magnitudes);
        app.Windows.UpdateGraphicsLevel2();
    };
    main.CMaxMagInc.SetClickHandler([step] { step(kStarMagStep); });
    main.CMaxMagDec.SetClickHandler([step] { step(-kStarMagStep); });
    main.CStarSizeInc.SetClickHandler([&app] { SetStarSize(app, app.Data.View.StarSizeScale + 1); });
    main.CStarSizeDec.SetClickHandler([&app] { SetStarSize(app, app.Data.View.StarSizeScale - 1); });
}

void ConnectLocks(Application& app, const OptionHooks& hooks) {
    Connect(app, app.Main.CLockSky, [&app] {
        app.Data.View.SkyLocked = app.Main.CLockSky.Value;
        if (!app.Main.CLockSky.Value) return;
        app.Main.CLockSatellite.Value = false;
        TakeSkyLock(app.Data);
    });
    Connect(app, app.Main.CLockSatellite, [&app, hooks] {
        if (!app.Main.CLockSatellite.Value) return;
        app.Main.CLockSky.Value = false;
        if (hooks.clockTick && !app.Run.OptionsFromText) hooks.clockTick();
    });
}

constexpr std::string_view kNoTracksBySGP1 = "SGP1 draws no flare tracks: choose SGP4/SDP4.";

/// Tracks that are wanted and not drawn would look as if there were none.
void TellWhereTracksAre(Application& app) {
    if (app.Run.OptionsFromText) return;
    auto& said = app.Main.LCommandOutput.Caption;
    if (IsOn(app.Main.CFlareTrack) && !app.Main.CSGP4.Value)
        said = std::string(kNoTracksBySGP1);
    else if (said.Get() == kNoTracksBySGP1)
        said = std::string();
}

/// Who of the two is set clears the other. The one that is cleared so leaves the rest to the one that was set.
void ConnectModel(Application& app, OptionButton& box, OptionButton& other) {
    box.Value.SetHandler([&app, &box, &other] {
        if (!box.Value && other.Value) return;
        if (!box.Value) {
            box.Value = true;  // one of the two is always set
            return;
        }
        other.Value = false;
        TellWhereTracksAre(app);
        ShowOption(app);
    });
}

void ConnectClockBoxes(Application& app, const OptionHooks& hooks) {
    for (CheckBox* box : {&app.Main.CRealTime, &app.Main.CLocalTime}) {
        Connect(
            app, *box,
            [hooks] {
                if (hooks.syncronizeTime) hooks.syncronizeTime();
            });
    }
}

void ConnectEntries(Application& app) {
    MainControls& main = app.Main;
    for (const OptionPair& pair : OptionPairs(main))
        pair.entry->SetClickHandler([pair] { pair.box->Value = !pair.entry->Checked; });
    // A press on the model that is set already leaves it set.
    main.MnuSGP1.SetClickHandler([&main] { main.CSGP1.Value = true; });
    main.MnuSGP4.SetClickHandler([&main] { main.CSGP4.Value = true; });
    main.MnuNoUTC.SetClickHandler([&main] { main.CLocalTime.Value = main.MnuNoUTC.Checked; });
    for (MenuEntry* entry : {&main.MnuFloatingSite, &main.MnuTransitMode[kTransitEntry], &main.MnuMarkCities,
                             &main.MnuAtmo, &main.MnuLib3D}) {
        entry->SetClickHandler([&app, entry] {
            entry->Checked = !entry->Checked;
            app.Windows.UpdateGraphicsLevel2();
        });
    }
    for (const ButtonEntry& pair : kButtonEntries) {
        const Button& button = main.*pair.button;
        (main.*pair.entry).SetClickHandler([&button] { button.Click(); });
    }
}

}  // namespace

std::array<OptionPair, kOptionPairCount> OptionPairs(MainControls& main) {
    return {{
        {&main.CDrawConstallations, &main.MnuConstellations},
        {&main.CStarNames, &main.MnuStarNames},
        {&main.CSkyCircle, &main.MnuSkyCircle},
        {&main.CDrawSun, &main.MnuDrawSun},
        {&main.CDrawBackStars, &main.MnuBackStars},
        {&main.CMaximizeSky, &main.MnuMaximizeSky},
        {&main.CReverseSky, &main.MnuReverseSky},
        {&main.CFlatSky, &main.MnuFlatSky},
        {&main.CStarsOnGlobe, &main.MnuStarsOnGlobe},
        {&main.CLockSky, &main.MnuLockSky},
        {&main.CLockSatellite, &main.MnuLockSatellite},
        {&main.CDrawSky, &main.MnuDrawSky},
        {&main.CSunLight, &main.MnuSunLight},
        {&main.CSkyOnly, &main.MnuSkyOnly},
        {&main.CPlotOrbit, &main.MnuPlotOrbit},
        {&main.CPlotOrbitOverTime, &main.MnuPlotOrbitOverTime},
        {&main.CRealTime, &main.MnuRealTime},
        {&main.CAutoRefine, &main.MnuAutoRefine},
        {&main.CDrawArea, &main.MnuVisibilityArea},
        {&main.CDrawAries, &main.MnuAriesLine},
        {&main.CIridiumFlares, &main.MnuIridiumFlares},
        {&main.CFlareTrack, &main.MnuFlareTrack},
        {&main.CAntennaID, &main.MnuAntennaID},
        {&main.CMoonFlares, &main.MnuMoonFlares},
        {&main.CHideCountries, &main.MnuHideCountries},
        {&main.C2OrbitDetails, &main.MnuOrbitDetails},
        {&main.CAstroDetails, &main.MnuAstroDetails},
        {&main.CThinLines, &main.MnuThinLines},
        {&main.CSatNames, &main.MnuSatelliteNames},
        {&main.CProjectOrbit, &main.MnuProjectOrbit},
        {&main.CProjectOverTime, &main.MnuProjectOverTime},
        {&main.CProjectOrbitOnSky, &main.MnuProjectOrbitOnSky},
        {&main.CSatOnly, &main.MnuHideOrbits},
        {&main.CSGP1, &main.MnuSGP1},
        {&main.CSGP4, &main.MnuSGP4},
        {&main.CPlaniSphere, &main.Mnu2D},
        {&main.CGlobeGrid, &main.MnuGlobeGrid},
        {&main.CSolidGlobe, &main.MnuSolidGlobe},
        {&main.CDrawFrontStars, &main.MnuFrontStars},
        {&main.CLocalSky, &main.MnuLocalSky},
        {&main.CSatCircle, &main.MnuSatCircle},
        {&main.CAutoMag, &main.MnuAutoMag},
        {&main.CDayFlares, &main.MnuDayFlares},
    }};
}

void SyncronizeMenuBar(MainControls& main) {
    for (const OptionPair& pair : OptionPairs(main)) {
        pair.entry->Checked = pair.box->Value;
        pair.entry->Enabled = pair.box->Enabled;
    }
    main.MnuNoUTC.Checked = !main.CLocalTime.Value;
    main.MnuNoUTC.Enabled = main.CLocalTime.Enabled;
    for (const ButtonEntry& pair : kButtonEntries) (main.*pair.entry).Enabled = (main.*pair.button).Enabled;
}

void SetSkyOptions(Application& app, bool enabled) {
    MainControls& main = app.Main;
    for (const auto box : kSkyBoxes) (main.*box).Enabled = enabled;
    if (!main.CPlaniSphere.Value)
        for (const auto box : kSkySides) (main.*box).Enabled = enabled;
    app.Windows.SyncronizeMenuBar();
}

std::array<CheckBox*, kSatelliteBoxCount> BoxesThatNeedSatellites(MainControls& main) {
    return {&main.CPlotOrbit, &main.CProjectOrbit,  &main.CProjectOrbitOnSky, &main.CSatOnly,       &main.CSatCircle,
            &main.CDrawArea,  &main.CLockSatellite, &main.C2OrbitDetails,     &main.CIridiumFlares, &main.CFlareTrack};
}

UsableInputs CurrentInputs(const Application& app) {
    const MainControls& main = app.Main;
    UsableInputs inputs;
    inputs.known = true;
    inputs.satellites = app.Data.SatCount > 0;
    inputs.orbit = IsOn(main.CPlotOrbit);
    inputs.projection = IsOn(main.CProjectOrbit);
    inputs.tracks = IsOn(main.CFlareTrack);
    inputs.flares = inputs.tracks || IsOn(main.CIridiumFlares);
    return inputs;
}

bool CanBeUsed(Application& app, const CheckBox& box) {
    MainControls& main = app.Main;
    const UsableInputs inputs = CurrentInputs(app);
    for (const CheckBox* other : BoxesThatNeedSatellites(main))
        if (other == &box) return inputs.satellites;
    for (const auto other : kSkyBoxes)
        if (&(main.*other) == &box) return main.CDrawSky.Value;
    for (const auto other : kSkySides)
        if (&(main.*other) == &box) return main.CDrawSky.Value;
    if (&box == &main.CPlotOrbitOverTime) return inputs.orbit;
    if (&box == &main.CProjectOverTime) return inputs.projection;
    if (&box == &main.CDayFlares) return inputs.tracks;
    if (&box == &main.CAntennaID || &box == &main.CMoonFlares || &box == &main.CNOSSFlare) return inputs.flares;
    return true;
}

std::int16_t StarSize(double size) {
    if (!(size > kLeastStarSize)) return static_cast<std::int16_t>(kLeastStarSize);
    return static_cast<std::int16_t>(std::min(std::nearbyint(size), kMostStarSize));
}

void ShowStarLimits(Application& app) {
    app.Main.LMaxStarMag.Caption = "Max Star Mag. " + PlainNumberText(app.Data.View.MaxStarMag);
    app.Main.LStarSize.Caption = "Star Size: " + std::to_string(app.Data.View.StarSizeScale);
}

void RefreshEnabled(Application& app) {
    MainControls& main = app.Main;
    const UsableInputs seen = app.Run.UsableSeen;
    const bool satellites = app.Data.SatCount > 0;
    if (!seen.known || satellites != seen.satellites)
        for (CheckBox* box : BoxesThatNeedSatellites(main)) box->Enabled = satellites;
    for (Button* button : {&main.COrbitOrient, &main.CTOrbInc, &main.CTOrbDec}) button->Enabled = satellites;
    for (MenuEntry* entry : {&main.MnuFindFlare, &main.MnuSatInfo, &main.MnuModelSatSurfaces})
        entry->Enabled = satellites;

    const UsableInputs now = CurrentInputs(app);
    if (!seen.known || now.orbit != seen.orbit) main.CPlotOrbitOverTime.Enabled = now.orbit;
    if (!seen.known || now.projection != seen.projection) main.CProjectOverTime.Enabled = now.projection;
    if (!seen.known || now.flares != seen.flares)
        for (CheckBox* box : {&main.CAntennaID, &main.CMoonFlares, &main.CNOSSFlare}) box->Enabled = now.flares;
    if (!seen.known || now.tracks != seen.tracks) main.CDayFlares.Enabled = now.tracks;
    app.Run.UsableSeen = now;

    const bool tracks = now.tracks && main.CSGP4.Value;
    main.MnuExportTrack.Enabled = tracks;
    main.mnuFindCityTrack.Enabled = tracks;
}

void ConnectOptions(Application& app, const OptionHooks& hooks) {
    MainControls& main = app.Main;
    const auto show = [&app] { ShowOption(app); };
    for (const OptionPair& pair : OptionPairs(main)) pair.box->Value.SetHandler(show);
    main.CHCircle.Value.SetHandler(show);
    main.CNOSSFlare.Value.SetHandler(show);

    ConnectSkyBoxes(app, hooks);
    ConnectLocks(app, hooks);
    ConnectClockBoxes(app, hooks);
    Connect(app, main.CFlareTrack, [&app] { TellWhereTracksAre(app); });
    ConnectModel(app, main.CSGP1, main.CSGP4);
    ConnectModel(app, main.CSGP4, main.CSGP1);
    ConnectEntries(app);
    ShowStarLimits(app);
}

}  // namespace glintara
