#include "flare/live_flares.h"

#include <cmath>

#include "flare/attitude.h"
#include "flare/geometry/reflection.h"
#include "flare/surface_models.h"
#include "orbit/astro/constants.h"
#include "orbit/astro/geodesy.h"
#include "orbit/astro/number_text.h"
#include "orbit/astro/sidereal.h"
#include "orbit/astro/sun_moon.h"
#include "orbit/astro/trigonometry.h"

namespace glintara {

namespace {

/// One satellite under one source.
struct Beamer {
    const Vector3& r;
    const Vector3& source;
    Vector3 observer;
    double siteRadius = 0;
    bool moon = false;
};

void AddCentre(const Beamer& beamer, const std::optional<FlareCentre>& found, int surface, bool rotating,
               LiveFlares& flares) {
    if (!found) return;
    LiveFlare flare;
    flare.centre = found->centre;
    flare.distance = Length(found->centre - beamer.observer) * beamer.siteRadius;
    flare.offAxis = ArcCos(Dot(Normalized(beamer.r - found->centre), Normalized(beamer.r - beamer.observer)));
    flare.surface = surface;
    flare.rotating = rotating;
    flare.moon = beamer.moon;
    flares.Add(flare);
}

void AddFixedSurfaces(const Beamer& beamer, const SurfaceModel& model, const BodyFrame& frame, LiveFlares& flares) {
    const bool inertial = model.OrientationType == static_cast<int>(OrientationType::Inertial);
    for (int i = 1; i <= model.MirrorCount; ++i) {
        const MirrorRecord& mirror = model.Mirror(i);
        const Vector3 normal = MirrorNormal(inertial, mirror.Angle * kDegToRad, mirror.Tilt * kDegToRad, frame);
        AddCentre(beamer, MirrorFlare(beamer.r, beamer.source, normal), i, false, flares);
    }
}

void AddRotatingSurface(const Beamer& beamer, const SurfaceModel& model, const BodyFrame& frame,
                        const LiveFlareQuest& quest, LiveFlares& flares) {
    const MirrorRecord& mirror = model.Mirror(1);
    const RotatingMirror cone =
        MakeRotatingMirror(model.RotAxisDEC, model.RotAxisRA, mirror.Angle * kDegToRad, mirror.Tilt * kDegToRad);
    const int wholeTurn = quest.fine ? kRotationPhasesFine : kRotationPhases;
    const int count = quest.phase ? 1 : wholeTurn;
    for (int k = 0; k < count; ++k) {
        const double phase = quest.phase ? *quest.phase : RotationPhase(k, count);
        const Vector3 normal = OnAxes(NormalComponentsAt(cone, phase), frame);
        AddCentre(beamer, MirrorFlare(beamer.r, beamer.source, normal), k, true, flares);
    }
}

}  // namespace

LightPlaces LightPlacesAt(const CommonData& data) {
    const MoonPlace moon = MoonPosition(data.SimTime);
    const double moonLon = EastLongitudeOf(moon.ra, SiderealFromJD(data.SimTime));
    return {SunPlace(data, data.SimTime), LLRToSameXYZ(moon.dec, moonLon, moon.distance / data.Site.SiteRadius)};
}

LiveFlareQuest LiveFlareQuestOf(const Application& app) {
    LiveFlareQuest quest;
    quest.moon = app.Main.CMoonFlares.Value;
    quest.transit = app.Main.MnuTransitMode[kTransitEntry].Checked;
    quest.fine = app.Run.FinePass;
    return quest;
}

void FindLiveFlares(const Application& app, const SatRecord& satellite, const WorldMotion& motion,
                    const LightPlaces& lights, const LiveFlareQuest& quest, LiveFlares& flares) {
    flares.Clear();
    const SurfaceModel& model = satellite.Surface;
    std::optional<BodyFrame> frame;
    if (!quest.transit) {
        if (!HasFlareModel(satellite)) return;
        frame = BuildBodyFrame(app, satellite, motion.position, motion.velocity, app.Data.SimTime);
        if (!frame) return;
    }
    for (const bool moon : {false, true}) {
        if (moon && !quest.moon) break;
        const Beamer beamer{motion.position, moon ? lights.moon : lights.sun, ObserverOnUnitSphere(app.Data.Site),
                            app.Data.Site.SiteRadius, moon};
        if (quest.transit) {
            AddCentre(beamer, TransitPoint(beamer.r, beamer.source), 0, false, flares);
            continue;
        }
        if (!quest.forceLight && InShadow(beamer.r, Normalized(beamer.source))) continue;
        if (model.OrientationType == static_cast<int>(OrientationType::Rotating)) {
            AddRotatingSurface(beamer, model, *frame, quest, flares);
        } else {
            AddFixedSurfaces(beamer, model, *frame, flares);
        }
    }
}

void AppendLiveFlareLabel(const SatRecord& satellite, const LiveFlare& flare, bool withName, std::string& text) {
    if (withName && flare.rotating) {
        text += ' ';
        text += std::to_string(flare.surface);
    } else if (withName && flare.surface >= 1 && flare.surface <= kMirrorCapacity) {
        text += ' ';
        text += satellite.Surface.Mirror(flare.surface).MirrorName;
    }
    if (!(flare.distance < kToldDistance)) return;
    text += " - ";
    if (flare.rotating) {
        text += PlainNumberText(std::floor(flare.distance / 100) / 10);
        text += " km";
        return;
    }
    text += PlainNumberText(std::floor(flare.distance / 10) / 100);
    text += " km (";
    text += CutNumberText(flare.offAxis / kDegToRad, 3);
    text += "°)";
}

std::string LiveFlareLabel(const SatRecord& satellite, const LiveFlare& flare, bool withName) {
    std::string text;
    AppendLiveFlareLabel(satellite, flare, withName, text);
    return text;
}

}  // namespace glintara
