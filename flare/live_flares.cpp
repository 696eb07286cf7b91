#include "flare/live_flares.h"

#include <cmath>
#include <string_view>
#include <utility>

#include "engine/astro/constants.h"
#include "engine/astro/number_text.h"
#include "engine/astro/trigonometry.h"
#include "engine/geometry/attitude_types.h"
#include "engine/geometry/reflection.h"
#include "flare/attitude.h"
#include "flare/surface_models.h"
#include "orbit/sun_and_moon.h"

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

/// Steps of `SRotTeta` in a degree.
constexpr double kSliderStepsPerDegree = 10;

constexpr int kReadOutDecimals = 2;

void TellAngle(Label& label, std::string_view words, const std::optional<RotatingReadOut>& readOut,
               double RotatingReadOut::*angle) {
    std::string text(words);
    if (readOut) text += CutNumberText(*readOut.*angle, kReadOutDecimals);
    label.Caption = std::move(text);
}

}  // namespace

LightPlaces LightPlacesAt(const CommonData& data) {
    return {SunPlace(data, data.SimTime), MoonPlaceInWorld(data, data.SimTime)};
}

LiveFlareQuest LiveFlareQuestOf(const Application& app) {
    LiveFlareQuest quest;
    quest.moon = app.Main.CMoonFlares.Value;
    quest.transit = app.Main.MnuTransitMode[kTransitEntry].Checked;
    quest.fine = app.Run.FinePass;
    quest.forceLight = app.Mirror.CForceIllumination.Value;
    if (app.Mirror.CRotAng.Value) quest.phase = app.Mirror.SRotTeta.Value / kSliderStepsPerDegree * kDegToRad;
    return quest;
}

bool IsLit(const Vector3& r, const Vector3& source, const LiveFlareQuest& quest) {
    return quest.forceLight || !InShadow(r, Normalized(source));
}

bool IsRotating(const SurfaceModel& model) {
    return OrientationTypeOf(model.OrientationType) == OrientationType::Rotating;
}

RotatingMirror RotatingMirrorOf(const SurfaceModel& model) {
    const MirrorRecord& mirror = model.Mirror(1);
    return MakeRotatingMirror(model.RotAxisDEC, model.RotAxisRA, mirror.Angle * kDegToRad, mirror.Tilt * kDegToRad);
}

std::optional<BodyFrame> LiveFlareFrame(const Application& app, const SatRecord& satellite, const WorldMotion& motion) {
    if (!HasFlareModel(satellite)) return std::nullopt;
    return BuildBodyFrame(app, satellite, motion.position, motion.velocity, app.Data.SimTime);
}

void FindLiveFlares(const Application& app, const SatRecord& satellite, const WorldMotion& motion,
                    const LightPlaces& lights, const LiveFlareQuest& quest, LiveFlares& flares) {
    flares.Clear();
    const SurfaceModel& model = satellite.Surface;
    const bool rotating = IsRotating(model);
    std::optional<BodyFrame> frame;
    if (!quest.transit) {
        frame = LiveFlareFrame(app, satellite, motion);
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
        if (!IsLit(beamer.r, beamer.source, quest)) continue;
        ForEachNormal(model, *frame, quest, [&](int index, const Vector3& normal) {
            AddCentre(beamer, MirrorFlare(beamer.r, beamer.source, normal), index, rotating, flares);
        });
    }
}

std::optional<RotatingReadOut> ReadOutOfPhase(const Application& app, const SatRecord& satellite,
                                              const WorldMotion& motion, const LiveFlareQuest& quest) {
    if (!quest.phase || !IsRotating(satellite.Surface)) return std::nullopt;
    const std::optional<BodyFrame> frame = LiveFlareFrame(app, satellite, motion);
    const BodyFrame orbitFrame = VerticalFrame(motion.position, motion.velocity);
    if (!frame || !IsFinite(orbitFrame.BodyAhead)) return std::nullopt;
    const RotatingMirror cone = RotatingMirrorOf(satellite.Surface);
    return ReadOutOf(cone, OnAxes(NormalComponentsAt(cone, *quest.phase), *frame), orbitFrame, *frame);
}

void TellReadOut(MirrorControls& controls, const std::optional<RotatingReadOut>& readOut) {
    TellAngle(controls.LRotAngle, kRotAngleWords, readOut, &RotatingReadOut::angle);
    TellAngle(controls.LRotTilt, kRotTiltWords, readOut, &RotatingReadOut::tilt);
    TellAngle(controls.LRotRMA, kRotRMAWords, readOut, &RotatingReadOut::axisDistance);
    TellAngle(controls.LRotRA, kRotRAWords, readOut, &RotatingReadOut::rightAscension);
    TellAngle(controls.LRotDEC, kRotDECWords, readOut, &RotatingReadOut::declination);
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
