#include "scene/satellites.h"

#include <cmath>
#include <optional>

#include "engine/astro/number_text.h"
#include "orbit/satellite_motion.h"
#include "scene/circles.h"
#include "scene/flare_marks.h"
#include "scene/flare_rays.h"
#include "scene/flare_tracks.h"
#include "scene/marks.h"
#include "scene/orbits.h"

namespace glintara {
namespace {

constexpr double kRingWidth = 1;

/// Gap between the edge of a mark and its name, in radii of the mark.
constexpr double kNameGap = 1;

/// What all satellites of a picture share.
struct Pass {
    const SceneContext& scene;
    SatelliteWorkspace& work;
    WindowScale window;
    Vector3 observer;
    bool earthShown = true;
    bool orbitsShown = true;
    bool flaresShown = true;
    bool tracksShown = true;
    LightPlaces lights = {};
    LiveFlareQuest quest = {};
    int satellite = 0;  // index of the one that is being drawn
};

/// The mark of one satellite, wherever it stands.
struct Mark {
    double radius = 0;      // scene units
    double ringFactor = 0;  // of the ring round the working satellite
    Color color = kSunlitColor;
};

bool IsOnPicture(const Pass& pass, const ScenePoint& place, double radius) {
    const DrawSurface& surface = pass.scene.Surface;
    const ViewState& view = pass.scene.View();
    const double x = BoxFromSceneX(pass.window, view, place.x);
    const double y = BoxFromSceneY(pass.window, view, place.y);
    const double reach = radius * pass.window.scaleX;
    return x + reach > 0 && x - reach < surface.ScaleWidth && y + reach > 0 && y - reach < surface.ScaleHeight;
}

void DrawMark(const Pass& pass, const ScenePoint& place, const Mark& mark, bool working) {
    const SceneContext& scene = pass.scene;
    const double ring = mark.radius * mark.ringFactor;
    if (!IsOnPicture(pass, place, ring)) return;
    const ViewState& view = scene.View();
    scene.App.Run.Finder.Add({place.x + view.PanX, place.y + view.PanY, pass.satellite});
    if (mark.color == kShadowedColor)
        DrawOutlinedDisc(scene, place, mark.radius, mark.color, kShadowedOutline, kShadowedOutlineWidth);
    else
        DrawDisc(scene, place, mark.radius, mark.color);
    if (!working) return;
    scene.Surface.FillStyle = FillPattern::Transparent;
    scene.Surface.DrawWidth = kRingWidth;
    SceneCircle(scene, place, ring, mark.color);
}

void AskForName(const Pass& pass, const SatRecord& satellite, const Vector3& position, const ScenePoint& place,
                const Mark& mark, bool working) {
    const SceneContext& scene = pass.scene;
    if (!scene.App.Main.CSatNames.Value) return;
    const double radius = mark.radius * (working ? mark.ringFactor : kNameGap);
    NameWish wish;
    wish.x = BoxFromSceneX(pass.window, scene.View(), place.x);
    wish.gap = radius * pass.window.scaleX;
    wish.y = BoxFromSceneY(pass.window, scene.View(), place.y);
    wish.range = Length(position - pass.observer);
    wish.rank = working ? NameRank::Working : NameRank::Other;
    wish.color = working ? kWorkingNameColor : kQuietNameColor;
    wish.name = satellite.Name;
    pass.work.names.Add(wish);
}

Mark MarkInSpace(const SceneContext& scene, const Vector3& position) {
    const double zoom = scene.View().ZoomFactor;
    const double radius = zoom < kMarkGrowthZoom ? kMarkRadius * kMarkGrowthZoom / zoom : kMarkRadius;
    return {radius, kRingFactor, LightColor(scene.App, position)};
}

Mark SmallMark(const SceneContext& scene, const Vector3& position) {
    return {kSmallMarkRadius / scene.View().ZoomFactor, kSmallRingFactor, LightColor(scene.App, position)};
}

void DrawEarthMarks(const Pass& pass, const SatRecord& satellite, const Vector3& position, bool working) {
    const SceneContext& scene = pass.scene;
    const MainControls& main = scene.App.Main;
    const bool onGround = main.CProjectOrbit.Value;
    const bool inSpace = main.CPlotOrbit.Value || !onGround;

    const Mark small = SmallMark(scene, position);
    const std::optional<ScenePoint> ground =
        onGround ? SeenOnEarth(scene, Normalized(position)) : std::optional<ScenePoint>();
    if (ground) DrawMark(pass, *ground, small, working);

    const Mark mark = MarkInSpace(scene, position);
    const std::optional<ScenePoint> space = inSpace ? SeenInSpace(scene, position) : std::optional<ScenePoint>();
    if (space) DrawMark(pass, *space, mark, working);

    // One name, at the mark that tells more.
    if (space)
        AskForName(pass, satellite, position, *space, mark, working);
    else if (ground)
        AskForName(pass, satellite, position, *ground, small, working);
}

void DrawSkyMark(const Pass& pass, const SatRecord& satellite, const Vector3& position, bool working) {
    const SceneContext& scene = pass.scene;
    const ObserverSite& site = scene.App.Data.Site;
    const LatLonRadius direction = SatXYZToSkyLatLon(site, position);
    if (!IsSkyShown(scene, direction, WorldToHorizon(site, position).altitude)) return;
    PushSkyPan(scene);
    if (const std::optional<ScenePoint> place = SeenOnSky(scene, direction)) {
        const Mark mark = MarkInSpace(scene, position);
        DrawMark(pass, *place, mark, working);
        AskForName(pass, satellite, position, *place, mark, working);
    }
    PopSkyPan(scene);
}

void TellWorkingSatellite(Application& app, const SatRecord& satellite, const Vector3& position) {
    const double height = std::round(HeightOverSphere(app.Data.Site, position) * 10) / 10;
    app.Main.LSatDetail.Caption = "Satellite height: " + PlainNumberText(height) + " km";
    app.Run.Working.Keep(satellite, WorldToHorizon(app.Data.Site, position));
}

/// The working satellite is nowhere: what was told of it is of another instant, or of another model.
void ForgetWorkingSatellite(Application& app) {
    app.Main.LSatDetail.Caption = std::string();
    app.Run.Working.Forget();
    TellReadOut(app.Mirror, {});
}

bool IsOrbitHidden(const SatRecord& satellite) {
    return satellite.OptionFlags.size() > kOrbitHiddenPlace && satellite.OptionFlags[kOrbitHiddenPlace] == '1';
}

void DrawSatellite(const Pass& pass, SatRecord& satellite, bool working) {
    const SceneContext& scene = pass.scene;
    Application& app = scene.App;
    const WorldMotion motion = MoveToNow(app, satellite);
    const Vector3& position = motion.position;
    if (!HasPlace(position)) {
        if (working) ForgetWorkingSatellite(app);
        return;
    }

    if (working) {
        TellWorkingSatellite(app, satellite, position);
        TellReadOut(app.Mirror, app.Main.CIridiumFlares.Value ? ReadOutOfPhase(app, satellite, motion, pass.quest)
                                                              : std::optional<RotatingReadOut>());
    }
    if (satellite.IsDisabled()) return;
    if (pass.orbitsShown && (working || !IsOrbitHidden(satellite))) DrawOrbits(scene, satellite);
    if (pass.tracksShown && (working || !IsOrbitHidden(satellite))) DrawFlareTrack(scene, satellite);
    if (pass.flaresShown) {
        DrawFlareRays(scene, satellite, motion, pass.lights, pass.quest);
        FindLiveFlares(app, satellite, motion, pass.lights, pass.quest, pass.work.flares);
        DrawFlareMarks(scene, satellite, pass.work.flares, pass.work.names);
        DrawFootprints(scene, satellite, motion, pass.lights, pass.quest);
    }
    if (pass.earthShown) {
        DrawEarthMarks(pass, satellite, position, working);
        if (app.Main.CSatCircle.Value) DrawSatCircle(scene, position);
        if (working && app.Main.CDrawArea.Value) DrawVisibilityArea(scene, Length(position));
    }
    if (app.Main.CDrawSky.Value) DrawSkyMark(pass, satellite, position, working);
}

}  // namespace

void FollowWorkingSatellite(Application& app, SatelliteWorkspace& work) {
    CommonData& data = app.Data;
    work.names.Clear();
    app.Run.Finder.ClearList();
    if (data.SatCount < 1) return;
    SatRecord& satellite = data.Satellite(data.WorkingSat());
    const WorldMotion motion = MoveToNow(app, satellite);
    if (HasPlace(motion.position))
        TellWorkingSatellite(app, satellite, motion.position);
    else
        ForgetWorkingSatellite(app);
}

void DrawSatellites(const SceneContext& scene, SatelliteWorkspace& work) {
    Application& app = scene.App;
    CommonData& data = app.Data;
    work.names.Clear();
    app.Run.Finder.ClearList();
    if (data.SatCount < 1) return;

    Pass pass{scene, work, GetWindowScale(data.View, scene.Surface), ObserverOnUnitSphere(data.Site)};
    pass.earthShown = !app.Main.CSkyOnly.Value;
    pass.orbitsShown = AreOrbitsShown(app.Main);
    pass.flaresShown = pass.earthShown && app.Main.CIridiumFlares.Value;
    pass.tracksShown = pass.earthShown && app.Main.CFlareTrack.Value && OrbitModelOf(app.Main) == OrbitModel::SGP4;
    pass.quest = LiveFlareQuestOf(app);
    if (pass.flaresShown) pass.lights = LightPlacesAt(data);
    for (int s = 1; s <= data.SatCount; ++s) {
        SatRecord& satellite = data.Satellite(s);
        const bool working = s == data.WorkingSat();
        pass.satellite = s;
        if (working || !satellite.IsDisabled()) DrawSatellite(pass, satellite, working);
    }
    work.names.Draw(scene);
}

}  // namespace glintara
